#pragma once
#include <QByteArray>
#include <QString>

// Moving the audio of a media file back to make room for a larger tag. The new content is
// written to a file beside the original, which it then replaces by a rename: a failure or a kill
// at any moment leaves either the old file or the new one, never none.
namespace TagShift {

struct Result {
    bool ok = false;
    int error = 0;
    QString description;
};

// The file becomes `count` bytes longer: its whole old content moves back by `count`, and `head`
// is laid over the start of the result (over the zeros gained, and the old tag's start when
// `head` is longer).
Result shiftFile(const QString& filename, qint64 count, const QByteArray& head);

} // namespace TagShift
