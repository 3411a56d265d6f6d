// The code pages that ICU converts.

#include "platform/codepage.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <memory>

namespace tlvn {
namespace {

const char* ConverterName(UINT codePage)
{
    switch (codePage) {
    case 936:
        return "windows-936-2000";
    case 949:
        return "windows-949-2000";
    case 950:
        return "windows-950-2000";
    case 65000:
        return "UTF-7";
    default:
        return nullptr;
    }
}

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

Converter OpenConverter(UINT codePage)
{
    const char* const name = ConverterName(codePage);
    if (name == nullptr)
        return nullptr;
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &error));
    if (converter == nullptr || U_FAILURE(error))
        return nullptr;
    ucnv_setFallback(converter.get(), false);
    return converter;
}

// What the callbacks share with the caller.
struct Loss {
    bool lost = false;
    char replacement = '?';
    bool doubleByte = false;
};

bool IsUnconvertible(UConverterCallbackReason reason)
{
    return reason == UCNV_UNASSIGNED || reason == UCNV_ILLEGAL || reason == UCNV_IRREGULAR;
}

// Windows puts '?' for a malformed character of these pages. Where ICU faults the lead byte
// alone, Windows takes the byte behind it along, unless that is zero.
void ReplaceBytes(const void* context, UConverterToUnicodeArgs* args, const char* bytes,
                  int32_t length, UConverterCallbackReason reason, UErrorCode* error)
{
    if (!IsUnconvertible(reason))
        return;
    Loss& loss = *const_cast<Loss*>(static_cast<const Loss*>(context));
    loss.lost = true;
    const BYTE lead = static_cast<BYTE>(bytes[0]);
    if (loss.doubleByte && length == 1 && lead >= 0x81 && lead <= 0xFE &&
        args->source < args->sourceLimit && *args->source != 0)
        ++args->source;
    const UChar question = u'?';
    *error = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(args, &question, 1, 0, error);
}

// One replacement for each unit, two for a surrogate pair.
void ReplaceUnits(const void* context, UConverterFromUnicodeArgs* args, const UChar*,
                  int32_t length, UChar32, UConverterCallbackReason reason, UErrorCode* error)
{
    if (!IsUnconvertible(reason))
        return;
    Loss& loss = *const_cast<Loss*>(static_cast<const Loss*>(context));
    loss.lost = true;
    *error = U_ZERO_ERROR;
    if (loss.replacement == '\0')
        return;
    for (int32_t i = 0; i < length; ++i)
        ucnv_cbFromUWriteBytes(args, &loss.replacement, 1, 0, error);
}

} // namespace

UINT GetSystemCodePage()
{
    return 65001;
}

namespace codepage {

bool IsSystemPageKnown(UINT codePage)
{
    return OpenConverter(codePage) != nullptr;
}

ConversionResult DecodeSystemPage(UINT codePage, const char* text, int length, WString& out)
{
    out.clear();
    const Converter converter = OpenConverter(codePage);
    if (converter == nullptr)
        return kUnknownCodePage;
    Loss loss;
    loss.doubleByte = ucnv_getMaxCharSize(converter.get()) == 2;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter.get(), ReplaceBytes, &loss, nullptr, nullptr, &error);
    out.resize(static_cast<std::size_t>(MaxUtf16Length(codePage, length)));
    UChar* target = out.data();
    const char* source = text;
    ucnv_toUnicode(converter.get(), &target, out.data() + out.size(), &source, text + length,
                   nullptr, true, &error);
    const auto written = static_cast<std::size_t>(target - out.data());
    out.resize(U_FAILURE(error) ? 0 : written);
    if (U_FAILURE(error))
        return kUnknownCodePage;
    // Bytes without a character become these units, to Windows an error.
    const auto isHole = [](WCHAR unit) { return unit >= 0xF8F0 && unit <= 0xF8FF; };
    if (loss.doubleByte && std::any_of(out.begin(), out.end(), isHole))
        loss.lost = true;
    return loss.lost ? kConvertedWithLoss : kConverted;
}

ConversionResult EncodeSystemPage(UINT codePage, const WCHAR* text, int length, std::string& out,
                                  char replacement)
{
    out.clear();
    const Converter converter = OpenConverter(codePage);
    if (converter == nullptr)
        return kUnknownCodePage;
    Loss loss;
    loss.replacement = replacement;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter.get(), ReplaceUnits, &loss, nullptr, nullptr, &error);
    out.resize(static_cast<std::size_t>(MaxNarrowLength(codePage, length)));
    char* target = out.data();
    const UChar* source = text;
    ucnv_fromUnicode(converter.get(), &target, out.data() + out.size(), &source, text + length,
                     nullptr, true, &error);
    const auto written = static_cast<std::size_t>(target - out.data());
    out.resize(U_FAILURE(error) ? 0 : written);
    if (U_FAILURE(error))
        return kUnknownCodePage;
    return loss.lost ? kConvertedWithLoss : kConverted;
}

} // namespace codepage
} // namespace tlvn
