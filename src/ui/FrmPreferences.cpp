#include "ui/FrmPreferences.h"

#include "core/Colors.h"
#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

const char* const kPanels[] = {
    "nfpDisplay", "nfpPlayback",       "nfpSorting",       "nfpFiles",      "nfpAdvanced",
    "nfpFileAss", "nfpWindowSettings", "nfpGlobalHotKeys", "nfpAppearance", "nfpStartup"};

// Which panel each check box stands on.
int panelOfCheck(int index) {
    switch (index) {
    case 18:
    case 19:
    case 22:
    case 29:
        return 1;
    case 9:
    case 16:
    case 24:
    case 27:
    case 28:
        return 3;
    case 8:
    case 6:
        return 5;
    case 12:
    case 15:
        return 6;
    case 25:
        return 7;
    case 7:
    case 11:
    case 13:
    case 14:
        return 9;
    default:
        return 4;
    }
}

int panelOfGroup(const QString& name) {
    if (name == QLatin1String("opSortBy") || name == QLatin1String("opSortIn")) return 2;
    if (name == QLatin1String("opTime")) return 0;
    return 1;
}

int panelOfNumber(const QString& control) {
    return control.startsWith(QLatin1String("txtMax")) ? 3 : 1;
}

// Captions for the keys, readable rather than the key itself.
QString captionOf(const QString& key) {
    QString out;
    for (const QChar c : key) {
        if (c.isUpper() && !out.isEmpty() && !out.back().isUpper()) out += QLatin1Char(' ');
        out += out.isEmpty() ? c : c.toLower();
    }
    return out;
}

} // namespace

QStringList FrmPreferences::sectionCaptions() {
    return {QStringLiteral("Display Settings \u00bb"),  QStringLiteral("Playback Options \u00bb"),
            QStringLiteral("Playlist Sorting \u00bb"),  QStringLiteral("Recent Filenames \u00bb"),
            QStringLiteral("Advanced Settings \u00bb"), QStringLiteral("File Associations \u00bb"),
            QStringLiteral("Window Settings \u00bb"),   QStringLiteral("Global Hot Keys \u00bb"),
            QStringLiteral("Appearance \u00bb"),        QStringLiteral("Start-Up Settings \u00bb")};
}

FrmPreferences::FrmPreferences(MainContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmPreferences"));
    setWindowTitle(QStringLiteral("Preferences"));
    setAccessibleName(windowTitle());

    auto* sections = new QVBoxLayout;
    const QStringList captions = sectionCaptions();
    for (int i = 0; i < captions.size(); ++i) {
        auto* label = new QPushButton(captions[i], this);
        label->setObjectName(QStringLiteral("lblSection_%1").arg(i));
        label->setAccessibleName(captions[i]);
        label->setFlat(true);
        label->setStyleSheet(QStringLiteral("text-align: left"));
        connect(label, &QPushButton::clicked, this, [this, i] { lblSection_Click(i); });
        sections->addWidget(label);
    }
    sections->addStretch();

    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("lblTitle"));
    m_panels = new QStackedWidget(this);
    for (int i = 0; i < captions.size(); ++i)
        m_panels->addWidget(buildPanel(i));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_ok = new QPushButton(QStringLiteral("&OK"), this);
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    m_apply = new QPushButton(QStringLiteral("&Apply"), this);
    const std::pair<QPushButton*, const char*> named[] = {
        {m_ok, "cmdOK"}, {close, "cmdClose"}, {m_apply, "cmdApply"}};
    for (const auto& [b, name] : named) {
        b->setObjectName(QString::fromLatin1(name));
        b->setAccessibleName(b->text().remove(QLatin1Char('&')));
        buttons->addWidget(b);
    }
    connect(m_ok, &QPushButton::clicked, this, &FrmPreferences::cmdOK_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_apply, &QPushButton::clicked, this, &FrmPreferences::cmdApply_Click);

    auto* right = new QVBoxLayout;
    right->addWidget(m_title);
    right->addWidget(m_panels, 1);
    auto* top = new QHBoxLayout;
    top->addLayout(sections);
    top->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(buttons);

    show(PreferencesRules::load());
    lblSection_Click(0);
}

QWidget* FrmPreferences::buildPanel(int index) {
    auto* panel = new QWidget(this);
    panel->setObjectName(QString::fromLatin1(kPanels[index]));
    auto* form = new QFormLayout(panel);

    for (const auto& c : PreferencesRules::checks()) {
        if (panelOfCheck(c.index) != index) continue;
        auto* box = new QCheckBox(captionOf(QString::fromLatin1(c.key)), panel);
        box->setObjectName(QStringLiteral("chkSetting_%1").arg(c.index));
        box->setAccessibleName(box->text());
        connect(box, &QCheckBox::toggled, this, &FrmPreferences::changed);
        m_checks[c.index] = box;
        form->addRow(box);
    }
    for (const auto& g : PreferencesRules::optionGroups()) {
        const QString name = QString::fromLatin1(g.name);
        if (panelOfGroup(name) != index) continue;
        auto* group = new QButtonGroup(panel);
        group->setObjectName(name);
        for (int i = 0; i < g.keys.size(); ++i) {
            auto* option = new QRadioButton(captionOf(g.keys[i]), panel);
            option->setObjectName(QStringLiteral("%1_%2").arg(name).arg(i));
            option->setAccessibleName(option->text());
            group->addButton(option, i);
            form->addRow(option);
        }
        connect(group, &QButtonGroup::idToggled, this, &FrmPreferences::changed);
        m_options[name] = group;
    }
    for (const auto& b : PreferencesRules::numberBoxes()) {
        const QString control = QString::fromLatin1(b.control);
        if (panelOfNumber(control) != index) continue;
        auto* edit = new QLineEdit(panel);
        edit->setObjectName(control);
        edit->setAccessibleName(captionOf(QString::fromLatin1(b.key)));
        connect(edit, &QLineEdit::textEdited, this, &FrmPreferences::changed);
        m_numbers[control] = edit;
        form->addRow(edit->accessibleName(), edit);
    }
    if (index == 5) {
        m_types = new QListWidget(panel);
        m_types->setObjectName(QStringLiteral("lstTypes"));
        m_types->setAccessibleName(QStringLiteral("File types"));
        connect(m_types, &QListWidget::itemChanged, this, &FrmPreferences::changed);
        form->addRow(m_types);
        auto* all = new QPushButton(QStringLiteral("Select &All"), panel);
        auto* none = new QPushButton(QStringLiteral("&Unselect All"), panel);
        all->setObjectName(QStringLiteral("cmdSelectAll"));
        none->setObjectName(QStringLiteral("cmdUnselectAll"));
        for (auto* b : {all, none}) {
            b->setAccessibleName(b->text().remove(QLatin1Char('&')));
            const Qt::CheckState state = b == all ? Qt::Checked : Qt::Unchecked;
            connect(b, &QPushButton::clicked, this, [this, state] {
                for (int i = 0; i < m_types->count(); ++i)
                    m_types->item(i)->setCheckState(state);
            });
        }
        form->addRow(all, none);
    }
    if (index == 7) {
        for (const QString& key : PreferencesRules::load().globalKeys.keys()) {
            auto* edit = new QLineEdit(panel);
            edit->setObjectName(QStringLiteral("txtKey_%1").arg(key));
            edit->setAccessibleName(captionOf(key));
            connect(edit, &QLineEdit::textEdited, this, &FrmPreferences::changed);
            m_keys[key] = edit;
            form->addRow(edit->accessibleName(), edit);
        }
    }
    if (index == 8) {
        auto pickColour = [this](const QString& key) {
            const auto chosen = Dialogs::chooseColor(
                QStringLiteral("Colour"),
                Colors::fromColorRef(Colors::parse(m_shown.appearance.value(key), 0)));
            if (!chosen) return;
            const QColor c = *chosen;
            m_shown.appearance[key] = QString::number(c.red() | c.green() << 8 | c.blue() << 16);
            changed();
        };
        for (const char* key :
             {"BackgroundColour", "FontColour", "PlayingFontColour", "PlayNextFontColour"}) {
            auto* b =
                new QPushButton(captionOf(QString::fromLatin1(key)) + QStringLiteral("..."), panel);
            b->setObjectName(QStringLiteral("cmdColour_%1").arg(QString::fromLatin1(key)));
            b->setAccessibleName(b->text());
            connect(b, &QPushButton::clicked, this,
                    [pickColour, key] { pickColour(QString::fromLatin1(key)); });
            form->addRow(b);
        }
        auto* font = new QPushButton(QStringLiteral("Change &Font..."), panel);
        font->setObjectName(QStringLiteral("cmdChangeFont"));
        font->setAccessibleName(QStringLiteral("Change Font"));
        connect(font, &QPushButton::clicked, this, [this] {
            QFont f(m_shown.appearance.value(QStringLiteral("Font")));
            f.setPointSizeF(m_shown.appearance.value(QStringLiteral("Fontsize")).toDouble());
            const auto chosen = Dialogs::chooseFont(QStringLiteral("Font"), f);
            if (!chosen) return;
            m_shown.appearance[QStringLiteral("Font")] = chosen->family();
            m_shown.appearance[QStringLiteral("Fontsize")] =
                QString::number(qRound(chosen->pointSizeF()));
            changed();
        });
        form->addRow(font);
        auto* remove = new QPushButton(QStringLiteral("&Remove Image"), panel);
        remove->setObjectName(QStringLiteral("cmdRemoveImage"));
        remove->setAccessibleName(QStringLiteral("Remove Image"));
        connect(remove, &QPushButton::clicked, this, [this] {
            m_shown.appearance[QStringLiteral("PlaylistImage")].clear();
            changed();
        });
        form->addRow(remove);
    }
    return panel;
}

void FrmPreferences::show(const PreferencesRules::Values& v) {
    m_shown = v;
    for (auto it = m_checks.cbegin(); it != m_checks.cend(); ++it)
        it.value()->setChecked(v.checks.value(it.key()));
    for (auto it = m_options.cbegin(); it != m_options.cend(); ++it)
        if (QAbstractButton* b = it.value()->button(v.options.value(it.key()))) b->setChecked(true);
    for (auto it = m_numbers.cbegin(); it != m_numbers.cend(); ++it)
        it.value()->setText(v.numbers.value(it.key()));
    m_types->clear();
    for (auto it = v.fileTypes.cbegin(); it != v.fileTypes.cend(); ++it) {
        auto* item = new QListWidgetItem(it.key(), m_types);
        item->setCheckState(it.value() ? Qt::Checked : Qt::Unchecked);
    }
    for (auto it = m_keys.cbegin(); it != m_keys.cend(); ++it)
        it.value()->setText(v.globalKeys.value(it.key()));
    m_apply->setEnabled(false);
}

PreferencesRules::Values FrmPreferences::values() const {
    PreferencesRules::Values v = m_shown;
    for (auto it = m_checks.cbegin(); it != m_checks.cend(); ++it)
        v.checks[it.key()] = it.value()->isChecked();
    for (auto it = m_options.cbegin(); it != m_options.cend(); ++it)
        v.options[it.key()] = it.value()->checkedId();
    for (auto it = m_numbers.cbegin(); it != m_numbers.cend(); ++it)
        v.numbers[it.key()] = it.value()->text();
    for (int i = 0; i < m_types->count(); ++i)
        v.fileTypes[m_types->item(i)->text()] = m_types->item(i)->checkState() == Qt::Checked;
    for (auto it = m_keys.cbegin(); it != m_keys.cend(); ++it)
        v.globalKeys[it.key()] = it.value()->text();
    return v;
}

void FrmPreferences::changed() {
    m_apply->setEnabled(true);
}

void FrmPreferences::lblSection_Click(int index) {
    const QStringList captions = sectionCaptions();
    if (index < 0 || index >= captions.size()) return;
    m_section = index;
    m_panels->setCurrentIndex(index);
    QString caption = captions[index];
    caption.chop(2);
    m_title->setText(QStringLiteral("Section selected:  %1:").arg(caption));
}

bool FrmPreferences::cmdApply_Click() {
    if (!PreferencesRules::apply(values(), m_ctx)) return false;
    m_shown = values();
    m_apply->setEnabled(false);
    m_ok->setFocus();
    return true;
}

void FrmPreferences::cmdOK_Click() {
    if (m_apply->isEnabled() && !cmdApply_Click()) return;
    accept();
}

void FrmPreferences_install(MainContext& ctx, QWidget* owner) {
    ctx.commands().setHandler(QStringLiteral("mnuPreferences"), [&ctx, owner] {
        FrmPreferences dialog(ctx, owner);
        dialog.exec();
    });
}
