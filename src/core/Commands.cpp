#include "core/Commands.h"

#include <QSignalBlocker>

Commands::Commands(QObject* parent) : QObject(parent) {}

QAction* Commands::action(const QString& name) {
    auto it = m_actions.constFind(name);
    if (it != m_actions.constEnd()) return *it;
    auto* a = new QAction(name, this);
    a->setObjectName(name);
    m_actions.insert(name, a);
    connect(a, &QAction::triggered, this, [this, a, name] {
        if (a->isCheckable()) {
            // Undo the automatic toggle: the handler sets the mark itself.
            const QSignalBlocker block(a);
            a->setChecked(!a->isChecked());
        }
        run(name);
    });
    return a;
}

QAction* Commands::add(const QString& name, const QString& text, bool checkable) {
    QAction* a = action(name);
    a->setText(text);
    a->setCheckable(checkable);
    return a;
}

QAction* Commands::addCaption(const QString& name, const QString& text) {
    QAction* a = action(name);
    if (a->text().isEmpty() || a->text() == name) a->setText(text);
    return a;
}

void Commands::setHandler(const QString& name, std::function<void()> handler) {
    action(name);
    m_handlers.insert(name, std::move(handler));
}

bool Commands::run(const QString& name) {
    auto it = m_handlers.constFind(name);
    if (it == m_handlers.constEnd()) return false;
    const auto handler = *it; // the handler may replace itself
    handler();
    return true;
}

bool Commands::runIfEnabled(const QString& name) {
    return isEnabled(name) && run(name);
}

void Commands::setChecked(const QString& name, bool on) {
    QAction* a = action(name);
    if (!a->isCheckable()) a->setCheckable(true);
    a->setChecked(on);
}

void Commands::disableUnbuilt(const QStringList& containers,
                              const QHash<QString, QString>& forwarders) {
    for (auto it = m_actions.constBegin(); it != m_actions.constEnd(); ++it) {
        const QString& name = it.key();
        if (it.value()->isSeparator() || containers.contains(name)) continue;
        const QString target = forwarders.value(name, name);
        if (!m_handlers.contains(target) || (target != name && m_unavailable.contains(target))) {
            m_unavailable.insert(name);
            it.value()->setEnabled(false);
        }
    }
}
