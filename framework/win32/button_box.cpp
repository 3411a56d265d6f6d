// Boxes with the caller's buttons on Windows: a modal dialog from a template made in memory. The
// template gives the controls their order and styles; sizes come from the texts, measured in the
// font of the system's message boxes, once the dialog is there.

#include "framework/x_message_box.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace tlvn {

namespace {

// Classes of controls in a dialog template.
constexpr WORD kButtonClass = 0x0080;
constexpr WORD kStaticClass = 0x0082;

constexpr int kIconId = 90;
constexpr int kTextId = 91;
constexpr int kFirstButtonId = 100;

// Sizes at 96 dpi.
constexpr int kDpi = 96;
constexpr int kMargin = 12;
constexpr int kIconSize = 32;
constexpr int kGap = 8;
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 26;
constexpr int kButtonPadding = 12; // on each side of a button's text
constexpr int kMaxTextWidth = 560;

class TemplateBuilder {
public:
    TemplateBuilder(DWORD style, const WCHAR* title, WORD controls)
    {
        AddDwords({style, 0});
        AddWords({controls, 0, 0, 0, 0, 0, 0}); // place and size, no menu, the dialog class
        AddText(title);
    }

    void AddControl(WORD controlClass, DWORD style, int id, const WCHAR* text)
    {
        if (m_words.size() % 2 != 0)
            m_words.push_back(0);
        AddDwords({style | WS_CHILD | WS_VISIBLE, 0});
        AddWords({0, 0, 0, 0, static_cast<WORD>(id), 0xFFFF, controlClass});
        AddText(text);
        m_words.push_back(0); // no creation data
    }

    // In storage that is aligned as a template has to be.
    std::vector<DWORD> Finish() const
    {
        std::vector<DWORD> storage((m_words.size() + 1) / 2);
        std::memcpy(storage.data(), m_words.data(), m_words.size() * sizeof(WORD));
        return storage;
    }

private:
    void AddWords(std::initializer_list<WORD> words)
    {
        m_words.insert(m_words.end(), words.begin(), words.end());
    }
    void AddDwords(std::initializer_list<DWORD> values)
    {
        for (const DWORD value : values)
            AddWords({LOWORD(value), HIWORD(value)});
    }
    void AddText(const WCHAR* text)
    {
        do
            m_words.push_back(static_cast<WORD>(*text));
        while (*text++ != 0);
    }

    std::vector<WORD> m_words;
};

HICON LoadBoxIcon(UINT icon)
{
    const auto load = [](auto name) {
        return ::LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(name));
    };
    switch (icon & MB_ICONMASK) {
    case MB_ICONHAND:
        return load(IDI_HAND);
    case MB_ICONQUESTION:
        return load(IDI_QUESTION);
    case MB_ICONEXCLAMATION:
        return load(IDI_EXCLAMATION);
    case MB_ICONASTERISK:
        return load(IDI_ASTERISK);
    default:
        return nullptr;
    }
}

// The dialog while it is shown.
class Dialog {
public:
    explicit Dialog(const ButtonBox& box) : m_box(box) {}
    ~Dialog()
    {
        if (m_font != nullptr)
            ::DeleteObject(m_font);
    }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    int Show()
    {
        constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
        TemplateBuilder builder(kStyle, m_box.caption, static_cast<WORD>(m_box.count + 2));
        builder.AddControl(kStaticClass, SS_ICON, kIconId, TW(""));
        builder.AddControl(kStaticClass, SS_LEFT | SS_NOPREFIX, kTextId, m_box.text);
        for (int i = 0; i < m_box.count; ++i)
            builder.AddControl(kButtonClass,
                               WS_TABSTOP | (i == 0 ? WS_GROUP | BS_DEFPUSHBUTTON : BS_PUSHBUTTON),
                               kFirstButtonId + i, m_box.buttons[i]);
        const std::vector<DWORD> storage = builder.Finish();
        const INT_PTR pressed = ::DialogBoxIndirectParamW(
            ::GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(storage.data()),
            m_box.owner, &Dialog::Procedure, reinterpret_cast<LPARAM>(this));
        // No dialog could be made: the careful answer.
        return pressed >= 0 ? static_cast<int>(pressed) : std::max(m_box.cancel, 0);
    }

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG) {
            ::SetWindowLongPtrW(window, DWLP_USER, lParam);
            reinterpret_cast<Dialog*>(lParam)->Initialise(window);
            return FALSE; // the focus is set
        }
        const auto* const self =
            reinterpret_cast<const Dialog*>(::GetWindowLongPtrW(window, DWLP_USER));
        if (self == nullptr || message != WM_COMMAND)
            return FALSE;
        const int id = LOWORD(wParam);
        if (id >= kFirstButtonId && id < kFirstButtonId + self->m_box.count)
            ::EndDialog(window, id - kFirstButtonId);
        else if (id == IDCANCEL && self->m_box.cancel >= 0)
            ::EndDialog(window, self->m_box.cancel);
        return TRUE;
    }

    void Initialise(HWND window)
    {
        if (m_box.cancel < 0)
            ::EnableMenuItem(::GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
        NONCLIENTMETRICSW metrics = {};
        metrics.cbSize = sizeof metrics;
        if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0))
            m_font = ::CreateFontIndirectW(&metrics.lfMessageFont);
        if (m_font != nullptr)
            for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr;
                 child = ::GetWindow(child, GW_HWNDNEXT))
                ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
        Arrange(window);
        ::SetFocus(::GetDlgItem(window, kFirstButtonId));
        ::MessageBeep(m_box.icon & MB_ICONMASK);
    }

    SIZE Measure(HDC dc, const WCHAR* text, int maxWidth, UINT flags) const
    {
        RECT rect = {0, 0, maxWidth, 0};
        ::DrawTextW(dc, text, -1, &rect, DT_CALCRECT | flags);
        return {rect.right, rect.bottom};
    }

    void Arrange(HWND window) const
    {
        const HDC dc = ::GetDC(window);
        const HGDIOBJ oldFont = m_font != nullptr ? ::SelectObject(dc, m_font) : nullptr;
        const int dpi = ::GetDeviceCaps(dc, LOGPIXELSY);
        const auto scaled = [dpi](int size) { return ::MulDiv(size, dpi, kDpi); };
        const SIZE text =
            Measure(dc, m_box.text, scaled(kMaxTextWidth), DT_WORDBREAK | DT_NOPREFIX);
        int buttonWidth = scaled(kButtonWidth);
        for (int i = 0; i < m_box.count; ++i) {
            const SIZE label = Measure(dc, m_box.buttons[i], 0, DT_SINGLELINE);
            buttonWidth =
                std::max(buttonWidth, static_cast<int>(label.cx) + 2 * scaled(kButtonPadding));
        }
        if (oldFont != nullptr)
            ::SelectObject(dc, oldFont);
        ::ReleaseDC(window, dc);

        const int margin = scaled(kMargin);
        const int gap = scaled(kGap);
        const HICON icon = LoadBoxIcon(m_box.icon);
        const int textLeft = margin + (icon != nullptr ? scaled(kIconSize) + margin : 0);
        const int bodyHeight =
            std::max(static_cast<int>(text.cy), icon != nullptr ? scaled(kIconSize) : 0);
        const int buttonsWidth = m_box.count * buttonWidth + (m_box.count - 1) * gap;
        const int width =
            margin + std::max(textLeft - margin + static_cast<int>(text.cx), buttonsWidth) + margin;
        const int buttonTop = margin + bodyHeight + margin;
        const int height = buttonTop + scaled(kButtonHeight) + margin;

        const HWND iconWindow = ::GetDlgItem(window, kIconId);
        ::SendMessageW(iconWindow, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
        ::MoveWindow(iconWindow, margin, margin, scaled(kIconSize), scaled(kIconSize), FALSE);
        ::ShowWindow(iconWindow, icon != nullptr ? SW_SHOWNA : SW_HIDE);
        ::MoveWindow(::GetDlgItem(window, kTextId), textLeft,
                     margin + (bodyHeight - static_cast<int>(text.cy)) / 2, text.cx, text.cy,
                     FALSE);
        int left = (width - buttonsWidth) / 2;
        for (int i = 0; i < m_box.count; ++i, left += buttonWidth + gap)
            ::MoveWindow(::GetDlgItem(window, kFirstButtonId + i), left, buttonTop, buttonWidth,
                         scaled(kButtonHeight), FALSE);
        Place(window, width, height);
    }

    // In the middle of the owner or of the screen, but on the screen.
    void Place(HWND window, int clientWidth, int clientHeight) const
    {
        RECT frame = {0, 0, clientWidth, clientHeight};
        ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongW(window, GWL_STYLE)), FALSE,
                             static_cast<DWORD>(::GetWindowLongW(window, GWL_EXSTYLE)));
        const int width = frame.right - frame.left;
        const int height = frame.bottom - frame.top;
        RECT screen;
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
        RECT around = screen;
        if (m_box.owner != nullptr && !::IsIconic(m_box.owner))
            ::GetWindowRect(m_box.owner, &around);
        const auto middle = [](LONG low, LONG high, int size, LONG least, LONG most) {
            const LONG start = low + (high - low - size) / 2;
            return std::max(std::min(start, most - size), least);
        };
        ::SetWindowPos(window, nullptr,
                       middle(around.left, around.right, width, screen.left, screen.right),
                       middle(around.top, around.bottom, height, screen.top, screen.bottom), width,
                       height, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    const ButtonBox& m_box;
    HFONT m_font = nullptr;
};

} // namespace

int ShowSystemButtonBox(const ButtonBox& box)
{
    return Dialog(box).Show();
}

} // namespace tlvn
