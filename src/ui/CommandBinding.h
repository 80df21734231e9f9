#pragma once
#include <QString>

class QAbstractButton;
class QAction;
class QWidget;

// A button, or check box, that is the face of a command: it follows the command's enabled
// state (and check mark), and a click runs the command.
void ui_BindButton(QAbstractButton* button, QAction* command);

// Gives `w` its control name and the name a screen reader says.
template <typename W> W* ui_Named(W* w, const char* name, const char* accessible) {
    w->setObjectName(QString::fromLatin1(name));
    w->setAccessibleName(QString::fromLatin1(accessible));
    return w;
}
