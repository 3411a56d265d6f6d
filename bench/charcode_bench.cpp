// Code conversion beside ICU and glibc's iconv, detection beside uchardet and ICU, in time and
// in how often it is right.

#include "bench/bench_table.h"
#include "bench/manual_text.h"

#include "charcode/convert.h"
#include "charcode/detect.h"

#include <iconv.h>
#include <uchardet.h>
#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kTextSize = 8 << 20;
constexpr std::size_t kPieceSize = 1024;

struct Code {
    CodeType codeType;
    const char* name; // also iconv's, and the detectors' without regard to case
    const char* iconvName;
    const char* icuName;
};
constexpr Code kSJis = {CT_SJIS, "Shift_JIS", "CP932", "ibm-943_P15A-2003"};
constexpr Code kEuc = {CT_EUC, "EUC-JP", "EUC-JP", nullptr};
constexpr Code kJis = {CT_JIS, "ISO-2022-JP", "ISO-2022-JP", nullptr};
constexpr Code kUtf8 = {CT_UTF8, "UTF-8", "UTF-8", "UTF-8"};
constexpr Code kUtf16 = {CT_UNICODE, "UTF-16", "UTF-16LE", nullptr};

int Length(const std::string& text)
{
    return static_cast<int>(text.size());
}

std::string Converted(const Code& from, const std::string& text, const Code& to)
{
    CBuffer out;
    if (ConvertToOtherCodeType2(from.codeType, text.data(), Length(text), to.codeType, out, 0) != 0)
        std::fprintf(stderr, "the text does not convert from %s to %s\n", from.name, to.name);
    return {out, static_cast<std::size_t>(out.GetLength())};
}

// Lines of kana and kanji without any ASCII but the line ends, in Shift_JIS.
std::string KanaAndKanji()
{
    std::mt19937 engine(1);
    const auto random = [&](unsigned limit) { return static_cast<unsigned>(engine() % limit); };
    std::string text;
    for (unsigned i = 1; text.size() < kTextSize; ++i) {
        const unsigned kana = 0x829F + random(83);
        const unsigned kanji = (0x89 + random(0xF)) << 8 | (0x80 + random(0x7C));
        const unsigned c = random(3) != 0 ? kana : kanji;
        text += static_cast<char>(c >> 8);
        text += static_cast<char>(c);
        if (i % 36 == 0)
            text += "\r\n";
    }
    return text;
}

// The hub between two codes beside ICU (only between a code page and UTF-16) and iconv.
void Convert(BenchTable& table, const std::string& kind, const std::string& sjis, const Code& from,
             const Code& to)
{
    const std::string text = from.codeType == CT_SJIS ? sjis : Converted(kSJis, sjis, from);
    const auto bytes = static_cast<double>(text.size());
    const std::string what = std::string(from.name) + " to " + to.name + ", " + kind;
    CBuffer out;
    const auto ours = [&] {
        ConvertToOtherCodeType2(from.codeType, text.data(), Length(text), to.codeType, out, 0);
        Use(out.GetBuffer());
    };
    std::string peerOut(text.size() * 3 + 16, '\0');

    const Code& page = to.codeType == CT_UNICODE ? from : to;
    if (from.codeType == CT_UNICODE || to.codeType == CT_UNICODE) {
        UErrorCode error = U_ZERO_ERROR;
        UConverter* const icu = ucnv_open(page.icuName, &error);
        const auto units = [](auto* p) { return reinterpret_cast<char16_t*>(p); };
        table.Compare(what, bytes, "ICU", ours, [&] {
            UErrorCode status = U_ZERO_ERROR;
            if (to.codeType == CT_UNICODE)
                ucnv_toUChars(icu, units(peerOut.data()), Length(peerOut) / 2, text.data(),
                              Length(text), &status);
            else
                ucnv_fromUChars(icu, peerOut.data(), Length(peerOut),
                                units(const_cast<char*>(text.data())), Length(text) / 2, &status);
            Use(peerOut.data());
        });
        ucnv_close(icu);
    }

    const iconv_t peer = iconv_open(to.iconvName, from.iconvName);
    table.Compare(what, bytes, "iconv", ours, [&] {
        char* in = const_cast<char*>(text.data());
        std::size_t inLeft = text.size();
        char* next = peerOut.data();
        std::size_t outLeft = peerOut.size();
        if (iconv(peer, &in, &inLeft, &next, &outLeft) == static_cast<std::size_t>(-1))
            std::fprintf(stderr, "iconv stops at %zu\n", text.size() - inLeft);
        Use(peerOut.data());
    });
    iconv_close(peer);
}

// Pieces of at most 1 KB in the code, cut at ends of lines, that are at least a quarter Japanese.
std::vector<std::string> Pieces(const std::vector<std::string>& pages, const Code& code)
{
    std::vector<std::string> pieces;
    for (const std::string& page : pages) {
        std::string piece; // in Shift_JIS
        std::string done;  // the same in the code
        for (std::size_t start = 0; start < page.size();) {
            const std::size_t end = std::min(page.find('\n', start), page.size() - 1) + 1;
            piece.append(page, start, end - start);
            start = end;
            std::string more = code.codeType == CT_SJIS ? piece : Converted(kSJis, piece, code);
            if (more.size() <= kPieceSize) {
                done = std::move(more);
                continue;
            }
            const auto high =
                std::count_if(piece.begin(), piece.end(), [](char c) { return (c & 0x80) != 0; });
            if (done.size() >= kPieceSize / 2 && static_cast<std::size_t>(high) * 4 > piece.size())
                pieces.push_back(done);
            piece.clear();
            done.clear();
        }
    }
    return pieces;
}

bool SameName(const char* a, const char* b)
{
    return a != nullptr && CStringA(a).CompareNoCase(b) == 0;
}

class Detectors {
public:
    Detectors() : m_uchardet(uchardet_new()), m_icu(ucsdet_open(&m_error)) {}
    ~Detectors()
    {
        ucsdet_close(m_icu);
        uchardet_delete(m_uchardet);
    }
    Detectors(const Detectors&) = delete;
    Detectors& operator=(const Detectors&) = delete;

    const char* ByUchardet(const std::string& text)
    {
        uchardet_reset(m_uchardet);
        uchardet_handle_data(m_uchardet, text.data(), text.size());
        uchardet_data_end(m_uchardet);
        return uchardet_get_charset(m_uchardet);
    }
    const char* ByIcu(const std::string& text)
    {
        UErrorCode error = U_ZERO_ERROR;
        ucsdet_setText(m_icu, text.data(), Length(text), &error);
        const UCharsetMatch* const match = ucsdet_detect(m_icu, &error);
        return match != nullptr ? ucsdet_getName(match, &error) : nullptr;
    }

private:
    UErrorCode m_error = U_ZERO_ERROR;
    uchardet_t m_uchardet;
    UCharsetDetector* m_icu;
};

void Detection(BenchTable& table, const std::vector<std::string>& pages)
{
    Detectors detectors;
    std::printf("%-14s %8s %16s %16s %12s %12s   of pieces of 1 KB told rightly\n", "", "pieces",
                "DetectCodeType", "DetectCodeType2", "uchardet", "ICU");
    for (const Code& code : {kSJis, kEuc, kJis, kUtf8}) {
        const std::vector<std::string> pieces = Pieces(pages, code);
        const auto share = [&](auto isRight) {
            const auto right = std::count_if(pieces.begin(), pieces.end(), isRight);
            return 100.0 * static_cast<double>(right) / static_cast<double>(pieces.size());
        };
        std::printf("%-14s %8zu %15.2f%% %15.2f%% %11.2f%% %11.2f%%\n", code.name, pieces.size(),
                    share([&](const std::string& text) {
                        return DetectCodeType(text.data(), Length(text)) == code.codeType;
                    }),
                    share([&](const std::string& text) {
                        return DetectCodeType2(text.data(), Length(text)) == code.codeType;
                    }),
                    share([&](const std::string& text) {
                        return SameName(detectors.ByUchardet(text), code.name);
                    }),
                    share([&](const std::string& text) {
                        return SameName(detectors.ByIcu(text), code.name);
                    }));

        const std::vector<std::string> some(
            pieces.begin(), pieces.begin() + std::min<std::ptrdiff_t>(200, std::ssize(pieces)));
        double bytes = 0;
        for (const std::string& text : some)
            bytes += static_cast<double>(text.size());
        const auto forEach = [&](auto detect) {
            return [&some, detect] {
                for (const std::string& text : some)
                    detect(text);
            };
        };
        const auto ours = forEach([](const std::string& text) {
            const CodeType t = DetectCodeType2(text.data(), Length(text));
            Use(&t);
        });
        const std::string what = std::string("detect ") + code.name + ", 200 pieces";
        table.Compare(what, bytes, "uchardet", ours,
                      forEach([&](const std::string& text) { Use(detectors.ByUchardet(text)); }));
        table.Compare(what, bytes, "ICU", ours,
                      forEach([&](const std::string& text) { Use(detectors.ByIcu(text)); }), 3);
    }
}

} // namespace

int main()
{
    const std::vector<std::string> pages = ManualText();
    std::string manual;
    for (const std::string& page : pages)
        manual += page;
    while (!manual.empty() && manual.size() < kTextSize)
        manual += std::string(manual);
    manual.resize(std::min(manual.size(), manual.find('\n', kTextSize) + 1));

    BenchTable table;
    const struct {
        const char* kind;
        std::string sjis;
    } texts[] = {{"manual pages", manual},
                 {"kana and kanji", KanaAndKanji()},
                 {"ASCII", std::string(kTextSize, 'a')}};
    for (const auto& [kind, sjis] : texts) {
        if (sjis.empty()) {
            std::puts("The package manpages-ja is not there: no measurement of real text.");
            continue;
        }
        for (const Code& page : {kSJis, kUtf8}) {
            Convert(table, kind, sjis, page, kUtf16);
            Convert(table, kind, sjis, kUtf16, page);
        }
        for (const Code& code : {kJis, kEuc, kUtf8}) {
            Convert(table, kind, sjis, code, kSJis);
            Convert(table, kind, sjis, kSJis, code);
        }
    }
    if (!pages.empty())
        Detection(table, pages);
    table.Print();
    return 0;
}
