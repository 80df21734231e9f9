#pragma once
#include <QObject>
#include <QTimer>

class MainContext;

// A walk over the playlist rows that keeps the window alive: rows are done in slices of a few
// milliseconds, each slice a turn of the event loop, and a cancel takes effect between two files.
// The subclass does one row; the batch keeps the progress, the busy state and the end.
class TagBatch : public QObject {
    Q_OBJECT
public:
    static constexpr int SliceMs = 8;

    TagBatch(MainContext& ctx, QObject* parent = nullptr);
    ~TagBatch() override;

    // Starts with the rows of the playlist as they are now; returns at once.
    void start();
    // Runs every slice at once (scripts and tests that have no use for the event loop).
    void runToEnd();
    void cancel() { m_cancelled = true; }
    bool isRunning() const { return m_running; }
    bool isCancelled() const { return m_cancelled; }
    int rowCount() const { return m_rows; }

Q_SIGNALS:
    // The 1-based row being done.
    void progress(int row);
    void finished(bool cancelled);

protected:
    // One row, 1-based. Messages to the user may be shown here.
    virtual void doRow(int row) = 0;
    // After each slice and at the end, to hand over what was done.
    virtual void endSlice(bool last) { (void)last; }
    virtual QString busyText() const = 0;

    MainContext& m_ctx;

private:
    void step();
    void finish();

    QTimer m_tick;
    int m_rows = 0;
    int m_next = 1;
    bool m_running = false;
    bool m_cancelled = false;
};
