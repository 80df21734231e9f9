#pragma once
#include <QString>
#include <functional>

// The CD routines: one drive at a time behind the alias "cdr", driven by text commands whose
// replies are cut into track numbers and times. Nothing here raises or reports: a failed command
// gives false, 0, an empty text or "None". A drive is a device path or a .cue image.
namespace modCDAudio {

// Where the commands go: returns 0 on success and fills `reply` (may be null). Without one every
// command fails.
using Sender = std::function<int(const QString& command, QString* reply)>;
void cd_SetSender(Sender sender);

bool CDDeviceOpen();

bool cd_Close();
bool cd_Open(const QString& drive);
bool cd_MediaPresent();
bool cd_Eject();
int cd_TrackCount();
QString cd_CurrentTrack();
QString cd_TotalLength();
QString cd_Mode();
bool cd_SeekTrack(qint32 track);
qint16 cd_TrackLength(qint32 track);
bool cd_SeekPosition(const QString& position);
qint32 cd_PositionSeconds();
bool cd_Play();
bool cd_Stop();
bool cd_Pause();
bool cd_IsPlaying();

} // namespace modCDAudio
