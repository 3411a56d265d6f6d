#include "charcode/flagged_char.h"

#include "foundation/text_length.h"
#include "platform/ascii_run.h"

namespace {

constexpr bool Within(unsigned c, unsigned first, unsigned last)
{
    return c >= first && c <= last;
}

// The character at p < end: a byte, or lead byte x 256 + trail byte.
unsigned CharacterAt(const BYTE* p, const BYTE* end)
{
    const unsigned lead = p[0];
    if (end - p < 2 || !(Within(lead, 0x81, 0x9F) || Within(lead, 0xE0, 0xFC)))
        return lead;
    const unsigned trail = p[1];
    return Within(trail, 0x40, 0xFC) && trail != 0x7F ? lead << 8 | trail : lead;
}

int SizeOf(unsigned c)
{
    return c > 0xFF ? 2 : 1;
}

bool IsHankakuKatakana(unsigned c)
{
    return Within(c, 0xA1, 0xDF);
}

bool IsMachineDepend(unsigned c)
{
    return Within(c, 0x8740, 0x879C) || Within(c, 0xED40, 0xEEFC) || Within(c, 0xF040, 0xF9FC) ||
           Within(c, 0xFA40, 0xFC4B);
}

using IsFlagged = bool (*)(unsigned c);

template <IsFlagged kIsFlagged>
int Find(const char* text, int len)
{
    if (text == nullptr)
        return -1;
    const BYTE* const start = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = start + tlvn::TextLength(text, len);
    for (const BYTE* p = start; (p += tlvn::AsciiRunLength(p, end)) < end;) {
        const unsigned c = CharacterAt(p, end);
        if (kIsFlagged(c))
            return static_cast<int>(p - start);
        p += SizeOf(c);
    }
    return -1;
}

template <IsFlagged kIsFlagged>
int RunLength(const char* text, int len)
{
    if (text == nullptr)
        return 0;
    const BYTE* const start = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = start + tlvn::TextLength(text, len);
    const BYTE* p = start;
    while (p < end) {
        const unsigned c = CharacterAt(p, end);
        if (!kIsFlagged(c))
            break;
        p += SizeOf(c);
    }
    return static_cast<int>(p - start);
}

} // namespace

int FindHankakuKatakana(const char* text, int len)
{
    return Find<IsHankakuKatakana>(text, len);
}

int FindMachineDependChar(const char* text, int len)
{
    return Find<IsMachineDepend>(text, len);
}

int GetHankakuKatakanaLen(const char* text, int len)
{
    return RunLength<IsHankakuKatakana>(text, len);
}

int GetMachineDependCharLen(const char* text, int len)
{
    return RunLength<IsMachineDepend>(text, len);
}
