#include "app/FrmMain.h"
#include "app/PartsInstall.h"
#include "app/WindowSetup.h"
#include "cd/CdPlayer.h"
#include "cd/FrmCDPlayer.h"
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "library/FrmMediaLibrary.h"
#include "library/MediaLibrary.h"
#include "playback/FrmVideo.h"
#include "support/TempHome.h"

#include <QDesktopServices>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>
#include <utility>

#include <gtest/gtest.h>

namespace {

// The whole program's commands on a main window that is never shown, an empty list and
// nothing playing, as the first start leaves it.
struct Everything {
    TempHome home;
    ScriptedResponder dialogs;
    std::unique_ptr<MainContext> ctx = std::make_unique<MainContext>();
    std::unique_ptr<FrmMain> window;
    std::unique_ptr<FrmVideo> video;

    Everything() {
        Dialogs::setResponder(&dialogs);
        window = std::make_unique<FrmMain>(*ctx);
        video = Parts_install(*window);
        window_Setup(*window);
        ctx->call(ctx->tmrWindowUpdate_Timer);
    }
    ~Everything() {
        if (auto* library = FrmMediaLibrary::instance()) delete library;
        if (auto* cd = FrmCDPlayer::current()) delete cd;
        video.reset();
        window.reset();
        Dialogs::setResponder(nullptr);
    }
    Commands& c() { return ctx->commands(); }
};

// Entries of every menu below `menus`, sub-menus walked; separators and sub-menus left out.
QList<QAction*> entriesOf(QList<QMenu*> menus) {
    QList<QAction*> out;
    for (int i = 0; i < menus.size(); ++i)
        for (QAction* a : menus[i]->actions()) {
            if (a->menu())
                menus.append(a->menu());
            else if (!a->isSeparator())
                out.append(a);
        }
    return out;
}

QList<QMenu*> topMenus(QMenuBar* bar) {
    QList<QMenu*> menus;
    for (QAction* a : bar->actions())
        if (a->menu()) menus.append(a->menu());
    return menus;
}

// The names of the greyed entries, sorted, one blank between them.
std::string disabledNames(const QList<QAction*>& entries) {
    QStringList out;
    for (QAction* a : entries)
        if (!a->isEnabled()) out.append(a->objectName());
    out.sort();
    out.removeDuplicates();
    return out.join(QLatin1Char(' ')).toStdString();
}

// Records what the desktop is asked to open instead of starting a browser.
struct UrlRecorder : QObject {
    Q_OBJECT
public:
    QList<QUrl> opened;
    UrlRecorder() {
        for (const char* scheme : {"http", "https"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
    }
    ~UrlRecorder() override {
        for (const char* scheme : {"http", "https"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
public Q_SLOTS:
    void open(const QUrl& url) { opened.append(url); }
};

} // namespace

// Entries that are commands of `c` and have no handler; menu arrays (recent files, moods)
// carry their own.
std::string unbuilt(Commands& c, const QList<QAction*>& entries) {
    QStringList out;
    for (QAction* a : entries) {
        const QString name = a->objectName();
        if (c.has(name) && c.action(name) == a && !c.hasHandler(name)) out.append(name);
    }
    return out.join(QLatin1Char(' ')).toStdString();
}

TEST(AllCommands, EveryEntryOfEveryWindowHasAHandler) {
    Everything e;
    EXPECT_EQ(unbuilt(e.c(), entriesOf(topMenus(e.window->menuBar()))), "");
    ASSERT_TRUE(e.c().run(QStringLiteral("mnuOpenMediaLibrary")));
    ASSERT_TRUE(e.c().run(QStringLiteral("mnuOpenCDPlayer")));
    FrmMediaLibrary* library = FrmMediaLibrary::instance();
    FrmCDPlayer* cd = FrmCDPlayer::current();
    ASSERT_TRUE(library && cd);
    EXPECT_EQ(unbuilt(library->library().commands(), entriesOf(library->findChildren<QMenu*>())),
              "");
    EXPECT_EQ(unbuilt(cd->rules().commands(), entriesOf(topMenus(cd->menuBar()))), "");
    // What the pop-ups and the other windows pass on to the main window.
    for (const char* name : {"mnuPlay2",          "mnuRefresh",       "mnuMoreOnThisArtist",
                             "mnuMoreOnThisYear", "mnuPlaySong",      "mnuPlayOnce",
                             "mnuSkip",           "mnuSkipOnce",      "mnuRemove",
                             "mnuPlayAll",        "mnuSkipAll",       "mnuAdvanced",
                             "mnuRenameFilename", "mnuSelectPlaying", "mnuUpdate",
                             "mnuStoreVolume",    "mnuOpen",          "mnuVolume",
                             "mnuWebsite",        "mnuOptionsWindow"})
        EXPECT_TRUE(e.c().hasHandler(QLatin1String(name))) << name;
}

// Commands whose entry would show its code name for want of a caption.
std::string uncaptioned(Commands& c) {
    QStringList out;
    for (QAction* a : c.all())
        if (!a->isSeparator() && (a->text().isEmpty() || a->text() == a->objectName()))
            out.append(a->objectName());
    out.sort();
    return out.join(QLatin1Char(' ')).toStdString();
}

TEST(AllCommands, EveryEntryShowsWordsNotItsName) {
    Everything e;
    ASSERT_TRUE(e.c().run(QStringLiteral("mnuOpenMediaLibrary")));
    ASSERT_TRUE(e.c().run(QStringLiteral("mnuOpenCDPlayer")));
    EXPECT_EQ(uncaptioned(e.c()), "");
    EXPECT_EQ(uncaptioned(FrmMediaLibrary::instance()->library().commands()), "");
    EXPECT_EQ(uncaptioned(FrmCDPlayer::current()->rules().commands()), "");
}

TEST(AllCommands, AnEmptyIdlePlayerGreysOnlyWhatTheRulesSay) {
    Everything e;
    // No rows, no selection, nothing playing, one playlist entry, an empty row clipboard, no
    // recent files, moods or bookmarks (their "(None)" entries), no disc.
    EXPECT_EQ(disabledNames(entriesOf(topMenus(e.window->menuBar()))),
              "mnuBookmark mnuClear mnuCopy mnuCut mnuDeleteAllPlaylists "
              "mnuDeleteCurrentPlaylist mnuFastForward mnuJumpToCurrentlyPlaying mnuJumpToTime "
              "mnuLockPlaylist mnuMoodOpen mnuNew mnuNextTrack mnuNextTrackAdvanced mnuPaste "
              "mnuPause mnuPlay mnuPlayNext mnuPrint mnuRandom mnuRecentMedia mnuRecentPlaylist "
              "mnuRenameCurrentPlaylist mnuRewind mnuSave mnuSaveAsDefault mnuSavePlaylistAs "
              "mnuSelectAll mnuSortByArtist mnuSortByFilename mnuSortByLength mnuSortByTitle "
              "mnuSortByYear mnuStop");
    ASSERT_TRUE(e.c().run(QStringLiteral("mnuOpenMediaLibrary")));
    ASSERT_TRUE(e.c().run(QStringLiteral("mnuOpenCDPlayer")));
    EXPECT_EQ(disabledNames(entriesOf(FrmMediaLibrary::instance()->findChildren<QMenu*>())),
              "mnuExportToVELDOR mnuImportCurrentPlaylist mnuRemoveAlDeadFilenames "
              "mnuRemoveDuplicateFilenames mnuRemoveSelected mnuSaveAs mnuSendToOp");
    EXPECT_EQ(disabledNames(entriesOf(topMenus(FrmCDPlayer::current()->menuBar()))),
              "mnuEject mnuNext mnuPause mnuPlay mnuPrevious mnuRandom mnuStop");
}

TEST(AllCommands, WebPagesOpenFromTheUpdateBase) {
    qputenv("VELDOR_UPDATE_URL", "http://127.0.0.1:8123/veldor/");
    Everything e;
    UrlRecorder recorder;
    for (const char* name : {"mnuForum", "mnuHomepage", "mnuWebsite"}) {
        EXPECT_TRUE(e.c().isEnabled(QLatin1String(name))) << name;
        e.c().run(QLatin1String(name));
    }
    qunsetenv("VELDOR_UPDATE_URL");
    EXPECT_EQ(recorder.opened,
              (QList<QUrl>{QUrl("http://127.0.0.1:8123/veldor/forum/"),
                           QUrl("http://127.0.0.1:8123/"), QUrl("http://127.0.0.1:8123/")}));
    EXPECT_TRUE(e.dialogs.asked().isEmpty());
}

#include "test_all_commands.moc"
