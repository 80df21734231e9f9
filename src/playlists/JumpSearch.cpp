#include "playlists/JumpSearch.h"

#include "core/ListModel.h"
#include "core/modFiles.h"
#include "playlists/PlaylistRows.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

#include <QStringMatcher>

namespace JumpSearch {

Entry readRow(const QStringList& cells, bool id3v2) {
    using namespace PlaylistColumn;
    const QString filename = cells.value(PlaylistColumn::Filename);
    QString fields[FieldCount];
    const QString ext = modFiles::file_GetExtension(filename).toLower();
    if (ext == QLatin1String("mp3") || ext == QLatin1String("mp2") || ext == QLatin1String("mp1")) {
        clsID3v1 v1;
        v1.setFilename(filename);
        fields[Genre] = v1.Genre();
        if (id3v2) {
            clsID3v2 v2;
            v2.setFilename(filename);
            fields[Field::Artist] = v2.Artist();
            fields[Field::Title] = v2.Title();
            fields[Field::Year] = v2.Year();
            fields[Album] = v2.Album();
        } else {
            fields[Field::Artist] = v1.Artist();
            fields[Field::Title] = v1.Title();
            fields[Field::Year] = v1.Year();
            fields[Album] = v1.Album();
        }
    } else {
        fields[Field::Artist] = cells.value(PlaylistColumn::Artist);
        fields[Field::Title] = cells.value(PlaylistColumn::Title);
        fields[Field::Year] = cells.value(PlaylistColumn::Year);
    }
    fields[Field::Filename] = filename;
    Entry e{fields[Field::Artist], fields[Field::Title], {}};
    for (int f = 0; f < FieldCount; ++f)
        e.lower[size_t(f)] = fields[f].toLower();
    return e;
}

void Index::reset(bool id3v2) {
    m_entries.clear();
    m_id3v2 = id3v2;
}

bool Index::complete(const ListModel& list) const {
    return int(m_entries.size()) == list.count();
}

bool Index::readMore(const ListModel& list, int rows) {
    const int end = qMin(list.count(), size() + rows);
    m_entries.reserve(size_t(list.count()));
    for (int i = size(); i < end; ++i)
        m_entries.push_back(readRow(list.rowTexts(i), m_id3v2));
    return complete(list);
}

QStringList excludeList(const QString& text) {
    QStringList out;
    for (const QString& part : text.split(QLatin1Char(',')))
        out << part.trimmed();
    return out;
}

bool test(const QString& field, const QString& criteria, int mode, bool notEqual) {
    bool hit = false;
    switch (mode) {
    case StartsWith:
        hit = field.startsWith(criteria);
        break;
    case EndsWith:
        hit = field.endsWith(criteria);
        break;
    case Contains:
        hit = field.contains(criteria);
        break;
    default:
        hit = field == criteria;
        break;
    }
    return hit != notEqual;
}

namespace {
// The field as it is (lower-cased) against the words as typed: a word with capitals never
// excludes anything.
bool isExcluded(const QString& field, const QStringList& excluded) {
    for (const QString& word : excluded)
        if (field == word) return true;
    return false;
}
} // namespace

std::vector<int> search(const Index& index, const Query& query) {
    std::vector<int> out;
    const QString criteria = query.criteria.toLower();
    // "Contains" looks for the same text in every field: its skip table is made once.
    const QStringMatcher matcher(criteria);
    const auto matches = [&](const QString& field) {
        if (query.mode == Contains) return (matcher.indexIn(field) >= 0) != query.notEqual;
        return test(field, criteria, query.mode, query.notEqual);
    };
    const int n = index.size();
    if (query.searchBy > 0 && query.searchBy <= FieldCount) {
        const size_t f = size_t(query.searchBy - 1);
        for (int i = 0; i < n; ++i) {
            const QString& field = index.at(i).lower[f];
            if (matches(field) && !isExcluded(field, query.excluded)) out.push_back(i);
        }
        return out;
    }
    for (int i = 0; i < n; ++i) {
        const auto& fields = index.at(i).lower;
        bool hit = false;
        for (const QString& field : fields)
            if ((hit = matches(field))) break;
        if (!hit) continue;
        bool excluded = false;
        if (!query.excluded.isEmpty())
            for (const QString& field : fields)
                if ((excluded = isExcluded(field, query.excluded))) break;
        if (!excluded) out.push_back(i);
    }
    return out;
}

} // namespace JumpSearch

#include "core/Settings.h"
#include "core/modControls.h"

namespace JumpSearch {

namespace {
// Number texts as listview_Renumber writes them, kept between searches: a keystroke then makes
// no number twice.
const QString& numberText(int n, int width) {
    static std::vector<QString> cache[12];
    std::vector<QString>& texts = cache[qBound(0, width, 11)];
    while (int(texts.size()) < n) {
        QString t = QString::number(texts.size() + 1);
        if (t.size() < width) t.prepend(QString(width - t.size(), QLatin1Char('0')));
        texts.push_back(std::move(t));
    }
    return texts[size_t(n - 1)];
}
} // namespace

void showResults(ListModel& items, const Index& index, const std::vector<int>& hits) {
    // Numbered while the rows are made: renumbering a hundred thousand rows one cell at a time
    // would cost more than the search.
    const int width =
        settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UseNumberPaddingInPlaylists"),
                      QStringLiteral("1"))
            ? qMax(2, int(QString::number(hits.size()).size()))
            : 0;
    listview_Clear(items);
    items.appendRows(int(hits.size()), [&](int row, int column) -> QAnyStringView {
        const Entry& e = index.at(hits[size_t(row)]);
        return column == 0   ? QAnyStringView(numberText(row + 1, width))
               : column == 1 ? QAnyStringView(e.artist)
                             : QAnyStringView(e.title);
    });
    if (items.count() == 0) return;
    listview_SelectItem(items, 1); // as a list selects its first row once filled
    items.setCurrentRow(0);
}

} // namespace JumpSearch
