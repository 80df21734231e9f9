#pragma once
#include "ui/ctlKL_wPanel.h"

#include <QIcon>

// A text button of the family.
class ctlKL_wTextPanel : public ctlKL_wPanel {
    Q_OBJECT
public:
    explicit ctlKL_wTextPanel(QWidget* parent = nullptr);
    QString Caption() const { return m_caption; }
    void setCaption(const QString& text);
    qint64 ForeColor() const { return m_fore; }
    void setForeColor(qint64 c) { setColour(m_fore, c, "ForeColor"); }
    void setCaptionFont(const QFont& font);
    QVariantMap WriteProperties() const override;
    void ReadProperties(const QVariantMap& bag) override;

protected:
    void paintContent(QPainter& p, const QRect& r) override;

private:
    QString m_caption;
    qint64 m_fore = 0;
};

// An image button: NormalImage at rest, ClickImage while pressed.
class ctlKL_wImageButton : public ctlKL_wPanel {
    Q_OBJECT
public:
    explicit ctlKL_wImageButton(QWidget* parent = nullptr);
    QIcon NormalImage() const { return m_normal; }
    void setNormalImage(const QIcon& image);
    QIcon ClickImage() const { return m_click; }
    void setClickImage(const QIcon& image);

protected:
    void paintContent(QPainter& p, const QRect& r) override;

private:
    QIcon m_normal, m_click;
};
