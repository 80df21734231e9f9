#pragma once
#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVariantMap>

class MainContext;
class QWidget;

// The player as the desktop sees it on the session bus (org.mpris.MediaPlayer2.veldor): status,
// song, position and volume, and the transport. Every method runs the menu command of the same
// meaning, after the call has been answered.
class Mpris : public QObject {
    Q_OBJECT
public:
    Mpris(MainContext& ctx, QWidget* mainWindow);
    ~Mpris() override;

    // False when the bus is not there or the name is taken.
    bool registered() const { return m_registered; }
    QString serviceName() const { return m_service; }

    // --- what the properties say
    QString playbackStatus() const;
    QVariantMap metadata() const;
    qlonglong position() const; // microseconds
    double volume() const;
    void setVolume(double value);
    bool canGoNext() const;
    bool canGoPrevious() const;
    bool canPlay() const;
    bool canPause() const;
    bool canSeek() const;
    QDBusObjectPath trackId() const;

    // --- methods (queued: the caller gets its answer before the command runs)
    void Play();
    void Pause();
    void PlayPause();
    void Stop();
    void Next();
    void Previous();
    void Seek(qlonglong offset);
    void SetPosition(const QDBusObjectPath& track, qlonglong position);
    void OpenUri(const QString& uri);
    void Raise();
    void Quit();

    // Compares with what was last announced and sends PropertiesChanged (and Seeked) for what
    // differs; also tells the messenger of a new song or a stop.
    void refresh();

Q_SIGNALS:
    void Seeked(qlonglong position);

private:
    void later(std::function<void()> f);
    void scheduleRefresh();
    void announce(const QString& interface, const QVariantMap& changed);
    void seekTo(double seconds);

    MainContext& m_ctx;
    QPointer<QWidget> m_main;
    bool m_registered = false;
    QString m_service;
    quint64 m_serial = 0;
    QString m_trackFile, m_album;
    QVariantMap m_lastPlayer;
    double m_lastPosition = 0;
    QElapsedTimer m_sinceRefresh;
    bool m_refreshQueued = false;
    QString m_lastStatus = QStringLiteral("Stopped");
};

class MprisRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ canQuit)
    Q_PROPERTY(bool CanRaise READ canRaise)
    Q_PROPERTY(bool HasTrackList READ hasTrackList)
    Q_PROPERTY(QString Identity READ identity)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ uriSchemes)
    Q_PROPERTY(QStringList SupportedMimeTypes READ mimeTypes)
public:
    explicit MprisRootAdaptor(Mpris* parent);
    bool canQuit() const { return true; }
    bool canRaise() const { return true; }
    bool hasTrackList() const { return false; }
    QString identity() const;
    QString desktopEntry() const { return QStringLiteral("veldor"); }
    QStringList uriSchemes() const { return {QStringLiteral("file")}; }
    QStringList mimeTypes() const;
public Q_SLOTS:
    void Raise() { m_mpris->Raise(); }
    void Quit() { m_mpris->Quit(); }

private:
    Mpris* m_mpris;
};

class MprisPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(QString LoopStatus READ loopStatus)
    Q_PROPERTY(double Rate READ rate WRITE setRate)
    Q_PROPERTY(bool Shuffle READ shuffle)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(double Volume READ volume WRITE setVolume)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(double MinimumRate READ rate)
    Q_PROPERTY(double MaximumRate READ rate)
    Q_PROPERTY(bool CanGoNext READ canGoNext)
    Q_PROPERTY(bool CanGoPrevious READ canGoPrevious)
    Q_PROPERTY(bool CanPlay READ canPlay)
    Q_PROPERTY(bool CanPause READ canPause)
    Q_PROPERTY(bool CanSeek READ canSeek)
    Q_PROPERTY(bool CanControl READ canControl)
public:
    explicit MprisPlayerAdaptor(Mpris* parent);
    QString playbackStatus() const { return m_mpris->playbackStatus(); }
    QString loopStatus() const { return QStringLiteral("None"); }
    double rate() const { return 1.0; }
    void setRate(double) {}
    bool shuffle() const { return false; }
    QVariantMap metadata() const { return m_mpris->metadata(); }
    double volume() const { return m_mpris->volume(); }
    void setVolume(double v) { m_mpris->setVolume(v); }
    qlonglong position() const { return m_mpris->position(); }
    bool canGoNext() const { return m_mpris->canGoNext(); }
    bool canGoPrevious() const { return m_mpris->canGoPrevious(); }
    bool canPlay() const { return m_mpris->canPlay(); }
    bool canPause() const { return m_mpris->canPause(); }
    bool canSeek() const { return m_mpris->canSeek(); }
    bool canControl() const { return true; }
public Q_SLOTS:
    void Play() { m_mpris->Play(); }
    void Pause() { m_mpris->Pause(); }
    void PlayPause() { m_mpris->PlayPause(); }
    void Stop() { m_mpris->Stop(); }
    void Next() { m_mpris->Next(); }
    void Previous() { m_mpris->Previous(); }
    void Seek(qlonglong offset) { m_mpris->Seek(offset); }
    void SetPosition(const QDBusObjectPath& track, qlonglong position) {
        m_mpris->SetPosition(track, position);
    }
    void OpenUri(const QString& uri) { m_mpris->OpenUri(uri); }
Q_SIGNALS:
    void Seeked(qlonglong Position);

private:
    Mpris* m_mpris;
};

// VELDOR's own interface on the same object: the messenger status line.
class MessengerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.veldor.Messenger")
public:
    explicit MessengerAdaptor(QObject* parent) : QDBusAbstractAdaptor(parent) {}
Q_SIGNALS:
    void StatusMessage(uint kind, const QString& text, const QByteArray& bytes);
};
