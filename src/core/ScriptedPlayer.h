#pragma once
#include "core/wmpPlayer.h"

#include <QStringList>

// A media control that plays nothing: it keeps the state a real one would report and records
// what it was asked. The context holds one until the real engine is attached, and tests drive
// their track changes through it.
class ScriptedPlayer : public wmpPlayer {
    Q_OBJECT
public:
    using wmpPlayer::wmpPlayer;

    QString FileName() const override { return m_file; }
    void setFileName(const QString& name) override;
    void Play() override;
    void Pause() override;
    void Stop() override;
    double CurrentPosition() const override { return m_position; }
    void setCurrentPosition(double seconds) override;
    double Duration() const override { return m_duration; }
    int PlayState() const override { return m_state; }
    int Volume() const override { return m_volume; }
    void setVolume(int hundredthsDb) override;
    int Balance() const override { return m_balance; }
    void setBalance(int hundredthsDb) override;

    // --- for tests
    // The length every file loaded from now on reports.
    void setDuration(double seconds) { m_duration = seconds; }
    // Moves the position on while playing, as time passing would.
    void advance(double seconds);
    // The medium ends: the control stops and raises its event.
    void finish();
    // Files started with Play, in order ("load" then "Play" of the same name counts once).
    const QStringList& played() const { return m_played; }
    // Every call as text: "load <name>", "Play", "Pause", "Stop", "seek <s>", "volume <v>".
    const QStringList& calls() const { return m_calls; }
    void clearLog() {
        m_played.clear();
        m_calls.clear();
    }

private:
    QString m_file;
    bool m_loaded = false;
    bool m_startedSinceLoad = false;
    int m_state = Stopped;
    double m_position = 0;
    double m_duration = 180;
    int m_volume = 0;
    int m_balance = 0;
    QStringList m_played, m_calls;
};
