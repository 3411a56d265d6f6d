#include "editor/text_clipboard.h"

#include "editor/text_units.h"
#include "foundation/multibyte.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

class OpenedClipboard {
public:
    explicit OpenedClipboard(CWnd* owner)
        : m_open(::OpenClipboard(owner != nullptr ? owner->m_hWnd : nullptr) != 0)
    {}
    ~OpenedClipboard()
    {
        if (m_open)
            ::CloseClipboard();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    bool IsOpen() const { return m_open; }

private:
    bool m_open;
};

// The text of a block of global memory, which others may have written: it ends at its zero or
// with the block.
template <class Char>
class LockedText {
public:
    explicit LockedText(HGLOBAL memory) : m_memory(memory)
    {
        if (memory != nullptr)
            m_text = static_cast<const Char*>(::GlobalLock(memory));
        if (m_text == nullptr)
            return;
        const std::size_t room =
            std::min<std::size_t>(::GlobalSize(memory) / sizeof(Char), INT_MAX / sizeof(Char));
        m_length = static_cast<std::size_t>(std::find(m_text, m_text + room, Char()) - m_text);
    }
    ~LockedText()
    {
        if (m_text != nullptr)
            ::GlobalUnlock(m_memory);
    }
    LockedText(const LockedText&) = delete;
    LockedText& operator=(const LockedText&) = delete;

    bool IsThere() const { return m_text != nullptr; }
    std::basic_string_view<Char> Get() const { return {m_text, m_length}; }

private:
    HGLOBAL m_memory;
    const Char* m_text = nullptr;
    std::size_t m_length = 0;
};

// The clipboard owns the block as soon as it has taken it.
template <class Char>
bool GiveText(UINT format, std::basic_string_view<Char> text)
{
    const std::size_t size = text.size() * sizeof(Char);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size + sizeof(Char));
    if (memory == nullptr)
        return false;
    char* const block = static_cast<char*>(::GlobalLock(memory));
    if (block != nullptr) {
        if (size > 0)
            std::memcpy(block, text.data(), size);
        std::memset(block + size, 0, sizeof(Char));
        ::GlobalUnlock(memory);
        if (::SetClipboardData(format, memory) != nullptr)
            return true;
    }
    ::GlobalFree(memory);
    return false;
}

} // namespace

int SetTextClipboard(const char* text, int length, CodeType codeType, CWnd* owner)
{
    if (text == nullptr || length < 0)
        length = 0;
    return tlvn::GuardMemory([&] {
        const std::string_view given(text, static_cast<std::size_t>(length));
        tlvn::WString units;
        tlvn::TextToUnits(codeType, given, units);
        std::string converted;
        std::string_view narrow = given;
        if (IsCodeTypeUnicode(codeType) != 0 ||
            tlvn::GetTextPage(codeType) != GetMultibyteCodePage()) {
            tlvn::ConvertFromUtf16(GetMultibyteCodePage(), units, converted);
            narrow = converted;
        }
        const OpenedClipboard clipboard(owner);
        if (!clipboard.IsOpen() || !::EmptyClipboard())
            return 0;
        const bool wideGiven = GiveText<WCHAR>(CF_UNICODETEXT, units);
        const bool narrowGiven = GiveText<char>(CF_TEXT, narrow);
        return wideGiven && narrowGiven ? 1 : 0;
    });
}

namespace tlvn {

bool HasTextClipboard()
{
    return ::IsClipboardFormatAvailable(CF_UNICODETEXT) || ::IsClipboardFormatAvailable(CF_TEXT);
}

bool GetTextClipboard(CodeType codeType, CWnd* window, CBuffer& out)
{
    out.Empty();
    return GuardMemory([&] {
        const OpenedClipboard clipboard(window);
        if (!clipboard.IsOpen())
            return false;
        std::string text;
        const auto give = [&](std::string_view bytes) {
            if (bytes.size() > INT_MAX)
                AfxThrowMemoryException();
            out.Set(bytes.data(), static_cast<int>(bytes.size()));
            return true;
        };
        const LockedText<WCHAR> wide(::GetClipboardData(CF_UNICODETEXT));
        if (wide.IsThere()) {
            UnitsToText(codeType, wide.Get(), text);
            return give(text);
        }
        const LockedText<char> narrow(::GetClipboardData(CF_TEXT));
        if (!narrow.IsThere())
            return false;
        if (IsCodeTypeUnicode(codeType) == 0 && GetTextPage(codeType) == GetMultibyteCodePage())
            return give(narrow.Get());
        WString units;
        ConvertToUtf16(GetMultibyteCodePage(), narrow.Get(), units);
        UnitsToText(codeType, units, text);
        return give(text);
    });
}

} // namespace tlvn
