#include "playlists/FrmJumpToNumber.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace {
const QString kSection = QStringLiteral("JumpToTrackNumber");
const QStringList kKeys = {QStringLiteral("OptionSelectSong"),
                           QStringLiteral("OptionSelectSongAndPlayIt"),
                           QStringLiteral("OptionSelectSongAndSetItToNext")};
const QString kTitle = QStringLiteral("Jump To Track Number Error");
} // namespace

FrmJumpToNumber* FrmJumpToNumber::open(MainContext& ctx) {
    auto* w = new FrmJumpToNumber(ctx);
    w->show();
    w->txtNum->setFocus();
    return w;
}

FrmJumpToNumber::FrmJumpToNumber(MainContext& ctx)
    : ToolDialog(ctx, QStringLiteral("FrmJumpToNumber"), QStringLiteral("Jump To Track Number")) {
    txtNum = textBox("txtNum", QStringLiteral("Track number"));
    txtNum->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,9}")), txtNum));
    auto* label = new QLabel(QStringLiteral("Track &number:"), this);
    label->setBuddy(txtNum);
    const QString captions[3] = {QStringLiteral("Select the song..."),
                                 QStringLiteral("Select the song and play it..."),
                                 QStringLiteral("Select the song and set it to be played next...")};
    auto* layout = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(txtNum);
    layout->addLayout(row);
    for (int i = 0; i < 3; ++i) {
        opOptions[i] = new QRadioButton(captions[i], this);
        opOptions[i]->setObjectName(QStringLiteral("opOptions(%1)").arg(i));
        opOptions[i]->setAccessibleName(captions[i].chopped(3));
        layout->addWidget(opOptions[i]);
    }
    opOptions[settings_ReadOption(kSection, kKeys, 0)]->setChecked(true);
    cmdJump = button("cmdJump", QStringLiteral("&Jump"));
    cmdJump->setDefault(true);
    auto* cancel = button("cmdCancel", QStringLiteral("&Cancel"));
    connect(cmdJump, &QPushButton::clicked, this, &FrmJumpToNumber::cmdJump_Click);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdJump);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
}

void FrmJumpToNumber::cmdJump_Click() {
    ListModel& list = m_ctx.lstvPlaylist();
    if (txtNum->text().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("it has been detected that you have not entered a playlist "
                                       "number.\n\nThis function will not be proformed.\n"),
                        Dialogs::vbExclamation, kTitle);
        txtNum->setFocus();
        return;
    }
    bool ok = false;
    const qlonglong number = txtNum->text().toLongLong(&ok);
    if (!ok || number > list.count() || number <= 0) {
        Dialogs::msgBox(QStringLiteral("It has been detected that the track number you have "
                                       "entered is invalid.\n\nThis function will not continue.\n"),
                        Dialogs::vbExclamation, kTitle);
        txtNum->setFocus();
        return;
    }
    listview_SelectItem(list, int(number));
    if (opOptions[1]->isChecked()) {
        if (m_ctx.PlayerPaused) m_ctx.commands().run(QStringLiteral("mnuStop"));
        if (m_ctx.player_Play) m_ctx.player_Play(1);
    } else if (opOptions[2]->isChecked()) {
        m_ctx.commands().run(QStringLiteral("mnuPlayNext"));
    }
    settings_WriteOption(kSection, kKeys, checkedIndex({opOptions[0], opOptions[1], opOptions[2]}));
    close();
}
