#include "charcode/charset.h"

#include "charcode/convert.h"
#include "charcode/detect.h"
#include "platform/charset_service.h"
#include "platform/multibyte.h"

#include <atomic>
#include <iterator>

namespace {

constexpr int kJapaneseFont = 128;
constexpr LCID kUserLocale = 1024;

struct CharSetRow {
    CodeType codeType;
    int fontCharSet;
    UINT codePage;
    const char* names[4]; // the preferred one first, null behind the last
    LCID locale;
};

// Searched from the front. US-ASCII has the Japanese font character set, so that ASCII text is
// shown in the same font as Japanese text.
constexpr CharSetRow kRows[] = {
    {CT_SJIS, kJapaneseFont, 932, {"Shift_JIS", "Shift-JIS", "x-sjis"}, 1041},
    {CT_JIS, kJapaneseFont, 932, {"ISO-2022-JP"}, 1041},
    {CT_EUC, kJapaneseFont, 932, {"EUC-JP"}, 1041},
    {CT_ASCII, kJapaneseFont, 1252, {"US-ASCII", "ASCII"}, kUserLocale},
    {CT_GB2312, 134, 936, {"GB2312"}, 2052},
    {CT_BIG5, 136, 950, {"Big5"}, 1028},
    {CT_KSC5601, 129, 949, {"KS_C_5601-1987", "KS_C_5601"}, 1042},
    {CT_EUCKR, 129, 51949, {"EUC-KR"}, 1042},
    {CT_KOI8R, 204, 20866, {"KOI8-R"}, 1049},
    {CT_ISO8859_1, 0, 28591, {"ISO-8859-1"}, kUserLocale},
    {CT_ISO8859_2, 238, 28592, {"ISO-8859-2"}, kUserLocale},
    {CT_ISO8859_4, 186, 28594, {"ISO-8859-4"}, kUserLocale},
    {CT_ISO8859_5, 204, 28595, {"ISO-8859-5"}, 1049},
    {CT_ISO8859_7, 161, 28597, {"ISO-8859-7"}, 1032},
    {CT_ISO8859_9, 162, 28599, {"ISO-8859-9"}, 1055},
    {CT_WIN1250, 238, 1250, {"windows-1250"}, kUserLocale},
    {CT_WIN1251, 204, 1251, {"windows-1251"}, 1049},
    {CT_WIN1252, 0, 1252, {"windows-1252"}, kUserLocale},
    {CT_WIN1253, 161, 1253, {"windows-1253"}, 1032},
    {CT_WIN1254, 162, 1254, {"windows-1254"}, 1055},
    {CT_WIN1257, 186, 1257, {"windows-1257"}, kUserLocale},
    {CT_UTF8, 1, 65001, {"UTF-8", "UTF8"}, kUserLocale},
    {CT_UTF7, 1, 65000, {"UTF-7", "UTF7"}, kUserLocale},
};

// What the system answered for each row's preferred name, 0 as long as it has not.
std::atomic<UINT> g_servicePages[std::size(kRows)];

const CharSetRow* FindRow(CodeType t)
{
    for (const CharSetRow& row : kRows) {
        if (row.codeType == t)
            return &row;
    }
    return nullptr;
}

const CharSetRow* FindRow(const char* name)
{
    if (name == nullptr || *name == '\0')
        return nullptr;
    for (const CharSetRow& row : kRows) {
        for (const char* known : row.names) {
            if (known != nullptr && tlvn::CompareMbsNoCase(name, known) == 0)
                return &row;
        }
    }
    return nullptr;
}

// The page of the row's own name, for a system that does not know it.
UINT OwnPage(const CharSetRow& row)
{
    switch (row.codeType) {
    case CT_JIS:
        return 50220;
    case CT_EUC:
        return 51932;
    default:
        return row.codePage;
    }
}

UINT PageOfName(const CharSetRow& row)
{
    std::atomic<UINT>& cached = g_servicePages[&row - kRows];
    if (const UINT page = cached.load(std::memory_order_relaxed))
        return page;
    const UINT page = tlvn::AskCharsetCodePage(row.names[0]);
    if (page == 0)
        return OwnPage(row);
    cached.store(page, std::memory_order_relaxed);
    return page;
}

bool IsUtf8OrUtf16(CodeType t)
{
    return t == CT_UNICODE || t == CT_UTF8;
}

} // namespace

int AsciiByte2Column(int bytes, CodeType t)
{
    return IsCodeTypeUnicode(t) ? bytes / 2 : bytes;
}

int IsPriorCodeType(CodeType current, CodeType other)
{
    if (other == CT_UNKNOWN)
        return 0;
    return current == CT_UNKNOWN || (current == CT_ASCII && other != CT_ASCII);
}

CodeType CharSetName2CodeExact(const char* name)
{
    const CharSetRow* const row = FindRow(name);
    return row != nullptr ? row->codeType : CT_UNKNOWN;
}

CodeType CharSetName2Code(const char* name)
{
    const CharSetRow* const row = FindRow(name);
    return row != nullptr ? row->codeType : CT_JIS;
}

const char* CharSetCode2Name(CodeType t)
{
    const CharSetRow* const row = FindRow(t);
    return row != nullptr ? row->names[0] : nullptr;
}

int CharSetCode2FontCharSet(CodeType t)
{
    const CharSetRow* const row = FindRow(t);
    return row != nullptr ? row->fontCharSet : kJapaneseFont;
}

LCID CharSetCode2LCID(CodeType t)
{
    const CharSetRow* const row = FindRow(t);
    return row != nullptr ? row->locale : 0;
}

UINT CharSetCode2CodePage(CodeType t)
{
    const CharSetRow* const row = FindRow(t);
    if (row == nullptr)
        return 0;
    return PageOfName(row->fontCharSet == kJapaneseFont ? kRows[0] : *row);
}

UINT CharSetCode2CodePage2(CodeType t)
{
    const CharSetRow* const row = FindRow(t);
    return row != nullptr ? PageOfName(*row) : 0;
}

const char* ReformCharSet(CStringA& name)
{
    if (const CharSetRow* const row = FindRow(name))
        name = row->names[0];
    return name;
}

const char* ReformEncoding(CStringA& encoding)
{
    encoding.MakeLower();
    return encoding;
}

CodeType GetCodeType(const char* charset, const char* text, int len)
{
    if (charset == nullptr || *charset == '\0')
        return DetectCodeType2(text, len);
    return CharSetName2Code(charset);
}

CodeType CodeTypeSave2Edit(CodeType t)
{
    switch (t) {
    case CT_JIS:
    case CT_EUC:
        return CT_SJIS;
    case CT_EUCKR:
        return CT_KSC5601;
    case CT_KOI8R:
    case CT_ISO8859_5:
        return CT_WIN1251;
    case CT_ISO8859_1:
        return CT_WIN1252;
    case CT_ISO8859_2:
        return CT_WIN1250;
    case CT_ISO8859_4:
        return CT_WIN1257;
    case CT_ISO8859_7:
        return CT_WIN1253;
    case CT_ISO8859_9:
        return CT_WIN1254;
    case CT_UTF7:
    case CT_UTF8:
        return CT_UNICODE;
    default:
        return t;
    }
}

CodeType CodeType2DefSend(CodeType t)
{
    switch (t) {
    case CT_JIS:
    case CT_EUC:
    case CT_SJIS:
        return CT_JIS;
    case CT_KSC5601:
    case CT_EUCKR:
        return CT_KSC5601;
    case CT_WIN1250:
        return CT_ISO8859_2;
    case CT_WIN1251:
        return CT_ISO8859_5;
    case CT_WIN1252:
        return CT_ISO8859_1;
    case CT_WIN1253:
        return CT_ISO8859_7;
    case CT_WIN1254:
        return CT_ISO8859_9;
    case CT_WIN1257:
        return CT_ISO8859_4;
    case CT_UTF8:
    case CT_UNICODE:
        return CT_UTF8;
    default:
        return t;
    }
}

CodeType GetPriorCodeType(CodeType a, CodeType b)
{
    if (a == b)
        return a;
    const CodeType edit = CodeTypeSave2Edit(a);
    if (edit == CodeTypeSave2Edit(b))
        return a != edit ? a : b;
    if (IsUtf8OrUtf16(a) || IsUtf8OrUtf16(b))
        return CT_UTF8;
    if (a == CT_UTF7 || b == CT_UTF7)
        return CT_UTF7;
    for (const CodeType neutral : {CT_UNKNOWN, CT_ASCII}) {
        if (a == neutral)
            return b;
        if (b == neutral)
            return a;
    }
    return CT_UTF8;
}

void ConvToPriorCodeType(CodeType from, CodeType to, CBuffer& text)
{
    if (from == to || text.IsEmpty())
        return;
    CBuffer converted;
    if (ConvertToOtherCodeType2(CodeTypeSave2Edit(from), text, text.GetLength(),
                                CodeTypeSave2Edit(to), converted, 0) >= 0)
        text = converted;
}

const char* GetDefaultSendEncoding(int a, int b, CodeType t)
{
    if (a == 0 || b == 0)
        return "base64";
    return t == CT_ASCII || t == CT_JIS || t == CT_UTF7 ? "7bit" : "8bit";
}
