#pragma once
#include <QString>
#include <QStringList>

class QWidget;

namespace modDirectorys {

bool directory_Exists(const QString& path);
void directory_Create(const QString& path);
QString directory_Browse(QWidget* ownerWindow, const QString& initialPath);
QStringList directory_GetSubdirectories(const QString& path, int levels);

} // namespace modDirectorys
