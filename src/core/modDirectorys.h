#pragma once
#include <QString>
#include <QStringList>

class QWidget;

namespace modDirectorys {

bool directory_Exists(const QString& path);
void directory_Create(const QString& path);
QString directory_Browse(QWidget* ownerWindow, const QString& initialPath);
QStringList directory_GetSubdirectories(const QString& path, int levels);
// The plain files of `folder` matching `pattern` ("*.mp3", case-blind), in name order, case-blind,
// as the original file system lists a folder.
QStringList directory_ListFiles(const QString& folder, const QString& pattern);

} // namespace modDirectorys
