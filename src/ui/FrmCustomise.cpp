#include "ui/FrmCustomise.h"

#include "core/Colors.h"
#include "core/Dialogs.h"
#include "core/Settings.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {
const char* const kLabels[] = {"Background", "Border",      "Light Lines",
                               "Dark Lines", "Sliders",     "Inset Background",
                               "Inset Text", "Window Text", "Window Text Background"};
} // namespace

FrmCustomise::FrmCustomise(QWidget* parent) : QDialog(parent), m_colours(MiniModeColours::read()) {
    setObjectName(QStringLiteral("FrmCustomise"));
    setWindowTitle(QStringLiteral("Customise"));
    setAccessibleName(QStringLiteral("Customise"));
    auto* grid = new QGridLayout;
    for (int i = 0; i < MiniModeColours::Count; ++i) {
        auto* picture = new QFrame(this);
        picture->setObjectName(QStringLiteral("picColour_%1").arg(i));
        picture->setAccessibleName(QString::fromLatin1(kLabels[i]));
        picture->setFrameShape(QFrame::Box);
        picture->setFixedSize(36, 20);
        picture->setAutoFillBackground(true);
        picture->setFocusPolicy(Qt::StrongFocus);
        picture->installEventFilter(this);
        m_pictures[size_t(i)] = picture;
        auto* caption = new QLabel(QString::fromLatin1(kLabels[i]) + QLatin1Char(':'), this);
        caption->setBuddy(picture);
        grid->addWidget(caption, i, 0);
        grid->addWidget(picture, i, 1);
    }
    auto button = [this](const char* name, const QString& text) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    QPushButton* colour = button("cmdColour", QStringLiteral("Select Colour"));
    QPushButton* font = button("cmdFont", QStringLiteral("Change Font..."));
    QPushButton* defaults = button("cmdDefault", QStringLiteral("Default"));
    QPushButton* save = button("cmdSave", QStringLiteral("Save"));
    QPushButton* close = button("cmdClose", QStringLiteral("Close"));
    connect(colour, &QPushButton::clicked, this, &FrmCustomise::cmdColour_Click);
    connect(font, &QPushButton::clicked, this, &FrmCustomise::cmdFont_Click);
    connect(defaults, &QPushButton::clicked, this, &FrmCustomise::cmdDefault_Click);
    connect(save, &QPushButton::clicked, this, &FrmCustomise::cmdSave_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* side = new QVBoxLayout;
    for (QPushButton* b : {colour, font, defaults})
        side->addWidget(b);
    side->addStretch(1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(save);
    bottom->addWidget(close);
    auto* top = new QHBoxLayout;
    top->addLayout(grid);
    top->addLayout(side);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addLayout(bottom);
    showColours();
    select(0);
}

void FrmCustomise::showColours() {
    for (int i = 0; i < MiniModeColours::Count; ++i) {
        QPalette p = m_pictures[size_t(i)]->palette();
        p.setColor(QPalette::Window, Colors::fromColorRef(m_colours.colour[size_t(i)], palette()));
        m_pictures[size_t(i)]->setPalette(p);
    }
}

void FrmCustomise::select(int index) {
    if (index < 0 || index >= MiniModeColours::Count) return;
    m_selected = index;
    // The chosen picture is ringed in the highlight colour, which shows on any fill.
    for (int i = 0; i < MiniModeColours::Count; ++i) {
        QFrame* picture = m_pictures[size_t(i)];
        QPalette p = picture->palette();
        p.setColor(QPalette::WindowText,
                   palette().color(i == index ? QPalette::Highlight : QPalette::WindowText));
        picture->setPalette(p);
        picture->setLineWidth(i == index ? 3 : 1);
    }
}

bool FrmCustomise::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn) {
        for (int i = 0; i < MiniModeColours::Count; ++i)
            if (watched == m_pictures[size_t(i)]) select(i);
        if (event->type() == QEvent::MouseButtonPress) return true;
    }
    if (event->type() == QEvent::MouseButtonDblClick) {
        cmdColour_Click();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FrmCustomise::cmdColour_Click() {
    const QColor now = Colors::fromColorRef(m_colours.colour[size_t(m_selected)], palette());
    const auto chosen = Dialogs::chooseColor(QStringLiteral("Select Colour"), now);
    if (!chosen) return;
    m_colours.colour[size_t(m_selected)] = Colors::toColorRef(*chosen);
    showColours();
}

void FrmCustomise::cmdDefault_Click() {
    m_colours = MiniModeColours::defaults();
    showColours();
}

void FrmCustomise::cmdSave_Click() {
    m_colours.write();
    if (m_font)
        settings_Write(QStringLiteral("MiniModeSettings"), QStringLiteral("Font"),
                       m_font->toString());
    Q_EMIT saved();
    accept();
}

void FrmCustomise::cmdFont_Click() {
    const QFont now =
        m_font ? *m_font : storedFont(parentWidget() ? parentWidget()->font() : font());
    if (const auto chosen = Dialogs::chooseFont(QStringLiteral("Change Font"), now))
        m_font = chosen;
}

QFont FrmCustomise::storedFont(const QFont& fallback) {
    const QString text =
        settings_Read(QStringLiteral("MiniModeSettings"), QStringLiteral("Font")).trimmed();
    QFont f;
    if (text.isEmpty() || !f.fromString(text) || f.family().isEmpty()) return fallback;
    // A size the small window cannot hold is nonsense from the file.
    if (f.pointSizeF() > 0) f.setPointSizeF(qBound(6.0, f.pointSizeF(), 28.0));
    if (f.pixelSize() > 0) f.setPixelSize(qBound(8, f.pixelSize(), 37));
    return f;
}
