#include "charcode/detect.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <string>

namespace {

// Allocations of the process so far. (A DLL has its own operator new: there only the test's own
// are counted.)
int g_allocations = 0;

} // namespace

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* const block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

namespace {

CodeType Detect(const std::string& text)
{
    return DetectCodeType(text.c_str(), static_cast<int>(text.size()));
}

} // namespace

// Each row is a branch of the scan.
TEST(DetectCodeType, DecidesByTheFirstTellingByte)
{
    const struct {
        std::string text;
        CodeType expected;
    } cases[] = {
        {"", CT_ASCII},
        {"plain\r\n", CT_ASCII},
        {"\x80\xA0\xFF", CT_ASCII},
        {"\x1B$B", CT_JIS},
        {"\x1B$@", CT_JIS},
        {"\x1B$A", CT_ASCII},
        {"\x1B(B", CT_JIS},
        {"\x1B(I", CT_JIS},
        {"\x1B(X", CT_ASCII},
        {"\x1BK", CT_JIS},
        {"\x1BH", CT_JIS},
        {"\x1BX", CT_ASCII},
        {"\x1B", CT_ASCII},
        {"\x81 \x1B$B", CT_SJIS}, // decided before the escape sequence
        {"\x1B$B\x82\xA0", CT_JIS},
        {"\xA4\xA2", CT_EUC}, // undecided at the end
        {"\x82\xA0", CT_SJIS},
        {"\xB1\xB2", CT_EUC},
        {"\xB1\xB2\x82\xA0", CT_SJIS},
        {"\xF0", CT_EUC},
        {"\x8E\xB1", CT_EUC},
        {"\x8E\x41", CT_SJIS},
        {"\x8E\x7F", CT_ASCII},
        {"\xB1\xF0", CT_EUC},
        {"\xB1 ", CT_ASCII},
        {"\xE0\x40", CT_SJIS},
        {"\xE0\xA0", CT_SJIS},
        {"\xE0\xA1", CT_EUC},
        {"\xE0\xA1\x82", CT_SJIS},
        {"\xE0\xFD", CT_EUC},
        {"\xE0\x7F", CT_ASCII},
        {"\xB1\xE0\x81", CT_SJIS}, // the run behind A1-DF, E0-EF
        {"\xB1\xE0\x8E\xFD", CT_EUC},
        {"\xB1\xE0\xA1\xA1 \x82", CT_SJIS}, // ended by the blank, undecided
        {"\xB1\xE0 \xF0", CT_EUC},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Detect(c.text), c.expected) << testing::PrintToString(c.text);
}

TEST(DetectCodeType, LooksAt1024Bytes)
{
    EXPECT_EQ(Detect(std::string(1023, 'a') + "\x82\xA0"), CT_SJIS);
    EXPECT_EQ(Detect(std::string(1024, 'a') + "\x82\xA0"), CT_ASCII);
    EXPECT_EQ(Detect(std::string(1021, 'a') + "\x1B$B"), CT_JIS);
    EXPECT_EQ(Detect(std::string(1022, 'a') + "\x1B$B"), CT_ASCII);
    EXPECT_EQ(Detect("\xB1\xE0" + std::string(1022, '\xA1') + "\x82"), CT_EUC);
    EXPECT_EQ(DetectCodeType(nullptr, 5), CT_ASCII);
    // Nothing behind the length is read as text.
    EXPECT_EQ(DetectCodeType("\x1B$B", 2), CT_ASCII);
}

// Sequences cut off by the end of a block of exactly their size, which the sanitizer watches;
// of a longer text nothing behind the first 1024 bytes is touched, be it there or not.
TEST(DetectCodeType, ReadsNothingBehindTheRangeAndAllocatesNothing)
{
    for (const std::string tail : {"\x1B", "\x1B$", "\x1B(", "\x8E", "\xB1", "\xE0", "\xB1\xE0",
                                   "\xB1\xE0\xA1", "\xE3\x81", "a"}) {
        for (const std::size_t size : {tail.size(), tail.size() + 20, std::size_t{1024}}) {
            const std::string text = std::string(size - tail.size(), 'a') + tail;
            const std::unique_ptr<char[]> block(new char[size]);
            text.copy(block.get(), size);
            const int len = static_cast<int>(size);
            const int before = g_allocations;
            const CodeType t = DetectCodeType(block.get(), len);
            if (size == 1024) {
                EXPECT_EQ(DetectCodeType(block.get(), 1 << 30), t);
            }
            EXPECT_FALSE(IsUTF8(block.get(), len));
            EXPECT_EQ(g_allocations, before);
            EXPECT_EQ(Detect(text), t);
            EXPECT_NE(DetectCodeType2(block.get(), len), CT_UTF8);
            for (const CodeType hint : {CT_JIS, CT_EUC, CT_SJIS, CT_UTF8, CT_UTF7})
                DetectCodeType3(block.get(), len, hint);
        }
    }
}

TEST(IsUtf8, NeedsWholeSequences)
{
    const struct {
        std::string text;
        int expected;
    } cases[] = {
        {"ascii", 0},
        {"", 0},
        {"\xE3\x81\x82", 1},
        {"\xE3\x81", 0},
        {"a\xC3\xA9z", 1},
        {"\xC3z", 0},
        {"\x80", 0},
        {"\xFE\x80\x80\x80\x80\x80\x80", 0},
        {"\xF8\x80\x80\x80\x80", 1},
        {"\xFC\x80\x80\x80\x80\x80", 1},
        {"\xFC\x80\x80\x80\x80", 0},
        {"\xC0\x80", 1},     // overlong
        {"\xED\xA0\x80", 1}, // surrogate
        {std::string(40, 'a') + "\xE3\x81\x82" + std::string(40, 'a') + "\x82", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsUTF8(c.text.data(), static_cast<int>(c.text.size())), c.expected);
}

// The blocks of the fast way against the definition, byte by byte: sequences of all lengths at
// every place of a block, with one byte changed in half of the texts.
TEST(IsUtf8, EqualsItsDefinition)
{
    const auto definition = [](const std::string& text) {
        int found = 0;
        for (std::size_t i = 0; i < text.size(); ++found) {
            const int lead = static_cast<unsigned char>(text[i++]);
            if (lead < 0x80) {
                --found;
                continue;
            }
            int count = 0;
            while (count < 8 && (lead << count & 0x80) != 0)
                ++count;
            if (count < 2 || count > 6)
                return 0;
            for (; count > 1; --count, ++i) {
                if (i == text.size() || (text[i] & 0xC0) != 0x80)
                    return 0;
            }
        }
        return found > 0 ? 1 : 0;
    };
    std::mt19937 engine(5);
    const auto random = [&] { return static_cast<unsigned>(engine()); };
    int valid = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        const unsigned kinds = 2 + random() % 5;
        for (unsigned n = random() % 80; n > 0; --n) {
            static const char* const kCharacters[] = {"a",
                                                      "\xE3\x81\x82",
                                                      "\xC3\xA9",
                                                      "bcdefghijklmno",
                                                      "\xF0\x9F\x98\x80",
                                                      "\xFC\x80\x80\x80\x80\x80"};
            text += kCharacters[random() % kinds];
        }
        if (round % 2 != 0 && !text.empty())
            text[random() % text.size()] = static_cast<char>(random());
        const int expected = definition(text);
        valid += expected;
        ASSERT_EQ(IsUTF8(text.data(), static_cast<int>(text.size())), expected)
            << testing::PrintToString(text);
    }
    EXPECT_GT(valid, 2000);
}

TEST(DetectCodeType2, TriesUtf8AndUtf16First)
{
    EXPECT_EQ(DetectCodeType2(nullptr, 3), CT_ASCII);
    EXPECT_EQ(DetectCodeType2("abc", 0), CT_ASCII);
    EXPECT_EQ(DetectCodeType2("\xE3\x81\x82", 3), CT_UTF8);
    EXPECT_EQ(DetectCodeType2("\x42\x30\x44\x30", 4), CT_UNICODE);
    EXPECT_EQ(DetectCodeType2("a", 1), CT_ASCII); // no whole unit
    EXPECT_EQ(DetectCodeType2("Hello, world", 12), CT_ASCII);
    EXPECT_EQ(DetectCodeType2("\x82\xA0\x82\xA2", 4), CT_SJIS);
    // A unit that Shift_JIS lacks, far from the beginning.
    std::string utf16;
    for (int i = 0; i < 1000; ++i)
        utf16 += "\x42\x30";
    EXPECT_EQ(DetectCodeType2(utf16.data(), 2000), CT_UNICODE);
    utf16.replace(1996, 2, "\xE9\x01");
    EXPECT_NE(DetectCodeType2(utf16.data(), 2000), CT_UNICODE);
}

TEST(DetectCodeType3, ChecksTheHint)
{
    const struct {
        std::string text;
        CodeType hint;
        CodeType expected;
    } cases[] = {
        {"\x82\xA0", CT_SJIS, CT_SJIS},
        {"\x82\xA0", CT_UNKNOWN, CT_SJIS},
        {"\x1B$B\x24\x22\x1B(B", CT_SJIS, CT_JIS}, // said Shift_JIS, is ISO-2022-JP
        {"\x1B$B\x24\x22\x1B(B", CT_EUC, CT_JIS},
        {"\xE3\x81\x82", CT_UTF8, CT_UTF8},
        {"\x82\xA0", CT_UTF8, CT_SJIS}, // not UTF-8
        {"\xA4\xA2", CT_EUC, CT_EUC},
        {"\x82\xA0\xFF", CT_SJIS, CT_SJIS}, // not valid, but detected again
        {"\x42\x30", CT_UNICODE, CT_UNICODE},
        {"\x42\x30\x82", CT_UNICODE, CT_SJIS}, // odd length
        {"caf\xE9", CT_ISO8859_1, CT_ISO8859_1},
        // The arithmetic between the Japanese codes passes all of these on: what is not of the
        // code that is said must be seen before it.
        {"\x82\xA0", CT_JIS, CT_SJIS},
        {"\x82\xA0\x1B(B", CT_SJIS, CT_SJIS},
        {"\xA4\xA2\x1B(B", CT_EUC, CT_EUC},
        {"\x82\xA0", CT_EUC, CT_SJIS},
        {"\x8E\x41", CT_EUC, CT_SJIS},
        {"\xA4\xA2\xA4", CT_EUC, CT_EUC},                 // cut off, but detected again
        {"\x1B$B\x24\x22\x1B(B\x83\x41", CT_JIS, CT_JIS}, // detected: the escape comes first
        {"\x83\x41\x1B$B\x24\x22\x1B(B", CT_JIS, CT_SJIS},
        {"a\x1B$B\x24\x22\r\n\x24\x22", CT_SJIS, CT_JIS}, // ends in kanji mode
        {"\x0E\x31\x0F", CT_JIS, CT_JIS},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DetectCodeType3(c.text.data(), static_cast<int>(c.text.size()), c.hint),
                  c.expected)
            << testing::PrintToString(c.text);
}

TEST(DetectUnicode, NarrowCodeOfUtf16)
{
    const WCHAR kanaFirst[] = {'a', 0x3042, 0xAC00};
    const WCHAR hangulFirst[] = {0x4E00, 0xAC00, 0x3042};
    const WCHAR neither[] = {'a', 0x4E00};
    EXPECT_EQ(DetectUnicodeCodeType(kanaFirst, 3, CT_BIG5), CT_SJIS);
    EXPECT_EQ(DetectUnicodeCodeType(hangulFirst, 3, CT_BIG5), CT_KSC5601);
    EXPECT_EQ(DetectUnicodeCodeType(neither, 2, CT_BIG5), CT_BIG5);
    EXPECT_EQ(DetectUnicodeCodeType(kanaFirst, 0, CT_BIG5), CT_BIG5);
    for (const WCHAR c : {WCHAR{0x3040}, WCHAR{0x30FF}})
        EXPECT_EQ(DetectUnicodeCodeType(&c, 1, CT_UNKNOWN), CT_SJIS);
    for (const WCHAR c :
         {WCHAR{0x3130}, WCHAR{0x318F}, WCHAR{0x1100}, WCHAR{0x11FF}, WCHAR{0xD7A3}})
        EXPECT_EQ(DetectUnicodeCodeType(&c, 1, CT_UNKNOWN), CT_KSC5601);
    for (const WCHAR c : {WCHAR{0x303F}, WCHAR{0x3100}, WCHAR{0x1200}, WCHAR{0xD7A4}})
        EXPECT_EQ(DetectUnicodeCodeType(&c, 1, CT_UNKNOWN), CT_UNKNOWN);
}

TEST(DetectUnicode, DeliversTheBytes)
{
    const WCHAR ascii[] = {'a', 'b'};
    const WCHAR kana[] = {'a', 0x3042};
    const WCHAR accented[] = {'a', 0x00E9};
    CBuffer out("left over");
    EXPECT_EQ(DetectUnicodeCodeType2(ascii, 2, &out), CT_ASCII);
    EXPECT_EQ(out, CBuffer("ab"));
    EXPECT_EQ(DetectUnicodeCodeType2(kana, 2, &out), CT_SJIS);
    EXPECT_EQ(out, CBuffer("a\x82\xA0"));
    EXPECT_EQ(DetectUnicodeCodeType2(accented, 2, &out), CT_UNICODE);
    EXPECT_EQ(out.GetLength(), 4);
    EXPECT_EQ(DetectUnicodeCodeType2(accented, 2, nullptr), CT_UNICODE);
    EXPECT_EQ(DetectUnicodeCodeType2(accented, 0, &out), CT_ASCII);
    EXPECT_TRUE(out.IsEmpty());
}
