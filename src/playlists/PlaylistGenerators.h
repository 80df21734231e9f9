#pragma once
#include <QString>
#include <QStringList>
#include <vector>

class ListModel;
class MainContext;

// New playlist files made from the rows of the playlist without touching them: the rows whose
// artist, album or year equals a criterion, or a number of rows drawn at random. Both write
// through the list-file writer that Save uses.

// First letter of each word in capitals, the rest in small letters.
QString generate_ProperCase(const QString& text);
// A name that can be a file in the Playlists folder: no separator, no leading dot, nothing
// unprintable.
bool generate_IsFileName(const QString& name);

// Writes `rows` (seven cells each) as a list file, as Save writes the playlist. False when the
// file could not be written.
bool generate_WriteList(const QString& path, const std::vector<QStringList>& rows);

// The rows whose artist (option 0), album (1, read from the tags of MPEG files only) or year
// (2) equals the criterion, blind to case, numbered "001", "002"...; a slice at a time.
class PlaylistGenerator {
public:
    PlaylistGenerator(const ListModel& list, int option, const QString& criteria, bool id3v2);
    // Tests up to `rows` more rows; true when the list is done.
    bool step(int rows);
    void run() { step(m_count - m_next); }
    int done() const { return m_next; }
    const std::vector<QStringList>& matches() const { return m_matches; }

private:
    const ListModel& m_list;
    int m_option;
    QString m_criteria;
    bool m_id3v2;
    int m_count;
    int m_next = 0;
    std::vector<QStringList> m_matches;
};

// `count` distinct rows drawn at random from 1..rows, skipping rows whose Status is "Skip" when
// `noSkipped`; each row becomes "" and its six cells. Empty when the rows cannot supply the count
// (the draw would never end).
std::vector<QStringList> random_DrawRows(const ListModel& list, int count, bool noSkipped);
