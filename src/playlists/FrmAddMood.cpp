#include "playlists/FrmAddMood.h"

#include "core/Dialogs.h"
#include "core/modFiles.h"
#include "playlists/FrmEditMoods.h"
#include "playlists/Moods.h"
#include "ui/FocusColour.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

FrmAddMood* FrmAddMood::open(FrmEditMoods* editor) {
    auto* window = new FrmAddMood(editor);
    window->show();
    window->m_name->setFocus();
    return window;
}

FrmAddMood::FrmAddMood(FrmEditMoods* editor) : QWidget(editor, Qt::Dialog), m_editor(editor) {
    setObjectName(QStringLiteral("FrmAddMood"));
    setAccessibleName(QStringLiteral("Add Mood"));
    setWindowTitle(QStringLiteral("Add Mood"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* label = new QLabel(QStringLiteral("Mood name:"), this);
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("txtName"));
    m_name->setAccessibleName(QStringLiteral("Mood name"));
    label->setBuddy(m_name);
    ui_HighlightOnFocus(m_name);
    auto* add = new QPushButton(QStringLiteral("&Add"), this);
    add->setObjectName(QStringLiteral("cmdAdd"));
    add->setAccessibleName(QStringLiteral("Add"));
    add->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    connect(add, &QPushButton::clicked, this, &FrmAddMood::cmdAdd_Click);
    connect(m_name, &QLineEdit::returnPressed, this, &FrmAddMood::cmdAdd_Click);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(add);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_name);
    layout->addLayout(buttons);
}

void FrmAddMood::cmdAdd_Click() {
    if (m_name->text().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered a new mood "
                                       "name.\n\nThis function will not be proformed.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Adding Mood Error"));
        m_name->setFocus();
        return;
    }
    const QString name = text_ProperCase(m_name->text());
    const QString path = mood_FilePath(name);
    // A mood of the same name kept its file: its songs come back with it.
    if (m_editor)
        m_editor->window_AddMood(name, path.isEmpty() ? 0 : modFiles::file_CountLines(path));
    close();
}
