#pragma once
#include <QString>
#include <QTemporaryDir>

// A fresh data folder for one test: App.Path and settings.ini point into it.
class TempHome {
public:
    TempHome();
    ~TempHome();
    QString path() const { return m_dir.path(); }
    QString file(const QString& relative) const { return m_dir.path() + '/' + relative; }
    QString settingsFile() const { return file(QStringLiteral("settings.ini")); }

    static void writeFile(const QString& path, const QByteArray& bytes);
    static QByteArray readFile(const QString& path);

private:
    QTemporaryDir m_dir;
};
