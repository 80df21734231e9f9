#include "app/FrmMain.h"

#include "app/MainMenus.h"
#include "core/Colors.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"
#include "core/ShownText.h"
#include "system/modWindows.h"
#include "ui/FocusColour.h"
#include "ui/ListView.h"
#include "ui/SliderBinding.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QShowEvent>
#include <QSlider>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace {
QSlider* makeSlider(const QString& name, const QString& accessible, QWidget* parent) {
    auto* s = new QSlider(Qt::Horizontal, parent);
    s->setObjectName(name);
    s->setAccessibleName(accessible);
    s->setRange(0, 100);
    s->setValue(50);
    s->setFixedWidth(90);
    s->setToolTip(accessible);
    return s;
}
} // namespace

FrmMain::FrmMain(MainContext& ctx, QWidget* parent) : QMainWindow(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmMain"));
    setWindowTitle(QStringLiteral("VELDOR"));
    setAccessibleName(QStringLiteral("VELDOR"));
    MainMenus::createCommands(ctx.commands());
    buildWidgets();
    installDisplayCommands();
}

FrmMain::~FrmMain() = default;

void FrmMain::buildWidgets() {
    Commands& c = m_ctx.commands();
    MainMenus::buildMenuBar(c, menuBar());

    // Three bands, as a cool bar has: they share a row while they fit and wrap when they don't,
    // so nothing falls into an overflow menu on a narrow or scaled screen.
    const auto band = [this](const char* name, const char* accessible) {
        auto* bar = new QToolBar(QString::fromLatin1(accessible), this);
        bar->setObjectName(QString::fromLatin1(name));
        bar->setAccessibleName(QString::fromLatin1(accessible));
        bar->setMovable(false);
        bar->toggleViewAction()->setVisible(false);
        addToolBar(Qt::TopToolBarArea, bar);
        return bar;
    };
    m_toolbar = band("tbToolbar", "Toolbar");
    m_toolbar->setIconSize(QSize(20, 20));
    MainMenus::buildToolbar(c, m_toolbar);

    m_comboBand = band("cbPlaylistsBand", "Playlists");
    m_combo = new QComboBox(m_comboBand);
    m_combo->setObjectName(QStringLiteral("cmbPlaylists"));
    m_combo->setAccessibleName(QStringLiteral("Playlists"));
    m_combo->setMinimumContentsLength(22);
    m_combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_comboBand->addWidget(m_combo);

    m_sliderBand = band("cbSlidersBand", "Position and volume");
    auto* sliders = new QWidget(m_sliderBand);
    auto* row = new QHBoxLayout(sliders);
    row->setContentsMargins(8, 0, 4, 0);
    row->setSpacing(4);
    m_position = makeSlider(QStringLiteral("sldPosition"), QStringLiteral("Position"), sliders);
    // The position slider gives way first when the band is short of room.
    m_position->setMinimumWidth(60);
    m_position->setMaximumWidth(QWIDGETSIZE_MAX);
    m_position->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    row->addWidget(m_position);
    row->addSpacing(6);
    ui_BindSlider(m_position, m_ctx.sldPosition(), true);
    auto* volLabel = new QLabel(QStringLiteral("Volume"), sliders);
    m_volume = makeSlider(QStringLiteral("sldVolume"), QStringLiteral("Volume"), sliders);
    volLabel->setBuddy(m_volume);
    auto* balLabel = new QLabel(QStringLiteral("Balance"), sliders);
    m_balance = makeSlider(QStringLiteral("sldBalance"), QStringLiteral("Balance"), sliders);
    balLabel->setBuddy(m_balance);
    row->addWidget(volLabel);
    row->addWidget(m_volume);
    row->addSpacing(6);
    row->addWidget(balLabel);
    row->addWidget(m_balance);
    ui_BindSlider(m_volume, m_ctx.sldVolume(), false);
    ui_BindSlider(m_balance, m_ctx.sldBalance(), false);
    sliders->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_sliderBand->addWidget(sliders);
    setToolbarVisible(false); // shown by its menu state at start-up

    m_list = new ListView(&m_ctx.lstvPlaylist(), this);
    m_list->setObjectName(QStringLiteral("lstvPlaylist"));
    m_list->setAccessibleName(QStringLiteral("Playlist"));
    m_list->setHeadersVisible(false);
    setCentralWidget(m_list);

    auto* bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("sbStatusBar"));
    bar->setAccessibleName(QStringLiteral("Status bar"));
    const char* names[] = {"Status", "Songs", "Time"};
    for (int i = 0; i < 3; ++i) {
        m_panels[i] = new QLabel(bar);
        m_panels[i]->setObjectName(QStringLiteral("sbPanel%1").arg(i + 1));
        // No fixed name: a label without one gives its text as its name and announces each
        // change of it, which is what a screen reader reads of a status bar.
        m_panels[i]->setAccessibleDescription(QString::fromLatin1(names[i]));
        m_panels[i]->setContentsMargins(4, 0, 4, 0);
        if (i == 0)
            bar->addWidget(m_panels[i], 1);
        else
            bar->addPermanentWidget(m_panels[i]);
    }
    setStatusBar(bar);
    bar->hide();
    connect(&m_ctx, &MainContext::statusTextChanged, m_panels[0],
            [this](const QString& text) { setPanelText(1, text); });

    m_tmrPosition = new QTimer(this);
    m_tmrPosition->setObjectName(QStringLiteral("tmrPosition"));
    m_tmrPosition->setInterval(500);
    m_tmrWindowUpdate = new QTimer(this);
    m_tmrWindowUpdate->setObjectName(QStringLiteral("tmrWindowUpdate"));
    m_tmrWindowUpdate->setInterval(50);

    mirrorCombo();
    resize(900, 600);
}

void FrmMain::mirrorCombo() {
    PlaylistCombo& state = m_ctx.cmbPlaylists();
    auto refill = [this, &state] {
        const QSignalBlocker block(m_combo);
        m_combo->clear();
        m_combo->addItems(state.items());
        m_combo->setCurrentIndex(state.listIndex());
    };
    connect(&state, &PlaylistCombo::itemsChanged, this, refill);
    connect(&state, &PlaylistCombo::listIndexChanged, this, [this](int index) {
        const QSignalBlocker block(m_combo);
        m_combo->setCurrentIndex(index);
    });
    connect(&state, &PlaylistCombo::enabledChanged, m_combo, &QWidget::setEnabled);
    connect(m_combo, &QComboBox::activated, this,
            [&state](int index) { state.setListIndex(index); });
    refill();
}

void FrmMain::installDisplayCommands() {
    Commands& c = m_ctx.commands();
    // A display toggle flips its mark, stores it and applies it.
    auto toggle = [this, &c](const QString& menu, const QString& key,
                             std::function<void(bool)> apply) {
        c.setHandler(menu, [this, &c, menu, key, apply] {
            const bool on = !c.isChecked(menu);
            c.setChecked(menu, on);
            settings_Write(QStringLiteral("Settings"), key, on);
            apply(on);
            Form_Resize();
        });
    };
    toggle(QStringLiteral("mnuShowToolbar"), QStringLiteral("ShowToolbar"),
           [this](bool on) { setToolbarVisible(on); });
    toggle(QStringLiteral("mnuShowStatusBar"), QStringLiteral("ShowStatusBar"),
           [this](bool on) { statusBar()->setVisible(on); });
    toggle(QStringLiteral("mnuShowPlaylistHeaders"), QStringLiteral("ShowPlaylistHeaders"),
           [this](bool on) { m_list->setHeadersVisible(on); });
    toggle(QStringLiteral("mnuShowFilenamesColumn"), QStringLiteral("ShowFilenamesColumn"),
           [](bool) {});
    // The time panel shows one of the two; a click on the one shown keeps it.
    const QString elapsed = QStringLiteral("mnuStatusBarShowTimeElapsed");
    const QString remaining = QStringLiteral("mnuStatusBarShowTimeRemaining");
    for (const bool showElapsed : {true, false}) {
        const QString menu = showElapsed ? elapsed : remaining;
        const QString other = showElapsed ? remaining : elapsed;
        c.setHandler(menu, [this, &c, menu, other, showElapsed] {
            c.setChecked(menu, true);
            c.setChecked(other, false);
            settings_Write(QStringLiteral("Settings"), QStringLiteral("ShowTimeElapsed"),
                           showElapsed);
            settings_Write(QStringLiteral("Settings"), QStringLiteral("ShowTimeRemaining"),
                           !showElapsed);
            m_ctx.call(m_ctx.tmrPosition_Timer);
        });
    }
    c.setHandler(QStringLiteral("mnuReCenterWindow"), [this] { modWindows::window_Center(this); });
}

QList<int> FrmMain::columnWidthsTwips() const {
    // A width the user left alone keeps its stored twips exactly, whatever the rounding.
    QList<int> out;
    for (int i = 0; i < 6; ++i) {
        const int px = m_list->columnWidth(i);
        out.append(i < m_setTwips.size() && m_setPixels.value(i) == px
                       ? m_setTwips[i]
                       : modWindows::pixelsToTwips(px, this));
    }
    return out;
}

void FrmMain::setColumnWidthsTwips(const QList<int>& twips) {
    m_setTwips.clear();
    m_setPixels.clear();
    for (int i = 0; i < 6 && i < twips.size(); ++i) {
        m_list->setColumnWidth(i, modWindows::twipsToPixels(qMax(0, twips[i]), this));
        m_setTwips.append(qMax(0, twips[i]));
        m_setPixels.append(m_list->columnWidth(i));
    }
}

namespace {
const QString kColumnSection = QStringLiteral("ColumnHeaders_MainWindow");
const char* const kColumnKeys[] = {"Number", "Artist", "Title", "Year", "Status", "Length"};
} // namespace

void FrmMain::restoreColumnWidths() {
    QList<int> widths;
    for (const char* key : kColumnKeys) {
        const QString k = QString::fromLatin1(key);
        bool ok = false;
        const double w =
            settings_Number(kColumnSection, k, settings_Default(kColumnSection, k), &ok);
        widths.append(ok ? int(w) : settings_Default(kColumnSection, k).toInt());
    }
    setColumnWidthsTwips(widths);
}

void FrmMain::saveColumnWidths() const {
    const QList<int> widths = columnWidthsTwips();
    for (int i = 0; i < 6; ++i)
        settings_Write(kColumnSection, QString::fromLatin1(kColumnKeys[i]), widths.value(i));
}

void FrmMain::Form_Resize() {
    if (!m_ctx.WindowReady || !m_list) return;
    // The filename column takes what the others leave; hidden, it still exists.
    const bool show = m_ctx.commands().isChecked(QStringLiteral("mnuShowFilenamesColumn"));
    m_list->setColumnHidden(6, !show);
    if (show) {
        int used = 0;
        for (int i = 0; i < 6; ++i)
            used += m_list->columnWidth(i);
        const int rest = m_list->viewport()->width() - used - modWindows::twipsToPixels(360, this);
        m_list->setColumnWidth(6, qMax(40, rest));
    }
}

void FrmMain::applyAppearance() {
    const QString section = QStringLiteral("Appearance");
    QFont font(settings_Read(section, QStringLiteral("Font"), QStringLiteral("Tahoma")));
    const double size = settings_Number(section, QStringLiteral("Fontsize"), QStringLiteral("8"));
    font.setPointSizeF(size >= 4 && size <= 72 ? size : 8);
    m_ctx.lstvPlaylist().setFont(font);
    m_list->setFont(font);
    m_combo->setFont(font);
    QPalette p = m_list->palette();
    const qint64 back = Colors::parse(settings_Read(section, QStringLiteral("BackgroundColour")),
                                      Colors::SystemWindow);
    const qint64 fore = Colors::parse(settings_Read(section, QStringLiteral("FontColour")),
                                      Colors::SystemWindowText);
    p.setColor(QPalette::Base, Colors::fromColorRef(back, p));
    QColor text = Colors::fromColorRef(fore, p);
    // A chosen light background under the theme's own text colour: the text the original had.
    if (!(back & 0x80000000) && (fore & 0x80000000))
        text = ui_TextOn(p.color(QPalette::Base), text);
    p.setColor(QPalette::Text, text);
    const QString image = settings_Read(section, QStringLiteral("PlaylistImage"));
    if (!image.isEmpty() && QFileInfo::exists(image)) {
        const QPixmap picture(image);
        if (!picture.isNull()) p.setBrush(QPalette::Base, QBrush(picture));
    }
    m_list->setPalette(p);
    m_combo->setPalette(p);
}

void FrmMain::closeEvent(QCloseEvent* event) {
    if (queryUnload && queryUnload())
        event->ignore();
    else
        event->accept();
}

void FrmMain::resizeEvent(QResizeEvent* event) {
    arrangeBands();
    QMainWindow::resizeEvent(event);
    Form_Resize();
}

void FrmMain::showEvent(QShowEvent* event) {
    arrangeBands();
    QMainWindow::showEvent(event);
}

void FrmMain::setPanelText(int panel, const QString& text) {
    QLabel* label = statusPanel(panel);
    const QString shown = text_Shown(text);
    if (label->text() == shown) return;
    label->setText(shown);
    // The panel's name is its text: a new song, a new count, a new time are told as they come.
    QAccessibleEvent event(label, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
    Q_EMIT panelTextChanged(panel, shown);
}

void FrmMain::setToolbarVisible(bool on) {
    for (QToolBar* bar : {m_toolbar, m_comboBand, m_sliderBand})
        bar->setVisible(on);
    arrangeBands();
}

void FrmMain::arrangeBands() {
    if (!m_sliderBand) return;
    // A band starts a new row when the row so far has no room left for it.
    const int room = width();
    int used = 0;
    for (QToolBar* bar : {m_toolbar, m_comboBand, m_sliderBand}) {
        const int need = bar->sizeHint().width();
        const bool wrap = bar != m_toolbar && used > 0 && used + need > room;
        if (wrap != toolBarBreak(bar)) {
            if (wrap)
                insertToolBarBreak(bar);
            else
                removeToolBarBreak(bar);
        }
        used = wrap ? need : used + need;
    }
}
