#pragma once
#include "tags/TagBatch.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

// Renames every tagged file of the playlist from its tags. Each file renamed is carried to its
// rows at once, and to the play counts and stored volumes about once a second and at the end
// (a cancel included), when both lists are written.
class MassRename : public TagBatch {
    Q_OBJECT
public:
    struct Options {
        int pattern = 0;
        bool useID3v2 = false;
        bool addNumbers = false;
    };

    MassRename(MainContext& ctx, const Options& options, QObject* parent = nullptr);

    int renamed() const { return m_renamed; }
    int failed() const { return m_failed; }

    static QString title() { return QStringLiteral("Mass File Renaming Error"); }

protected:
    void doRow(int row) override;
    void endSlice(bool last) override;
    QString busyText() const override;

private:
    Options m_options;
    // Playlist rows (0-based) by file name, made once: the same file may stand in many rows.
    QHash<QString, QList<int>> m_rowsOf;
    bool m_indexed = false;
    QList<QPair<QString, QString>> m_pendingTracking, m_pendingVolumes;
    bool m_volumesDue = false;
    QElapsedTimer m_sinceSave;
    int m_renamed = 0;
    int m_failed = 0;
};
