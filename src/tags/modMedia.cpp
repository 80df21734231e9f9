#include "tags/modMedia.h"

#include "tags/TagFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

namespace {

// VB's Str$: a blank in front of a number that is not negative.
QString strNumber(qint64 v) {
    return v >= 0 ? QLatin1Char(' ') + QString::number(v) : QString::number(v);
}

// Text to number as the conversions here do: blanks around are accepted, anything else fails.
// The texts here are nearly always whole numbers, which are read without the general parser.
std::optional<double> toNumber(const QString& text) {
    qsizetype b = 0, e = text.size();
    while (b < e && text.at(b) == QLatin1Char(' '))
        ++b;
    while (e > b && text.at(e - 1) == QLatin1Char(' '))
        --e;
    const bool negative = b < e && text.at(b) == QLatin1Char('-');
    qsizetype i = negative ? b + 1 : b;
    if (i < e && e - i <= 15) {
        qint64 v = 0;
        for (; i < e; ++i) {
            const char16_t c = text.at(i).unicode();
            if (c < u'0' || c > u'9') break;
            v = v * 10 + (c - u'0');
        }
        if (i == e) return double(negative ? -v : v);
    }
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (!ok) return std::nullopt;
    return v;
}

// Round to nearest, ties to even, into 32 bits; nothing when out of range.
std::optional<qint32> toLong(double v) {
    if (!std::isfinite(v)) return std::nullopt;
    const double r = std::nearbyint(v); // default rounding mode: ties to even
    if (r < -2147483648.0 || r > 2147483647.0) return std::nullopt;
    return qint32(r);
}

// "0#": at least two digits, a minus sign in front.
QString zeroHash(qint64 v) {
    QString digits = QString::number(v < 0 ? -v : v);
    if (digits.size() < 2) digits.prepend(QLatin1Char('0'));
    return v < 0 ? QLatin1Char('-') + digits : digits;
}

const char* const kBitrateRows = "032,032,032,032,008,008,"
                                 "064,048,040,048,016,016,"
                                 "096,056,048,056,024,024,"
                                 "128,064,056,064,032,032,"
                                 "160,080,064,080,040,040,"
                                 "192,096,080,096,048,048,"
                                 "224,112,096,112,056,056,"
                                 "256,128,112,128,064,064,"
                                 "288,160,128,144,080,080,"
                                 "320,192,160,160,096,096,"
                                 "352,224,192,176,112,112,"
                                 "384,256,224,192,128,128,"
                                 "416,320,256,224,144,144,"
                                 "448,384,320,256,160,160,";

inline std::array<uint8_t, 2> shiftNibble(uint8_t c1, uint8_t c2, uint8_t c3) {
    return {uint8_t((c1 & 15) * 16 + (c2 & 240) / 16), uint8_t((c2 & 15) * 16 + (c3 & 240) / 16)};
}

// The test of one place `i` of the walk.
inline std::optional<std::array<uint8_t, 2>> syncAt(const uint8_t* buf, int i) {
    const uint8_t a = buf[i], b = buf[i + 1];
    if (a == 255 && (b & 0xF0) == 0xF0) return shiftNibble(buf[i + 1], buf[i + 2], buf[i + 3]);
    const auto shifted = shiftNibble(a, b, buf[i + 2]);
    if (shifted[0] == 255 && (shifted[1] & 0xF0) == 0xF0)
        return std::array<uint8_t, 2>{buf[i + 2], buf[i + 3]};
    return std::nullopt;
}

constexpr int kLastPlace = int(TagFile::HeadSize) - 2; // 0-based; the walk's 4095th place

} // namespace

std::optional<std::array<uint8_t, 2>> media_FindHeaderWalk(const uint8_t* head) {
    for (int i = 0; i <= kLastPlace; ++i)
        if (const auto pair = syncAt(head, i)) return pair;
    return std::nullopt;
}

std::optional<std::array<uint8_t, 2>> media_FindHeader(const uint8_t* head) {
    // Both kinds of sync need a 255 at `i` or at `i + 1`: only the places around each one can
    // match, and they are tried in the walk's order.
    int next = 0; // the first place not tried yet
    while (next <= kLastPlace) {
        const auto* ff = static_cast<const uint8_t*>(
            std::memchr(head + next, 0xFF, size_t(kLastPlace + 1 - next + 1)));
        if (!ff) return std::nullopt;
        const int j = int(ff - head);
        for (int i = std::max(next, j - 1); i <= std::min(j, kLastPlace); ++i)
            if (const auto pair = syncAt(head, i)) return pair;
        next = j + 1;
    }
    return std::nullopt;
}

MP3InfoState& media_MP3State() {
    static MP3InfoState state;
    return state;
}

void media_InitBitrateTable() {
    MP3InfoState& s = media_MP3State();
    const char* p = kBitrateRows;
    auto take = [&p] {
        const int v = (p[0] - '0') * 100 + (p[1] - '0') * 10 + (p[2] - '0');
        p += 4;
        return qint16(v);
    };
    for (int row = 1; row <= 14; ++row) {
        for (int col = 7; col >= 5; --col)
            s.MP3BitrateTable[col][row] = take();
        for (int col = 3; col >= 1; --col)
            s.MP3BitrateTable[col][row] = take();
    }
}

std::array<uint8_t, 2> media_ShiftNibble(uint8_t c1, uint8_t c2, uint8_t c3) {
    return shiftNibble(c1, c2, c3);
}

void media_ReadMP3Info(const QString& filename) {
    TagFile file;
    const bool opened = file.open(filename);
    media_ReadMP3Info(file, opened);
}

void media_ReadMP3Info(TagFile& file, bool opened) {
    MP3InfoState& s = media_MP3State();
    // The table's values never change: filled on the first call only.
    if (s.MP3BitrateTable[7][1] == 0) media_InitBitrateTable();

    // One read of exactly 4096 bytes: a shorter file gives no buffer at all. Three zero bytes
    // behind it stand for what lies past its end.
    uint8_t buf[TagFile::HeadSize + 3] = {};
    bool haveBuffer = false;
    if (opened) {
        haveBuffer = file.readAt(0, buf, TagFile::HeadSize) == TagFile::HeadSize;
        if (file.size() <= 2147483647) s.MP3FileLength = qint32(file.size());
    }

    bool found = false;
    uint8_t h1 = 0, h2 = 0;
    if (haveBuffer) {
        if (const auto pair = media_FindHeader(buf)) {
            h1 = (*pair)[0];
            h2 = (*pair)[1];
            found = true;
        }
    }

    // Without a header every decoding statement fails and these stay 0.
    int versionBit = 0, layerBits = 0, bitrateIndex = 0, padding = 0;
    if (found) {
        versionBit = (h1 & 128) / 128;
        layerBits = (h1 & 96) / 32;
        bitrateIndex = h1 & 15;
        s.MP3SampleRateBits = QString::number(h2 & 192);
        padding = (h2 & 32) / 2;
    }

    const int column = layerBits | (4 * versionBit);
    if (column >= 1 && column <= 7 && bitrateIndex >= 1 && bitrateIndex <= 15)
        s.MP3BitrateValue = qint32(s.MP3BitrateTable[column][bitrateIndex]) * 1000;

    s.MP3Version = versionBit == 0 ? QStringLiteral("MPEG-2") : QStringLiteral("MPEG-1");
    if (layerBits == 1)
        s.MP3Layer = QStringLiteral("Layer III");
    else if (layerBits == 2)
        s.MP3Layer = QStringLiteral("Layer II");
    else if (layerBits == 3)
        s.MP3Layer = QStringLiteral("Layer I");
    s.MP3Bitrate = strNumber(s.MP3BitrateValue);

    // The two bits stay in place, so only index 0 ever matches; the rest keep the old rate.
    if (const auto bits = toNumber(s.MP3SampleRateBits)) {
        switch (qint64(*bits) | (4 * versionBit)) {
        case 0:
            s.MP3SampleRate = QStringLiteral("22050");
            break;
        case 1:
            s.MP3SampleRate = QStringLiteral("24000");
            break;
        case 2:
            s.MP3SampleRate = QStringLiteral("16000");
            break;
        case 4:
            s.MP3SampleRate = QStringLiteral("44100");
            break;
        case 5:
            s.MP3SampleRate = QStringLiteral("48000");
            break;
        case 6:
            s.MP3SampleRate = QStringLiteral("32000");
            break;
        default:
            break;
        }
    }

    const auto rate = toNumber(s.MP3SampleRate);
    if (rate && *rate != 0) {
        const double frameSize = 144.0 * s.MP3BitrateValue / *rate + padding;
        if (frameSize != 0) {
            s.MP3FrameCountValue = double(s.MP3FileLength) / frameSize;
            s.MP3FrameCountSet = true;
        }
    }

    const auto bitrate = toNumber(s.MP3Bitrate);
    if (bitrate && *bitrate != 0) {
        if (const auto length = toLong(double(s.MP3FileLength) / *bitrate * 8))
            s.MP3Length = QString::number(*length);
    }
}

QString media_FormatSeconds(qint32 seconds) {
    if (seconds == 0) return QStringLiteral("00:00");
    const float minutes = float(std::floor(double(seconds) / 60.0));
    const qint64 remainder = qint64(seconds) - qint64(double(minutes) * 60.0);
    return zeroHash(qint64(minutes)) + QLatin1Char(':') + zeroHash(remainder);
}

QString media_NumberMask(qint16 n) {
    return QString(QString::number(n).size() - 1, QLatin1Char('0')) + QLatin1Char('#');
}

QString media_LengthText() {
    const auto seconds = toNumber(media_MP3State().MP3Length);
    if (!seconds) return QString();
    const auto whole = toLong(*seconds);
    return whole ? media_FormatSeconds(*whole) : QString();
}
