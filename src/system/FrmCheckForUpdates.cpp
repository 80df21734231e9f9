#include "system/FrmCheckForUpdates.h"
#include "core/App.h"
#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "system/UpdateCheck.h"
#include "system/UpdateDownload.h"
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>

namespace {

const QString kNext = QStringLiteral("&Next »");
const QString kDownload = QStringLiteral("&Download »");
const QString kFinish = QStringLiteral("&Finish");

QLabel* field(const char* name, const QString& accessible) {
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setAccessibleName(accessible);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QGroupBox* group(const QString& title, QLabel* version, QLabel* build, QLabel* description) {
    auto* box = new QGroupBox(title);
    auto* form = new QFormLayout(box);
    form->addRow(QStringLiteral("Version:"), version);
    form->addRow(QStringLiteral("Build:"), build);
    form->addRow(QStringLiteral("Build Discription:"), description);
    return box;
}

QString updatesFolder() {
    return App::file(QStringLiteral("Updates"));
}

} // namespace

FrmCheckForUpdates::FrmCheckForUpdates(QWidget* parent)
    : QDialog(parent), m_download(new UpdateDownload(this)) {
    setObjectName(QStringLiteral("FrmCheckForUpdates"));
    setWindowTitle(QStringLiteral("Check For Updates"));
    openFile = [](const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); };

    lblCurrentVersion = field("lblCurrentVersion", QStringLiteral("Your version"));
    lblCurrentBuild = field("lblCurrentBuild", QStringLiteral("Your build"));
    lblCurrentDiscription =
        field("lblCurrentDiscription", QStringLiteral("Your build description"));
    lblNewVersion = field("lblNewVersion", QStringLiteral("Available version"));
    lblNewBuild = field("lblNewBuild", QStringLiteral("Available build"));
    lblNewDiscription = field("lblNewDiscription", QStringLiteral("Available build description"));
    lblStatus = field("lblStatus", QStringLiteral("Status"));
    lblStatus->setWordWrap(true);
    lblCurrentVersion->setText(QStringLiteral("%1.%2").arg(App::Major()).arg(App::Minor()));
    lblCurrentBuild->setText(QString::number(App::Revision()));
    lblCurrentDiscription->setText(QStringLiteral("Release"));

    auto* site = new QLabel(QStringLiteral("<a href=\"%1\">VELDOR on the web</a>")
                                .arg(UpdateCheck::homepageUrl().toString().toHtmlEscaped()));
    site->setObjectName(QStringLiteral("lblWebSite"));
    site->setAccessibleName(QStringLiteral("VELDOR on the web"));
    site->setOpenExternalLinks(true);

    prgDownload = new QProgressBar;
    prgDownload->setObjectName(QStringLiteral("prgDownload"));
    prgDownload->setAccessibleName(QStringLiteral("Download progress"));
    prgDownload->setVisible(false);

    auto button = [this](const char* name, const QString& text) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QLatin1String(name));
        b->setAccessibleName(QString(text)
                                 .remove(QLatin1Char('&'))
                                 .remove(QStringLiteral(" »"))
                                 .remove(QStringLiteral("« ")));
        b->setAutoDefault(false);
        return b;
    };
    cmdBack = button("cmdBack", QStringLiteral("« &Back"));
    cmdBack->setEnabled(false); // one way through: there is nothing to go back to
    cmdNext = button("cmdNext", kNext);
    cmdNext->setDefault(true);
    cmdClose = button("cmdClose", QStringLiteral("&Close"));
    connect(cmdNext, &QPushButton::clicked, this, &FrmCheckForUpdates::cmdNext_Click);
    connect(cmdClose, &QPushButton::clicked, this, &FrmCheckForUpdates::cmdClose_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(site);
    buttons->addStretch();
    buttons->addWidget(cmdBack);
    buttons->addWidget(cmdNext);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group(QStringLiteral("Your Version:"), lblCurrentVersion, lblCurrentBuild,
                            lblCurrentDiscription));
    layout->addWidget(group(QStringLiteral("Version Available For Download:"), lblNewVersion,
                            lblNewBuild, lblNewDiscription));
    layout->addWidget(prgDownload);
    layout->addWidget(lblStatus);
    layout->addLayout(buttons);

    connect(m_download, &UpdateDownload::progress, this, [this](qint64 got, qint64 total) {
        if (total > 0) {
            prgDownload->setRange(0, 1000);
            prgDownload->setValue(int(got * 1000 / total));
        } else {
            prgDownload->setRange(0, 0);
        }
    });
}

void FrmCheckForUpdates::cmdNext_Click() {
    const QString state = cmdNext->text();
    if (state == kFinish) {
        accept();
        return;
    }
    cmdNext->setEnabled(false);
    cmdClose->setText(QStringLiteral("&Cancel"));
    const QString folder = updatesFolder();
    QDir().mkpath(folder);
    if (state == kNext) {
        lblStatus->setText(QStringLiteral("Checking for a new version..."));
        // An old file must not pass for the answer of a failed check.
        modFiles::file_Delete(folder + QLatin1String("/veldor.upd"));
        disconnect(m_download, &UpdateDownload::finished, this, nullptr);
        connect(m_download, &UpdateDownload::finished, this, &FrmCheckForUpdates::versionFileDone);
        m_download->start(UpdateCheck::versionFileUrl(), folder + QLatin1String("/veldor.upd"),
                          UpdateCheck::MaxVersionFileBytes);
    } else if (state == kDownload) {
        lblStatus->setText(QStringLiteral("Downloading veldor.zip..."));
        prgDownload->setRange(0, 0);
        prgDownload->setVisible(true);
        disconnect(m_download, &UpdateDownload::finished, this, nullptr);
        connect(m_download, &UpdateDownload::finished, this, &FrmCheckForUpdates::archiveDone);
        m_download->start(UpdateCheck::archiveUrl(), folder + QLatin1String("/veldor.zip"),
                          UpdateCheck::MaxArchiveBytes);
    }
    Q_EMIT stateChanged();
}

void FrmCheckForUpdates::cmdClose_Click() {
    if (m_download->running()) {
        m_download->cancel();
        finish(QStringLiteral("Cancelled."));
        return;
    }
    reject();
}

void FrmCheckForUpdates::versionFileDone(const QString& error) {
    if (!error.isEmpty()) return finish(error);
    const UpdateCheck::Offer offer =
        UpdateCheck::readOffer(updatesFolder() + QLatin1String("/veldor.upd"));
    lblNewVersion->setText(offer.version);
    lblNewBuild->setText(offer.build);
    lblNewDiscription->setText(offer.description);
    switch (UpdateCheck::compare(App::Revision(), offer.build)) {
    case UpdateCheck::Verdict::Newer:
        cmdNext->setText(kDownload);
        cmdNext->setEnabled(true);
        cmdClose->setText(QStringLiteral("&Close"));
        lblStatus->setText(QStringLiteral("A new version is available."));
        Q_EMIT stateChanged();
        return;
    case UpdateCheck::Verdict::NotNewer:
        return finish(QStringLiteral("You have the newest version."));
    case UpdateCheck::Verdict::NoBuild:
        return finish(QStringLiteral("The update server did not say which build it offers."));
    case UpdateCheck::Verdict::BadBuild:
        return finish(QStringLiteral("The update server offers a build that is not a number."));
    }
}

void FrmCheckForUpdates::archiveDone(const QString& error) {
    prgDownload->setVisible(false);
    if (!error.isEmpty()) return finish(error);
    const QString path = updatesFolder() + QLatin1String("/veldor.zip");
    finish(QStringLiteral("Downloaded to \"%1\".").arg(QDir::toNativeSeparators(path)));
    if (openFile) openFile(path);
}

void FrmCheckForUpdates::finish(const QString& status) {
    lblStatus->setText(status);
    prgDownload->setVisible(false);
    cmdNext->setText(kFinish);
    cmdNext->setEnabled(true);
    cmdClose->setText(QStringLiteral("&Close"));
    Q_EMIT stateChanged();
}

void CheckForUpdates_install(MainContext& ctx) {
    ctx.commands().setHandler(QStringLiteral("mnuCheckForUpdates"), [] {
        auto* window = new FrmCheckForUpdates(QApplication::activeWindow());
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
    });
}
