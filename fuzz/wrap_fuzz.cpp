// Wrapping gives what its rules, taken literally, give: from the start of the line, from any row
// on, and whatever lies out of a row's reach.

#include "fuzz/fuzz.h"
#include "tests/support/wrap_reference.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The reference takes its time.
    constexpr std::size_t kMost = 2000;
    if (size > kMost)
        return 0;
    static CFont* const font = [] {
        auto* const made = new CFont;
        const LOGFONTW description = CFontInfo().MakeLogFont(96, 128);
        made->CreateFontIndirect(&description);
        return made;
    }();
    static auto* const widths = new tlvn::CharWidths;

    ByteSource source(data, size);
    const wrap_reference::Case c = wrap_reference::MakeCase(source);
    widths->Select(nullptr, *font, c.metrics.GetCodeType());
    const char* differs = wrap_reference::Compare(c, *widths);
    if (differs == nullptr)
        differs = wrap_reference::CompareReach(c, *widths, source.Text(200));
    return FuzzResult(differs);
}
