#pragma once
#include <QString>
#include <functional>

class FrmLyrics;
class MainContext;

// The lyrics window follows the song being played: lyrics kept in the ID3v2 tag of an MPEG
// audio file open it, a song without them closes it.

// Reads the lyrics of a file's ID3v2 tag ("" when there are none). Until one is set every
// file has none.
using LyricsReader = std::function<QString(const QString& filename)>;
void lyrics_SetReader(LyricsReader reader);

void lyrics_OpenFile(MainContext& ctx, const QString& filename);
// The window's size from "Height" and "Width" of "Lyrics" (twips).
void lyrics_GetSize();
// Writes the size back, unless the window is minimized or maximized.
void lyrics_SaveSize();
void lyrics_Open(MainContext& ctx);
void lyrics_Close();
bool lyrics_IsOpened();
// The one window, created hidden on first use.
FrmLyrics& lyrics_Window();

void mnuWindowsShowLyricsWhenAvailable_Click(MainContext& ctx);
