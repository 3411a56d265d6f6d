// The viewer's reading of arbitrary bytes as a mail.

#include "fuzz/fuzz.h"
#include "tests/support/mail_properties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string fault = CheckMail(std::string(data, data + size));
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
    return 0;
}
