#include "tags/TagFile.h"
#include "tags/modMedia.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TagFile file;
    file.openMemory(data, size);
    media_ReadMP3Info(file, true);
    return media_LengthText().size() < 0;
}
