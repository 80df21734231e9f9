#include "tags/TagsInstall.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/AdvancedQueue.h"
#include "tags/FrmEditTag.h"
#include "tags/FrmMassRenamer.h"
#include "tags/FrmMassTagEditor.h"
#include "tags/FrmMoveToFolder.h"
#include "tags/FrmRename.h"
#include "tags/TagFile.h"
#include "tags/TagShift.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"
#include "tags/modMedia.h"

#include <QClipboard>
#include <QGuiApplication>

namespace {

class ID3TagReader : public PlaylistTagReader {
public:
    Texts readID3v1(const QString& filename) override {
        clsID3v1 tag;
        tag.setFilename(filename);
        return {tag.Artist(), tag.Title(), tag.Year()};
    }
    Texts readID3v2(const QString& filename) override {
        clsID3v2 tag;
        tag.setFilename(filename);
        return {tag.Artist(), tag.Title(), tag.Year()};
    }
    QString readAlbum(const QString& filename, bool id3v2) override {
        if (id3v2) {
            clsID3v2 tag;
            tag.setFilename(filename);
            return tag.Album();
        }
        clsID3v1 tag;
        tag.setFilename(filename);
        return tag.Album();
    }
    QString lengthText(const QString& filename) override {
        media_ReadMP3Info(filename);
        return media_LengthText();
    }
    Song readSong(const QString& filename, bool v1, bool v2) override {
        TagFile file;
        const bool opened = file.open(filename);
        Song song;
        if (v1) {
            clsID3v1 tag;
            tag.load(filename, file, opened);
            song.v1 = {tag.Artist(), tag.Title(), tag.Year()};
        }
        if (v2) {
            clsID3v2 tag;
            tag.load(filename, file, opened);
            song.v2 = {tag.Artist(), tag.Title(), tag.Year()};
        }
        media_ReadMP3Info(file, opened);
        song.length = media_LengthText();
        return song;
    }
};

} // namespace

PlaylistTagReader::Texts tags_ReadSongTags(const QString& filename, bool useID3v2) {
    ID3TagReader reader;
    return useID3v2 ? reader.readID3v2(filename) : reader.readID3v1(filename);
}

QString tags_ReadLyrics(const QString& filename) {
    clsID3v2 tag;
    tag.setFilename(filename);
    return tag.Lyrics();
}

void mnuTagsUseID3v2Tags_Click(MainContext& ctx) {
    Commands& c = ctx.commands();
    const QString menu = QStringLiteral("mnuTagsUseID3v2Tags");
    const bool on = !c.isChecked(menu);
    c.setChecked(menu, on);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("UseID3v2Tags"),
                   on ? QStringLiteral("1") : QStringLiteral("0"));
    // With no rows there is nothing to refresh, and nothing to ask (this runs at start-up too).
    if (ctx.lstvPlaylist().count() == 0) return;
    if (settings_IsOn(QStringLiteral("Settings"), QStringLiteral("AskConfirmationToUpdatePlaylist"),
                      QStringLiteral("1"))) {
        const int answer = Dialogs::msgBox(
            QStringLiteral("The playlist setting has not been updated and saved.\n\nWould you "
                           "like all of the media files to be updated in the playlist to reflect "
                           "this change?"),
            Dialogs::vbExclamation | Dialogs::vbYesNo,
            QStringLiteral("Update Playlist Confirmation"));
        if (answer != Dialogs::vbYes) return;
    }
    playlist_ShowMP3Data(ctx, false);
}

QString tags_SelectedTagText(const ListModel& list) {
    QStringList lines;
    for (int i = 0; i < list.count(); ++i)
        if (list.isSelected(i))
            lines << list.text(i, PlaylistColumn::Artist) + QStringLiteral(" - ") +
                         list.text(i, PlaylistColumn::Title);
    return lines.join(QLatin1Char('\n'));
}

namespace {
// When tags are read is one choice: as rows are added, or as they are played.
void mnuTagsShowTags_Click(MainContext& ctx, bool whenAdded) {
    Commands& c = ctx.commands();
    c.setChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"), whenAdded);
    c.setChecked(QStringLiteral("mnuTagsShowTagsAsFilesArePlayed"), !whenAdded);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("TagsShowTagsAsFilesAreAdded"),
                   whenAdded ? QStringLiteral("1") : QStringLiteral("0"));
    settings_Write(QStringLiteral("Settings"), QStringLiteral("TagsShowTagsAsFilesArePlayed"),
                   whenAdded ? QStringLiteral("0") : QStringLiteral("1"));
}
} // namespace

void Tags_install(MainContext& ctx) {
    // Tag writes a kill cut short in an earlier run are rolled back or cleared away.
    TagShift::recoverAll();
    playlist_SetTagReader(std::make_shared<ID3TagReader>());
    // The queue matches albums from the chosen tag and genres from ID3v1 only.
    AdvancedQueue::setTagReader(
        [](const QString& filename, bool id3v2, AdvancedQueue::TagFields& out) {
            clsID3v1 v1;
            v1.setFilename(filename);
            out.genre = v1.Genre();
            if (id3v2) {
                clsID3v2 v2;
                v2.setFilename(filename);
                out.artist = v2.Artist();
                out.album = v2.Album();
                out.year = v2.Year();
            } else {
                out.artist = v1.Artist();
                out.album = v1.Album();
                out.year = v1.Year();
            }
            return true;
        });
    Commands& c = ctx.commands();
    c.action(QStringLiteral("mnuTagsUseID3v2Tags"))->setCheckable(true);
    c.setHandler(QStringLiteral("mnuTagsUseID3v2Tags"), [&ctx] { mnuTagsUseID3v2Tags_Click(ctx); });
    c.setHandler(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"),
                 [&ctx] { mnuTagsShowTags_Click(ctx, true); });
    c.setHandler(QStringLiteral("mnuTagsShowTagsAsFilesArePlayed"),
                 [&ctx] { mnuTagsShowTags_Click(ctx, false); });
    // The editor and the rename and mass tools.
    c.setHandler(QStringLiteral("mnuProperties"), [&ctx] { mnuProperties_Click(ctx); });
    for (const char* name : {"mnuRenameFilename", "mnuSelectedRenameFilename"})
        c.setHandler(QLatin1String(name), [&ctx] { mnuSelectedRenameFilename_Click(ctx); });
    c.setHandler(QStringLiteral("mnuPlaylistRenameAllFilenames"),
                 [&ctx] { mnuPlaylistRenameAllFilenames_Click(ctx); });
    c.setHandler(QStringLiteral("mnuPlaylistEditAllTags"),
                 [&ctx] { mnuPlaylistEditAllTags_Click(ctx); });
    c.add(QStringLiteral("mnuSelectedCopyTAG"), QStringLiteral("Copy &TAG"));
    c.setHandler(QStringLiteral("mnuSelectedCopyTAG"), [&ctx] {
        const QString text = tags_SelectedTagText(ctx.lstvPlaylist());
        if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
    });
    c.setHandler(QStringLiteral("mnuPlaylistMoveMusicToFolder"),
                 [&ctx] { mnuPlaylistMoveMusicToFolder_Click(ctx); });
}
