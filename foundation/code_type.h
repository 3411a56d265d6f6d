// The character code of a text.

#pragma once

// Values are stored in settings and history files: they do not change. They are grouped by
// family: 10-12 Japanese, 20-21 Chinese, 30-31 Korean, 40 KOI8, 100 + n ISO-8859-n, 200 + n
// Windows code page 1250 + n, 1007 and 1008 the Unicode transfer forms, 2000 UTF-16.
enum CodeType : int {
    CT_UNKNOWN = 0,
    CT_ASCII = 1,
    CT_JIS = 10, // ISO-2022-JP
    CT_EUC = 11, // EUC-JP
    CT_SJIS = 12,
    CT_GB2312 = 20,
    CT_BIG5 = 21,
    CT_KSC5601 = 30, // the Windows form
    CT_EUCKR = 31,
    CT_KOI8R = 40,
    CT_ISO8859_1 = 101,
    CT_ISO8859_2 = 102,
    CT_ISO8859_4 = 104,
    CT_ISO8859_5 = 105,
    CT_ISO8859_7 = 107,
    CT_ISO8859_9 = 109,
    CT_WIN1250 = 200,
    CT_WIN1251 = 201,
    CT_WIN1252 = 202,
    CT_WIN1253 = 203,
    CT_WIN1254 = 204,
    CT_WIN1257 = 207,
    CT_UTF7 = 1007,
    CT_UTF8 = 1008,
    CT_UNICODE = 2000, // UTF-16 little-endian, the form in which Unicode text is edited
};

// 1 for the types of Japanese text, which is edited in Shift_JIS.
constexpr int IsCodeTypeJapanese(CodeType t)
{
    return t == CT_JIS || t == CT_EUC || t == CT_SJIS;
}
// 1 for the types of Unicode text, which is edited in UTF-16.
constexpr int IsCodeTypeUnicode(CodeType t)
{
    return t == CT_UTF7 || t == CT_UTF8 || t == CT_UNICODE;
}
