// An editor window for tests, on the real window system or the one in memory.

#pragma once

#include "TlvnMisc.h"
#include "platform/nls.h"
#include "tests/support/test.h"

namespace tlvn {

inline std::vector<EditorNotify> g_notified;

// Holds keys down for GetKeyState, as long as it lives.
class HeldKey {
public:
    explicit HeldKey(int key) : m_key(key) { Set(0x80); }
    ~HeldKey() { Set(0); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    void Set(BYTE value)
    {
        BYTE state[256] = {};
        ::GetKeyboardState(state);
        state[m_key] = value;
        ::SetKeyboardState(state);
    }

    int m_key;
};

// Puts blocks on the clipboard as another program might.
inline void GiveBlocks(std::initializer_list<std::pair<UINT, std::string>> blocks)
{
    ASSERT_TRUE(::OpenClipboard(nullptr));
    ::EmptyClipboard();
    for (const auto& [format, bytes] : blocks) {
        const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
        std::memcpy(::GlobalLock(memory), bytes.data(), bytes.size());
        ::GlobalUnlock(memory);
        ASSERT_NE(::SetClipboardData(format, memory), nullptr);
    }
    ::CloseClipboard();
}

class EditorFixture : public testing::Test {
protected:
    static constexpr DWORD kStyle = WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL;

    EditorFixture()
    {
        metrics.SetAutoTurn(CEditorMetrics::kNoTurn);
        g_notified.clear();
    }

    // Client sizes hold with the vertical scroll bar there and the horizontal one not.
    void Create(int width = 400, int height = 300, DWORD style = kStyle)
    {
        ASSERT_EQ(editor.CreateEditorWnd(0, style, CRect(0, 0, width, height), nullptr, 0, metrics,
                                         colors),
                  1);
        editor.SetEditorNotifyProc(
            [](CEditorWnd*, EditorNotify what, DWORD) { g_notified.push_back(what); }, 0);
    }

    void SetText(const std::string& text, CodeType codeType = CT_SJIS)
    {
        editor.SetDocument(codeType, text.data(), static_cast<int>(text.size()));
        editor.UpdateWindow();
    }
    void SetLines(int count)
    {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += (i > 0 ? "\r\nline " : "line ") + std::to_string(i);
        SetText(text);
    }

    // The client point of a character, a little inside of it.
    CPoint PointOf(int line, int byte)
    {
        CTextPos pos(line, byte);
        editor.L2PByteIndex(pos);
        CPoint point;
        editor.TextPos2Point(pos, point);
        return point + CSize(1, 1);
    }
    void Mouse(UINT message, CPoint point, WPARAM flags = 0)
    {
        ::SendMessageW(editor.m_hWnd, message, flags,
                       MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y)));
    }
    void Click(CPoint point)
    {
        Mouse(WM_LBUTTONDOWN, point, MK_LBUTTON);
        Mouse(WM_LBUTTONUP, point);
    }
    void MoveTo(int line, int byte)
    {
        CTextPos pos(line, byte);
        editor.L2PByteIndex(pos);
        editor.MoveCaret(pos, 0, 1, CaretMoveText);
    }

    std::string Selected() const
    {
        CBuffer text;
        editor.GetSelectedText(0, 1, text);
        return ::Text(text);
    }
    std::string Text() const
    {
        CBuffer text;
        editor.GetDocument(1, 0, 1, 0, text);
        return ::Text(text);
    }
    std::string Caret() const
    {
        const CTextPos& pos = editor.GetCaretTPos();
        return std::to_string(pos.line) + "," + std::to_string(pos.logicalByte);
    }

    CEditorMetrics metrics;
    CEditorColor colors;
    CEditorWnd editor;
};

} // namespace tlvn
