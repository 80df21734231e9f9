#include "core/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A real folder (no link) of this user that nobody else may write into.
bool isPrivate(const QString& dir) {
    struct stat st {};
    if (dir.isEmpty() || ::lstat(QFile::encodeName(dir).constData(), &st) != 0) return false;
    return S_ISDIR(st.st_mode) && st.st_uid == ::getuid() && (st.st_mode & 022) == 0;
}

bool ownedByOther(const QString& path) {
    struct stat st {};
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0 && st.st_uid != ::getuid();
}

} // namespace

QString SingleInstance::privateFolder(QString* why) {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isPrivate(runtime)) return runtime;
    QString cache = qEnvironmentVariable("XDG_CACHE_HOME");
    if (!QDir::isAbsolutePath(cache)) cache = QDir::homePath() + QStringLiteral("/.cache");
    const QString own = cache + QStringLiteral("/veldor");
    const QByteArray native = QFile::encodeName(own);
    QDir().mkpath(cache);
    ::mkdir(native.constData(), 0700);
    struct stat st {};
    if (::lstat(native.constData(), &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == ::getuid())
        ::chmod(native.constData(), 0700);
    if (isPrivate(own)) return own;
    if (why)
        *why = QStringLiteral("Neither %1 nor %2 is a folder that only you can write to.")
                   .arg(runtime.isEmpty() ? QStringLiteral("XDG_RUNTIME_DIR") : runtime, own);
    return {};
}

SingleInstance::SingleInstance(const QString& dataFolder, QObject* parent) : QObject(parent) {
    const QByteArray hash =
        QCryptographicHash::hash(QDir(dataFolder).absolutePath().toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(16);
    m_name = QStringLiteral("veldor-%1-%2").arg(QString::fromLatin1(hash)).arg(getuid());
    m_folder = privateFolder(&m_problem);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::refuse(const QString& path) {
    if (!ownedByOther(path)) return false;
    m_problem = QStringLiteral("%1 belongs to another user and is not used.").arg(path);
    return true;
}

bool SingleInstance::isPreviousInstance() {
    if (m_folder.isEmpty() || refuse(lockPath()) || refuse(socketPath())) return false;
    // The lock decides who is first; a dead holder's lock is taken over.
    m_lock = std::make_unique<QLockFile>(lockPath());
    m_lock->setStaleLockTime(0);
    if (m_lock->tryLock(0)) return false;
    if (m_lock->error() == QLockFile::PermissionError) {
        m_problem = QStringLiteral("%1 cannot be written.").arg(lockPath());
        return false;
    }
    // Another copy holds it: ask it to come forward. It may be busy; never wait long.
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 2000) {
        if (refuse(socketPath())) return false;
        QLocalSocket socket;
        socket.connectToServer(socketPath());
        if (socket.waitForConnected(300)) {
            socket.write("activate\n");
            socket.waitForBytesWritten(300);
            socket.disconnectFromServer();
            return true;
        }
        if (m_lock->tryLock(0)) return false; // the holder went away meanwhile
        QThread::msleep(100);
    }
    return true;
}

void SingleInstance::listen() {
    if (m_server || !m_lock || !m_lock->isLocked() || refuse(socketPath())) return;
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(socketPath()); // a crashed copy's socket; we hold the lock
    if (!m_server->listen(socketPath())) return;
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* s = m_server->nextPendingConnection()) {
            connect(s, &QLocalSocket::readyRead, this, [this, s] {
                if (s->readAll().contains("activate")) Q_EMIT activateRequested();
            });
            connect(s, &QLocalSocket::disconnected, s, &QObject::deleteLater);
        }
    });
}
