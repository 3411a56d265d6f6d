// Every code type that holds text.

#pragma once

#include "charcode/charset.h"

constexpr CodeType kCodeTypes[] = {
    CT_ASCII,     CT_JIS,       CT_EUC,       CT_SJIS,      CT_GB2312,    CT_BIG5,
    CT_KSC5601,   CT_EUCKR,     CT_KOI8R,     CT_ISO8859_1, CT_ISO8859_2, CT_ISO8859_4,
    CT_ISO8859_5, CT_ISO8859_7, CT_ISO8859_9, CT_WIN1250,   CT_WIN1251,   CT_WIN1252,
    CT_WIN1253,   CT_WIN1254,   CT_WIN1257,   CT_UTF7,      CT_UTF8,      CT_UNICODE,
};
