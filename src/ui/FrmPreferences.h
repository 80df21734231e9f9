#pragma once
#include "ui/PreferencesRules.h"

#include <QDialog>
#include <QMap>

class GlobalKeysPage;
class MainContext;
class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

// The settings of the program by section; the rules live in PreferencesRules.
class FrmPreferences : public QDialog {
    Q_OBJECT
public:
    FrmPreferences(MainContext& ctx, QWidget* parent = nullptr);

    void lblSection_Click(int index);
    // False when a box was refused: the dialog stays where it was.
    bool cmdApply_Click();
    void cmdOK_Click();
    // Empty the two recent lists at once, menus included.
    void cmdResetRecentFiles_Click();
    void cmdResetRecentPlaylists_Click();
    // The picture behind the playlist, chosen or taken away; it is written at Apply.
    void cmdSelectImage_Click();
    void cmdRemoveImage_Click();
    // Registers the types checked in lstTypes now; unchecked ones keep what they had.
    void cmdRegisterNow_Click();
    PreferencesRules::Values values() const;
    int section() const { return m_section; }
    GlobalKeysPage* keysPage() const { return m_keysPage; }

    static QStringList sectionCaptions();

private:
    QWidget* buildPanel(int index);
    void addChecks(QVBoxLayout* layout, int panel);
    void addOptionGroups(QVBoxLayout* layout, int panel);
    void addNumbers(QVBoxLayout* layout, int panel);
    void buildFilesPanel(QVBoxLayout* layout);
    void buildTypesPanel(QVBoxLayout* layout);
    void buildAppearancePanel(QVBoxLayout* layout);
    void pickColour(const QString& key);
    void showAppearance();
    void changed();
    void showValues(const PreferencesRules::Values& v);

    MainContext& m_ctx;
    int m_section = 0;
    QLabel* m_title;
    QStackedWidget* m_panels;
    QPushButton* m_apply;
    QPushButton* m_ok;
    QMap<int, QCheckBox*> m_checks;
    QMap<QString, QButtonGroup*> m_options;
    QMap<QString, QLineEdit*> m_numbers;
    QListWidget* m_types = nullptr;
    GlobalKeysPage* m_keysPage = nullptr;
    QMap<QString, QPushButton*> m_colours;
    QLabel* m_font = nullptr;
    QLabel* m_image = nullptr;
    PreferencesRules::Values m_shown;
};

// mnuPreferences, and mnuWindowsEditWindowsGLobalHotkeys at the Global Hot Keys section.
void FrmPreferences_install(MainContext& ctx, QWidget* owner);
