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

using List = std::vector<std::string>;

} // namespace

// Each type as text, and the text as that type again.
TEST(SettingValue, Texts)
{
    Settings data;
    const auto isText = [&](const auto& value, tlvn::WStringView text) {
        data.SetValue("a", "x", value);
        EXPECT_EQ(data.Get("a", "x"), text.data());
    };
    const auto comesBack = [&](auto value, tlvn::WStringView text) {
        isText(value, text);
        const auto before = value;
        value = {};
        EXPECT_EQ(data.GetValue("a", "x", value), 1);
        EXPECT_EQ(value, before);
    };
    isText("\x82\xA0", TW("\u3042"));
    isText(TW("\u00E9"), TW("\u00E9"));
    isText(short{-3}, TW("-3"));
    comesBack(INT_MIN, TW("-2147483648"));
    comesBack(DWORD{0xFFFFFFFF}, TW("4294967295"));
    comesBack(INT64{LLONG_MIN}, TW("-9223372036854775808"));
    comesBack(4000000000ul, TW("4000000000"));
    comesBack(CRect(-1, 2, -3, 40), TW("-1,2,-3,40"));

    CUIntArray units;
    units.Add(0);
    units.Add(UINT_MAX);
    isText(units, TW("0,4294967295"));
    CArray<int, int> ints;
    ints.Add(INT_MIN);
    ints.Add(7);
    isText(ints, TW("-2147483648,7"));
    ints.RemoveAll();
    EXPECT_EQ(data.GetValue("a", "x", ints), 1);
    EXPECT_TRUE(ints.GetSize() == 2 && ints[0] == INT_MIN);

    CStringArray strings;
    for (const char* const string : {"one", "", "\x82\xA0"})
        strings.Add(string);
    isText(strings, TW("one\t\t\u3042"));
    strings.RemoveAll();
    EXPECT_EQ(data.GetValue("a", "x", strings), 1);
    EXPECT_EQ(Strings(strings), List({"one", "", "\x82\xA0"}));

    data.SetHexValue("a", "x", 0x00C0FFEE);
    EXPECT_EQ(data.Get("a", "x"), TW("0x00C0FFEE"));
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
        {"12x3", 12, 12, 12, 0x12},
        {"-5", -5, 0xFFFFFFFB, -5, 0},
        {" +5", 5, 5, 5, 0},
        {"--5", 0, 0, 0, 0},
        {"0x1F", 0, 0, 0, 0x1F},
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
        EXPECT_EQ(data.GetValue("a", "x", asInt) + data.GetValue("a", "x", asDword) +
                      data.GetValue("a", "x", asInt64) + data.GetHexValue("a", "x", asHex),
                  4);
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
    int number = 7;
    DWORD hex = 7;
    CString text("7");
    CRect rect(1, 2, 3, 4);
    CStringArray strings;
    strings.Add("7");
    for (const char* key : {"a", "b", static_cast<const char*>(nullptr)})
        EXPECT_EQ(data.GetValue(key, "x", number) + data.GetHexValue(key, "x", hex) +
                      data.GetValue(key, "x", text) + data.GetValue(key, "x", rect) +
                      data.GetValue(key, "x", strings) + data.GetValueBegin(key, "x", strings),
                  0);
    EXPECT_TRUE(number == 7 && hex == 7 && text == "7" && rect == CRect(1, 2, 3, 4));
    EXPECT_EQ(strings.GetSize(), 1);
}

TEST(SettingValue, RangesAndDefaults)
{
    Settings data;
    const struct {
        const char* text; // null: absent
        int expected, truth;
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
    data.SetValue("A", "X", "y");
    data.SetKey("A");
    EXPECT_EQ(data.IsUpdated(), 0);
    data.SetValue("a", "x", "Y"); // case counts in values
    EXPECT_EQ(data.IsUpdated(), 1);
    data.SetUpdated(0);
    list.Add("v");
    data.SetValueBegin("a", "File", list);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Dump(data), "a: Folder=other x=Y File0=z File1=w File2=v; ");
    list.RemoveAll();
    data.SetValueBegin("a", "File", list);
    data.SetUpdated(0);
    data.SetValueBegin("new", "File", list); // nothing to set makes no key
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(Dump(data), "a: Folder=other x=Y; ");
}

TEST(SettingKey, RemoveMoveRename)
{
    Settings data;
    for (const char* key : {"a1", "b", "A2", "c", "aa1"})
        data.SetValue(key, "x", key);
    data.SetValue("a1", "only", 1);
    data.SetUpdated(0);
    EXPECT_EQ(data.RemoveKey("none") + data.MoveKeyPosition("none", 0), 0);
    EXPECT_EQ(data.MoveKeyPosition("b", 1), 1); // where it is
    EXPECT_EQ(data.RemoveKeyBegin("none"), 0);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.MoveKeyPosition("C", 0), 1);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Dump(data), "c: x=c; a1: x=a1 only=1; b: x=b; A2: x=A2; aa1: x=aa1; ");
    data.MoveKeyPosition("c", INT_MAX);
    data.MoveKeyPosition("aa1", INT_MIN);
    EXPECT_EQ(Dump(data), "aa1: x=aa1; a1: x=a1 only=1; b: x=b; A2: x=A2; c: x=c; ");

    // All at once: "a1" becomes "aa1" while the old "aa1" becomes "aaa1".
    EXPECT_EQ(data.RenameKeyBegin("A", "aa"), 3);
    EXPECT_EQ(Dump(data), "aaa1: x=aa1; aa1: x=a1 only=1; b: x=b; aa2: x=A2; c: x=c; ");
    EXPECT_EQ(data.Get("AA1", "x"), TW("a1"));
    // Two of one name are merged.
    EXPECT_EQ(data.RenameKeyBegin("aa1", "AA2"), 1);
    EXPECT_EQ(Dump(data), "aaa1: x=aa1; AA2: x=A2 only=1; b: x=b; c: x=c; ");

    data.SetUpdated(0);
    EXPECT_EQ(data.RemoveKeyBegin("AA", 0), 2);
    EXPECT_EQ(data.RemoveKey("B", 0), 1);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.RemoveKey("c"), 1);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(Dump(data), "");
}

TEST(SettingKey, RemoveNames)
{
    Settings data;
    for (const char* name : {"p1", "q", "P2", "r", "\x82\xA0"})
        data.SetValue("a", name, 1);
    data.SetUpdated(0);
    EXPECT_EQ(data.RemoveName("a", "none") + data.RemoveNameAt("a", 5) +
                  data.RemoveNameAt("a", -1) + data.RemoveNameBegin("b", "") +
                  data.RemoveNameBegin("a", "\x82"), // half a character begins nothing
              0);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_EQ(data.RemoveNameAt("a", 1), 1);
    EXPECT_EQ(data.IsUpdated(), 1);
    EXPECT_EQ(data.RemoveNameBegin("A", "p"), 2);
    EXPECT_EQ(Dump(data), "a: r=1 \x82\xA0=1; ");
    EXPECT_EQ(data.RemoveName("A", "R"), 1);
    EXPECT_EQ(data.RemoveNameBegin("a", "\x82\xA0"), 1);
    EXPECT_EQ(Dump(data), "a:; ");
}

TEST(SettingKey, Copies)
{
    Settings from, to;
    for (const char* name : {"p1", "p2", "q"})
        from.SetValue("a", name, 1);
    from.SetKey("b");
    to.SetValue("z", "y", 0);
    to.SetValue("A", "old", 0);
    to.SetValue("A", "P9", 9);
    to.SetUpdated(0);

    EXPECT_EQ(to.CopySdKey(from, "none") + to.CopySdName(from, "a", "none"), 0);
    EXPECT_EQ(to.CopySdName(from, "a", "q", 0), 1);
    EXPECT_EQ(to.IsUpdated(), 0);
    EXPECT_EQ(Dump(to), "z: y=0; A: old=0 P9=9 q=1; ");
    EXPECT_EQ(to.CopySdNameBegin(from, "a", "p"), 1);
    EXPECT_EQ(to.IsUpdated(), 1);
    EXPECT_EQ(Dump(to), "z: y=0; A: old=0 q=1 p1=1 p2=1; ");
    EXPECT_EQ(to.CopySdKey(from, "a"), 1);
    EXPECT_EQ(Dump(to), "z: y=0; A: p1=1 p2=1 q=1; ");

    to.CopySD(from);
    EXPECT_EQ(to.EqualSD(from), 1);
    to.SetUpdated(0);
    to.CopySD(from); // equal: nothing changes
    to.CopySdKey(from, "a");
    to.CopySdName(from, "a", "q");
    to.CopySdNameBegin(from, "a", "p");
    to.CopySD(to);
    EXPECT_EQ(to.IsUpdated(), 0);

    to.MoveKeyPosition("b", 0); // the order counts, and so does a value's case
    EXPECT_EQ(to.EqualSD(from), 0);
    to.CopySD(from);
    to.SetValue("a", "q", "X");
    from.SetValue("a", "q", "x");
    EXPECT_EQ(to.EqualSD(from), 0);
}

// The hash table of the names against a map, through insertions, removals and a change of the
// code page, which changes what is the same name.
TEST(SettingKey, RandomAgainstMap)
{
    std::mt19937 random(5);
    CSettingDataKey key("a");
    std::map<std::string, CStringW> model; // by names in small letters
    for (int step = 0; step < 20000; ++step) {
        const char* const prefixes[] = {"n", "N", "\x82\x60", "\x82\x81"}; // full-width A, a
        const std::string name = prefixes[random() % 4] + std::to_string(random() % 300);
        std::string folded = name;
        tlvn::ToLowerMbs(folded.data(), static_cast<int>(folded.size()));
        const auto known = model.find(folded);
        const bool isKnown = known != model.end();
        CStringW value(TW("none"));
        ASSERT_EQ(CSettingData::LookupSettingData(&key, name.c_str(), value), isKnown) << name;
        EXPECT_EQ(value, isKnown ? known->second : CStringW(TW("none")));
        const unsigned action = random() % 64;
        if (action < 8) {
            EXPECT_EQ(key.Remove(name), static_cast<int>(model.erase(folded)));
        } else if (action < 16) {
            SetMultibyteCodePage(1252); // asks in another page in between
            key.Find(name);
            SetMultibyteCodePage(932);
        } else {
            value.Format(TW("%d"), step);
            EXPECT_EQ(CSettingData::SetAtSettingData(&key, name.c_str(), value), isKnown);
            model[folded] = value;
        }
        ASSERT_EQ(static_cast<std::size_t>(key.GetPairs().GetSize()), model.size());
    }
}
