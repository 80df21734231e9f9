#include "tags/ToolWidgets.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "ui/FocusColour.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>

namespace ToolWidgets {

QString accessibleText(const QString& caption) {
    QString text = caption;
    text.remove(QLatin1Char('&'));
    text.remove(QStringLiteral("»")).remove(QStringLiteral("«"));
    while (text.endsWith(QLatin1Char('.')) || text.endsWith(QLatin1Char(':')))
        text.chop(1);
    return text.trimmed();
}

QLineEdit* edit(QWidget* parent, const QString& name, const QString& caption) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setAccessibleName(accessibleText(caption));
    ui_HighlightOnFocus(box);
    return box;
}

QCheckBox* check(QWidget* parent, const QString& name, const QString& caption) {
    auto* box = new QCheckBox(caption, parent);
    box->setObjectName(name);
    box->setAccessibleName(accessibleText(caption));
    return box;
}

QPushButton* button(QWidget* parent, const QString& name, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(accessibleText(caption));
    return b;
}

QLabel* hiddenLabel(QWidget* parent, const QString& name) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->hide();
    return label;
}

QProgressBar* progressBar(QWidget* parent) {
    auto* bar = new QProgressBar(parent);
    bar->setObjectName(QStringLiteral("pbBar"));
    bar->setAccessibleName(QStringLiteral("Progress"));
    bar->setMinimum(0);
    bar->setVisible(false);
    return bar;
}

QWidget* mainWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("FrmMain")) return w;
    return nullptr;
}

void showModal(QWidget* window) {
    window->setWindowModality(Qt::ApplicationModal);
    window->adjustSize();
    const QWidget* owner = window->parentWidget();
    const QRect area = owner ? owner->frameGeometry()
                             : (window->screen() ? window->screen()->availableGeometry() : QRect());
    if (area.isValid()) {
        QRect r = window->frameGeometry();
        r.moveCenter(area.center());
        window->move(r.topLeft());
    }
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace ToolWidgets

void tags_SavePlaylistIfAsked(MainContext& ctx, bool checked) {
    if (checked && ctx.cmbPlaylists().text().toLower() != QLatin1String("((select playlist))"))
        ctx.commands().run(QStringLiteral("mnuSave"));
}
