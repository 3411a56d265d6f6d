// Transfer encodings: what is encoded decodes to the same bytes, decoders take anything, and
// lines keep their limits.

#include "fuzz/fuzz.h"

#include "mailtext/base64.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/uuencode.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

std::string_view View(const CBuffer& buffer)
{
    return {buffer, static_cast<std::size_t>(buffer.GetLength())};
}

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
    FUZZ_CHECK(View(back) == bytes);
    if (lineLen > 0)
        FUZZ_CHECK(LongestLine(View(text)) <= static_cast<std::size_t>(lineLen));

    EncodeQuotedPrintable(data, len, 0, text);
    DecodeQuotedPrintable(text, back);
    FUZZ_CHECK(View(back) == bytes);
    FUZZ_CHECK(LongestLine(View(text)) <= 76);

    // Line ends are made CR LF: encoding the decoded text again changes nothing.
    EncodeQuotedPrintable(data, len, 1, text);
    FUZZ_CHECK(LongestLine(View(text)) <= 76);
    DecodeQuotedPrintable(text, back);
    CBuffer again;
    EncodeQuotedPrintable(reinterpret_cast<const unsigned char*>(back.GetBuffer()),
                          back.GetLength(), 1, again);
    FUZZ_CHECK(again == text);

    EncodeUuencode(nullptr, nullptr, data, len, text);
    FUZZ_CHECK(DecodeUuencode(text, nullptr, nullptr, &back) == 1);
    FUZZ_CHECK(View(back) == bytes);

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
    return 0;
}
