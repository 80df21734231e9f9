#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

class TagFile;

// The 128-byte tag at the end of an "mp3", "mp2" or "mp1" file, read side. Setting Filename
// loads it; the six texts come back trimmed of blanks (NULs stay).
class clsID3v1 {
public:
    void setFilename(const QString& filename);
    // Loads from a file already open; `filename` decides whether it is a media file at all.
    void load(const QString& filename, TagFile& file, bool opened);
    QString Filename() const { return m_filename; }
    QString Title() const { return trimmedBlanks(m_title); }
    QString Artist() const { return trimmedBlanks(m_artist); }
    // The genre's name, not its byte; kept from the file before when this one has no tag.
    QString Genre() const { return trimmedBlanks(m_genre); }
    QString Album() const { return trimmedBlanks(m_album); }
    QString Year() const { return trimmedBlanks(m_year); }
    QString Comment() const { return trimmedBlanks(m_comment); }

    static bool IsMP3File(const QString& filename);
    // The 148 names, 0 to 147; a combo position is the genre byte.
    static const QStringList& genres();

private:
    // Blanks only: a NUL or a tab stays.
    static QString trimmedBlanks(const QString& s);
    QString m_filename, m_title, m_artist, m_album, m_year, m_comment, m_genre;
};

// The record the editors hand over: fixed widths, left-aligned, blank-padded or cut.
struct ID3v1Record {
    QString Title, Artist, Album, Year, Comment;
    uint8_t Genre = 0;
    // The 125 bytes written after "TAG", one byte a character.
    QByteArray bytes() const;
};

// Writes the record over the file's last 125 bytes, marking them "TAG" first when they are not:
// the file's length never changes. Silent on failure; false tells it to callers that care.
bool media_WriteID3v1Record(const QString& filename, const ID3v1Record& record);
