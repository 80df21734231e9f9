#pragma once
#include <QWidget>

class FrmEditMoods;
class QLineEdit;

// Asks for the name of a new mood and hands it, in proper case, to the mood editor.
class FrmAddMood : public QWidget {
    Q_OBJECT
public:
    static FrmAddMood* open(FrmEditMoods* editor);
    QLineEdit* txtName() const { return m_name; }
    void cmdAdd_Click();

private:
    explicit FrmAddMood(FrmEditMoods* editor);
    FrmEditMoods* m_editor;
    QLineEdit* m_name;
};
