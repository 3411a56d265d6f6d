#include "editor/document.h"

#include "charcode/charset.h"
#include "platform/multibyte.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tlvn {

namespace {

// Cuts text into lines; Unit is char or WCHAR, `isPair` tells a double-byte character.
template <class Unit, class IsPair>
void Split(const char* text, int length, IsPair isPair, std::vector<CBuffer>& lines)
{
    constexpr int size = sizeof(Unit);
    const auto unitAt = [&](int i) {
        Unit unit;
        std::memcpy(&unit, text + i, sizeof unit);
        return unit;
    };
    int start = 0;
    int i = 0;
    const auto endLine = [&](int terminator) {
        lines.emplace_back().Set(text + start, i - start);
        i += terminator;
        start = i;
    };
    while (i + size <= length) {
        const Unit unit = unitAt(i);
        if (unit == '\n')
            endLine(size);
        else if (unit == '\r')
            endLine(i + 2 * size <= length && unitAt(i + size) == '\n' ? 2 * size : size);
        else
            i += isPair(i) ? 2 * size : size;
    }
    i = length;
    endLine(0);
}

} // namespace

Document::Document() : m_codeType(CT_ASCII), m_lines(1), m_headerLines(0) {}

void Document::Set(CodeType codeType, const char* text, int length)
{
    m_codeType = codeType;
    m_headerLines = 0;
    m_lines = SplitLines(text, length);
}

void Document::SetHeader(const char* text, int length)
{
    std::vector<CBuffer> lines = SplitLines(text, length);
    const int count = static_cast<int>(lines.size());
    lines.insert(lines.end(), std::make_move_iterator(m_lines.begin() + m_headerLines),
                 std::make_move_iterator(m_lines.end()));
    m_lines = std::move(lines);
    m_headerLines = count;
}

bool Document::IsWide() const
{
    return IsCodeTypeUnicode(m_codeType) != 0;
}

void Document::GetLineUnits(int line, int maxUnits, WString& out) const
{
    const CBuffer& text = GetLine(line);
    // No unit takes more than two bytes.
    const auto length =
        static_cast<std::size_t>(std::min<INT64>(text.GetLength(), INT64{maxUnits} * 2));
    if (!IsWide()) {
        ConvertToUtf16(CharSetCode2CodePage(m_codeType), std::string_view(text, length), out);
        return;
    }
    out.resize(length / 2);
    if (!out.empty())
        std::memcpy(out.data(), text.GetBuffer(), out.size() * 2);
}

int Document::CountColumns(int line) const
{
    const CBuffer& text = GetLine(line);
    if (!IsWide())
        return text.GetLength();
    int columns = 0;
    for (int i = 0; i + 2 <= text.GetLength(); i += 2) {
        WCHAR unit;
        std::memcpy(&unit, text.GetBuffer() + i, sizeof unit);
        columns += unit < 0x100 || (unit >= 0xFF61 && unit <= 0xFFDC) ? 1 : 2;
    }
    return columns;
}

std::vector<CBuffer> Document::SplitLines(const char* text, int length) const
{
    std::vector<CBuffer> lines;
    if (text == nullptr || length < 0)
        length = 0;
    if (IsWide())
        Split<WCHAR>(
            text, length, [](int) { return false; }, lines);
    else
        Split<char>(
            text, length, [&](int i) { return IsDoubleByte(text + i, text + length); }, lines);
    return lines;
}

} // namespace tlvn
