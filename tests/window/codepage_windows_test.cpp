// The library's own code tables against those of Windows, exhaustively.

#include "platform/nls.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace tlvn;

namespace {

constexpr UINT kOwnPages[] = {932,   1250,  1251,  1252,  1253,  1254,  1257, 20127,
                              20866, 28591, 28592, 28594, 28595, 28597, 28599};

struct Decoded {
    WString units;
    bool loss;
    bool operator==(const Decoded&) const = default;
};

Decoded BySystem(UINT page, const std::string& text)
{
    const int length = static_cast<int>(text.size());
    WCHAR units[8];
    const int size = MultiByteToWideChar(page, 0, text.data(), length, units, 8);
    const int strict =
        MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, text.data(), length, units, 8);
    MultiByteToWideChar(page, 0, text.data(), length, units, 8);
    return {WString(units, static_cast<std::size_t>(size)), strict == 0};
}

Decoded ByLibrary(UINT page, const std::string& text)
{
    WString units;
    const int result = ConvertToUtf16(page, text, units);
    return {units, result == kConvertedWithLoss};
}

} // namespace

// A wrong entry, a wrong replacement or a wrong idea of how many bytes a bad lead byte takes
// along: every byte and, in the double-byte page, every pair and every pair before a letter.
TEST(CodePageTables, DecodeAsWindowsDoes)
{
    for (const UINT page : kOwnPages) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            const Decoded own = ByLibrary(page, text);
            Decoded system = BySystem(page, text);
            if (page == 20127) // Windows drops the high bit, at most places without a word
                system.loss = byte >= 0x80;
            ASSERT_EQ(own, system) << page << ' ' << byte;
        }
    }
    for (int pair = 0x8000; pair < 0x10000; ++pair) {
        std::string text{static_cast<char>(pair >> 8), static_cast<char>(pair)};
        ASSERT_EQ(ByLibrary(932, text), BySystem(932, text)) << pair;
        text += 'A';
        ASSERT_EQ(ByLibrary(932, text), BySystem(932, text)) << pair;
    }
}

// A unit that Windows can encode and the table cannot, the reverse, or another code preferred.
TEST(CodePageTables, EncodeAsWindowsDoesWithoutBestFit)
{
    for (const UINT page : kOwnPages) {
        for (unsigned unit = 0; unit < 0x10000; ++unit) {
            const WCHAR c = static_cast<WCHAR>(unit);
            char bytes[8];
            BOOL usedDefault = FALSE;
            const int size = WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, &c, 1, bytes, 8,
                                                 nullptr, &usedDefault);
            std::string converted;
            const int result = ConvertFromUtf16(page, WStringView(&c, 1), converted);
            ASSERT_EQ(result, usedDefault ? kConvertedWithLoss : kConverted) << page << ' ' << unit;
            ASSERT_EQ(converted, std::string(bytes, static_cast<std::size_t>(size)))
                << page << ' ' << unit;
        }
    }
}

// UTF-8 of every scalar value, both ways. (What malformed text becomes differs between the
// versions of Windows, that it is malformed does not.)
TEST(CodePageTables, Utf8AsWindowsDoes)
{
    for (unsigned c = 0; c < 0x110000; c += c < 0x10000 ? 1 : 37) {
        if (c >= 0xD800 && c < 0xE000)
            continue;
        WString units;
        if (c >= 0x10000) {
            units += static_cast<WCHAR>(0xD7C0 + (c >> 10));
            units += static_cast<WCHAR>(0xDC00 + (c & 0x3FF));
        } else {
            units += static_cast<WCHAR>(c);
        }
        char bytes[8];
        const int size = WideCharToMultiByte(65001, 0, units.data(), static_cast<int>(units.size()),
                                             bytes, 8, nullptr, nullptr);
        const std::string text(bytes, static_cast<std::size_t>(size));
        std::string converted;
        ASSERT_EQ(ConvertFromUtf16(65001, units, converted), kConverted) << c;
        ASSERT_EQ(converted, text) << c;
        ASSERT_EQ(ByLibrary(65001, text), BySystem(65001, text)) << c;
    }
    for (int first = 0x80; first < 0x100; ++first) {
        for (int second = 0; second < 0x100; ++second) {
            for (const char* rest : {"", "\x80", "\xBF\x80", "\x80x"}) {
                std::string text{static_cast<char>(first), static_cast<char>(second)};
                text += rest;
                ASSERT_EQ(ByLibrary(65001, text).loss, BySystem(65001, text).loss)
                    << first << ' ' << second;
            }
        }
    }
}
