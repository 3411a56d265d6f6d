// Global memory and the clipboard.

#include "framework/headless/desktop.h"

#include <cstdlib>
#include <cstring>

namespace tlvn::headless {
namespace {

// In front of every block of global memory; the handle is the address behind it.
struct alignas(16) MemoryHeader {
    std::size_t size;
};

MemoryHeader* HeaderOf(HGLOBAL memory)
{
    return static_cast<MemoryHeader*>(memory) - 1;
}

HGLOBAL MakeMemory(const void* data, std::size_t size)
{
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (memory != nullptr)
        std::memcpy(memory, data, size);
    return memory;
}

std::size_t NarrowLength(HGLOBAL memory)
{
    const auto* const text = static_cast<const char*>(memory);
    const std::size_t size = GlobalSize(memory);
    std::size_t length = 0;
    while (length < size && text[length] != 0)
        ++length;
    return length;
}

std::size_t WideLength(HGLOBAL memory)
{
    const auto* const text = static_cast<const WCHAR*>(memory);
    const std::size_t size = GlobalSize(memory) / sizeof(WCHAR);
    std::size_t length = 0;
    while (length < size && text[length] != 0)
        ++length;
    return length;
}

// Windows gives either text format when the other was set.
UINT SourceOf(UINT format)
{
    const auto& clipboard = Desk().clipboard;
    if (clipboard.count(format) != 0)
        return format;
    if (format == CF_TEXT && clipboard.count(CF_UNICODETEXT) != 0)
        return CF_UNICODETEXT;
    if (format == CF_UNICODETEXT && clipboard.count(CF_TEXT) != 0)
        return CF_TEXT;
    return 0;
}

} // namespace

void ResetClipboard()
{
    Desktop& desk = Desk();
    for (const auto& [format, memory] : desk.clipboard)
        GlobalFree(memory);
    desk.clipboard.clear();
    desk.clipboardOpen = false;
    desk.clipboardWindow = desk.clipboardOwner = nullptr;
}

} // namespace tlvn::headless

using namespace tlvn::headless;

HGLOBAL GlobalAlloc(UINT flags, std::size_t size)
{
    if (size > SIZE_MAX - sizeof(MemoryHeader))
        return nullptr;
    void* const block = (flags & GMEM_ZEROINIT) != 0 ? std::calloc(1, sizeof(MemoryHeader) + size)
                                                     : std::malloc(sizeof(MemoryHeader) + size);
    if (block == nullptr)
        return nullptr;
    auto* const header = static_cast<MemoryHeader*>(block);
    header->size = size;
    return header + 1;
}

HGLOBAL GlobalFree(HGLOBAL memory)
{
    if (memory != nullptr)
        std::free(HeaderOf(memory));
    return nullptr;
}

LPVOID GlobalLock(HGLOBAL memory)
{
    return memory;
}

BOOL GlobalUnlock(HGLOBAL)
{
    return FALSE;
}

std::size_t GlobalSize(HGLOBAL memory)
{
    return memory != nullptr ? HeaderOf(memory)->size : 0;
}

BOOL OpenClipboard(HWND window)
{
    Desktop& desk = Desk();
    if (desk.clipboardOpen && desk.clipboardWindow != window)
        return FALSE;
    desk.clipboardOpen = true;
    desk.clipboardWindow = window;
    return TRUE;
}

BOOL CloseClipboard()
{
    const bool was = Desk().clipboardOpen;
    Desk().clipboardOpen = false;
    Desk().clipboardWindow = nullptr;
    return was;
}

BOOL EmptyClipboard()
{
    Desktop& desk = Desk();
    if (!desk.clipboardOpen)
        return FALSE;
    const HWND window = desk.clipboardWindow;
    ResetClipboard();
    desk.clipboardOpen = true;
    desk.clipboardWindow = desk.clipboardOwner = window;
    return TRUE;
}

HANDLE SetClipboardData(UINT format, HANDLE data)
{
    Desktop& desk = Desk();
    if (!desk.clipboardOpen || data == nullptr)
        return nullptr;
    HGLOBAL& slot = desk.clipboard[format];
    GlobalFree(slot);
    slot = data;
    return data;
}

HANDLE GetClipboardData(UINT format)
{
    Desktop& desk = Desk();
    const UINT source = SourceOf(format);
    if (!desk.clipboardOpen || source == 0)
        return nullptr;
    if (source != format) {
        const HGLOBAL from = desk.clipboard[source];
        if (format == CF_UNICODETEXT) {
            const tlvn::WString wide =
                tlvn::WidenText({static_cast<const char*>(from), NarrowLength(from)});
            desk.clipboard[format] = MakeMemory(wide.c_str(), (wide.size() + 1) * sizeof(WCHAR));
        } else {
            const std::string narrow =
                tlvn::NarrowText({static_cast<const WCHAR*>(from), WideLength(from)});
            desk.clipboard[format] = MakeMemory(narrow.c_str(), narrow.size() + 1);
        }
    }
    return desk.clipboard[format];
}

BOOL IsClipboardFormatAvailable(UINT format)
{
    return SourceOf(format) != 0;
}

UINT EnumClipboardFormats(UINT format)
{
    const auto next = Desk().clipboard.upper_bound(format);
    return Desk().clipboardOpen && next != Desk().clipboard.end() ? next->first : 0;
}

HWND GetClipboardOwner()
{
    return Desk().clipboardOwner;
}

UINT RegisterClipboardFormatW(LPCWSTR name)
{
    std::vector<tlvn::WString>& formats = Desk().clipboardFormats;
    const auto found = std::find(formats.begin(), formats.end(), name);
    const auto index = found - formats.begin();
    if (found == formats.end())
        formats.emplace_back(name);
    return 0xC000 + static_cast<UINT>(index);
}
