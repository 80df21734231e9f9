#pragma once
#include "ui/PreferencesRules.h"

#include <QDialog>
#include <QMap>

class MainContext;
class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

// The settings of the program by section; the rules live in PreferencesRules.
class FrmPreferences : public QDialog {
    Q_OBJECT
public:
    FrmPreferences(MainContext& ctx, QWidget* parent = nullptr);

    void lblSection_Click(int index);
    // False when a box was refused: the dialog stays where it was.
    bool cmdApply_Click();
    void cmdOK_Click();
    PreferencesRules::Values values() const;
    int section() const { return m_section; }

    static QStringList sectionCaptions();

private:
    QWidget* buildPanel(int index);
    void changed();
    void show(const PreferencesRules::Values& v);

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
    QMap<QString, QLineEdit*> m_keys;
    PreferencesRules::Values m_shown;
};

void FrmPreferences_install(MainContext& ctx, QWidget* owner);
