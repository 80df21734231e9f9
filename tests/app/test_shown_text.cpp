#include "app/RestoredWindow.h"
#include "core/ConsoleLog.h"
#include "core/FrmConsole.h"
#include "core/ListModel.h"
#include "core/ShownText.h"
#include "playback/FrmPlaying.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <gtest/gtest.h>

namespace {
// An ID3v1 field as it is stored: padded with NULs to its thirty bytes.
QString padded(const char* text) {
    QString s = QString::fromLatin1(text);
    return s + QString(30 - s.size(), QChar(0));
}
} // namespace

TEST(ShownText, CutAtTheFirstNulLineByLine) {
    EXPECT_EQ(text_Shown(padded("Artist")), "Artist");
    EXPECT_EQ(text_Shown(QStringLiteral("no nul")), "no nul");
    EXPECT_EQ(text_Shown(QString(3, QChar(0))), "");
    EXPECT_EQ(text_ShownLines(padded("one") + "\n" + "two\n" + padded("three")), "one\ntwo\nthree");
}

TEST(ShownText, EveryDisplayShowsUpToTheNulWhileTheRowKeepsIt) {
    Restored r;
    r.restore();
    const QString artist = padded("Artist"), title = padded("Title");
    const QString song = artist + QStringLiteral(" - ") + title;

    // The status bar and the tray tip.
    r.ctx->setStatusText(QStringLiteral("Status:  Playing... 01.  ") + song);
    EXPECT_EQ(r.window->statusPanel(1)->text(), "Status:  Playing... 01.  Artist");
    EXPECT_EQ(r.ctx->statusText().size(), 25 + song.size()); // the text itself is whole
    r.ctx->setTrayTip(QStringLiteral("VELDOR:  Playing\n01. ") + song);
    EXPECT_EQ(r.ctx->TrayTip, "VELDOR:  Playing\n01. Artist");

    // The song alert.
    FrmPlaying alert;
    alert.setText(song);
    EXPECT_EQ(alert.lblText()->text(), "Artist");

    // A message box, and what a script sees of it.
    r.dialogs.clear();
    Dialogs::msgBox(QStringLiteral("Cannot play ") + song, Dialogs::vbExclamation, title);
    ASSERT_EQ(r.dialogs.asked().size(), 1);
    EXPECT_EQ(r.dialogs.asked()[0].text, "Cannot play Artist");
    EXPECT_EQ(r.dialogs.asked()[0].title, "Title");

    // The console, line by line.
    ConsoleLog::instance().setWriteFlag(true);
    window_WriteLog(QStringLiteral("Played ") + song + QStringLiteral("."));
    window_WriteLog(QStringLiteral("Next line."));
    const QString shown = FrmConsole::instance().txtData->toPlainText();
    EXPECT_TRUE(shown.endsWith(QStringLiteral("Played Artist\nNext line."))) << qPrintable(shown);
    EXPECT_TRUE(ConsoleLog::instance().text().contains(song)); // the log keeps what was written
}
