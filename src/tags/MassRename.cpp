#include "tags/MassRename.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "playback/AdjustVolumes.h"
#include "playlists/PlaylistRows.h"
#include "stats/Tracking.h"
#include "tags/RenameRules.h"
#include "tags/SafeFiles.h"

#include <QFileInfo>

using namespace PlaylistColumn;

MassRename::MassRename(MainContext& ctx, const Options& options, QObject* parent)
    : TagBatch(ctx, parent), m_options(options) {}

QString MassRename::busyText() const {
    return QStringLiteral("Renaming the files of the playlist, please wait...");
}

void MassRename::doRow(int row) {
    ListModel& rows = m_ctx.lstvPlaylist();
    if (!m_indexed) {
        m_indexed = true;
        m_sinceSave.start();
        for (int i = 0; i < rows.count(); ++i)
            m_rowsOf[rows.text(i, Filename)].append(i);
    }
    if (row > rows.count()) return;
    const QString file = rows.text(row - 1, Filename);
    if (tags_IsLoaded(m_ctx, file)) {
        Dialogs::msgBox(QStringLiteral("It has been detected that the song you are trying to "
                                       "rename is being used by %1:\n\n%2\n\nThis file will not "
                                       "be renamed.")
                            .arg(App::Title(), file),
                        Dialogs::vbExclamation, title());
        return;
    }
    if (!QFileInfo::exists(file)) {
        Dialogs::msgBox(QStringLiteral("It has been detected that the song you are trying to "
                                       "rename does not exist:\n\n%1\n\nThis file will not be "
                                       "renamed.")
                            .arg(file),
                        Dialogs::vbExclamation, title());
        return;
    }
    if (!tags_IsTagged(file)) return;

    const TagTexts t = tags_ReadTexts(file, m_options.useID3v2);
    const QString &artist = t.artist, &songTitle = t.title, &album = t.album;
    const QString name = rename_CleanName(rename_BuildName(m_options.pattern, artist, songTitle,
                                                           album, m_options.addNumbers ? row : -1,
                                                           modFiles::file_GetExtension(file)));
    const QString folder = QFileInfo(file).path();
    const QString target =
        folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
    // The name is made from tags: it may be too long, or say nothing the folder can hold.
    const bool ok = rename_IsUsableName(name) && SafeFiles::renameNoReplace(file, target).ok;
    if (!ok) {
        ++m_failed;
        window_WriteLog(QStringLiteral("%1 could not be renamed to %2.").arg(file, target));
        return;
    }
    ++m_renamed;
    if (target != file) {
        m_pendingTracking.append({file, target});
        m_pendingVolumes.append({file, target});
        const QList<int> same = m_rowsOf.take(file);
        for (int i : same)
            if (i < rows.count() && rows.text(i, Filename) == file)
                rows.setText(i, Filename, target);
        m_rowsOf[target] += same;
    }
    window_WriteLog(QStringLiteral("%1 was renamed to %2.").arg(file, target));
}

void MassRename::endSlice(bool last) {
    // The lists are told in batches: each batch looks its rows up once and each list is written
    // whole, so neither happens once a file. The two lists take turns in two slices, so that
    // the window never waits for both at once.
    if (m_volumesDue || last) {
        m_volumesDue = false;
        AdjustVolumes& volumes = AdjustVolumes::of(m_ctx);
        volumes.volumes_UpdateFilenames(m_pendingVolumes, false);
        if (!m_pendingVolumes.isEmpty()) volumes.save();
        m_pendingVolumes.clear();
        if (!last) return;
    }
    if (!last && m_sinceSave.elapsed() < 1000) return;
    m_sinceSave.restart();
    Tracking& tracking = Tracking::of(m_ctx);
    tracking.tracking_UpdateFilenames(m_pendingTracking, false);
    if (!m_pendingTracking.isEmpty()) tracking.save();
    m_pendingTracking.clear();
    m_volumesDue = !last;
}
