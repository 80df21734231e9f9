#include "playlists/PlaylistGenerators.h"

#include "core/ListModel.h"
#include "core/modFiles.h"
#include "core/modMath.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistRows.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

using namespace PlaylistColumn;

QString generate_ProperCase(const QString& text) {
    QString out = text;
    bool wordStart = true;
    for (QChar& c : out) {
        if (c.isSpace()) {
            wordStart = true;
            continue;
        }
        c = wordStart ? c.toUpper() : c.toLower();
        wordStart = false;
    }
    return out;
}

bool generate_IsFileName(const QString& name) {
    if (name.isEmpty() || name.startsWith(QLatin1Char('.'))) return false;
    for (QChar c : name)
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c.unicode() < 32) return false;
    return name.toUtf8().size() + 4 <= 255;
}

bool generate_WriteList(const QString& path, const std::vector<QStringList>& rows) {
    ListModel list({QStringLiteral("Number"), QStringLiteral("Artist"), QStringLiteral("Title"),
                    QStringLiteral("Year"), QStringLiteral("Status"), QStringLiteral("Length"),
                    QStringLiteral("Filename")});
    list.appendRows(rows);
    return listview_SaveToFile(list, path);
}

PlaylistGenerator::PlaylistGenerator(const ListModel& list, int option, const QString& criteria,
                                     bool id3v2)
    : m_list(list), m_option(option), m_criteria(criteria.toLower()), m_id3v2(id3v2),
      m_count(list.count()) {}

bool PlaylistGenerator::step(int rows) {
    // Rows that came or went meanwhile are not ours to read.
    m_count = qMin(m_count, m_list.count());
    const int end = qMin(m_count, m_next + qMax(0, rows));
    for (; m_next < end; ++m_next) {
        bool match = false;
        if (m_option == 0 || m_option == 2) {
            // One cell is all the test needs; the row is read whole only for a match.
            const QString cell = m_list.text(m_next, m_option == 0 ? Artist : Year);
            match = cell.toLower() == m_criteria;
        } else {
            const QString file = m_list.text(m_next, Filename);
            const QString ext = modFiles::file_GetExtension(file).toLower();
            if (ext == QLatin1String("mp3") || ext == QLatin1String("mp2") ||
                ext == QLatin1String("mp1")) {
                QString album;
                if (m_id3v2) {
                    clsID3v2 tag;
                    tag.setFilename(file);
                    album = tag.Album();
                } else {
                    clsID3v1 tag;
                    tag.setFilename(file);
                    album = tag.Album();
                }
                match = album.toLower() == m_criteria;
            }
        }
        if (!match) continue;
        const QStringList cells = m_list.rowTexts(m_next);
        const QString number =
            QStringLiteral("%1").arg(m_matches.size() + 1, 3, 10, QLatin1Char('0'));
        m_matches.push_back({number, cells.value(Artist), cells.value(Title), cells.value(Year),
                             cells.value(Status), cells.value(Length), cells.value(Filename)});
    }
    return m_next >= m_count;
}

std::vector<QStringList> random_DrawRows(const ListModel& list, int count, bool noSkipped) {
    std::vector<QStringList> out;
    const int rows = list.count();
    if (count <= 0 || count > rows) return out;
    const auto skipped = [&](int row) { // 1-based
        return noSkipped && list.text(row - 1, Status) == QLatin1String("Skip");
    };
    int available = 0;
    for (int r = 1; r <= rows; ++r)
        if (!skipped(r)) ++available;
    if (available < count) return out;
    // A row once drawn is never drawn again; a skipped one may come up again and is turned down
    // again. Row 0 is never a row.
    std::vector<bool> taken(size_t(rows) + 1, false);
    taken[0] = true;
    out.reserve(size_t(count));
    while (int(out.size()) < count) {
        const int r = modMath::math_RandomNumber(rows, 0, false, 20);
        if (r < 0 || r > rows || taken[size_t(r)] || skipped(r)) continue;
        const QStringList& cells = list.rowTexts(r - 1);
        out.push_back({QString(), cells.value(Artist), cells.value(Title), cells.value(Year),
                       cells.value(Status), cells.value(Length), cells.value(Filename)});
        taken[size_t(r)] = true;
    }
    return out;
}
