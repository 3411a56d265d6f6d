// What every fuzz target includes. A target is one function over arbitrary bytes that states
// properties with FUZZ_CHECK; it is linked with libFuzzer for fuzzing, and with a driver that
// replays fuzz/corpus/<target>/ for the tests.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: property violated: %s\n", __FILE__, __LINE__,             \
                         #condition);                                                              \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

// What a target that is told its fault by a text returns; ends the program unless the text is
// empty, or null.
inline int FuzzResult(const char* fault)
{
    if (fault != nullptr && *fault != '\0')
        std::fprintf(stderr, "%s\n", fault);
    FUZZ_CHECK(fault == nullptr || *fault == '\0');
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
