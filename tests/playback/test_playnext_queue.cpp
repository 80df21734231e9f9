#include "SoundFixture.h"

#include "core/Colors.h"
#include "playback/AdvancedQueue.h"
#include "playback/PlayNext.h"

namespace {

class PlayNext : public SoundFixture {
protected:
    void SetUp() override {
        SoundFixture::SetUp();
        PlayNext_install(ctx);
        ctx.commands().add(QStringLiteral("mnuPlayNext"), QStringLiteral("Play Ne&xt...\tX"));
        for (const char* name : {"a", "b", "c", "d"})
            addRow(QString::fromLatin1(name), QString(), QStringLiteral("/m/%1.mp3").arg(name));
        ctx.lstvPlaylist().setText(3, PlaylistColumn::Status, QStringLiteral("Skip"));
        const QString playing = home.file(QStringLiteral("a.mp3"));
        TempHome::writeFile(playing, "x");
        engine.setFileName(playing);
        engine.Play();
        ctx.PlayingRowIndex = 1;
    }
    void click(int row) {
        selectOnly(row);
        ctx.commands().run(QStringLiteral("mnuPlayNext"));
    }
    qint64 colour(int row) { return ctx.lstvPlaylist().foreColor(row - 1, 6); }
    QString caption() { return ctx.commands().caption(QStringLiteral("mnuPlayNext")); }
};

TEST_F(PlayNext, MarksOneRowAndASecondClickTakesItAway) {
    click(2);
    EXPECT_EQ(ctx.PlayNextRowIndex, 2);
    for (int c = 0; c < 7; ++c)
        EXPECT_EQ(ctx.lstvPlaylist().foreColor(1, c), 12582912) << c;
    EXPECT_EQ(caption(), QStringLiteral("Play Ne&xt (In Use)...\tX"));

    // Another row moves the mark.
    settings_Write(QStringLiteral("Appearance"), QStringLiteral("PlayNextFontColour"), 255);
    click(3);
    EXPECT_EQ(ctx.PlayNextRowIndex, 3);
    EXPECT_EQ(colour(3), 255);
    EXPECT_EQ(colour(2), Colors::SystemWindowText);

    click(3);
    EXPECT_EQ(ctx.PlayNextRowIndex, 0);
    EXPECT_EQ(colour(3), Colors::SystemWindowText);
    EXPECT_EQ(caption(), QStringLiteral("Play Ne&xt...\tX"));
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(PlayNext, RefusesWhatCannotComeNext) {
    const struct {
        std::vector<int> rows;
        const char* text;
    } cases[] = {
        {{2, 3},
         "You have selected more than 1 song from the playlist.\n\nThis function will not "
         "continue.\n"},
        {{4},
         "The song that you have selected from the playlist is currently set to Skip.\n\nPlease "
         "select a different song to play next.\n"},
        {{1},
         "The song that you have selected from the playlist is currently playing.\n\nPlease "
         "select a different song to play next.\n"},
    };
    for (const auto& k : cases) {
        dialogs.clear();
        ctx.lstvPlaylist().clearSelection();
        for (int r : k.rows)
            ctx.lstvPlaylist().setSelected(r - 1, true);
        ctx.commands().run(QStringLiteral("mnuPlayNext"));
        ASSERT_EQ(dialogs.asked().size(), 1) << k.text;
        EXPECT_EQ(dialogs.asked()[0].text, QString::fromLatin1(k.text));
        EXPECT_EQ(dialogs.asked()[0].title, QStringLiteral("Error With Selected Song"));
        EXPECT_EQ(dialogs.asked()[0].flags, Dialogs::vbExclamation);
        EXPECT_EQ(ctx.PlayNextRowIndex, 0);
    }
}

TEST_F(PlayNext, PausedOrStoppedDoesNothingAtAll) {
    engine.Pause();
    click(4); // even a refusal would need a playing song
    click(2);
    engine.Stop();
    click(2);
    EXPECT_EQ(ctx.PlayNextRowIndex, 0);
    EXPECT_TRUE(dialogs.asked().isEmpty());
    EXPECT_EQ(caption().section('\t', 0, 0), QStringLiteral("Play Ne&xt..."));
}

class Queue : public SoundFixture {
protected:
    void SetUp() override {
        SoundFixture::SetUp();
        // Tags: album and genre by file; ID3v2 tells another artist for "x.mp3".
        AdvancedQueue::setTagReader(
            [this](const QString& f, bool v2, AdvancedQueue::TagFields& out) {
                reads.append((v2 ? QStringLiteral("v2 ") : QStringLiteral("v1 ")) + f);
                if (f.endsWith(QLatin1String("broken.mp3"))) return false;
                out.artist = v2 && f.endsWith(QLatin1String("x.mp3")) ? QStringLiteral("Tagged")
                                                                      : QStringLiteral("Band");
                out.album = f.contains(QLatin1String("/live/")) ? QStringLiteral("Live")
                                                                : QStringLiteral("Studio");
                out.year = QStringLiteral("1999");
                out.genre = v2 ? QStringLiteral("Rock (v2)") : QStringLiteral("Rock");
                return true;
            });
        addRow(QStringLiteral("Band"), QString(), QStringLiteral("/m/x.mp3"));
        addRow(QStringLiteral("band"), QString(), QStringLiteral("/m/live/y.MP2"));
        addRow(QStringLiteral("Band"), QString(), QStringLiteral("/m/z.ogg"));
        addRow(QStringLiteral("Solo"), QString(), QStringLiteral("/m/broken.mp3"));
        ctx.lstvPlaylist().setText(2, PlaylistColumn::Year, QStringLiteral("1999"));
    }
    void TearDown() override {
        AdvancedQueue::setTagReader({});
        SoundFixture::TearDown();
    }
    QStringList statuses() {
        QStringList out;
        for (int i = 0; i < ctx.lstvPlaylist().count(); ++i)
            out << ctx.lstvPlaylist().text(i, PlaylistColumn::Status);
        return out;
    }
    QStringList reads;
};

TEST_F(Queue, CriteriaListEachValueOnceInRowOrder) {
    AdvancedQueue q(ctx);
    q.Form_Load();
    EXPECT_EQ(q.cmbOption, QStringList({"Play", "Play Once", "Skip", "Skip Once", "Remove"}));
    EXPECT_EQ(q.cmbOptionText, QStringLiteral("Play"));
    EXPECT_EQ(q.cmbSearch, QStringList({"Band", "Solo"}));
    EXPECT_TRUE(reads.isEmpty()); // artists come from the rows

    q.chkSearchID3v2 = true;
    q.opOptions_Click(AdvancedQueue::ByAlbum);
    EXPECT_EQ(q.cmbSearch, QStringList({"Studio", "Live"}));
    EXPECT_TRUE(reads.first().startsWith(QLatin1String("v2 ")));
    reads.clear();
    q.opOptions_Click(AdvancedQueue::ByGenre); // genres always from ID3v1
    EXPECT_EQ(q.cmbSearch, QStringList({"Rock"}));
    EXPECT_TRUE(reads.filter(QStringLiteral("v2 ")).isEmpty());
    q.opOptions_Click(AdvancedQueue::ByYear);
    EXPECT_EQ(q.cmbSearch, QStringList({"1999"}));
}

TEST_F(Queue, UpdateSetsTheStatusOfWholeMatches) {
    AdvancedQueue q(ctx);
    q.Form_Load();
    EXPECT_EQ(q.cmdUpdate_Click(), -1);
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, QStringLiteral("Advanved Queuing Error"));

    // Blind to case; mp3 and mp2 rows by their tags, the others by their columns; an unreadable
    // tag matches nothing.
    q.cmbSearchText = QStringLiteral("BAND");
    q.cmbOptionText = QStringLiteral("Skip");
    EXPECT_EQ(q.cmdUpdate_Click(), 3);
    EXPECT_EQ(statuses(), QStringList({"Skip", "Skip", "Skip", "Play"}));

    q.chkSearchID3v2 = true;
    q.cmbOptionText = QStringLiteral("Play Once");
    EXPECT_EQ(q.cmdUpdate_Click(), 2); // x.mp3's ID3v2 tag names someone else
    EXPECT_EQ(statuses(), QStringList({"Skip", "Play Once", "Play Once", "Play"}));

    q.chkSearchID3v2 = false;
    q.opOptions_Click(AdvancedQueue::ByAlbum);
    q.cmbSearchText = QStringLiteral("live");
    q.cmbOptionText = QStringLiteral("Remove");
    EXPECT_EQ(q.cmdUpdate_Click(), 1);
    EXPECT_EQ(statuses().at(1), QStringLiteral("Remove"));
    q.cmbSearchText = QStringLiteral("Liv"); // whole values only
    EXPECT_EQ(q.cmdUpdate_Click(), 0);
    EXPECT_TRUE(q.controlsEnabled);
}

} // namespace
