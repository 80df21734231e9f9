#include "app/CommandSocket.h"

#include "core/Commands.h"

#include <QLocalServer>
#include <QLocalSocket>

CommandSocket* CommandSocket::startFromEnvironment(Commands& commands, QObject* parent) {
    const QString path = qEnvironmentVariable("VELDOR_COMMAND_SOCKET");
    if (path.isEmpty()) return nullptr;
    auto* socket = new CommandSocket(commands, parent);
    QLocalServer::removeServer(path);
    if (!socket->m_server->listen(path)) {
        delete socket;
        return nullptr;
    }
    return socket;
}

CommandSocket::CommandSocket(Commands& commands, QObject* parent)
    : QObject(parent), m_commands(commands), m_server(new QLocalServer(this)) {
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* s = m_server->nextPendingConnection()) {
            connect(s, &QLocalSocket::disconnected, s, &QObject::deleteLater);
            connect(s, &QLocalSocket::readyRead, this, [this, s] {
                while (s->canReadLine()) {
                    s->write(runLine(s->readLine().trimmed()) + '\n');
                    s->flush();
                }
            });
        }
    });
}

QByteArray CommandSocket::runLine(const QByteArray& line) {
    const QString name = QString::fromUtf8(line);
    if (!m_commands.has(name) || !m_commands.hasHandler(name)) return "unknown";
    if (!m_commands.isEnabled(name)) return "disabled";
    // After the reply: a command that opens a modal window must not hold the caller.
    QMetaObject::invokeMethod(
        this, [this, name] { m_commands.runIfEnabled(name); }, Qt::QueuedConnection);
    return "ok";
}
