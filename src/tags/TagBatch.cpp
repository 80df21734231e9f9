#include "tags/TagBatch.h"

#include "core/ListModel.h"
#include "core/MainContext.h"

#include <QElapsedTimer>

TagBatch::TagBatch(MainContext& ctx, QObject* parent) : QObject(parent), m_ctx(ctx) {
    m_tick.setSingleShot(true);
    m_tick.setInterval(0);
    connect(&m_tick, &QTimer::timeout, this, &TagBatch::step);
}

TagBatch::~TagBatch() {
    if (m_running) m_ctx.endBusy();
}

void TagBatch::start() {
    if (m_running) return;
    m_rows = m_ctx.lstvPlaylist().count();
    m_next = 1;
    m_cancelled = false;
    m_running = true;
    m_ctx.beginBusy(busyText());
    m_tick.start();
}

void TagBatch::runToEnd() {
    if (!m_running) start();
    while (m_running) {
        m_tick.stop();
        step();
    }
}

void TagBatch::step() {
    if (!m_running) return;
    QElapsedTimer clock;
    clock.start();
    // A message box inside a row lets the event loop run; the tick is not armed meanwhile, so
    // no slice starts inside another.
    while (m_next <= m_rows && !m_cancelled) {
        const int row = m_next++;
        Q_EMIT progress(row);
        doRow(row);
        if (clock.elapsed() >= SliceMs) break;
    }
    if (m_next > m_rows || m_cancelled) {
        finish();
        return;
    }
    endSlice(false);
    m_tick.start();
}

void TagBatch::finish() {
    endSlice(true);
    m_running = false;
    m_ctx.endBusy();
    Q_EMIT finished(m_cancelled);
}
