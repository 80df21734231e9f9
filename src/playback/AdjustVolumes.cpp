#include "playback/AdjustVolumes.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "playlists/StoredList.h"

#include <QHash>
#include <algorithm>

namespace {

const QString kSettings = QStringLiteral("Settings");
const QString kAlwaysKey = QStringLiteral("AlwaysUseVolumeAdjusting");
const QString kHeadersKey = QStringLiteral("ShowAdjustVolumesHeaders");

// One sort by `key`, whatever the list's sorting was before (the classic control re-sorts each
// time Sorted is set).
void sortBy(ListModel& list, int key, int order) {
    list.setSorted(false);
    list.setSortKey(key);
    list.setSortOrder(order);
    list.setSorted(true);
}

} // namespace

AdjustVolumes& AdjustVolumes::of(MainContext& ctx) {
    const QString name = QStringLiteral("FrmAdjustVolumes");
    if (auto* v = ctx.findChild<AdjustVolumes*>(name, Qt::FindDirectChildrenOnly)) return *v;
    auto* v = new AdjustVolumes(&ctx);
    v->setObjectName(name);
    v->Form_Load();
    return *v;
}

QString AdjustVolumes::filePath() {
    return App::file(QStringLiteral("volumes.ssb"));
}

AdjustVolumes::AdjustVolumes(QObject* parent)
    : QObject(parent), m_items({QStringLiteral("Artist:"), QStringLiteral("Title:"),
                                QStringLiteral("Volume:"), QStringLiteral("Filename:")}) {
    m_items.setObjectName(QStringLiteral("lstvItems"));
    m_controls.add(QStringLiteral("chkAlwaysAdjust"),
                   QStringLiteral("Always adjust volumes for songs in this list..."), true);
    m_controls.add(QStringLiteral("cmdClear"), QStringLiteral("&Clear »"));
    m_controls.add(QStringLiteral("mnuShowHeaders"), QStringLiteral("Show &Headers..."), true);
    m_controls.add(QStringLiteral("mnuRemoveSelected"), QStringLiteral("Remove:  &Selected..."));
    m_controls.add(QStringLiteral("mnuRemoveDeadFilenames"),
                   QStringLiteral("Remove:  &Dead Filenames..."));
    m_controls.add(QStringLiteral("mnuClear"), QStringLiteral("&Clear..."));
    m_controls.setHandler(QStringLiteral("chkAlwaysAdjust"),
                          [this] { setAlwaysAdjust(!alwaysAdjust()); });
    m_controls.setHandler(QStringLiteral("cmdClear"), [this] { cmdClear_Click(); });
    m_controls.setHandler(QStringLiteral("mnuClear"), [this] { cmdClear_Click(); });
    m_controls.setHandler(QStringLiteral("mnuShowHeaders"), [this] { mnuShowHeaders_Click(); });
    m_controls.setHandler(QStringLiteral("mnuRemoveSelected"),
                          [this] { mnuRemoveSelected_Click(); });
    m_controls.setHandler(QStringLiteral("mnuRemoveDeadFilenames"),
                          [this] { mnuRemoveDeadFilenames_Click(); });
}

void AdjustVolumes::Form_Load() {
    m_items.clear();
    StoredList::load(m_items, filePath());
    m_headers = settings_IsOn(kSettings, kHeadersKey, QStringLiteral("0"));
    m_controls.setChecked(QStringLiteral("mnuShowHeaders"), m_headers);
    Q_EMIT headersChanged(m_headers);
    m_controls.setChecked(QStringLiteral("chkAlwaysAdjust"),
                          settings_IsOn(kSettings, kAlwaysKey, QStringLiteral("0")));
    chkAlwaysAdjust_Click();
    sortBy(m_items, Artist, 1);
}

void AdjustVolumes::setAlwaysAdjust(bool on) {
    m_controls.setChecked(QStringLiteral("chkAlwaysAdjust"), on);
    chkAlwaysAdjust_Click();
}

void AdjustVolumes::enableEditing(bool on) {
    m_controls.setEnabled(QStringLiteral("cmdClear"), on && m_items.count() > 0);
    m_items.setEnabled(on);
    m_controls.setEnabled(QStringLiteral("mnuRemoveSelected"), on);
    m_controls.setEnabled(QStringLiteral("mnuClear"), on);
}

void AdjustVolumes::chkAlwaysAdjust_Click() {
    const bool on = alwaysAdjust();
    enableEditing(on);
    setCaption(on ? QStringLiteral("Adjust Volumes - [Enabled]")
                  : QStringLiteral("Adjust Volumes - [Disabled]"));
    settings_Write(kSettings, kAlwaysKey, on ? QStringLiteral("1") : QStringLiteral("0"));
}

void AdjustVolumes::setCaption(const QString& caption) {
    if (caption == m_caption) return;
    m_caption = caption;
    Q_EMIT captionChanged(caption);
}

void AdjustVolumes::volumes_Add(const QString& artist, const QString& title, int volume,
                                const QString& filename) {
    // The list only grows while the feature is on.
    if (!alwaysAdjust() || filename.isEmpty()) return;
    const int row = StoredList::findFile(m_items, Filename, filename);
    if (row >= 0) {
        m_items.setText(row, Volume, QString::number(qint16(volume)));
    } else {
        m_items.addRow({artist, title, QString::number(qint16(volume)), filename});
        sortBy(m_items, Volume, 1);
    }
    save();
}

int AdjustVolumes::volumes_GetVolume(const QString& filename) {
    if (!alwaysAdjust()) return -1;
    if (filename.isEmpty()) return 0;
    const int row = StoredList::findFile(m_items, Filename, filename);
    if (row < 0) return -1;
    // A cell that is not a number (a hand-edited file) counts as 0.
    bool ok = false;
    const int value = m_items.text(row, Volume).trimmed().toInt(&ok);
    return ok ? qint16(value) : 0;
}

void AdjustVolumes::volumes_UpdateFilename(const QString& oldName, const QString& newName) {
    if (oldName.isEmpty()) return;
    const int row = StoredList::findFile(m_items, Filename, oldName);
    if (row >= 0) m_items.setText(row, Filename, newName);
    save();
}

void AdjustVolumes::volumes_UpdateFilenames(const QList<QPair<QString, QString>>& renames,
                                            bool write) {
    if (renames.isEmpty()) return;
    StoredList::renameFiles(m_items, Filename, renames);
    if (write) save();
}

void AdjustVolumes::cmdClear_Click() {
    if (Dialogs::msgBox(QStringLiteral("Once the volumes list has been cleared, you will not be "
                                       "able to get it back.\n\nDo you wish to continue?"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo | 256,
                        QStringLiteral("Clear Volumes List Confirmation")) != Dialogs::vbYes)
        return;
    listview_Clear(m_items);
    save();
}

void AdjustVolumes::mnuRemoveDeadFilenames_Click() {
    listview_RemoveDeadEntries(m_items, Filename);
    save();
}

void AdjustVolumes::mnuRemoveSelected_Click() {
    // The file follows at the next change.
    listview_RemoveSelected(m_items);
}

void AdjustVolumes::mnuShowHeaders_Click() {
    m_headers = !m_headers;
    m_controls.setChecked(QStringLiteral("mnuShowHeaders"), m_headers);
    settings_Write(kSettings, kHeadersKey, m_headers ? QStringLiteral("1") : QStringLiteral("0"));
    Q_EMIT headersChanged(m_headers);
}

void AdjustVolumes::tmrWindowUpdate_Timer() {
    if (!alwaysAdjust()) return;
    const bool rows = m_items.count() > 0;
    for (const char* name : {"cmdClear", "mnuRemoveSelected", "mnuRemoveDeadFilenames", "mnuClear"})
        m_controls.setEnabled(QString::fromLatin1(name), rows);
}

bool AdjustVolumes::save() {
    return StoredList::save(m_items, filePath());
}
