#include "support/TempHome.h"

#include "core/App.h"
#include "core/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

TempHome::TempHome() {
    App::setPath(m_dir.path());
    SettingsFile = settingsFile();
}

TempHome::~TempHome() {
    SettingsFile.clear();
}

void TempHome::writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) f.write(bytes);
}

QByteArray TempHome::readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
