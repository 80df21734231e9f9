#include "playlists/SendToMenu.h"

#include "core/MainContext.h"

SendToMenu::SendToMenu(QObject* parent) : QObject(parent) {
    m_items.append({QStringLiteral("[None]"), true, false});
}

SendToMenu& SendToMenu::of(MainContext& ctx) {
    if (auto* menu =
            ctx.findChild<SendToMenu*>(QStringLiteral("mnuItem"), Qt::FindDirectChildrenOnly))
        return *menu;
    auto* menu = new SendToMenu(&ctx);
    menu->setObjectName(QStringLiteral("mnuItem"));
    return *menu;
}

void SendToMenu::setItem(int index, const Item& item) {
    if (index < 0 || index >= count()) return;
    m_items[index] = item;
    Q_EMIT changed();
}

int SendToMenu::load(const QString& caption) {
    m_items.append({caption, true, true});
    Q_EMIT changed();
    return count() - 1;
}

void SendToMenu::unloadAbove0() {
    if (count() <= 1) return;
    m_items.resize(1);
    Q_EMIT changed();
}
