#include "playback/FrmVolume.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/SliderModel.h"
#include "playback/Sound.h"
#include "ui/CommandBinding.h"
#include "ui/SliderBinding.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QVBoxLayout>

FrmVolume::FrmVolume(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmVolume"));
    setAccessibleName(QStringLiteral("Volume"));
    setWindowTitle(QStringLiteral("Volume"));
    setAttribute(Qt::WA_DeleteOnClose);

    sldVolume = ui_Named(new QSlider(Qt::Vertical, this), "sldVolume", "Volume");
    sldVolume->setRange(0, 100);
    sldVolume->installEventFilter(this); // the keyboard never moves it
    chkMute = ui_Named(new QCheckBox(QStringLiteral("&Mute"), this), "chkMute", "Mute");
    cmdClose = ui_Named(new QPushButton(QStringLiteral("&Close"), this), "cmdClose", "Close");

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sldVolume, 1, Qt::AlignHCenter);
    layout->addWidget(chkMute);
    layout->addWidget(cmdClose);
    resize(110, 220);

    // The main slider's value seen from here: a move of either is a move of both.
    ui_BindSlider(sldVolume, m_ctx.sldVolume(), false);
    connect(chkMute, &QCheckBox::clicked, this, &FrmVolume::chkMute_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    Form_Load();
}

FrmVolume& FrmVolume::showFor(MainContext& ctx) {
    static QPointer<FrmVolume> window;
    if (!window) {
        window = new FrmVolume(ctx);
        QObject::connect(&ctx, &QObject::destroyed, [w = window] { delete w.data(); });
    } else {
        window->Form_Load();
    }
    window->show();
    window->raise();
    return *window;
}

void FrmVolume::Form_Load() {
    // Lower right, clear of the task bar, with a margin of 500 twips.
    if (const QScreen* screen = this->screen()) {
        const QRect free = screen->availableGeometry();
        const int margin = 500 / 15;
        move(free.right() - width() - margin, free.bottom() - height() - margin);
    }
    const bool muted = m_ctx.commands().isChecked(QStringLiteral("tbMute"));
    chkMute->setChecked(muted);
    sldVolume->setEnabled(!muted);
}

void FrmVolume::sldVolume_Scroll(int value) {
    // The main slider takes the value, and its scroll sets the output.
    m_ctx.sldVolume().scroll(value);
}

void FrmVolume::chkMute_Click() {
    mnuMute_Click(m_ctx);
    sldVolume->setEnabled(!chkMute->isChecked());
}

bool FrmVolume::eventFilter(QObject* watched, QEvent* event) {
    if (watched == sldVolume &&
        (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease))
        return true;
    return QWidget::eventFilter(watched, event);
}
