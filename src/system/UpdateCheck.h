#pragma once
#include <QString>
#include <QUrl>

// What the update server offers and whether it is newer: three INI sections of veldor.upd
// ("Version", "Build", "Beta Version", each with "Value") and a comparison of build numbers.
namespace UpdateCheck {

// VELDOR_UPDATE_URL, or the built-in address; always ends with "/".
QUrl baseUrl();
QUrl versionFileUrl(); // {base}updates/veldor.upd
QUrl archiveUrl();     // {base}download/veldor.zip
// The maker's two pages, from the same base, so a private server serves them too.
QUrl forumUrl();    // {base}forum/
QUrl homepageUrl(); // the base's site root

constexpr qint64 MaxVersionFileBytes = 64 * 1024;
constexpr qint64 MaxArchiveBytes = 512LL * 1024 * 1024;

struct Offer {
    QString version, build, description;
};
Offer readOffer(const QString& updPath);

enum class Verdict { Newer, NotNewer, NoBuild, BadBuild };
// Builds compare as whole numbers only; the version text plays no part.
Verdict compare(int currentBuild, const QString& newBuild);

} // namespace UpdateCheck
