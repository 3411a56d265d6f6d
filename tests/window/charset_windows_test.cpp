// Code pages of charset names as the component system tells them.

#include "charcode/charset.h"
#include "platform/charset_service.h"

#include <gtest/gtest.h>

#include <objbase.h>

TEST(CharSetService, AnswersOnceTheComponentSystemIsUp)
{
    EXPECT_EQ(tlvn::AskCharsetCodePage("ISO-2022-JP"), 0u);
    EXPECT_EQ(CharSetCode2CodePage2(CT_JIS), 50220u); // from the library's own table

    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    EXPECT_EQ(tlvn::AskCharsetCodePage("ISO-2022-JP"), 50220u);
    EXPECT_EQ(tlvn::AskCharsetCodePage("unheard-of"), 0u);
    for (const CodeType t : {CT_SJIS,      CT_GB2312,    CT_BIG5,      CT_KSC5601,   CT_EUCKR,
                             CT_KOI8R,     CT_ISO8859_1, CT_ISO8859_2, CT_ISO8859_4, CT_ISO8859_5,
                             CT_ISO8859_7, CT_ISO8859_9, CT_WIN1250,   CT_WIN1251,   CT_WIN1252,
                             CT_WIN1253,   CT_WIN1254,   CT_WIN1257,   CT_UTF7,      CT_UTF8}) {
        const UINT page = CharSetCode2CodePage2(t);
        EXPECT_EQ(CharSetCode2CodePage(t), page) << t;
        EXPECT_TRUE(tlvn::IsCodePageKnown(page)) << t;
    }
    EXPECT_EQ(CharSetCode2CodePage2(CT_EUC), 51932u);
    CoUninitialize();
    EXPECT_EQ(CharSetCode2CodePage2(CT_JIS), 50220u); // remembered
}
