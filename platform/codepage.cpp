// Chooses the codec of a code page.

#include "platform/codepage.h"

#include "platform/multibyte.h"

#include <algorithm>
#include <climits>
#include <new>

namespace tlvn {
namespace {

constexpr UINT k932 = 932;
constexpr UINT kUtf8 = 65001;
constexpr UINT kUtf7 = 65000;
constexpr UINT kKorean = 949;
constexpr UINT kEucKr = 51949;

// EUC-KR is a subset of 949, and mail so labelled carries the rest of 949 too.
constexpr UINT CodecOf(UINT codePage)
{
    return codePage == kEucKr ? kKorean : codePage;
}

// Whether the library's own code converts the page.
bool IsOwnPage(UINT codePage)
{
    return codePage == k932 || codePage == kUtf8 ||
           codepage::FindSingleBytePage(codePage) != nullptr;
}

constexpr ConversionResult ResultOf(bool loss)
{
    return loss ? kConvertedWithLoss : kConverted;
}

// The own pages only.
int DecodeOwn(UINT codePage, const char* text, int length, WCHAR* out, bool& loss)
{
    switch (codePage) {
    case k932:
        return codepage::Decode932(text, length, out, loss);
    case kUtf8:
        return codepage::DecodeUtf8(text, length, out, loss);
    default:
        return codepage::DecodeSingleByte(*codepage::FindSingleBytePage(codePage), text, length,
                                          out, loss);
    }
}

INT64 EncodeOwn(UINT codePage, const WCHAR* text, int length, char* out, char replacement,
                bool& loss)
{
    switch (codePage) {
    case k932:
        return codepage::Encode932(text, length, out, replacement, loss);
    case kUtf8:
        return codepage::EncodeUtf8(text, length, out, replacement, loss);
    default:
        return codepage::EncodeSingleByte(*codepage::FindSingleBytePage(codePage), text, length,
                                          out, replacement, loss);
    }
}

// A text beyond int lengths could not be held anyway.
int LengthOf(std::size_t size)
{
    if (size > INT_MAX)
        throw std::bad_alloc();
    return static_cast<int>(size);
}

} // namespace

ConversionResult ConvertToUtf16(UINT codePage, std::string_view text, WString& out)
{
    codePage = CodecOf(codePage);
    const int length = LengthOf(text.size());
    if (!IsOwnPage(codePage))
        return codepage::DecodeSystemPage(codePage, text.data(), length, out);
    out.resize(text.size());
    bool loss = false;
    out.resize(
        static_cast<std::size_t>(DecodeOwn(codePage, text.data(), length, out.data(), loss)));
    return ResultOf(loss);
}

ConversionResult ConvertFromUtf16(UINT codePage, WStringView text, std::string& out,
                                  char replacement)
{
    codePage = CodecOf(codePage);
    const int length = LengthOf(text.size());
    if (!IsOwnPage(codePage))
        return codepage::EncodeSystemPage(codePage, text.data(), length, out, replacement);
    out.resize(static_cast<std::size_t>(MaxNarrowLength(codePage, length)));
    bool loss = false;
    out.resize(static_cast<std::size_t>(
        EncodeOwn(codePage, text.data(), length, out.data(), replacement, loss)));
    return ResultOf(loss);
}

ConversionResult ConvertToUtf16(UINT codePage, const char* text, int length, WCHAR* out,
                                int capacity, int& written)
{
    codePage = CodecOf(codePage);
    written = 0;
    if (length < 0 || capacity < MaxUtf16Length(codePage, length))
        return kUnknownCodePage;
    if (IsOwnPage(codePage)) {
        bool loss = false;
        written = DecodeOwn(codePage, text, length, out, loss);
        return ResultOf(loss);
    }
    WString units;
    const ConversionResult result = codepage::DecodeSystemPage(codePage, text, length, units);
    if (result < 0 || units.size() > static_cast<std::size_t>(capacity))
        return kUnknownCodePage;
    written = static_cast<int>(units.size());
    std::copy(units.begin(), units.end(), out);
    return result;
}

ConversionResult ConvertFromUtf16(UINT codePage, const WCHAR* text, int length, char* out,
                                  INT64 capacity, int& written, char replacement)
{
    codePage = CodecOf(codePage);
    written = 0;
    if (length < 0 || capacity < MaxNarrowLength(codePage, length))
        return kUnknownCodePage;
    if (IsOwnPage(codePage)) {
        bool loss = false;
        const INT64 size = EncodeOwn(codePage, text, length, out, replacement, loss);
        if (size > INT_MAX)
            return kUnknownCodePage;
        written = static_cast<int>(size);
        return ResultOf(loss);
    }
    std::string bytes;
    const ConversionResult result =
        codepage::EncodeSystemPage(codePage, text, length, bytes, replacement);
    if (result < 0 || bytes.size() > INT_MAX || static_cast<INT64>(bytes.size()) > capacity)
        return kUnknownCodePage;
    written = static_cast<int>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), out);
    return result;
}

int MaxUtf16Length(UINT, int length)
{
    // No page gives more units than it takes bytes.
    return length;
}

INT64 MaxNarrowLength(UINT codePage, int length)
{
    switch (CodecOf(codePage)) {
    case kUtf8:
        return INT64{length} * codepage::kMaxBytesUtf8;
    case kUtf7:
        // A unit of its own between direct ones: "+", three characters of Base64, "-".
        return INT64{length} * 5;
    default:
        return codepage::FindSingleBytePage(codePage) != nullptr
                   ? INT64{length}
                   : INT64{length} * codepage::kMaxBytes932;
    }
}

bool IsCodePageKnown(UINT codePage)
{
    codePage = CodecOf(codePage);
    return IsOwnPage(codePage) || codepage::IsSystemPageKnown(codePage);
}

WString WidenText(std::string_view text)
{
    WString units;
    ConvertToUtf16(GetMultibytePage(), text, units);
    return units;
}

std::string NarrowText(WStringView text)
{
    std::string bytes;
    ConvertFromUtf16(GetMultibytePage(), text, bytes);
    return bytes;
}

WString Utf8ToUtf16(std::string_view utf8)
{
    WString wide;
    ConvertToUtf16(kUtf8, utf8, wide);
    return wide;
}

std::string Utf16ToUtf8(WStringView wide)
{
    std::string utf8;
    ConvertFromUtf16(kUtf8, wide, utf8);
    return utf8;
}

} // namespace tlvn
