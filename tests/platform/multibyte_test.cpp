// Text in the multibyte code page, against a slow model that first cuts a text into the list of
// its characters.

#include "platform/multibyte.h"
#include "tests/support/test.h"

namespace tlvn {
namespace {

constexpr UINT kPages[] = {932, 936, 949, 950, 1252};

using Characters = std::vector<unsigned>;

// The characters of a text, by their values.
Characters Split(const std::string& text)
{
    Characters result;
    for (std::size_t i = 0; i < text.size(); i++) {
        unsigned c = static_cast<BYTE>(text[i]);
        if (IsLeadByte(text[i]) && i + 1 < text.size() && IsTrailByte(text[i + 1]))
            c = c << 8 | static_cast<BYTE>(text[++i]);
        result.push_back(c);
    }
    return result;
}

std::string Join(const Characters& characters)
{
    std::string result;
    for (const unsigned c : characters) {
        if (c > 0xFF)
            result += static_cast<char>(c >> 8);
        result += static_cast<char>(c & 0xFF);
    }
    return result;
}

int Sign(int value)
{
    return (value > 0) - (value < 0);
}

int ModelCompare(Characters a, Characters b, bool fold)
{
    if (fold) {
        std::transform(a.begin(), a.end(), a.begin(), ToLowerMbc);
        std::transform(b.begin(), b.end(), b.begin(), ToLowerMbc);
    }
    return a < b ? -1 : a == b ? 0 : 1;
}

// Bytes that meet at the edges of the classes of all pages, and full-width letters.
std::string RandomText(std::mt19937& random, int maxLength)
{
    static const std::string kBytes = "aAbBzZ0\x40\x41\x5A\x5B\x5C\x60\x61\x7A\x7E\x7F\x80\x81\x82"
                                      "\x83\x9A\x9F\xA0\xA1\xA2\xA3\xC1\xDA\xDF\xE0\xE1\xFA\xFC\xFD"
                                      "\xFE\xFF";
    const int length = static_cast<int>(random() % static_cast<unsigned>(maxLength + 1));
    std::string text;
    for (int i = 0; i < length; i++)
        text += kBytes[random() % kBytes.size()];
    return text;
}

// The first and last byte of every range, and their neighbours.
TEST(Multibyte, ClassesOfThePages)
{
    const struct {
        UINT page;
        const char *lead, *notLead, *trail, *notTrail;
    } cases[] = {
        {932, "\x81\x9F\xE0\xFC", "\x80\xA0\xA1\xDF\xFD\x41", "\x40\x7E\x80\xFC", "\x3F\x7F\xFD"},
        {936, "\x81\xFE", "\x80\xFF", "\x40\x7E\x80\xFE", "\x3F\x7F\xFF"},
        {949, "\x81\xFE", "\x80\xFF", "\x41\x5A\x61\x7A\x81\xFE", "\x40\x5B\x60\x7B\x80\xFF"},
        {950, "\x81\xFE", "\x80\xFF", "\x40\x7E\xA1\xFE", "\x3F\x7F\x80\xA0\xFF"},
        {1252, "", "\x81\xE0\xFE", "", "\x40\x80"},
    };
    const auto count = [](const char* bytes, bool (*is)(char)) {
        return std::count_if(bytes, bytes + std::strlen(bytes), is);
    };
    for (const auto& c : cases) {
        SetMultibytePage(c.page);
        EXPECT_EQ(count(c.lead, IsLeadByte), static_cast<int>(std::strlen(c.lead))) << c.page;
        EXPECT_EQ(count(c.notLead, IsLeadByte), 0) << c.page;
        EXPECT_EQ(count(c.trail, IsTrailByte), static_cast<int>(std::strlen(c.trail))) << c.page;
        EXPECT_EQ(count(c.notTrail, IsTrailByte), 0) << c.page;
    }
    SetMultibytePage(932);
}

// Upper and lower of the first and last letter, and what lies beside them. The letters of 950
// change rows after the 22nd.
TEST(Multibyte, CaseOfFullWidthLetters)
{
    const std::tuple<UINT, unsigned, unsigned> cases[] = {
        {936, 0xA3C1, 0xA3E1}, {936, 0xA3DA, 0xA3FA}, {949, 0xA3C1, 0xA3E1}, {950, 0xA2CF, 0xA2E9},
        {950, 0xA2E4, 0xA2FE}, {950, 0xA2E5, 0xA340}, {950, 0xA2E8, 0xA343}, {1252, 'Z', 'z'},
        {932, 0x8260, 0x8281}, {932, 0x8279, 0x829A}, {932, 'A', 'a'},
    };
    for (const auto& [page, upper, lower] : cases) {
        SetMultibytePage(page);
        EXPECT_EQ(ToLowerMbc(upper), lower);
        EXPECT_EQ(ToUpperMbc(lower), upper);
        EXPECT_EQ(ToLowerMbc(lower), lower);
        EXPECT_EQ(ToUpperMbc(upper), upper);
    }
    for (const unsigned c : {0x825Fu, 0x827Au, 0x8280u, 0x829Bu, 0xC0u, 0xE0u, 0x5Bu, 0x40u}) {
        EXPECT_EQ(ToLowerMbc(c), c);
        EXPECT_EQ(ToUpperMbc(c), c);
    }
}

// Half-width katakana (one byte, A1) comes before a double-byte character that begins with 81:
// fails when bytes are compared. Then: n cuts a character, or the terminator ends what n does not.
TEST(Multibyte, ComparesByCharacterValue)
{
    EXPECT_LT(CompareMbs("\xB1", "\x81\x40"), 0);
    EXPECT_EQ(CompareMbsN("\x82\xA0", "\x82\xA2", 1), 0);
    EXPECT_EQ(CompareMbsN("ab", "ab\0c", 10), 0);
    EXPECT_EQ(CompareMbsN("x", "y", 0), 0);
    EXPECT_EQ(CompareAsciiNNoCase("Content-TYPE:", "content-type;", 12), 0);
    EXPECT_LT(CompareAsciiNNoCase("a", "B", 1), 0);
    EXPECT_EQ(CompareAsciiNNoCase("\x83\x41", "\x83\x61", 2), 0);
    EXPECT_EQ(CompareAsciiNNoCase("a\0x", "a\0y", 3), 0);
}

TEST(Multibyte, AgreesWithTheListOfCharacters)
{
    std::mt19937 random(1);
    for (int round = 0; round < 40000; round++) {
        SetMultibytePage(kPages[random() % std::size(kPages)]);
        const std::string a = RandomText(random, 12);
        const std::string b = random() % 3 == 0 ? a + RandomText(random, 2) : RandomText(random, 4);
        const Characters ca = Split(a);
        const Characters cb = Split(b);
        const int n = static_cast<int>(random() % 14);

        ASSERT_EQ(Sign(CompareMbs(a.c_str(), b.c_str())), ModelCompare(ca, cb, false));
        ASSERT_EQ(Sign(CompareMbsNoCase(a.c_str(), b.c_str())), ModelCompare(ca, cb, true));
        const std::string an = a.substr(0, static_cast<std::size_t>(n));
        const std::string bn = b.substr(0, static_cast<std::size_t>(n));
        ASSERT_EQ(Sign(CompareMbsNNoCase(a.c_str(), b.c_str(), n)),
                  ModelCompare(Split(an), Split(bn), true));

        // The start of each character, and the places of what is looked for.
        const char* const text = a.c_str();
        const char* const end = text + a.size();
        const char* found = nullptr;
        const char* foundText = b.empty() ? text : nullptr;
        const char* foundLast = nullptr;
        const char* foundOneOf = nullptr;
        const unsigned wanted = cb.empty() ? 'a' : cb[0];
        std::size_t at = 0;
        for (const unsigned c : ca) {
            const char* const p = text + at;
            ASSERT_FALSE(IsInsideCharacter(text, p, end));
            ASSERT_TRUE(c <= 0xFF || IsInsideCharacter(text, p + 1, end));
            if (c == wanted) {
                found = found == nullptr ? p : found;
                foundLast = p;
            }
            if (foundText == nullptr && a.compare(at, b.size(), b) == 0)
                foundText = p;
            if (foundOneOf == nullptr && std::find(cb.begin(), cb.end(), c) != cb.end())
                foundOneOf = p;
            at += c > 0xFF ? 2 : 1;
        }
        ASSERT_EQ(FindMbc(text, wanted), found);
        ASSERT_EQ(FindLastMbc(text, wanted), foundLast);
        ASSERT_EQ(FindMbs(text, b.c_str()), foundText);
        ASSERT_EQ(FindOneOfMbs(text, b.c_str()), foundOneOf);

        Characters lower = ca;
        std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerMbc);
        std::string changed = a;
        ToLowerMbs(changed.data(), static_cast<int>(changed.size()));
        ASSERT_EQ(changed, Join(lower));
    }
    SetMultibytePage(932);
}

} // namespace
} // namespace tlvn
