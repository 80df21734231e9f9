#include "ToolsFixture.h"

#include "core/Settings.h"
#include "playlists/FrmJump.h"
#include "playlists/JumpSearch.h"
#include "tags/TagBytes.h"
#include "tags/clsID3v1.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

using namespace JumpSearch;

namespace {

Entry entry(const QString& artist, const QString& genre = {}) {
    Entry e{artist, {}, {}};
    e.lower[Field::Artist] = artist.toLower();
    e.lower[Field::Genre] = genre.toLower();
    return e;
}

std::vector<int> find(const Index& index, int by, int mode, bool notEqual, const QString& text,
                      const QStringList& excluded = {}) {
    return search(index, {by, mode, notEqual, text, excluded});
}

} // namespace

TEST(JumpSearchRules, ModesAndTheOperator) {
    EXPECT_TRUE(test("abba", "abba", WholeWord, false));
    EXPECT_FALSE(test("abba gold", "abba", WholeWord, false));
    EXPECT_TRUE(test("abba gold", "abba", StartsWith, false));
    EXPECT_TRUE(test("abba gold", "gold", EndsWith, false));
    EXPECT_TRUE(test("abba gold", "a g", Contains, false));
    // A criteria longer than the field never matches under "=", always under "<>".
    EXPECT_FALSE(test("ab", "abc", StartsWith, false));
    EXPECT_FALSE(test("ab", "abc", EndsWith, false));
    EXPECT_TRUE(test("ab", "abc", StartsWith, true));
}

TEST(JumpSearchRules, AllFieldsMatchOnAnyAndExcludeOnAnyWholeField) {
    Index index;
    index.add(entry("Queen", "Rock"));
    index.add(entry("Queens Of Noise", "rock"));
    index.add(entry("Björk", "Pop"));
    EXPECT_EQ(find(index, 0, Contains, false, "QUEEN"), (std::vector<int>{0, 1}));
    EXPECT_EQ(find(index, 1, WholeWord, false, "björk"), std::vector<int>{2});
    // Excluded words must equal a whole field: "que" excludes nothing.
    EXPECT_EQ(find(index, 0, Contains, false, "queen", {"que"}), (std::vector<int>{0, 1}));
    EXPECT_EQ(find(index, 0, Contains, false, "queen", {"rock"}), std::vector<int>{});
    // One chosen field: only that field is tested against the excluded words.
    EXPECT_EQ(find(index, 5, WholeWord, false, "rock", {"queen"}), (std::vector<int>{0, 1}));
    EXPECT_EQ(find(index, 5, WholeWord, false, "rock", {"rock"}), std::vector<int>{});
    // With "<>" one differing field is enough in the all-fields search.
    EXPECT_EQ(find(index, 0, WholeWord, true, "queen"), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(find(index, 1, WholeWord, true, "queen"), (std::vector<int>{1, 2}));
    EXPECT_EQ(excludeList(" a , b,c "), (QStringList{"a", "b", "c"}));
}

class JumpWindowTest : public ToolsFixture {
protected:
    // An "mp3" whose ID3v1 tag says otherwise than its row.
    QString tagged(const QString& name, const QString& artist, const QString& album,
                   uint8_t genre) {
        ID3v1Record r;
        r.Artist = artist;
        r.Title = "Tag Title";
        r.Album = album;
        r.Year = "1999";
        r.Genre = genre;
        const QString path = home.file("media/" + name);
        TempHome::writeFile(path, TagBytes::audio(2) + "TAG" + r.bytes());
        return path;
    }
    FrmJump* open() {
        ctx.commands().run("mnuJumpToMedia");
        auto* w = window<FrmJump>();
        if (w) {
            EXPECT_TRUE(QTest::qWaitFor([w] { return !w->reading(); }));
        }
        return w;
    }
    QStringList results(FrmJump* w) {
        QStringList out;
        for (int i = 0; i < w->items->count(); ++i)
            out << w->items->rowTexts(i).join('|');
        return out;
    }
};

TEST_F(JumpWindowTest, TypingSearchesTagsOfMpegFilesAndRowsOfOthers) {
    addSong("1", "Row Artist", "Row Title", tagged("a.mp3", "Tag Artist", "Gold", 17));
    addSong("2", "Wave Artist", "Wave Title", "/m/x.wav", "2001");
    addSong("3", "Gold Digger", "Song", "/m/y.wav");
    auto* w = open();
    ASSERT_TRUE(w);
    EXPECT_FALSE(w->cmdSelect->isEnabled());
    w->opSearchMode[3]->setChecked(true);
    w->cmbSearch->setEditText("gold");
    EXPECT_EQ(results(w), (QStringList{"01|Tag Artist|Tag Title", "02|Gold Digger|Song"}));
    EXPECT_EQ(w->lblSearchResults->text(), "Search Results:  2");
    EXPECT_TRUE(w->cmdSelect->isEnabled());
    // The genre of a WAV row is an empty field.
    w->opOptions[5]->setChecked(true);
    w->opSearchMode[0]->setChecked(true);
    w->cmbSearch->setEditText("rock");
    EXPECT_EQ(results(w), QStringList{"01|Tag Artist|Tag Title"});
    w->cmbOp->setCurrentIndex(1);
    EXPECT_EQ(w->items->count(), 2);
    w->cmbSearch->setEditText("nothing like it");
    w->cmbOp->setCurrentIndex(0);
    EXPECT_EQ(w->lblSearchResults->text(), "Search Results:  None");
    EXPECT_FALSE(w->cmdSelect->isEnabled());
}

TEST_F(JumpWindowTest, FindRefusesEmptyInputAndRereadsRowsThatChanged) {
    addSong("1", "Abba", "Waterloo", "/m/1.wav");
    auto* w = open();
    ASSERT_TRUE(w);
    w->cmdFind_Click();
    w->cmbSearch->setEditText("abba");
    w->chkNotToInclude->click();
    w->cmdFind_Click();
    EXPECT_EQ(messages(),
              (QStringList{"It has been detected that you have not entered anything into the "
                           "search criteria section.\n\nPlease enter a search criteria before "
                           "continuing with this function.\n",
                           "You have not entered any data into the 'Not To Include' text "
                           "field.\n\nPlease enter some criteria before continuing with this "
                           "function.\n"}));
    EXPECT_EQ(asked(),
              (QStringList{"message|Search For Song Error", "message|Search For Song Error"}));
    w->chkNotToInclude->click();
    addSong("2", "ABBA", "SOS", "/m/2.wav");
    w->cmdFind_Click();
    ASSERT_TRUE(QTest::qWaitFor([w] { return !w->reading(); }));
    EXPECT_EQ(results(w), (QStringList{"01|Abba|Waterloo", "02|ABBA|SOS"}));
}

TEST_F(JumpWindowTest, SelectGoesToTheFirstRowWithThatArtistAndTitle) {
    addRows(3);
    addSong("4", "artist 2", "TITLE 2", "/m/dup.wav");
    auto* w = open();
    ASSERT_TRUE(w);
    w->cmdSelect_Click();
    EXPECT_EQ(messages().value(0), "It has been detected that you have not selected a song from "
                                   "the list.\n\nPlease select a song from the list before "
                                   "continuing.\n");
    w->opOptions[6]->setChecked(true);
    w->opSearchMode[1]->setChecked(true);
    w->cmbSearch->setEditText("/m/dup");
    ASSERT_EQ(w->items->count(), 1);
    listview_SelectItem(*w->items, 1);
    w->opFurther[1]->setChecked(true);
    w->cmdSelect_Click();
    // The result points back through its texts only: the earlier row wins.
    EXPECT_EQ(started, QList<int>{2});
    EXPECT_FALSE(window<FrmJump>());
    EXPECT_EQ(settings_Read("JumpToMedia", "SearchByFilename"), "1");
    EXPECT_EQ(settings_Read("JumpToMedia", "SearchByAll"), "0");
    EXPECT_EQ(settings_Read("JumpToMedia", "ModeStartsWith"), "1");
    EXPECT_EQ(settings_Read("JumpToMedia", "OptionSelectSongAndPlayIt"), "1");

    w = open();
    EXPECT_TRUE(w->opOptions[6]->isChecked());
    EXPECT_TRUE(w->opFurther[1]->isChecked());
    w->opFurther[2]->setChecked(true);
    w->cmbSearch->setEditText("/m/3");
    listview_SelectItem(*w->items, 1);
    w->cmdSelect_Click();
    EXPECT_EQ(ctx.PlayNextRowIndex, 3);
}

TEST_F(JumpWindowTest, DoNothingLeavesTheSelection) {
    addRows(2);
    listview_SelectItem(list(), 1);
    auto* w = open();
    w->opFurther[3]->setChecked(true);
    w->cmbSearch->setEditText("artist 2");
    listview_SelectItem(*w->items, 1);
    w->cmdSelect_Click();
    EXPECT_EQ(listview_SelectedIndex(list()), 1);
    EXPECT_TRUE(started.isEmpty());
}
