#pragma once
#include "tags/TagBatch.h"

#include <QString>

// Writes the same artist, album, year, comment and genre into the tags of every tagged file of
// the playlist. An empty field keeps each file's own ID3v1 value.
class MassTagEdit : public TagBatch {
    Q_OBJECT
public:
    struct Options {
        QString artist, album, year, comments;
        int genre = 0;
        bool editID3v2 = false;
        bool clearTitle = false;
    };

    MassTagEdit(MainContext& ctx, const Options& options, QObject* parent = nullptr);

    int edited() const { return m_edited; }
    static QString title() { return QStringLiteral("Mass Tag Editing Error"); }

protected:
    void doRow(int row) override;
    QString busyText() const override;

private:
    void report(const QString& first, const QString& file);
    Options m_options;
    int m_edited = 0;
};
