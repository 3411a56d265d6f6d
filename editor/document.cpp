#include "editor/document.h"

#include "charcode/charset.h"
#include "foundation/multibyte.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <cstring>

namespace tlvn {

namespace {

// Lines with fewer physical lines are wrapped as a whole after a change.
constexpr std::size_t kManyRows = 32;

} // namespace

Document::Document() : m_codeType(CT_ASCII) {}

void Document::Clear()
{
    m_lines.Clear();
    TextPool().Swap(m_pool);
    m_headerLines = 0;
    m_quotes.Clear();
}

void Document::SetCodeType(CodeType codeType)
{
    if (codeType == m_codeType)
        return;
    const bool wasWide = IsWide();
    const CodeType oldType = m_codeType;
    m_codeType = codeType;
    if (wasWide == IsWide()) {
        m_lines.ChangeAll([](CLLineData& line) { line.ForgetLinks(); });
        RewrapAll();
        return;
    }
    const UINT page = CharSetCode2CodePage(wasWide ? codeType : oldType);
    GuardMemory([&] {
        std::string narrow;
        WString wide;
        m_lines.ChangeAll([&](CLLineData& line) {
            const auto length = static_cast<std::size_t>(line.GetLength());
            if (wasWide) {
                wide.resize(length / 2);
                std::memcpy(wide.data(), line.GetText(), length);
                ConvertFromUtf16(page, wide, narrow);
                line.Replace(0, line.GetLength(), narrow.data(), static_cast<int>(narrow.size()));
            } else {
                ConvertToUtf16(page, std::string_view(line.GetText(), length), wide);
                line.Replace(0, line.GetLength(), reinterpret_cast<const char*>(wide.data()),
                             static_cast<int>(2 * wide.size()));
            }
        });
    });
    TextPool().Swap(m_pool);
    RewrapAll();
}

void Document::SetLayout(const LineLayout* layout)
{
    m_layout = layout;
    RewrapAll();
}

void Document::RewrapAll()
{
    const CApplyLocale locale(m_codeType);
    m_quotes.Clear();
    m_lines.ChangeAll([this](CLLineData& line) { WrapLine(line); });
}

const std::vector<CEditorLineRange>& Document::GetLinks(int line) const
{
    const CApplyLocale locale(m_codeType);
    return GetLine(line).GetLinks(m_codeType);
}

void Document::GetLineUnits(int line, int maxUnits, WString& out) const
{
    const CLLineData& text = GetLine(line);
    // No unit takes more than two bytes.
    const auto length =
        static_cast<std::size_t>(std::min<INT64>(text.GetLength(), INT64{maxUnits} * 2));
    if (!IsWide()) {
        ConvertToUtf16(CharSetCode2CodePage(m_codeType), std::string_view(text.GetText(), length),
                       out);
        return;
    }
    out.resize(length / 2);
    std::memcpy(out.data(), text.GetText(), out.size() * 2);
}

int Document::CheckedLength(const char* text, int length) const
{
    if (text == nullptr || length < 0)
        return 0;
    return IsWide() ? length / 2 * 2 : length;
}

void Document::WrapLine(CLLineData& line)
{
    SetQuoteEntry(line);
    GuardMemory([&] {
        m_rows.clear();
        if (m_layout != nullptr)
            m_layout->Wrap(line, m_rows);
        else
            m_rows.push_back({0, 0});
    });
    line.SetPhysicalLines(m_rows);
}

// After `removed` bytes at `byte` have been replaced by `inserted`: only the rows that look at
// them are cut again, up to where the old cuts are met.
void Document::WrapChangedLine(CLLineData& line, int byte, int removed, int inserted,
                               bool linksMatter)
{
    const auto rows = line.GetPhysicalLines();
    if (m_layout == nullptr || linksMatter || rows.size() < kManyRows) {
        WrapLine(line);
        return;
    }
    SetQuoteEntry(line);
    GuardMemory([&] {
        const int reach = m_layout->GetReach(line);
        std::size_t kept = 0;
        if (reach >= 0) {
            const auto changed =
                std::upper_bound(rows.begin(), rows.end(), byte - reach,
                                 [](int b, const PhysicalLine& row) { return b < row.start; });
            kept = static_cast<std::size_t>(changed - rows.begin());
            // A row ends where the next one starts; the last ends with the text.
            kept = std::min(kept, rows.size() - 1);
        }
        m_rows.assign(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(kept));
        OldBreaks old(rows, byte + removed, inserted - removed);
        m_layout->WrapFrom(line, rows[kept].start, m_rows, old);
        for (const PhysicalLine& row : old.GetRest())
            m_rows.push_back({row.start + old.GetMoved(), row.width});
    });
    line.SetPhysicalLines(m_rows);
}

void Document::SetQuoteEntry(CLLineData& line)
{
    m_quoteMarks.clear();
    if (m_layout != nullptr)
        GuardMemory([&] { m_layout->GetQuoteMarks(line, m_quoteMarks); });
    line.SetQuoteEntry(
        m_quotes.Enter(m_quoteMarks.data(), static_cast<int>(m_quoteMarks.size()), m_codeType));
}

} // namespace tlvn
