#pragma once
#include <QPointer>
#include <QWidget>
#include <functional>

class ListView;
class MainContext;
class QTimer;

// A window over a list kept on disk (stored volumes, play counts): the list whose last column,
// the file name, takes the room the others leave; an enabling tick of 50 ms that runs only while
// the window shows; a close that only hides, since the list lives on.
class StoredListWindow : public QWidget {
    Q_OBJECT
public:
    // `tick` keeps the window's commands in step; `numberColumn` is the width of the third
    // column (the volume, the count).
    StoredListWindow(std::function<void()> tick, int numberColumn, QWidget* parent);

    ListView* lstvItems = nullptr;
    QTimer* tmrWindowUpdate = nullptr;

    // The one window of type W for `ctx`: made on first use, gone with the context; shown and
    // raised.
    template <class W> static W& showOnce(MainContext& ctx) {
        static QPointer<W> window;
        static MainContext* owner = nullptr;
        if (!window || owner != &ctx) {
            window = new W(ctx);
            owner = &ctx;
            adopt(ctx, window);
        }
        window->show();
        window->raise();
        window->activateWindow();
        return *window;
    }

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    static void adopt(MainContext& ctx, QWidget* window);
    void fitColumns();

    std::function<void()> m_tick;
    int m_numberColumn;
};
