#pragma once
#include "core/ListModel.h"
#include "tags/TagBatch.h"

#include <QString>

// Moves or copies the tagged files of the playlist whose artist, album or year is the search
// text (whole field, case-blind) into one folder. A name taken there gets "name (2).ext" rather
// than replacing a file. The rows keep their old names.
class MoveToFolder : public TagBatch {
    Q_OBJECT
public:
    struct Options {
        int searchOption = 0; // 0 artist, 1 album, 2 year
        QString search;
        QString destination;
        bool searchID3v2 = false;
        bool copyFiles = false;
    };

    MoveToFolder(MainContext& ctx, const Options& options, ListModel& items,
                 QObject* parent = nullptr);

    static QString title() { return QStringLiteral("Move Music To Folder Error"); }
    // Whether a tag field matches the search text as the window searches.
    static bool matches(const QString& field, const QString& search);

protected:
    void doRow(int row) override;
    QString busyText() const override;

private:
    void report(const QString& first, const QString& file);
    Options m_options;
    ListModel& m_items;
};

// Appends one row to the list of files moved.
void moveto_AddItem(ListModel& items, const QString& artist, const QString& title);
