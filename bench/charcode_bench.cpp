// Code conversion beside ICU and iconv; growth of the time that detection takes.

#include "bench/bench_table.h"

#include "charcode/convert.h"
#include "charcode/detect.h"
#include "charcode/japanese.h"
#include "platform/nls.h"

#include <iconv.h>
#include <unicode/ucnv.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kMegabyte = 1 << 20;

unsigned Trail(unsigned cell)
{
    return 0x40 + cell + (cell >= 63 ? 1 : 0);
}

// Shift_JIS text: words of kana and kanji in lines of some 70 bytes; with `mixed`, as many
// words of ASCII between them and some half-width katakana.
std::string JapaneseText(int size, bool mixed)
{
    std::mt19937 engine(1);
    const auto random = [&](unsigned limit) { return static_cast<unsigned>(engine() % limit); };
    std::string text;
    for (unsigned line = 0; text.size() + 100 < static_cast<std::size_t>(size);) {
        const std::size_t before = text.size();
        const unsigned kind = random(mixed ? 20 : 10);
        for (unsigned i = 1 + random(6); i > 0; --i) {
            unsigned c = 0x829F + random(83); // hiragana
            if (kind >= 11)
                c = 'a' + random(26);
            else if (kind == 10)
                c = 0xB1 + random(40); // half-width katakana
            else if (kind == 9)
                c = 0x8340 + random(63); // katakana
            else if (kind >= 5)
                c = (0x89 + random(0xF)) << 8 | Trail(random(188)); // kanji
            if (c >= 0x100)
                text += static_cast<char>(c >> 8);
            text += static_cast<char>(c);
        }
        if (mixed)
            text += ' ';
        line += static_cast<unsigned>(text.size() - before);
        if (line > 70) {
            text += "\r\n";
            line = 0;
        }
    }
    return text;
}

std::string Text(const CBuffer& buffer)
{
    return std::string(buffer, static_cast<std::size_t>(buffer.GetLength()));
}

std::string Converted(CodeType from, const std::string& text, CodeType to)
{
    CBuffer out;
    if (ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, 0) != 0)
        std::fprintf(stderr, "the text of the benchmark does not convert from %d to %d\n", from,
                     to);
    return Text(out);
}

// The conversion hub between code types beside iconv.
void Hub(BenchTable& table, const char* what, CodeType from, const char* fromName,
         const std::string& text, CodeType to, const char* toName)
{
    CBuffer out;
    std::string peerOut(text.size() * 4, '\0');
    const iconv_t peer = iconv_open(toName, fromName);
    table.Compare(
        what, static_cast<double>(text.size()), "iconv",
        [&] {
            ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, 0);
            Use(out.GetBuffer());
        },
        [&] {
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

// One code page to UTF-16 and back beside ICU.
void Page(BenchTable& table, const std::string& what, UINT page, const char* peerName,
          const std::string& text)
{
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const peer = ucnv_open(peerName, &error);
    std::vector<WCHAR> units(text.size());
    int count = 0;
    tlvn::ConvertToUtf16(page, text.data(), static_cast<int>(text.size()), units.data(),
                         static_cast<int>(units.size()), count);
    std::vector<WCHAR> unitsOut(text.size());
    std::string bytesOut(text.size() * 3, '\0');
    int written = 0;
    table.Compare(
        what + " to UTF-16", static_cast<double>(text.size()), "ICU",
        [&] {
            tlvn::ConvertToUtf16(page, text.data(), static_cast<int>(text.size()), unitsOut.data(),
                                 static_cast<int>(unitsOut.size()), written);
            Use(unitsOut.data());
        },
        [&] {
            UErrorCode status = U_ZERO_ERROR;
            ucnv_toUChars(peer, unitsOut.data(), static_cast<int>(unitsOut.size()), text.data(),
                          static_cast<int>(text.size()), &status);
            Use(unitsOut.data());
        });
    table.Compare(
        "UTF-16 to " + what, static_cast<double>(count) * 2, "ICU",
        [&] {
            tlvn::ConvertFromUtf16(page, units.data(), count, bytesOut.data(),
                                   static_cast<INT64>(bytesOut.size()), written);
            Use(bytesOut.data());
        },
        [&] {
            UErrorCode status = U_ZERO_ERROR;
            ucnv_fromUChars(peer, bytesOut.data(), static_cast<int>(bytesOut.size()), units.data(),
                            count, &status);
            Use(bytesOut.data());
        });
    ucnv_close(peer);
}

void Detection(BenchTable& table)
{
    table.Growth(
        "DetectCodeType2 of UTF-8", {kMegabyte / 4, kMegabyte, 4 * kMegabyte}, [](int size) {
            return [text = Converted(CT_SJIS, JapaneseText(size, true), CT_UTF8)] {
                const CodeType t = DetectCodeType2(text.data(), static_cast<int>(text.size()));
                Use(&t);
            };
        });
}

} // namespace

int main()
{
    const std::string pure = JapaneseText(4 * kMegabyte, false);
    const std::string mixed = JapaneseText(4 * kMegabyte, true);
    const std::string ascii(4 * kMegabyte, 'a');
    const std::string utf8 = Converted(CT_SJIS, mixed, CT_UTF8);

    BenchTable table;
    Page(table, "932, Japanese", 932, "ibm-943_P15A-2003", pure);
    Page(table, "932, mixed", 932, "ibm-943_P15A-2003", mixed);
    Page(table, "932, ASCII", 932, "ibm-943_P15A-2003", ascii);
    Page(table, "UTF-8, Japanese", 65001, "UTF-8", Converted(CT_SJIS, pure, CT_UTF8));
    Page(table, "UTF-8, mixed", 65001, "UTF-8", utf8);
    Page(table, "1252, ASCII", 1252, "ibm-5348_P100-1997", ascii);

    Hub(table, "ISO-2022-JP to Shift_JIS", CT_JIS, "ISO-2022-JP-2",
        Converted(CT_SJIS, pure, CT_JIS), CT_SJIS, "CP932");
    Hub(table, "Shift_JIS to ISO-2022-JP", CT_SJIS, "CP932", pure, CT_JIS, "ISO-2022-JP-2");
    Hub(table, "EUC-JP to Shift_JIS", CT_EUC, "EUC-JP-MS", Converted(CT_SJIS, mixed, CT_EUC),
        CT_SJIS, "CP932");
    Hub(table, "Shift_JIS to EUC-JP", CT_SJIS, "CP932", mixed, CT_EUC, "EUC-JP-MS");
    Hub(table, "UTF-8 to Shift_JIS", CT_UTF8, "UTF-8", utf8, CT_SJIS, "CP932");
    Detection(table);
    table.Print();
    return 0;
}
