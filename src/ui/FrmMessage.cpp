#include "ui/FrmMessage.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

FrmMessage::FrmMessage(QWidget* parent) : QWidget(parent, Qt::Tool) {
    setObjectName(QStringLiteral("FrmMessage"));
    setAccessibleName(QStringLiteral("Progress"));
    setWindowTitle(QStringLiteral("Please Wait..."));
    setFont(QFont(QStringLiteral("Tahoma"), 8));
    auto* layout = new QVBoxLayout(this);
    for (int i = 0; i < 2; ++i) {
        m_lines[i] = new QLabel(this);
        m_lines[i]->setObjectName(QStringLiteral("lblLine%1").arg(i + 1));
        m_lines[i]->setAccessibleName(QStringLiteral("Progress line %1").arg(i + 1));
        m_lines[i]->setTextFormat(Qt::PlainText);
        m_lines[i]->setMinimumWidth(360);
        m_lines[i]->setMaximumWidth(640);
        layout->addWidget(m_lines[i]);
    }
    m_cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("cmdCancel"));
    m_cancel->setAccessibleName(QStringLiteral("Cancel"));
    layout->addWidget(m_cancel, 0, Qt::AlignRight);
    connect(m_cancel, &QPushButton::clicked, this, &FrmMessage::cancelRequested);
}

void FrmMessage::setLines(const QString& first, const QString& second) {
    m_lines[0]->setText(first);
    m_lines[1]->setText(second);
}

void FrmMessage::setSecondLine(const QString& text) {
    m_lines[1]->setText(text);
}

QString FrmMessage::line(int index) const {
    return m_lines[index == 2 ? 1 : 0]->text();
}

void FrmMessage::showCentred(QWidget* over) {
    adjustSize();
    QRect area;
    if (over && over->isVisible())
        area = over->frameGeometry();
    else if (QScreen* screen = QGuiApplication::primaryScreen())
        area = screen->availableGeometry();
    if (area.isValid()) move(area.center() - rect().center());
    show();
    raise();
}

void FrmMessage::closeEvent(QCloseEvent* event) {
    // Closing the window by its frame means the same as Cancel.
    Q_EMIT cancelRequested();
    event->ignore();
}
