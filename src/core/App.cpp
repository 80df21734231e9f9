#include "core/App.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace App {
namespace {
QString& storedPath() {
    static QString path;
    return path;
}

QString resolvePath() {
    const QString env = qEnvironmentVariable("VELDOR_HOME");
    if (!env.isEmpty()) {
        QDir().mkpath(env);
        return QDir(env).absolutePath();
    }
    const QString exeDir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
    if (QFileInfo(exeDir).isWritable() && !exeDir.startsWith(QLatin1String("/usr/")))
        return exeDir;
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty())
        data = QDir::homePath() + QStringLiteral("/.local/share");
    const QString path = data + QStringLiteral("/veldor");
    QDir().mkpath(path);
    return path;
}
} // namespace

QString Path() {
    QString& p = storedPath();
    if (p.isEmpty())
        p = resolvePath();
    return p;
}

void setPath(const QString& path) { storedPath() = QDir(path).absolutePath(); }

QString file(const QString& relative) { return Path() + QLatin1Char('/') + relative; }

int Major() { return VELDOR_VERSION_MAJOR; }
int Minor() { return VELDOR_VERSION_MINOR; }
int Revision() { return VELDOR_VERSION_PATCH; }
QString versionText() {
    return QStringLiteral("%1.%2.%3").arg(Major()).arg(Minor()).arg(Revision());
}

} // namespace App
