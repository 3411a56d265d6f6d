#include "viewer/text_search.h"

#include "platform/nls.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace tlvn {

namespace {

constexpr char kOperators[] = "{}()[]|*+?!\\.$^-";

bool IsOperator(WCHAR c)
{
    return c != 0 && c < 0x80 && std::strchr(kOperators, static_cast<char>(c)) != nullptr;
}

WString Quote(const WString& text)
{
    WString quoted;
    for (const WCHAR c : text) {
        if (IsOperator(c))
            quoted += TW('\\');
        quoted += c;
    }
    return quoted;
}

CTextPos MakePos(const Document& document, int line, int byte)
{
    CTextPos pos(line, byte);
    document.L2PByteIndex(pos);
    return pos;
}

} // namespace

bool TextSearch::SetPattern(const std::string& utf8, const SearchOptions& options,
                            std::string& error)
{
    WString pattern = Utf8ToUtf16(utf8);
    if (options.plain)
        pattern = Quote(pattern);
    m_anchored = !pattern.empty() && pattern.front() == TW('^');
    CStringA message;
    if (m_regexp.ParseRegExp(reinterpret_cast<const char*>(pattern.c_str()), CT_UNICODE,
                             options.matchCase, message) != 0)
        return true;
    error = Utf16ToUtf8(WidenText(message.GetString()));
    return false;
}

bool TextSearch::FindAll(const Document& document, CEditorTextViewRangeArray& hits)
{
    ClearTextViewRangeArray(hits);
    CStringA message;
    if (m_regexp.IsParsedOK(document.GetCodeType(), message) == 0)
        return false;
    for (int line = 0; line < document.GetLineCount(); ++line)
        if (!FindInLine(document, line, hits))
            return false;
    return true;
}

bool TextSearch::FindInLine(const Document& document, int line, CEditorTextViewRangeArray& hits)
{
    const CLLineData& data = document.GetLine(line);
    const int length = data.GetLength();
    if (length == 0)
        return true;
    m_line.Set(data.GetText(), length);
    m_line.Add("\0", 2);
    const char* const text = m_line;
    for (int from = 0; from < length;) {
        const char* start = nullptr;
        const char* end = nullptr;
        if (m_regexp.Match(text + from, document.GetCodeType(), &start, &end) == 0)
            return true;
        const int first = static_cast<int>(start - text);
        // "$" matches the terminator, too.
        const int last = std::min(static_cast<int>(end - text), length);
        if (last > first) {
            if (hits.GetSize() >= kMaxHits)
                return false;
            auto hit = std::make_unique<CEditorTextViewRange>(MakePos(document, line, first),
                                                              MakePos(document, line, last));
            hits.Add(hit.get());
            hit.release();
        }
        if (m_anchored)
            return true;
        CTextPos next = MakePos(document, line, first);
        document.ToNextChar(next);
        from = last > first ? last : next.line == line ? next.logicalByte : length;
    }
    return true;
}

int FindNextHit(const CEditorTextViewRangeArray& hits, const CTextPos& start, const CTextPos& end,
                bool backward)
{
    const int count = static_cast<int>(hits.GetSize());
    if (count == 0)
        return -1;
    if (!backward) {
        for (int i = 0; i < count; ++i)
            if (!IsBeforeL(hits[i]->start, end))
                return i;
        return 0;
    }
    for (int i = count - 1; i >= 0; --i)
        if (!IsBeforeL(start, hits[i]->end))
            return i;
    return count - 1;
}

} // namespace tlvn
