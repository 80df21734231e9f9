#include "core/App.h"
#include "support/TempHome.h"
#include "system/FrmCheckForUpdates.h"
#include "system/UpdateCheck.h"
#include "system/UpdateDownload.h"
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// A loopback web server with one canned answer per path.
class LoopbackServer : public QObject {
public:
    enum class Mode { Plain, Stall, Endless, Cut };
    struct Answer {
        QByteArray head; // status line and headers, without the blank line
        QByteArray body;
        Mode mode = Mode::Plain;
    };

    LoopbackServer() {
        server.listen(QHostAddress::LocalHost);
        connect(&server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = server.nextPendingConnection()) {
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { serve(socket); });
                connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
    }
    QString base() const { return QStringLiteral("http://127.0.0.1:%1/").arg(server.serverPort()); }
    void ok(const QString& path, const QByteArray& body,
            const QByteArray& type = "application/octet-stream") {
        answers[path] = {"HTTP/1.1 200 OK\r\nContent-Type: " + type, body};
    }

    QHash<QString, Answer> answers;

private:
    void serve(QTcpSocket* socket) {
        const QByteArray request = socket->readAll();
        if (socket->property("served").toBool()) return;
        socket->setProperty("served", true);
        const QString path = QString::fromLatin1(request.split(' ').value(1));
        const Answer answer = answers.value(path, {"HTTP/1.1 404 Not Found", "gone"});
        if (answer.mode == Mode::Endless) {
            // Two gigabytes announced, sent in pieces for as long as the client reads.
            socket->write(answer.head + "\r\nContent-Length: 2147483648\r\n\r\n");
            auto more = [socket] {
                if (socket->bytesToWrite() < (1 << 20)) socket->write(QByteArray(1 << 18, 'x'));
            };
            connect(socket, &QTcpSocket::bytesWritten, socket, more);
            more();
            return;
        }
        socket->write(answer.head +
                      "\r\nContent-Length: " + QByteArray::number(answer.body.size()) + "\r\n\r\n");
        if (answer.mode == Mode::Plain) {
            socket->write(answer.body);
            socket->disconnectFromHost();
        } else {
            socket->write(answer.body.left(answer.body.size() / 2)); // then silence, or gone
            if (answer.mode == Mode::Cut) socket->disconnectFromHost();
        }
    }

    QTcpServer server;
};

class UpdateCheckTest : public ::testing::Test {
protected:
    void SetUp() override {
        saved = qgetenv("VELDOR_UPDATE_URL");
        qputenv("VELDOR_UPDATE_URL", server.base().toUtf8());
    }
    void TearDown() override {
        saved.isNull() ? qunsetenv("VELDOR_UPDATE_URL") : qputenv("VELDOR_UPDATE_URL", saved);
    }

    // Runs one state of the wizard and waits until it has settled.
    static void next(FrmCheckForUpdates& form) {
        QSignalSpy spy(&form, &FrmCheckForUpdates::stateChanged);
        form.cmdNext_Click();
        while (!form.cmdNext->isEnabled())
            ASSERT_TRUE(spy.wait(10000));
    }
    QString updates(const QString& name) const {
        return home.file(QStringLiteral("Updates/") + name);
    }
    static QByteArray upd(const QByteArray& build) {
        return "[Version]\r\nValue=0.9\r\n[Build]\r\nValue=" + build +
               "\r\n[Beta Version]\r\nValue=Bug fixes\r\n";
    }
    // Error text of one direct download into Updates/f.bin.
    QString fetch(const QString& path, qint64 max = 1 << 20, int timeoutMs = 30000) {
        UpdateDownload download;
        download.setTimeout(timeoutMs);
        QSignalSpy done(&download, &UpdateDownload::finished);
        download.start(QUrl(server.base() + path.mid(1)), updates(QStringLiteral("f.bin")), max);
        if (done.isEmpty() && !done.wait(20000)) return QStringLiteral("hung");
        return done.first().first().toString();
    }

    TempHome home;
    LoopbackServer server;
    QByteArray saved;
};

} // namespace

TEST_F(UpdateCheckTest, ANewerBuildIsOfferedDownloadedAndOpened) {
    server.ok(QStringLiteral("/updates/veldor.upd"), upd("99"));
    server.ok(QStringLiteral("/download/veldor.zip"), QByteArray(300000, 'z'), "application/zip");
    FrmCheckForUpdates form;
    QStringList opened;
    form.openFile = [&](const QString& path) { opened << path; };
    EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Next »"));
    EXPECT_TRUE(form.lblNewBuild->text().isEmpty());

    next(form);
    EXPECT_EQ(form.lblNewVersion->text(), QStringLiteral("0.9"));
    EXPECT_EQ(form.lblNewBuild->text(), QStringLiteral("99"));
    EXPECT_EQ(form.lblNewDiscription->text(), QStringLiteral("Bug fixes"));
    ASSERT_EQ(form.cmdNext->text(), QStringLiteral("&Download »"));

    next(form);
    EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Finish"));
    EXPECT_EQ(opened, QStringList{updates(QStringLiteral("veldor.zip"))});
    EXPECT_EQ(QFileInfo(updates(QStringLiteral("veldor.zip"))).size(), 300000);
    EXPECT_FALSE(QFile::exists(updates(QStringLiteral("veldor.zip.part"))));
}

TEST_F(UpdateCheckTest, AnswersThatOfferNothingEndInFinish) {
    struct Case {
        QByteArray body;
        const char* status;
    };
    const Case cases[] = {
        {upd(QByteArray::number(App::Revision())), "newest"}, // same build as ours
        {upd("0"), "newest"},                                 // older
        {"no sections at all\r\n", "did not say"},            // nothing to read
        {upd("12b"), "not a number"},                         // build text that is no number
    };
    for (const Case& c : cases) {
        server.ok(QStringLiteral("/updates/veldor.upd"), c.body);
        FrmCheckForUpdates form;
        next(form);
        EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Finish")) << c.body.constData();
        EXPECT_TRUE(form.lblStatus->text().contains(QLatin1String(c.status)))
            << form.lblStatus->text().toStdString();
    }
    EXPECT_EQ(UpdateCheck::compare(5, QStringLiteral(" 10 ")), UpdateCheck::Verdict::Newer);
    EXPECT_EQ(UpdateCheck::compare(10, QStringLiteral("9")), UpdateCheck::Verdict::NotNewer);
}

TEST_F(UpdateCheckTest, AFailedCheckRemovesTheOldFileAndSaysWhy) {
    TempHome::writeFile(updates(QStringLiteral("veldor.upd")), upd("99"));
    FrmCheckForUpdates form;
    next(form); // nothing on the server: 404
    EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Finish"));
    EXPECT_TRUE(form.lblStatus->text().contains(QLatin1String("404")));
    EXPECT_TRUE(form.lblNewBuild->text().isEmpty());
    EXPECT_FALSE(QFile::exists(updates(QStringLiteral("veldor.upd"))));
    EXPECT_TRUE(QDir(home.file(QStringLiteral("Updates"))).entryList(QDir::Files).isEmpty());
}

TEST_F(UpdateCheckTest, BadServersAreReportedAndLeaveNoFile) {
    server.answers[QStringLiteral("/500")] = {"HTTP/1.1 500 Internal Server Error", "oops"};
    server.answers[QStringLiteral("/loop")] = {"HTTP/1.1 302 Found\r\nLocation: /loop", ""};
    server.ok(QStringLiteral("/page"), "<html><body>Welcome</body></html>",
              "text/html; charset=utf-8");
    server.answers[QStringLiteral("/huge")] = {
        "HTTP/1.1 200 OK", {}, LoopbackServer::Mode::Endless};
    server.answers[QStringLiteral("/stall")] = {"HTTP/1.1 200 OK", QByteArray(1000, 'a'),
                                                LoopbackServer::Mode::Stall};

    EXPECT_TRUE(fetch(QStringLiteral("/500")).contains(QLatin1String("500")));
    EXPECT_TRUE(fetch(QStringLiteral("/loop")).contains(QLatin1String("loop")));
    EXPECT_TRUE(fetch(QStringLiteral("/page")).contains(QLatin1String("web page")));
    EXPECT_TRUE(fetch(QStringLiteral("/huge"), 64 * 1024).contains(QLatin1String("larger")));
    EXPECT_TRUE(fetch(QStringLiteral("/stall"), 1 << 20, 300).contains(QLatin1String("no data")));
    server.answers[QStringLiteral("/cut")] = {"HTTP/1.1 200 OK", QByteArray(100000, 'c'),
                                              LoopbackServer::Mode::Cut};
    const QString cut = fetch(QStringLiteral("/cut"));
    EXPECT_FALSE(cut.isEmpty() || cut == QLatin1String("hung")) << cut.toStdString();
    EXPECT_TRUE(QDir(home.file(QStringLiteral("Updates"))).entryList(QDir::Files).isEmpty());

    // A server that is not there at all.
    qputenv("VELDOR_UPDATE_URL", "http://127.0.0.1:1/");
    FrmCheckForUpdates form;
    next(form);
    EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Finish"));
    EXPECT_FALSE(form.lblStatus->text().isEmpty());
}

TEST_F(UpdateCheckTest, AnUnwritableUpdatesFolderIsReported) {
    server.ok(QStringLiteral("/updates/veldor.upd"), upd("99"));
    TempHome::writeFile(home.file(QStringLiteral("Updates")), "a file where the folder belongs");
    FrmCheckForUpdates form;
    next(form);
    EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Finish"));
    EXPECT_TRUE(form.lblStatus->text().contains(QLatin1String("Could not write")))
        << form.lblStatus->text().toStdString();
}

TEST_F(UpdateCheckTest, CancelStopsTheDownloadAndKeepsNoPart) {
    server.ok(QStringLiteral("/updates/veldor.upd"), upd("99"));
    server.answers[QStringLiteral("/download/veldor.zip")] = {
        "HTTP/1.1 200 OK", QByteArray(5000, 'a'), LoopbackServer::Mode::Stall};
    FrmCheckForUpdates form;
    next(form);
    ASSERT_EQ(form.cmdNext->text(), QStringLiteral("&Download »"));
    form.cmdNext_Click();
    ASSERT_TRUE(form.download().running());
    QTest::qWait(200); // let the first bytes land in the .part file
    EXPECT_EQ(form.cmdClose->text(), QStringLiteral("&Cancel"));
    form.cmdClose_Click();
    EXPECT_EQ(form.cmdNext->text(), QStringLiteral("&Finish"));
    EXPECT_FALSE(QFile::exists(updates(QStringLiteral("veldor.zip"))));
    EXPECT_FALSE(QFile::exists(updates(QStringLiteral("veldor.zip.part"))));
    EXPECT_EQ(UpdateCheck::versionFileUrl().toString(),
              server.base() + QLatin1String("updates/veldor.upd"));
}
