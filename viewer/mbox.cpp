#include "viewer/mbox.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr std::string_view kFrom = "From ";

} // namespace

void MboxScanner::BeginLine()
{
    m_lineOpen = true;
    m_separator = m_afterEmpty;
    m_onlyReturn = true;
    m_lineBytes = 0;
    m_lineStart = m_pos;
}

void MboxScanner::Feed(std::string_view piece, std::vector<MboxMail>& found)
{
    while (!piece.empty()) {
        if (!m_lineOpen)
            BeginLine();
        const std::size_t lineEnd = piece.find('\n');
        const std::string_view part = piece.substr(0, lineEnd);
        // Only the first bytes of a line tell what it is.
        for (std::size_t i = 0; i < part.size() && m_lineBytes + i < kFrom.size(); ++i) {
            m_separator = m_separator && part[i] == kFrom[m_lineBytes + i];
            m_onlyReturn = m_onlyReturn && m_lineBytes + i == 0 && part[i] == '\r';
        }
        m_lineBytes += part.size();

        const std::string_view taken = piece.substr(0, part.size() + (lineEnd != piece.npos));
        if (m_inMail && m_mail.head.size() < kHeadBytes)
            m_mail.head += taken.substr(0, kHeadBytes - m_mail.head.size());
        m_pos += static_cast<INT64>(taken.size());
        piece.remove_prefix(taken.size());
        if (lineEnd != piece.npos)
            EndLine(m_pos, found);
    }
}

void MboxScanner::EndLine(INT64 next, std::vector<MboxMail>& found)
{
    const bool separator = m_separator && m_lineBytes >= kFrom.size();
    const bool empty = m_onlyReturn && m_lineBytes <= 1;
    if (separator) {
        CloseMail(std::max(m_emptyStart, m_mail.start), found);
        m_inMail = true;
        m_mail.start = next;
        m_mail.head.clear();
    } else if (empty) {
        m_emptyStart = m_lineStart;
    }
    // An empty line right behind the "From " line ends a header without fields; a "From " line
    // may follow it like any other.
    m_afterEmpty = empty;
    m_lineOpen = false;
}

void MboxScanner::CloseMail(INT64 end, std::vector<MboxMail>& found)
{
    if (!m_inMail)
        return;
    m_mail.size = end - m_mail.start;
    if (static_cast<INT64>(m_mail.head.size()) > m_mail.size)
        m_mail.head.resize(static_cast<std::size_t>(m_mail.size));
    found.push_back(std::move(m_mail));
    m_mail = {};
    m_inMail = false;
}

void MboxScanner::Finish(std::vector<MboxMail>& found)
{
    if (m_lineOpen)
        EndLine(m_pos, found);
    CloseMail(m_afterEmpty ? std::max(m_emptyStart, m_mail.start) : m_pos, found);
}

bool IsMboxBeginning(std::string_view head)
{
    const std::size_t start = head.find_first_not_of("\r\n");
    return start != head.npos && head.substr(start).starts_with(kFrom);
}

void UnescapeMboxMail(std::string& mail)
{
    std::size_t to = 0;
    bool lineStart = true;
    for (std::size_t from = 0; from < mail.size(); ++from) {
        if (lineStart && mail[from] == '>') {
            const std::size_t text = std::min(mail.find_first_not_of('>', from), mail.size());
            const bool escaped = mail.compare(text, kFrom.size(), kFrom) == 0;
            const std::size_t kept = text - from - (escaped ? 1 : 0);
            mail.replace(to, kept, kept, '>');
            to += kept;
            from = text;
            if (from == mail.size())
                break;
        }
        lineStart = mail[from] == '\n';
        mail[to++] = mail[from];
    }
    mail.resize(to);
}

} // namespace tlvn
