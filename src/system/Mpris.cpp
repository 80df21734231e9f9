#include "system/Mpris.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/SliderModel.h"
#include "core/modControls.h"
#include "core/wmpPlayer.h"
#include "playlists/PlaylistRows.h"
#include "system/Messenger.h"
#include "tags/clsID3v1.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <cmath>

namespace {
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kPlayerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
constexpr double kMicro = 1e6;

// Commands whose enabled state the Can* properties follow.
const char* const kWatched[] = {"mnuPlay", "mnuPause", "mnuStop", "mnuNextTrack", "mnuPrevious"};
} // namespace

Mpris::Mpris(MainContext& ctx, QWidget* mainWindow) : QObject(mainWindow), m_ctx(ctx) {
    m_main = mainWindow;
    new MprisRootAdaptor(this);
    new MprisPlayerAdaptor(this);
    new MessengerAdaptor(this);
    m_sinceRefresh.start();

    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected() && bus.registerObject(kPath, this, QDBusConnection::ExportAdaptors)) {
        m_service = QStringLiteral("org.mpris.MediaPlayer2.veldor");
        // A second copy (when several are allowed) takes a name of its own.
        if (!bus.registerService(m_service)) {
            m_service += QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
            bus.registerService(m_service);
        }
        m_registered = true;
    }

    // Changes are looked for when something may have changed: the position tick that already
    // runs, the volume, and the commands the Can* properties follow. Nothing new ticks.
    if (mainWindow)
        if (auto* tick = mainWindow->findChild<QTimer*>(QStringLiteral("tmrPosition")))
            connect(tick, &QTimer::timeout, this, &Mpris::scheduleRefresh);
    connect(&ctx.sldVolume(), &SliderModel::changed, this, &Mpris::scheduleRefresh);
    connect(&ctx, &MainContext::trayTipChanged, this, &Mpris::scheduleRefresh);
    for (const char* name : kWatched)
        connect(ctx.commands().action(QLatin1String(name)), &QAction::changed, this,
                &Mpris::scheduleRefresh);
    if (auto* player = findChild<MprisPlayerAdaptor*>())
        connect(this, &Mpris::Seeked, player, &MprisPlayerAdaptor::Seeked);
}

Mpris::~Mpris() {
    if (!m_registered) return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(m_service);
    bus.unregisterObject(kPath);
}

QString Mpris::playbackStatus() const {
    switch (m_ctx.player().PlayState()) {
    case wmpPlayer::Playing:
        return QStringLiteral("Playing");
    case wmpPlayer::Paused:
        return QStringLiteral("Paused");
    default:
        return QStringLiteral("Stopped");
    }
}

QDBusObjectPath Mpris::trackId() const {
    if (m_trackFile.isEmpty() || !m_ctx.playerActive())
        return QDBusObjectPath(QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack"));
    return QDBusObjectPath(QStringLiteral("/org/veldor/track/%1").arg(m_serial));
}

QVariantMap Mpris::metadata() const {
    QVariantMap m;
    m.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(trackId()));
    if (m_trackFile.isEmpty() || !m_ctx.playerActive()) return m;
    const auto& d = m_ctx.PlayingDetails;
    QString title = d.Title;
    if (title.isEmpty()) title = QFileInfo(d.Filename).completeBaseName();
    m.insert(QStringLiteral("xesam:title"), title);
    if (!d.Artist.isEmpty()) m.insert(QStringLiteral("xesam:artist"), QStringList{d.Artist});
    m.insert(QStringLiteral("xesam:album"), m_album);
    const double length = m_ctx.player().Duration();
    if (length > 0) m.insert(QStringLiteral("mpris:length"), qlonglong(length * kMicro));
    m.insert(QStringLiteral("xesam:url"), QUrl::fromLocalFile(d.Filename).toString());
    return m;
}

qlonglong Mpris::position() const {
    if (!m_ctx.playerActive() && m_ctx.player().PlayState() == wmpPlayer::Stopped) return 0;
    return qlonglong(std::max(0.0, m_ctx.player().CurrentPosition()) * kMicro);
}

double Mpris::volume() const {
    return m_ctx.sldVolume().value() / 100.0;
}

void Mpris::setVolume(double value) {
    if (!std::isfinite(value)) return;
    const int v = int(std::lround(std::clamp(value, 0.0, 1.0) * 100));
    m_ctx.sldVolume().setValue(v);
    if (m_ctx.player_Volume) m_ctx.player_Volume(m_ctx.sldVolume().value());
}

bool Mpris::canGoNext() const {
    return m_ctx.commands().isEnabled(QStringLiteral("mnuNextTrack"));
}
bool Mpris::canGoPrevious() const {
    return m_ctx.commands().isEnabled(QStringLiteral("mnuPrevious"));
}
bool Mpris::canPlay() const {
    return m_ctx.commands().isEnabled(QStringLiteral("mnuPlay")) ||
           m_ctx.player().PlayState() == wmpPlayer::Paused;
}
bool Mpris::canPause() const {
    return m_ctx.commands().isEnabled(QStringLiteral("mnuPause")) &&
           m_ctx.player().PlayState() != wmpPlayer::Stopped;
}
bool Mpris::canSeek() const {
    return m_ctx.player().PlayState() != wmpPlayer::Stopped && m_ctx.player().Duration() > 0;
}

void Mpris::later(std::function<void()> f) {
    QTimer::singleShot(0, this, [this, f = std::move(f)] {
        f();
        refresh();
    });
}

void Mpris::Play() {
    later([this] {
        if (m_ctx.player().PlayState() == wmpPlayer::Paused)
            m_ctx.commands().runIfEnabled(QStringLiteral("mnuPause"));
        else if (m_ctx.player().PlayState() == wmpPlayer::Stopped)
            m_ctx.commands().runIfEnabled(QStringLiteral("mnuPlay"));
    });
}

void Mpris::Pause() {
    later([this] {
        if (m_ctx.player().PlayState() == wmpPlayer::Playing)
            m_ctx.commands().runIfEnabled(QStringLiteral("mnuPause"));
    });
}

void Mpris::PlayPause() {
    later([this] {
        const int state = m_ctx.player().PlayState();
        if (state == wmpPlayer::Stopped)
            m_ctx.commands().runIfEnabled(QStringLiteral("mnuPlay"));
        else
            m_ctx.commands().runIfEnabled(QStringLiteral("mnuPause"));
    });
}

void Mpris::Stop() {
    later([this] { m_ctx.commands().runIfEnabled(QStringLiteral("mnuStop")); });
}
void Mpris::Next() {
    later([this] { m_ctx.commands().runIfEnabled(QStringLiteral("mnuNextTrack")); });
}
void Mpris::Previous() {
    later([this] { m_ctx.commands().runIfEnabled(QStringLiteral("mnuPrevious")); });
}
void Mpris::Raise() {
    later([this] { m_ctx.commands().run(QStringLiteral("mnuOpen")); });
}
void Mpris::Quit() {
    later([this] { m_ctx.commands().runIfEnabled(QStringLiteral("mnuExit")); });
}

void Mpris::seekTo(double seconds) {
    m_ctx.player().setCurrentPosition(seconds);
    m_lastPosition = seconds;
    m_sinceRefresh.restart();
    Q_EMIT Seeked(qlonglong(seconds * kMicro));
}

void Mpris::Seek(qlonglong offset) {
    later([this, offset] {
        if (!canSeek()) return; // nothing plays: nothing to move
        const double target = m_ctx.player().CurrentPosition() + double(offset) / kMicro;
        if (target >= m_ctx.player().Duration()) {
            // Past the end is the next song, as the protocol asks.
            m_ctx.commands().runIfEnabled(QStringLiteral("mnuNextTrack"));
            return;
        }
        seekTo(std::max(0.0, target));
    });
}

void Mpris::SetPosition(const QDBusObjectPath& track, qlonglong position) {
    later([this, track, position] {
        // A stale track, a negative place or one past the end is ignored.
        if (!canSeek() || track != trackId() || position < 0) return;
        const double seconds = double(position) / kMicro;
        if (seconds > m_ctx.player().Duration()) return;
        seekTo(seconds);
    });
}

void Mpris::OpenUri(const QString& uri) {
    later([this, uri] {
        const QUrl url(uri);
        const QString path = url.isLocalFile() ? url.toLocalFile() : QString();
        if (path.isEmpty() || !QFileInfo(path).isFile()) return;
        ListModel& list = m_ctx.lstvPlaylist();
        playlist_AddSong(m_ctx, QString(), QString(), QString(), path);
        listview_SelectItem(list, list.count());
        if (m_ctx.player_Play) m_ctx.player_Play(1);
    });
}

void Mpris::scheduleRefresh() {
    if (m_refreshQueued) return;
    m_refreshQueued = true;
    QTimer::singleShot(0, this, [this] {
        m_refreshQueued = false;
        refresh();
    });
}

void Mpris::announce(const QString& interface, const QVariantMap& changed) {
    if (!m_registered || changed.isEmpty()) return;
    QDBusMessage signal =
        QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    signal << interface << changed << QStringList();
    QDBusConnection::sessionBus().send(signal);
}

void Mpris::refresh() {
    const QString status = playbackStatus();
    const bool active = status != QLatin1String("Stopped");
    const QString file = m_ctx.player().FileName();
    bool newSong = false;
    if (active && file != m_trackFile) {
        m_trackFile = file;
        ++m_serial;
        newSong = true;
        // Read once a song, not at every look.
        clsID3v1 tag;
        tag.setFilename(m_ctx.PlayingDetails.Filename);
        m_album = tag.Album();
    }
    if (!active && m_lastStatus != QLatin1String("Stopped")) m_trackFile.clear();

    // A jump of the position that time does not explain is a seek somebody else made.
    const double now = m_ctx.player().CurrentPosition();
    if (active && !newSong) {
        const double expected =
            m_lastPosition +
            (m_lastStatus == QLatin1String("Playing") ? m_sinceRefresh.elapsed() / 1000.0 : 0.0);
        if (std::abs(now - expected) > 1.5) Q_EMIT Seeked(qlonglong(now * kMicro));
    }
    m_lastPosition = now;
    m_sinceRefresh.restart();

    QVariantMap current;
    current.insert(QStringLiteral("PlaybackStatus"), status);
    current.insert(QStringLiteral("Metadata"), metadata());
    current.insert(QStringLiteral("Volume"), volume());
    current.insert(QStringLiteral("CanGoNext"), canGoNext());
    current.insert(QStringLiteral("CanGoPrevious"), canGoPrevious());
    current.insert(QStringLiteral("CanPlay"), canPlay());
    current.insert(QStringLiteral("CanPause"), canPause());
    current.insert(QStringLiteral("CanSeek"), canSeek());
    QVariantMap changed;
    for (auto it = current.constBegin(); it != current.constEnd(); ++it)
        if (m_lastPlayer.value(it.key()) != it.value()) changed.insert(it.key(), it.value());
    m_lastPlayer = current;
    announce(kPlayerInterface, changed);

    // The status line follows song starts and stops while the item is checked.
    const bool messenger =
        m_ctx.commands().isChecked(QStringLiteral("mnuMessengerShowSongsBeingPlayed"));
    if (messenger && newSong)
        Messenger::messenger_Update(m_ctx.PlayingDetails.Title, m_ctx.PlayingDetails.Artist,
                                    QStringLiteral("Music"), QString(), QStringLiteral("{1} - {0}"),
                                    true);
    else if (messenger && !active && m_lastStatus != QLatin1String("Stopped"))
        Messenger::messenger_Update(QString(), QString(), QStringLiteral("Music"), QString(),
                                    QStringLiteral("{0} - {1}"), false);
    m_lastStatus = status;
}

MprisRootAdaptor::MprisRootAdaptor(Mpris* parent) : QDBusAbstractAdaptor(parent), m_mpris(parent) {
    setAutoRelaySignals(false);
}

QString MprisRootAdaptor::identity() const {
    return App::Title();
}

QStringList MprisRootAdaptor::mimeTypes() const {
    return {QStringLiteral("audio/mpeg"), QStringLiteral("audio/x-wav"),
            QStringLiteral("audio/ogg"),  QStringLiteral("audio/flac"),
            QStringLiteral("video/mp4"),  QStringLiteral("video/x-msvideo")};
}

MprisPlayerAdaptor::MprisPlayerAdaptor(Mpris* parent)
    : QDBusAbstractAdaptor(parent), m_mpris(parent) {}
