#include "core/CommandLine.h"

#include "core/App.h"

#include <QDir>

namespace CommandLine {
namespace {
const QStringList kSwitches = {QStringLiteral("play"),    QStringLiteral("systray"),
                               QStringLiteral("winload"), QStringLiteral("minimize"),
                               QStringLiteral("cd"),      QStringLiteral("ml"),
                               QStringLiteral("new")};
}

bool isSwitch(const QString& argument) {
    // Most arguments are paths: turned away before any text is made, as a start with many
    // files asks this of each. Lower-casing never shortens a text nor makes a "/" or "-".
    if (argument.isEmpty() || argument.size() > 10 ||
        (argument.front() != u'/' && argument.front() != u'-'))
        return false;
    const QString a = argument.toLower();
    for (const QString& s : kSwitches)
        if (a == QLatin1Char('/') + s || a == QStringLiteral("--") + s) return true;
    return false;
}

QString buildCommand(const QStringList& arguments, const QString& workingDir) {
    // Switches first, then the paths, each part after the first behind one blank.
    QString switches, paths;
    const QDir base(workingDir);
    for (const QString& a : arguments) {
        if (isSwitch(a)) {
            if (!switches.isEmpty()) switches += QLatin1Char(' ');
            switches +=
                QLatin1Char('/') + a.toLower().mid(a.startsWith(QLatin1String("--")) ? 2 : 1);
        } else if (!a.isEmpty()) {
            if (!paths.isEmpty()) paths += QLatin1Char(' ');
            paths += QLatin1Char('"');
            paths += QDir::cleanPath(base.absoluteFilePath(a));
            paths += QLatin1Char('"');
        }
    }
    if (switches.isEmpty()) return paths;
    if (!paths.isEmpty()) switches += QLatin1Char(' ') + paths;
    return switches;
}

QString informationRequest(const QStringList& arguments) {
    for (const QString& a : arguments) {
        if (a == QLatin1String("--version"))
            return App::Title() + QLatin1Char(' ') + App::versionText() + QLatin1Char('\n');
        if (a == QLatin1String("--help") || a == QLatin1String("-h"))
            return QStringLiteral(
                "Usage: veldor [switch] [files...]\n"
                "A desktop media player.\n\n"
                "Files and folders given are added to the playlist and played;\n"
                "a single .spp file is opened as the playlist.\n\n"
                "Switches (one per start):\n"
                "  /play, --play              play the playlist from its first song\n"
                "  /systray, --systray        start in the system tray\n"
                "  /systray /winload          as /systray, as the autostart entry does\n"
                "  /minimize, --minimize      start minimized\n"
                "  /cd, --cd                  open the CD player\n"
                "  /ml, --ml                  open the Media Library\n"
                "  /new, --new                start with a new, empty playlist\n"
                "  --help                     show this text\n"
                "  --version                  show the version\n\n"
                "Environment: VELDOR_HOME sets the data folder.\n");
    }
    return {};
}

} // namespace CommandLine
