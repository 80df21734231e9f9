#include "cd/CdImage.h"
#include "integration/VeldorProcess.h"

#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

namespace {

// X window ids named exactly `name`, mapped ones only.
QStringList visibleWindows(const QString& name) {
    QProcess p;
    p.start(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                        QStringLiteral("--name"), '^' + name + '$'});
    p.waitForFinished(5000);
    return QString::fromLatin1(p.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

} // namespace

TEST(CdPlayerProgram, TheCdSwitchOpensThePlayerOnTheImageNamedAndItPlaysAndClosesAtExit) {
    VeldorProcess v;
    const QString cue =
        CdImage::write(v.home(), QStringLiteral("disc"), {{440, 1}, {880, 1}, {1320, 1}});
    ASSERT_FALSE(cue.isEmpty());
    VeldorProcess::write(v.file("settings.ini"), "[Settings]\r\nRememberTheConsoleLogs=1\r\n");
    v.setEnv(QStringLiteral("VELDOR_CD_DEVICE"), cue);
    v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
    v.setEnv(QStringLiteral("VELDOR_AO_FILE"), v.file("out.raw"));
    v.start({QStringLiteral("/cd")});
    ASSERT_NE(v.waitForWindow(), 0u);
    QStringList found;
    for (int i = 0; i < 100 && found.isEmpty(); ++i) {
        found = visibleWindows(QStringLiteral("CD Player"));
        if (found.isEmpty()) QThread::msleep(100);
    }
    ASSERT_EQ(found.size(), 1) << "the window shows once";

    // P plays the first row; the disc sounds from its first track.
    QProcess::execute(QStringLiteral("xdotool"),
                      {QStringLiteral("windowfocus"), QStringLiteral("--sync"), found[0],
                       QStringLiteral("key"), QStringLiteral("p")});
    QByteArray raw;
    for (int i = 0; i < 100 && raw.size() < CdImage::kBytesPerSecond / 2; ++i) {
        QThread::msleep(100);
        raw = VeldorProcess::read(v.file("out.raw"));
    }
    ASSERT_GE(raw.size(), CdImage::kBytesPerSecond / 2) << "no sound from the disc";
    EXPECT_EQ(CdImage::frequencyAt(raw, 0.2), 440);

    EXPECT_EQ(v.runCommand(QStringLiteral("mnuExit")), "ok");
    ASSERT_TRUE(v.waitForExit());
    EXPECT_EQ(v.exitCode(), 0);
    // Closed with the rest at exit: its place and columns were kept.
    EXPECT_NE(VeldorProcess::settingsValue(v.file("settings.ini"),
                                           QStringLiteral("ColumnHeaders_CDPlayer"),
                                           QStringLiteral("Number")),
              "<absent>");
    const QByteArray log = VeldorProcess::read(v.file("console.log"));
    EXPECT_TRUE(log.contains("Audio CD Played at ")) << log.toStdString();
}
