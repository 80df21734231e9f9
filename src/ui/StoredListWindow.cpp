#include "ui/StoredListWindow.h"

#include "core/MainContext.h"
#include "ui/ListView.h"

#include <QCloseEvent>
#include <QTimer>

StoredListWindow::StoredListWindow(std::function<void()> tick, int numberColumn, QWidget* parent)
    : QWidget(parent), m_tick(std::move(tick)), m_numberColumn(numberColumn) {
    tmrWindowUpdate = new QTimer(this);
    tmrWindowUpdate->setObjectName(QStringLiteral("tmrWindowUpdate"));
    tmrWindowUpdate->setInterval(50);
    connect(tmrWindowUpdate, &QTimer::timeout, this, [this] { m_tick(); });
}

void StoredListWindow::adopt(MainContext& ctx, QWidget* window) {
    // The window shows the context's rules, so it goes with them.
    QObject::connect(&ctx, &QObject::destroyed,
                     [w = QPointer<QWidget>(window)] { delete w.data(); });
}

void StoredListWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
}

void StoredListWindow::showEvent(QShowEvent* event) {
    // The enabling follows the rows only while someone can see it.
    m_tick();
    tmrWindowUpdate->start();
    fitColumns();
    QWidget::showEvent(event);
}

void StoredListWindow::hideEvent(QHideEvent* event) {
    tmrWindowUpdate->stop();
    QWidget::hideEvent(event);
}

void StoredListWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitColumns();
}

void StoredListWindow::fitColumns() {
    if (!lstvItems) return;
    const int width = lstvItems->viewport()->width();
    const int artist = width / 5, title = width / 5;
    // The file name takes the rest, less a margin for the scroll bar (360 twips).
    lstvItems->setColumnWidths(
        {artist, title, m_numberColumn, qMax(60, width - artist - title - m_numberColumn - 24)});
}
