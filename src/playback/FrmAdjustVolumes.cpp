#include "playback/FrmAdjustVolumes.h"

#include "core/MainContext.h"
#include "playback/AdjustVolumes.h"
#include "ui/CommandBinding.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

FrmAdjustVolumes::FrmAdjustVolumes(MainContext& ctx, QWidget* parent)
    : QWidget(parent), m_rules(AdjustVolumes::of(ctx)) {
    setObjectName(QStringLiteral("FrmAdjustVolumes"));
    setAccessibleName(QStringLiteral("Adjust Volumes"));
    resize(600, 380);
    Commands& c = m_rules.controls();

    lblCaption = ui_Named(new QLabel(QStringLiteral("Specific media volume settings:"), this),
                          "lblCaption", "Specific media volume settings");
    lstvItems = ui_Named(new ListView(&m_rules.lstvItems(), this), "lstvItems", "Volumes list");
    lstvItems->setHeadersVisible(m_rules.headersVisible());
    lstvItems->setEnabled(m_rules.lstvItems().isEnabled());
    chkAlwaysAdjust = ui_Named(new QCheckBox(c.caption(QStringLiteral("chkAlwaysAdjust")), this),
                               "chkAlwaysAdjust", "Always adjust volumes for songs in this list");
    ui_BindButton(chkAlwaysAdjust, c.action(QStringLiteral("chkAlwaysAdjust")));

    mnuMenu = new QMenu(this);
    mnuMenu->setObjectName(QStringLiteral("mnuMenu"));
    mnuMenu->addAction(c.action(QStringLiteral("mnuShowHeaders")));
    mnuMenu->addSeparator()->setObjectName(QStringLiteral("mnuList"));
    for (const char* name : {"mnuRemoveSelected", "mnuRemoveDeadFilenames", "mnuClear"})
        mnuMenu->addAction(c.action(QString::fromLatin1(name)));
    lblOptions = ui_Named(new QToolButton(this), "lblOptions", "Options");
    lblOptions->setText(QStringLiteral("Options »"));
    lblOptions->setAutoRaise(true);
    lblOptions->setPopupMode(QToolButton::InstantPopup);
    lblOptions->setMenu(mnuMenu);

    cmdHide = ui_Named(new QPushButton(QStringLiteral("&Hide"), this), "cmdHide", "Hide");
    cmdClear =
        ui_Named(new QPushButton(c.caption(QStringLiteral("cmdClear")), this), "cmdClear", "Clear");
    cmdBack = ui_Named(new QPushButton(QStringLiteral("« &Back"), this), "cmdBack", "Back");
    ui_BindButton(cmdClear, c.action(QStringLiteral("cmdClear")));
    connect(cmdHide, &QPushButton::clicked, this, &QWidget::hide);
    connect(cmdBack, &QPushButton::clicked, this, &QWidget::hide);

    auto* top = new QHBoxLayout;
    top->addWidget(lblCaption, 1);
    top->addWidget(lblOptions);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(chkAlwaysAdjust);
    buttons->addStretch();
    buttons->addWidget(cmdBack);
    buttons->addWidget(cmdClear);
    buttons->addWidget(cmdHide);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(lstvItems, 1);
    layout->addLayout(buttons);

    setWindowTitle(m_rules.caption());
    connect(&m_rules, &AdjustVolumes::captionChanged, this, &QWidget::setWindowTitle);
    connect(&m_rules, &AdjustVolumes::headersChanged, lstvItems, &ListView::setHeadersVisible);
    connect(&m_rules.lstvItems(), &ListModel::enabledChanged, lstvItems, &QWidget::setEnabled);
    connect(lstvItems, &ListView::contextMenuAt, this, [this](const QPoint& at) {
        if (m_rules.lstvItems().isEnabled()) mnuMenu->popup(at);
    });

    tmrWindowUpdate = new QTimer(this);
    tmrWindowUpdate->setObjectName(QStringLiteral("tmrWindowUpdate"));
    tmrWindowUpdate->setInterval(50);
    connect(tmrWindowUpdate, &QTimer::timeout, this, [this] { m_rules.tmrWindowUpdate_Timer(); });
}

FrmAdjustVolumes& FrmAdjustVolumes::showFor(MainContext& ctx) {
    static QPointer<FrmAdjustVolumes> window;
    static MainContext* owner = nullptr;
    if (!window || owner != &ctx) {
        window = new FrmAdjustVolumes(ctx);
        owner = &ctx;
        // The window shows the context's rules, so it goes with them.
        QObject::connect(&ctx, &QObject::destroyed, [w = window] { delete w.data(); });
    }
    window->show();
    window->raise();
    window->activateWindow();
    return *window;
}

void FrmAdjustVolumes::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
}

void FrmAdjustVolumes::showEvent(QShowEvent* event) {
    // The enabling follows the rows only while someone can see it.
    m_rules.tmrWindowUpdate_Timer();
    tmrWindowUpdate->start();
    fitColumns();
    QWidget::showEvent(event);
}

void FrmAdjustVolumes::hideEvent(QHideEvent* event) {
    tmrWindowUpdate->stop();
    QWidget::hideEvent(event);
}

void FrmAdjustVolumes::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitColumns();
}

void FrmAdjustVolumes::fitColumns() {
    const int width = lstvItems->viewport()->width();
    const int artist = width / 5, title = width / 5, volume = 60;
    // The file name takes the rest, less a margin for the scroll bar (360 twips).
    lstvItems->setColumnWidths(
        {artist, title, volume, qMax(60, width - artist - title - volume - 24)});
}
