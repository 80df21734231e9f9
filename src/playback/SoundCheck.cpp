#include "playback/SoundCheck.h"

#include "playback/MpvApi.h"
#include "playback/MpvPlayer.h"

#include <QByteArray>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <clocale>

namespace {

// Opens the engine with the configured output and plays a tenth of a second of silence.
bool engineOpensAnOutput(const QByteArray& ao) {
    const MpvApi* api = mpv_Library();
    if (!api) return false;
    setlocale(LC_NUMERIC, "C");
    mpv_handle* h = api->create();
    if (!h) return false;
    if (!ao.isEmpty()) api->set_option_string(h, "ao", ao.constData());
    api->set_option_string(h, "vo", "null");
    api->set_option_string(h, "idle", "yes");
    mpv_SetPrivateOptions(h);
    api->set_option_string(h, "volume", "0");
    if (api->initialize(h) < 0) {
        api->terminate_destroy(h);
        return false;
    }
    const char* cmd[] = {"loadfile", "av://lavfi:anullsrc=d=0.1", nullptr};
    api->command(h, cmd);
    bool available = true; // undecided within the time limit: do not lock the user out
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 3000) {
        mpv_event* e = api->wait_event(h, 0.5);
        if (e->event_id == MPV_EVENT_AUDIO_RECONFIG) {
            char* current = api->get_property_string(h, "current-ao");
            const bool open = current && *current;
            api->free(current);
            if (open) break;
        } else if (e->event_id == MPV_EVENT_END_FILE) {
            const auto* end = static_cast<mpv_event_end_file*>(e->data);
            available = end->reason != MPV_END_FILE_REASON_ERROR;
            break;
        }
    }
    api->terminate_destroy(h);
    return available;
}

} // namespace

bool device_SoundServerOrDevice(const QString& runtimeDir, const QString& devSnd) {
    if (!qEnvironmentVariableIsEmpty("PULSE_SERVER")) return true;
    if (!runtimeDir.isEmpty())
        for (const char* socket : {"pulse/native", "pipewire-0"})
            if (QFileInfo(runtimeDir + QLatin1Char('/') + QLatin1String(socket)).exists())
                return true;
    const QStringList playback =
        QDir(devSnd).entryList({QStringLiteral("pcmC*D*p")}, QDir::System | QDir::Files);
    return !playback.isEmpty();
}

bool device_SoundAvailable() {
    const QByteArray ao = qgetenv("VELDOR_AO").trimmed();
    if (ao == "null" || ao == "pcm") return true; // outputs that need no device
    if ((ao.isEmpty() || ao == "auto") &&
        device_SoundServerOrDevice(qEnvironmentVariable("XDG_RUNTIME_DIR"),
                                   QStringLiteral("/dev/snd")))
        return true;
    return engineOpensAnOutput(ao);
}
