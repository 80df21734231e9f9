#pragma once
#include <QFile>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

class QNetworkAccessManager;

// One HTTP download into a file: written under "{name}.part" and renamed when complete, so the
// final name never holds half a file. Gives up after `timeout` without data, beyond `maxBytes`,
// on an HTTP error, a redirect loop or an HTML page where a file was expected.
class UpdateDownload : public QObject {
    Q_OBJECT
public:
    explicit UpdateDownload(QObject* parent = nullptr);
    ~UpdateDownload() override;

    void start(const QUrl& url, const QString& target, qint64 maxBytes);
    void cancel();
    bool running() const { return m_reply != nullptr; }
    void setTimeout(int ms) { m_timer.setInterval(ms); }

Q_SIGNALS:
    void progress(qint64 received, qint64 total);
    // Empty error: the file is in place.
    void finished(const QString& error);

private:
    void onReadyRead();
    void onFinished();
    void fail(const QString& error);

    QNetworkAccessManager* m_net;
    QPointer<QNetworkReply> m_reply;
    QFile m_part;
    QString m_target;
    QUrl m_url;
    qint64 m_max = 0, m_received = 0;
    QTimer m_timer;
};
