#include "playback/SoundCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

void touch(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
}

// A sound server's socket or an ALSA playback device answers without opening the engine;
// capture devices and an empty session do not.
TEST(SoundCheck, ServerSocketOrPlaybackDeviceWithoutTheEngine) {
    const QByteArray pulse = qgetenv("PULSE_SERVER");
    qunsetenv("PULSE_SERVER");
    QTemporaryDir run, snd;
    EXPECT_FALSE(device_SoundServerOrDevice(run.path(), snd.path()));
    EXPECT_FALSE(device_SoundServerOrDevice(QString(), snd.path()));
    touch(snd.filePath("pcmC0D0c"));
    touch(snd.filePath("controlC0"));
    EXPECT_FALSE(device_SoundServerOrDevice(run.path(), snd.path()));
    touch(snd.filePath("pcmC0D3p"));
    EXPECT_TRUE(device_SoundServerOrDevice(run.path(), snd.path()));

    QTemporaryDir none;
    for (const char* socket : {"pulse/native", "pipewire-0"}) {
        QTemporaryDir session;
        touch(session.filePath(QString::fromLatin1(socket)));
        EXPECT_TRUE(device_SoundServerOrDevice(session.path(), none.path())) << socket;
    }
    qputenv("PULSE_SERVER", "unix:/somewhere");
    EXPECT_TRUE(device_SoundServerOrDevice(QString(), none.path()));
    if (pulse.isNull())
        qunsetenv("PULSE_SERVER");
    else
        qputenv("PULSE_SERVER", pulse);
}

} // namespace
