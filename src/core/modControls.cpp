#include "core/modControls.h"

#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/Settings.h"
#include "core/modFiles.h"

int listview_NumberWidth(int count) {
    if (!settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UseNumberPaddingInPlaylists"),
                       QStringLiteral("1")))
        return 0;
    return qMax(2, int(QString::number(count).size()));
}

QString listview_NumberText(int index, int width) {
    if (index < 0)
        return width > 0 ? QStringLiteral("%1").arg(index, width, 10, QLatin1Char('0'))
                         : QString::number(index);
    // Written by hand: a start with many files numbers every row, and arg() is slow at it.
    char digits[12];
    int n = 0;
    for (unsigned v = unsigned(index); n == 0 || v > 0; v /= 10)
        digits[n++] = char('0' + v % 10);
    const int size = qMax(n, width);
    QString out(size, QLatin1Char('0'));
    QChar* d = out.data();
    for (int i = 0; i < n; ++i)
        d[size - 1 - i] = QLatin1Char(digits[i]);
    return out;
}

void listview_Renumber(ListModel& list) {
    const int count = list.count();
    const int width = listview_NumberWidth(count);
    // Rows that already carry their number are left as they are: rewriting a cell repacks the
    // whole row and tells the view.
    for (int i = 1; i <= count; ++i) {
        const QString number = listview_NumberText(i, width);
        if (list.text(i - 1, 0) != number) list.setText(i - 1, 0, number);
    }
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

int listview_SelectedCount(const ListModel& list) {
    return list.selectedCount();
}

bool listview_HasSelection(const ListModel& list) {
    return list.count() > 0 && list.hasSelection();
}

namespace {
// Case folding maps each character to one of the same length, so texts of different lengths
// never match; testing that first spares most of the comparisons.
bool sameText(const QString& cell, const QString& text) {
    return cell.size() == text.size() && cell.compare(text, Qt::CaseInsensitive) == 0;
}
} // namespace

int listview_CountMatches(const ListModel& list, const QString& text, int column) {
    int n = 0;
    for (int i = 0; i < list.count(); ++i)
        if (sameText(list.text(i, column), text)) ++n;
    return n;
}

bool listview_FindText(ListModel& list, const QString& text, int column, bool select) {
    for (int i = 0; i < list.count(); ++i) {
        if (sameText(list.text(i, column), text)) {
            if (select) list.setSelected(i, true);
            return true;
        }
    }
    return false;
}

void listview_Clear(ListModel& list) {
    list.clear();
}

int listview_SelectedIndex(const ListModel& list) {
    return list.selectedItem() + 1;
}

void listview_SwapRows(ListModel& list, int indexA, int indexB, bool select) {
    const int a = indexA - 1, b = indexB - 1;
    if (a < 0 || b < 0 || a >= list.count() || b >= list.count()) return;
    // Only the texts trade places: colour and bold belong to the position, as the highlight of
    // the playing row is set there before the swap.
    if (a != b) {
        const QStringList rowA = list.rowTexts(a);
        list.setRowTexts(a, list.rowTexts(b));
        list.setRowTexts(b, rowA);
    }
    if (select) list.setSelected(b, true);
}

void listview_RemoveSelected(ListModel& list) {
    const int row = list.selectedItem();
    if (row < 0) return;
    list.removeRow(row);
    if (list.count() == 0) return;
    listview_SelectItem(list, qMin(row, list.count() - 1) + 1);
}

int listview_RemoveDeadEntries(ListModel& list, int column) {
    std::vector<bool> dead(size_t(list.count()), false);
    int removed = 0;
    for (int i = 0; i < list.count(); ++i) {
        if (!modFiles::file_Exists(list.text(i, column))) {
            dead[size_t(i)] = true;
            ++removed;
        }
    }
    list.removeRows(dead);
    const QString title = QStringLiteral("Remove Dead Filenames Information");
    if (removed == 0) {
        Dialogs::msgBox(QStringLiteral("No dead filenames were found within the list.\n\nNo items "
                                       "have been removed from the list.\n"),
                        Dialogs::vbInformation, title);
        return 0;
    }
    Dialogs::msgBox(QStringLiteral("It has been detected that you had %1 dead filenames in the "
                                   "list.\n\nThese items have been removed.\n")
                        .arg(removed),
                    Dialogs::vbInformation, title);
    window_WriteLog(QStringLiteral("Dead filenames removed:  %1.").arg(removed));
    return removed;
}
