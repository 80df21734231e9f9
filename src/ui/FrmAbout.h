#pragma once
#include <QDialog>

class QLabel;

// The program's name and version. One window, shown again on a second request.
class FrmAbout : public QDialog {
    Q_OBJECT
public:
    explicit FrmAbout(QWidget* parent = nullptr);

    QLabel* lblTitle() const { return m_title; }
    QLabel* lblVersion() const { return m_version; }

    // Opens the window over `owner` without blocking the caller; the same window each time.
    static FrmAbout* showOver(QWidget* owner);

private:
    QLabel* m_title;
    QLabel* m_version;
};

// "About The System": what the system is, in a message box.
QString about_SystemText();
void mnuAboutWindows_Click();
