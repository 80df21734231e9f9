#pragma once

// True when the media engine can open an audio output (the configured one, VELDOR_AO).
bool device_SoundAvailable();
