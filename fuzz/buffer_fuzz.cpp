// CBuffer against a std::string, through arbitrary operations.

#include "fuzz/fuzz.h"
#include "tests/support/buffer_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string fault = DriveBuffer(data, size);
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
    return 0;
}
