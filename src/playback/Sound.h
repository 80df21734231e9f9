#pragma once
#include <QString>

class MainContext;

// Loudness: the sliders' 0 to 100 onto the media control's hundredths of a decibel, the mute
// toggle, and the stored volume of a song at its start.

// 0 is 60 dB down, 100 is full.
void player_Volume(MainContext& ctx, int value);
// 0 leaves the right channel 50 dB down, 50 is centred, 100 leaves the left 50 dB down.
void player_Balance(MainContext& ctx, int value);

// A toggle whose state is the menu caption: muting silences the output and holds the slider.
void mnuMute_Click(MainContext& ctx);
bool sound_IsMuted(MainContext& ctx);

// Stores the slider's position for the selected playlist row.
void mnuStoreVolume_Click(MainContext& ctx);

// At a song's start (name lower-cased): jump to its stored volume, or back to the one in use
// before a run of songs with stored volumes.
void volumes_ApplyStored(MainContext& ctx, const QString& filename);

// The hooks, the sliders' moves, and the menu entries of this part.
void Sound_install(MainContext& ctx);
