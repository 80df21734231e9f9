#pragma once
#include <QLockFile>
#include <QObject>
#include <memory>

class QLocalServer;

// One running copy per data folder. The first copy holds a lock and listens; a later copy asks
// it to come to the front and leaves without touching anything.
//
// Lock and socket live in a folder only this user can write: XDG_RUNTIME_DIR when it is the
// user's own and closed to others, else a 0700 folder "veldor" in the user's cache folder. A
// lock or socket there that belongs to someone else is never used.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    explicit SingleInstance(const QString& dataFolder, QObject* parent = nullptr);
    ~SingleInstance() override;

    // True when another copy runs for this folder; it has been asked to raise its window.
    bool isPreviousInstance();
    // Starts answering later copies (call in the first copy).
    void listen();

    // Why this copy could not make sure it is the only one (empty when it could); it then runs
    // without the lock or the socket it could not trust.
    QString problem() const { return m_problem; }
    QString lockPath() const {
        return m_folder + QLatin1Char('/') + m_name + QStringLiteral(".lock");
    }
    QString socketPath() const { return m_folder + QLatin1Char('/') + m_name; }

    // The folder for lock and socket, created when needed; empty (with `why`) when there is none
    // that only this user can write.
    static QString privateFolder(QString* why = nullptr);

Q_SIGNALS:
    void activateRequested();

private:
    bool refuse(const QString& path);

    QString m_name;
    QString m_folder;
    QString m_problem;
    std::unique_ptr<QLockFile> m_lock;
    QLocalServer* m_server = nullptr;
};
