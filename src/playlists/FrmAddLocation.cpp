#include "playlists/FrmAddLocation.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modDirectorys.h"
#include "core/modFiles.h"
#include "playlists/DirectoryAdd.h"
#include "playlists/LineFiles.h"
#include "ui/FocusColour.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace {
QPointer<FrmAddLocation> g_window;
// A combo of more entries than this is no help to anyone; the file keeps them all.
constexpr int kMaxShown = 1000;
} // namespace

QString location_LogPath() {
    return App::file(QStringLiteral("locations.log"));
}

QStringList location_ReadLog() {
    return LineFiles::readValues(location_LogPath());
}

void location_Remember(const QString& location) {
    if (!modFiles::file_ContainsEntry(location_LogPath(), location))
        LineFiles::append(location_LogPath(), location);
}

FrmAddLocation* FrmAddLocation::instance() {
    return g_window.data();
}

FrmAddLocation* FrmAddLocation::open(MainContext& ctx, int target) {
    if (!g_window) {
        QWidget* owner = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->objectName() == QLatin1String("FrmMain")) owner = w;
        g_window = new FrmAddLocation(ctx, owner);
        g_window->form_Load();
    }
    g_window->LocationTarget = target;
    g_window->show();
    g_window->raise();
    g_window->cmbLocation->setFocus();
    return g_window.data();
}

void mnuAddLocation_Click(MainContext& ctx) {
    FrmAddLocation::open(ctx, 0);
}

FrmAddLocation::FrmAddLocation(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmAddLocation"));
    setAccessibleName(QStringLiteral("Add Location"));
    setWindowTitle(QStringLiteral("Add Location"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* label = new QLabel(QStringLiteral("&Location:"), this);
    cmbLocation = new QComboBox(this);
    cmbLocation->setObjectName(QStringLiteral("cmbLocation"));
    cmbLocation->setAccessibleName(QStringLiteral("Location"));
    cmbLocation->setEditable(true);
    cmbLocation->setInsertPolicy(QComboBox::NoInsert);
    // Measuring every entry of a long log would cost more than it shows.
    cmbLocation->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbLocation->setMinimumContentsLength(40);
    label->setBuddy(cmbLocation);
    ui_HighlightOnFocus(cmbLocation);
    const auto button = [this](const char* name, const QString& caption) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAccessibleName(
            QString(caption).remove(QLatin1Char('&')).remove(QStringLiteral("...")));
        return b;
    };
    cmdBrowse = button("cmdBrowse", QStringLiteral("&Browse..."));
    cmdAdd = button("cmdAdd", QStringLiteral("&Add"));
    cmdBack = button("cmdBack", QStringLiteral("< &Back"));
    cmdClose = button("cmdClose", QStringLiteral("&Close"));
    cmdAdd->setDefault(true);
    connect(cmdBrowse, &QPushButton::clicked, this, &FrmAddLocation::cmdBrowse_Click);
    connect(cmdAdd, &QPushButton::clicked, this, &FrmAddLocation::cmdAdd_Click);
    connect(cmdBack, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* row = new QHBoxLayout;
    row->addWidget(cmbLocation, 1);
    row->addWidget(cmdBrowse);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack);
    buttons->addStretch();
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addLayout(row);
    layout->addLayout(buttons);
}

void FrmAddLocation::form_Load() {
    cmbLocation->clear();
    if (!modFiles::file_Exists(location_LogPath())) return;
    QStringList entries = location_ReadLog();
    if (entries.size() > kMaxShown) entries.resize(kMaxShown);
    cmbLocation->addItems(entries);
    cmbLocation->setCurrentIndex(-1);
}

void FrmAddLocation::cmdBrowse_Click() {
    const QString chosen = modDirectorys::directory_Browse(
        this, settings_Read(QStringLiteral("Settings"), QStringLiteral("DirectoryPath"),
                            QStringLiteral("C:\\")));
    if (chosen.isEmpty()) return;
    settings_Write(QStringLiteral("Settings"), QStringLiteral("DirectoryPath"), chosen);
    cmbLocation->setEditText(chosen);
}

void FrmAddLocation::cmdAdd_Click() {
    const QString location = cmbLocation->currentText();
    const QString title = QStringLiteral("Adding Location Error");
    if (location.isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered a location."
                                       "\n\nThis function will not be proformed.\n"),
                        Dialogs::vbExclamation, title);
        cmbLocation->setFocus();
        return;
    }
    if (!modDirectorys::directory_Exists(location)) {
        Dialogs::msgBox(QStringLiteral("It has been detected that the location you have entered "
                                       "does not exist.\n\nThis function will not be proformed.\n"),
                        Dialogs::vbExclamation, title);
        cmbLocation->setFocus();
        return;
    }
    QPointer<FrmAddLocation> self(this);
    const auto done = [self, location] {
        location_Remember(location);
        if (self) self->cmbLocation->setFocus();
    };
    if (LocationTarget != 0) {
        // The Media Library walks the folders itself.
        if (m_ctx.mediaLibrary_AddLocation) m_ctx.mediaLibrary_AddLocation(location);
        done();
        return;
    }
    DirectoryAdd* add =
        DirectoryAdd::start(m_ctx, location, QStringLiteral("Adding media files, please wait..."));
    if (!add) return; // another add is under way
    connect(add, &DirectoryAdd::finished, &m_ctx, done);
}
