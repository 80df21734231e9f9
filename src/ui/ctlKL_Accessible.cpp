#include "ui/ctlKL_Accessible.h"

#include "ui/ctlKL_Digital.h"
#include "ui/ctlKL_wPanel.h"
#include "ui/ctlKL_wScrollbar.h"

#include <QAccessibleWidget>

namespace {

class ButtonAccessible : public QAccessibleWidget {
public:
    explicit ButtonAccessible(ctlKL_wPanel* w) : QAccessibleWidget(w, QAccessible::Button) {}
    QAccessible::State state() const override {
        QAccessible::State s = QAccessibleWidget::state();
        s.pressed = panel()->isPressed();
        s.disabled = s.disabled || !panel()->Enabled();
        return s;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction()) panel()->click();
    }

private:
    ctlKL_wPanel* panel() const { return static_cast<ctlKL_wPanel*>(widget()); }
};

class SliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SliderAccessible(ctlKL_wScrollbar* w) : QAccessibleWidget(w, QAccessible::Slider) {}
    void* interface_cast(QAccessible::InterfaceType t) override {
        if (t == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(t);
    }
    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Value) return QString::number(bar()->value());
        return QAccessibleWidget::text(t);
    }
    QVariant currentValue() const override { return bar()->value(); }
    // A value set by an assistive tool is the user's move.
    void setCurrentValue(const QVariant& value) override { bar()->scrollTo(value.toInt()); }
    QVariant maximumValue() const override { return bar()->Max(); }
    QVariant minimumValue() const override { return bar()->Min(); }
    QVariant minimumStepSize() const override { return 1; }

private:
    ctlKL_wScrollbar* bar() const { return static_cast<ctlKL_wScrollbar*>(widget()); }
};

class DigitalAccessible : public QAccessibleWidget {
public:
    explicit DigitalAccessible(ctlKL_Digital* w) : QAccessibleWidget(w, QAccessible::StaticText) {}
    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Value || t == QAccessible::Description)
            return ctlKL_Digital::FormatTime(
                qMax(0, static_cast<ctlKL_Digital*>(widget())->value()));
        return QAccessibleWidget::text(t);
    }
};

QAccessibleInterface* factory(const QString&, QObject* object) {
    if (auto* b = qobject_cast<ctlKL_wPanel*>(object); b && b->isPressable())
        return new ButtonAccessible(b);
    if (auto* s = qobject_cast<ctlKL_wScrollbar*>(object)) return new SliderAccessible(s);
    if (auto* d = qobject_cast<ctlKL_Digital*>(object)) return new DigitalAccessible(d);
    return nullptr;
}

} // namespace

void ctlKL_InstallAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(factory);
        return true;
    }();
    Q_UNUSED(installed);
}
