#pragma once
#include <QString>

class MainContext;
class QObject;
class RecentList;

// The recent media files: section "RecentMediaFiles", menu array "mnuRecentMedia", limit
// "NumberofRecentMediaFiles". `window` is the window whose array is filled (the main window's
// state for the File menu, the Media Library for its own).
RecentList& recent_Media();
int recent_CountMedia();
bool recent_IsMediaEmpty();
void recent_ClearMedia();
void recent_RemoveMediaMenus(QObject& window);
void recent_RemoveMedia(int index, QObject& window);
void recent_AddMedia(const QString& path, QObject& window);
void recent_UpdateMediaMenu(QObject& window);

// Opens entry `index` (0-based) of the main window's menu: plays it, from the list when it is
// there, else as the only row of a new list.
void mnuRecentMedia_Click(MainContext& ctx, int index);
