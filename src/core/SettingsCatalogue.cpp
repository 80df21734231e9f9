#include "core/SettingsCatalogue.h"

#include "core/Settings.h"

#include <QHash>

namespace {

struct Entry {
    const char* section;
    const char* key;
    const char* def;
};

const Entry kCatalogue[] = {
    {"Settings", "AllowMultipleInstances", "0"},
    {"Settings", "AlwaysOnTop", "0"},
    {"Settings", "AlwaysScanPlaylistWhenAddingSongs", "0"},
    {"Settings", "AlwaysTrackMediaFilesPlayed", "1"},
    {"Settings", "AlwaysUseVolumeAdjusting", "0"},
    {"Settings", "AskConfirmationToUpdatePlaylist", "1"},
    {"Settings", "ClearPlaylistWhenFilesAreAddedOnStartUp", "0"},
    {"Settings", "DirectoryPath", "C:\\"},
    {"Settings", "DisableGlobalHotkeys", "0"},
    {"Settings", "DoRecursiveDirectoryScan", "1"},
    {"Settings", "HideInTheTaskManager", "0"},
    {"Settings", "IntroductionRate", "30"},
    {"Settings", "KeysUseAsArtistFindingKeys", "0"},
    {"Settings", "KeysUseAsShortcuts", "1"},
    {"Settings", "LastDirectoryUsed", "C:\\"},
    {"Settings", "LockPlaylist", "0"},
    {"Settings", "MessengerShowSongsBeingPlayed", "0"},
    {"Settings", "NumberofRecentMediaFiles", "30"},
    {"Settings", "NumberofRecentPlaylists", "30"},
    {"Settings", "PlayMusicOnStartUp", "0"},
    {"Settings", "PlayOnNextAndPrevious", "1"},
    {"Settings", "PlayPlaylistsOnSkip", "0"},
    {"Settings", "RegisterFilesWhenLoading", "0"},
    {"Settings", "RememberTheConsoleLogs", "0"},
    {"Settings", "RewindForwardRate", "5"},
    {"Settings", "SendMediaFilesToRecycleBin", "1"},
    {"Settings", "ShowAdjustVolumesHeaders", "0"},
    {"Settings", "ShowCurrentSongAlerts", "1"},
    {"Settings", "ShowFilenamesColumn", "1"},
    {"Settings", "ShowLyricsWhenAvailable", "0"},
    {"Settings", "ShowMiniModeWhenWindowIsClosed", "0"},
    {"Settings", "ShowOptionsWindow", "1"},
    {"Settings", "ShowPlaylistHeaders", "0"},
    {"Settings", "ShowStatusBar", "1"},
    {"Settings", "ShowTimeElapsed", "1"},
    {"Settings", "ShowTimeRemaining", "0"},
    {"Settings", "ShowToolbar", "1"},
    {"Settings", "ShowTrackingHeaders", "0"},
    {"Settings", "StartVELDOROnWindowsSessionStartup", "0"},
    {"Settings", "StartVideoinFullModeWhenPlayingVideo", "0"},
    {"Settings", "TagsShowTagsAsFilesAreAdded", "1"},
    {"Settings", "TagsShowTagsAsFilesArePlayed", "0"},
    {"Settings", "UpdateWindowsIconsWhenLoading", "0"},
    {"Settings", "UseID3v2Tags", "0"},
    {"Settings", "UseLargerTAGSWhenAvailable", "0"},
    {"Settings", "UseNumberPaddingInPlaylists", "1"},
    {"Settings", "UseSystemTraySupport", "1"},
    {"Settings", "WriteConsoleLogs", "1"},

    {"Playback", "PlayingGoThroughPlaylistNormally", "1"},
    {"Playback", "PlayingIntroduction", "0"},
    {"Playback", "PlayingPickRandomSongs", "0"},
    {"Playback", "PlayingRepeat", "0"},
    {"Playback", "PlayingRepeatOnce", "0"},
    {"Playback", "PlayingShuffleByAlbum", "0"},
    {"Playback", "PlayingShuffleByArtist", "0"},
    {"Playback", "PlayingShuffleByYear", "0"},
    {"Playback", "PlayingStopAfterEnding", "0"},
    {"Playback", "PlaylistPickRandomAfterEnding", "0"},
    {"Playback", "PlaylistRepeat", "0"},
    {"Playback", "PlaylistRepeatOnce", "0"},
    {"Playback", "PlaylistStopAfterEnding", "1"},
    {"Playback", "PlaylistSwitchToNext", "0"},
    {"Playback", "LastPlayed", "1"},
    {"Playback", "PlaylistUsed", ""},

    {"PlayMode", "WorkForwardThroughList", "1"},
    {"PlayMode", "WorkBackwardsThroughPlaylist", "0"},

    {"ListSorting", "SortByArtist", "0"},
    {"ListSorting", "SortByTitle", "0"},
    {"ListSorting", "SortByYear", "0"},
    {"ListSorting", "SortByLength", "0"},
    {"ListSorting", "SortByFilename", "1"},
    {"ListSorting", "SortViaAscendingOrder", "0"},
    {"ListSorting", "SortViaDescendingOrder", "0"},
    {"ListSorting", "DoNotSortTheList", "1"},

    {"Sound", "Volume", "50"},
    {"Sound", "Balance", "50"},

    {"Appearance", "Font", "Tahoma"},
    {"Appearance", "Fontsize", "8"},
    {"Appearance", "BackgroundColour", "2147483653"}, // 0x80000005
    {"Appearance", "FontColour", "2147483656"},       // 0x80000008
    {"Appearance", "PlayingFontColour", "192"},
    {"Appearance", "PlayNextFontColour", "12582912"},
    {"Appearance", "PlaylistImage", ""},

    {"ColumnHeaders_MainWindow", "Number", "800"},
    {"ColumnHeaders_MainWindow", "Artist", "3000"},
    {"ColumnHeaders_MainWindow", "Title", "3000"},
    {"ColumnHeaders_MainWindow", "Year", "1000"},
    {"ColumnHeaders_MainWindow", "Status", "1000"},
    {"ColumnHeaders_MainWindow", "Length", "1000"},
    {"ColumnHeaders_MediaLibrary", "Artist", "3000"},
    {"ColumnHeaders_MediaLibrary", "Title", "3000"},
    {"ColumnHeaders_MediaLibrary", "Year", "1000"},
    {"ColumnHeaders_MediaLibrary", "Length", "1000"},
    {"ColumnHeaders_CDPlayer", "Number", "800"},
    {"ColumnHeaders_CDPlayer", "Length", "1000"},

    {"MediaLibrarySettings", "AlwaysOnTop", "0"},
    {"MediaLibrarySettings", "ShowPlaylistHeaders", "0"},
    {"MediaLibrarySettings", "ShowSearchBar", "1"},
    {"MediaLibrarySettings", "ShowStatusBar", "1"},
    {"MediaLibrarySettings", "UseID3v2Tags", "0"},

    {"CDSettings", "AlwaysOnTop", "0"},
    {"CDSettings", "ShowPlaylistHeaders", "0"},
    {"CDSettings", "ShowStatusBar", "1"},
    {"CDSettings", "ShowTimeElapsed", "1"},
    {"CDSettings", "ShowTimeRemaining", "0"},
    {"CDSettings", "ShowToolbar", "1"},

    {"MiniModeSettings", "AlwaysOnTop", "0"},
    {"MiniModeSettings", "LockPosition", "0"},
    {"MiniModeAppearance", "BackColour", "12632256"},
    {"MiniModeAppearance", "BorderColour", "0"},
    {"MiniModeAppearance", "LightLinesColour", "16777215"},
    {"MiniModeAppearance", "DarkLinesColour", "8421504"},
    {"MiniModeAppearance", "SlidersBackColour", "14737632"},
    {"MiniModeAppearance", "IndentBackColour", "0"},
    {"MiniModeAppearance", "IndentFontColour", "65280"},
    {"MiniModeAppearance", "WindowFontBackColour", "2512678"},
    {"MiniModeAppearance", "WindowFontColour", "0"},

    {"HTMLPlaylist", "BackgroundColour", "#000080"},
    {"HTMLPlaylist", "FontColour", "#FFFFFF"},

    {"GlobalKeys", "PlayPauseKey", "Media:  Play/Pause"},
    {"GlobalKeys", "StopKey", "Media:  Stop"},
    {"GlobalKeys", "NextKey", "Media:  Next"},
    {"GlobalKeys", "PreviousKey", "Media:  Previous"},
    {"GlobalKeys", "MuteKey", "Media:  Mute"},
    {"GlobalKeys", "VolumeUpKey", "Media:  Volume Up"},
    {"GlobalKeys", "VolumeDownKey", "Media:  Volume Down"},
    {"GlobalKeys", "PlayPauseExt", ""},
    {"GlobalKeys", "StopExt", ""},
    {"GlobalKeys", "NextExt", ""},
    {"GlobalKeys", "PreviousExt", ""},
    {"GlobalKeys", "MuteExt", ""},
    {"GlobalKeys", "VolumeUpExt", ""},
    {"GlobalKeys", "VolumeDownExt", ""},

    // In the order of registration.
    {"FileTypes", "MP3", "1"},
    {"FileTypes", "MP2", "1"},
    {"FileTypes", "MP1", "1"},
    {"FileTypes", "MID", "0"},
    {"FileTypes", "RMI", "0"},
    {"FileTypes", "MIDI", "0"},
    {"FileTypes", "WAV", "0"},
    {"FileTypes", "SND", "0"},
    {"FileTypes", "AU", "0"},
    {"FileTypes", "AIF", "0"},
    {"FileTypes", "AIFC", "0"},
    {"FileTypes", "AIFF", "0"},
    {"FileTypes", "WMA", "0"},
    {"FileTypes", "AVI", "0"},
    {"FileTypes", "WMV", "0"},
    {"FileTypes", "MPEG", "0"},
    {"FileTypes", "MPE", "0"},
    {"FileTypes", "MPG", "0"},
    {"FileTypes", "M1V", "0"},
    {"FileTypes", "MPA", "0"},

    {"JumpToMedia", "ModeContains", "0"},
    {"JumpToMedia", "ModeEndsWith", "0"},
    {"JumpToMedia", "ModeStartsWith", "0"},
    {"JumpToMedia", "ModeWholeWord", "1"},
    {"JumpToMedia", "OptionDoNothing", "0"},
    {"JumpToMedia", "OptionSelectSong", "1"},
    {"JumpToMedia", "OptionSelectSongAndPlayIt", "0"},
    {"JumpToMedia", "OptionSelectSongAndSetItToNext", "0"},
    {"JumpToMedia", "SearchByAlbum", "0"},
    {"JumpToMedia", "SearchByAll", "1"},
    {"JumpToMedia", "SearchByArtist", "0"},
    {"JumpToMedia", "SearchByFilename", "0"},
    {"JumpToMedia", "SearchByGenre", "0"},
    {"JumpToMedia", "SearchByTitle", "0"},
    {"JumpToMedia", "SearchByYear", "0"},
    {"JumpToTrackNumber", "OptionSelectSong", "1"},
    {"JumpToTrackNumber", "OptionSelectSongAndPlayIt", "0"},
    {"JumpToTrackNumber", "OptionSelectSongAndSetItToNext", "0"},

    {"Video", "Height", "3705"},
    {"Video", "Width", "6000"},
    {"Lyrics", "Height", "3855"},
    {"Lyrics", "Width", "3630"},

    {"Advanced", "Moods", "Happy|Annoyed|Sad|Low|Hyper|Bored|Slow|Fast|Angry|Other"},
};

QString lookupKey(const QString& section, const QString& key) {
    return section.toLower() + QLatin1Char('\n') + key.toLower();
}

const QHash<QString, QString>& index() {
    static const QHash<QString, QString> map = [] {
        QHash<QString, QString> m;
        for (const Entry& e : kCatalogue)
            m.insert(lookupKey(QString::fromLatin1(e.section), QString::fromLatin1(e.key)),
                     QString::fromLatin1(e.def));
        return m;
    }();
    return map;
}

} // namespace

QString settings_Default(const QString& section, const QString& key) {
    return index().value(lookupKey(section, key));
}

QString settings_Get(const QString& section, const QString& key) {
    return settings_Read(section, key, settings_Default(section, key));
}

bool settings_IsOn(const QString& section, const QString& key) {
    return settings_TextIsOne(settings_Get(section, key));
}

QList<std::pair<QString, QString>> settings_CatalogueKeys() {
    QList<std::pair<QString, QString>> keys;
    for (const Entry& e : kCatalogue)
        keys.append({QString::fromLatin1(e.section), QString::fromLatin1(e.key)});
    return keys;
}
