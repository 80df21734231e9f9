#include "playlists/modControls.h"

#include "core/Settings.h"
#include "playlists/ListModel.h"

void listview_Renumber(ListModel& list) {
    const int count = list.count();
    if (!settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UseNumberPaddingInPlaylists"),
                       QStringLiteral("1"))) {
        for (int i = 1; i <= count; ++i)
            list.setText(i - 1, 0, QString::number(i));
        return;
    }
    // Zero-padded to the digits of the count, never fewer than two.
    const int width = qMax(2, int(QString::number(count).size()));
    for (int i = 1; i <= count; ++i)
        list.setText(i - 1, 0, QStringLiteral("%1").arg(i, width, 10, QLatin1Char('0')));
}

void listview_SelectItem(ListModel& list, int index) {
    if (!list.multiSelect()) {
        if (index >= 1 && index <= list.count()) {
            list.ensureVisible(index - 1);
            list.setSelected(index - 1, true);
        }
        return;
    }
    list.clearSelection();
    if (index >= 1 && index <= list.count()) {
        list.ensureVisible(index - 1);
        list.setSelected(index - 1, true);
    }
}

int listview_SelectedCount(const ListModel& list) { return list.selectedCount(); }

bool listview_HasSelection(const ListModel& list) { return list.count() > 0 && list.hasSelection(); }

int listview_CountMatches(const ListModel& list, const QString& text, int column) {
    int n = 0;
    for (int i = 0; i < list.count(); ++i)
        if (list.text(i, column).compare(text, Qt::CaseInsensitive) == 0)
            ++n;
    return n;
}

bool listview_FindText(ListModel& list, const QString& text, int column, bool select) {
    for (int i = 0; i < list.count(); ++i) {
        if (list.text(i, column).compare(text, Qt::CaseInsensitive) == 0) {
            if (select)
                list.setSelected(i, true);
            return true;
        }
    }
    return false;
}

void listview_Clear(ListModel& list) { list.clear(); }

int listview_SelectedIndex(const ListModel& list) { return list.selectedItem() + 1; }
