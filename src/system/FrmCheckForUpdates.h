#pragma once
#include <QDialog>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;
class UpdateDownload;
class MainContext;

// The update wizard: fetches veldor.upd, compares builds and fetches the archive, which the
// desktop then opens. Nothing is installed here, and nothing reaches the network before Next.
class FrmCheckForUpdates : public QDialog {
    Q_OBJECT
public:
    explicit FrmCheckForUpdates(QWidget* parent = nullptr);

    void cmdNext_Click();
    void cmdClose_Click();
    UpdateDownload& download() { return *m_download; }
    // Opens the downloaded archive; tests put a recorder here.
    std::function<void(const QString&)> openFile;

    QLabel *lblCurrentVersion, *lblCurrentBuild, *lblCurrentDiscription;
    QLabel *lblNewVersion, *lblNewBuild, *lblNewDiscription, *lblStatus;
    QPushButton *cmdBack, *cmdNext, *cmdClose;
    QProgressBar* prgDownload;

Q_SIGNALS:
    void stateChanged();

private:
    void versionFileDone(const QString& error);
    void archiveDone(const QString& error);
    void finish(const QString& status);

    UpdateDownload* m_download;
};

// Registers mnuCheckForUpdates.
void CheckForUpdates_install(MainContext& ctx);
