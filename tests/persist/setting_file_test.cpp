// The text of settings files: what is written, what is read, what is refused.

#include "setting_support.h"

#include <gtest/gtest.h>

using tlvn::WString;

// The oddities of reading, each with what it leaves.
TEST(SettingFile, Reading)
{
    const struct {
        WString text;
        const char* expected;
        int updated;
    } cases[] = {
        {TW(""), "", 0},
        {TW("\uFEFF"), "", 0},
        // Neither marker, without a mark, lines ended in each way, the last one not at all.
        {TW("[a]\nx=1\r\ry=2\r\n\r\nz="), "a: x=1 y=2 z=; ", 0},
        {TW("\uFEFF[DATA-START]\r\n[a]\r\nx=1\r\n[DATA-END]\r\n"), "a: x=1; ", 0},
        {TW("\r\n\uFEFF[a]\r\nx=1"), "a: x=1; ", 0},
        {TW("[DATA-END]\r\n[a]\r\nx=1\r\n[DATA-START]\r\n"), "a: x=1; ", 0},
        // Markers are what they are only to the letter.
        {TW("[data-start]\r\nx=1\r\n"), "data-start: x=1; ", 0},
        // A key or a name that comes again: merged, the last wins, the first's place and case.
        {TW("[a]\nx=1\n[b]\ny=2\n[A]\nz=3\nX=4"), "a: x=4 z=3; b: y=2; ", 1},
        {TW("[a]\nx=1\nX=1"), "a: x=1; ", 1},
        {TW("[a]\n[a]\n"), "a:; ", 1},
        // The same name spelled in another way, or in letters that only the code page folds.
        {TW("[a]\n\\q=1\n\\\\q=2"), "a: \\q=2; ", 1},
        {TW("[a]\n\uFF21=1\n\uFF41=2"), "a: \x82\x60=2; ", 1},
        {TW("[\u3042\uFF21]\nx=1\n[\u3042\uFF41]\ny=2"), "\x82\xA0\x82\x60: x=1 y=2; ", 1},
        // Blanks and brackets stand for themselves; only the outermost brackets are the line's.
        {TW("[ a ]\n x = 1 \n[[b]]\n]y=[z]"), " a :  x = 1 ; [b]: ]y=[z]; ", 0},
        {TW("[]\nx=1"), ": x=1; ", 0},
        // The first "=" that is not escaped ends the name.
        {TW("[a]\nx\\=y=z=w"), "a: x=y=z=w; ", 0},
        {TW("[a]\nx\\\\=y"), "a: x\\=y; ", 0},
        // Escapes: of names four, of keys and values three; any other backslash stays.
        {TW("[a\\=\\[\\\\]\n\\[n\\\\\\q\\==\\=\\[\\q\\\\n\\"),
         "a\\=\\[\\: [n\\\\q==\\=\\[\\q\\n\\; ", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expected);
        TempFile file;
        file.Write(c.text);
        Settings data;
        EXPECT_EQ(data.LoadFile(file.Path()), 1) << data.GetErrorMessage().GetString();
        EXPECT_EQ(Dump(data), c.expected);
        EXPECT_EQ(data.IsUpdated(), c.updated);
        EXPECT_EQ(data.IsLoaded(), 1);
    }
}

TEST(SettingFile, WhatIsRefused)
{
    const struct {
        WString text;
        UINT message;
        const char* data;
    } cases[] = {
        {TW("[a\r\nx=1"), 3100, "[a"},
        {TW("[a]\r\nx=1\r\n["), 3100, "["},
        {TW("[a] \r\n"), 3100, "[a] "},
        {TW("x=1\r\n"), 3101, "x=1"},
        {TW("[DATA-START]\r\nx=1\r\n"), 3101, "x=1"},
        {TW("[a]\r\n[DATA-END]\r\nx"), 3101, "x"},
        {TW("[a]\r\nno value\r\n"), 3100, "[a]\n        no value"},
        {TW("[a]\r\n=1\r\n"), 3100, "[a]\n        =1"},
        {TW("[a]\r\nx\\=1\r\n"), 3100, "[a]\n        x\\=1"},
        {TW("[a]\r\nx\\"), 3100, "[a]\n        x\\"},
        {TW("[DATA-START]\r\n[a]\r\nx=1"), 3164, nullptr},
        {TW("[a]\r\nx=1\r\n[DATA-END]"), 3163, nullptr},
    };
    for (const auto& c : cases) {
        TempFile file;
        file.Write(c.text);
        CString expected = Message(c.message) + "\nFile: " + file.Path();
        if (c.data != nullptr)
            expected += CString("\nData: ") + c.data;
        Settings data;
        data.SetValue("old", "x", 1);
        EXPECT_EQ(data.LoadFile(file.Path()), 0);
        EXPECT_EQ(data.GetErrorMessage(), expected);
        EXPECT_EQ(data.IsLoaded(), 0);
        EXPECT_EQ(Dump(data), "");
    }
}

TEST(SettingFile, MissingFileAndSecondLoad)
{
    TempFile file;
    Settings data;
    EXPECT_EQ(data.LoadFile(file.Path()), 0);
    EXPECT_GE(data.GetErrorMessage().Find(CString("\nFile: ") + file.Path()), 0);
    EXPECT_EQ(data.LoadFile(nullptr), 0);
    file.Write(TW("[a]\nx=1"));
    EXPECT_EQ(data.LoadFile(file.Path()), 1);
    EXPECT_EQ(data.LoadFile("does not exist"), 1); // loaded already: not even looked at
    EXPECT_EQ(data.GetFilePath(), CString(file.Path()));
    data.InitSD();
    EXPECT_EQ(Dump(data), "");
    file.Write(std::string("[\0a\0]\0\n\0x\0=\0y\0z", 15)); // half a unit at the end is none
    EXPECT_EQ(data.LoadFile(file.Path()), 1);
    EXPECT_EQ(Dump(data), "a: x=y; ");
}

TEST(SettingFile, Writing)
{
    TempFile file;
    Settings data;
    data.SetKey("empty");
    data.SetValue("k=[\\]\r\n", "[n=\\\r\n", TW("v=[\\\r\n\u00E9"));
    data.SetValue("k=[\\]\r\n", "\x83\x5C", "\x83\x5C"); // a trail byte like a backslash
    EXPECT_EQ(data.IsUpdated(), 1);
    ASSERT_EQ(data.SaveFile(file.Path()), 1);
    EXPECT_EQ(data.IsUpdated(), 0);
    EXPECT_TRUE(file.Read() == TempFile::ToBytes(TW("\uFEFF[DATA-START]\r\n"
                                                    "[empty]\r\n"
                                                    "[k=[\\\\]\\r\\n]\r\n"
                                                    "\\[n\\=\\\\\\r\\n=v=[\\\\\\r\\n\u00E9\r\n"
                                                    "\u30BD=\u30BD\r\n"
                                                    "[DATA-END]\r\n")));
}

TEST(SettingFile, Enciphered)
{
    TempFile file;
    Settings data;
    data.SetValue("a", "secret", "value");
    data.SetCryptKey(1, "key");
    ASSERT_EQ(data.SaveFile(file.Path()), 1);
    const std::string content = file.Read();
    CBuffer plain;
    CString message;
    DecodeBlowFish("key", reinterpret_cast<const unsigned char*>(content.data()),
                   static_cast<int>(content.size()), plain, message);
    ASSERT_GE(plain.GetLength(), 4);
    EXPECT_EQ(std::string(plain, 4), std::string("\xFF\xFE[\0", 4)); // the mark is inside

    const struct {
        int on;
        const char* key;
        UINT message; // 0: loads
    } cases[] = {{1, "key", 0}, {1, "other", 3134}, {0, "key", 3101}, {1, "", 3101}};
    for (const auto& c : cases) {
        Settings back;
        back.SetCryptKey(c.on, c.key);
        EXPECT_EQ(back.LoadFile(file.Path()), c.message == 0 ? 1 : 0) << c.key;
        if (c.message != 0) {
            EXPECT_EQ(back.GetErrorMessage().Find(Message(c.message)), 0) << c.key;
        }
    }
    file.Write("");
    Settings back;
    back.SetCryptKey(1, "key");
    EXPECT_EQ(back.LoadFile(file.Path()), 1);
}

// What the file could not hold, and would not load again, is not taken.
TEST(SettingFile, UnstorableNames)
{
    Settings data;
    data.SetValue("a", "", 1);
    data.SetValue("a", nullptr, 1);
    data.SetKey("DATA-START");
    data.SetValue("DATA-END", "x", 1);
    EXPECT_EQ(Dump(data), "");
    EXPECT_EQ(data.IsUpdated(), 0);
    data.SetValue("a", "x", 1);
    EXPECT_EQ(CSettingData::SetAtSettingData(data.GetKeyList()[0], "", TW("1")), 0);
    EXPECT_EQ(CSettingData::SetAtSettingData(nullptr, "x", TW("1")), 0);
    EXPECT_EQ(data.RenameKeyBegin("a", "DATA-END"), 0);
    EXPECT_EQ(Dump(data), "a: x=1; ");
}

// A read-only attribute is lifted; nothing is left beside the file.
TEST(SettingFile, SavingOverAReadOnlyFile)
{
    TempFile file;
    Settings data, back;
    for (const int value : {1, 2}) {
        data.SetValue("a", "x", value);
        ASSERT_EQ(data.SaveFile(file.Path()), 1);
        ASSERT_TRUE(tlvn::SetFileReadOnly(file.Path(), value == 1));
    }
    EXPECT_EQ(back.LoadFile(file.Path()), 1);
    EXPECT_EQ(Dump(back), "a: x=2; ");
    tlvn::FileInfo info;
    EXPECT_FALSE(tlvn::GetFileInfo((std::string(file.Path()) + ".saving").c_str(), info));
}
