#pragma once
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/MainContext.h"
#include "core/ListModel.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistRows.h"
#include "core/modControls.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

// A main context over a fresh data folder, with scripted dialogs and an empty log.
class RowsFixture : public ::testing::Test {
protected:
    void SetUp() override {
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setWriteFlag(true);
        ConsoleLog::instance().setText(QString());
        PlaylistEditing_install(ctx);
        window_RestoreSortModes(ctx); // the modes of a first start: no sorting
        ctx.commands().setHandler(QStringLiteral("mnuJumpToCurrentlyPlaying"), [this] { ++jumps; });
    }
    void TearDown() override { Dialogs::setResponder(nullptr); }

    ListModel& list() { return ctx.lstvPlaylist(); }
    // A media file that exists, below the data folder.
    QString makeFile(const QString& name) {
        const QString path = home.file(QStringLiteral("media/") + name);
        TempHome::writeFile(path, "x");
        return path;
    }
    QString missing(const QString& name) { return home.file(QStringLiteral("gone/") + name); }
    void add(const QString& artist, const QString& filename, const QString& length = {}) {
        list().addRow(
            {QString(), artist, QString(), QString(), QStringLiteral("Play"), length, filename});
    }
    // Rows "A", "B", ... whose files exist; renumbered.
    void addRows(int n) {
        for (int i = 0; i < n; ++i) {
            const QString name = QString(QChar('A' + i));
            add(name, makeFile(name + QStringLiteral(".mp3")));
        }
        listview_Renumber(list());
    }
    QStringList column(int c) {
        QStringList out;
        for (int i = 0; i < list().count(); ++i)
            out << list().text(i, c);
        return out;
    }
    QStringList artists() { return column(PlaylistColumn::Artist); }
    void select(std::initializer_list<int> rows) { // 1-based
        list().clearSelection();
        for (int r : rows)
            list().setSelected(r - 1, true);
    }
    QString log() const { return ConsoleLog::instance().text(); }

    TempHome home;
    MainContext ctx;
    ScriptedResponder dialogs;
    int jumps = 0;
};
