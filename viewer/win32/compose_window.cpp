#include "viewer/win32/compose_window.h"

#include "charcode/charset.h"
#include "framework/x_message_box.h"
#include "platform/folder.h"
#include "viewer/key_settings.h"
#include "viewer/mail_export.h"
#include "viewer/win32/dialogs.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <algorithm>

namespace tlvn {

namespace {

const char kWindowClass[] = "TolvanComposeWndClass";
constexpr UINT kFieldId = 1; // and on
constexpr UINT kLabelId = 11;
constexpr UINT kEditorId = 21;
constexpr UINT kStatusId = 22;
constexpr UINT_PTR kCheckTimer = 1;
constexpr UINT kCheckDelay = 300; // milliseconds behind the last change
constexpr int kLabelWidth = 64;
constexpr int kFieldHeight = 22;
constexpr int kGap = 4;
constexpr int kWidth = 660;
constexpr int kHeight = 560;
constexpr UINT kLabels[] = {IDS_FIELD_FROM, IDS_FIELD_TO, IDS_FIELD_CC, IDS_FIELD_SUBJECT};

WString DescribeFlaws(const DraftFlaws& flaws)
{
    return LoadText(IDS_FLAWS, Utf8ToUtf16(std::to_string(flaws.halfWidthKatakana)),
                    Utf8ToUtf16(std::to_string(flaws.machineDependent)));
}

} // namespace

BEGIN_MESSAGE_MAP(ComposeWindow, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_ACTIVATE()
ON_WM_CLOSE()
ON_WM_TIMER()
ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

ComposeWindow::ComposeWindow(CWnd* owner, const CSettingData& settings, std::string folder)
    : m_owner(owner), m_folder(std::move(folder))
{
    m_metrics.GetEditorMetrics(&settings, ViewSettings::kComposerSection, 0);
    m_colors.GetEditorColor(&settings, ViewSettings::kColorSection);
    if (!LoadKeys(settings, ViewSettings::kKeySection, "Compose", ID_COMMAND_FIRST, ID_COMMAND_LAST,
                  m_keys))
        m_keys.LoadResourceAccelData("COMPOSEKEYS");
}

ComposeWindow::~ComposeWindow()
{
    ::DestroyAcceleratorTable(m_accelerators);
}

int ComposeWindow::Open(const Draft& draft)
{
    RegisterWindowClass(kWindowClass, 0, LoadStandardCursor(IDC_ARROW),
                        reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    const HMENU menu = ::LoadMenuW(::GetModuleHandleW(nullptr), TW("COMPOSEMENU"));
    CRect owner;
    m_owner->GetWindowRect(&owner);
    constexpr int kShift = 32;
    if (!CreateEx(0, kWindowClass, "", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, owner.left + kShift,
                  owner.top + kShift, kWidth, kHeight, nullptr, menu)) {
        ::DestroyMenu(menu);
        return 0;
    }
    m_keys.UpdateMenuString(this);
    m_accelerators = ::CreateAcceleratorTableW(m_keys.GetData(), m_keys.GetSize());
    ShowDraft(draft);
    ShowWindow(SW_SHOW);
    m_lastFocus = draft.to.empty() ? m_fields[kTo].m_hWnd : m_editor.m_hWnd;
    SetFocus();
    return 1;
}

int ComposeWindow::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1)
        return -1;
    for (int i = 0; i < kFields; ++i) {
        const auto index = static_cast<UINT>(i);
        m_labels[i].Create("STATIC", "", WS_CHILD | WS_VISIBLE | SS_CENTERIMAGE | SS_RIGHT,
                           CRect(0, 0, 0, 0), this, kLabelId + index);
        m_labels[i].SetFont(GetDialogFont());
        m_labels[i].SetWindowText(LoadText(kLabels[i]).c_str());
        m_fields[i].CreateEx(WS_EX_CLIENTEDGE, "EDIT", "",
                             WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, CRect(0, 0, 0, 0),
                             this, kFieldId + index);
        m_fields[i].SetFont(GetDialogFont());
    }
    m_status.Create(STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, CRect(0, 0, 0, 0),
                    this, kStatusId);
    m_status.SetFont(GetDialogFont());
    if (m_editor.CreateEditorWnd(WS_EX_CLIENTEDGE,
                                 WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
                                 CRect(0, 0, 0, 0), this, kEditorId, m_metrics, m_colors) == 0)
        return -1;
    m_editor.SetEditorNotifyProc(OnEditorNotify, 0);
    return 0;
}

void ComposeWindow::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    int y = kGap;
    for (int i = 0; i < kFields; ++i) {
        m_labels[i].MoveWindow(kGap, y, kLabelWidth - 2 * kGap, kFieldHeight);
        m_fields[i].MoveWindow(kLabelWidth, y, std::max(0, width - kLabelWidth - kGap),
                               kFieldHeight);
        y += kFieldHeight + kGap;
    }
    m_status.SendMessage(WM_SIZE);
    CRect status;
    m_status.GetWindowRect(&status);
    m_editor.MoveWindow(0, y, width, std::max(0, height - y - status.Height()));
}

void ComposeWindow::OnSetFocus(CWnd*)
{
    ::SetFocus(m_lastFocus != nullptr ? m_lastFocus : m_editor.m_hWnd);
}

// Coming back, the focus goes where it was.
void ComposeWindow::OnActivate(UINT state, CWnd* other, BOOL minimized)
{
    if (state == WA_INACTIVE) {
        const HWND focus = ::GetFocus();
        if (focus != nullptr && ::IsChild(m_hWnd, focus))
            m_lastFocus = focus;
        return;
    }
    CWnd::OnActivate(state, other, minimized);
}

BOOL ComposeWindow::PreTranslateMessage(MSG* message)
{
    if (::TranslateAcceleratorW(m_hWnd, m_accelerators, message) != 0)
        return TRUE;
    // Tab goes from field to field; in the editor it is a character.
    if (message->message == WM_KEYDOWN && message->wParam == VK_TAB &&
        message->hwnd != m_editor.m_hWnd) {
        const BOOL back = ::GetKeyState(VK_SHIFT) < 0;
        ::SetFocus(::GetNextDlgTabItem(m_hWnd, message->hwnd, back));
        return TRUE;
    }
    return CWnd::PreTranslateMessage(message);
}

void ComposeWindow::OnInitMenuPopup(CMenu* menu, UINT, BOOL systemMenu)
{
    if (systemMenu)
        return;
    const CommandContext context = GetContext();
    for (UINT i = 0; i < menu->GetMenuItemCount(); ++i) {
        const UINT id = menu->GetMenuItemID(static_cast<int>(i));
        const bool enabled = IsCommandEnabled(static_cast<int>(id), context);
        menu->EnableMenuItem(i, MF_BYPOSITION | (enabled ? MF_ENABLED : MF_GRAYED));
    }
}

BOOL ComposeWindow::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0) {
        if (IsCommandEnabled(LOWORD(wParam), GetContext()))
            Run(LOWORD(wParam));
        return TRUE;
    }
    if (HIWORD(wParam) == EN_CHANGE) {
        m_fieldsModified = true;
        SetTimer(kCheckTimer, kCheckDelay);
    }
    return CWnd::OnCommand(wParam, lParam);
}

void ComposeWindow::OnEditorNotify(CEditorWnd* editor, EditorNotify what, DWORD)
{
    if (what == EditorNotifyText)
        editor->GetParent()->SetTimer(kCheckTimer, kCheckDelay);
}

void ComposeWindow::OnTimer(UINT_PTR id)
{
    if (id != kCheckTimer) {
        CWnd::OnTimer(id);
        return;
    }
    KillTimer(kCheckTimer);
    CheckDraft();
}

void ComposeWindow::OnClose()
{
    if (CanClose())
        DestroyWindow();
}

bool ComposeWindow::CanClose()
{
    return !IsModified() || ShowMessageBox(m_hWnd, LoadText(IDS_CLOSE_UNSAVED).c_str(),
                                           TW("TolvanView"), MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void ComposeWindow::PostNcDestroy()
{
    m_owner->SendMessage(kComposeClosed, 0, reinterpret_cast<LPARAM>(this));
    delete this;
}

// --- the draft -----------------------------------------------------------------------------------

void ComposeWindow::ShowDraft(const Draft& draft)
{
    m_draft = draft;
    const std::string* const texts[] = {&draft.from, &draft.to, &draft.cc, &draft.subject};
    for (int i = 0; i < kFields; ++i)
        m_fields[i].SetWindowText(Utf8ToUtf16(*texts[i]).c_str());
    WString title = Utf8ToUtf16(draft.subject);
    if (!title.empty())
        title += TW(" - ");
    SetWindowText((title + LoadText(IDS_COMPOSE_TITLE)).c_str());
    m_editor.SetDocument(CodeTypeSave2Edit(draft.codeType), draft.text, draft.text.GetLength());
    m_fieldsModified = false;
    CheckDraft();
}

Draft ComposeWindow::ReadDraft() const
{
    Draft draft = m_draft;
    std::string* const texts[] = {&draft.from, &draft.to, &draft.cc, &draft.subject};
    for (int i = 0; i < kFields; ++i)
        *texts[i] = Utf16ToUtf8(GetTextOf(m_fields[i]));
    m_editor.GetDocument2(draft.text);
    if (m_editor.GetCodeType() != CodeTypeSave2Edit(draft.codeType))
        draft.codeType = CT_UTF8;
    return draft;
}

bool ComposeWindow::IsModified() const
{
    return m_fieldsModified || m_editor.IsDocModified() != 0;
}

CommandContext ComposeWindow::GetContext() const
{
    CommandContext context;
    context.composing = true;
    const HWND focus = ::GetFocus();
    const bool inField = focus != nullptr && focus != m_editor.m_hWnd;
    context.textSelected = inField || m_editor.IsTextSelected() != 0;
    context.bodySelected = inField || m_editor.CanCut() != 0;
    context.canUndo = inField || m_editor.CanUndo() != 0;
    context.canRedo = m_editor.CanRedo() != 0;
    context.canPaste = inField || m_editor.CanPaste() != 0;
    context.hasFlaws = !m_flaws.IsEmpty();
    return context;
}

void ComposeWindow::Run(int command)
{
    // The clipboard's commands are for the field with the focus.
    if (const HWND focus = ::GetFocus(); focus != nullptr && focus != m_editor.m_hWnd) {
        const struct {
            int command;
            UINT message;
        } fieldCommands[] = {{ID_EDIT_UNDO, WM_UNDO},
                             {ID_EDIT_CUT, WM_CUT},
                             {ID_EDIT_COPY, WM_COPY},
                             {ID_EDIT_PASTE, WM_PASTE}};
        for (const auto& c : fieldCommands) {
            if (c.command == command) {
                ::SendMessageW(focus, c.message, 0, 0);
                return;
            }
        }
        if (command == ID_EDIT_SELECT_ALL) {
            ::SendMessageW(focus, EM_SETSEL, 0, -1);
            return;
        }
    }
    switch (command) {
    case ID_FILE_SAVE:
        Save();
        return;
    case ID_FILE_EXIT:
        PostMessage(WM_CLOSE);
        return;
    case ID_EDIT_UNDO:
        m_editor.Undo();
        return;
    case ID_EDIT_REDO:
        m_editor.Redo();
        return;
    case ID_EDIT_CUT:
        m_editor.Cut();
        return;
    case ID_EDIT_COPY:
        m_editor.Copy();
        return;
    case ID_EDIT_PASTE:
        m_editor.Paste();
        return;
    case ID_EDIT_PASTE_QUOTED:
        m_editor.PasteWithQuote();
        return;
    case ID_EDIT_SELECT_ALL:
        m_editor.SelectAll();
        return;
    case ID_EDIT_NEXT_FLAW:
        CheckDraft();
        GoToFlaw();
        return;
    case ID_EDIT_REPLACE_FLAWS: {
        Draft draft = ReadDraft();
        ReplaceFlaws(draft);
        return;
    }
    default:
        return;
    }
}

void ComposeWindow::Save()
{
    Draft draft = ReadDraft();
    if (!AskAboutFlaws(draft))
        return;
    std::string path = JoinPath(m_folder, MakeMailFileName(draft.subject, 1));
    if (!AskFileToSave(this, IDS_FILTER_EML, TW("eml"), path))
        return;
    std::string error;
    if (!SaveDraft(draft, path, error)) {
        Complain(this, IDS_CANNOT_SAVE, error);
        return;
    }
    m_fieldsModified = false;
    m_editor.SetDocModified(0);
    m_status.SetWindowText(LoadText(IDS_SAVED, Utf8ToUtf16(path)).c_str());
    m_owner->SendMessage(kDraftSaved, 0, reinterpret_cast<LPARAM>(&path));
}

// False when the user wants to look first.
bool ComposeWindow::AskAboutFlaws(Draft& draft)
{
    m_flaws = FindDraftFlaws(draft);
    if (m_flaws.IsEmpty())
        return true;
    GoToFlaw();
    const CStringA question(LoadText(IDS_FLAWS_ASK, DescribeFlaws(m_flaws)).c_str());
    const CStringA replace(LoadText(IDS_FLAWS_REPLACE).c_str());
    const CStringA save(LoadText(IDS_FLAWS_SAVE).c_str());
    const CStringA back(LoadText(IDS_FLAWS_BACK).c_str());
    const char* const buttons[] = {replace, save, back};
    constexpr int kReplace = 0;
    constexpr int kBack = 2;
    const int answer = XMessageBox(this, question, MB_ICONEXCLAMATION, buttons, 3, kBack);
    if (answer == kReplace)
        ReplaceFlaws(draft);
    return answer != kBack;
}

void ComposeWindow::CheckDraft()
{
    m_flaws = FindDraftFlaws(ReadDraft());
    m_status.SetWindowText(m_flaws.IsEmpty() ? TW("") : DescribeFlaws(m_flaws).c_str());
}

// Selects the next flaw behind the caret, or goes around.
void ComposeWindow::GoToFlaw()
{
    if (m_flaws.text.empty()) {
        if (m_flaws.inSubject)
            m_fields[kSubject].SetFocus();
        return;
    }
    CTextPos start;
    CTextPos end;
    m_editor.GetSelectRange(start, end);
    const int offset = FindOffset(end);
    const auto next = std::find_if(m_flaws.text.begin(), m_flaws.text.end(),
                                   [&](const auto& f) { return f.start >= offset; });
    const TextFlaw& flaw = next == m_flaws.text.end() ? m_flaws.text.front() : *next;
    m_editor.SelectText(FindPosition(flaw.start), FindPosition(flaw.start + flaw.length), 1, 1);
    m_editor.SetFocus();
}

// As one step to undo, in the text.
void ComposeWindow::ReplaceFlaws(Draft& draft)
{
    ReplaceDraftFlaws(draft);
    m_fields[kSubject].SetWindowText(Utf8ToUtf16(draft.subject).c_str());
    CTextPos end;
    m_editor.GetDocEnd(end);
    m_editor.BeginChangeGroup();
    m_editor.DeleteText(CTextPos(), end);
    m_editor.InsertText(CTextPos(), draft.text, draft.text.GetLength());
    m_editor.EndChangeGroup();
    m_editor.CaretDocHome();
    CheckDraft();
}

// The byte at a place, counted in the text as it is copied out.
int ComposeWindow::FindOffset(const CTextPos& pos) const
{
    const Document& document = m_editor.GetDoc();
    const int lineEnd = IsCodeTypeUnicode(document.GetCodeType()) != 0 ? 4 : 2;
    int offset = pos.logicalByte;
    for (int line = 0; line < pos.line; ++line)
        offset += document.GetLine(line).GetLength() + lineEnd;
    return offset;
}

// The place of a byte of the text as it is copied out, with two characters at each line's end.
CTextPos ComposeWindow::FindPosition(int offset) const
{
    const Document& document = m_editor.GetDoc();
    const int lineEnd = IsCodeTypeUnicode(document.GetCodeType()) != 0 ? 4 : 2;
    int line = 0;
    while (line + 1 < document.GetLineCount() &&
           offset >= document.GetLine(line).GetLength() + lineEnd) {
        offset -= document.GetLine(line).GetLength() + lineEnd;
        ++line;
    }
    CTextPos pos(line, std::min(offset, document.GetLine(line).GetLength()));
    document.L2PByteIndex(pos);
    return pos;
}

} // namespace tlvn
