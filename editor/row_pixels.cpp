#include "editor/row_pixels.h"

#include <algorithm>

namespace tlvn {

namespace {

// Steps over characters from (p, x) as long as go(end of the character, x behind it) says so.
template <class Go>
void Walk(const LineWrap& layout, CharWidths& widths, const char* p, const char* end, INT64 x,
          Go go)
{
    const TextCode& code = widths.GetCode();
    while (p < end) {
        const unsigned c = code.Next(p, end);
        if (c == '\t')
            x = layout.GetTabStop(static_cast<int>(std::min<INT64>(x, INT_MAX)));
        else
            x += widths.GetWidth(c);
        if (!go(p, static_cast<int>(std::min<INT64>(x, INT_MAX))))
            return;
    }
}

} // namespace

void RowPixels::Attach(const LineWrap* layout, CharWidths* widths)
{
    m_layout = layout;
    m_widths = widths;
    Forget();
}

int RowPixels::GetX(const CLLineData& line, int physical, int byte)
{
    if (m_layout == nullptr)
        return 0;
    const int start = line.GetStart(physical);
    if (byte <= kStep)
        return m_layout->GetX(line.GetText(), start, start + byte);

    const char* const text = line.GetText() + start;
    MarkRow(text, line.GetEnd(physical) - start);
    const auto next = std::partition_point(m_marks.begin(), m_marks.end(),
                                           [byte](const Mark& mark) { return mark.byte <= byte; });
    int x = next[-1].x;
    Walk(*m_layout, *m_widths, text + next[-1].byte, text + byte, x, [&x](const char*, int behind) {
        x = behind;
        return true;
    });
    return x;
}

int RowPixels::FindByte(const CLLineData& line, int physical, int x, bool nearest)
{
    if (m_layout == nullptr || x <= 0)
        return 0;
    const int start = line.GetStart(physical);
    const int end = line.GetEnd(physical);
    if (end - start <= kStep)
        return m_layout->FindByte(line.GetText(), start, end, x, nearest) - start;

    const char* const text = line.GetText() + start;
    MarkRow(text, end - start);
    const auto next = std::partition_point(m_marks.begin(), m_marks.end(),
                                           [x](const Mark& mark) { return mark.x <= x; });
    int byte = next[-1].byte;
    int left = next[-1].x;
    Walk(*m_layout, *m_widths, text + byte, text + end - start, left,
         [&](const char* behind, int right) {
             const bool beyond = nearest ? x < left + (right - left + 1) / 2 : x < right;
             if (beyond)
                 return false;
             byte = static_cast<int>(behind - text);
             left = right;
             return true;
         });
    return byte;
}

void RowPixels::MarkRow(const char* text, int length)
{
    if (m_text == text && m_length == length)
        return;
    m_marks.assign(1, {0, 0});
    Walk(*m_layout, *m_widths, text, text + length, 0, [&](const char* behind, int x) {
        const int byte = static_cast<int>(behind - text);
        if (byte - m_marks.back().byte >= kStep)
            m_marks.push_back({byte, x});
        return true;
    });
    m_text = text;
    m_length = length;
}

} // namespace tlvn
