// An editor window under messages, keys, mouse and sizes made from arbitrary bytes: its text is
// what a model beside it tells, and positions stay in the text. Shared by the random test and the
// fuzz target.

#pragma once

#include "TlvnMisc.h"
#include "editor/open_url.h"
#include "tests/support/window_text_model.h"

#include <functional>
#include <optional>

namespace editor_window {

class Session {
public:
    explicit Session(ByteSource& source) : m_source(source)
    {
        tlvn::SetLinkOpener([](const char*) { return 1; });
        SetDefaultEditorKeys(CEditorWnd::GetAccelData());
        m_wide = m_source.Byte() % 2 != 0;
        const std::string text = edit_model::MakeText(m_source, m_wide, 40);
        const DWORD scrollBars = m_source.Byte() % 2 != 0 ? WS_VSCROLL | WS_HSCROLL : 0;
        m_editor.CreateEditorWnd(0, WS_POPUP | WS_VISIBLE | scrollBars, CRect(0, 0, 120, 90),
                                 nullptr, 0, MakeMetrics(), CEditorColor());
        m_editor.SetDocument(m_wide ? CT_UNICODE : CT_SJIS, text.data(), Length(text));
        m_editor.InsertHeaderLines(m_source.Number(0, 3));
        SetTextClipboard("clip\r\n", 6, CT_SJIS, nullptr);
        m_model.emplace(m_editor);
    }
    ~Session()
    {
        HoldKeys(0);
        CEditorWnd::GetAccelData() = CAccelData();
        tlvn::SetLinkOpener(nullptr);
    }

    // The property that does not hold, or null.
    const char* Run()
    {
        while (!m_source.IsEmpty()) {
            if (const char* fault = Step())
                return fault;
        }
        HoldKeys(0);
        m_editor.SetReadOnly(0);
        for (const bool undo : {true, false}) {
            while (undo ? m_editor.CanUndo() : m_editor.CanRedo()) {
                if (const char* fault = UndoOrRedo(undo))
                    return fault;
            }
        }
        return nullptr;
    }

private:
    CEditorMetrics MakeMetrics()
    {
        CEditorMetrics metrics;
        const unsigned bits = m_source.Byte();
        metrics.SetFreeCursor(bits & 1);
        metrics.SetShowColRuler(bits & 2);
        metrics.SetShowLineRuler(bits & 4);
        metrics.SetTab2Space(bits & 8);
        metrics.SetAutoIndent(bits & 16);
        metrics.SetFixCursorPos(bits & 32);
        metrics.SetShowCaret(bits & 64);
        metrics.SetShowCR(bits & 128);
        metrics.SetAutoTurn(m_source.Number(0, 2));
        metrics.SetTurnCols(10);
        return metrics;
    }

    void HoldKeys(unsigned bits)
    {
        BYTE state[256] = {};
        for (const auto& [key, bit] : {std::pair{VK_SHIFT, 1u}, {VK_CONTROL, 2u}, {VK_MENU, 4u}})
            state[key] = (bits & bit) != 0 ? BYTE{0x80} : BYTE{0};
        ::SetKeyboardState(state);
        if (m_model)
            m_model->HoldShift((bits & 1) != 0);
    }
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam)
    {
        return ::SendMessageW(m_editor.m_hWnd, message, wParam, lParam);
    }
    // Near the window, or anywhere.
    LPARAM MakePoint()
    {
        const bool anywhere = m_source.Byte() % 8 == 0;
        const int x = anywhere ? m_source.Number(-32768, 32767) : m_source.Number(-20, 140);
        const int y = anywhere ? m_source.Number(-32768, 32767) : m_source.Number(-20, 110);
        return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
    }
    CTextPos MakePos()
    {
        const int line = m_source.Number(-1, 12);
        return CTextPos(line, m_source.Number(-1, 30));
    }

    const char* UndoOrRedo(bool undo)
    {
        undo ? m_model->Undo() : m_model->Redo();
        undo ? m_editor.Undo() : m_editor.Redo();
        return Check();
    }

    // A command once, a key that moves the caret up to three times.
    void Key()
    {
        static const int kKeys[] = {VK_UP,  VK_DOWN, VK_LEFT, VK_RIGHT, VK_PRIOR, VK_NEXT,  VK_HOME,
                                    VK_END, 'U',     'K',     'Y',      VK_BACK,  VK_DELETE};
        const unsigned held = m_source.Byte();
        const int key = kKeys[m_source.Number(0, std::size(kKeys) - 1)];
        HoldKeys(held);
        const CAccelData& keys = CEditorWnd::GetAccelData();
        const int modifiers = ((held & 2) != 0 ? FCONTROL : 0) | ((held & 4) != 0 ? FALT : 0);
        int id = keys.GetCmdID(static_cast<BYTE>(modifiers), key);
        const bool moves = id >= EditorCmdLineUp && id <= EditorCmdDocEnd;
        if ((held & 1) != 0 && !moves)
            id = keys.GetCmdID(static_cast<BYTE>(modifiers | FSHIFT), key);
        m_model->Run(id);
        MSG message{};
        message.hwnd = m_editor.m_hWnd;
        message.message = WM_KEYDOWN;
        message.wParam = static_cast<WPARAM>(key);
        message.lParam = moves ? m_source.Number(0, 3) : 1;
        m_editor.PreTranslateMessage(&message);
    }
    void Mouse()
    {
        static const UINT kMessages[] = {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK,
                                         WM_RBUTTONDOWN, WM_MOUSEMOVE, WM_MOUSEMOVE,
                                         WM_MOUSEWHEEL,  WM_TIMER,     WM_CAPTURECHANGED};
        const UINT message = kMessages[m_source.Number(0, std::size(kMessages) - 1)];
        const unsigned flags = m_source.Byte();
        if (message == WM_TIMER || message == WM_CAPTURECHANGED)
            Send(message, flags % 3, 0);
        else
            Send(message, message == WM_MOUSEWHEEL ? flags << 24 : flags & (MK_SHIFT | MK_CONTROL),
                 MakePoint());
    }
    void Resize()
    {
        static const int kSizes[] = {0, 1, 7, 20, 60, 120, 400, 3000};
        const int width = kSizes[m_source.Number(0, std::size(kSizes) - 1)];
        const int height = kSizes[m_source.Number(0, std::size(kSizes) - 1)];
        m_editor.MoveWindow(0, 0, width, height, TRUE);
    }
    void Type(UINT message, int unit)
    {
        if (unit == '\t' && m_model->GetSelectedEnd() == 0)
            m_editor.ClearTextSelect(1); // to the model tabs are typed at the caret
        m_model->TypeUnit(static_cast<unsigned>(unit));
        Send(message, static_cast<WPARAM>(unit), 1);
    }
    void OtherMessage()
    {
        static const UINT kMessages[] = {
            WM_SETFOCUS, WM_KILLFOCUS, WM_CANCELMODE, EM_GETSEL,          WM_COPY,       WM_CUT,
            WM_PASTE,    WM_CLEAR,     WM_UNDO,       WM_VSCROLL,         WM_HSCROLL,    WM_CHAR,
            WM_IME_CHAR, EM_SETSEL,    EM_SETSEL,     WM_IME_COMPOSITION, WM_IME_REQUEST};
        const UINT message = kMessages[m_source.Number(0, std::size(kMessages) - 1)];
        const int number = m_source.Number(-1, 0xFFFF);
        RECONVERTSTRING wanted{}; // an input method that chooses anything
        switch (message) {
        case WM_KILLFOCUS:
            m_model->LoseFocus();
            break;
        case WM_CUT:
            m_model->Cut();
            break;
        case WM_PASTE:
            m_model->Paste(false);
            break;
        case WM_CLEAR:
            m_model->DeleteSelection();
            break;
        case WM_UNDO:
            m_model->Undo();
            break;
        case WM_CHAR:
        case WM_IME_CHAR:
            return Type(message, number & 0xFFFF);
        case EM_SETSEL:
            Send(message, static_cast<WPARAM>(number % 40), m_source.Number(-1, 40));
            return;
        case WM_IME_REQUEST:
            wanted.dwCompStrOffset = static_cast<DWORD>(m_source.Number(-2, 60));
            wanted.dwCompStrLen = static_cast<DWORD>(m_source.Number(-2, 30));
            Send(message, IMR_CONFIRMRECONVERTSTRING, reinterpret_cast<LPARAM>(&wanted));
            return;
        default:
            break;
        }
        const bool scrolls = message == WM_VSCROLL || message == WM_HSCROLL;
        Send(message, scrolls ? static_cast<WPARAM>(number & 0xFFFF) : 0, 0);
    }
    void Change()
    {
        const int number = m_source.Number(-3, 6);
        const int flag = static_cast<int>(m_source.Byte() % 2);
        const CTextPos from = MakePos();
        const CTextPos to = MakePos();
        const std::function<void()> changes[] = {
            [&] { m_editor.ChangeEditorMetrics(MakeMetrics()); },
            [&] { m_editor.SetReadOnly(number == 0); },
            [&] {
                m_model->SetInsertMode(flag);
                m_editor.SetInsertMode(flag);
            },
            [&] {
                m_model->SpaceTabs();
                m_editor.Tab2SpaceAll();
            },
            [&] {
                m_model->Indent(flag != 0, number);
                m_editor.Indent(flag, number);
            },
            [&] {
                const int count = m_source.Number(-3, 3);
                m_model->IndentLine(number, count);
                m_editor.IndentLine(number, count);
            },
            [&] {
                m_model->MarkSelection();
                m_editor.DrawLineMarker(number);
            },
            [&] { m_editor.AddFoundArray(from, to); },
            [&] {
                m_model->Paste(flag != 0);
                m_editor.PasteText(flag);
            },
            [&] { m_editor.SelectText(from, to, 1, flag); },
        };
        changes[m_source.Number(0, std::size(changes) - 1)]();
    }

    const char* Step()
    {
        static const int kTyped[] = {'x',  ' ',  0x3042, '\r',   '\t', '\t',
                                     0x82, 0xA0, 0xD842, 0xDFB7, 8};
        const int kind = m_source.Number(0, 15);
        const char* fault = nullptr;
        if (kind < 4) {
            Type(WM_CHAR, kTyped[m_source.Number(0, std::size(kTyped) - 1)]);
        } else if (kind == 4) {
            const int command = m_source.Number(EditorCmdLineUp, EditorCmdToggleInsert);
            m_model->Run(command);
            m_editor.ExecEditorCmd(command);
        } else if (kind < 7) {
            fault = UndoOrRedo(kind == 5);
        } else if (kind < 10) {
            Key();
        } else if (kind < 12) {
            Mouse();
        } else if (kind == 12) {
            Resize();
        } else if (kind == 13) {
            OtherMessage();
        } else if (kind == 14) {
            const std::string text = edit_model::MakeText(m_source, m_wide, 6);
            m_model->Insert(text);
            m_editor.Insert(text.data(), Length(text));
        } else {
            Change();
        }
        if (m_source.Byte() % 2 != 0)
            m_editor.UpdateWindow();
        return fault != nullptr ? fault : Check();
    }

    // Both forms agree, at the start of a character; in the text, but for the free cursor.
    bool IsPlace(const CTextPos& pos) const
    {
        const tlvn::Document& document = m_editor.GetDoc();
        CTextPos both = pos;
        if (document.IsInText(pos))
            document.ToCharTop(both);
        else if (document.IsFreeCursor() && pos.line >= 0 && pos.logicalByte >= 0)
            document.L2PByteIndex(both);
        else
            return false;
        return both == pos && tlvn::IsSameL(both, pos);
    }
    const char* Check()
    {
        if (const char* fault = m_model->FindFault())
            return fault;
        const tlvn::Document& document = m_editor.GetDoc();
        if (!IsPlace(m_editor.GetCaretTPos()))
            return "caret";
        CTextPos start, end;
        m_editor.GetSelectRange(start, end);
        if (!IsPlace(start) || !IsPlace(end) || tlvn::IsBeforeL(end, start))
            return "selection";
        if (m_editor.IsTextSelected() && m_editor.GetCaretTPos() != start &&
            m_editor.GetCaretTPos() != end)
            return "caret away from the selection";
        // With the free cursor the view may stay behind the text when the caret leaves.
        const bool above = m_editor.GetVertScrollPos() < document.GetPhysicalCount();
        if (m_editor.GetVertScrollPos() < 0 || m_editor.GetHorzScrollPos() < 0 ||
            (!above && !document.IsFreeCursor()))
            return "scroll position";
        const auto& markers = m_editor.GetLineMarkerArray();
        for (int i = 0; i < markers.GetSize(); ++i) {
            if (!document.IsInText(markers[i]->start) || !document.IsInText(markers[i]->end))
                return "marker";
        }
        const auto& found = m_editor.GetFoundArray();
        for (int i = 0; i < found.GetSize(); ++i) {
            if (tlvn::IsBeforeL(found[i]->end, found[i]->start))
                return "found range";
        }
        return nullptr;
    }

    ByteSource& m_source;
    CEditorWnd m_editor;
    bool m_wide = false;
    std::optional<TextModel> m_model;
};

} // namespace editor_window

// The property that does not hold, or null.
inline const char* CheckEditorWindow(const std::uint8_t* data, std::size_t size)
{
    ByteSource source(data, size);
    return editor_window::Session(source).Run();
}
