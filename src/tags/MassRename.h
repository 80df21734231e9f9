#pragma once
#include "tags/TagBatch.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

// Renames every tagged file of the playlist from its tags. Each file renamed is carried to its
// rows at once and to the play counts and stored volumes at the end of the slice, so that a
// cancel or a stop leaves the three agreeing; the two lists are written at most once a second.
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
    QList<QPair<QString, QString>> m_pending;
    QElapsedTimer m_sinceSave;
    bool m_unsaved = false;
    int m_renamed = 0;
    int m_failed = 0;
};
