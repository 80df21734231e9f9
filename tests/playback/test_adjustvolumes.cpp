#include "SoundFixture.h"

#include "core/modControls.h"

#include <QFileInfo>

namespace {

class Volumes : public SoundFixture {
protected:
    // A fresh list over the data folder, as at the next start.
    AdjustVolumes& reload() {
        fresh = std::make_unique<AdjustVolumes>();
        fresh->Form_Load();
        return *fresh;
    }
    static QByteArray row(const QString& a, const QString& t, const QString& v, const QString& f) {
        return ("\"" + a + "\"\r\n\"" + t + "\"\r\n\"" + v + "\"\r\n\"" + f + "\"\r\n").toUtf8();
    }
    std::unique_ptr<AdjustVolumes> fresh;
};

TEST_F(Volumes, TheBoxSwitchesTheListAndIsRemembered) {
    AdjustVolumes& v = volumes();
    Commands& c = v.controls();
    EXPECT_EQ(v.caption(), QStringLiteral("Adjust Volumes - [Disabled]"));
    EXPECT_FALSE(v.lstvItems().isEnabled());
    EXPECT_FALSE(c.isEnabled(QStringLiteral("mnuClear")));

    c.run(QStringLiteral("chkAlwaysAdjust"));
    EXPECT_TRUE(v.alwaysAdjust());
    EXPECT_EQ(v.caption(), QStringLiteral("Adjust Volumes - [Enabled]"));
    EXPECT_TRUE(v.lstvItems().isEnabled());
    EXPECT_TRUE(c.isEnabled(QStringLiteral("mnuRemoveSelected")));
    EXPECT_FALSE(c.isEnabled(QStringLiteral("cmdClear"))); // no rows yet
    EXPECT_EQ(settings_Read(QStringLiteral("Settings"), QStringLiteral("AlwaysUseVolumeAdjusting")),
              QStringLiteral("1"));

    v.volumes_Add(QStringLiteral("a"), QStringLiteral("t"), 60, home.file(QStringLiteral("a.mp3")));
    v.tmrWindowUpdate_Timer();
    for (const char* name : {"cmdClear", "mnuRemoveSelected", "mnuRemoveDeadFilenames", "mnuClear"})
        EXPECT_TRUE(c.isEnabled(QString::fromLatin1(name))) << name;
    EXPECT_TRUE(reload().alwaysAdjust());

    v.mnuShowHeaders_Click();
    EXPECT_TRUE(v.headersVisible());
    EXPECT_TRUE(reload().headersVisible());
}

TEST_F(Volumes, RowsAreFoundBlindToCaseAndFollowRenames) {
    AdjustVolumes& v = volumes();
    v.setAlwaysAdjust(true);
    const QString a = home.file(QStringLiteral("Music/Song.mp3"));
    v.volumes_Add(QStringLiteral("x"), QStringLiteral("y"), 33, a);
    EXPECT_EQ(v.volumes_GetVolume(a.toLower()), 33);
    EXPECT_EQ(v.volumes_GetVolume(a.toUpper()), 33);
    EXPECT_EQ(v.volumes_GetVolume(QString()), 0);
    EXPECT_EQ(v.volumes_GetVolume(home.file(QStringLiteral("other.mp3"))), -1);

    // Renamed to a name that differs only in case.
    const QString renamed = home.file(QStringLiteral("Music/SONG.mp3"));
    v.volumes_UpdateFilename(a, renamed);
    EXPECT_EQ(v.lstvItems().text(0, AdjustVolumes::Filename), renamed);
    EXPECT_EQ(reload().lstvItems().text(0, AdjustVolumes::Filename), renamed);
    v.volumes_UpdateFilename(QString(), QStringLiteral("x"));
    EXPECT_EQ(v.lstvItems().text(0, AdjustVolumes::Filename), renamed);
}

TEST_F(Volumes, ClearingAsksFirstAndRemovalsLeaveNoEmptyFile) {
    AdjustVolumes& v = volumes();
    v.setAlwaysAdjust(true);
    const QString alive = home.file(QStringLiteral("alive.mp3"));
    TempHome::writeFile(alive, "x");
    v.volumes_Add(QString(), QString(), 10, alive);
    v.volumes_Add(QString(), QString(), 20, home.file(QStringLiteral("gone.mp3")));

    dialogs.answer(QStringLiteral("No"));
    v.controls().run(QStringLiteral("cmdClear"));
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, QStringLiteral("Clear Volumes List Confirmation"));
    EXPECT_EQ(dialogs.asked()[0].text,
              QStringLiteral("Once the volumes list has been cleared, you will not be able to get "
                             "it back.\n\nDo you wish to continue?"));
    EXPECT_EQ(v.lstvItems().count(), 2);

    v.mnuRemoveDeadFilenames_Click();
    EXPECT_EQ(v.lstvItems().count(), 1);
    EXPECT_EQ(reload().lstvItems().count(), 1);

    // Removing the selected row waits for the next change to reach the file.
    listview_SelectItem(v.lstvItems(), 1);
    v.mnuRemoveSelected_Click();
    EXPECT_EQ(v.lstvItems().count(), 0);
    EXPECT_TRUE(QFile::exists(volumesFile()));
    QFile::remove(alive);
    v.mnuRemoveDeadFilenames_Click(); // the list emptied: no file remains
    EXPECT_FALSE(QFile::exists(volumesFile()));

    v.volumes_Add(QString(), QString(), 10, alive);
    dialogs.answer(QStringLiteral("Yes"));
    v.controls().run(QStringLiteral("mnuClear"));
    EXPECT_EQ(v.lstvItems().count(), 0);
    EXPECT_FALSE(QFile::exists(volumesFile()));
}

TEST_F(Volumes, DamagedFilesKeepTheRowsBeforeTheDamageAndLoseNothing) {
    const QByteArray good = row("A", "a", "40", "/m/a.mp3") + row("B", "b", "60", "/m/b.mp3");
    const struct {
        const char* name;
        QByteArray bytes;
        int rows;
    } cases[] = {
        {"cut inside a row", good + "\"C\"\r\n\"c\"\r\n", 2},
        {"cut inside a value", good + "\"C\"\r\n\"c\"\r\n\"7", 2},
        {"binary noise", good + QByteArray("\"\x01\x02\r\n\x00\xff", 8), 2},
    };
    for (const auto& k : cases) {
        QFile::remove(volumesFile());
        QFile::remove(volumesFile() + QStringLiteral(".damaged"));
        TempHome::writeFile(volumesFile(), k.bytes);
        AdjustVolumes& v = reload();
        EXPECT_EQ(v.lstvItems().count(), k.rows) << k.name;
        // Told once on screen for the file, whatever the damage.
        EXPECT_EQ(dialogs.asked().size(), 1) << k.name;
        // The unreadable file is kept aside, so the next save cannot overwrite it.
        EXPECT_EQ(TempHome::readFile(volumesFile() + QStringLiteral(".damaged")), k.bytes)
            << k.name;
        v.setAlwaysAdjust(true);
        v.volumes_Add(QStringLiteral("D"), QString(), 5, QStringLiteral("/m/d.mp3"));
        EXPECT_EQ(reload().lstvItems().count(), k.rows + 1) << k.name;
    }
    // A second damage does not replace the first copy.
    TempHome::writeFile(volumesFile(), "\"x");
    reload();
    EXPECT_TRUE(QFile::exists(volumesFile() + QStringLiteral(".damaged-2")));
}

TEST_F(Volumes, QuotesInsideCellsAreWrittenAsTheyAreAndReadBack) {
    AdjustVolumes& v = volumes();
    v.setAlwaysAdjust(true);
    const QString title = QStringLiteral("Blue Monday \"12\" Mix");
    v.volumes_Add(QStringLiteral("New \"Order\""), title, 64, QStringLiteral("/m/\"q\".mp3"));
    v.volumes_Add(QStringLiteral("Z"), QStringLiteral("z"), 12, QStringLiteral("/m/z.mp3"));
    EXPECT_TRUE(TempHome::readFile(volumesFile()).contains("\"Blue Monday \"12\" Mix\"\r\n"));
    AdjustVolumes& again = reload();
    again.setAlwaysAdjust(true);
    ASSERT_EQ(again.lstvItems().count(), 2);
    EXPECT_EQ(again.volumes_GetVolume(QStringLiteral("/m/\"q\".mp3")), 64);
    EXPECT_EQ(again.volumes_GetVolume(QStringLiteral("/m/z.mp3")), 12);

    // A hand-made file with a row on one line still loads.
    TempHome::writeFile(volumesFile(), "\"A\",\"a\",\"50\",\"/m/a.mp3\"\r\n");
    EXPECT_EQ(reload().lstvItems().rowTexts(0), QStringList({"A", "a", "50", "/m/a.mp3"}));
}

TEST_F(Volumes, AReadOnlyFileStaysAsItWasAndTheListGoesOn) {
    const QByteArray before = row("A", "a", "40", "/m/a.mp3");
    TempHome::writeFile(volumesFile(), before);
    QFile::setPermissions(volumesFile(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    AdjustVolumes& v = reload();
    v.setAlwaysAdjust(true);
    v.volumes_Add(QString(), QString(), 90, QStringLiteral("/m/b.mp3"));
    EXPECT_EQ(v.lstvItems().count(), 2);
    EXPECT_EQ(v.volumes_GetVolume(QStringLiteral("/m/b.mp3")), 90);
    listview_Clear(v.lstvItems());
    EXPECT_FALSE(v.save());
    EXPECT_EQ(TempHome::readFile(volumesFile()), before);
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(Volumes, NonsenseVolumesCountAsNothingLoud) {
    TempHome::writeFile(volumesFile(),
                        row("A", "a", "loud", "/m/a.mp3") + row("B", "b", "250", "/m/b.mp3"));
    AdjustVolumes& v = volumes();
    v.Form_Load();
    v.setAlwaysAdjust(true);
    EXPECT_EQ(v.volumes_GetVolume(QStringLiteral("/m/a.mp3")), 0);
    ctx.volumes_ApplyStored(QStringLiteral("/m/b.mp3"));
    EXPECT_EQ(ctx.sldVolume().value(), 100); // the slider's own range holds
    EXPECT_EQ(engine.Volume(), 0);
}

} // namespace
