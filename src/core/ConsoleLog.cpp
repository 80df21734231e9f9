#include "core/ConsoleLog.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/Settings.h"
#include "core/modFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>

namespace {

const QString CrLf = QStringLiteral("\r\n");

QString consoleLogFile() {
    return App::file(QStringLiteral("console.log"));
}

bool rememberLogs() {
    return settings_IsOn(QStringLiteral("Settings"), QStringLiteral("RememberTheConsoleLogs"),
                         QStringLiteral("0"));
}

// Every line break as CR LF, whatever the file had.
QString withCrLf(const QString& text) {
    QString t = text;
    t.replace(CrLf, QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return t.replace(QLatin1Char('\n'), CrLf);
}

} // namespace

ConsoleLog& ConsoleLog::instance() {
    static ConsoleLog log;
    return log;
}

void ConsoleLog::replaceText(const QString& text) {
    m_text = text;
    m_diskSize = -1; // the file no longer holds the text before this one
    Q_EMIT textReset();
    Q_EMIT textChanged();
}

void ConsoleLog::setText(const QString& text) {
    replaceText(text);
}

bool ConsoleLog::saveRemembered() {
    // The whole text and one more line break, as the print statement that writes it leaves.
    const QByteArray bytes = (m_text + CrLf).toUtf8();
    if (!modFiles::file_WriteAtomic(consoleLogFile(), bytes)) {
        m_diskSize = -1;
        return false;
    }
    m_diskSize = bytes.size();
    return true;
}

bool ConsoleLog::appendRemembered(const QString& line) {
    // The file ends with the text and one more line break: the new line goes over that break and
    // brings its own. Anything else on disk than what we wrote last means a whole rewrite.
    if (m_diskSize >= 2) {
        const QByteArray tail = (line + CrLf + CrLf).toUtf8();
        const modFiles::WriteResult r =
            modFiles::file_ReplaceTail(consoleLogFile(), m_diskSize, m_diskSize - 2, tail);
        if (r.ok) {
            m_diskSize += tail.size() - 2;
            return true;
        }
    }
    return saveRemembered();
}

bool ConsoleLog::write(const QString& line) {
    if (!m_loaded) form_Load(false);
    if (!m_writeFlag) return true;
    const bool continues = m_text.isEmpty() || m_text.endsWith(CrLf);
    if (!continues) m_diskSize = -1;
    m_text += line + CrLf;
    if (continues)
        Q_EMIT lineAppended(line);
    else
        Q_EMIT textReset();
    Q_EMIT textChanged();
    // Read at every line, so that a change in Preferences counts at once.
    if (rememberLogs()) return appendRemembered(line);
    m_diskSize = -1;
    return true;
}

void ConsoleLog::form_Load(bool store) {
    m_loaded = true;
    const QString file = consoleLogFile();
    if (rememberLogs() && QFileInfo::exists(file)) {
        QFile f(file);
        if (f.open(QIODevice::ReadOnly)) {
            QByteArray bytes = f.readAll();
            // Our lines end in CR LF: a last line without its end is one a kill cut short.
            const qsizetype lastEnd = bytes.lastIndexOf("\r\n");
            if (!bytes.endsWith('\n') && lastEnd >= 0) bytes.truncate(lastEnd + 2);
            QString text = withCrLf(QString::fromUtf8(bytes));
            if (!text.isEmpty() && !text.endsWith(CrLf))
                text += CrLf; // this run's lines start on a line of their own
            replaceText(text);
        }
    }
    const bool on = settings_IsOn(QStringLiteral("Settings"), QStringLiteral("WriteConsoleLogs"),
                                  QStringLiteral("1"));
    applyWriteLogs(on, store);
}

void ConsoleLog::chkWriteLogs_Click(bool checked) {
    applyWriteLogs(checked, true);
}

void ConsoleLog::applyWriteLogs(bool checked, bool store) {
    m_checked = checked;
    m_writeFlag = checked;
    if (store)
        settings_Write(QStringLiteral("Settings"), QStringLiteral("WriteConsoleLogs"),
                       checked ? QStringLiteral("1") : QStringLiteral("0"));
    Q_EMIT writeStateChanged(checked);
}

QString ConsoleLog::caption() const {
    return m_checked ? QStringLiteral("Console - [Enabled]")
                     : QStringLiteral("Console - [Disabled]");
}

void ConsoleLog::cmdClear_Click() {
    const int answer = Dialogs::msgBox(
        QStringLiteral("Once the console logs have been cleared, you will not be able to get them "
                       "back.\n\nDo you wish to continue?\n"),
        Dialogs::vbExclamation | Dialogs::vbYesNo,
        QStringLiteral("Clear Console Logs Confirmation"));
    if (answer != Dialogs::vbYes) return;
    replaceText(QString());
    if (rememberLogs()) QFile::remove(consoleLogFile());
}

void ConsoleLog::cmdSave_Click() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Save Console Log...");
    request.initDir = App::file(QStringLiteral("Logs"));
    request.flags = 4;
    request.filter = App::Title() + QStringLiteral(" Logs|*.slf|All Files|*.*|");
    const QString path = Dialogs::showSave(request).path;
    if (path.isEmpty()) return;
    if (QFileInfo::exists(path)) {
        const int answer = Dialogs::msgBox(
            QStringLiteral("The filename you have entered/selected already exists.\n\nWould you "
                           "like to overwrite this file?\n"),
            Dialogs::vbExclamation | Dialogs::vbYesNo,
            QStringLiteral("Overwrite Existing File Confirmation"));
        if (answer != Dialogs::vbYes) return;
    }
    // Replacing in one step: a failed save leaves the old file as it was.
    if (!modFiles::file_WriteAtomic(path, (m_text + CrLf).toUtf8(), false))
        Dialogs::msgBox(QStringLiteral("An error occured while trying to save.\n\nThis function "
                                       "will not continue.\n"),
                        Dialogs::vbExclamation, App::Title());
}

void ConsoleLog::cmdPrint_Click() {
    QPrinter printer(QPrinter::HighResolution);
    if (!Dialogs::showPrinter(QStringLiteral("Print Colsole Logs..."), printer)) return;
    printText(printer, m_font, App::Title() + QStringLiteral(" Console Log:"), m_text);
}

void ConsoleLog::printText(QPrinter& printer, const QFont& font, const QString& header,
                           const QString& text) {
    QPainter painter;
    if (!painter.begin(&printer)) return;
    painter.setFont(font);
    const QRect page = painter.window(); // the printable area, in device pixels
    const int lineHeight = painter.fontMetrics().lineSpacing();
    const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;

    QStringList lines{header, QString()};
    if (!text.isEmpty()) {
        QStringList body = withCrLf(text).split(CrLf);
        if (text.endsWith(CrLf) || text.endsWith(QLatin1Char('\n')))
            body.removeLast(); // the break that ends the last line opens no new one
        lines += body;
    }

    int y = page.top();
    for (const QString& line : lines) {
        int height = lineHeight;
        if (!line.isEmpty()) {
            const QRect needed =
                painter.boundingRect(QRect(page.left(), 0, page.width(), INT_MAX / 2), flags, line);
            height = qMax(lineHeight, needed.height());
        }
        if (y + height > page.bottom() && y > page.top()) {
            printer.newPage();
            y = page.top();
        }
        if (!line.isEmpty())
            painter.drawText(QRect(page.left(), y, page.width(), qMin(height, page.height())),
                             flags, line);
        y += height;
    }
    painter.end();
}

QString ConsoleLog::displayText(const QString& text) {
    QString t = withCrLf(text);
    t.replace(CrLf, QStringLiteral("\n"));
    if (t.endsWith(QLatin1Char('\n'))) t.chop(1);
    return t;
}

bool window_WriteLog(const QString& text) {
    return ConsoleLog::instance().write(text);
}
