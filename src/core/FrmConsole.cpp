#include "core/FrmConsole.h"
#include "core/ShownText.h"

#include "core/ConsoleLog.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
template <typename W> W* named(W* w, const char* name, const QString& accessible) {
    w->setObjectName(QLatin1String(name));
    w->setAccessibleName(accessible);
    return w;
}
} // namespace

FrmConsole::FrmConsole(ConsoleLog& log, QWidget* parent) : QWidget(parent), m_log(log) {
    setObjectName(QStringLiteral("FrmConsole"));
    setAccessibleName(QStringLiteral("Console"));
    resize(560, 380);

    txtData = named(new QPlainTextEdit(this), "txtData", QStringLiteral("Console log"));
    txtData->setReadOnly(true);
    txtData->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtData->setUndoRedoEnabled(false);

    chkWriteLogs = named(new QCheckBox(QStringLiteral("Always write logs..."), this),
                         "chkWriteLogs", QStringLiteral("Always write logs"));
    lblOptions = named(new QToolButton(this), "lblOptions", QStringLiteral("Options"));
    lblOptions->setText(QStringLiteral("Options »"));
    lblOptions->setAutoRaise(true);
    lblOptions->setPopupMode(QToolButton::InstantPopup);

    mnuMenu = new QMenu(this);
    mnuMenu->setObjectName(QStringLiteral("mnuMenu"));
    mnuSaveAs = mnuMenu->addAction(QStringLiteral("Save &As..."));
    mnuSaveAs->setObjectName(QStringLiteral("mnuSaveAs"));
    mnuSaveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    mnuPrint = mnuMenu->addAction(QStringLiteral("&Print..."));
    mnuPrint->setObjectName(QStringLiteral("mnuPrint"));
    mnuPrint->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    for (QAction* a : {mnuSaveAs, mnuPrint}) {
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(a); // the keys work wherever the focus is in this window
    }
    lblOptions->setMenu(mnuMenu);

    cmdSave =
        named(new QPushButton(QStringLiteral("&Save »"), this), "cmdSave", QStringLiteral("Save"));
    cmdClear =
        named(new QPushButton(QStringLiteral("&Clear"), this), "cmdClear", QStringLiteral("Clear"));
    cmdPrint = named(new QPushButton(QStringLiteral("« &Print"), this), "cmdPrint",
                     QStringLiteral("Print"));
    cmdHide =
        named(new QPushButton(QStringLiteral("&Hide"), this), "cmdHide", QStringLiteral("Hide"));

    auto* options = new QHBoxLayout;
    options->addWidget(chkWriteLogs);
    options->addStretch();
    options->addWidget(lblOptions);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdClear);
    buttons->addWidget(cmdPrint);
    buttons->addStretch();
    buttons->addWidget(cmdHide);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtData, 1);
    layout->addLayout(options);
    layout->addLayout(buttons);

    connect(cmdSave, &QPushButton::clicked, this, &FrmConsole::cmdSave_Click);
    connect(cmdClear, &QPushButton::clicked, this, &FrmConsole::cmdClear_Click);
    connect(cmdPrint, &QPushButton::clicked, this, &FrmConsole::cmdPrint_Click);
    connect(cmdHide, &QPushButton::clicked, this, &FrmConsole::cmdHide_Click);
    connect(mnuSaveAs, &QAction::triggered, this, &FrmConsole::mnuSaveAs_Click);
    connect(mnuPrint, &QAction::triggered, this, &FrmConsole::mnuPrint_Click);
    connect(chkWriteLogs, &QCheckBox::clicked, this, &FrmConsole::chkWriteLogs_Click);

    connect(&m_log, &ConsoleLog::lineAppended, this, &FrmConsole::appendLine);
    connect(&m_log, &ConsoleLog::textReset, this, &FrmConsole::resetText);
    connect(&m_log, &ConsoleLog::writeStateChanged, this, &FrmConsole::applyWriteState);

    m_log.setFont(txtData->font());
    if (!m_log.isLoaded()) m_log.form_Load();
    resetText();
    applyWriteState(m_log.writeLogsChecked());
}

FrmConsole& FrmConsole::instance() {
    static FrmConsole* window = new FrmConsole(ConsoleLog::instance());
    return *window;
}

void FrmConsole::cmdSave_Click() {
    m_log.cmdSave_Click();
}
void FrmConsole::cmdClear_Click() {
    m_log.cmdClear_Click();
}

void FrmConsole::cmdPrint_Click() {
    m_log.setFont(txtData->font());
    m_log.cmdPrint_Click();
}

void FrmConsole::chkWriteLogs_Click() {
    m_log.chkWriteLogs_Click(chkWriteLogs->isChecked());
}

void FrmConsole::applyWriteState(bool enabled) {
    {
        const QSignalBlocker block(chkWriteLogs);
        chkWriteLogs->setChecked(enabled);
    }
    for (QWidget* w : {static_cast<QWidget*>(cmdSave), static_cast<QWidget*>(cmdClear),
                       static_cast<QWidget*>(txtData)})
        w->setEnabled(enabled);
    mnuPrint->setEnabled(enabled);
    mnuSaveAs->setEnabled(enabled);
    setWindowTitle(m_log.caption());
}

void FrmConsole::resetText() {
    txtData->setPlainText(text_ShownLines(ConsoleLog::displayText(m_log.text())));
}

void FrmConsole::appendLine(const QString& line) {
    // Appending keeps a long log cheap: the document is never rebuilt for one line.
    if (m_log.text().size() == line.size() + 2) // the first line of the log
        txtData->setPlainText(text_ShownLines(line));
    else
        txtData->appendPlainText(text_ShownLines(line));
}

void FrmConsole::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
}

bool FrmConsole::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        QTextCursor cursor = txtData->textCursor();
        cursor.movePosition(QTextCursor::End);
        txtData->setTextCursor(cursor);
        txtData->ensureCursorVisible();
    }
    return QWidget::event(event);
}
