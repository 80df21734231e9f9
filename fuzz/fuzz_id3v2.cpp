#include "tags/TagFile.h"
#include "tags/clsID3v2.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TagFile file;
    file.openMemory(data, size);
    clsID3v2 tag;
    tag.load(QStringLiteral("fuzz.mp3"), file, true);
    // What was read must also build a tag again.
    tag.setTitle(QStringLiteral("x"));
    const QByteArray bytes = tag.tagBytes();
    TagFile again;
    again.openMemory(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
    clsID3v2 back;
    back.load(QStringLiteral("again.mp3"), again, true);
    return back.FrameCount() < 0;
}
