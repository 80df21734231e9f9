#include "cd/CdDrive.h"

#include "cd/CdProbe.h"
#include "core/wmpPlayer.h"

#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

namespace {

constexpr int kFramesPerSecond = 75;

QString twoDigits(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

QString msf(qint32 frames) {
    const int seconds = frames / kFramesPerSecond;
    return twoDigits(seconds / 60) + ':' + twoDigits(seconds % 60) + ':' +
           twoDigits(frames % kFramesPerSecond);
}

bool allExist(const QStringList& files) {
    return std::all_of(files.begin(), files.end(),
                       [](const QString& f) { return QFileInfo::exists(f); });
}

} // namespace

CdDrive::CdDrive(std::function<wmpPlayer*()> engine, QObject* parent)
    : QObject(parent), m_makeEngine(std::move(engine)) {
    // A real drive that answered late: its disc is taken as soon as it is known.
    connect(&CdProbe::instance(), &CdProbe::discRead, this, [this](const QString& drive) {
        if (!m_open || drive != m_drive || m_loaded) return;
        if (const auto disc = CdProbe::instance().cached(drive)) {
            m_disc = *disc;
            if (m_disc.hasAudio() && m_parked < m_disc.firstLsn()) m_parked = m_disc.firstLsn();
        }
    });
}

CdDrive::~CdDrive() {
    releaseEngine();
}

int CdDrive::send(const QString& command, QString* reply) {
    if (reply) reply->clear();
    const QString text = command.simplified();
    const QString lower = text.toLower();
    QStringList words = lower.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty()) return UnrecognizedKeyword;
    words.removeAll(QStringLiteral("wait"));

    if (words[0] == QLatin1String("open")) {
        // "open {drive} type cdaudio alias cdr ...": a path may hold blanks of its own.
        const int at = lower.lastIndexOf(QLatin1String(" type cdaudio"));
        if (at <= 5) return UnrecognizedKeyword;
        if (m_open) return InvalidDeviceName; // the alias is taken until closed
        return open(text.mid(5, at - 5).trimmed());
    }
    if (words.size() < 2 || words[1] != QLatin1String("cdr") || !m_open) return InvalidDeviceName;
    const QString verb = words[0];
    if (verb == QLatin1String("close")) {
        close();
        return Ok;
    }
    if (verb == QLatin1String("set")) {
        const QStringList rest = words.mid(2);
        if (rest ==
            QStringList{QStringLiteral("time"), QStringLiteral("format"), QStringLiteral("tmsf")})
            return Ok;
        if (rest == QStringList{QStringLiteral("door"), QStringLiteral("open")}) {
            releaseEngine();
            m_doorOpen = true;
            CdProbe::instance().eject(m_drive);
            return Ok;
        }
        return UnrecognizedKeyword;
    }
    if (verb == QLatin1String("status")) return status(words.mid(2), reply);
    if (verb == QLatin1String("seek")) {
        if (words.size() != 4 || words[2] != QLatin1String("to")) return UnrecognizedKeyword;
        return seek(words[3]);
    }
    if (verb == QLatin1String("play")) return words.size() == 2 ? play() : UnrecognizedKeyword;
    if (verb == QLatin1String("stop")) return stop();
    return UnrecognizedKeyword;
}

int CdDrive::open(const QString& drive) {
    if (drive.isEmpty() || !QFileInfo::exists(drive)) return CannotOpen;
    m_open = true;
    m_drive = drive;
    m_doorOpen = m_loaded = false;
    // An image on disk reads at once. A drive (or anything else that may hang) is asked on a
    // worker: slow to answer, it opens without a disc for now and its answer lands later.
    if (CdMedia::isImage(drive) && QFileInfo(drive).isFile())
        m_disc = CdMedia::read(drive);
    else
        m_disc = CdProbe::instance().read(drive, kOpenWaitMs).value_or(CdDisc{});
    m_parked = m_disc.firstLsn();
    m_lastRefresh = QDateTime::currentMSecsSinceEpoch();
    return Ok;
}

void CdDrive::close() {
    releaseEngine();
    m_open = false;
    m_drive.clear();
    m_disc = {};
}

void CdDrive::releaseEngine() {
    if (m_engine && m_loaded) m_engine->Stop();
    m_loaded = false;
    m_seekTarget = -1;
}

bool CdDrive::mediaPresent() {
    if (m_doorOpen) return false;
    if (CdMedia::isImage(m_drive)) {
        // An image taken away while in use is a disc taken out.
        if (!allExist(m_disc.files)) {
            releaseEngine();
            return false;
        }
        return m_disc.hasAudio();
    }
    // A real drive is asked again now and then, never waited for.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (!m_loaded && now - m_lastRefresh > 2000) {
        m_lastRefresh = now;
        CdProbe::instance().read(m_drive, 0);
    }
    return m_disc.hasAudio();
}

bool CdDrive::playing() const {
    return m_open && m_loaded && m_engine && m_engine->PlayState() == wmpPlayer::Playing;
}

qint32 CdDrive::frame() const {
    if (!m_loaded || !m_engine) return m_parked;
    const double at = m_engine->CurrentPosition();
    const qint32 reported = m_disc.firstLsn() + qint32(std::floor(at * kFramesPerSecond + 0.5));
    if (m_seekTarget < 0) return reported;
    // Until a seek lands the engine tells its old place: a report counts once it lies between
    // the target (less the engine's block of samples) and what could have played since.
    const qint64 ms = QDateTime::currentMSecsSinceEpoch() - m_seekSince;
    const qint32 played = qint32(ms * kFramesPerSecond / 1000) + kFramesPerSecond / 2;
    const bool landed =
        reported >= m_seekTarget - kFramesPerSecond / 5 && reported <= m_seekTarget + played;
    if (ms > 1500 || (landed && reported >= m_seekTarget)) m_seekTarget = -1;
    return m_seekTarget < 0 ? reported : m_seekTarget;
}

int CdDrive::trackAt(qint32 frame) const {
    int track = 1;
    for (int i = 0; i < m_disc.tracks.size(); ++i)
        if (m_disc.tracks[i].lsn <= frame) track = i + 1;
    return track;
}

void CdDrive::park(qint32 frame) {
    m_parked = frame;
    if (!m_loaded || !m_engine) return;
    m_seekTarget = frame;
    m_seekSince = QDateTime::currentMSecsSinceEpoch();
    m_engine->setCurrentPosition(double(frame - m_disc.firstLsn()) / kFramesPerSecond);
}

int CdDrive::status(const QStringList& what, QString* reply) {
    const QString item = what.join(QLatin1Char(' '));
    QString answer;
    int result = Ok;
    if (item == QLatin1String("media present")) {
        answer = mediaPresent() ? QStringLiteral("true") : QStringLiteral("false");
    } else if (item == QLatin1String("mode")) {
        if (m_doorOpen)
            answer = QStringLiteral("open");
        else if (!mediaPresent())
            answer = QStringLiteral("not ready");
        else
            answer = playing() ? QStringLiteral("playing") : QStringLiteral("stopped");
    } else if (!mediaPresent()) {
        result = DeviceNotReady;
    } else if (item == QLatin1String("number of tracks")) {
        answer = QString::number(m_disc.tracks.size());
    } else if (item == QLatin1String("length")) {
        answer = msf(m_disc.totalFrames());
    } else if (what.size() == 3 && what[0] == QLatin1String("length") &&
               what[1] == QLatin1String("track")) {
        bool ok = false;
        const int n = what[2].toInt(&ok);
        if (!ok || n < 1 || n > m_disc.tracks.size()) return OutOfRange;
        answer = msf(m_disc.tracks[n - 1].frames);
    } else if (item == QLatin1String("position")) {
        const qint32 at = frame();
        const int track = trackAt(at);
        const qint32 into = qMax(0, at - m_disc.tracks[track - 1].lsn);
        answer = twoDigits(track) + ':' + msf(into);
    } else {
        result = UnrecognizedKeyword;
    }
    if (reply) *reply = answer;
    return result;
}

int CdDrive::seek(const QString& to) {
    if (!mediaPresent()) return DeviceNotReady;
    const QStringList f = to.split(QLatin1Char(':'));
    QVector<int> n;
    for (const QString& part : f) {
        bool ok = false;
        n << part.toInt(&ok);
        if (!ok || n.last() < 0) return OutOfRange;
    }
    const int tracks = int(m_disc.tracks.size());
    int track = 0;
    qint32 into = 0;
    if (n.size() == 1) {
        track = n[0];
    } else if (n.size() == 3) {
        // Minutes, seconds and frames alone: a place in the track the drive stands in.
        track = trackAt(frame());
        into = (n[0] * 60 + n[1]) * kFramesPerSecond + n[2];
    } else if (n.size() == 4) {
        track = n[0];
        into = (n[1] * 60 + n[2]) * kFramesPerSecond + n[3];
    } else {
        return OutOfRange;
    }
    if (track < 1 || track > tracks) return OutOfRange;
    const CdTrack& t = m_disc.tracks[track - 1];
    if (into >= t.frames) return OutOfRange;
    // A seek leaves the drive stopped at the new place.
    if (playing()) m_engine->Pause();
    park(t.lsn + into);
    return Ok;
}

int CdDrive::play() {
    if (!mediaPresent()) return DeviceNotReady;
    if (!m_engine && m_makeEngine) {
        m_engine = m_makeEngine();
        if (m_engine)
            connect(m_engine, &wmpPlayer::EndOfStream, this, [this] {
                // The disc played to its end: the drive stands at its start again.
                m_loaded = false;
                m_parked = m_disc.firstLsn();
            });
    }
    if (!m_engine) return DeviceNotReady;
    Q_EMIT aboutToPlay();
    if (!m_loaded) {
        m_engine->setFileName(QStringLiteral("cdda://") + m_drive);
        m_loaded = true;
        // A fresh load stands at the disc's start already.
        if (m_parked != m_disc.firstLsn()) park(m_parked);
    }
    m_engine->Play();
    if (m_engine->PlayState() == wmpPlayer::Playing) return Ok;
    m_loaded = false; // the engine could not read the disc
    return DeviceNotReady;
}

int CdDrive::stop() {
    if (!mediaPresent()) return DeviceNotReady;
    if (playing()) {
        m_parked = frame();
        m_engine->Pause();
    }
    return Ok;
}
