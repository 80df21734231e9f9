#pragma once
#include "core/Dialogs.h"

#include <QList>
#include <QStringList>

// A Responder that answers from a list of texts, in order, and records every dialog.
// Answers: "yes", "no", "ok", "cancel" for messages; a path, optionally followed by
// "|filterIndex", for file and folder dialogs; "pdf:/path/file.pdf" for the print dialog;
// "#rrggbb" for colours; "Family,size" for fonts. With no answer left, a message box gets its
// harmless answer (No, or OK) and every other dialog is cancelled.
class ScriptedResponder : public Dialogs::Responder {
public:
    ScriptedResponder() = default;
    explicit ScriptedResponder(QStringList answers) : m_answers(std::move(answers)) {}

    void answer(const QString& a) { m_answers.append(a); }
    const QList<Dialogs::Asked>& asked() const { return m_asked; }
    void clear() {
        m_asked.clear();
        m_answers.clear();
    }
    // Where each Asked is appended as one line ("kind\ttitle\ttext", line breaks as "\n").
    void setLogFile(const QString& path) { m_logFile = path; }
    // Answers still to be given.
    const QStringList& pending() const { return m_answers; }

    int message(const Dialogs::Asked& asked) override;
    Dialogs::FileResult file(const Dialogs::Asked& asked, const Dialogs::FileRequest& r) override;
    QString folder(const Dialogs::Asked& asked, const QString& initial) override;
    std::optional<QColor> color(const Dialogs::Asked& asked, const QColor& initial) override;
    std::optional<QFont> font(const Dialogs::Asked& asked, const QFont& initial) override;
    bool print(const Dialogs::Asked& asked, QPrinter& printer) override;

    // The responder made from VELDOR_DIALOG_ANSWERS and VELDOR_DIALOG_LOG, or nullptr.
    static ScriptedResponder* fromEnvironment();

private:
    QString next();
    void record(const Dialogs::Asked& asked);

    QStringList m_answers;
    QList<Dialogs::Asked> m_asked;
    QString m_logFile;
};
