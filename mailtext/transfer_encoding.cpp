#include "mailtext/transfer_encoding.h"

#include "mailtext/base64.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/uuencode.h"
#include "platform/multibyte.h"

namespace {

constexpr int kBase64LineLength = 76;

bool IsNamed(const char* encoding, const char* name)
{
    return encoding != nullptr && tlvn::CompareMbsNoCase(encoding, name) == 0;
}

} // namespace

int DecodeHeaderText(const char* encoding, const char* text, CBuffer& out)
{
    if (IsNamed(encoding, "B"))
        return DecodeBase64(text, out);
    if (IsNamed(encoding, "Q"))
        return DecodeQuotedPrintable(text, out);
    out.Empty();
    return 0;
}

void EncodeBody(const char* encoding, const unsigned char* data, int len, int keepLineBreaks,
                CBuffer& out)
{
    if (IsNamed(encoding, "base64"))
        EncodeBase64(data, len, kBase64LineLength, out);
    else if (IsNamed(encoding, "quoted-printable"))
        EncodeQuotedPrintable(data, len, keepLineBreaks, out);
    else if (IsNamed(encoding, "x-uuencode"))
        EncodeUuencode(nullptr, nullptr, data, len, out);
    else
        out.Set(data, len);
}
