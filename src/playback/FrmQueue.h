#pragma once
#include "playback/AdvancedQueue.h"

#include <QDialog>

class MainContext;
class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

// The Advanced queue dialog, modal; the rules are AdvancedQueue's. It stays open for another
// pass until closed.
class FrmQueue : public QDialog {
    Q_OBJECT
public:
    explicit FrmQueue(MainContext& ctx, QWidget* parent = nullptr);

    // Shows the dialog modally, with the context's modal guard set.
    static void showModal(MainContext& ctx, QWidget* parent = nullptr);

    AdvancedQueue& rules() { return m_rules; }
    QRadioButton* opOptions[4] = {nullptr, nullptr, nullptr, nullptr};
    QComboBox* cmbSearch = nullptr;
    QComboBox* cmbOption = nullptr;
    QCheckBox* chkSearchID3v2 = nullptr;
    QPushButton* cmdUpdate = nullptr;
    QPushButton* cmdBack = nullptr;
    QPushButton* cmdClose = nullptr;

    void opOptions_Click(int index);
    void cmdUpdate_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setControlsEnabled(bool on);

    AdvancedQueue m_rules;
};
