#include "core/IniFile.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"
#include "support/TempHome.h"

#include <QFile>
#include <QRandomGenerator>
#include <QSet>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

struct SettingsStore : ::testing::Test {
    TempHome home;
    void setFile(const QByteArray& bytes) { TempHome::writeFile(home.settingsFile(), bytes); }
    QByteArray file() const { return TempHome::readFile(home.settingsFile()); }
    QString read(const QString& key, const QString& def = "dflt") {
        return settings_Read("Settings", key, def);
    }
};

} // namespace

TEST_F(SettingsStore, SectionsAndKeysAreBlindToCase) {
    setFile("[PlayBack]\r\nPlayingRepeat=1\r\n");
    EXPECT_EQ(settings_Read("playback", "PLAYINGREPEAT", "0"), "1");
    settings_Write("PLAYBACK", "playingrepeat", "0");
    EXPECT_EQ(settings_Read("Playback", "PlayingRepeat", "1"), "0");
    EXPECT_EQ(file(), "[PlayBack]\r\nplayingrepeat=0\r\n"); // one key, not two
}

TEST_F(SettingsStore, CommentsBlanksAndTrimming) {
    setFile(";IntroductionRate=99\r\n"
            "[Settings]\r\n"
            "; IntroductionRate=98\r\n"
            "  IntroductionRate  =   45   \r\n"
            "\r\n"
            "Font=Tahoma ; not a comment\r\n"
            "Tabbed=\t7\t\r\n");
    EXPECT_EQ(read("IntroductionRate"), "45");
    EXPECT_EQ(read("Font"), "Tahoma ; not a comment");
    EXPECT_EQ(read("Tabbed"), "7");
    EXPECT_EQ(read("; IntroductionRate"), "dflt");
    EXPECT_EQ(read("Missing", "  30 "), "30"); // the default comes back trimmed too
}

TEST_F(SettingsStore, LongValuesAreCutAt499) {
    const QString exact(499, 'a');
    settings_Write("Settings", "Exact", exact);
    settings_Write("Settings", "Long", QString(600, 'b'));
    EXPECT_EQ(read("Exact"), exact);
    EXPECT_EQ(read("Long"), QString(499, 'b'));
    EXPECT_TRUE(file().contains(QByteArray(600, 'b'))); // the file keeps what was written
}

TEST_F(SettingsStore, EmptyValueIsNotTheDefault) {
    setFile("[Settings]\r\nUseSystemTraySupport=\r\nRewindForwardRate=   \r\n");
    EXPECT_EQ(read("UseSystemTraySupport", "1"), "");
    EXPECT_EQ(read("RewindForwardRate", "5"), "");
    EXPECT_FALSE(settings_IsOn("Settings", "UseSystemTraySupport", "1"));
    EXPECT_EQ(settings_Number("Settings", "RewindForwardRate", "5"), 0);
    EXPECT_EQ(read("Absent", "0"), "0");
    // Reading the default never writes it.
    EXPECT_FALSE(file().contains("Absent"));
}

TEST_F(SettingsStore, TheBooleanTestIsNumeric) {
    setFile("[Settings]\r\nA= 1\r\nB=1.0\r\nC=\r\nD=abc\r\nE=0\r\nF=2\r\nG=01\r\n");
    EXPECT_TRUE(settings_IsOn("Settings", "A", "0"));
    EXPECT_TRUE(settings_IsOn("Settings", "B", "0"));
    EXPECT_FALSE(settings_IsOn("Settings", "C", "1"));
    EXPECT_FALSE(settings_IsOn("Settings", "D", "1"));
    EXPECT_FALSE(settings_IsOn("Settings", "E", "1"));
    EXPECT_FALSE(settings_IsOn("Settings", "F", "1"));
    EXPECT_TRUE(settings_IsOn("Settings", "G", "0"));
    EXPECT_TRUE(settings_IsOn("Settings", "Missing", "1"));
    bool ok = true;
    EXPECT_EQ(settings_Number("Settings", "D", "5", &ok), 0);
    EXPECT_FALSE(ok);
}

TEST_F(SettingsStore, WritesConvertValuesToText) {
    settings_Write("Settings", "Bool", true);
    settings_Write("Settings", "Number", 30);
    settings_Write("Appearance", "BackgroundColour", qint64(0x80000005));
    EXPECT_EQ(read("Bool"), "1");
    EXPECT_EQ(read("Number"), "30");
    EXPECT_EQ(settings_Read("Appearance", "BackgroundColour", ""), "2147483653");
}

TEST_F(SettingsStore, HandEditsAreSeenAtTheNextRead) {
    settings_Write("Settings", "IntroductionRate", "30");
    EXPECT_EQ(read("IntroductionRate"), "30");
    // Same size, straight after the read: a cache keyed on size and a coarse time would miss it.
    setFile("[Settings]\r\nIntroductionRate=45\r\n");
    EXPECT_EQ(read("IntroductionRate"), "45");
    setFile("[Settings]\r\nIntroductionRate=46\r\n");
    EXPECT_EQ(read("IntroductionRate"), "46");
    setFile("[Settings]\r\nIntroductionRate=120\r\nOther=1\r\n");
    EXPECT_EQ(read("IntroductionRate"), "120");
    // Replaced by another file (another program's atomic save).
    const QString other = home.file("other.ini");
    TempHome::writeFile(other, "[Settings]\r\nIntroductionRate=121\r\nOther=1\r\n");
    QFile::remove(home.settingsFile());
    QFile::rename(other, home.settingsFile());
    EXPECT_EQ(read("IntroductionRate"), "121");
}

// Start-up writes back most of what it reads: those writes must not replace the file.
TEST_F(SettingsStore, OnlyAWriteThatChangesBytesReplacesTheFile) {
    setFile("[Settings]\r\nShowToolbar=1\r\n");
    const auto inode = [this] {
        struct stat st {};
        ::stat(QFile::encodeName(home.settingsFile()).constData(), &st);
        return st.st_ino;
    };
    const auto before = inode();
    settings_Write("Settings", "ShowToolbar", true);
    settings_Write("Settings", "ShowToolbar", "1");
    EXPECT_EQ(inode(), before);

    settings_Write("settings", "showtoolbar", "1"); // the key's spelling is part of the bytes
    EXPECT_EQ(file(), "[Settings]\r\nshowtoolbar=1\r\n");
    EXPECT_NE(inode(), before);

    settings_Write("Settings", "ShowStatusBar", "0"); // absent: written, though "0" is the default
    EXPECT_EQ(file(), "[Settings]\r\nshowtoolbar=1\r\nShowStatusBar=0\r\n");

    QFile::remove(home.settingsFile());
    settings_Write("Settings", "Empty", "");
    EXPECT_EQ(file(), "[Settings]\r\nEmpty=\r\n") << "a missing file is made";
}

TEST_F(SettingsStore, FirstOfDuplicatesWins) {
    setFile("[Settings]\r\nKey=first\r\nkey=second\r\n[settings]\r\nKey=third\r\nLater=x\r\n");
    EXPECT_EQ(read("Key"), "first");
    EXPECT_EQ(read("Later"), "dflt"); // the second section of the same name is not read
    settings_Write("Settings", "KEY", "new");
    EXPECT_EQ(read("Key"), "new");
    EXPECT_EQ(file(),
              "[Settings]\r\nKEY=new\r\nkey=second\r\n[settings]\r\nKey=third\r\nLater=x\r\n");
}

TEST_F(SettingsStore, AWriteKeepsEveryOtherLineByteForByte) {
    const QByteArray before = "[VELDOR]\r\nVersion=1.0\r\n\r\n"
                              "[Settings]\n"
                              "; hand-written note\n"
                              "  Font =  Tahoma  \n"
                              "IntroductionRate=30\n"
                              "\tOdd\tSpacing = x \n"
                              "\n"
                              "[Sound]\r\nVolume=50";
    setFile(before);
    settings_Write("Settings", "IntroductionRate", "45");
    EXPECT_EQ(file(), QByteArray(before).replace("IntroductionRate=30\n", "IntroductionRate=45\n"));

    setFile(before);
    settings_Write("Settings", "NewKey", "v");
    QByteArray got = file();
    EXPECT_TRUE(got.startsWith("[VELDOR]\r\nVersion=1.0\r\n\r\n[Settings]\n; hand-written note\n"
                               "  Font =  Tahoma  \nIntroductionRate=30\n\tOdd\tSpacing = x \n"));
    EXPECT_TRUE(got.contains("NewKey=v"));
    EXPECT_TRUE(got.endsWith("[Sound]\r\nVolume=50"));
    EXPECT_EQ(settings_Read("Sound", "Volume", ""), "50");
    EXPECT_EQ(read("NewKey"), "v");

    setFile(before);
    settings_Write("Video", "Height", "3705");
    got = file();
    EXPECT_TRUE(got.startsWith(before));
    EXPECT_EQ(settings_Read("Video", "Height", ""), "3705");
    EXPECT_EQ(settings_Read("Sound", "Volume", ""), "50");
}

TEST_F(SettingsStore, BrokenFilesNeverCrashAndGiveDefaults) {
    QByteArray garbage(64 * 1024, '\0');
    auto* rng = QRandomGenerator::global();
    for (char& c : garbage)
        c = char(rng->bounded(256));
    setFile(garbage);
    EXPECT_EQ(settings_Read("Settings", "IntroductionRate", "30").size() <= 499, true);
    settings_Write("Settings", "IntroductionRate", "31");
    EXPECT_EQ(read("IntroductionRate"), "31");

    setFile(QByteArray("[Settings]\0\0\r\nKey=va\0lue\r\n", 27));
    read("Key"); // whatever it gives, it gives it without a crash

    setFile("[Settings\r\nKey=1\r\n=novalue\r\nnoequals\r\n[]\r\n");
    EXPECT_EQ(read("Key"), "1");
}

TEST_F(SettingsStore, HugeFileIsReadAndWritten) {
    QByteArray big = "[Settings]\r\nIntroductionRate=30\r\n";
    const QByteArray filler = "Filler=" + QByteArray(90, 'x') + "\r\n";
    while (big.size() < 50 * 1024 * 1024)
        big += filler;
    big += "[Last]\r\nKey=end\r\n";
    setFile(big);
    EXPECT_EQ(read("IntroductionRate"), "30");
    EXPECT_EQ(settings_Read("Last", "Key", ""), "end");
    settings_Write("Last", "Key", "changed");
    EXPECT_EQ(settings_Read("Last", "Key", ""), "changed");
    EXPECT_EQ(file().size(), big.size() + 4);
}

TEST_F(SettingsStore, ReadOnlyFileLosesWritesSilently) {
    const QByteArray before = "[Settings]\r\nIntroductionRate=30\r\n";
    setFile(before);
    QFile::setPermissions(home.settingsFile(), QFileDevice::ReadOwner | QFileDevice::ReadGroup);
    settings_Write("Settings", "IntroductionRate", "45");
    settings_Write("Other", "Key", "1");
    EXPECT_EQ(file(), before);
    EXPECT_EQ(read("IntroductionRate"), "30");
}

TEST_F(SettingsStore, DeletedWhileRunningGivesDefaultsThenComesBackBare) {
    setFile("[VELDOR]\r\nVersion=1.0.0\r\n\r\n[Settings]\r\nIntroductionRate=45\r\n");
    EXPECT_EQ(read("IntroductionRate"), "45");
    QFile::remove(home.settingsFile());
    EXPECT_EQ(read("IntroductionRate", "30"), "30");
    settings_Write("Settings", "LockPlaylist", "1");
    EXPECT_EQ(file(), "[Settings]\r\nLockPlaylist=1\r\n");
    EXPECT_EQ(read("IntroductionRate", "30"), "30");
}

TEST(IniFileText, ApplyWriteAddsKeysAtTheEndOfTheirSection) {
    const QByteArray data = "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n";
    EXPECT_EQ(IniFile::applyWrite(data, "a", "z", "3"), "[A]\r\nx=1\r\nz=3\r\n\r\n[B]\r\ny=2\r\n");
    EXPECT_EQ(IniFile::applyWrite("", "S", "k", "v"), "[S]\r\nk=v\r\n");
    // A line break in a value would make a second key; it never reaches the file.
    EXPECT_EQ(IniFile::applyWrite("", "S", "k", "a\r\nb=c"), "[S]\r\nk=a  b=c\r\n");
}

TEST(SettingsCatalogue, EveryKeyHasOneDefaultFoundBlindToCase) {
    QSet<QString> seen;
    for (const auto& [section, key] : settings_CatalogueKeys()) {
        const QString id = section.toLower() + '/' + key.toLower();
        EXPECT_FALSE(seen.contains(id)) << id.toStdString() << " listed twice";
        seen.insert(id);
    }
    EXPECT_EQ(settings_Default("settings", "usesystemtraysupport"), "1");
    EXPECT_EQ(settings_Default("Appearance", "FontColour").toLongLong(), 0x80000008LL);
    EXPECT_EQ(settings_Default("RecentPlaylists", "Filename1"), "");
}

TEST(SettingsCatalogue, AReadTakesTheCatalogueDefaultButAnEmptyEntryStaysEmpty) {
    TempHome home;
    EXPECT_TRUE(settings_IsOn("Settings", "UseSystemTraySupport"));
    TempHome::writeFile(home.settingsFile(), "[Settings]\r\nUseSystemTraySupport=\r\n");
    EXPECT_FALSE(settings_IsOn("Settings", "UseSystemTraySupport"));
    EXPECT_EQ(settings_Get("Settings", "IntroductionRate"), "30");
}
