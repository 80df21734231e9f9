#pragma once
#include <QString>
#include <QStringList>
#include <QVector>

// One audio track of a disc, in CD frames (75 a second) from the start of the disc.
struct CdTrack {
    int number = 0; // on the disc, data tracks counted
    qint32 lsn = 0;
    qint32 frames = 0;
    QString title; // CD-TEXT, empty when the disc has none
};

// What a drive holds, as far as audio goes: its audio tracks in disc order. A data disc, a
// drive without a disc, a broken image all read as a disc with no tracks.
struct CdDisc {
    bool readable = false; // the drive could be opened at all
    QVector<CdTrack> tracks;
    QString title, performer;
    QStringList files; // of an image: the .cue and what it names

    bool hasAudio() const { return !tracks.isEmpty(); }
    qint32 firstLsn() const { return tracks.isEmpty() ? 0 : tracks.first().lsn; }
    qint32 totalFrames() const;
};

// libcdio's view of drives and discs. Every call here may block on a real drive, so callers on
// the GUI thread go through CdProbe.
namespace CdMedia {

bool isImage(const QString& drive);
// The drive VELDOR_CD_DEVICE names, as an absolute path; empty without one.
QString namedDrive();
// That drive first, then the optical drives the system has.
QStringList drives();
CdDisc read(const QString& drive);
// An image stays where it is; a drive opens its tray.
bool eject(const QString& drive);
// The files an image needs (the .cue and every file it names); a device gives none.
QStringList imageFiles(const QString& cue);

} // namespace CdMedia
