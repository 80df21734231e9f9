#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "playback/QueueStatus.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

namespace {
QStringList statuses(ListModel& list) {
    QStringList out;
    for (int i = 0; i < list.count(); ++i)
        out << list.text(i, 4);
    return out;
}
} // namespace

TEST(QueueStatus, PopupEntriesSetTheSelectedRowsOrAll) {
    TempHome home;
    MainContext ctx;
    QueueStatus_install(ctx);
    ListModel& list = ctx.lstvPlaylist();
    for (const char* n : {"01", "02", "03"})
        list.addRow({n, "A", "T", "", "Play", "", QStringLiteral("/m/%1.mp3").arg(n)});
    list.setSelected(0, true);
    list.setSelected(2, true);
    ctx.commands().run("mnuSkipOnce");
    EXPECT_EQ(statuses(list), QStringList({"Skip Once", "Play", "Skip Once"}));
    ctx.commands().run("mnuSkipAll");
    EXPECT_EQ(statuses(list), QStringList({"Skip", "Skip", "Skip"}));
    list.clearSelection();
    ctx.commands().run("mnuRemove"); // nothing selected: nothing changes
    EXPECT_EQ(statuses(list), QStringList({"Skip", "Skip", "Skip"}));
    ctx.PlayingRowIndex = 2;
    ctx.commands().run("mnuSelectPlaying");
    EXPECT_EQ(list.selectedItem(), 1);
    ctx.commands().run("mnuPlaySong");
    EXPECT_EQ(statuses(list), QStringList({"Skip", "Play", "Skip"}));
}
