#include "cd/CdPlayer.h"

#include "cd/modCDAudio.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "core/modControls.h"
#include "core/modMath.h"
#include "tags/modMedia.h"

#include <QHash>
#include <QTime>
#include <QTimer>

using namespace modCDAudio;

namespace {

const QString kSection = QStringLiteral("CDSettings");

struct Entry {
    const char* name;
    const char* caption;
    const char* help;
};

// The transport carries its key letter behind a tab, as the window's keys act on them.
const Entry kEntries[] = {
    {"mnuNew", "&Scan", "Scan the CD drives available and search for an Audio CD."},
    {"mnuPreferences", "P&references...", "Show the preferences available in VELDOR."},
    {"mnuClose", "&Close\tAlt+F4", "Close this window (return to the main window)."},
    {"mnuPrevious", "Pre&vious\tV", "Select the previous song in the playlist."},
    {"mnuPlay", "&Play\tP", "Play the song selected in the playlist."},
    {"mnuPause", "Pa&use\tU", "Pause the currently playlist song."},
    {"mnuStop", "&Stop\tS", "Stop the song currently playing."},
    {"mnuRandom", "Rando&m\tM", "Select a random song from the playlist and play it."},
    {"mnuNext", "&Next\tN", "Go onto the next song in the playlist."},
    {"mnuEject", "&Eject\tE", "Eject the Audio CD in the drive being used."},
    {"mnuAlwaysOnTop", "&Always On Top",
     "Make this window stay on top of all other open windows/programs."},
    {"mnuShowTimeElapsed", "Time &Elapsed", "Show the time of the song as:  Elasped."},
    {"mnuShowTimeRemaining", "Time &Remaining", "Show the time of the song as:  Remaining."},
    {"mnuShowToolbar", "&Toolbar",
     "Show the toolbar (which contains all of the main buttons) on the window."},
    {"mnuShowStatusBar", "&Status Bar", "Show the status bar at the bottom of the window."},
    {"mnuShowPlaylistHeaders", "Playlist &Headers",
     "Show the headers for each section in the playlist on the window."},
    {"mnuReCenterWindow", "Re-&Center Window", "Center the CD Player within the screen."},
    {"mnuConsole", "C&onsole", "Show all of the logs about the use of VELDOR."},
    {"mnuTracking", "&Tracking",
     "Show information about all of the media files that have been played."},
    {"mnuVolumes", "Adjust &Volumes",
     "Show the media files that have specific volume settings saved for them."},
    {"mnuCheckForUpdates", "Check For &Updates...",
     "Check for the lastest updates available online."},
    {"mnuAbout", "&About VELDOR...", "Show information about this version of VELDOR."},
    {"mnuAboutWindows", "About &System...",
     "Show information about this version of Microsoft Windows."},
    {"mnuForum", "&Forum", nullptr},
    {"mnuHomepage", "&Homepage", nullptr},
};

const char* const kTransport[] = {"mnuPrevious", "mnuPlay",   "mnuPause", "mnuStop",
                                  "mnuNext",     "mnuRandom", "mnuEject"};

// Settings of the window: key, default, menu item.
struct Toggle {
    const char* key;
    const char* def;
    const char* menu;
};
const Toggle kToggles[] = {
    {"AlwaysOnTop", "0", "mnuAlwaysOnTop"},
    {"ShowTimeElapsed", "1", "mnuShowTimeElapsed"},
    {"ShowTimeRemaining", "0", "mnuShowTimeRemaining"},
    {"ShowToolbar", "1", "mnuShowToolbar"},
    {"ShowStatusBar", "1", "mnuShowStatusBar"},
    {"ShowPlaylistHeaders", "0", "mnuShowPlaylistHeaders"},
};

QString now() {
    return QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
}

} // namespace

CdPlayer::CdPlayer(std::function<QStringList()> drives, QObject* parent)
    : QObject(parent), m_drives(std::move(drives)),
      m_list(new ListModel(
          {QStringLiteral("Number"), QStringLiteral("Title:"), QStringLiteral("Length:")}, this)),
      m_commands(new Commands(this)), m_position(new SliderModel(0, 0, 0, this)),
      m_timer(new QTimer(this)) {
    m_list->setMultiSelect(false);
    Commands& c = *m_commands;
    for (const Entry& e : kEntries)
        c.add(QString::fromLatin1(e.name), QString::fromLatin1(e.caption));
    for (const Toggle& t : kToggles)
        c.action(QString::fromLatin1(t.menu))->setCheckable(true);
    c.setHandler(QStringLiteral("mnuNew"), [this] { mnuNew_Click(); });
    c.setHandler(QStringLiteral("mnuPlay"), [this] { mnuPlay_Click(); });
    c.setHandler(QStringLiteral("mnuPause"), [this] { mnuPause_Click(); });
    c.setHandler(QStringLiteral("mnuStop"), [this] { mnuStop_Click(); });
    c.setHandler(QStringLiteral("mnuNext"), [this] { mnuNext_Click(); });
    c.setHandler(QStringLiteral("mnuPrevious"), [this] { mnuPrevious_Click(); });
    c.setHandler(QStringLiteral("mnuRandom"), [this] { mnuRandom_Click(); });
    c.setHandler(QStringLiteral("mnuEject"), [this] { mnuEject_Click(); });
    c.setHandler(QStringLiteral("mnuShowTimeElapsed"),
                 [this] { timeMode(QStringLiteral("mnuShowTimeElapsed")); });
    c.setHandler(QStringLiteral("mnuShowTimeRemaining"),
                 [this] { timeMode(QStringLiteral("mnuShowTimeRemaining")); });
    for (const char* menu :
         {"mnuAlwaysOnTop", "mnuShowToolbar", "mnuShowStatusBar", "mnuShowPlaylistHeaders"}) {
        const QString name = QString::fromLatin1(menu);
        QString key = name.mid(3);
        c.setHandler(name, [this, name, key] { toggle(name, key); });
    }
    m_timer->setObjectName(QStringLiteral("tmrWindowUpdate"));
    m_timer->setInterval(50);
    connect(m_timer, &QTimer::timeout, this, [this] { tmrWindowUpdate_Timer(); });
    loadSettings();
}

CdPlayer::~CdPlayer() = default;

QString CdPlayer::menuHelp(const QString& name) {
    for (const Entry& e : kEntries)
        if (name == QLatin1String(e.name)) return e.help ? QString::fromLatin1(e.help) : QString();
    return {};
}

void CdPlayer::loadSettings() {
    for (const Toggle& t : kToggles)
        m_commands->setChecked(
            QString::fromLatin1(t.menu),
            settings_IsOn(kSection, QString::fromLatin1(t.key), QString::fromLatin1(t.def)));
}

void CdPlayer::toggle(const QString& menu, const QString& key) {
    const bool on = !m_commands->isChecked(menu);
    m_commands->setChecked(menu, on);
    settings_Write(kSection, key, on ? QStringLiteral("1") : QStringLiteral("0"));
}

void CdPlayer::timeMode(const QString& menu) {
    const bool elapsed = menu == QLatin1String("mnuShowTimeElapsed");
    m_commands->setChecked(QStringLiteral("mnuShowTimeElapsed"), elapsed);
    m_commands->setChecked(QStringLiteral("mnuShowTimeRemaining"), !elapsed);
    settings_Write(kSection, QStringLiteral("ShowTimeElapsed"), elapsed ? "1" : "0");
    settings_Write(kSection, QStringLiteral("ShowTimeRemaining"), elapsed ? "0" : "1");
    tmrWindowUpdate_Timer();
}

void CdPlayer::setPanel(int panel, const QString& text) {
    if (m_panels[panel] == text) return;
    m_panels[panel] = text;
    Q_EMIT panelsChanged();
}

void CdPlayer::showMenuText(const QString& text) {
    ShowingMenuText = !text.isEmpty();
    if (ShowingMenuText) setPanel(StatusPanel, text);
    tmrWindowUpdate_Timer();
}

// The tick is wanted all the time the window lives, but it only has something to follow while
// the disc turns: otherwise it runs once after each change and the process sleeps.
void CdPlayer::setTimerOn(bool on) {
    m_timerWanted = on;
    if (!on) m_timer->stop();
}

void CdPlayer::mnuNew_Click() {
    listview_Clear(*m_list);
    bool found = false;
    for (const QString& drive : m_drives()) {
        if (cd_Open(drive) && cd_MediaPresent() && cd_TrackCount() > 0) {
            found = true;
            CDDrive = drive;
            break;
        }
    }
    if (found) {
        const int count = cd_TrackCount();
        std::vector<QStringList> rows;
        rows.reserve(size_t(qMax(0, count)));
        for (int n = 1; n <= count; ++n)
            rows.push_back({QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')),
                            QStringLiteral("Audio Track %1").arg(n),
                            media_FormatSeconds(cd_TrackLength(n))});
        m_list->appendRows(std::move(rows));
        if (count > 0) listview_SelectItem(*m_list, 1);
    }
    setPanel(LengthPanel, QStringLiteral("Length:  ") + cd_TotalLength());
    tmrWindowUpdate_Timer();
}

void CdPlayer::playlist_UpdatePlaylist(int row) {
    for (int i = 0; i < m_list->count(); ++i) {
        const bool bold = i + 1 == row;
        if (bold != m_list->isBold(i, 0)) m_list->setRowStyle(i, bold, m_list->foreColor(i, 0));
    }
}

void CdPlayer::mnuPlay_Click() {
    setTimerOn(false);
    if (CDState == 0) cd_Stop();
    playlist_UpdatePlaylist(0);
    CurrentTrack = listview_SelectedIndex(*m_list);
    cd_SeekTrack(CurrentTrack);
    playlist_UpdatePlaylist(CurrentTrack);
    CDState = cd_Play() ? 0 : 1;
    window_WriteLog(QStringLiteral("Audio CD Played at %1.").arg(now()));
    setTimerOn(true);
    tmrWindowUpdate_Timer();
}

void CdPlayer::mnuPause_Click() {
    if (CDPaused) {
        cd_Play();
        CDState = 0;
        CDPaused = false;
    } else if (CDState == 0) {
        cd_Pause();
        CDState = 2;
        CDPaused = true;
    }
    tmrWindowUpdate_Timer();
}

void CdPlayer::mnuStop_Click() {
    playlist_UpdatePlaylist(0);
    m_position->setValue(0);
    CurrentTrack = 0;
    if (cd_Stop()) CDState = 1;
    tmrWindowUpdate_Timer();
}

void CdPlayer::mnuNext_Click() {
    if (CurrentTrack >= m_list->count()) return;
    setTimerOn(false);
    cd_Stop();
    ++CurrentTrack;
    listview_SelectItem(*m_list, CurrentTrack);
    mnuPlay_Click();
}

void CdPlayer::mnuPrevious_Click() {
    if (CurrentTrack <= 1) return;
    setTimerOn(false);
    cd_Stop();
    --CurrentTrack;
    listview_SelectItem(*m_list, CurrentTrack);
    mnuPlay_Click();
}

void CdPlayer::mnuRandom_Click() {
    cd_Stop();
    const int pick = modMath::math_RandomNumber(m_list->count(), 0, false, 0);
    playlist_UpdatePlaylist(0);
    CurrentTrack = pick;
    listview_SelectItem(*m_list, pick);
    playlist_UpdatePlaylist(pick);
    mnuPlay_Click();
}

void CdPlayer::mnuEject_Click() {
    cd_Eject();
    tmrWindowUpdate_Timer();
}

void CdPlayer::lstvPlaylist_Activate() {
    if (m_list->count() == 0 || listview_SelectedIndex(*m_list) < 1) return;
    if (CDPaused) mnuStop_Click();
    mnuPlay_Click();
}

void CdPlayer::sldPosition_MouseDown() {
    cd_Pause();
    setTimerOn(false);
}

void CdPlayer::sldPosition_MouseUp() {
    const int s = m_position->value();
    cd_SeekTrack(listview_SelectedIndex(*m_list));
    cd_SeekPosition(media_FormatSeconds(s) + QStringLiteral(":00"));
    cd_Play();
    setTimerOn(true);
    tmrWindowUpdate_Timer();
}

void CdPlayer::tmrWindowUpdate_Timer() {
    // Stop, run from the tick, runs the tick again.
    if (!m_timerWanted || m_inTick) return;
    m_inTick = true;
    const int state = CDState;
    tick();
    // A stop made by the tick shows at once, not a tick later.
    if (CDState != state) tick();
    m_inTick = false;
}

void CdPlayer::tick() {
    // 1.
    const int rows = m_list->count();
    for (const char* name : kTransport)
        m_commands->setEnabled(QString::fromLatin1(name), rows > 0);
    setPanel(TracksPanel,
             rows > 0 ? QStringLiteral("Tracks:  %1").arg(rows) : QStringLiteral("Tracks:  None"));
    const bool elapsed = m_commands->isChecked(QStringLiteral("mnuShowTimeElapsed"));
    // 2.
    if (CDState == 1) {
        if (!ShowingMenuText) setPanel(StatusPanel, QStringLiteral("Status:  Stopped"));
        setPanel(TimePanel,
                 elapsed ? QStringLiteral("Elapsed:  None") : QStringLiteral("Remaining:  None"));
        m_timer->stop();
        return;
    }
    // 3.
    if (!ShowingMenuText)
        setPanel(StatusPanel, (CDState == 2 ? QStringLiteral("Status:  Paused... Audio Track %1")
                                            : QStringLiteral("Status:  Playing... Audio Track %1"))
                                  .arg(CurrentTrack));
    // 4. The drive moves on by itself; the list follows it.
    const QString track = cd_CurrentTrack();
    bool ok = false;
    const int at = track.toInt(&ok);
    if (ok && at != CurrentTrack) {
        playlist_UpdatePlaylist(at);
        CurrentTrack = at;
    }
    // 5.
    const int length = cd_TrackLength(CurrentTrack);
    const int position = cd_PositionSeconds();
    m_position->setMaximum(length);
    m_position->setValue(position);
    setPanel(TimePanel,
             elapsed ? QStringLiteral("Elapsed:  ") + media_FormatSeconds(position)
                     : QStringLiteral("Remaining:  ") + media_FormatSeconds(length - position));
    // 6. Playback ends as soon as the last track is reached.
    if (CurrentTrack == rows) {
        mnuStop_Click();
        return;
    }
    if (CDState == 0 && cd_IsPlaying()) {
        if (!m_timer->isActive()) m_timer->start();
    } else {
        m_timer->stop();
    }
}

void CdPlayer::form_Unload() {
    m_timer->stop();
    if (CDState == 0) cd_Stop();
}
