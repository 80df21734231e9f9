#include "playlists/Moods.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "playlists/FrmEditMoods.h"
#include "playlists/LineFiles.h"
#include "core/ListModel.h"
#include "playlists/MenuArray.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "core/modControls.h"

#include <QCoreApplication>

namespace {

const QString kDefaultMoods =
    QStringLiteral("Happy|Annoyed|Sad|Low|Hyper|Bored|Slow|Fast|Angry|Other");

MenuArray& openMenu(MainContext& ctx) {
    return MenuArray::of(ctx, QStringLiteral("mnuMoodOpen"), QStringLiteral("[None]"));
}
MenuArray& sendMenu(MainContext& ctx) {
    return MenuArray::of(ctx, QStringLiteral("mnuSendToMood"), QStringLiteral("[None]"));
}

} // namespace

QString& MoodNames() {
    static QString names = kDefaultMoods;
    return names;
}

QStringList mood_List() {
    return MoodNames().split(QLatin1Char('|'));
}

QString mood_FilePath(const QString& name) {
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QChar(0)) ||
        name == QLatin1String(".") || name == QLatin1String(".."))
        return {};
    return App::file(QStringLiteral("Moods/") + name + QStringLiteral(".mlst"));
}

QString text_ProperCase(const QString& text) {
    QString out = text.toLower();
    bool start = true;
    for (QChar& c : out) {
        if (start && c.isLetter()) c = c.toUpper();
        start = c.isSpace();
    }
    return out;
}

void window_RemoveMoodMenus(MainContext& ctx) {
    openMenu(ctx).unloadAbove0();
    sendMenu(ctx).unloadAbove0();
}

void window_InstallMoods(MainContext& ctx) {
    for (MenuArray* menu : {&openMenu(ctx), &sendMenu(ctx)}) {
        menu->setEnabled(0, true);
        menu->setVisible(0, false);
    }
    for (const QString& name : mood_List()) {
        openMenu(ctx).load(name);
        sendMenu(ctx).load(name);
    }
}

void window_UpdateMoods(MainContext& ctx) {
    MenuArray& menu = openMenu(ctx);
    for (int i = 1; i < menu.count(); ++i) {
        const QString path = mood_FilePath(menu.item(i).caption);
        menu.setEnabled(i, !path.isEmpty() && modFiles::file_Exists(path));
    }
}

void mnuMoodOpen_Click(MainContext& ctx, int index) {
    MenuArray& menu = openMenu(ctx);
    if (index < 1 || index >= menu.count()) return;
    const QString name = menu.item(index).caption;
    const QString path = mood_FilePath(name);
    if (path.isEmpty() || !modFiles::file_Exists(path)) return;
    mnuNew_Click(ctx);
    const QStringList values = LineFiles::readValues(path);
    for (qsizetype i = 0; i < values.size(); ++i) {
        playlist_AddSong(ctx, QString(), QString(), QString(), values[i]);
        if ((i & 255) == 255) QCoreApplication::processEvents();
    }
    playlist_ShowMP3Data(ctx, false);
    listview_Renumber(ctx.lstvPlaylist());
    playlist_CheckEntries(ctx);
    ctx.call(ctx.window_UncheckMenus);
    ctx.call(ctx.window_ResetRandomFilenames);
    window_WriteLog(name + QStringLiteral(" Mood opened."));
}

void mnuSendToMood_Click(MainContext& ctx, int index) {
    MenuArray& menu = sendMenu(ctx);
    if (index < 1 || index >= menu.count()) return;
    const QString name = menu.item(index).caption;
    const QString path = mood_FilePath(name);
    ListModel& list = ctx.lstvPlaylist();
    for (int row = 0; row < list.count() && !path.isEmpty(); ++row) {
        if (!list.isSelected(row)) continue;
        const QString filename = list.text(row, PlaylistColumn::Filename);
        if (modFiles::file_ContainsEntry(path, filename)) {
            Dialogs::msgBox(QStringLiteral("The song/video you have selected is already in this "
                                           "mood.\n\nThis song will not be copied into the "
                                           "mood.\n"),
                            Dialogs::vbInformation, QStringLiteral("Song/Video Already In Mood"));
            continue;
        }
        if (!LineFiles::append(path, filename)) break;
        window_WriteLog(filename + QStringLiteral(" added to '") + name +
                        QStringLiteral("' Mood."));
    }
    window_UpdateMoods(ctx);
}

bool media_ResetMoods() {
    if (Dialogs::msgBox(QStringLiteral("Once the moods have been reset, you will not be able to "
                                       "get them back again.\n\nDo you wish to continue?\n"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Reset Moods Confirmation")) != Dialogs::vbYes)
        return false;
    for (const QString& name : mood_List()) {
        const QString path = mood_FilePath(name);
        if (!path.isEmpty()) modFiles::file_Delete(path);
    }
    return true;
}

void mnuResetMoods_Click(MainContext& ctx) {
    media_ResetMoods();
    window_RemoveMoodMenus(ctx);
    window_InstallMoods(ctx);
    window_UpdateMoods(ctx);
}

void mnuEditMoods_Click(MainContext& ctx) {
    FrmEditMoods::open(ctx);
}

void Moods_install(MainContext& ctx) {
    MoodNames() = settings_Read(QStringLiteral("Advanced"), QStringLiteral("Moods"), kDefaultMoods);
    window_InstallMoods(ctx);
    window_UpdateMoods(ctx);
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    c.add(QStringLiteral("mnuEditMoods"), QStringLiteral("&Edit Moods..."));
    c.add(QStringLiteral("mnuResetMoods"), QStringLiteral("&Reset Moods..."));
    c.setHandler(QStringLiteral("mnuEditMoods"), [p] { mnuEditMoods_Click(*p); });
    c.setHandler(QStringLiteral("mnuResetMoods"), [p] { mnuResetMoods_Click(*p); });
    c.setHandler(QStringLiteral("mnuOpenMood"), [] {});
}
