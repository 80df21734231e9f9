#include "SoundFixture.h"

#include "playback/FrmAdjustVolumes.h"
#include "playback/FrmQueue.h"
#include "playback/FrmVolume.h"
#include "stats/FrmTracking.h"
#include "stats/Tracking.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

namespace {

using SoundWindows = SoundFixture;

// Every control a user reaches has its control name and a name a screen reader says.
void expectNamed(QWidget* window, const QStringList& names) {
    for (const QString& name : names) {
        auto* w = window->findChild<QWidget*>(name);
        ASSERT_TRUE(w) << name.toStdString();
        EXPECT_FALSE(w->accessibleName().isEmpty()) << name.toStdString();
    }
}

TEST_F(SoundWindows, AdjustVolumesShowsTheRulesState) {
    ctx.commands().run(QStringLiteral("mnuVolumes"));
    auto& w = FrmAdjustVolumes::showFor(ctx);
    expectNamed(&w,
                {"lstvItems", "chkAlwaysAdjust", "cmdHide", "cmdClear", "cmdBack", "lblOptions"});
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Adjust Volumes - [Disabled]"));
    EXPECT_FALSE(w.lstvItems->isEnabled());
    w.chkAlwaysAdjust->click();
    EXPECT_TRUE(volumes().alwaysAdjust());
    EXPECT_TRUE(w.chkAlwaysAdjust->isChecked());
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Adjust Volumes - [Enabled]"));
    EXPECT_TRUE(w.lstvItems->isEnabled());
    EXPECT_FALSE(w.cmdClear->isEnabled()); // no rows
    w.close();                             // only hides
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(&FrmAdjustVolumes::showFor(ctx), &w);
}

TEST_F(SoundWindows, TrackingWindowFollowsTheCounts) {
    Tracking_install(ctx);
    auto& w = FrmTracking::showFor(ctx);
    expectNamed(&w, {"lstvItems", "chkAlwaysUseTracking", "cmdClear", "cmdPlay", "cmdHide",
                     "lblOptions", "lblPlaylist"});
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Tracking - [Enabled]"));
    EXPECT_FALSE(w.cmdPlay->isEnabled());
    ctx.tracking_Add(QStringLiteral("a"), QStringLiteral("t"), QStringLiteral("/m/a.mp3"));
    w.rules().tmrWindowUpdate_Timer();
    EXPECT_TRUE(w.cmdPlay->isEnabled());
    EXPECT_EQ(w.lblCaption->text(), QStringLiteral("1 most commonly played media files:"));
    w.chkAlwaysUseTracking->click();
    EXPECT_FALSE(w.lstvItems->isEnabled());
    EXPECT_FALSE(w.cmdPlay->isEnabled());
    w.close();
    EXPECT_FALSE(w.isVisible());
}

TEST_F(SoundWindows, VolumeWindowIsASecondViewOfTheSlider) {
    ctx.sldVolume().setValue(35);
    auto& w = FrmVolume::showFor(ctx);
    expectNamed(&w, {"sldVolume", "chkMute", "cmdClose"});
    EXPECT_EQ(w.sldVolume->value(), 35);
    EXPECT_FALSE(w.chkMute->isChecked());

    w.sldVolume->setValue(60); // as the user's drag does
    EXPECT_EQ(ctx.sldVolume().value(), 60);
    EXPECT_EQ(engine.Volume(), 60 * 60 - 6000);

    w.chkMute->click();
    EXPECT_TRUE(sound_IsMuted(ctx));
    EXPECT_EQ(engine.Volume(), -6000);
    EXPECT_FALSE(w.sldVolume->isEnabled());
    EXPECT_EQ(ctx.sldVolume().value(), 60);
    w.chkMute->click();
    EXPECT_EQ(engine.Volume(), 60 * 60 - 6000);
    EXPECT_TRUE(w.sldVolume->isEnabled());
    w.close();
}

TEST_F(SoundWindows, QueueDialogUpdatesTheRows) {
    addRow(QStringLiteral("Band"), QString(), QStringLiteral("/m/a.ogg"));
    addRow(QStringLiteral("Other"), QString(), QStringLiteral("/m/b.ogg"));
    FrmQueue q(ctx);
    expectNamed(&q,
                {"cmbSearch", "cmbOption", "chkSearchID3v2", "cmdUpdate", "cmdBack", "cmdClose"});
    EXPECT_TRUE(q.opOptions[0]->isChecked());
    EXPECT_EQ(q.cmbOption->currentText(), QStringLiteral("Play"));
    EXPECT_EQ(q.cmbSearch->count(), 2);
    q.cmbSearch->setEditText(QStringLiteral("band"));
    q.cmbOption->setCurrentText(QStringLiteral("Skip Once"));
    q.cmdUpdate->click();
    EXPECT_EQ(ctx.lstvPlaylist().text(0, PlaylistColumn::Status), QStringLiteral("Skip Once"));
    EXPECT_EQ(ctx.lstvPlaylist().text(1, PlaylistColumn::Status), QStringLiteral("Play"));
    EXPECT_TRUE(q.cmbSearch->isEnabled());
}

} // namespace
