#include "core/IniFile.h"

#include "core/modFiles.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace {

QByteArray trimmedLine(const QByteArray& line) {
    return line.trimmed();
}

// "[name]" -> name; anything else -> null.
QString sectionName(const QByteArray& trimmed) {
    if (!trimmed.startsWith('[')) return {};
    int end = trimmed.indexOf(']');
    if (end < 0) end = trimmed.size();
    QString name = QString::fromUtf8(trimmed.mid(1, end - 1)).trimmed();
    return name.isNull() ? QStringLiteral("") : name;
}

bool splitKey(const QByteArray& trimmed, QString& key, QString* value) {
    if (trimmed.isEmpty() || trimmed.startsWith(';') || trimmed.startsWith('[')) return false;
    const int eq = trimmed.indexOf('=');
    if (eq < 0) return false;
    key = QString::fromUtf8(trimmed.left(eq)).trimmed();
    if (value) *value = QString::fromUtf8(trimmed.mid(eq + 1)).trimmed();
    return true;
}

QString cleanValue(QString v) {
    v = v.trimmed();
    // The profile reader drops one pair of matching quotes around a value.
    if (v.size() >= 2 && (v.front() == u'"' || v.front() == u'\'') && v.back() == v.front())
        v = v.mid(1, v.size() - 2);
    if (v.size() > IniFile::MaxValueLength) v.truncate(IniFile::MaxValueLength);
    return v.trimmed();
}

qint64 nowNs() {
    return QDateTime::currentMSecsSinceEpoch() * 1000000;
}

} // namespace

IniFile::IniFile(QString path) : m_path(std::move(path)) {}

void IniFile::setPath(const QString& path) {
    m_path = path;
    m_valid = false;
}

IniFile::Stamp IniFile::stampOf(const QString& path) {
    Stamp s;
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0) return s;
    s.exists = true;
    s.size = st.st_size;
    s.mtimeNs = qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
    s.ctimeNs = qint64(st.st_ctim.tv_sec) * 1000000000 + st.st_ctim.tv_nsec;
    s.inode = st.st_ino;
    return s;
}

void IniFile::refresh() const {
    const Stamp now = stampOf(m_path);
    // A file changed within the clock's coarse tick of our last read may change again unseen
    // with the same stamp, so such a copy is never trusted.
    const bool racy = now.mtimeNs + 20000000 >= m_readAtNs || now.ctimeNs + 20000000 >= m_readAtNs;
    if (m_valid && now == m_stamp && !racy) return;
    m_readAtNs = nowNs();
    QByteArray data;
    if (now.exists) {
        QFile f(m_path);
        if (f.open(QIODevice::ReadOnly)) data = f.readAll();
    }
    parse(data);
    m_stamp = now;
    m_valid = true;
}

void IniFile::parse(const QByteArray& data) const {
    m_values.clear();
    m_keyOrder.clear();
    QHash<QString, QString>* current = nullptr;
    QStringList* order = nullptr;
    QSet<QString> seenSections;
    qsizetype pos = 0;
    while (pos < data.size()) {
        qsizetype nl = data.indexOf('\n', pos);
        if (nl < 0) nl = data.size();
        const QByteArray line = trimmedLine(data.mid(pos, nl - pos));
        pos = nl + 1;
        const QString section = sectionName(line);
        if (!section.isNull()) {
            const QString lower = section.toLower();
            if (seenSections.contains(lower)) {
                current = nullptr; // the first of duplicate sections wins
                order = nullptr;
            } else {
                seenSections.insert(lower);
                current = &m_values[lower];
                order = &m_keyOrder[lower];
            }
            continue;
        }
        if (!current) continue;
        QString key, value;
        if (!splitKey(line, key, &value)) continue;
        const QString lowerKey = key.toLower();
        if (current->contains(lowerKey)) continue;
        current->insert(lowerKey, cleanValue(value));
        order->append(key);
    }
}

QString IniFile::read(const QString& section, const QString& key, const QString& def) const {
    refresh();
    const auto s = m_values.constFind(section.toLower());
    if (s != m_values.constEnd()) {
        const auto k = s->constFind(key.toLower());
        if (k != s->constEnd()) return *k;
    }
    return cleanValue(def);
}

bool IniFile::contains(const QString& section, const QString& key) const {
    refresh();
    const auto s = m_values.constFind(section.toLower());
    return s != m_values.constEnd() && s->contains(key.toLower());
}

QStringList IniFile::keys(const QString& section) const {
    refresh();
    return m_keyOrder.value(section.toLower());
}

QByteArray IniFile::applyWrite(const QByteArray& data, const QString& section, const QString& key,
                               const QString& value) {
    QString clean = value;
    clean.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray entry = key.toUtf8() + '=' + clean.toUtf8();
    const QString wantSection = section.toLower();
    const QString wantKey = key.toLower();

    // Line boundaries, keeping each line's own bytes (and its own line ending).
    QList<QByteArray> lines;
    qsizetype pos = 0;
    while (pos < data.size()) {
        qsizetype nl = data.indexOf('\n', pos);
        const qsizetype end = nl < 0 ? data.size() : nl + 1;
        lines.append(data.mid(pos, end - pos));
        pos = end;
    }
    const QByteArray eol = "\r\n";
    auto lineWith = [&](const QByteArray& original, const QByteArray& text) {
        return text + (original.endsWith('\n') ? (original.endsWith("\r\n") ? eol : "\n") : eol);
    };

    int sectionAt = -1, lastContent = -1;
    for (int i = 0; i < lines.size(); ++i) {
        const QByteArray t = lines[i].trimmed();
        const QString name = sectionName(t);
        if (!name.isNull()) {
            if (sectionAt >= 0) break; // end of our section
            if (name.toLower() == wantSection) {
                sectionAt = i;
                lastContent = i;
            }
            continue;
        }
        if (sectionAt < 0) continue;
        if (!t.isEmpty()) lastContent = i;
        QString k;
        if (splitKey(t, k, nullptr) && k.toLower() == wantKey) {
            lines[i] = lineWith(lines[i], entry);
            return lines.join();
        }
    }

    if (sectionAt < 0) {
        QByteArray out = data;
        if (!out.isEmpty() && !out.endsWith('\n')) out += eol;
        if (!out.isEmpty() && !out.endsWith("\n\r\n") && !out.endsWith("\n\n") && out != eol)
            out += eol;
        out += '[' + section.toUtf8() + ']' + eol + entry + eol;
        return out;
    }
    if (!lines[lastContent].endsWith('\n')) lines[lastContent] += eol;
    lines.insert(lastContent + 1, entry + eol);
    return lines.join();
}

void IniFile::write(const QString& section, const QString& key, const QString& value) {
    const QFileInfo info(m_path);
    // A read-only settings file loses the write without a word, also for root, who could
    // replace it anyway.
    if (info.exists() && (!info.isWritable() || !(info.permissions() & QFileDevice::WriteOwner)))
        return;
    QByteArray data;
    if (info.exists()) {
        QFile f(m_path);
        if (!f.open(QIODevice::ReadOnly)) return;
        data = f.readAll();
    }
    const QByteArray out = applyWrite(data, section, key, value);
    // Start-up restores each mode through its menu, which writes back the value just read:
    // a write that changes no byte is not worth a synced replace of the file.
    if (info.exists() && out == data) return;
    // A full disk keeps the old file whole; the user hears of it once.
    if (!modFiles::file_WriteAtomic(m_path, out)) return;
    m_valid = false;
}
