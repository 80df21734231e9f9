#include "app/modStart.h"

#include "app/CommandSocket.h"
#include "app/FrmMain.h"
#include "app/PartsInstall.h"
#include "app/PlayerWiring.h"
#include "app/WindowClose.h"
#include "app/WindowSetup.h"
#include "cd/CdInstall.h"
#include "core/App.h"
#include "core/CommandLine.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SingleInstance.h"
#include "library/LibraryInstall.h"
#include "playback/FrmVideo.h"
#include "playback/Lyrics.h"
#include "playback/MpvApi.h"
#include "playback/PlayNext.h"
#include "playback/Player.h"
#include "playback/QueueStatus.h"
#include "playback/SongAlert.h"
#include "playback/Sound.h"
#include "playback/SoundCheck.h"
#include "playback/TrackAdvance.h"
#include "playlists/AddMedia.h"
#include "playlists/PlaylistAutosave.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistTools.h"
#include "stats/Tracking.h"
#include "system/Desktop.h"
#include "system/SystemSetup.h"
#include "system/SystemTray.h"
#include "tags/TagsInstall.h"
#include "ui/FrmMenus.h"
#include "ui/FrmOptions.h"
#include "ui/FrmPreferences.h"
#include "ui/MenuImages.h"
#include "ui/MiniMode.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace modStart {
namespace {

int g_signalPipe[2] = {-1, -1};
FrmMain* g_window = nullptr;
bool g_mainLoopRunning = false;

void onTerminate(int) {
    const char b = 1;
    [[maybe_unused]] auto n = ::write(g_signalPipe[0], &b, 1);
}

// The end of the session or a signal: what the exit saves is saved, and the process ends even
// from inside a dialog's own event loop, where quitting would only close the dialog and let
// start-up or the caller go on.
void endSession() {
    if (g_window) Form_QueryUnload(*g_window, 2);
    const bool nested = !g_mainLoopRunning || QApplication::activeModalWidget() ||
                        QApplication::activePopupWidget();
    if (!nested) return; // the main loop ends on its own
    std::fflush(nullptr);
    ::_exit(0);
}

// SIGTERM, SIGINT and SIGHUP end the run as the end of the desktop session does.
void watchTerminateSignals(QApplication& app) {
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0) return;
    auto* notifier = new QSocketNotifier(g_signalPipe[1], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [notifier] {
        char b;
        [[maybe_unused]] auto n = ::read(g_signalPipe[1], &b, 1);
        notifier->setEnabled(false);
        endSession();
    });
    struct sigaction sa {};
    sa.sa_handler = onTerminate;
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = SA_RESTART;
    for (int sig : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(sig, &sa, nullptr);
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &app,
                     [](QSessionManager&) { endSession(); });
}

void writeFirstRunHeader() {
    if (QFile::exists(SettingsFile)) return;
    QFile f(SettingsFile);
    if (f.open(QIODevice::Append)) f.write("; " + App::Title().toUtf8() + " Settings:\r\n\r\n");
}

} // namespace

int Sub_Main(int argc, char** argv) {
    // Answered before any display is opened, so that they work on a bare terminal.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const QString info = CommandLine::informationRequest(arguments);
    if (!info.isEmpty()) {
        std::fputs(info.toLocal8Bit().constData(), stdout);
        return 0;
    }

    // Qt reads only dashed options of its own and the value after one: the files are kept from
    // it, which spares its several passes over a long command line.
    std::vector<char*> qtArgv{argv[0]};
    for (int i = 1; i < argc; ++i)
        if (argv[i][0] == '-' || argv[i - 1][0] == '-') qtArgv.push_back(argv[i]);
    const std::vector<char*> offered(qtArgv.begin() + 1, qtArgv.end());
    int qtArgc = int(qtArgv.size());
    qtArgv.push_back(nullptr);
    QApplication app(qtArgc, qtArgv.data());
    // What Qt took for itself (-style fusion, -platform xcb) is neither a file nor a switch.
    if (qtArgc <= int(offered.size())) {
        const std::vector<char*> left(qtArgv.begin() + 1, qtArgv.begin() + qtArgc);
        arguments.clear();
        for (int i = 1; i < argc; ++i) {
            const bool taken =
                std::find(offered.begin(), offered.end(), argv[i]) != offered.end() &&
                std::find(left.begin(), left.end(), argv[i]) == left.end();
            if (!taken) arguments.append(QString::fromLocal8Bit(argv[i]));
        }
    }
    QApplication::setApplicationName(QStringLiteral("veldor"));
    QApplication::setApplicationVersion(App::versionText());
    QApplication::setDesktopFileName(QStringLiteral("veldor"));
    // Every window's title bar and task entry carry the badge the tray shows.
    QApplication::setWindowIcon(SystemTray::appIcon(false));
    setlocale(LC_NUMERIC, "C"); // the media engine refuses other numeric locales
    watchTerminateSignals(app);

    // 1-2. Settings, and one copy per data folder.
    SettingsFile = App::file(QStringLiteral("settings.ini"));
    SingleInstance instance(App::Path());
    const bool multiple = settings_IsOn(
        QStringLiteral("Settings"), QStringLiteral("AllowMultipleInstances"), QStringLiteral("0"));
    if (!multiple && instance.isPreviousInstance()) return 0;

    // 3. Without sound there is nothing to do.
    if (!device_SoundAvailable()) {
        Dialogs::msgBox(QStringLiteral("It has been detected you have no sound devices currently "
                                       "installed.\n\n%1 will now close.\n")
                            .arg(App::Title()),
                        Dialogs::vbExclamation, QStringLiteral("Sound Error"));
        return 0;
    }

    // 4-5. First run, and who wrote the file last.
    writeFirstRunHeader();
    const QString title = App::Title();
    settings_Write(title, QStringLiteral("Version"),
                   QStringLiteral("%1.%2").arg(App::Major()).arg(App::Minor()));
    settings_Write(title, QStringLiteral("Build"), QStringLiteral("#%1").arg(App::Revision()));
    settings_Write(title, QStringLiteral("BetaInformation"), QStringLiteral("Beta 5"));

    // 7. The windows, loaded hidden.
    MainContext ctx;
    FrmMain window(ctx);
    Dialogs::setParentWindow(&window);
    window_SetMenuImages(window.menuBar());
    // A song on the command line plays during start-up: the engine's library loads meanwhile.
    // The loader stays locked all that time, so what would take its lock waits: not sooner, or
    // the window's plugins wait, and after the first match of a pattern, whose per-thread
    // memory registers with the loader.
    if (std::any_of(arguments.begin(), arguments.end(),
                    [](const QString& a) { return !a.isEmpty() && !CommandLine::isSwitch(a); })) {
        (void)QRegularExpression(QStringLiteral("^$")).match(QString());
        mpv_PreloadLibrary();
    }
    g_window = &window;
    window.Command = CommandLine::buildCommand(arguments, QDir::currentPath());
    const auto video = Parts_install(window);
    ConsoleLog::instance().form_Load();

    if (!multiple) {
        instance.listen();
        QObject::connect(&instance, &SingleInstance::activateRequested, &window, [&window] {
            if (window.ctx().WindowClosing) return;
            if (window.isMinimized()) window.showNormal();
            window.show();
            window.raise();
            window.activateWindow();
        });
    }
    window.queryUnload = [&window] { return Form_QueryUnload(window, 0); };

    // 9. The first lines of the log.
    const QDateTime now = QDateTime::currentDateTime();
    window_WriteLog(QStringLiteral("%1 started at %2 / %3.")
                        .arg(title, now.toString(QStringLiteral("HH:mm:ss")),
                             now.toString(QStringLiteral("dd/MM/yyyy"))));
    window_WriteLog(QString(97, QLatin1Char('-')));
    if (!multiple && !instance.problem().isEmpty()) {
        window_WriteLog(QStringLiteral("Single instance not ensured: ") + instance.problem());
        Dialogs::msgBox(QStringLiteral("%1 cannot make sure that only one copy of it runs:\n\n%2"
                                       "\n\nIt will run without that check.\n")
                            .arg(title, instance.problem()),
                        Dialogs::vbExclamation, QStringLiteral("Single Instance Warning"));
    }

    // 10. Restore the main window; from here on events drive everything.
    window_Setup(window);
    PlayerWiring_startEngineWhenShown(window, *video);
    CommandSocket::startFromEnvironment(ctx.commands(), &window);
    QTimer::singleShot(0, &app, [] { g_mainLoopRunning = true; });
    const int code = app.exec();
    g_window = nullptr;
    return code;
}

} // namespace modStart
