#include "tags/FrmMassRenamer.h"
#include "tags/FrmMassTagEditor.h"
#include "tags/ToolsFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

namespace {

class MassWindows : public ToolsFixture {
protected:
    void songs(int n) {
        for (int i = 1; i <= n; ++i)
            addFile(mp3(QStringLiteral("track%1.mp3").arg(i),
                        v1("Artist " + QByteArray::number(i), "Title " + QByteArray::number(i))));
    }
};

} // namespace

TEST_F(MassWindows, ARunLocksTheWindowAndHandsItBackAtTheEnd) {
    songs(3);
    QPointer<FrmMassRenamer> w = FrmMassRenamer::open(ctx);
    ASSERT_TRUE(w);
    EXPECT_FALSE(w->pbBar->isVisible());
    ASSERT_TRUE(w->cmdRename_Click());
    // While it runs only Cancel answers, and a second start is refused.
    EXPECT_FALSE(w->cmdRename->isEnabled());
    EXPECT_FALSE(w->cmdClose->isEnabled());
    EXPECT_FALSE(w->cmbFilename->isEnabled());
    EXPECT_TRUE(w->cmdCancel->isVisible());
    EXPECT_FALSE(w->cmdRename_Click());
    QSignalSpy done(w.data(), &FrmMassTool::runFinished);
    ASSERT_TRUE(done.wait(10000));
    EXPECT_TRUE(w->cmdRename->isEnabled());
    EXPECT_TRUE(w->cmbFilename->isEnabled());
    EXPECT_FALSE(w->cmdCancel->isVisible());
    EXPECT_EQ(w->pbBar->maximum(), 3);
    EXPECT_EQ(w->run(), nullptr);
    w->close();
}

TEST_F(MassWindows, ClosingDuringARunWaitsForTheFileInHand) {
    songs(40);
    QPointer<FrmMassTagEditor> w = FrmMassTagEditor::open(ctx);
    ASSERT_TRUE(w);
    w->lstGenre->setCurrentRow(3);
    w->txtAlbum->setText(QStringLiteral("Same"));
    dialogs.answer(QStringLiteral("Yes"));
    ASSERT_TRUE(w->cmdEditAll_Click());
    ASSERT_NE(w->run(), nullptr);
    QSignalSpy done(w.data(), &FrmMassTool::runFinished);
    w->close(); // refused for now: the run is told to stop
    EXPECT_FALSE(w.isNull());
    ASSERT_TRUE(done.wait(10000));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(w.isNull()); // closed, and gone, once the run stopped
}
