#pragma once
#include "core/wmpPlayer.h"

#include <QString>
#include <atomic>

struct mpv_handle;
struct mpv_event;

// Options every engine of ours starts with: no user configuration, no terminal, none of mpv's own
// scripts, window or keys. Set before mpv_initialize.
void mpv_SetPrivateOptions(mpv_handle* mpv);

// The media control on libmpv. Outputs come from the environment: VELDOR_AO (with VELDOR_AO_FILE
// for pcm, appended across songs), VELDOR_VO. A window id embeds the picture; without one video
// goes nowhere unless VELDOR_VO says otherwise.
//
// Events reach the Qt thread through mpv's wakeup callback as a queued call, so nothing polls and
// an idle player keeps no core awake.
class MpvPlayer : public wmpPlayer {
    Q_OBJECT
public:
    explicit MpvPlayer(quintptr windowId = 0, QObject* parent = nullptr);
    ~MpvPlayer() override;

    // False when libmpv could not be started; every member is then a harmless no-op.
    bool isValid() const { return m_mpv != nullptr; }

    QString FileName() const override { return m_file; }
    void setFileName(const QString& name) override;
    void Play() override;
    void Pause() override;
    void Stop() override;
    double CurrentPosition() const override;
    void setCurrentPosition(double seconds) override;
    double Duration() const override;
    int PlayState() const override { return m_state; }
    int Volume() const override { return m_volume; }
    void setVolume(int hundredthsDb) override;
    int Balance() const override { return m_balance; }
    void setBalance(int hundredthsDb) override;

    // Gains of the left and right channel for a balance in 1/100 dB.
    static std::pair<double, double> balanceGains(int hundredthsDb);

    // Builds the picture's output anew: an output made while its window was unmapped never
    // learns that the window became visible.
    void refreshVideo();

    // Handles what the engine queued; also called by the wakeup's queued call.
    void drainEvents();

private:
    void handleEvent(const mpv_event& event);
    void load(const QString& path);
    // Blocks until the file last loaded is open or has failed, at most `ms`.
    void waitForLoad(int ms);
    void command(std::initializer_list<const char*> args);
    void setFlag(const char* name, bool on);

    mpv_handle* m_mpv = nullptr;
    std::atomic_bool m_wakeQueued{false};
    QString m_file;
    int m_state = Stopped;
    // The engine's entry of the file last loaded; its end counts only while it is current.
    qint64 m_entry = -1;
    bool m_loading = false; // load requested, not yet open or failed
    bool m_open = false;    // the medium is open: position and seeks work
    bool m_released = true; // nothing loaded (after Stop, end of stream, a failure or "1")
    double m_pendingSeek = -1;
    // Where a paused medium stands: the engine reports it less its output's latency.
    double m_held = -1;
    int m_volume = 0;
    bool m_fineVolume = false;
    int m_balance = 0;
};
