#pragma once
#include <QObject>
#include <QString>

// The log of what the program did this run: the text of the console window. One per process.
class ConsoleLog : public QObject {
    Q_OBJECT
public:
    static ConsoleLog& instance();

    bool writeFlag() const { return m_writeFlag; }
    void setWriteFlag(bool on) { m_writeFlag = on; }
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    void write(const QString& line);

Q_SIGNALS:
    void textChanged();

private:
    QString m_text;
    bool m_writeFlag = true;
};

// The only way into the log.
void window_WriteLog(const QString& text);
