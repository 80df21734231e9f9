#include "core/DialogScript.h"

#include <QFile>
#include <QPrinter>

QString ScriptedResponder::next() { return m_answers.isEmpty() ? QString() : m_answers.takeFirst(); }

void ScriptedResponder::record(const Dialogs::Asked& asked) {
    m_asked.append(asked);
    if (m_logFile.isEmpty())
        return;
    QFile f(m_logFile);
    if (!f.open(QIODevice::Append))
        return;
    QString text = asked.text;
    text.replace(QLatin1String("\r\n"), QLatin1String("\\n")).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    f.write((asked.kind + QLatin1Char('\t') + asked.title + QLatin1Char('\t') + text + QLatin1Char('\n'))
                .toUtf8());
}

int ScriptedResponder::message(const Dialogs::Asked& asked) {
    record(asked);
    const QString a = next().trimmed().toLower();
    if (a == QLatin1String("yes"))
        return Dialogs::vbYes;
    if (a == QLatin1String("no"))
        return Dialogs::vbNo;
    if (a == QLatin1String("cancel"))
        return Dialogs::vbCancel;
    if (a == QLatin1String("ok"))
        return Dialogs::vbOK;
    return (asked.flags & Dialogs::vbYesNo) ? Dialogs::vbNo : Dialogs::vbOK;
}

Dialogs::FileResult ScriptedResponder::file(const Dialogs::Asked& asked,
                                            const Dialogs::FileRequest& r) {
    record(asked);
    const QString a = next();
    if (a.isEmpty() || a == QLatin1String("cancel"))
        return {};
    Dialogs::FileResult result;
    const int bar = a.lastIndexOf(QLatin1Char('|'));
    bool ok = false;
    const int index = bar > 0 ? a.mid(bar + 1).toInt(&ok) : 0;
    result.path = ok ? a.left(bar) : a;
    result.filterIndex = ok ? index : qMax(1, r.filterIndex);
    return result;
}

QString ScriptedResponder::folder(const Dialogs::Asked& asked, const QString&) {
    record(asked);
    const QString a = next();
    return a == QLatin1String("cancel") ? QString() : a;
}

std::optional<QColor> ScriptedResponder::color(const Dialogs::Asked& asked, const QColor&) {
    record(asked);
    const QColor c(next());
    return c.isValid() ? std::optional<QColor>(c) : std::nullopt;
}

std::optional<QFont> ScriptedResponder::font(const Dialogs::Asked& asked, const QFont&) {
    record(asked);
    const QStringList parts = next().split(QLatin1Char(','));
    if (parts.size() != 2 || parts[0].isEmpty())
        return std::nullopt;
    return QFont(parts[0], parts[1].toInt());
}

bool ScriptedResponder::print(const Dialogs::Asked& asked, QPrinter& printer) {
    record(asked);
    const QString a = next();
    if (!a.startsWith(QLatin1String("pdf:")))
        return false;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(a.mid(4));
    return true;
}

ScriptedResponder* ScriptedResponder::fromEnvironment() {
    const QString answers = qEnvironmentVariable("VELDOR_DIALOG_ANSWERS");
    const QString log = qEnvironmentVariable("VELDOR_DIALOG_LOG");
    if (answers.isEmpty() && log.isEmpty())
        return nullptr;
    auto* r = new ScriptedResponder;
    QFile f(answers);
    if (!answers.isEmpty() && f.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : f.readAll().split('\n')) {
            const QString l = QString::fromUtf8(line).remove(QLatin1Char('\r'));
            if (!l.isEmpty())
                r->answer(l);
        }
    }
    r->setLogFile(log);
    return r;
}
