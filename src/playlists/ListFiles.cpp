#include "playlists/ListFiles.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/TextLines.h"
#include "core/modControls.h"
#include "core/modDirectorys.h"
#include "core/modFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace ListFiles {
namespace {

QSet<QString>& toldDamaged() {
    static QSet<QString> told;
    return told;
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

bool decode(const QByteArray& bytes, int columns, std::vector<QStringList>& rows, int* badLine) {
    if (columns <= 0) return true;
    const QString text = TextLines::decode(bytes);
    TextLines::ValueReader reader(text);
    rows.reserve(size_t(bytes.count('\n') / columns + 1));
    while (!reader.atEnd()) {
        QStringList row;
        row.reserve(columns);
        QString value;
        qsizetype rowStart = reader.position();
        for (int c = 0; c < columns; ++c) {
            if (!reader.next(value)) {
                // The row starts after the line ends that close the row before it.
                while (rowStart < text.size() && (text.at(rowStart) == QLatin1Char('\r') ||
                                                  text.at(rowStart) == QLatin1Char('\n')))
                    ++rowStart;
                if (badLine) *badLine = reader.lineAt(rowStart);
                return false;
            }
            row.append(std::move(value));
        }
        rows.push_back(std::move(row));
    }
    return true;
}

void ensureFolder(const QString& path) {
    const QString folder = QFileInfo(path).absolutePath();
    if (modDirectorys::directory_Exists(folder)) return;
    modDirectorys::directory_Create(folder);
    if (!modDirectorys::directory_Exists(folder)) QDir().mkpath(folder);
    window_WriteLog(folder + QStringLiteral(" was missing and has been created again."));
}

QString setAside(const QString& path) {
    QString name = path + QStringLiteral(".damaged");
    for (int n = 2; QFileInfo::exists(name) && n < 1000; ++n)
        name = path + QStringLiteral(".damaged-%1").arg(n);
    return modFiles::file_Rename(path, name) ? name : QString();
}

void reportDamaged(const QString& path, const QString& aside, int rowsKept, int badLine) {
    const QString where = badLine > 0
                              ? QStringLiteral("row %1 (line %2)").arg(rowsKept + 1).arg(badLine)
                              : QStringLiteral("row %1").arg(rowsKept + 1);
    const QString kept =
        aside.isEmpty() ? QStringLiteral("The file could not be moved aside and stays as it is.")
                        : QStringLiteral("The file was moved aside as %1.").arg(aside);
    window_WriteLog(path + QStringLiteral(" could not be read from ") + where +
                    QStringLiteral(" on; the %1 rows before it were kept. ").arg(rowsKept) + kept);
    const QString key = QFileInfo(path).absoluteFilePath();
    if (toldDamaged().contains(key)) return;
    toldDamaged().insert(key);
    Dialogs::msgBox(QStringLiteral("An error occured while trying to open the list:\n") + path +
                        QStringLiteral("\n\nIt could not be read from ") + where +
                        QStringLiteral(" on. The %1 rows before it were kept.\n").arg(rowsKept) +
                        kept + QLatin1Char('\n'),
                    Dialogs::vbExclamation, QStringLiteral("Error Loading List"));
}

} // namespace ListFiles

bool listview_SaveToFile(const ListModel& list, const QString& path) {
    ListFiles::ensureFolder(path);
    return modFiles::file_WriteAtomic(path, ListFiles::encode(list));
}

bool listview_LoadFromFile(ListModel& list, const QString& path) {
    QFile file(path);
    std::vector<QStringList> rows;
    if (!file.open(QIODevice::ReadOnly)) {
        Dialogs::msgBox(QStringLiteral("An error occured while trying to open the list:\n") + path +
                            QStringLiteral("\n\nThis list will not be opened and this function "
                                           "closed.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Error Loading List"));
        listview_Clear(list);
        return false;
    }
    const QByteArray bytes = file.readAll();
    const bool readWhole = file.error() == QFileDevice::NoError;
    file.close();
    int badLine = 0;
    const bool ok = ListFiles::decode(bytes, list.columns(), rows, &badLine) && readWhole;
    const int kept = int(rows.size());
    list.appendRows(std::move(rows));
    if (!ok) {
        // Aside first: whatever saves this list next must not land on the only copy.
        const QString aside = ListFiles::setAside(path);
        ListFiles::reportDamaged(path, aside, kept, badLine);
    }
    return ok;
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
