#pragma once
#include <QString>
#include <QVariant>

class IniFile;

// Full path of settings.ini, set once at start-up.
extern QString SettingsFile;

// Read afresh at every use: a value changed by hand or by another process is seen at once.
QString settings_Read(const QString& section, const QString& key, const QString& def = {});
void settings_Write(const QString& section, const QString& key, const QVariant& value);

// The usual Boolean test of a setting: the value compared numerically with 1, so " 1" and "1.0"
// hold, while "", "0" and text that is not a number do not.
bool settings_IsOn(const QString& section, const QString& key, const QString& def);
// A setting used as a number; the empty value and nonsense count as 0 (ok = false for nonsense).
double settings_Number(const QString& section, const QString& key, const QString& def,
                       bool* ok = nullptr);

// A setting used as a whole number that must lie in [lo, hi]: the empty value counts as 0 as
// elsewhere; nonsense, and a number outside the range (which no conversion to int may see),
// give `fallback`. Fractions round half to even, as the language's conversion does.
int settings_Int(const QString& section, const QString& key, const QString& def, int lo, int hi,
                 int fallback);
int settings_TextToInt(const QString& value, int lo, int hi, int fallback);

// The numeric reading of a setting's text.
bool settings_TextIsOne(const QString& value);
double settings_TextToNumber(const QString& value, bool* ok = nullptr);

// The file behind SettingsFile (re-pointed when SettingsFile changes).
IniFile& settings_File();
