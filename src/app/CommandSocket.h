#pragma once
#include <QObject>

class Commands;
class QLocalServer;

// Runs menu commands by name, one name a line, for scripts and integration tests that must not
// depend on where an entry sits in the menus. Only exists when VELDOR_COMMAND_SOCKET names the
// socket's path; the socket is the user's alone. A command runs as a click on its entry does:
// only when it is enabled. The reply is "ok", "disabled" or "unknown", one line.
class CommandSocket : public QObject {
    Q_OBJECT
public:
    static CommandSocket* startFromEnvironment(Commands& commands, QObject* parent);

private:
    CommandSocket(Commands& commands, QObject* parent);
    QByteArray runLine(const QByteArray& line);
    Commands& m_commands;
    QLocalServer* m_server;
};
