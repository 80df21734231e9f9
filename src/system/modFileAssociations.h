#pragma once
#include <QString>
#include <QStringList>

// Media types and start with the session on freedesktop terms: a user veldor.desktop whose
// MimeType line lists the switched-on types, the defaults in mimeapps.list (set with xdg-mime),
// and an autostart entry. Everything added is remembered in our own desktop file, so switching
// off removes exactly that and leaves the user's other choices alone.
namespace modFileAssociations {

struct FileType {
    QString key;  // settings key in "FileTypes": "MP3"
    QString mime; // the desktop's MIME type for it
    bool defaultOn = false;
};

// The twenty types in their settings order.
const QList<FileType>& fileTypes();
// MIME type of an extension ("mp3", "MP3" or ".mp3"); empty when it is not one of ours.
QString mimeTypeOf(const QString& extension);

// $XDG_DATA_HOME/applications/veldor.desktop and $XDG_CONFIG_HOME/... with their defaults.
QString desktopFilePath();
QString autostartFilePath();
QString mimeappsPath();

QString filetype_ExePath();
// Exec value that starts `exe` with `arguments` (quoted and escaped for a desktop entry).
QString execLine(const QString& exe, const QString& arguments);

// Each returns an empty text on success, otherwise what went wrong, for a message box.
QString filetype_Register(const QString& name, const QString& extension);
QString filetype_Unregister(const QString& extension);
// Extensions (lower case) that VELDOR owns now.
QStringList filetype_Registered();
// Rebuilds the desktop's caches (update-desktop-database) when that tool is there.
void filetype_RefreshIcons();

QString startup_SetRunValue(const QString& name, const QString& command);
QString startup_DeleteRunValue(const QString& name);
bool startup_IsSet();
// Command line of the session start entry: the program with "/systray /winload".
QString startup_Command();

// Start-up: registers the switched-on types when "RegisterFilesWhenLoading" is "1".
void filetype_RegisterAtStartup(const QString& name);

// mimeapps.list editing, kept apart for the tests: the default of `mime` in
// [Default Applications], and the text with that default removed or replaced by `restore`,
// every other line as it was.
QString mimeapps_Default(const QString& text, const QString& mime);
QString mimeapps_SetDefault(const QString& text, const QString& mime, const QString& app);

} // namespace modFileAssociations
