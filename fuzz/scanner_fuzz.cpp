// Scanners and searches against simple models.

#include "fuzz/fuzz.h"
#include "tests/support/scanner_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzResult(CheckScanners(data, size));
}
