#include "integration/VeldorProcess.h"

#include "core/IniFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <cstdio>
#include <xcb/xcb.h>

namespace {
QString run(const QString& program, const QStringList& args, int timeoutMs = 10000) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(timeoutMs);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

} // namespace

bool waitFor(const std::function<bool()>& done, int timeoutMs) {
    QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired()) {
        if (done()) return true;
        QThread::msleep(50);
    }
    return done();
}

qint64 settledSize(const QString& path, qint64 bytes, int quietMs, int timeoutMs) {
    const auto size = [&] { return QFileInfo(path).size(); };
    waitFor([&] { return size() >= bytes; }, timeoutMs);
    QDeadlineTimer deadline(timeoutMs);
    qint64 last = -1;
    while (size() != last && !deadline.hasExpired()) {
        last = size();
        QThread::msleep(quietMs);
    }
    return size();
}

QString xdotool(const QStringList& args) {
    return run(QStringLiteral("xdotool"), args, 15000);
}

QByteArray row(const QStringList& cells) {
    QByteArray out;
    for (const QString& c : cells)
        out += '"' + c.toUtf8() + "\"\r\n";
    return out;
}

// Sends WM_DELETE_WINDOW as a window manager does when the close button is pressed, and waits
// for the server to take it: a request left behind by a closing connection may be dropped.
// Returns what was sent, or what went wrong.
QString sendDeleteWindow(unsigned long window) {
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (!c || xcb_connection_has_error(c)) {
        const int error = c ? xcb_connection_has_error(c) : -1;
        if (c) xcb_disconnect(c);
        return QStringLiteral("no connection (%1)").arg(error);
    }
    auto atom = [c](const char* name) {
        xcb_intern_atom_reply_t* r =
            xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(strlen(name)), name), nullptr);
        const xcb_atom_t a = r ? r->atom : 0;
        free(r);
        return a;
    };
    xcb_client_message_event_t ev{};
    ev.response_type = XCB_CLIENT_MESSAGE;
    ev.format = 32;
    ev.window = xcb_window_t(window);
    ev.type = atom("WM_PROTOCOLS");
    ev.data.data32[0] = atom("WM_DELETE_WINDOW");
    ev.data.data32[1] = XCB_CURRENT_TIME;
    xcb_generic_error_t* error = xcb_request_check(
        c, xcb_send_event_checked(c, 0, xcb_window_t(window), XCB_EVENT_MASK_NO_EVENT,
                                  reinterpret_cast<const char*>(&ev)));
    const QString result = error ? QStringLiteral("X error %1").arg(error->error_code)
                                 : QStringLiteral("sent %1/%2").arg(ev.type).arg(ev.data.data32[0]);
    free(error);
    xcb_disconnect(c);
    return result;
}

VeldorProcess::VeldorProcess() : m_env(QProcessEnvironment::systemEnvironment()) {
    m_env.insert(QStringLiteral("VELDOR_HOME"), m_home.path());
    m_env.insert(QStringLiteral("VELDOR_AO"), QStringLiteral("null"));
    m_env.insert(QStringLiteral("VELDOR_VO"), QStringLiteral("null"));
    m_env.insert(QStringLiteral("VELDOR_DIALOG_LOG"), dialogLog());
    m_env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    m_env.insert(QStringLiteral("VELDOR_COMMAND_SOCKET"), commandSocket());
    // Files, not pipes: nobody drains a pipe while a test sleeps, and a full one stalls the
    // program.
    m_process.setStandardOutputFile(m_logs.filePath(QStringLiteral("stdout.log")));
    m_process.setStandardErrorFile(m_logs.filePath(QStringLiteral("stderr.log")));
}

VeldorProcess::~VeldorProcess() {
    if (running()) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

void VeldorProcess::setDialogAnswers(const QStringList& answers) {
    write(file(QStringLiteral("answers.txt")), answers.join('\n').toUtf8() + '\n');
    m_env.insert(QStringLiteral("VELDOR_DIALOG_ANSWERS"), file(QStringLiteral("answers.txt")));
}

QString VeldorProcess::commandSocket() const {
    return m_logs.filePath(QStringLiteral("commands.sock"));
}

QString VeldorProcess::runCommand(const QString& name, int timeoutMs) {
    m_trail += QStringLiteral("command %1; ").arg(name);
    QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired() && running()) {
        QLocalSocket socket;
        socket.connectToServer(commandSocket());
        if (socket.waitForConnected(500)) {
            socket.write(name.toUtf8() + '\n');
            socket.waitForBytesWritten(1000);
            while (!socket.canReadLine() && !deadline.hasExpired())
                if (!socket.waitForReadyRead(200) && socket.state() != QLocalSocket::ConnectedState)
                    break;
            if (socket.canReadLine()) return QString::fromUtf8(socket.readLine()).trimmed();
        }
        QThread::msleep(100);
    }
    return QString();
}

QProcessEnvironment VeldorProcess::environment() const {
    return m_env;
}

void VeldorProcess::start(const QStringList& arguments) {
    m_process.setProcessEnvironment(environment());
    m_process.setWorkingDirectory(m_home.path());
    m_process.start(QStringLiteral(VELDOR_EXE), arguments);
    m_process.waitForStarted(10000);
}

unsigned long VeldorProcess::waitForWindow(int timeoutMs) {
    QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired() && running()) {
        const QStringList ids = windows(QStringLiteral("^VELDOR$"), true);
        if (!ids.isEmpty()) {
            m_window = ids.constFirst().toULong();
            QThread::msleep(300); // let the start-up finish its last steps
            return m_window;
        }
        QThread::msleep(100);
    }
    describeFailure("no main window");
    return 0;
}

QStringList VeldorProcess::windows(const QString& namePattern, bool visibleOnly) {
    QStringList args{QStringLiteral("search"), QStringLiteral("--all"),  QStringLiteral("--pid"),
                     QString::number(pid()),   QStringLiteral("--name"), namePattern};
    if (visibleOnly) args.insert(2, QStringLiteral("--onlyvisible"));
    return run(QStringLiteral("xdotool"), args).split('\n', Qt::SkipEmptyParts);
}

void VeldorProcess::describeFailure(const char* what) {
    fprintf(stderr, "--- %s; the program is %s\n", what,
            running() ? "still running"
                      : qPrintable(QStringLiteral("gone, exit code %1 status %2")
                                       .arg(m_process.exitCode())
                                       .arg(int(m_process.exitStatus()))));
    if (running()) {
        for (const QString& id : windows(QStringLiteral("."), false))
            fprintf(stderr, "window %s:\n%s\n", qPrintable(id),
                    qPrintable(run(QStringLiteral("xprop"), {QStringLiteral("-id"), id})));
        if (!QStandardPaths::findExecutable(QStringLiteral("gdb")).isEmpty())
            fprintf(stderr, "%s\n",
                    qPrintable(
                        run(QStringLiteral("gdb"),
                            {QStringLiteral("-p"), QString::number(pid()), QStringLiteral("-batch"),
                             QStringLiteral("-ex"), QStringLiteral("thread apply all bt")},
                            60000)));
    }
    fprintf(stderr, "trail: %s\nstderr:\n%s\ndialogs:\n%s\n", qPrintable(m_trail),
            read(m_logs.filePath(QStringLiteral("stderr.log"))).right(8000).constData(),
            read(dialogLog()).right(4000).constData());
}

bool VeldorProcess::waitForExit(int timeoutMs) {
    if (m_process.state() == QProcess::NotRunning) return true;
    if (m_process.waitForFinished(timeoutMs)) return true;
    // A program that does not end is a fault to diagnose: say where every thread stands.
    describeFailure("did not exit");
    return false;
}

void VeldorProcess::exitThroughMenu() {
    const QString id = QString::number(m_window);
    run(QStringLiteral("xdotool"), {QStringLiteral("windowfocus"), QStringLiteral("--sync"), id});
    run(QStringLiteral("xdotool"),
        {QStringLiteral("key"), QStringLiteral("--window"), id, QStringLiteral("alt+f")});
    QThread::msleep(400);
    run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("x")});
}

void VeldorProcess::runMenu(const QString& menuKey, const QString& itemKey) {
    const QString id = QString::number(m_window);
    run(QStringLiteral("xdotool"), {QStringLiteral("windowfocus"), QStringLiteral("--sync"), id});
    run(QStringLiteral("xdotool"),
        {QStringLiteral("key"), QStringLiteral("--window"), id, QStringLiteral("alt+") + menuKey});
    QThread::msleep(400);
    run(QStringLiteral("xdotool"), QStringList{QStringLiteral("key")} + itemKey.split(' '));
}

void VeldorProcess::requestClose() {
    // Start-up may still swap the native window, so ask again on the windows that are current
    // until the process answers.
    for (int attempt = 0; attempt < 8 && running(); ++attempt) {
        const QStringList found = windows(QStringLiteral("^VELDOR$"), true);
        m_trail += QStringLiteral("close asked of [%1] after %2; ")
                       .arg(found.join(' '), QString::number(m_window));
        if (!found.isEmpty()) m_window = found.constFirst().toULong();
        for (const QString& id : found)
            m_trail += sendDeleteWindow(id.toULong()) + QStringLiteral("; ");
        if (found.isEmpty()) m_trail += sendDeleteWindow(m_window) + QStringLiteral("; ");
        if (m_process.waitForFinished(3000)) return;
    }
}

int VeldorProcess::runSecondCopy(const QStringList& arguments, int timeoutMs) {
    QProcess second;
    second.setProcessEnvironment(environment());
    second.setWorkingDirectory(m_home.path());
    second.start(QStringLiteral(VELDOR_EXE), arguments);
    if (!second.waitForFinished(timeoutMs)) {
        second.kill();
        second.waitForFinished(3000);
        return -1;
    }
    return second.exitCode();
}

QString VeldorProcess::settingsValue(const QString& iniPath, const QString& section,
                                     const QString& key) {
    IniFile ini(iniPath);
    return ini.contains(section, key) ? ini.read(section, key, QString())
                                      : QStringLiteral("<absent>");
}

QByteArray VeldorProcess::read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void VeldorProcess::write(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) f.write(bytes);
}
