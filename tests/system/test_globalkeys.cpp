#include "core/Commands.h"
#include "core/ScriptedPlayer.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "playlists/RowsFixture.h"
#include "system/GlobalKeys.h"
#include "system/GlobalKeysEditor.h"

using namespace GlobalKeys;

namespace {

QString nameOf(unsigned mods, const QString& key) {
    return window_CheckGlobalKey(true, mods, key);
}

TEST(GlobalKeyNames, TheFirstPairThatHoldsNamesThePress) {
    EXPECT_EQ(nameOf(Ctrl | Alt | Shift, "P"), "Ctrl+Shift+P");
    EXPECT_EQ(nameOf(Ctrl | Alt | Win, "P"), "Ctrl+Alt+P");
    EXPECT_EQ(nameOf(Win | Alt | Shift, "P"), "Win+Shift+P");
    EXPECT_EQ(nameOf(Ctrl, "Media:  Next"), "Ctrl+Media:  Next");
    EXPECT_EQ(nameOf(0, "Media:  Next"), "Media:  Next");
    EXPECT_TRUE(window_CheckGlobalKey(false, Ctrl, "P").isEmpty()) << "a key merely down";
}

TEST(GlobalKeyNames, TheMediaNamesCarryTwoBlanksAndTheSelectKeysNeverFire) {
    int media = 0;
    for (const Key& k : keyTable())
        if (k.name.startsWith("Media:")) {
            EXPECT_TRUE(k.name.startsWith("Media:  ")) << k.name.toStdString();
            ++media;
        }
    EXPECT_EQ(media, 9);
    EXPECT_FALSE(parseBinding("Media:  Left Select").valid());
    EXPECT_FALSE(parseBinding("Media:  Right Select").valid());
}

// What is grabbed for a binding must be exactly the presses whose name matches it: a missing
// modifier set loses a press (Ctrl+Alt+Shift+K for "Ctrl+Shift+K"), an extra one steals a key.
TEST(GlobalKeyGrabs, EveryPressMatchesItsBindingExactlyWhenGrabbed) {
    const QStringList bindings = {"Ctrl+Shift+K", "ctrl+alt+p",  "Media:  Next",
                                  "Win+F5",       "Alt+NumPad0", "Shift+0"};
    for (const QString& b : bindings) {
        const Parsed p = parseBinding(b);
        ASSERT_TRUE(p.valid()) << b.toStdString();
        for (int k = 0; k < keyTable().size(); ++k) {
            if (keyTable()[k].code == 0) continue;
            for (unsigned m = 0; m < 16; ++m) {
                const bool named = nameOf(m, keyTable()[k].name).toLower() == b.toLower();
                const bool grabbed = k == p.keyIndex && p.modifierSets.contains(m);
                EXPECT_EQ(named, grabbed) << b.toStdString() << " key " << k << " mods " << m;
            }
        }
    }
    EXPECT_EQ(parseBinding("Ctrl+Shift+K").modifierSets.size(), 4) << "Alt and Win both count";
}

TEST(GlobalKeyGrabs, BindingsNoPressCanProduceGrabNothing) {
    for (const QString& b :
         {QString(), QStringLiteral("(None)+Media:  Next"), QStringLiteral("Hyper+P"),
          QStringLiteral("Ctrl+"), QStringLiteral("Ctrl+Alt+Shift+P"), QString(10240, 'x'),
          QStringLiteral("Ctrl+") + QString(10240, 'P')})
        EXPECT_FALSE(parseBinding(b).valid()) << b.left(40).toStdString();
}

class GlobalKeysUse : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        SettingsFile = home.settingsFile();
        ctx.setPlayer(&engine);
        ctx.player_Play = [this](int mode) {
            calls << QStringLiteral("play %1").arg(mode);
            engine.setFileName(makeFile(QStringLiteral("x.mp3")));
            engine.Play();
        };
        ctx.player_Stop = [this] { calls << "stop"; };
        ctx.player_NextTrack = [this] { calls << "next"; };
        ctx.player_Volume = [this](int v) { calls << QStringLiteral("volume %1").arg(v); };
        for (const char* m : {"mnuPause", "mnuPrevious", "mnuMute"})
            ctx.commands().setHandler(m, [this, m] { calls << m; });
    }
    void TearDown() override {
        ctx.setPlayer(nullptr);
        RowsFixture::TearDown();
    }
    void use(const QString& name) { window_UseGlobalKey(ctx, window_InstallGlobalKeys(), name); }
    ScriptedPlayer engine;
    QStringList calls;
};

TEST_F(GlobalKeysUse, DefaultsAreThePlainMediaKeys) {
    const Bindings b = window_InstallGlobalKeys();
    EXPECT_EQ(b.lblMedia[PlayPause], "Media:  Play/Pause");
    EXPECT_EQ(b.lblMedia[VolumeDown], "Media:  Volume Down");
    use("Media:  Next");
    use("Ctrl+Media:  Next");
    EXPECT_EQ(calls, QStringList{"next"});
}

TEST_F(GlobalKeysUse, PlayPauseStartsResumesAndPauses) {
    use("Media:  Play/Pause");
    EXPECT_EQ(calls, QStringList{"play 1"});
    ctx.TransportState = 0; // the position tick saw it play
    use("Media:  Play/Pause");
    EXPECT_EQ(calls.last(), "mnuPause");
    engine.Pause();
    use("Media:  Play/Pause");
    EXPECT_EQ(calls.last(), "mnuPause") << "paused resumes through the pause command";
    engine.Play();
    ctx.TransportState = 1; // playing, but the tick has not run since a stop
    use("Media:  Play/Pause");
    EXPECT_EQ(calls.last(), "play 1");
}

TEST_F(GlobalKeysUse, StoredBindingsAreTakenAsTheyStand) {
    settings_Write("GlobalKeys", "StopExt", "ctrl+alt");
    settings_Write("GlobalKeys", "StopKey", "s");
    settings_Write("GlobalKeys", "NextExt", "(None)");
    settings_Write("GlobalKeys", "MuteExt", "Ctrl+Alt");
    settings_Write("GlobalKeys", "MuteKey", "S");
    ASSERT_EQ(window_InstallGlobalKeys().lblMedia[Next], "(None)+Media:  Next");
    EXPECT_FALSE(parseBinding("(None)+Media:  Next").valid()) << "no press produces it";
    use("Ctrl+Alt+S");
    use("Media:  Next");
    EXPECT_EQ(calls, QStringList{"stop"}) << "same key twice: only the earlier command runs";
}

TEST_F(GlobalKeysUse, VolumeKeysStepTheSliderByOne) {
    ctx.sldVolume().setValue(50);
    use("Media:  Volume Up");
    use("Media:  Volume Up");
    use("Media:  Volume Down");
    EXPECT_EQ(ctx.sldVolume().value(), 51);
    EXPECT_EQ(calls, (QStringList{"volume 51", "volume 52", "volume 51"}));
}

TEST(GlobalKeyPresses, AKeyFiresOnceHoweverItRepeats) {
    PressTracker t;
    EXPECT_TRUE(t.press(10, 100));
    EXPECT_FALSE(t.press(10, 130)) << "detectable auto-repeat: presses only";
    t.release(10, 160);
    EXPECT_FALSE(t.press(10, 160)) << "classic auto-repeat: release and press share a time";
    t.release(10, 400);
    EXPECT_TRUE(t.press(10, 900));
    EXPECT_TRUE(t.press(11, 900)) << "two keys together both fire";
}

TEST(GlobalKeyPresses, KeysDownAtTheStartFireOnlyAfterTheyAreLetGo) {
    PressTracker t;
    t.setDown(10);
    EXPECT_FALSE(t.press(10, 50));
    t.release(10, 80);
    EXPECT_TRUE(t.press(10, 500));
}

class GlobalKeysPageRules : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        SettingsFile = home.settingsFile();
        ctx.window_InstallGlobalKeys = [this] { ++installs; };
        editor.load();
    }
    GlobalKeysEditor editor;
    int installs = 0;
};

TEST_F(GlobalKeysPageRules, ResetThenApplyLeavesEveryBindingDead) {
    EXPECT_EQ(editor.typeOf(1), "Play/Pause");
    EXPECT_EQ(editor.extensionOf(1), "");
    editor.cmdResetGlobalKeys_Click();
    EXPECT_EQ(editor.typeOf(1), "Play");
    EXPECT_TRUE(editor.applyEnabled());
    editor.cmdApply_Click(&ctx);
    EXPECT_EQ(installs, 1);
    EXPECT_EQ(settings_Read("GlobalKeys", "NextExt"), "(None)");
    EXPECT_EQ(window_InstallGlobalKeys().match("Media:  Next"), -1);
    // Choosing "(None)" again gives the row an empty Extension and the key works.
    editor.cmbExtension_Click(3, "(None)");
    editor.cmdApply_Click(&ctx);
    EXPECT_EQ(window_InstallGlobalKeys().match("Media:  Next"), int(Next));
}

TEST_F(GlobalKeysPageRules, SeparatorsOfTheTwoListsBehaveDifferently) {
    const QStringList keys = GlobalKeysEditor::shortcutKeyItems();
    EXPECT_EQ(editor.cmbShortcutKeys_Click(2, 12), 13) << "the key separator moves on";
    EXPECT_EQ(editor.keyOf(2), "A");
    const QString sep = GlobalKeysEditor::extensionItems().at(1);
    ASSERT_EQ(sep.size(), 31);
    editor.cmbExtension_Click(2, sep);
    EXPECT_EQ(editor.extensionOf(2), sep) << "stored as it stands";
    EXPECT_EQ(keys.last(), "Media:  Volume Down");
    EXPECT_FALSE(keys.contains("Media:  Left Select"));
}

} // namespace
