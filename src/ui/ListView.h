#pragma once
#include <QTreeView>

class ListModel;

// The view of any list of the program: a flat, multi-select report over a ListModel, sharing
// the model's selection. It turns the widget's events into the list's events (classic key codes,
// 1-based columns, rows dragged inside the list, files dropped from outside).
class ListView : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(ListModel* model, QWidget* parent = nullptr);
    ListModel* listModel() const { return m_model; }

    // Widths in pixels, one per column.
    void setColumnWidths(const QList<int>& widths);
    void setHeadersVisible(bool on);
    void setBackgroundColor(const QColor& color);

Q_SIGNALS:
    void columnClicked(int column); // 1-based, as the column headers count
    void keyCodePressed(int keyCode, Qt::KeyboardModifiers modifiers, bool* handled);
    void rowDoubleClicked();
    void contextMenuAt(const QPoint& globalPos);
    void rowDragStarted(int row);   // 0-based
    void rowDropped(int targetRow); // 0-based, -1 below the last row
    void filesDropped(const QStringList& paths);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    ListModel* m_model;
};
