// The finders of addresses and URLs find what their rules, taken literally, find.

#include "fuzz/fuzz.h"
#include "tests/support/finder_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr CodeType kTypes[] = {CT_SJIS, CT_GB2312, CT_UTF8, CT_EUC, CT_KOI8R};
    // The model takes its time.
    constexpr std::size_t kMost = 2000;
    if (size < 1 || size > kMost)
        return 0;
    const CodeType type = kTypes[data[0] % std::size(kTypes)];
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    return FuzzResult(finder_model::Compare(text, tlvn::WidenText(text), type));
}
