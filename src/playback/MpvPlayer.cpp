#include "playback/MpvPlayer.h"

#include "playback/MpvApi.h"
#include "playback/Player.h"
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMetaObject>
#include <clocale>
#include <cmath>

namespace {

// How long loading a file may hold the caller: a local file opens in milliseconds, and a name the
// engine cannot open must fail before the caller asks whether it plays.
constexpr int kLoadWaitMs = 3000;

bool isLoadable(const QString& name) {
    if (name.isEmpty()) return false;
    if (name.contains(QLatin1String("://"))) return true; // cdda://, av://, streams
    return QFileInfo(name).isFile();
}

QByteArray env(const char* name) {
    return qgetenv(name).trimmed();
}

} // namespace

void mpv_SetPrivateOptions(mpv_handle* mpv) {
    const MpvApi* api = mpv_Library();
    if (!api) return;
    // The built-in script threads serve mpv's own window and keys, which we never show.
    for (const char* off : {"config", "terminal", "load-scripts", "load-stats-overlay",
                            "load-osd-console", "load-auto-profiles", "ytdl", "osc",
                            "input-default-bindings", "input-vo-keyboard", "input-cursor"})
        api->set_option_string(mpv, off, "no");
    api->set_option_string(mpv, "osd-level", "0");
}

MpvPlayer::MpvPlayer(quintptr windowId, QObject* parent, bool glOnDisplay)
    : wmpPlayer(parent), m_windowId(windowId), m_glOnDisplay(glOnDisplay) {}

QByteArray MpvPlayer::videoOutputs(const QByteArray& configured, bool embedded, bool glOnDisplay) {
    if (!configured.isEmpty()) return configured;
    if (!embedded) return "null";
    return glOnDisplay ? "gpu,x11" : "x11";
}

bool MpvPlayer::startEngine() {
    if (m_mpv || m_failed) return m_mpv != nullptr;
    m_failed = true;
    m_api = mpv_Library();
    if (!m_api) return false;
    setlocale(LC_NUMERIC, "C"); // the engine refuses any other numeric locale
    m_mpv = m_api->create();
    if (!m_mpv) return false;
    auto opt = [this](const char* name, const QByteArray& value) {
        m_api->set_option_string(m_mpv, name, value.constData());
    };
    mpv_SetPrivateOptions(m_mpv);
    if (qEnvironmentVariableIsSet("VELDOR_MPV_DEBUG")) {
        opt("terminal", "yes");
        opt("msg-level", "vo=debug");
    }
    opt("idle", "yes");
    opt("keep-open", "no");
    opt("audio-display", "no"); // cover art of an MP3 is not a video
    opt("stop-screensaver", "yes");
    opt("audio-client-name", "veldor");
    opt("autoload-files", "no");

    const QByteArray ao = env("VELDOR_AO");
    if (!ao.isEmpty()) opt("ao", ao);
    if (ao.startsWith("pcm")) {
        // One raw file for the whole session: each song is appended as it plays.
        const QByteArray file = env("VELDOR_AO_FILE");
        if (!file.isEmpty()) opt("ao-pcm-file", file);
        opt("ao-pcm-append", "yes");
        opt("ao-pcm-waveheader", "no");
        opt("audio-format", "s16");
    }
    if (m_windowId) opt("wid", QByteArray::number(qulonglong(m_windowId)));
    opt("vo", videoOutputs(env("VELDOR_VO"), m_windowId != 0, m_glOnDisplay));

    if (m_api->initialize(m_mpv) < 0) {
        m_api->terminate_destroy(m_mpv);
        m_mpv = nullptr;
        return false;
    }
    m_failed = false;
    m_api->request_log_messages(m_mpv, "no");
    m_api->set_wakeup_callback(
        m_mpv,
        [](void* self) {
            auto* p = static_cast<MpvPlayer*>(self);
            if (p->m_wakeQueued.exchange(true)) return;
            QMetaObject::invokeMethod(
                p,
                [p] {
                    p->m_wakeQueued = false;
                    p->drainEvents();
                },
                Qt::QueuedConnection);
        },
        this);
    // What was set before the engine ran.
    if (m_volume != 0) setVolume(m_volume);
    if (m_balance != 0) {
        const int b = m_balance;
        m_balance = 0;
        setBalance(b);
    }
    return true;
}

MpvPlayer::~MpvPlayer() {
    if (!m_mpv) return;
    m_api->set_wakeup_callback(m_mpv, nullptr, nullptr);
    m_api->terminate_destroy(m_mpv);
}

void MpvPlayer::command(std::initializer_list<const char*> args) {
    if (!m_mpv) return;
    std::vector<const char*> argv(args);
    argv.push_back(nullptr);
    m_api->command(m_mpv, argv.data());
}

void MpvPlayer::setFlag(const char* name, bool on) {
    if (!m_mpv) return;
    int flag = on ? 1 : 0;
    m_api->set_property(m_mpv, name, MPV_FORMAT_FLAG, &flag);
}

void MpvPlayer::setFileName(const QString& name) {
    m_file = name;
    if (!isLoadable(name)) {
        // The custom release: a name that is no file lets go of the last one.
        m_entry = -1;
        m_startPending = m_fresh = false;
        if (m_mpv && !m_released) command({"stop"});
        m_released = true;
        m_open = m_loading = false;
        m_state = Stopped;
        return;
    }
    if (startEngine()) load(name);
}

void MpvPlayer::load(const QString& path) {
    setFlag("pause", true);
    const QByteArray file = path.toUtf8();
    // Subtitles and cover pictures beside a file are looked for by listing its whole folder,
    // which the load waits for: worth it only where a picture shows. A per-file option, since
    // changing the engine's own while a song is loaded reopens its sound filters later.
    const char* argv[] = {"loadfile", file.constData(), "replace",
                          player_IsVideoFile(path) ? "autoload-files=yes" : nullptr, nullptr};
    mpv_node result{};
    const bool ok = m_api->command_ret(m_mpv, argv, &result) >= 0;
    m_entry = -1;
    if (ok && result.format == MPV_FORMAT_NODE_MAP) {
        for (int i = 0; i < result.u.list->num; ++i)
            if (qstrcmp(result.u.list->keys[i], "playlist_entry_id") == 0 &&
                result.u.list->values[i].format == MPV_FORMAT_INT64)
                m_entry = result.u.list->values[i].u.int64;
    }
    if (ok) m_api->free_node_contents(&result);
    if (ok && m_entry < 0) {
        // A replaced song stays in the list until it has stopped: the new entry is the last.
        qint64 count = 0;
        m_api->get_property(m_mpv, "playlist-count", MPV_FORMAT_INT64, &count);
        const QByteArray last =
            "playlist/" + QByteArray::number(qMax<qint64>(0, count - 1)) + "/id";
        m_api->get_property(m_mpv, last.constData(), MPV_FORMAT_INT64, &m_entry);
    }
    m_state = Stopped;
    m_pendingSeek = m_held = -1;
    m_open = false;
    m_fresh = ok;
    m_startPending = m_chainChanged = false;
    m_startAt = 0;
    m_released = !ok;
    m_loading = ok;
    if (ok) waitForLoad(kLoadWaitMs);
}

void MpvPlayer::waitForLoad(int ms) {
    QElapsedTimer clock;
    clock.start();
    while (m_loading && clock.elapsed() < ms) {
        const double left = (ms - clock.elapsed()) / 1000.0;
        const mpv_event* e = m_api->wait_event(m_mpv, qMax(0.0, left));
        if (e->event_id != MPV_EVENT_NONE) handleEvent(*e);
    }
}

void MpvPlayer::drainEvents() {
    if (!m_mpv) return;
    for (;;) {
        const mpv_event* e = m_api->wait_event(m_mpv, 0);
        if (e->event_id == MPV_EVENT_NONE) break;
        handleEvent(*e);
    }
}

void MpvPlayer::handleEvent(const mpv_event& event) {
    switch (event.event_id) {
    case MPV_EVENT_FILE_LOADED:
        if (!m_loading) break;
        m_loading = false;
        m_open = true;
        if (m_pendingSeek >= 0) {
            m_startAt = m_pendingSeek;
            setCurrentPosition(m_pendingSeek);
            m_pendingSeek = -1;
        }
        if (m_startPending && m_chainChanged) startLoaded();
        break;
    case MPV_EVENT_END_FILE: {
        const auto* end = static_cast<const mpv_event_end_file*>(event.data);
        if (end->playlist_entry_id != m_entry || m_entry < 0) break; // a file already left
        m_loading = m_open = false;
        m_released = true;
        m_state = Stopped;
        if (end->reason != MPV_END_FILE_REASON_EOF) break;
        // Raised from the event loop, so a handler that loads the next file runs outside this
        // drain; a Stop or a load in between makes it stale.
        const qint64 ended = m_entry;
        QMetaObject::invokeMethod(
            this,
            [this, ended] {
                if (m_entry == ended) Q_EMIT EndOfStream(8);
            },
            Qt::QueuedConnection);
        break;
    }
    default:
        break;
    }
}

void MpvPlayer::refreshVideo() {
    if (!m_mpv || !m_open) return;
    char* current = m_api->get_property_string(m_mpv, "vid");
    const QByteArray vid = current ? QByteArray(current) : QByteArray("auto");
    m_api->free(current);
    if (vid == "no") return;
    m_api->set_property_string(m_mpv, "vid", "no");
    m_api->set_property_string(m_mpv, "vid", vid.constData());
}

void MpvPlayer::Play() {
    if (!startEngine()) return;
    if (m_released) {
        if (!isLoadable(m_file)) return;
        load(m_file);
        if (m_released) return; // the engine could not open it
    }
    m_held = -1;
    m_state = Playing;
    if (!m_fresh) {
        setFlag("pause", false);
        return;
    }
    if (m_startPending) return;
    m_startPending = true;
    QMetaObject::invokeMethod(this, &MpvPlayer::startLoaded, Qt::QueuedConnection);
}

void MpvPlayer::startLoaded() {
    if (!m_startPending || !m_mpv) return;
    // Under load the file may still be opening: the start waits for it.
    if (m_chainChanged && m_loading) return;
    const bool reopen = m_chainChanged && m_open;
    const double at = m_startAt;
    m_startPending = m_fresh = m_chainChanged = false;
    if (reopen) {
        // The engine applies changed filters a few buffers late, after what it decoded while
        // paused; the song opened again with them in place has them from its first sample.
        load(m_file);
        if (m_released) return;
        m_fresh = false;
        m_state = Playing;
        if (at > 0) setCurrentPosition(at);
    }
    setFlag("pause", false);
}

void MpvPlayer::Pause() {
    if (m_state != Playing) return;
    m_startPending = false;
    setFlag("pause", true);
    m_held = CurrentPosition();
    m_state = Paused;
}

void MpvPlayer::Stop() {
    if (!m_mpv) return;
    m_entry = -1; // whatever ends from here on was stopped, not finished
    m_startPending = m_fresh = false;
    if (!m_released) command({"stop"});
    m_released = true;
    m_open = m_loading = false;
    m_pendingSeek = m_held = -1;
    m_state = Stopped;
}

double MpvPlayer::CurrentPosition() const {
    if (!m_mpv || m_released) return 0;
    if (!m_open) return qMax(0.0, m_pendingSeek);
    if (m_state == Paused && m_held >= 0) return m_held;
    double pos = 0;
    if (m_api->get_property(m_mpv, "time-pos", MPV_FORMAT_DOUBLE, &pos) < 0) return 0;
    return qMax(0.0, pos);
}

void MpvPlayer::setCurrentPosition(double seconds) {
    if (!m_mpv || m_released) return;
    seconds = qMax(0.0, seconds);
    if (!m_open) {
        m_pendingSeek = seconds;
        return;
    }
    if (m_state == Paused) m_held = seconds;
    m_startAt = seconds;
    const QByteArray to = QByteArray::number(seconds, 'f', 3);
    command({"seek", to.constData(), "absolute+exact"});
}

double MpvPlayer::Duration() const {
    if (!m_mpv || !m_open) return 0;
    double d = 0;
    if (m_api->get_property(m_mpv, "duration", MPV_FORMAT_DOUBLE, &d) < 0) return 0;
    return d;
}

std::pair<double, double> MpvPlayer::balanceGains(int hundredthsDb) {
    const double down = std::pow(10.0, -std::abs(hundredthsDb) / 2000.0);
    if (hundredthsDb < 0) return {1.0, down};
    if (hundredthsDb > 0) return {down, 1.0};
    return {1.0, 1.0};
}

void MpvPlayer::setVolume(int hundredthsDb) {
    m_volume = hundredthsDb;
    if (!m_mpv) return;
    m_chainChanged = m_chainChanged || m_fresh;
    // The engine's own volume acts at once but steps in 1/256 on 16-bit output, fine only down
    // to about 30 dB; a labelled floating-point filter takes what lies below that.
    constexpr int kCoarseFloor = -3000;
    const double gain = hundredthsDb >= 0        ? 1.0
                        : hundredthsDb <= -10000 ? 0.0
                                                 : std::pow(10.0, hundredthsDb / 2000.0);
    const int coarse = qMax(hundredthsDb, kCoarseFloor);
    double v = coarse >= 0 ? 100.0 : 100.0 * std::cbrt(std::pow(10.0, coarse / 2000.0));
    m_api->set_property(m_mpv, "volume", MPV_FORMAT_DOUBLE, &v);
    const double fine =
        hundredthsDb < kCoarseFloor ? gain / std::pow(10.0, kCoarseFloor / 2000.0) : 1.0;
    if (fine == 1.0 && !m_fineVolume) return;
    m_fineVolume = fine != 1.0;
    const QByteArray chain = QByteArray("@vol:lavfi=[volume=volume=") +
                             QByteArray::number(fine, 'f', 9) + ":precision=float]";
    command({"af", "add", chain.constData()});
}

void MpvPlayer::setBalance(int hundredthsDb) {
    const bool had = m_balance != 0;
    m_balance = hundredthsDb;
    if (!m_mpv || (!had && hundredthsDb == 0)) return;
    m_chainChanged = m_chainChanged || m_fresh;
    const auto [left, right] = balanceGains(hundredthsDb);
    // The labelled filter is replaced in place, so moving the balance leaves no gap.
    const QByteArray chain = QByteArray("@bal:lavfi=[pan=stereo|c0=") +
                             QByteArray::number(left, 'f', 6) +
                             "*c0|c1=" + QByteArray::number(right, 'f', 6) + "*c1]";
    command({"af", "add", chain.constData()});
}
