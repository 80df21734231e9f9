// What the real player start leaves in tracking.ssb while the random history is walked.
#include "playback/AdvanceFixture.h"
#include "stats/Tracking.h"

namespace {

class TrackingHistory : public AdvanceFixture {
protected:
    void SetUp() override {
        AdvanceFixture::SetUp();
        Tracking_install(ctx);
    }
    // Name -> count, as stored on disk.
    QMap<QString, QString> stored() {
        QMap<QString, QString> out;
        const QList<QByteArray> lines =
            TempHome::readFile(home.file(QStringLiteral("tracking.ssb"))).split('\n');
        for (qsizetype i = 3; i < lines.size(); i += 4)
            out.insert(
                QFileInfo(QString::fromUtf8(lines[i].trimmed()).remove('"')).completeBaseName(),
                QString::fromUtf8(lines[i - 1].trimmed()).remove('"'));
        return out;
    }
    QString step(void (*f)(MainContext&)) {
        f(ctx);
        tick();
        return played().last();
    }
};

TEST_F(TrackingHistory, OnlyChosenSongsCountNeverRandomPicksOrHistorySteps) {
    addRows(8);
    setMode("mnuPlayingPickRandomSongs");
    QList<int> draws = {5, 2};
    advance_SetRandomNumber([&](int, int, bool, int) { return draws.takeFirst(); });
    start(1);
    endSong();
    endSong();
    ASSERT_EQ(played(), QStringList({"A", "E", "B"}));
    EXPECT_EQ(stored(), (QMap<QString, QString>{{"A", "01"}}));

    EXPECT_EQ(step(mnuPrevious_Click), "E");
    EXPECT_EQ(step(mnuNextTrack_Click), "B");
    EXPECT_EQ(modes.last(), 2);
    EXPECT_EQ(stored(), (QMap<QString, QString>{{"A", "01"}}));

    // A row the user starts counts, also one the history passed through.
    start(5);
    EXPECT_EQ(stored(), (QMap<QString, QString>{{"A", "01"}, {"E", "01"}}));
}

} // namespace
