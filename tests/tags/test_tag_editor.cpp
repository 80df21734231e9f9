#include "core/PlaylistCombo.h"
#include "tags/FrmEditTag.h"
#include "tags/FrmRename.h"
#include "tags/TagToolsFixture.h"
#include "tags/clsID3v2.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <sys/stat.h>

using namespace PlaylistColumn;

namespace {

class TagEditor : public TagToolsFixture {
protected:
    void TearDown() override {
        // Deleting one window may take others with it: hold them by guarded pointers.
        QList<QPointer<QWidget>> open;
        for (QWidget* w : QApplication::topLevelWidgets())
            open << w;
        for (const QPointer<QWidget>& w : open)
            delete w.data();
        TagToolsFixture::TearDown();
    }
    template <class T> T* window() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* t = qobject_cast<T*>(w); t && t->isVisible()) return t;
        return nullptr;
    }
    FrmEditTag* properties(int row) {
        select({row});
        mnuProperties_Click(ctx);
        return window<FrmEditTag>();
    }
};

} // namespace

TEST_F(TagEditor, OpensOnlyForOneExistingFileThatIsNotPlaying) {
    const QString a = mp3(QStringLiteral("a.mp3"), v1("A", "T"));
    const QString b = mp3(QStringLiteral("b.mp3"), v1("B", "T"));
    addFile(a);
    addFile(b);
    addFile(missing(QStringLiteral("gone.mp3")));
    ctx.player().setFileName(b);
    select({1, 2});
    mnuProperties_Click(ctx);
    EXPECT_EQ(properties(2), nullptr);
    EXPECT_EQ(properties(3), nullptr);
    const QStringList m = messages();
    ASSERT_EQ(m.size(), 3);
    EXPECT_EQ(m[0],
              QStringLiteral("Edit ID3 Tag Error: You have selected more than 1 song from the "
                             "playlist.\n\nThis function will not continue."));
    EXPECT_EQ(m[1], QStringLiteral("Edit ID3 Tag Error: The filename that you have selected from "
                                   "the list is being used by VELDOR.\n\nThis function will not "
                                   "continue."));
    EXPECT_TRUE(m[2].contains(QStringLiteral("does not exist.")));

    ctx.commands().setChecked(QStringLiteral("mnuTagsUseID3v2Tags"), true);
    FrmEditTag* w = properties(1);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->currentSection(), 1);
    EXPECT_EQ(w->lblTitle->text(), QStringLiteral("Section selected:  View ID3v2:"));
    EXPECT_EQ(w->txtArtist[0]->text(), QStringLiteral("A"));
    EXPECT_EQ(w->cmbGenre->currentText(), QStringLiteral("Rock"));
    EXPECT_EQ(w->lblReadOnly->text(), QStringLiteral("False"));
    EXPECT_EQ(w->lblHidden->text(), QStringLiteral("False"));
    EXPECT_EQ(w->lblSize->text(), QString::number(QFileInfo(a).size()));
    w->window_ShowSection(3);
    EXPECT_EQ(w->lblTitle->text(), QStringLiteral("Section selected:  View Properties:"));
    EXPECT_TRUE(w->panels[3]->isVisible());
    EXPECT_FALSE(w->panels[1]->isVisible());
}

TEST_F(TagEditor, AnUntaggedFileGetsBothTagsAndItsRowFollows) {
    const QString f = mp3(QStringLiteral("plain.mp3"), {});
    const QByteArray before = TempHome::readFile(f);
    addFile(f);
    FrmEditTag* w = properties(1);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->cmbGenre->currentIndex(), 0); // "Blues" for a file without a tag
    // Typed on the ID3v2 panel only: refused, the ID3v1 artist is what counts.
    w->txtArtist[1]->setText(QStringLiteral("Only V2"));
    EXPECT_FALSE(w->cmdUpdate_Click());
    EXPECT_EQ(dialogs.asked().last().text,
              QStringLiteral("It has been detected that you have not entered an Artist name.\n\n"
                             "This function will not be proformed."));
    EXPECT_EQ(TempHome::readFile(f), before);

    w->txtArtist[0]->setText(QStringLiteral("Artist"));
    w->txtTitle[0]->setText(QStringLiteral("Title"));
    w->txtLyrics->setPlainText(QStringLiteral("la la"));
    ASSERT_TRUE(w->cmdUpdate_Click());
    const QByteArray after = TempHome::readFile(f);
    EXPECT_EQ(after.right(128), v1("Artist", "Title", "", "", 0));
    clsID3v2 t;
    t.setFilename(f);
    EXPECT_EQ(t.FrameCount(), 10);
    EXPECT_EQ(t.Lyrics(), QStringLiteral("la la"));
    EXPECT_EQ(t.Artist(), QStringLiteral("Only V2"));
    // The MPEG frames are untouched but for the 128 bytes the ID3v1 tag now covers.
    EXPECT_EQ(audioOf(f), before.left(before.size() - 128));
    EXPECT_EQ(list().text(0, Artist), QStringLiteral("Artist"));
    EXPECT_TRUE(log().contains(f + QStringLiteral(" ID3 tag modified.")));
}

TEST_F(TagEditor, UpdateRefusesReadOnlyAndSavesOnlyAChosenPlaylist) {
    const QString f = mp3(QStringLiteral("a.mp3"), v1("A", "T"));
    addFile(f);
    int saves = 0;
    ctx.commands().setHandler(QStringLiteral("mnuSave"), [&] { ++saves; });
    ctx.cmbPlaylists().addItem(QStringLiteral("((select playlist))"));
    ctx.cmbPlaylists().addItem(QStringLiteral("Rock"));
    ctx.cmbPlaylists().setListIndex(0);
    FrmEditTag* w = properties(1);
    ASSERT_NE(w, nullptr);
    w->chkSaveChanges->setChecked(true);
    w->txtComments[0]->setText(QStringLiteral("c"));
    ASSERT_TRUE(w->cmdUpdate_Click());
    EXPECT_EQ(saves, 0);
    ctx.cmbPlaylists().setListIndex(1);
    ASSERT_TRUE(w->cmdUpdate_Click());
    EXPECT_EQ(saves, 1);

    ::chmod(QFile::encodeName(f).constData(), 0444);
    const QByteArray locked = TempHome::readFile(f);
    w->cmdReload_Click();
    EXPECT_EQ(w->lblReadOnly->text(), QStringLiteral("True"));
    EXPECT_FALSE(w->cmdUpdate_Click());
    EXPECT_EQ(dialogs.asked().last().text,
              QStringLiteral("It has been detected that the song you are trying to edit is "
                             "Read-Only.\n\nThis function will not be proformed."));
    EXPECT_EQ(TempHome::readFile(f), locked);
}

TEST_F(TagEditor, RenameCarriesTheNameToRowCountsAndVolumes) {
    const QString f = mp3(QStringLiteral("a.mp3"), v1("Art", "Tit", "Alb"));
    addFile(mp3(QStringLiteral("other.mp3"), {}));
    addFile(f);
    tracking().lstvItems().addRow({"Art", "Tit", "05", f});
    volumes().lstvItems().addRow({"Art", "Tit", "30", f});
    FrmRename* r = FrmRename::open(ctx, f, 2);
    EXPECT_EQ(r->txtDirectory->text(), home.file(QStringLiteral("media/")));
    EXPECT_EQ(r->txtNewFilename->text(), QStringLiteral("a.mp3"));
    r->cmbFilename->setCurrentIndex(2);
    r->chkMaintain->setChecked(true);
    r->cmdUseID3_Click();
    EXPECT_EQ(r->txtNewFilename->text(), QStringLiteral("02 - Art - Alb - Tit.mp3"));

    // Refused: a forbidden character, a way out of the folder, a name taken.
    const QString taken = home.file(QStringLiteral("media/other.mp3"));
    for (const QString& bad :
         {QStringLiteral("a:b.mp3"), QStringLiteral(".."), QStringLiteral("other.mp3")}) {
        r->txtNewFilename->setText(bad);
        EXPECT_FALSE(r->cmdUpdate_Click()) << bad.toStdString();
        EXPECT_TRUE(QFileInfo::exists(f));
    }
    EXPECT_TRUE(dialogs.asked()[0].text.contains(QStringLiteral("\\ / : * ? \" < > |")));
    EXPECT_EQ(audioOf(taken), TagBytes::audio(40));

    const QString name = QStringLiteral("-n 'Ärger'  x.mp3");
    r->txtNewFilename->setText(name);
    ASSERT_TRUE(r->cmdUpdate_Click());
    const QString now = home.file(QStringLiteral("media/") + name);
    EXPECT_TRUE(QFileInfo::exists(now));
    EXPECT_FALSE(QFileInfo::exists(f));
    EXPECT_EQ(list().text(1, Filename), now);
    EXPECT_EQ(tracking().lstvItems().text(0, Tracking::Filename), now);
    EXPECT_EQ(volumes().volumes_GetVolume(now), 30);
    EXPECT_TRUE(log().contains(QStringLiteral("Filename %1 was renamed to %2.").arg(f, now)));
}

TEST_F(TagEditor, RenameIsRefusedForThePlayingFile) {
    const QString f = mp3(QStringLiteral("a.mp3"), v1("A", "T"));
    addFile(f);
    ctx.player().setFileName(f);
    select({1});
    mnuSelectedRenameFilename_Click(ctx);
    EXPECT_EQ(window<FrmRename>(), nullptr);
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, QStringLiteral("Rename Filename Error"));
    FrmRename* r = FrmRename::open(ctx, f, 1);
    r->txtNewFilename->setText(QStringLiteral("b.mp3"));
    EXPECT_FALSE(r->cmdUpdate_Click());
    EXPECT_TRUE(QFileInfo::exists(f));
}
