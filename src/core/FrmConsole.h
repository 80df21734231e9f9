#pragma once
#include <QWidget>

class QAction;
class QCheckBox;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QToolButton;
class ConsoleLog;

// The console window: shows the log and forwards its buttons to ConsoleLog. Closing only hides
// it; it lives as long as the program.
class FrmConsole : public QWidget {
    Q_OBJECT
public:
    explicit FrmConsole(ConsoleLog& log, QWidget* parent = nullptr);

    // The one console window, made (and the log loaded) on first use.
    static FrmConsole& instance();

    QPlainTextEdit* txtData = nullptr;
    QCheckBox* chkWriteLogs = nullptr;
    QPushButton* cmdSave = nullptr;
    QPushButton* cmdClear = nullptr;
    QPushButton* cmdPrint = nullptr;
    QPushButton* cmdHide = nullptr;
    QToolButton* lblOptions = nullptr;
    QMenu* mnuMenu = nullptr;
    QAction* mnuSaveAs = nullptr;
    QAction* mnuPrint = nullptr;

    void cmdSave_Click();
    void cmdClear_Click();
    void cmdPrint_Click();
    void cmdHide_Click() { hide(); }
    void mnuSaveAs_Click() { cmdSave_Click(); }
    void mnuPrint_Click() { cmdPrint_Click(); }
    void chkWriteLogs_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void applyWriteState(bool enabled);
    void resetText();
    void appendLine(const QString& line);

    ConsoleLog& m_log;
};
