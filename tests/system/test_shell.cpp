#include "core/ScriptedPlayer.h"
#include "core/SliderModel.h"
#include "core/Settings.h"
#include "playlists/RowsFixture.h"
#include "system/Messenger.h"
#include "system/Mpris.h"
#include "system/SystemTray.h"
#include "system/modWindows.h"

#include <QCoreApplication>
#include <QDialog>
#include <QTimer>
#include <QWidget>

namespace {

TEST(MessengerPayload, FieldsInOrderWithTheTextSeparators) {
    const QString shown =
        Messenger::messenger_Payload("Song", "Band", "Music", QString(), "{1} - {0}", true);
    EXPECT_EQ(shown, "\\0Music\\01\\0{1} - {0}\\0Song\\0Band\\0\\0");
    EXPECT_EQ(Messenger::messenger_Payload({}, {}, "Music", {}, "{0} - {1}", false),
              "\\0Music\\00\\0{0} - {1}\\0\\0\\0\\0");
    const QByteArray bytes = Messenger::messenger_Bytes(shown);
    EXPECT_EQ(bytes.size(), (shown.size() + 1) * 2) << "16-bit characters and the final NUL";
    EXPECT_EQ(bytes.right(2), QByteArray(2, '\0'));
    EXPECT_EQ(bytes.mid(2, 2), QByteArray("0\0", 2)) << "little-endian";
}

TEST(TrayTip, CutToTheFixedField) {
    EXPECT_EQ(SystemTray::clipTip(QString(300, 'x')).size(), 255);
    EXPECT_EQ(SystemTray::clipTip("VELDOR:  Stopped"), "VELDOR:  Stopped");
}

// The session-bus player over a scripted engine; its calls are answered first and act after.
class MprisCalls : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        SettingsFile = home.settingsFile();
        ctx.setPlayer(&engine);
        for (const char* m : {"mnuPlay", "mnuPause", "mnuStop", "mnuNextTrack", "mnuPrevious"})
            ctx.commands().setHandler(m, [this, m] { calls << m; });
        mpris = new Mpris(ctx, &window);
    }
    void TearDown() override {
        delete mpris;
        ctx.setPlayer(nullptr);
        RowsFixture::TearDown();
    }
    void playing(double length) {
        engine.setDuration(length);
        makeFile("a.mp3");
        engine.setFileName(home.file("media/a.mp3"));
        engine.Play();
        ctx.TransportState = 0;
        ctx.PlayingDetails = {"Band", "Song", home.file("media/a.mp3")};
        mpris->refresh();
    }
    void settle() { QCoreApplication::processEvents(); }
    QWidget window;
    ScriptedPlayer engine;
    Mpris* mpris = nullptr;
    QStringList calls;
};

TEST_F(MprisCalls, SeekAndSetPositionIgnoreWhatCannotBe) {
    mpris->Seek(5'000'000);
    mpris->SetPosition(mpris->trackId(), 1'000'000);
    settle();
    EXPECT_TRUE(engine.calls().filter("seek").isEmpty()) << "nothing plays";

    playing(100);
    const QDBusObjectPath stale = mpris->trackId();
    mpris->SetPosition(stale, 30'000'000);
    settle();
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 30);
    mpris->SetPosition(stale, -1);
    mpris->SetPosition(stale, 101'000'000);
    mpris->SetPosition(QDBusObjectPath("/org/veldor/track/999"), 10'000'000);
    settle();
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 30);
    mpris->Seek(-60'000'000);
    settle();
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 0) << "before the start is the start";
    mpris->Seek(500'000'000);
    settle();
    EXPECT_EQ(calls, QStringList{"mnuNextTrack"}) << "past the end is the next song";

    engine.setFileName(makeFile("b.mp3"));
    engine.Play();
    mpris->refresh();
    EXPECT_NE(mpris->trackId(), stale);
    mpris->SetPosition(stale, 10'000'000);
    settle();
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 0) << "the last song's id no longer counts";
}

TEST_F(MprisCalls, MethodsRunTheMenuCommandsThatAreEnabled) {
    mpris->Pause();
    mpris->Play();
    settle();
    EXPECT_EQ(calls, QStringList{"mnuPlay"}) << "a stopped player has nothing to pause";
    ctx.commands().setEnabled("mnuNextTrack", false);
    mpris->Next();
    settle();
    EXPECT_EQ(calls.size(), 1);
    EXPECT_FALSE(mpris->canGoNext());
    playing(100);
    mpris->PlayPause();
    settle();
    EXPECT_EQ(calls.last(), "mnuPause");
}

TEST_F(MprisCalls, MetadataOfThePlayingSongAndVolumeInRange) {
    EXPECT_EQ(mpris->metadata().size(), 1) << "only the no-track id while stopped";
    playing(61.5);
    const QVariantMap m = mpris->metadata();
    EXPECT_EQ(m.value("xesam:title").toString(), "Song");
    EXPECT_EQ(m.value("xesam:artist").toStringList(), QStringList{"Band"});
    EXPECT_EQ(m.value("mpris:length").toLongLong(), 61'500'000);
    EXPECT_TRUE(m.value("xesam:url").toString().startsWith("file:///"));
    EXPECT_TRUE(m.contains("xesam:album"));
    EXPECT_EQ(mpris->playbackStatus(), "Playing");
    mpris->setVolume(7.0);
    EXPECT_EQ(ctx.sldVolume().value(), 100);
    mpris->setVolume(-1);
    EXPECT_EQ(ctx.sldVolume().value(), 0);
    mpris->setVolume(std::nan(""));
    EXPECT_EQ(ctx.sldVolume().value(), 0);
}

class WindowsRules : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        SettingsFile = home.settingsFile();
    }
};

TEST_F(WindowsRules, ModalFlagOnlyWhileTheDialogIsUpAndTheOwnerStaysOnTop) {
    QWidget owner;
    modWindows::window_SetAlwaysOnTop(&owner, true);
    auto* dialog = new QDialog;
    bool seenOpen = false, seenOnTop = true;
    QTimer::singleShot(0, dialog, [&] {
        seenOpen = ctx.ModalWindowOpen;
        seenOnTop = modWindows::window_IsAlwaysOnTop(&owner);
        dialog->accept();
    });
    EXPECT_EQ(modWindows::window_ShowModal(ctx, dialog, &owner, true), QDialog::Accepted);
    EXPECT_TRUE(seenOpen);
    EXPECT_FALSE(seenOnTop) << "a dialog would open behind an owner on top";
    EXPECT_FALSE(ctx.ModalWindowOpen);
    EXPECT_TRUE(modWindows::window_IsAlwaysOnTop(&owner));
}

TEST_F(WindowsRules, PlacesInTwipsUnderTheirOwnSection) {
    QWidget w;
    w.setGeometry(100, 120, 400, 300);
    modWindows::window_SavePosition(&w, "Test", 1500);
    EXPECT_FALSE(settings_Read("Position_Test", "Window_left").isEmpty());
    EXPECT_EQ(settings_Read("Position_Test", "Window_Maximized"), "0");
    const int twips = modWindows::pixelsToTwips(400, &w);
    EXPECT_EQ(settings_Read("Position_Test", "Window_Width").toInt(), twips);
    w.setGeometry(0, 0, 250, 200);
    modWindows::window_RestorePosition(&w, "Test", 1500);
    EXPECT_EQ(w.geometry().size(), QSize(400, 300));
}

TEST_F(WindowsRules, HideInTheTaskManagerFlipsAndIsKept) {
    QWidget w;
    modWindows::mnuHideInTheTaskManager_Click(ctx, &w);
    EXPECT_TRUE(ctx.commands().isChecked("mnuHideInTheTaskManager"));
    EXPECT_EQ(settings_Read("Settings", "HideInTheTaskManager"), "1");
    modWindows::mnuHideInTheTaskManager_Click(ctx, &w);
    EXPECT_EQ(settings_Read("Settings", "HideInTheTaskManager"), "0");
}

} // namespace
