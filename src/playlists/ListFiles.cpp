#include "playlists/ListFiles.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "core/ListModel.h"
#include "core/modControls.h"

#include <QFile>
#include <QStringDecoder>

namespace ListFiles {
namespace {

inline bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}
inline bool isLineEnd(char16_t c) {
    return c == u'\r' || c == u'\n';
}

// The value reader: blanks before a value are skipped; a quoted value runs to the next quote,
// any other value to the next comma or line end. The separator behind a value goes with it, so
// hand-made rows of comma-separated values load too. Text behind a closing quote that is not a
// separator starts the next value: a quote inside a tag splits that tag in two.
class Reader {
public:
    Reader(const char16_t* begin, const char16_t* end) : m_p(begin), m_end(end) {}

    // Nothing but blanks and line ends is left.
    bool atEnd() const {
        for (const char16_t* q = m_p; q < m_end; ++q)
            if (!isBlank(*q) && !isLineEnd(*q)) return false;
        return true;
    }

    // False when no value is left or a quoted value is never closed.
    bool next(QString& value) {
        while (m_p < m_end && isBlank(*m_p))
            ++m_p;
        if (m_p >= m_end) return false;
        if (*m_p == u'"') {
            const char16_t* start = ++m_p;
            while (m_p < m_end && *m_p != u'"')
                ++m_p;
            if (m_p >= m_end) return false; // cut off inside a value
            value = make(start, m_p);
            ++m_p;
            const char16_t* q = m_p;
            while (q < m_end && isBlank(*q))
                ++q;
            if (q >= m_end)
                m_p = q;
            else if (*q == u',')
                m_p = q + 1;
            else if (isLineEnd(*q))
                m_p = skipLineEnd(q);
            return true;
        }
        const char16_t* start = m_p;
        while (m_p < m_end && *m_p != u',' && !isLineEnd(*m_p))
            ++m_p;
        const char16_t* stop = m_p;
        while (stop > start && isBlank(stop[-1]))
            --stop;
        value = make(start, stop);
        if (m_p < m_end) m_p = *m_p == u',' ? m_p + 1 : skipLineEnd(m_p);
        return true;
    }

private:
    static QString make(const char16_t* a, const char16_t* b) {
        return QString(reinterpret_cast<const QChar*>(a), qsizetype(b - a));
    }
    const char16_t* skipLineEnd(const char16_t* q) const {
        if (*q == u'\r' && q + 1 < m_end && q[1] == u'\n') return q + 2;
        return q + 1;
    }

    const char16_t* m_p;
    const char16_t* m_end;
};

// Lists are written as UTF-8; a file from an older installation may still be in a single-byte
// code page, which Latin-1 keeps readable instead of turning accents into replacement marks.
QString toText(const QByteArray& bytes) {
    QByteArrayView view(bytes);
    if (view.startsWith("\xEF\xBB\xBF")) view = view.sliced(3);
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(view);
    if (utf8.hasError()) text = QString::fromLatin1(view);
    return text;
}

void appendValue(QString& out, const QString& value) {
    out += QLatin1Char('"');
    out += value;
    out += QLatin1String("\"\r\n");
}

} // namespace

QByteArray encode(const ListModel& list) {
    const int rows = list.count();
    const int columns = list.columns();
    qsizetype size = 0;
    for (int r = 0; r < rows; ++r)
        for (const QString& cell : list.rowTexts(r))
            size += cell.size() + 4;
    QString out;
    out.reserve(size);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c)
            appendValue(out, list.text(r, c));
    return out.toUtf8();
}

QByteArray encodeRow(const QStringList& cells) {
    QString out;
    for (const QString& cell : cells)
        appendValue(out, cell);
    return out.toUtf8();
}

bool decode(const QByteArray& bytes, int columns, std::vector<QStringList>& rows) {
    if (columns <= 0) return true;
    const QString text = toText(bytes);
    const auto* begin = reinterpret_cast<const char16_t*>(text.constData());
    Reader reader(begin, begin + text.size());
    rows.reserve(size_t(bytes.count('\n') / columns + 1));
    while (!reader.atEnd()) {
        QStringList row;
        row.reserve(columns);
        QString value;
        for (int c = 0; c < columns; ++c) {
            if (!reader.next(value)) return false;
            row.append(std::move(value));
        }
        rows.push_back(std::move(row));
    }
    return true;
}

} // namespace ListFiles

bool listview_SaveToFile(const ListModel& list, const QString& path) {
    return modFiles::file_WriteAtomic(path, ListFiles::encode(list));
}

bool listview_LoadFromFile(ListModel& list, const QString& path) {
    QFile file(path);
    std::vector<QStringList> rows;
    bool ok = file.open(QIODevice::ReadOnly);
    if (ok) {
        const QByteArray bytes = file.readAll();
        ok = file.error() == QFileDevice::NoError && ListFiles::decode(bytes, list.columns(), rows);
    }
    if (!ok) {
        Dialogs::msgBox(QStringLiteral("An error occured while trying to open the list:\n") + path +
                            QStringLiteral("\n\nThis list will not be opened and this function "
                                           "closed.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Error Loading List"));
        listview_Clear(list);
        return false;
    }
    list.appendRows(std::move(rows));
    return true;
}

QString playlist_DefaultPath() {
    return App::file(QStringLiteral("Playlists/default.spp"));
}

void playlist_SaveDefault(MainContext& ctx) {
    const QString path = playlist_DefaultPath();
    // Replaced in one step when there are rows; a run that ends empty leaves no default.spp.
    if (ctx.lstvPlaylist().count() > 0)
        listview_SaveToFile(ctx.lstvPlaylist(), path);
    else
        modFiles::file_Delete(path);
}

void playlist_LoadDefault(MainContext& ctx) {
    const QString path = playlist_DefaultPath();
    if (modFiles::file_Exists(path)) listview_LoadFromFile(ctx.lstvPlaylist(), path);
}
