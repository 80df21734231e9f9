#pragma once
#include <QString>
#include <array>
#include <cstdint>
#include <optional>

class TagFile;

// What the last reads of MPEG stream headers left behind. Nothing is cleared between files: a
// value that a file cannot give keeps what the file before it gave.
struct MP3InfoState {
    QString MP3Version;
    QString MP3Layer;
    qint32 MP3BitrateValue = 0;
    QString MP3Bitrate;
    QString MP3SampleRate;
    QString MP3SampleRateBits;
    // File length divided by frame size, fractional digits kept; text made only when asked for.
    double MP3FrameCountValue = 0;
    bool MP3FrameCountSet = false;
    QString MP3FrameCount() const {
        return MP3FrameCountSet ? QString::number(MP3FrameCountValue, 'g', 15) : QString();
    }
    QString MP3Length;
    qint32 MP3FileLength = 0;
    // Kilobits per second, [column 1..7][row 1..15]; column 4 and row 15 stay 0.
    qint16 MP3BitrateTable[8][16] = {};
};

MP3InfoState& media_MP3State();

// Version, layer, bitrate, sample rate and an estimated length from the one header found in the
// first 4096 bytes. Silent: whatever cannot be worked out keeps its previous value.
void media_ReadMP3Info(const QString& filename);
// The same over a file already open (the file's own open is the one read).
void media_ReadMP3Info(TagFile& file, bool opened);
void media_InitBitrateTable();
std::array<uint8_t, 2> media_ShiftNibble(uint8_t c1, uint8_t c2, uint8_t c3);

// The header pair the search finds in the first 4096 bytes of a file (`head` holds them and
// three zero bytes behind). The walk as the rule tells it, byte by byte: at each place a sync on
// the byte boundary (255, then four set bits), else one on the half-byte boundary (twelve set
// bits from the low half of the byte on).
std::optional<std::array<uint8_t, 2>> media_FindHeaderWalk(const uint8_t* head);
// The same answer, looking only where a 255 byte makes a sync possible.
std::optional<std::array<uint8_t, 2>> media_FindHeader(const uint8_t* head);

// "mm:ss", minutes unbounded: 3725 gives "62:05".
QString media_FormatSeconds(qint32 seconds);
// "00#" for 100, "#" for 7: one "0" for every digit but the last.
QString media_NumberMask(qint16 n);
// MP3Length as the rows show it; a null text when MP3Length is not a number (nothing was ever
// found), and the row's cell then keeps what it had.
QString media_LengthText();
