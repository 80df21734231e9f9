#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "support/TempHome.h"
#include "system/SystemSetup.h"
#include "system/modFileAssociations.h"
#include "ui/FrmPreferences.h"
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

using namespace modFileAssociations;

namespace {

// Private XDG folders, and no desktop session, so xdg-mime takes its generic path.
class FileAssociations : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : kVariables)
            saved.append(qgetenv(name));
        qputenv("XDG_DATA_HOME", home.file(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", home.file(QStringLiteral("config")).toUtf8());
        qputenv("XDG_DATA_DIRS", home.file(QStringLiteral("none")).toUtf8());
        qputenv("XDG_CONFIG_DIRS", home.file(QStringLiteral("none")).toUtf8());
        for (const char* name :
             {"XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "GNOME_DESKTOP_SESSION_ID",
              "DESKTOP_SESSION", "XDG_SESSION_DESKTOP", "MATE_DESKTOP_SESSION_ID"})
            qunsetenv(name);
    }
    void TearDown() override {
        for (int i = 0; i < saved.size(); ++i)
            saved[i].isNull() ? qunsetenv(kVariables[i]) : qputenv(kVariables[i], saved[i]);
    }

    static QString run(const QString& program, const QStringList& args, int* code = nullptr) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, args);
        process.waitForFinished(20000);
        if (code) *code = process.exitCode();
        return QString::fromUtf8(process.readAll()).trimmed();
    }
    static bool haveTool(const char* name) {
        return !QStandardPaths::findExecutable(QLatin1String(name)).isEmpty();
    }
    static void expectValidDesktopFile(const QString& path) {
        if (!haveTool("desktop-file-validate")) return;
        int code = -1;
        const QString out = run(QStringLiteral("desktop-file-validate"), {path}, &code);
        EXPECT_EQ(code, 0) << out.toStdString();
        EXPECT_TRUE(out.isEmpty()) << out.toStdString();
    }
    // xdg-mime only names defaults whose desktop file exists.
    void otherApp(const char* id) {
        TempHome::writeFile(home.file(QStringLiteral("data/applications/")) + QLatin1String(id),
                            "[Desktop Entry]\nType=Application\nName=Other\nExec=true\n");
    }
    static QString queryDefault(const QString& mime) {
        return run(QStringLiteral("xdg-mime"),
                   {QStringLiteral("query"), QStringLiteral("default"), mime});
    }

    static constexpr const char* kVariables[] = {"XDG_DATA_HOME",
                                                 "XDG_CONFIG_HOME",
                                                 "XDG_DATA_DIRS",
                                                 "XDG_CONFIG_DIRS",
                                                 "XDG_CURRENT_DESKTOP",
                                                 "KDE_FULL_SESSION",
                                                 "GNOME_DESKTOP_SESSION_ID",
                                                 "DESKTOP_SESSION",
                                                 "XDG_SESSION_DESKTOP",
                                                 "MATE_DESKTOP_SESSION_ID"};
    TempHome home;
    QList<QByteArray> saved;
};

const QByteArray kUserMimeapps = "[Added Associations]\n"
                                 "audio/mpeg=other.desktop;\n"
                                 "\n"
                                 "[Default Applications]\n"
                                 "text/plain=editor.desktop\n"
                                 "audio/mpeg=other.desktop\n"
                                 "video/mpeg=movies.desktop\n";

} // namespace

TEST_F(FileAssociations, TypesTakenOverAndHandedBackLeaveTheUsersFileAsItWas) {
    if (!haveTool("xdg-mime")) GTEST_SKIP() << "xdg-utils not installed";
    QDir().mkpath(home.file(QStringLiteral("config")));
    TempHome::writeFile(mimeappsPath(), kUserMimeapps);
    otherApp("other.desktop");
    otherApp("movies.desktop");

    ASSERT_EQ(filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("mp3")), QString());
    ASSERT_EQ(filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("mp2")), QString());
    ASSERT_EQ(filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("wav")), QString());
    expectValidDesktopFile(desktopFilePath());
    EXPECT_EQ(queryDefault(QStringLiteral("audio/mpeg")), QStringLiteral("veldor.desktop"));
    EXPECT_EQ(queryDefault(QStringLiteral("audio/x-wav")), QStringLiteral("veldor.desktop"));
    EXPECT_EQ(queryDefault(QStringLiteral("video/mpeg")), QStringLiteral("movies.desktop"));
    const QString entry = QString::fromUtf8(TempHome::readFile(desktopFilePath()));
    EXPECT_TRUE(entry.contains(QStringLiteral("\nMimeType=audio/mpeg;audio/x-wav;\n")))
        << entry.toStdString();
    EXPECT_EQ(filetype_Registered(), (QStringList{"mp3", "mp2", "wav"}));

    // mp2 still needs audio/mpeg: the default stays until the last of the two goes.
    EXPECT_EQ(filetype_Unregister(QStringLiteral("mp3")), QString());
    EXPECT_EQ(queryDefault(QStringLiteral("audio/mpeg")), QStringLiteral("veldor.desktop"));
    EXPECT_EQ(filetype_Unregister(QStringLiteral("MP2")), QString());
    EXPECT_EQ(queryDefault(QStringLiteral("audio/mpeg")), QStringLiteral("other.desktop"));
    expectValidDesktopFile(desktopFilePath());
    EXPECT_EQ(filetype_Unregister(QStringLiteral("wav")), QString());

    EXPECT_FALSE(QFile::exists(desktopFilePath()));
    EXPECT_EQ(TempHome::readFile(mimeappsPath()), kUserMimeapps);
    EXPECT_EQ(filetype_Unregister(QStringLiteral("wav")), QString()); // twice is harmless
}

TEST_F(FileAssociations, ADefaultTheUserChangedAfterwardsIsNotTakenBack) {
    if (!haveTool("xdg-mime")) GTEST_SKIP() << "xdg-utils not installed";
    ASSERT_EQ(filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("avi")), QString());
    EXPECT_EQ(queryDefault(QStringLiteral("video/x-msvideo")), QStringLiteral("veldor.desktop"));
    otherApp("mine.desktop");
    run(QStringLiteral("xdg-mime"), {QStringLiteral("default"), QStringLiteral("mine.desktop"),
                                     QStringLiteral("video/x-msvideo")});
    EXPECT_EQ(filetype_Unregister(QStringLiteral("avi")), QString());
    EXPECT_EQ(queryDefault(QStringLiteral("video/x-msvideo")), QStringLiteral("mine.desktop"));
}

TEST_F(FileAssociations, UnknownTypesAndUnwritableFoldersGiveAMessage) {
    EXPECT_FALSE(filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("exe")).isEmpty());
    EXPECT_EQ(mimeTypeOf(QStringLiteral(".MpG")), QStringLiteral("video/mpeg"));
    EXPECT_EQ(fileTypes().size(), 20);
    // A file where the folder should be fails even for root.
    TempHome::writeFile(home.file(QStringLiteral("blocked")), "x");
    qputenv("XDG_DATA_HOME", home.file(QStringLiteral("blocked")).toUtf8());
    const QString error = filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("mp3"));
    EXPECT_TRUE(error.contains(QStringLiteral("writable"))) << error.toStdString();
    qputenv("XDG_CONFIG_HOME", home.file(QStringLiteral("blocked")).toUtf8());
    EXPECT_FALSE(startup_SetRunValue(QStringLiteral("VELDOR"), startup_Command()).isEmpty());
}

TEST_F(FileAssociations, ExecLinesSurviveBlanksQuotesAndPercentSigns) {
    const QString exe = QStringLiteral("/opt/my player/50% \"best\" $HOME\\veldor");
    const QString exec = execLine(exe, QStringLiteral("%F"));
    EXPECT_EQ(exec, QStringLiteral(R"("/opt/my player/50%% \\"best\\" \\$HOME\\\\veldor" %F)"));
    const QString path = home.file(QStringLiteral("t.desktop"));
    TempHome::writeFile(path,
                        "[Desktop Entry]\nType=Application\nName=T\nExec=" + exec.toUtf8() + "\n");
    expectValidDesktopFile(path);
}

TEST_F(FileAssociations, AutostartIsSwitchedOffOnlyWhenItIsOurs) {
    ASSERT_EQ(startup_SetRunValue(QStringLiteral("VELDOR"), startup_Command()), QString());
    EXPECT_TRUE(startup_IsSet());
    expectValidDesktopFile(autostartFilePath());
    const QString entry = QString::fromUtf8(TempHome::readFile(autostartFilePath()));
    EXPECT_TRUE(entry.contains(QStringLiteral("\" /systray /winload\n"))) << entry.toStdString();
    EXPECT_EQ(startup_DeleteRunValue(QStringLiteral("VELDOR")), QString());
    EXPECT_FALSE(QFile::exists(autostartFilePath()));

    TempHome::writeFile(autostartFilePath(),
                        "[Desktop Entry]\nType=Application\nName=Mine\nExec=veldor\n");
    EXPECT_FALSE(startup_IsSet());
    EXPECT_EQ(startup_DeleteRunValue(QStringLiteral("VELDOR")), QString());
    EXPECT_TRUE(QFile::exists(autostartFilePath()));
}

TEST_F(FileAssociations, StartupRegistersTheMpegAudioTypesByDefault) {
    filetype_RegisterAtStartup(QStringLiteral("VELDOR"));
    EXPECT_TRUE(filetype_Registered().isEmpty()); // switched off by default
    settings_Write(QStringLiteral("Settings"), QStringLiteral("RegisterFilesWhenLoading"), 1);
    settings_Write(QStringLiteral("FileTypes"), QStringLiteral("MP2"), 0);
    settings_Write(QStringLiteral("FileTypes"), QStringLiteral("WMA"), 1);
    filetype_RegisterAtStartup(QStringLiteral("VELDOR"));
    EXPECT_EQ(filetype_Registered(), (QStringList{"mp3", "mp1", "wma"}));
}

TEST_F(FileAssociations, PreferencesApplyTakesAndHandsBackTypesAndTheSessionStart) {
    MainContext ctx;
    SystemSetup_install(ctx);
    ASSERT_TRUE(bool(ctx.associations_Apply));
    settings_Write(QStringLiteral("FileTypes"), QStringLiteral("MP2"), 0);
    settings_Write(QStringLiteral("FileTypes"), QStringLiteral("WAV"), 1);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("StartVELDOROnWindowsSessionStartup"),
                   1);
    ctx.associations_Apply();
    EXPECT_EQ(filetype_Registered(), (QStringList{"mp3", "mp1", "wav"}));
    EXPECT_TRUE(startup_IsSet());
    for (const char* key : {"MP3", "MP1", "WAV"})
        settings_Write(QStringLiteral("FileTypes"), QString::fromLatin1(key), 0);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("StartVELDOROnWindowsSessionStartup"),
                   0);
    ctx.associations_Apply();
    EXPECT_TRUE(filetype_Registered().isEmpty());
    EXPECT_FALSE(startup_IsSet());
    EXPECT_FALSE(QFile::exists(desktopFilePath()));
}

TEST_F(FileAssociations, RegisterNowTakesTheCheckedTypesAndKeepsEarlierOnes) {
    if (!haveTool("xdg-mime")) GTEST_SKIP() << "xdg-utils not installed";
    MainContext ctx;
    ScriptedResponder answers({QStringLiteral("no")});
    Dialogs::setResponder(&answers);
    filetype_Register(QStringLiteral("VELDOR"), QStringLiteral("mp3"));
    {
        FrmPreferences dialog(ctx);
        auto* types = dialog.findChild<QListWidget*>(QStringLiteral("lstTypes"));
        ASSERT_NE(types, nullptr);
        for (int i = 0; i < types->count(); ++i)
            types->item(i)->setCheckState(
                types->item(i)->text() == QLatin1String("WAV") ? Qt::Checked : Qt::Unchecked);
        dialog.cmdRegisterNow_Click();
    }
    Dialogs::setResponder(nullptr);
    ASSERT_EQ(answers.asked().size(), 1);
    EXPECT_EQ(answers.asked()[0].title, QStringLiteral("Confirm Updating Windows Icons"));
    // Unchecked in the list is not unregistered: only Apply hands types back.
    EXPECT_EQ(filetype_Registered(), (QStringList{"mp3", "wav"}));
    EXPECT_EQ(queryDefault(mimeTypeOf(QStringLiteral("wav"))), QStringLiteral("veldor.desktop"));
    expectValidDesktopFile(desktopFilePath());
}

TEST(MimeappsList, EditsTouchOnlyTheOneDefault) {
    EXPECT_EQ(mimeapps_SetDefault(QString(), QStringLiteral("a/b"), QStringLiteral("v.desktop")),
              QStringLiteral("[Default Applications]\na/b=v.desktop\n"));
    const QString text =
        QStringLiteral("[Default Applications]\nx/y=z.desktop\n\n[Other]\na/b=q\n");
    const QString added =
        mimeapps_SetDefault(text, QStringLiteral("a/b"), QStringLiteral("v.desktop"));
    EXPECT_EQ(
        added,
        QStringLiteral("[Default Applications]\nx/y=z.desktop\na/b=v.desktop\n\n[Other]\na/b=q\n"));
    EXPECT_EQ(mimeapps_Default(added, QStringLiteral("a/b")), QStringLiteral("v.desktop"));
    EXPECT_EQ(mimeapps_SetDefault(added, QStringLiteral("a/b"), QString()), text);
    EXPECT_EQ(mimeapps_Default(text, QStringLiteral("a/b")), QString()); // [Other] doesn't count
}
