// The clipboard: what goes there, what comes from there, and when.

#include "tests/support/editor_fixture.h"

namespace {

using namespace std::string_literals;
using tlvn::GiveBlocks;

std::string TakeBlock(UINT format, std::size_t size)
{
    std::string bytes;
    if (!::OpenClipboard(nullptr))
        return bytes;
    if (const HGLOBAL memory = ::GetClipboardData(format)) {
        bytes.assign(static_cast<const char*>(::GlobalLock(memory)),
                     std::min<std::size_t>(::GlobalSize(memory), size));
        ::GlobalUnlock(memory);
    }
    ::CloseClipboard();
    return bytes;
}

class EditorClipboardTest : public tlvn::EditorFixture {};

} // namespace

// A text and its type -> both forms, each with its terminator.
TEST_F(EditorClipboardTest, OffersUnicodeAndAnsi)
{
    const struct {
        CodeType type;
        std::string text, wide, narrow;
    } cases[] = {
        {CT_SJIS, "a\x82\xA0\r\n", "a\0\x42\x30\r\0\n\0\0\0"s, "a\x82\xA0\r\n\0"s},
        {CT_UTF8, "a\0\x42\x30\x42\xD8\xB7\xDF"s, "a\0\x42\x30\x42\xD8\xB7\xDF\0\0"s,
         "a\x82\xA0??\0"s},
        {CT_KOI8R, "\xC1", "\x30\x04\0\0"s, "\x84\x70\0"s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(SetTextClipboard(c.text.data(), static_cast<int>(c.text.size()), c.type, nullptr),
                  1);
        EXPECT_EQ(TakeBlock(CF_UNICODETEXT, c.wide.size()), c.wide);
        EXPECT_EQ(TakeBlock(CF_TEXT, c.narrow.size()), c.narrow);
    }
    EXPECT_EQ(SetTextClipboard(nullptr, 5, CT_SJIS, nullptr), 1);
}

// What stands on the clipboard -> what a paste inserts, in Shift_JIS and in UTF-16.
TEST_F(EditorClipboardTest, PastesWhatItFinds)
{
    const struct {
        std::initializer_list<std::pair<UINT, std::string>> blocks;
        std::string narrow, wide;
    } cases[] = {
        {{{CF_UNICODETEXT, "a\0\x42\x30\0\0"s}}, "a\x82\xA0", "a\0\x42\x30"s},
        {{{CF_UNICODETEXT, "a\0\0\0b\0\0\0"s}}, "a", "a\0"s},
        {{{CF_UNICODETEXT, "\xE9\0\0\0"s}}, "?", "\xE9\0"s},
        {{{CF_TEXT, "a\x82\xA0\0"s}}, "a\x82\xA0", "a\0\x42\x30"s},
        {{{CF_UNICODETEXT, "a\0\r\0b\0\n\0c\0\0\0"s}}, "a\r\nb\r\nc", "a\0\r\0\n\0b\0\r\0\n\0c\0"s},
    };
    Create();
    for (const auto& c : cases) {
        GiveBlocks(c.blocks);
        for (const bool wide : {false, true}) {
            SetText("", wide ? CT_UTF8 : CT_SJIS);
            EXPECT_EQ(editor.CanPaste(), 1);
            EXPECT_EQ(editor.Paste(), 1);
            EXPECT_EQ(Text(), wide ? c.wide : c.narrow);
        }
    }
    GiveBlocks({});
    EXPECT_EQ(editor.CanPaste(), 0);
    EXPECT_EQ(editor.Paste(), 0);
}

// The header block can be copied, never cut.
TEST_F(EditorClipboardTest, CutsTheBodyAlone)
{
    const struct {
        CTextPos from, to;
        int canCopy, canCut;
        const char* copied;
    } cases[] = {
        {{0, 2}, {0, 2}, 0, 0, ""},
        {{0, 0}, {1, 1}, 1, 0, "From\r\nb"},
        {{1, 0}, {1, 2}, 1, 1, "bo"},
    };
    Create();
    for (const auto& c : cases) {
        SetText("From\r\nbody");
        editor.InsertHeaderLines(1);
        SetTextClipboard("", 0, CT_SJIS, nullptr);
        editor.SelectText(c.from, c.to, 1, 0);
        EXPECT_EQ(editor.CanCopy(), c.canCopy);
        EXPECT_EQ(editor.Copy(), c.canCopy);
        const std::string copied = c.copied;
        EXPECT_EQ(TakeBlock(CF_TEXT, copied.size()), copied);
        EXPECT_EQ(editor.CanCut(), c.canCut);
        EXPECT_EQ(editor.Cut(), c.canCut);
        EXPECT_EQ(Text(), c.canCut ? "From\r\ndy" : "From\r\nbody");
        editor.SetReadOnly(1);
        EXPECT_EQ(editor.CanCut(), 0);
        EXPECT_EQ(editor.Cut(), 0);
        editor.SetReadOnly(0);
    }
}

// What dialogs send; the texts of EM_REPLACESEL are UTF-16.
TEST_F(EditorClipboardTest, ObeysEditMessages)
{
    Create();
    SetText("abcd");
    const auto send = [this](UINT message, const WCHAR* text = nullptr) {
        return ::SendMessageW(editor.m_hWnd, message, 1, reinterpret_cast<LPARAM>(text));
    };
    editor.SelectText(CTextPos(0, 0), CTextPos(0, 3), 1, 0);
    send(WM_COPY);
    send(EM_REPLACESEL, TW("\x3042"));
    EXPECT_EQ(Text(), "\x82\xA0"
                      "d");
    EXPECT_EQ(send(EM_CANUNDO), 1);
    send(EM_UNDO);
    EXPECT_EQ(Text(), "abcd");
    send(WM_PASTE);
    editor.SetReadOnly(1);
    for (const UINT message : {EM_REPLACESEL, WM_PASTE, WM_CLEAR, WM_UNDO})
        send(message, TW("x"));
    EXPECT_EQ(Text(), "abcabcd");
}
