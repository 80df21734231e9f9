#include "ui/ctlKL_Buttons.h"

#include <QPainter>

ctlKL_wTextPanel::ctlKL_wTextPanel(QWidget* parent) : ctlKL_wPanel(parent) {
    m_pressable = true;
}

void ctlKL_wTextPanel::setCaption(const QString& text) {
    if (m_caption == text) return;
    m_caption = text;
    setAccessibleName(QString(text).remove(QLatin1Char('&')));
    update();
    Q_EMIT PropertyChanged(QStringLiteral("Caption"));
}

void ctlKL_wTextPanel::setCaptionFont(const QFont& f) {
    setFont(f);
    update();
    Q_EMIT PropertyChanged(QStringLiteral("Font"));
}

QVariantMap ctlKL_wTextPanel::WriteProperties() const {
    QVariantMap bag = ctlKL_wPanel::WriteProperties();
    bag.insert(QStringLiteral("Caption"), m_caption);
    bag.insert(QStringLiteral("ForeColor"), m_fore);
    bag.insert(QStringLiteral("Font"), font().family());
    bag.insert(QStringLiteral("FontSize"), font().pointSizeF());
    bag.insert(QStringLiteral("FontBold"), font().bold());
    bag.insert(QStringLiteral("FontItalic"), font().italic());
    bag.insert(QStringLiteral("FontUnderline"), font().underline());
    bag.insert(QStringLiteral("FontStrikethru"), font().strikeOut());
    return bag;
}

void ctlKL_wTextPanel::ReadProperties(const QVariantMap& bag) {
    ctlKL_wPanel::ReadProperties(bag);
    setCaption(bag.value(QStringLiteral("Caption"), m_caption).toString());
    setForeColor(colourFrom(bag, "ForeColor", m_fore));
    QFont f = font();
    f.setFamily(bag.value(QStringLiteral("Font"), f.family()).toString());
    const double size = bag.value(QStringLiteral("FontSize"), f.pointSizeF()).toDouble();
    if (size > 0 && size < 500) f.setPointSizeF(size);
    f.setBold(bag.value(QStringLiteral("FontBold"), f.bold()).toBool());
    f.setItalic(bag.value(QStringLiteral("FontItalic"), f.italic()).toBool());
    f.setUnderline(bag.value(QStringLiteral("FontUnderline"), f.underline()).toBool());
    f.setStrikeOut(bag.value(QStringLiteral("FontStrikethru"), f.strikeOut()).toBool());
    setFont(f);
}

void ctlKL_wTextPanel::paintContent(QPainter& p, const QRect& r) {
    p.setPen(colour(m_fore));
    p.setFont(font());
    // A label shows its text up to the first NUL.
    const qsizetype nul = m_caption.indexOf(QChar(0));
    const QString shown = nul < 0 ? m_caption : m_caption.left(nul);
    p.drawText(r.translated(isPressed() ? 1 : 0, isPressed() ? 1 : 0),
               Qt::AlignCenter | Qt::TextShowMnemonic, shown);
}

ctlKL_wImageButton::ctlKL_wImageButton(QWidget* parent) : ctlKL_wPanel(parent) {
    m_pressable = true;
}

void ctlKL_wImageButton::setNormalImage(const QIcon& image) {
    m_normal = image;
    update();
    Q_EMIT PropertyChanged(QStringLiteral("NormalImage"));
}

void ctlKL_wImageButton::setClickImage(const QIcon& image) {
    m_click = image;
    update();
    Q_EMIT PropertyChanged(QStringLiteral("ClickImage"));
}

void ctlKL_wImageButton::paintContent(QPainter& p, const QRect& r) {
    const QIcon& icon = isPressed() && !m_click.isNull() ? m_click : m_normal;
    if (icon.isNull()) return;
    const int side = qMin(r.width(), r.height());
    // The icon paints at the device's pixel ratio, so an SVG face stays sharp at any scale.
    icon.paint(&p, QRect(r.center().x() - side / 2 + 1, r.center().y() - side / 2 + 1, side, side),
               Qt::AlignCenter, Enabled() ? QIcon::Normal : QIcon::Disabled);
}
