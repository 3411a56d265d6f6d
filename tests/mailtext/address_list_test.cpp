#include "mailtext/address_list.h"
#include "tests/support/test.h"

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

const CString kNoQuote(TW("不正なアドレスです。ダブルクオーテーションが閉じられていません。"));
const CString kNoParenthesis(TW("不正なアドレスです。かっこが閉じられていません。"));

} // namespace

TEST(AddressList, FindsDelimitersOutsideQuotesAndParentheses)
{
    const struct {
        const char* text;
        int start;
        int position;
        CString message = "";
    } cases[] = {
        {"a,b", 2, -1},
        {"a,b", -1, -1},
        {"\"a,b\" <c>,d", 0, 9},
        {"\"abc, d@e", 0, 4},  // a lone quote at the start swallows nothing
        {"\"a, \"b, c", 0, 6}, // this one is not alone
        {"x \"abc, d@e", 0, -1, kNoQuote + "\nx \"abc, d@e"},
        {"x \"a\\\\\", b", 0, -1, kNoQuote + "\nx \"a\\\\\", b"}, // behind a backslash: none
        {"x \"a\\\",\" , b", 0, 9},                               // escaped inside quotes
        {"a\\,b", 0, 2},         // outside quotes a backslash is ordinary
        {"x \\\"a,b\\\"", 0, 5}, // a quote behind one does not open
        {"a(,\"),b", 0, 5},      // a quote in parentheses does not count
        {"a),b", 0, 2},          // a ")" too many
        {"a (b, c ", 0, -1, kNoParenthesis + "\na (b, c"},
        {"\x83\x5C\"a,\",b", 0, 6}, // a trail byte is no backslash
    };
    for (const auto& c : cases) {
        int position = 99;
        CString message("left over");
        EXPECT_EQ(FindAddrDelimiter(c.text, c.start, ',', position, message), c.message.IsEmpty())
            << c.text;
        EXPECT_EQ(position, c.position) << c.text;
        EXPECT_EQ(message, c.message) << c.text;
    }
}

TEST(AddressList, Splits)
{
    const struct {
        const char* list;
        Items items;
        CString message = "";
    } cases[] = {
        {" a@b , \"c, d\" <e@f> ,", {"a@b", "\"c, d\" <e@f>"}},
        {"a@b, (c, d@e", {"a@b", "(c, d@e"}, kNoParenthesis + "\n(c, d@e"},
        {"a@b,\"c, d@e", {"a@b", "\"c", "d@e"}}, // a lone quote begins the item
        {"a@b, \"c, d@e ", {"a@b", "\"c, d@e"}, kNoQuote + "\n\"c, d@e"}, // a blank does
    };
    for (const auto& c : cases) {
        CStringArray items;
        CString message("left over");
        EXPECT_EQ(GetAddrArray2(c.list, items, message), c.message.IsEmpty()) << c.list;
        EXPECT_EQ(List(items), c.items) << c.list;
        EXPECT_EQ(message, c.message) << c.list;
    }
    CArray<CStringW> wide;
    CStringW wideMessage;
    EXPECT_EQ(GetAddrArray2(TW("\u3000e@f, 日 (\u00E9"), wide, wideMessage), 0);
    EXPECT_EQ(wide[0], TW("e@f"));
    EXPECT_EQ(wideMessage, TW("不正なアドレスです。かっこが閉じられていません。\n日 (\u00E9"));
}

TEST(AddressList, IsParsedSimply)
{
    CStringArray items;
    EXPECT_EQ(ParseAddrList(" a@b,\tc@d\r\n,,\"e f\"", items), 4);
    EXPECT_EQ(List(items), (Items{"a@b", "c@d", "\"e", "f\""}));
}

TEST(AddressList, IsSplitIntoTwoArrays)
{
    CStringArray addresses, names;
    EXPECT_EQ(GetAddrNameArray("\"S, K\" <a@b>, c@d, Mori", addresses, names), 1);
    EXPECT_EQ(List(addresses), (Items{"a@b", "c@d", ""}));
    EXPECT_EQ(List(names), (Items{"S, K", "", "Mori"}));
    EXPECT_EQ(GetAddrNameArray("a@b, (c", addresses, names), 0);
    EXPECT_EQ(names[4], "(c");
    // An item of a sound list can be malformed: a quote that the list took for an ordinary one.
    EXPECT_EQ(GetAddrNameArray("\"x (\",y", addresses, names), 1);
}

TEST(AddressList, TellsTheItemAtAnOffset)
{
    const std::tuple<const char*, int, int, int> cases[] = {
        {"a@b, c@d", 3, 0, 3}, {"a@b, c@d", 4, -1, 0}, // the blank
        {"a@b, c@d", 5, 5, 8}, {"a@b, c@d", 9, -1, 0}, {"a@b, c@d", -1, -1, 0}, {"", 0, 0, 0},
        {"a,", 2, 2, 2},       {"a, ", 2, -1, 0},      {"a,(b", 3, -1, 0},
    };
    for (const auto& [list, offset, wantedStart, wantedEnd] : cases) {
        int start = -1, end = 0;
        EXPECT_EQ(GetAddressRange(list, offset, start, end), wantedStart >= 0) << list << offset;
        EXPECT_EQ(start, wantedStart) << list << offset;
        EXPECT_EQ(end, wantedEnd) << list << offset;
    }
}

TEST(AddressList, IsLookedUp)
{
    Array addresses{"a@b", "", "", "c@d"};
    Array names{"Sato", "mori", "Sato"};
    EXPECT_EQ(LookupAddrNameArray(addresses, names, "C@D", "x"), 3);
    EXPECT_EQ(LookupAddrNameArray(addresses, names, "", "SATO"), 2); // without an address
}

TEST(AddressList, IncludesAnAddress)
{
    const std::tuple<const char*, int, const char*, int> cases[] = {
        {"a@b", 1, "a@b, (c", 0}, // the malformed item counts for none
        {nullptr, 0, "Sato", 1},
    };
    for (const auto& [address, other, list, result] : cases)
        EXPECT_EQ(IsAddressIncluded(address, other, list), result) << list << other;
    Array patterns{"x@*", "*@b.c"};
    EXPECT_EQ(IsWildAddrIncluded(patterns, 0, "A@B.C"), 1);
    EXPECT_EQ(IsWildAddrIncluded(patterns, 0, nullptr), 0);
}
