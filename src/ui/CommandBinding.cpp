#include "ui/CommandBinding.h"

#include <QAbstractButton>
#include <QAction>

void ui_BindButton(QAbstractButton* button, QAction* command) {
    const auto sync = [button, command] {
        button->setEnabled(command->isEnabled());
        if (button->isCheckable()) button->setChecked(command->isChecked());
    };
    sync();
    QObject::connect(command, &QAction::changed, button, sync);
    QObject::connect(button, &QAbstractButton::clicked, command, [command, sync] {
        // The command decides the check mark, not the click.
        command->trigger();
        sync();
    });
}
