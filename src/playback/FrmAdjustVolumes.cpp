#include "playback/FrmAdjustVolumes.h"

#include "core/MainContext.h"
#include "playback/AdjustVolumes.h"
#include "ui/CommandBinding.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

FrmAdjustVolumes::FrmAdjustVolumes(MainContext& ctx, QWidget* parent)
    : StoredListWindow([this] { m_rules.tmrWindowUpdate_Timer(); }, 60, parent),
      m_rules(AdjustVolumes::of(ctx)) {
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
}
