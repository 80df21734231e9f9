#include "cd/modCDAudio.h"

namespace modCDAudio {
namespace {

Sender g_send;
bool g_open = false;

// The reply buffer holds 30 characters, the last one its NUL.
constexpr int kReplyLength = 30;

int send(const QString& command, QString* reply = nullptr) {
    if (reply) reply->clear();
    if (!g_send) return 1;
    QString text;
    const int result = g_send(command, &text);
    if (reply) {
        const int nul = text.indexOf(QChar());
        *reply = text.left(nul < 0 ? kReplyLength - 1 : qMin(nul, kReplyLength - 1));
    }
    return result;
}

// A number of the reply; a reply not in that form gives nothing, as a failed conversion did.
bool number(const QString& text, int& value) {
    bool ok = false;
    value = text.trimmed().toInt(&ok);
    return ok;
}

} // namespace

void cd_SetSender(Sender sender) {
    g_send = std::move(sender);
    g_open = false;
}

bool CDDeviceOpen() {
    return g_open;
}

bool cd_Close() {
    g_open = false;
    return send(QStringLiteral("close cdr")) == 0;
}

bool cd_Open(const QString& drive) {
    cd_Close();
    QString reply;
    g_open = send(QStringLiteral("open %1 Type cdaudio alias cdr wait shareable").arg(drive),
                  &reply) == 0;
    send(QStringLiteral("set cdr time format tmsf wait"));
    return g_open;
}

bool cd_MediaPresent() {
    if (!g_open) return false;
    QString reply;
    send(QStringLiteral("status cdr media present"), &reply);
    return reply.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

bool cd_Eject() {
    if (!g_open) return false;
    send(QStringLiteral("set cdr door open"));
    return true;
}

int cd_TrackCount() {
    if (!cd_MediaPresent()) return 0;
    QString reply;
    send(QStringLiteral("status cdr number of tracks wait"), &reply);
    int n = 0;
    return number(reply.left(2), n) ? n : 0;
}

QString cd_CurrentTrack() {
    if (!cd_MediaPresent()) return {};
    QString reply;
    send(QStringLiteral("status cdr position"), &reply);
    int n = 0;
    return number(reply.left(2), n) ? QString::number(n) : QString();
}

QString cd_TotalLength() {
    if (!g_open || !cd_MediaPresent()) return QStringLiteral("None");
    QString reply;
    send(QStringLiteral("status cdr length wait"), &reply);
    return reply.left(5);
}

QString cd_Mode() {
    if (!g_open) return {};
    QString reply;
    send(QStringLiteral("status cdr mode"), &reply);
    return reply;
}

bool cd_SeekTrack(qint32 track) {
    if (track <= 0 || track > cd_TrackCount()) return false;
    return send(QStringLiteral("seek cdr to %1").arg(track)) == 0;
}

qint16 cd_TrackLength(qint32 track) {
    if (!g_open || cd_TrackCount() < 1) return 0;
    QString reply;
    send(QStringLiteral("status cdr length track %1").arg(track), &reply);
    const QString mmss = reply.left(5);
    int minutes = 0, seconds = 0;
    if (mmss.size() != 5 || !number(mmss.left(2), minutes) || !number(mmss.mid(3, 2), seconds))
        return 0;
    return qint16(minutes * 60 + seconds);
}

bool cd_SeekPosition(const QString& position) {
    // A text of another length is still sent: only the drive's answer decides.
    if (cd_IsPlaying()) return false;
    return send(QStringLiteral("seek cdr to ") + position) == 0;
}

qint32 cd_PositionSeconds() {
    if (!g_open || !cd_MediaPresent()) return 0;
    QString reply;
    send(QStringLiteral("status cdr position"), &reply);
    int minutes = 0, seconds = 0;
    if (!number(reply.mid(3, 2), minutes) || !number(reply.mid(6, 2), seconds)) return 0;
    return minutes * 60 + seconds;
}

bool cd_Play() {
    return send(QStringLiteral("play cdr")) == 0;
}

bool cd_Stop() {
    return send(QStringLiteral("stop cdr wait")) == 0;
}

bool cd_Pause() {
    // The drive has no pause of its own: a later play goes on where it stopped.
    return send(QStringLiteral("stop cdr wait")) == 0;
}

bool cd_IsPlaying() {
    if (!g_open) return false;
    return cd_Mode().contains(QLatin1String("playing"));
}

} // namespace modCDAudio
