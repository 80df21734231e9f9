#include "system/modFileAssociations.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace modFileAssociations {
namespace {

const QString kDesktopName = QStringLiteral("veldor.desktop");
const QString kTypesKey = QStringLiteral("X-VELDOR-FileTypes");
const QString kReplacedKey = QStringLiteral("X-VELDOR-Replaced");
const QString kAutostartKey = QStringLiteral("X-VELDOR-Autostart");

QString xdgDir(const char* variable, const QString& fallback) {
    const QString dir = qEnvironmentVariable(variable);
    // The base directory spec says relative values are to be ignored.
    if (!dir.isEmpty() && QDir::isAbsolutePath(dir)) return dir;
    return QDir::homePath() + QLatin1Char('/') + fallback;
}
QString dataHome() {
    return xdgDir("XDG_DATA_HOME", QStringLiteral(".local/share"));
}
QString configHome() {
    return xdgDir("XDG_CONFIG_HOME", QStringLiteral(".config"));
}

QString readText(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
}

QString writeText(const QString& path, const QString& text) {
    const QString dir = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(dir) || !modFiles::file_WriteAtomic(path, text.toUtf8()))
        return QStringLiteral("Could not write \"%1\".\nCheck that the folder is writable.")
            .arg(path);
    return {};
}

// Values of the [Desktop Entry] group of a desktop file (only what we write ourselves).
QString entryValue(const QString& text, const QString& key) {
    const QString prefix = key + QLatin1Char('=');
    for (const QString& line : text.split(QLatin1Char('\n')))
        if (line.startsWith(prefix)) return line.mid(prefix.size());
    return {};
}

QStringList listValue(const QString& text, const QString& key) {
    return entryValue(text, key).split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

struct State {
    QStringList extensions; // ours, lower case, in the order they were switched on
    QStringList replaced;   // "mime:previous.desktop" for defaults we took over
};

State readState() {
    const QString text = readText(desktopFilePath());
    return {listValue(text, kTypesKey), listValue(text, kReplacedKey)};
}

QString escapeString(QString value) {
    return value.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('\n'), QLatin1String("\\n"));
}

QString writeState(const QString& name, const State& state) {
    if (state.extensions.isEmpty()) {
        // Nothing left of ours: the file goes, so an installed entry shows through again.
        QFile::remove(desktopFilePath());
        return {};
    }
    QStringList mimes;
    for (const QString& ext : state.extensions)
        if (const QString m = mimeTypeOf(ext); !mimes.contains(m)) mimes << m;
    QString text =
        QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\n"
                       "GenericName=Media Player\nComment=%1 Media File\n"
                       "Exec=%2\nIcon=veldor\nTerminal=false\n"
                       "Categories=AudioVideo;Audio;Player;\nMimeType=%3;\n%4=%5;\n")
            .arg(escapeString(name), execLine(filetype_ExePath(), QStringLiteral("%F")),
                 mimes.join(QLatin1Char(';')), kTypesKey, state.extensions.join(QLatin1Char(';')));
    if (!state.replaced.isEmpty())
        text += kReplacedKey + QLatin1Char('=') + state.replaced.join(QLatin1Char(';')) +
                QLatin1String(";\n");
    return writeText(desktopFilePath(), text);
}

QString replacedFor(const State& state, const QString& mime) {
    const QString prefix = mime + QLatin1Char(':');
    for (const QString& r : state.replaced)
        if (r.startsWith(prefix)) return r.mid(prefix.size());
    return {};
}

QString setDefault(const QString& mime, const QString& app) {
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (!app.isEmpty() && !xdgMime.isEmpty()) {
        QProcess process;
        process.start(xdgMime, {QStringLiteral("default"), app, mime});
        if (process.waitForFinished(10000) && process.exitStatus() == QProcess::NormalExit &&
            process.exitCode() == 0)
            return {};
        process.kill();
        process.waitForFinished(1000);
        return QStringLiteral("Could not make VELDOR the default for %1.").arg(mime);
    }
    // Taking a default back (or no xdg-utils): edit only that one line ourselves.
    const QString path = mimeappsPath();
    const QString before = readText(path);
    const QString after = mimeapps_SetDefault(before, mime, app);
    return after == before ? QString() : writeText(path, after);
}

} // namespace

const QList<FileType>& fileTypes() {
    static const QList<FileType> types = {
        {"MP3", "audio/mpeg", true}, {"MP2", "audio/mpeg", true}, {"MP1", "audio/mpeg", true},
        {"MID", "audio/midi"},       {"RMI", "audio/midi"},       {"MIDI", "audio/midi"},
        {"WAV", "audio/x-wav"},      {"SND", "audio/basic"},      {"AU", "audio/basic"},
        {"AIF", "audio/x-aiff"},     {"AIFC", "audio/x-aifc"},    {"AIFF", "audio/x-aiff"},
        {"WMA", "audio/x-ms-wma"},   {"AVI", "video/x-msvideo"},  {"WMV", "video/x-ms-wmv"},
        {"MPEG", "video/mpeg"},      {"MPE", "video/mpeg"},       {"MPG", "video/mpeg"},
        {"M1V", "video/mpeg"},       {"MPA", "audio/mpeg"},
    };
    return types;
}

QString mimeTypeOf(const QString& extension) {
    QString key = extension.toUpper();
    if (key.startsWith(QLatin1Char('.'))) key.remove(0, 1);
    for (const FileType& type : fileTypes())
        if (type.key == key) return type.mime;
    return {};
}

QString desktopFilePath() {
    return dataHome() + QLatin1String("/applications/") + kDesktopName;
}
QString autostartFilePath() {
    return configHome() + QLatin1String("/autostart/") + kDesktopName;
}
QString mimeappsPath() {
    return configHome() + QLatin1String("/mimeapps.list");
}

QString filetype_ExePath() {
    return QCoreApplication::applicationFilePath();
}

QString execLine(const QString& exe, const QString& arguments) {
    QString quoted;
    for (const QChar c : exe) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') ||
            c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
        if (c == QLatin1Char('%')) quoted += c;
    }
    // Quoted for the Exec parser, then escaped once more as a desktop-file string.
    return escapeString(QLatin1Char('"') + quoted + QLatin1Char('"')) +
           (arguments.isEmpty() ? QString() : QLatin1Char(' ') + arguments);
}

QString filetype_Register(const QString& name, const QString& extension) {
    const QString mime = mimeTypeOf(extension);
    if (mime.isEmpty())
        return QStringLiteral("\"%1\" is not a media type VELDOR plays.").arg(extension);
    QString ext = extension.toLower();
    if (ext.startsWith(QLatin1Char('.'))) ext.remove(0, 1);

    State state = readState();
    const QString previous = mimeapps_Default(readText(mimeappsPath()), mime);
    if (!previous.isEmpty() && previous != kDesktopName && replacedFor(state, mime).isEmpty())
        state.replaced << mime + QLatin1Char(':') + previous;
    if (!state.extensions.contains(ext)) state.extensions << ext;
    if (QString error = writeState(name, state); !error.isEmpty()) return error;
    return setDefault(mime, kDesktopName);
}

QString filetype_Unregister(const QString& extension) {
    QString ext = extension.toLower();
    if (ext.startsWith(QLatin1Char('.'))) ext.remove(0, 1);
    State state = readState();
    if (!state.extensions.removeAll(ext)) return {};
    const QString mime = mimeTypeOf(ext);
    bool stillOurs = false;
    for (const QString& other : state.extensions)
        stillOurs |= mimeTypeOf(other) == mime;
    if (!stillOurs) {
        // Only a default that is still ours is handed back; one the user changed since stays.
        if (mimeapps_Default(readText(mimeappsPath()), mime) == kDesktopName)
            if (QString error = setDefault(mime, replacedFor(state, mime)); !error.isEmpty())
                return error;
        state.replaced.removeAll(mime + QLatin1Char(':') + replacedFor(state, mime));
    }
    const QString name = entryValue(readText(desktopFilePath()), QStringLiteral("Name"));
    return writeState(name.isEmpty() ? QStringLiteral("VELDOR") : name, state);
}

QStringList filetype_Registered() {
    return readState().extensions;
}

void filetype_RefreshIcons() {
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("update-desktop-database"));
    if (!tool.isEmpty())
        QProcess::startDetached(tool, {QFileInfo(desktopFilePath()).absolutePath()});
}

QString startup_SetRunValue(const QString& name, const QString& command) {
    return writeText(autostartFilePath(),
                     QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n"
                                    "Icon=veldor\nTerminal=false\n%3=true\n")
                         .arg(escapeString(name), command, kAutostartKey));
}

QString startup_DeleteRunValue(const QString&) {
    // An entry the user made by hand under the same name is not ours to delete.
    if (!startup_IsSet()) return {};
    if (!QFile::remove(autostartFilePath()))
        return QStringLiteral("Could not remove \"%1\".").arg(autostartFilePath());
    return {};
}

bool startup_IsSet() {
    return entryValue(readText(autostartFilePath()), kAutostartKey) == QLatin1String("true");
}

QString startup_Command() {
    return execLine(filetype_ExePath(), QStringLiteral("/systray /winload"));
}

void filetype_RegisterAtStartup(const QString& name) {
    if (!settings_IsOn(QStringLiteral("Settings"), QStringLiteral("RegisterFilesWhenLoading"),
                       QStringLiteral("0")))
        return;
    for (const FileType& type : fileTypes()) {
        if (settings_IsOn(QStringLiteral("FileTypes"), type.key,
                          type.defaultOn ? QStringLiteral("1") : QStringLiteral("0")))
            filetype_Register(name, type.key.toLower());
    }
    if (settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UpdateWindowsIconsWhenLoading"),
                      QStringLiteral("0")))
        filetype_RefreshIcons();
}

QString mimeapps_Default(const QString& text, const QString& mime) {
    bool inDefaults = false;
    const QString prefix = mime + QLatin1Char('=');
    for (QString line : text.split(QLatin1Char('\n'))) {
        line = line.trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inDefaults = line == QLatin1String("[Default Applications]");
        else if (inDefaults && line.startsWith(prefix))
            return line.mid(prefix.size()).section(QLatin1Char(';'), 0, 0).trimmed();
    }
    return {};
}

QString mimeapps_SetDefault(const QString& text, const QString& mime, const QString& app) {
    QStringList lines = text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    const bool endsWithNewline = text.endsWith(QLatin1Char('\n'));
    if (endsWithNewline) lines.removeLast();
    const QString prefix = mime + QLatin1Char('=');
    qsizetype section = -1, end = lines.size();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            if (section >= 0 && end == lines.size()) end = i;
            if (line == QLatin1String("[Default Applications]")) section = i, end = lines.size();
        } else if (section >= 0 && end == lines.size() && line.startsWith(prefix)) {
            if (app.isEmpty())
                lines.removeAt(i);
            else
                lines[i] = prefix + app;
            return lines.join(QLatin1Char('\n')) +
                   (endsWithNewline ? QStringLiteral("\n") : QString());
        }
    }
    if (app.isEmpty()) return text;
    if (section < 0) {
        if (!lines.isEmpty() && !lines.last().isEmpty()) lines << QString();
        lines << QStringLiteral("[Default Applications]");
        end = lines.size();
    }
    while (end > section + 1 && lines.at(end - 1).trimmed().isEmpty())
        --end;
    lines.insert(end, prefix + app);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace modFileAssociations
