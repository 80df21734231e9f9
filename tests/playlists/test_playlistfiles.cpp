#include "PlaylistFilesFixture.h"

#include "core/Commands.h"
#include "playlists/ListFiles.h"
#include "core/PlaylistCombo.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/SendToMenu.h"
#include "core/modControls.h"

#include <QFile>

namespace {

const QString kMissing = "It has been detected the playlist you are trying to %1 does not "
                         "exist.\n\nPlease check the playlist file path before continuing.\n";

QByteArray row(const QString& n, const QString& artist, const QString& file) {
    return spp({n, artist, "T", "", "Play", "", file});
}

} // namespace

class PlaylistFilesTest : public PlaylistFilesFixture {
protected:
    PlaylistFilesTest() {
        PlaylistFiles_install(ctx);
        ctx.commands().setHandler("mnuJumpToCurrentlyPlaying", [this] { ++jumps; });
        ctx.window_UncheckMenus = [this] { ++unchecks; };
        ctx.recentPlaylists_Add = [this](const QString& p) { recent << p; };
    }
    void install() {
        ctx.cmbPlaylists().clear();
        window_InstallPlaylists(ctx);
        ctx.PlaylistComboReady = true;
    }
    QStringList combo() { return ctx.cmbPlaylists().items(); }
    QStringList sendTo() {
        QStringList out;
        for (const auto& item : SendToMenu::of(ctx).items())
            out << item.caption;
        return out;
    }
    void write(const QString& name, const QByteArray& bytes) {
        TempHome::writeFile(playlist(name), bytes);
    }

    int jumps = 0, unchecks = 0;
    QStringList recent;
};

TEST_F(PlaylistFilesTest, FolderFillsComboAndSendToSortedWithoutDefault) {
    install();
    EXPECT_EQ(combo(), QStringList{"((Select Playlist))"});
    const SendToMenu& menu = SendToMenu::of(ctx);
    ASSERT_EQ(sendTo(), QStringList{"[None]"});
    EXPECT_TRUE(menu.item(0).visible);
    EXPECT_FALSE(menu.item(0).enabled);

    for (const char* name : {"rock", "Default", "Ambient", "jazz.mix"})
        write(name, {});
    TempHome::writeFile(home.file("Playlists/upper.SPP"), "x");
    install();
    playlist_Select(ctx, "jazz.mix.spp");
    write("Blues", {});
    ctx.commands().run("mnuUpdate"); // rebuilds and keeps the shown entry
    EXPECT_EQ(combo(),
              QStringList({"((Select Playlist))", "Ambient", "Blues", "jazz.mix", "rock"}));
    EXPECT_EQ(sendTo(), QStringList({"[None]", "Ambient", "Blues", "jazz.mix", "rock"}));
    EXPECT_EQ(ctx.cmbPlaylists().text(), "jazz.mix");
    EXPECT_FALSE(menu.item(0).visible);
}

TEST_F(PlaylistFilesTest, SelectShowsTheLastExactMatchAndOpensNothing) {
    for (const char* e : {"((Select Playlist))", "Rock", "rock", "Rock", "Jazz"})
        ctx.cmbPlaylists().addItem(e);
    ctx.PlaylistComboReady = true;
    addSong("1", "a", "b", "/m/a.mp3");
    playlist_Select(ctx, "/elsewhere/Rock.spp");
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 3);
    playlist_Select(ctx, "rock");
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 2);
    playlist_Select(ctx, "ROCK.spp");
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 0);
    EXPECT_TRUE(ctx.PlaylistComboReady);
    EXPECT_EQ(list().count(), 1); // nothing opened, though no such files exist
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(PlaylistFilesTest, ChoosingAnEntryOpensItOrRebuildsWhenItVanished) {
    write("Gone", row("1", "gone", "/m/g.mp3"));
    write("Mix", row("9", "First", "/m/1.mp3") + row("4", "Second", "/m/2.mp3"));
    install();
    addSong("1", "old", "row", "/m/old.mp3");
    ctx.PlayNextRowIndex = 2;

    ctx.PlaylistComboReady = false; // a programmatic change opens nothing
    ctx.cmbPlaylists().setListIndex(2);
    EXPECT_EQ(list().text(0, 1), "old");
    ctx.PlaylistComboReady = true;
    ctx.cmbPlaylists().setListIndex(2);
    ASSERT_EQ(list().count(), 2);
    EXPECT_EQ(list().text(0, 0), "01");
    EXPECT_EQ(listview_SelectedIndex(list()), 1);
    EXPECT_EQ(ctx.PlayingRowIndex, 1);
    EXPECT_EQ(ctx.PlayNextRowIndex, 0);
    EXPECT_EQ(ctx.commands().caption("mnuPlayNext"), "Play Ne&xt...\tX");
    EXPECT_EQ(jumps, 1);
    EXPECT_TRUE(log().contains(playlist("Mix") + " opened.\r\n"));

    QFile::remove(playlist("Gone"));
    ctx.cmbPlaylists().setListIndex(1);
    ASSERT_EQ(asked(), QStringList{"message|Playlist Filename Not Found"});
    EXPECT_EQ(dialogs.asked()[0].text, kMissing.arg("open"));
    EXPECT_EQ(combo(), QStringList({"((Select Playlist))", "Mix"}));
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 0);
    EXPECT_EQ(list().count(), 2);
}

TEST_F(PlaylistFilesTest, NewOpenAndSave) {
    write("Mine", row("5", "a", "/m/a.mp3"));
    install();
    addSong("1", "x", "y", "/m/x.mp3");
    ctx.commands().run("mnuNew");
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 0);
    EXPECT_TRUE(ctx.PlaylistComboReady); // the user can still choose a playlist
    EXPECT_TRUE(log().contains("Playlist cleared.\r\n"));

    dialogs.answer(playlist("Mine"));
    ctx.commands().run("mnuOpenPlaylist");
    EXPECT_EQ(dialogs.asked()[0].title, "Open Playlist...");
    EXPECT_EQ(dialogs.asked()[0].text, "VELDOR Playlists|*.spp|");
    ASSERT_EQ(list().count(), 1);
    EXPECT_EQ(list().text(0, 0), "01");
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Mine");
    EXPECT_EQ(recent, QStringList{playlist("Mine")});
    EXPECT_TRUE(log().contains(playlist("Mine") + " opened.\r\n"));

    addSong("2", "b", "T", "/m/b.mp3");
    ctx.commands().run("mnuSave"); // replaces the named playlist, silently
    EXPECT_EQ(TempHome::readFile(playlist("Mine")),
              row("01", "a", "/m/a.mp3") + row("2", "b", "/m/b.mp3"));
    EXPECT_EQ(dialogs.asked().size(), 1);

    // A file from outside the folder opens under no name; saving it then asks for one.
    TempHome::writeFile(home.file("outside.spp"), row("1", "b", "/m/b.mp3"));
    dialogs.answer(home.file("outside.spp"));
    ctx.commands().run("mnuOpenPlaylist");
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 0);
    ctx.commands().run("mnuSave");
    EXPECT_EQ(asked().last(), "save|Save Playlist...");
}

TEST_F(PlaylistFilesTest, SaveAsANewListFileNamesAndSelectsIt) {
    install();
    addSong("1", "a", "T", "/m/a.mp3");
    dialogs.answer(playlist("Fresh") + "|1");
    ctx.commands().run("mnuSavePlaylistAs");
    EXPECT_EQ(dialogs.asked()[0].text,
              "VELDOR Playlist|*.spp|HTML Playlist|*.html|TEXT Playlist|*.txt|");
    EXPECT_EQ(TempHome::readFile(playlist("Fresh")), row("1", "a", "/m/a.mp3"));
    EXPECT_EQ(combo(), QStringList({"((Select Playlist))", "Fresh"}));
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Fresh");
    EXPECT_EQ(sendTo(), QStringList({"[None]", "Fresh"}));
    EXPECT_EQ(recent, QStringList{playlist("Fresh")});
    EXPECT_TRUE(log().contains(playlist("Fresh") + " saved as playlist.\r\n"));

    // Saved as "default" it becomes the default playlist, which is never listed.
    dialogs.answer(playlist("default") + "|1");
    ctx.commands().run("mnuSavePlaylistAs");
    EXPECT_TRUE(QFile::exists(playlist("default")));
    EXPECT_EQ(combo(), QStringList({"((Select Playlist))", "Fresh"}));
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 0);
}

TEST_F(PlaylistFilesTest, OverwriteAsksAndTheFilterIndexAloneGivesTheKind) {
    const QByteArray old = row("1", "old", "/m/old.mp3");
    write("Looks", old);
    install();
    ctx.cmbPlaylists().addItem("Not in the folder"); // shows that nothing rebuilds the combo
    playlist_Select(ctx, "Looks");
    addSong("1", "Artist", "T", "/m/a.mp3");

    dialogs.answer(playlist("Looks") + "|2");
    dialogs.answer("no");
    ctx.commands().run("mnuSavePlaylistAs");
    ASSERT_EQ(asked().last(), "message|Overwrite Existing File Confirmation");
    EXPECT_EQ(dialogs.asked().last().text, "The filename you have entered/selected already "
                                           "exists.\n\nWould you like to overwrite this file?\n");
    EXPECT_EQ(dialogs.asked().last().flags, 52);
    EXPECT_EQ(TempHome::readFile(playlist("Looks")), old);

    dialogs.answer(playlist("Looks") + "|2"); // HTML, whatever the name says
    dialogs.answer("yes");
    ctx.commands().run("mnuSavePlaylistAs");
    EXPECT_TRUE(TempHome::readFile(playlist("Looks")).startsWith("<html>\r\n<head>\r\n"));
    EXPECT_TRUE(log().contains(playlist("Looks") + " saved as HTML playlist.\r\n"));

    dialogs.answer(playlist("Looks") + "|1");
    dialogs.answer("yes");
    ctx.commands().run("mnuSavePlaylistAs");
    EXPECT_EQ(TempHome::readFile(playlist("Looks")), row("1", "Artist", "/m/a.mp3"));
    EXPECT_EQ(ctx.cmbPlaylists().count(), 3);
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Looks");
    EXPECT_TRUE(recent.isEmpty());

    const QString txt = home.file("export.html");
    dialogs.answer(txt + "|3");
    ctx.commands().run("mnuSavePlaylistAs");
    EXPECT_EQ(TempHome::readFile(txt), "1.  Artist - T\r\n");
    EXPECT_TRUE(log().contains(txt + " saved as TEXT playlist.\r\n"));
}

TEST_F(PlaylistFilesTest, SendToAppendsEachSelectedSongOnce) {
    QByteArray start = row("1", "There", "/m/there.mp3");
    start.chop(2); // a hand-made file without the last line end
    write("Target", start);
    install();
    addSong("1", "New", "T", "/m/new.mp3");
    addSong("2", "Dup", "T", "/M/THERE.mp3");
    addSong("3", "Unselected", "T", "/m/u.mp3");
    addSong("4", "Again", "T", "/m/new.mp3"); // added earlier in this same walk
    for (int r : {0, 1, 3})
        list().setSelected(r, true);

    mnuItem_Click(ctx, 1);
    EXPECT_EQ(TempHome::readFile(playlist("Target")),
              start + "\r\n" + row("1", "New", "/m/new.mp3"));
    ASSERT_EQ(dialogs.asked().size(), 2);
    for (const auto& a : dialogs.asked()) {
        EXPECT_EQ(a.title, "Song/Video Already In Playlist");
        EXPECT_EQ(a.text, "The song/video you have selected is already in this playlist.\n\nThis "
                          "song will not be copied into the playlist.\n");
        EXPECT_EQ(a.flags, 64);
    }
    EXPECT_EQ(log().count(" added to "), 1);
    EXPECT_TRUE(log().contains("/m/new.mp3 added to 'Target' Playlist.\r\n"));

    dialogs.clear();
    QFile::remove(playlist("Target"));
    mnuItem_Click(ctx, 1);
    ASSERT_EQ(dialogs.asked().size(), 1); // the walk stops at the first row
    EXPECT_EQ(dialogs.asked()[0].text, kMissing.arg("access"));
    EXPECT_FALSE(QFile::exists(playlist("Target")));
}

TEST_F(PlaylistFilesTest, SaveAsDefaultKeepsTheFileWhenTheListIsEmpty) {
    const QByteArray kept = row("1", "kept", "/m/k.mp3");
    write("default", kept);
    ctx.commands().run("mnuSaveAsDefault");
    EXPECT_EQ(TempHome::readFile(playlist("default")), kept);
    EXPECT_EQ(unchecks, 1);
    addSong("1", "now", "T", "/m/now.mp3");
    ctx.commands().run("mnuSaveAsDefault");
    EXPECT_EQ(TempHome::readFile(playlist("default")), row("1", "now", "/m/now.mp3"));
}
