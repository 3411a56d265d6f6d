#include "mailtext/mail_finder.h"

#include "mailtext/character_set.h"
#include "mailtext/link_text.h"

using namespace tlvn;

namespace {

constexpr CharacterSet
    kAddress(".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|");
constexpr CharacterSet
    kLabel("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|");

// The characters that must be there behind the start of an address, behind a local part of more
// than one character, and behind the first label.
constexpr int kBehindStart = 5;
constexpr int kBehindLocalPart = 4;
constexpr int kBehindLabel = 2;

// Beginning of the run of address characters before `at`, not before `resume`.
template <class Char>
const Char* FindLocalPart(const Char* resume, const Char* at,
                          typename LinkText<Char>::Boundary& boundary)
{
    const Char* start = at;
    while (start != resume && kAddress.Has(start[-1]))
        --start;
    const bool mayBeTrail = start != at && start != resume && LinkText<Char>::IsLead(start[-1]);
    return mayBeTrail && !boundary.IsStart(start) ? start + 1 : start;
}

template <class Char>
int FindAddress(const Char* text, int units, int& foundUnits)
{
    foundUnits = 0;
    const Char* const end = text + units;
    typename LinkText<Char>::Boundary boundary(text);
    const Char* resume = text; // no candidate starts before this; a character starts here
    for (const Char* p = text; end - p >= kBehindLocalPart;) {
        constexpr Char kAt = '@';
        const Char* const at = FindEither(p, end, kAt, kAt);
        if (end - at < kBehindLocalPart)
            break;
        p = at + 1;
        if (!boundary.IsStart(at))
            continue;

        const Char* const start = FindLocalPart(resume, at, boundary);
        resume = p;
        if (start == at)
            continue;
        if (end - start < kBehindStart || (at - start > 1 && end - at <= kBehindLocalPart))
            break;

        if (!kLabel.Has(*p))
            continue;
        do {
            ++p;
        } while (end - p >= kBehindLabel && kLabel.Has(*p));
        if (end - p < kBehindLabel)
            break;
        if (*p == '.' && kLabel.Has(p[1])) {
            ++p;
            while (p != end && kAddress.Has(*p))
                ++p;
            foundUnits = static_cast<int>(p - start);
            return static_cast<int>(start - text);
        }
        if (*p == '.')
            ++p;
        resume = p;
    }
    return -1;
}

} // namespace

int FindEMailA(const char* text, int length, int& foundLength)
{
    foundLength = 0;
    return text == nullptr ? -1 : FindAddress(text, CountLinkUnits(text, length), foundLength);
}

int FindEMailW(const WCHAR* text, int length, int& foundLength)
{
    foundLength = 0;
    if (text == nullptr)
        return -1;
    constexpr int kUnitSize = sizeof(WCHAR);
    const int start = FindAddress(text, CountLinkUnits(text, length), foundLength);
    foundLength *= kUnitSize;
    return start < 0 ? -1 : start * kUnitSize;
}
