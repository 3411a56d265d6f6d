// How the bytes of an edited text make characters.
//
// Text in a Unicode code type is UTF-16, where a surrogate pair is one character; any other is in
// the multibyte code page of its type, where a lead byte with its trail byte is. A character is
// handed about as its code: the byte, lead byte * 256 + trail byte, the unit, or, for a pair, the
// code point (from 0x10000 on). So codes below 0x10000 can index a table.
//
//   TextCode code(CT_SJIS);
//   code.Visit([&](auto reader) {                       // one instance for each kind of text
//       for (const char* p = text; p < end;)
//           Count(reader.Next(p, end));
//   });
//
// The multibyte code page in force plays no part once a TextCode has been made.

#pragma once

#include "foundation/multibyte.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstring>
#include <vector>

namespace tlvn {

// Reads multibyte text.
class NarrowReader {
public:
    explicit NarrowReader(const std::array<BYTE, 256>& classes) : m_classes(classes.data()) {}

    // The code of the character at p < end, which is stepped over.
    unsigned Next(const char*& p, const char* end) const
    {
        const unsigned first = static_cast<BYTE>(*p++);
        if ((m_classes[first] & kLead) == 0 || p == end)
            return first;
        const unsigned second = static_cast<BYTE>(*p);
        if ((m_classes[second] & kTrail) == 0)
            return first;
        ++p;
        return first << 8 | second;
    }

private:
    static constexpr int kLead = 1; // as platform/multibyte.h has them
    static constexpr int kTrail = 2;

    const BYTE* m_classes;
};

// Reads UTF-16 at any address. A surrogate without its partner is a character, and so is an odd
// byte at the end.
class WideReader {
public:
    unsigned Next(const char*& p, const char* end) const
    {
        const unsigned first = Unit(p, end);
        if (first - 0xD800 >= 0x400 || p == end)
            return first;
        const char* next = p;
        const unsigned second = Unit(next, end) - 0xDC00;
        if (second >= 0x400)
            return first;
        p = next;
        return 0x10000 + ((first - 0xD800) << 10) + second;
    }

private:
    static unsigned Unit(const char*& p, const char* end)
    {
        if (end - p < 2)
            return static_cast<BYTE>(*p++);
        WCHAR unit;
        std::memcpy(&unit, p, sizeof unit);
        p += sizeof unit;
        return unit;
    }
};

class TextCode {
public:
    explicit TextCode(CodeType codeType) : m_codeType(codeType)
    {
        const CApplyLocale locale(codeType);
        m_classes = detail::g_multibyteClass;
    }

    CodeType GetCodeType() const { return m_codeType; }
    bool IsWide() const { return IsCodeTypeUnicode(m_codeType) != 0; }

    // Calls `work` with the reader of the text and gives what it returns.
    template <class Work>
    decltype(auto) Visit(Work&& work) const
    {
        return IsWide() ? work(WideReader()) : work(NarrowReader(m_classes));
    }

    // The code of the character at p < end, which is stepped over.
    unsigned Next(const char*& p, const char* end) const
    {
        return IsWide() ? WideReader().Next(p, end) : NarrowReader(m_classes).Next(p, end);
    }

private:
    CodeType m_codeType;
    std::array<BYTE, 256> m_classes;
};

// A set of characters by their codes.
class CodeSet {
public:
    // Those of a text in that code.
    CodeSet(const TextCode& code, const char* text, int length)
    {
        const char* const end = text + length;
        while (text < end) {
            const unsigned c = code.Next(text, end);
            if (c < 0x10000)
                m_has.set(c);
            else
                m_pairs.push_back(c);
        }
    }

    bool Has(unsigned c) const
    {
        return c < 0x10000 ? m_has[c]
                           : std::find(m_pairs.begin(), m_pairs.end(), c) != m_pairs.end();
    }

private:
    std::bitset<0x10000> m_has;
    std::vector<unsigned> m_pairs;
};

// Length in bytes of the run of characters of the set that the text begins with.
inline int CountRun(const TextCode& code, const CodeSet& set, const char* text, int length)
{
    return code.Visit([&](auto reader) {
        const char* const end = text + length;
        const char* p = text;
        while (p < end) {
            const char* next = p;
            if (!set.Has(reader.Next(next, end)))
                break;
            p = next;
        }
        return static_cast<int>(p - text);
    });
}

} // namespace tlvn
