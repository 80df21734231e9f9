#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

// Every `#include "folder/..."` of the files below `folder`, as "file: include".
QStringList includesOf(const QString& folder, const QString& allowedPrefix, bool invert) {
    QStringList offending;
    const QString root = QStringLiteral(VELDOR_SOURCE_DIR "/src/");
    static const QRegularExpression include(QStringLiteral("^#include \"([a-z]+)/"),
                                            QRegularExpression::MultilineOption);
    QDirIterator it(root + folder, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) continue;
        const QString text = QString::fromUtf8(f.readAll());
        auto m = include.globalMatch(text);
        while (m.hasNext()) {
            const QString dir = m.next().captured(1);
            if ((dir == allowedPrefix) == invert) offending << path.mid(root.size()) + ": " + dir;
        }
    }
    return offending;
}

} // namespace

TEST(Layers, CoreIncludesOnlyCore) {
    EXPECT_EQ(includesOf(QStringLiteral("core"), QStringLiteral("core"), false), QStringList{});
    for (const char* folder :
         {"playback", "playlists", "tags", "stats", "library", "cd", "system", "ui"}) {
        if (!QDir(QStringLiteral(VELDOR_SOURCE_DIR "/src/") + folder).exists()) continue;
        EXPECT_EQ(includesOf(QString::fromLatin1(folder), QStringLiteral("app"), true),
                  QStringList{})
            << folder;
    }
}
