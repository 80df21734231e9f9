#include "tags/clsID3v2.h"

#include "tags/TagFile.h"
#include "tags/TagShift.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cerrno>
#include <cstring>

namespace {

constexpr int kBlock = 4096;

qint32 readBE32(const uint8_t* b) {
    return qint32((uint32_t(b[0]) << 24) | (uint32_t(b[1]) << 16) | (uint32_t(b[2]) << 8) |
                  uint32_t(b[3]));
}

void putBE32(QByteArray& buf, int at, qint64 v) {
    const auto u = uint32_t(v);
    buf[at] = char(u >> 24);
    buf[at + 1] = char(u >> 16);
    buf[at + 2] = char(u >> 8);
    buf[at + 3] = char(u);
}

// Reads `count` bytes; what lies past the end of the file reads as zeros.
void readZeroFilled(TagFile& file, qint64 offset, uint8_t* dst, int count) {
    std::memset(dst, 0, size_t(count));
    file.readAt(offset, dst, count);
}

QString key(const QString& frame, int n) {
    QString k;
    k.reserve(frame.size() + 6);
    k += frame;
    k += QLatin1Char(':');
    if (n >= 1 && n <= 9)
        k += QLatin1Char(char('0' + n));
    else
        k += QString::number(n);
    return k;
}

QString errorSource() {
    const QString exe =
        QCoreApplication::instance() ? QCoreApplication::applicationName() : QString();
    return (exe.isEmpty() ? QStringLiteral("veldor") : exe) + QStringLiteral(".cMP3ID3v2");
}

// How many bytes from `start` really belong to the tag whose plain size is `plainSize`. A tag
// from another program carries a synchsafe size, which read plainly is larger than the tag:
// when MPEG audio begins where the synchsafe size ends, that is the tag's true end, and no write
// may reach past it.
qint64 realTagExtent(TagFile& file, qint64 start, const uint8_t size[4], qint64 plainSize) {
    if ((size[0] | size[1] | size[2] | size[3]) & 0x80) return plainSize;
    qint64 end = 10 + ((qint64(size[0]) << 21) | (qint64(size[1]) << 14) | (qint64(size[2]) << 7) |
                       qint64(size[3]));
    uint8_t at[3] = {0, 0, 0};
    if (end >= plainSize || file.readAt(start + end, at, 3) != 3) return plainSize;
    if (at[0] == '3' && at[1] == 'D' && at[2] == 'I') { // a footer closes the tag
        end += 10;
        if (end >= plainSize || file.readAt(start + end, at, 2) != 2) return plainSize;
    }
    return (at[0] == 0xFF && (at[1] & 0xE0) == 0xE0) ? end : plainSize;
}

} // namespace

const std::array<clsID3v2::Prop, 16>& clsID3v2::props() {
    static const std::array<Prop, 16> table{{
        {"ArtistURL", "WOAR", 0, &clsID3v2::m_artistURL},
        {"BuyURL", "WCOM", 0, &clsID3v2::m_buyURL},
        {"AudioURL", "WOAF", 0, &clsID3v2::m_audioURL},
        {"Copyright", "TCOP", 0, &clsID3v2::m_copyright},
        {"Composer", "TCOM", 0, &clsID3v2::m_composer},
        {"OriginalArtist", "TOPE", 0, &clsID3v2::m_originalArtist},
        {"LinkTo", "WXXX", 1, &clsID3v2::m_linkTo},
        {"PlayCounter", "PCNT", 0, &clsID3v2::m_playCounter},
        {"EncodedBy", "TENC", 0, &clsID3v2::m_encodedBy},
        {"Title", "TIT2", 0, &clsID3v2::m_title},
        {"Artist", "TPE1", 0, &clsID3v2::m_artist},
        {"Album", "TALB", 0, &clsID3v2::m_album},
        {"Year", "TYER", 0, &clsID3v2::m_year},
        {"Comment", "COMM", 2, &clsID3v2::m_comment},
        {"Lyrics", "USLT", 1, &clsID3v2::m_lyrics},
        {"Track", "TRCK", 0, &clsID3v2::m_track},
    }};
    return table;
}

const QStringList& clsID3v2::propertyNames() {
    static const QStringList names = [] {
        QStringList l;
        for (const Prop& p : props())
            l << QLatin1String(p.name);
        return l;
    }();
    return names;
}

QString clsID3v2::property(const QString& name) const {
    for (const Prop& p : props())
        if (name == QLatin1String(p.name)) return this->*(p.field);
    return QString();
}

bool clsID3v2::setPropertyByName(const QString& name, const QString& value) {
    for (const Prop& p : props()) {
        if (name != QLatin1String(p.name)) continue;
        setProperty(this->*(p.field), p.frame, p.nuls, value);
        return true;
    }
    return false;
}

void clsID3v2::fail(int number, const QString& description) {
    m_error = {number, description, errorSource()};
}

void clsID3v2::setFilename(const QString& filename) {
    TagFile file;
    const bool opened = file.open(filename);
    load(filename, file, opened);
}

void clsID3v2::load(const QString& filename, TagFile& file, bool opened) {
    m_filename = filename;
    m_frameTags.clear();
    m_frameNames.clear();
    m_frameCounts.clear();
    m_tagPosition = 0;
    m_tagVersion = 0;
    // Fifteen fields; the lyrics stay as they were.
    for (const Prop& p : props())
        if (p.field != &clsID3v2::m_lyrics) (this->*(p.field)).clear();
    if (!opened) return;
    const qint64 pos = FindTag(file);
    if (pos > 0 && pos <= 2147483647) {
        m_tagPosition = qint32(pos);
        ReadFrames(file);
    }
}

qint64 clsID3v2::FindTag(TagFile& file) const {
    const qint64 length = file.size();
    uint8_t buf[kBlock];
    for (qint64 p = 1;; p += kBlock - 3) {
        qint64 block = kBlock;
        const bool last = p + kBlock >= length;
        if (last) block = length - p; // the file's last byte is never looked at
        if (block > 0) {
            const qint64 n = file.readAt(p - 1, buf, block);
            if (n > 0) {
                const auto* hit = static_cast<const uint8_t*>(memmem(buf, size_t(n), "ID3", 3));
                if (hit) return p + (hit - buf) + 3;
                if (memmem(buf, size_t(n), "\xFF\xFB", 2)) return 0;
            }
        }
        if (last) return 0;
    }
}

void clsID3v2::ReadFrames(TagFile& file) {
    qint64 pos = qint64(m_tagPosition) - 1;
    uint8_t head[7];
    readZeroFilled(file, pos, head, 7);
    m_tagVersion = head[0];
    if (m_tagVersion < 2 || m_tagVersion > 4) return;
    const qint64 tagSize = readBE32(head + 3);
    pos += 7;

    const bool v2 = m_tagVersion == 2;
    const int headerBytes = v2 ? 6 : 10;
    const int counted = v2 ? 9 : 16; // what a header costs against the tag size
    qint64 consumed = 0;
    QByteArray data;
    for (;;) {
        uint8_t h[10];
        readZeroFilled(file, pos, h, headerBytes);
        pos += headerBytes;
        consumed += counted;
        const int idLength = v2 ? 3 : 4;
        if (std::all_of(h, h + idLength, [](uint8_t c) { return c == 0; })) break;
        const qint64 size = v2 ? qint64((uint32_t(h[3]) << 16) | (uint32_t(h[4]) << 8) | h[5])
                               : qint64(readBE32(h + 4));
        if (consumed + size > tagSize) break;
        const QByteArray id(reinterpret_cast<const char*>(h), idLength);
        const QString frame = v2 ? MapFrameV2(id) : QString::fromLatin1(id);
        // A size with its top bit set cannot be read: the frames so far stay, nothing more.
        if (size < 0) break;
        const qint64 available = std::max<qint64>(0, std::min(size, file.size() - pos));
        data.resize(available);
        if (available > 0) {
            const qint64 n = file.readAt(pos, data.data(), available);
            data.truncate(std::max<qint64>(0, n));
        }
        pos += size;
        consumed += size;
        StoreFrame(frame, data);
        if (pos + 1 > tagSize) break;
    }
}

QString clsID3v2::MapFrameV2(const QByteArray& id) {
    static const QHash<QByteArray, QString> map{
        {"TP1", QStringLiteral("TPE1")}, {"TT2", QStringLiteral("TIT2")},
        {"TAL", QStringLiteral("TALB")}, {"COM", QStringLiteral("COMM")},
        {"TRK", QStringLiteral("TRCK")}, {"TEN", QStringLiteral("TENC")},
        {"TYE", QStringLiteral("TYER")}};
    return map.value(id);
}

QString clsID3v2::RemoveNulls(const QByteArray& data) {
    QByteArray kept;
    kept.reserve(data.size());
    for (char c : data)
        if (c != 0) kept.append(c);
    return QString::fromLatin1(kept);
}

void clsID3v2::StoreFrame(const QString& frame, const QByteArray& data) {
    Value v;
    // The text holds the frame exactly when the data is one encoding NUL and then the text.
    const bool plain = !data.isEmpty() && data.at(0) == 0 &&
                       !memchr(data.constData() + 1, 0, size_t(data.size() - 1));
    v.text = plain ? QString::fromLatin1(data.constData() + 1, data.size() - 1) : RemoveNulls(data);
    if (!plain) {
        v.raw = data;
        v.keepRaw = true;
    }
    const QString text = v.text;
    addValue(frame, std::move(v));
    if (frame.size() != 4) return;
    for (const Prop& p : props()) {
        if (frame != QLatin1String(p.frame, 4)) continue;
        QString& field = this->*(p.field);
        if (p.field == &clsID3v2::m_comment && !field.isEmpty())
            field += QString(QChar(0)) + QStringLiteral("\r\n") + text;
        else
            field = text;
        break;
    }
}

void clsID3v2::addValue(const QString& frame, Value value) {
    int n = 1;
    if (!m_frameNames.contains(frame)) {
        m_frameNames.append(frame);
    } else {
        n = m_frameCounts.value(frame, 0) + 1;
    }
    m_frameCounts.insert(frame, n);
    m_frameTags.insert(key(frame, n), std::move(value));
}

void clsID3v2::AddTag(const QString& frame, const QString& value) {
    addValue(frame, Value{value, {}, false});
}

QString clsID3v2::Frame(int index) const {
    return index >= 1 && index <= m_frameNames.size() ? m_frameNames.at(index - 1) : QString();
}

QString clsID3v2::Tag(const QString& frame, int index) const {
    return m_frameTags.value(key(frame, index)).text;
}

bool clsID3v2::RemoveFrame(const QString& frame) {
    if (!m_frameNames.removeOne(frame)) {
        fail(5, QStringLiteral("Invalid procedure call or argument"));
        return false;
    }
    m_frameCounts.remove(frame);
    for (int n = 1; m_frameTags.remove(key(frame, n)); ++n) {
    }
    return true;
}

bool clsID3v2::RemoveTag(const QString& frame, int index) {
    if (!m_frameTags.contains(key(frame, index)) || !m_frameCounts.contains(frame)) {
        fail(5, QStringLiteral("Invalid procedure call or argument"));
        return false;
    }
    const int old = m_frameCounts.value(frame);
    m_frameTags.remove(key(frame, index));
    const int left = old - 1;
    if (left == 0) {
        m_frameCounts.remove(frame);
        return true;
    }
    m_frameCounts.insert(frame, left);
    // Only this frame's values are carried over, renumbered; the other frames' values go.
    QHash<QString, Value> renumbered;
    int n = 1;
    for (int k = 1; k <= old; ++k) {
        const auto it = m_frameTags.constFind(key(frame, k));
        if (it != m_frameTags.constEnd()) renumbered.insert(key(frame, n++), it.value());
    }
    m_frameTags = std::move(renumbered);
    return true;
}

void clsID3v2::setProperty(QString& field, const char* frame, int nuls, const QString& value) {
    field = value;
    const QString id = QLatin1String(frame);
    if (m_frameNames.contains(id)) RemoveFrame(id);
    AddTag(id, QString(nuls, QChar(0)) + value);
}

QByteArray clsID3v2::tagBytes() const {
    QByteArray buf("ID3\x03\x00\x00\x00\x00\x00\x00", 10);
    for (const QString& frame : m_frameNames) {
        // A frame without a proper four-letter name cannot be written without breaking the tag.
        const QByteArray id = frame.toLatin1();
        if (frame.contains(QLatin1String("ID3")) || id.size() != 4) continue;
        const int count = m_frameCounts.value(frame, 0);
        for (int n = 1; n <= count; ++n) {
            const Value v = m_frameTags.value(key(frame, n));
            const QByteArray data = v.keepRaw ? v.raw : QByteArray(1, '\0') + v.text.toLatin1();
            const int at = int(buf.size());
            buf += id;
            buf += QByteArray(6, '\0');
            putBE32(buf, at + 4, data.size());
            buf += data;
        }
    }
    buf += QByteArray(4, '\0');
    putBE32(buf, 6, buf.size());
    return buf;
}

bool clsID3v2::Save() {
    m_error = {};
    for (const QString& frame : m_frameNames) {
        if (frame.contains(QLatin1String("ID3")) || frame.toLatin1().size() != 4) continue;
        const int count = m_frameCounts.value(frame, -1);
        bool complete = count >= 0;
        for (int n = 1; complete && n <= count; ++n)
            complete = m_frameTags.contains(key(frame, n));
        if (!complete) {
            fail(5, QStringLiteral("Invalid procedure call or argument"));
            return false;
        }
    }
    QByteArray buf = tagBytes();
    const qint64 T = buf.size();
    const qint64 newSize = (T / 2048 + 1) * 2048;

    // What an interrupted write left in this folder is dealt with before anything is read.
    TagShift::recoverFolder(QFileInfo(m_filename).absolutePath());
    TagFile file;
    if (!file.open(m_filename, true)) {
        const int err = errno;
        fail(err, QString::fromLocal8Bit(std::strerror(err)));
        return false;
    }
    const qint64 pos = FindTag(file);
    qint64 shiftBy = newSize;
    // A marker met further into the file may be bytes of the audio: it is never written over,
    // and a new tag goes in at the head instead.
    if (pos == 4) {
        uint8_t sizeBytes[4];
        if (file.readAt(pos + 2, sizeBytes, 4) != 4) {
            fail(EIO, QStringLiteral("The tag's size could not be read"));
            return false;
        }
        const qint64 oldSize = readBE32(sizeBytes);
        if (oldSize < 0) {
            // Shifting by more than the size itself can say is refused rather than guessed.
            fail(EOVERFLOW, QStringLiteral("The tag's size is out of range"));
            return false;
        }
        // The guard for a foreign tag only decides whether the new one fits in place; the size
        // bytes on disk stay exactly as they were.
        const qint64 extent = realTagExtent(file, pos - 4, sizeBytes, oldSize);
        if (T < extent) {
            std::memcpy(buf.data() + 6, sizeBytes, 4);
            file.close();
            const TagShift::Result r = TagShift::writeInPlace(m_filename, pos - 4, buf);
            if (!r.ok) fail(r.error, r.description);
            return r.ok;
        }
        shiftBy = newSize - extent;
    }
    putBE32(buf, 6, newSize);
    file.close();
    const TagShift::Result r = TagShift::shiftFile(m_filename, shiftBy, buf);
    if (!r.ok) {
        fail(r.error, r.description);
        return false;
    }
    return true;
}
