#include "core/MainContext.h"

#include "core/Commands.h"
#include "playlists/ListModel.h"
#include "playlists/PlaylistCombo.h"

#include <QGuiApplication>

namespace {
QStringList playlistHeaders() {
    return {QStringLiteral("No."),    QStringLiteral("Artist:"), QStringLiteral("Title:"),
            QStringLiteral("Year:"),  QStringLiteral("Status:"), QStringLiteral("Length:"),
            QStringLiteral("Filename:")};
}
} // namespace

MainContext::MainContext(QObject* parent)
    : QObject(parent), m_commands(new Commands(this)),
      m_playlist(new ListModel(playlistHeaders(), this)), m_combo(new PlaylistCombo(this)) {
    m_playlist->setObjectName(QStringLiteral("lstvPlaylist"));
    m_combo->setObjectName(QStringLiteral("cmbPlaylists"));
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
