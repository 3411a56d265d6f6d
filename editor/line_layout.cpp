#include "editor/line_layout.h"

#include <algorithm>

namespace tlvn {

OldBreaks::OldBreaks(std::span<const PhysicalLine> rows, int from, int moved) : m_moved(moved)
{
    const auto first =
        std::lower_bound(rows.begin(), rows.end(), from,
                         [](const PhysicalLine& row, int start) { return row.start < start; });
    m_rows = rows.subspan(static_cast<std::size_t>(first - rows.begin()));
}

} // namespace tlvn
