// Transfer encodings: what is encoded decodes to the same bytes, decoders take anything and do not
// give more than they should, and lines keep their limits.

#include "fuzz/fuzz.h"

#include "mailtext/base64.h"
#include "mailtext/binhex.h"
#include "mailtext/hex.h"
#include "mailtext/imap_utf7.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/uuencode.h"
#include "tests/support/text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

// The longest line, its line end not counted.
std::size_t LongestLine(std::string_view text)
{
    std::size_t longest = 0;
    while (!text.empty()) {
        const std::size_t end = text.find("\r\n");
        longest = std::max(longest, std::min(end, text.size()));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
    }
    return longest;
}

// Escapes, of the text up to its first zero byte.
void CheckHex(const std::string& terminated)
{
    const std::string text(terminated.c_str());
    CBuffer encoded, back;
    for (const int encodeAll : {0, 1}) {
        EncodeHex(text.c_str(), encodeAll, encoded);
        FUZZ_CHECK(encoded.GetLength() <= static_cast<int>(text.size()) * 3);
        DecodeHex(encoded, back);
        FUZZ_CHECK(Text(back) == text);
    }
    EncodeUrlEncode(text.c_str(), encoded);
    std::string query(encoded);
    std::replace(query.begin(), query.end(), '+', ' ');
    DecodeHex(query.c_str(), back);
    FUZZ_CHECK(Text(back) == text);
    DecodeHex(text.c_str(), back);
    FUZZ_CHECK(back.GetLength() <= static_cast<int>(text.size()));
}

// Names of folders, of the bytes as units of one byte and of two.
void CheckImap(std::string_view bytes)
{
    std::vector<WCHAR> units(bytes.begin(), bytes.end());
    for (std::size_t i = 1; i < bytes.size(); i += 2)
        units.push_back(
            static_cast<WCHAR>(static_cast<BYTE>(bytes[i - 1]) << 8 | static_cast<BYTE>(bytes[i])));
    const int count = static_cast<int>(units.size());
    const CStringW name(units.data(), count);
    CBuffer text;
    CStringW back;
    EncodeImap4UTF7(units.data(), count, text);
    FUZZ_CHECK(DecodeImap4UTF7(text, text.GetLength(), back) == 1);
    FUZZ_CHECK(back == name);
    for (const char c : Text(text))
        FUZZ_CHECK(c >= 0x20 && c <= 0x7E);
    EncodeImap4Base64(units.data(), count, text);
    DecodeImap4Base64(text, back);
    FUZZ_CHECK(back == name);
    DecodeImap4UTF7(bytes.data(), static_cast<int>(bytes.size()), back);
    FUZZ_CHECK(back.GetLength() <= static_cast<int>(bytes.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const int lineLen = data[0] % 100;
    ++data;
    --size;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const int len = static_cast<int>(size);
    CBuffer text, back;

    EncodeBase64(data, len, lineLen, text);
    DecodeBase64(text, back);
    FUZZ_CHECK(Text(back) == bytes);
    if (lineLen > 0)
        FUZZ_CHECK(LongestLine(Text(text)) <= static_cast<std::size_t>(lineLen));

    EncodeQuotedPrintable(data, len, 0, text);
    DecodeQuotedPrintable(text, back);
    FUZZ_CHECK(Text(back) == bytes);
    FUZZ_CHECK(LongestLine(Text(text)) <= 76);

    // Line ends are made CR LF: encoding the decoded text again changes nothing.
    EncodeQuotedPrintable(data, len, 1, text);
    FUZZ_CHECK(LongestLine(Text(text)) <= 76);
    DecodeQuotedPrintable(text, back);
    CBuffer again;
    EncodeQuotedPrintable(reinterpret_cast<const unsigned char*>(back.GetBuffer()),
                          back.GetLength(), 1, again);
    FUZZ_CHECK(again == text);

    EncodeUuencode(nullptr, nullptr, data, len, text);
    FUZZ_CHECK(DecodeUuencode(text, nullptr, nullptr, &back) == 1);
    FUZZ_CHECK(Text(back) == bytes);

    const std::string terminated(bytes);
    DecodeBase64(terminated.c_str(), back);
    FUZZ_CHECK(back.GetLength() <= (len + 3) / 4 * 3);
    DecodeQuotedPrintable(terminated.c_str(), back);
    FUZZ_CHECK(back.GetLength() <= len);
    IsQuotedPrintable(terminated.c_str());
    CStringA mode, name;
    DecodeUuencode(terminated.c_str(), &mode, &name, &back);
    FUZZ_CHECK(back.GetLength() <= len);
    DecodeUuencode(("begin 644 x\n" + terminated).c_str(), nullptr, nullptr, &back);
    FUZZ_CHECK(back.GetLength() <= len + 12);

    ExtractBase64Text(terminated.data(), len, back);
    FUZZ_CHECK(bytes.find(Text(back)) != bytes.npos);
    CStringW wide;
    DecodeImap4Base64(terminated.c_str(), wide);
    FUZZ_CHECK(wide.GetLength() <= len);
    DecodeBinHex(("(This file must be converted with BinHex 4.0)" + terminated).c_str(), back);
    FUZZ_CHECK(back.GetLength() <= len * 100);
    CheckHex(terminated);
    CheckImap(bytes);
    return 0;
}
