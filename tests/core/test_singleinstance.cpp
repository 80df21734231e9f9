#include "core/SingleInstance.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Sets the environment for one test and restores it.
class Env {
public:
    Env(const char* name, const QByteArray& value)
        : m_name(name), m_old(qgetenv(name)), m_had(qEnvironmentVariableIsSet(name)) {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }
    ~Env() {
        if (m_had)
            qputenv(m_name, m_old);
        else
            qunsetenv(m_name);
    }

private:
    const char* m_name;
    QByteArray m_old;
    bool m_had;
};

int modeOf(const QString& path) {
    struct stat st {};
    ::lstat(QFile::encodeName(path).constData(), &st);
    return int(st.st_mode & 0777);
}

class SingleInstanceFolders : public ::testing::Test {
protected:
    QString sub(const char* name, int mode) {
        const QString p = dir.filePath(QString::fromLatin1(name));
        QDir().mkpath(p);
        ::chmod(QFile::encodeName(p).constData(), mode_t(mode));
        return p;
    }
    QTemporaryDir dir;
};

TEST_F(SingleInstanceFolders, OnlyAFolderClosedToOthersIsUsed) {
    const QString cache = sub("cache", 0755);
    Env c("XDG_CACHE_HOME", cache.toUtf8());
    {
        Env r("XDG_RUNTIME_DIR", sub("run", 0700).toUtf8());
        EXPECT_EQ(SingleInstance::privateFolder(), dir.filePath("run"));
        SingleInstance one(dir.path());
        EXPECT_TRUE(one.lockPath().startsWith(dir.filePath("run") + '/'));
        EXPECT_TRUE(one.socketPath().startsWith(dir.filePath("run") + '/'));
    }
    // Unset, or open to others as /tmp is: a 0700 folder of the user's own in the cache.
    for (const QByteArray& runtime : {QByteArray(), sub("open", 01777).toUtf8()}) {
        Env r("XDG_RUNTIME_DIR", runtime);
        const QString folder = SingleInstance::privateFolder();
        EXPECT_EQ(folder, cache + "/veldor");
        EXPECT_EQ(modeOf(folder), 0700);
    }
    // A cache folder left open is closed again.
    ::chmod(QFile::encodeName(cache + "/veldor").constData(), 0777);
    Env r("XDG_RUNTIME_DIR", QByteArray());
    EXPECT_EQ(SingleInstance::privateFolder(), cache + "/veldor");
    EXPECT_EQ(modeOf(cache + "/veldor"), 0700);
}

TEST_F(SingleInstanceFolders, SecondCopyFindsTheFirstAndAsksItForward) {
    Env r("XDG_RUNTIME_DIR", sub("run", 0700).toUtf8());
    SingleInstance first(dir.path());
    ASSERT_FALSE(first.isPreviousInstance());
    first.listen();
    EXPECT_TRUE(first.problem().isEmpty());
    EXPECT_TRUE(QFileInfo::exists(first.socketPath()));
    int asked = 0;
    QObject::connect(&first, &SingleInstance::activateRequested, [&] { ++asked; });
    SingleInstance second(dir.path());
    EXPECT_TRUE(second.isPreviousInstance());
    for (int i = 0; i < 50 && !asked; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(asked, 1);
}

// A lock or socket that another user placed is not trusted, and the reason is given.
TEST_F(SingleInstanceFolders, ALockOrSocketOfAnotherUserIsRefusedAndSaid) {
    if (::getuid() != 0) GTEST_SKIP() << "needs to give a file away";
    Env r("XDG_RUNTIME_DIR", sub("run", 0700).toUtf8());
    for (int which = 0; which < 2; ++which) {
        SingleInstance probe(dir.path());
        const QString path = which == 0 ? probe.lockPath() : probe.socketPath();
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("12345\nveldor\nhost\n");
        f.close();
        ASSERT_EQ(::chown(QFile::encodeName(path).constData(), 65534, 65534), 0);
        SingleInstance copy(dir.path());
        EXPECT_FALSE(copy.isPreviousInstance());
        copy.listen();
        EXPECT_TRUE(copy.problem().contains(path)) << copy.problem().toStdString();
        EXPECT_TRUE(copy.problem().contains("another user"));
        QFile::remove(path);
    }
}

} // namespace
