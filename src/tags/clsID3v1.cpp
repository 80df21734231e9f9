#include "tags/clsID3v1.h"

#include "tags/TagFile.h"

namespace {

const char kGenres[] =
    "Blues|Classic Rock|Country|Dance|Disco|Funk|Grunge|Hip-Hop|Jazz|Metal|New Age|Oldies|Other|"
    "Pop|R&B|Rap|Reggae|Rock|Techno|Industrial|Alternative|Ska|Death Metal|Pranks|Soundtrack|"
    "Euro-Techno|Ambient|Trip Hop|Vocal|Jazz+Funk|Fusion|Trance|Classical|Instrumental|Acid|House|"
    "Game|Sound Clip|Gospel|Noise|Alt. Rock|Bass|Soul|Punk|Space|Meditative|Instrumental Pop|"
    "Instrumental Rock|Ethnic|Gothic|Darkwave|Techno-Industrial|Electronic|Pop-Folk|Eurodance|"
    "Dream|Southern Rock|Comedy|Cult|Gangsta Rap|Top 40|Christian Rap|Pop/Punk|Jungle|"
    "Native American|Cabaret|New Wave|Phychedelic|Rave|Showtunes|Trailer|Lo-Fi|Tribal|Acid Punk|"
    "Acid Jazz|Polka|Retro|Musical|Rock & Roll|Hard Rock|Folk|Folk/Rock|National Folk|Swing|"
    "Fast-Fusion|Bebob|Latin|Revival|Celtic|Blue Grass|Avantegarde|Gothic Rock|Progressive Rock|"
    "Psychedelic Rock|Symphonic Rock|Slow Rock|Big Band|Chorus|Easy Listening|Acoustic|Humour|"
    "Speech|Chanson|Opera|Chamber Music|Sonata|Symphony|Booty Bass|Primus|Porn Groove|Satire|"
    "Slow Jam|Club|Tango|Samba|Folklore|Ballad|Power Ballad|Rhythmic Soul|Freestyle|Duet|"
    "Punk Rock|Drum Solo|A Capella|Euro-House|Dance Hall|Goa|Drum & Bass|Club-House|Hardcore|"
    "Terror|Indie|Brit Pop|Negerpunk|Polsk Punk|Beat|Christian Gangsta Rap|Heavy Metal|"
    "Black Metal|Crossover|Comteporary Christian|Christian Rock|Merengue|Salsa|Trash Metal|Anime|"
    "JPop|Synth Pop";

QString field(const char* p, int n) {
    return QString::fromLatin1(p, n);
}

// Left-aligned, blank-padded or cut to `width`, one byte a character.
QByteArray fixedWidth(const QString& text, int width) {
    QByteArray b = text.left(width).toLatin1();
    b.append(width - b.size(), ' ');
    return b;
}

} // namespace

const QStringList& clsID3v1::genres() {
    static const QStringList list = QString::fromLatin1(kGenres).split(QLatin1Char('|'));
    return list;
}

QString clsID3v1::trimmedBlanks(const QString& s) {
    qsizetype b = 0, e = s.size();
    while (b < e && s.at(b) == QLatin1Char(' '))
        ++b;
    while (e > b && s.at(e - 1) == QLatin1Char(' '))
        --e;
    return s.mid(b, e - b);
}

bool clsID3v1::IsMP3File(const QString& filename) {
    const QString lower = filename.toLower();
    return lower.contains(QLatin1String(".mp3")) || lower.contains(QLatin1String(".mp2")) ||
           lower.contains(QLatin1String(".mp1"));
}

void clsID3v1::setFilename(const QString& filename) {
    TagFile file;
    const bool opened = IsMP3File(filename) && file.open(filename);
    load(filename, file, opened);
}

void clsID3v1::load(const QString& filename, TagFile& file, bool opened) {
    m_filename = filename;
    m_title.clear();
    m_artist.clear();
    m_album.clear();
    m_year.clear();
    m_comment.clear();
    // The genre is left alone: a file without a tag answers the genre of the one before.
    if (!IsMP3File(filename) || !opened) return;
    const qint64 p = file.size() - 127;
    if (p <= 0) return;
    char buf[128];
    if (file.readAt(p - 1, buf, 128) != 128) return;
    if (buf[0] != 'T' || buf[1] != 'A' || buf[2] != 'G') return;
    m_title = field(buf + 3, 30);
    m_artist = field(buf + 33, 30);
    m_album = field(buf + 63, 30);
    m_year = field(buf + 93, 4);
    m_comment = field(buf + 97, 30);
    const int g = uint8_t(buf[127]);
    m_genre = g < genres().size() ? genres().at(g) : QString();
}

QByteArray ID3v1Record::bytes() const {
    QByteArray b;
    b.reserve(125);
    b += fixedWidth(Title, 30);
    b += fixedWidth(Artist, 30);
    b += fixedWidth(Album, 30);
    b += fixedWidth(Year, 4);
    b += fixedWidth(Comment, 30);
    b += char(Genre);
    return b;
}

bool media_WriteID3v1Record(const QString& filename, const ID3v1Record& record) {
    TagFile file;
    if (!file.open(filename, true)) return false;
    const qint64 length = file.size();
    // A file shorter than a tag has no place for one; the length never changes.
    if (length < 128) return false;
    char marker[3];
    if (file.readAt(length - 128, marker, 3) != 3) return false;
    if (!(marker[0] == 'T' && marker[1] == 'A' && marker[2] == 'G') &&
        !file.writeAt(length - 128, "TAG", 3))
        return false;
    const QByteArray rec = record.bytes();
    return file.writeAt(length - 125, rec.constData(), rec.size());
}
