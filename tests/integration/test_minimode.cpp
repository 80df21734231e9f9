#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QRect>
#include <QThread>
#include <cmath>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>

// One entry of the accessibility tree as the bus names it.
struct SpiRef {
    QString service;
    QDBusObjectPath path;
};
Q_DECLARE_METATYPE(SpiRef)
Q_DECLARE_METATYPE(QList<SpiRef>)

QDBusArgument& operator<<(QDBusArgument& a, const SpiRef& r) {
    a.beginStructure();
    a << r.service << r.path;
    a.endStructure();
    return a;
}
const QDBusArgument& operator>>(const QDBusArgument& a, SpiRef& r) {
    a.beginStructure();
    a >> r.service >> r.path;
    a.endStructure();
    return a;
}

namespace {

constexpr qint64 kBytesPerSecond = 44100 * 4;

QString run(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(10000);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

// The program's widgets as the desktop's accessibility bus shows them: how a screen reader, and
// this test, find a button on the screen.
class Accessibility {
public:
    Accessibility() {
        qDBusRegisterMetaType<SpiRef>();
        qDBusRegisterMetaType<QList<SpiRef>>();
    }
    ~Accessibility() { QDBusConnection::disconnectFromBus(QStringLiteral("a11y")); }

    bool connect() {
        if (m_bus.isConnected()) return true;
        QDBusInterface launcher(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                QStringLiteral("org.a11y.Bus"));
        const QDBusReply<QString> address = launcher.call(QStringLiteral("GetAddress"));
        if (!address.isValid()) return false;
        m_bus = QDBusConnection::connectToBus(address.value(), QStringLiteral("a11y"));
        return m_bus.isConnected();
    }

    // Screen rectangle of the first object of `role` (any when empty) named `name` inside the
    // window named `window` of the program `pid`; empty while there is none or it is not shown.
    QRect find(qint64 pid, const QString& window, const QString& role, const QString& name) {
        if (!connect()) return {};
        const QList<SpiRef> apps =
            children({QStringLiteral("org.a11y.atspi.Registry"),
                      QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))});
        for (const SpiRef& app : apps) {
            const QDBusReply<uint> owner = m_bus.interface()->servicePid(app.service);
            if (!owner.isValid() || qint64(owner.value()) != pid) continue;
            for (const SpiRef& top : children(app))
                if (text(top, QStringLiteral("Name")) == window) {
                    const QRect r = search(top, role, name, 0);
                    if (!r.isEmpty()) return r;
                }
        }
        return {};
    }

    int value(qint64 pid, const QString& window, const QString& name) {
        m_lastValue = -1;
        m_wantValue = true;
        find(pid, window, QStringLiteral("slider"), name);
        m_wantValue = false;
        return m_lastValue;
    }

private:
    QList<SpiRef> children(const SpiRef& of) {
        QDBusMessage m = QDBusMessage::createMethodCall(of.service, of.path.path(),
                                                        QStringLiteral("org.a11y.atspi.Accessible"),
                                                        QStringLiteral("GetChildren"));
        const QDBusReply<QList<SpiRef>> r = m_bus.call(m, QDBus::Block, 3000);
        return r.isValid() ? r.value() : QList<SpiRef>();
    }
    QVariant property(const SpiRef& of, const QString& iface, const QString& name) {
        QDBusMessage m = QDBusMessage::createMethodCall(
            of.service, of.path.path(), QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("Get"));
        m << iface << name;
        const QDBusReply<QDBusVariant> r = m_bus.call(m, QDBus::Block, 3000);
        return r.isValid() ? r.value().variant() : QVariant();
    }
    QString text(const SpiRef& of, const QString& name) {
        return property(of, QStringLiteral("org.a11y.atspi.Accessible"), name).toString();
    }
    QString roleName(const SpiRef& of) {
        QDBusMessage m = QDBusMessage::createMethodCall(of.service, of.path.path(),
                                                        QStringLiteral("org.a11y.atspi.Accessible"),
                                                        QStringLiteral("GetRoleName"));
        const QDBusReply<QString> r = m_bus.call(m, QDBus::Block, 3000);
        return r.isValid() ? r.value() : QString();
    }
    QRect extents(const SpiRef& of) {
        QDBusMessage m = QDBusMessage::createMethodCall(of.service, of.path.path(),
                                                        QStringLiteral("org.a11y.atspi.Component"),
                                                        QStringLiteral("GetExtents"));
        m << uint(0); // screen coordinates
        const QDBusMessage reply = m_bus.call(m, QDBus::Block, 3000);
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
        const QDBusArgument arg = reply.arguments().constFirst().value<QDBusArgument>();
        int x = 0, y = 0, w = 0, h = 0;
        arg.beginStructure();
        arg >> x >> y >> w >> h;
        arg.endStructure();
        return QRect(x, y, w, h);
    }
    QRect search(const SpiRef& at, const QString& role, const QString& name, int depth) {
        if ((role.isEmpty() || roleName(at) == role) && text(at, QStringLiteral("Name")) == name) {
            if (m_wantValue)
                m_lastValue = qRound(property(at, QStringLiteral("org.a11y.atspi.Value"),
                                              QStringLiteral("CurrentValue"))
                                         .toDouble());
            return extents(at);
        }
        if (depth > 8) return {};
        for (const SpiRef& c : children(at)) {
            const QRect r = search(c, role, name, depth + 1);
            if (!r.isEmpty()) return r;
        }
        return {};
    }

    QDBusConnection m_bus{QStringLiteral("none")};
    bool m_wantValue = false;
    int m_lastValue = -1;
};

void xdotool(const QStringList& args) {
    run(QStringLiteral("xdotool"), args);
}

void clickAt(const QPoint& p, int button = 1) {
    xdotool({"mousemove", "--sync", QString::number(p.x()), QString::number(p.y())});
    QThread::msleep(150);
    xdotool({"click", QString::number(button)});
}

// Presses at `from`, moves to `to` in steps as a hand would, lets go.
void dragFromTo(const QPoint& from, const QPoint& to) {
    xdotool({"mousemove", "--sync", QString::number(from.x()), QString::number(from.y())});
    QThread::msleep(150);
    xdotool({"mousedown", "1"});
    QThread::msleep(150);
    for (int i = 1; i <= 5; ++i) {
        const QPoint p = from + (to - from) * i / 5;
        xdotool({"mousemove", "--sync", QString::number(p.x()), QString::number(p.y())});
        QThread::msleep(80);
    }
    xdotool({"mouseup", "1"});
    QThread::msleep(300);
}

// The window manager's close request to the program's visible window called `name`.
void requestClose(qint64 pid, const QString& name) {
    const QString id = run(QStringLiteral("xdotool"),
                           {"search", "--all", "--onlyvisible", "--pid", QString::number(pid),
                            "--name", QStringLiteral("^%1$").arg(name)})
                           .section('\n', 0, 0);
    if (id.isEmpty()) {
        ADD_FAILURE() << "no window to close";
        return;
    }
    sendDeleteWindow(id.toULong());
}

// Root mean square of raw s16 stereo between two byte offsets.
double rms(const QByteArray& raw, qsizetype from, qsizetype to) {
    double sum = 0;
    qsizetype n = 0;
    for (qsizetype i = from; i + 1 < qMin(to, raw.size()); i += 2, ++n) {
        qint16 s;
        std::memcpy(&s, raw.constData() + i, 2);
        sum += double(s) * s;
    }
    return n ? std::sqrt(sum / double(n)) : 0.0;
}

QImage screenshot(const QString& path) {
    MediaFiles::run(QStringLiteral("import"),
                    {QStringLiteral("-window"), QStringLiteral("root"), path});
    return QImage(path);
}

class MiniModeRun : public ::testing::Test {
protected:
    void SetUp() override {
        QDir().mkpath(v.file(QStringLiteral("media")));
        v.setEnv(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
        v.setEnv(QStringLiteral("VELDOR_AO_FILE"), pcm());
    }
    QString pcm() { return v.file(QStringLiteral("out.raw")); }
    QRect mini(const QString& role, const QString& name) {
        return a11y.find(v.pid(), QStringLiteral("Mini-Mode"), role, name);
    }
    QRect waitForMini(const QString& role, const QString& name) {
        QRect r;
        waitFor([&] { return !(r = mini(role, name)).isEmpty(); }, 20000);
        return r;
    }
    VeldorProcess v;
    Accessibility a11y;
};

// The Mini-Mode window plays and turns the volume down from its own controls, takes a colour
// from its colour editor, and keeps the colour and its place across a restart.
TEST_F(MiniModeRun, PlaysFromItsOwnButtonsAndKeepsColourAndPlace) {
    const QString song = v.file(QStringLiteral("media/tone.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(song, 2.0));
    VeldorProcess::write(v.file(QStringLiteral("settings.ini")),
                         "[Settings]\r\nUseSystemTraySupport=0\r\n");
    VeldorProcess::write(v.file(QStringLiteral("Playlists/default.spp")),
                         "\"1\"\r\n\"Artist\"\r\n\"Tone\"\r\n\"\"\r\n\"Play\"\r\n\"00:02\"\r\n\"" +
                             song.toUtf8() + "\"\r\n");
    v.setDialogAnswers({QStringLiteral("#c03020")});
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuSwitchToMiniMode")), "ok");
    const QRect play = waitForMini(QStringLiteral("push button"), QStringLiteral("Play"));
    ASSERT_FALSE(play.isEmpty()) << "Mini-Mode's Play button is not on the screen";

    // Play from the window's own button: the song goes to the output at the volume it has.
    clickAt(play.center());
    const qint64 first = settledSize(pcm(), kBytesPerSecond * 19 / 10, 400);
    ASSERT_GE(first, kBytesPerSecond * 19 / 10) << "Play in Mini-Mode played nothing";
    const QByteArray loud = VeldorProcess::read(pcm());
    const double loudRms = rms(loud, kBytesPerSecond / 4, first - kBytesPerSecond / 4);

    // Drag the volume's handle to a quarter; the main window's slider follows.
    const QRect volume = mini(QStringLiteral("slider"), QStringLiteral("Volume"));
    ASSERT_FALSE(volume.isEmpty());
    const int before = a11y.value(v.pid(), QStringLiteral("Mini-Mode"), QStringLiteral("Volume"));
    ASSERT_GE(before, 30) << "a volume too low to turn down";
    const int handle = volume.left() + (volume.width() - 8) * before / 100 + 4;
    dragFromTo({handle, volume.center().y()},
               {volume.left() + 4 + (volume.width() - 8) / 4, volume.center().y()});
    const int after = a11y.value(v.pid(), QStringLiteral("Mini-Mode"), QStringLiteral("Volume"));
    EXPECT_NEAR(after, 25, 3);
    EXPECT_EQ(a11y.value(v.pid(), QStringLiteral("VELDOR"), QStringLiteral("Volume")), after)
        << "the main window's volume did not follow";

    // Play again: the same song, quieter.
    clickAt(play.center());
    const qint64 second = settledSize(pcm(), first + kBytesPerSecond * 19 / 10, 400);
    ASSERT_GE(second, first + kBytesPerSecond * 19 / 10) << "the second Play played nothing";
    const QByteArray all = VeldorProcess::read(pcm());
    const double quietRms = rms(all, first + kBytesPerSecond / 4, second - kBytesPerSecond / 4);
    EXPECT_GT(loudRms, 100.0);
    EXPECT_LT(quietRms, loudRms * 0.7) << loudRms << " then " << quietRms;

    // A colour from the colour editor, reached through the title bar's menu.
    QRect window = mini(QString(), QStringLiteral("Mini-Mode"));
    if (window.isEmpty()) window = waitForMini(QString(), QStringLiteral("Mini-Mode"));
    const QPoint onTitle(window.left() + window.width() * 3 / 5, window.top() + 10);
    // A pop-up menu is no part of the accessible tree: its first entry, Customise, lies just
    // below and right of where it opened.
    clickAt(onTitle, 3);
    QThread::msleep(500);
    clickAt(onTitle + QPoint(30, 10));

    // The dialog is a window of its own.
    auto inDialog = [&](const QString& name) {
        return a11y.find(v.pid(), QStringLiteral("Customise"), QStringLiteral("push button"), name);
    };
    QRect select;
    waitFor([&] { return !(select = inDialog(QStringLiteral("Select Colour"))).isEmpty(); });
    ASSERT_FALSE(select.isEmpty()) << "the colour editor did not open";
    clickAt(select.center());
    QThread::msleep(500);
    clickAt(inDialog(QStringLiteral("Save")).center());
    const QString ini = v.file(QStringLiteral("settings.ini"));
    const QString red = QString::number(0x2030C0); // #c03020 as 0x00BBGGRR
    EXPECT_TRUE(waitFor([&] {
        return VeldorProcess::settingsValue(ini, QStringLiteral("MiniModeAppearance"),
                                            QStringLiteral("BackColour")) == red;
    })) << VeldorProcess::read(v.dialogLog()).constData();
    QThread::msleep(400);
    EXPECT_EQ(screenshot(v.file(QStringLiteral("a.png"))).pixelColor(onTitle),
              QColor(0xc0, 0x30, 0x20))
        << "the window did not take the colour at once";

    // Move the window by its title bar; exit; the place is kept.
    dragFromTo(onTitle, onTitle - QPoint(300, 200));
    const QRect moved = mini(QString(), QStringLiteral("Mini-Mode"));
    EXPECT_EQ(moved.topLeft(), window.topLeft() - QPoint(300, 200));
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuExit")), "ok");
    ASSERT_TRUE(v.waitForExit());
    EXPECT_EQ(VeldorProcess::settingsValue(ini, QStringLiteral("Position_MiniMode"),
                                           QStringLiteral("Window_left")),
              QString::number(moved.left() * 15));
    EXPECT_EQ(VeldorProcess::settingsValue(ini, QStringLiteral("Position_MiniMode"),
                                           QStringLiteral("Window_Top")),
              QString::number(moved.top() * 15));

    // Started again, Mini-Mode comes up where it was left, in the colour chosen.
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuSwitchToMiniMode")), "ok");
    const QRect again = waitForMini(QString(), QStringLiteral("Mini-Mode"));
    EXPECT_EQ(again.topLeft(), moved.topLeft());
    QThread::msleep(400);
    const QPoint title(again.left() + again.width() * 3 / 5, again.top() + 10);
    EXPECT_EQ(screenshot(v.file(QStringLiteral("b.png"))).pixelColor(title),
              QColor(0xc0, 0x30, 0x20));
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuExit")), "ok");
    EXPECT_TRUE(v.waitForExit());
}

// With "ShowMiniModeWhenWindowIsClosed" the main window's close box brings up Mini-Mode; Mini-
// Mode's own close box sends the player to the tray, and the tray's Open brings Mini-Mode back.
TEST_F(MiniModeRun, TheMainWindowClosesIntoMiniModeAndMiniModeIntoTheTray) {
    QProcess trayer;
    trayer.setStandardOutputFile(QProcess::nullDevice());
    trayer.setStandardErrorFile(QProcess::nullDevice());
    trayer.start(QStringLiteral("trayer"),
                 {"--edge", "top", "--align", "right", "--widthtype", "pixel", "--width", "100",
                  "--heighttype", "pixel", "--height", "24"});
    ASSERT_TRUE(trayer.waitForStarted());
    VeldorProcess::write(v.file(QStringLiteral("settings.ini")),
                         "[Settings]\r\nUseSystemTraySupport=1\r\n"
                         "ShowMiniModeWhenWindowIsClosed=1\r\n");
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    QThread::msleep(1000); // the icon docks
    const QString main = QStringLiteral("VELDOR");
    auto mainShown = [&] { return !a11y.find(v.pid(), main, QString(), main).isEmpty(); };
    auto miniShown = [&] { return !mini(QString(), QStringLiteral("Mini-Mode")).isEmpty(); };
    EXPECT_TRUE(waitFor(mainShown));

    requestClose(v.pid(), main);
    EXPECT_TRUE(waitFor(miniShown)) << "closing the main window did not bring up Mini-Mode";
    EXPECT_FALSE(mainShown());

    const QRect close = mini(QStringLiteral("push button"), QStringLiteral("Close"));
    ASSERT_FALSE(close.isEmpty());
    clickAt(close.center());
    EXPECT_TRUE(waitFor([&] { return !miniShown(); })) << "Mini-Mode's close did not hide it";
    EXPECT_TRUE(v.running());
    EXPECT_FALSE(mainShown());

    ASSERT_EQ(v.runCommand(QStringLiteral("mnuOpen")), "ok"); // the tray's Open
    EXPECT_TRUE(waitFor(miniShown)) << "the tray's Open did not bring Mini-Mode back";
    EXPECT_FALSE(mainShown());
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuExit")), "ok");
    EXPECT_TRUE(v.waitForExit());
    trayer.kill();
    trayer.waitForFinished(3000);
}

} // namespace
