// The video window's first place: against the main window's lower right, on the screen.
#include "core/MainContext.h"
#include "playback/FrmVideo.h"
#include "support/TempHome.h"

#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace {

TEST(VideoPlace, ItsFirstPlaceIsAgainstTheMainWindowAndOnTheScreen) {
    TempHome home;
    MainContext ctx;
    QWidget main;
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    // The main window hard against the lower right corner.
    main.setGeometry(area.right() + 1 - 300, area.bottom() + 1 - 200, 300, 200);
    FrmVideo video(ctx, &main);
    video.video_GetSize();
    // Never narrower than its row of controls.
    EXPECT_GE(video.width(), video.minimumSizeHint().width());
    EXPECT_GE(video.x(), area.left());
    EXPECT_GE(video.y(), area.top());
    EXPECT_LE(video.y() + video.height(), area.bottom() + 1);
    // Narrower than the screen, it sits against the right edge; wider, at the left one.
    if (video.width() <= area.width())
        EXPECT_EQ(video.x() + video.width(), area.right() + 1);
    else
        EXPECT_EQ(video.x(), area.left());
}

} // namespace
