// Saves on a full file system: the old file stays whole and the user is told once. The data
// folder is a small tmpfs mounted for the test (root only, as in CI; skipped elsewhere).
#include "core/DialogScript.h"
#include "core/IniFile.h"
#include "core/ListModel.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "playlists/ListFiles.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sys/mount.h>

namespace {

class FullDisk : public ::testing::Test {
protected:
    void SetUp() override {
        const QByteArray dir = QFile::encodeName(home.path());
        if (::mount("tmpfs", dir.constData(), "tmpfs", 0, "size=256k") != 0)
            GTEST_SKIP() << "cannot mount a small file system here (needs root)";
        mounted = true;
        Dialogs::setResponder(&dialogs);
    }
    void TearDown() override {
        Dialogs::setResponder(nullptr);
        if (mounted) ::umount2(QFile::encodeName(home.path()).constData(), MNT_DETACH);
    }
    // Takes every free byte left.
    void fill() {
        QFile f(home.file("filler"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        const QByteArray block(4096, 'x');
        while (f.write(block) == block.size() && f.flush()) {
        }
        f.close();
    }
    QStringList leftovers() const {
        QStringList out;
        for (const QString& name : QDir(home.path()).entryList(QDir::Files | QDir::Hidden))
            if (name.contains(".veldor-")) out << name;
        for (const QString& name :
             QDir(home.file("Playlists")).entryList(QDir::Files | QDir::Hidden))
            if (name.contains(".veldor-")) out << name;
        return out;
    }

    TempHome home;
    ScriptedResponder dialogs;
    bool mounted = false;
};

} // namespace

TEST_F(FullDisk, SettingsAndPlaylistsKeepTheirOldContentsAndTheUserIsToldOnce) {
    const QByteArray ini = "; VELDOR Settings:\r\n\r\n[Settings]\r\nA=1\r\nB=2\r\n";
    TempHome::writeFile(home.settingsFile(), ini);
    ListModel list({"No.", "Artist", "Title", "Year", "Status", "Length", "Filename"});
    for (int i = 0; i < 100; ++i)
        list.addRow({QString::number(i), "Artist", "Title", "", "Play", "", "/m/song.mp3"});
    const QString spp = home.file("Playlists/default.spp");
    QDir().mkpath(home.file("Playlists"));
    ASSERT_TRUE(listview_SaveToFile(list, spp));
    const QByteArray sppBefore = TempHome::readFile(spp);
    fill();

    // A value long enough that the new file cannot fit in what is left.
    settings_Write("Settings", "C", QString(3000, 'c'));
    settings_Write("Settings", "D", QString(3000, 'd'));
    EXPECT_EQ(TempHome::readFile(home.settingsFile()), ini);
    for (int i = 0; i < 100; ++i)
        list.addRow({QString::number(i), "More", "Rows", "", "Play", "", "/m/more.mp3"});
    EXPECT_FALSE(listview_SaveToFile(list, spp));
    EXPECT_FALSE(listview_SaveToFile(list, spp));
    EXPECT_EQ(TempHome::readFile(spp), sppBefore);
    EXPECT_TRUE(leftovers().isEmpty()) << leftovers().join(' ').toStdString();

    // One warning a file, naming it and the reason.
    ASSERT_EQ(dialogs.asked().size(), 2);
    EXPECT_TRUE(dialogs.asked()[0].text.contains(home.settingsFile()));
    EXPECT_TRUE(dialogs.asked()[0].text.contains("No space left on device"));
    EXPECT_TRUE(dialogs.asked()[1].text.contains(spp));

    // Once there is room again the saves go through, and a later failure is told again.
    QFile::remove(home.file("filler"));
    settings_Write("Settings", "C", "3");
    EXPECT_EQ(settings_Read("Settings", "C"), "3");
    ASSERT_TRUE(listview_SaveToFile(list, spp));
    ListModel back(list.headers());
    ASSERT_TRUE(listview_LoadFromFile(back, spp));
    EXPECT_EQ(back.count(), 200);
    fill();
    settings_Write("Settings", "D", QString(3000, 'd'));
    EXPECT_EQ(dialogs.asked().size(), 3);
}

TEST_F(FullDisk, AWriteThatFailsAtTheFlushLeavesNoTemporaryFileBehind) {
    TempHome::writeFile(home.file("moods.txt"), "old\r\n");
    fill();
    const modFiles::WriteResult r =
        modFiles::file_WriteAtomicResult(home.file("moods.txt"), QByteArray(100000, 'n'));
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.error, ENOSPC);
    EXPECT_EQ(TempHome::readFile(home.file("moods.txt")), "old\r\n");
    EXPECT_TRUE(leftovers().isEmpty());
}
