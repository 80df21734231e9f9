#include "playlists/Exports.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "core/ListModel.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QPainter>
#include <QPrinter>
#include <QTime>

namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString fileTitle(const QString& path) {
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

QString quoted(const QString& value) {
    return QLatin1Char('"') + value + QLatin1Char('"');
}

// The playlist is busy while an export runs: the timers leave the rows alone.
class BusyScope {
public:
    BusyScope(MainContext& ctx, const QString& text) : m_ctx(ctx) { ctx.beginBusy(text); }
    ~BusyScope() { m_ctx.endBusy(); }

private:
    MainContext& m_ctx;
};

} // namespace

bool player_SaveTEXTPlaylist(MainContext& ctx, const QString& path) {
    BusyScope busy(ctx, QStringLiteral("Creating TEXT playlist, please wait..."));
    const ListModel& list = ctx.lstvPlaylist();
    QString out;
    for (int r = 0; r < list.count(); ++r)
        out += list.text(r, 0) + QStringLiteral(".  ") + list.text(r, 1) + QStringLiteral(" - ") +
               list.text(r, 2) + kCrLf;
    return modFiles::file_WriteAtomic(path, out.toUtf8());
}

bool player_SaveHTMLPlaylist(MainContext& ctx, const QString& path) {
    const QString bg = settings_Read(QStringLiteral("HTMLPlaylist"),
                                     QStringLiteral("BackgroundColour"), QStringLiteral("#000080"));
    const QString fg = settings_Read(QStringLiteral("HTMLPlaylist"), QStringLiteral("FontColour"),
                                     QStringLiteral("#FFFFFF"));
    BusyScope busy(ctx, QStringLiteral("Creating HTML playlist, please wait..."));
    const QString name = fileTitle(path);
    const ListModel& list = ctx.lstvPlaylist();

    QString out;
    auto line = [&out](const QString& text) { out += text + kCrLf; };
    line(QStringLiteral("<html>"));
    line(QStringLiteral("<head>"));
    line(QString());
    line(QStringLiteral("<title>") + name + QStringLiteral("</title>"));
    line(QStringLiteral("</head>"));
    line(QString());
    line(QStringLiteral("<body bgcolor=") + quoted(bg) + QStringLiteral(" link=") + quoted(fg) +
         QStringLiteral(" vlink=") + quoted(fg) + QStringLiteral(" alink=") + quoted(fg) +
         QStringLiteral(" text=") + quoted(fg) + QStringLiteral(">"));
    line(QStringLiteral("<p><b><font size=") + quoted(QStringLiteral("8")) +
         QStringLiteral(" face=") + quoted(QStringLiteral("Tahoma")) + QStringLiteral(" color=") +
         quoted(fg) + QStringLiteral(">") + name + QStringLiteral("</font></b></p>"));
    line(QStringLiteral("<hr>"));
    // This font element stays open: that is how the page has always been written.
    line(QStringLiteral("<p><font size=") + quoted(QStringLiteral("2")) + QStringLiteral(" face=") +
         quoted(QStringLiteral("Tahoma")) + QStringLiteral(" color=") + quoted(fg) +
         QStringLiteral(">"));
    // The window stays responsive on a long list, without paying for an event pass per row.
    QElapsedTimer sinceEvents;
    sinceEvents.start();
    for (int r = 0; r < list.count(); ++r) {
        if (sinceEvents.elapsed() >= 50) {
            QCoreApplication::processEvents();
            sinceEvents.restart();
        }
        line(list.text(r, 0) + QStringLiteral(".  ") + list.text(r, 1) + QStringLiteral(" - ") +
             list.text(r, 2) + QStringLiteral("<br>"));
    }
    line(QStringLiteral("<br>"));
    line(QStringLiteral("<hr>"));
    line(QStringLiteral("<br>"));
    line(QStringLiteral("Songs in playlist:  ") + QString::number(list.count()) +
         QStringLiteral("<br>"));
    line(QString());
    line(QStringLiteral("<p>&nbsp;</p>"));
    line(QString());
    line(QStringLiteral("</body>"));
    line(QString());
    line(QStringLiteral("</html>"));
    return modFiles::file_WriteAtomic(path, out.toUtf8());
}

void mnuPrint_Click(MainContext& ctx) {
    QPrinter printer;
    if (!Dialogs::showPrinter(
            QStringLiteral("Print ") + App::Title() + QStringLiteral(" Playlist..."), printer))
        return;
    const ListModel& list = ctx.lstvPlaylist();
    QStringList lines{App::Title() + QStringLiteral(" Playlist:"), QString()};
    for (int r = 0; r < list.count(); ++r)
        lines.append(list.text(r, 0) + QStringLiteral(" - ") + list.text(r, 1) +
                     QStringLiteral(" - ") + list.text(r, 2));

    // A printer that cannot start prints nothing; the rest goes on as before.
    QPainter painter;
    if (painter.begin(&printer)) {
        QFont font(list.font().family());
        font.setPointSize(10);
        painter.setFont(font);
        const QFontMetrics metrics(font, &printer);
        const int pageHeight = painter.viewport().height();
        int y = 0;
        for (const QString& text : lines) {
            if (y > 0 && y + metrics.height() > pageHeight) {
                printer.newPage();
                y = 0;
            }
            painter.drawText(0, y + metrics.ascent(), text);
            y += metrics.lineSpacing();
        }
        // Ending the document hands the job to the printer now rather than at some later time.
        painter.end();
    }
    window_WriteLog(QStringLiteral("Current playlist printed at ") +
                    QTime::currentTime().toString(QStringLiteral("HH:mm:ss")) + QLatin1Char('.'));
}
