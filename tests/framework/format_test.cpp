// The formatter against the C library's snprintf where both mean the same, and tables for what
// is its own.

#include "framework/format.h"

#include "framework/string.h"
#include "tests/support/test.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

template <class... Args>
std::string Ours(const char* format, Args... args)
{
    CString text;
    text.Format(format, args...);
    return std::string(text.GetString(), static_cast<std::size_t>(text.GetLength()));
}

template <class... Args>
std::string Theirs(const std::string& format, Args... args)
{
    std::string text(5000, '\0');
    const int length = std::snprintf(text.data(), text.size(), format.c_str(), args...);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string RandomDirective(std::mt19937_64& random)
{
    std::string directive = "%";
    for (const char flag : std::string("-+ #0"))
        if (random() % 3 == 0)
            directive += flag;
    if (random() % 2 == 0)
        directive += std::to_string(random() % 30);
    if (random() % 2 == 0)
        directive += "." + std::to_string(random() % 25);
    return directive;
}

INT64 RandomInteger(std::mt19937_64& random)
{
    constexpr INT64 kSpecial[] = {0, 1, -1, 9, 10, INT64_MAX, INT64_MIN, INT32_MAX, INT32_MIN};
    return random() % 3 == 0 ? kSpecial[random() % std::size(kSpecial)]
                             : static_cast<INT64>(random() >> random() % 64);
}

TEST(Format, IntegersLikeTheCLibrary)
{
    const bool octalZero = Theirs("%#.0o", 0) == "0";
    std::mt19937_64 random(11);
    for (int round = 0; round < 20000; round++) {
        std::string format = RandomDirective(random);
        const char type = "diuoxX"[random() % 6];
        // C leaves these flags undefined for unsigned and decimal types.
        if (type != 'd' && type != 'i')
            std::erase_if(format, [](char c) { return c == '+' || c == ' '; });
        // Not every C library writes the one zero of an octal number without digits.
        if (type == 'd' || type == 'i' || type == 'u' || (type == 'o' && !octalZero))
            std::erase(format, '#');
        const INT64 value = RandomInteger(random);
        for (const char* size : {"", "h"}) {
            const std::string sized = format + size + type;
            ASSERT_EQ(Ours(sized.c_str(), static_cast<int>(value)),
                      Theirs(sized, static_cast<int>(value)))
                << sized << ' ' << value;
        }
        const std::string wide = Theirs(format + "ll" + type, static_cast<long long>(value));
        ASSERT_EQ(Ours((format + "ll" + type).c_str(), value), wide) << format << type << value;
        ASSERT_EQ(Ours((format + "I64" + type).c_str(), value), wide);
    }
}

TEST(Format, FloatsLikeTheCLibrary)
{
    std::mt19937_64 random(13);
    constexpr double kSpecial[] = {0.0,       -0.0,    0.5,      1.5,      2.5,
                                   9.9999995, 1e300,   5e-324,   123456.0, 1234567.0,
                                   0.0001,    0.00001, INFINITY, -INFINITY};
    for (int round = 0; round < 20000; round++) {
        const std::string format = RandomDirective(random) + "eEfFgG"[random() % 6];
        double value = kSpecial[random() % std::size(kSpecial)];
        if (random() % 3 != 0)
            value = std::ldexp(static_cast<double>(static_cast<INT64>(random())),
                               static_cast<int>(random() % 120) - 110);
        ASSERT_EQ(Ours(format.c_str(), value), Theirs(format, value)) << format << ' ' << value;
    }
}

TEST(Format, TextsAndSizesOfWindows)
{
    EXPECT_EQ(Ours("[%5s|%-5s|%.2s]", "abc", "abc", "abc"), "[  abc|abc  |ab]");
    EXPECT_EQ(Ours("%s %S", static_cast<char*>(nullptr), static_cast<WCHAR*>(nullptr)),
              "(null) (null)");
    EXPECT_EQ(Ours("%S%ls%ws%hs", TW("\u30BD"), TW("a"), TW("b"), "c"), "\x83\x5C"
                                                                        "abc");
    EXPECT_EQ(Ours("%.1s|%.3s|", "\x83\x5C", "\x83\x5C\x83\x5C"), "|\x83\x5C|");
    EXPECT_EQ(Ours("%c%C%3c%-3c|", 'a', TW('\u30BD'), 'b', 'c'), "a\x83\x5C  bc  |");
    EXPECT_EQ(Ours("%c", 0).size(), 1u);
    EXPECT_EQ(Ours("%lu %I32d %I64u", ~0u, -1, ~UINT64{0}), "4294967295 -1 18446744073709551615");
    EXPECT_EQ(Ours("%Iu %zd", std::size_t{7}, std::ptrdiff_t{-7}), "7 -7");
    EXPECT_EQ(Ours("%p", reinterpret_cast<void*>(0xABC)),
              std::string(sizeof(void*) * 2 - 3, '0') + "ABC");
    EXPECT_EQ(Ours("%*d|%-*d|%.*d", -4, 1, 4, 2, -1, 3), "1   |2   |3");
    // A text of a bounded length needs no terminator.
    const char open[] = {'a', 'b'};
    EXPECT_EQ(Ours("%.2s", open), "ab");

    CStringW wide;
    wide.Format(TW("%s%S%hs%c%.3f%%"), TW("\u30BD"), "\x83\x6D", "n", TW('\u3042'), 1.5);
    EXPECT_EQ(wide, TW("\u30BD\u30CEn\u30421.500%"));
}

// Broken directives stand for themselves and read no argument that is not theirs.
TEST(Format, BrokenDirectives)
{
    EXPECT_EQ(Ours("%y %d 100%", 5), "%y 5 100%");
    EXPECT_EQ(Ours("%-05"), "%-05");
    EXPECT_EQ(Ours("%\x83\x5C"), "%\x83\x5C");
    EXPECT_EQ(Ours("%n%d", static_cast<void*>(nullptr), 6), "6");
}

// A locale with a comma, where there is one, changes nothing.
TEST(Format, IgnoresTheCLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE", "German"})
        if (std::setlocale(LC_ALL, name) != nullptr)
            break;
    EXPECT_EQ(Ours("%.2f %g %e", 1.5, 2.5, 0.0), "1.50 2.5 0.000000e+00");
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace
