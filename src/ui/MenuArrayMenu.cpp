#include "ui/MenuArrayMenu.h"

#include "playlists/MenuArray.h"

#include <QMenu>
#include <QPointer>
#include <QTimer>
#include <memory>

namespace {

struct Binding {
    QPointer<MenuArray> array;
    QPointer<QMenu> menu;
    QPointer<QAction> before;
    std::function<void(int)> onClick;
    QList<QPointer<QAction>> actions;
    bool dirty = true;

    void rebuild() {
        dirty = false;
        if (!array || !menu) return;
        for (const QPointer<QAction>& a : actions)
            delete a.data();
        actions.clear();
        for (int i = 0; i < array->count(); ++i) {
            const MenuArray::Item& item = array->item(i);
            // A caption is text: an ampersand in a name is shown, not a mnemonic.
            auto* a = new QAction(
                QString(item.caption).replace(QLatin1Char('&'), QStringLiteral("&&")), menu);
            a->setObjectName(array->objectName());
            a->setData(i);
            a->setVisible(item.visible);
            a->setEnabled(item.enabled);
            if (item.checked) {
                a->setCheckable(true);
                a->setChecked(true);
            }
            auto click = onClick;
            QObject::connect(a, &QAction::triggered, menu, [click, i] {
                if (click) click(i);
            });
            menu->insertAction(before, a);
            actions.append(a);
        }
    }
};

} // namespace

void menuArray_Bind(MenuArray& array, QMenu* menu, std::function<void(int)> onClick,
                    QAction* before) {
    auto binding = std::make_shared<Binding>();
    binding->array = &array;
    binding->menu = menu;
    binding->before = before;
    binding->onClick = std::move(onClick);
    binding->rebuild();
    QObject::connect(&array, &MenuArray::changed, menu, [binding] {
        if (binding->dirty) return;
        binding->dirty = true;
        QTimer::singleShot(0, binding->menu, [binding] {
            if (binding->dirty) binding->rebuild();
        });
    });
    QObject::connect(menu, &QMenu::aboutToShow, menu, [binding] {
        if (binding->dirty) binding->rebuild();
    });
}
