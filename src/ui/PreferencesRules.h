#pragma once
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class MainContext;

// What the preferences window edits, read from and written to settings.ini without any
// window, so that nonsense in the file never reaches the dialog nor goes back to the file.
namespace PreferencesRules {

// One check box of chkSetting: its index and its key of section Settings.
struct Check {
    int index;
    const char* key;
};
const QList<Check>& checks();

// An option group: the keys of which exactly one holds "1".
struct OptionGroup {
    const char* name; // opDirection, opPlayback...
    const char* section;
    QStringList keys;
};
const QList<OptionGroup>& optionGroups();

// A numeric box tested at Apply, in the order of testing.
struct NumberBox {
    const char* control;
    const char* key; // of section Settings
    int minimum;
    int maximum;
    QString message;
};
const QList<NumberBox>& numberBoxes();
inline const char* errorCaption() {
    return "Error Saving The Preferences";
}

// Everything the dialog shows.
struct Values {
    QMap<int, bool> checks;         // chkSetting index
    QMap<QString, int> options;     // group name -> position of the chosen key
    QMap<QString, QString> numbers; // control -> text as typed
    QMap<QString, bool> fileTypes;  // extension -> associated
    QMap<QString, QString> globalKeys;
    QMap<QString, QString> appearance;
};

// The stored values; a key holding nonsense gives its default.
Values load();
// Text that isn't empty, is a number and as a 16-bit integer lies within the bounds.
bool numberPasses(const QString& text, int minimum, int maximum);
// The first box that fails, or -1.
int firstFailure(const Values& values);
// Tests the boxes (warning on the first failure, then false with nothing written), writes
// every key and re-installs what depends on them.
bool apply(const Values& values, MainContext& ctx);

} // namespace PreferencesRules
