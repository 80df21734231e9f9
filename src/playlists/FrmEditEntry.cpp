#include "playlists/FrmEditEntry.h"

#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/MainContext.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "ui/FocusColour.h"

#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace PlaylistColumn;

FrmEditEntry* FrmEditEntry::open(MainContext& ctx, int row) {
    QWidget* owner = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("FrmMain")) owner = w;
    auto* window = new FrmEditEntry(ctx, owner);
    ListModel& list = ctx.lstvPlaylist();
    window->EditEntryRowIndex = row;
    if (row >= 1 && row <= list.count()) {
        window->txtFilename->setText(list.text(row - 1, Filename));
        window->txtArtist->setText(list.text(row - 1, Artist));
        window->txtTitle->setText(list.text(row - 1, Title));
        window->txtYear->setText(list.text(row - 1, Year));
    }
    window->show();
    return window;
}

FrmEditEntry::FrmEditEntry(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmEditEntry"));
    setAccessibleName(QStringLiteral("Edit Entry"));
    setWindowTitle(QStringLiteral("Edit Entry"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* form = new QFormLayout;
    const auto box = [&](const char* name, const QString& label) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QString::fromLatin1(name));
        edit->setAccessibleName(QString(label).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        ui_HighlightOnFocus(edit);
        form->addRow(label, edit);
        return edit;
    };
    txtFilename = box("txtFilename", QStringLiteral("&Filename:"));
    txtFilename->setReadOnly(true);
    txtArtist = box("txtArtist", QStringLiteral("&Artist:"));
    txtTitle = box("txtTitle", QStringLiteral("&Title:"));
    txtYear = box("txtYear", QStringLiteral("&Year:"));
    chkSaveChanges = new QCheckBox(QStringLiteral("&Save changes to the playlist"), this);
    chkSaveChanges->setObjectName(QStringLiteral("chkSaveChanges"));
    chkSaveChanges->setAccessibleName(QStringLiteral("Save changes to the playlist"));

    auto* rename = new QPushButton(QStringLiteral("&Rename..."), this);
    rename->setObjectName(QStringLiteral("cmdRename"));
    rename->setAccessibleName(QStringLiteral("Rename"));
    // The rename window belongs to the rename tools; until they stand the button rests.
    rename->setEnabled(ctx.commands().hasHandler(QStringLiteral("mnuRenameFilename")));
    connect(rename, &QPushButton::clicked, this,
            [this] { m_ctx.commands().run(QStringLiteral("mnuRenameFilename")); });
    auto* update = new QPushButton(QStringLiteral("&Update"), this);
    update->setObjectName(QStringLiteral("cmdUpdate"));
    update->setAccessibleName(QStringLiteral("Update"));
    update->setDefault(true);
    connect(update, &QPushButton::clicked, this, &FrmEditEntry::cmdUpdate_Click);
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(rename);
    buttons->addStretch();
    buttons->addWidget(update);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(chkSaveChanges);
    layout->addLayout(buttons);
    resize(440, 200);
}

void FrmEditEntry::cmdUpdate_Click() {
    ListModel& list = m_ctx.lstvPlaylist();
    const int row = EditEntryRowIndex - 1;
    // The row may have gone while the window was open; then there is nothing to change.
    if (row >= 0 && row < list.count() && list.text(row, Filename) == txtFilename->text()) {
        const QString none = QStringLiteral("[None]");
        list.setText(row, Artist, txtArtist->text().isEmpty() ? none : txtArtist->text());
        list.setText(row, Title, txtTitle->text().isEmpty() ? none : txtTitle->text());
        list.setText(row, Year, txtYear->text());
        window_WriteLog(txtFilename->text() + QStringLiteral(" entry modified."));
        if (chkSaveChanges->isChecked() &&
            m_ctx.cmbPlaylists().text().toLower() != QLatin1String("((select playlist))"))
            m_ctx.commands().run(QStringLiteral("mnuSave"));
    }
    close();
}
