#include "TlvnMisc.h"
#include "platform/memory.h"
#include "tests/support/buffer_model.h"
#include "tests/support/test.h"

#include <array>

namespace {

CBuffer Bytes(const std::string& s)
{
    CBuffer buffer;
    buffer.Set(s.data(), static_cast<int>(s.size()));
    return buffer;
}

} // namespace

// Capacity is rounded up to the increment, never doubled; the block (capacity + 2 bytes) comes
// from the page allocator from 1024 bytes on. A failure here means a block would be released by
// an allocator that did not make it.
TEST(Buffer, CapacityAndAllocatorFollowTheSize)
{
    const std::tuple<int, int, int, int> cases[] = {
        {16, 16, 16, 0},    {16, 17, 32, 0}, {1, 1021, 1021, 0}, {1, 1022, 1022, 1},
        {4000, 1, 4000, 1}, {0, 17, 32, 0},  {-5, 17, 32, 0},    {16, -1, 0, 0},
    };
    for (const auto& [increment, request, capacity, pages] : cases) {
        const int before = tlvn::GetPageBlockCount();
        {
            CBuffer buffer;
            buffer.SetIncrSize(increment);
            buffer.SetAllocSize(request);
            EXPECT_EQ(buffer.GetAllocSize(), capacity) << increment << " " << request;
            EXPECT_EQ(tlvn::GetPageBlockCount() - before, pages) << increment << " " << request;
        }
        EXPECT_EQ(tlvn::GetPageBlockCount(), before);
    }
}

// Growth across the border between the allocators, in both directions of MoveFrom. What would be
// freed as a heap block is copied (length + 2 below 1024); the pages behind a text go back.
TEST(Buffer, MoveFromKeepsEveryBlockWithItsAllocator)
{
    const std::tuple<int, int, int, bool> cases[] = {
        {2000, 1021, 0, false}, {2000, 1022, 1, true},  {100, 10, 0, true},
        {2000, 0, 0, false},    {99000, 1500, 1, true},
    };
    const int before = tlvn::GetPageBlockCount();
    const std::size_t bytesBefore = tlvn::GetPageBytes();
    for (const auto& [capacity, length, pagesAfter, taken] : cases) {
        const std::string text(static_cast<std::size_t>(length), 'x');
        CBuffer source;
        source.SetAllocSize(capacity);
        source.Add(text.data(), length);
        const char* block = source;
        CFixBuffer fixed;
        fixed.MoveFrom(source);
        EXPECT_EQ(static_cast<const char*>(fixed) == block, taken) << capacity << " " << length;
        EXPECT_EQ(tlvn::GetPageBlockCount() - before, pagesAfter) << capacity << " " << length;
        EXPECT_EQ(source.GetBuffer(), nullptr);
        EXPECT_EQ(std::string(CFixBuffer(fixed)), text);
    }
    EXPECT_EQ(tlvn::GetPageBlockCount(), before);
    EXPECT_EQ(tlvn::GetPageBytes(), bytesBefore);

    CBuffer from("text"), to;
    from.SetIncrSize(500);
    to.MoveFrom(from);
    to.SetAllocSize(17);
    EXPECT_EQ(to.GetAllocSize(), 500); // the increment moves too
}

// Memory runs out at the n-th allocation, for every n: what the call was to change is unchanged
// and no block is lost.
TEST(Buffer, ExhaustionLeavesTheBufferAsItWas)
{
    using Operation = void (*)(CBuffer&);
    const Operation operations[] = {
        [](CBuffer& b) { b.SetAllocSize(5000); },
        [](CBuffer& b) { b.Add(std::string(5000, 'y').data(), 5000); },
        [](CBuffer& b) { b.Insert('y', 5000, 3); },
        [](CBuffer& b) { b.Insert(b.GetBuffer(), b.GetLength(), 1); },
        [](CBuffer& b) { b.ReplacePhraseAll("x", "long replacement", 0, 0, 0); },
        [](CBuffer& b) { b += CStringW(TW('y'), 3000); },
        [](CBuffer& b) { b.Add("y", INT_MAX); },
    };
    const int before = tlvn::GetPageBlockCount();
    for (const int size : {0, 10, 1007, 1500, 4000}) {
        const std::string content(static_cast<std::size_t>(size), 'x');
        for (const Operation& operation : operations) {
            bool failed = true;
            for (int allowed = 0; failed && allowed < 4; ++allowed) {
                CBuffer buffer = Bytes(content);
                const int capacity = buffer.GetAllocSize();
                tlvn::SetAllocationLimit(allowed);
                try {
                    operation(buffer);
                    failed = false;
                } catch (CMemoryException* e) {
                    e->Delete();
                }
                tlvn::SetAllocationLimit(-1);
                const char* end = static_cast<const char*>(buffer) + size;
                ASSERT_TRUE(!failed || (Text(buffer) == content && (end[0] | end[1]) == 0 &&
                                        buffer.GetAllocSize() == capacity));
            }
        }
    }
    CFixBuffer fixed;
    CBuffer source("kept");
    source.SetAllocSize(3000);
    tlvn::SetAllocationLimit(0);
    EXPECT_THROW(fixed.MoveFrom(source), CMemoryException*);
    tlvn::SetAllocationLimit(-1);
    EXPECT_EQ(Text(source), "kept");
    source.AllocFree();
    EXPECT_EQ(tlvn::GetPageBlockCount(), before);
}

TEST(Buffer, ConstructorsAndOperatorsTakeEveryKindOfText)
{
    EXPECT_STREQ(CBuffer(), "");
    EXPECT_EQ(Text(CBuffer("\0abc", 5)), ""); // a first zero byte empties, deliberately
    EXPECT_EQ(Text(CBuffer(CStringW(TW("ab")))), std::string("a\0b\0", 4));

    CBuffer buffer("old");
    buffer = 'x';
    (buffer += "yz") += TW('W');
    (buffer += TW("!")) += CStringA("s");
    buffer += static_cast<const char*>(nullptr);
    EXPECT_EQ(Text(buffer), std::string("xyzW\0!\0s", 8));
    buffer += buffer; // texts inside the buffer itself
    buffer = static_cast<const char*>(buffer) + 8;
    buffer.Insert(static_cast<const char*>(buffer) + 1, 2, 1);
    EXPECT_EQ(Text(buffer), "xyzyzW");
    buffer.Mid(2, buffer);
    buffer.Insert(TW('\x3042'), 2, 2);
    EXPECT_EQ(Text(buffer), "zy\x42\x30\x42\x30zW");
}

TEST(Buffer, SizesOutsideTheirRangeAreClampedOrIgnored)
{
    CBuffer buffer("abc");
    buffer.SetDataSize(17); // above the capacity of 16
    EXPECT_EQ(buffer.GetLength(), 3);
    std::memcpy(buffer.GetBuffer(20), "0123456789", 10);
    buffer.ReleaseBuffer(1000);
    EXPECT_EQ(buffer.GetLength(), buffer.GetAllocSize());
    buffer.ReleaseBuffer(-1); // not the string length, deliberately
    EXPECT_EQ(buffer.GetLength(), 0);
}

// In UTF-16 full-width blanks are white space, and TrimLeft leaves a text of nothing else alone.
TEST(Buffer, TrimsUtf16)
{
    using Change = void (*)(CBuffer&);
    const std::tuple<const WCHAR*, Change, std::string> cases[] = {
        {TW("\x3000 a\x2009"), [](CBuffer& b) { b.Trim(1); }, {"a\0", 2}},
        {TW("  "), [](CBuffer& b) { b.TrimLeft(1); }, {" \0 \0", 4}},
        // One unit is made of the bytes of both.
        {TW("\r\u0D0A\n"), [](CBuffer& b) { b.ExceptCrlf(1); }, "\x0A\x0D"},
    };
    for (const auto& [text, change, expected] : cases) {
        CBuffer wide{CStringW(text)};
        change(wide);
        EXPECT_EQ(Text(wide), expected);
    }
}

TEST(Buffer, ComparesWholePartsAndEnds)
{
    const CBuffer buffer("abc\x82\x60");
    EXPECT_TRUE(buffer.Equal("BC\x82\x81", 0, 1, 1)); // full-width letters fold too
    EXPECT_FALSE(buffer.Equal("BC\x82\x81", 0, 1, 0));
    EXPECT_FALSE(buffer.Equal("ab", 0, 0, 0)); // has to reach the end
    EXPECT_TRUE(buffer.EqualN("bcX", 2, 0, 1, 0));
    EXPECT_FALSE(buffer.EqualN("abcdef", 6, 0, 0, 0));
    EXPECT_TRUE(buffer.EndWith("\x82\x81", 0, 1));
    EXPECT_FALSE(buffer.EndWith("0abc\x82\x60", 0, 0));

    const CBuffer wide(CStringW(TW("ab\x00C9")));
    const auto text = [](const WCHAR* s) { return reinterpret_cast<const char*>(s); };
    EXPECT_TRUE(wide.Equal(text(TW("B\x00E9")), 1, 2, 1));
    EXPECT_TRUE(wide.EqualN(text(TW("ax")), 2, 1, 0, 0));
}

// Start and end rules, which differ between the functions, and case, which folds for full-width
// letters only where characters are compared.
TEST(Buffer, SearchesKeepToTheirStartAndEndRules)
{
    const CBuffer buffer("abcabc");
    EXPECT_EQ(buffer.FindOneOfChar("xc", 0), 2);
    EXPECT_EQ(buffer.ReverseFindAsciiChar('c', -1), 5);
    EXPECT_EQ(buffer.ReverseFindPhrase("abc", -9, 0), 3);
    for (const int end : {-2, INT_MIN}) // only -1 means the length
        EXPECT_EQ(buffer.ReverseFindChar('c', end), -1);
    EXPECT_EQ(CBuffer("\x82\x60").FindPhrase("\x82\x81", 0, 1), 0);
    EXPECT_EQ(CBuffer("\x82\x60").FindAsciiPhrase("\x82\x81", 0, 1), -1);
}

// Rows: the last one lies behind the limit, into which a shrinking text moves; a null replacement.
TEST(Buffer, ReplacesWithinALimitTakenBefore)
{
    const std::tuple<const char*, const char*, const char*, int, int, int, const char*> cases[] = {
        {"aaa", "a", "bb", 0, 0, 2, "bbbba"},
        {"aXbXcX", "X", "", 0, 4, 3, "abc"},
        {"aaa", "a", nullptr, 1, INT_MAX, 2, "a"},
    };
    for (const auto& [text, oldText, newText, start, count, found, result] : cases) {
        CBuffer buffer(text);
        EXPECT_EQ(buffer.ReplacePhraseAll(oldText, newText, start, count, 0), found);
        EXPECT_EQ(Text(buffer), result);
    }
    CBuffer self("abab");
    EXPECT_EQ(self.ReplacePhraseAll(static_cast<const char*>(self) + 2, "x", 0, 0, 0), 2);
    EXPECT_EQ(Text(self), "xx");
}

// Rows: empty tokens are passed over; a delimiter of two bytes, whose bytes alone
// delimit nothing; where only delimiters remain the position stays.
TEST(Buffer, CutsTokensAndNumbers)
{
    const std::tuple<const char*, const char*, int, const char*, int> tokens[] = {
        {"a,,b", ",", 0, "a", 2},
        {"a,,b", ",", 2, "b", 4},
        {"x\x81\x41y,\x82\x81", "\x81\x41", 3, "y,\x82\x81", 7},
        {"a,,", ",", 1, "", 1},
    };
    for (const auto& [text, delimiters, from, expected, next] : tokens) {
        CBuffer token;
        int pos = from;
        EXPECT_EQ(Text(CBuffer(text).Tokenize(delimiters, pos, token)), expected) << text << from;
        EXPECT_EQ(pos, next) << text << from;
    }
    CBuffer self(";"); // the delimiters' place takes the token, then the text's own
    int pos = 0;
    EXPECT_EQ(Text(CBuffer("a;b").Tokenize(self, pos, self)), "a");
    self = ";;abc;";
    pos = 1;
    EXPECT_EQ(Text(self.Tokenize(";", pos, self)), "abc");
    EXPECT_EQ(pos, 6);

    // The first has to end before the end.
    const std::tuple<const char*, int, int, int, int, int> numbers[] = {
        {"123", 0, 3, 0, 0, 7},        {"1234", 0, 3, 0, 1, 123},       {"-12x", 0, 3, 1, 1, -12},
        {"12x", 0, 3, 1, 0, 7},        {"12x4", 0, 3, 0, 0, 12},        {"1234", -1, 2, 0, 0, 7},
        {"1234", 1, INT_MAX, 0, 0, 7}, {"4294967297 ", 0, 10, 0, 1, 1},
    };
    for (const auto& [text, from, len, sign, result, expected] : numbers) {
        int value = 7;
        EXPECT_EQ(CBuffer(text).GetNumber(from, len, sign, value), result) << text;
        EXPECT_EQ(value, expected) << text;
    }
}

// Phrases and texts made of few bytes, long enough that the search falls back to its failure
// table, and all the code pages.
TEST(PhraseSearch, AgreesWithTheModelOnRepetitiveTexts)
{
    using namespace buffer_model;
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        SetMultibyteCodePage(std::array{932u, 936u, 949u, 950u}[random() % 4]);
        const Kind kind = static_cast<Kind>(random() % 3);
        const char letters[] = {'a', static_cast<char>(random() % 2 ? 0x81 : 0xA1),
                                static_cast<char>(random() % 2 ? 0x40 : 0xE0)};
        const auto text = [&](std::size_t length) {
            std::string s(length & ~std::size_t{1}, letters[random() % 3]);
            for (int changes = static_cast<int>(random() % 4); changes > 0 && !s.empty(); --changes)
                s[random() % s.size()] = letters[random() % 3];
            return s;
        };
        const std::string haystack = text(3000 + random() % 3000);
        const std::string phrase = text(2 + random() % 300);
        const CBuffer buffer = Bytes(haystack);
        const bool noCase = random() % 2 != 0;
        const int start = static_cast<int>(random() % 1000);
        EXPECT_EQ(FindIn(buffer, phrase, start, kind, noCase),
                  Find(haystack, phrase, start, kind, noCase));
        EXPECT_EQ(ReverseFindIn(buffer, phrase, 6000 - start, kind, noCase),
                  ReverseFind(haystack, phrase, 6000 - start, kind, noCase));
    }
    SetMultibyteCodePage(932);
}

TEST(TextBuffer, CarriesItsCodeTypeAndForgetsItWhenEmptied)
{
    CTextBuffer text;
    text = "abc";
    text.SetCodeType(CT_SJIS);
    CTextBuffer copy(text);
    EXPECT_EQ(copy.GetCodeType(), CT_SJIS);
    copy.Empty();
    EXPECT_EQ(copy.GetCodeType(), CT_ASCII);

    CTextFixBuffer fixed;
    fixed.MoveFrom(text);
    fixed.AllocFree();
    EXPECT_EQ(fixed.GetCodeType(), CT_ASCII);
}
