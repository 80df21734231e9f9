#include "playlists/RowsFixture.h"
#include "system/MainKeys.h"

namespace {

// The main window's keys over a list of artists, with the commands recorded.
class MainKeys : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        for (const char* m : {"mnuPlay", "mnuStop", "mnuExit", "mnuJumpToNextPlaylist", "mnuMute",
                              "mnuSelectedMoveUp"})
            ctx.commands().setHandler(m, [this, m] { calls << m; });
        ctx.commands().setChecked("mnuKeysUseAsShortcuts", true);
        ctx.WindowShown = true;
        for (const char* a : {"abba", "Beck", "Air", "cake", "ABC"})
            add(a, QString::fromLatin1(a));
        listview_Renumber(list());
    }
    bool key(int code, int shift = 0) {
        return Form_KeyDown(ctx, code, shift, [this] { calls << "close"; });
    }
    QStringList calls;
};

TEST_F(MainKeys, ShortcutsRunOnlyEnabledCommands) {
    key('P');
    ctx.commands().setEnabled("mnuStop", false);
    key('S');
    key('N', vbAltMask);
    key('P', vbCtrlMask); // Ctrl alone does nothing
    key(38, vbAltMask);
    key(27);
    EXPECT_EQ(calls,
              (QStringList{"mnuPlay", "mnuJumpToNextPlaylist", "mnuSelectedMoveUp", "close"}));
}

TEST_F(MainKeys, ArtistKeysWhenChosenOrWhileTheWindowIsHidden) {
    ctx.WindowShown = false; // hidden in the tray: letters search even in shortcut mode
    key('P');
    EXPECT_TRUE(calls.isEmpty());
    ctx.WindowShown = true;
    mnuKeysUseAsArtistFindingKeys_Click(ctx);
    EXPECT_FALSE(ctx.commands().isChecked("mnuKeysUseAsShortcuts"));
    key(27);
    EXPECT_TRUE(calls.isEmpty()) << "Esc searches and does not close";
    mnuKeysUseAsShortcuts_Click(ctx);
    EXPECT_TRUE(ctx.commands().isChecked("mnuKeysUseAsShortcuts"));
    EXPECT_FALSE(ctx.commands().isChecked("mnuKeysUseAsArtistFindingKeys"));
}

TEST_F(MainKeys, ArtistSearchCyclesAndWrapsOnce) {
    mnuKeysUseAsArtistFindingKeys_Click(ctx);
    listview_SelectItem(list(), 1);
    key('A', vbShiftMask);
    EXPECT_EQ(listview_SelectedIndex(list()), 3);
    key('A');
    EXPECT_EQ(listview_SelectedIndex(list()), 5);
    key('A');
    EXPECT_EQ(listview_SelectedIndex(list()), 1) << "wraps round to the top";
    key('Z');
    EXPECT_EQ(listview_SelectedIndex(list()), 1) << "no artist: the selection stays";
}

TEST_F(MainKeys, ArtistSearchWithoutSelectionOrWithOneRow) {
    mnuKeysUseAsArtistFindingKeys_Click(ctx);
    list().clearSelection();
    key('C');
    EXPECT_EQ(listview_SelectedIndex(list()), 4);
    listview_Clear(list());
    add("cake", "cake");
    listview_SelectItem(list(), 1);
    key('C');
    EXPECT_EQ(listview_SelectedIndex(list()), 1);
}

} // namespace
