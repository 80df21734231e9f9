#pragma once
#include "playback/MpvPlayer.h"
#include "support/TempHome.h"

#include <QByteArray>
#include <memory>

// The real engine writing 16-bit stereo PCM into a file of the test's home, everything played in
// one raw stream; the outputs of the environment are restored when it goes.
class PcmEngine {
public:
    static constexpr qsizetype kBytesPerSecond = 44100 * 4;

    explicit PcmEngine(const TempHome& home)
        : m_file(home.file(QStringLiteral("out.raw"))), m_oldAo(qgetenv("VELDOR_AO")),
          m_oldFile(qgetenv("VELDOR_AO_FILE")) {
        qputenv("VELDOR_AO", "pcm");
        qputenv("VELDOR_AO_FILE", m_file.toUtf8());
        m_player = std::make_unique<MpvPlayer>();
    }
    ~PcmEngine() {
        m_player.reset();
        qputenv("VELDOR_AO", m_oldAo);
        qputenv("VELDOR_AO_FILE", m_oldFile);
    }
    PcmEngine(const PcmEngine&) = delete;
    PcmEngine& operator=(const PcmEngine&) = delete;

    MpvPlayer& player() { return *m_player; }
    QByteArray output() const { return TempHome::readFile(m_file); }

private:
    QString m_file;
    QByteArray m_oldAo, m_oldFile;
    std::unique_ptr<MpvPlayer> m_player;
};
