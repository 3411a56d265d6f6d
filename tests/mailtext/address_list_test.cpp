#include "mailtext/address_list.h"
#include "platform/nls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Items = std::vector<std::string>;

Items List(const CStringArray& array)
{
    Items items;
    for (int i = 0; i < array.GetSize(); ++i)
        items.push_back(array[i].GetString());
    return items;
}

struct Array : CStringArray {
    Array(std::initializer_list<const char*> items)
    {
        for (const char* item : items)
            Add(item);
    }
};

std::string Message(const char16_t* text)
{
    const std::u16string units(text);
    return tlvn::NarrowText(tlvn::WString(units.begin(), units.end()));
}
const std::string kNoQuote =
    Message(u"不正なアドレスです。ダブルクオーテーションが閉じられていません。");
const std::string kNoParenthesis = Message(u"不正なアドレスです。かっこが閉じられていません。");

} // namespace

TEST(AddressList, FindsDelimitersOutsideQuotesAndParentheses)
{
    const struct {
        const char* text;
        int start;
        int position;
        std::string message = "";
    } cases[] = {
        {"a,b", 0, 1},
        {"a,b", 2, -1},
        {"a,b", 1, 1},
        {"a,b", 3, -1},
        {"a,b", 4, -1}, // outside the text
        {"a,b", -1, -1},
        {"", 0, -1},
        {"\"a,b\" <c>,d", 0, 9},
        {"\"abc, d@e", 0, 4},  // a lone quote at the start swallows nothing
        {"\"a, \"b, c", 0, 6}, // this one is not alone
        {"\"a\\\", b", 0, 4},  // nor is one closed by an escaped one
        {"x \"abc, d@e", 0, -1, kNoQuote + "\nx \"abc, d@e"},
        {"a,b \"c ", 2, -1, kNoQuote + "\nb \"c"},
        {"x \"a\\\\\", b", 0, -1, kNoQuote + "\nx \"a\\\\\", b"}, // behind a backslash: none
        {"x \"a\\\",\" , b", 0, 9},                               // escaped inside quotes
        {"a\\,b", 0, 2},         // outside quotes a backslash is ordinary
        {"x \\\"a,b\\\"", 0, 5}, // a quote behind one does not open
        {"a(,\"),b", 0, 5},      // a quote in parentheses does not count
        {"a(b(,),),c", 0, 8},
        {"a),b", 0, 2},    // a ")" too many
        {"\"(\",b", 0, 3}, // "(" in quotes
        {"a (b, c ", 0, -1, kNoParenthesis + "\na (b, c"},
        {"\x83\x5C\"a,\",b", 0, 6}, // a trail byte is no backslash
        {"\"\x83\x5C\",b", 0, 4},
        {"\\\"a,b", 1, 3}, // at the start, but behind a backslash
    };
    for (const auto& c : cases) {
        int position = 99;
        CString message("left over");
        EXPECT_EQ(FindAddrDelimiter(c.text, c.start, ',', position, message), c.message.empty())
            << c.text;
        EXPECT_EQ(position, c.position) << c.text;
        EXPECT_EQ(message, c.message.c_str()) << c.text;
    }
    int position = 99;
    CString message;
    EXPECT_EQ(FindAddrDelimiter(static_cast<const char*>(nullptr), 0, ',', position, message), 1);
    EXPECT_EQ(position, -1);
    CStringW wideMessage;
    EXPECT_EQ(FindAddrDelimiter(TW("\"日,本\" <c>,d"), 0, WCHAR{','}, position, wideMessage), 1);
    EXPECT_EQ(position, 9);
    EXPECT_EQ(FindAddrDelimiter(TW("日 (\u00E9"), 0, WCHAR{','}, position, wideMessage), 0);
    EXPECT_EQ(wideMessage, TW("不正なアドレスです。かっこが閉じられていません。\n日 (\u00E9"));
}

TEST(AddressList, Splits)
{
    const struct {
        const char* list;
        Items items;
        std::string message = "";
    } cases[] = {
        {"", {}},
        {" , ,", {}},
        {"a@b", {"a@b"}},
        {" a@b , \"c, d\" <e@f> ,", {"a@b", "\"c, d\" <e@f>"}},
        {"a@b, (c, d@e", {"a@b", "(c, d@e"}, kNoParenthesis + "\n(c, d@e"},
        {"a@b,\"c, d@e", {"a@b", "\"c", "d@e"}}, // a lone quote begins the item
        {"a@b, \"c, d@e ", {"a@b", "\"c, d@e"}, kNoQuote + "\n\"c, d@e"}, // a blank does
    };
    for (const auto& c : cases) {
        CStringArray items;
        CString message("left over");
        EXPECT_EQ(GetAddrArray2(c.list, items, message), c.message.empty()) << c.list;
        EXPECT_EQ(List(items), c.items) << c.list;
        EXPECT_EQ(message, c.message.c_str()) << c.list;
    }
    Array items{"x"};
    CString message;
    EXPECT_EQ(GetAddrArray2(static_cast<const char*>(nullptr), items, message), 1);
    GetAddrArray2("y", items, message);
    EXPECT_EQ(List(items), (Items{"x", "y"})); // they are added
    CArray<CStringW> wide;
    CStringW wideMessage;
    EXPECT_EQ(GetAddrArray2(TW("\"日,本\" <c@d>,\u3000e@f"), wide, wideMessage), 1);
    ASSERT_EQ(wide.GetSize(), 2);
    EXPECT_EQ(wide[0], TW("\"日,本\" <c@d>"));
    EXPECT_EQ(wide[1], TW("e@f"));
}

TEST(AddressList, IsParsedSimply)
{
    CStringArray items;
    EXPECT_EQ(ParseAddrList(" a@b,\tc@d\r\n,,\"e f\"", items), 4);
    EXPECT_EQ(List(items), (Items{"a@b", "c@d", "\"e", "f\""}));
    EXPECT_EQ(ParseAddrList(nullptr, items), 0);
    EXPECT_EQ(ParseAddrList(" ,", items), 0);
}

TEST(AddressList, IsSplitIntoTwoArrays)
{
    CStringArray addresses, names;
    EXPECT_EQ(GetAddrNameArray("\"S, K\" <a@b>, c@d, Mori", addresses, names), 1);
    EXPECT_EQ(List(addresses), (Items{"a@b", "c@d", ""}));
    EXPECT_EQ(List(names), (Items{"S, K", "", "Mori"}));
    EXPECT_EQ(GetAddrNameArray("a@b, (c", addresses, names), 0);
    EXPECT_EQ(List(addresses), (Items{"a@b", "c@d", "", "a@b", ""}));
    EXPECT_EQ(names[4], "(c");
    // An item of a sound list can be malformed: a quote that the list took for an ordinary one.
    EXPECT_EQ(GetAddrNameArray("\"x (\",y", addresses, names), 1);
}

TEST(AddressList, TellsTheItemAtAnOffset)
{
    const struct {
        const char* list;
        int offset;
        int start; // -1 for none
        int end;
    } cases[] = {
        {"a@b, c@d", 0, 0, 3},   {"a@b, c@d", 3, 0, 3},  {"a@b, c@d", 4, -1, 0}, // the blank
        {"a@b, c@d", 5, 5, 8},   {"a@b, c@d", 8, 5, 8},  {"a@b, c@d", 9, -1, 0},
        {"a@b, c@d", -1, -1, 0}, {"", 0, 0, 0},          {"a,", 2, 2, 2},
        {"a, ", 2, -1, 0},       {"\"a,b\",c", 3, 0, 5}, {"a,(b", 3, -1, 0},
        {"a,(b", 1, 0, 1},
    };
    for (const auto& c : cases) {
        int start = -1, end = 0;
        EXPECT_EQ(GetAddressRange(c.list, c.offset, start, end), c.start >= 0)
            << c.list << c.offset;
        EXPECT_EQ(start, c.start) << c.list << c.offset;
        EXPECT_EQ(end, c.end) << c.list << c.offset;
    }
    int start, end;
    EXPECT_EQ(GetAddressRange(nullptr, 0, start, end), 0);
}

TEST(AddressList, IsLookedUp)
{
    Array addresses{"a@b", "", "", "c@d"};
    Array names{"Sato", "mori", "Sato"};
    EXPECT_EQ(LookupAddrNameArray(addresses, names, "C@D", "x"), 3);
    EXPECT_EQ(LookupAddrNameArray(addresses, names, "e@f", "Mori"), -1);
    EXPECT_EQ(LookupAddrNameArray(addresses, names, "", "SATO"), 2); // without an address
    EXPECT_EQ(LookupAddrNameArray(addresses, names, nullptr, "x"), -1);
    EXPECT_EQ(LookupAddrNameArray(addresses, names, "", ""), -1);
}

TEST(AddressList, IncludesAnAddress)
{
    const struct {
        const char* address;
        int other;
        const char* list;
        int result;
    } cases[] = {
        {"a@b", 0, "x <A@B>, c@d", 1},
        {"e@f", 0, "x <A@B>, c@d", 0},
        {"a@b", 1, "x <A@B>", 0},
        {"a@b", 1, "x <A@B>, c@d", 1},
        {"a@b", 1, "Sato", 1},
        {"a@b", 1, "", 0},
        {"a@b", 0, "a@b, (c", 1},
        {"a@b", 1, "a@b, (c", 0}, // the malformed item is passed
                                  // over
        {nullptr, 0, "Sato", 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsAddressIncluded(c.address, c.other, c.list), c.result) << c.list << c.other;
    Array patterns{"*@b.c", "x@*"};
    EXPECT_EQ(IsWildAddrIncluded(patterns, 0, "A@B.C"), 1);
    EXPECT_EQ(IsWildAddrIncluded(patterns, 0, "a@c.b"), 0);
    EXPECT_EQ(IsWildAddrIncluded(patterns, 1, "x@b.c"), 0);
    EXPECT_EQ(IsWildAddrIncluded(patterns, 1, "a@b.c"), 1);
    EXPECT_EQ(IsWildAddrIncluded(patterns, 0, nullptr), 0);
}
