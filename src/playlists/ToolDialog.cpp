#include "playlists/ToolDialog.h"

#include "core/MainContext.h"
#include "core/Settings.h"
#include "ui/FocusColour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

namespace {
QWidget* mainWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("FrmMain")) return w;
    return nullptr;
}
} // namespace

ToolDialog::ToolDialog(MainContext& ctx, const QString& objectName, const QString& title,
                       QWidget* owner)
    : QDialog(owner ? owner : mainWindow()), m_ctx(ctx), m_wasModal(ctx.ModalWindowOpen) {
    setObjectName(objectName);
    setWindowTitle(title);
    setAccessibleName(title);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    ctx.ModalWindowOpen = true;
}

ToolDialog::~ToolDialog() {
    m_ctx.ModalWindowOpen = m_wasModal;
}

QPushButton* ToolDialog::button(const char* name, const QString& caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(QString::fromLatin1(name));
    b->setAccessibleName(QString(caption).remove(QLatin1Char('&')).remove(QStringLiteral("...")));
    return b;
}

QLineEdit* ToolDialog::textBox(const char* name, const QString& accessible) {
    auto* box = new QLineEdit(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(accessible);
    ui_HighlightOnFocus(box);
    return box;
}

int ToolDialog::checkedIndex(const QList<QAbstractButton*>& options) {
    for (int i = 0; i < options.size(); ++i)
        if (options[i]->isChecked()) return i;
    return -1;
}

int settings_ReadOption(const QString& section, const QStringList& keys, int fallback) {
    for (int i = 0; i < keys.size(); ++i)
        if (settings_Read(section, keys[i],
                          i == fallback ? QStringLiteral("1") : QStringLiteral("0")) ==
            QLatin1String("1"))
            return i;
    return fallback;
}

void settings_WriteOption(const QString& section, const QStringList& keys, int chosen) {
    for (int i = 0; i < keys.size(); ++i)
        settings_Write(section, keys[i], i == chosen ? QStringLiteral("1") : QStringLiteral("0"));
}
