// Holds CRegExp to the plain matcher: the same pattern and text, in both widths. Used by the
// random test and by the fuzz target.

#pragma once

#include "TlvnMisc.h"
#include "platform/nls.h"
#include "tests/support/regexp_reference.h"

#include <string>

namespace regexp_check {

struct Characters {
    RegExpReference::Text values;
    std::vector<int> widths;
    std::vector<int> starts; // in units, with the end and one past it
};

// Folds a copy, as the rules say it.
inline std::string Folded(std::string text)
{
    tlvn::ToLowerMbs(text.data(), static_cast<int>(text.size()));
    TextToUpper(static_cast<int>(GetMultibyteCodePage()), text.data(),
                static_cast<int>(text.size()), 0, 1);
    return text;
}
inline tlvn::WString Folded(tlvn::WString text)
{
    for (WCHAR& c : text) {
        c = tlvn::ToLowerW(c);
        if (c >= 0xFF21 && c <= 0xFF3A)
            c = static_cast<WCHAR>(c + 0x20);
    }
    return text;
}

inline unsigned Value(const std::string& s, std::size_t& i)
{
    const unsigned c = static_cast<BYTE>(s[i++]);
    return i < s.size() && IsTLead(s.data(), static_cast<int>(i) - 1, -1) != 0
               ? c << 8 | static_cast<BYTE>(s[i++])
               : c;
}
inline unsigned Value(const tlvn::WString& s, std::size_t& i)
{
    return s[i++];
}

template <typename String>
Characters Split(const String& text)
{
    Characters out;
    std::size_t i = 0;
    while (i < text.size()) {
        out.starts.push_back(static_cast<int>(i));
        const std::size_t start = i;
        out.values.push_back(Value(text, i));
        out.widths.push_back(static_cast<int>(i - start));
    }
    out.starts.push_back(static_cast<int>(i));
    out.starts.push_back(static_cast<int>(i) + 1);
    return out;
}

// Empty, or what is wrong.
template <typename String>
std::string Check(const String& pattern, const String& text, CodeType codeType, int caseSensitive)
{
    const auto chars = [](const auto* p) { return reinterpret_cast<const char*>(p); };
    CRegExp regexp;
    CStringA message;
    if (regexp.ParseRegExp(chars(pattern.c_str()), codeType, caseSensitive, message) == 0)
        return message.IsEmpty() ? "a failure without a message" : "";
    const bool fold = caseSensitive == 0;
    const Characters t = Split(fold ? Folded(text) : text);
    RegExpReference reference(Split(fold ? Folded(pattern) : pattern).values, t.values, t.widths);
    const RegExpReference::Found expected = reference.Match();
    if (reference.GaveUp())
        return "";

    const char* start = nullptr;
    const char* end = nullptr;
    const char* const base = chars(text.c_str());
    const int found = regexp.Match(base, codeType, &start, &end);
    const auto offset = [&](const char* p) {
        return static_cast<int>((p - base) / static_cast<std::ptrdiff_t>(sizeof text[0]));
    };
    const auto shown = [](int from, int to) {
        return "[" + std::to_string(from) + ", " + std::to_string(to) + ")";
    };
    const auto place = [&](int i) { return t.starts[static_cast<std::size_t>(i)]; };
    const std::string want = expected ? shown(place(expected->first), place(expected->second)) : "";
    const std::string got = found != 0 ? shown(offset(start), offset(end)) : "";
    return got == want ? "" : "expected " + want + ", got " + got;
}

inline std::string CheckBothWidths(const std::string& pattern, const std::string& text,
                                   int caseSensitive)
{
    const std::string narrow = Check(pattern, text, CT_SJIS, caseSensitive);
    if (!narrow.empty())
        return "narrow: " + narrow;
    const std::string wide =
        Check(tlvn::WidenText(pattern), tlvn::WidenText(text), CT_UNICODE, caseSensitive);
    return wide.empty() ? "" : "wide: " + wide;
}

} // namespace regexp_check
