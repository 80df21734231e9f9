#include "support/TempHome.h"
#include "tags/TagBytes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

struct Outcome {
    int code = -1;
    QByteArray out;
};

Outcome veldorTag(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral(VELDOR_TAG_EXE), args);
    p.waitForFinished(30000);
    return {p.exitCode(), p.readAllStandardOutput()};
}

} // namespace

TEST(VeldorTag, WritesBothTagsAndPrintsThemAsJson) {
    TempHome home;
    const QString path = home.file(QStringLiteral("s.mp3"));
    TempHome::writeFile(path, TagBytes::audio(40) + TagBytes::id3v1("Old", "Old", 0));

    EXPECT_EQ(veldorTag({"--v2", "--set", "Title=Song", "artist=Band", "Comment=Hi", path}).code,
              0);
    EXPECT_EQ(veldorTag({"--v1", "--set", "Genre=Synth Pop", "Year=2001", path}).code, 0);
    EXPECT_EQ(veldorTag({"--v2", "--set", "Nonsense=1", path}).code, 1);
    EXPECT_EQ(veldorTag({"--v1", "--set", "Genre=Polkaish", path}).code, 1);

    const Outcome r = veldorTag({path, path});
    ASSERT_EQ(r.code, 0);
    const QList<QByteArray> lines = r.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 2);
    const QJsonObject o = QJsonDocument::fromJson(lines.at(0)).object();
    const QJsonObject v1 = o.value(QStringLiteral("ID3v1")).toObject();
    EXPECT_EQ(v1.value(QStringLiteral("Title")).toString(), QStringLiteral("Old"));
    EXPECT_EQ(v1.value(QStringLiteral("Genre")).toString(), QStringLiteral("Synth Pop"));
    EXPECT_EQ(v1.value(QStringLiteral("Year")).toString(), QStringLiteral("2001"));
    const QJsonObject v2 = o.value(QStringLiteral("ID3v2")).toObject();
    EXPECT_EQ(v2.value(QStringLiteral("version")).toInt(), 3);
    const QJsonArray frames = v2.value(QStringLiteral("frames")).toArray();
    ASSERT_EQ(frames.size(), 3);
    EXPECT_EQ(frames.at(0).toObject().value(QStringLiteral("id")).toString(),
              QStringLiteral("TIT2"));
    // Read back, the comment's prefix NULs are gone like every other NUL.
    EXPECT_EQ(frames.at(2).toObject().value(QStringLiteral("values")).toArray().at(0).toString(),
              QStringLiteral("Hi"));
    const QJsonObject props = v2.value(QStringLiteral("properties")).toObject();
    EXPECT_EQ(props.size(), 16);
    EXPECT_EQ(props.value(QStringLiteral("Artist")).toString(), QStringLiteral("Band"));
    EXPECT_EQ(o.value(QStringLiteral("MP3Bitrate")).toString(), QStringLiteral(" 128000"));
    EXPECT_EQ(o.value(QStringLiteral("MP3Layer")).toString(), QStringLiteral("Layer III"));
    EXPECT_EQ(o.value(QStringLiteral("MP3SampleRate")).toString(), QStringLiteral("44100"));
    EXPECT_EQ(o.value(QStringLiteral("MP3Length")).toString(), QStringLiteral("1"));
}
