// The clipboard, and the messages that dialogs and other programs edit a text by.

#include "editor/editor_wnd.h"
#include "editor/text_clipboard.h"
#include "editor/text_units.h"
#include "foundation/text_length.h"

int CEditorWnd::Copy()
{
    if (CanCopy() == 0)
        return 0;
    CBuffer text;
    GetSelectedText(0, 1, text);
    return SetTextClipboard(text, text.GetLength(), GetCodeType(), this);
}

int CEditorWnd::Cut()
{
    if (CanCut() == 0 || Copy() == 0)
        return 0;
    DeleteChar();
    return 1;
}

int CEditorWnd::CanPaste() const
{
    return m_readOnly == 0 && tlvn::HasTextClipboard();
}

int CEditorWnd::PasteText(int quote)
{
    CBuffer text;
    if (CanPaste() == 0 || !tlvn::GetTextClipboard(CT_UNICODE, this, text))
        return 0;
    tlvn::GuardMemory([&] {
        tlvn::WString units;
        tlvn::TextToUnits(CT_UNICODE, {text, static_cast<std::size_t>(text.GetLength())}, units);
        std::string own;
        MakeOwnText(units, own);
        text.Set(own.data(), static_cast<int>(own.size()));
    });
    if (quote != 0 && text.IsEmpty() == 0) {
        tlvn::Document lines;
        lines.Set(GetCodeType(), text, text.GetLength());
        lines.CopyLines(0, MakeTextForm(1, 1, 0), text);
    }
    Insert(text, text.GetLength());
    return 1;
}

int CEditorWnd::Clear()
{
    if (CanClear() == 0)
        return 0;
    DeleteChar();
    return 1;
}

int CEditorWnd::Insert(const char* text, int length)
{
    if (CanInsert() == 0)
        return 0;
    if (text == nullptr || length <= 0)
        return 1;
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    ReplaceText(start, end, text, length);
    return 1;
}

LRESULT CEditorWnd::OnCopy(WPARAM, LPARAM)
{
    return Copy();
}

LRESULT CEditorWnd::OnCut(WPARAM, LPARAM)
{
    return Cut();
}

LRESULT CEditorWnd::OnPaste(WPARAM, LPARAM)
{
    return Paste();
}

// The message is for the selection alone.
LRESULT CEditorWnd::OnClear(WPARAM, LPARAM)
{
    return IsTextSelected() != 0 ? Clear() : 0;
}

LRESULT CEditorWnd::OnUndo(WPARAM, LPARAM)
{
    return Undo();
}

LRESULT CEditorWnd::OnCanUndo(WPARAM, LPARAM)
{
    return CanUndo();
}

LRESULT CEditorWnd::OnReplaceSel(WPARAM, LPARAM lParam)
{
    if (m_readOnly != 0)
        return 0;
    const WCHAR* const units = reinterpret_cast<const WCHAR*>(lParam);
    std::string text;
    if (units != nullptr) {
        const auto length = static_cast<std::size_t>(tlvn::TextLength(units));
        tlvn::GuardMemory([&] { MakeOwnText(tlvn::WStringView(units, length), text); });
    }
    if (text.size() > INT_MAX)
        AfxThrowMemoryException();
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    ReplaceText(start, end, text.data(), static_cast<int>(text.size()));
    return 0;
}
