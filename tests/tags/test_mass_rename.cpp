#include "playlists/StoredList.h"
#include "tags/MassRename.h"
#include "tags/SafeFiles.h"
#include "tags/TagToolsFixture.h"

#include <QDir>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace PlaylistColumn;

namespace {

class MassRenameTest : public TagToolsFixture {
protected:
    // Songs "Artist i - Title i" with a play count and a stored volume each.
    QStringList songs(int n) {
        QStringList files;
        for (int i = 1; i <= n; ++i) {
            const QString f = mp3(QStringLiteral("track%1.mp3").arg(i),
                                  v1(QByteArray("Artist ") + QByteArray::number(i),
                                     QByteArray("Title ") + QByteArray::number(i)));
            files << f;
            addFile(f);
            tracking().lstvItems().addRow({"A", "T", "03", f});
            volumes().lstvItems().addRow({"A", "T", "42", f});
        }
        tracking().save();
        volumes().save();
        return files;
    }
    void runAll(MassRename::Options options = {}) {
        MassRename run(ctx, options);
        run.runToEnd();
    }
    static QString storedList(const QString& file) {
        return QString::fromUtf8(TempHome::readFile(App::file(file)));
    }
};

} // namespace

TEST_F(MassRenameTest, RowsCountsAndVolumesFollowEveryFile) {
    const QStringList files = songs(3);
    TempHome::writeFile(home.file(QStringLiteral("media/clip.avi")), "x");
    addFile(home.file(QStringLiteral("media/clip.avi")));
    MassRename::Options options;
    options.addNumbers = true;
    runAll(options);
    for (int i = 0; i < 3; ++i) {
        const QString now =
            home.file(QStringLiteral("media/0%1 - Artist %1 - Title %1.mp3").arg(i + 1));
        EXPECT_TRUE(QFileInfo::exists(now));
        EXPECT_FALSE(QFileInfo::exists(files[i]));
        EXPECT_EQ(list().text(i, Filename), now);
        EXPECT_TRUE(storedList(QStringLiteral("tracking.ssb")).contains(now));
        EXPECT_TRUE(storedList(QStringLiteral("volumes.ssb")).contains(now));
        EXPECT_TRUE(log().contains(files[i] + QStringLiteral(" was renamed to ") + now + "."));
    }
    EXPECT_FALSE(storedList(QStringLiteral("tracking.ssb")).contains(QStringLiteral("track")));
    EXPECT_EQ(volumes().volumes_GetVolume(list().text(0, Filename)), 42);
    // Files without tags are left alone, in silence.
    EXPECT_EQ(list().text(3, Filename), home.file(QStringLiteral("media/clip.avi")));
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(MassRenameTest, PlayingMissingAndTakenNamesAreReportedAndSkipped) {
    const QStringList files = songs(2);
    // The second file's tag names the first file's target: it may not replace it.
    const QString twin = mp3(QStringLiteral("twin.mp3"), v1("Artist 1", "Title 1"));
    addFile(twin);
    addFile(missing(QStringLiteral("gone.mp3")));
    ctx.player().setFileName(files[1]);
    runAll();
    const QString first = home.file(QStringLiteral("media/Artist 1 - Title 1.mp3"));
    EXPECT_EQ(list().text(0, Filename), first);
    EXPECT_EQ(list().text(1, Filename), files[1]);
    EXPECT_TRUE(QFileInfo::exists(files[1]));
    EXPECT_EQ(list().text(2, Filename), twin);
    EXPECT_EQ(audioOf(first), audioOf(twin));
    EXPECT_EQ(TempHome::readFile(first).right(128), v1("Artist 1", "Title 1"));
    EXPECT_TRUE(log().contains(twin + QStringLiteral(" could not be renamed to ") + first + "."));
    const QStringList m = messages();
    ASSERT_EQ(m.size(), 2);
    EXPECT_EQ(m[0], QStringLiteral("Mass File Renaming Error: It has been detected that the song "
                                   "you are trying to rename is being used by VELDOR:\n\n") +
                        files[1] + QStringLiteral("\n\nThis file will not be renamed."));
    EXPECT_TRUE(m[1].contains(QStringLiteral("does not exist:\n\n") + missing("gone.mp3")));
}

TEST_F(MassRenameTest, TagsThatMakeNoNameStayInTheFolder) {
    // Slashes and dots in tags: the name is cleaned, and ".." never becomes a path.
    const QString a = mp3(QStringLiteral("a.mp3"), v1("../..", "x/y:z?"));
    const QString b = mp3(QStringLiteral("b.mp3"), v1("", ""));
    addFile(a);
    addFile(b);
    runAll();
    EXPECT_EQ(list().text(0, Filename), home.file(QStringLiteral("media/.... - xyz.mp3")));
    EXPECT_EQ(list().text(1, Filename), home.file(QStringLiteral("media/ - .mp3")));
    EXPECT_EQ(QDir(home.file(QStringLiteral("media"))).entryList(QDir::Files | QDir::Hidden).size(),
              2);
}

TEST_F(MassRenameTest, ACancelLeavesRowsListsAndFilesAgreeing) {
    const QStringList files = songs(40);
    MassRename run(ctx, {});
    int seen = 0;
    QObject::connect(&run, &TagBatch::progress, [&](int row) {
        if (++seen == 17) run.cancel();
        (void)row;
    });
    run.runToEnd();
    EXPECT_TRUE(run.isCancelled());
    EXPECT_EQ(run.renamed(), 17);
    Tracking reloadedTracking(ctx);
    reloadedTracking.Form_Load();
    AdjustVolumes reloadedVolumes;
    reloadedVolumes.Form_Load();
    for (int i = 0; i < 40; ++i) {
        const QString row = list().text(i, Filename);
        EXPECT_TRUE(QFileInfo::exists(row)) << i;
        EXPECT_EQ(row != files[i], i < 17) << i;
        EXPECT_GE(StoredList::findFile(reloadedTracking.lstvItems(), Tracking::Filename, row), 0);
        EXPECT_GE(StoredList::findFile(reloadedVolumes.lstvItems(), AdjustVolumes::Filename, row),
                  0);
    }
}

TEST_F(MassRenameTest, BatchUpdateMatchesOneByOne) {
    // Two unsorted lists with the same rows: one told file by file, one in a batch.
    Tracking single(ctx), batch(ctx);
    const QStringList names{"/m/One.mp3", "/m/two.mp3", "/m/one.mp3", "/m/x.mp3"};
    for (Tracking* t : {&single, &batch})
        for (const QString& n : names)
            t->lstvItems().addRow({"a", "t", "01", n});
    // Case-blind, the first row of a name wins, a chain within one batch, a name not listed.
    const QList<QPair<QString, QString>> renames{{"/M/ONE.mp3", "/m/y.mp3"},
                                                 {"/m/y.mp3", "/m/z.mp3"},
                                                 {"/m/one.mp3", "/m/w.mp3"},
                                                 {"/m/x.mp3", "/m/v.mp3"},
                                                 {"/m/none.mp3", "/m/u.mp3"}};
    for (const auto& [from, to] : renames)
        single.tracking_UpdateFilename(from, to);
    batch.tracking_UpdateFilenames(renames, false);
    for (int i = 0; i < names.size(); ++i)
        EXPECT_EQ(batch.lstvItems().text(i, Tracking::Filename),
                  single.lstvItems().text(i, Tracking::Filename))
            << i;
    EXPECT_EQ(batch.lstvItems().text(0, Tracking::Filename), "/m/z.mp3");
    EXPECT_EQ(batch.lstvItems().text(2, Tracking::Filename), "/m/w.mp3");

    AdjustVolumes& v = volumes();
    QFile::remove(AdjustVolumes::filePath());
    v.lstvItems().addRow({"a", "a", "5", "/m/One.mp3"});
    v.volumes_UpdateFilenames({{"/m/one.MP3", "/m/q.mp3"}}, false);
    EXPECT_EQ(v.lstvItems().text(0, AdjustVolumes::Filename), "/m/q.mp3");
    EXPECT_FALSE(QFileInfo::exists(AdjustVolumes::filePath())); // not written when told not to
    v.volumes_UpdateFilenames({{"/m/q.mp3", "/m/r.mp3"}});
    EXPECT_TRUE(storedList(QStringLiteral("volumes.ssb")).contains("/m/r.mp3"));
}

// A stop at any moment leaves every file under exactly one of its two names.
TEST_F(MassRenameTest, KilledMidRunEveryFileHasExactlyOneName) {
    const int n = 400;
    QStringList before, after;
    for (int i = 1; i <= n; ++i) {
        before << mp3(QStringLiteral("k%1.mp3").arg(i),
                      v1("Art", QByteArray("Song ") + QByteArray::number(i)));
        after << home.file(QStringLiteral("media/Art - Song %1.mp3").arg(i));
        addFile(before.last());
    }
    int partial = 0;
    for (int delayUs : {1000, 3000, 8000, 20000, 50000}) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            MassRename run(ctx, {});
            run.runToEnd();
            ::_exit(0);
        }
        ::usleep(useconds_t(delayUs));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        int renamed = 0;
        for (int i = 0; i < n; ++i) {
            const bool old = QFileInfo::exists(before[i]), now = QFileInfo::exists(after[i]);
            EXPECT_NE(old, now) << i;
            renamed += now;
            if (now) {
                ASSERT_TRUE(SafeFiles::renameNoReplace(after[i], before[i]).ok);
            }
        }
        EXPECT_EQ(QDir(home.file(QStringLiteral("media"))).entryList(QDir::Files).size(), n);
        partial += renamed > 0 && renamed < n;
    }
    EXPECT_GT(partial, 0) << "no kill fell inside the run";
}
