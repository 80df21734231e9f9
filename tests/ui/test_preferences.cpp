#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentMedia.h"
#include "support/TempHome.h"
#include "system/GlobalKeys.h"
#include "system/GlobalKeysEditor.h"
#include "ui/FrmOptions.h"
#include "ui/FrmPreferences.h"
#include "ui/PreferencesRules.h"

#include <QCheckBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

struct Preferences : ::testing::Test {
    TempHome home;
    ScriptedResponder answers;
    MainContext ctx;
    QStringList calls;

    void SetUp() override {
        Dialogs::setResponder(&answers);
        ctx.window_InstallGlobalKeys = [this] { calls << "keys"; };
        ctx.tray_Enable = [this](bool on) { calls << (on ? "tray on" : "tray off"); };
        ctx.associations_Apply = [this] { calls << "associations"; };
        ctx.window_ApplyAppearance = [this] { calls << "appearance"; };
    }
    void TearDown() override { Dialogs::setResponder(nullptr); }
    void setFile(const QByteArray& bytes) { TempHome::writeFile(home.settingsFile(), bytes); }
    QByteArray file() const { return TempHome::readFile(home.settingsFile()); }
    QString setting(const QString& key) { return settings_Read("Settings", key, "absent"); }
};

} // namespace

TEST_F(Preferences, NumberBoxesTakeWholeNumbersWithinBounds) {
    using PreferencesRules::numberPasses;
    // The skip rate message says 5, yet 1 to 4 pass.
    EXPECT_TRUE(numberPasses("4", 1, 50));
    EXPECT_TRUE(numberPasses("1", 1, 50));
    EXPECT_TRUE(numberPasses(" 50 ", 1, 50));
    EXPECT_FALSE(numberPasses("51", 1, 50));
    EXPECT_FALSE(numberPasses("0", 1, 50));
    EXPECT_FALSE(numberPasses("", 1, 50));
    EXPECT_FALSE(numberPasses("  ", 1, 50));
    EXPECT_FALSE(numberPasses("ten", 10, 60));
    EXPECT_FALSE(numberPasses("12abc", 10, 60));
    EXPECT_FALSE(numberPasses("nan", 10, 60));
    // Halves round to even like the 16-bit conversion; too large overflows rather than wraps.
    EXPECT_TRUE(numberPasses("60.4", 10, 60));
    EXPECT_TRUE(numberPasses("60.5", 10, 60));
    EXPECT_FALSE(numberPasses("60.6", 10, 60));
    EXPECT_TRUE(numberPasses("9.5", 10, 60));
    EXPECT_FALSE(numberPasses("65546", 10, 60));
}

TEST_F(Preferences, NonsenseInTheFileShowsDefaultsAndApplyWritesValidValues) {
    setFile("[Settings]\r\nWriteConsoleLogs=yes please\r\nAllowMultipleInstances=1\r\n"
            "RewindForwardRate=999\r\nIntroductionRate=abc\r\nNumberofRecentPlaylists=\r\n"
            "NumberofRecentMediaFiles=12\r\nShowTimeElapsed=1\r\nShowTimeRemaining=1\r\n"
            "[ListSorting]\r\nSortByArtist=x\r\n[FileTypes]\r\nMP3=?\r\nWAV=1\r\n"
            "[Appearance]\r\nFontsize=huge\r\nPlayingFontColour=red\r\nFont=\r\n");
    const auto v = PreferencesRules::load();
    EXPECT_TRUE(v.checks.value(20)); // default on
    EXPECT_TRUE(v.checks.value(7));  // a valid value is kept
    EXPECT_EQ(v.numbers.value("txtSkipRate"), "5");
    EXPECT_EQ(v.numbers.value("txtIntroduction"), "30");
    EXPECT_EQ(v.numbers.value("txtMaxPlaylists"), "30");
    EXPECT_EQ(v.numbers.value("txtMaxFiles"), "12");
    EXPECT_EQ(v.options.value("opTime"), 0);   // both on: the default
    EXPECT_EQ(v.options.value("opSortBy"), 4); // none on: by filename
    EXPECT_TRUE(v.fileTypes.value("MP3"));
    EXPECT_TRUE(v.fileTypes.value("WAV"));
    EXPECT_EQ(v.appearance.value("Fontsize"), "8");
    EXPECT_EQ(v.appearance.value("PlayingFontColour"), "192");
    EXPECT_EQ(v.appearance.value("Font"), "Tahoma");

    ASSERT_TRUE(PreferencesRules::apply(v, ctx));
    EXPECT_EQ(setting("WriteConsoleLogs"), "1");
    EXPECT_EQ(setting("RewindForwardRate"), "5");
    EXPECT_EQ(setting("IntroductionRate"), "30");
    EXPECT_EQ(setting("ShowTimeElapsed"), "1");
    EXPECT_EQ(setting("ShowTimeRemaining"), "0");
    EXPECT_EQ(settings_Read("ListSorting", "SortByArtist"), "0");
    EXPECT_EQ(settings_Read("ListSorting", "SortByFilename"), "1");
    EXPECT_EQ(settings_Read("FileTypes", "MP3"), "1");
    EXPECT_EQ(settings_Read("Appearance", "Fontsize"), "8");
    EXPECT_TRUE(answers.asked().isEmpty());
}

TEST_F(Preferences, ARefusedBoxWarnsOnceAndWritesNothing) {
    setFile("[Settings]\r\nAllowMultipleInstances=0\r\n");
    const QByteArray before = file();
    auto v = PreferencesRules::load();
    v.checks[7] = true;
    v.numbers["txtSkipRate"] = "51";
    v.numbers["txtIntroduction"] = ""; // also bad, but the first failure stops the test
    EXPECT_FALSE(PreferencesRules::apply(v, ctx));
    ASSERT_EQ(answers.asked().size(), 1);
    EXPECT_EQ(answers.asked()[0].title, "Error Saving The Preferences");
    EXPECT_TRUE(answers.asked()[0].text.contains("Maximum:  50\nMinimum:  5\n"));
    EXPECT_EQ(file(), before);
    EXPECT_TRUE(calls.isEmpty());

    answers.clear();
    v.numbers["txtSkipRate"] = "4";
    EXPECT_FALSE(PreferencesRules::apply(v, ctx));
    ASSERT_EQ(answers.asked().size(), 1);
    EXPECT_TRUE(answers.asked()[0].text.startsWith("The introduction setting"));
    EXPECT_EQ(file(), before);
}

TEST_F(Preferences, ApplyReinstallsKeysTrayAndAssociations) {
    auto v = PreferencesRules::load();
    v.checks[15] = true;
    ASSERT_TRUE(PreferencesRules::apply(v, ctx));
    EXPECT_EQ(calls, QStringList({"keys", "appearance", "tray off", "tray on", "associations"}));
    calls.clear();
    v.checks[15] = false;
    ASSERT_TRUE(PreferencesRules::apply(v, ctx));
    EXPECT_EQ(calls, QStringList({"keys", "appearance", "tray off", "associations"}));
    EXPECT_EQ(setting("UseSystemTraySupport"), "0");
}

TEST_F(Preferences, DialogSectionsApplyAndCloseWithoutSaving) {
    setFile("[Settings]\r\nRewindForwardRate=7\r\n");
    const QByteArray before = file();
    {
        FrmPreferences dialog(ctx);
        EXPECT_EQ(dialog.windowTitle(), "Preferences");
        auto* title = dialog.findChild<QLabel*>("lblTitle");
        auto* apply = dialog.findChild<QPushButton*>("cmdApply");
        auto* skip = dialog.findChild<QLineEdit*>("txtSkipRate");
        ASSERT_TRUE(title && apply && skip);
        EXPECT_EQ(title->text(), "Section selected:  Display Settings:");
        dialog.lblSection_Click(7);
        EXPECT_EQ(title->text(), "Section selected:  Global Hot Keys:");
        EXPECT_EQ(skip->text(), "7");
        EXPECT_FALSE(apply->isEnabled());
        skip->setText("");
        skip->textEdited("");
        EXPECT_TRUE(apply->isEnabled());
        dialog.reject(); // closing throws the change away
    }
    EXPECT_EQ(file(), before);

    FrmPreferences dialog(ctx);
    auto* skip = dialog.findChild<QLineEdit*>("txtSkipRate");
    skip->setText("abc");
    skip->textEdited("abc");
    dialog.lblSection_Click(3);
    dialog.cmdOK_Click();
    EXPECT_EQ(dialog.result(), QDialog::Rejected); // still open
    EXPECT_EQ(dialog.section(), 3);
    EXPECT_EQ(answers.asked().size(), 1);
    skip->setText("12");
    dialog.cmdOK_Click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(setting("RewindForwardRate"), "12");
}

TEST_F(Preferences, OptionsWindowListsPlaylistsAndKeepsItsCheck) {
    QDir().mkpath(home.file("Playlists"));
    TempHome::writeFile(home.file("Playlists/rock.spp"), "");
    TempHome::writeFile(home.file("Playlists/Jazz.spp"), "");
    TempHome::writeFile(home.file("Playlists/notes.txt"), "");
    EXPECT_EQ(FrmOptions::playlistEntries(), QStringList({"((Select Playlist))", "Jazz", "rock"}));

    FrmOptions options(ctx);
    EXPECT_EQ(options.windowTitle(), "VELDOR Options");
    auto* always = options.findChild<QCheckBox*>("chkAlwaysShow");
    ASSERT_TRUE(always);
    EXPECT_TRUE(always->isChecked()); // on by default
    always->setChecked(false);
    EXPECT_EQ(setting("ShowOptionsWindow"), "0");
    // Doing nothing plays nothing.
    int plays = 0;
    ctx.player_Play = [&plays](int) { ++plays; };
    options.cmdNext_Click();
    EXPECT_EQ(plays, 0);
    EXPECT_EQ(options.result(), QDialog::Accepted);
}

TEST_F(Preferences, ResetButtonsEmptyTheirListAtOnceAndApplySetsTheLimits) {
    setFile("[RecentMediaFiles]\r\nFilename1=/m/a.mp3\r\nFilename2=/m/b.mp3\r\n"
            "[RecentPlaylists]\r\nFilename1=/p/x.spp\r\n");
    FrmPreferences dialog(ctx);
    dialog.cmdResetRecentFiles_Click();
    EXPECT_EQ(settings_Read("RecentMediaFiles", "Filename1", "absent"), "");
    EXPECT_EQ(settings_Read("RecentMediaFiles", "Filename2", "absent"), "");
    EXPECT_EQ(settings_Read("RecentPlaylists", "Filename1"), "/p/x.spp"); // the other list stays
    dialog.cmdResetRecentPlaylists_Click();
    EXPECT_EQ(settings_Read("RecentPlaylists", "Filename1", "absent"), "");

    dialog.findChild<QLineEdit*>("txtMaxFiles")->setText("12");
    ASSERT_TRUE(dialog.cmdApply_Click());
    EXPECT_EQ(recent_Media().limit(), 12);
    dialog.findChild<QLineEdit*>("txtMaxFiles")->setText("30");
    ASSERT_TRUE(dialog.cmdApply_Click());
}

TEST_F(Preferences, APictureIsCheckedBeforeItIsTakenAndWrittenOnlyAtApply) {
    const QString notPicture = home.file("notes.png");
    TempHome::writeFile(notPicture, "not a picture at all");
    const QString picture = home.file("back.png");
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::darkBlue);
    ASSERT_TRUE(image.save(picture));
    FrmPreferences dialog(ctx);
    auto* apply = dialog.findChild<QPushButton*>("cmdApply");

    answers.answer(notPicture);
    dialog.cmdSelectImage_Click();
    ASSERT_EQ(answers.asked().size(), 2); // the file dialog, then the refusal
    EXPECT_EQ(answers.asked()[1].title, "Invalid Image");
    EXPECT_FALSE(apply->isEnabled());

    answers.answer(picture);
    dialog.cmdSelectImage_Click();
    EXPECT_TRUE(apply->isEnabled());
    EXPECT_EQ(settings_Read("Appearance", "PlaylistImage", "absent"), "absent");
    ASSERT_TRUE(dialog.cmdApply_Click());
    EXPECT_EQ(settings_Read("Appearance", "PlaylistImage"), picture);
    EXPECT_TRUE(calls.contains("appearance"));

    dialog.cmdRemoveImage_Click();
    ASSERT_TRUE(dialog.cmdApply_Click());
    EXPECT_EQ(settings_Read("Appearance", "PlaylistImage", "absent"), "");
}

TEST_F(Preferences, HotkeyRowsGoToTheFileThroughTheDialogsApply) {
    FrmPreferences dialog(ctx);
    auto* apply = dialog.findChild<QPushButton*>("cmdApply");
    ASSERT_NE(dialog.keysPage(), nullptr);
    // The page's own Apply and check box stand aside for the dialog's.
    EXPECT_EQ(dialog.findChildren<QPushButton*>("cmdApply").size(), 1);
    EXPECT_NE(dialog.findChild<QCheckBox*>("chkSetting_25"), nullptr);
    dialog.keysPage()->rules().cmdResetGlobalKeys_Click();
    EXPECT_TRUE(apply->isEnabled());
    ASSERT_TRUE(dialog.cmdApply_Click());
    EXPECT_EQ(calls.count("keys"), 1);
    // Reset rows carry "(None)" as their text, and that is what is stored.
    EXPECT_EQ(settings_Read("GlobalKeys", GlobalKeys::extKey(GlobalKeys::Next)), "(None)");
    EXPECT_EQ(settings_Read("GlobalKeys", GlobalKeys::keyKey(GlobalKeys::Next)),
              GlobalKeys::defaultKey(GlobalKeys::Next));
    // A later change of a row enables Apply again.
    EXPECT_FALSE(apply->isEnabled());
    dialog.keysPage()->rules().cmbExtension_Click(1, "Ctrl");
    EXPECT_TRUE(apply->isEnabled());
}
