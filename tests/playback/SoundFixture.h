#pragma once
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "playback/AdjustVolumes.h"
#include "core/ScriptedPlayer.h"
#include "playback/Sound.h"
#include "core/ListModel.h"
#include "playlists/PlaylistRows.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

// A context with the sound part installed over a scripted engine, in a fresh data folder.
class SoundFixture : public ::testing::Test {
protected:
    void SetUp() override {
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setWriteFlag(true);
        ConsoleLog::instance().setText(QString());
        ctx.setPlayer(&engine);
        ctx.commands().add(QStringLiteral("mnuMute"), QStringLiteral("Mut&e\tE"), true);
        Sound_install(ctx);
    }
    void TearDown() override {
        ctx.setPlayer(nullptr);
        Dialogs::setResponder(nullptr);
    }

    AdjustVolumes& volumes() { return AdjustVolumes::of(ctx); }
    void addRow(const QString& artist, const QString& title, const QString& filename,
                const QString& status = QStringLiteral("Play")) {
        ctx.lstvPlaylist().addRow(
            {QString(), artist, title, QString(), status, QString(), filename});
    }
    void selectOnly(int index) { // 1-based
        ctx.lstvPlaylist().clearSelection();
        ctx.lstvPlaylist().setSelected(index - 1, true);
        ctx.lstvPlaylist().setCurrentRow(index - 1);
    }
    QString volumesFile() const { return home.file(QStringLiteral("volumes.ssb")); }

    TempHome home;
    ScriptedPlayer engine;
    MainContext ctx;
    ScriptedResponder dialogs;
};
