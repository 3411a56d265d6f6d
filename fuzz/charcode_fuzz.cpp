// Code conversion of arbitrary bytes: limits of the output, loss told exactly, and what is told
// to be without loss comes back.

#include "fuzz/fuzz.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "charcode/detect.h"
#include "charcode/japanese.h"
#include "charcode/kana.h"
#include "platform/nls.h"
#include "tests/support/code_types.h"
#include "tests/support/text.h"

#include <cstring>
#include <iterator>
#include <string>

namespace {

constexpr UINT kOwnPages[] = {932,   1250,  1251,  1252,  1253,  1254,  1257,  20127,
                              20866, 28591, 28592, 28594, 28595, 28597, 28599, 65001};

// A text that decodes without loss encodes without loss, and in UTF-8 to the same bytes; one
// that is encoded without loss decodes to the same units.
void CheckPage(UINT page, const std::string& text)
{
    tlvn::WString units;
    std::string bytes;
    const int decoded = tlvn::ConvertToUtf16(page, text, units);
    FUZZ_CHECK(decoded >= 0);
    FUZZ_CHECK(units.size() <=
               static_cast<std::size_t>(tlvn::MaxUtf16Length(page, static_cast<int>(text.size()))));
    if (decoded == tlvn::kConverted) {
        FUZZ_CHECK(tlvn::ConvertFromUtf16(page, units, bytes) == tlvn::kConverted);
        FUZZ_CHECK(page == 932 || bytes == text);
    }

    tlvn::WString arbitrary(text.size() / 2, 0);
    std::memcpy(arbitrary.data(), text.data(), arbitrary.size() * sizeof(WCHAR));
    tlvn::WString back;
    if (tlvn::ConvertFromUtf16(page, arbitrary, bytes) == tlvn::kConverted) {
        tlvn::ConvertToUtf16(page, bytes, back);
        FUZZ_CHECK(back == arbitrary);
    } else {
        // What is left without the lost characters is not more than with their replacements.
        std::string dropped;
        FUZZ_CHECK(tlvn::ConvertFromUtf16(page, arbitrary, dropped, '\0') ==
                   tlvn::kConvertedWithLoss);
        FUZZ_CHECK(dropped.size() < bytes.size());
    }
}

void CheckJapanese(const std::string& text)
{
    const int len = static_cast<int>(text.size());
    CBuffer jis, euc, back;
    ConvertSJisToEuc(text.data(), len, euc);
    FUZZ_CHECK(euc.GetLength() >= len && euc.GetLength() <= 2 * len);
    ConvertSJisToJis(text.data(), len, jis);
    FUZZ_CHECK(jis.GetLength() >= len);
    ConvertJisToSJis(text.data(), len, back);
    FUZZ_CHECK(back.GetLength() <= len);
    ConvertEucToSJis(text.data(), len, back);
    FUZZ_CHECK(back.GetLength() <= len);
}

void CheckHub(CodeType from, CodeType to, int drop, const std::string& text)
{
    const int len = static_cast<int>(text.size());
    CBuffer out, back;
    const int result = ConvertToOtherCodeType2(from, text.data(), len, to, out, drop);
    FUZZ_CHECK(result == 0 || result == 1);
    CodeType t = from;
    FUZZ_CHECK(ConvertToEditableMbs(t, text.data(), len, back, drop) == 1);
    FUZZ_CHECK(!IsCodeTypeUnicode(t));
}

void CheckDetection(const std::string& text)
{
    const int len = static_cast<int>(text.size());
    const CodeType plain = DetectCodeType(text.data(), len);
    FUZZ_CHECK(plain == CT_ASCII || IsCodeTypeJapanese(plain));
    const int scanned = len < 1024 ? len : 1024;
    if (scanned == len)
        FUZZ_CHECK(DetectCodeType((text + '\0').data(), len) == plain);
    const CodeType wide = DetectCodeType2(text.data(), len);
    FUZZ_CHECK(wide == plain || wide == CT_UTF8 || wide == CT_UNICODE);
    tlvn::WString units;
    if (tlvn::ConvertToUtf16(65001, text, units) == tlvn::kConverted && units.size() != text.size())
        FUZZ_CHECK(wide == CT_UTF8);
    for (const CodeType hint : {CT_SJIS, CT_EUC, CT_UTF8, CT_UNICODE})
        FUZZ_CHECK(DetectCodeType3(text.data(), len, hint) != CT_UNKNOWN);
}

void CheckKana(const std::string& text)
{
    CBuffer zen;
    zen.Set(text.data(), static_cast<int>(text.size()));
    KatakanaHanToZen(zen);
    const CBuffer once = zen;
    FUZZ_CHECK(KatakanaHanToZen(zen) == 0);
    FUZZ_CHECK(zen == once);
    std::string folded = text;
    TextToUpper(932, folded.data(), static_cast<int>(folded.size()), 1, 1);
    FUZZ_CHECK(TextToUpper(932, folded.data(), static_cast<int>(folded.size()), 1, 1) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    const CodeType from = kCodeTypes[data[0] % std::size(kCodeTypes)];
    const CodeType to = kCodeTypes[data[1] % std::size(kCodeTypes)];
    const int drop = data[2] & 1;
    const std::string text(reinterpret_cast<const char*>(data + 3), size - 3);
    CheckPage(kOwnPages[data[2] / 2 % std::size(kOwnPages)], text);
    CheckJapanese(text);
    CheckHub(from, to, drop, text);
    CheckDetection(text);
    CheckKana(text);
    return 0;
}
