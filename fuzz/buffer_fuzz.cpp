// CBuffer against a std::string, through arbitrary operations.

#include "fuzz/fuzz.h"
#include "tests/support/buffer_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzResult(DriveBuffer(data, size).c_str());
}
