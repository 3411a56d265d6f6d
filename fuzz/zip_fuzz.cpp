// Any input as an archive gives nothing but the codes that there are.

#include "fuzz/fuzz.h"

#include "tests/support/zip_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    for (const char* password : {"", "pw"})
        FuzzResult(zip_check::Violation(data, size, password, 50));
    return 0;
}
