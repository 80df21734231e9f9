#pragma once
#include "core/Commands.h"
#include "core/ListModel.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

class MainContext;

// The per-file volumes: the rules of the Adjust Volumes window. Its rows are the only store
// (volumes.ssb beside the program); it is loaded at start-up and lives as long as the context,
// because every song start asks it for a stored volume. The window only shows it.
class AdjustVolumes : public QObject {
    Q_OBJECT
public:
    enum Column : int { Artist = 0, Title = 1, Volume = 2, Filename = 3 };

    // The one list of a context, made and loaded on first use.
    static AdjustVolumes& of(MainContext& ctx);
    static QString filePath();

    explicit AdjustVolumes(QObject* parent = nullptr);

    ListModel& lstvItems() { return m_items; }
    // The window's buttons, menu items and check box as commands: cmdClear, mnuShowHeaders,
    // mnuRemoveSelected, mnuRemoveDeadFilenames, mnuClear, chkAlwaysAdjust (checkable).
    Commands& controls() { return m_controls; }
    QString caption() const { return m_caption; }
    bool headersVisible() const { return m_headers; }
    bool alwaysAdjust() { return m_controls.isChecked(QStringLiteral("chkAlwaysAdjust")); }

    void Form_Load();
    // The user ticks or clears the box.
    void setAlwaysAdjust(bool on);
    void chkAlwaysAdjust_Click();

    void volumes_Add(const QString& artist, const QString& title, int volume,
                     const QString& filename);
    // The stored slider position, -1 for none (or while the feature is off), 0 for an empty name.
    int volumes_GetVolume(const QString& filename);
    void volumes_UpdateFilename(const QString& oldName, const QString& newName);
    // Many renames (old, new) at once: one pass over the rows, and the list written once when
    // `write`, never once a file.
    void volumes_UpdateFilenames(const QList<QPair<QString, QString>>& renames, bool write = true);

    void cmdClear_Click();
    void mnuRemoveDeadFilenames_Click();
    void mnuRemoveSelected_Click();
    void mnuShowHeaders_Click();
    void tmrWindowUpdate_Timer();

    // Writes the whole list (or removes the file when it is empty).
    bool save();

Q_SIGNALS:
    void captionChanged(const QString& caption);
    void headersChanged(bool visible);

private:
    void setCaption(const QString& caption);
    void enableEditing(bool on);

    ListModel m_items;
    Commands m_controls;
    QString m_caption;
    bool m_headers = false;
};
