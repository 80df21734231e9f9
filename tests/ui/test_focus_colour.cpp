#include "ui/FocusColour.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

// A dark desktop theme for the time of one test: light text on dark fields.
struct DarkTheme {
    QPalette old = QApplication::palette();
    DarkTheme() {
        QPalette dark = old;
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::Text, QColor(235, 235, 235));
        QApplication::setPalette(dark);
    }
    ~DarkTheme() { QApplication::setPalette(old); }
};

void focus(QWidget* w, QEvent::Type type) {
    QFocusEvent event(type, Qt::TabFocusReason);
    QApplication::sendEvent(w, &event);
}

} // namespace

TEST(FocusColour, LightFieldsGetBlackTextUnderADarkTheme) {
    DarkTheme theme;
    QLineEdit box;
    QComboBox combo;
    combo.setEditable(true);
    ui_HighlightOnFocus(&box);
    ui_HighlightOnFocus(&combo);
    for (QWidget* w : {static_cast<QWidget*>(&box), static_cast<QWidget*>(combo.lineEdit())}) {
        focus(w, QEvent::FocusIn);
        EXPECT_EQ(w->palette().color(QPalette::Base), QColor(0xE6, 0xE6, 0xFA));
        EXPECT_EQ(w->palette().color(QPalette::Text), QColor(Qt::black));
        focus(w, QEvent::FocusOut);
        EXPECT_EQ(w->palette().color(QPalette::Base), QColor(Qt::white));
        EXPECT_EQ(w->palette().color(QPalette::Text), QColor(Qt::black));
    }
}

TEST(FocusColour, ADarkBackgroundGivesTheThemesTextBack) {
    DarkTheme theme;
    QLineEdit box;
    ui_SetBackground(&box, QColor(0xFA, 0xE6, 0xE6));
    EXPECT_EQ(box.palette().color(QPalette::Text), QColor(Qt::black));
    ui_SetBackground(&box, QColor(20, 20, 60));
    EXPECT_EQ(box.palette().color(QPalette::Text), QColor(235, 235, 235));
    // The user's own text colour on a dark field stays.
    EXPECT_EQ(ui_TextOn(QColor(20, 20, 60), QColor(Qt::yellow)), QColor(Qt::yellow));
}
