#include "ui/PreferencesRules.h"

#include "core/App.h"
#include "core/Colors.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"

#include <QDateTime>
#include <cmath>

namespace PreferencesRules {

namespace {

const QString kSettings = QStringLiteral("Settings");

QString limits(int maximum, int minimum) {
    return QStringLiteral("\n\nMaximum:  %1\nMinimum:  %2\n\n").arg(maximum).arg(minimum);
}

// "1"/"0" from a stored flag; anything that is not a number falls back to the default.
bool readFlag(const QString& section, const QString& key) {
    const QString text = settings_Read(section, key, settings_Default(section, key));
    bool ok = false;
    const double n = settings_TextToNumber(text, &ok);
    if (!ok || text.trimmed().isEmpty()) return settings_TextIsOne(settings_Default(section, key));
    return n == 1;
}

QString flag(bool on) {
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

int defaultOption(const OptionGroup& g) {
    for (int i = 0; i < g.keys.size(); ++i)
        if (settings_TextIsOne(settings_Default(QString::fromLatin1(g.section), g.keys[i])))
            return i;
    return 0;
}

} // namespace

const QList<Check>& checks() {
    static const QList<Check> list = {
        {6, "UpdateWindowsIconsWhenLoading"},
        {7, "AllowMultipleInstances"},
        {8, "RegisterFilesWhenLoading"},
        {9, "AlwaysScanPlaylistWhenAddingSongs"},
        {11, "PlayMusicOnStartUp"},
        {12, "ShowMiniModeWhenWindowIsClosed"},
        {13, "StartVELDOROnWindowsSessionStartup"},
        {14, "ShowOptionsWindow"},
        {15, "UseSystemTraySupport"},
        {16, "DoRecursiveDirectoryScan"},
        {17, "SendMediaFilesToRecycleBin"},
        {18, "PlayOnNextAndPrevious"},
        {19, "PlayPlaylistsOnSkip"},
        {20, "WriteConsoleLogs"},
        {21, "AlwaysTrackMediaFilesPlayed"},
        {22, "AlwaysUseVolumeAdjusting"},
        {23, "RememberTheConsoleLogs"},
        {24, "AskConfirmationToUpdatePlaylist"},
        {25, "DisableGlobalHotkeys"},
        {26, "UseLargerTAGSWhenAvailable"},
        {27, "UseNumberPaddingInPlaylists"},
        {28, "ClearPlaylistWhenFilesAreAddedOnStartUp"},
        {29, "StartVideoinFullModeWhenPlayingVideo"},
    };
    return list;
}

const QList<OptionGroup>& optionGroups() {
    static const QList<OptionGroup> list = {
        {"opDirection", "PlayMode", {"WorkForwardThroughList", "WorkBackwardsThroughPlaylist"}},
        {"opPlayback",
         "Playback",
         {"PlayingGoThroughPlaylistNormally", "PlayingPickRandomSongs", "PlayingRepeat",
          "PlayingRepeatOnce", "PlayingStopAfterEnding", "PlayingIntroduction",
          "PlayingShuffleByArtist", "PlayingShuffleByAlbum", "PlayingShuffleByYear"}},
        {"opPlaylist",
         "Playback",
         {"PlaylistStopAfterEnding", "PlaylistRepeat", "PlaylistRepeatOnce", "PlaylistSwitchToNext",
          "PlaylistPickRandomAfterEnding"}},
        {"opSortBy",
         "ListSorting",
         {"SortByArtist", "SortByTitle", "SortByYear", "SortByLength", "SortByFilename"}},
        {"opSortIn",
         "ListSorting",
         {"SortViaAscendingOrder", "SortViaDescendingOrder", "DoNotSortTheList"}},
        {"opTime", "Settings", {"ShowTimeElapsed", "ShowTimeRemaining"}},
    };
    return list;
}

const QList<NumberBox>& numberBoxes() {
    static const QList<NumberBox> list = {
        // The message names 5 as the least while 1 to 4 pass: kept as users know it.
        {"txtSkipRate", "RewindForwardRate", 1, 50,
         "The skip rate that you have specified for playing songs is invalid." + limits(50, 5) +
             "Please change your skip rate before continuing.\n"},
        {"txtIntroduction", "IntroductionRate", 10, 60,
         "The introduction setting that you have specified for each song as its played is "
         "invalid." +
             limits(60, 10) + "Please change your introduction setting before continuing."},
        {"txtMaxPlaylists", "NumberofRecentPlaylists", 10, 60,
         "The maximum number of recent playlists you have entered is invalid." + limits(60, 10) +
             "Please change your setting before continuing."},
        {"txtMaxFiles", "NumberofRecentMediaFiles", 10, 60,
         "The maximum number of recent files you have entered is invalid." + limits(60, 10) +
             "Please change your setting before continuing."},
    };
    return list;
}

bool numberPasses(const QString& text, int minimum, int maximum) {
    const QString t = text.trimmed();
    if (t.isEmpty()) return false;
    bool ok = false;
    const double n = t.toDouble(&ok);
    if (!ok || !std::isfinite(n)) return false;
    // The conversion to a 16-bit integer rounds half to even and overflows outside its range.
    const double r = std::nearbyint(n);
    if (r < -32768 || r > 32767) return false;
    return r >= minimum && r <= maximum;
}

int firstFailure(const Values& values) {
    const auto& boxes = numberBoxes();
    for (int i = 0; i < boxes.size(); ++i) {
        const NumberBox& b = boxes[i];
        if (!numberPasses(values.numbers.value(QString::fromLatin1(b.control)), b.minimum,
                          b.maximum))
            return i;
    }
    return -1;
}

Values load() {
    Values v;
    for (const Check& c : checks())
        v.checks[c.index] = readFlag(kSettings, QString::fromLatin1(c.key));

    for (const OptionGroup& g : optionGroups()) {
        const QString section = QString::fromLatin1(g.section);
        int chosen = -1;
        for (int i = 0; i < g.keys.size(); ++i) {
            if (!settings_TextIsOne(settings_Read(section, g.keys[i]))) continue;
            // Two keys on at once is as broken as none.
            chosen = chosen < 0 ? i : -2;
        }
        v.options[QString::fromLatin1(g.name)] = chosen >= 0 ? chosen : defaultOption(g);
    }

    for (const NumberBox& b : numberBoxes()) {
        const QString key = QString::fromLatin1(b.key);
        QString text = settings_Read(kSettings, key).trimmed();
        if (!numberPasses(text, b.minimum, b.maximum))
            text = settings_Default(kSettings, key);
        else
            text = QString::number(static_cast<int>(std::nearbyint(text.toDouble())));
        v.numbers[QString::fromLatin1(b.control)] = text;
    }

    for (const auto& [section, key] : settings_CatalogueKeys()) {
        if (section == QLatin1String("FileTypes"))
            v.fileTypes[key] = readFlag(section, key);
        else if (section == QLatin1String("GlobalKeys"))
            v.globalKeys[key] = settings_Get(section, key).trimmed();
        else if (section == QLatin1String("Appearance")) {
            QString text = settings_Read(section, key).trimmed();
            const QString def = settings_Default(section, key);
            if (key.endsWith(QLatin1String("Colour"))) {
                if (Colors::parse(text, -1) < 0) text = def;
            } else if (key == QLatin1String("Fontsize")) {
                bool ok = false;
                const double n = text.toDouble(&ok);
                if (!ok || n < 4 || n > 72) text = def;
            } else if (key == QLatin1String("Font")) {
                if (text.isEmpty()) text = def;
            }
            v.appearance[key] = text;
        }
    }
    return v;
}

bool apply(const Values& values, MainContext& ctx) {
    const int failed = firstFailure(values);
    if (failed >= 0) {
        Dialogs::msgBox(numberBoxes()[failed].message, Dialogs::vbExclamation,
                        QString::fromLatin1(errorCaption()));
        return false;
    }

    for (const Check& c : checks())
        settings_Write(kSettings, QString::fromLatin1(c.key), flag(values.checks.value(c.index)));
    for (const OptionGroup& g : optionGroups()) {
        const int chosen = values.options.value(QString::fromLatin1(g.name), defaultOption(g));
        for (int i = 0; i < g.keys.size(); ++i)
            settings_Write(QString::fromLatin1(g.section), g.keys[i], flag(i == chosen));
    }
    for (const NumberBox& b : numberBoxes()) {
        const QString text = values.numbers.value(QString::fromLatin1(b.control));
        settings_Write(kSettings, QString::fromLatin1(b.key),
                       QString::number(static_cast<int>(std::nearbyint(text.toDouble()))));
    }
    for (auto it = values.fileTypes.cbegin(); it != values.fileTypes.cend(); ++it)
        settings_Write(QStringLiteral("FileTypes"), it.key(), flag(it.value()));

    for (auto it = values.globalKeys.cbegin(); it != values.globalKeys.cend(); ++it)
        settings_Write(QStringLiteral("GlobalKeys"), it.key(), it.value());
    ctx.call(ctx.window_InstallGlobalKeys);

    for (auto it = values.appearance.cbegin(); it != values.appearance.cend(); ++it)
        settings_Write(QStringLiteral("Appearance"), it.key(), it.value());
    ctx.call(ctx.window_ApplyAppearance);

    // Off and on again, so the icon comes back fresh.
    if (ctx.tray_Enable) {
        ctx.tray_Enable(false);
        if (values.checks.value(15)) ctx.tray_Enable(true);
    }
    // File types and the session start entry.
    ctx.call(ctx.associations_Apply);

    ctx.call(ctx.window_FormResize);
    window_WriteLog(
        QStringLiteral("%1 preferences were updated at %2.")
            .arg(App::Title(), QTime::currentTime().toString(QStringLiteral("hh:mm:ss"))));
    return true;
}

} // namespace PreferencesRules
