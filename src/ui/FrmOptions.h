#pragma once
#include <QDialog>

class MainContext;
class QButtonGroup;
class QCheckBox;
class QComboBox;

// The small window offered when the program starts with the session: what to play first.
class FrmOptions : public QDialog {
    Q_OBJECT
public:
    FrmOptions(MainContext& ctx, QWidget* parent = nullptr);

    // The named playlists after the entry that names none.
    static QStringList playlistEntries();
    void cmdNext_Click();

private:
    MainContext& m_ctx;
    QButtonGroup* m_options;
    QComboBox* m_playlist;
    QCheckBox* m_always;
};

// "mnuOptionsWindow": shown modally by the autostart switch.
void FrmOptions_install(MainContext& ctx, QWidget* owner);
