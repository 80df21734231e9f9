#pragma once
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

class MainContext;

// The seven global commands, their bindings and the names of key presses. The bindings are text
// names such as "Ctrl+Alt+P" or "Media:  Next", compared without regard to case.
namespace GlobalKeys {

enum Command { PlayPause, Stop, Next, Previous, Mute, VolumeUp, VolumeDown, CommandCount };

// One row of the key table: the classic key code and the base-key name.
struct Key {
    int code;
    QString name;
};
// In the order keys are read; the two "Select" names have code 0 and never fire.
const QList<Key>& keyTable();

// Modifier bits of a press.
enum Modifier : unsigned { Ctrl = 1, Shift = 2, Alt = 4, Win = 8 };
// The prefix a press with `modifiers` down gets: the first pair that holds wins, so
// Ctrl+Alt+Shift gives "Ctrl+Shift+".
QString prefixFor(unsigned modifiers);
// The full name of a press: prefix, then the base-key name. Empty when `pressed` is false.
QString window_CheckGlobalKey(bool pressed, unsigned modifiers, const QString& keyName);

// A binding taken apart: the base key's row in the table and every modifier set whose press
// produces the binding. Empty when no press can ever produce it.
struct Parsed {
    int keyIndex = -1;
    QList<unsigned> modifierSets;
    bool valid() const { return keyIndex >= 0 && !modifierSets.isEmpty(); }
};
Parsed parseBinding(const QString& binding);

// The live bindings, as window_InstallGlobalKeys fills them from section "GlobalKeys".
struct Bindings {
    std::array<QString, CommandCount> lblMedia;
    // First command whose binding equals `name` (case-blind), or -1.
    int match(const QString& name) const;
};
Bindings window_InstallGlobalKeys();

// Setting keys and defaults of command `c`.
QString extKey(int c);
QString keyKey(int c);
QString defaultKey(int c);

// Runs what a binding does. Play/Pause looks at the media control's state.
void window_UseGlobalKey(MainContext& ctx, const Bindings& bindings, const QString& name);

// Stands in for the went-down-since-last-read bit: a press fires once, a key held (with or
// without the server's auto-repeat) never again until it is let go.
class PressTracker {
public:
    // True when this press is new.
    bool press(int keycode, std::uint32_t time);
    void release(int keycode, std::uint32_t time);
    // Keys already down when watching starts fire nothing until they are let go.
    void setDown(int keycode) { m_down.insert(keycode, true); }
    bool isDown(int keycode) const { return m_down.value(keycode, false); }

private:
    QHash<int, bool> m_down;
    QHash<int, std::uint32_t> m_lastRelease;
};

} // namespace GlobalKeys
