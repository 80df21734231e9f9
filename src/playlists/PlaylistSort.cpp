#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/modMath.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistRows.h"

#include <QTime>
#include <iterator>

namespace {

const QString kSection = QStringLiteral("ListSorting");

struct SortColumn {
    const char* menu;
    int key;
    const char* setting;
};
// In the order in which start-up looks at them.
constexpr SortColumn kSortColumns[] = {
    {"mnuSortByArtist", PlaylistColumn::Artist, "SortByArtist"},
    {"mnuSortByTitle", PlaylistColumn::Title, "SortByTitle"},
    {"mnuSortByYear", PlaylistColumn::Year, "SortByYear"},
    {"mnuSortByLength", PlaylistColumn::Length, "SortByLength"},
    {"mnuSortByFilename", PlaylistColumn::Filename, "SortByFilename"},
};

void selectColumn(MainContext& ctx, int i) {
    const SortColumn& c = kSortColumns[i];
    Menu_SelectSort(ctx, QLatin1String(c.menu), c.key, QLatin1String(c.setting));
}

void enableSortColumns(Commands& cmd, bool on) {
    for (const SortColumn& c : kSortColumns)
        cmd.setEnabled(QLatin1String(c.menu), on);
}

void writeDirection(bool ascending, bool descending, bool dontSort) {
    settings_Write(kSection, QStringLiteral("SortViaAscendingOrder"), ascending);
    settings_Write(kSection, QStringLiteral("SortViaDescendingOrder"), descending);
    settings_Write(kSection, QStringLiteral("DoNotSortTheList"), dontSort);
}

void selectDirection(MainContext& ctx, int order) {
    Commands& cmd = ctx.commands();
    cmd.setChecked(QStringLiteral("mnuSortViaAcending"), order == 0);
    cmd.setChecked(QStringLiteral("mnuSortViaDecending"), order == 1);
    cmd.setChecked(QStringLiteral("mnuDontSort"), false);
    enableSortColumns(cmd, true);
    cmd.setEnabled(QStringLiteral("mnuShuffleThePlaylist"), false);
    ListModel& list = ctx.lstvPlaylist();
    // One sort, whether the list was sorted before or not.
    list.setSortOrder(order);
    if (!list.sorted()) list.setSorted(true);
    writeDirection(order == 0, order == 1, false);
    window_WriteLog(order == 0 ? QStringLiteral("Sorting set to:  Ascending.")
                               : QStringLiteral("Sorting set to:  Descending."));
    listview_Renumber(list);
}

} // namespace

void Menu_SelectSort(MainContext& ctx, const QString& menu, int sortKey,
                     const QString& settingName) {
    Commands& cmd = ctx.commands();
    // The chosen key gets its 1 in the same pass, at the place its 0 would have taken: the
    // same file, one write fewer, and none at all when the file already says so.
    for (const SortColumn& c : kSortColumns) {
        cmd.setChecked(QLatin1String(c.menu), false);
        const bool chosen = settingName.compare(QLatin1String(c.setting), Qt::CaseInsensitive) == 0;
        settings_Write(kSection, QLatin1String(c.setting),
                       chosen ? QStringLiteral("1") : QStringLiteral("0"));
    }
    cmd.setChecked(menu, true);
    ctx.lstvPlaylist().setSortKey(sortKey);
    settings_Write(kSection, settingName, QStringLiteral("1"));
    window_WriteLog(QStringLiteral("Sort mode set to:  %1.").arg(settingName.mid(6)));
    listview_Renumber(ctx.lstvPlaylist());
}

void mnuSortByArtist_Click(MainContext& ctx) {
    selectColumn(ctx, 0);
}
void mnuSortByTitle_Click(MainContext& ctx) {
    selectColumn(ctx, 1);
}
void mnuSortByYear_Click(MainContext& ctx) {
    selectColumn(ctx, 2);
}
void mnuSortByLength_Click(MainContext& ctx) {
    selectColumn(ctx, 3);
}
void mnuSortByFilename_Click(MainContext& ctx) {
    selectColumn(ctx, 4);
}

void mnuSortViaAcending_Click(MainContext& ctx) {
    selectDirection(ctx, 0);
}
void mnuSortViaDecending_Click(MainContext& ctx) {
    selectDirection(ctx, 1);
}

void mnuDontSort_Click(MainContext& ctx) {
    Commands& cmd = ctx.commands();
    cmd.setChecked(QStringLiteral("mnuDontSort"), true);
    cmd.setChecked(QStringLiteral("mnuSortViaAcending"), false);
    cmd.setChecked(QStringLiteral("mnuSortViaDecending"), false);
    enableSortColumns(cmd, false);
    cmd.setEnabled(QStringLiteral("mnuShuffleThePlaylist"), true);
    // The rows keep the order they have.
    ctx.lstvPlaylist().setSorted(false);
    writeDirection(false, false, true);
}

void mnuShuffleThePlaylist_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    const int passes = modMath::math_RandomNumber(10, 0, false, 20);
    for (int pass = 0; pass < passes; ++pass) {
        for (int i = 1; i <= list.count(); ++i) {
            const int j = modMath::math_RandomNumber(list.count(), 0, false, 20);
            if (j != i) listview_SwapRows(list, i, j, false);
        }
    }
    // PlayingRowIndex is left behind: the jump finds the playing row again by its filename.
    ctx.commands().run(QStringLiteral("mnuJumpToCurrentlyPlaying"));
    window_WriteLog(QStringLiteral("Playlist was shuffled at %1.")
                        .arg(QTime::currentTime().toString(QStringLiteral("hh:mm:ss"))));
}

void window_RestoreSortModes(MainContext& ctx) {
    // Column first, so that a sorted list is sorted once, by its own column.
    for (int i = 0; i < int(std::size(kSortColumns)); ++i) {
        const SortColumn& c = kSortColumns[i];
        if (settings_IsOn(kSection, QLatin1String(c.setting), QLatin1String(i == 4 ? "1" : "0"))) {
            selectColumn(ctx, i);
            break;
        }
    }
    if (settings_IsOn(kSection, QStringLiteral("SortViaAscendingOrder"), QStringLiteral("0")))
        mnuSortViaAcending_Click(ctx);
    else if (settings_IsOn(kSection, QStringLiteral("SortViaDescendingOrder"), QStringLiteral("0")))
        mnuSortViaDecending_Click(ctx);
    else if (settings_IsOn(kSection, QStringLiteral("DoNotSortTheList"), QStringLiteral("1")))
        mnuDontSort_Click(ctx);
}
