#pragma once
#include <QString>
#include <memory>
#include <vector>

class ListModel;
class MainContext;

// The rows of `lstvPlaylist`: how they are made and filled, the playing highlight, the automatic
// scan, and the list's own events. Row indexes are 1-based, 0 for none.

// Columns of a playlist row (sub-item indexes).
namespace PlaylistColumn {
enum : int { Number = 0, Artist = 1, Title = 2, Year = 3, Status = 4, Length = 5, Filename = 6 };
}

// What the tag subsystem provides to fill a row of an "mp3", "mp2" or "mp1" file. Until a reader
// is installed every row is filled the way without tags.
class PlaylistTagReader {
public:
    struct Texts {
        QString artist, title, year;
    };
    virtual ~PlaylistTagReader() = default;
    virtual Texts readID3v1(const QString& filename) = 0;
    virtual Texts readID3v2(const QString& filename) = 0;
    // "mm:ss" of the stream, as the row's Length shows it; a null text leaves the cell alone.
    virtual QString lengthText(const QString& filename) = 0;
    // The album of the ID3v2 tag (`id3v2`) or of the ID3v1 tag; "" where the reader has none.
    virtual QString readAlbum(const QString& filename, bool id3v2) {
        (void)filename;
        (void)id3v2;
        return {};
    }
    // What a row needs of one file at once; a reader may serve it from a single open.
    struct Song {
        Texts v1, v2;
        QString length;
    };
    virtual Song readSong(const QString& filename, bool v1, bool v2) {
        return {v1 ? readID3v1(filename) : Texts{}, v2 ? readID3v2(filename) : Texts{},
                lengthText(filename)};
    }
};
// nullptr removes the reader.
void playlist_SetTagReader(std::shared_ptr<PlaylistTagReader> reader);
// The installed reader, or nullptr.
PlaylistTagReader* playlist_TagReader();

// Appends one row: no duplicate check, no file test, not numbered.
void playlist_AddSong(MainContext& ctx, const QString& artist, const QString& title,
                      const QString& year, const QString& filename);
// Fills the tag columns of one row, from the tag or from the filename.
void playlist_UpdateItem(MainContext& ctx, int index, bool noTags);
// playlist_UpdateItem for every row, as a long operation.
void playlist_ShowMP3Data(MainContext& ctx, bool noTags);
// Moves the playing highlight to `playingIndex`; 0 clears it.
void playlist_UpdatePlaylist(MainContext& ctx, int playingIndex);
// The automatic scan for dead and duplicate rows (when the setting asks for it).
void playlist_CheckEntries(MainContext& ctx);

// Rows (0-based mask) whose `column` text, lower-cased, appears again in a later row: of a group
// of equal texts all but the last are marked. Linear time.
std::vector<bool> playlist_EarlierDuplicates(const ListModel& list, int column);

// --- events of `lstvPlaylist`; the view forwards them. `column` is the header's 1-based index.
void lstvPlaylist_ColumnClick(MainContext& ctx, int column);
void lstvPlaylist_DblClick(MainContext& ctx);
// True when the key was handled; false for the context-menu key (93), which the view pops up.
bool lstvPlaylist_KeyDown(MainContext& ctx, int keyCode);
// `row` is where the drag began; the row dragged is SelectedItem when there is one.
void lstvPlaylist_OLEStartDrag(MainContext& ctx, int row);
// A drop at `targetRow` (0: no row there). True when it was a move inside the list; false when
// no drag of a row is under way (files from outside are another matter).
bool lstvPlaylist_OLEDragDrop(MainContext& ctx, int targetRow);
