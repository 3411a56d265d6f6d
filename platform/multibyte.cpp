#include "platform/multibyte.h"

#include "platform/nls.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tlvn {

namespace {

constexpr UINT kJapanese = 932;
constexpr UINT kSimplifiedChinese = 936;
constexpr UINT kKorean = 949;
constexpr UINT kTraditionalChinese = 950;

constexpr bool Within(unsigned c, unsigned first, unsigned last)
{
    return c >= first && c <= last;
}

constexpr bool IsLeadOf(UINT page, unsigned c)
{
    switch (page) {
    case kJapanese:
        return Within(c, 0x81, 0x9F) || Within(c, 0xE0, 0xFC);
    case kSimplifiedChinese:
    case kKorean:
    case kTraditionalChinese:
        return Within(c, 0x81, 0xFE);
    default:
        return false;
    }
}

constexpr bool IsTrailOf(UINT page, unsigned c)
{
    switch (page) {
    case kJapanese:
        return Within(c, 0x40, 0x7E) || Within(c, 0x80, 0xFC);
    case kSimplifiedChinese:
        return Within(c, 0x40, 0x7E) || Within(c, 0x80, 0xFE);
    case kKorean:
        return Within(c, 0x41, 0x5A) || Within(c, 0x61, 0x7A) || Within(c, 0x81, 0xFE);
    case kTraditionalChinese:
        return Within(c, 0x40, 0x7E) || Within(c, 0xA1, 0xFE);
    default:
        return false;
    }
}

// A run of full-width capital letters and where their small letters are.
struct CaseRun {
    unsigned upper;
    unsigned lower;
    unsigned count;
};

// The two runs of each page; the letters of 950 go on in the next row.
struct CaseRuns {
    CaseRun run[2];
};

constexpr CaseRuns CaseRunsOf(UINT page)
{
    switch (page) {
    case kJapanese:
        return {{{0x8260, 0x8281, 26}, {}}};
    case kSimplifiedChinese:
    case kKorean:
        return {{{0xA3C1, 0xA3E1, 26}, {}}};
    case kTraditionalChinese:
        return {{{0xA2CF, 0xA2E9, 22}, {0xA2E5, 0xA340, 4}}};
    default:
        return {};
    }
}

constexpr std::array<BYTE, 256> ClassesOf(UINT page)
{
    std::array<BYTE, 256> classes{};
    for (unsigned c = 0; c < 256; c++)
        classes[c] = static_cast<BYTE>((IsLeadOf(page, c) ? 1 : 0) | (IsTrailOf(page, c) ? 2 : 0));
    return classes;
}

// 932 from the start, so that the initialisation of other objects can rely on it.
constinit UINT g_page = kJapanese;
constinit CaseRuns g_caseRuns = CaseRunsOf(kJapanese);

bool TakeSystemPage()
{
    const UINT system = GetSystemCodePage();
    const bool doubleByte = IsLeadOf(system, 0x81);
    if (doubleByte)
        SetMultibytePage(system);
    return doubleByte;
}
[[maybe_unused]] const bool g_systemPageTaken = TakeSystemPage();

// The character at `p`, which is stepped over; `end` is at most the end of the text.
unsigned NextCharacter(const char*& p, const char* end)
{
    const unsigned first = static_cast<BYTE>(*p);
    if (!IsDoubleByte(p, end)) {
        p++;
        return first;
    }
    const unsigned c = first << 8 | static_cast<BYTE>(p[1]);
    p += 2;
    return c;
}

template <bool kFold>
int Compare(const char* a, const char* aEnd, const char* b, const char* bEnd)
{
    while (a != aEnd && b != bEnd) {
        unsigned ca = NextCharacter(a, aEnd);
        unsigned cb = NextCharacter(b, bEnd);
        if (ca == cb)
            continue;
        if (kFold) {
            ca = ToLowerMbc(ca);
            cb = ToLowerMbc(cb);
        }
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return static_cast<int>(a != aEnd) - static_cast<int>(b != bEnd);
}

const char* EndOf(const char* s)
{
    return s + std::strlen(s);
}

// The end of the text at s, which has at most n bytes.
const char* EndWithin(const char* s, int n)
{
    if (n <= 0)
        return s;
    const void* zero = std::memchr(s, '\0', static_cast<std::size_t>(n));
    return zero != nullptr ? static_cast<const char*>(zero) : s + n;
}

template <unsigned (*kMap)(unsigned)>
void MapCase(char* text, int length)
{
    const char* const end = text + std::max(length, 0);
    for (char* p = text; p != end;) {
        const char* next = p;
        const unsigned c = kMap(NextCharacter(next, end));
        if (next - p == 2)
            *p++ = static_cast<char>(c >> 8);
        *p++ = static_cast<char>(c & 0xFF);
    }
}

} // namespace

namespace detail {
constinit std::array<BYTE, 256> g_multibyteClass = ClassesOf(kJapanese);
} // namespace detail

UINT GetMultibytePage() noexcept
{
    return g_page;
}

void SetMultibytePage(UINT codePage) noexcept
{
    if (codePage == g_page)
        return;
    g_page = codePage;
    g_caseRuns = CaseRunsOf(codePage);
    detail::g_multibyteClass = ClassesOf(codePage);
}

bool IsInsideCharacter(const char* begin, const char* p, const char* end) noexcept
{
    if (p <= begin || p >= end)
        return false;
    // A byte starts a character for certain when it is no trail byte or the one before it is
    // no lead byte; from there on, characters go in pairs up to p.
    const char* start = p;
    while (start != begin && IsTrailByte(*start) && IsLeadByte(start[-1]))
        start--;
    return (p - start) % 2 != 0;
}

unsigned ToLowerMbc(unsigned c) noexcept
{
    if (c < 0x100)
        return static_cast<BYTE>(ToLowerAscii(static_cast<char>(c)));
    for (const CaseRun& run : g_caseRuns.run)
        if (c >= run.upper && c - run.upper < run.count)
            return run.lower + (c - run.upper);
    return c;
}

unsigned ToUpperMbc(unsigned c) noexcept
{
    if (c < 0x100)
        return static_cast<BYTE>(ToUpperAscii(static_cast<char>(c)));
    for (const CaseRun& run : g_caseRuns.run)
        if (c >= run.lower && c - run.lower < run.count)
            return run.upper + (c - run.lower);
    return c;
}

int CompareMbs(const char* a, const char* b) noexcept
{
    return Compare<false>(a, EndOf(a), b, EndOf(b));
}

int CompareMbsNoCase(const char* a, const char* b) noexcept
{
    return Compare<true>(a, EndOf(a), b, EndOf(b));
}

int CompareMbsN(const char* a, const char* b, int n) noexcept
{
    return Compare<false>(a, EndWithin(a, n), b, EndWithin(b, n));
}

int CompareMbsNNoCase(const char* a, const char* b, int n) noexcept
{
    return Compare<true>(a, EndWithin(a, n), b, EndWithin(b, n));
}

int CompareAsciiNNoCase(const char* a, const char* b, int n) noexcept
{
    for (int i = 0; i < n; i++) {
        const int ca = static_cast<BYTE>(ToLowerAscii(a[i]));
        const int cb = static_cast<BYTE>(ToLowerAscii(b[i]));
        if (ca != cb || ca == 0)
            return ca - cb;
    }
    return 0;
}

int MbsLength(const char* s) noexcept
{
    return static_cast<int>(std::strlen(s));
}

const char* FindMbc(const char* text, unsigned c) noexcept
{
    const char* const end = EndOf(text);
    while (text != end) {
        const char* const start = text;
        if (NextCharacter(text, end) == c)
            return start;
    }
    return c == 0 ? end : nullptr;
}

const char* FindLastMbc(const char* text, unsigned c) noexcept
{
    const char* const end = EndOf(text);
    const char* found = c == 0 ? end : nullptr;
    while (text != end) {
        const char* const start = text;
        if (NextCharacter(text, end) == c)
            found = start;
    }
    return found;
}

const char* FindMbs(const char* text, const char* find) noexcept
{
    const std::size_t length = std::strlen(find);
    const char* const end = EndOf(text);
    if (length == 0)
        return text;
    while (static_cast<std::size_t>(end - text) >= length) {
        if (*text == *find && std::memcmp(text, find, length) == 0)
            return text;
        text += CharLength(text, end);
    }
    return nullptr;
}

const char* FindOneOfMbs(const char* text, const char* set) noexcept
{
    const char* const end = EndOf(text);
    while (text != end) {
        const char* const start = text;
        const unsigned c = NextCharacter(text, end);
        if (FindMbc(set, c) != nullptr)
            return start;
    }
    return nullptr;
}

void ToLowerMbs(char* text, int length) noexcept
{
    MapCase<ToLowerMbc>(text, length);
}

void ToUpperMbs(char* text, int length) noexcept
{
    MapCase<ToUpperMbc>(text, length);
}

} // namespace tlvn
