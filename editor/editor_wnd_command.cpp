// Keys and the commands they run; deleting.

#include "editor/editor_command.h"
#include "editor/editor_wnd.h"
#include "ui/accel_data.h"

#include <algorithm>

CAccelData CEditorWnd::m_acdata;

namespace {

bool IsKeyDown(int key)
{
    return ::GetKeyState(key) < 0;
}

} // namespace

// --- keys --------------------------------------------------------------------------------------

BOOL CEditorWnd::PreTranslateMessage(MSG* message)
{
    if (message->message != WM_KEYDOWN || CheckEditorCmd(static_cast<UINT>(message->wParam)) == 0)
        return CWnd::PreTranslateMessage(message);
    // A key that is held while the program is busy comes as one message.
    for (int repeat = LOWORD(message->lParam); repeat > 1; --repeat)
        CheckEditorCmd(static_cast<UINT>(message->wParam));
    return TRUE;
}

int CEditorWnd::CheckEditorCmd(UINT vkey)
{
    if (vkey > 0xFF)
        return 0;
    const int key = static_cast<int>(vkey);
    const int modifiers = (IsKeyDown(VK_CONTROL) ? FCONTROL : 0) | (IsKeyDown(VK_MENU) ? FALT : 0);
    int id = m_acdata.GetCmdID(static_cast<BYTE>(modifiers), key);
    if (IsKeyDown(VK_SHIFT) && !IsCaretCommand(id))
        id = m_acdata.GetCmdID(static_cast<BYTE>(modifiers | FSHIFT), key);
    if (id < 1)
        return 0;
    ExecEditorCmd(id);
    return 1;
}

void CEditorWnd::ExecEditorCmd(int id)
{
    switch (id) {
    case EditorCmdLineUp:
        return CaretLineUp();
    case EditorCmdLineDown:
        return CaretLineDown();
    case EditorCmdLineLeft:
        return CaretLineLeft();
    case EditorCmdLineRight:
        return CaretLineRight();
    case EditorCmdWordLeft:
        return CaretWordLeft();
    case EditorCmdWordRight:
        return CaretWordRight();
    case EditorCmdPageUp:
        return CaretPageUp();
    case EditorCmdPageDown:
        return CaretPageDown();
    case EditorCmdHome:
        return CaretHome();
    case EditorCmdEnd:
        return CaretEnd();
    case EditorCmdDocHome:
        return CaretDocHome();
    case EditorCmdDocEnd:
        return CaretDocEnd();
    case EditorCmdDeleteChar:
        return DeleteChar();
    case EditorCmdDeleteWord:
        return DeleteWord();
    case EditorCmdDeletePhysicalLine:
        return DeletePhysicalLine();
    case EditorCmdBackSpaceChar:
        return BackSpaceChar();
    case EditorCmdDeletePhysicalLineHome:
        return DeletePhysicalLineHome();
    case EditorCmdDeletePhysicalLineEnd:
        return DeletePhysicalLineEnd();
    case EditorCmdDeleteLogicalLine:
        return DeleteLogicalLine();
    case EditorCmdDeleteLogicalLineHome:
        return DeleteLogicalLineHome();
    case EditorCmdDeleteLogicalLineEnd:
        return DeleteLogicalLineEnd();
    case EditorCmdToggleInsert:
        if (m_readOnly == 0)
            SetInsertMode(m_insertMode == 0);
        return;
    default:
        return;
    }
}

// --- deleting ----------------------------------------------------------------------------------

// Behind the text, where the free cursor may stand, there is nothing to delete.
void CEditorWnd::DeleteRange(const CTextPos& from, const CTextPos& to)
{
    CTextPos start = from;
    CTextPos end = to;
    GetDoc().ToCharTop(start);
    GetDoc().ToCharTop(end);
    if (!tlvn::IsSameL(start, end))
        DeleteText(start, end);
}

bool CEditorWnd::DeleteSelection()
{
    if (IsTextSelected() == 0)
        return false;
    DeleteRange(m_selAnchor, m_selEnd);
    return true;
}

void CEditorWnd::DeleteChar()
{
    if (DeleteSelection())
        return;
    CTextPos end = m_caretPos;
    if (end.logicalByte >= GetDoc().GetLineByteCountL(end.line))
        GetDoc().ToNextLogicalLine(end);
    else
        GetDoc().ToNextChar(end);
    DeleteRange(m_caretPos, end);
}

void CEditorWnd::BackSpaceChar()
{
    if (m_readOnly != 0 || DeleteSelection())
        return;
    CTextPos start = m_caretPos;
    GetDoc().ToPrevChar(start);
    if (GetDoc().IsFreeCursor() && !GetDoc().IsInText(m_caretPos))
        return MoveCaret(start, 0, 1, CaretMoveText);
    DeleteRange(start, m_caretPos);
}

void CEditorWnd::DeleteWord()
{
    if (DeleteSelection())
        return;
    CTextPos end = m_caretPos;
    GetDoc().ToNextWordTop(end);
    DeleteRange(m_caretPos, end);
}

void CEditorWnd::DeletePhysicalLine()
{
    CTextPos start = GetCaretViewPos();
    GetDoc().ToPhysicalLineHome(start);
    CTextPos end = start;
    GetDoc().ToNextPhysicalLine(end);
    DeleteRange(start, end);
}

void CEditorWnd::DeletePhysicalLineHome()
{
    CTextPos start = GetCaretViewPos();
    GetDoc().ToPhysicalLineHome(start);
    DeleteRange(start, m_caretPos);
}

void CEditorWnd::DeletePhysicalLineEnd()
{
    CTextPos end = GetCaretViewPos();
    GetDoc().ToPhysicalLineEnd(end);
    DeleteRange(m_caretPos, end);
}

void CEditorWnd::DeleteLogicalLine()
{
    CTextPos start = m_caretPos;
    GetDoc().ToLogicalLineHome(start);
    CTextPos end = start;
    GetDoc().ToNextLogicalLine(end);
    DeleteRange(start, end);
}

void CEditorWnd::DeleteLogicalLineHome()
{
    CTextPos start = m_caretPos;
    GetDoc().ToLogicalLineHome(start);
    DeleteRange(start, m_caretPos);
}

void CEditorWnd::DeleteLogicalLineEnd()
{
    CTextPos end = m_caretPos;
    GetDoc().ToLogicalLineEnd(end);
    DeleteRange(m_caretPos, end);
}
