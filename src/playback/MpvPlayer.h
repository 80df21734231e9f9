#pragma once
#include "core/wmpPlayer.h"

#include <QString>
#include <atomic>

struct mpv_handle;
struct mpv_event;
struct MpvApi;

// Options every engine of ours starts with (libmpv opened): no user configuration, no terminal,
// none of mpv's own scripts, window or keys. Set before mpv_initialize.
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
    // `glOnDisplay`: whether the display offers GL; without it the picture goes straight to the
    // plain X11 output, never through the GL one.
    explicit MpvPlayer(quintptr windowId = 0, QObject* parent = nullptr, bool glOnDisplay = true);
    ~MpvPlayer() override;

    // Starts the engine unless it runs; the first file loaded starts it too. False when libmpv
    // could not be started; every member is then a harmless no-op.
    bool startEngine();
    bool isValid() { return startEngine(); }

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

    // The engine's video outputs, in the order tried: VELDOR_VO when set (`configured`), else GL
    // first where the display has it, then plain X11; nothing without a window.
    static QByteArray videoOutputs(const QByteArray& configured, bool embedded, bool glOnDisplay);

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
    // Unpauses a file loaded and asked to play, once the caller's volume and balance are set.
    void startLoaded();
    void command(std::initializer_list<const char*> args);
    void setFlag(const char* name, bool on);

    const MpvApi* m_api = nullptr;
    mpv_handle* m_mpv = nullptr;
    quintptr m_windowId = 0;
    bool m_glOnDisplay = true;
    bool m_failed = false; // tried once and could not start
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
    // Loaded and not yet heard: a Play waits for the event loop, so that what the caller sets
    // right after it reaches the first sample.
    bool m_fresh = false;
    bool m_startPending = false;
    bool m_chainChanged = false; // volume or balance set since the load
    double m_startAt = 0;
    int m_volume = 0;
    bool m_fineVolume = false;
    int m_balance = 0;
};
