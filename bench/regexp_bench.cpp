// Regular expressions beside Oniguruma, PCRE2's JIT and RE2: every match in 8 MB of Japanese
// text. Ours and Oniguruma read Shift_JIS; the other two, which do not know it, read the same
// text in UTF-8 (the speeds are all per byte of Shift_JIS).

#include "bench/bench_table.h"
#include "bench/manual_text.h"

#include "charcode/convert.h"
#include "persist/regexp/regexp.h"

#include <oniguruma.h>
#include <re2/re2.h>
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstdio>
#include <random>
#include <string>

namespace {

constexpr std::size_t kTextSize = 8 << 20;

std::string Converted(const std::string& text, CodeType from, CodeType to)
{
    CBuffer out;
    ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, 0);
    return {out, static_cast<std::size_t>(out.GetLength())};
}

// Each engine counts its matches from left to right.

class Ours {
public:
    Ours(const std::string& pattern, bool noCase)
    {
        CStringA error;
        if (m_regexp.ParseRegExp(pattern.c_str(), CT_SJIS, noCase ? 0 : 1, error) == 0)
            std::fprintf(stderr, "%s\n", error.GetString());
    }
    int Count(const std::string& text)
    {
        int count = 0;
        const char* start = nullptr;
        for (const char* p = text.c_str(); m_regexp.Match(p, CT_SJIS, &start, &p) != 0;)
            ++count;
        return count;
    }

private:
    CRegExp m_regexp;
};

class Oniguruma {
public:
    Oniguruma(const std::string& pattern, bool noCase)
    {
        OnigErrorInfo info;
        const auto* const p = reinterpret_cast<const OnigUChar*>(pattern.data());
        if (onig_new(&m_regex, p, p + pattern.size(),
                     noCase ? ONIG_OPTION_IGNORECASE : ONIG_OPTION_NONE, ONIG_ENCODING_SJIS,
                     ONIG_SYNTAX_RUBY, &info) != ONIG_NORMAL)
            std::fprintf(stderr, "Oniguruma does not take the pattern\n");
    }
    ~Oniguruma()
    {
        onig_region_free(m_region, 1);
        onig_free(m_regex);
    }
    Oniguruma(const Oniguruma&) = delete;
    Oniguruma& operator=(const Oniguruma&) = delete;

    int Count(const std::string& text)
    {
        const auto* const begin = reinterpret_cast<const OnigUChar*>(text.data());
        const auto* const end = begin + text.size();
        int count = 0;
        for (const OnigUChar* p = begin;
             onig_search(m_regex, begin, end, p, end, m_region, ONIG_OPTION_NONE) >= 0;
             p = begin + m_region->end[0])
            ++count;
        return count;
    }

private:
    regex_t* m_regex = nullptr;
    OnigRegion* m_region = onig_region_new();
};

class Pcre2 {
public:
    Pcre2(const std::string& pattern, bool noCase)
    {
        int error = 0;
        PCRE2_SIZE offset = 0;
        m_code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                               PCRE2_UTF | (noCase ? PCRE2_CASELESS : 0), &error, &offset, nullptr);
        pcre2_jit_compile(m_code, PCRE2_JIT_COMPLETE);
        m_match = pcre2_match_data_create_from_pattern(m_code, nullptr);
    }
    ~Pcre2()
    {
        pcre2_match_data_free(m_match);
        pcre2_code_free(m_code);
    }
    Pcre2(const Pcre2&) = delete;
    Pcre2& operator=(const Pcre2&) = delete;

    int Count(const std::string& text)
    {
        int count = 0;
        for (PCRE2_SIZE at = 0;
             pcre2_jit_match(m_code, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), at,
                             PCRE2_NO_UTF_CHECK, m_match, nullptr) >= 0;
             at = pcre2_get_ovector_pointer(m_match)[1])
            ++count;
        return count;
    }

private:
    pcre2_code* m_code = nullptr;
    pcre2_match_data* m_match = nullptr;
};

class Re2 {
public:
    Re2(const std::string& pattern, bool noCase) : m_regexp(pattern, Options(noCase)) {}
    int Count(const std::string& text)
    {
        int count = 0;
        re2::StringPiece found;
        for (std::size_t at = 0; m_regexp.Match(text, at, text.size(), RE2::UNANCHORED, &found, 1);
             at = static_cast<std::size_t>(found.data() - text.data()) + found.size())
            ++count;
        return count;
    }

private:
    static RE2::Options Options(bool noCase)
    {
        RE2::Options options;
        options.set_case_sensitive(!noCase);
        return options;
    }
    RE2 m_regexp;
};

struct Pattern {
    const char* what;
    const char* ours;
    const char* peers;
    bool noCase;
};

constexpr Pattern kPatterns[] = {
    {"rare literal", "隕石の雨", "隕石の雨", false},
    {"literal", "ファイル", "ファイル", false},
    {"ASCII literal", "printf", "printf", false},
    {"class with repetition", "[ァ-ヴ]+", "[ァ-ヴ]+", false},
    {"digits with repetition", "[0-9]+", "[0-9]+", false},
    {"class, then literal", "[a-z]+\\(", "[a-z]+\\(", false},
    {"alternation", "(関数)|(文字)|(値)", "関数|文字|値", false},
    {"ASCII alternation", "(error)|(warning)|(failure)", "error|warning|failure", false},
    {"case-insensitive", "posix", "posix", true},
    {"no match", "[a-z]+@[a-z]+\\.invalid", "[a-z]+@[a-z]+\\.invalid", false},
    {"no match, class first", "[ぁ-ん]+齟齬", "[ぁ-ん]+齟齬", false},
};

template <typename Peer>
void Measure(BenchTable& table, const Pattern& pattern, const char* name, const std::string& sjis,
             const std::string& peerText, bool peerReadsUtf8)
{
    const auto inSjis = [](const char* utf8) { return Converted(utf8, CT_UTF8, CT_SJIS); };
    Ours ours(inSjis(pattern.ours), pattern.noCase);
    Peer peer(peerReadsUtf8 ? std::string(pattern.peers) : inSjis(pattern.peers), pattern.noCase);
    const int count = ours.Count(sjis);
    if (peer.Count(peerText) != count)
        std::printf("%s finds %d matches of %s, we %d\n", name, peer.Count(peerText), pattern.what,
                    count);
    table.Compare(
        std::string(pattern.what) + ", " + std::to_string(count) + " matches",
        static_cast<double>(sjis.size()), name, [&] { ours.Count(sjis); },
        [&] { peer.Count(peerText); }, 5);
}

} // namespace

int main()
{
    std::string manual;
    for (const std::string& page : ManualText())
        manual += page;
    if (manual.empty()) {
        std::puts("The package manpages-ja is not there: no measurement.");
        return 0;
    }
    while (manual.size() < kTextSize)
        manual += std::string(manual);
    manual.resize(manual.find('\n', kTextSize) + 1);
    const std::string utf8 = Converted(manual, CT_SJIS, CT_UTF8);

    BenchTable table;
    for (const Pattern& pattern : kPatterns) {
        Measure<Oniguruma>(table, pattern, "Oniguruma", manual, manual, false);
        Measure<Pcre2>(table, pattern, "PCRE2 JIT", manual, utf8, true);
        Measure<Re2>(table, pattern, "RE2", manual, utf8, true);
    }
    table.Print();
    return 0;
}
