#pragma once
#include <QString>
#include <QStringList>

class MainContext;

// Moods: named lists of songs in {AppPath}/Moods/{name}.mlst, one path a line. The names, joined
// by "|", are the setting "Moods" of "Advanced", read into MoodNames at start-up. The menu arrays
// "mnuMoodOpen" (open a mood) and "mnuSendToMood" (file the selected rows under a mood) live on
// the main window's context, one entry a name, from 1.

QString& MoodNames();
QStringList mood_List(); // MoodNames split on "|"
// The mood's file; "" for a name that cannot be a file name here (it holds "/" or is "." or
// ".."): such a mood can be named but holds no songs, and nothing is written for it.
QString mood_FilePath(const QString& name);
// First letter of each word upper case, the rest lower.
QString text_ProperCase(const QString& text);

void window_InstallMoods(MainContext& ctx);
void window_RemoveMoodMenus(MainContext& ctx);
void window_UpdateMoods(MainContext& ctx);
void mnuMoodOpen_Click(MainContext& ctx, int index);
void mnuSendToMood_Click(MainContext& ctx, int index);
// Asks, then empties every mood; the names stay. True when the user said Yes.
bool media_ResetMoods();
void mnuResetMoods_Click(MainContext& ctx);
void mnuEditMoods_Click(MainContext& ctx);

// Reads MoodNames, fills both arrays and registers the handlers.
void Moods_install(MainContext& ctx);
