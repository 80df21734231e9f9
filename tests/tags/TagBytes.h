#pragma once
#include <QByteArray>
#include <QString>
#include <cstdint>

// Byte builders for tag fixtures: what a file holds, written out by hand so that a test states
// the exact bytes it expects.
namespace TagBytes {

inline QByteArray be32(uint32_t v) {
    QByteArray b(4, '\0');
    b[0] = char(v >> 24);
    b[1] = char(v >> 16);
    b[2] = char(v >> 8);
    b[3] = char(v);
    return b;
}
inline uint32_t readBE32(const QByteArray& b, int at) {
    return (uint32_t(uint8_t(b[at])) << 24) | (uint32_t(uint8_t(b[at + 1])) << 16) |
           (uint32_t(uint8_t(b[at + 2])) << 8) | uint32_t(uint8_t(b[at + 3]));
}
// A version 3/4 frame: identifier, plain size, two flag bytes, data.
inline QByteArray frame(const char* id, const QByteArray& data) {
    return QByteArray(id, 4) + be32(uint32_t(data.size())) + QByteArray(2, '\0') + data;
}
// A version 2 frame: three-letter identifier, three size bytes.
inline QByteArray frameV2(const char* id, const QByteArray& data) {
    const auto n = uint32_t(data.size());
    QByteArray b(id, 3);
    b += char(n >> 16);
    b += char(n >> 8);
    b += char(n);
    return b + data;
}
// A tag header with the size bytes given as they stand on disk.
inline QByteArray header(int version, uint32_t sizeField) {
    return QByteArray("ID3", 3) + char(version) + QByteArray(2, '\0') + be32(sizeField);
}
// Synchsafe size bytes as the published format writes them.
inline uint32_t synchsafe(uint32_t v) {
    return (v & 0x7F) | ((v & 0x3F80) << 1) | ((v & 0x1FC000) << 2) | ((v & 0xFE00000) << 3);
}
// MPEG-1 Layer III frames at 128 kbps, 44.1 kHz, no padding: 417 bytes each, header FF FB 90 00.
inline QByteArray audio(int frames) {
    QByteArray one(417, '\x55');
    one[0] = '\xFF';
    one[1] = '\xFB';
    one[2] = '\x90';
    one[3] = '\x00';
    return one.repeated(frames);
}
// A 128-byte ID3v1 tag.
inline QByteArray id3v1(const QByteArray& title, const QByteArray& artist, uint8_t genre) {
    QByteArray t("TAG");
    t += title.leftJustified(30, ' ', true);
    t += artist.leftJustified(30, ' ', true);
    t += QByteArray(30, ' ') + QByteArray("1999") + QByteArray(30, ' ');
    t += char(genre);
    return t;
}

} // namespace TagBytes
