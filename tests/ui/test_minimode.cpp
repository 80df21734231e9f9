#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "support/TempHome.h"
#include "ui/FrmCustomise.h"
#include "ui/FrmMini.h"
#include "ui/MenuImages.h"
#include "ui/MiniModeColours.h"
#include "ui/MiniScrollText.h"
#include "ui/ctlKL_Buttons.h"
#include "ui/ctlKL_Digital.h"
#include "ui/ctlKL_wScrollbar.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

struct MiniFixture : ::testing::Test {
    TempHome home;
    MainContext ctx;
    QWidget main;
    QStringList ran;

    void handle(const char* name, bool enabled = true) {
        const QString n = QString::fromLatin1(name);
        ctx.commands().setHandler(n, [this, n] { ran << n; });
        ctx.commands().setEnabled(n, enabled);
    }
    void playRow(int state) {
        ctx.lstvPlaylist().addRow(
            {"03", "Some Artist", "Some Title", "1999", "Play", "03:41", "/m/a.mp3"});
        ctx.PlayingRowIndex = 1;
        ctx.TransportState = state;
    }
};

} // namespace

TEST_F(MiniFixture, ButtonsRunTheirCommandOnlyWhenItIsEnabled) {
    handle("mnuPlay");
    handle("mnuStop", false);
    handle("mnuOpenCDPlayer");
    FrmMini mini(ctx, &main);
    mini.klbButton_Click(2);
    mini.klbButton_Click(4); // Stop is disabled: nothing
    mini.klbButton_Click(10);
    mini.klbButton_Click(12); // no such button
    EXPECT_EQ(ran, QStringList({"mnuPlay", "mnuOpenCDPlayer"}));
}

TEST_F(MiniFixture, BackToFullModeKeepsThePlaceAndShowsTheMainWindow) {
    ctx.commands().add("mnuSwitchToMiniMode", "Mini", true);
    ctx.commands().setChecked("mnuSwitchToMiniMode", true);
    FrmMini mini(ctx, &main);
    mini.move(123, 45);
    mini.klbButton_Click(11);
    EXPECT_FALSE(ctx.commands().isChecked("mnuSwitchToMiniMode"));
    EXPECT_TRUE(main.isVisible());
    EXPECT_FALSE(mini.isVisible());
    EXPECT_EQ(settings_Read("Position_MiniMode", "Window_left"), QString::number(123 * 15));
    EXPECT_EQ(settings_Read("Position_MiniMode", "Window_Top"), QString::number(45 * 15));
}

TEST_F(MiniFixture, SongTextFollowsTheStateOfThePlayer) {
    FrmMini mini(ctx, &main);
    EXPECT_EQ(mini.playingText(), "Stopped");
    playRow(0);
    EXPECT_EQ(mini.playingText(), "Playing... 03.  Some Artist - Some Title (03:41)");
    ctx.TransportState = 2;
    EXPECT_EQ(mini.playingText(), "Paused... 03.  Some Artist - Some Title (03:41)");
}

TEST_F(MiniFixture, TimersTickOnlyWhileShownAndPlaying) {
    FrmMini mini(ctx, &main);
    playRow(0);
    mini.tmrPosition_Timer();
    EXPECT_FALSE(mini.positionTimerActive()); // hidden
    mini.show();
    EXPECT_TRUE(mini.positionTimerActive());
    ctx.TransportState = 1;
    mini.tmrPosition_Timer();
    EXPECT_FALSE(mini.positionTimerActive());
    EXPECT_FALSE(mini.playingTimerActive());
    EXPECT_FALSE(mini.kldNumber()->Enabled()); // a stopped display is blank
    EXPECT_EQ(mini.kldNumber()->shownDigit(0), ctlKL_Digital::Blank);
    mini.hide();
}

TEST_F(MiniFixture, TimeShowsElapsedOrRemainingByTheMainWindowsMode) {
    ctx.commands().add("mnuStatusBarShowTimeRemaining", "Remaining", true);
    FrmMini mini(ctx, &main);
    playRow(0);
    ctx.sldPosition().setMaximum(221);
    ctx.sldPosition().setValue(70);
    mini.tmrPosition_Timer();
    EXPECT_EQ(mini.kldNumber()->value(), 70);
    EXPECT_EQ(mini.klsPosition()->value(), 70);
    ctx.commands().setChecked("mnuStatusBarShowTimeRemaining", true);
    mini.tmrPosition_Timer();
    EXPECT_EQ(mini.kldNumber()->value(), 151);
}

TEST_F(MiniFixture, SlidersFollowTheMainWindowAndDriveIt) {
    FrmMini mini(ctx, &main);
    QSignalSpy change(mini.klsVolume(), &ctlKL_wScrollbar::Change);
    QSignalSpy scrolled(&ctx.sldVolume(), &SliderModel::scrolled);
    ctx.sldVolume().setValue(31); // a hotkey or the main window moves the volume
    EXPECT_EQ(mini.klsVolume()->value(), 31);
    EXPECT_EQ(change.count(), 0);
    EXPECT_EQ(scrolled.count(), 0);
    Q_EMIT mini.klsVolume()->Change(); // the user's drag lands on the main window's slider
    ASSERT_EQ(scrolled.count(), 1);
    EXPECT_EQ(scrolled.at(0).at(0).toInt(), 31);
}

TEST_F(MiniFixture, ColoursFromSettingsWithNonsenseTakingTheDefault) {
    settings_Write("MiniModeAppearance", "BackColour", "255");
    settings_Write("MiniModeAppearance", "BorderColour", "-5");
    settings_Write("MiniModeAppearance", "LightLinesColour", "text");
    settings_Write("MiniModeAppearance", "DarkLinesColour", "&H1FFFFFF");
    settings_Write("MiniModeAppearance", "IndentFontColour", "&H80000099");
    const MiniModeColours def = MiniModeColours::defaults();
    const MiniModeColours c = MiniModeColours::read();
    EXPECT_EQ(c.colour[MiniModeColours::BackColour], 255);
    EXPECT_EQ(c.colour[MiniModeColours::BorderColour], def.colour[MiniModeColours::BorderColour]);
    EXPECT_EQ(c.colour[MiniModeColours::LightLinesColour],
              def.colour[MiniModeColours::LightLinesColour]);
    EXPECT_EQ(c.colour[MiniModeColours::DarkLinesColour],
              def.colour[MiniModeColours::DarkLinesColour]);
    EXPECT_EQ(c.colour[MiniModeColours::IndentFontColour],
              def.colour[MiniModeColours::IndentFontColour]);
    FrmMini mini(ctx, &main);
    EXPECT_EQ(mini.klbButton(0)->BackColor(), 255);
}

TEST_F(MiniFixture, CustomiseSavesAndTheWindowTakesTheColoursAtOnce) {
    FrmMini mini(ctx, &main);
    FrmCustomise dialog(&mini);
    QObject::connect(&dialog, &FrmCustomise::saved, &mini, &FrmMini::window_InstallColours);
    dialog.select(MiniModeColours::SlidersBackColour);
    EXPECT_EQ(dialog.selected(), int(MiniModeColours::SlidersBackColour));
    dialog.cmdDefault_Click();
    dialog.cmdSave_Click();
    EXPECT_EQ(
        settings_Read("MiniModeAppearance", "SlidersBackColour"),
        QString::number(MiniModeColours::defaults().colour[MiniModeColours::SlidersBackColour]));
    EXPECT_EQ(mini.klsVolume()->BackColor(),
              MiniModeColours::defaults().colour[MiniModeColours::SlidersBackColour]);
}

TEST_F(MiniFixture, ClosingWithoutTheTrayExits) {
    settings_Write("Settings", "UseSystemTraySupport", "0");
    handle("mnuExit");
    FrmMini mini(ctx, &main);
    mini.show();
    mini.close();
    EXPECT_EQ(ran, QStringList({"mnuExit"}));
    EXPECT_TRUE(mini.isVisible()); // the close itself is cancelled; the exit hides it
    mini.hide();
}

TEST(MiniScrollText, ShortTextsStayLongTextsComeBackFromTheRight) {
    MiniScrollText t;
    t.resize(100, 16);
    t.setText(QStringLiteral("Short"));
    t.tick(2);
    EXPECT_EQ(t.offset(), 0);
    t.setText(QString(200, QLatin1Char('W')) + QChar(0) + QStringLiteral("hidden"));
    EXPECT_FALSE(t.text().contains(QStringLiteral("hidden"))); // shown up to the first NUL
    t.tick(2);
    EXPECT_EQ(t.offset(), -2);
    const int width = t.fontMetrics().horizontalAdvance(t.text());
    for (int i = 0; i < 10000 && t.offset() < 0; ++i)
        t.tick(2);
    EXPECT_EQ(t.offset(), 100); // in again from the right edge
    EXPECT_GT(width, 100);
}

TEST(MenuImages, PicturesGoToTheItemsAtTheirPlaces) {
    QMenuBar bar;
    QMenu* file = bar.addMenu("&File");
    for (int i = 0; i < 23; ++i) {
        if (i == 1) {
            file->addSeparator();
            continue;
        }
        file->addAction(QStringLiteral("item %1").arg(i));
    }
    bar.addMenu("&Playback")->addAction("only one");
    window_SetMenuImages(&bar);
    const QList<QAction*> items = file->actions();
    for (int i : {0, 2, 7, 11, 15, 22})
        EXPECT_FALSE(items[i]->icon().isNull()) << i;
    EXPECT_TRUE(items[3]->icon().isNull());
    EXPECT_FALSE(bar.actions()[1]->menu()->actions()[0]->icon().isNull());
}
