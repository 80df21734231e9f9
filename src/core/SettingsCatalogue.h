#pragma once
#include <QString>

// The defaults of every key the program keeps in settings.ini, in one place, so that each
// reader takes the same default. Keys without a fixed default (recent lists, window places)
// give "".
QString settings_Default(const QString& section, const QString& key);
// settings_Read with the catalogue's default.
QString settings_Get(const QString& section, const QString& key);
// The Boolean test of a catalogue key.
bool settings_IsOn(const QString& section, const QString& key);
// Every (section, key) of the catalogue, for tests and the preferences window.
QList<std::pair<QString, QString>> settings_CatalogueKeys();
