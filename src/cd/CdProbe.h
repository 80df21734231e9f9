#pragma once
#include "cd/CdDisc.h"

#include <QObject>
#include <optional>

// libcdio on a real drive can take seconds (a disc spinning up, a tray closing). The GUI thread
// asks here: the work runs on a worker thread and the caller waits a bounded time. What comes too
// late is kept for the next question and announced by `discRead`.
class CdProbe : public QObject {
    Q_OBJECT
public:
    static CdProbe& instance();

    // The disc in `drive`, or nothing when it did not answer within `waitMs`.
    std::optional<CdDisc> read(const QString& drive, int waitMs);
    // The last answer for `drive`, however old; nothing when it was never read.
    std::optional<CdDisc> cached(const QString& drive) const;
    // The drives to scan; the last list when the system is slow to answer.
    QStringList drives(int waitMs);
    // Opens the tray without waiting for it.
    void eject(const QString& drive);

Q_SIGNALS:
    void discRead(const QString& drive);

private:
    CdProbe() = default;
};
