#include "ui/FrmOptions.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"
#include "playlists/PlaylistFiles.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

FrmOptions::FrmOptions(MainContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmOptions"));
    setWindowTitle(QStringLiteral("%1 Options").arg(App::Title()));
    setAccessibleName(windowTitle());
    auto* layout = new QVBoxLayout(this);

    m_options = new QButtonGroup(this);
    const QStringList captions = {QStringLiteral("Option:  Do nothing..."),
                                  QStringLiteral("Option:  Play playlist last used..."),
                                  QStringLiteral("Option:  Play this playlist...")};
    for (int i = 0; i < captions.size(); ++i) {
        auto* option = new QRadioButton(captions[i], this);
        option->setObjectName(QStringLiteral("opOption_%1").arg(i));
        option->setAccessibleName(captions[i]);
        m_options->addButton(option, i);
        layout->addWidget(option);
    }
    m_options->button(0)->setChecked(true);

    m_playlist = new QComboBox(this);
    m_playlist->setObjectName(QStringLiteral("cmbPlaylist"));
    m_playlist->setAccessibleName(QStringLiteral("Playlist"));
    m_playlist->addItems(playlistEntries());
    // Picking a playlist means playing it.
    connect(m_playlist, &QComboBox::activated, this, [this](int index) {
        if (index > 0) m_options->button(2)->setChecked(true);
    });
    layout->addWidget(m_playlist);

    m_always = new QCheckBox(QStringLiteral("Always show this window..."), this);
    m_always->setObjectName(QStringLiteral("chkAlwaysShow"));
    m_always->setAccessibleName(m_always->text());
    m_always->setChecked(
        settings_IsOn(QStringLiteral("Settings"), QStringLiteral("ShowOptionsWindow")));
    connect(m_always, &QCheckBox::toggled, this, [](bool on) {
        settings_Write(QStringLiteral("Settings"), QStringLiteral("ShowOptionsWindow"),
                       on ? QStringLiteral("1") : QStringLiteral("0"));
    });
    layout->addWidget(m_always);

    auto* next = new QPushButton(QStringLiteral("&Next"), this);
    next->setObjectName(QStringLiteral("cmdNext"));
    next->setAccessibleName(QStringLiteral("Next"));
    next->setDefault(true);
    connect(next, &QPushButton::clicked, this, &FrmOptions::cmdNext_Click);
    layout->addWidget(next, 0, Qt::AlignRight);
}

QStringList FrmOptions::playlistEntries() {
    QStringList entries{QString::fromUtf16(kSelectPlaylist)};
    const QFileInfoList files =
        QDir(App::file(QStringLiteral("Playlists")))
            .entryInfoList({QStringLiteral("*.spp")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo& f : files)
        entries << f.completeBaseName();
    return entries;
}

void FrmOptions::cmdNext_Click() {
    QString path;
    if (m_options->checkedId() == 1)
        path = settings_Read(QStringLiteral("Playback"), QStringLiteral("PlaylistUsed"));
    else if (m_options->checkedId() == 2 && m_playlist->currentIndex() > 0)
        path = playlist_PathOf(m_playlist->currentText());
    accept();
    if (path.isEmpty() || !QFileInfo::exists(path)) return;
    playlist_Select(m_ctx, path);
    cmbPlaylists_Click(m_ctx);
    window_WriteLog(QStringLiteral("%1 opened.").arg(QFileInfo(path).completeBaseName()));
    if (m_ctx.player_Play) m_ctx.player_Play(1);
}

void FrmOptions_install(MainContext& ctx, QWidget* owner) {
    ctx.commands().addCaption(QStringLiteral("mnuOptionsWindow"), QStringLiteral("&Options..."));
    ctx.commands().setHandler(QStringLiteral("mnuOptionsWindow"), [&ctx, owner] {
        FrmOptions dialog(ctx, owner);
        dialog.exec();
    });
}
