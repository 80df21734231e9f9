#pragma once
#include <QByteArray>
#include <QString>

class MainContext;

// The "what I am listening to" status line: the classic payload, built by its own rules, and
// sent as the D-Bus signal org.veldor.Messenger.StatusMessage while the menu item is on.
namespace Messenger {

constexpr unsigned kCopyDataKind = 1351;

// "\0Music\01\0{1} - {0}\0Title\0Artist\0\0" (the separators are backslash and zero); the real
// NUL that ends it is not part of the text.
QString messenger_Payload(const QString& title, const QString& artist, const QString& type,
                          const QString& album, const QString& format, bool enabled);
// The payload's bytes as they were sent: 16-bit characters, little-endian, with the final NUL.
QByteArray messenger_Bytes(const QString& payload);

// Builds and sends the payload; nothing listening is no error.
void messenger_Update(const QString& title, const QString& artist, const QString& type,
                      const QString& album, const QString& format, bool enabled);
void mnuMessengerShowSongsBeingPlayed_Click(MainContext& ctx);

} // namespace Messenger
