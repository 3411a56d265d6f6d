#include "charcode/charset.h"
#include "tests/support/test.h"

// Aliases and case lead to the type; what the table does not hold is JIS, or unknown exactly.
TEST(CharSet, FindsTypesByName)
{
    const std::tuple<const char*, CodeType, CodeType> cases[] = {
        {"x-sjis", CT_SJIS, CT_SJIS},          {"shift-jis", CT_SJIS, CT_SJIS},
        {"ks_c_5601", CT_KSC5601, CT_KSC5601}, {"ISO-8859-15", CT_UNKNOWN, CT_JIS},
        {nullptr, CT_UNKNOWN, CT_JIS},
    };
    for (const auto& [name, exact, read] : cases) {
        EXPECT_EQ(CharSetName2CodeExact(name), exact);
        EXPECT_EQ(CharSetName2Code(name), read);
    }
}

// Every row is found by its own name and has a page that converts; the types without a row have
// the defaults.
TEST(CharSet, GivesTheColumnsOfATypesRow)
{
    int rows = 0;
    for (int n = 0; n <= CT_UNICODE; ++n) {
        const CodeType t = static_cast<CodeType>(n);
        const char* const name = CharSetCode2Name(t);
        if (name == nullptr)
            continue;
        ++rows;
        EXPECT_EQ(CharSetName2CodeExact(name), t);
        EXPECT_TRUE(tlvn::IsCodePageKnown(CharSetCode2CodePage(t))) << t;
    }
    EXPECT_EQ(rows, 23);

    const std::tuple<CodeType, int, LCID, UINT, UINT> cases[] = {
        {CT_SJIS, 128, 1041, 932, 932},      {CT_JIS, 128, 1041, 932, 50220},
        {CT_GB2312, 134, 2052, 936, 936},    {CT_EUCKR, 129, 1042, 51949, 51949},
        {CT_KOI8R, 204, 1049, 20866, 20866}, {CT_ISO8859_4, 186, 1024, 28594, 28594},
        {CT_UTF8, 1, 1024, 65001, 65001},    {CT_UNKNOWN, 128, 0, 0, 0},
    };
    for (const auto& [t, font, locale, page, page2] : cases) {
        EXPECT_EQ(CharSetCode2FontCharSet(t), font) << t;
        EXPECT_EQ(CharSetCode2LCID(t), locale) << t;
        EXPECT_EQ(CharSetCode2CodePage(t), page) << t;
        EXPECT_EQ(CharSetCode2CodePage2(t), page2) << t;
    }
}

TEST(CharSet, NormalisesNames)
{
    CStringA known = "x-sjis", other = "X-Other", encoding = "Quoted-Printable";
    EXPECT_STREQ(ReformCharSet(known), "Shift_JIS");
    EXPECT_STREQ(ReformCharSet(other), "X-Other");
    EXPECT_STREQ(ReformEncoding(encoding), "quoted-printable");
}

// The type in which text is saved, edited, and sent when the edit form says nothing more. KOI8-R
// is not sent back as it came.
TEST(CodeTypeForms, EditAndSendForms)
{
    const std::tuple<CodeType, CodeType, CodeType> cases[] = {
        {CT_JIS, CT_SJIS, CT_JIS},
        {CT_EUCKR, CT_KSC5601, CT_KSC5601},
        {CT_KOI8R, CT_WIN1251, CT_ISO8859_5},
        {CT_ISO8859_1, CT_WIN1252, CT_ISO8859_1},
        {CT_UTF7, CT_UNICODE, CT_UTF8},
        {CT_UTF8, CT_UNICODE, CT_UTF8},
        {CT_BIG5, CT_BIG5, CT_BIG5},
    };
    for (const auto& [save, edit, send] : cases) {
        EXPECT_EQ(CodeTypeSave2Edit(save), edit) << save;
        EXPECT_EQ(CodeType2DefSend(edit), send) << save;
    }
}

// The rules are tried in order: equal edit forms before Unicode, Unicode before ASCII.
TEST(CodeTypeForms, OneTypeForTwoTexts)
{
    const std::tuple<CodeType, CodeType, CodeType> cases[] = {
        {CT_ASCII, CT_SJIS, CT_SJIS},     {CT_SJIS, CT_GB2312, CT_UTF8},
        {CT_JIS, CT_SJIS, CT_JIS},        {CT_SJIS, CT_JIS, CT_JIS},
        {CT_JIS, CT_EUC, CT_JIS},         {CT_UNICODE, CT_ASCII, CT_UTF8},
        {CT_UNICODE, CT_UTF7, CT_UTF7},   {CT_UTF7, CT_SJIS, CT_UTF7},
        {CT_UNKNOWN, CT_ASCII, CT_ASCII}, {CT_KOI8R, CT_ASCII, CT_KOI8R},
    };
    for (const auto& [a, b, expected] : cases)
        EXPECT_EQ(GetPriorCodeType(a, b), expected) << a << ' ' << b;

    EXPECT_TRUE(IsPriorCodeType(CT_UNKNOWN, CT_ASCII) && IsPriorCodeType(CT_ASCII, CT_JIS));
    EXPECT_FALSE(IsPriorCodeType(CT_JIS, CT_UTF8));

    CBuffer text("\x82\xA0");
    ConvToPriorCodeType(CT_JIS, CT_UTF8, text); // held as Shift_JIS, then as UTF-16
    EXPECT_EQ(text, CBuffer("\x42\x30"));
    ConvToPriorCodeType(CT_UNKNOWN, CT_JIS, text); // impossible
    EXPECT_EQ(text, CBuffer("\x42\x30"));
}

TEST(CodeTypeForms, EncodingAndColumns)
{
    EXPECT_STREQ(GetDefaultSendEncoding(0, 1, CT_ASCII), "base64");
    EXPECT_STREQ(GetDefaultSendEncoding(1, 1, CT_UTF7), "7bit");
    EXPECT_EQ(AsciiByte2Column(6, CT_UNICODE), 3);
    EXPECT_EQ(GetCodeType("unheard-of", "\x82\xA0", 2), CT_JIS);
}
