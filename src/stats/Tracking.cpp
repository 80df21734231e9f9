#include "stats/Tracking.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "playlists/PlaylistRows.h"
#include "playlists/StoredList.h"
#include "stats/FrmTracking.h"

#include <QHash>
#include <algorithm>

namespace {

const QString kSettings = QStringLiteral("Settings");
const QString kTrackKey = QStringLiteral("AlwaysTrackMediaFilesPlayed");
const QString kHeadersKey = QStringLiteral("ShowTrackingHeaders");

// The commands that need rows, and the box on, to be of use.
const char* const kRowCommands[] = {"cmdClear",          "cmdPlay",         "mnuTop10Entries",
                                    "mnuTop20Entries",   "mnuTop30Entries", "mnuUseAllTopEntries",
                                    "mnuRemoveSelected", "mnuClear"};

// A count as the list shows it: at least two digits.
QString countText(int n) {
    return n < 0 ? QString::number(n) : QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

// A count cell as a 16-bit number; what is not a number counts as none.
int countOf(const QString& cell) {
    bool ok = false;
    const int n = cell.trimmed().toInt(&ok);
    return ok ? qBound(-32768, n, 32767) : 0;
}

} // namespace

Tracking& Tracking::of(MainContext& ctx) {
    const QString name = QStringLiteral("FrmTracking");
    if (auto* t = ctx.findChild<Tracking*>(name, Qt::FindDirectChildrenOnly)) return *t;
    auto* t = new Tracking(ctx, &ctx);
    t->setObjectName(name);
    t->Form_Load();
    return *t;
}

QString Tracking::filePath() {
    return App::file(QStringLiteral("tracking.ssb"));
}

Tracking::Tracking(MainContext& ctx, QObject* parent)
    : QObject(parent), m_ctx(ctx),
      m_items({QStringLiteral("Artist:"), QStringLiteral("Title:"), QStringLiteral("Played:"),
               QStringLiteral("Filename:")}) {
    m_items.setObjectName(QStringLiteral("lstvItems"));
    Commands& c = m_controls;
    c.add(QStringLiteral("chkAlwaysUseTracking"),
          QStringLiteral("Always track everything played..."), true);
    c.add(QStringLiteral("cmdClear"), QStringLiteral("« &Clear"));
    c.add(QStringLiteral("cmdPlay"), QStringLiteral("&Play »"));
    c.add(QStringLiteral("mnuShowHeaders"), QStringLiteral("Show &Headers..."), true);
    c.add(QStringLiteral("mnuRemoveSelected"), QStringLiteral("Remove:  &Selected..."));
    c.add(QStringLiteral("mnuRemoveDeadFilenames"), QStringLiteral("Remove:  &Dead Filenames..."));
    c.add(QStringLiteral("mnuResetPlayCounts"), QStringLiteral("&Reset Play Counts..."));
    c.add(QStringLiteral("mnuClear"), QStringLiteral("&Clear..."));
    c.add(QStringLiteral("mnuTop10Entries"), QStringLiteral("Top &10 Entries..."));
    c.add(QStringLiteral("mnuTop20Entries"), QStringLiteral("Top &20 Entries..."));
    c.add(QStringLiteral("mnuTop30Entries"), QStringLiteral("Top &30 Entries..."));
    c.add(QStringLiteral("mnuUseAllTopEntries"), QStringLiteral("Use &All Top Entries..."));

    c.setHandler(QStringLiteral("chkAlwaysUseTracking"), [this] { setTracking(!tracking()); });
    c.setHandler(QStringLiteral("cmdClear"), [this] { cmdClear_Click(); });
    c.setHandler(QStringLiteral("mnuClear"), [this] { cmdClear_Click(); });
    c.setHandler(QStringLiteral("cmdPlay"), [this] { cmdPlay_Click(); });
    c.setHandler(QStringLiteral("mnuUseAllTopEntries"), [this] { cmdPlay_Click(); });
    c.setHandler(QStringLiteral("mnuTop10Entries"), [this] { tracking_SendTop(10); });
    c.setHandler(QStringLiteral("mnuTop20Entries"), [this] { tracking_SendTop(20); });
    c.setHandler(QStringLiteral("mnuTop30Entries"), [this] { tracking_SendTop(30); });
    c.setHandler(QStringLiteral("mnuShowHeaders"), [this] { mnuShowHeaders_Click(); });
    c.setHandler(QStringLiteral("mnuRemoveSelected"), [this] { mnuRemoveSelected_Click(); });
    c.setHandler(QStringLiteral("mnuRemoveDeadFilenames"),
                 [this] { mnuRemoveDeadFilenames_Click(); });
    c.setHandler(QStringLiteral("mnuResetPlayCounts"), [this] { mnuResetPlayCounts_Click(); });
}

void Tracking::Form_Load() {
    m_items.clear();
    StoredList::load(m_items, filePath());
    m_headers = settings_IsOn(kSettings, kHeadersKey, QStringLiteral("0"));
    m_controls.setChecked(QStringLiteral("mnuShowHeaders"), m_headers);
    Q_EMIT headersChanged(m_headers);
    m_controls.setChecked(QStringLiteral("chkAlwaysUseTracking"),
                          settings_IsOn(kSettings, kTrackKey, QStringLiteral("1")));
    chkAlwaysUseTracking_Click();
    sortByCount();
    tracking_UpdateCaption();
}

void Tracking::sortByCount() {
    // The control's text sort: "100" comes below "99", which is the order users know.
    m_items.setSorted(false);
    m_items.setSortKey(Played);
    m_items.setSortOrder(1);
    m_items.setSorted(true);
}

void Tracking::setTracking(bool on) {
    m_controls.setChecked(QStringLiteral("chkAlwaysUseTracking"), on);
    chkAlwaysUseTracking_Click();
}

void Tracking::chkAlwaysUseTracking_Click() {
    const bool on = tracking();
    if (!on || m_items.count() > 0)
        for (const char* name : kRowCommands)
            m_controls.setEnabled(QString::fromLatin1(name), on);
    m_items.setEnabled(on);
    const QString caption =
        on ? QStringLiteral("Tracking - [Enabled]") : QStringLiteral("Tracking - [Disabled]");
    if (caption != m_caption) Q_EMIT captionChanged(m_caption = caption);
    settings_Write(kSettings, kTrackKey, on ? QStringLiteral("1") : QStringLiteral("0"));
}

void Tracking::tracking_Add(const QString& artist, const QString& title, const QString& filename) {
    if (!tracking() || filename.isEmpty()) return;
    const int row = StoredList::findFile(m_items, Filename, filename);
    if (row >= 0) {
        // Artist and title stay as they were at the first play.
        const int n = countOf(m_items.text(row, Played));
        m_items.setText(row, Played, countText(n < 32767 ? n + 1 : n));
    } else {
        m_items.addRow({artist, title, QStringLiteral("01"), filename});
    }
    sortByCount();
    save();
    tracking_UpdateCaption();
}

void Tracking::tracking_UpdateFilename(const QString& oldName, const QString& newName) {
    if (oldName.isEmpty()) return;
    const int row = StoredList::findFile(m_items, Filename, oldName);
    if (row >= 0) m_items.setText(row, Filename, newName);
    save();
}

void Tracking::tracking_UpdateFilenames(const QList<QPair<QString, QString>>& renames, bool write) {
    if (renames.isEmpty()) return;
    StoredList::renameFiles(m_items, Filename, renames);
    if (write) save();
}

void Tracking::tracking_UpdateCaption() {
    const int n = m_items.count();
    const QString text =
        n == 0 ? QStringLiteral("Most commonly played media files:")
               : QString::number(n) + QStringLiteral(" most commonly played media files:");
    if (text != m_label) Q_EMIT labelChanged(m_label = text);
}

void Tracking::tracking_SendTop(int count) {
    m_ctx.commands().run(QStringLiteral("mnuNew"));
    if (m_items.count() < count) {
        cmdPlay_Click();
        return;
    }
    for (int i = 0; i < count; ++i)
        playlist_AddSong(m_ctx, QString(), QString(), QString(), m_items.text(i, Filename));
    listview_Renumber(m_ctx.lstvPlaylist());
    playlist_ShowMP3Data(m_ctx, false);
    m_ctx.call(m_ctx.window_UncheckMenus);
    window_WriteLog(QStringLiteral("Top %1 tracks in the Tracking window were sent to the main "
                                   "windows playlist.")
                        .arg(count));
}

void Tracking::cmdPlay_Click() {
    if (m_items.count() == 0) return;
    m_ctx.commands().run(QStringLiteral("mnuNew"));
    // A song played once does not take part.
    for (int i = 0; i < m_items.count(); ++i)
        if (countOf(m_items.text(i, Played)) > 1)
            playlist_AddSong(m_ctx, QString(), QString(), QString(), m_items.text(i, Filename));
    ListModel& playlist = m_ctx.lstvPlaylist();
    playlist_ShowMP3Data(m_ctx, false);
    listview_Renumber(playlist);
    m_ctx.call(m_ctx.window_UncheckMenus);
    window_WriteLog(QStringLiteral("Tracking list was exported into the main window."));
    if (playlist.count() == 0) return; // nothing to start, and nothing to complain about
    if (!listview_HasSelection(playlist)) listview_SelectItem(playlist, 1);
    if (m_ctx.player_Play) m_ctx.player_Play(1);
}

void Tracking::cmdClear_Click() {
    if (Dialogs::msgBox(QStringLiteral("Once the tracking list has been cleared, you will not be "
                                       "able to get it back.\n\nDo you wish to continue?"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Clear Tracking List Confirmation")) != Dialogs::vbYes)
        return;
    listview_Clear(m_items);
    save();
    tracking_UpdateCaption();
}

void Tracking::mnuResetPlayCounts_Click() {
    if (Dialogs::msgBox(QStringLiteral("Once the tracking list has been reset, you will not be "
                                       "able to get the orginal numbers back.\n\nDo you wish to "
                                       "continue?"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Reset Tracking List Confirmation")) != Dialogs::vbYes)
        return;
    for (int i = 0; i < m_items.count(); ++i)
        m_items.setText(i, Played, QStringLiteral("00"));
    save();
}

void Tracking::mnuRemoveDeadFilenames_Click() {
    listview_RemoveDeadEntries(m_items, Filename);
    save();
    tracking_UpdateCaption();
}

void Tracking::mnuRemoveSelected_Click() {
    // The file follows at the next change.
    listview_RemoveSelected(m_items);
    tracking_UpdateCaption();
}

void Tracking::mnuShowHeaders_Click() {
    m_headers = !m_headers;
    m_controls.setChecked(QStringLiteral("mnuShowHeaders"), m_headers);
    settings_Write(kSettings, kHeadersKey, m_headers ? QStringLiteral("1") : QStringLiteral("0"));
    Q_EMIT headersChanged(m_headers);
}

bool Tracking::Form_KeyDown(int keyCode) {
    if (keyCode == 46) {
        m_controls.runIfEnabled(QStringLiteral("mnuRemoveSelected"));
        return true;
    }
    if (keyCode == 112) {
        mnuShowHeaders_Click();
        return true;
    }
    return false;
}

void Tracking::tmrWindowUpdate_Timer() {
    if (!tracking()) return;
    const bool rows = m_items.count() > 0;
    for (const char* name : kRowCommands)
        m_controls.setEnabled(QString::fromLatin1(name), rows);
    for (const char* name : {"mnuRemoveDeadFilenames", "mnuResetPlayCounts"})
        m_controls.setEnabled(QString::fromLatin1(name), rows);
}

bool Tracking::save() {
    return StoredList::save(m_items, filePath());
}

void Tracking_install(MainContext& ctx) {
    Tracking::of(ctx); // loaded at start-up: it counts while hidden
    ctx.tracking_Add = [&ctx](const QString& artist, const QString& title, const QString& name) {
        Tracking::of(ctx).tracking_Add(artist, title, name);
    };
    ctx.commands().setHandler(QStringLiteral("mnuTracking"), [&ctx] { FrmTracking::showFor(ctx); });
}
