// The comparing, searching and replacing half of CBuffer.

#include "foundation/buffer.h"

#include "foundation/character_boundary.h"
#include "foundation/multibyte.h"
#include "foundation/phrase_search.h"
#include "platform/nls.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

using tlvn::PhraseSearch;

namespace {

// Bytes of a text without its terminator; a text too long for an int is longer than any content.
int TextBytes(const char* s, bool wide)
{
    if (!wide)
        return tlvn::MbsLength(s);
    INT64 length = 0;
    WCHAR unit;
    while (std::memcpy(&unit, s + length, sizeof unit), unit != 0)
        length += 2;
    return static_cast<int>(std::min<INT64>(length, INT_MAX));
}

int TextBytes(const WCHAR* s)
{
    return TextBytes(reinterpret_cast<const char*>(s), true);
}

bool IsEmptyText(const char* s)
{
    return s == nullptr || *s == '\0';
}

bool IsEmptyText(const WCHAR* s)
{
    return s == nullptr || *s == 0;
}

// Compares n bytes of UTF-16 text, up to a terminator that both have.
bool EqualUnits(const char* a, const char* b, int n, bool ignoreCase)
{
    for (int i = 0; i + 2 <= n; i += 2) {
        WCHAR x;
        WCHAR y;
        std::memcpy(&x, a + i, sizeof x);
        std::memcpy(&y, b + i, sizeof y);
        if (x != y && !(ignoreCase && tlvn::ToLowerW(x) == tlvn::ToLowerW(y)))
            return false;
        if (x == 0)
            return true;
    }
    return true;
}

} // namespace

int CBuffer::Equal(const char* s, int wide, int pos, int nocase) const
{
    if (pos < 0 || m_data == nullptr || s == nullptr)
        return 0;
    const int length = TextBytes(s, wide != 0);
    if (length != INT64{m_length} - pos)
        return 0;
    return EqualN(s, length, wide, pos, nocase);
}

int CBuffer::EqualN(const char* s, int n, int wide, int pos, int nocase) const
{
    if (pos < 0 || n < 0 || m_data == nullptr || s == nullptr || n > INT64{m_length} - pos)
        return 0;
    const char* text = m_data + pos;
    if (wide != 0)
        return EqualUnits(text, s, n, nocase != 0);
    return (nocase != 0 ? tlvn::CompareMbsNNoCase(text, s, n) : tlvn::CompareMbsN(text, s, n)) == 0;
}

int CBuffer::EndWith(const char* s, int wide, int nocase) const
{
    if (m_data == nullptr || s == nullptr)
        return 0;
    const int length = TextBytes(s, wide != 0);
    return length <= m_length ? Equal(s, wide, m_length - length, nocase) : 0;
}

int CBuffer::FindChar(char ch, int start) const
{
    if (start < 0 || start >= m_length)
        return -1;
    const char* const end = m_data + m_length;
    tlvn::CharacterBoundary boundary(m_data + start);
    const char* p = m_data + start;
    while (p < end) {
        p = static_cast<const char*>(std::memchr(p, ch, static_cast<std::size_t>(end - p)));
        if (p == nullptr)
            return -1;
        if (boundary.IsStart(p) && !tlvn::IsDoubleByte(p, end))
            return static_cast<int>(p - m_data);
        ++p;
    }
    return -1;
}

int CBuffer::FindAsciiChar(char ch, int start) const
{
    if (start < 0 || start >= m_length)
        return -1;
    const void* p = std::memchr(m_data + start, ch, static_cast<std::size_t>(m_length - start));
    return p != nullptr ? static_cast<int>(static_cast<const char*>(p) - m_data) : -1;
}

int CBuffer::FindOneOfChar(const char* set, int start) const
{
    if (IsEmptyText(set) || start < 0 || start >= m_length)
        return -1;
    bool member[256] = {};
    for (; *set != '\0'; ++set)
        member[static_cast<BYTE>(*set)] = true;
    for (int i = start; i < m_length; ++i)
        if (member[static_cast<BYTE>(m_data[i])])
            return i;
    return -1;
}

int CBuffer::FindAsciiPhrase(const char* s, int start, int nocase) const
{
    if (IsEmptyText(s))
        return -1;
    return FindFirst(PhraseSearch(PhraseSearch::Byte, s, TextBytes(s, false), nocase != 0), start);
}

int CBuffer::FindPhrase(const char* s, int start, int nocase) const
{
    if (IsEmptyText(s))
        return -1;
    return FindFirst(PhraseSearch(PhraseSearch::Character, s, TextBytes(s, false), nocase != 0),
                     start);
}

int CBuffer::FindPhrase(const WCHAR* s, int start, int nocase) const
{
    if (IsEmptyText(s))
        return -1;
    return FindFirst(PhraseSearch(PhraseSearch::Utf16, s, TextBytes(s), nocase != 0), start);
}

int CBuffer::ReverseFindChar(char ch, int end) const
{
    if (m_data == nullptr || end < -1)
        return -1;
    if (end == -1 || end > m_length)
        end = m_length;
    tlvn::CharacterBoundary boundary(m_data);
    for (int i = end - 1; i >= 0; --i) {
        const char* p = m_data + i;
        if (*p == ch && boundary.IsStart(p))
            return i;
    }
    return -1;
}

int CBuffer::ReverseFindAsciiChar(char ch, int end) const
{
    if (end < -1)
        return -1;
    if (end == -1 || end > m_length)
        end = m_length;
    for (int i = end - 1; i >= 0; --i)
        if (m_data[i] == ch)
            return i;
    return -1;
}

int CBuffer::ReverseFindAsciiPhrase(const char* s, int end, int nocase) const
{
    if (IsEmptyText(s))
        return -1;
    if (end < 0 || end > m_length)
        end = m_length;
    const int length = TextBytes(s, false);
    return FindLast(PhraseSearch(PhraseSearch::Byte, s, length, nocase != 0), end - length);
}

int CBuffer::ReverseFindPhrase(const char* s, int end, int nocase) const
{
    if (IsEmptyText(s))
        return -1;
    if (end < 0 || end > m_length)
        end = m_length;
    const int length = TextBytes(s, false);
    return FindLast(PhraseSearch(PhraseSearch::Character, s, length, nocase != 0), end - length);
}

int CBuffer::ReverseFindPhrase(const WCHAR* s, int end, int nocase) const
{
    if (IsEmptyText(s) || end < -1)
        return -1;
    if (end == -1)
        end = m_length;
    const int length = TextBytes(s);
    // An end beyond the content only says at which of two byte positions units start.
    if (end > m_length)
        end = m_length - ((end - m_length) % 2 != 0 ? 1 : 0);
    return FindLast(PhraseSearch(PhraseSearch::Utf16, s, length, nocase != 0), end - length);
}

int CBuffer::FindFirst(const PhraseSearch& search, int start) const
{
    if (m_data == nullptr || start < 0 || start > m_length)
        return -1;
    const char* p = search.FindFirst(m_data + start, m_data + m_length);
    return p != nullptr ? static_cast<int>(p - m_data) : -1;
}

int CBuffer::FindLast(const PhraseSearch& search, int from) const
{
    if (m_data == nullptr || from < 0)
        return -1;
    const char* p = search.FindLast(m_data, m_data + from, m_data + m_length);
    return p != nullptr ? static_cast<int>(p - m_data) : -1;
}

int CBuffer::ReplaceAsciiPhraseAll(const char* oldText, const char* newText, int start, int count,
                                   int nocase)
{
    return ReplaceAll(PhraseSearch::Byte, oldText, newText, start, count, nocase);
}

int CBuffer::ReplacePhraseAll(const char* oldText, const char* newText, int start, int count,
                              int nocase)
{
    return ReplaceAll(PhraseSearch::Character, oldText, newText, start, count, nocase);
}

int CBuffer::ReplacePhraseAll(const WCHAR* oldText, const WCHAR* newText, int start, int count,
                              int nocase)
{
    return ReplaceAll(PhraseSearch::Utf16, reinterpret_cast<const char*>(oldText),
                      reinterpret_cast<const char*>(newText), start, count, nocase);
}

// The rule is that of replacing one occurrence after the other in place: the scan position runs
// over the text as it becomes, and ends when it passes a limit that was taken from the text as it
// was. Moving the rest at every replacement would take quadratic time; instead the occurrences
// are counted first, the room for all of them is made at once, and the text is then copied
// forward once with the replacements in their places.
int CBuffer::ReplaceAll(PhraseSearch::Unit unit, const char* oldText, const char* newText,
                        int start, int count, int nocase)
{
    const bool wide = unit == PhraseSearch::Utf16;
    const int oldLength = oldText != nullptr ? TextBytes(oldText, wide) : 0;
    const int newLength = newText != nullptr ? TextBytes(newText, wide) : 0;
    if (oldLength == 0 || m_data == nullptr || start < 0)
        return 0;
    if (Owns(oldText) || Owns(newText)) {
        // The texts are part of what is about to change.
        CBuffer oldCopy;
        CBuffer newCopy;
        oldCopy.Set(oldText, oldLength);
        newCopy.Set(newText, newLength);
        return ReplaceAll(unit, oldCopy, newCopy, start, count, nocase);
    }

    const PhraseSearch search(unit, oldText, oldLength, nocase != 0);
    const int end =
        count > 0 ? static_cast<int>(std::min<INT64>(INT64{start} + count, m_length)) : m_length;
    const INT64 limit = INT64{end} - oldLength;
    const INT64 growth = INT64{newLength} - oldLength;

    // Calls `replace` with every occurrence in [from, to), whose text was that from `start` on.
    const auto forEach = [&](const char* from, const char* to, auto replace) {
        const char* const origin = from;
        int found = 0;
        while (const char* hit = search.FindFirst(from, to)) {
            if (start + (hit - origin) + found * growth > limit)
                break;
            replace(from, hit);
            from = hit + oldLength;
            ++found;
        }
        return found;
    };
    if (start > limit)
        return 0;
    const int found = forEach(m_data + start, m_data + m_length, [](const char*, const char*) {});
    if (found == 0)
        return 0;

    const int newSize = CheckedLength(m_length + found * growth);
    SetAllocSize(newSize);

    // With the rest of the text at the end of the room, what is written never overtakes what is
    // still to be read.
    const int rest = m_length - start;
    const int room = std::max(newSize, m_length);
    char* const source = m_data + room - rest;
    if (growth > 0)
        std::memmove(source, m_data + start, static_cast<std::size_t>(rest));
    char* to = m_data + start;
    const char* from = source;
    forEach(source, source + rest, [&](const char* unread, const char* hit) {
        std::memmove(to, unread, static_cast<std::size_t>(hit - unread));
        to += hit - unread;
        if (newLength > 0)
            std::memcpy(to, newText, static_cast<std::size_t>(newLength));
        to += newLength;
        from = hit + oldLength;
    });
    std::memmove(to, from, static_cast<std::size_t>(source + rest - from));
    SetLength(newSize);
    return found;
}

int CBuffer::IsMbsTrail(int i) const
{
    if (i < 1 || i >= m_length)
        return 0;
    return tlvn::CharacterBoundary(m_data).IsStart(m_data + i) ? 0 : 1;
}
