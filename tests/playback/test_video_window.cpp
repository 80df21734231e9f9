#include "core/MainContext.h"
#include "playback/FrmVideo.h"
#include "support/TempHome.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace {

// The scroll bars belong to the maximized picture only: a normal window keeps its stored size and
// does not grow to make room for bars it does not show.
TEST(VideoWindow, NormalWindowKeepsItsStoredSizeWithoutTheBars) {
    TempHome home;
    const QByteArray oldAo = qgetenv("VELDOR_AO");
    qputenv("VELDOR_AO", "null");
    MainContext ctx;
    FrmVideo video(ctx, nullptr);
    video.install();
    for (const char* name :
         {"klsPosition", "klsVolume", "klsBalance", "lblPosition", "lblVolume", "lblBalance"}) {
        auto* w = video.findChild<QWidget*>(QString::fromLatin1(name));
        ASSERT_TRUE(w) << name;
        EXPECT_TRUE(w->isHidden()) << name;
    }
    video.video_GetSize();
    const QSize stored = video.size();
    EXPECT_LT(stored.width(), 600);
    ctx.video_Open();
    QCoreApplication::processEvents();
    EXPECT_EQ(video.size(), stored);
    EXPECT_TRUE(video.findChild<QScrollBar*>(QStringLiteral("klsPosition"))->isHidden());
    // Full screen shows the bars; back to normal gives the stored size again.
    video.findChild<QPushButton*>(QStringLiteral("klbFullScreen"))->click();
    QCoreApplication::processEvents();
    EXPECT_FALSE(video.findChild<QScrollBar*>(QStringLiteral("klsPosition"))->isHidden());
    video.findChild<QPushButton*>(QStringLiteral("klbNormal"))->click();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_TRUE(video.findChild<QScrollBar*>(QStringLiteral("klsPosition"))->isHidden());
    EXPECT_EQ(video.size(), stored);
    ctx.video_Close();
    EXPECT_FALSE(video.isVisible());
    qputenv("VELDOR_AO", oldAo);
}

} // namespace
