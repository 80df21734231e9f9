#include "playlists/PlaylistAutosave.h"

#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "playlists/ListFiles.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

namespace {

int g_quietMs = 1000;
int g_longestMs = 5000;

// Empty `bytes` removes the file. Runs on a worker thread: no dialogs, no log here.
QString writeDefault(const QString& path, const QByteArray& bytes) {
    if (bytes.isEmpty()) {
        if (QFile::exists(path) && !QFile::remove(path)) return QStringLiteral("cannot remove it");
        return {};
    }
    // The one checked writer: synced file, rename, synced folder; it says nothing itself.
    const modFiles::WriteResult result = modFiles::file_WriteAtomicResult(path, bytes);
    return result.ok ? QString() : result.reason;
}

class Autosave : public QObject {
public:
    explicit Autosave(MainContext& ctx) : QObject(&ctx), m_ctx(ctx) {
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, [this] { save(); });
        m_pool.setMaxThreadCount(1); // writes in the order they were taken
    }
    ~Autosave() override { stop(); }

    // From here on changes are kept; what start-up loads is already on disk.
    void watch() {
        ListModel& list = m_ctx.lstvPlaylist();
        const auto changed = [this] { schedule(); };
        connect(&list, &QAbstractItemModel::rowsInserted, this, changed);
        connect(&list, &QAbstractItemModel::rowsRemoved, this, changed);
        connect(&list, &QAbstractItemModel::rowsMoved, this, changed);
        connect(&list, &QAbstractItemModel::modelReset, this, changed);
        connect(&list, &QAbstractItemModel::layoutChanged, this, changed);
        connect(&list, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                    if (roles.isEmpty() || roles.contains(Qt::DisplayRole) ||
                        roles.contains(Qt::EditRole))
                        schedule();
                });
    }

    void stop() {
        m_stopped = true;
        m_timer.stop();
        m_pool.waitForDone();
    }

private:
    void schedule() {
        if (m_stopped) return;
        if (!m_waiting.isValid()) m_waiting.start();
        const qint64 left = g_longestMs - m_waiting.elapsed();
        m_timer.start(int(qBound(qint64(0), left, qint64(g_quietMs))));
    }

    void save() {
        m_waiting.invalidate();
        const ListModel& list = m_ctx.lstvPlaylist();
        QByteArray bytes = list.count() > 0 ? ListFiles::encode(list) : QByteArray();
        const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
        if (hash == m_lastHash) return;
        m_lastHash = hash;
        const QString path = playlist_DefaultPath();
        QPointer<Autosave> self(this);
        m_pool.start([self, path, bytes = std::move(bytes)] {
            const QString error = writeDefault(path, bytes);
            QCoreApplication* app = QCoreApplication::instance();
            if (error.isEmpty() || !app) return;
            QMetaObject::invokeMethod(
                app,
                [self, path, error] {
                    if (!self || self->m_reported) return;
                    self->m_reported = true;
                    window_WriteLog(QStringLiteral("The playlist could not be kept in %1: %2.")
                                        .arg(path, error));
                },
                Qt::QueuedConnection);
        });
    }

    MainContext& m_ctx;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    QThreadPool m_pool;
    QByteArray m_lastHash;
    bool m_stopped = false;
    bool m_reported = false;
};

Autosave* autosaveOf(MainContext& ctx) {
    // No Q_OBJECT here, so findChild could not tell it from another object of that name.
    for (QObject* child : ctx.children())
        if (auto* saver = dynamic_cast<Autosave*>(child)) return saver;
    return nullptr;
}

} // namespace

void PlaylistAutosave_install(MainContext& ctx) {
    if (autosaveOf(ctx)) return;
    auto* a = new Autosave(ctx);
    a->setObjectName(QStringLiteral("PlaylistAutosave"));
    // Armed once the event loop runs, after start-up has filled the list.
    QTimer::singleShot(0, a, [a] { a->watch(); });
}

void PlaylistAutosave_stop(MainContext& ctx) {
    if (Autosave* a = autosaveOf(ctx)) a->stop();
}

void PlaylistAutosave_setDelays(int quietMs, int longestMs) {
    g_quietMs = quietMs;
    g_longestMs = longestMs;
}
