#pragma once

class MainContext;

// Marks the selected row to be played after the current song (a queue of one); the same
// command on the marked row takes the mark away.
void mnuPlayNext_Click(MainContext& ctx);

// Play Next and the Advanced queue dialog (mnuAdvanced) as commands.
void PlayNext_install(MainContext& ctx);
