#pragma once
#include <QFont>
#include <QObject>
#include <QString>

class QPrinter;

// The log of what the program did this run: the text of the console window, and the console's
// commands without the window. One per process.
class ConsoleLog : public QObject {
    Q_OBJECT
public:
    static ConsoleLog& instance();

    // When false, window_WriteLog does nothing.
    bool writeFlag() const { return m_writeFlag; }
    void setWriteFlag(bool on) { m_writeFlag = on; }
    // The whole log; each line ends in CR LF.
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    // Appends one line; with "RememberTheConsoleLogs" on, console.log gets it too (appended: the
    // file then holds the whole text and one more line break). False only when that file could
    // not be written.
    bool write(const QString& line);

    // What loading the console does: the remembered log, then the write flag from the setting,
    // applied as chkWriteLogs_Click does. Runs by itself before the first line is written unless
    // it ran already; that quiet load leaves settings.ini alone (`store` false).
    void form_Load(bool store = true);
    bool isLoaded() const { return m_loaded; }

    // The check box "Always write logs..." and what it applies.
    bool writeLogsChecked() const { return m_checked; }
    void chkWriteLogs_Click(bool checked);
    QString caption() const;

    void cmdClear_Click();
    void cmdSave_Click();
    void cmdPrint_Click();

    // The font of the text box, used for printing.
    const QFont& font() const { return m_font; }
    void setFont(const QFont& font) { m_font = font; }

    // Prints the header, an empty line and `text` in `font`, page after page.
    static void printText(QPrinter& printer, const QFont& font, const QString& header,
                          const QString& text);
    // The log as a plain text box shows it: LF breaks, no break after the last line.
    static QString displayText(const QString& text);

Q_SIGNALS:
    void textChanged();                     // after any change
    void lineAppended(const QString& line); // the text grew by this one line at its end
    void textReset();                       // the text was replaced as a whole
    void writeStateChanged(bool enabled);   // chkWriteLogs_Click applied

private:
    void replaceText(const QString& text);
    void applyWriteLogs(bool checked, bool store);
    bool saveRemembered();
    bool appendRemembered(const QString& line);

    QString m_text;
    QFont m_font;
    bool m_writeFlag = true;
    bool m_checked = true;
    bool m_loaded = false;
    qint64 m_diskSize = -1; // bytes of console.log as we last wrote it; -1: unknown
};

// The only way into the log. False when the remembered console.log could not be written.
bool window_WriteLog(const QString& text);
