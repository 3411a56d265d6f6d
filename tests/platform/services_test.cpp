// Character properties and collation.

#include "platform/multibyte.h"
#include "platform/nls.h"
#include "tests/support/test.h"

namespace tlvn {
namespace {

TEST(Services, WhiteSpaceIsThatOfTheTable)
{
    const WString expected =
        TW("\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
           "\u2009\u200A\u2028\u2029\u202F\u205F\u3000");
    WString found;
    for (unsigned c = 0; c < 0x10000; c++)
        if (IsSpaceW(static_cast<WCHAR>(c)))
            found += static_cast<WCHAR>(c);
    EXPECT_EQ(found, expected);
}

// Letters of several scripts. What does not lead back to itself stays as it is: Kelvin sign,
// long s, dotless i, micro sign, sharp s.
TEST(Services, CaseOfOneUnit)
{
    const WStringView upper = TW("AZ\u00C0\u0391\u042F\uFF21"),
                      lower = TW("az\u00E0\u03B1\u044F\uFF41");
    for (std::size_t i = 0; i < upper.size(); ++i) {
        EXPECT_EQ(ToLowerW(upper[i]), lower[i]);
        EXPECT_EQ(ToUpperW(lower[i]), upper[i]);
    }
    for (const WCHAR c : TW("[@`{\u212A\u017F\u0131\u00B5\u00DF\u3042\u4E00\uFF71")) {
        EXPECT_EQ(ToLowerW(c), c);
        EXPECT_EQ(ToUpperW(c), c);
    }
}

TEST(Services, DefinedCharacters)
{
    for (const WCHAR c : TW(" A~\u00E9\u3042\u4E9C\uFF71\u2460\u20AC\uE000"))
        EXPECT_TRUE(IsDefinedCharacter(c)) << static_cast<unsigned>(c);
    for (const WCHAR c : {TW('\u0378'), TW('\u2E9A'), TW('\uFFFE')})
        EXPECT_FALSE(IsDefinedCharacter(c)) << static_cast<unsigned>(c);
}

// Collation is not the order of codes: a lower-case letter comes before the next upper-case one.
// The last fails when keys are compared as signed bytes, or made without the locale's order.
TEST(Services, CollatesLikeADictionary)
{
    EXPECT_EQ(CollateTexts("abc", "abc"), 0);
    EXPECT_LT(CollateTexts("a", "B"), 0);
    EXPECT_GT(CollateTexts("b", "A"), 0);
    EXPECT_LT(CollateTexts("", "a"), 0);
    const WStringView texts[] = {TW(""),       TW("a"),      TW("A"),
                                 TW("B"),      TW("\u3042"), TW("\u30A2"),
                                 TW("\u6F22"), TW("10"),     TW("\u3042\u6F22"),
                                 TW("\uFF42"), TW("-")};
    const auto sign = [](int n) { return (n > 0) - (n < 0); };
    for (const WStringView a : texts) {
        for (const WStringView b : texts) {
            std::string keyA, keyB;
            MakeCollationKey(a, keyA);
            MakeCollationKey(b, keyB);
            EXPECT_EQ(sign(keyA.compare(keyB)),
                      sign(CollateTexts(NarrowText(a).c_str(), NarrowText(b).c_str())))
                << NarrowText(a) << ' ' << NarrowText(b);
        }
    }
}

} // namespace
} // namespace tlvn
