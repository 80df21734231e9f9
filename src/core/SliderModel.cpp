#include "core/SliderModel.h"

#include <QtGlobal>

SliderModel::SliderModel(int minimum, int maximum, int value, QObject* parent)
    : QObject(parent), m_min(minimum), m_max(qMax(minimum, maximum)),
      m_value(qBound(m_min, value, m_max)) {}

void SliderModel::setValue(int value) {
    value = qBound(m_min, value, m_max);
    if (value == m_value) return;
    m_value = value;
    Q_EMIT changed();
}

void SliderModel::setMaximum(int maximum) {
    maximum = qMax(m_min, maximum);
    if (maximum == m_max) return;
    m_max = maximum;
    m_value = qMin(m_value, m_max);
    Q_EMIT changed();
}

void SliderModel::setEnabled(bool on) {
    if (on == m_enabled) return;
    m_enabled = on;
    Q_EMIT changed();
}

void SliderModel::scroll(int value) {
    setValue(value);
    Q_EMIT scrolled(m_value);
}
