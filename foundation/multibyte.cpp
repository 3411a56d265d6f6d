#include "foundation/multibyte.h"

namespace {

UINT MultibytePageOf(CodeType codeType, UINT current)
{
    switch (codeType) {
    case CT_ASCII:
    case CT_JIS:
    case CT_EUC:
    case CT_SJIS:
        return 932;
    case CT_GB2312:
        return 936;
    case CT_BIG5:
        return 950;
    case CT_KSC5601:
    case CT_EUCKR:
        return 949;
    case CT_UNKNOWN:
    case CT_UTF7:
    case CT_UTF8:
    case CT_UNICODE:
        return current;
    default:
        return 1252;
    }
}

} // namespace

void SetMultibyteCodePage(UINT codePage)
{
    tlvn::SetMultibytePage(codePage);
}

UINT GetMultibyteCodePage()
{
    return tlvn::GetMultibytePage();
}

int IsTLead(const char* s, int i, int len)
{
    if (s == nullptr || i < 0 || (len >= 0 && i >= len - 1))
        return 0;
    return tlvn::IsDoubleByte(s + i) ? 1 : 0;
}

int IsTLead(const WCHAR*, int, int)
{
    return 0;
}

CApplyLocale::CApplyLocale(CodeType codeType) : m_previousPage(GetMultibyteCodePage())
{
    SetMultibyteCodePage(MultibytePageOf(codeType, m_previousPage));
}

CApplyLocale::~CApplyLocale()
{
    SetMultibyteCodePage(m_previousPage);
}
