#include "support/TempHome.h"
#include "tags/TagBytes.h"
#include "tags/modMedia.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {
class MP3Info : public ::testing::Test {
protected:
    void SetUp() override { media_MP3State() = MP3InfoState{}; }
    const MP3InfoState& read(const QByteArray& bytes) {
        const QString path = home.file(QStringLiteral("f%1.mp3").arg(++n));
        TempHome::writeFile(path, bytes);
        media_ReadMP3Info(path);
        return media_MP3State();
    }
    // `size` bytes whose first header is h1..h4 at `at`.
    static QByteArray stream(int size, QByteArray header, int at = 0) {
        QByteArray b(size, '\0');
        b.replace(at, header.size(), header);
        return b;
    }
    TempHome home;
    int n = 0;
};
} // namespace

TEST_F(MP3Info, LengthFromFileSizeAndTheOneBitrate) {
    const MP3InfoState& s = read(stream(4800000, QByteArray("\xFF\xFB\x90\x00", 4)));
    EXPECT_EQ(s.MP3Version, QStringLiteral("MPEG-1"));
    EXPECT_EQ(s.MP3Layer, QStringLiteral("Layer III"));
    EXPECT_EQ(s.MP3Bitrate, QStringLiteral(" 128000"));
    EXPECT_EQ(s.MP3SampleRate, QStringLiteral("44100"));
    EXPECT_EQ(s.MP3SampleRateBits, QStringLiteral("0"));
    EXPECT_EQ(s.MP3Length, QStringLiteral("300"));
    EXPECT_EQ(media_LengthText(), QStringLiteral("05:00"));
    EXPECT_EQ(s.MP3FrameCount().left(9), QStringLiteral("11484.375")); // 4.8e6 / 417.959...
    EXPECT_EQ(s.MP3BitrateTable[4][5], 0);                             // reserved layer column
    EXPECT_EQ(s.MP3BitrateTable[7][14], 448);
    EXPECT_EQ(s.MP3BitrateTable[1][1], 8);
}

TEST_F(MP3Info, SyncOnAHalfByteAndHeadersInsideATag) {
    // xF FF yz: yz is the first header byte as it stands (MPEG-1 Layer II, 192 kbps here).
    const MP3InfoState& s = read(stream(8000, QByteArray("\x0F\xFF\xDA\x40", 4), 100));
    EXPECT_EQ(s.MP3Layer, QStringLiteral("Layer II"));
    EXPECT_EQ(s.MP3Bitrate, QStringLiteral(" 192000"));
    EXPECT_EQ(s.MP3Length, QStringLiteral("0")); // 8000 / 192000 * 8 rounds down

    // A sync past the first 4096 bytes is never seen; what the tag holds is taken instead.
    QByteArray tagged = stream(20000, QByteArray("\xFF\xFB\x90\x00", 4), 5000);
    tagged.replace(0, 3, "ID3");
    tagged.replace(300, 3, QByteArray("\xFF\xF3\x40", 3)); // MPEG-2 Layer III, index 4: 32k
    read(tagged);
    EXPECT_EQ(media_MP3State().MP3Version, QStringLiteral("MPEG-2"));
    EXPECT_EQ(media_MP3State().MP3Bitrate, QStringLiteral(" 32000"));
    EXPECT_EQ(media_MP3State().MP3Length, QStringLiteral("5"));
}

TEST_F(MP3Info, WhatAFileCannotGiveKeepsThePreviousValue) {
    // First of all with nothing found: no length, nothing for a row to show.
    read(QByteArray(100, 'a'));
    EXPECT_EQ(media_MP3State().MP3Length, QString());
    EXPECT_TRUE(media_LengthText().isNull());
    EXPECT_EQ(media_MP3State().MP3FileLength, 100);

    // 48 kHz MPEG-1 read first: the sample rate stays empty, the length is still worked out.
    const MP3InfoState& s = read(stream(480000, QByteArray("\xFF\xFB\x94\x00", 4)));
    EXPECT_EQ(s.MP3SampleRateBits, QStringLiteral("64"));
    EXPECT_EQ(s.MP3SampleRate, QString());
    EXPECT_EQ(s.MP3Length, QStringLiteral("30"));
    read(stream(480000, QByteArray("\xFF\xFB\x90\x00", 4)));
    read(stream(480000, QByteArray("\xFF\xFB\x94\x00", 4)));
    EXPECT_EQ(s.MP3SampleRate, QStringLiteral("44100"));

    // A file shorter than 4096 bytes has no header: version MPEG-2, old bitrate, new size.
    read(QByteArray(4000, '\xFF'));
    EXPECT_EQ(s.MP3Version, QStringLiteral("MPEG-2"));
    EXPECT_EQ(s.MP3Layer, QStringLiteral("Layer III"));
    EXPECT_EQ(s.MP3Bitrate, QStringLiteral(" 128000"));
    EXPECT_EQ(s.MP3Length, QStringLiteral("0"));
    EXPECT_EQ(s.MP3FileLength, 4000);

    // Free format (index 0) keeps the old bitrate; index 15 gives 0 and keeps the old length.
    read(stream(960000, QByteArray("\xFF\xFB\x00\x00", 4)));
    EXPECT_EQ(s.MP3Bitrate, QStringLiteral(" 128000"));
    EXPECT_EQ(s.MP3Length, QStringLiteral("60"));
    read(stream(10000, QByteArray("\xFF\xFB\xF0\x00", 4)));
    EXPECT_EQ(s.MP3Bitrate, QStringLiteral(" 0"));
    EXPECT_EQ(s.MP3Length, QStringLiteral("60"));

    // A missing file leaves the size as it was.
    media_ReadMP3Info(home.file(QStringLiteral("none.mp3")));
    EXPECT_EQ(s.MP3FileLength, 10000);
}

TEST(MediaText, FormatSecondsAndNumberMask) {
    EXPECT_EQ(media_FormatSeconds(0), QStringLiteral("00:00"));
    EXPECT_EQ(media_FormatSeconds(59), QStringLiteral("00:59"));
    EXPECT_EQ(media_FormatSeconds(60), QStringLiteral("01:00"));
    EXPECT_EQ(media_FormatSeconds(3725), QStringLiteral("62:05"));
    EXPECT_EQ(media_FormatSeconds(6000), QStringLiteral("100:00"));
    EXPECT_EQ(media_FormatSeconds(-1), QStringLiteral("-01:59"));
    EXPECT_EQ(media_NumberMask(7), QStringLiteral("#"));
    EXPECT_EQ(media_NumberMask(9), QStringLiteral("#"));
    EXPECT_EQ(media_NumberMask(10), QStringLiteral("0#"));
    EXPECT_EQ(media_NumberMask(100), QStringLiteral("00#"));
    const auto pair = media_ShiftNibble(0x0F, 0xFF, 0xDA);
    EXPECT_EQ(pair[0], 0xFF);
    EXPECT_EQ(pair[1], 0xFD);
}

TEST_F(MP3Info, OnlyTheTwelveBitRuleFindsAHeader) {
    // 0F F8 is no sync on the half byte: F8's low half is not set. The real header follows.
    QByteArray b = stream(8000, QByteArray("\x0F\xF8\x12\x34", 4), 100);
    b.replace(104, 4, QByteArray("\xFF\xFB\x90\x00", 4));
    const MP3InfoState& s = read(b);
    EXPECT_EQ(s.MP3Version, QStringLiteral("MPEG-1"));
    EXPECT_EQ(s.MP3SampleRate, QStringLiteral("44100"));
    EXPECT_EQ(s.MP3Bitrate, QStringLiteral(" 128000"));

    // An 8 kHz stream syncs with FF E3, which the rule does not take; 0F F3 FE is no half-byte
    // sync either, so nothing is found and nothing is made up.
    media_MP3State() = MP3InfoState{};
    QByteArray low = stream(8000, QByteArray("\xFF\xE3\x18\xC4", 4));
    low.replace(200, 4, QByteArray("\x0F\xF3\xFE\x00", 4));
    read(low);
    EXPECT_EQ(media_MP3State().MP3Layer, QString());
    EXPECT_EQ(media_MP3State().MP3Bitrate, QStringLiteral(" 0"));
}

TEST(MP3HeaderSearch, TheQuickSearchAnswersAsTheWalkOnEveryBuffer) {
    // Buffers dense in the bytes a sync is made of, so that near misses are everywhere.
    const uint8_t alphabet[] = {0x00, 0x0F, 0x1F, 0xF0, 0xF3, 0xF8, 0xFB, 0xFE, 0xFF, 0xE3, 0x90};
    uint32_t seed = 12345;
    auto next = [&seed] {
        seed = seed * 1664525u + 1013904223u;
        return seed >> 8;
    };
    uint8_t buf[4096 + 3];
    for (int round = 0; round < 20000; ++round) {
        std::memset(buf, 0, sizeof buf);
        const int density = int(next() % 64) + 1;
        for (int i = 0; i < 4096; ++i)
            if (next() % 64 < uint32_t(density)) buf[i] = alphabet[next() % sizeof alphabet];
        const auto walk = media_FindHeaderWalk(buf);
        ASSERT_EQ(media_FindHeader(buf), walk) << "round " << round;
    }
    // The last places of the buffer, where the three bytes behind it are zeros.
    std::memset(buf, 0, sizeof buf);
    buf[4094] = 0x0F;
    buf[4095] = 0xFF;
    EXPECT_EQ(media_FindHeader(buf), media_FindHeaderWalk(buf));
    ASSERT_TRUE(media_FindHeaderWalk(buf).has_value());
    buf[4094] = 0xFF;
    buf[4095] = 0xF0;
    EXPECT_EQ(media_FindHeader(buf), media_FindHeaderWalk(buf));
}
