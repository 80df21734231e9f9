#pragma once
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

class Commands;
class ListModel;
class QTimer;
class SliderModel;

// The rules of the CD Player window, without the window: the track list, the transport over the
// CD routines, the status bar's texts and the enabling tick. Its commands are its own, named as
// its menu (mnuPlay here is the CD's Play, not the playlist's).
class CdPlayer : public QObject {
    Q_OBJECT
public:
    enum Panel { StatusPanel = 0, TracksPanel, LengthPanel, TimePanel, PanelCount };

    // `drives` lists what a scan tries, first to last.
    explicit CdPlayer(std::function<QStringList()> drives, QObject* parent = nullptr);
    ~CdPlayer() override;

    ListModel& lstvPlaylist() { return *m_list; }
    Commands& commands() { return *m_commands; }
    SliderModel& sldPosition() { return *m_position; }
    QTimer* tmrWindowUpdate() { return m_timer; }
    QString panelText(int panel) const { return m_panels[panel]; }

    // Fields of the window.
    int CurrentTrack = 0;
    int CDState = 0; // 0 playing, 1 stopped, 2 paused
    bool CDPaused = false;
    QString CDDrive;
    bool ShowingMenuText = false;

    // Reads the six settings into the check marks.
    void loadSettings();

    void mnuNew_Click();
    void mnuPlay_Click();
    void mnuPause_Click();
    void mnuStop_Click();
    void mnuNext_Click();
    void mnuPrevious_Click();
    void mnuRandom_Click();
    void mnuEject_Click();
    // Double click or Enter on a row.
    void lstvPlaylist_Activate();
    void playlist_UpdatePlaylist(int row);
    void sldPosition_MouseDown();
    void sldPosition_MouseUp();
    void tmrWindowUpdate_Timer();
    // The menu's help text in the first panel, or back to the status (empty text).
    void showMenuText(const QString& text);
    // Leaving: stops what plays. The drive stays open.
    void form_Unload();

    // The help texts of the window's menu items, by name.
    static QString menuHelp(const QString& name);

Q_SIGNALS:
    void panelsChanged();

private:
    void tick();
    void setPanel(int panel, const QString& text);
    void setTimerOn(bool on);
    void timeMode(const QString& menu);
    void toggle(const QString& menu, const QString& key);

    std::function<QStringList()> m_drives;
    ListModel* m_list;
    Commands* m_commands;
    SliderModel* m_position;
    QTimer* m_timer;
    bool m_timerWanted = true;
    bool m_inTick = false;
    QString m_panels[PanelCount];
};
