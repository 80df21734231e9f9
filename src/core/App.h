#pragma once
#include <QString>

// The application object: where data lives, the title, the version.
namespace App {

// The data folder. VELDOR_HOME wins; then the executable's folder when writable;
// else $XDG_DATA_HOME/veldor. Resolved once, or set by tests.
QString Path();
void setPath(const QString& path);

// Path below the data folder: App::file("Playlists/default.spp").
QString file(const QString& relative);

inline QString Title() {
    return QStringLiteral("VELDOR");
}
int Major();
int Minor();
int Revision();
QString versionText(); // "major.minor.revision"

} // namespace App
