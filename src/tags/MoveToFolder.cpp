#include "tags/MoveToFolder.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "playlists/PlaylistRows.h"
#include "tags/RenameRules.h"
#include "tags/SafeFiles.h"

#include <QFileInfo>
#include <cstring>

void moveto_AddItem(ListModel& items, const QString& artist, const QString& title) {
    items.addRow({QString(), artist, title});
}

MoveToFolder::MoveToFolder(MainContext& ctx, const Options& options, ListModel& items,
                           QObject* parent)
    : TagBatch(ctx, parent), m_options(options), m_items(items) {}

QString MoveToFolder::busyText() const {
    return QStringLiteral("Moving music to a folder, please wait...");
}

bool MoveToFolder::matches(const QString& field, const QString& search) {
    return field.toLower() == search.toLower();
}

void MoveToFolder::report(const QString& first, const QString& file) {
    Dialogs::msgBox(first + QStringLiteral("\n\n") + file +
                        QStringLiteral("\n\nThis file will not be moved/copied."),
                    Dialogs::vbExclamation, title());
}

void MoveToFolder::doRow(int row) {
    ListModel& rows = m_ctx.lstvPlaylist();
    if (row > rows.count()) return;
    const QString file = rows.text(row - 1, PlaylistColumn::Filename);
    if (!tags_IsTagged(file)) return;
    const TagTexts t = tags_ReadTexts(file, m_options.searchID3v2);
    const QString &artist = t.artist, &songTitle = t.title, &year = t.year, &album = t.album;
    const QString& field =
        m_options.searchOption == 1 ? album : (m_options.searchOption == 2 ? year : artist);
    if (!matches(field, m_options.search)) return;
    if (tags_IsLoaded(m_ctx, file)) {
        report(QStringLiteral("It has been detected that the song you are trying to move/copy is "
                              "being used by %1:")
                   .arg(App::Title()),
               file);
        return;
    }
    if (!QFileInfo::exists(file)) {
        report(QStringLiteral("It has been detected that the song you are trying to move/copy "
                              "does not exist:"),
               file);
        return;
    }
    const SafeFiles::Outcome done =
        SafeFiles::transferToFolder(file, m_options.destination, m_options.copyFiles);
    if (!done.ok) {
        report(QStringLiteral("The file could not be %1 (%2):")
                   .arg(m_options.copyFiles ? QStringLiteral("copied") : QStringLiteral("moved"),
                        QString::fromLocal8Bit(std::strerror(done.error))),
               file);
        return;
    }
    // The control's name stands literally in these lines, as it always has.
    window_WriteLog(file + (m_options.copyFiles
                                ? QStringLiteral(" was copied to txtDestination.Text.")
                                : QStringLiteral(" was moved to txtDestination.Text.")));
    moveto_AddItem(m_items, artist, songTitle);
}
