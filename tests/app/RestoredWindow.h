#pragma once
#include "app/FrmMain.h"
#include "app/MainEvents.h"
#include "app/WindowSetup.h"
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/MainContext.h"
#include "playback/Player.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "support/TempHome.h"

#include <memory>

namespace restored {

inline QByteArray row(const QString& n, const QString& path) {
    QByteArray out;
    for (const QString& v : {n, QStringLiteral("Artist"), QStringLiteral("Title"), QString(),
                             QStringLiteral("Play"), QString(), path})
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}

// A main window, never shown on screen, restored from a prepared data folder.
struct Restored {
    TempHome home;
    ScriptedResponder dialogs;
    std::unique_ptr<MainContext> ctx;
    std::unique_ptr<FrmMain> window;

    Restored() { Dialogs::setResponder(&dialogs); }
    ~Restored() {
        window.reset();
        Dialogs::setResponder(nullptr);
    }
    void write(const QString& relative, const QByteArray& bytes) {
        TempHome::writeFile(home.file(relative), bytes);
    }
    void restore(const QString& command = {}) {
        ctx = std::make_unique<MainContext>();
        window = std::make_unique<FrmMain>(*ctx);
        Player_install(*ctx);
        PlaylistEditing_install(*ctx);
        PlaylistFiles_install(*ctx);
        MainEvents_install(*window);
        window->Command = command;
        window_Setup(*window);
    }
    Commands& c() { return ctx->commands(); }
};

} // namespace restored

using restored::Restored;
using restored::row;
