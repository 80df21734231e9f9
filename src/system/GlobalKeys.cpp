#include "system/GlobalKeys.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "core/wmpPlayer.h"

namespace GlobalKeys {
namespace {
const char* const kNames[] = {"PlayPause", "Stop",     "Next",      "Previous",
                              "Mute",      "VolumeUp", "VolumeDown"};
const char* const kMedia[] = {"Play/Pause", "Stop",      "Next",       "Previous",
                              "Mute",       "Volume Up", "Volume Down"};

struct PrefixRule {
    unsigned need;
    const char* text;
};
// In the order they are tried.
const PrefixRule kPrefixes[] = {
    {Ctrl | Shift, "Ctrl+Shift+"},
    {Ctrl | Alt, "Ctrl+Alt+"},
    {Win | Ctrl, "Win+Ctrl+"},
    {Win | Shift, "Win+Shift+"},
    {Alt | Shift, "Alt+Shift+"},
    {Win | Alt, "Win+Alt+"},
    {Alt, "Alt+"},
    {Shift, "Shift+"},
    {Ctrl, "Ctrl+"},
    {Win, "Win+"},
};

QList<Key> buildTable() {
    QList<Key> t;
    for (int i = 1; i <= 12; ++i)
        t.append({111 + i, QStringLiteral("F%1").arg(i)});
    for (char c = 'A'; c <= 'Z'; ++c)
        t.append({int(c), QString(QLatin1Char(c))});
    for (int i = 1; i <= 9; ++i)
        t.append({48 + i, QString::number(i)});
    t.append({48, QStringLiteral("0")});
    for (int i = 1; i <= 9; ++i)
        t.append({96 + i, QStringLiteral("NumPad%1").arg(i)});
    t.append({96, QStringLiteral("NumPad0")});
    const int codes[] = {179, 178, 176, 177, 173, 175, 174};
    for (int i = 0; i < 7; ++i)
        t.append({codes[i], QStringLiteral("Media:  ") + QLatin1String(kMedia[i])});
    t.append({0, QStringLiteral("Media:  Left Select")});
    t.append({0, QStringLiteral("Media:  Right Select")});
    return t;
}
} // namespace

const QList<Key>& keyTable() {
    static const QList<Key> table = buildTable();
    return table;
}

QString prefixFor(unsigned modifiers) {
    for (const PrefixRule& r : kPrefixes)
        if ((modifiers & r.need) == r.need) return QLatin1String(r.text);
    return {};
}

QString window_CheckGlobalKey(bool pressed, unsigned modifiers, const QString& keyName) {
    if (!pressed) return {};
    return prefixFor(modifiers) + keyName;
}

Parsed parseBinding(const QString& binding) {
    Parsed p;
    // Nothing in the table comes near this length; a huge value is simply dead.
    if (binding.isEmpty() || binding.size() > 64) return p;
    const QString lower = binding.toLower();
    const QList<Key>& table = keyTable();
    for (int i = 0; i < table.size() && p.keyIndex < 0; ++i) {
        if (table[i].code == 0) continue;
        const QString key = table[i].name.toLower();
        if (!lower.endsWith(key)) continue;
        const QString prefix = lower.left(lower.size() - key.size());
        // Every modifier set whose name starts with this prefix.
        QList<unsigned> sets;
        for (unsigned m = 0; m < 16; ++m)
            if (prefixFor(m).toLower() == prefix) sets.append(m);
        if (!sets.isEmpty()) {
            p.keyIndex = i;
            p.modifierSets = sets;
        }
    }
    return p;
}

QString extKey(int c) {
    return QLatin1String(kNames[c]) + QStringLiteral("Ext");
}
QString keyKey(int c) {
    return QLatin1String(kNames[c]) + QStringLiteral("Key");
}
QString defaultKey(int c) {
    return QStringLiteral("Media:  ") + QLatin1String(kMedia[c]);
}

Bindings window_InstallGlobalKeys() {
    Bindings b;
    const QString section = QStringLiteral("GlobalKeys");
    for (int c = 0; c < CommandCount; ++c) {
        const QString ext = settings_Read(section, extKey(c));
        const QString key = settings_Read(section, keyKey(c), defaultKey(c));
        b.lblMedia[c] = ext.isEmpty() ? key : ext + QLatin1Char('+') + key;
    }
    return b;
}

int Bindings::match(const QString& name) const {
    const QString lower = name.toLower();
    for (int c = 0; c < CommandCount; ++c)
        if (lblMedia[c].toLower() == lower) return c;
    return -1;
}

void window_UseGlobalKey(MainContext& ctx, const Bindings& bindings, const QString& name) {
    Commands& commands = ctx.commands();
    const auto volumeStep = [&ctx](int step) {
        SliderModel& v = ctx.sldVolume();
        v.setValue(v.value() + step);
        if (ctx.player_Volume) ctx.player_Volume(v.value());
    };
    switch (bindings.match(name)) {
    case PlayPause: {
        const int state = ctx.player().PlayState();
        if (state == wmpPlayer::Paused)
            commands.run(QStringLiteral("mnuPause"));
        else if (state == wmpPlayer::Stopped || ctx.TransportState == 1) {
            if (ctx.player_Play) ctx.player_Play(1);
        } else
            commands.run(QStringLiteral("mnuPause"));
        break;
    }
    case Stop:
        ctx.call(ctx.player_Stop);
        break;
    case Next:
        ctx.call(ctx.player_NextTrack);
        break;
    case Previous:
        commands.run(QStringLiteral("mnuPrevious"));
        break;
    case Mute:
        commands.run(QStringLiteral("mnuMute"));
        break;
    case VolumeUp:
        volumeStep(1);
        break;
    case VolumeDown:
        volumeStep(-1);
        break;
    default:
        break; // no binding: dropped in silence
    }
}

bool PressTracker::press(int keycode, std::uint32_t time) {
    const bool wasDown = m_down.value(keycode, false);
    m_down.insert(keycode, true);
    if (wasDown) return false;
    // The server's auto-repeat sends a release and a press with the same time stamp.
    const auto last = m_lastRelease.constFind(keycode);
    return last == m_lastRelease.constEnd() || *last != time;
}

void PressTracker::release(int keycode, std::uint32_t time) {
    m_down.insert(keycode, false);
    m_lastRelease.insert(keycode, time);
}

} // namespace GlobalKeys
