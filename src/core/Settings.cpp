#include "core/Settings.h"

#include "core/IniFile.h"

#include <cmath>

QString SettingsFile;

IniFile& settings_File() {
    static IniFile file;
    if (file.path() != SettingsFile) file.setPath(SettingsFile);
    return file;
}

QString settings_Read(const QString& section, const QString& key, const QString& def) {
    if (SettingsFile.isEmpty()) return def.trimmed();
    return settings_File().read(section, key, def);
}

void settings_Write(const QString& section, const QString& key, const QVariant& value) {
    if (SettingsFile.isEmpty()) return;
    QString text;
    if (value.typeId() == QMetaType::Bool)
        text = value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    else
        text = value.toString();
    settings_File().write(section, key, text);
}

double settings_TextToNumber(const QString& value, bool* ok) {
    const QString t = value.trimmed();
    if (t.isEmpty()) {
        if (ok) *ok = true;
        return 0;
    }
    bool good = false;
    double d = t.toDouble(&good);
    if (!good && (t.startsWith(QLatin1String("&H"), Qt::CaseInsensitive))) {
        const qlonglong h = t.mid(2).toLongLong(&good, 16);
        d = double(h);
    }
    if (ok) *ok = good;
    return good ? d : 0;
}

bool settings_TextIsOne(const QString& value) {
    bool ok = false;
    const double d = settings_TextToNumber(value, &ok);
    return ok && !value.trimmed().isEmpty() && d == 1.0;
}

bool settings_IsOn(const QString& section, const QString& key, const QString& def) {
    return settings_TextIsOne(settings_Read(section, key, def));
}

double settings_Number(const QString& section, const QString& key, const QString& def, bool* ok) {
    return settings_TextToNumber(settings_Read(section, key, def), ok);
}

int settings_TextToInt(const QString& value, int lo, int hi, int fallback) {
    bool ok = false;
    const double d = settings_TextToNumber(value, &ok);
    if (!ok || !std::isfinite(d)) return fallback;
    const double r = std::nearbyint(d);
    if (r < double(lo) || r > double(hi)) return fallback;
    return int(r);
}

int settings_Int(const QString& section, const QString& key, const QString& def, int lo, int hi,
                 int fallback) {
    return settings_TextToInt(settings_Read(section, key, def), lo, hi, fallback);
}
