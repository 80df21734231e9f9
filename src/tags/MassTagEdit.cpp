#include "tags/MassTagEdit.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "playlists/PlaylistRows.h"
#include "tags/RenameRules.h"
#include "tags/SafeFiles.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

#include <QFileInfo>

MassTagEdit::MassTagEdit(MainContext& ctx, const Options& options, QObject* parent)
    : TagBatch(ctx, parent), m_options(options) {}

QString MassTagEdit::busyText() const {
    return QStringLiteral("Editing the tags of the playlist, please wait...");
}

void MassTagEdit::report(const QString& first, const QString& file) {
    Dialogs::msgBox(first + QStringLiteral("\n\n") + file +
                        QStringLiteral("\n\nThis file will not be edited."),
                    Dialogs::vbExclamation, title());
}

void MassTagEdit::doRow(int row) {
    ListModel& rows = m_ctx.lstvPlaylist();
    if (row > rows.count()) return;
    const QString file = rows.text(row - 1, PlaylistColumn::Filename);
    if (tags_IsLoaded(m_ctx, file)) {
        report(QStringLiteral("It has been detected that the song you are trying to edit is "
                              "being used by %1:")
                   .arg(App::Title()),
               file);
        return;
    }
    if (!QFileInfo::exists(file)) {
        report(QStringLiteral("It has been detected that the song you are trying to edit does "
                              "not exist:"),
               file);
        return;
    }
    if (!tags_IsTagged(file)) return;
    // Tested first so that a file never ends with one tag written and not the other.
    if (!SafeFiles::isWritable(file)) {
        report(QStringLiteral("It has been detected that the song you are trying to edit is "
                              "Read-Only:"),
               file);
        return;
    }

    clsID3v1 v1;
    v1.setFilename(file);
    const auto typed = [](const QString& box, const QString& label) {
        return box.isEmpty() ? label : box;
    };
    ID3v1Record record;
    record.Artist = typed(m_options.artist, v1.Artist());
    record.Album = typed(m_options.album, v1.Album());
    record.Year = typed(m_options.year, v1.Year());
    record.Comment = typed(m_options.comments, v1.Comment());
    record.Title = m_options.clearTitle ? QString() : v1.Title();
    record.Genre = uint8_t(m_options.genre);
    bool ok = media_WriteID3v1Record(file, record);
    if (ok && m_options.editID3v2) {
        clsID3v2 v2;
        v2.setFilename(file);
        v2.setArtist(record.Artist);
        v2.setAlbum(record.Album);
        v2.setYear(record.Year);
        v2.setComment(record.Comment);
        v2.setTitle(record.Title);
        ok = v2.Save();
    }
    if (!ok) {
        report(QStringLiteral("An error has occur while trying to write the ID3 Tag.  Make sure "
                              "that the file is not in use or read-only."),
               file);
        return;
    }
    ++m_edited;
    playlist_UpdateItem(m_ctx, row, false);
    window_WriteLog(file + QStringLiteral(" ID3 tag modified."));
}
