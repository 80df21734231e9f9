#include "core/TextLines.h"

#include <QStringDecoder>

namespace TextLines {
namespace {

inline bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}
inline bool isLineEnd(char16_t c) {
    return c == u'\r' || c == u'\n';
}

QByteArrayView withoutBom(QByteArrayView bytes) {
    return bytes.startsWith("\xEF\xBB\xBF") ? bytes.sliced(3) : bytes;
}

} // namespace

QString decode(QByteArrayView bytes) {
    const QByteArrayView view = withoutBom(bytes);
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(view);
    if (utf8.hasError()) text = QString::fromLatin1(view);
    return text;
}

bool isUtf8(QByteArrayView bytes) {
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    // The decoding runs only when its result is taken.
    const QString text = utf8.decode(withoutBom(bytes));
    return !utf8.hasError();
}

QByteArray encodeLike(QByteArrayView existing, const QString& text) {
    if (isUtf8(existing)) return text.toUtf8();
    for (const QChar c : text)
        if (c.unicode() > 0xFF) return {};
    return text.toLatin1();
}

QStringList lines(const QString& text) {
    QStringList out;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (!isLineEnd(c)) continue;
        out.append(text.mid(start, i - start));
        if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n')) ++i;
        start = i + 1;
    }
    if (start < text.size()) out.append(text.mid(start));
    return out;
}

ValueReader::ValueReader(const QString& text)
    : m_begin(reinterpret_cast<const char16_t*>(text.constData())), m_p(m_begin),
      m_end(m_begin + text.size()) {}

bool ValueReader::atEnd() const {
    for (const char16_t* q = m_p; q < m_end; ++q)
        if (!isBlank(*q) && !isLineEnd(*q)) return false;
    return true;
}

const char16_t* ValueReader::skipLineEnd(const char16_t* q) const {
    if (*q == u'\r' && q + 1 < m_end && q[1] == u'\n') return q + 2;
    return q + 1;
}

bool ValueReader::next(QString& value) {
    auto make = [](const char16_t* a, const char16_t* b) {
        return QString(reinterpret_cast<const QChar*>(a), qsizetype(b - a));
    };
    while (m_p < m_end && isBlank(*m_p))
        ++m_p;
    if (m_p >= m_end) return false;
    if (*m_p == u'"') {
        const char16_t* start = ++m_p;
        while (m_p < m_end && *m_p != u'"')
            ++m_p;
        if (m_p >= m_end) return false; // cut off inside a value
        value = make(start, m_p);
        ++m_p;
        const char16_t* q = m_p;
        while (q < m_end && isBlank(*q))
            ++q;
        if (q >= m_end)
            m_p = q;
        else if (*q == u',')
            m_p = q + 1;
        else if (isLineEnd(*q))
            m_p = skipLineEnd(q);
        return true;
    }
    const char16_t* start = m_p;
    while (m_p < m_end && *m_p != u',' && !isLineEnd(*m_p))
        ++m_p;
    const char16_t* stop = m_p;
    while (stop > start && isBlank(stop[-1]))
        --stop;
    value = make(start, stop);
    if (m_p < m_end) m_p = *m_p == u',' ? m_p + 1 : skipLineEnd(m_p);
    return true;
}

int ValueReader::lineAt(qsizetype position) const {
    int line = 1;
    const char16_t* at = m_begin + std::min<qsizetype>(position, qsizetype(m_end - m_begin));
    for (const char16_t* q = m_begin; q < at; ++q)
        if (*q == u'\n' || (*q == u'\r' && (q + 1 >= m_end || q[1] != u'\n'))) ++line;
    return line;
}

} // namespace TextLines
