#include "cd/CdDisc.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cdio/cdio.h>
#include <cdio/cdtext.h>
#include <cdio/logging.h>
#include <mutex>

namespace {

// libcdio talks on stderr about every drive it cannot read; a scan tries many.
void quietLog() {
    static std::once_flag once;
    std::call_once(once, [] { cdio_log_set_handler([](cdio_log_level_t, const char*) {}); });
}

QString cdText(cdtext_t* text, cdtext_field_t field, track_t track) {
    if (!text) return {};
    const char* s = cdtext_get_const(text, field, track);
    return s ? QString::fromUtf8(s).trimmed() : QString();
}

} // namespace

qint32 CdDisc::totalFrames() const {
    qint32 sum = 0;
    for (const CdTrack& t : tracks)
        sum += t.frames;
    return sum;
}

namespace CdMedia {

bool isImage(const QString& drive) {
    return drive.endsWith(QLatin1String(".cue"), Qt::CaseInsensitive);
}

QString namedDrive() {
    const QString named = qEnvironmentVariable("VELDOR_CD_DEVICE").trimmed();
    return named.isEmpty() ? QString() : QFileInfo(named).absoluteFilePath();
}

QStringList drives() {
    quietLog();
    QStringList list;
    const QString named = namedDrive();
    if (!named.isEmpty()) list << named;
    if (char** devices = cdio_get_devices(DRIVER_DEVICE)) {
        for (char** d = devices; *d; ++d) {
            const QString dev = QString::fromLocal8Bit(*d);
            if (!list.contains(dev)) list << dev;
        }
        cdio_free_device_list(devices);
    }
    return list;
}

QStringList imageFiles(const QString& cue) {
    if (!isImage(cue)) return {};
    QStringList files{cue};
    QFile f(cue);
    if (!f.open(QIODevice::ReadOnly)) return files;
    static const QRegularExpression line(
        QStringLiteral("^\\s*FILE\\s+\"?([^\"]+?)\"?\\s+\\w+\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    const QDir dir = QFileInfo(cue).dir();
    for (const QByteArray& raw : f.readAll().split('\n')) {
        const auto m = line.match(QString::fromUtf8(raw).trimmed());
        if (m.hasMatch()) files << dir.absoluteFilePath(m.captured(1));
    }
    return files;
}

CdDisc read(const QString& drive) {
    quietLog();
    CdDisc disc;
    if (drive.isEmpty()) return disc;
    if (isImage(drive)) {
        // libcdio reads past the end of a short .bin without complaint; a missing one it refuses.
        disc.files = imageFiles(drive);
        for (const QString& f : disc.files)
            if (!QFileInfo::exists(f)) return disc;
    }
    const QByteArray path = QFile::encodeName(drive);
    CdIo_t* cd = isImage(drive) ? cdio_open_cue(path.constData())
                                : cdio_open(path.constData(), DRIVER_DEVICE);
    if (!cd) return disc;
    disc.readable = true;
    const track_t first = cdio_get_first_track_num(cd);
    const track_t count = cdio_get_num_tracks(cd);
    if (first != CDIO_INVALID_TRACK && count != CDIO_INVALID_TRACK && count > 0) {
        cdtext_t* text = cdio_get_cdtext(cd);
        disc.title = cdText(text, CDTEXT_FIELD_TITLE, 0);
        disc.performer = cdText(text, CDTEXT_FIELD_PERFORMER, 0);
        const lsn_t leadout = cdio_get_track_lsn(cd, CDIO_CDROM_LEADOUT_TRACK);
        for (int n = first; n < first + count; ++n) {
            const auto t = track_t(n);
            const lsn_t start = cdio_get_track_lsn(cd, t);
            const lsn_t next =
                n + 1 < first + count ? cdio_get_track_lsn(cd, track_t(n + 1)) : leadout;
            if (start == CDIO_INVALID_LSN || next == CDIO_INVALID_LSN) break;
            // A truncated image ends its disc early: what lies past the end is not there.
            if (next <= start || (leadout != CDIO_INVALID_LSN && start >= leadout)) break;
            if (cdio_get_track_format(cd, t) != TRACK_FORMAT_AUDIO) continue;
            CdTrack track;
            track.number = n;
            track.lsn = start;
            track.frames = qMin<qint32>(next, leadout) - start;
            track.title = cdText(text, CDTEXT_FIELD_TITLE, t);
            disc.tracks << track;
        }
    }
    cdio_destroy(cd);
    return disc;
}

bool eject(const QString& drive) {
    quietLog();
    if (drive.isEmpty() || isImage(drive)) return !drive.isEmpty();
    const QByteArray path = QFile::encodeName(drive);
    return cdio_eject_media_drive(path.constData()) == DRIVER_OP_SUCCESS;
}

} // namespace CdMedia
