// The viewer's reading of arbitrary bytes as a mail.

#include "fuzz/fuzz.h"
#include "tests/support/mail_properties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzResult(CheckMail(std::string(data, data + size)).c_str());
}
