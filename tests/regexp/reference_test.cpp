// The machine against the plain matcher, on random patterns and texts in both widths.

#include "tests/support/regexp_check.h"

#include <gtest/gtest.h>

#include <random>

namespace {

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    unsigned Below(unsigned limit) { return static_cast<unsigned>(m_engine() % limit); }
    std::string OneOf(const std::vector<std::string>& all)
    {
        return all[Below(static_cast<unsigned>(all.size()))];
    }

private:
    std::mt19937 m_engine;
};

// Few characters, so that they meet: letters of both cases and widths, kana large and small,
// a kanji whose trail byte is a letter, one whose trail byte is a lead byte, half-width kana.
const std::vector<std::string> kCharacters = {
    "a",        "b",        "A",        "1",    "\x82\xA0", "\x82\x9F", "\x83\x41", "\x83\x62",
    "\x88\x9F", "\x82\x81", "\x82\x60", "\xB1", "\xA7",     "\r",       "\n"};

std::string Pattern(Random& random, int depth)
{
    const auto inner = [&] { return Pattern(random, depth - 1); };
    switch (depth > 0 ? random.Below(12) : random.Below(4)) {
    case 0:
    case 1:
    case 2:
        return random.OneOf(kCharacters);
    case 3:
        return random.OneOf({".", "\\w", "\\d", "\\a", "\\n", "\\0", "\\1", "[ab]", "[^a]",
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
        return inner() + random.OneOf({"*", "+", "?", "*?", "+?", "??"});
    default:
        return inner() + inner();
    }
}

std::string Text(Random& random, unsigned longest)
{
    std::string text;
    for (unsigned i = random.Below(longest) + 1; i > 0; --i)
        text += random.OneOf(kCharacters);
    return text;
}

} // namespace

// Fails when a shortcut of the machine (passing a run at once, skipping starts, giving up for
// want of a needed literal) changes what matches, or any construct is not what it should be.
TEST(RegExpReferenceTest, AgreesOnRandomPatterns)
{
    Random random(20);
    for (int round = 0; round < 5000; ++round) {
        std::string pattern = Pattern(random, 4);
        if (random.Below(12) == 0)
            pattern = "^" + pattern;
        if (random.Below(12) == 0)
            pattern += "$";
        const std::string text = Text(random, 14);
        const int caseSensitive = static_cast<int>(random.Below(2));
        ASSERT_EQ(regexp_check::CheckBothWidths(pattern, text, caseSensitive), "")
            << "round " << round << ", pattern " << testing::PrintToString(pattern) << ", text "
            << testing::PrintToString(text) << ", case " << caseSensitive;
    }
}

// Fails when the search for starts misses or invents one at the edges of its blocks, takes a
// trail byte for a character, or looks past the end.
TEST(RegExpReferenceTest, AgreesOnLongTexts)
{
    Random random(21);
    for (int round = 0; round < 500; ++round) {
        std::string text;
        const unsigned length = random.Below(700);
        // Lead bytes that are trail bytes, too: only the way from the start tells them apart.
        while (text.size() < length)
            text += random.OneOf({"\x88\x9F", "\x81\x81", "\x83\x41", "x", "\x82\x82"});
        const std::string pattern =
            random.OneOf({"A", "\x81\x88", "\x9F\x88", "\x83\x41x", "[A-C]", "x+\x81", "(x\x82)|A",
                          "[\x81\x80-\x81\x90]x", "\x82\x82*x\x83\x41", "[^x\x81-\xFF]+q"});
        if (random.Below(2) == 0)
            text += random.OneOf({"A", "q", "\x83\x41x", "\x81", "x\x81\x88"});
        if (text.empty())
            continue;
        ASSERT_EQ(regexp_check::CheckBothWidths(pattern, text, static_cast<int>(random.Below(2))),
                  "")
            << "pattern " << testing::PrintToString(pattern) << ", text "
            << testing::PrintToString(text);
    }
}
