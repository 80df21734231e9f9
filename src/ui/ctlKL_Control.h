#pragma once
#include <QColor>
#include <QVariantMap>
#include <QWidget>

// What the ctlKL_ family shares: colours held as COLORREF values (system colours included,
// resolved against the widget's palette when painted), and one property bag per control whose
// keys are the ones the controls are stored under.
class ctlKL_Control : public QWidget {
    Q_OBJECT
public:
    explicit ctlKL_Control(QWidget* parent = nullptr);

    bool Enabled() const { return m_enabled; }
    void setEnabledProperty(bool on);

    // The stored properties, with every key present (defaults where never set).
    virtual QVariantMap WriteProperties() const;
    // Takes what the bag holds; missing keys keep the current value.
    virtual void ReadProperties(const QVariantMap& bag);

Q_SIGNALS:
    // A stored property changed: its key.
    void PropertyChanged(const QString& key);

protected:
    QColor colour(qint64 colorRef) const;
    // Stores a colour property and announces it; true when it changed.
    bool setColour(qint64& field, qint64 value, const char* key);
    static qint64 colourFrom(const QVariantMap& bag, const char* key, qint64 current);

private:
    bool m_enabled = true;
};

// The 1-pixel border and the light and dark edge lines of the panels and buttons.
void ctlKL_PaintEdges(QPainter& p, const QRect& r, const QColor& border, const QColor& topLeft,
                      const QColor& bottomRight);
