#include "core/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

namespace {
QString runtimeDir() {
    QString dir = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (dir.isEmpty() || !QDir(dir).exists()) dir = QDir::tempPath();
    return dir;
}
} // namespace

SingleInstance::SingleInstance(const QString& dataFolder, QObject* parent) : QObject(parent) {
    const QByteArray hash =
        QCryptographicHash::hash(QDir(dataFolder).absolutePath().toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(16);
    m_name = QStringLiteral("veldor-%1-%2").arg(QString::fromLatin1(hash)).arg(getuid());
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::isPreviousInstance() {
    // The lock decides who is first; a dead holder's lock is taken over.
    m_lock = std::make_unique<QLockFile>(runtimeDir() + QLatin1Char('/') + m_name +
                                         QStringLiteral(".lock"));
    m_lock->setStaleLockTime(0);
    if (m_lock->tryLock(0)) return false;
    // Another copy holds it: ask it to come forward. It may be busy; never wait long.
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 2000) {
        QLocalSocket socket;
        socket.connectToServer(m_name);
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
    if (m_server) return;
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(m_name); // a crashed copy's socket; we hold the lock
    if (!m_server->listen(m_name)) return;
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* s = m_server->nextPendingConnection()) {
            connect(s, &QLocalSocket::readyRead, this, [this, s] {
                if (s->readAll().contains("activate")) Q_EMIT activateRequested();
            });
            connect(s, &QLocalSocket::disconnected, s, &QObject::deleteLater);
        }
    });
}
