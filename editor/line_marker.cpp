#include "editor/line_marker.h"

#include "framework/guard_memory.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstring>
#include <queue>
#include <string>

namespace {

// Reads `count` integers parted by commas, blanks before them skipped.
bool ReadNumbers(const char* p, const char* end, int* numbers, int count)
{
    for (int i = 0; i < count; ++i) {
        if (i > 0 && (p == end || *p++ != ','))
            return false;
        while (p != end && *p == ' ')
            ++p;
        const auto result = std::from_chars(p, end, numbers[i]);
        if (result.ec != std::errc())
            return false;
        p = result.ptr;
    }
    return true;
}

// Adds `delta` to a line or byte number; false when the result is none. Records may come from
// outside, with any number in them.
bool Shift(int& number, INT64 delta)
{
    const INT64 shifted = number + delta;
    number = static_cast<int>(std::clamp<INT64>(shifted, INT_MIN, INT_MAX));
    return number == shifted;
}

} // namespace

void ClearLineMarkerArray(CEditorLineMarkerArray& markers)
{
    for (int i = 0; i < markers.GetSize(); ++i)
        delete markers[i];
    markers.RemoveAll();
}

void CopyLineMarkerArray(const CEditorLineMarkerArray& src, CEditorLineMarkerArray& dst)
{
    ClearLineMarkerArray(dst);
    tlvn::GuardMemory([&] {
        for (int i = 0; i < src.GetSize(); ++i) {
            auto copy = std::make_unique<CEditorLineMarker>(*src[i]);
            dst.Add(copy.get());
            copy.release();
        }
    });
}

int IsSameLineMarkerArrayL(const CEditorLineMarkerArray& a, const CEditorLineMarkerArray& b)
{
    if (a.GetSize() != b.GetSize())
        return 0;
    for (int i = 0; i < a.GetSize(); ++i) {
        if (!tlvn::IsSameL(a[i]->start, b[i]->start) || !tlvn::IsSameL(a[i]->end, b[i]->end) ||
            a[i]->kind != b[i]->kind)
            return 0;
    }
    return 1;
}

void SerializeLineMarkerArray(const CEditorLineMarkerArray& markers, int lineBase, CString& out)
{
    tlvn::GuardMemory([&] {
        std::string text;
        for (int i = 0; i < markers.GetSize(); ++i) {
            const CEditorLineMarker& marker = *markers[i];
            int startLine = marker.start.line;
            int endLine = marker.end.line;
            Shift(startLine, -INT64{lineBase});
            Shift(endLine, -INT64{lineBase});
            text += i > 0 ? ", [" : "[";
            for (const int number :
                 {startLine, marker.start.logicalByte, endLine, marker.end.logicalByte})
                text += std::to_string(number) + ",";
            text += std::to_string(marker.kind) + "]";
        }
        out = text.c_str();
    });
}

int SerializeLineMarkerArray(const char* text, int lineBase, CEditorLineMarkerArray& markers)
{
    ClearLineMarkerArray(markers);
    if (text == nullptr)
        return 1;
    const char* const end = text + std::strlen(text);
    for (const char* piece = text; piece != end;) {
        const char* const close = std::find(piece, end, ']');
        const char* const open = std::find(piece, close, '[');
        int numbers[5];
        if (open == close || !ReadNumbers(open + 1, close, numbers, 5) ||
            !Shift(numbers[0], lineBase) || !Shift(numbers[2], lineBase))
            return 0;
        tlvn::GuardMemory([&] {
            auto marker = std::make_unique<CEditorLineMarker>(
                CTextPos(numbers[0], numbers[1]), CTextPos(numbers[2], numbers[3]), numbers[4]);
            markers.Add(marker.get());
            marker.release();
        });
        piece = close == end ? end : close + 1;
    }
    return 1;
}

namespace tlvn {

void MovePosition(CTextPos& pos, const TextChange& change)
{
    const CTextPos from(change.line1, change.byte1);
    const CTextPos to(change.line2, change.byte2);
    if (change.inserted) {
        if (pos.line > from.line) {
            Shift(pos.line, INT64{to.line} - from.line);
        } else if (pos.line == from.line && pos.logicalByte > from.logicalByte) {
            pos.line = to.line;
            Shift(pos.logicalByte, INT64{to.logicalByte} - from.logicalByte);
        }
    } else if (pos.line > to.line) {
        Shift(pos.line, INT64{from.line} - to.line);
    } else if (pos.line == to.line && pos.logicalByte > to.logicalByte) {
        pos.line = from.line;
        Shift(pos.logicalByte, INT64{from.logicalByte} - to.logicalByte);
    } else if (!IsBeforeL(pos, from)) {
        pos.line = from.line;
        pos.logicalByte = from.logicalByte;
    }
    pos.physical = 0;
    pos.byte = 0;
}

void MarkerHistory::SetUsedCount(int count)
{
    m_used = std::clamp(count, 0, GetCount());
}

void MarkerHistory::Clear()
{
    m_marks.clear();
    m_used = 0;
}

void MarkerHistory::Add(const CEditorLineMarker& mark)
{
    GuardMemory([&] {
        m_marks.resize(static_cast<std::size_t>(m_used));
        m_marks.push_back(mark);
        ++m_used;
    });
}

void MarkerHistory::Move(const TextChange& change)
{
    for (CEditorLineMarker& mark : m_marks) {
        MovePosition(mark.start, change);
        MovePosition(mark.end, change);
    }
}

// Goes through the text from start to start of a mark, with those that may still cover something
// in a heap, the last on top.
void MarkerHistory::Arrange(std::vector<CEditorLineMarker>& out) const
{
    const auto markAt = [this](int i) -> const CEditorLineMarker& {
        return m_marks[static_cast<std::size_t>(i)];
    };
    GuardMemory([&] {
        std::vector<int> order;
        for (int i = 0; i < m_used; ++i) {
            if (IsBeforeL(markAt(i).start, markAt(i).end))
                order.push_back(i);
        }
        std::sort(order.begin(), order.end(), [&](int a, int b) {
            return IsSameL(markAt(a).start, markAt(b).start)
                       ? a > b
                       : IsBeforeL(markAt(a).start, markAt(b).start);
        });
        std::priority_queue<int> open;
        CTextPos at;
        for (auto next = order.begin(); next != order.end() || !open.empty();) {
            if (open.empty()) {
                at = markAt(*next).start;
                open.push(*next++);
            }
            const int top = open.top();
            CTextPos stop = markAt(top).end;
            // Marks below the top one start unseen; one above it ends what shows of it.
            while (next != order.end() && IsBeforeL(markAt(*next).start, stop)) {
                if (*next > top)
                    stop = markAt(*next).start;
                open.push(*next++);
                if (open.top() != top)
                    break;
            }
            if (IsBeforeL(at, stop) && markAt(top).kind >= 0)
                out.emplace_back(CTextPos(at.line, at.logicalByte),
                                 CTextPos(stop.line, stop.logicalByte), markAt(top).kind);
            if (IsBeforeL(at, stop))
                at = stop;
            while (!open.empty() && !IsBeforeL(at, markAt(open.top()).end))
                open.pop();
        }
    });
}

} // namespace tlvn
