#pragma once
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>

// Polls `done` until it holds or `timeoutMs` runs out; its last answer.
bool waitFor(const std::function<bool()>& done, int timeoutMs = 20000);
// Waits until the file at `path` holds at least `bytes` and then stays the same for `quietMs`;
// its final size. Each wait gives up after `timeoutMs`, so an output that never settles ends it.
qint64 settledSize(const QString& path, qint64 bytes, int quietMs = 600, int timeoutMs = 20000);
// Runs xdotool with `args`; what it printed, trimmed.
QString xdotool(const QStringList& args);
// One playlist row as a .spp file holds it: each cell quoted on a line of its own.
QByteArray row(const QStringList& cells);

// Sends WM_DELETE_WINDOW to `window` as a window manager's close button does; what was sent, or
// what went wrong.
QString sendDeleteWindow(unsigned long window);

// The real program under a private X server, with its data folder in a temporary directory.
class VeldorProcess {
public:
    VeldorProcess();
    ~VeldorProcess();

    QString home() const { return m_home.path(); }
    QString file(const QString& relative) const { return m_home.path() + '/' + relative; }
    QString dialogLog() const { return file(QStringLiteral("dialogs.log")); }
    void setEnv(const QString& name, const QString& value) { m_env.insert(name, value); }
    void setDialogAnswers(const QStringList& answers);

    void start(const QStringList& arguments = {});
    // Waits until the main window is mapped; its X window id, or 0.
    unsigned long waitForWindow(int timeoutMs = 40000);
    bool waitForExit(int timeoutMs = 40000);
    int exitCode() const { return m_process.exitCode(); }
    // Polls: without an event loop QProcess learns of an exit only when asked.
    bool running() {
        m_process.waitForFinished(0);
        return m_process.state() != QProcess::NotRunning;
    }
    qint64 pid() const { return m_process.processId(); }
    QByteArray output() const { return read(m_logs.filePath(QStringLiteral("stdout.log"))); }

    // As a user would: File, Exit through the keyboard.
    void exitThroughMenu();
    // A menu entry through the keyboard: alt+`menuKey`, then the keys of `itemKey` ("s",
    // "a Return").
    void runMenu(const QString& menuKey, const QString& itemKey);
    // Runs a menu command by its name, as a click on its entry would, wherever the entry sits:
    // "ok", "disabled", "unknown", or empty when the program did not answer in time. The
    // command itself runs after the reply.
    QString runCommand(const QString& name, int timeoutMs = 15000);
    // The window manager's close request (the title bar's close button).
    void requestClose();
    void terminate() { m_process.terminate(); }

    // Runs another copy with the same data folder; returns its exit code (-1 on timeout).
    int runSecondCopy(const QStringList& arguments, int timeoutMs = 15000);

    static QString settingsValue(const QString& iniPath, const QString& section,
                                 const QString& key);
    static QByteArray read(const QString& path);
    static void write(const QString& path, const QByteArray& bytes);

private:
    QProcessEnvironment environment() const;
    QString commandSocket() const;
    // X window ids of this program whose names match `namePattern`.
    QStringList windows(const QString& namePattern, bool visibleOnly);
    // Prints what a stuck or vanished program leaves to go on: state, threads, stderr, dialogs.
    void describeFailure(const char* what);
    QTemporaryDir m_home;
    QTemporaryDir m_logs; // the program's stdout and stderr, kept out of its data folder
    QProcess m_process;
    QProcessEnvironment m_env;
    unsigned long m_window = 0;
    QString m_trail; // what the test did to the program, for the failure report
};
