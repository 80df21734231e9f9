#pragma once
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/ListModel.h"
#include "support/TempHome.h"

#include <QDir>
#include <gtest/gtest.h>

// A data folder with its Playlists folder, a main context, and dialogs answered by script.
class PlaylistFilesFixture : public ::testing::Test {
protected:
    PlaylistFilesFixture() {
        QDir().mkpath(home.file("Playlists"));
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setWriteFlag(true);
        ConsoleLog::instance().setText({});
    }
    ~PlaylistFilesFixture() override { Dialogs::setResponder(nullptr); }

    QString playlist(const QString& name) const { return home.file("Playlists/" + name + ".spp"); }
    ListModel& list() { return ctx.lstvPlaylist(); }
    void addSong(const QString& number, const QString& artist, const QString& title,
                 const QString& file, const QString& year = {}, const QString& status = "Play",
                 const QString& length = {}) {
        list().addRow({number, artist, title, year, status, length, file});
    }
    QString log() const { return ConsoleLog::instance().text(); }
    // The dialogs asked so far, as "kind|title".
    QStringList asked() const {
        QStringList out;
        for (const auto& a : dialogs.asked())
            out << a.kind + '|' + a.title;
        return out;
    }

    TempHome home;
    MainContext ctx;
    ScriptedResponder dialogs;
};

// The bytes of a list file holding these values, one a line.
inline QByteArray spp(const QStringList& values) {
    QByteArray out;
    for (const QString& v : values)
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}
