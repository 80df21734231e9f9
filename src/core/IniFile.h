#pragma once
#include <QByteArray>
#include <QHash>
#include <QString>

// An INI file with the rules of the classic profile functions: sections and keys compared
// without case, ";" comment lines, values trimmed and cut at 499 characters, the first of
// duplicate sections or keys wins. Reads come from a parsed copy that is dropped whenever the
// file on disk changed; writes replace the file atomically and keep every other line byte for byte.
class IniFile {
public:
    static constexpr int MaxValueLength = 499;

    explicit IniFile(QString path = {});
    void setPath(const QString& path);
    const QString& path() const { return m_path; }

    // The trimmed value, or the trimmed default when the section or key is absent.
    QString read(const QString& section, const QString& key, const QString& def) const;
    bool contains(const QString& section, const QString& key) const;
    // Silently does nothing when the file or its folder cannot be written.
    void write(const QString& section, const QString& key, const QString& value);
    // All keys of a section in file order (first spelling of each).
    QStringList keys(const QString& section) const;

    // Pure text work, exposed for tests.
    static QByteArray applyWrite(const QByteArray& data, const QString& section, const QString& key,
                                 const QString& value);

private:
    struct Stamp {
        bool exists = false;
        qint64 size = 0, mtimeNs = 0, ctimeNs = 0;
        quint64 inode = 0;
        bool operator==(const Stamp&) const = default;
    };
    static Stamp stampOf(const QString& path);
    void refresh() const;
    void parse(const QByteArray& data) const;

    QString m_path;
    mutable Stamp m_stamp;
    mutable qint64 m_readAtNs = 0;
    mutable bool m_valid = false;
    mutable QHash<QString, QHash<QString, QString>> m_values; // lower-cased section -> key -> value
    mutable QHash<QString, QStringList> m_keyOrder;
};
