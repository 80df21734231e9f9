#pragma once
#include <QByteArray>
#include <QString>

class MainContext;

// Write-only copies of the playlist for people: an HTML page, a text file, a printout.
// The exports replace `path` in one step; false when it could not be written.
bool player_SaveHTMLPlaylist(MainContext& ctx, const QString& path);
bool player_SaveTEXTPlaylist(MainContext& ctx, const QString& path);
void mnuPrint_Click(MainContext& ctx);
