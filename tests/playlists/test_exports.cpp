#include "PlaylistFilesFixture.h"

#include "core/Commands.h"
#include "core/Settings.h"
#include "playlists/Exports.h"
#include "playlists/PlaylistFiles.h"

#include <QProcess>

class ExportsTest : public PlaylistFilesFixture {
protected:
    ExportsTest() {
        addSong("01", "Björk", "Jóga", "/m/a.mp3");
        addSong("02", "A & B", "<Title>", "/m/b.mp3");
    }
};

TEST_F(ExportsTest, TextExportIsOneLineARowAndReplacesTheFile) {
    const QString path = home.file("list.txt");
    TempHome::writeFile(path, "old text that must not stay\r\n");
    bool busyDuring = false;
    QObject::connect(&ctx, &MainContext::statusTextChanged, [&](const QString& text) {
        busyDuring = ctx.PlaylistBusy && text == "Creating TEXT playlist, please wait...";
    });
    ASSERT_TRUE(player_SaveTEXTPlaylist(ctx, path));
    EXPECT_EQ(TempHome::readFile(path), "01.  Björk - Jóga\r\n02.  A & B - <Title>\r\n");
    EXPECT_TRUE(busyDuring);
    EXPECT_FALSE(ctx.PlaylistBusy);
}

TEST_F(ExportsTest, HtmlExportIsWrittenExactlyInTheSetColours) {
    const QString path = home.file("My List.html");
    ASSERT_TRUE(player_SaveHTMLPlaylist(ctx, path));
    EXPECT_EQ(TempHome::readFile(path),
              "<html>\r\n<head>\r\n\r\n<title>My List</title>\r\n</head>\r\n\r\n"
              "<body bgcolor=\"#000080\" link=\"#FFFFFF\" vlink=\"#FFFFFF\" alink=\"#FFFFFF\" "
              "text=\"#FFFFFF\">\r\n"
              "<p><b><font size=\"8\" face=\"Tahoma\" color=\"#FFFFFF\">My List</font></b></p>\r\n"
              "<hr>\r\n"
              "<p><font size=\"2\" face=\"Tahoma\" color=\"#FFFFFF\">\r\n"
              "01.  Björk - Jóga<br>\r\n"
              "02.  A & B - <Title><br>\r\n"
              "<br>\r\n<hr>\r\n<br>\r\n"
              "Songs in playlist:  2<br>\r\n"
              "\r\n<p>&nbsp;</p>\r\n\r\n</body>\r\n\r\n</html>\r\n");

    settings_Write("HTMLPlaylist", "BackgroundColour", "#112233");
    settings_Write("HTMLPlaylist", "FontColour", "red");
    ASSERT_TRUE(player_SaveHTMLPlaylist(ctx, path));
    const QByteArray bytes = TempHome::readFile(path);
    EXPECT_TRUE(bytes.contains("<body bgcolor=\"#112233\" link=\"red\" vlink=\"red\" alink=\"red\" "
                               "text=\"red\">\r\n"));
    EXPECT_EQ(bytes.count("color=\"red\""), 2);
}

TEST_F(ExportsTest, PrintWritesHeaderAndRowsOnPages) {
    PlaylistFiles_install(ctx);
    ctx.commands().run("mnuPrint"); // cancelled: nothing printed, nothing logged
    EXPECT_EQ(asked(), QStringList{"print|Print VELDOR Playlist..."});
    EXPECT_FALSE(log().contains("printed"));

    for (int i = 3; i <= 150; ++i)
        addSong(QString::number(i), "Artist", QString("Song %1").arg(i), "/m/x.mp3");
    const QString pdf = home.file("out.pdf");
    dialogs.answer("pdf:" + pdf);
    ctx.commands().run("mnuPrint");
    QProcess p;
    p.start("pdftotext", {"-layout", pdf, "-"});
    ASSERT_TRUE(p.waitForFinished(30000));
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(text.startsWith("VELDOR Playlist:\n\n01 - Björk - Jóga\n02 - A & B - <Title>\n"))
        << text.left(200).toStdString();
    EXPECT_TRUE(text.contains("150 - Artist - Song 150"));
    EXPECT_GE(text.count('\f'), 2); // 152 lines at 10 points need more than one page
    EXPECT_TRUE(log().contains("Current playlist printed at "));
}
