#include "TagJson.h"

#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"
#include "tags/modMedia.h"

#include <QJsonArray>

namespace {

// FIELD=VALUE, the field's name compared without regard to case against `names`.
bool splitAssignment(const QString& a, const QStringList& names, QString& field, QString& value) {
    const qsizetype eq = a.indexOf(QLatin1Char('='));
    if (eq <= 0) return false;
    const QString name = a.left(eq);
    for (const QString& n : names) {
        if (n.compare(name, Qt::CaseInsensitive) == 0) {
            field = n;
            value = a.mid(eq + 1);
            return true;
        }
    }
    return false;
}

} // namespace

QJsonObject tagJson(const QString& filename) {
    QJsonObject out;
    out[QStringLiteral("file")] = filename;

    clsID3v1 v1;
    v1.setFilename(filename);
    out[QStringLiteral("ID3v1")] = QJsonObject{
        {QStringLiteral("Title"), v1.Title()},     {QStringLiteral("Artist"), v1.Artist()},
        {QStringLiteral("Album"), v1.Album()},     {QStringLiteral("Year"), v1.Year()},
        {QStringLiteral("Comment"), v1.Comment()}, {QStringLiteral("Genre"), v1.Genre()},
    };

    clsID3v2 v2;
    v2.setFilename(filename);
    QJsonObject id3v2;
    id3v2[QStringLiteral("HasID3v2Tag")] = v2.HasID3v2Tag();
    id3v2[QStringLiteral("version")] = int(v2.ID3v2TagVersion());
    QJsonArray frames;
    for (int i = 1; i <= v2.FrameCount(); ++i) {
        const QString id = v2.Frame(i);
        QJsonArray values;
        for (int n = 1; n <= v2.TagsInFrame(id); ++n)
            values.append(v2.Tag(id, n));
        frames.append(QJsonObject{{QStringLiteral("id"), id}, {QStringLiteral("values"), values}});
    }
    id3v2[QStringLiteral("frames")] = frames;
    QJsonObject properties;
    for (const QString& name : clsID3v2::propertyNames())
        properties[name] = v2.property(name);
    id3v2[QStringLiteral("properties")] = properties;
    out[QStringLiteral("ID3v2")] = id3v2;

    media_ReadMP3Info(filename);
    const MP3InfoState& s = media_MP3State();
    out[QStringLiteral("MP3Version")] = s.MP3Version;
    out[QStringLiteral("MP3Layer")] = s.MP3Layer;
    out[QStringLiteral("MP3Bitrate")] = s.MP3Bitrate;
    out[QStringLiteral("MP3SampleRate")] = s.MP3SampleRate;
    out[QStringLiteral("MP3Length")] = s.MP3Length;
    return out;
}

QString writeID3v1(const QString& filename, const QStringList& assignments) {
    static const QStringList names{QStringLiteral("Title"),   QStringLiteral("Artist"),
                                   QStringLiteral("Album"),   QStringLiteral("Year"),
                                   QStringLiteral("Comment"), QStringLiteral("Genre")};
    clsID3v1 current;
    current.setFilename(filename);
    ID3v1Record r;
    r.Title = current.Title();
    r.Artist = current.Artist();
    r.Album = current.Album();
    r.Year = current.Year();
    r.Comment = current.Comment();
    r.Genre = uint8_t(std::max<qsizetype>(0, clsID3v1::genres().indexOf(current.Genre())));
    for (const QString& a : assignments) {
        QString field, value;
        if (!splitAssignment(a, names, field, value))
            return QStringLiteral("unknown ID3v1 field in \"%1\"").arg(a);
        if (field == QLatin1String("Title")) r.Title = value;
        if (field == QLatin1String("Artist")) r.Artist = value;
        if (field == QLatin1String("Album")) r.Album = value;
        if (field == QLatin1String("Year")) r.Year = value;
        if (field == QLatin1String("Comment")) r.Comment = value;
        if (field == QLatin1String("Genre")) {
            bool isNumber = false;
            const int byte = value.toInt(&isNumber);
            const qsizetype named = clsID3v1::genres().indexOf(value);
            if (isNumber && byte >= 0 && byte <= 255)
                r.Genre = uint8_t(byte);
            else if (named >= 0)
                r.Genre = uint8_t(named);
            else
                return QStringLiteral("unknown genre \"%1\"").arg(value);
        }
    }
    if (!media_WriteID3v1Record(filename, r))
        return QStringLiteral("%1: the ID3v1 tag could not be written").arg(filename);
    return QString();
}

QString writeID3v2(const QString& filename, const QStringList& assignments) {
    clsID3v2 tag;
    tag.setFilename(filename);
    for (const QString& a : assignments) {
        QString field, value;
        if (!splitAssignment(a, clsID3v2::propertyNames(), field, value))
            return QStringLiteral("unknown ID3v2 field in \"%1\"").arg(a);
        tag.setPropertyByName(field, value);
    }
    if (!tag.Save())
        return QStringLiteral("%1: %2 (%3)")
            .arg(filename, tag.lastError().description, tag.lastError().source);
    return QString();
}
