#include "core/ListModel.h"
#include "core/MainContext.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistAutosave.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class PlaylistAutosave : public ::testing::Test {
protected:
    void SetUp() override {
        QDir().mkpath(home.file(QStringLiteral("Playlists")));
        PlaylistAutosave_setDelays(100, 400);
        PlaylistAutosave_install(ctx);
        QTest::qWait(0); // armed by the event loop
    }
    void TearDown() override { PlaylistAutosave_setDelays(1000, 5000); }

    void addRow(const QString& title) {
        ctx.lstvPlaylist().addRow({QStringLiteral("1"), QStringLiteral("Artist"), title, QString(),
                                   QStringLiteral("Play"), QString(),
                                   QStringLiteral("/m/") + title + QStringLiteral(".mp3")});
    }
    QByteArray onDisk() const { return TempHome::readFile(playlist_DefaultPath()); }
    bool waitForDisk(const QByteArray& bytes) {
        return QTest::qWaitFor([&] { return onDisk() == bytes; }, 3000);
    }

    TempHome home;
    MainContext ctx;
};

TEST_F(PlaylistAutosave, ChangesReachTheDiskAfterAQuietMomentAndAnEmptyListLeavesNone) {
    addRow(QStringLiteral("A"));
    addRow(QStringLiteral("B"));
    EXPECT_FALSE(QFile::exists(playlist_DefaultPath())); // not on the hot path
    ASSERT_TRUE(waitForDisk(ListFiles::encode(ctx.lstvPlaylist())));

    ctx.lstvPlaylist().setText(0, 2, QStringLiteral("A2"));
    ASSERT_TRUE(waitForDisk(ListFiles::encode(ctx.lstvPlaylist())));
    EXPECT_TRUE(onDisk().contains("\"A2\""));

    // A playing mark is no edit: the file is not written for it.
    QFile::remove(playlist_DefaultPath());
    ctx.lstvPlaylist().setRowStyle(1, true, 192);
    QTest::qWait(300);
    EXPECT_FALSE(QFile::exists(playlist_DefaultPath()));

    ctx.lstvPlaylist().setText(1, 2, QStringLiteral("B2"));
    ASSERT_TRUE(waitForDisk(ListFiles::encode(ctx.lstvPlaylist())));
    ctx.lstvPlaylist().clear();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(playlist_DefaultPath()); }, 3000));
}

TEST_F(PlaylistAutosave, ALongRunOfChangesIsWrittenWithinTheLongestWait) {
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(playlist_DefaultPath()) && clock.elapsed() < 3000) {
        addRow(QString::number(clock.elapsed()));
        QTest::qWait(20);
    }
    EXPECT_LT(clock.elapsed(), 1000);
}

// Once stopped for the exit, nothing the autosave took can land after the exit's own save.
TEST_F(PlaylistAutosave, StoppedItWritesNoMore) {
    addRow(QStringLiteral("A"));
    PlaylistAutosave_stop(ctx);
    addRow(QStringLiteral("B"));
    QTest::qWait(600);
    EXPECT_FALSE(QFile::exists(playlist_DefaultPath()));
}

} // namespace
