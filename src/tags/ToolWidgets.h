#pragma once
#include <QString>

class MainContext;
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QWidget;

// Small makers shared by the tag tools' windows: every control gets its control name and an
// accessible name taken from its caption.
namespace ToolWidgets {

QString accessibleText(const QString& caption);
QLineEdit* edit(QWidget* parent, const QString& name, const QString& caption);
QCheckBox* check(QWidget* parent, const QString& name, const QString& caption);
QPushButton* button(QWidget* parent, const QString& name, const QString& caption);
QLabel* hiddenLabel(QWidget* parent, const QString& name);
QProgressBar* progressBar(QWidget* parent);
// The main window, owner of the tools' windows; nullptr in tests.
QWidget* mainWindow();
// Shows `window` application-modal, centred on its owner.
void showModal(QWidget* window);

} // namespace ToolWidgets

// "Save current playlist after changes are made...": saves unless no playlist is chosen.
void tags_SavePlaylistIfAsked(MainContext& ctx, bool checked);
