#pragma once
#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QtEndian>
#include <cmath>
#include <vector>

// Disc images written by the tests: a .bin of raw CD sectors and its .cue, tracks of distinct
// tones, optionally with CD-TEXT, data tracks, a short .bin or a long silent (sparse) track.
namespace CdImage {

constexpr int kSector = 2352;
constexpr int kFramesPerSecond = 75;
constexpr qsizetype kBytesPerSecond = 44100 * 4;

struct Track {
    Track(int f = 440, double s = 1, QString t = {})
        : frequency(f), seconds(s), title(std::move(t)) {}
    int frequency; // 0: silence, -1: a data track
    double seconds;
    QString title;
};

inline QString msf(qint64 frames) {
    return QStringLiteral("%1:%2:%3")
        .arg(frames / (60 * kFramesPerSecond), 2, 10, QLatin1Char('0'))
        .arg((frames / kFramesPerSecond) % 60, 2, 10, QLatin1Char('0'))
        .arg(frames % kFramesPerSecond, 2, 10, QLatin1Char('0'));
}

inline QByteArray tone(int frequency, qint64 sectors) {
    QByteArray out(sectors * kSector, '\0');
    if (frequency <= 0) return out;
    auto* s = reinterpret_cast<qint16*>(out.data());
    for (qint64 i = 0; i < out.size() / 4; ++i) {
        const auto v = qint16(12000 * std::sin(2 * M_PI * frequency * double(i) / 44100));
        s[2 * i] = s[2 * i + 1] = qToLittleEndian(v);
    }
    return out;
}

struct Options {
    QString discTitle;   // CD-TEXT of the disc (with the tracks' titles)
    qint64 cutBytes = 0; // the .bin loses this many bytes at its end
    bool writeBin = true;
};

// Writes `dir`/`name`.cue and .bin; returns the .cue's path.
inline QString write(const QString& dir, const QString& name, const std::vector<Track>& tracks,
                     const Options& o = {}) {
    const QString bin = dir + '/' + name + QStringLiteral(".bin");
    const QString cue = dir + '/' + name + QStringLiteral(".cue");
    QByteArray text;
    if (!o.discTitle.isEmpty())
        text += "TITLE \"" + o.discTitle.toUtf8() + "\"\nPERFORMER \"The Testers\"\n";
    text += "FILE \"" + name.toUtf8() + ".bin\" BINARY\n";
    QFile out(bin);
    if (o.writeBin && !out.open(QIODevice::WriteOnly | QIODevice::Truncate)) return {};
    qint64 at = 0; // sectors
    int n = 1;
    for (const Track& t : tracks) {
        const qint64 sectors = qint64(std::llround(t.seconds * kFramesPerSecond));
        text += QStringLiteral("  TRACK %1 %2\n")
                    .arg(n++, 2, 10, QLatin1Char('0'))
                    .arg(t.frequency < 0 ? QStringLiteral("MODE1/2352") : QStringLiteral("AUDIO"))
                    .toUtf8();
        if (!o.discTitle.isEmpty() && !t.title.isEmpty())
            text += "    TITLE \"" + t.title.toUtf8() + "\"\n";
        text += "    INDEX 01 " + msf(at).toUtf8() + "\n";
        if (o.writeBin) {
            // Long silence is left as a hole in the file: a 74-minute track costs no disk.
            if (t.frequency == 0 && sectors > 1000)
                out.resize(out.size() + sectors * kSector), out.seek(out.size());
            else
                out.write(tone(qMax(0, t.frequency), sectors));
        }
        at += sectors;
    }
    if (o.writeBin) {
        out.close();
        if (o.cutBytes > 0) QFile(bin).resize(qMax<qint64>(0, at * kSector - o.cutBytes));
    }
    QFile c(cue);
    if (!c.open(QIODevice::WriteOnly | QIODevice::Truncate)) return {};
    c.write(text);
    return cue;
}

// The loudest of a few candidate tones in `seconds` of raw s16 stereo from `from` (bytes): the
// count of rising zero crossings per second of the left channel, rounded to 10 Hz.
inline int frequencyAt(const QByteArray& raw, double fromSeconds, double seconds = 0.2) {
    const qsizetype first = qsizetype(fromSeconds * 44100) * 4;
    const qsizetype count = qsizetype(seconds * 44100);
    if (first + count * 4 > raw.size()) return -1;
    const auto* s = reinterpret_cast<const qint16*>(raw.constData() + first);
    int crossings = 0;
    for (qsizetype i = 1; i < count; ++i)
        if (qFromLittleEndian(s[2 * (i - 1)]) < 0 && qFromLittleEndian(s[2 * i]) >= 0) ++crossings;
    return int(std::lround(crossings / seconds / 10.0)) * 10;
}

} // namespace CdImage
