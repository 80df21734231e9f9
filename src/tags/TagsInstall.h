#pragma once
#include "playlists/PlaylistRows.h"

#include <QString>

class ListModel;
class MainContext;

// Puts the tag readers behind the playlist rows and registers the tag commands.
void Tags_install(MainContext& ctx);

// Artist, Title and Year of a file from its ID3v2 tag (`useID3v2`) or its ID3v1 tag; empty texts
// when the file has none. What the player shows of a song as it starts.
PlaylistTagReader::Texts tags_ReadSongTags(const QString& filename, bool useID3v2);

// The lyrics kept in the file's ID3v2 tag ("USLT"), empty when there are none.
QString tags_ReadLyrics(const QString& filename);

// Toggles which tag the rows show and offers to refresh them.
void mnuTagsUseID3v2Tags_Click(MainContext& ctx);

// "Artist - Title" of each selected row, one a line, in the list's order: what Copy TAG puts
// on the desktop's clipboard.
QString tags_SelectedTagText(const ListModel& list);
