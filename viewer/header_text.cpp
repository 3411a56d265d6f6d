#include "viewer/header_text.h"

#include "foundation/buffer.h"
#include "mailtext/hex_digit.h"
#include "mailtext/transfer_encoding.h"
#include "platform/multibyte.h"
#include "viewer/text_code.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr std::size_t kMaxCharsetName = 64;

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

std::string_view TrimBlanks(std::string_view text)
{
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string LowerAscii(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerAscii);
    return lower;
}

bool IsPlainAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\x1B'; });
}

// Text outside of encoded words: ASCII, or raw bytes of an unnamed code.
void AppendLiteral(std::string_view text, std::string& out)
{
    if (IsPlainAscii(text)) {
        out += text;
        return;
    }
    std::string utf8;
    ConvertTextToUtf8(ChooseTextCode({}, text).type, text, utf8);
    out += utf8;
}

struct EncodedWord {
    std::string_view charset; // without the language of RFC 2231
    char encoding = 0;        // 'b' or 'q'
    std::string_view text;
    std::size_t length = 0; // of the whole word
};

// Finds the parts of encoded words. Remembers when no word can end any more, so that a value
// full of beginnings is not searched to its end for each of them.
class WordScanner {
public:
    explicit WordScanner(std::string_view value) : m_value(value) {}

    // True when a word starts at `start`.
    bool Scan(std::size_t start, EncodedWord& word)
    {
        if (m_value.substr(start, 2) != "=?")
            return false;
        const std::size_t charset = start + 2;
        const std::size_t question = m_value.substr(charset, kMaxCharsetName + 1).find('?');
        if (question == m_value.npos || question == 0)
            return false;
        word.charset = m_value.substr(charset, question);
        if (std::any_of(word.charset.begin(), word.charset.end(), IsSpace))
            return false;
        word.charset = word.charset.substr(0, word.charset.find('*'));
        const std::size_t encoding = charset + question + 1;
        if (encoding + 1 >= m_value.size() || m_value[encoding + 1] != '?')
            return false;
        word.encoding = ToLowerAscii(m_value[encoding]);
        if (word.encoding != 'b' && word.encoding != 'q')
            return false;

        const std::size_t text = encoding + 2;
        if (text >= m_noEndFrom)
            return false;
        const std::size_t end = m_value.find("?=", text);
        if (end == m_value.npos) {
            m_noEndFrom = text;
            return false;
        }
        word.text = m_value.substr(text, end - text);
        word.length = end + 2 - start;
        return true;
    }

private:
    std::string_view m_value;
    std::size_t m_noEndFrom = std::string_view::npos;
};

void AppendWordBytes(const EncodedWord& word, std::string& bytes)
{
    std::string text;
    if (word.encoding == 'b') {
        text = word.text;
    } else {
        // A blank at the end would be taken for padding, so it goes in its escaped form.
        for (const char c : word.text) {
            if (c == '_' || c == ' ')
                text += "=20";
            else
                text += c;
        }
    }
    const char encoding[] = {word.encoding, '\0'};
    CBuffer decoded;
    if (DecodeHeaderText(encoding, text.c_str(), decoded) != 0 && decoded.GetLength() > 0)
        bytes.append(decoded.GetBuffer(), static_cast<std::size_t>(decoded.GetLength()));
}

// Words of one charset that follow each other: their bytes, and where they are written.
struct WordRun {
    std::string charset; // lower case
    std::string bytes;
    std::size_t begin = 0;
    std::size_t end = 0;
};

void AppendWordRun(const WordRun& run, std::string_view written, std::string& out)
{
    const TextCode code = ChooseTextCode(run.charset, run.bytes);
    std::string utf8;
    const bool exact = ConvertTextToUtf8(code.type, run.bytes, utf8);
    if (!exact && !code.labelled)
        AppendLiteral(written, out);
    else
        out += utf8;
}

} // namespace

std::string UnfoldValue(std::string_view value)
{
    value = TrimBlanks(value);
    std::string unfolded;
    unfolded.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\r' && value[i] != '\n') {
            unfolded += value[i];
            continue;
        }
        while (i + 1 < value.size() && IsSpace(value[i + 1]))
            ++i;
        unfolded += ' ';
    }
    return unfolded;
}

std::string DecodeHeaderValue(std::string_view value)
{
    const std::string text = UnfoldValue(value);
    const std::string_view view = text;
    std::string out;
    WordScanner scanner(view);
    WordRun run;
    bool inRun = false;
    std::size_t literal = 0; // start of the text not yet written

    const auto finishRun = [&] {
        if (inRun)
            AppendWordRun(run, view.substr(run.begin, run.end - run.begin), out);
        inRun = false;
    };
    for (std::size_t i = view.find("=?"); i != view.npos;) {
        EncodedWord word;
        if (!scanner.Scan(i, word)) {
            i = view.find("=?", i + 1);
            continue;
        }
        const std::string_view between = view.substr(literal, i - literal);
        const bool adjacent = inRun && std::all_of(between.begin(), between.end(), IsBlank);
        const std::string charset = LowerAscii(word.charset);
        if (!adjacent || charset != run.charset) {
            finishRun();
            if (!adjacent)
                AppendLiteral(between, out);
            run = {charset, {}, i, i};
            inRun = true;
        }
        AppendWordBytes(word, run.bytes);
        run.end = i + word.length;
        literal = run.end;
        i = view.find("=?", literal);
    }
    finishRun();
    AppendLiteral(view.substr(literal), out);
    return out;
}

namespace {

// Reads a structured value from its front.
class ParameterScanner {
public:
    explicit ParameterScanner(std::string_view text) : m_text(text) {}

    bool AtEnd() const { return m_pos >= m_text.size(); }

    // Up to one of `stops` (not taken) or the end, without comments and outer white space.
    std::string ReadPlain(std::string_view stops)
    {
        std::string plain;
        while (!AtEnd() && stops.find(m_text[m_pos]) == stops.npos) {
            if (m_text[m_pos] == '(' && (plain.empty() || IsSpace(plain.back())))
                SkipComment();
            else
                plain += m_text[m_pos++];
        }
        return std::string(TrimBlanks(plain));
    }

    std::string ReadValue()
    {
        while (!AtEnd() && IsSpace(m_text[m_pos]))
            ++m_pos;
        if (AtEnd() || m_text[m_pos] != '"')
            return ReadPlain(";");
        ++m_pos;
        std::string value;
        while (!AtEnd() && m_text[m_pos] != '"') {
            // Only what needs it is escaped: other backslashes are Shift_JIS trail bytes.
            const char next = m_pos + 1 < m_text.size() ? m_text[m_pos + 1] : '\0';
            if (m_text[m_pos] == '\\' && (next == '"' || next == '\\'))
                ++m_pos;
            value += m_text[m_pos++];
        }
        ReadPlain(";");
        return value;
    }

    bool Skip(char c)
    {
        if (AtEnd() || m_text[m_pos] != c)
            return false;
        ++m_pos;
        return true;
    }

private:
    void SkipComment()
    {
        int depth = 0;
        for (; !AtEnd(); ++m_pos) {
            if (m_text[m_pos] == '\\')
                ++m_pos;
            else if (m_text[m_pos] == '(')
                ++depth;
            else if (m_text[m_pos] == ')' && --depth == 0) {
                ++m_pos;
                return;
            }
        }
    }

    std::string_view m_text;
    std::size_t m_pos = 0;
};

// charset'language'text, of which the first two are taken off the front of `value`.
std::string TakeCharset(std::string_view& value)
{
    const std::size_t first = value.find('\'');
    if (first == value.npos)
        return {};
    const std::size_t second = value.find('\'', first + 1);
    if (second == value.npos)
        return {};
    const std::string charset(value.substr(0, first));
    value.remove_prefix(second + 1);
    return charset;
}

void AppendPercentDecoded(std::string_view text, std::string& bytes)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 &&
                            HexValue(text[i + 2]) >= 0;
        if (!escape) {
            bytes += text[i];
            continue;
        }
        bytes += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
        i += 2;
    }
}

} // namespace

ParameterList::ParameterList(std::string_view value)
{
    const std::string text = UnfoldValue(value);
    ParameterScanner scanner(text);
    m_main = LowerAscii(scanner.ReadPlain(";"));
    while (scanner.Skip(';')) {
        std::string name = LowerAscii(scanner.ReadPlain("=;"));
        if (scanner.Skip('='))
            m_parameters.emplace_back(std::move(name), scanner.ReadValue());
    }
    // Of several with one name the first counts, so their order stays.
    std::stable_sort(m_parameters.begin(), m_parameters.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
}

std::string_view ParameterList::Find(std::string_view name) const
{
    const auto found =
        std::lower_bound(m_parameters.begin(), m_parameters.end(), name,
                         [](const auto& a, std::string_view b) { return a.first < b; });
    if (found == m_parameters.end() || found->first != name)
        return {};
    return found->second;
}

bool ParameterList::FindExtended(std::string_view name, std::string& text) const
{
    const std::string base = std::string(name) + '*';
    std::string bytes;
    std::string charset;
    if (std::string_view whole = Find(base); !whole.empty()) {
        charset = TakeCharset(whole);
        AppendPercentDecoded(whole, bytes);
    }
    for (int section = 0; bytes.empty() || section > 0; ++section) {
        const std::string key = base + std::to_string(section);
        std::string_view value = Find(key + '*');
        if (!value.empty()) {
            if (section == 0)
                charset = TakeCharset(value);
            AppendPercentDecoded(value, bytes);
        } else if (value = Find(key); !value.empty()) {
            bytes += value;
        } else {
            break;
        }
    }
    if (bytes.empty())
        return false;
    ConvertTextToUtf8(ChooseTextCode(charset, bytes).type, bytes, text);
    return true;
}

std::string ParameterList::GetText(std::string_view name) const
{
    std::string text;
    if (FindExtended(name, text))
        return text;
    return DecodeHeaderValue(Find(name));
}

} // namespace tlvn
