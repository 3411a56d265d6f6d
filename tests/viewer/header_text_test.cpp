#include "viewer/header_text.h"

#include "tests/viewer/viewer_support.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

TEST(HeaderText, DecodesValues)
{
    const struct {
        std::string value;
        const char* expected;
    } cases[] = {
        // Folding, with CR LF, LF, tab, and white space at the ends.
        {"", ""},
        {" plain ", "plain"},
        {"a\r\n b\n\tc\r\n   d", "a b c d"},
        // One word; upper and lower case of the names; language behind the charset.
        {"=?UTF-8?B?44GC?=", "あ"},
        {"=?utf-8?q?=e3=81=82?=", "あ"},
        {"=?ISO-2022-JP*ja?B?GyRCJCIbKEI=?=", "あ"},
        // Underscores are blanks, also the last one, which padding rules would remove.
        {"=?us-ascii?Q?a_b_?= =?us-ascii?Q?c?=", "a b c"},
        {"=?us-ascii?Q?really?\?=", "really?"},
        // White space between words disappears, next to other text it stays.
        {"=?utf-8?Q?a?=  \r\n =?utf-8?Q?b?=", "ab"},
        {"=?utf-8?Q?a?= =?us-ascii?Q?b?=", "ab"},
        {"x =?utf-8?Q?a?= y", "x a y"},
        {"\"=?utf-8?Q?a?=\" <a@example.com>", "\"a\" <a@example.com>"},
        // A character cut over two words, of different encodings.
        {"=?utf-8?B?44E=?= =?UTF-8?Q?=82?=", "あ"},
        // Raw bytes: UTF-8, Shift_JIS, ISO-2022-JP.
        {"\xE3\x81\x82", "あ"},
        {"\x82\xA0 (\x82\xA2)", "あ (い)"},
        {"\x1B$B$\"\x1B(B", "あ"},
        // The word's charset is wrong.
        {"=?ISO-2022-JP?Q?=E3=81=82?=", "あ"},
        // Unknown charsets: ASCII reads, Shift_JIS is recognised, the rest stays as written.
        {"=?x-none?Q?abc?=", "abc"},
        {"=?windows-31j?B?gqCCog==?=", "あい"},
        {"=?x-none?Q?caf=E9?=", "=?x-none?Q?caf=E9?="},
        {"=?\x82\xA0?Q?=E9?=", "=?あ?Q?=E9?="},
        // No words at all.
        {"=?", "=?"},
        {"=?utf-8", "=?utf-8"},
        {"=?utf-8?Q?abc", "=?utf-8?Q?abc"},
        {"=?utf-8?X?abc?=", "=?utf-8?X?abc?="},
        {"=??Q?abc?=", "=??Q?abc?="},
        {"=?a b?Q?abc?=", "=?a b?Q?abc?="},
        {"=?utf-8?Q?\?=", ""},
        {"=?utf-8?Q?=?utf-8?Q?x?=", "=?utf-8?Q?x"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DecodeHeaderValue(c.value), c.expected) << c.value;
}

// Fails (by its time) when every beginning of a word is searched to the end of the value.
TEST(HeaderText, ValuesFullOfBeginningsAreLinear)
{
    for (const char* piece : {"=?a?Q?", "=? a?Q?", "=?utf-8?B?", "=?"}) {
        const std::string value = Repeated(piece, 1'000'000);
        EXPECT_FALSE(DecodeHeaderValue(value).empty());
        EXPECT_FALSE(DecodeHeaderValue(value + "?=").empty());
    }
}

TEST(HeaderText, ReadsParameters)
{
    const struct {
        const char *value, *main;
        const char* text; // of the parameter "name"
    } cases[] = {
        {"", "", ""},
        {"Text/Plain", "text/plain", ""},
        {"text/plain (comment; name=x); NAME = abc ; b=c", "text/plain", "abc"},
        {"a/b; name=\"a;b\\\"c\\\\d\"; x=y", "a/b", "a;b\"c\\d"},
        {"a/b; name=\"C:\\dir\"", "a/b", "C:\\dir"},
        {"a/b; name=\"open", "a/b", "open"},
        {"a/b; name=two words", "a/b", "two words"},
        {"a/b; name=first; name=second", "a/b", "first"},
        {"a/b;;;name", "a/b", ""},
        {"a/b; name=\"=?utf-8?B?44GC?=.txt\"", "a/b", "あ.txt"},
        // RFC 2231, preferred to the plain form; pieces in any order; a piece missing.
        {"a/b; name=old; name*=utf-8'ja'%E3%81%82", "a/b", "あ"},
        {"a/b; name*=Shift_JIS''%82%A0.txt", "a/b", "あ.txt"},
        {"a/b; name*1*=%81%82; name*0*=utf-8''%E3; name*2=\".txt\"", "a/b", "あ.txt"},
        {"a/b; name*0=ab; name*2=cd", "a/b", "ab"},
        {"a/b; name*=no-quotes%21", "a/b", "no-quotes!"},
    };
    for (const auto& c : cases) {
        const ParameterList list(c.value);
        EXPECT_EQ(list.GetMain(), c.main) << c.value;
        EXPECT_EQ(list.GetText("name"), c.text) << c.value;
    }
}

} // namespace
} // namespace tlvn
