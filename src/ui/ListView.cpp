#include "ui/ListView.h"

#include "core/ListModel.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QMimeData>

namespace {
const char* kRowMime = "application/x-veldor-row";

int classicKeyCode(int qtKey) {
    switch (qtKey) {
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Menu:
        return 93;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Escape:
        return 27;
    default:
        if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
            return qtKey; // same codes as the classic letters
        if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12) return 112 + (qtKey - Qt::Key_F1);
        return 0;
    }
}
} // namespace

ListView::ListView(ListModel* model, QWidget* parent) : QTreeView(parent), m_model(model) {
    setModel(model);
    setSelectionModel(model->selectionModel());
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true); // keeps 100,000 rows as quick as 100
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setTextElideMode(Qt::ElideRight);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(true);
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(false);
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT columnClicked(section + 1); });
    connect(model, &ListModel::ensureVisibleRequested, this, [this](int row) {
        scrollTo(m_model->index(row, 0), QAbstractItemView::EnsureVisible);
    });
}

void ListView::setColumnWidths(const QList<int>& widths) {
    for (int i = 0; i < widths.size() && i < m_model->columns(); ++i)
        setColumnWidth(i, widths[i]);
}

void ListView::setHeadersVisible(bool on) {
    setHeaderHidden(!on);
}

void ListView::setBackgroundColor(const QColor& color) {
    QPalette p = palette();
    p.setColor(QPalette::Base, color);
    setPalette(p);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    const int code = classicKeyCode(event->key());
    bool handled = false;
    if (code) Q_EMIT keyCodePressed(code, event->modifiers(), &handled);
    if (handled) {
        event->accept();
        return;
    }
    if (code == 39 || code == 37) return; // arrows left and right belong to the list's own rules
    QTreeView::keyPressEvent(event);
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeView::mouseDoubleClickEvent(event);
    if (indexAt(event->position().toPoint()).isValid()) Q_EMIT rowDoubleClicked();
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    Q_EMIT contextMenuAt(event->globalPos());
}

void ListView::startDrag(Qt::DropActions) {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) return;
    Q_EMIT rowDragStarted(current.row());
    auto* mime = new QMimeData;
    mime->setData(QString::fromLatin1(kRowMime), QByteArray::number(current.row()));
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->exec(Qt::MoveAction);
}

void ListView::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasFormat(QString::fromLatin1(kRowMime)) || event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else
        event->ignore();
}

void ListView::dragMoveEvent(QDragMoveEvent* event) {
    QTreeView::dragMoveEvent(event);
    if (event->mimeData()->hasFormat(QString::fromLatin1(kRowMime)) || event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void ListView::dropEvent(QDropEvent* event) {
    const QMimeData* mime = event->mimeData();
    if (mime->hasFormat(QString::fromLatin1(kRowMime))) {
        const QModelIndex target = indexAt(event->position().toPoint());
        event->setDropAction(Qt::CopyAction); // the rows are moved by the list's own rule
        event->accept();
        Q_EMIT rowDropped(target.isValid() ? target.row() : -1);
        return;
    }
    if (mime->hasUrls()) {
        QStringList paths;
        for (const QUrl& url : mime->urls())
            if (url.isLocalFile()) paths.append(url.toLocalFile());
        event->acceptProposedAction();
        Q_EMIT filesDropped(paths);
    }
}
