#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "support/TempHome.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

QString saved(const QString& typed, const QString& filter, int filterIndex = 1) {
    ScriptedResponder answers({typed + QLatin1Char('|') + QString::number(filterIndex)});
    Dialogs::setResponder(&answers);
    Dialogs::FileRequest request;
    request.filter = filter;
    const QString path = Dialogs::showSave(request).path;
    Dialogs::setResponder(nullptr);
    return path;
}

const QString kPlaylists = QStringLiteral("VELDOR Playlist|*.spp|HTML Playlist|*.html|TEXT "
                                          "Playlist|*.txt|");

} // namespace

TEST(Dialogs, SaveAddsTheChosenFiltersExtensionToABareName) {
    EXPECT_EQ(saved("/p/Trip", kPlaylists), "/p/Trip.spp");
    EXPECT_EQ(saved("/p/Trip", kPlaylists, 2), "/p/Trip.html");
    EXPECT_EQ(saved("/p/Trip", kPlaylists, 3), "/p/Trip.txt");
    // The first of several patterns.
    EXPECT_EQ(saved("/p/log", "Logs|*.slf;*.log|"), "/p/log.slf");
}

TEST(Dialogs, SaveKeepsATypedExtensionAndWildFilters) {
    EXPECT_EQ(saved("/p/Trip.txt", kPlaylists), "/p/Trip.txt"); // the user's own word stands
    EXPECT_EQ(saved("/p/my.trip", kPlaylists), "/p/my.trip");
    EXPECT_EQ(saved("/p/Trip", "All Files|*.*|"), "/p/Trip");
    EXPECT_EQ(saved("/p.d/Trip", kPlaylists),
              "/p.d/Trip.spp");                            // a dot in the folder is no extension
    EXPECT_EQ(saved("/p/Trip", kPlaylists, 9), "/p/Trip"); // a filter that is not there
}

namespace {

// Records where each dialog opened.
class FolderRecorder : public ScriptedResponder {
public:
    QStringList folders;
    Dialogs::FileResult file(const Dialogs::Asked& a, const Dialogs::FileRequest& r) override {
        folders.append(r.initDir);
        return ScriptedResponder::file(a, r);
    }
    QString folder(const Dialogs::Asked& a, const QString& initial) override {
        folders.append(initial);
        return ScriptedResponder::folder(a, initial);
    }
};

// A user whose Music folder is set in user-dirs.dirs.
struct MusicFolder {
    TempHome home;
    QByteArray oldConfig = qgetenv("XDG_CONFIG_HOME");
    QString music = home.file(QStringLiteral("Tunes"));
    MusicFolder() {
        QDir().mkpath(music);
        TempHome::writeFile(home.file(QStringLiteral("config/user-dirs.dirs")),
                            "XDG_MUSIC_DIR=\"" + music.toUtf8() + "\"\n");
        qputenv("XDG_CONFIG_HOME", home.file(QStringLiteral("config")).toUtf8());
    }
    ~MusicFolder() {
        if (oldConfig.isEmpty())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", oldConfig);
    }
};

} // namespace

TEST(Dialogs, WindowsDefaultsAndGoneFoldersOpenAtTheMusicFolder) {
    MusicFolder user;
    FolderRecorder dialogs;
    Dialogs::setResponder(&dialogs);
    Dialogs::FileRequest request;
    for (const QString& stored : {QStringLiteral("C:\\"), QStringLiteral("d:/Music"), QString(),
                                  user.home.file(QStringLiteral("gone")),
                                  user.home.file(QStringLiteral("config/user-dirs.dirs"))}) {
        request.initDir = stored;
        Dialogs::showOpen(request);
    }
    request.initDir = user.home.path(); // a folder that is there stays
    Dialogs::showSave(request);
    Dialogs::browseFolder(QStringLiteral("Pick"), QStringLiteral("C:\\"));
    Dialogs::setResponder(nullptr);
    EXPECT_EQ(dialogs.folders, (QStringList{user.music, user.music, user.music, user.music,
                                            user.music, user.home.path(), user.music}));
    // Without a Music folder, the home folder.
    QDir(user.music).removeRecursively();
    EXPECT_EQ(Dialogs::startFolder(QStringLiteral("C:\\")), QDir::homePath());
}
