#pragma once
#include <QObject>
#include <QString>
#include <functional>

class Commands;
class ListModel;
class PlaylistCombo;

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
    // The file the media engine has loaded; empty when none.
    QString LoadedMediaFile;

    bool playerActive() const { return TransportState == 0 || TransportState == 2; }

    // --- the status bar's first panel and the hourglass
    void setStatusText(const QString& text);
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

    void call(const std::function<void()>& f) {
        if (f) f();
    }

Q_SIGNALS:
    void statusTextChanged(const QString& text);
    void busyChanged(bool busy);

private:
    Commands* m_commands;
    ListModel* m_playlist;
    PlaylistCombo* m_combo;
    QString m_status;
};
