#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/FrmConsole.h"
#include "core/Settings.h"
#include "support/TempHome.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

// Records what the save dialog was asked for, on top of the scripted answers.
class Responder : public ScriptedResponder {
public:
    using ScriptedResponder::ScriptedResponder;
    Dialogs::FileResult file(const Dialogs::Asked& asked, const Dialogs::FileRequest& r) override {
        request = r;
        return ScriptedResponder::file(asked, r);
    }
    Dialogs::FileRequest request;
};

// A fresh data folder, a log of our own and dialogs answered by script.
struct Console : ::testing::Test {
    TempHome home;
    ConsoleLog log;
    Responder dialogs;
    Console() { Dialogs::setResponder(&dialogs); }
    ~Console() override { Dialogs::setResponder(nullptr); }
    QString consoleLog() const { return home.file("console.log"); }
    void remember(bool on) { settings_Write("Settings", "RememberTheConsoleLogs", on ? "1" : "0"); }
};

QString pdfText(const QString& pdf) {
    QProcess p;
    p.start("pdftotext", {"-layout", pdf, "-"});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace

TEST_F(Console, LinesEndInCrLfAndNothingIsWrittenWhenTheFlagIsOff) {
    log.form_Load();
    EXPECT_TRUE(log.write("Played Artist - Title."));
    log.write("");
    log.write("Second");
    EXPECT_EQ(log.text(), "Played Artist - Title.\r\n\r\nSecond\r\n");
    log.setWriteFlag(false);
    log.write("ignored");
    EXPECT_EQ(log.text(), "Played Artist - Title.\r\n\r\nSecond\r\n");
    EXPECT_FALSE(QFile::exists(consoleLog())); // not remembered: no file
}

TEST_F(Console, RememberedLogIsRewrittenAtEveryLine) {
    log.form_Load();
    log.write("before");
    remember(true); // read at each line, so it counts at once
    log.write("one");
    EXPECT_EQ(TempHome::readFile(consoleLog()), "before\r\none\r\n\r\n");
    log.write("two");
    EXPECT_EQ(TempHome::readFile(consoleLog()), "before\r\none\r\ntwo\r\n\r\n");
    remember(false);
    log.write("three");
    EXPECT_EQ(TempHome::readFile(consoleLog()), "before\r\none\r\ntwo\r\n\r\n");

    // A file that cannot be written is reported to the caller; the line is still in the log.
    remember(true);
    QFile::setPermissions(consoleLog(), QFileDevice::ReadOwner);
    EXPECT_FALSE(log.write("four"));
    EXPECT_TRUE(log.text().endsWith("four\r\n"));
    EXPECT_EQ(TempHome::readFile(consoleLog()), "before\r\none\r\ntwo\r\n\r\n");
}

TEST_F(Console, LoadReadsTheRememberedLogAndEndsItInALineBreak) {
    TempHome::writeFile(consoleLog(), "old line\nlast without break");
    log.form_Load(); // not remembered: the file is ignored
    EXPECT_EQ(log.text(), "");

    remember(true);
    log.form_Load();
    EXPECT_EQ(log.text(), "old line\r\nlast without break\r\n");
    log.write("new run");
    EXPECT_EQ(TempHome::readFile(consoleLog()),
              "old line\r\nlast without break\r\nnew run\r\n\r\n");

    // Over runs: what a run leaves is read back whole by the next one.
    ConsoleLog next;
    next.form_Load();
    EXPECT_EQ(next.text(), "old line\r\nlast without break\r\nnew run\r\n\r\n");
}

TEST_F(Console, WriteLogsCheckBoxAppliesAndIsStored) {
    settings_Write("Settings", "WriteConsoleLogs", "0");
    ConsoleLog fresh;
    fresh.write("start line"); // the first line loads the console, whose setting is then in force
    EXPECT_TRUE(fresh.isLoaded());
    EXPECT_EQ(fresh.text(), "");
    EXPECT_EQ(TempHome::readFile(home.settingsFile()), "[Settings]\r\nWriteConsoleLogs=0\r\n");
    EXPECT_FALSE(fresh.writeFlag());
    EXPECT_EQ(fresh.caption(), "Console - [Disabled]");

    fresh.chkWriteLogs_Click(true);
    EXPECT_TRUE(fresh.writeFlag());
    EXPECT_EQ(fresh.caption(), "Console - [Enabled]");
    EXPECT_EQ(settings_Read("Settings", "WriteConsoleLogs", ""), "1");
    fresh.write("now logged");
    EXPECT_EQ(fresh.text(), "now logged\r\n");
    fresh.chkWriteLogs_Click(false);
    EXPECT_EQ(settings_Read("Settings", "WriteConsoleLogs", ""), "0");
}

TEST_F(Console, ClearAsksAndDeletesTheFileOnlyWhenRemembered) {
    log.form_Load();
    log.write("a");
    TempHome::writeFile(consoleLog(), "older run\r\n");
    dialogs.answer("no");
    log.cmdClear_Click();
    EXPECT_EQ(log.text(), "a\r\n");
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, "Clear Console Logs Confirmation");
    EXPECT_EQ(dialogs.asked()[0].text, "Once the console logs have been cleared, you will not be "
                                       "able to get them back.\n\nDo you wish to continue?\n");
    EXPECT_EQ(dialogs.asked()[0].flags, 52);

    dialogs.answer("yes");
    log.cmdClear_Click();
    EXPECT_EQ(log.text(), "");
    EXPECT_TRUE(QFile::exists(consoleLog())); // not remembered: the older file stays

    remember(true);
    log.write("b");
    dialogs.answer("yes");
    log.cmdClear_Click();
    EXPECT_FALSE(QFile::exists(consoleLog()));
}

TEST_F(Console, SaveWritesTheTextAndAsksBeforeOverwriting) {
    log.form_Load();
    log.write("line one");
    log.write("line two");
    const QString target = home.file("Logs/run.slf");
    QDir().mkpath(home.file("Logs"));

    log.cmdSave_Click(); // cancelled: nothing
    EXPECT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, "Save Console Log...");
    EXPECT_EQ(dialogs.request.filter, "VELDOR Logs|*.slf|All Files|*.*|");
    EXPECT_EQ(dialogs.request.initDir, App::file("Logs"));
    EXPECT_EQ(dialogs.request.fileName, "");
    EXPECT_EQ(dialogs.request.flags, 4);

    dialogs.answer(target);
    log.cmdSave_Click();
    EXPECT_EQ(TempHome::readFile(target), "line one\r\nline two\r\n\r\n");

    log.write("line three");
    dialogs.answer(target);
    dialogs.answer("no");
    log.cmdSave_Click();
    EXPECT_EQ(TempHome::readFile(target), "line one\r\nline two\r\n\r\n");
    EXPECT_EQ(dialogs.asked().last().title, "Overwrite Existing File Confirmation");
    EXPECT_EQ(dialogs.asked().last().text, "The filename you have entered/selected already "
                                           "exists.\n\nWould you like to overwrite this file?\n");

    dialogs.answer(target);
    dialogs.answer("yes");
    log.cmdSave_Click();
    EXPECT_EQ(TempHome::readFile(target), "line one\r\nline two\r\nline three\r\n\r\n");
}

TEST_F(Console, SaveFailureShowsTheMessageAndKeepsTheOldFile) {
    log.form_Load();
    log.write("x");
    const QString target = home.file("locked.slf");
    TempHome::writeFile(target, "old");
    QFile::setPermissions(target, QFileDevice::ReadOwner);
    dialogs.answer(target);
    dialogs.answer("yes");
    log.cmdSave_Click();
    EXPECT_EQ(TempHome::readFile(target), "old");
    EXPECT_EQ(dialogs.asked().last().text,
              "An error occured while trying to save.\n\nThis function will not continue.\n");
    EXPECT_EQ(dialogs.asked().last().flags, 48);

    dialogs.answer(home.file("no/such/folder/x.slf"));
    log.cmdSave_Click();
    EXPECT_EQ(dialogs.asked().last().text,
              "An error occured while trying to save.\n\nThis function will not continue.\n");
}

TEST_F(Console, PrintPutsTheHeaderAndEveryLineOnPaper) {
    log.form_Load();
    for (int i = 1; i <= 150; ++i)
        log.write(QString("Played Artist %1 - Title %1.").arg(i));
    QTemporaryDir out;
    const QString pdf = out.filePath("log.pdf");

    log.cmdPrint_Click(); // cancelled
    EXPECT_EQ(dialogs.asked().last().title, "Print Colsole Logs...");
    EXPECT_FALSE(QFile::exists(pdf));

    dialogs.answer("pdf:" + pdf);
    log.setFont(QFont("DejaVu Sans", 10));
    log.cmdPrint_Click();
    const QString text = pdfText(pdf);
    ASSERT_FALSE(text.isEmpty());
    EXPECT_TRUE(text.startsWith("VELDOR Console Log:")) << text.left(200).toStdString();
    EXPECT_TRUE(text.contains("Played Artist 1 - Title 1."));
    EXPECT_TRUE(text.contains("Played Artist 150 - Title 150."));
    EXPECT_GE(text.count('\f'), 2); // more than one page
}

TEST_F(Console, WindowMirrorsTheLogAndForwardsItsButtons) {
    log.form_Load();
    log.write("first");
    FrmConsole window(log);
    EXPECT_EQ(window.objectName(), "FrmConsole");
    EXPECT_EQ(window.windowTitle(), "Console - [Enabled]");
    EXPECT_EQ(window.txtData->toPlainText(), "first");
    for (int i = 0; i < 3; ++i)
        log.write(QString("line %1").arg(i));
    EXPECT_EQ(window.txtData->toPlainText(), "first\nline 0\nline 1\nline 2");
    log.setText("");
    log.write("after clear");
    EXPECT_EQ(window.txtData->toPlainText(), "after clear");
    EXPECT_EQ(window.cmdPrint->text(), "« &Print");
    EXPECT_FALSE(window.cmdSave->accessibleName().isEmpty());

    window.chkWriteLogs->click();
    EXPECT_FALSE(log.writeFlag());
    EXPECT_EQ(window.windowTitle(), "Console - [Disabled]");
    EXPECT_FALSE(window.cmdSave->isEnabled());
    EXPECT_FALSE(window.mnuSaveAs->isEnabled());
    EXPECT_TRUE(window.cmdPrint->isEnabled());
    EXPECT_EQ(settings_Read("Settings", "WriteConsoleLogs", ""), "0");

    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(window.txtData, Qt::Key_S, Qt::ControlModifier); // disabled: nothing
    EXPECT_TRUE(dialogs.asked().isEmpty());
    window.chkWriteLogs->click();
    QTest::keyClick(window.txtData, Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(window.txtData, Qt::Key_P, Qt::ControlModifier);
    ASSERT_EQ(dialogs.asked().size(), 2);
    EXPECT_EQ(dialogs.asked()[0].title, "Save Console Log...");
    EXPECT_EQ(dialogs.asked()[1].title, "Print Colsole Logs...");
    window.close();
    EXPECT_FALSE(window.isVisible()); // closing only hides

    EXPECT_TRUE(window.cmdClear->isEnabled());
    dialogs.answer("yes");
    window.cmdClear->click();
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(window.txtData->toPlainText(), "");
}

TEST_F(Console, RememberedLogGrowsInPlaceWithTheBytesOfAWholeRewrite) {
    remember(true);
    log.form_Load();
    ASSERT_TRUE(log.write("first"));
    // A second name for the file: it sees the new lines only if they land in the same file.
    const QString seen = home.file("seen.log");
    ASSERT_EQ(
        ::link(QFile::encodeName(consoleLog()).constData(), QFile::encodeName(seen).constData()),
        0);
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(log.write(QString("line %1 é").arg(i)));
        ASSERT_EQ(TempHome::readFile(consoleLog()), (log.text() + "\r\n").toUtf8()) << i;
    }
    // Appended to the same file, not a new copy for every line.
    EXPECT_EQ(TempHome::readFile(seen), TempHome::readFile(consoleLog()));

    // Another hand changed the file: the next line writes the whole text again.
    TempHome::writeFile(consoleLog(), "someone else\r\n");
    ASSERT_TRUE(log.write("after"));
    EXPECT_EQ(TempHome::readFile(consoleLog()), (log.text() + "\r\n").toUtf8());
    log.setText("replaced\r\n");
    ASSERT_TRUE(log.write("next"));
    EXPECT_EQ(TempHome::readFile(consoleLog()), QByteArray("replaced\r\nnext\r\n\r\n"));
}

TEST_F(Console, ALineAKillCutShortIsDroppedAtTheNextLoad) {
    remember(true);
    TempHome::writeFile(consoleLog(), "one\r\ntwo\r\n\r\nthree is ha");
    log.form_Load(false);
    EXPECT_EQ(log.text(), "one\r\ntwo\r\n\r\n");
    // A hand-made file with LF endings keeps its last line.
    TempHome::writeFile(consoleLog(), "one\ntwo");
    ConsoleLog other;
    other.form_Load(false);
    EXPECT_EQ(other.text(), "one\r\ntwo\r\n");
}
