#pragma once
#include "core/App.h"
#include "core/Settings.h"
#include "core/wmpPlayer.h"
#include "playback/AdjustVolumes.h"
#include "playlists/RowsFixture.h"
#include "stats/Tracking.h"
#include "tags/TagBytes.h"
#include "tags/TagsInstall.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// Playlist rows over real tagged files, with the play counts and stored volumes loaded.
class TagToolsFixture : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        settings_Write(QStringLiteral("Settings"), QStringLiteral("AlwaysUseVolumeAdjusting"),
                       QStringLiteral("1"));
        Tags_install(ctx);
    }
    void TearDown() override {
        playlist_SetTagReader(nullptr);
        RowsFixture::TearDown();
    }

    // A 128-byte ID3v1 tag with every field.
    static QByteArray v1(const QByteArray& artist, const QByteArray& title,
                         const QByteArray& album = {}, const QByteArray& year = "1999",
                         uint8_t genre = 17) {
        return QByteArray("TAG") + title.leftJustified(30, ' ', true) +
               artist.leftJustified(30, ' ', true) + album.leftJustified(30, ' ', true) +
               year.leftJustified(4, ' ', true) + QByteArray(30, ' ') + char(genre);
    }
    // An MP3 of 40 frames with the ID3v1 tag given (or none), in the media folder.
    QString mp3(const QString& name, const QByteArray& tag) {
        const QString path = home.file(QStringLiteral("media/") + name);
        TempHome::writeFile(path, TagBytes::audio(40) + tag);
        return path;
    }
    // The MPEG frames of a file: from the first frame sync to before an ID3v1 tag.
    static QByteArray audioOf(const QString& path) {
        const QByteArray all = TempHome::readFile(path);
        const qsizetype start = all.indexOf("\xFF\xFB\x90\x00");
        qsizetype end = all.size();
        if (end >= 128 && all.mid(end - 128, 3) == "TAG") end -= 128;
        return start < 0 ? QByteArray() : all.mid(start, end - start);
    }
    void addFile(const QString& path) {
        add(QString(), path);
        listview_Renumber(list());
    }
    Tracking& tracking() { return Tracking::of(ctx); }
    AdjustVolumes& volumes() { return AdjustVolumes::of(ctx); }
    QStringList messages() const {
        QStringList out;
        for (const auto& a : dialogs.asked())
            out << a.title + QStringLiteral(": ") + a.text;
        return out;
    }
};
