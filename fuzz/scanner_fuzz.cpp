// Scanners and searches against simple models.

#include "fuzz/fuzz.h"
#include "tests/support/scanner_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const char* const fault = CheckScanners(data, size);
    if (fault != nullptr)
        std::fprintf(stderr, "%s\n", fault);
    FUZZ_CHECK(fault == nullptr);
    return 0;
}
