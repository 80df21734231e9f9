#include "ui/FocusColour.h"

#include "core/Colors.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QTimer>

namespace {

class FocusFilter : public QObject {
public:
    explicit FocusFilter(QWidget* box) : QObject(box), m_box(box) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn)
            paint(0xFAE6E6, true);
        else if (event->type() == QEvent::FocusOut)
            paint(0xFFFFFF, false);
        return false;
    }

private:
    void paint(qint64 colorRef, bool selectAll) {
        ui_SetBackground(m_box, Colors::fromColorRef(colorRef, m_box->palette()));
        QLineEdit* edit = qobject_cast<QLineEdit*>(m_box);
        if (auto* combo = qobject_cast<QComboBox*>(m_box)) edit = combo->lineEdit();
        // After the click that gave the focus has placed the cursor.
        if (selectAll && edit) QTimer::singleShot(0, edit, &QLineEdit::selectAll);
    }
    QWidget* m_box;
};

} // namespace

void ui_HighlightOnFocus(QWidget* box) {
    auto* filter = new FocusFilter(box);
    box->installEventFilter(filter);
    if (auto* combo = qobject_cast<QComboBox*>(box))
        if (combo->lineEdit()) combo->lineEdit()->installEventFilter(filter);
}

QColor ui_TextOn(const QColor& background, const QColor& text) {
    return qGray(background.rgb()) >= 128 ? QColor(Qt::black) : text;
}

void ui_SetBackground(QWidget* widget, const QColor& background) {
    QList<QWidget*> targets{widget};
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        if (combo->lineEdit()) targets.append(combo->lineEdit());
    for (QWidget* w : targets) {
        QPalette p = w->palette();
        p.setColor(QPalette::Base, background);
        // On a dark one the theme's text comes back, after a light one had made it black.
        p.setColor(QPalette::Text,
                   ui_TextOn(background, QApplication::palette(w).color(QPalette::Text)));
        w->setPalette(p);
    }
}
