#include "playback/SoundCheck.h"

#include "playback/MpvPlayer.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <clocale>
#include <mpv/client.h>

bool device_SoundAvailable() {
    const QByteArray ao = qgetenv("VELDOR_AO");
    if (ao == "null" || ao == "pcm") return true; // outputs that need no device
    setlocale(LC_NUMERIC, "C");
    mpv_handle* h = mpv_create();
    if (!h) return false;
    if (!ao.isEmpty()) mpv_set_option_string(h, "ao", ao.constData());
    mpv_set_option_string(h, "vo", "null");
    mpv_set_option_string(h, "idle", "yes");
    mpv_SetPrivateOptions(h);
    mpv_set_option_string(h, "volume", "0");
    if (mpv_initialize(h) < 0) {
        mpv_terminate_destroy(h);
        return false;
    }
    // Play a tenth of a second of silence and see whether an output opens for it.
    const char* cmd[] = {"loadfile", "av://lavfi:anullsrc=d=0.1", nullptr};
    mpv_command(h, cmd);
    bool available = true; // undecided within the time limit: do not lock the user out
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 3000) {
        mpv_event* e = mpv_wait_event(h, 0.5);
        if (e->event_id == MPV_EVENT_AUDIO_RECONFIG) {
            char* current = mpv_get_property_string(h, "current-ao");
            const bool open = current && *current;
            mpv_free(current);
            if (open) break;
        } else if (e->event_id == MPV_EVENT_END_FILE) {
            const auto* end = static_cast<mpv_event_end_file*>(e->data);
            available = end->reason != MPV_END_FILE_REASON_ERROR;
            break;
        }
    }
    mpv_terminate_destroy(h);
    return available;
}
