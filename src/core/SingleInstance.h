#pragma once
#include <QLockFile>
#include <QObject>
#include <memory>

class QLocalServer;

// One running copy per data folder. The first copy holds a lock and listens; a later copy asks
// it to come to the front and leaves without touching anything.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    explicit SingleInstance(const QString& dataFolder, QObject* parent = nullptr);
    ~SingleInstance() override;

    // True when another copy runs for this folder; it has been asked to raise its window.
    bool isPreviousInstance();
    // Starts answering later copies (call in the first copy).
    void listen();

Q_SIGNALS:
    void activateRequested();

private:
    QString m_name;
    std::unique_ptr<QLockFile> m_lock;
    QLocalServer* m_server = nullptr;
};
