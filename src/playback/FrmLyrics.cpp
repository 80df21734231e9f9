#include "playback/FrmLyrics.h"

#include "core/App.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QVBoxLayout>

FrmLyrics::FrmLyrics(QWidget* parent)
    : QWidget(parent, Qt::Tool), m_text(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("FrmLyrics"));
    setWindowTitle(App::Title() + QStringLiteral(" Lyrics"));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_text->setObjectName(QStringLiteral("txtLyrics"));
    m_text->setAccessibleName(QStringLiteral("Lyrics"));
    m_text->setReadOnly(true);
    // The text fills the window at every size.
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
}

void FrmLyrics::closeEvent(QCloseEvent* event) {
    event->ignore();
}

void FrmLyrics::keyPressEvent(QKeyEvent* event) {
    if (keyTarget)
        keyTarget(event);
    else
        QWidget::keyPressEvent(event);
}
