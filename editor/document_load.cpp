#include "charcode/charset.h"
#include "editor/document.h"
#include "editor/line_split.h"
#include "foundation/multibyte.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace tlvn {

void Document::Set(CodeType codeType, const char* text, int length)
{
    Clear();
    m_codeType = codeType;
    Append(text, length);
}

void Document::Append(const char* text, int length, std::string_view quoteMark)
{
    const CApplyLocale locale(m_codeType);
    length = CheckedLength(text, length);
    const auto add = [this](const char* start, int lineLength) {
        CLLineData line(start, lineLength);
        WrapLine(line);
        m_lines.Add(std::move(line));
    };
    if (quoteMark.empty()) {
        char* const copy = m_pool.Allocate(length);
        if (length > 0)
            std::memcpy(copy, text, static_cast<std::size_t>(length));
        SplitLines(copy, length, IsWide(), add);
        return;
    }
    INT64 total = 0;
    const auto mark = static_cast<int>(quoteMark.size());
    SplitLines(text, length, IsWide(),
               [&](const char*, int lineLength) { total += INT64{mark} + lineLength; });
    if (total > INT_MAX)
        AfxThrowMemoryException();
    char* copy = m_pool.Allocate(static_cast<int>(total));
    SplitLines(text, length, IsWide(), [&](const char* start, int lineLength) {
        std::memcpy(copy, quoteMark.data(), quoteMark.size());
        std::memcpy(copy + mark, start, static_cast<std::size_t>(lineLength));
        add(copy, mark + lineLength);
        copy += mark + lineLength;
    });
}

void Document::Append(const Document& other)
{
    if (other.GetLineCount() == 0)
        return;
    CBuffer text;
    other.CopyLines(0, TextForm(), text);
    const auto append = [this](const void* bytes, std::size_t length) {
        if (length > INT_MAX)
            AfxThrowMemoryException();
        Append(static_cast<const char*>(bytes), static_cast<int>(length));
    };
    const UINT from = CharSetCode2CodePage(other.m_codeType);
    const UINT to = CharSetCode2CodePage(m_codeType);
    if (IsWide() == other.IsWide() && (IsWide() || from == to))
        return append(text.GetBuffer(), static_cast<std::size_t>(text.GetLength()));

    GuardMemory([&] {
        WString wide;
        if (other.IsWide()) {
            wide.resize(static_cast<std::size_t>(text.GetLength()) / 2);
            if (!wide.empty())
                std::memcpy(wide.data(), text.GetBuffer(), 2 * wide.size());
        } else {
            const auto length = static_cast<std::size_t>(text.GetLength());
            ConvertToUtf16(from, std::string_view(text, length), wide);
        }
        if (IsWide())
            return append(wide.data(), 2 * wide.size());
        std::string narrow;
        ConvertFromUtf16(to, wide, narrow);
        append(narrow.data(), narrow.size());
    });
}

void Document::SetHeaderLineCount(int count)
{
    m_headerLines = std::clamp(count, 0, GetLineCount());
}

int Document::InsertHeader(const char* text, int length)
{
    const CApplyLocale locale(m_codeType);
    std::vector<CLLineData> lines;
    MakeLines(text, CheckedLength(text, length), lines);
    for (CLLineData& line : lines)
        WrapLine(line);
    const int count = static_cast<int>(lines.size());
    m_lines.Insert(0, lines);
    m_headerLines += count;
    return count;
}

int Document::RemoveHeader()
{
    const int count = m_headerLines;
    DropText(0, count);
    m_lines.Remove(0, count);
    m_headerLines = 0;
    CompactText();
    return count;
}

// The lines of a text, in the pool; not wrapped.
void Document::MakeLines(const char* text, int length, std::vector<CLLineData>& lines)
{
    char* const copy = m_pool.Allocate(length);
    if (length > 0)
        std::memcpy(copy, text, static_cast<std::size_t>(length));
    GuardMemory([&] {
        SplitLines(copy, length, IsWide(), [&](const char* start, int lineLength) {
            lines.emplace_back(start, lineLength);
        });
    });
}

// Counts the texts of the lines [from, to) as unused.
void Document::DropText(int from, int to)
{
    INT64 unused = 0;
    m_lines.ForEach(from, to, [&](const CLLineData& line) {
        if (line.IsShared())
            unused += line.GetLength();
    });
    m_pool.AddUnused(unused);
}

// Moves the texts that lines still share to a new pool once they are the smaller part of this
// one: a document that is filled and emptied again and again does not grow.
void Document::CompactText()
{
    constexpr INT64 kWorthwhile = 1 << 20;
    const INT64 used = m_pool.GetSize() - m_pool.GetUnused();
    if (m_pool.GetUnused() < used + GetLineCount() + kWorthwhile)
        return;
    TextPool pool;
    m_lines.ChangeAll([&](CLLineData& line) {
        if (!line.IsShared())
            return;
        char* const copy = pool.Allocate(line.GetLength());
        std::memcpy(copy, line.GetText(), static_cast<std::size_t>(line.GetLength()));
        line.MoveText(copy);
    });
    m_pool.Swap(pool);
}

} // namespace tlvn
