#include "editor/line_prefix.h"

namespace tlvn {

namespace {

CodeSet SetOf(const TextCode& code, const CBuffer& list)
{
    return CodeSet(code, list, list.GetLength());
}

} // namespace

QuoteRules::QuoteRules(const CEditorMetrics& metrics)
    : m_code(metrics.GetCodeType()), m_quotes(SetOf(m_code, metrics.GetQuoteListEdit())),
      m_indents(SetOf(m_code, metrics.GetIndentListEdit())), m_most(metrics.GetQuoteLen())
{}

int QuoteRules::GetPrefixLength(const char* text, int length, std::string* marks) const
{
    return m_code.Visit([&](auto reader) {
        const char* const end = text + length;
        const char* prefixEnd = text;
        for (int count = 0; count < m_most && prefixEnd < end; ++count) {
            const char* mark = prefixEnd;
            const char* next = mark;
            unsigned c = reader.Next(next, end);
            if (count > 0 && next < end && !m_quotes.Has(c) && m_indents.Has(c)) {
                mark = next;
                c = reader.Next(next, end);
            }
            if (!m_quotes.Has(c))
                break;
            if (marks != nullptr)
                marks->append(mark, next);
            prefixEnd = next;
        }
        return static_cast<int>(prefixEnd - text);
    });
}

int GetIndentLength(const CEditorMetrics& metrics, const char* text, int length)
{
    if (text == nullptr)
        return 0;
    const TextCode code(metrics.GetCodeType());
    return CountRun(code, SetOf(code, metrics.GetIndentListEdit()), text, length);
}

int IsIndentTextAll(const CEditorMetrics& metrics, const char* text, int length)
{
    return length > 0 && GetIndentLength(metrics, text, length) == length ? 1 : 0;
}

int GetQuoteLength(const CEditorMetrics& metrics, const char* text, int length)
{
    const int prefix = QuoteRules(metrics).GetPrefixLength(text, length);
    if (prefix == 0)
        return 0;
    return prefix + GetIndentLength(metrics, text + prefix, length - prefix);
}

} // namespace tlvn
