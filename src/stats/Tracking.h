#pragma once
#include "core/Commands.h"
#include "core/ListModel.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

class MainContext;

// Play counts: the rules of the Tracking window. Its rows are the only store (tracking.ssb
// beside the program), loaded at start-up and counting whether the window shows or not.
class Tracking : public QObject {
    Q_OBJECT
public:
    enum Column : int { Artist = 0, Title = 1, Played = 2, Filename = 3 };

    // The one list of a context, made and loaded on first use.
    static Tracking& of(MainContext& ctx);
    static QString filePath();

    explicit Tracking(MainContext& ctx, QObject* parent = nullptr);

    ListModel& lstvItems() { return m_items; }
    // The window's buttons, menu items and check box as commands (chkAlwaysUseTracking is
    // checkable; cmdClear, cmdPlay, mnuTop10Entries, ... mnuClear).
    Commands& controls() { return m_controls; }
    QString caption() const { return m_caption; }
    QString label() const { return m_label; }
    bool headersVisible() const { return m_headers; }
    bool tracking() { return m_controls.isChecked(QStringLiteral("chkAlwaysUseTracking")); }

    void Form_Load();
    void setTracking(bool on);
    void chkAlwaysUseTracking_Click();

    void tracking_Add(const QString& artist, const QString& title, const QString& filename);
    void tracking_UpdateFilename(const QString& oldName, const QString& newName);
    // Many renames (old, new) at once: one pass over the rows, and the list written once when
    // `write`, never once a file.
    void tracking_UpdateFilenames(const QList<QPair<QString, QString>>& renames, bool write = true);
    void tracking_UpdateCaption();
    void tracking_SendTop(int count);

    void cmdPlay_Click();
    void cmdClear_Click();
    void mnuResetPlayCounts_Click();
    void mnuRemoveDeadFilenames_Click();
    void mnuRemoveSelected_Click();
    void mnuShowHeaders_Click();
    // Classic key codes: Delete (46), F1 (112). True when handled.
    bool Form_KeyDown(int keyCode);
    void tmrWindowUpdate_Timer();

    bool save();

Q_SIGNALS:
    void captionChanged(const QString& caption);
    void labelChanged(const QString& text);
    void headersChanged(bool visible);

private:
    void sortByCount();

    MainContext& m_ctx;
    ListModel m_items;
    Commands m_controls;
    QString m_caption;
    QString m_label;
    bool m_headers = false;
};

// The hook of song starts and the menu entry that shows the window.
void Tracking_install(MainContext& ctx);
