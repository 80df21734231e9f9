#pragma once
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

class TagFile;

// The tag at the head of a media file in this program's own dialect: versions 2 to 4 are read,
// version 3 is written. Sizes are plain big-endian numbers, a frame header counts 16 (9 for
// version 2) against the tag size, NULs are taken out of every value, and a new tag is padded to
// a multiple of 2048 so that later saves fit in place.
class clsID3v2 {
public:
    // What a failing call reports: the system's error number and text.
    struct Error {
        int number = 0;
        QString description;
        QString source;
    };

    // Stores the name and loads the tag; a file that cannot be read leaves an empty object.
    void setFilename(const QString& filename);
    // Loads from a file already open.
    void load(const QString& filename, TagFile& file, bool opened);
    QString Filename() const { return m_filename; }

    bool HasID3v2Tag() const { return m_tagPosition >= 1; }
    uint8_t ID3v2TagVersion() const { return m_tagVersion; }
    uint8_t TagVersion() const { return m_tagVersion; }
    // 1-based position of the byte after "ID3"; 0 when none was found.
    qint32 TagPosition() const { return m_tagPosition; }

    int FrameCount() const { return int(m_frameNames.size()); }
    // The identifier at a 1-based position; empty outside.
    QString Frame(int index) const;
    // False (and lastError) when the frame is not there.
    bool RemoveFrame(const QString& frame);
    int TagsInFrame(const QString& frame) const { return m_frameCounts.value(frame, 0); }
    void AddTag(const QString& frame, const QString& value);
    bool RemoveTag(const QString& frame, int index);
    // The value "{frame}:{index}" as kept (prefix NULs included); empty when there is none.
    QString Tag(const QString& frame, int index) const;

    QString ArtistURL() const { return m_artistURL; }
    QString BuyURL() const { return m_buyURL; }
    QString AudioURL() const { return m_audioURL; }
    QString Copyright() const { return m_copyright; }
    QString Composer() const { return m_composer; }
    QString OriginalArtist() const { return m_originalArtist; }
    QString LinkTo() const { return m_linkTo; }
    QString PlayCounter() const { return m_playCounter; }
    QString EncodedBy() const { return m_encodedBy; }
    QString Title() const { return m_title; }
    QString Artist() const { return m_artist; }
    QString Album() const { return m_album; }
    QString Year() const { return m_year; }
    QString Comment() const { return m_comment; }
    // The "USLT" text. Not cleared by a load: a file without lyrics answers the ones before.
    QString Lyrics() const { return m_lyrics; }
    QString Track() const { return m_track; }

    void setArtistURL(const QString& v) { setProperty(m_artistURL, "WOAR", 0, v); }
    void setBuyURL(const QString& v) { setProperty(m_buyURL, "WCOM", 0, v); }
    void setAudioURL(const QString& v) { setProperty(m_audioURL, "WOAF", 0, v); }
    void setCopyright(const QString& v) { setProperty(m_copyright, "TCOP", 0, v); }
    void setComposer(const QString& v) { setProperty(m_composer, "TCOM", 0, v); }
    void setOriginalArtist(const QString& v) { setProperty(m_originalArtist, "TOPE", 0, v); }
    void setLinkTo(const QString& v) { setProperty(m_linkTo, "WXXX", 1, v); }
    void setPlayCounter(const QString& v) { setProperty(m_playCounter, "PCNT", 0, v); }
    void setEncodedBy(const QString& v) { setProperty(m_encodedBy, "TENC", 0, v); }
    void setTitle(const QString& v) { setProperty(m_title, "TIT2", 0, v); }
    void setArtist(const QString& v) { setProperty(m_artist, "TPE1", 0, v); }
    void setAlbum(const QString& v) { setProperty(m_album, "TALB", 0, v); }
    void setYear(const QString& v) { setProperty(m_year, "TYER", 0, v); }
    void setComment(const QString& v) { setProperty(m_comment, "COMM", 2, v); }
    void setLyrics(const QString& v) { setProperty(m_lyrics, "USLT", 1, v); }
    void setTrack(const QString& v) { setProperty(m_track, "TRCK", 0, v); }

    // The sixteen properties by name ("Title", "ArtistURL", ...), in the members' order.
    static const QStringList& propertyNames();
    QString property(const QString& name) const;
    bool setPropertyByName(const QString& name, const QString& value);

    // Writes the tag: over the old one when it fits, otherwise into a new copy of the file beside
    // it that then replaces it, so the file is never missing. False and lastError on failure.
    bool Save();
    const Error& lastError() const { return m_error; }

    // The tag bytes Save would write, size field holding their own length.
    QByteArray tagBytes() const;

private:
    struct Value {
        QString text;
        // The bytes on disk when the text does not hold them all (a picture, UTF-16, a
        // language code): written back unchanged as long as nobody replaces the value.
        QByteArray raw;
        bool keepRaw = false;
    };

    struct Prop {
        const char* name;
        const char* frame;
        int nuls; // NULs put in front of the text on write
        QString clsID3v2::*field;
    };
    static const std::array<Prop, 16>& props();

    void setProperty(QString& field, const char* frame, int nuls, const QString& value);
    qint64 FindTag(TagFile& file) const;
    void ReadFrames(TagFile& file);
    void StoreFrame(const QString& frame, const QByteArray& data);
    void addValue(const QString& frame, Value value);
    static QString MapFrameV2(const QByteArray& id);
    static QString RemoveNulls(const QByteArray& data);
    void fail(int number, const QString& description);

    QString m_filename;
    qint32 m_tagPosition = 0;
    uint8_t m_tagVersion = 0;
    QString m_title, m_artist, m_album, m_year, m_comment, m_track, m_playCounter, m_encodedBy,
        m_linkTo, m_originalArtist, m_composer, m_copyright, m_audioURL, m_buyURL, m_artistURL,
        m_lyrics;
    QStringList m_frameNames;
    QHash<QString, int> m_frameCounts;
    QHash<QString, Value> m_frameTags;
    Error m_error;
};
