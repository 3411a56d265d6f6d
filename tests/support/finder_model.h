// The finders of addresses and URLs step by step, as their rules are told: slow, one character
// and one kind of link after the other. For the random test and the fuzz target.

#pragma once

#include "TlvnMisc.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <cstring>
#include <string>
#include <vector>

namespace finder_model {

constexpr char kAddress[] =
    ".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|";
constexpr char kUrl[] =
    ".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|#@:;,";

// A text, narrow or wide, by its units.
struct Model {
    // What counts of a unit, or of the character that begins there. `space` is the full-width
    // space of the code.
    struct Unit {
        int value;
        bool isDouble, isSpace, isControl;
        int step = 1;
        bool starts = false;
    };
    std::vector<Unit> units;
    int end = 0;

    // `space` is empty when it is not looked for.
    Model(const std::string& text, const std::string& space)
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char c = text[i];
            const bool pair =
                IsTLead(text.data(), static_cast<int>(i), static_cast<int>(text.size())) != 0;
            units.push_back({static_cast<BYTE>(c), pair,
                             !space.empty() && text.compare(i, 2, space) == 0,
                             tlvn::IsSpace(c) || (c >= 0 && c < ' ') || c == 0x7F, pair ? 2 : 1});
        }
        MarkStarts();
    }
    explicit Model(const tlvn::WString& text)
    {
        const char* const bytes = reinterpret_cast<const char*>(text.data());
        for (std::size_t i = 0; i < text.size(); ++i) {
            const WCHAR c = text[i];
            const int type =
                GetCharType(bytes, static_cast<int>(text.size() * 2), bytes + 2 * i, CT_UNICODE);
            units.push_back({c, (type & CHARTYPE_DOUBLE) != 0, c > 0xFF && tlvn::IsSpaceW(c),
                             tlvn::IsSpaceW(c) || c < ' ' || (c >= 0x7F && c < 0xA0)});
        }
        MarkStarts();
    }
    void MarkStarts()
    {
        end = static_cast<int>(units.size());
        for (int i = 0; i < end; i += Step(i))
            units[static_cast<std::size_t>(i)].starts = true;
    }

    const Unit& UnitAt(int i) const { return units[static_cast<std::size_t>(i)]; }
    int Step(int i) const { return UnitAt(i).step; }
    // 0 behind the end.
    int At(int i) const { return i < end ? UnitAt(i).value : 0; }
    bool Is(int i, const char* set) const
    {
        const int c = At(i);
        return c > 0 && c < 0x80 && std::strchr(set, c) != nullptr;
    }
    bool IsAlpha(int i) const { return At(i) < 0x80 && tlvn::IsAlpha(static_cast<char>(At(i))); }
    bool IsAlnum(int i) const { return At(i) < 0x80 && tlvn::IsAlnum(static_cast<char>(At(i))); }
    bool MayStart(int i) const { return i == 0 || !IsAlnum(i - 1) || !UnitAt(i - 1).starts; }

    // The first place before `limit` at which all of a scheme stands, in any case.
    int Search(const char* scheme, int limit) const
    {
        const int length = static_cast<int>(std::strlen(scheme));
        const auto is = [&](int i, char c) { return (IsAlpha(i) ? At(i) | 0x20 : At(i)) == c; };
        for (int i = 0; i + length <= limit; i += Step(i)) {
            int same = 0;
            while (same < length && is(i + same, scheme[same]))
                ++same;
            if (same == length)
                return i;
        }
        return -1;
    }

    int FindMail(int& length) const
    {
        length = 0;
        for (int p = 0; p <= end - 5;) {
            if (!Is(p, kAddress)) {
                p += Step(p);
                continue;
            }
            const int start = p++;
            while (Is(p, kAddress)) {
                if (++p >= end - 4)
                    return -1;
            }
            if (At(p) != '@' || !Is(++p, kAddress + 1))
                continue;
            do {
                if (++p > end - 2)
                    return -1;
            } while (Is(p, kAddress + 1));
            if (At(p) != '.' || !Is(++p, kAddress + 1))
                continue;
            while (Is(p, kAddress))
                ++p;
            length = p - start;
            return start;
        }
        return -1;
    }

    int FindNetworkPathEnd(int i) const
    {
        if (At(i) != '\\' || At(i + 1) != '\\' || At(i + 2) == '\\' || !MayStart(i))
            return -1;
        for (int j = i + 2; j < end; j += Step(j)) {
            if (At(j) == '\\' && j + 1 < end && At(j + 1) != '\\')
                return j + 1;
        }
        return -1;
    }

    int FindUrl(int& length) const
    {
        static const char* const schemes[] = {
            "mailto:", "http:", "https:", "ftp:", "file:", "gopher:"};
        int limit = end;
        int kind = 0;
        int p = 0;
        for (int i = 0; i < 6; ++i) {
            const int found = Search(schemes[i], limit);
            if (found < 0 || !MayStart(found))
                continue;
            limit = found;
            kind = i + 1;
            p = found + static_cast<int>(std::strlen(schemes[i]));
        }
        for (int i = 0; i < limit; i += Step(i)) {
            if (IsAlpha(i) && At(i + 1) == ':' && At(i + 2) == '\\' && MayStart(i)) {
                limit = i;
                kind = 7;
                p = i + 3;
            }
        }
        for (int i = 0; i < limit; i += Step(i)) {
            const int pathEnd = FindNetworkPathEnd(i);
            if (pathEnd >= 0) {
                limit = i;
                kind = 8;
                p = pathEnd;
            }
        }
        length = 0;
        if (kind == 0)
            return -1;
        const int before = limit > 0 ? At(limit - 1) : 0;
        if (kind == 1)
            p = EndOfMailto(p, before == '<');
        else if (kind == 5 || kind >= 7)
            p = EndOfPath(p, before == '<' ? '>' : before == '"' ? '"' : 0);
        else
            p = EndOfWeb(p);
        length = p - limit;
        return limit;
    }

    int EndOfMailto(int p, bool bracketed) const
    {
        for (bool query = false; p < end; p += Step(p)) {
            const Unit& c = UnitAt(p);
            if (Is(p, kUrl))
                query = query || c.value == '?';
            else if (bracketed ? c.value == '>' : !query || (!c.isDouble && c.isControl))
                break;
        }
        return p;
    }

    int EndOfPath(int p, int close) const
    {
        while (p < end && (Is(p, kUrl) || At(p) == '\\' || UnitAt(p).isDouble ||
                           (close != 0 && At(p) != close)))
            p += Step(p);
        return p;
    }

    int EndOfWeb(int p) const
    {
        for (int state = 0; p < end; p += state == 1 ? Step(p) : 1) {
            if (state == 0 && At(p) == '/')
                continue;
            if (state == 0)
                state = 1;
            if (state == 1 && At(p) == '/')
                state = 2;
            if (state == 2 ? !Is(p, kUrl) : UnitAt(p).isSpace || (At(p) < 0x80 && !Is(p, kUrl)))
                break;
        }
        return p;
    }
};

// The bytes of the full-width space in narrow text of a code type, if they are two.
inline std::string FullWidthSpace(CodeType type)
{
    CBuffer out;
    ConvertToOtherCodeType2(CT_SJIS, "\x81\x40", 2,
                            CharSetCode2CodePage(type) == 932 ? CT_SJIS : type, out, 0);
    const std::string space(out, static_cast<std::size_t>(out.GetLength()));
    return space.size() == 2 ? space : "";
}

// The four finders on one text; null, or what differs from the model.
inline const char* Compare(const std::string& narrow, const tlvn::WString& wide, CodeType type)
{
    const int size = static_cast<int>(narrow.size());
    const int bytes = static_cast<int>(wide.size() * 2);
    int length, expected;
    const Model a(narrow, FullWidthSpace(type)), w(wide);
    const auto differs = [&](int found, int wanted, int unit) {
        return found != (wanted < 0 ? -1 : wanted * unit) || length != expected * unit;
    };
    if (differs(FindEMailA(narrow.data(), size, length), a.FindMail(expected), 1))
        return "FindEMailA";
    if (differs(FindUrlA(narrow.data(), size, type, length), a.FindUrl(expected), 1))
        return "FindUrlA";
    if (differs(FindEMailW(wide.data(), bytes + 1, length), w.FindMail(expected), 2))
        return "FindEMailW";
    return differs(FindUrlW(wide.data(), bytes + 1, length), w.FindUrl(expected), 2) ? "FindUrlW"
                                                                                     : nullptr;
}

} // namespace finder_model
