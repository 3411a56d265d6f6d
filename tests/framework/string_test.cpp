#include "framework/string.h"

#include "tests/support/test.h"

#include <limits>
#include <new>

namespace {

// Shift_JIS: "so" and "no" have trail bytes 5C and 6D; "a" full-width is 82 81.
#define SO "\x83\x5C"
#define NO "\x83\x6D"
#define FULL_A "\x82\x60"
#define FULL_a "\x82\x81"

TEST(String, Construction)
{
    EXPECT_STREQ(CString(static_cast<const char*>(nullptr)), "");
    EXPECT_STREQ(CString('x', 3), "xxx");
    EXPECT_STREQ(CString('x', -1), "");
    EXPECT_STREQ(CString("abc", 2), "ab");
    EXPECT_STREQ(CString("abc", -1), "");
    EXPECT_EQ(CString("a\0b", 3).GetLength(), 3);
    // The other width goes through the multibyte code page.
    EXPECT_STREQ(CString(TW("\u30BD!")), SO "!");
    EXPECT_EQ(CStringW(CString(NO)), TW("\u30CE"));
    CString text = "x";
    text = TW("\u30CE");
    text += TW("\u30BD");
    EXPECT_STREQ(text, NO SO);
    text = 'c';
    const CString moved = std::move(text);
    EXPECT_STREQ(moved, "c");
    EXPECT_TRUE(text.IsEmpty());
}

// Out of range positions are clipped, never an error.
TEST(String, Parts)
{
    const CString text("abcde");
    constexpr int kMost = std::numeric_limits<int>::max();
    const std::tuple<int, int, const char*> cases[] = {
        {1, 2, "bc"}, {4, 9, "e"},        {5, 1, ""},     {9, 1, ""},       {-2, 2, "ab"},
        {1, -1, ""},  {1, kMost, "bcde"}, {kMost, 1, ""}, {-kMost, 1, "a"},
    };
    for (const auto& [first, count, expected] : cases)
        EXPECT_STREQ(text.Mid(first, count), expected) << first << ' ' << count;
    EXPECT_STREQ(text.Left(2), "ab");
    EXPECT_STREQ(text.Right(2), "de");
    EXPECT_STREQ(text.Right(9), "abcde");
    EXPECT_STREQ(text.Right(-1), "");
}

// A search never ends on a trail byte. "so" holds a backslash, "no" an m.
TEST(String, FindStepsOverTrailBytes)
{
    const CString text("a" SO "\\" NO "m");
    EXPECT_EQ(text.Find('\\'), 3);
    EXPECT_EQ(text.Find('m', 7), -1);
    EXPECT_EQ(text.ReverseFind('\\'), 3);
    EXPECT_EQ(text.FindOneOf("m\\"), 3);
    EXPECT_EQ(text.FindOneOf("xyz"), -1);
    EXPECT_EQ(text.FindOneOf(""), -1);
    EXPECT_EQ(text.Find("", 7), 7);
    EXPECT_EQ(text.Find("", 8), -1);
    EXPECT_EQ(text.Find(static_cast<const char*>(nullptr)), -1);
    EXPECT_EQ(text.Find("a", -1), -1);
    EXPECT_EQ(CStringW(TW("abcabc")).Find(TW("ca")), 2);
    EXPECT_EQ(CStringW(TW("abcabc")).ReverseFind(TW('b')), 4);
}

TEST(String, Comparison)
{
    const CString a("abc");
    EXPECT_TRUE(a == "abc" && "abc" == a && a == CString("abc") && a != "abd");
    EXPECT_TRUE(a < "abd" && "abb" < a && a >= "abc" && a <= CString("abc") && a > "ab");
    EXPECT_TRUE(CString() == static_cast<const char*>(nullptr));
    EXPECT_LT(CString("\xB1").Compare("\x81\x40"), 0); // by character, not by byte
    EXPECT_EQ(CString("ABC" FULL_A).CompareNoCase("abc" FULL_a), 0);
    EXPECT_EQ(CStringW(TW("\u0391b")).CompareNoCase(TW("\u03B1B")), 0);
    EXPECT_LT(CString("a").Collate("B"), 0);
}

TEST(String, Changes)
{
    CString text("bcd");
    EXPECT_EQ(text.Insert(0, 'a'), 4);
    EXPECT_EQ(text.Insert(99, "e"), 5);
    EXPECT_EQ(text.Insert(-5, "X"), 6);
    EXPECT_STREQ(text, "Xabcde");
    EXPECT_EQ(text.Delete(1, 2), 4);
    EXPECT_EQ(text.Delete(3, 99), 3);
    EXPECT_EQ(text.Delete(9), 3);
    EXPECT_EQ(text.Delete(-1, -1), 3);
    EXPECT_EQ(text.Delete(-1), 2);
    EXPECT_STREQ(text, "cd");

    text = "a\\" SO "\\b";
    EXPECT_EQ(text.Remove('\\'), 2);
    EXPECT_EQ(text.Replace('a', 'x'), 1);
    EXPECT_STREQ(text, "x" SO "b");
    EXPECT_EQ(text.Replace(nullptr, nullptr), 0);
    EXPECT_EQ(text.Replace("b", nullptr), 1);
    EXPECT_EQ(text.Replace(text, "b"), 1); // an argument that lies in the text
    EXPECT_STREQ(text, "b");

    EXPECT_STREQ(CString("aB" FULL_A SO).MakeLower(), "ab" FULL_a SO);
    EXPECT_STREQ(CString("aB" FULL_a NO).MakeUpper(), "AB" FULL_A NO);
    EXPECT_EQ(CStringW(TW("abc")).MakeReverse(), TW("cba"));
}

TEST(String, Trimming)
{
    EXPECT_STREQ(CString(" \t\r\n a b \v\f").Trim(), "a b");
    EXPECT_STREQ(CString("xxaxx").TrimLeft('x'), "axx");
    EXPECT_STREQ(CString(SO "\\").TrimRight('\\'), SO);
    EXPECT_EQ(CStringW(TW("\u3000a\u00A0")).Trim(), TW("a"));
}

TEST(String, SpansAndTokens)
{
    EXPECT_STREQ(CString("aab" SO).SpanIncluding("ab"), "aab");
    EXPECT_STREQ(CString(SO "\\x").SpanExcluding("\\"), SO);

    const std::tuple<CString, const char*, std::vector<std::string>> cases[] = {
        {"%First Second#Third", "% #", {"First", "Second", "Third"}},
        {"", ",", {}},
        {",,", ",", {}},
        {"a,,b,", ",", {"a", "b"}},
        {"a" SO "\\b", "\\", {"a" SO, "b"}},
        {"a,b", "", {"a,b"}},
        {"x" NO SO "y" NO, NO, {"x", SO "y"}},
    };
    for (const auto& [text, delimiters, expected] : cases) {
        std::vector<std::string> tokens;
        int start = 0;
        for (CString token = text.Tokenize(delimiters, start); start != -1;
             token = text.Tokenize(delimiters, start))
            tokens.emplace_back(token.GetString());
        EXPECT_EQ(tokens, expected) << text;
    }
}

TEST(String, Buffers)
{
    CString text("abc");
    char* buffer = text.GetBuffer(10);
    EXPECT_STREQ(buffer, "abc");
    std::copy_n("0123456789", 10, buffer);
    text.ReleaseBuffer(7);
    EXPECT_STREQ(text, "0123456");
    text.GetBuffer()[2] = '\0';
    text.ReleaseBuffer();
    EXPECT_STREQ(text, "01");
    std::copy_n("wxyz", 4, text.GetBufferSetLength(4));
    text.SetAt(1, 'X');
    EXPECT_EQ(text.GetAt(4), '\0');
    text.Truncate(2);
    EXPECT_STREQ(text, "wX");
    text += text;
    text.Append(text.GetString() + 1, 2);
    EXPECT_STREQ(text, "wXwXXw");
    EXPECT_STREQ("<" + text + '>', "<wXwXXw>");
    EXPECT_STREQ('<' + text + ">", "<wXwXXw>");
}

TEST(String, FormattingAndMessages)
{
    CString text("x");
    text.Format("%s=%d", static_cast<const char*>(text), 5); // the argument lies in the text
    EXPECT_STREQ(text, "x=5");
    text.AppendFormat(" %S", TW("\u30BD"));
    EXPECT_STREQ(text, "x=5 " SO);
    CStringW wide;
    wide.Format(TW("%s|%S"), TW("w"), SO);
    EXPECT_EQ(wide, TW("w|\u30BD"));
    text.Format("%s%S|%s", text, wide, text); // strings themselves, the text among them
    EXPECT_STREQ(text, "x=5 " SO "w|" SO "|x=5 " SO);
    text.Format("%s %S", CString("x=5"), CStringW(TW("\u30BD")));

    EXPECT_FALSE(text.LoadString(65535));
    EXPECT_STREQ(text, "x=5 " SO);
    EXPECT_TRUE(wide.LoadString(112));
    EXPECT_EQ(wide, TW("%s \u304C\u898B\u3064\u304B\u308A\u307E\u305B\u3093\u3002"));
    text.Format(112u, "C:\\x");
    EXPECT_STREQ(text, "C:\\x \x82\xAA\x8C\xA9\x82\xC2\x82\xA9\x82\xE8\x82\xDC\x82\xB9\x82\xF1"
                       "\x81\x42");
}

TEST(String, LackOfMemoryIsTheMemoryException)
{
    EXPECT_THROW(tlvn::GuardMemory([] { throw std::bad_alloc(); }), CMemoryException*);
    EXPECT_THROW(tlvn::GuardMemory([] { throw std::length_error(""); }), CMemoryException*);
}

// Random operations on texts of single and double-byte characters against lists of characters.
TEST(String, AgreesWithListsOfCharacters)
{
    using Characters = std::vector<std::string>;
    const Characters alphabet = {"a", "m", "\\", "\xB1", SO, NO, FULL_A, "\x81\x81"};
    std::mt19937 random(5);
    const auto make = [&](unsigned most) {
        Characters result(random() % (most + 1));
        for (std::string& c : result)
            c = alphabet[random() % alphabet.size()];
        return result;
    };
    const auto join = [](const Characters& characters) {
        std::string result;
        for (const std::string& c : characters)
            result += c;
        return result;
    };
    for (int round = 0; round < 20000; round++) {
        const Characters text = make(10);
        const Characters find = make(2);
        const Characters replacement = make(3);
        const CString subject(join(text).c_str());

        Characters replaced;
        int count = 0;
        for (std::size_t i = 0; i < text.size();) {
            if (!find.empty() && i + find.size() <= text.size() &&
                std::equal(find.begin(), find.end(), text.begin() + static_cast<int>(i))) {
                count++;
                replaced.insert(replaced.end(), replacement.begin(), replacement.end());
                i += find.size();
            } else {
                replaced.push_back(text[i++]);
            }
        }
        CString changed = subject;
        ASSERT_EQ(changed.Replace(join(find).c_str(), join(replacement).c_str()), count);
        ASSERT_EQ(std::string(changed), join(replaced));

        const auto inSet = [&](const std::string& c) {
            return std::find(find.begin(), find.end(), c) != find.end();
        };
        const auto first = std::find_if_not(text.begin(), text.end(), inSet);
        const auto last = std::find_if_not(text.rbegin(), text.rend(), inSet).base();
        const std::string set = join(find);
        ASSERT_EQ(std::string(CString(subject).TrimLeft(set.c_str())),
                  join(Characters(first, text.end())));
        ASSERT_EQ(std::string(CString(subject).TrimRight(set.c_str())),
                  join(Characters(text.begin(), last)));
        ASSERT_EQ(std::string(CString(subject).MakeReverse()),
                  join(Characters(text.rbegin(), text.rend())));
    }
}

} // namespace
