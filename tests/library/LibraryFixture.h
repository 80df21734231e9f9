#pragma once
#include "core/App.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/modControls.h"
#include "library/MediaLibrary.h"
#include "playlists/AddMediaFixture.h"
#include "playlists/ListFiles.h"
#include "playlists/MenuArray.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentPlaylists.h"

#include <QDir>
#include <QFile>

// Songs written on the spot: an optional ID3v2.3 tag, one MPEG frame header and an ID3v1 tag
// whose fields are taken as raw bytes, so a test can put NULs or 30 bytes without end in them.
namespace LibraryMedia {

inline QByteArray field(const QByteArray& value, int size) {
    QByteArray f = value.left(size);
    f.append(QByteArray(size - f.size(), '\0'));
    return f;
}

inline QByteArray id3v1(const QByteArray& title, const QByteArray& artist, const QByteArray& album,
                        const QByteArray& year, quint8 genre = 255) {
    return "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field(year, 4) +
           field("comment", 30) + char(genre);
}

inline QByteArray v2Frame(const char* id, const QByteArray& text) {
    const QByteArray body = '\0' + text;
    const int n = int(body.size());
    QByteArray f(id, 4);
    for (int shift : {24, 16, 8, 0})
        f.append(char(n >> shift));
    return f + QByteArray(2, '\0') + body;
}

inline QByteArray id3v2(const QByteArray& artist, const QByteArray& title) {
    // The size counts from the first byte of the file, plain big-endian; 2048 as saved tags are.
    QByteArray tag = "ID3" + QByteArray("\x03\x00\x00\x00\x00\x08\x00", 7) +
                     v2Frame("TPE1", artist) + v2Frame("TIT2", title);
    return tag + QByteArray(2048 - tag.size(), '\0');
}

inline QByteArray mpegFrames() {
    QByteArray frame(417, '\0');
    frame[0] = char(0xFF);
    frame[1] = char(0xFB);
    frame[2] = char(0x90);
    frame[3] = char(0x64);
    return frame + frame;
}

} // namespace LibraryMedia

class LibraryFixture : public AddMediaFixture {
protected:
    // An MP3 with an ID3v1 tag under music/.
    QString song(const QString& name, const QByteArray& artist, const QByteArray& year = "1999",
                 const QByteArray& album = "Album", const QByteArray& title = "Title") {
        return media(name,
                     LibraryMedia::mpegFrames() + LibraryMedia::id3v1(title, artist, album, year));
    }
    // A playlist file of these paths, each row with a number, artist, title, year, status and
    // length of the playlist's own.
    QString playlist(const QString& name, const QStringList& paths) {
        QByteArray bytes;
        int n = 0;
        for (const QString& p : paths) {
            ++n;
            bytes += ListFiles::encodeRow({QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')),
                                           QStringLiteral("List Artist"),
                                           QStringLiteral("List Title"), QStringLiteral("1980"),
                                           QStringLiteral("Play"), QStringLiteral("01:00"), p});
        }
        const QString path = App::file(QStringLiteral("Playlists/") + name + ".spp");
        TempHome::writeFile(path, bytes);
        return path;
    }
    QStringList entries(ListModel& list, int column = 0) {
        QStringList out;
        // As the lists show them: up to the first NUL.
        for (int i = 0; i < list.count(); ++i)
            out << list.text(i, column).section(QChar(0), 0, 0);
        return out;
    }
    QStringList row(ListModel& list, int r) {
        QStringList out;
        for (const QString& cell : list.rowTexts(r))
            out << cell.section(QChar(0), 0, 0);
        return out;
    }
    QString cell(ListModel& list, int r, int c) { return list.text(r, c).section(QChar(0), 0, 0); }
    void run(const char* name) { lib.commands().run(QString::fromLatin1(name)); }
    // Opens a playlist through the File menu and lets the loading end.
    void open(const QString& path) {
        dialogs.answer(path);
        run("mnuOpen");
        lib.finishWork();
    }

    MediaLibrary lib{ctx};
};
