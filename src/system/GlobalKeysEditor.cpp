#include "system/GlobalKeysEditor.h"

#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "system/GlobalKeys.h"
#include "ui/CommandBinding.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {
const QString kSection = QStringLiteral("GlobalKeys");
const char* const kOpenTypes[] = {"Play/Pause", "Stop",      "Next",       "Previous",
                                  "Mute",       "Volume Up", "Volume Down"};
const char* const kResetTypes[] = {"Play", "Stop",      "Next",       "Previous",
                                   "Mute", "Volume Up", "Volume Down"};
enum Column { Number = 0, Type = 1, Extension = 2, Key = 3 };
} // namespace

GlobalKeysEditor::GlobalKeysEditor(QObject* parent)
    : QObject(parent), m_items(new ListModel({QStringLiteral("Number:"), QStringLiteral("Type:"),
                                              QStringLiteral("Extension:"), QStringLiteral("Key:")},
                                             this)) {}

QStringList GlobalKeysEditor::extensionItems() {
    const QString sep(31, QLatin1Char('-'));
    return {QStringLiteral("(None)"),
            sep,
            QStringLiteral("Alt"),
            QStringLiteral("Win"),
            QStringLiteral("Ctrl"),
            QStringLiteral("Shift"),
            sep,
            QStringLiteral("Alt+Shift"),
            sep,
            QStringLiteral("Win+Alt"),
            QStringLiteral("Win+Ctrl"),
            QStringLiteral("Win+Shift"),
            sep,
            QStringLiteral("Ctrl+Alt"),
            QStringLiteral("Ctrl+Shift")};
}

QStringList GlobalKeysEditor::shortcutKeyItems() {
    const QString sep(94, QLatin1Char('-'));
    QStringList items;
    for (int i = 1; i <= 12; ++i)
        items << QStringLiteral("F%1").arg(i);
    items << sep;
    for (char c = 'A'; c <= 'Z'; ++c)
        items << QString(QLatin1Char(c));
    items << sep;
    for (int i = 0; i <= 9; ++i)
        items << QString::number(i);
    items << sep;
    for (int i = 0; i <= 9; ++i)
        items << QStringLiteral("NumPad%1").arg(i);
    items << sep;
    for (int c = 0; c < GlobalKeys::CommandCount; ++c)
        items << GlobalKeys::defaultKey(c);
    return items;
}

void GlobalKeysEditor::load() {
    m_items->clear();
    for (int c = 0; c < GlobalKeys::CommandCount; ++c)
        m_items->addRow(
            {QString(), QLatin1String(kOpenTypes[c]),
             settings_Read(kSection, GlobalKeys::extKey(c)),
             settings_Read(kSection, GlobalKeys::keyKey(c), GlobalKeys::defaultKey(c))});
    listview_Renumber(*m_items);
    setApply(false);
}

QString GlobalKeysEditor::typeOf(int row) const {
    return row >= 1 && row <= m_items->count() ? m_items->text(row - 1, Type) : QString();
}
QString GlobalKeysEditor::extensionOf(int row) const {
    return row >= 1 && row <= m_items->count() ? m_items->text(row - 1, Extension) : QString();
}
QString GlobalKeysEditor::keyOf(int row) const {
    return row >= 1 && row <= m_items->count() ? m_items->text(row - 1, Key) : QString();
}

void GlobalKeysEditor::cmbExtension_Click(int row, const QString& text) {
    if (row < 1 || row > m_items->count()) return;
    // Only a 22-hyphen text would move on, and the list's separators are longer: a separator
    // chosen here is stored as it stands.
    m_items->setText(row - 1, Extension, text == QLatin1String("(None)") ? QString() : text);
    setApply(true);
}

int GlobalKeysEditor::cmbShortcutKeys_Click(int row, int index) {
    const QStringList items = shortcutKeyItems();
    if (row < 1 || row > m_items->count() || index < 0 || index >= items.size()) return index;
    if (items[index] == QString(94, QLatin1Char('-')) && index + 1 < items.size()) ++index;
    m_items->setText(row - 1, Key, items[index]);
    setApply(true);
    return index;
}

void GlobalKeysEditor::cmdResetGlobalKeys_Click() {
    m_items->clear();
    for (int c = 0; c < GlobalKeys::CommandCount; ++c)
        m_items->addRow({QString(), QLatin1String(kResetTypes[c]), QStringLiteral("(None)"),
                         GlobalKeys::defaultKey(c)});
    listview_Renumber(*m_items);
    setApply(true);
}

void GlobalKeysEditor::cmdApply_Click(MainContext* ctx) {
    for (int c = 0; c < GlobalKeys::CommandCount && c < m_items->count(); ++c) {
        settings_Write(kSection, GlobalKeys::keyKey(c), m_items->text(c, Key));
        settings_Write(kSection, GlobalKeys::extKey(c), m_items->text(c, Extension));
    }
    if (ctx) ctx->call(ctx->window_InstallGlobalKeys);
    setApply(false);
}

void GlobalKeysEditor::setApply(bool on) {
    if (m_apply == on) return;
    m_apply = on;
    Q_EMIT applyEnabledChanged(on);
}

GlobalKeysPage::GlobalKeysPage(MainContext& ctx, QWidget* parent, bool standalone)
    : QWidget(parent), m_ctx(ctx), m_rules(this) {
    setObjectName(QStringLiteral("GlobalHotKeys"));
    setWindowTitle(QStringLiteral("Global Hot Keys"));
    auto* list = ui_Named(new ListView(&m_rules.lstvItems(), this), "lstvItems", "Global keys");
    txtName = ui_Named(new QLineEdit(this), "txtName", "Command");
    txtName->setReadOnly(true);
    cmbExtension = ui_Named(new QComboBox(this), "cmbExtension", "Extension");
    cmbExtension->addItems(GlobalKeysEditor::extensionItems());
    cmbShortcutKeys = ui_Named(new QComboBox(this), "cmbShortcutKeys", "Key");
    cmbShortcutKeys->addItems(GlobalKeysEditor::shortcutKeyItems());
    auto* reset = ui_Named(new QPushButton(QStringLiteral("Reset Global Keys To Defaults"), this),
                           "cmdResetGlobalKeys", "Reset Global Keys To Defaults");
    cmdApply = ui_Named(new QPushButton(QStringLiteral("&Apply"), this), "cmdApply", "Apply");
    chkDisable = ui_Named(
        new QCheckBox(QStringLiteral("Disable the global hotkeys within windows..."), this),
        "chkDisableGlobalHotkeys", "Disable the global hotkeys within windows");
    chkDisable->setChecked(settings_IsOn(
        QStringLiteral("Settings"), QStringLiteral("DisableGlobalHotkeys"), QStringLiteral("0")));

    auto* grid = new QGridLayout(this);
    grid->addWidget(list, 0, 0, 1, 4);
    grid->addWidget(new QLabel(QStringLiteral("Name:"), this), 1, 0);
    grid->addWidget(txtName, 1, 1, 1, 3);
    grid->addWidget(new QLabel(QStringLiteral("Extension:"), this), 2, 0);
    grid->addWidget(cmbExtension, 2, 1);
    grid->addWidget(new QLabel(QStringLiteral("Key:"), this), 2, 2);
    grid->addWidget(cmbShortcutKeys, 2, 3);
    grid->addWidget(chkDisable, 3, 0, 1, 4);
    grid->addWidget(reset, 4, 0, 1, 2);
    grid->addWidget(cmdApply, 4, 3);

    m_rules.load();
    cmdApply->setEnabled(false);
    connect(&m_rules, &GlobalKeysEditor::applyEnabledChanged, cmdApply, &QWidget::setEnabled);
    connect(m_rules.lstvItems().selectionModel(), &QItemSelectionModel::currentChanged, this,
            &GlobalKeysPage::showRow);
    connect(cmbExtension, &QComboBox::activated, this, [this](int i) {
        if (m_filling) return;
        m_rules.cmbExtension_Click(listview_SelectedIndex(m_rules.lstvItems()),
                                   cmbExtension->itemText(i));
    });
    connect(cmbShortcutKeys, &QComboBox::activated, this, [this](int i) {
        if (m_filling) return;
        const int chosen =
            m_rules.cmbShortcutKeys_Click(listview_SelectedIndex(m_rules.lstvItems()), i);
        if (chosen != i) cmbShortcutKeys->setCurrentIndex(chosen);
    });
    connect(reset, &QPushButton::clicked, this, [this] {
        m_rules.cmdResetGlobalKeys_Click();
        showRow();
    });
    connect(cmdApply, &QPushButton::clicked, this, [this] { m_rules.cmdApply_Click(&m_ctx); });
    // Takes effect at the next start; the menu entry is what acts at once.
    connect(chkDisable, &QCheckBox::toggled, this, [](bool on) {
        settings_Write(QStringLiteral("Settings"), QStringLiteral("DisableGlobalHotkeys"),
                       on ? 1 : 0);
    });
    if (!standalone) {
        // Hidden and nameless, so nothing finds them in place of the preferences' own.
        for (QWidget* own : {static_cast<QWidget*>(cmdApply), static_cast<QWidget*>(chkDisable)}) {
            own->hide();
            own->setObjectName(QString());
        }
    }
    listview_SelectItem(m_rules.lstvItems(), 1);
    showRow();
}

void GlobalKeysPage::showRow() {
    const int row = listview_SelectedIndex(m_rules.lstvItems());
    if (row < 1) return;
    m_filling = true;
    txtName->setText(m_rules.typeOf(row));
    const QString ext = m_rules.extensionOf(row);
    cmbExtension->setCurrentIndex(
        qMax(0, cmbExtension->findText(ext.isEmpty() ? QStringLiteral("(None)") : ext)));
    cmbShortcutKeys->setCurrentIndex(qMax(0, cmbShortcutKeys->findText(m_rules.keyOf(row))));
    m_filling = false;
}
