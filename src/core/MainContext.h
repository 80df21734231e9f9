#pragma once
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

class Commands;
class ListModel;
class PlaylistCombo;
class SliderModel;
class wmpPlayer;

// What the main window shares with every subsystem: its public variables, its commands, the
// playlist rows and the playlist combo. Subsystems take it by reference, so a test builds one
// without any window.
class MainContext : public QObject {
    Q_OBJECT
public:
    explicit MainContext(QObject* parent = nullptr);
    ~MainContext() override;

    Commands& commands() { return *m_commands; }
    ListModel& lstvPlaylist() { return *m_playlist; }
    PlaylistCombo& cmbPlaylists() { return *m_combo; }

    // The media control. Until the engine is attached it is an engine that plays nothing.
    wmpPlayer& player() { return *m_player; }
    // The context does not own `player`; nullptr returns to the built-in one.
    void setPlayer(wmpPlayer* player);

    // The main window's sliders as values: position in seconds, volume and balance 0 to 100.
    SliderModel& sldPosition() { return *m_position; }
    SliderModel& sldVolume() { return *m_volume; }
    SliderModel& sldBalance() { return *m_balance; }

    // --- public variables of the main window
    bool ApplicationActive = false;
    bool WindowReady = false;
    bool PlaylistComboReady = false;
    bool WindowClosing = false;
    bool WindowWasMaximized = false;
    bool WindowShown = false;
    int SavedVolume = -1;
    bool PlaylistBusy = false;
    int RandomHistoryCount = 0;
    int RandomHistoryPosition = 0;
    // Random picks, oldest first.
    QStringList RandomFilenames;
    int PlayingRowIndex = 0; // 1-based, 0 for none
    bool PlayerPaused = false;
    QString PausedFilename;
    qint32 PausedPosition = 0;
    int TransportState = 1; // 0 playing, 1 stopped, 2 paused
    int PlayNextRowIndex = 0;
    bool StartedBySwitch = false;
    bool ModalWindowOpen = false;
    bool PlaylistDragActive = false;
    int PlaylistDragSource = 0;
    struct Details {
        QString Artist, Title, Filename;
    } PlayingDetails;
    // What the tray icon's tip says; kept up to date even while there is no tray.
    QString TrayTip;

    bool playerActive() const { return TransportState == 0 || TransportState == 2; }

    // --- the status bar's first panel and the hourglass
    void setStatusText(const QString& text);
    void setTrayTip(const QString& text);
    QString statusText() const { return m_status; }
    // Hourglass, PlaylistBusy and a progress line for a long row operation.
    void beginBusy(const QString& statusText);
    void endBusy();

    // --- routines of other parts, installed by the part that owns them; until then no-ops.
    std::function<void()> player_Stop;
    std::function<void(int)> player_Play;
    std::function<void()> window_ResetRandomFilenames;
    std::function<void()> window_UncheckMenus;
    std::function<void(const QString&)> recentPlaylists_Add;
    std::function<void()> mediaLibrary_RefreshRecent;
    std::function<void()> window_CloseAll;
    std::function<void()> focusPlaylist;
    // Track advance.
    std::function<void()> player_NextTrack;
    std::function<void(const QString&)> window_AddRandomFilename;
    // Display refresh by hand.
    std::function<void()> tmrWindowUpdate_Timer;
    std::function<void()> tmrPosition_Timer;
    // Song alert and lyrics windows.
    std::function<void()> player_ShowPlaying;
    std::function<void()> player_ClosePlaying;
    std::function<void(const QString&)> lyrics_OpenFile;
    std::function<void()> lyrics_Close;
    std::function<bool()> lyrics_IsOpened;
    // Video window.
    std::function<void()> video_Open;
    std::function<void()> video_Close;
    std::function<bool()> video_IsOpened;
    std::function<void()> video_GetSize;
    std::function<void()> video_SaveSize;
    // Sound: the slider scales (0 to 100) onto the engine; the stored volume of a song at its
    // start (the name lower-cased).
    std::function<void(int)> player_Volume;
    std::function<void(int)> player_Balance;
    std::function<void(const QString&)> volumes_ApplyStored;
    // Play counts: artist, title, filename.
    std::function<void(const QString&, const QString&, const QString&)> tracking_Add;
    // Desktop: hiding into the tray (false when there is no tray to come back from), the
    // global keys read again after the preferences change them, the tray icon switched on or
    // off by the preferences.
    std::function<bool()> window_MinimizeToTray;
    std::function<void()> window_InstallGlobalKeys;
    std::function<void(bool)> tray_Enable;
    // Media Library: open it on the songs whose column (0 artist, 3 year) is the text; a folder
    // chosen in the location window for it.
    std::function<void(int, const QString&)> mediaLibrary_ShowMore;
    std::function<void(const QString&)> mediaLibrary_AddLocation;

    // Mini-Mode: shows it when it is the window the user sees (true), hides it.
    std::function<bool()> miniMode_Show;
    std::function<void()> miniMode_Hide;
    // The playlist's song is about to sound: anything else that plays stops (the CD player).
    std::function<void()> player_Starting;

    void call(const std::function<void()>& f) {
        if (f) f();
    }

Q_SIGNALS:
    void statusTextChanged(const QString& text);
    void busyChanged(bool busy);
    void trayTipChanged(const QString& text);
    // The medium of whichever control is attached played to its end.
    void endOfStream();

private:
    Commands* m_commands;
    ListModel* m_playlist;
    PlaylistCombo* m_combo;
    wmpPlayer* m_builtinPlayer;
    wmpPlayer* m_player;
    QMetaObject::Connection m_endConnection;
    SliderModel* m_position;
    SliderModel* m_volume;
    SliderModel* m_balance;
    QString m_status;
};
