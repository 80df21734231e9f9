#pragma once
#include <QObject>
#include <QString>

// The media control every file plays through, audio and video alike. One implementation drives
// libmpv; another only keeps state, for start-up without an engine and for tests.
class wmpPlayer : public QObject {
    Q_OBJECT
public:
    enum State : int { Stopped = 0, Paused = 1, Playing = 2 };

    using QObject::QObject;
    ~wmpPlayer() override = default;

    // Setting a name loads that file; a name that does not exist (by custom "1") releases the
    // file last played.
    virtual QString FileName() const = 0;
    virtual void setFileName(const QString& name) = 0;

    virtual void Play() = 0;
    virtual void Pause() = 0;
    virtual void Stop() = 0;

    // Seconds.
    virtual double CurrentPosition() const = 0;
    virtual void setCurrentPosition(double seconds) = 0;
    virtual double Duration() const = 0;

    virtual int PlayState() const = 0;

    // Attenuation in 1/100 dB: 0 is full, -6000 is 60 dB down.
    virtual int Volume() const = 0;
    virtual void setVolume(int hundredthsDb) = 0;
    // 1/100 dB: negative attenuates the right channel, positive the left.
    virtual int Balance() const = 0;
    virtual void setBalance(int hundredthsDb) = 0;

Q_SIGNALS:
    // The medium played to its end (not raised by Stop or by loading another file).
    void EndOfStream(int result);
};
