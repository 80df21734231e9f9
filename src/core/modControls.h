#pragma once
#include <QString>

class ListModel;

// Row routines for any list of the program. Indexes are 1-based; 0 means none.
// Column numbers are sub-item indexes: 0 is the item's own text.

void listview_Renumber(ListModel& list);
// The number text of row `index` among `count` rows, as listview_Renumber writes it: padded with
// zeros to the digits of the count (never fewer than two) unless the user turned padding off.
// `width` comes from listview_NumberWidth(count), which reads the setting once for many rows.
int listview_NumberWidth(int count);
QString listview_NumberText(int index, int width);
void listview_SelectItem(ListModel& list, int index);
int listview_SelectedCount(const ListModel& list);
bool listview_HasSelection(const ListModel& list);
int listview_CountMatches(const ListModel& list, const QString& text, int column);
bool listview_FindText(ListModel& list, const QString& text, int column, bool select);
void listview_Clear(ListModel& list);
// Exchanges the texts of two rows; with `select`, row B is selected afterwards.
void listview_SwapRows(ListModel& list, int indexA, int indexB, bool select);
// Removes SelectedItem and selects the row that took its place (or the new last row).
void listview_RemoveSelected(ListModel& list);
// Removes rows whose file (in `column`) does not exist, tells the user how many went and returns
// that number, so that the caller knows whether to save its list. Does not renumber.
int listview_RemoveDeadEntries(ListModel& list, int column);
// 1-based index of SelectedItem, 0 for none.
int listview_SelectedIndex(const ListModel& list);
