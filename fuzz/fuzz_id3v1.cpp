#include "tags/TagFile.h"
#include "tags/clsID3v1.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TagFile file;
    file.openMemory(data, size);
    clsID3v1 tag;
    tag.load(QStringLiteral("fuzz.mp3"), file, true);
    return int(tag.Title().size() + tag.Genre().size()) < 0;
}
