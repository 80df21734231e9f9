#pragma once
#include <QDialog>

class MainContext;
class QAbstractButton;
class QLineEdit;
class QPushButton;

// The base of the playlist tool windows: a modal dialog, shown without blocking its caller, that
// deletes itself on closing and keeps `ModalWindowOpen` set while it shows.
class ToolDialog : public QDialog {
    Q_OBJECT
public:
    // Over the main window unless `owner` is given.
    ToolDialog(MainContext& ctx, const QString& objectName, const QString& title,
               QWidget* owner = nullptr);
    ~ToolDialog() override;

protected:
    QPushButton* button(const char* name, const QString& caption);
    QLineEdit* textBox(const char* name, const QString& accessible);
    // Which of a group of option buttons is on; -1 for none.
    static int checkedIndex(const QList<QAbstractButton*>& options);

    MainContext& m_ctx;

private:
    bool m_wasModal;
};

// The options of a window kept as Booleans ("1" / "0") in one section, one key per option.
int settings_ReadOption(const QString& section, const QStringList& keys, int fallback);
void settings_WriteOption(const QString& section, const QStringList& keys, int chosen);
