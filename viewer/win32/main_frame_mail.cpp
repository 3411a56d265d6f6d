#include "viewer/win32/main_frame.h"

#include "platform/folder.h"
#include "viewer/mail_export.h"
#include "viewer/mail_in_editor.h"
#include "viewer/mail_reply.h"
#include "viewer/show_text.h"
#include "viewer/win32/compose_window.h"
#include "viewer/win32/dialogs.h"
#include "viewer/win32/progress_box.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <algorithm>

namespace tlvn {

namespace {

const char kMarkerFile[] = ".tolvan-markers";
const char kProgramName[] = "TolvanView";
constexpr int kExportStep = 20; // milliseconds

std::string FolderOf(const std::string& path)
{
    return path.substr(0, path.size() - GetLastName(path).size());
}

bool IsSameFolder(const std::string& a, const std::string& b)
{
    FolderReader first;
    FolderReader second;
    return first.Open(a) && second.Open(b) && first.GetIdentity() == second.GetIdentity();
}

} // namespace

void MainFrame::ShowMailAt(int row)
{
    const int mail = row < 0 ? -1 : m_list.GetMails().GetMailOfRow(row);
    if (mail < 0 || mail == m_shownMail)
        return;
    m_shownMail = mail;
    std::string bytes;
    std::string error;
    const std::string path = m_list.GetMails().GetPath(row);
    if (m_list.GetMails().LoadMail(row, bytes, error)) {
        ShowMailBytes(std::move(bytes), path);
        return;
    }
    ShowNoMail(path, error);
}

// No mail is shown then, that no other is taken for the chosen one.
void MainFrame::CloseMail(WStringView message)
{
    m_mail.reset();
    m_mailPath.clear();
    SetWindowText(Utf8ToUtf16(kProgramName).c_str());
    m_editor.ClearFoundArray();
    m_editor.SetDocument(CT_UNICODE, reinterpret_cast<const char*>(message.data()),
                         static_cast<int>(message.size() * sizeof(WCHAR)));
    FindAll();
}

void MainFrame::ShowNoMail(const std::string& path, const std::string& error)
{
    CloseMail(LoadText(IDS_CANNOT_OPEN) + TW("\r\n\r\n") + Utf8ToUtf16(path) + TW("\r\n") +
              Utf8ToUtf16(error));
}

bool MainFrame::ShowMailBytes(std::string bytes, const std::string& path)
{
    m_mail = std::make_unique<Mail>(std::move(bytes));
    m_mailPath = path;
    WString title = Utf8ToUtf16(MakeHarmless(m_mail->GetHeaderText("Subject"), false));
    if (!title.empty())
        title += TW(" - ");
    SetWindowText((title + Utf8ToUtf16(kProgramName)).c_str());
    ShowMailInEditor(*m_mail, m_editor);
    m_editor.SetReadOnly(1);
    LoadMarkers();
    FindAll();
    return true;
}

// --- markers -------------------------------------------------------------------------------------

void MainFrame::LoadMarkers()
{
    // Without a path nothing is read or written, of another folder neither.
    std::string narrow;
    const bool named = ToNarrowPath(FolderOf(m_mailPath) + kMarkerFile, narrow);
    m_markers.Load(named ? narrow : std::string());
    const std::string text = m_markers.Get(MarkerFile::MakeKey(*m_mail, m_mailPath));
    if (text == GetMarkerText())
        return;
    CEditorLineMarkerArray markers;
    SerializeLineMarkerArray(text.c_str(), m_editor.GetHeaderLineL(), markers);
    m_editor.InitLineMarkerArray(markers);
    ClearLineMarkerArray(markers);
}

std::string MainFrame::GetMarkerText() const
{
    CString text;
    SerializeLineMarkerArray(m_editor.GetLineMarkerArray(), m_editor.GetHeaderLineL(), text);
    return text.GetString();
}

void MainFrame::SaveMarkers()
{
    m_markers.Set(MarkerFile::MakeKey(*m_mail, m_mailPath), GetMarkerText());
    if (!m_markers.Save())
        SetStatus(LoadText(IDS_MARKERS_TROUBLE) + TW(' ') + Utf8ToUtf16(m_markers.GetMessage()));
    else if (!m_markers.GetMessage().empty())
        SetStatus(Utf8ToUtf16(m_markers.GetMessage()));
}

void MainFrame::Mark(int command)
{
    if (command == ID_MARKER_ERASE_ALL)
        m_editor.EraseAllLineMarker();
    else if (command == ID_MARKER_ERASE)
        m_editor.ClearLineMarker(1);
    else
        m_editor.DrawLineMarker(command - ID_MARKER_FIRST);
    m_editor.ClearTextSelect(1);
    m_editor.Invalidate(FALSE);
    SaveMarkers();
}

// --- commands ------------------------------------------------------------------------------------

void MainFrame::RunMail(int command)
{
    if (command >= ID_MARKER_FIRST && command <= ID_MARKER_ERASE_ALL) {
        Mark(command);
        return;
    }
    switch (command) {
    case ID_MAIL_NEW: {
        Draft draft;
        draft.from = m_settings.GetOwnAddress();
        Compose(draft);
        return;
    }
    case ID_MAIL_REPLY:
    case ID_MAIL_REPLY_ALL:
        Reply(command == ID_MAIL_REPLY_ALL);
        return;
    case ID_FILE_EXPORT:
        Export();
        return;
    default:
        return;
    }
}

void MainFrame::Compose(const Draft& draft)
{
    auto* const window = new ComposeWindow(this, m_settings.File().Data(), FolderOf(m_mailPath));
    m_composing.push_back(window);
    window->Open(draft);
}

void MainFrame::Reply(bool all)
{
    ReplyOptions options;
    options.from = m_settings.GetOwnAddress();
    options.all = all;
    Compose(MakeReply(*m_mail, options));
}

LRESULT MainFrame::OnComposeClosed(WPARAM, LPARAM lParam)
{
    std::erase(m_composing, reinterpret_cast<ComposeWindow*>(lParam));
    return 0;
}

// A draft saved into the folder that is shown appears in its list; the mail stays in view.
LRESULT MainFrame::OnDraftSaved(WPARAM, LPARAM lParam)
{
    const std::string& path = *reinterpret_cast<const std::string*>(lParam);
    if (!IsSameFolder(FolderOf(path), m_list.GetPath()))
        return 0;
    std::string error;
    m_wantedFile = m_mailPath;
    m_list.Open(std::string(m_list.GetPath()), error);
    StartReading();
    return 0;
}

// The window takes no input meanwhile but that of the box with the progress.
void MainFrame::Export()
{
    std::string path = m_list.GetPath() + ".zip";
    std::string password;
    if (!AskFileToSave(this, IDS_FILTER_ZIP, TW("zip"), path) ||
        !AskText(this, IDS_TITLE_PASSWORD, IDS_ZIP_PASSWORD, true, password))
        return;
    MailExport mails(m_list.GetMails(), m_list.GetChosenRows());
    std::string error;
    if (!mails.Start(path, password, error)) {
        Complain(this, IDS_CANNOT_EXPORT, path + ": " + error);
        return;
    }
    m_exporting = true;
    EnableWindow(FALSE);
    ProgressBox box;
    box.Open(this, IDS_TITLE_EXPORT);
    bool goesOn = true;
    while (goesOn && mails.Step(kExportStep, error)) {
        const WString done = Utf8ToUtf16(std::to_string(mails.GetDone()));
        goesOn = box.Show(LoadText(IDS_EXPORTING, done), mails.GetDone(), mails.GetTotal());
    }
    EnableWindow(TRUE);
    box.DestroyWindow();
    m_exporting = false;
    SetFocus();
    if (!goesOn)
        SetStatus(LoadText(IDS_EXPORT_ENDED));
    else if (error.empty())
        SetStatus(LoadText(IDS_EXPORTED, Utf8ToUtf16(std::to_string(mails.GetDone()))));
    else
        Complain(this, IDS_CANNOT_EXPORT, error);
}

} // namespace tlvn
