#include "tags/RenameRules.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "core/wmpPlayer.h"
#include "playback/AdjustVolumes.h"
#include "playlists/PlaylistRows.h"
#include "stats/Tracking.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

#include <QFile>
#include <QFileInfo>

const QStringList& rename_Patterns() {
    static const QStringList patterns{
        QStringLiteral("1.  Artist - Title"),         QStringLiteral("2.  Title - Artist"),
        QStringLiteral("3.  Artist - Album - Title"), QStringLiteral("4.  Artist - Title - Album"),
        QStringLiteral("5.  Title - Artist - Album"), QStringLiteral("6.  Album - Artist - Title"),
        QStringLiteral("7.  Album - Title - Artist")};
    return patterns;
}

const QString& rename_ForbiddenCharacters() {
    static const QString chars = QStringLiteral("\\/:*?\"<>|");
    return chars;
}

QString rename_CleanName(const QString& name) {
    QString out = name;
    for (const QChar c : rename_ForbiddenCharacters())
        out.remove(c);
    return out;
}

bool rename_HasForbidden(const QString& name) {
    for (const QChar c : rename_ForbiddenCharacters())
        if (name.contains(c)) return true;
    return false;
}

QString rename_BuildName(int pattern, const QString& artist, const QString& title,
                         const QString& album, int number, const QString& extension) {
    QStringList parts;
    switch (pattern) {
    case 1:
        parts = {title, artist};
        break;
    case 2:
        parts = {artist, album, title};
        break;
    case 3:
        parts = {artist, title, album};
        break;
    case 4:
        parts = {title, artist, album};
        break;
    case 5:
        parts = {album, artist, title};
        break;
    case 6:
        parts = {album, title, artist};
        break;
    default:
        parts = {artist, title};
        break;
    }
    QString name = parts.join(QStringLiteral(" - "));
    if (number >= 0)
        name = QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')) + QStringLiteral(" - ") +
               name;
    return name + QLatin1Char('.') + extension.toLower();
}

bool rename_IsUsableName(const QString& name) {
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String("..")) return false;
    if (name.contains(QLatin1Char('/')) || name.contains(QChar(0))) return false;
    return QFile::encodeName(name).size() <= 255;
}

bool tags_IsTagged(const QString& filename) {
    const QString ext = modFiles::file_GetExtension(filename).toLower();
    return ext == QLatin1String("mp3") || ext == QLatin1String("mp2") ||
           ext == QLatin1String("mp1");
}

namespace {
template <typename Tag> TagTexts textsOf(const QString& filename) {
    Tag tag;
    tag.setFilename(filename);
    return {tag.Artist(), tag.Title(), tag.Album(), tag.Year()};
}
} // namespace

TagTexts tags_ReadTexts(const QString& filename, bool id3v2) {
    return id3v2 ? textsOf<clsID3v2>(filename) : textsOf<clsID3v1>(filename);
}

bool tags_IsLoaded(MainContext& ctx, const QString& filename) {
    const QString loaded = ctx.player().FileName();
    return !loaded.isEmpty() && loaded.toLower() == filename.toLower();
}

void rename_Carry(MainContext& ctx, const QString& oldPath, const QString& newPath) {
    Tracking::of(ctx).tracking_UpdateFilename(oldPath, newPath);
    AdjustVolumes::of(ctx).volumes_UpdateFilename(oldPath, newPath);
    ListModel& rows = ctx.lstvPlaylist();
    for (int i = 0; i < rows.count(); ++i)
        if (rows.text(i, PlaylistColumn::Filename) == oldPath)
            rows.setText(i, PlaylistColumn::Filename, newPath);
}

int tags_SelectedFileRow(MainContext& ctx, const QString& title) {
    ListModel& rows = ctx.lstvPlaylist();
    const QString ending = QStringLiteral("\n\nThis function will not continue.");
    const auto refuse = [&](const QString& text) {
        Dialogs::msgBox(text + ending, Dialogs::vbExclamation, title);
        return -1;
    };
    if (listview_SelectedCount(rows) > 1)
        return refuse(QStringLiteral("You have selected more than 1 song from the playlist."));
    const int row = rows.selectedItem();
    if (row < 0) return -1;
    const QString file = rows.text(row, PlaylistColumn::Filename);
    if (!QFileInfo::exists(file))
        return refuse(
            QStringLiteral("The filename that you have selected from the list does not exist."));
    if (tags_IsLoaded(ctx, file))
        return refuse(QStringLiteral("The filename that you have selected from the list is being "
                                     "used by %1.")
                          .arg(App::Title()));
    return row;
}
