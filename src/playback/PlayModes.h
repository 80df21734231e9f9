#pragma once
#include <QString>

class MainContext;

// The three mode groups of the Play Mode menu: nine play modes, five playlist modes and two
// directions. The check marks are the modes; each choice is written to the settings at once.

// Checks `menu` alone among the play modes and writes "1" to `key`, "0" to the other eight.
// The direction menus are enabled only for the modes that step through the list.
void Menu_SelectPlaybackMode(MainContext& ctx, const QString& menu, const QString& key,
                             bool directionEnabled);
void Menu_SelectPlaylistMode(MainContext& ctx, const QString& menu, const QString& key);
void mnuWorkForwardThroughList_Click(MainContext& ctx);
void mnuWorkBackwardsThroughPlaylist_Click(MainContext& ctx);

// Registers the handlers of the sixteen mode menus.
void PlayModes_install(MainContext& ctx);
