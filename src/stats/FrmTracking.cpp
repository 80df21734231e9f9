#include "stats/FrmTracking.h"

#include "core/MainContext.h"
#include "stats/Tracking.h"
#include "ui/CommandBinding.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QToolButton* panel(QWidget* parent, const char* name, const char* text, QMenu* menu) {
    auto* b = ui_Named(new QToolButton(parent), name, text);
    b->setText(QString::fromUtf8(text));
    b->setAutoRaise(true);
    b->setPopupMode(QToolButton::InstantPopup);
    b->setMenu(menu);
    return b;
}

} // namespace

FrmTracking::FrmTracking(MainContext& ctx, QWidget* parent)
    : StoredListWindow([this] { m_rules.tmrWindowUpdate_Timer(); }, 60, parent),
      m_rules(Tracking::of(ctx)) {
    setObjectName(QStringLiteral("FrmTracking"));
    setAccessibleName(QStringLiteral("Tracking"));
    resize(620, 400);
    Commands& c = m_rules.controls();

    lblCaption = ui_Named(new QLabel(m_rules.label(), this), "lblCaption", "Tracking caption");
    lstvItems = ui_Named(new ListView(&m_rules.lstvItems(), this), "lstvItems", "Tracking list");
    lstvItems->setHeadersVisible(m_rules.headersVisible());
    chkAlwaysUseTracking =
        ui_Named(new QCheckBox(this), "chkAlwaysUseTracking", "Always track everything played");
    chkAlwaysUseTracking->setText(c.caption(QStringLiteral("chkAlwaysUseTracking")));
    ui_BindButton(chkAlwaysUseTracking, c.action(QStringLiteral("chkAlwaysUseTracking")));

    mnuOptions = new QMenu(this);
    mnuOptions->setObjectName(QStringLiteral("mnuOptions"));
    mnuOptions->addAction(c.action(QStringLiteral("mnuShowHeaders")));
    mnuOptions->addSeparator()->setObjectName(QStringLiteral("mnuList"));
    for (const char* name :
         {"mnuRemoveSelected", "mnuRemoveDeadFilenames", "mnuResetPlayCounts", "mnuClear"})
        mnuOptions->addAction(c.action(QString::fromLatin1(name)));
    mnuMenu = new QMenu(this);
    mnuMenu->setObjectName(QStringLiteral("mnuMenu"));
    for (const char* name :
         {"mnuTop10Entries", "mnuTop20Entries", "mnuTop30Entries", "mnuUseAllTopEntries"})
        mnuMenu->addAction(c.action(QString::fromLatin1(name)));
    lblOptions = panel(this, "lblOptions", "Options »", mnuOptions);
    lblPlaylist = panel(this, "lblPlaylist", "Playlist »", mnuMenu);

    cmdClear =
        ui_Named(new QPushButton(c.caption(QStringLiteral("cmdClear")), this), "cmdClear", "Clear");
    cmdPlay =
        ui_Named(new QPushButton(c.caption(QStringLiteral("cmdPlay")), this), "cmdPlay", "Play");
    cmdHide = ui_Named(new QPushButton(QStringLiteral("&Hide"), this), "cmdHide", "Hide");
    ui_BindButton(cmdClear, c.action(QStringLiteral("cmdClear")));
    ui_BindButton(cmdPlay, c.action(QStringLiteral("cmdPlay")));
    connect(cmdHide, &QPushButton::clicked, this, &QWidget::hide);

    auto* top = new QHBoxLayout;
    top->addWidget(lblCaption, 1);
    top->addWidget(lblPlaylist);
    top->addWidget(lblOptions);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(chkAlwaysUseTracking);
    buttons->addStretch();
    buttons->addWidget(cmdClear);
    buttons->addWidget(cmdPlay);
    buttons->addWidget(cmdHide);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(lstvItems, 1);
    layout->addLayout(buttons);

    setWindowTitle(m_rules.caption());
    connect(&m_rules, &Tracking::captionChanged, this, &QWidget::setWindowTitle);
    connect(&m_rules, &Tracking::labelChanged, lblCaption, &QLabel::setText);
    connect(&m_rules, &Tracking::headersChanged, lstvItems, &ListView::setHeadersVisible);
    lstvItems->setEnabled(m_rules.lstvItems().isEnabled());
    connect(&m_rules.lstvItems(), &ListModel::enabledChanged, lstvItems, &QWidget::setEnabled);
    connect(lstvItems, &ListView::contextMenuAt, this, [this](const QPoint& at) {
        if (m_rules.lstvItems().isEnabled()) mnuOptions->popup(at);
    });
    connect(lstvItems, &ListView::keyCodePressed, this,
            [this](int key, Qt::KeyboardModifiers, bool* handled) {
                if (m_rules.Form_KeyDown(key)) *handled = true;
            });
}
