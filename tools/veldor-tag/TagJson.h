#pragma once
#include <QJsonObject>
#include <QString>
#include <QStringList>

// What veldor-tag prints of one file: the ID3v1 fields, the ID3v2 frames and properties, and the
// MPEG fields, read through the same classes as the player.
QJsonObject tagJson(const QString& filename);

// Applies FIELD=VALUE pairs and writes the tag. Empty on success, else the message to print.
QString writeID3v1(const QString& filename, const QStringList& assignments);
QString writeID3v2(const QString& filename, const QStringList& assignments);
