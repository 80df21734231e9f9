#pragma once
#include <QByteArrayView>
#include <QString>
#include <QStringList>

// How the program's small text files read: one decoding and one notion of a line and of a
// value, shared by every reader so that what one reads the others find.
namespace TextLines {

// UTF-8 without a leading byte-order mark; a file that is not UTF-8 (an older installation's
// code page) reads as Latin-1, which keeps accents instead of replacement marks.
QString decode(QByteArrayView bytes);
// True when `bytes` would be read as UTF-8 (an empty file is).
bool isUtf8(QByteArrayView bytes);
// The bytes of `text` in the encoding a file of `existing` bytes reads in: UTF-8, or Latin-1
// for a Latin-1 file; null when a Latin-1 file cannot hold the text.
QByteArray encodeLike(QByteArrayView existing, const QString& text);

// Lines ended by CR LF, LF or a lone CR; a last line without an end still counts.
QStringList lines(const QString& text);

// The value reader of list files: blanks before a value are skipped; a quoted value runs to the
// next quote, any other value to the next comma or line end. The separator behind a value goes
// with it. Text behind a closing quote that is not a separator starts the next value.
class ValueReader {
public:
    explicit ValueReader(const QString& text);
    // Nothing but blanks and line ends is left.
    bool atEnd() const;
    // False when no value is left or a quoted value is never closed.
    bool next(QString& value);
    // Index in the text where the next value is looked for.
    qsizetype position() const { return qsizetype(m_p - m_begin); }
    // 1-based line of a position, counted as lines() counts them.
    int lineAt(qsizetype position) const;

private:
    const char16_t* skipLineEnd(const char16_t* q) const;
    const char16_t* m_begin;
    const char16_t* m_p;
    const char16_t* m_end;
};

} // namespace TextLines
