#include "system/UpdateCheck.h"
#include "core/IniFile.h"

namespace UpdateCheck {

QUrl baseUrl() {
    QString base = qEnvironmentVariable("VELDOR_UPDATE_URL");
    if (base.isEmpty()) base = QStringLiteral("http://updates.veldor.net/");
    if (!base.endsWith(QLatin1Char('/'))) base += QLatin1Char('/');
    return QUrl(base);
}

QUrl versionFileUrl() {
    return baseUrl().resolved(QUrl(QStringLiteral("updates/veldor.upd")));
}
QUrl archiveUrl() {
    return baseUrl().resolved(QUrl(QStringLiteral("download/veldor.zip")));
}

QUrl forumUrl() {
    return baseUrl().resolved(QUrl(QStringLiteral("forum/")));
}
QUrl homepageUrl() {
    return baseUrl().resolved(QUrl(QStringLiteral("/")));
}

Offer readOffer(const QString& updPath) {
    const IniFile ini(updPath);
    const QString value = QStringLiteral("Value");
    return {ini.read(QStringLiteral("Version"), value, {}),
            ini.read(QStringLiteral("Build"), value, {}),
            ini.read(QStringLiteral("Beta Version"), value, {})};
}

Verdict compare(int currentBuild, const QString& newBuild) {
    if (newBuild.trimmed().isEmpty()) return Verdict::NoBuild;
    bool ok = false;
    const qlonglong build = newBuild.trimmed().toLongLong(&ok);
    if (!ok || build < 0) return Verdict::BadBuild;
    return currentBuild < build ? Verdict::Newer : Verdict::NotNewer;
}

} // namespace UpdateCheck
