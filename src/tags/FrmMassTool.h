#pragma once
#include <QList>
#include <QPointer>
#include <QWidget>

class MainContext;
class QBoxLayout;
class QCheckBox;
class QProgressBar;
class QPushButton;
class TagBatch;

// What the playlist's mass tools share around their run: Back, the action, Close, a progress
// bar with Cancel while the run goes on, and a close that waits for the file in hand.
class FrmMassTool : public QWidget {
    Q_OBJECT
public:
    // Made by addRunRows.
    QProgressBar* pbBar = nullptr;
    QPushButton* cmdBack = nullptr;
    QPushButton* cmdClose = nullptr;
    QPushButton* cmdCancel = nullptr;
    QCheckBox* chkCloseWindow = nullptr;

Q_SIGNALS:
    void runFinished();

protected:
    FrmMassTool(MainContext& ctx, QWidget* parent, const QString& name, const QString& title);

    // The progress row and the button row under `layout`, `action` between Back and Close.
    void addRunRows(QBoxLayout* layout, QPushButton* action);
    // Starts `batch` with `inputs` and the buttons disabled until it ends.
    void startRun(TagBatch* batch, const QList<QWidget*>& inputs);
    bool running() const { return !m_batch.isNull(); }
    TagBatch* batch() const { return m_batch; }
    // What the tool does with the result before the window is given back to the user.
    virtual void runEnded() {}

    void closeEvent(QCloseEvent* event) override;

    MainContext& m_ctx;

private:
    void setRunning(bool running);
    void batchFinished();

    QPointer<TagBatch> m_batch;
    QList<QWidget*> m_inputs;
    QPushButton* m_action = nullptr;
    bool m_closeAfterRun = false;
};
