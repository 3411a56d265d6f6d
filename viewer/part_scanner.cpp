#include "viewer/part_scanner.h"

#include "platform/multibyte.h"
#include "viewer/header_text.h"

#include <algorithm>
#include <unordered_map>

namespace tlvn {

namespace {

constexpr std::size_t kMaxFieldName = 1000;
constexpr std::size_t kMaxBoundary = 1000;
constexpr std::string_view kDashes = "--";

bool IsNameCharacter(char c)
{
    return c > ' ' && c < '\x7F' && c != ':';
}

class PartScanner {
public:
    explicit PartScanner(std::string_view bytes) : m_bytes(bytes) {}

    std::vector<MailPart> Scan()
    {
        int parent = -1;
        do
            parent = ScanPart(parent);
        while (parent >= 0);
        return std::move(m_parts);
    }

private:
    // A multipart whose end has not been reached.
    struct OpenMultipart {
        int part;
        std::string boundary;
        int shadowed; // level of the outer multipart with the same boundary, or -1
    };

    // A boundary line, or the end of the mail (level -1).
    struct Delimiter {
        int level = -1;
        bool closing = false;
        std::size_t contentEnd = 0; // of what stands before it
    };

    // Reads the part at the position and goes on to the start of the next one. Returns the
    // index of the multipart that one stands in, or -1 when there is none.
    int ScanPart(int parent)
    {
        const int index = static_cast<int>(m_parts.size());
        m_parts.emplace_back();
        m_parts.back().parent = parent;
        ReadHeader(m_parts.back());
        OpenIfMultipart(index);

        const std::size_t bodyStart = m_pos;
        Delimiter delimiter = FindDelimiter();
        MailPart& part = m_parts.back();
        if (part.container) {
            // Without a part of its own it is text.
            const int level = static_cast<int>(m_open.size()) - 1;
            part.container = delimiter.level == level && !delimiter.closing;
        }
        if (!part.container)
            part.body =
                m_bytes.substr(bodyStart, std::max(bodyStart, delimiter.contentEnd) - bodyStart);

        while (delimiter.level >= 0) {
            CloseAbove(delimiter.level);
            if (!delimiter.closing && m_parts.size() < kMaxParts)
                return m_open.back().part;
            if (delimiter.closing)
                CloseAbove(delimiter.level - 1);
            delimiter = FindDelimiter();
        }
        return -1;
    }

    std::string_view LineAt(std::size_t pos) const
    {
        const std::size_t end = m_bytes.find('\n', pos);
        return m_bytes.substr(pos, end == m_bytes.npos ? m_bytes.npos : end + 1 - pos);
    }

    void ReadHeader(MailPart& part)
    {
        if (m_pos == 0)
            SkipEnvelopeLine();
        bool inField = false;
        bool kept = false;
        while (m_pos < m_bytes.size()) {
            const std::string_view line = LineAt(m_pos);
            const std::string_view content = WithoutLineEnd(line);
            if (content.empty()) {
                m_pos += line.size();
                break;
            }
            Delimiter delimiter;
            if (content.starts_with(kDashes) && MatchBoundary(content.substr(2), delimiter))
                break;
            std::size_t valueStart = 0;
            const std::size_t nameLength = FieldNameLength(content, valueStart);
            const bool continuation = inField && (content[0] == ' ' || content[0] == '\t');
            if (nameLength == 0 && !continuation)
                break;
            if (!continuation) {
                inField = true;
                kept = m_fieldCount < kMaxFields;
                m_valueStart = m_pos + valueStart;
                if (kept) {
                    ++m_fieldCount;
                    part.fields.push_back({content.substr(0, nameLength), {}});
                }
            }
            if (kept) {
                part.fields.back().value =
                    m_bytes.substr(m_valueStart, m_pos + content.size() - m_valueStart);
            }
            m_pos += line.size();
        }
        ReadContentFields(part);
    }

    // The line that mail folders put before a mail.
    void SkipEnvelopeLine()
    {
        if (m_bytes.starts_with("From ") || m_bytes.starts_with(">From "))
            m_pos = LineAt(0).size();
    }

    static std::string_view ValueOf(const MailPart& part, std::string_view name)
    {
        const MailField* const field = FindField(part.fields, name);
        return field != nullptr ? field->value.substr(0, kMaxValueBytes) : std::string_view();
    }

    void ReadContentFields(MailPart& part)
    {
        const ParameterList type(ValueOf(part, "content-type"));
        const ParameterList disposition(ValueOf(part, "content-disposition"));
        part.type = type.GetMain();
        if (part.type.find('/') == std::string::npos)
            part.type = "text/plain";
        part.charset = type.Find("charset");
        part.encoding = ParameterList(ValueOf(part, "content-transfer-encoding")).GetMain();
        part.attached = disposition.GetMain() == "attachment";
        part.fileName = disposition.GetText("filename");
        if (part.fileName.empty())
            part.fileName = type.GetText("name");
        m_boundary = type.Find("boundary");
    }

    // Opens the part just read when its boundary can be looked for.
    void OpenIfMultipart(int index)
    {
        MailPart& part = m_parts.back();
        while (m_boundary.ends_with(' '))
            m_boundary.pop_back();
        if (!part.type.starts_with("multipart/") || m_boundary.empty() ||
            m_boundary.size() > kMaxBoundary || m_open.size() >= kMaxDepth)
            return;
        part.container = true;
        const auto [entry, fresh] = m_levels.try_emplace(m_boundary, -1);
        const int shadowed = entry->second;
        entry->second = static_cast<int>(m_open.size());
        m_open.push_back({index, m_boundary, shadowed});
    }

    // Closes the multiparts of a higher level.
    void CloseAbove(int level)
    {
        while (static_cast<int>(m_open.size()) > level + 1) {
            const OpenMultipart& last = m_open.back();
            if (last.shadowed >= 0)
                m_levels[last.boundary] = last.shadowed;
            else
                m_levels.erase(last.boundary);
            m_open.pop_back();
        }
    }

    // Whether `text`, what stands behind the dashes of a line, is an open boundary.
    bool MatchBoundary(std::string_view text, Delimiter& delimiter)
    {
        while (!text.empty() && IsSpace(text.back()))
            text.remove_suffix(1);
        if (text.empty() || text.size() > kMaxBoundary + kDashes.size())
            return false;
        auto found = m_levels.find(std::string(text));
        delimiter.closing = false;
        if (found == m_levels.end() && text.ends_with(kDashes)) {
            text.remove_suffix(kDashes.size());
            found = m_levels.find(std::string(text));
            delimiter.closing = true;
        }
        if (found == m_levels.end())
            return false;
        delimiter.level = found->second;
        return true;
    }

    // The next boundary line at or behind the position, which is at the start of a line; the
    // position is then behind it.
    Delimiter FindDelimiter()
    {
        Delimiter delimiter;
        delimiter.contentEnd = m_bytes.size();
        if (m_open.empty()) {
            m_pos = m_bytes.size();
            return delimiter;
        }
        while (m_pos < m_bytes.size()) {
            if (m_bytes.substr(m_pos, kDashes.size()) != kDashes) {
                const std::size_t next = m_bytes.find("\n--", m_pos);
                m_pos = next == m_bytes.npos ? m_bytes.size() : next + 1;
                continue;
            }
            const std::string_view line = LineAt(m_pos);
            if (MatchBoundary(WithoutLineEnd(line).substr(kDashes.size()), delimiter)) {
                // The line end before a boundary belongs to the boundary.
                delimiter.contentEnd = WithoutLineEnd(m_bytes.substr(0, m_pos)).size();
                m_pos += line.size();
                return delimiter;
            }
            m_pos += line.size();
        }
        return delimiter;
    }

    std::string_view m_bytes;
    std::size_t m_pos = 0;
    std::size_t m_valueStart = 0;
    std::size_t m_fieldCount = 0;
    std::string m_boundary; // of the part just read
    std::vector<MailPart> m_parts;
    std::vector<OpenMultipart> m_open;
    std::unordered_map<std::string, int> m_levels; // innermost level of each open boundary
};

} // namespace

std::string_view WithoutLineEnd(std::string_view line)
{
    if (line.ends_with('\n'))
        line.remove_suffix(1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::size_t FieldNameLength(std::string_view line, std::size_t& valueStart)
{
    std::size_t length = 0;
    while (length < line.size() && length < kMaxFieldName && IsNameCharacter(line[length]))
        ++length;
    std::size_t colon = length;
    while (colon < line.size() && (line[colon] == ' ' || line[colon] == '\t'))
        ++colon;
    if (length == 0 || colon >= line.size() || line[colon] != ':')
        return 0;
    valueStart = colon + 1;
    return length;
}

std::vector<MailPart> ScanParts(std::string_view bytes)
{
    return PartScanner(bytes).Scan();
}

} // namespace tlvn
