#include "ui/FocusColour.h"

#include "core/Colors.h"

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
        QPalette p = m_box->palette();
        p.setColor(QPalette::Base, Colors::fromColorRef(colorRef, p));
        m_box->setPalette(p);
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
