#include "playlists/StoredList.h"

#include "core/ListModel.h"
#include "core/TextLines.h"
#include "core/modFiles.h"
#include "playlists/ListFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <optional>

namespace StoredList {
namespace {

// The file as this program writes it: every line one value between quotes, taken from the
// first quote to the last, so that a quote inside a title survives the round trip. Nullopt when
// the file is not written that way (a line without its quotes, or every line a hand-made row
// of several values): the general reader takes it then. `badLine` is the line where a row breaks
// off.
std::optional<bool> decodeLines(const QByteArray& bytes, int columns,
                                std::vector<QStringList>& rows, int& badLine) {
    const QString text = TextLines::decode(bytes);
    QList<QStringView> values;
    QList<int> lineNumbers;
    bool everyLineHasSeveral = true;
    int lineNumber = 0;
    for (QStringView line : QStringView(text).split(u'\n')) {
        ++lineNumber;
        line = line.trimmed();
        if (line.isEmpty()) continue;
        if (line.size() < 2 || line.front() != u'"' || line.back() != u'"') return std::nullopt;
        const QStringView inner = line.sliced(1, line.size() - 2);
        everyLineHasSeveral = everyLineHasSeveral && inner.contains(u"\",\"");
        values.append(inner);
        lineNumbers.append(lineNumber);
    }
    if (values.isEmpty()) return true;
    if (everyLineHasSeveral) return std::nullopt;
    std::vector<QStringList> out;
    out.reserve(size_t(values.size() / qMax(1, columns) + 1));
    QStringList row;
    for (const QStringView v : values) {
        row.append(v.toString());
        if (row.size() == columns) {
            out.push_back(std::move(row));
            row = QStringList();
        }
    }
    rows = std::move(out);
    if (!row.isEmpty()) badLine = lineNumbers.at(int(rows.size()) * columns);
    return row.isEmpty(); // false: the file ends inside a row
}

} // namespace

bool load(ListModel& list, const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile()) return false;
    std::vector<QStringList> rows;
    int badLine = 0;
    bool ok = file.open(QIODevice::ReadOnly);
    if (ok) {
        const QByteArray bytes = file.readAll();
        ok = file.error() == QFileDevice::NoError;
        file.close();
        // The rows before the damage stay even when the text breaks off.
        const std::optional<bool> lines = decodeLines(bytes, list.columns(), rows, badLine);
        if (lines)
            ok = *lines && ok;
        else
            ok = ListFiles::decode(bytes, list.columns(), rows, &badLine) && ok;
    }
    const int kept = int(rows.size());
    list.appendRows(std::move(rows));
    if (!ok) {
        // Aside before anything can save over the only copy, and the user hears of it.
        const QString aside = ListFiles::setAside(path);
        ListFiles::reportDamaged(path, aside, kept, badLine);
    }
    return ok;
}

bool save(const ListModel& list, const QString& path) {
    if (list.count() == 0) {
        const QFileInfo info(path);
        if (!info.isFile()) return true;
        // A file the user made read-only is left alone, as a write to it would be.
        return !modFiles::file_HasAttributes(path, 1) && QFile::remove(path);
    }
    return listview_SaveToFile(list, path);
}

int findFile(const ListModel& list, int column, const QString& filename) {
    const QString wanted = filename.toLower();
    const int rows = list.count();
    for (int i = 0; i < rows; ++i) {
        // The case-blind compare allocates nothing; the lower-cased one has the last word.
        const QString& cell = list.text(i, column);
        if (cell.compare(wanted, Qt::CaseInsensitive) == 0 && cell.toLower() == wanted) return i;
    }
    return -1;
}

void renameFiles(ListModel& list, int column, const QList<QPair<QString, QString>>& renames) {
    if (renames.isEmpty()) return;
    // Rows of each name in order: the one-by-one search takes the first.
    QHash<QString, QList<int>> rows;
    rows.reserve(list.count());
    for (int i = 0; i < list.count(); ++i)
        rows[list.text(i, column).toLower()].append(i);
    for (const auto& [oldName, newName] : renames) {
        if (oldName.isEmpty()) continue;
        const auto it = rows.find(oldName.toLower());
        if (it == rows.end() || it->isEmpty()) continue;
        const int row = it->takeFirst();
        list.setText(row, column, newName);
        QList<int>& now = rows[newName.toLower()];
        now.insert(std::lower_bound(now.begin(), now.end(), row), row);
    }
}

} // namespace StoredList
