#include "system/Messenger.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace Messenger {

QString messenger_Payload(const QString& title, const QString& artist, const QString& type,
                          const QString& album, const QString& format, bool enabled) {
    const QString sep = QStringLiteral("\\0");
    // Enabled goes in as the absolute value of the classic true (-1).
    const QString fields[] = {
        type, enabled ? QStringLiteral("1") : QStringLiteral("0"), format, title, artist, album};
    QString text = sep;
    for (const QString& f : fields)
        text += f + sep;
    return text;
}

QByteArray messenger_Bytes(const QString& payload) {
    QByteArray bytes;
    bytes.reserve((payload.size() + 1) * 2);
    for (QChar c : payload) {
        bytes.append(char(c.unicode() & 0xff));
        bytes.append(char(c.unicode() >> 8));
    }
    bytes.append('\0').append('\0');
    return bytes;
}

void messenger_Update(const QString& title, const QString& artist, const QString& type,
                      const QString& album, const QString& format, bool enabled) {
    const QString payload = messenger_Payload(title, artist, type, album, format, enabled);
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/mpris/MediaPlayer2"),
                                                     QStringLiteral("org.veldor.Messenger"),
                                                     QStringLiteral("StatusMessage"));
    signal << kCopyDataKind << payload << messenger_Bytes(payload);
    QDBusConnection::sessionBus().send(signal);
}

void mnuMessengerShowSongsBeingPlayed_Click(MainContext& ctx) {
    Commands& c = ctx.commands();
    const QString menu = QStringLiteral("mnuMessengerShowSongsBeingPlayed");
    const QString key = QStringLiteral("MessengerShowSongsBeingPlayed");
    if (c.isChecked(menu)) {
        c.setChecked(menu, false);
        settings_Write(QStringLiteral("Settings"), key, 0);
        return;
    }
    c.setChecked(menu, true);
    settings_Write(QStringLiteral("Settings"), key, 1);
    Dialogs::msgBox(
        QStringLiteral("Updating the 'Personal Status Message' will work only if you enable (Turn "
                       "on \"What I'm Listening To\") within MSN Messenger/Windows Live "
                       "Messenger.\n\nYou must be using MSN Messenger 7+ (or Windows Live "
                       "Messenger) for this function to work."),
        Dialogs::vbExclamation, QStringLiteral("Personal Status Message"));
}

} // namespace Messenger
