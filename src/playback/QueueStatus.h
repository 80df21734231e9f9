#pragma once
#include <QString>

class MainContext;

// The playlist pop-up's queue entries: the `Status` of the selected rows, or of every row, set
// to one of the values the player honours ("Play", "Play Once", "Skip", "Skip Once", "Remove").
void queue_SetStatus(MainContext& ctx, const QString& status, bool allRows);
// Selects the row that is playing and brings it into view.
void mnuSelectPlaying_Click(MainContext& ctx);
void QueueStatus_install(MainContext& ctx);
