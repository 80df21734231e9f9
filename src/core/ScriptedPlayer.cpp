#include "core/ScriptedPlayer.h"

#include <QFileInfo>

void ScriptedPlayer::setFileName(const QString& name) {
    m_calls << QStringLiteral("load ") + name;
    m_file = name;
    m_loaded = QFileInfo::exists(name);
    m_startedSinceLoad = false;
    m_state = Stopped;
    m_position = 0;
}

void ScriptedPlayer::Play() {
    m_calls << QStringLiteral("Play");
    if (!m_loaded) return;
    if (!m_startedSinceLoad) m_played << m_file;
    m_startedSinceLoad = true;
    m_state = Playing;
}

void ScriptedPlayer::Pause() {
    m_calls << QStringLiteral("Pause");
    if (m_state == Playing) m_state = Paused;
}

void ScriptedPlayer::Stop() {
    m_calls << QStringLiteral("Stop");
    m_state = Stopped;
    m_position = 0;
    m_startedSinceLoad = false;
}

void ScriptedPlayer::setCurrentPosition(double seconds) {
    m_calls << QStringLiteral("seek %1").arg(seconds);
    if (m_loaded) m_position = qBound(0.0, seconds, m_duration);
}

void ScriptedPlayer::setVolume(int hundredthsDb) {
    m_calls << QStringLiteral("volume %1").arg(hundredthsDb);
    m_volume = hundredthsDb;
}

void ScriptedPlayer::setBalance(int hundredthsDb) {
    m_calls << QStringLiteral("balance %1").arg(hundredthsDb);
    m_balance = hundredthsDb;
}

void ScriptedPlayer::advance(double seconds) {
    if (m_state == Playing) m_position = qMin(m_duration, m_position + seconds);
}

void ScriptedPlayer::finish() {
    m_state = Stopped;
    m_position = 0;
    m_startedSinceLoad = false;
    Q_EMIT EndOfStream(8);
}
