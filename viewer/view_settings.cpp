#include "viewer/view_settings.h"

#include "platform/nls.h"

#include <algorithm>

namespace tlvn {

namespace {

const char kWindow[] = "Window";
const char kList[] = "List";
const char kMail[] = "Mail";
constexpr int kMinColumn = 20;
constexpr int kMaxColumn = 4'000;
constexpr int kLastColumn = static_cast<int>(MailColumn::Size);

// Brings the range [low, high] of a stored rectangle into the screen's, `least` long at least
// where the screen is.
void FitIntoScreen(LONG screenLow, LONG screenHigh, LONG least, LONG& low, LONG& high)
{
    const INT64 room = INT64{screenHigh} - screenLow;
    const INT64 size = std::min(std::max(INT64{high} - low, INT64{least}), room);
    const INT64 start = std::clamp(INT64{low}, INT64{screenLow}, screenHigh - size);
    low = static_cast<LONG>(start);
    high = static_cast<LONG>(start + size);
}

} // namespace

WindowPlace ViewSettings::GetWindowPlace(const CRect& screen) const
{
    WindowPlace place;
    place.maximized = m_file.Data().GetBoolValue(kWindow, "Maximized", 0) != 0;
    const bool stored = m_file.Data().GetValue(kWindow, "Rect", place.rect) != 0;
    if (!stored || place.rect.right <= place.rect.left || place.rect.bottom <= place.rect.top) {
        place.rect = screen;
        place.rect.DeflateRect(screen.Width() / 8, screen.Height() / 8);
    }
    FitIntoScreen(screen.left, screen.right, kMinWidth, place.rect.left, place.rect.right);
    FitIntoScreen(screen.top, screen.bottom, kMinHeight, place.rect.top, place.rect.bottom);
    return place;
}

void ViewSettings::SetWindowPlace(const WindowPlace& place)
{
    m_file.Data().SetValue(kWindow, "Rect", place.rect);
    m_file.Data().SetValue(kWindow, "Maximized", place.maximized ? 1 : 0);
}

ListOrder ViewSettings::GetListOrder() const
{
    const ListOrder none;
    return {static_cast<MailColumn>(m_file.Data().GetIntValue(kList, "Sort", 0, kLastColumn,
                                                              static_cast<int>(none.column))),
            m_file.Data().GetBoolValue(kList, "Ascending", none.ascending) != 0};
}

void ViewSettings::SetListOrder(const ListOrder& order)
{
    m_file.Data().SetValue(kList, "Sort", static_cast<int>(order.column));
    m_file.Data().SetValue(kList, "Ascending", order.ascending ? 1 : 0);
}

void ViewSettings::GetColumnWidths(int (&widths)[kColumns]) const
{
    CArray<int, int> stored;
    if (m_file.Data().GetValue(kList, "Columns", stored) == 0 || stored.GetSize() != kColumns)
        return;
    for (int i = 0; i < kColumns; ++i)
        widths[i] = std::clamp(stored[i], kMinColumn, kMaxColumn);
}

void ViewSettings::SetColumnWidths(const int (&widths)[kColumns])
{
    CArray<int, int> stored;
    for (const int width : widths)
        stored.Add(width);
    m_file.Data().SetValue(kList, "Columns", stored);
}

std::string ViewSettings::GetText(const char* name) const
{
    CStringW wide;
    m_file.Data().GetValue(kMail, name, wide);
    return Utf16ToUtf8(WStringView(wide, static_cast<std::size_t>(wide.GetLength())));
}

void ViewSettings::SetText(const char* name, const std::string& utf8)
{
    m_file.Data().SetValue(kMail, name, Utf8ToUtf16(utf8).c_str());
}

} // namespace tlvn
