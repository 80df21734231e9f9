#include "app/RestoredWindow.h"

#include <QAccessible>
#include <QLabel>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

// Name changes a screen reader would get, where the platform has an accessibility bridge.
int g_nameChanges = 0;
QObject* g_watched = nullptr;
void record(QAccessibleEvent* event) {
    if (event->object() == g_watched && event->type() == QAccessible::NameChanged) ++g_nameChanges;
}

} // namespace

TEST(StatusBarAccessible, PanelsSayTheirTextAndAnnounceASongChange) {
    Restored r;
    r.restore();
    QLabel* status = r.window->statusPanel(1);
    g_watched = status;
    g_nameChanges = 0;
    QAccessible::setActive(true); // a no-op without a bridge (offscreen): the signal tells then
    QAccessible::installUpdateHandler(record);
    QSignalSpy told(r.window.get(), &FrmMain::panelTextChanged);

    r.ctx->setStatusText(QStringLiteral("Status:  Playing... 01.  Artist - Title"));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(status);
    ASSERT_NE(iface, nullptr);
    EXPECT_EQ(iface->text(QAccessible::Name), "Status:  Playing... 01.  Artist - Title");
    EXPECT_EQ(iface->text(QAccessible::Description), "Status");
    EXPECT_EQ(iface->parent()->role(), QAccessible::StatusBar);
    QAccessibleInterface* count = QAccessible::queryAccessibleInterface(r.window->statusPanel(2));
    EXPECT_TRUE(count->text(QAccessible::Name).startsWith("Songs:  ")); // set by the window's tick
    EXPECT_EQ(count->text(QAccessible::Description), "Songs");

    // A new song is told once; the same text again is not.
    told.clear();
    r.ctx->setStatusText(QStringLiteral("Status:  Playing... 02.  Other - Song"));
    r.ctx->setStatusText(QStringLiteral("Status:  Playing... 02.  Other - Song"));
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].toInt(), 1);
    EXPECT_EQ(iface->text(QAccessible::Name), "Status:  Playing... 02.  Other - Song");
    if (QAccessible::isActive()) {
        EXPECT_EQ(g_nameChanges, 2);
    }

    QAccessible::installUpdateHandler(nullptr);
    QAccessible::setActive(false);
}
