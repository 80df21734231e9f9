#include "tags/FrmMassTool.h"

#include "core/ListModel.h"
#include "core/MainContext.h"
#include "tags/TagBatch.h"
#include "tags/ToolWidgets.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QCloseEvent>
#include <QProgressBar>
#include <QPushButton>

using namespace ToolWidgets;

FrmMassTool::FrmMassTool(MainContext& ctx, QWidget* parent, const QString& name,
                         const QString& title)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx) {
    setObjectName(name);
    setWindowTitle(title);
    setAccessibleName(title);
    setAttribute(Qt::WA_DeleteOnClose);
}

void FrmMassTool::addRunRows(QBoxLayout* layout, QPushButton* action) {
    // Made after the tool's own controls, so the tab order runs from them to these.
    pbBar = progressBar(this);
    cmdBack = button(this, QStringLiteral("cmdBack"), QStringLiteral("« &Back"));
    cmdClose = button(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    cmdCancel = button(this, QStringLiteral("cmdCancel"), QStringLiteral("C&ancel"));
    cmdCancel->hide();
    setTabOrder(cmdBack, action);
    setTabOrder(action, cmdClose);
    connect(cmdBack, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        if (m_batch) m_batch->cancel();
    });
    m_action = action;
    action->setDefault(true);
    auto* progress = new QHBoxLayout;
    progress->addWidget(pbBar, 1);
    progress->addWidget(cmdCancel);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack);
    buttons->addStretch();
    buttons->addWidget(action);
    buttons->addWidget(cmdClose);
    layout->addLayout(progress);
    layout->addLayout(buttons);
}

void FrmMassTool::startRun(TagBatch* batch, const QList<QWidget*>& inputs) {
    m_batch = batch;
    m_inputs = inputs;
    setRunning(true);
    pbBar->setMaximum(m_ctx.lstvPlaylist().count());
    pbBar->setValue(0);
    connect(batch, &TagBatch::progress, pbBar, &QProgressBar::setValue);
    connect(batch, &TagBatch::finished, this, &FrmMassTool::batchFinished);
    batch->start();
}

void FrmMassTool::setRunning(bool running) {
    for (QWidget* w : m_inputs)
        w->setEnabled(!running);
    for (QWidget* w : {static_cast<QWidget*>(cmdBack), static_cast<QWidget*>(cmdClose),
                       static_cast<QWidget*>(m_action)})
        if (w) w->setEnabled(!running);
    pbBar->setVisible(running);
    cmdCancel->setVisible(running);
}

void FrmMassTool::batchFinished() {
    m_batch->deleteLater();
    m_batch = nullptr;
    runEnded();
    setRunning(false);
    Q_EMIT runFinished();
    if ((chkCloseWindow && chkCloseWindow->isChecked()) || m_closeAfterRun) close();
}

void FrmMassTool::closeEvent(QCloseEvent* event) {
    // Closing while a run goes on stops it after the file in hand; the window waits for that.
    if (m_batch) {
        m_batch->cancel();
        m_closeAfterRun = true;
        event->ignore();
        return;
    }
    QWidget::closeEvent(event);
}
