#include "core/ConsoleLog.h"

ConsoleLog& ConsoleLog::instance() {
    static ConsoleLog log;
    return log;
}

void ConsoleLog::setText(const QString& text) {
    m_text = text;
    Q_EMIT textChanged();
}

void ConsoleLog::write(const QString& line) {
    if (!m_writeFlag)
        return;
    m_text += line + QStringLiteral("\r\n");
    Q_EMIT textChanged();
}

void window_WriteLog(const QString& text) { ConsoleLog::instance().write(text); }
