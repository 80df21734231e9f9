#include "SoundFixture.h"

#include <QAction>

namespace {

using Sound = SoundFixture;

TEST_F(Sound, SlidersMapOntoHundredthsOfADecibel) {
    const std::pair<int, int> volume[] = {
        {0, -6000}, {1, -5940}, {50, -3000}, {73, -1620}, {100, 0}};
    for (const auto& [slider, db] : volume) {
        ctx.sldVolume().scroll(slider);
        EXPECT_EQ(engine.Volume(), db) << slider;
    }
    const std::pair<int, int> balance[] = {{0, -5000}, {25, -2500}, {50, 0}, {100, 5000}};
    for (const auto& [slider, db] : balance) {
        ctx.sldBalance().scroll(slider);
        EXPECT_EQ(engine.Balance(), db) << slider;
    }
    // A move by the program alone does not reach the engine; the hooks do.
    ctx.sldVolume().setValue(20);
    EXPECT_EQ(engine.Volume(), 0);
    ctx.player_Volume(20);
    EXPECT_EQ(engine.Volume(), -4800);
}

TEST_F(Sound, MuteIsTheCaptionAndHoldsTheSlider) {
    Commands& c = ctx.commands();
    ctx.sldVolume().scroll(70);
    c.run(QStringLiteral("mnuMute"));
    EXPECT_EQ(c.caption(QStringLiteral("mnuMute")), QStringLiteral("Un-Mut&e\tE"));
    EXPECT_EQ(engine.Volume(), -6000);
    EXPECT_EQ(ctx.sldVolume().value(), 70);
    EXPECT_FALSE(ctx.sldVolume().enabled());
    QAction* button = c.action(QStringLiteral("tbMute"));
    EXPECT_TRUE(button->isChecked());
    EXPECT_EQ(button->toolTip(), QStringLiteral("Un-Mute"));

    c.run(QStringLiteral("mnuMute"));
    EXPECT_EQ(c.caption(QStringLiteral("mnuMute")), QStringLiteral("Mut&e\tE"));
    EXPECT_EQ(engine.Volume(), 70 * 60 - 6000);
    EXPECT_TRUE(ctx.sldVolume().enabled());
    EXPECT_FALSE(button->isChecked());
    EXPECT_EQ(button->toolTip(), QStringLiteral("Mute"));
}

TEST_F(Sound, StoredVolumesAtSongStartsAndTheWayBack) {
    volumes().setAlwaysAdjust(true);
    const QString a = home.file(QStringLiteral("A.mp3")), b = home.file(QStringLiteral("B.mp3"));
    volumes().volumes_Add(QStringLiteral("x"), QStringLiteral("a"), 80, a);
    volumes().volumes_Add(QStringLiteral("x"), QStringLiteral("b"), 30, b);
    ctx.sldVolume().scroll(50);

    // No stored song yet, and nothing saved: the slider stays.
    ctx.volumes_ApplyStored(home.file(QStringLiteral("c.mp3")).toLower());
    EXPECT_EQ(ctx.sldVolume().value(), 50);

    ctx.volumes_ApplyStored(a.toLower());
    EXPECT_EQ(ctx.sldVolume().value(), 80);
    EXPECT_EQ(engine.Volume(), 80 * 60 - 6000);
    EXPECT_EQ(ctx.SavedVolume, 50);
    // Two stored songs in a row: the way back leads to the first one's volume.
    ctx.volumes_ApplyStored(b.toLower());
    EXPECT_EQ(ctx.sldVolume().value(), 30);
    ctx.volumes_ApplyStored(home.file(QStringLiteral("c.mp3")).toLower());
    EXPECT_EQ(ctx.sldVolume().value(), 80);
    EXPECT_EQ(engine.Volume(), 80 * 60 - 6000);
    EXPECT_EQ(quint16(ctx.SavedVolume), 65535);
    // Once back, a further song without a stored volume changes nothing.
    ctx.sldVolume().scroll(40);
    ctx.volumes_ApplyStored(home.file(QStringLiteral("d.mp3")).toLower());
    EXPECT_EQ(ctx.sldVolume().value(), 40);
}

TEST_F(Sound, StoredVolumeIsAudibleWhileMutedAndNothingHappensWithTheFeatureOff) {
    const QString a = home.file(QStringLiteral("A.mp3"));
    volumes().setAlwaysAdjust(true);
    volumes().volumes_Add(QString(), QString(), 90, a);
    ctx.sldVolume().scroll(50);
    ctx.commands().run(QStringLiteral("mnuMute"));
    ctx.volumes_ApplyStored(a.toLower());
    EXPECT_EQ(engine.Volume(), 90 * 60 - 6000);
    EXPECT_TRUE(sound_IsMuted(ctx));

    volumes().setAlwaysAdjust(false);
    ctx.sldVolume().setValue(10);
    ctx.volumes_ApplyStored(home.file(QStringLiteral("none.mp3")).toLower());
    ctx.volumes_ApplyStored(a.toLower());
    EXPECT_EQ(ctx.sldVolume().value(), 10);
    EXPECT_EQ(volumes().volumes_GetVolume(a), -1);
    EXPECT_EQ(settings_Read(QStringLiteral("Settings"), QStringLiteral("AlwaysUseVolumeAdjusting")),
              QStringLiteral("0"));
}

TEST_F(Sound, StoreVolumeTakesTheSelectedRow) {
    const QString a = home.file(QStringLiteral("Music/A.mp3"));
    addRow(QStringLiteral("Artist"), QStringLiteral("Title"), a);
    addRow(QStringLiteral("Other"), QStringLiteral("Song"), home.file(QStringLiteral("B.mp3")));
    selectOnly(1);
    ctx.sldVolume().setValue(72);

    // Feature off: nothing happens and nothing is said.
    ctx.commands().run(QStringLiteral("mnuStoreVolume"));
    EXPECT_EQ(volumes().lstvItems().count(), 0);
    EXPECT_TRUE(dialogs.asked().isEmpty());
    EXPECT_FALSE(QFile::exists(volumesFile()));

    volumes().setAlwaysAdjust(true);
    ctx.commands().run(QStringLiteral("mnuStoreVolume"));
    EXPECT_EQ(TempHome::readFile(volumesFile()),
              QByteArray("\"Artist\"\r\n\"Title\"\r\n\"72\"\r\n\"") + a.toUtf8() + "\"\r\n");

    // Again for the same song: the number changes, artist and title stay.
    ctx.lstvPlaylist().setText(0, PlaylistColumn::Artist, QStringLiteral("Renamed"));
    ctx.sldVolume().setValue(15);
    ctx.commands().run(QStringLiteral("mnuStoreVolume"));
    ASSERT_EQ(volumes().lstvItems().count(), 1);
    EXPECT_EQ(
        volumes().lstvItems().rowTexts(0),
        QStringList({QStringLiteral("Artist"), QStringLiteral("Title"), QStringLiteral("15"), a}));

    ctx.lstvPlaylist().setSelected(1, true);
    ctx.commands().run(QStringLiteral("mnuStoreVolume"));
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, QStringLiteral("Error Storing Volume"));
    EXPECT_EQ(dialogs.asked()[0].text,
              QStringLiteral("You have selected more than 1 song from the playlist.\n\nThis "
                             "function will not continue.\n"));
    EXPECT_EQ(dialogs.asked()[0].flags, Dialogs::vbExclamation);
    EXPECT_EQ(volumes().lstvItems().count(), 1);
}

} // namespace
