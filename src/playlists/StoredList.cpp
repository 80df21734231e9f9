#include "playlists/StoredList.h"

#include "core/modFiles.h"
#include "playlists/ListFiles.h"
#include "core/ListModel.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <optional>

namespace StoredList {
namespace {

// The first of "<path>.damaged", "<path>.damaged-2", ... that does not exist yet: an older
// damaged copy is never replaced.
QString asideName(const QString& path) {
    QString name = path + QStringLiteral(".damaged");
    for (int n = 2; QFileInfo::exists(name) && n < 1000; ++n)
        name = path + QStringLiteral(".damaged-%1").arg(n);
    return name;
}

QString toText(const QByteArray& bytes) {
    QByteArrayView view(bytes);
    if (view.startsWith("\xEF\xBB\xBF")) view = view.sliced(3);
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(view);
    return utf8.hasError() ? QString::fromLatin1(view) : text;
}

// The file as this program writes it: every line one value between quotes, taken from the
// first quote to the last, so that a quote inside a title survives the round trip. Nullopt when
// some line is not written that way (a hand-made file, a value broken over lines): the general
// reader takes it then.
std::optional<bool> decodeLines(const QByteArray& bytes, int columns,
                                std::vector<QStringList>& rows) {
    const QString text = toText(bytes);
    QStringList row;
    std::vector<QStringList> out;
    out.reserve(size_t(bytes.count('\n') / qMax(1, columns) + 1));
    for (QStringView line : QStringView(text).split(u'\n')) {
        line = line.trimmed();
        if (line.isEmpty()) continue;
        if (line.size() < 2 || line.front() != u'"' || line.back() != u'"') return std::nullopt;
        // "a","b" on one line is a hand-made row of several values.
        if (line.sliced(1, line.size() - 2).contains(u"\",")) return std::nullopt;
        row.append(line.sliced(1, line.size() - 2).toString());
        if (row.size() == columns) {
            out.push_back(std::move(row));
            row = QStringList();
        }
    }
    rows = std::move(out);
    return row.isEmpty(); // false: the file ends inside a row
}

} // namespace

bool load(ListModel& list, const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile()) return false;
    std::vector<QStringList> rows;
    bool ok = file.open(QIODevice::ReadOnly);
    if (ok) {
        const QByteArray bytes = file.readAll();
        ok = file.error() == QFileDevice::NoError;
        file.close();
        // The rows before the damage stay even when the text breaks off.
        const std::optional<bool> lines = decodeLines(bytes, list.columns(), rows);
        if (lines)
            ok = *lines && ok;
        else
            ok = ListFiles::decode(bytes, list.columns(), rows) && ok;
    }
    list.appendRows(std::move(rows));
    if (!ok) QFile::rename(path, asideName(path));
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

} // namespace StoredList
