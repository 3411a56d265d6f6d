#include "foundation/text_compare.h"

#include "framework/text_ops.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace {

const char* OrEmpty(const char* s)
{
    return s != nullptr ? s : "";
}

const WCHAR* OrEmpty(const WCHAR* s)
{
    return s != nullptr ? s : TW("");
}

bool EqualNoCase(char a, char b)
{
    return tlvn::ToLowerAscii(a) == tlvn::ToLowerAscii(b);
}

// The last part of `text` that is as long as `tail`; null when the text is shorter.
template <class Char>
const Char* EndAsLongAs(const Char* text, const Char* tail)
{
    const std::size_t length = std::char_traits<Char>::length(text);
    const std::size_t tailLength = std::char_traits<Char>::length(tail);
    return length < tailLength ? nullptr : text + (length - tailLength);
}

int CompareWide(const WCHAR* a, const WCHAR* b, int noCase)
{
    return noCase != 0 ? tlvn::CompareViewsNoCase(a, b) : tlvn::CompareViews(a, b);
}

// The text in which every run of digits has at least nine, but no zeros before those, and no
// blanks before it.
std::string AlignNumbers(std::string_view text)
{
    constexpr std::string_view kDigits = "0123456789";
    constexpr std::size_t kWidth = 9;
    const auto take = [&text](std::size_t length) {
        const std::string_view taken = text.substr(0, length);
        text.remove_prefix(taken.size());
        return taken;
    };

    std::string out;
    for (;;) {
        const std::string_view before = take(text.find_first_of(kDigits));
        if (text.empty())
            return out.append(before);
        out.append(before.substr(0, before.find_last_not_of(' ') + 1));
        std::string_view digits = take(text.find_first_not_of(kDigits));
        digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
        if (digits.size() < kWidth)
            out.append(kWidth - digits.size(), '0');
        out.append(digits);
    }
}

} // namespace

int CompareText(const char* a, const char* b, int noCase)
{
    a = OrEmpty(a);
    b = OrEmpty(b);
    return noCase != 0 ? tlvn::CompareMbsNoCase(a, b) : tlvn::CompareMbs(a, b);
}

int EndsWith(const char* text, const char* tail, int noCase)
{
    text = OrEmpty(text);
    tail = OrEmpty(tail);
    const char* const end = EndAsLongAs(text, tail);
    if (end == nullptr || tlvn::IsInsideCharacter(text, end, end + std::strlen(end)))
        return 0;
    return CompareText(end, tail, noCase) == 0 ? 1 : 0;
}

int EndsWith(const WCHAR* text, const WCHAR* tail, int noCase)
{
    tail = OrEmpty(tail);
    const WCHAR* const end = EndAsLongAs(OrEmpty(text), tail);
    return end != nullptr && CompareWide(end, tail, noCase) == 0 ? 1 : 0;
}

int LookupStringArray(const CStringArray& a, const char* s, int noCase)
{
    for (int i = 0; i < a.GetSize(); ++i) {
        if (CompareText(a[i], s, noCase) == 0)
            return i;
    }
    return -1;
}

int LookupStringArray(const CArray<CStringW>& a, const WCHAR* s, int noCase)
{
    s = OrEmpty(s);
    for (int i = 0; i < a.GetSize(); ++i) {
        if (CompareWide(a[i].GetString(), s, noCase) == 0)
            return i;
    }
    return -1;
}

// What follows a "*" is tried at the first place in the text where it can stand, then at the
// next. Once it has led to another "*", what comes after that one has all the text behind there
// to match, of which a later place would only leave less; so a failure there is final, and only
// the last "*" is ever gone back to.
int wildicmp(const char* text, const char* pattern)
{
    text = OrEmpty(text);
    pattern = OrEmpty(pattern);

    const char* star = nullptr;  // the last "*", ...
    const char* retry = nullptr; // ... and where to look for its follower when the rest fails
    while (*text != '\0') {
        if (*pattern == '*') {
            if (pattern[1] == '\0')
                return 0;
            star = pattern;
            retry = text;
        } else if (*pattern != '\0' && (*pattern == '?' || EqualNoCase(*text, *pattern))) {
            ++text;
            ++pattern;
            continue;
        } else if (star == nullptr) {
            return 1;
        }
        text = retry;
        while (*text != '\0' && !EqualNoCase(*text, star[1]))
            ++text;
        if (*text == '\0')
            return 1;
        retry = text + 1;
        pattern = star + 1;
    }
    return *pattern == '\0' || (pattern[0] == '*' && pattern[1] == '\0') ? 0 : 1;
}

int lstrcmp_num(const char* a, CodeType, const char* b, CodeType)
{
    a = OrEmpty(a);
    b = OrEmpty(b);
    if (*a == '\0' || *b == '\0')
        return static_cast<int>(*a != '\0') - static_cast<int>(*b != '\0');
    return tlvn::GuardMemory(
        [&] { return tlvn::CollateTexts(AlignNumbers(a).c_str(), AlignNumbers(b).c_str()); });
}
