#include "cd/CdProbe.h"

#include <QCoreApplication>
#include <QHash>
#include <QMetaObject>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace {

template <class T> struct Job {
    std::mutex lock;
    std::condition_variable done;
    bool finished = false;
    T result{};
};

std::mutex g_lock;
QHash<QString, CdDisc> g_discs;
QHash<QString, std::shared_ptr<Job<CdDisc>>> g_running;
QStringList g_drives;
std::shared_ptr<Job<QStringList>> g_listing;

template <class T> bool waitFor(Job<T>& job, int ms) {
    std::unique_lock<std::mutex> l(job.lock);
    return job.done.wait_for(l, std::chrono::milliseconds(qMax(0, ms)),
                             [&job] { return job.finished; });
}

template <class T, class F> void finish(Job<T>& job, F&& work) {
    T result = work();
    std::lock_guard<std::mutex> l(job.lock);
    job.result = std::move(result);
    job.finished = true;
    job.done.notify_all();
}

} // namespace

CdProbe& CdProbe::instance() {
    static CdProbe* probe = new CdProbe; // threads that finish late may still reach it at exit
    return *probe;
}

std::optional<CdDisc> CdProbe::read(const QString& drive, int waitMs) {
    std::shared_ptr<Job<CdDisc>> job;
    {
        std::lock_guard<std::mutex> l(g_lock);
        job = g_running.value(drive);
        if (!job) {
            // One question at a time per drive: a slow drive is not asked again while it thinks.
            job = std::make_shared<Job<CdDisc>>();
            g_running.insert(drive, job);
            std::thread([job, drive] {
                finish(*job, [&drive] { return CdMedia::read(drive); });
                {
                    std::lock_guard<std::mutex> l(g_lock);
                    g_discs.insert(drive, job->result);
                    if (g_running.value(drive) == job) g_running.remove(drive);
                }
                QMetaObject::invokeMethod(
                    &CdProbe::instance(), [drive] { Q_EMIT CdProbe::instance().discRead(drive); },
                    Qt::QueuedConnection);
            }).detach();
        }
    }
    if (!waitFor(*job, waitMs)) return std::nullopt;
    std::lock_guard<std::mutex> l(job->lock);
    return job->result;
}

std::optional<CdDisc> CdProbe::cached(const QString& drive) const {
    std::lock_guard<std::mutex> l(g_lock);
    const auto it = g_discs.constFind(drive);
    if (it == g_discs.constEnd()) return std::nullopt;
    return *it;
}

QStringList CdProbe::drives(int waitMs) {
    std::shared_ptr<Job<QStringList>> job;
    {
        std::lock_guard<std::mutex> l(g_lock);
        if (!g_listing) {
            g_listing = job = std::make_shared<Job<QStringList>>();
            std::thread([job] {
                finish(*job, [] { return CdMedia::drives(); });
                std::lock_guard<std::mutex> l(g_lock);
                g_drives = job->result;
                if (g_listing == job) g_listing.reset();
            }).detach();
        } else {
            job = g_listing;
        }
    }
    if (waitFor(*job, waitMs)) {
        std::lock_guard<std::mutex> l(job->lock);
        return job->result;
    }
    // The named drive needs no answer from the system.
    std::lock_guard<std::mutex> l(g_lock);
    QStringList known = g_drives;
    const QString named = CdMedia::namedDrive();
    known.removeAll(named);
    if (!named.isEmpty()) known.prepend(named);
    return known;
}

void CdProbe::eject(const QString& drive) {
    std::thread([drive] { CdMedia::eject(drive); }).detach();
}
