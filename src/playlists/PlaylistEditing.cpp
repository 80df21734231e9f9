#include "playlists/PlaylistEditing.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "core/wmpPlayer.h"
#include "playlists/PlaylistRows.h"

#include <QAction>
#include <functional>

using namespace PlaylistColumn;

// --- the per-context state

PlaylistEditState::PlaylistEditState(QObject* parent) : QObject(parent) {
    setObjectName(QStringLiteral("PlaylistEditState"));
    clearClip();
}

PlaylistEditState& PlaylistEditState::of(MainContext& ctx) {
    if (auto* s = ctx.findChild<PlaylistEditState*>(QString(), Qt::FindDirectChildrenOnly))
        return *s;
    return *new PlaylistEditState(&ctx);
}

void PlaylistEditState::clearClip() {
    for (QStringList* a :
         {&ClipArtist, &ClipTitle, &ClipYear, &ClipStatus, &ClipLength, &ClipFilename})
        *a = QStringList{QString()};
}

void PlaylistEditState::setComboBackColor(qint64 colorRef) {
    if (m_comboBackColor == colorRef) return;
    m_comboBackColor = colorRef;
    Q_EMIT comboBackColorChanged(colorRef);
}

namespace {

// Rows above the playing row that go shift it up; the playing row itself going leaves the index
// where it is.
void followRemovals(MainContext& ctx, const std::vector<bool>& removed) {
    const int playing = ctx.PlayingRowIndex;
    int above = 0;
    for (int i = 0; i + 1 < playing && i < int(removed.size()); ++i)
        above += removed[size_t(i)];
    ctx.PlayingRowIndex = playing - above;
}

int countOf(const std::vector<bool>& mask) {
    int n = 0;
    for (bool b : mask)
        n += b;
    return n;
}

struct ScanTexts {
    QString status, title, none, found, log;
};

// The frame shared by the dead and the duplicate scans of the playlist.
void removeScanned(MainContext& ctx, const ScanTexts& t,
                   const std::function<std::vector<bool>(const ListModel&)>& scan) {
    ListModel& list = ctx.lstvPlaylist();
    if (list.count() == 0) return;
    ctx.beginBusy(t.status);
    const std::vector<bool> remove = scan(list);
    const int removed = countOf(remove);
    if (removed > 0) {
        followRemovals(ctx, remove);
        list.removeRows(remove);
        listview_Renumber(list);
    }
    if (removed == 0) {
        Dialogs::msgBox(t.none, Dialogs::vbInformation, t.title);
    } else {
        Dialogs::msgBox(t.found.arg(removed), Dialogs::vbInformation, t.title);
        window_WriteLog(t.log.arg(removed));
    }
    ctx.endBusy();
}

void moveSelected(MainContext& ctx, int step) {
    ListModel& list = ctx.lstvPlaylist();
    if (!listview_HasSelection(list)) return;
    const int index = listview_SelectedIndex(list);
    const int other = index + step;
    if (other < 1 || other > list.count()) return;
    list.setMultiSelect(false);
    // Only the moved row being the playing one is followed; a row moved past the playing row
    // shifts it without the index following.
    if (index == ctx.PlayingRowIndex) {
        ctx.PlayingRowIndex += step;
        playlist_UpdatePlaylist(ctx, ctx.playerActive() ? ctx.PlayingRowIndex : 0);
    }
    listview_SwapRows(list, other, index, true);
    listview_Renumber(list);
    list.setMultiSelect(true);
}

} // namespace

void mnuSelectedMoveUp_Click(MainContext& ctx) {
    moveSelected(ctx, -1);
}
void mnuSelectedMoveDown_Click(MainContext& ctx) {
    moveSelected(ctx, +1);
}

void mnuSelectedCrop_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    std::vector<bool> unselected = list.selectionMask();
    unselected.flip();
    // PlayingRowIndex stays: the playing row goes like any other.
    list.removeRows(unselected);
    listview_Renumber(list);
}

void mnuClear_Click(MainContext& ctx) {
    PlaylistEditState::of(ctx).clearClip();
}

void mnuCopy_Click(MainContext& ctx) {
    mnuClear_Click(ctx);
    PlaylistEditState& clip = PlaylistEditState::of(ctx);
    ListModel& list = ctx.lstvPlaylist();
    const std::vector<bool> selected = list.selectionMask();
    for (int i = 0; i < list.count(); ++i) {
        if (!selected[size_t(i)]) continue;
        clip.ClipArtist.append(list.text(i, Artist));
        clip.ClipTitle.append(list.text(i, Title));
        clip.ClipYear.append(list.text(i, Year));
        clip.ClipStatus.append(list.text(i, Status));
        clip.ClipLength.append(list.text(i, Length));
        clip.ClipFilename.append(list.text(i, Filename));
    }
    // A cut leaves PlayingRowIndex as it was, even when rows above the playing song go.
    if (ctx.commands().isChecked(QStringLiteral("mnuCut"))) {
        list.removeRows(selected);
        listview_Renumber(list);
    }
}

void mnuCut_Click(MainContext& ctx) {
    ctx.commands().setChecked(QStringLiteral("mnuCut"), true);
    mnuCopy_Click(ctx);
    ctx.commands().setChecked(QStringLiteral("mnuCut"), false);
    // The mark is only a flag for the copy: the menu entry shows no box.
    ctx.commands().action(QStringLiteral("mnuCut"))->setCheckable(false);
}

void mnuPaste_Click(MainContext& ctx) {
    const PlaylistEditState& clip = PlaylistEditState::of(ctx);
    std::vector<QStringList> rows;
    for (int i = 0; i < clip.ClipArtist.size(); ++i) {
        // Skips slot 0, and also a copied row whose Artist was empty.
        if (clip.ClipArtist[i].isEmpty()) continue;
        rows.push_back({QString(), clip.ClipArtist[i], clip.ClipTitle.value(i),
                        clip.ClipYear.value(i), clip.ClipStatus.value(i), clip.ClipLength.value(i),
                        clip.ClipFilename.value(i)});
    }
    ctx.lstvPlaylist().appendRows(std::move(rows));
    listview_Renumber(ctx.lstvPlaylist());
}

void mnuSelectAll_Click(MainContext& ctx) {
    if (ctx.lstvPlaylist().count() > 0) ctx.lstvPlaylist().selectAll();
}

void mnuRemoveSelected_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    if (list.count() == 0) return;
    const int first = listview_SelectedIndex(list);
    std::vector<bool> remove = list.selectionMask();
    const int playing = ctx.PlayingRowIndex;
    // The song that plays cannot be removed.
    if (ctx.playerActive() && playing >= 1 && playing <= list.count())
        remove[size_t(playing - 1)] = false;
    followRemovals(ctx, remove);
    list.removeRows(remove);
    listview_Renumber(list);
    if (ctx.playerActive())
        ctx.commands().run(QStringLiteral("mnuJumpToCurrentlyPlaying"));
    else if (list.count() > 0)
        listview_SelectItem(list, first >= 1 && first <= list.count() ? first : list.count());
}

void mnuRemoveAlDeadFilenames_Click(MainContext& ctx) {
    const ScanTexts texts{
        QStringLiteral("Removing dead entries from the playlist, please wait..."),
        QStringLiteral("Remove Dead Filenames Information"),
        QStringLiteral("No dead filenames were found within the playlist.\n\nNo items have been "
                       "removed from the playlist.\n"),
        QStringLiteral("It has been detected that you had %1 dead filenames in the playlist.\n\n"
                       "These items have been removed.\n"),
        QStringLiteral("Dead filenames removed:  %1.")};
    removeScanned(ctx, texts, [](const ListModel& list) {
        std::vector<bool> dead(size_t(list.count()), false);
        for (int i = 0; i < list.count(); ++i)
            dead[size_t(i)] = !modFiles::file_Exists(list.text(i, Filename));
        return dead;
    });
}

void mnuRemoveDuplicateFilenames_Click(MainContext& ctx) {
    const ScanTexts texts{
        QStringLiteral("Removing duplicate entries from the playlist, please wait..."),
        QStringLiteral("Remove Duplicate Filenames Information"),
        QStringLiteral("No duplicate filenames were found within the playlist.\n\nNo items have "
                       "been removed from the playlist.\n"),
        QStringLiteral("It has been detected that you had %1 duplicate filenames in the "
                       "playlist.\n\nThese items have been removed.\n"),
        QStringLiteral("Duplicate filenames removed:  %1.")};
    removeScanned(ctx, texts,
                  [](const ListModel& list) { return playlist_EarlierDuplicates(list, Filename); });
}

void mnuRemovePhysicallyDeleteSelected_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    const QString errorTitle = QStringLiteral("Physically Delete File Error");
    const int selectedRow = list.selectedItem();
    if (selectedRow < 0) {
        Dialogs::msgBox(QStringLiteral("There was an error while trying to physicaly delete the "
                                       "selected song in the playlist.\n\nThis function will not "
                                       "continue.\n"),
                        Dialogs::vbExclamation, errorTitle);
        return;
    }
    const QString path = list.text(selectedRow, Filename);
    if (!modFiles::file_Exists(path)) {
        Dialogs::msgBox(QStringLiteral("The filename that you have selected from the list does "
                                       "not exist.\n\nThis function will not continue.\n"),
                        Dialogs::vbExclamation, errorTitle);
        return;
    }
    const QString loaded = ctx.player().FileName().toLower();
    if (path.toLower() == loaded) {
        Dialogs::msgBox(QStringLiteral("The filename that you have selected from the list is being "
                                       "used by %1.\n\nThis function will not continue.\n")
                            .arg(App::Title()),
                        Dialogs::vbExclamation, errorTitle);
        return;
    }
    std::vector<bool> remove = list.selectionMask();
    QStringList paths;
    for (int i = 0; i < list.count(); ++i) {
        if (remove[size_t(i)] && list.text(i, Filename).toLower() == loaded)
            remove[size_t(i)] = false;
        if (remove[size_t(i)]) paths.append(list.text(i, Filename));
    }
    const int answer = Dialogs::msgBox(
        QStringLiteral("You are about to physically delete these files from your computer:\n\n%1"
                       "\n\nDo you wish to continue?\n")
            .arg(paths.join(QLatin1Char('\n'))),
        Dialogs::vbExclamation | Dialogs::vbYesNo,
        QStringLiteral("Physically Delete Files Confirmation"));
    if (answer != Dialogs::vbYes) return;
    const bool toTrash =
        settings_IsOn(QStringLiteral("Settings"), QStringLiteral("SendMediaFilesToRecycleBin"),
                      QStringLiteral("1"));
    // The file services show their own messages; the row goes in any case.
    for (const QString& p : paths) {
        if (toTrash)
            modFiles::file_SendToRecycleBin(p, false, false);
        else
            modFiles::file_Delete(p);
        window_WriteLog(QStringLiteral("%1 was physically deleted from playlist.").arg(p));
    }
    followRemovals(ctx, remove);
    list.removeRows(remove);
}

void mnuPlaylistRefreshTags_Click(MainContext& ctx) {
    playlist_ShowMP3Data(ctx, false);
}
void mnuRefresh_Click(MainContext& ctx) {
    playlist_ShowMP3Data(ctx, false);
}

void PlaylistEditing_install(MainContext& ctx) {
    using Handler = void (*)(MainContext&);
    const std::pair<const char*, Handler> handlers[] = {
        {"mnuSortByArtist", mnuSortByArtist_Click},
        {"mnuSortByTitle", mnuSortByTitle_Click},
        {"mnuSortByYear", mnuSortByYear_Click},
        {"mnuSortByLength", mnuSortByLength_Click},
        {"mnuSortByFilename", mnuSortByFilename_Click},
        {"mnuSortViaAcending", mnuSortViaAcending_Click},
        {"mnuSortViaDecending", mnuSortViaDecending_Click},
        {"mnuDontSort", mnuDontSort_Click},
        {"mnuShuffleThePlaylist", mnuShuffleThePlaylist_Click},
        {"mnuSelectedMoveUp", mnuSelectedMoveUp_Click},
        {"mnuSelectedMoveDown", mnuSelectedMoveDown_Click},
        {"mnuSelectedCrop", mnuSelectedCrop_Click},
        {"mnuCut", mnuCut_Click},
        {"mnuCopy", mnuCopy_Click},
        {"mnuPaste", mnuPaste_Click},
        {"mnuClear", mnuClear_Click},
        {"mnuSelectAll", mnuSelectAll_Click},
        {"mnuRemoveSelected", mnuRemoveSelected_Click},
        {"mnuRemoveAlDeadFilenames", mnuRemoveAlDeadFilenames_Click},
        {"mnuRemoveDuplicateFilenames", mnuRemoveDuplicateFilenames_Click},
        {"mnuRemovePhysicallyDeleteSelected", mnuRemovePhysicallyDeleteSelected_Click},
        {"mnuLockPlaylist", mnuLockPlaylist_Click},
        {"mnuPlaylistRefreshTags", mnuPlaylistRefreshTags_Click},
        {"mnuRefresh", mnuRefresh_Click},
    };
    Commands& cmd = ctx.commands();
    for (const auto& entry : handlers) {
        // Not a structured binding: clang 14 refuses to capture one.
        const auto handler = entry.second;
        cmd.setHandler(QLatin1String(entry.first), [&ctx, handler] { handler(ctx); });
    }
    for (const char* name : {"mnuSortByArtist", "mnuSortByTitle", "mnuSortByYear",
                             "mnuSortByLength", "mnuSortByFilename", "mnuSortViaAcending",
                             "mnuSortViaDecending", "mnuDontSort", "mnuCut", "mnuLockPlaylist"})
        cmd.action(QLatin1String(name))->setCheckable(true);
    PlaylistEditState::of(ctx);
}
