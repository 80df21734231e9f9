#include "playlists/FrmJumpToTime.h"

#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/wmpPlayer.h"
#include "tags/modMedia.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace {
const QString kTitle = QStringLiteral("Jump To Time Error");

void warn(const QString& text) {
    Dialogs::msgBox(text, Dialogs::vbExclamation, kTitle);
}
} // namespace

FrmJumpToTime* FrmJumpToTime::open(MainContext& ctx) {
    if (!ctx.playerActive()) return nullptr;
    auto* w = new FrmJumpToTime(ctx);
    w->show();
    w->txtMins->setFocus();
    return w;
}

FrmJumpToTime::FrmJumpToTime(MainContext& ctx)
    : ToolDialog(ctx, QStringLiteral("FrmJumpToTime"), QStringLiteral("Jump To Time")) {
    lblLength = new QLabel(
        QStringLiteral("Length:  ") + media_FormatSeconds(qint32(ctx.player().Duration())), this);
    lblLength->setObjectName(QStringLiteral("lblLength"));
    const auto digits = [](QLineEdit* box) {
        box->setValidator(
            new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,6}")), box));
    };
    txtMins = textBox("txtMins", QStringLiteral("Minutes"));
    txtSecs = textBox("txtSecs", QStringLiteral("Seconds"));
    digits(txtMins);
    digits(txtSecs);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Minutes:"), txtMins);
    form->addRow(QStringLiteral("&Seconds:"), txtSecs);
    cmdJump = button("cmdJump", QStringLiteral("&Jump"));
    cmdJump->setDefault(true);
    auto* cancel = button("cmdCancel", QStringLiteral("&Cancel"));
    connect(cmdJump, &QPushButton::clicked, this, &FrmJumpToTime::cmdJump_Click);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdJump);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblLength);
    layout->addLayout(form);
    layout->addLayout(buttons);
}

void FrmJumpToTime::cmdJump_Click() {
    if (txtMins->text().isEmpty())
        return warn(QStringLiteral("It has been detected that you have not entered anything into "
                                   "the Minutes section.\n\nThis function will not continue.\n"));
    if (txtSecs->text().isEmpty())
        return warn(QStringLiteral("It has been detected that you have not entered anything into "
                                   "the Seconds section.\n\nThis function will not continue.\n"));
    const qlonglong seconds = txtSecs->text().toLongLong();
    if (seconds > 59) {
        warn(QStringLiteral("It has been detected that the seconds you have entered are "
                            "invalid.\n\nThis function will not continue.\n"));
        txtSecs->setFocus();
        return;
    }
    wmpPlayer& player = m_ctx.player();
    // The song may have ended or been paused while the window was open.
    if (player.PlayState() != wmpPlayer::Playing)
        return warn(QStringLiteral("It has been detected that the player is no longer playing "
                                   "any music.\n\nThis function will not be proformed.\n"));
    const double target = double(txtMins->text().toLongLong() * 60 + seconds);
    if (target > player.Duration())
        return warn(QStringLiteral("The time that you have entered is larger than the duration "
                                   "of the song/video.\n\nThis function will not continue.\n"));
    player.setCurrentPosition(target);
    close();
}
