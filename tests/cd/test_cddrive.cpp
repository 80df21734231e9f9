#include "cd/CdDisc.h"
#include "cd/CdDrive.h"
#include "cd/CdImage.h"
#include "cd/CdPlayer.h"
#include "cd/CdProbe.h"
#include "cd/modCDAudio.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "support/TempHome.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace modCDAudio;

namespace {

// The CD routines over a drive with no engine: everything but the sound.
class CdDriveTest : public ::testing::Test {
protected:
    void SetUp() override {
        drive = std::make_unique<CdDrive>([] { return nullptr; });
        cd_SetSender([this](const QString& c, QString* r) { return drive->send(c, r); });
    }
    void TearDown() override {
        cd_SetSender({});
        drive.reset();
    }
    QString image(const QString& name, const std::vector<CdImage::Track>& tracks,
                  const CdImage::Options& o = {}) {
        return CdImage::write(home.path(), name, tracks, o);
    }
    QString threeTracks(bool cdText = true) {
        CdImage::Options o;
        if (cdText) o.discTitle = QStringLiteral("Tones");
        return image(cdText ? QStringLiteral("text") : QStringLiteral("plain"),
                     {{440, 3, QStringLiteral("Low")},
                      {880, 2, QStringLiteral("Middle")},
                      {1320, 4.5, QStringLiteral("High")}},
                     o);
    }

    TempHome home;
    std::unique_ptr<CdDrive> drive;
};

} // namespace

TEST_F(CdDriveTest, AnImageReadsAsADiscWithItsTracksLengthsAndText) {
    const QString cue = threeTracks();
    const CdDisc disc = CdMedia::read(cue);
    ASSERT_EQ(disc.tracks.size(), 3);
    EXPECT_EQ(disc.title, "Tones");
    EXPECT_EQ(disc.tracks[1].title, "Middle");
    EXPECT_EQ(disc.tracks[2].frames, 338) << "4.5 s in whole frames";
    EXPECT_TRUE(CdMedia::read(threeTracks(false)).tracks[0].title.isEmpty());

    ASSERT_TRUE(cd_Open(cue));
    EXPECT_TRUE(cd_MediaPresent());
    EXPECT_EQ(cd_TrackCount(), 3);
    EXPECT_EQ(cd_TrackLength(1), 3);
    EXPECT_EQ(cd_TrackLength(3), 4);
    EXPECT_EQ(cd_TrackLength(4), 0);
    EXPECT_EQ(cd_TotalLength(), "00:09");
    EXPECT_EQ(cd_Mode(), "stopped");
    EXPECT_EQ(cd_CurrentTrack(), "1");

    // Seeks stand where they were sent, in whole tracks or inside the track reached.
    EXPECT_TRUE(cd_SeekTrack(3));
    QString reply;
    EXPECT_EQ(drive->send(QStringLiteral("status cdr position"), &reply), 0);
    EXPECT_EQ(reply, "03:00:00:00");
    EXPECT_TRUE(cd_SeekPosition(QStringLiteral("00:02:00")));
    EXPECT_EQ(cd_CurrentTrack(), "3");
    EXPECT_EQ(cd_PositionSeconds(), 2);
    EXPECT_FALSE(cd_SeekPosition(QStringLiteral("00:05:00"))) << "past the track's end";
    EXPECT_TRUE(cd_SeekPosition(QStringLiteral("02:00:01:00")));
    EXPECT_EQ(cd_CurrentTrack(), "2");
    EXPECT_EQ(cd_PositionSeconds(), 1);

    // Play without an engine fails rather than pretending.
    EXPECT_FALSE(cd_Play());
    EXPECT_FALSE(cd_IsPlaying());
    EXPECT_TRUE(cd_Close());
    EXPECT_FALSE(cd_MediaPresent());
}

TEST_F(CdDriveTest, BadDiscsGiveNoneAndEmptyValues) {
    using CdImage::Track;
    CdImage::Options noBin;
    noBin.writeBin = false;
    CdImage::Options cut;
    cut.cutBytes = 3 * CdImage::kSector * 75; // the last three seconds are gone
    struct Case {
        QString name, cue;
        int tracks;
        QString total;
        int lastLength;
    };
    const std::vector<Case> cases{
        {"no such drive", home.file("nothing.cue"), 0, "None", 0},
        {"missing .bin", image("nobin", {{440, 2}}, noBin), 0, "None", 0},
        {"truncated .bin", image("cut", {{440, 2}, {880, 2}, {1320, 2}}), 2, "00:03", 1},
        {"data CD", image("data", {{-1, 3}}), 0, "None", 0},
        {"mixed mode", image("mixed", {{-1, 2}, {440, 2}, {880, 3}}), 2, "00:05", 3},
        {"74-minute track", image("long", {{0, 74 * 60 + 13}, {440, 1}}), 2, "74:14", 1},
    };
    // A short .bin keeps what it holds: the second track loses its last second, the third goes.
    CdImage::write(home.path(), QStringLiteral("cut"), {{440, 2}, {880, 2}, {1320, 2}}, cut);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name.toStdString());
        cd_Open(c.cue);
        EXPECT_EQ(cd_TrackCount(), c.tracks);
        EXPECT_EQ(cd_TotalLength(), c.total);
        EXPECT_EQ(cd_TrackLength(c.tracks), c.lastLength);
        EXPECT_FALSE(cd_SeekTrack(c.tracks + 1));
        EXPECT_FALSE(cd_Play());
    }
    cd_Open(cases[5].cue);
    EXPECT_EQ(cd_TrackLength(1), 74 * 60 + 13);

    std::vector<Track> many(99, Track{440, 0.2});
    ASSERT_TRUE(cd_Open(image(QStringLiteral("many"), many)));
    EXPECT_EQ(cd_TrackCount(), 99);
    EXPECT_TRUE(cd_SeekTrack(99));
    EXPECT_EQ(cd_CurrentTrack(), "99");
}

TEST_F(CdDriveTest, ScanListsTheFirstAudioDiscAndShowsNoneWithout) {
    const QString data = image(QStringLiteral("data"), {{-1, 3}});
    const QString tones = threeTracks();
    QStringList drives{home.file("gone.cue"), data, tones, threeTracks(false)};
    CdPlayer cd([&drives] { return drives; });
    QElapsedTimer clock;
    clock.start();
    cd.mnuNew_Click();
    EXPECT_LT(clock.elapsed(), 100) << "a scan of images never holds the window";
    ListModel& list = cd.lstvPlaylist();
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.rowTexts(0), (QStringList{"01", "Audio Track 1", "00:03"}));
    EXPECT_EQ(list.rowTexts(2), (QStringList{"03", "Audio Track 3", "00:04"}));
    EXPECT_EQ(cd.CDDrive, tones);
    EXPECT_EQ(cd.panelText(CdPlayer::LengthPanel), "Length:  00:09");
    EXPECT_EQ(cd.panelText(CdPlayer::TracksPanel), "Tracks:  3");
    EXPECT_TRUE(cd.commands().isEnabled(QStringLiteral("mnuPlay")));

    // Scanning again finds the same disc once; without one every command goes grey.
    cd.mnuNew_Click();
    EXPECT_EQ(list.count(), 3);
    drives = QStringList{data, home.file("gone.cue")};
    cd.mnuNew_Click();
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(cd.panelText(CdPlayer::TracksPanel), "Tracks:  None");
    EXPECT_EQ(cd.panelText(CdPlayer::LengthPanel), "Length:  None");
    for (const char* name : {"mnuPlay", "mnuNext", "mnuEject", "mnuRandom"})
        EXPECT_FALSE(cd.commands().isEnabled(QString::fromLatin1(name))) << name;

    // Pause while stopped does nothing; Next never wraps past the last row.
    cd.CDState = 1;
    cd.mnuPause_Click();
    EXPECT_EQ(cd.CDState, 1);
    EXPECT_FALSE(cd.CDPaused);
}

TEST_F(CdDriveTest, TimeModeAndTogglesAreKeptInTheirSection) {
    CdPlayer cd([] { return QStringList(); });
    Commands& c = cd.commands();
    EXPECT_TRUE(c.isChecked(QStringLiteral("mnuShowTimeElapsed")));
    EXPECT_TRUE(c.isChecked(QStringLiteral("mnuShowToolbar")));
    EXPECT_FALSE(c.isChecked(QStringLiteral("mnuShowPlaylistHeaders")));
    c.run(QStringLiteral("mnuShowTimeRemaining"));
    c.run(QStringLiteral("mnuShowPlaylistHeaders"));
    CdPlayer again([] { return QStringList(); });
    EXPECT_FALSE(again.commands().isChecked(QStringLiteral("mnuShowTimeElapsed")));
    EXPECT_TRUE(again.commands().isChecked(QStringLiteral("mnuShowTimeRemaining")));
    EXPECT_TRUE(again.commands().isChecked(QStringLiteral("mnuShowPlaylistHeaders")));
    again.CDState = 1;
    again.tmrWindowUpdate_Timer();
    EXPECT_EQ(again.panelText(CdPlayer::TimePanel), "Remaining:  None");
    EXPECT_EQ(again.panelText(CdPlayer::StatusPanel), "Status:  Stopped");
}

TEST_F(CdDriveTest, ADriveThatDoesNotAnswerHoldsNobodyAndIsTakenWhenItDoes) {
    // A .cue that is a pipe blocks whoever reads it until someone writes: a drive spinning up.
    const QString good = threeTracks();
    const QString slow = home.file("slow.cue");
    ASSERT_EQ(::mkfifo(QFile::encodeName(slow).constData(), 0600), 0);
    QSignalSpy read(&CdProbe::instance(), &CdProbe::discRead);
    // Returning at all proves it: the drive answers only once the test writes below.
    EXPECT_TRUE(cd_Open(slow));
    EXPECT_FALSE(cd_MediaPresent());
    EXPECT_EQ(cd_TotalLength(), "None");

    // It answers: the pipe gives way to the disc and the reader blocked on it goes on. The disc
    // is there from then on, without another open.
    const QString pipe = home.file("pipe");
    ASSERT_EQ(::link(QFile::encodeName(slow).constData(), QFile::encodeName(pipe).constData()), 0);
    ASSERT_TRUE(QFile::copy(good, home.file("slow.tmp")));
    ASSERT_TRUE(QFile::copy(home.file("text.bin"), home.file("slow.bin")));
    ASSERT_EQ(::rename(QFile::encodeName(home.file("slow.tmp")).constData(),
                       QFile::encodeName(slow).constData()),
              0);
    QFile cue(good);
    ASSERT_TRUE(cue.open(QIODevice::ReadOnly));
    std::thread writer([&pipe, text = cue.readAll()] {
        QFile f(pipe);
        if (f.open(QIODevice::WriteOnly)) f.write(text);
    });
    EXPECT_TRUE(read.wait(5000));
    writer.join();
    EXPECT_EQ(read.last().at(0).toString(), slow);
    EXPECT_EQ(cd_TrackCount(), 3);
}
