#include "system/UpdateDownload.h"
#include <QDir>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <cstdio>

UpdateDownload::UpdateDownload(QObject* parent)
    : QObject(parent), m_net(new QNetworkAccessManager(this)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(30000);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        fail(QStringLiteral("The server sent no data for %1 seconds.")
                 .arg(m_timer.interval() / 1000));
    });
}

UpdateDownload::~UpdateDownload() {
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
    }
    if (m_part.isOpen()) m_part.remove();
}

void UpdateDownload::start(const QUrl& url, const QString& target, qint64 maxBytes) {
    cancel();
    m_url = url;
    m_target = target;
    m_max = maxBytes;
    m_received = 0;
    QDir().mkpath(QFileInfo(target).absolutePath());
    m_part.setFileName(target + QLatin1String(".part"));
    if (!m_part.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        // Reported from the event loop, so callers see the same order as for network errors.
        QTimer::singleShot(0, this, [this, dir = QFileInfo(target).absolutePath()] {
            Q_EMIT finished(QStringLiteral("Could not write into the folder \"%1\".").arg(dir));
        });
        return;
    }
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(5);
    request.setTransferTimeout(0); // our own timer measures silence, not the whole transfer
    m_reply = m_net->get(request);
    connect(m_reply, &QNetworkReply::readyRead, this, &UpdateDownload::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &UpdateDownload::onFinished);
    connect(m_reply, &QNetworkReply::downloadProgress, this, [this](qint64 got, qint64 total) {
        m_timer.start();
        Q_EMIT progress(got, total);
    });
    m_timer.start();
}

void UpdateDownload::cancel() {
    if (!m_reply) return;
    QNetworkReply* reply = m_reply;
    m_reply = nullptr;
    m_timer.stop();
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    m_part.remove();
}

void UpdateDownload::onReadyRead() {
    if (!m_reply) return;
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 300 && status < 400) return; // the body of a redirect is not ours
    const QByteArray data = m_reply->readAll();
    m_received += data.size();
    if (m_received > m_max)
        return fail(QStringLiteral("The file on the server is larger than %1 bytes.").arg(m_max));
    if (m_part.write(data) != data.size())
        return fail(QStringLiteral("Could not write \"%1\".").arg(m_part.fileName()));
}

void UpdateDownload::onFinished() {
    if (!m_reply) return;
    onReadyRead();
    if (!m_reply) return;
    QNetworkReply* reply = m_reply;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QString type = reply->header(QNetworkRequest::ContentTypeHeader).toString();
    if (reply->error() == QNetworkReply::TooManyRedirectsError ||
        reply->error() == QNetworkReply::InsecureRedirectError)
        return fail(QStringLiteral("The server redirects in a loop."));
    if (status >= 400)
        return fail(
            QStringLiteral("The server answered %1 %2.")
                .arg(status)
                .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString()));
    if (reply->error() != QNetworkReply::NoError)
        return fail(
            QStringLiteral("Could not reach the update server: %1").arg(reply->errorString()));
    if (type.startsWith(QLatin1String("text/html"), Qt::CaseInsensitive))
        return fail(QStringLiteral("The server sent a web page instead of the file."));
    m_timer.stop();
    m_reply = nullptr;
    reply->deleteLater();
    const bool flushed = m_part.flush();
    m_part.close();
    // rename() replaces an older file in one step.
    if (!flushed || std::rename(QFile::encodeName(m_part.fileName()).constData(),
                                QFile::encodeName(m_target).constData()) != 0) {
        m_part.remove();
        Q_EMIT finished(QStringLiteral("Could not write \"%1\".").arg(m_target));
        return;
    }
    Q_EMIT finished(QString());
}

void UpdateDownload::fail(const QString& error) {
    cancel();
    Q_EMIT finished(error);
}
