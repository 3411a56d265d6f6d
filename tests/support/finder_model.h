// The finders of addresses and URLs step by step, as their rules are told: slow, one character
// and one kind of link after the other. For the random test and the fuzz target.

#pragma once

#include "TlvnMisc.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <cstring>
#include <set>
#include <string>

namespace finder_model {

constexpr char kAddress[] =
    ".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|";
constexpr char kUrl[] =
    ".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|#@:;,";

inline bool IsDouble(const std::string& text, int i)
{
    return IsTLead(text.data(), i, static_cast<int>(text.size())) != 0;
}
inline bool IsDouble(const tlvn::WString& text, int i)
{
    return (GetCharType(reinterpret_cast<const char*>(text.data()),
                        static_cast<int>(text.size() * 2),
                        reinterpret_cast<const char*>(text.data() + i), CT_UNICODE) &
            CHARTYPE_DOUBLE) != 0;
}
inline int Step(const std::string& text, int i)
{
    return IsDouble(text, i) ? 2 : 1;
}
inline int Step(const tlvn::WString&, int)
{
    return 1;
}

inline int Search(const std::string& text, int limit, const char* phrase)
{
    const char* const found = mbsnnstr(text.data(), limit, phrase, -1, 1);
    return found == nullptr ? -1 : static_cast<int>(found - text.data());
}
inline int Search(const tlvn::WString& text, int limit, const char* phrase)
{
    const tlvn::WString wide(phrase, phrase + std::strlen(phrase));
    const WCHAR* const found = wcsnnstr(text.data(), limit, wide.c_str(), -1, 1);
    return found == nullptr ? -1 : static_cast<int>(found - text.data());
}

inline bool IsControlOrSpace(char c)
{
    return tlvn::IsSpace(c) || (c >= 0 && c < ' ') || c == 0x7F;
}
inline bool IsControlOrSpace(WCHAR c)
{
    return tlvn::IsSpaceW(c) || c < ' ' || (c >= 0x7F && c < 0xA0);
}

// `space` is the full-width space of the text, empty when it is not looked for.
inline bool IsSpaceAt(const std::string& text, int i, const std::string& space)
{
    return !space.empty() && text.compare(static_cast<std::size_t>(i), 2, space) == 0;
}
inline bool IsSpaceAt(const tlvn::WString& text, int i, const tlvn::WString&)
{
    const WCHAR c = text[static_cast<std::size_t>(i)];
    return c > 0xFF && tlvn::IsSpaceW(c);
}

template <class Text>
struct Model {
    const Text& text;
    int end = static_cast<int>(text.size());
    std::set<int> starts; // of characters

    explicit Model(const Text& t) : text(t)
    {
        for (int i = 0; i < end; i += Step(text, i))
            starts.insert(i);
    }

    // 0 behind the end.
    int At(int i) const
    {
        using Unsigned = std::make_unsigned_t<typename Text::value_type>;
        return i < end ? static_cast<Unsigned>(text[static_cast<std::size_t>(i)]) : 0;
    }
    bool Is(int i, const char* set) const
    {
        const int c = At(i);
        return c > 0 && c < 0x80 && std::strchr(set, c) != nullptr;
    }
    bool IsAlpha(int i) const { return At(i) < 0x80 && tlvn::IsAlpha(static_cast<char>(At(i))); }
    bool IsAlnum(int i) const { return At(i) < 0x80 && tlvn::IsAlnum(static_cast<char>(At(i))); }
    bool MayStart(int i) const { return i == 0 || !IsAlnum(i - 1) || starts.count(i - 1) == 0; }

    int FindMail(int& length) const
    {
        length = 0;
        for (int p = 0; p <= end - 5;) {
            if (!Is(p, kAddress)) {
                p += Step(text, p);
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
        for (int j = i + 2; j < end; j += Step(text, j)) {
            if (At(j) == '\\' && j + 1 < end && At(j + 1) != '\\')
                return j + 1;
        }
        return -1;
    }

    int FindUrl(const Text& space, int& length) const
    {
        static const char* const schemes[] = {
            "mailto:", "http:", "https:", "ftp:", "file:", "gopher:"};
        int limit = end;
        int kind = 0;
        int p = 0;
        for (int i = 0; i < 6; ++i) {
            const int found = Search(text, limit, schemes[i]);
            if (found < 0 || !MayStart(found))
                continue;
            limit = found;
            kind = i + 1;
            p = found + static_cast<int>(std::strlen(schemes[i]));
        }
        for (const int i : starts) {
            if (i < limit && IsAlpha(i) && At(i + 1) == ':' && At(i + 2) == '\\' && MayStart(i)) {
                limit = i;
                kind = 7;
                p = i + 3;
            }
        }
        for (const int i : starts) {
            const int pathEnd = i < limit ? FindNetworkPathEnd(i) : -1;
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
            p = EndOfWeb(p, space);
        length = p - limit;
        return limit;
    }

    int EndOfMailto(int p, bool bracketed) const
    {
        for (bool query = false; p < end; p += Step(text, p)) {
            const auto c = text[static_cast<std::size_t>(p)];
            if (Is(p, kUrl)) {
                query = query || c == '?';
                continue;
            }
            if (bracketed ? c == '>' : !query || (!IsDouble(text, p) && IsControlOrSpace(c)))
                break;
        }
        return p;
    }

    int EndOfPath(int p, int close) const
    {
        while (p < end && (Is(p, kUrl) || At(p) == '\\' || IsDouble(text, p) ||
                           (close != 0 && At(p) != close)))
            p += Step(text, p);
        return p;
    }

    int EndOfWeb(int p, const Text& space) const
    {
        for (int state = 0; p < end; p += state == 1 ? Step(text, p) : 1) {
            if (state == 0 && At(p) == '/')
                continue;
            if (state == 0)
                state = 1;
            if (state == 1 && At(p) == '/')
                state = 2;
            if (state == 2 ? !Is(p, kUrl)
                           : IsSpaceAt(text, p, space) || (At(p) < 0x80 && !Is(p, kUrl)))
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
    const Model<std::string> a(narrow);
    if (FindEMailA(narrow.data(), size, length) != a.FindMail(expected) || length != expected)
        return "FindEMailA";
    if (FindUrlA(narrow.data(), size, type, length) != a.FindUrl(FullWidthSpace(type), expected) ||
        length != expected)
        return "FindUrlA";
    const Model<tlvn::WString> w(wide);
    const int mail = w.FindMail(expected);
    if (FindEMailW(wide.data(), bytes + 1, length) != (mail < 0 ? -1 : mail * 2) ||
        length != expected * 2)
        return "FindEMailW";
    const int url = w.FindUrl(tlvn::WString(), expected);
    if (FindUrlW(wide.data(), bytes + 1, length) != (url < 0 ? -1 : url * 2) ||
        length != expected * 2)
        return "FindUrlW";
    return nullptr;
}

} // namespace finder_model
