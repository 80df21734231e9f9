#pragma once
#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <cstdlib>
#include <cstring>
#include <vector>

// Media made on the spot by sox, lame and ffmpeg; nothing binary is kept in the sources.
namespace MediaFiles {

inline bool run(const QString& program, const QStringList& args) {
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(program, args);
    return p.waitForFinished(120000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

// A stereo 16-bit 44.1 kHz sine of `seconds`, both channels at `amplitude` (0..1).
inline bool makeWav(const QString& path, double seconds, int frequency = 440,
                    double amplitude = 0.5) {
    return run(QStringLiteral("sox"),
               {QStringLiteral("-n"), QStringLiteral("-r"), QStringLiteral("44100"),
                QStringLiteral("-c"), QStringLiteral("2"), QStringLiteral("-b"),
                QStringLiteral("16"), path, QStringLiteral("synth"), QString::number(seconds),
                QStringLiteral("sine"), QString::number(frequency), QStringLiteral("vol"),
                QString::number(amplitude)});
}

// The same as an MP3 (through lame).
inline bool makeMp3(const QString& path, double seconds, int frequency = 440) {
    const QString wav = path + QStringLiteral(".src.wav");
    const bool ok = makeWav(wav, seconds, frequency) &&
                    run(QStringLiteral("lame"), {QStringLiteral("--quiet"), QStringLiteral("-b"),
                                                 QStringLiteral("128"), wav, path});
    QFile::remove(wav);
    return ok;
}

// A small test picture with a tone (or without sound), `seconds` long, in a container by suffix.
inline bool makeVideo(const QString& path, double seconds, bool withAudio = true) {
    QStringList args{QStringLiteral("-y"),
                     QStringLiteral("-loglevel"),
                     QStringLiteral("error"),
                     QStringLiteral("-f"),
                     QStringLiteral("lavfi"),
                     QStringLiteral("-i"),
                     QStringLiteral("testsrc=size=320x240:rate=25:duration=%1").arg(seconds)};
    if (withAudio)
        args << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
             << QStringLiteral("sine=frequency=440:duration=%1").arg(seconds);
    args << path;
    return run(QStringLiteral("ffmpeg"), args);
}

// Peak absolute sample of each channel of raw s16 stereo, from byte `from`.
inline std::pair<int, int> peaks(const QByteArray& raw, qsizetype from = 0) {
    int left = 0, right = 0;
    for (qsizetype i = from; i + 3 < raw.size(); i += 4) {
        qint16 l, r;
        std::memcpy(&l, raw.constData() + i, 2);
        std::memcpy(&r, raw.constData() + i + 2, 2);
        left = std::max(left, std::abs(int(l)));
        right = std::max(right, std::abs(int(r)));
    }
    return {left, right};
}

} // namespace MediaFiles
