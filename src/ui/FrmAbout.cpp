#include "ui/FrmAbout.h"

#include "core/App.h"
#include "core/Dialogs.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSysInfo>
#include <QVBoxLayout>

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FrmAbout"));
    setWindowTitle(QStringLiteral("About %1").arg(App::Title()));
    setAccessibleName(windowTitle());

    m_title = new QLabel(App::Title(), this);
    m_title->setObjectName(QStringLiteral("lblTitle"));
    QFont big = m_title->font();
    big.setPointSizeF(big.pointSizeF() * 1.8);
    big.setBold(true);
    m_title->setFont(big);
    m_title->setAlignment(Qt::AlignCenter);

    m_version = new QLabel(QStringLiteral("Version %1").arg(App::versionText()), this);
    m_version->setObjectName(QStringLiteral("lblVersion"));
    m_version->setAlignment(Qt::AlignCenter);
    m_version->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* what =
        new QLabel(QStringLiteral("A media player for playlists, tags and audio CDs."), this);
    what->setObjectName(QStringLiteral("lblDescription"));
    what->setAlignment(Qt::AlignCenter);
    what->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setText(QStringLiteral("&OK"));
    ok->setAccessibleName(QStringLiteral("OK"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setSpacing(10);
    layout->addWidget(m_title);
    layout->addWidget(m_version);
    layout->addWidget(what);
    layout->addWidget(buttons);
}

FrmAbout* FrmAbout::showOver(QWidget* owner) {
    static QPointer<FrmAbout> window;
    if (!window) {
        window = new FrmAbout(owner);
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->open();
    window->raise();
    window->activateWindow();
    return window;
}

QString about_SystemText() {
    return QStringLiteral("%1\nKernel:  %2 %3\nArchitecture:  %4\n")
        .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
             QSysInfo::currentCpuArchitecture());
}

void mnuAboutWindows_Click() {
    Dialogs::msgBox(about_SystemText(), Dialogs::vbInformation, QStringLiteral("About The System"));
}
