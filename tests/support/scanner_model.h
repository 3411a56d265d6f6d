// The scanners against slow, simple models, on a text and a phrase made from arbitrary bytes.

#pragma once

#include "TlvnMisc.h"
#include "platform/multibyte.h"
#include "tests/support/buffer_model.h"
#include "tests/support/byte_source.h"

#include <cctype>
#include <string>
#include <tuple>
#include <vector>

// The rules of wildicmp as they are told, with recursion.
inline int WildcardModel(const char* text, const char* pattern)
{
    const auto fold = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    const bool onlyStar = pattern[0] == '*' && pattern[1] == '\0';
    if (*text == '\0' || *pattern == '\0' || onlyStar)
        return onlyStar || *text == *pattern ? 0 : 1;
    if (*pattern == '*') {
        const bool follows = fold(*text) == fold(pattern[1]);
        return follows && WildcardModel(text, pattern + 1) == 0 ? 0
                                                                : WildcardModel(text + 1, pattern);
    }
    const bool matches = *pattern == '?' || fold(*text) == fold(*pattern);
    return matches ? WildcardModel(text + 1, pattern + 1) : 1;
}

// Positions at which the characters of a Shift_JIS text start, and its end.
inline std::vector<int> CharacterStarts(const std::string& text)
{
    std::vector<int> starts;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; p += tlvn::CharLength(p, end))
        starts.push_back(static_cast<int>(p - text.data()));
    starts.push_back(static_cast<int>(text.size()));
    return starts;
}

inline int Offset(const void* hit, const void* text)
{
    return hit == nullptr
               ? -1
               : static_cast<int>(static_cast<const char*>(hit) - static_cast<const char*>(text));
}

// The function that differs from its model, or null; so below.
inline const char* CheckSearch(const std::string& text, const std::string& find, bool noCase)
{
    using namespace buffer_model;
    const int textLen = static_cast<int>(text.size()), findLen = static_cast<int>(find.size());
    if (find.find('\0') != find.npos) // ends the comparison
        return nullptr;
    const char *const p = text.data(), *const f = find.data();
    const tlvn::WString units = Units(text), phrase = Units(find);
    const WCHAR *const q = units.data(), *const w = phrase.data();
    const int units2 = textLen / 2, find2 = findLen / 2;
    const std::string evenText = text.substr(0, 2 * units.size());
    const std::string evenFind = find.substr(0, 2 * phrase.size());
    const std::tuple<const char*, int, int> searches[] = {
        {"mbsnnstr", Offset(mbsnnstr(p, textLen, f, findLen, noCase), p),
         Find(text, find, 0, Character, noCase)},
        {"mbsrnnstr", Offset(mbsrnnstr(p, textLen, f, findLen, noCase), p),
         ReverseFind(text, find, -1, Character, noCase)},
        {"wcsnnstr", Offset(wcsnnstr(q, units2, w, find2, noCase), q),
         Find(evenText, evenFind, 0, Wide, noCase)},
        {"wcsrnnstr", Offset(wcsrnnstr(q, units2, w, find2, noCase), q),
         ReverseFind(evenText, evenFind, -1, Wide, noCase)},
    };
    for (const auto& [function, found, expected] : searches) {
        if (found != expected)
            return function;
    }
    return nullptr;
}

inline const char* CheckCharacters(const std::string& text)
{
    const int length = static_cast<int>(text.size());
    const std::vector<int> starts = CharacterStarts(text);
    if (CountMoji(text.data(), length) != static_cast<int>(starts.size()) - 1)
        return "CountMoji";
    for (int cut = 0; cut < length; ++cut) {
        CStringA s(text.data(), length);
        const int expected = *(std::upper_bound(starts.begin(), starts.end(), cut) - 1);
        if (TruncateEx(s, cut) != 1 || s.GetLength() != expected)
            return "TruncateEx";
    }
    for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
        const bool pair = starts[i + 1] - starts[i] == 2;
        const char* const p = text.data() + starts[i];
        if (((GetCharType(text.data(), length, p, CT_SJIS) & CHARTYPE_DOUBLE) != 0) != pair)
            return "GetCharType";
    }
    return nullptr;
}

inline const char* CheckQuoting(const std::string& text)
{
    char last = '\0';
    for (const int start : CharacterStarts(text)) {
        // Half a character would make one with the backslash that comes behind it.
        if (tlvn::IsLeadByte(last))
            return nullptr;
        const char* const p = text.c_str() + start;
        last = tlvn::IsDoubleByte(p) ? '\0' : *p != '\0' ? *p : last;
    }
    CStringA quoted(text.c_str());
    EnquoteText(quoted);
    const std::string once = quoted.GetString();
    if (GetEnquotedLength((once + "\"\\").c_str()) != static_cast<int>(once.size()))
        return "GetEnquotedLength";
    DequoteText(quoted);
    if (last != '\\' && quoted.GetString() != text)
        return "DequoteText";
    CStringA token(once.c_str() + 1, static_cast<int>(once.size()) - 2);
    GetQuotedToken(token);
    return token.GetString() != text ? "GetQuotedToken" : nullptr;
}

inline const char* CheckScanners(const std::uint8_t* data, std::size_t size)
{
    static const std::string kPieces[] = {
        "a",    "A",        "b",        " ",        "\"",       "\\",
        "*",    "?",        "\x82\xA0", "\x95\x5C", "\x82\x60", "\x82\x81",
        "\x83", "\x81\x5B", "\xB1",     "\x87\x40", "\xFA\x5C", std::string(1, '\0')};
    constexpr int kLast = static_cast<int>(std::size(kPieces)) - 1;
    ByteSource source(data, size);
    const bool noCase = source.Byte() % 2 != 0;
    const bool zeros = source.Byte() % 2 != 0;
    // A few different pieces only, so that phrases are found and patterns match.
    std::string pieces[3];
    for (std::string& piece : pieces)
        piece = kPieces[source.Number(0, zeros ? kLast : kLast - 1)];
    std::string find, text;
    for (int i = source.Number(0, 6); i > 0; --i)
        find += pieces[source.Number(0, 2)];
    while (!source.IsEmpty() && text.size() < 60)
        text += pieces[source.Number(0, 2)];

    if (const char* fault = CheckSearch(text, find, noCase))
        return fault;
    if (wildicmp(text.c_str(), find.c_str()) != WildcardModel(text.c_str(), find.c_str()))
        return "wildicmp";
    if (const char* fault = CheckCharacters(text))
        return fault;
    return CheckQuoting(text.c_str());
}
