#pragma once
#include <QString>

// True when the media engine can open an audio output (the configured one, VELDOR_AO).
//
// The sound server or an ALSA playback device of the session answers without the engine; only
// when none is found, or VELDOR_AO names an output, does the engine try to open one.
bool device_SoundAvailable();

// The cheap half: a sound server's socket or an ALSA playback device. `runtimeDir` and `devSnd`
// stand for $XDG_RUNTIME_DIR and /dev/snd.
bool device_SoundServerOrDevice(const QString& runtimeDir, const QString& devSnd);
