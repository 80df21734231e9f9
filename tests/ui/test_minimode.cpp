#include "core/Colors.h"
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "playlists/PlaylistRows.h"
#include "support/TempHome.h"
#include "ui/FrmCustomise.h"
#include "ui/FrmMini.h"
#include "ui/MenuImages.h"
#include "ui/MiniModeColours.h"
#include "ui/MiniScrollText.h"
#include "ui/ctlKL_Buttons.h"
#include "ui/ctlKL_Digital.h"
#include "ui/ctlKL_wScrollbar.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
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
    handle("mnuOpenCDPlayer", false);
    FrmMini mini(ctx, &main);
    mini.klbButton_Click(2);
    mini.klbButton_Click(4);  // Stop is disabled: nothing
    mini.klbButton_Click(10); // the window toggles ask for no enabled entry
    mini.klbButton_Click(12); // no such button
    EXPECT_EQ(ran, QStringList({"mnuPlay", "mnuOpenCDPlayer"}));

    // A screen reader or a desktop tool presses the same buttons and moves the same sliders.
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&mini);
    ASSERT_TRUE(window);
    EXPECT_EQ(window->role(), QAccessible::Window);
    EXPECT_EQ(window->text(QAccessible::Name), "Mini-Mode");
    QAccessibleInterface* play = QAccessible::queryAccessibleInterface(mini.klbButton(2));
    ASSERT_TRUE(play && play->actionInterface());
    EXPECT_EQ(play->role(), QAccessible::Button);
    EXPECT_EQ(play->text(QAccessible::Name), "Play");
    play->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(ran.count("mnuPlay"), 2);
    QAccessibleInterface* volume = QAccessible::queryAccessibleInterface(mini.klsVolume());
    ASSERT_TRUE(volume && volume->valueInterface());
    EXPECT_EQ(volume->role(), QAccessible::Slider);
    QSignalSpy scrolled(&ctx.sldVolume(), &SliderModel::scrolled);
    volume->valueInterface()->setCurrentValue(20);
    ASSERT_EQ(scrolled.count(), 1);
    EXPECT_EQ(ctx.sldVolume().value(), 20);
    volume->valueInterface()->setCurrentValue(500); // off the range: nothing
    EXPECT_EQ(scrolled.count(), 1);
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
    ctx.lstvPlaylist().setText(0, PlaylistColumn::Title, QString(300, QLatin1Char('x')));
    mini.tmrPosition_Timer();
    EXPECT_FALSE(mini.positionTimerActive()); // hidden
    EXPECT_FALSE(mini.playingTimerActive());
    mini.show();
    EXPECT_TRUE(mini.positionTimerActive());
    EXPECT_TRUE(mini.playingTimerActive()); // the long title scrolls

    ctx.TransportState = 2; // paused: the text says so and then nothing ticks
    ctx.setStatusText(QStringLiteral("Status:  Paused... "));
    QCoreApplication::processEvents();
    EXPECT_FALSE(mini.positionTimerActive());
    EXPECT_FALSE(mini.playingTimerActive());
    EXPECT_TRUE(mini.playingText().startsWith(QStringLiteral("Paused... ")));

    ctx.TransportState = 0;
    ctx.setStatusText(QStringLiteral("Status:  Playing... "));
    EXPECT_TRUE(mini.positionTimerActive());
    mini.showMinimized(); // out of sight
    QCoreApplication::processEvents();
    EXPECT_FALSE(mini.positionTimerActive());
    EXPECT_FALSE(mini.playingTimerActive());
    mini.showNormal();
    QCoreApplication::processEvents();
    EXPECT_TRUE(mini.positionTimerActive());

    ctx.TransportState = 1;
    mini.tmrPosition_Timer();
    EXPECT_FALSE(mini.positionTimerActive());
    EXPECT_FALSE(mini.playingTimerActive());
    EXPECT_FALSE(mini.kldNumber()->Enabled()); // a stopped display is blank
    EXPECT_EQ(mini.kldNumber()->shownDigit(0), ctlKL_Digital::Blank);
    mini.hide();
}

// Counts the paint events a widget receives.
struct PaintCounter : QObject {
    int count = 0;
    QRegion region;
    explicit PaintCounter(QWidget* w) { w->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) {
            ++count;
            region += static_cast<QPaintEvent*>(e)->region();
        }
        return false;
    }
};

TEST_F(MiniFixture, AScrollStepRepaintsOnlyTheSongText) {
    FrmMini mini(ctx, &main);
    playRow(0);
    ctx.lstvPlaylist().setText(0, PlaylistColumn::Title, QString(300, QLatin1Char('x')));
    mini.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&mini));
    auto* text = mini.findChild<MiniScrollText*>(QStringLiteral("lblPlaying"));
    auto* inset = mini.findChild<QWidget*>(QStringLiteral("picPlaying"));
    auto* center = mini.findChild<QWidget*>(QStringLiteral("guiCenter"));
    ASSERT_TRUE(text && inset && center);
    QTest::qWait(50);
    PaintCounter onText(text), onInset(inset), onCenter(center), onTime(mini.kldNumber());
    const int before = text->offset();
    mini.tmrPlaying_Timer();
    QTest::qWait(50);
    EXPECT_LT(text->offset(), before);
    EXPECT_GE(onText.count, 1);
    EXPECT_EQ(onText.region.boundingRect(), text->rect());
    EXPECT_EQ(onInset.count, 0);
    EXPECT_EQ(onCenter.count, 0);
    EXPECT_EQ(onTime.count, 0);
    mini.hide();
}

TEST_F(MiniFixture, TheTitleBarMovesTheWindowUnlessLockedAndTheIconOpensTheMenu) {
    FrmMini mini(ctx, &main);
    mini.show();
    mini.move(100, 100);
    auto* bar = mini.findChild<QWidget*>(QStringLiteral("guiTitleBar"));
    auto* icon = mini.findChild<QWidget*>(QStringLiteral("imgIcon"));
    ASSERT_TRUE(bar && icon);
    auto drag = [&](QWidget* w) {
        QTest::mousePress(w, Qt::LeftButton, {}, QPoint(30, 5));
        QMouseEvent move(QEvent::MouseMove, QPointF(60, 25), w->mapToGlobal(QPointF(60, 25)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(w, &move);
        QTest::mouseRelease(w, Qt::LeftButton, {}, QPoint(60, 25));
    };
    mini.mnuLockPosition()->trigger();
    EXPECT_EQ(settings_Read("MiniModeSettings", "LockPosition"), "1");
    drag(bar);
    EXPECT_EQ(mini.pos(), QPoint(100, 100));
    QTest::mousePress(bar, Qt::RightButton, {}, QPoint(30, 5)); // the menu still opens
    EXPECT_TRUE(mini.mnuSystemMenu()->isVisible());
    mini.mnuSystemMenu()->hide();

    mini.mnuLockPosition()->trigger();
    drag(bar);
    EXPECT_EQ(mini.pos(), QPoint(130, 120));
    drag(icon); // the icon is no handle
    EXPECT_EQ(mini.pos(), QPoint(130, 120));
    QTest::mouseDClick(icon, Qt::LeftButton);
    EXPECT_TRUE(mini.mnuSystemMenu()->isVisible());
    EXPECT_EQ(mini.mnuSystemMenu()->defaultAction()->objectName(), "mnuMinimize");
    mini.mnuSystemMenu()->hide();
    mini.hide();
}

TEST_F(MiniFixture, APlaceOffEveryScreenComesBackOntoIt) {
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    {
        // Nothing stored: the bottom right-hand corner, 500 twips in.
        FrmMini mini(ctx, &main);
        EXPECT_NEAR(mini.geometry().right(), area.right() - 33, 2);
        EXPECT_NEAR(mini.geometry().bottom(), area.bottom() - 33, 2);
    }
    const std::pair<const char*, const char*> places[] = {
        {"9999999", "-9999999"}, {"-40000", "80000000"}, {"text", "2.06e12"}, {"1500", "1500"}};
    for (const auto& [top, left] : places) {
        settings_Write("Position_MiniMode", "Window_Top", top);
        settings_Write("Position_MiniMode", "Window_left", left);
        FrmMini mini(ctx, &main);
        EXPECT_TRUE(area.contains(mini.frameGeometry())) << top << " " << left;
    }
    FrmMini mini(ctx, &main); // a place on the screen is kept as it is
    EXPECT_EQ(mini.pos(), QPoint(100, 100));
}

TEST_F(MiniFixture, ClosedToTheTrayTheOtherWindowsGoToo) {
    ctx.commands().add("mnuOpenMediaLibrary", "Library", true);
    ctx.commands().setChecked("mnuOpenMediaLibrary", true);
    QWidget library;
    library.setObjectName(QStringLiteral("FrmMediaLibrary"));
    library.show();
    FrmMini mini(ctx, &main);
    mini.show();
    mini.move(210, 70);
    ctx.WindowShown = true;
    mini.miniMode_HideToTray();
    EXPECT_FALSE(mini.isVisible());
    EXPECT_FALSE(library.isVisible());
    EXPECT_FALSE(ctx.WindowShown);
    EXPECT_EQ(settings_Read("Position_MiniMode", "Window_left"), QString::number(210 * 15));
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

    // Balance and position the same way: the user's move reaches the player's slider as a
    // scroll (a seek), the program's move comes back without one.
    QSignalSpy balance(&ctx.sldBalance(), &SliderModel::scrolled);
    ctx.sldBalance().setValue(80);
    EXPECT_EQ(mini.klsBalance()->value(), 80);
    mini.klsBalance()->resize(110, 12);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(mini.klsBalance()->barPosition() + 2, 6),
                      QPointF(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(mini.klsBalance(), &press);
    QMouseEvent drag(QEvent::MouseMove, QPointF(0, 6), QPointF(), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(mini.klsBalance(), &drag);
    ASSERT_EQ(balance.count(), 1);
    EXPECT_EQ(ctx.sldBalance().value(), 0);

    playRow(0);
    ctx.sldPosition().setMaximum(200);
    ctx.sldPosition().setValue(50);
    mini.tmrPosition_Timer();
    EXPECT_EQ(mini.klsPosition()->value(), 50);
    QSignalSpy seek(&ctx.sldPosition(), &SliderModel::scrolled);
    mini.klsPosition()->scrollTo(150);
    ASSERT_EQ(seek.count(), 1);
    EXPECT_EQ(seek.at(0).at(0).toInt(), 150);
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

// Unlit segments must sit between the lit colour and the inset's ground, nearer the ground, or
// "88:88" is all one sees.
TEST_F(MiniFixture, TheReadoutStaysReadableOnAnyInset) {
    const std::pair<qint64, qint64> schemes[] = {
        {0xFFFFFF, 0x800000}, {0x000000, 0x00FF00}, {0x000000, 0x00C0FF}, {0x80000005, 0x0000FF}};
    for (const auto& [ground, lit] : schemes) {
        settings_Write("MiniModeAppearance", "IndentBackColour", QString::number(ground));
        settings_Write("MiniModeAppearance", "IndentFontColour", QString::number(lit));
        FrmMini mini(ctx, &main);
        const QColor g = Colors::fromColorRef(ground, mini.palette());
        const QColor l = Colors::fromColorRef(lit, mini.palette());
        const QColor u = Colors::fromColorRef(mini.kldNumber()->ColourDark(), mini.palette());
        auto distance = [](const QColor& a, const QColor& b) {
            return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                   std::abs(a.blue() - b.blue());
        };
        EXPECT_LT(distance(u, g), distance(l, g) / 2) << ground << " " << lit;
        EXPECT_GT(distance(u, g), 0) << "unlit segments vanish";
    }
}

TEST_F(MiniFixture, CustomiseSavesAndTheWindowTakesTheColoursAtOnce) {
    FrmMini mini(ctx, &main);
    FrmCustomise dialog(&mini);
    QObject::connect(&dialog, &FrmCustomise::saved, &mini, &FrmMini::window_InstallColours);
    dialog.select(MiniModeColours::SlidersBackColour);
    EXPECT_EQ(dialog.selected(), int(MiniModeColours::SlidersBackColour));
    // The chosen picture is marked so that it shows on a dark fill too.
    auto ring = [&](int i) {
        QWidget* picture = dialog.findChild<QWidget*>(QStringLiteral("picColour_%1").arg(i));
        return picture ? picture->grab().toImage().pixelColor(1, 1) : QColor();
    };
    EXPECT_EQ(ring(MiniModeColours::SlidersBackColour),
              dialog.palette().color(QPalette::Highlight));
    EXPECT_NE(ring(MiniModeColours::BorderColour), dialog.palette().color(QPalette::Highlight));
    dialog.cmdDefault_Click();
    dialog.cmdSave_Click();
    EXPECT_EQ(
        settings_Read("MiniModeAppearance", "SlidersBackColour"),
        QString::number(MiniModeColours::defaults().colour[MiniModeColours::SlidersBackColour]));
    EXPECT_EQ(mini.klsVolume()->BackColor(),
              MiniModeColours::defaults().colour[MiniModeColours::SlidersBackColour]);
}

TEST_F(MiniFixture, TheChosenFontIsKeptAndTheRowsGrowToHoldIt) {
    FrmMini mini(ctx, &main);
    auto* title = mini.findChild<QWidget*>(QStringLiteral("guiTitleBar"));
    auto* inset = mini.findChild<QWidget*>(QStringLiteral("picPlaying"));
    ASSERT_TRUE(title && inset);
    const int small = inset->height();
    {
        ScriptedResponder answers({QStringLiteral("DejaVu Sans,22")});
        Dialogs::setResponder(&answers);
        FrmCustomise dialog(&mini);
        dialog.cmdFont_Click();
        EXPECT_EQ(mini.font().pointSize(), QApplication::font().pointSize()); // not before Save
        dialog.cmdSave_Click();
        Dialogs::setResponder(nullptr);
    }
    mini.installFont();
    EXPECT_EQ(mini.font().pointSize(), 22);
    const int line = QFontMetrics(mini.font()).height();
    EXPECT_GT(inset->height(), small);
    EXPECT_GE(inset->height(), line + 4);
    EXPECT_GE(title->height(), line + 4);

    // Nonsense in the file: the desktop's font, or a size the window can hold.
    settings_Write("MiniModeSettings", "Font", "no font at all,,,");
    EXPECT_EQ(FrmCustomise::storedFont(QFont("Fallback", 9)).family(), "Fallback");
    settings_Write("MiniModeSettings", "Font", "DejaVu Sans,400,-1,5,400,0,0,0,0,0");
    EXPECT_LE(FrmCustomise::storedFont(QFont("Fallback", 9)).pointSizeF(), 28.0);
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
