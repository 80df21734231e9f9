#pragma once
#include "playlists/JumpSearch.h"
#include "playlists/ToolDialog.h"

class ListModel;
class ListView;
class QCheckBox;
class QComboBox;
class QLabel;
class QRadioButton;

// "Jump To Media": finds rows by their tags and selects, plays or queues the one chosen. The
// fields are read when the window opens and again for each Find; typing searches what was read.
class FrmJump : public ToolDialog {
    Q_OBJECT
public:
    static FrmJump* open(MainContext& ctx);
    ~FrmJump() override;

    QComboBox* cmbSearch;
    QComboBox* cmbOp;
    QRadioButton* opOptions[7];
    QRadioButton* opSearchMode[4];
    QRadioButton* opFurther[4];
    QCheckBox* chkNotToInclude;
    QLineEdit* txtNotInclude;
    QCheckBox* chkSearchID3v2;
    QPushButton* cmdFind;
    QPushButton* cmdSelect;
    QLabel* lblSearchResults;
    ListModel* items;
    ListView* lstvItems;

    void cmdFind_Click();
    void cmdSelect_Click();
    // True while the fields of the list are being read.
    bool reading() const { return m_reading; }

private:
    explicit FrmJump(MainContext& ctx);
    void readFields();
    void readSlice();
    void setSearchEnabled(bool on);
    JumpSearch::Query query(bool typed) const;
    void showSearch(bool typed);
    void searchAsTyped();
    void chkNotToInclude_Click();

    JumpSearch::Index m_index;
    std::vector<int> m_shown; // the entries the results list shows
    bool m_reading = false;
    bool m_waiting = false; // the hourglass shows
    bool m_stale = true;
    bool m_findPending = false;
};
