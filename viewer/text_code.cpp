#include "viewer/text_code.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "charcode/detect.h"
#include "foundation/buffer.h"
#include "platform/nls.h"

#include <algorithm>
#include <cstring>

namespace tlvn {

namespace {

constexpr char kEscape = '\x1B';

bool IsHigh(char c)
{
    return static_cast<unsigned char>(c) >= 0x80;
}

int Length(std::string_view bytes)
{
    return static_cast<int>(bytes.size());
}

bool IsLossless(CodeType type, std::string_view bytes)
{
    CBuffer wide;
    return ConvertToOtherCodeType2(type, bytes.data(), Length(bytes), CT_UNICODE, wide, 0) == 0;
}

// Two-byte sequences alone do not count: half-width katakana in Shift_JIS and single kanji in
// EUC-JP look like them.
bool IsCertainlyUtf8(std::string_view bytes)
{
    const bool longSequence = std::any_of(
        bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xE0; });
    return longSequence && IsUTF8(bytes.data(), Length(bytes)) != 0;
}

bool Contradicts(std::string_view bytes, CodeType label)
{
    const bool sevenBit = label == CT_JIS || label == CT_ASCII || label == CT_UTF7;
    if (sevenBit && std::any_of(bytes.begin(), bytes.end(), IsHigh))
        return true;
    if (label == CT_ASCII && bytes.find(kEscape) != bytes.npos)
        return true;
    if (label != CT_UTF8 && IsCertainlyUtf8(bytes))
        return true;
    return !IsLossless(label, bytes);
}

} // namespace

CodeType DetectTextCode(std::string_view bytes)
{
    if (bytes.find('\0') != bytes.npos)
        return DetectCodeType2(bytes.data(), Length(bytes));

    // The library looks at the first kilobyte; a long ASCII opening must not hide the rest.
    const auto first =
        std::find_if(bytes.begin(), bytes.end(), [](char c) { return IsHigh(c) || c == kEscape; });
    if (first == bytes.end())
        return CT_ASCII;
    bytes.remove_prefix(static_cast<std::size_t>(first - bytes.begin()));
    const CodeType type = DetectCodeType2(bytes.data(), Length(bytes));
    return type == CT_UNICODE ? DetectCodeType(bytes.data(), Length(bytes)) : type;
}

TextCode ChooseTextCode(std::string_view label, std::string_view bytes)
{
    const CodeType labelled =
        label.empty() ? CT_UNKNOWN : CharSetName2CodeExact(std::string(label).c_str());
    if (labelled != CT_UNKNOWN && !Contradicts(bytes, labelled))
        return {labelled, true};

    const CodeType detected = DetectTextCode(bytes);
    if (labelled != CT_UNKNOWN && (detected == labelled || !IsLossless(detected, bytes)))
        return {labelled, true};
    return {detected, false};
}

bool ConvertTextToUtf8(CodeType type, std::string_view bytes, std::string& utf8)
{
    CBuffer converted;
    const int result =
        ConvertToOtherCodeType2(type, bytes.data(), Length(bytes), CT_UNICODE, converted, 0);
    if (result < 0) {
        // The page is not to be had on this system: keep what is ASCII.
        utf8.clear();
        for (const char c : bytes) {
            if (IsHigh(c))
                utf8 += "\xEF\xBF\xBD";
            else
                utf8 += c;
        }
        return false;
    }

    const auto units = static_cast<std::size_t>(converted.GetLength()) / sizeof(WCHAR);
    WString wide(units, WCHAR{});
    if (units > 0)
        std::memcpy(wide.data(), converted.GetBuffer(), units * sizeof(WCHAR));
    WStringView text = wide;
    if (!text.empty() && text.front() == WCHAR{0xFEFF})
        text.remove_prefix(1);
    const bool exact = ConvertFromUtf16(65001, text, utf8) == kConverted;
    return exact && result == 0;
}

} // namespace tlvn
