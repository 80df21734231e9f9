// The quick MPEG header search against the walk the rule describes: the same answer on every
// buffer, or the quick one goes.
#include "tags/modMedia.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    uint8_t head[4096 + 3] = {};
    std::memcpy(head, data, size < 4096 ? size : 4096);
    if (media_FindHeader(head) != media_FindHeaderWalk(head)) __builtin_trap();
    return 0;
}
