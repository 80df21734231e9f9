#include "playlists/PlaylistRows.h"

#include "core/Colors.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "core/ListModel.h"
#include "playlists/PlaylistEditing.h"
#include "core/modControls.h"

#include <QHash>

using namespace PlaylistColumn;

namespace {

std::shared_ptr<PlaylistTagReader>& tagReader() {
    static std::shared_ptr<PlaylistTagReader> reader;
    return reader;
}

const QString kNone = QStringLiteral("[None]");

bool hasTagExtension(const QString& filename) {
    const QString ext = modFiles::file_GetExtension(filename).toLower();
    return ext == QLatin1String("mp3") || ext == QLatin1String("mp2") ||
           ext == QLatin1String("mp1");
}

// The ID3v2 text only when strictly longer, so that a tie goes to ID3v1.
const QString& longer(const QString& v1, const QString& v2) {
    return v2.size() > v1.size() ? v2 : v1;
}

void fillFromTags(MainContext& ctx, PlaylistTagReader& reader, int row, const QString& filename) {
    ListModel& list = ctx.lstvPlaylist();
    if (!modFiles::file_Exists(filename)) {
        list.setText(row, Artist, kNone);
        list.setText(row, Title, kNone);
        list.setText(row, Length, QString());
        return;
    }
    const bool larger =
        settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UseLargerTAGSWhenAvailable"),
                      QStringLiteral("0"));
    const bool useV2 = ctx.commands().isChecked(QStringLiteral("mnuTagsUseID3v2Tags"));
    const PlaylistTagReader::Song song =
        reader.readSong(filename, larger || !useV2, larger || useV2);
    const PlaylistTagReader::Texts tags =
        larger ? PlaylistTagReader::Texts{longer(song.v1.artist, song.v2.artist),
                                          longer(song.v1.title, song.v2.title),
                                          longer(song.v1.year, song.v2.year)}
               : (useV2 ? song.v2 : song.v1);
    list.setText(row, Artist, tags.artist.isEmpty() ? kNone : tags.artist);
    list.setText(row, Title, tags.title.isEmpty() ? kNone : tags.title);
    list.setText(row, Year, tags.year);
    const QString& length = song.length;
    if (!length.isNull()) list.setText(row, Length, length);
}

} // namespace

PlaylistTagReader* playlist_TagReader() {
    return tagReader().get();
}

void playlist_SetTagReader(std::shared_ptr<PlaylistTagReader> reader) {
    tagReader() = std::move(reader);
}

void playlist_AddSong(MainContext& ctx, const QString& artist, const QString& title,
                      const QString& year, const QString& filename) {
    ctx.lstvPlaylist().addRow(
        {QString(), artist, title, year, QStringLiteral("Play"), QString(), filename});
}

void playlist_UpdateItem(MainContext& ctx, int index, bool noTags) {
    ListModel& list = ctx.lstvPlaylist();
    const int row = index - 1;
    if (row < 0 || row >= list.count()) return;
    const QString filename = list.text(row, Filename);
    const std::shared_ptr<PlaylistTagReader> reader = tagReader();
    if (!noTags && reader && hasTagExtension(filename)) {
        fillFromTags(ctx, *reader, row, filename);
        return;
    }
    // Without tags a row shows its file title as artist (a WAV or a video file too) and has no
    // length until it is played.
    if (list.text(row, Artist).isEmpty())
        list.setText(row, Artist, modFiles::file_GetTitle(filename));
    list.setText(row, Length, QString());
}

void playlist_ShowMP3Data(MainContext& ctx, bool noTags) {
    ctx.beginBusy(QStringLiteral("Updating the playlist entries, please wait..."));
    const bool tags = ctx.commands().isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"));
    for (int i = 1; i <= ctx.lstvPlaylist().count(); ++i)
        playlist_UpdateItem(ctx, i, tags ? noTags : true);
    ctx.endBusy();
}

void playlist_UpdatePlaylist(MainContext& ctx, int playingIndex) {
    ListModel& list = ctx.lstvPlaylist();
    // Read once: the colours cannot change between the cells of one walk.
    const QString section = QStringLiteral("Appearance");
    const qint64 fontColour =
        Colors::parse(settings_Read(section, QStringLiteral("FontColour"),
                                    QString::number(Colors::SystemWindowText)),
                      Colors::SystemWindowText);
    const qint64 playingColour = Colors::parse(
        settings_Read(section, QStringLiteral("PlayingFontColour"), QStringLiteral("192")), 192);
    for (int i = 1; i <= list.count(); ++i) {
        if (i != ctx.PlayNextRowIndex && list.isBold(i - 1, Number))
            list.setRowStyle(i - 1, false, fontColour);
        if (i == playingIndex) list.setRowStyle(i - 1, true, playingColour);
    }
}

std::vector<bool> playlist_EarlierDuplicates(const ListModel& list, int column) {
    const int n = list.count();
    std::vector<bool> mask(size_t(n), false);
    QHash<QString, bool> later;
    later.reserve(n);
    for (int i = n - 1; i >= 0; --i) {
        const QString key = list.text(i, column).toLower();
        auto it = later.constFind(key);
        if (it != later.constEnd())
            mask[size_t(i)] = true;
        else
            later.insert(key, true);
    }
    return mask;
}

void playlist_CheckEntries(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    if (list.count() == 0 ||
        !settings_IsOn(QStringLiteral("Settings"),
                       QStringLiteral("AlwaysScanPlaylistWhenAddingSongs"), QStringLiteral("0")))
        return;
    // A row goes when its file is missing or a later row names the same file: each earlier copy
    // still sees a match further down, so the last of equal filenames survives.
    std::vector<bool> remove = playlist_EarlierDuplicates(list, Filename);
    int removed = 0;
    for (int i = 0; i < list.count(); ++i) {
        if (!remove[size_t(i)] && !modFiles::file_Exists(list.text(i, Filename)))
            remove[size_t(i)] = true;
        removed += remove[size_t(i)];
    }
    if (removed == 0) return;
    list.removeRows(remove);
    Dialogs::msgBox(QStringLiteral("It has been detected that you had %1 dead or duplicate "
                                   "filenames in the playlist.\n\nThese items have been removed.\n")
                        .arg(removed),
                    Dialogs::vbInformation, QStringLiteral("Playlist Scan Information"));
    window_WriteLog(QStringLiteral("Dead/Duplicate filenames removed:  %1.").arg(removed));
}

void lstvPlaylist_ColumnClick(MainContext& ctx, int column) {
    using Handler = void (*)(MainContext&);
    Handler sortBy = nullptr;
    switch (column) {
    case 2:
        sortBy = mnuSortByArtist_Click;
        break;
    case 3:
        sortBy = mnuSortByTitle_Click;
        break;
    case 4:
        sortBy = mnuSortByYear_Click;
        break;
    case 6:
        sortBy = mnuSortByLength_Click;
        break;
    case 7:
        sortBy = mnuSortByFilename_Click;
        break;
    default:
        return; // "No." and "Status:" are not sortable
    }
    Commands& cmd = ctx.commands();
    if (cmd.isChecked(QStringLiteral("mnuDontSort")))
        mnuSortViaAcending_Click(ctx);
    else if (cmd.isChecked(QStringLiteral("mnuSortViaAcending")))
        mnuSortViaDecending_Click(ctx);
    else
        mnuSortViaAcending_Click(ctx);
    sortBy(ctx);
}

void lstvPlaylist_DblClick(MainContext& ctx) {
    if (!listview_HasSelection(ctx.lstvPlaylist())) return;
    // A paused song is started afresh, not merely resumed.
    if (ctx.PlayerPaused) ctx.commands().run(QStringLiteral("mnuStop"));
    ctx.commands().run(QStringLiteral("mnuPlay"));
}

bool lstvPlaylist_KeyDown(MainContext& ctx, int keyCode) {
    ListModel& list = ctx.lstvPlaylist();
    const int count = list.count();
    const int current = listview_SelectedIndex(list);
    switch (keyCode) {
    case 39: // right arrow: next row, round to the first
        if (count > 0) listview_SelectItem(list, current >= count ? 1 : current + 1);
        return true;
    case 37: // left arrow: previous row, round to the last
        if (count > 0) listview_SelectItem(list, current <= 1 ? count : current - 1);
        return true;
    case 13:
        lstvPlaylist_DblClick(ctx);
        return true;
    default:
        return false;
    }
}

void lstvPlaylist_OLEStartDrag(MainContext& ctx, int row) {
    const int selected = listview_SelectedIndex(ctx.lstvPlaylist());
    ctx.PlaylistDragActive = true;
    ctx.PlaylistDragSource = selected > 0 ? selected : row;
}

bool lstvPlaylist_OLEDragDrop(MainContext& ctx, int targetRow) {
    if (!ctx.PlaylistDragActive) return false;
    ListModel& list = ctx.lstvPlaylist();
    const bool keepSorted = !ctx.commands().isChecked(QStringLiteral("mnuDontSort"));
    if (keepSorted) list.setSorted(false);
    const int source = ctx.PlaylistDragSource;
    if (targetRow >= 1 && targetRow <= list.count() && source >= 1 && source <= list.count() &&
        targetRow != source) {
        // Dragged upward the row lands above the target, dragged downward below it.
        const QStringList cells = list.rowTexts(source - 1);
        const int at = source > targetRow ? targetRow : targetRow + 1; // 1-based
        list.addRow(cells, at - 1);
        listview_SelectItem(list, at);
        list.removeRow(source > targetRow ? source : source - 1);
    }
    if (keepSorted) list.setSorted(true);
    listview_Renumber(list);
    ctx.PlaylistDragActive = false;
    ctx.commands().run(QStringLiteral("mnuJumpToCurrentlyPlaying"));
    return true;
}
