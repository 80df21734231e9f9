#pragma once
#include <QString>

// Files and path text. Paths use "/" here; the rules on "the last separator" apply to it.
namespace modFiles {

QString file_GetExtension(const QString& path);
QString file_GetName(const QString& path);
QString file_GetDirectory(const QString& path);
QString file_GetTitle(const QString& path);
QString text_StripTrailingNull(const QString& text);

bool file_Exists(const QString& path); // folders count too
bool file_HasAttributes(const QString& path, int mask); // 1: read-only

QString file_GetSizeText(const QString& path);
QString file_GetSizeFormatted(const QString& path, bool withUnit);

bool file_ContainsEntry(const QString& path, const QString& text);
long file_CountLines(const QString& path);
QString file_ReadLine(const QString& path, int index);

void file_Delete(const QString& path);
void file_SendToRecycleBin(const QString& path, bool confirm, bool silent);
void file_Copy(const QString& source, const QString& target);
void file_Move(const QString& source, const QString& target);
bool file_Rename(const QString& oldPath, const QString& newPath);
void file_AddToRecentDocuments(const QString& path);

// Writes `bytes` to `path` so that a crash leaves either the old file or the new one.
bool file_WriteAtomic(const QString& path, const QByteArray& bytes);

} // namespace modFiles
