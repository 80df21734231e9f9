#include "playback/FrmQueue.h"

#include "core/MainContext.h"
#include "ui/CommandBinding.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

FrmQueue::FrmQueue(MainContext& ctx, QWidget* parent) : QDialog(parent), m_rules(ctx) {
    setObjectName(QStringLiteral("FrmQueue"));
    setAccessibleName(QStringLiteral("Advanced Queue"));
    setWindowTitle(QStringLiteral("Advanced Queue"));
    setModal(true);

    auto* group = new QGroupBox(this);
    auto* groupLayout = new QVBoxLayout(group);
    const char* captions[] = {"Change by Artist...", "Change by Album...", "Change by Year...",
                              "Change by Genre..."};
    for (int i = 0; i < 4; ++i) {
        opOptions[i] = ui_Named(new QRadioButton(QString::fromLatin1(captions[i]), group),
                                "opOptions", captions[i]);
        opOptions[i]->setProperty("index", i);
        groupLayout->addWidget(opOptions[i]);
        connect(opOptions[i], &QRadioButton::clicked, this, [this, i] { opOptions_Click(i); });
    }
    cmbSearch = ui_Named(new QComboBox(this), "cmbSearch", "Search criteria");
    cmbSearch->setEditable(true);
    cmbSearch->setInsertPolicy(QComboBox::NoInsert);
    cmbSearch->installEventFilter(this);
    cmbSearch->lineEdit()->installEventFilter(this);
    cmbOption = ui_Named(new QComboBox(this), "cmbOption", "Change each song to");
    chkSearchID3v2 =
        ui_Named(new QCheckBox(QStringLiteral("Search ID3v2 instead of ID3v1 (slower)..."), this),
                 "chkSearchID3v2", "Search ID3v2 instead of ID3v1");
    cmdUpdate = ui_Named(new QPushButton(QStringLiteral("&Update"), this), "cmdUpdate", "Update");
    cmdBack = ui_Named(new QPushButton(QStringLiteral("« &Back"), this), "cmdBack", "Back");
    cmdClose = ui_Named(new QPushButton(QStringLiteral("&Close"), this), "cmdClose", "Close");

    auto* form = new QFormLayout;
    form->addRow(group);
    form->addRow(cmbSearch);
    form->addRow(QStringLiteral("Change each song to:"), cmbOption);
    form->addRow(chkSearchID3v2);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack);
    buttons->addStretch();
    buttons->addWidget(cmdUpdate);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);

    connect(cmdUpdate, &QPushButton::clicked, this, &FrmQueue::cmdUpdate_Click);
    connect(cmdBack, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(chkSearchID3v2, &QCheckBox::toggled, this,
            [this](bool on) { m_rules.chkSearchID3v2 = on; });

    // Form_Load.
    m_rules.Form_Load();
    cmbOption->addItems(m_rules.cmbOption);
    cmbOption->setCurrentIndex(0);
    opOptions[0]->setChecked(true);
    opOptions_Click(0);
}

void FrmQueue::showModal(MainContext& ctx, QWidget* parent) {
    FrmQueue dialog(ctx, parent ? parent : QApplication::activeWindow());
    const bool wasOpen = ctx.ModalWindowOpen;
    ctx.ModalWindowOpen = true;
    dialog.exec();
    ctx.ModalWindowOpen = wasOpen;
}

void FrmQueue::opOptions_Click(int index) {
    m_rules.opOptions_Click(index);
    cmbSearch->clear();
    cmbSearch->addItems(m_rules.cmbSearch);
    cmbSearch->setCurrentIndex(-1);
    cmbSearch->setEditText(QString());
}

void FrmQueue::cmdUpdate_Click() {
    m_rules.cmbSearchText = cmbSearch->currentText();
    m_rules.cmbOptionText = cmbOption->currentText();
    m_rules.chkSearchID3v2 = chkSearchID3v2->isChecked();
    setControlsEnabled(false);
    m_rules.cmdUpdate_Click();
    setControlsEnabled(true);
}

void FrmQueue::setControlsEnabled(bool on) {
    for (QRadioButton* o : opOptions)
        o->setEnabled(on);
    cmbSearch->setEnabled(on);
    cmbOption->setEnabled(on);
    chkSearchID3v2->setEnabled(on);
}

bool FrmQueue::eventFilter(QObject* watched, QEvent* event) {
    // The criterion box is tinted while it has the focus.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        QPalette p = cmbSearch->palette();
        p.setColor(QPalette::Base, event->type() == QEvent::FocusIn ? QColor(0xE6, 0xE6, 0xFA)
                                                                    : QColor(0xFF, 0xFF, 0xFF));
        p.setColor(QPalette::Text, Qt::black); // both tints are light, whatever the theme
        cmbSearch->setPalette(p);
        cmbSearch->lineEdit()->setPalette(p);
    }
    return QDialog::eventFilter(watched, event);
}
