// The machine against the plain matcher, on random patterns and texts in both widths.

#include "tests/support/regexp_check.h"
#include "tests/support/test.h"

namespace {

const std::string& OneOf(std::mt19937& random, const std::vector<std::string>& all)
{
    return all[Below(random, all.size())];
}

// Few characters, so that they meet: letters of both cases and widths, kana large and small,
// a kanji whose trail byte is a letter, one whose trail byte is a lead byte, half-width kana.
const std::vector<std::string> kCharacters = {
    "a",        "b",        "A",        "1",    "\x82\xA0", "\x82\x9F", "\x83\x41", "\x83\x62",
    "\x88\x9F", "\x82\x81", "\x82\x60", "\xB1", "\xA7",     "\r",       "\n"};

std::string Pattern(std::mt19937& random, int depth)
{
    const auto inner = [&] { return Pattern(random, depth - 1); };
    switch (depth > 0 ? Below(random, 12) : Below(random, 4)) {
    case 0:
    case 1:
    case 2:
        return OneOf(random, kCharacters);
    case 3:
        return OneOf(random, {".", "\\w", "\\d", "\\a", "\\n", "\\0", "\\1", "[ab]", "[^a]",
                              "[\x82\x9F-\x82\xF1]", "[a-\x83\x62]", "[^\x82\xA0-\x88\x9F]"});
    case 4:
        return "(" + inner() + ")";
    case 5:
        return "{" + inner() + "}";
    case 6:
        return "!" + inner();
    case 7:
        return inner() + "|" + inner();
    case 8:
    case 9:
        return inner() + OneOf(random, {"*", "+", "?", "*?", "+?", "??"});
    default:
        return inner() + inner();
    }
}

} // namespace

// Fails when a shortcut of the machine (passing a run at once, skipping starts, giving up for
// want of a needed literal) changes what matches, or any construct is not what it should be.
TEST(RegExpReferenceTest, AgreesOnRandomPatterns)
{
    std::mt19937 random(20);
    for (int round = 0; round < 5000; ++round) {
        std::string pattern = Pattern(random, 4);
        if (Below(random, 12) == 0)
            pattern = "^" + pattern;
        if (Below(random, 12) == 0)
            pattern += "$";
        std::string text;
        for (unsigned i = Below(random, 14) + 1; i > 0; --i)
            text += OneOf(random, kCharacters);
        const int caseSensitive = static_cast<int>(Below(random, 2));
        ASSERT_EQ(regexp_check::CheckBothWidths(pattern, text, caseSensitive), "")
            << "round " << round << ", pattern " << testing::PrintToString(pattern) << ", text "
            << testing::PrintToString(text) << ", case " << caseSensitive;
    }
}

// Fails when the search for starts misses or invents one at the edges of its blocks, takes a
// trail byte for a character, or looks past the end.
TEST(RegExpReferenceTest, AgreesOnLongTexts)
{
    std::mt19937 random(21);
    for (int round = 0; round < 500; ++round) {
        std::string text;
        const unsigned length = Below(random, 700);
        // Lead bytes that are trail bytes, too: only the way from the start tells them apart.
        while (text.size() < length)
            text += OneOf(random, {"\x88\x9F", "\x81\x81", "\x83\x41", "x", "\x82\x82"});
        const std::string pattern =
            OneOf(random, {"A", "\x81\x88", "\x9F\x88", "\x83\x41x", "[A-C]", "x+\x81", "(x\x82)|A",
                           "[\x81\x80-\x81\x90]x", "\x82\x82*x\x83\x41", "[^x\x81-\xFF]+q"});
        if (Below(random, 2) == 0)
            text += OneOf(random, {"A", "q", "\x83\x41x", "\x81", "x\x81\x88"});
        if (text.empty())
            continue;
        ASSERT_EQ(regexp_check::CheckBothWidths(pattern, text, static_cast<int>(Below(random, 2))),
                  "")
            << "pattern " << testing::PrintToString(pattern) << ", text "
            << testing::PrintToString(text);
    }
}
