#pragma once
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/MainContext.h"
#include "playlists/AddMedia.h"
#include "playlists/DirectoryAdd.h"
#include "core/ListModel.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "support/TempHome.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QThread>
#include <atomic>
#include <gtest/gtest.h>

// Tags without parsing: the artist is the file's title, so a test sees which rows were read.
class FakeTagReader : public PlaylistTagReader {
public:
    Texts readID3v1(const QString& f) override { return read(f); }
    Texts readID3v2(const QString& f) override { return read(f); }
    QString lengthText(const QString&) override { return QStringLiteral("03:00"); }
    std::atomic<int> reads{0};
    int delayMs = 0;

private:
    Texts read(const QString& f) {
        ++reads;
        if (delayMs) QThread::msleep(delayMs);
        return {QStringLiteral("Tag ") + QFileInfo(f).completeBaseName(), QStringLiteral("T"),
                QStringLiteral("2001")};
    }
};

// A main context with every road installed, over a fresh data folder, scripted dialogs and a
// fake tag reader.
class AddMediaFixture : public ::testing::Test {
protected:
    void SetUp() override {
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setWriteFlag(true);
        ConsoleLog::instance().setText(QString());
        PlaylistEditing_install(ctx);
        window_RestoreSortModes(ctx);
        PlaylistFiles_install(ctx);
        AddMedia_install(ctx);
        ctx.commands().setChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"), true);
        ctx.player_Play = [this](int row) { played.append(row); };
        reader = std::make_shared<FakeTagReader>();
        playlist_SetTagReader(reader);
    }
    void TearDown() override {
        playlist_SetTagReader(nullptr);
        Dialogs::setResponder(nullptr);
    }

    ListModel& list() { return ctx.lstvPlaylist(); }
    void click(const char* name) { ctx.commands().action(QString::fromLatin1(name))->trigger(); }
    // Waits for a folder add to end; false when it did not within the time.
    bool waitForAdd(int ms = 20000) {
        return QTest::qWaitFor([this] { return DirectoryAdd::running(ctx) == nullptr; }, ms);
    }
    QString media(const QString& relative, const QByteArray& bytes = "x") {
        const QString path = home.file(QStringLiteral("music/") + relative);
        TempHome::writeFile(path, bytes);
        return path;
    }
    QString folder(const QString& relative) {
        const QString path = home.file(QStringLiteral("music/") + relative);
        QDir().mkpath(path);
        return path;
    }
    QStringList column(int c) {
        QStringList out;
        for (int i = 0; i < list().count(); ++i)
            out << list().text(i, c);
        return out;
    }
    QStringList names() {
        QStringList out;
        for (const QString& f : column(PlaylistColumn::Filename))
            out << QFileInfo(f).fileName();
        return out;
    }
    QStringList titles() {
        QStringList out;
        for (const Dialogs::Asked& a : dialogs.asked())
            out << a.title;
        return out;
    }
    QString log() const { return ConsoleLog::instance().text(); }
    void fillRows(int n) {
        for (int i = 0; i < n; ++i)
            playlist_AddSong(ctx, {}, {}, {}, QStringLiteral("/nowhere/%1.mp3").arg(i));
    }

    TempHome home;
    MainContext ctx;
    ScriptedResponder dialogs;
    std::shared_ptr<FakeTagReader> reader;
    QList<int> played;
};
