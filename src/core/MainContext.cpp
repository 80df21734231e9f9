#include "core/MainContext.h"
#include "core/ShownText.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"
#include "core/ScriptedPlayer.h"
#include "core/SliderModel.h"

#include <QGuiApplication>

namespace {
QStringList playlistHeaders() {
    return {QStringLiteral("No."),      QStringLiteral("Artist:"), QStringLiteral("Title:"),
            QStringLiteral("Year:"),    QStringLiteral("Status:"), QStringLiteral("Length:"),
            QStringLiteral("Filename:")};
}
} // namespace

MainContext::MainContext(QObject* parent)
    : QObject(parent), m_commands(new Commands(this)),
      m_playlist(new ListModel(playlistHeaders(), this)), m_combo(new PlaylistCombo(this)),
      m_builtinPlayer(new ScriptedPlayer(this)), m_player(nullptr),
      m_position(new SliderModel(0, 100, 0, this)), m_volume(new SliderModel(0, 100, 50, this)),
      m_balance(new SliderModel(0, 100, 50, this)) {
    m_playlist->setObjectName(QStringLiteral("lstvPlaylist"));
    m_combo->setObjectName(QStringLiteral("cmbPlaylists"));
    m_position->setObjectName(QStringLiteral("sldPosition"));
    m_position->setEnabled(false);
    m_volume->setObjectName(QStringLiteral("sldVolume"));
    m_balance->setObjectName(QStringLiteral("sldBalance"));
    setPlayer(nullptr);
}

void MainContext::setPlayer(wmpPlayer* player) {
    if (m_endConnection) disconnect(m_endConnection);
    m_player = player ? player : m_builtinPlayer;
    m_endConnection =
        connect(m_player, &wmpPlayer::EndOfStream, this, [this] { Q_EMIT endOfStream(); });
}

void MainContext::setTrayTip(const QString& full) {
    // The tip is only ever shown.
    const QString text = text_Shown(full);
    if (text == TrayTip) return;
    TrayTip = text;
    Q_EMIT trayTipChanged(text);
}

MainContext::~MainContext() = default;

void MainContext::setStatusText(const QString& text) {
    m_status = text;
    Q_EMIT statusTextChanged(text);
}

void MainContext::beginBusy(const QString& statusText) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    PlaylistBusy = true;
    setStatusText(statusText);
    Q_EMIT busyChanged(true);
}

void MainContext::endBusy() {
    PlaylistBusy = false;
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        QGuiApplication::restoreOverrideCursor();
    Q_EMIT busyChanged(false);
}
