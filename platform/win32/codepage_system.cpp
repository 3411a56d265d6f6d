// The code pages that Windows converts.

#include "platform/codepage.h"

#include <algorithm>
#include <climits>

namespace tlvn {
namespace {

// UTF-7 takes neither flags nor a default character and does not report errors.
constexpr UINT kUtf7 = 65000;

// Bytes of one unit when the page has it; else 0.
int EncodeUnit(UINT codePage, WCHAR unit, char* out, int capacity)
{
    BOOL usedDefault = FALSE;
    const int size = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, &unit, 1, out, capacity,
                                         nullptr, &usedDefault);
    return usedDefault ? 0 : size;
}

} // namespace

UINT GetSystemCodePage()
{
    return GetACP();
}

namespace codepage {

bool IsSystemPageKnown(UINT codePage)
{
    switch (codePage) {
    case 936:
    case 949:
    case 950:
    case kUtf7:
        return IsValidCodePage(codePage) != FALSE;
    default:
        return false;
    }
}

ConversionResult DecodeSystemPage(UINT codePage, const char* text, int length, WString& out)
{
    out.clear();
    if (!IsSystemPageKnown(codePage))
        return kUnknownCodePage;
    if (length == 0)
        return kConverted;
    out.resize(static_cast<std::size_t>(MaxUtf16Length(codePage, length)));
    const int capacity = static_cast<int>(out.size());
    const DWORD strict = codePage == kUtf7 ? 0 : MB_ERR_INVALID_CHARS;
    int size = MultiByteToWideChar(codePage, strict, text, length, out.data(), capacity);
    // What is not ASCII is not UTF-7.
    bool loss = codePage == kUtf7 &&
                std::any_of(text, text + length, [](char c) { return (c & 0x80) != 0; });
    if (size == 0 && strict != 0) {
        loss = true;
        size = MultiByteToWideChar(codePage, 0, text, length, out.data(), capacity);
    }
    out.resize(static_cast<std::size_t>(size));
    return loss ? kConvertedWithLoss : kConverted;
}

ConversionResult EncodeSystemPage(UINT codePage, const WCHAR* text, int length, std::string& out,
                                  char replacement)
{
    out.clear();
    if (!IsSystemPageKnown(codePage))
        return kUnknownCodePage;
    if (length == 0)
        return kConverted;
    const INT64 most = MaxNarrowLength(codePage, length);
    const int capacity = static_cast<int>(most < INT_MAX ? most : INT_MAX);
    out.resize(static_cast<std::size_t>(capacity));
    const bool utf7 = codePage == kUtf7;
    BOOL usedDefault = FALSE;
    int size =
        WideCharToMultiByte(codePage, utf7 ? 0 : WC_NO_BEST_FIT_CHARS, text, length, out.data(),
                            capacity, utf7 ? nullptr : "?", utf7 ? nullptr : &usedDefault);
    if (size == 0) {
        out.clear();
        return kUnknownCodePage;
    }
    if (usedDefault && replacement != '?') {
        size = 0;
        for (int i = 0; i < length; ++i) {
            const int done = EncodeUnit(codePage, text[i], &out[static_cast<std::size_t>(size)],
                                        capacity - size);
            size += done;
            if (done == 0 && replacement != '\0')
                out[static_cast<std::size_t>(size++)] = replacement;
        }
    }
    out.resize(static_cast<std::size_t>(size));
    return usedDefault ? kConvertedWithLoss : kConverted;
}

} // namespace codepage
} // namespace tlvn
