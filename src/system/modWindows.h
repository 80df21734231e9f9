#pragma once
#include <QRect>
#include <QString>

class MainContext;
class QDialog;
class QWidget;

// Window places in settings, in twips, under "Position_{name}".
namespace modWindows {

int twipsToPixels(int twips, const QWidget* widget = nullptr);
int pixelsToTwips(int pixels, const QWidget* widget = nullptr);

void window_SavePosition(QWidget* window, const QString& name, int margin);
void window_RestorePosition(QWidget* window, const QString& name, int margin);
void window_SetAlwaysOnTop(QWidget* window, bool onTop);
bool window_IsAlwaysOnTop(const QWidget* window);

// Shows `dialog` modally to `owner` with ModalWindowOpen set for the time it is up; an owner on
// top of all windows lets go of that for the time, or the dialog would open behind it. With
// `releaseAfter` the dialog is deleted afterwards. The dialog's result.
int window_ShowModal(MainContext& ctx, QDialog* dialog, QWidget* owner, bool releaseAfter);
// The system's about box, handled as window_ShowModal handles a dialog.
void window_ShowAboutWindows(MainContext& ctx, const QString& title, QWidget* owner,
                             const QString& text);

// The task list: `show` false gives the window the skip-taskbar hint.
void window_ShowInTaskbar(QWidget* window, bool show);
void window_CenterOnScreen(QWidget* window, int margin);
// Keeps a window on its screen, 480 twips clear of the edges when it is too big.
void window_FitToScreen(QWidget* window);
// Twips between the bottom of the work area and the bottom of the screen.
int system_TaskbarHeight(const QWidget* window = nullptr);

// Small questions about the system.
QString system_WindowsName();
bool system_IsConnected();
// Asks the desktop to keep the screen saver off (false) or lets it run again (true).
void system_SetScreenSaver(bool active);
bool shell_Open(const QString& file, const QString& folder = {});
bool shell_SendMail(const QString& address, const QString& subject);

void mnuHideInTheTaskManager_Click(MainContext& ctx, QWidget* mainWindow);

// Moves (and if need be shrinks) the window, frame included, onto the free area of the screen
// that holds most of it.
void window_KeepOnScreen(QWidget* window);
// Centres the window on its screen's free area.
void window_Center(QWidget* window);
// `frame` moved and cut to lie inside `area`.
QRect clampToArea(QRect frame, const QRect& area);

} // namespace modWindows
