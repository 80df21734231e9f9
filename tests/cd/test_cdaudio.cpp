#include "cd/modCDAudio.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <gtest/gtest.h>

using namespace modCDAudio;

namespace {

// A drive that answers from a table and remembers every command it was sent.
class ScriptedDrive {
public:
    QStringList sent;
    QHash<QString, QString> replies; // command -> reply; absent: fails with 263
    QSet<QString> failing;

    ScriptedDrive() {
        cd_SetSender([this](const QString& command, QString* reply) {
            sent << command;
            if (failing.contains(command)) return 263;
            const auto it = replies.constFind(command);
            if (reply && it != replies.constEnd()) *reply = *it;
            return it != replies.constEnd() || !command.startsWith(QLatin1String("status")) ? 0
                                                                                            : 263;
        });
    }
    ~ScriptedDrive() { cd_SetSender({}); }

    // A drive holding a disc of `tracks`, not playing.
    void disc(const QString& tracks) {
        replies[QStringLiteral("status cdr media present")] = QStringLiteral("true");
        replies[QStringLiteral("status cdr number of tracks wait")] = tracks;
        replies[QStringLiteral("status cdr mode")] = QStringLiteral("stopped");
    }
    bool wasSent(const QString& prefix) const {
        return std::any_of(sent.begin(), sent.end(),
                           [&](const QString& c) { return c.startsWith(prefix); });
    }
};

} // namespace

TEST(CdAudioCommands, OpeningClosesTheDriveBeforeAndSetsTheTimeFormatEvenAfterAFailure) {
    ScriptedDrive d;
    ASSERT_TRUE(cd_Open(QStringLiteral("/dev/sr0")));
    ASSERT_TRUE(cd_Open(QStringLiteral("/tmp/a disc.cue")));
    EXPECT_EQ(d.sent,
              (QStringList{"close cdr", "open /dev/sr0 Type cdaudio alias cdr wait shareable",
                           "set cdr time format tmsf wait", "close cdr",
                           "open /tmp/a disc.cue Type cdaudio alias cdr wait shareable",
                           "set cdr time format tmsf wait"}));
    EXPECT_TRUE(CDDeviceOpen());

    d.sent.clear();
    d.failing << QStringLiteral("open /nowhere Type cdaudio alias cdr wait shareable");
    EXPECT_FALSE(cd_Open(QStringLiteral("/nowhere")));
    EXPECT_FALSE(CDDeviceOpen());
    EXPECT_EQ(d.sent.last(), "set cdr time format tmsf wait");
}

TEST(CdAudioCommands, AClosedDriveOrNoDiscGivesTheEmptyValuesWithoutAsking) {
    ScriptedDrive d;
    // Nothing open: the device is never asked.
    EXPECT_FALSE(cd_MediaPresent());
    EXPECT_EQ(cd_TrackCount(), 0);
    EXPECT_EQ(cd_TotalLength(), "None");
    EXPECT_EQ(cd_Mode(), "");
    EXPECT_EQ(cd_CurrentTrack(), "");
    EXPECT_EQ(cd_PositionSeconds(), 0);
    EXPECT_EQ(cd_TrackLength(1), 0);
    EXPECT_FALSE(cd_Eject());
    EXPECT_FALSE(cd_IsPlaying());
    EXPECT_TRUE(d.sent.isEmpty());

    // Open, but no disc: presence is asked, nothing else.
    ASSERT_TRUE(cd_Open(QStringLiteral("/dev/sr0")));
    d.replies[QStringLiteral("status cdr media present")] = QStringLiteral("false");
    d.sent.clear();
    EXPECT_EQ(cd_TrackCount(), 0);
    EXPECT_EQ(cd_TotalLength(), "None");
    EXPECT_FALSE(cd_SeekTrack(1));
    EXPECT_FALSE(d.wasSent("status cdr number of tracks"));
    EXPECT_FALSE(d.wasSent("seek"));
}

TEST(CdAudioCommands, SeeksOnlyToTracksOnTheDiscAndNeverWhilePlaying) {
    ScriptedDrive d;
    ASSERT_TRUE(cd_Open(QStringLiteral("/dev/sr0")));
    d.disc(QStringLiteral("12"));
    d.sent.clear();
    EXPECT_FALSE(cd_SeekTrack(0));
    EXPECT_FALSE(cd_SeekTrack(13));
    EXPECT_FALSE(d.wasSent("seek"));
    EXPECT_TRUE(cd_SeekTrack(3));
    EXPECT_TRUE(d.sent.contains("seek cdr to 3")) << "a one-digit track goes without padding";
    EXPECT_TRUE(cd_SeekTrack(12));
    EXPECT_TRUE(d.sent.contains("seek cdr to 12"));

    // Any text is passed on as it stands; the answer decides.
    d.sent.clear();
    EXPECT_TRUE(cd_SeekPosition(QStringLiteral("01:30:00")));
    EXPECT_EQ(d.sent.last(), "seek cdr to 01:30:00");
    d.failing << QStringLiteral("seek cdr to 99:00:00:00");
    EXPECT_FALSE(cd_SeekPosition(QStringLiteral("99:00:00:00")));

    d.replies[QStringLiteral("status cdr mode")] = QStringLiteral("playing");
    d.sent.clear();
    EXPECT_TRUE(cd_IsPlaying());
    EXPECT_FALSE(cd_SeekPosition(QStringLiteral("03:00:10:00")));
    EXPECT_FALSE(d.wasSent("seek"));
}

TEST(CdAudioCommands, RepliesAreCutIntoTracksAndSeconds) {
    ScriptedDrive d;
    ASSERT_TRUE(cd_Open(QStringLiteral("/dev/sr0")));
    d.disc(QStringLiteral("9"));
    d.replies[QStringLiteral("status cdr length track 9")] = QStringLiteral("74:13:20");
    d.replies[QStringLiteral("status cdr length track 1")] = QStringLiteral("03:41:74");
    d.replies[QStringLiteral("status cdr position")] = QStringLiteral("03:02:05:10");
    d.replies[QStringLiteral("status cdr length wait")] =
        QStringLiteral("79:59:74") + QChar() + QStringLiteral("junk");
    EXPECT_EQ(cd_TrackCount(), 9);
    EXPECT_EQ(cd_TrackLength(9), 74 * 60 + 13) << "a 74-minute track fits";
    EXPECT_EQ(cd_TrackLength(1), 221) << "frames are dropped, not rounded";
    EXPECT_EQ(cd_CurrentTrack(), "3");
    EXPECT_EQ(cd_PositionSeconds(), 125);
    EXPECT_EQ(cd_TotalLength(), "79:59");

    // Replies in another form give the failure values rather than garbage.
    d.replies[QStringLiteral("status cdr position")] = QStringLiteral("xx");
    d.replies[QStringLiteral("status cdr length track 2")] = QStringLiteral("3:5");
    EXPECT_EQ(cd_CurrentTrack(), "");
    EXPECT_EQ(cd_PositionSeconds(), 0);
    EXPECT_EQ(cd_TrackLength(2), 0);
    d.replies[QStringLiteral("status cdr media present")] = QStringLiteral("maybe");
    EXPECT_FALSE(cd_MediaPresent());
}
