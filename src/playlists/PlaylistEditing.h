#pragma once
#include <QObject>
#include <QString>
#include <QStringList>

class MainContext;

// Everything that reorders or removes rows of `lstvPlaylist`: sorting, shuffle, moves, crop, the
// row clipboard, the removal commands, physical deletion and the lock. The handlers carry the
// names of their menus; PlaylistEditing_install registers them as the menus' click handlers.

// --- sorting (PlaylistSort.cpp)
// Selects the sort column: `menu` is checked, `sortKey` is the sub-item index.
void Menu_SelectSort(MainContext& ctx, const QString& menu, int sortKey,
                     const QString& settingName);
void mnuSortByArtist_Click(MainContext& ctx);
void mnuSortByTitle_Click(MainContext& ctx);
void mnuSortByYear_Click(MainContext& ctx);
void mnuSortByLength_Click(MainContext& ctx);
void mnuSortByFilename_Click(MainContext& ctx);
void mnuSortViaAcending_Click(MainContext& ctx);
void mnuSortViaDecending_Click(MainContext& ctx);
void mnuDontSort_Click(MainContext& ctx);
void mnuShuffleThePlaylist_Click(MainContext& ctx);
// Start-up: the first sort column of "ListSorting" that holds 1, then the first direction.
void window_RestoreSortModes(MainContext& ctx);

// --- moves, clipboard and removal (PlaylistEditing.cpp)
void mnuSelectedMoveUp_Click(MainContext& ctx);
void mnuSelectedMoveDown_Click(MainContext& ctx);
void mnuSelectedCrop_Click(MainContext& ctx);
void mnuCut_Click(MainContext& ctx);
void mnuCopy_Click(MainContext& ctx);
void mnuPaste_Click(MainContext& ctx);
void mnuClear_Click(MainContext& ctx);
void mnuSelectAll_Click(MainContext& ctx);
void mnuRemoveSelected_Click(MainContext& ctx);
void mnuRemoveAlDeadFilenames_Click(MainContext& ctx);
void mnuRemoveDuplicateFilenames_Click(MainContext& ctx);
void mnuRemovePhysicallyDeleteSelected_Click(MainContext& ctx);
void mnuPlaylistRefreshTags_Click(MainContext& ctx);
void mnuRefresh_Click(MainContext& ctx);

// --- the lock (PlaylistLock.cpp)
void mnuLockPlaylist_Click(MainContext& ctx);
// Start-up: "LockPlaylist" at 1 locks once.
void window_RestoreLock(MainContext& ctx);

// Registers every handler above with ctx.commands() and makes the mode entries checkable.
void PlaylistEditing_install(MainContext& ctx);

// The program's own clipboard of rows and the lock's look of the playlist combo. One per
// MainContext, made on first use as its child.
class PlaylistEditState : public QObject {
    Q_OBJECT
public:
    static PlaylistEditState& of(MainContext& ctx);

    // Six arrays with a common index and an empty slot 0, as `mnuClear_Click` leaves them.
    QStringList ClipArtist, ClipTitle, ClipYear, ClipStatus, ClipLength, ClipFilename;
    void clearClip();
    // True while the arrays hold a row (what enables Paste and Clear).
    bool hasClip() const { return ClipArtist.size() > 1; }

    // `cmbPlaylists.BackColor` as a COLORREF; the combo's Enabled lives in PlaylistCombo.
    qint64 comboBackColor() const { return m_comboBackColor; }
    void setComboBackColor(qint64 colorRef);

Q_SIGNALS:
    void comboBackColorChanged(qint64 colorRef);

private:
    explicit PlaylistEditState(QObject* parent);
    qint64 m_comboBackColor = 0x80000005LL;
};
