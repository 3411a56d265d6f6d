// Values of every type, and the operations on keys and names.

#include "setting_support.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <random>
#include <vector>

namespace {

std::vector<std::string> Strings(const CStringArray& array)
{
    std::vector<std::string> strings;
    for (int i = 0; i < array.GetSize(); ++i)
        strings.push_back(array[i].GetString());
    return strings;
}

void Fill(CStringArray& array, const std::vector<std::string>& strings)
{
    for (const std::string& text : strings)
        array.Add(text.c_str());
}

std::vector<std::string> Keys(const CSettingData& data)
{
    std::vector<std::string> names;
    for (int i = 0; i < data.GetKeyList().GetSize(); ++i)
        names.push_back(data.GetKeyList()[i]->GetName().GetString());
    return names;
}

std::vector<std::string> Names(const CSettingData& data, const char* key)
{
    std::vector<std::string> names;
    const CSettingData::PairArray* const pairs = data.GetPairList(key);
    for (int i = 0; pairs != nullptr && i < pairs->GetSize(); ++i)
        names.push_back((*pairs)[i]->GetName().GetString());
    return names;
}

using List = std::vector<std::string>;

} // namespace

// Each type as text, and the text as that type again.
TEST(SettingValue, Texts)
{
    Settings data;
    const auto text = [&](const auto& value) {
        data.SetValue("a", "x", value);
        return data.Get("a", "x");
    };
    EXPECT_EQ(text("\x82\xA0"), TW("\u3042"));
    EXPECT_EQ(text(CString("b")), TW("b"));
    EXPECT_EQ(text(TW("\u00E9")), TW("\u00E9"));
    EXPECT_EQ(text(CStringW(TW("w"))), TW("w"));
    EXPECT_EQ(text(INT_MIN), TW("-2147483648"));
    EXPECT_EQ(text(DWORD{0xFFFFFFFF}), TW("4294967295"));
    EXPECT_EQ(text(INT64{LLONG_MIN}), TW("-9223372036854775808"));
    INT64 big = 0;
    EXPECT_EQ(data.GetValue("a", "x", big), 1);
    EXPECT_EQ(big, LLONG_MIN);
    EXPECT_EQ(text(CRect(-1, 2, -3, 40)), TW("-1,2,-3,40"));
    CRect rect;
    EXPECT_EQ(data.GetValue("a", "x", rect), 1);
    EXPECT_EQ(rect, CRect(-1, 2, -3, 40));

    CUIntArray units;
    EXPECT_EQ(text(units), TW(""));
    units.Add(0);
    units.Add(UINT_MAX);
    EXPECT_EQ(text(units), TW("0,4294967295"));
    CArray<int, int> ints;
    ints.Add(INT_MIN);
    ints.Add(7);
    EXPECT_EQ(text(ints), TW("-2147483648,7"));
    ints.RemoveAll();
    EXPECT_EQ(data.GetValue("a", "x", ints), 1);
    ASSERT_EQ(ints.GetSize(), 2);
    EXPECT_EQ(ints[0], INT_MIN);

    CStringArray strings;
    Fill(strings, {"one", "", "\x82\xA0"});
    EXPECT_EQ(text(strings), TW("one\t\t\u3042"));
    strings.RemoveAll();
    EXPECT_EQ(data.GetValue("a", "x", strings), 1);
    EXPECT_EQ(Strings(strings), List({"one", "", "\x82\xA0"}));

    data.SetHexValue("a", "h", 0x00C0FFEE);
    EXPECT_EQ(data.Get("a", "h"), TW("0x00C0FFEE"));
}

TEST(SettingValue, NumbersFromText)
{
    const struct {
        const char* text;
        int asInt;
        DWORD asDword;
        INT64 asInt64;
        DWORD asHex;
    } cases[] = {
        {"", 0, 0, 0, 0},
        {"abc", 0, 0, 0, 0xABC},
        {"12x3", 12, 12, 12, 0x12},
        {"-5", -5, 0xFFFFFFFB, -5, 0},
        {" +5", 5, 5, 5, 0},
        {"--5", 0, 0, 0, 0},
        {"0x1F", 0, 0, 0, 0x1F},
        {"0X1fg", 0, 0, 0, 0x1F},
        {"4294967295", INT_MAX, 0xFFFFFFFF, 4294967295, 0xFFFFFFFF},
        {"99999999999999999999", INT_MAX, 0xFFFFFFFF, LLONG_MAX, 0xFFFFFFFF},
        {"-99999999999999999999", INT_MIN, 0x80000000, LLONG_MIN, 0},
        {"9223372036854775807", INT_MAX, 0xFFFFFFFF, LLONG_MAX, 0xFFFFFFFF},
    };
    for (const auto& c : cases) {
        Settings data;
        data.SetValue("a", "x", c.text);
        int asInt = 1;
        DWORD asDword = 1, asHex = 1;
        INT64 asInt64 = 1;
        EXPECT_EQ(data.GetValue("a", "x", asInt), 1);
        EXPECT_EQ(data.GetValue("a", "x", asDword), 1);
        EXPECT_EQ(data.GetValue("a", "x", asInt64), 1);
        EXPECT_EQ(data.GetHexValue("a", "x", asHex), 1);
        EXPECT_EQ(asInt, c.asInt) << c.text;
        EXPECT_EQ(asDword, c.asDword) << c.text;
        EXPECT_EQ(asInt64, c.asInt64) << c.text;
        EXPECT_EQ(asHex, c.asHex) << c.text;
    }
}

TEST(SettingValue, AbsentPairLeavesTheVariable)
{
    Settings data;
    data.SetKey("a");
    for (const char* key : {"a", "b", static_cast<const char*>(nullptr)}) {
        int number = 7;
        DWORD hex = 7;
        CString text("7");
        CRect rect(1, 2, 3, 4);
        CStringArray strings;
        strings.Add("7");
        EXPECT_EQ(data.GetValue(key, "x", number), 0);
        EXPECT_EQ(data.GetHexValue(key, "x", hex), 0);
        EXPECT_EQ(data.GetValue(key, "x", text), 0);
        EXPECT_EQ(data.GetValue(key, "x", rect), 0);
        EXPECT_EQ(data.GetValue(key, "x", strings), 0);
        EXPECT_EQ(data.GetValueBegin(key, "x", strings), 0);
        EXPECT_TRUE(number == 7 && hex == 7 && text == "7" && rect == CRect(1, 2, 3, 4));
        EXPECT_EQ(strings.GetSize(), 1);
    }
    EXPECT_EQ(data.GetPairList("b"), nullptr);
    EXPECT_NE(data.GetPairList("A"), nullptr);
}

TEST(SettingValue, RangesAndDefaults)
{
    Settings data;
    const struct {
        const char* text; // null: absent
        int expected;
        int truth;
    } cases[] = {{nullptr, 99, 42}, {"5", 10, 1},  {"10", 10, 1},        {"15", 15, 1},
                 {"20", 20, 1},     {"21", 20, 1}, {"no number", 10, 0}, {"-1", 10, 1}};
    for (const auto& c : cases) {
        data.RemoveKeyAll();
        if (c.text != nullptr)
            data.SetValue("a", "x", c.text);
        EXPECT_EQ(data.GetIntValue("a", "x", 10, 20, 99), c.expected) << c.expected;
        EXPECT_EQ(data.GetBoolValue("a", "x", 42), c.truth) << c.expected;
    }
}

TEST(SettingValue, UpdatedOnlyByChange)
{
    Settings data;
    data.SetValue("a", "x", "text");
    data.SetUpdated(0);
    data.SetValue("A", "X", "text");
    data.SetKey("A");
    EXPECT_EQ(data.IsUpdated(), 0);
    data.SetValue("a", "x", "Text"); // case counts in values
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Names(data, "a"), List({"x"}));
    data.SetUpdated(0);
    data.SetKey("b");
    EXPECT_EQ(data.IsUpdated(), 1);
    data.SetUpdated(5);
    EXPECT_EQ(data.IsUpdated(), 1);
}

TEST(SettingValue, ListsUnderAPrefix)
{
    Settings data;
    data.SetValue("a", "Folder", "other");
    data.SetValue("a", "file9", "z");
    data.SetValue("a", "x", "y");
    data.SetValue("a", "FILE1", "w");
    CStringArray list;
    EXPECT_EQ(data.GetValueBegin("A", "File", list), 1);
    EXPECT_EQ(Strings(list), List({"z", "w"}));

    data.SetUpdated(0);
    data.SetValueBegin("a", "File", list); // the same values, whatever their names
    EXPECT_EQ(data.IsUpdated(), 0);
    list.Add("v");
    data.SetValueBegin("a", "File", list);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Names(data, "a"), List({"Folder", "x", "File0", "File1", "File2"}));
    EXPECT_EQ(data.Get("a", "file2"), TW("v"));
    list.RemoveAll();
    data.SetValueBegin("a", "File", list);
    EXPECT_EQ(Names(data, "a"), List({"Folder", "x"}));
    data.SetUpdated(0);
    data.SetValueBegin("new", "File", list); // nothing to set makes no key
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.GetPairList("new"), nullptr);
}

TEST(SettingKey, RemoveMoveRename)
{
    Settings data;
    for (const char* key : {"a1", "b", "A2", "c", "aa1"})
        data.SetValue(key, "x", key);
    data.SetValue("a1", "only", 1);
    data.SetUpdated(0);
    EXPECT_EQ(data.RemoveKey("none"), 0);
    EXPECT_EQ(data.MoveKeyPosition("none", 0), 0);
    EXPECT_EQ(data.MoveKeyPosition("b", 1), 1);
    EXPECT_EQ(data.RemoveKeyBegin("none"), 0);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.MoveKeyPosition("C", 0), 1);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Keys(data), List({"c", "a1", "b", "A2", "aa1"}));
    data.MoveKeyPosition("c", INT_MAX);
    data.MoveKeyPosition("aa1", INT_MIN);
    EXPECT_EQ(Keys(data), List({"aa1", "a1", "b", "A2", "c"}));

    // All at once: "a1" becomes "aa1" while the old "aa1" becomes "aaa1".
    EXPECT_EQ(data.RenameKeyBegin("A", "aa"), 3);
    EXPECT_EQ(Keys(data), List({"aaa1", "aa1", "b", "aa2", "c"}));
    EXPECT_EQ(data.Get("aa1", "x"), TW("a1"));
    // Two of one name are merged.
    EXPECT_EQ(data.RenameKeyBegin("aa1", "AA2"), 1);
    EXPECT_EQ(Keys(data), List({"aaa1", "AA2", "b", "c"}));
    EXPECT_EQ(data.Get("aa2", "x"), TW("A2"));
    EXPECT_EQ(data.Get("aa2", "only"), TW("1"));

    data.SetUpdated(0);
    EXPECT_EQ(data.RemoveKeyBegin("AA", 0), 2);
    EXPECT_EQ(data.RemoveKey("B", 0), 1);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.RemoveKey("c"), 1);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Keys(data), List());
}

TEST(SettingKey, RemoveNames)
{
    Settings data;
    for (const char* name : {"p1", "q", "P2", "r"})
        data.SetValue("a", name, 1);
    data.SetUpdated(0);
    EXPECT_EQ(data.RemoveName("a", "none") + data.RemoveName("b", "q"), 0);
    EXPECT_EQ(data.RemoveNameAt("a", 4) + data.RemoveNameAt("a", -1) + data.RemoveNameAt("b", 0),
              0);
    EXPECT_EQ(data.RemoveNameBegin("a", "none") + data.RemoveNameBegin("b", ""), 0);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.RemoveNameAt("a", 1), 1);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Names(data, "a"), List({"p1", "P2", "r"}));
    EXPECT_EQ(data.RemoveNameBegin("A", "p"), 2);
    EXPECT_EQ(data.RemoveName("A", "R"), 1);
    EXPECT_EQ(Names(data, "a"), List());
    EXPECT_EQ(Keys(data), List({"a"}));
}

// A prefix ends where a character does: 82 is the first half of many.
TEST(SettingKey, PrefixesAreCharacters)
{
    Settings data;
    data.SetValue("a", "\x82\xA0", 1);
    EXPECT_EQ(data.RemoveNameBegin("a", "\x82"), 0);
    EXPECT_EQ(data.RemoveNameBegin("a", "\x82\xA0"), 1);
}

TEST(SettingKey, Copies)
{
    Settings from, to;
    from.SetValue("a", "p1", 1);
    from.SetValue("a", "p2", 2);
    from.SetValue("a", "q", 3);
    from.SetKey("b");
    to.SetValue("z", "y", 0);
    to.SetValue("A", "old", 0);
    to.SetValue("A", "P9", 9);
    to.SetUpdated(0);

    EXPECT_EQ(to.CopySdKey(from, "none") + to.CopySdName(from, "a", "none") +
                  to.CopySdNameBegin(from, "a", "none"),
              0);
    EXPECT_EQ(to.IsUpdated(), 0);
    EXPECT_EQ(to.CopySdName(from, "a", "q", 0), 1);
    EXPECT_EQ(to.IsUpdated(), 0);
    EXPECT_EQ(Names(to, "a"), List({"old", "P9", "q"}));
    EXPECT_EQ(to.CopySdNameBegin(from, "a", "p"), 1);
    EXPECT_EQ(to.IsUpdated(), 1);
    EXPECT_EQ(Names(to, "a"), List({"old", "q", "p1", "p2"}));
    EXPECT_EQ(to.CopySdKey(from, "a"), 1);
    EXPECT_EQ(Names(to, "a"), List({"p1", "p2", "q"}));
    EXPECT_EQ(Keys(to), List({"z", "A"}));

    EXPECT_EQ(to.EqualSD(from), 0);
    to.CopySD(from);
    EXPECT_EQ(to.EqualSD(from), 1);
    to.SetUpdated(0);
    to.CopySD(from); // equal: nothing changes
    to.CopySdKey(from, "a");
    to.CopySdName(from, "a", "q");
    to.CopySdNameBegin(from, "a", "p");
    to.CopySD(to);
    EXPECT_EQ(to.IsUpdated(), 0);
    EXPECT_EQ(Keys(to), List({"a", "b"}));

    to.MoveKeyPosition("b", 0); // the order counts, and so does a value's case
    EXPECT_EQ(to.EqualSD(from), 0);
    to.CopySD(from);
    to.SetValue("a", "q", "X");
    from.SetValue("a", "q", "x");
    EXPECT_EQ(to.EqualSD(from), 0);
}

TEST(SettingKey, LookupAndSetAt)
{
    CSettingDataKey key("a");
    CStringW value(TW("before"));
    EXPECT_EQ(CSettingData::LookupSettingData(&key, "x", value), 0);
    EXPECT_EQ(CSettingData::LookupSettingData(nullptr, "x", value), 0);
    EXPECT_EQ(value, TW("before"));
    EXPECT_EQ(CSettingData::SetAtSettingData(&key, "x", TW("1")), 0);
    EXPECT_EQ(CSettingData::SetAtSettingData(&key, "X", TW("2")), 1);
    EXPECT_EQ(CSettingData::SetAtSettingData(nullptr, "x", TW("2")), 0);
    EXPECT_EQ(CSettingData::LookupSettingData(&key, "X", value), 1);
    EXPECT_EQ(value, TW("2"));
    EXPECT_EQ(key.GetPairs().GetSize(), 1);
}

// The hash table of the names against a map, through insertions, removals and a change of the
// code page, which changes what is the same name.
TEST(SettingKey, RandomAgainstMap)
{
    std::mt19937 random(5);
    CSettingDataKey key("a");
    std::map<std::string, CStringW> model; // by the name in small letters
    std::vector<std::string> order;
    const auto lower = [](std::string name) {
        tlvn::ToLowerMbs(name.data(), static_cast<int>(name.size()));
        return name;
    };
    for (int step = 0; step < 20000; ++step) {
        const char* const prefixes[] = {"n", "N", "\x82\x60", "\x82\x81"}; // full-width A, a
        const std::string name = prefixes[random() % 4] + std::to_string(random() % 300);
        const std::string folded = lower(name);
        const bool known = model.count(folded) != 0;
        switch (random() % 8) {
        case 0:
            EXPECT_EQ(key.Remove(name), known ? 1 : 0);
            model.erase(folded);
            std::erase(order, folded);
            break;
        case 1:
            if (!order.empty() && random() % 8 == 0) {
                const std::string prefix = order[random() % order.size()].substr(0, 3);
                const auto matches = [&](const std::string& n) {
                    return tlvn::NameBeginsWith(n, prefix);
                };
                EXPECT_EQ(key.RemoveBegin(prefix), static_cast<int>(std::erase_if(order, matches)));
                std::erase_if(model, [&](const auto& item) { return matches(item.first); });
            }
            break;
        case 2: {
            const UINT page = GetMultibyteCodePage();
            SetMultibyteCodePage(1252); // asks in another page in between
            key.Find(name);
            SetMultibyteCodePage(page);
            break;
        }
        default: {
            const CSettingDataPair* const found = key.Find(name);
            ASSERT_EQ(found != nullptr, known) << name;
            if (known) {
                EXPECT_EQ(found->GetValue(), model[folded]);
            }
            CStringW value;
            value.Format(TW("%d"), step);
            EXPECT_EQ(key.SetAt(name, tlvn::ViewOf(value)), known ? 1 : 0);
            model[folded] = value;
            if (!known)
                order.push_back(folded);
        }
        }
        ASSERT_EQ(static_cast<std::size_t>(key.GetPairs().GetSize()), order.size());
    }
    for (std::size_t i = 0; i < order.size(); ++i)
        EXPECT_EQ(lower(key.GetPairs()[static_cast<int>(i)]->GetName().GetString()), order[i]);
}
