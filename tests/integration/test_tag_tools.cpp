#include "integration/VeldorProcess.h"
#include "tags/clsID3v2.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

// The tag editor and the rename tools in the real program, driven as a user would.
namespace {

QByteArray frames() {
    QByteArray one(417, '\x55');
    one[0] = '\xFF';
    one[1] = '\xFB';
    one[2] = '\x90';
    one[3] = '\x00';
    return one.repeated(30);
}

QByteArray id3v1(const QByteArray& artist, const QByteArray& title) {
    return QByteArray("TAG") + title.leftJustified(30, ' ', true) +
           artist.leftJustified(30, ' ', true) + QByteArray(30, ' ') + "1999" +
           QByteArray(30, ' ') + char(17);
}

// The window of `pid` titled `title`, focused; its id or empty.
QString focusWindow(qint64 pid, const QString& title) {
    for (int i = 0; i < 100; ++i) {
        const QString id =
            xdotool({QStringLiteral("search"), QStringLiteral("--all"),
                     QStringLiteral("--onlyvisible"), QStringLiteral("--pid"), QString::number(pid),
                     QStringLiteral("--name"), QLatin1Char('^') + title + '$'})
                .section('\n', 0, 0);
        if (!id.isEmpty()) {
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), id});
            QThread::msleep(200);
            return id;
        }
        QThread::msleep(100);
    }
    return {};
}

void keys(const QString&, const QStringList& list) {
    for (const QString& k : list) {
        xdotool({QStringLiteral("key"), k});
        QThread::msleep(80);
    }
}

class TagTools : public ::testing::Test {
protected:
    VeldorProcess v;
    QStringList files;
    void SetUp() override {
        VeldorProcess::write(v.file("settings.ini"), "[Settings]\r\nAlwaysUseVolumeAdjusting=1\r\n"
                                                     "AlwaysTrackMediaFilesPlayed=1\r\n"
                                                     "UseID3v2Tags=1\r\n"
                                                     "RememberTheConsoleLogs=1\r\n");
        QByteArray spp, tracking, volumes;
        for (int i = 1; i <= 3; ++i) {
            const QString f = v.file(QStringLiteral("music/song %1.mp3").arg(i));
            files << f;
            VeldorProcess::write(f, frames() + id3v1("Band", "Song " + QByteArray::number(i)));
            spp += row({QString::number(i), "Band", "Song", "", "Play", "00:01", f});
            tracking += row({"Band", "Song", QStringLiteral("%1").arg(i + 10), f});
            volumes += row({"Band", "Song", QString::number(20 + i), f});
        }
        VeldorProcess::write(v.file("Playlists/default.spp"), spp);
        VeldorProcess::write(v.file("tracking.ssb"), tracking);
        VeldorProcess::write(v.file("volumes.ssb"), volumes);
        v.start();
        ASSERT_NE(v.waitForWindow(), 0u);
    }
    void quitAndWait() {
        v.terminate();
        ASSERT_TRUE(v.waitForExit());
    }
};

} // namespace

TEST_F(TagTools, EditATagAndTheRowFollows) {
    // Rows show ID3v2; the file gets an ID3v2 artist behind the program's back, and the row
    // shows it once the editor has written the tag.
    {
        clsID3v2 tag;
        tag.setFilename(files[0]);
        tag.setArtist(QStringLiteral("Other Band"));
        ASSERT_TRUE(tag.Save());
    }
    const QByteArray audio = VeldorProcess::read(files[0]).right(30 * 417 + 128).left(30 * 417);

    ASSERT_EQ(v.runCommand(QStringLiteral("mnuProperties")), QStringLiteral("ok"));
    const QString id = focusWindow(v.pid(), QStringLiteral("Edit ID3 Tag"));
    ASSERT_FALSE(id.isEmpty());
    keys(id, {QStringLiteral("alt+u")});
    ASSERT_TRUE(waitFor([&] {
        return VeldorProcess::read(v.file("console.log"))
            .contains(files[0].toUtf8() + " ID3 tag modified.");
    }));
    keys(id, {QStringLiteral("alt+c")});
    quitAndWait();
    const QByteArray spp = VeldorProcess::read(v.file("Playlists/default.spp"));
    EXPECT_TRUE(spp.contains("\"Other Band\"\r\n")) << spp.toStdString();
    // Both tags were written; the MPEG frames behind them did not move a byte.
    const QByteArray after = VeldorProcess::read(files[0]);
    EXPECT_EQ(after.right(30 * 417 + 128).left(30 * 417), audio);
    EXPECT_EQ(after.right(128), id3v1("Band", "Song 1"));
}

TEST_F(TagTools, MassRenameAndRestartKeepRowsCountsAndVolumes) {
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuPlaylistRenameAllFilenames")), QStringLiteral("ok"));
    const QString id = focusWindow(v.pid(), QStringLiteral("Mass File Renamer"));
    ASSERT_FALSE(id.isEmpty());
    keys(id, {QStringLiteral("alt+r")});
    QStringList renamed;
    for (int i = 1; i <= 3; ++i)
        renamed << v.file(QStringLiteral("music/Band - Song %1.mp3").arg(i));
    ASSERT_TRUE(waitFor([&] {
        for (const QString& f : renamed)
            if (!QFileInfo::exists(f)) return false;
        return true;
    }));
    keys(id, {QStringLiteral("alt+c")});
    quitAndWait();

    // A second run reads the lists back and ends: nothing reverts.
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    quitAndWait();
    const QByteArray spp = VeldorProcess::read(v.file("Playlists/default.spp"));
    const QByteArray tracking = VeldorProcess::read(v.file("tracking.ssb"));
    const QByteArray volumes = VeldorProcess::read(v.file("volumes.ssb"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(spp.contains('"' + renamed[i].toUtf8() + '"')) << spp.toStdString();
        EXPECT_TRUE(tracking.contains(
            QStringLiteral("\"%1\"\r\n\"%2\"").arg(i + 11).arg(renamed[i]).toUtf8()))
            << tracking.toStdString();
        EXPECT_TRUE(volumes.contains(
            QStringLiteral("\"%1\"\r\n\"%2\"").arg(21 + i).arg(renamed[i]).toUtf8()))
            << volumes.toStdString();
        EXPECT_FALSE(QFileInfo::exists(files[i]));
    }
}
