#pragma once
#include "cd/CdDisc.h"
#include "core/wmpPlayer.h"

#include <QObject>
#include <QPointer>
#include <functional>

// The device behind the alias "cdr": answers the text commands the CD routines send, with the
// classic replies (positions "tt:mm:ss:ff", lengths "mm:ss:ff", "true", "playing"). The disc comes
// from libcdio, the sound from the media engine playing "cdda://{drive}", whose time runs from
// the first audio frame of the disc.
//
// Tracks are the disc's audio tracks numbered from 1, so a mixed-mode disc shows its songs only.
class CdDrive : public QObject {
    Q_OBJECT
public:
    // Error numbers as the classic interface gave them; 0 is success.
    enum Error : int {
        Ok = 0,
        UnrecognizedKeyword = 259,
        InvalidDeviceName = 263,
        DeviceNotReady = 276,
        OutOfRange = 282,
        CannotOpen = 275,
    };

    // `engine` makes the engine on first need; the drive does not own what it returns.
    explicit CdDrive(std::function<wmpPlayer*()> engine, QObject* parent = nullptr);
    ~CdDrive() override;

    // One command; `reply` (may be null) gets the answer text.
    int send(const QString& command, QString* reply);

    // How long opening waits for a drive before it counts as holding no disc for now.
    static constexpr int kOpenWaitMs = 80;

    bool isOpen() const { return m_open; }
    QString drive() const { return m_drive; }
    const CdDisc& disc() const { return m_disc; }
    bool playing() const;
    // The engine, when one was made.
    wmpPlayer* engine() const { return m_engine; }

Q_SIGNALS:
    // Sound is about to start: whatever else plays must stop now.
    void aboutToPlay();

private:
    int open(const QString& drive);
    void close();
    bool mediaPresent();
    int status(const QStringList& words, QString* reply);
    int seek(const QString& to);
    int play();
    int stop();
    qint32 frame() const;            // where the disc stands, in frames
    int trackAt(qint32 frame) const; // 1-based
    void park(qint32 frame);
    void releaseEngine();

    std::function<wmpPlayer*()> m_makeEngine;
    QPointer<wmpPlayer> m_engine;
    bool m_open = false;
    bool m_loaded = false; // the engine holds this disc
    bool m_doorOpen = false;
    QString m_drive;
    CdDisc m_disc;
    qint32 m_parked = 0;
    // The engine reports its old place until a seek has landed; until then the target stands.
    mutable qint32 m_seekTarget = -1;
    qint64 m_seekSince = 0;
    qint64 m_lastRefresh = 0;
};
