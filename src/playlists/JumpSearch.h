#pragma once
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

class ListModel;

// The search of "Jump To Media": the fields of every row, read once, and the test of a
// criteria against them. Fields are kept lower-cased, as every test compares them that way.
namespace JumpSearch {

enum Field : int { Artist = 0, Title, Album, Year, Genre, Filename, FieldCount };
enum Mode : int { WholeWord = 0, StartsWith, EndsWith, Contains };

struct Entry {
    QString artist, title; // as shown in the results
    std::array<QString, FieldCount> lower;
};

// The fields of one playlist row: an "mp3", "mp2" or "mp1" file speaks through its tags (ID3v2
// for artist, title, album and year when asked, the genre always from ID3v1); any other file
// through its row, without album or genre.
Entry readRow(const QStringList& cells, bool id3v2);

// The fields of a whole list, read a slice at a time so that a long list keeps the window alive.
class Index {
public:
    void reset(bool id3v2);
    // Reads up to `rows` more rows of `list`; true when every row is read.
    bool readMore(const ListModel& list, int rows);
    bool complete(const ListModel& list) const;
    int size() const { return int(m_entries.size()); }
    const Entry& at(int i) const { return m_entries[size_t(i)]; }
    void add(Entry entry) { m_entries.push_back(std::move(entry)); }

private:
    std::vector<Entry> m_entries;
    bool m_id3v2 = false;
};

struct Query {
    int searchBy = 0; // 0 all fields, 1..6 one field: Artist, Title, Album, Year, Genre, Filename
    int mode = WholeWord;
    bool notEqual = false; // the "<>" operator
    QString criteria;
    QStringList excluded; // trimmed parts of "Not To Include"; empty when it is off
};

// ", "-separated words of the box, each trimmed.
QStringList excludeList(const QString& text);
// One field (lower-cased) against the lower-cased criteria.
bool test(const QString& field, const QString& criteria, int mode, bool notEqual);
// The indexes (0-based) of the matching entries, in list order.
std::vector<int> search(const Index& index, const Query& query);

} // namespace JumpSearch

namespace JumpSearch {
// Fills the results list with the artist and title of each hit, numbered.
void showResults(ListModel& items, const Index& index, const std::vector<int>& hits);
} // namespace JumpSearch
