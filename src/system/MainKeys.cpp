#include "system/MainKeys.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>
#include <algorithm>

namespace {
struct KeyAction {
    int code;
    const char* menu;
    const char* command; // what runs; the menu's own click when null
};
const KeyAction kAltKeys[] = {
    {38, "mnuSelectedMoveUp", nullptr},       {40, "mnuSelectedMoveDown", nullptr},
    {39, "mnuFontsizeIncrease", nullptr},     {37, "mnuFontsizeDecrease", nullptr},
    {78, "mnuJumpToNextPlaylist", nullptr},   {86, "mnuJumpToPreviousPlaylist", nullptr},
    {77, "mnuJumpToRandomPlaylist", nullptr}, {115, "mnuExit", nullptr},
};
const KeyAction kPlainKeys[] = {
    {74, "mnuJumpToMedia", nullptr},
    {84, "mnuJumpToTime", nullptr},
    {77, "mnuRandom", nullptr},
    {86, "mnuPrevious", nullptr},
    {82, "mnuRewind", nullptr},
    {80, "mnuPlay", nullptr},
    {85, "mnuPause", nullptr},
    {83, "mnuStop", nullptr},
    {70, "mnuFastForward", nullptr},
    {78, "mnuNextTrack", nullptr},
    {88, "mnuPlayNext", nullptr},
    {89, "mnuJumpToCurrentlyPlaying", nullptr},
    {65, "mnuNextTrackAdvanced", nullptr},
    {69, "mnuMute", nullptr},
};

bool shortcutMode(MainContext& ctx) {
    return ctx.WindowShown && ctx.commands().isChecked(QStringLiteral("mnuKeysUseAsShortcuts"));
}

bool runTable(MainContext& ctx, const KeyAction* begin, const KeyAction* end, int code) {
    for (const KeyAction* k = begin; k != end; ++k) {
        if (k->code != code) continue;
        // A disabled entry makes its key do nothing.
        ctx.commands().runIfEnabled(QLatin1String(k->menu));
        return true;
    }
    return false;
}

int classicCode(const QKeyEvent* e) {
    const int k = e->key();
    if (k >= Qt::Key_A && k <= Qt::Key_Z) return k;
    if (k >= Qt::Key_0 && k <= Qt::Key_9) return k;
    if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return 112 + (k - Qt::Key_F1);
    switch (k) {
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_End:
        return 35;
    }
    return 0;
}

int shiftOf(Qt::KeyboardModifiers m) {
    int s = 0;
    if (m & Qt::ShiftModifier) s |= vbShiftMask;
    if (m & Qt::ControlModifier) s |= vbCtrlMask;
    if (m & Qt::AltModifier) s |= vbAltMask;
    return s;
}
} // namespace

void window_FindArtist(MainContext& ctx, QChar c) {
    ListModel& list = ctx.lstvPlaylist();
    const QChar want = c.toLower();
    const int k = listview_SelectedIndex(list);
    const auto matches = [&list, want](int index) {
        const QString& artist = list.text(index - 1, 1);
        return !artist.isEmpty() && artist.at(0).toLower() == want;
    };
    for (int i = k + 1; i <= list.count(); ++i)
        if (matches(i)) return listview_SelectItem(list, i), list.ensureVisible(i - 1);
    for (int i = 1; i <= k - 1; ++i)
        if (matches(i)) return listview_SelectItem(list, i), list.ensureVisible(i - 1);
    if (k > 0) listview_SelectItem(list, k);
}

bool Form_KeyDown(MainContext& ctx, int keyCode, int shift,
                  const std::function<void()>& closeWindow) {
    if (!shortcutMode(ctx)) {
        // Letters, digits and Esc search; the list's own movement keys stay the list's.
        if ((keyCode >= 65 && keyCode <= 90) || (keyCode >= 48 && keyCode <= 57) || keyCode == 27) {
            window_FindArtist(ctx, QChar(keyCode));
            return true;
        }
        return false;
    }
    if (shift == vbCtrlMask) return false;
    if (shift == vbAltMask) return runTable(ctx, std::begin(kAltKeys), std::end(kAltKeys), keyCode);
    if (keyCode == 27) {
        if (closeWindow) closeWindow();
        return true;
    }
    return runTable(ctx, std::begin(kPlainKeys), std::end(kPlainKeys), keyCode);
}

void mnuKeysUseAsShortcuts_Click(MainContext& ctx) {
    Commands& c = ctx.commands();
    c.setChecked(QStringLiteral("mnuKeysUseAsShortcuts"), true);
    c.setChecked(QStringLiteral("mnuKeysUseAsArtistFindingKeys"), false);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("KeysUseAsArtistFindingKeys"), 0);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("KeysUseAsShortcuts"), 1);
}

void mnuKeysUseAsArtistFindingKeys_Click(MainContext& ctx) {
    Commands& c = ctx.commands();
    c.setChecked(QStringLiteral("mnuKeysUseAsArtistFindingKeys"), true);
    c.setChecked(QStringLiteral("mnuKeysUseAsShortcuts"), false);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("KeysUseAsArtistFindingKeys"), 1);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("KeysUseAsShortcuts"), 0);
}

MainKeyFilter::MainKeyFilter(MainContext& ctx, QWidget* window)
    : QObject(window), m_ctx(ctx), m_window(window) {}

bool MainKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::KeyPress && type != QEvent::ShortcutOverride) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != m_window) return false;
    // Typing into a text field, or an open combo list, keeps its keys.
    if (qobject_cast<QLineEdit*>(widget)) return false;
    if (qobject_cast<QAbstractItemView*>(widget) &&
        qobject_cast<QComboBox*>(widget->parentWidget()))
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    const int code = classicCode(key);
    if (!code) return false;
    const int shift = shiftOf(key->modifiers());
    // Delete removes the selected rows as in the desktop's other lists, when no other
    // meaning is given to it.
    const bool inList = qobject_cast<QAbstractItemView*>(widget) ||
                        qobject_cast<QAbstractItemView*>(widget->parentWidget());
    if (code == 46 && shift == 0 && inList && shortcutMode(m_ctx)) {
        if (type == QEvent::ShortcutOverride) return event->accept(), true;
        return m_ctx.commands().runIfEnabled(QStringLiteral("mnuRemoveSelected")), true;
    }
    if (code == 36 || code == 35 || code == 46) return false; // the list's own Home and End
    if (type == QEvent::ShortcutOverride) {
        // Alt+V, Alt+M and Alt+N mean playlists here, not the menu bar's mnemonics.
        const bool altKey = std::any_of(std::begin(kAltKeys), std::end(kAltKeys),
                                        [code](const KeyAction& k) { return k.code == code; });
        if (shift == vbAltMask && altKey && shortcutMode(m_ctx)) event->accept();
        return false;
    }
    return Form_KeyDown(m_ctx, code, shift, [this] { m_window->close(); });
}
