// Fuzzes ZKArrayIO::loadBoolArray_Binary: the input is the file. Whatever the
// file holds, the array comes back empty and nothing of the file's counts is
// allocated.
#include "ZKFuzzSupport.h"

#include "ZKArrayIO.h"
#include "ZKBoolArray.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ZKFuzz::ScratchFile scratch("boolarraybinary");
    scratch.write(data, size);

    ZKBoolArray tags;
    // Start from a non-empty array when the input asks for one, so that both
    // the empty and the filled state are released.
    if (size > 0 && (data[0] & 1))
        tags.resize(1 + data[0], true);
    ZKArrayIO::loadBoolArray_Binary(scratch.pathC(), tags);
    ZKFuzz::check(tags.size() == 0 && tags.empty(), "a loaded bool array is always empty");
    tags.push_back(true);
    ZKFuzz::check(tags.size() == 1 && tags.get(0), "the emptied array is usable");
    return 0;
}
