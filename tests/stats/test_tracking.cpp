#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "playlists/PlaylistRows.h"
#include "stats/Tracking.h"
#include "support/TempHome.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

class TrackingTest : public ::testing::Test {
protected:
    void SetUp() override {
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setWriteFlag(true);
        ConsoleLog::instance().setText(QString());
        ctx.commands().setHandler(QStringLiteral("mnuNew"),
                                  [this] { listview_Clear(ctx.lstvPlaylist()); });
        ctx.player_Play = [this](int mode) { plays.append(mode); };
        Tracking_install(ctx);
    }
    void TearDown() override { Dialogs::setResponder(nullptr); }

    Tracking& t() { return Tracking::of(ctx); }
    Tracking& reload() {
        fresh = std::make_unique<Tracking>(ctx);
        fresh->Form_Load();
        return *fresh;
    }
    QString path(const QString& name) const { return QStringLiteral("/music/") + name; }
    void play(const QString& name, int times = 1) {
        for (int i = 0; i < times; ++i)
            ctx.tracking_Add(QStringLiteral("Artist ") + name, QStringLiteral("Title"), path(name));
    }
    QStringList column(const ListModel& list, int c) const {
        QStringList out;
        for (int i = 0; i < list.count(); ++i)
            out << list.text(i, c);
        return out;
    }
    QString file() const { return home.file(QStringLiteral("tracking.ssb")); }
    static QByteArray row(const QString& name, const QString& count) {
        return ("\"a\"\r\n\"t\"\r\n\"" + count + "\"\r\n\"/music/" + name + "\"\r\n").toUtf8();
    }

    TempHome home;
    MainContext ctx;
    ScriptedResponder dialogs;
    QList<int> plays;
    std::unique_ptr<Tracking> fresh;
};

TEST_F(TrackingTest, CountsArePaddedToTwoDigitsAndSurviveARestart) {
    play(QStringLiteral("a.mp3"));
    EXPECT_EQ(t().lstvItems().rowTexts(0),
              QStringList({QStringLiteral("Artist a.mp3"), QStringLiteral("Title"),
                           QStringLiteral("01"), path(QStringLiteral("a.mp3"))}));
    EXPECT_EQ(TempHome::readFile(file()),
              QByteArray("\"Artist a.mp3\"\r\n\"Title\"\r\n\"01\"\r\n\"/music/a.mp3\"\r\n"));
    // Later plays count against the first artist and title, under any case of the name.
    t().tracking_Add(QStringLiteral("New"), QStringLiteral("New"), path(QStringLiteral("A.MP3")));
    EXPECT_EQ(t().lstvItems().text(0, Tracking::Played), QStringLiteral("02"));
    EXPECT_EQ(t().lstvItems().text(0, Tracking::Artist), QStringLiteral("Artist a.mp3"));
    play(QStringLiteral("a.mp3"), 8);
    EXPECT_EQ(t().lstvItems().text(0, Tracking::Played), QStringLiteral("10"));
    play(QStringLiteral("b.mp3"), 3);
    EXPECT_EQ(t().label(), QStringLiteral("2 most commonly played media files:"));

    Tracking& again = reload();
    EXPECT_EQ(column(again.lstvItems(), Tracking::Played),
              QStringList({QStringLiteral("10"), QStringLiteral("03")}));
    EXPECT_EQ(again.label(), QStringLiteral("2 most commonly played media files:"));

    t().tracking_Add(QStringLiteral("x"), QStringLiteral("y"), QString());
    EXPECT_EQ(t().lstvItems().count(), 2);
}

TEST_F(TrackingTest, TheTextSortPutsAHundredBelowNinetyNine) {
    TempHome::writeFile(file(), row(QStringLiteral("a"), QStringLiteral("99")) +
                                    row(QStringLiteral("b"), QStringLiteral("99")) +
                                    row(QStringLiteral("c"), QStringLiteral("50")) +
                                    row(QStringLiteral("d"), QStringLiteral("10")));
    t().Form_Load();
    t().tracking_Add(QString(), QString(), path(QStringLiteral("a")));
    EXPECT_EQ(column(t().lstvItems(), Tracking::Played), QStringList({"99", "50", "100", "10"}));
    EXPECT_EQ(column(t().lstvItems(), Tracking::Filename).at(2), path(QStringLiteral("a")));
}

TEST_F(TrackingTest, SwitchedOffNothingCountsAndTheListIsGreyed) {
    play(QStringLiteral("a.mp3"));
    Commands& c = t().controls();
    c.run(QStringLiteral("chkAlwaysUseTracking"));
    EXPECT_EQ(t().caption(), QStringLiteral("Tracking - [Disabled]"));
    EXPECT_FALSE(t().lstvItems().isEnabled());
    for (const char* name : {"cmdClear", "cmdPlay", "mnuTop10Entries", "mnuUseAllTopEntries",
                             "mnuRemoveSelected", "mnuClear"})
        EXPECT_FALSE(c.isEnabled(QString::fromLatin1(name))) << name;
    EXPECT_EQ(
        settings_Read(QStringLiteral("Settings"), QStringLiteral("AlwaysTrackMediaFilesPlayed")),
        QStringLiteral("0"));
    play(QStringLiteral("a.mp3"));
    play(QStringLiteral("b.mp3"));
    EXPECT_EQ(column(t().lstvItems(), Tracking::Played), QStringList({"01"}));
    t().tmrWindowUpdate_Timer(); // the timer leaves a switched-off window alone
    EXPECT_FALSE(c.isEnabled(QStringLiteral("cmdPlay")));

    c.run(QStringLiteral("chkAlwaysUseTracking"));
    EXPECT_EQ(t().caption(), QStringLiteral("Tracking - [Enabled]"));
    EXPECT_TRUE(c.isEnabled(QStringLiteral("cmdPlay")));
}

TEST_F(TrackingTest, ResetAndClearAskFirst) {
    play(QStringLiteral("a.mp3"), 3);
    play(QStringLiteral("b.mp3"), 2);
    dialogs.answer(QStringLiteral("No"));
    t().controls().run(QStringLiteral("mnuResetPlayCounts"));
    EXPECT_EQ(dialogs.asked().at(0).title, QStringLiteral("Reset Tracking List Confirmation"));
    EXPECT_EQ(dialogs.asked().at(0).text,
              QStringLiteral("Once the tracking list has been reset, you will not be able to get "
                             "the orginal numbers back.\n\nDo you wish to continue?"));
    EXPECT_EQ(column(t().lstvItems(), Tracking::Played), QStringList({"03", "02"}));

    dialogs.answer(QStringLiteral("Yes"));
    t().controls().run(QStringLiteral("mnuResetPlayCounts"));
    EXPECT_EQ(column(reload().lstvItems(), Tracking::Played), QStringList({"00", "00"}));
    play(QStringLiteral("b.mp3"));
    EXPECT_EQ(column(t().lstvItems(), Tracking::Played), QStringList({"01", "00"}));

    dialogs.answer(QStringLiteral("Yes"));
    t().controls().run(QStringLiteral("cmdClear"));
    EXPECT_EQ(dialogs.asked().last().title, QStringLiteral("Clear Tracking List Confirmation"));
    EXPECT_EQ(t().lstvItems().count(), 0);
    EXPECT_FALSE(QFile::exists(file()));
    EXPECT_EQ(t().label(), QStringLiteral("Most commonly played media files:"));
}

TEST_F(TrackingTest, RemovalsRenamesAndKeys) {
    const QString alive = home.file(QStringLiteral("alive.mp3"));
    TempHome::writeFile(alive, "x");
    ctx.tracking_Add(QString(), QString(), alive);
    play(QStringLiteral("gone.mp3"), 2);
    t().mnuRemoveDeadFilenames_Click();
    EXPECT_EQ(column(reload().lstvItems(), Tracking::Filename), QStringList({alive}));
    EXPECT_EQ(t().label(), QStringLiteral("1 most commonly played media files:"));

    const QString renamed = home.file(QStringLiteral("ALIVE.mp3"));
    t().tracking_UpdateFilename(alive, renamed);
    EXPECT_EQ(column(reload().lstvItems(), Tracking::Filename), QStringList({renamed}));

    // Delete removes the selected row; the file follows at the next change.
    listview_SelectItem(t().lstvItems(), 1);
    EXPECT_TRUE(t().Form_KeyDown(46));
    EXPECT_EQ(t().lstvItems().count(), 0);
    EXPECT_TRUE(QFile::exists(file()));
    EXPECT_TRUE(t().Form_KeyDown(112));
    EXPECT_TRUE(t().headersVisible());
    EXPECT_FALSE(t().Form_KeyDown(65));
}

TEST_F(TrackingTest, TopEntriesGoToANewPlaylist) {
    // 12 rows, the last two played once: Top 30 falls back to all rows played more than once.
    for (int i = 0; i < 12; ++i)
        play(QStringLiteral("s%1.mp3").arg(i, 2, 10, QLatin1Char('0')), i < 10 ? 2 : 1);
    ctx.lstvPlaylist().addRow({"", "", "", "", "Play", "", "/old.mp3"});
    t().controls().run(QStringLiteral("mnuTop30Entries"));
    ListModel& playlist = ctx.lstvPlaylist();
    EXPECT_EQ(playlist.count(), 10);
    EXPECT_EQ(plays, QList<int>({1}));
    EXPECT_TRUE(ConsoleLog::instance().text().contains(
        QStringLiteral("Tracking list was exported into the main window.")));
    EXPECT_EQ(playlist.text(0, PlaylistColumn::Number), QStringLiteral("01"));

    // 40 rows: the first 30 whatever their count, and nothing starts.
    for (int i = 12; i < 40; ++i)
        play(QStringLiteral("s%1.mp3").arg(i));
    plays.clear();
    t().controls().run(QStringLiteral("mnuTop30Entries"));
    EXPECT_EQ(playlist.count(), 30);
    EXPECT_TRUE(plays.isEmpty());
    EXPECT_EQ(column(playlist, PlaylistColumn::Filename),
              column(t().lstvItems(), Tracking::Filename).mid(0, 30));
    EXPECT_TRUE(ConsoleLog::instance().text().contains(QStringLiteral(
        "Top 30 tracks in the Tracking window were sent to the main windows playlist.")));

    t().controls().run(QStringLiteral("mnuTop10Entries"));
    EXPECT_EQ(playlist.count(), 10);
}

TEST_F(TrackingTest, DamagedAndHugeFilesLoad) {
    // Cut inside a row: the complete rows stay and the file is kept aside.
    const QByteArray cut = row(QStringLiteral("a"), QStringLiteral("05")) + "\"b\"\r\n\"t\"\r\n";
    TempHome::writeFile(file(), cut);
    EXPECT_EQ(reload().lstvItems().count(), 1);
    EXPECT_EQ(TempHome::readFile(file() + QStringLiteral(".damaged")), cut);
    // Told which file and where, in the log and once on screen.
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_TRUE(dialogs.asked()[0].text.contains(file()));
    EXPECT_TRUE(
        ConsoleLog::instance().text().contains(file() + QStringLiteral(" could not be read from "
                                                                       "row 2 (line 5) on")));

    // A count that is not a number starts again from nothing.
    TempHome::writeFile(file(), row(QStringLiteral("a"), QStringLiteral("many")));
    t().Form_Load();
    play(QStringLiteral("a"));
    EXPECT_EQ(t().lstvItems().text(0, Tracking::Played), QStringLiteral("01"));

    QByteArray big;
    for (int i = 0; i < 100000; ++i)
        big += row(QString::number(i), QStringLiteral("%1").arg(i % 97 + 1, 2, 10, QChar('0')));
    TempHome::writeFile(file(), big);
    t().Form_Load();
    ASSERT_EQ(t().lstvItems().count(), 100000);
    EXPECT_EQ(t().lstvItems().text(0, Tracking::Played), QStringLiteral("97"));
    play(QStringLiteral("99999"));
    EXPECT_EQ(reload().lstvItems().count(), 100000);
}

TEST_F(TrackingTest, TitlesWithQuotesAndCommasSurviveTheRoundTrip) {
    const QStringList titles{QStringLiteral("Say \"Hi\", Bob"), QStringLiteral("12\" Mix"),
                             QStringLiteral("\"quoted\""), QStringLiteral("a\",\"b")};
    for (int i = 0; i < titles.size(); ++i)
        ctx.tracking_Add(QStringLiteral("Artist"), titles[i], path(QString::number(i)));
    ctx.tracking_Add(QStringLiteral("Artist"), titles[0], path(QStringLiteral("0")));
    Tracking& back = reload();
    ASSERT_EQ(back.lstvItems().count(), titles.size());
    QStringList seen = column(back.lstvItems(), Tracking::Title);
    seen.sort();
    QStringList want = titles;
    want.sort();
    EXPECT_EQ(seen, want);
    EXPECT_FALSE(QFile::exists(file() + QStringLiteral(".damaged")));
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(TrackingTest, AReadOnlyFileStaysAndCountingGoesOn) {
    const QByteArray before = row(QStringLiteral("a"), QStringLiteral("05"));
    TempHome::writeFile(file(), before);
    QFile::setPermissions(file(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    t().Form_Load();
    play(QStringLiteral("a"));
    play(QStringLiteral("b"));
    EXPECT_EQ(column(t().lstvItems(), Tracking::Played), QStringList({"06", "01"}));
    EXPECT_EQ(TempHome::readFile(file()), before);
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

} // namespace
