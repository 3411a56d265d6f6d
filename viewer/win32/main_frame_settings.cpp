#include "viewer/win32/main_frame.h"

#include "editor/default_keys.h"
#include "viewer/key_settings.h"
#include "viewer/win32/dialogs.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

namespace tlvn {

namespace {

const char kMainKeys[] = "Main";
const char kEditorKeys[] = "Editor";
const char kMainKeyResource[] = "MAINKEYS";
constexpr int kFirstEditorCommand = 33600;
constexpr int kLastEditorCommand = 33699;

// Passwords are kept as the settings take them.
std::string ToNarrow(const std::string& utf8)
{
    return NarrowText(Utf8ToUtf16(utf8));
}

} // namespace

void MainFrame::LoadSettings(const std::string& path)
{
    SettingsFile& file = m_settings.File();
    std::string password;
    while (file.Load(path, ToNarrow(password)) == SettingsFile::State::Locked)
        if (!AskText(nullptr, IDS_TITLE_PASSWORD, IDS_SETTINGS_PASSWORD, true, password)) {
            // New settings are not enciphered with a password that was mistyped.
            file.Load(path, {});
            break;
        }
}

void MainFrame::SaveSettings()
{
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (::GetWindowPlacement(m_hWnd, &placement))
        m_settings.SetWindowPlace({placement.rcNormalPosition, IsZoomed() != FALSE});
    m_panes.Save3Pane();
    m_list.SaveTo(m_settings);
    CSettingData& data = m_settings.File().Data();
    m_editor.GetEditorMetrics().SetEditorMetrics(&data, ViewSettings::kViewerSection);
    CEditorMetrics composer;
    composer.GetEditorMetrics(&data, ViewSettings::kComposerSection, 0);
    composer.SetEditorMetrics(&data, ViewSettings::kComposerSection);
    m_editor.GetEditorColors().SetEditorColor(&data, ViewSettings::kColorSection);
    SaveKeys(data, ViewSettings::kKeySection, kMainKeys, m_keys);
    SaveKeys(data, ViewSettings::kKeySection, kEditorKeys, CEditorWnd::GetAccelData());
    const bool saved = m_settings.File().Save();
    const std::string& message = m_settings.File().GetMessage();
    if (!saved)
        Complain(this, IDS_SETTINGS_TROUBLE, message);
    else if (!message.empty())
        Tell(this, message);
}

void MainFrame::MakeKeys()
{
    const CSettingData& data = m_settings.File().Data();
    CAccelData::InitOemVkName();
    if (!LoadKeys(data, ViewSettings::kKeySection, kMainKeys, ID_COMMAND_FIRST, ID_COMMAND_LAST,
                  m_keys))
        m_keys.LoadResourceAccelData(kMainKeyResource);
    CAccelData& editorKeys = CEditorWnd::GetAccelData();
    if (!LoadKeys(data, ViewSettings::kKeySection, kEditorKeys, kFirstEditorCommand,
                  kLastEditorCommand, editorKeys))
        SetDefaultEditorKeys(editorKeys);
    m_keys.UpdateMenuString(this);
    m_accelerators = ::CreateAcceleratorTableW(m_keys.GetData(), m_keys.GetSize());
}

void MainFrame::RunSettings(int command)
{
    switch (command) {
    case ID_SETTINGS_FONT:
        ChangeFont();
        return;
    case ID_SETTINGS_TEXT_COLOR:
    case ID_SETTINGS_BACK_COLOR:
        ChangeColor(command == ID_SETTINGS_BACK_COLOR);
        return;
    case ID_SETTINGS_KEYS:
        ChangeKeys();
        return;
    case ID_SETTINGS_ADDRESS:
        ChangeAddress();
        return;
    case ID_SETTINGS_PASSWORD:
        ChangePassword();
        return;
    default:
        return;
    }
}

// Of both editors.
void MainFrame::ChangeFont()
{
    CEditorMetrics metrics = m_editor.GetEditorMetrics();
    CFontInfo font = metrics.GetFont();
    if (!AskFont(this, font))
        return;
    metrics.SetFont(font);
    m_editor.ChangeEditorMetrics(metrics);
    font.SetFontInfo(&m_settings.File().Data(), ViewSettings::kComposerSection);
}

void MainFrame::ChangeColor(bool background)
{
    CEditorColor colors = m_editor.GetEditorColors();
    COLORREF color = background ? colors.GetBackColor() : colors.GetTextColor();
    if (!AskColor(this, color))
        return;
    if (background)
        colors.SetBackColor(color);
    else
        colors.SetTextColor(color);
    m_editor.ChangeEditorColors(colors);
    colors.SetEditorColor(&m_settings.File().Data(), ViewSettings::kColorSection);
}

void MainFrame::ChangeKeys()
{
    CAccelData defaults;
    defaults.LoadResourceAccelData(kMainKeyResource);
    if (!AskKeys(this, *GetMenu(), defaults, m_keys))
        return;
    ::DestroyAcceleratorTable(m_accelerators);
    m_accelerators = ::CreateAcceleratorTableW(m_keys.GetData(), m_keys.GetSize());
    m_keys.UpdateMenuString(this);
}

void MainFrame::ChangeAddress()
{
    std::string address = m_settings.GetOwnAddress();
    if (AskText(this, IDS_TITLE_ADDRESS, IDS_OWN_ADDRESS, false, address))
        m_settings.SetOwnAddress(address);
}

void MainFrame::ChangePassword()
{
    std::string password;
    if (!AskText(this, IDS_TITLE_PASSWORD, IDS_NEW_PASSWORD, true, password))
        return;
    m_settings.File().Data().SetCryptKey(CString(ToNarrow(password).c_str()));
    m_settings.File().Data().SetUpdated(1);
}

} // namespace tlvn
