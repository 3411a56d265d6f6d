#include "viewer/header_encode.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "mailtext/base64.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr std::size_t kMaxWord = 75;  // characters of an encoded word
constexpr std::size_t kWordFrame = 7; // of them for "=?", "?B?" and "?="
constexpr std::size_t kMaxLine = 76;
// A word that is longer could not be folded into lines that all programs take.
constexpr std::size_t kMaxPlainWord = 900;
// Nor could a longer run of blanks: no line may hold blanks only.
constexpr std::size_t kMaxBlanks = 80;
// Of a line the first word leaves room for so many characters in front of it.
constexpr std::size_t kMaxColumn = 40;

std::string_view View(const CBuffer& buffer)
{
    return {buffer, static_cast<std::size_t>(buffer.GetLength())};
}

bool Convert(CodeType from, std::string_view text, CodeType to, CBuffer& out)
{
    return ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, 0) ==
           0;
}

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// True when the text comes back from the type, and needs no bytes that it does not have.
bool CanHold(CodeType type, std::string_view utf8)
{
    CBuffer converted;
    CBuffer back;
    return CharSetCode2Name(type) != nullptr && Convert(CT_UTF8, utf8, type, converted) &&
           (type != CT_JIS || IsAscii(View(converted))) &&
           Convert(type, View(converted), CT_UTF8, back) && View(back) == utf8;
}

CodeType ChooseWordCode(std::string_view utf8, CodeType preferred)
{
    // UTF-7 is no code for headers; ASCII stands for what Japanese mail is sent in.
    const CodeType wanted = preferred == CT_ASCII ? CT_JIS : preferred;
    return wanted != CT_UTF7 && CanHold(wanted, utf8) ? wanted : CT_UTF8;
}

std::string OneLine(std::string_view utf8)
{
    std::string line(utf8);
    for (char& c : line) {
        if (c == '\r' || c == '\n' || c == '\t')
            c = ' ';
    }
    const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
    const std::size_t end = line.find_last_not_of(' ');
    return end == line.npos ? std::string() : line.substr(start, end + 1 - start);
}

bool IsPlain(std::string_view word)
{
    const bool printable =
        std::all_of(word.begin(), word.end(), [](char c) { return c >= ' ' && c <= '~'; });
    return printable && word.size() <= kMaxPlainWord && word.find("=?") == word.npos;
}

std::size_t CharacterLength(std::string_view utf8, std::size_t pos)
{
    std::size_t length = 1;
    while (pos + length < utf8.size() &&
           (static_cast<unsigned char>(utf8[pos + length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

// The bytes of the first `count` characters.
std::string_view TakeCharacters(std::string_view utf8, std::size_t count)
{
    std::size_t length = 0;
    for (; count > 0 && length < utf8.size(); --count)
        length += CharacterLength(utf8, length);
    return utf8.substr(0, length);
}

// How many bytes an encoded word holds that shares its line with so many characters before it.
std::size_t WordRoom(const std::string& charset, std::size_t column)
{
    const std::size_t word = std::min(kMaxWord, kMaxLine - std::min(column, kMaxColumn));
    return (word - kWordFrame - charset.size()) / 4 * 3;
}

// The text in encoded words, parted by blanks.
void AppendEncodedWords(std::string_view utf8, CodeType type, std::size_t column, std::string& out)
{
    const std::string charset = CharSetCode2Name(type);
    // Behind a blank the word may go to a line of its own; only the first one has none.
    std::size_t room = WordRoom(charset, out.empty() ? column : 0);
    CBuffer bytes;
    CBuffer encoded;
    while (!utf8.empty()) {
        // No character takes less than a byte; the first guess shrinks until its code fits.
        std::size_t count = room;
        std::string_view piece;
        for (;;) {
            piece = TakeCharacters(utf8, count);
            Convert(CT_UTF8, piece, type, bytes);
            const auto size = static_cast<std::size_t>(bytes.GetLength());
            if (size <= room || count == 1)
                break;
            count = std::clamp(count * room / size, std::size_t{1}, count - 1);
        }
        EncodeBase64(reinterpret_cast<const unsigned char*>(bytes.GetBuffer()), bytes.GetLength(),
                     0, encoded);
        if (!out.empty() && out.back() != ' ')
            out += ' ';
        out += "=?" + charset + "?B?";
        out += View(encoded);
        out += "?=";
        utf8.remove_prefix(piece.size());
        room = WordRoom(charset, 0);
    }
}

} // namespace

std::string EncodeHeaderText(std::string_view utf8, CodeType preferred, std::size_t column)
{
    const std::string text = OneLine(utf8);
    // From the first word that needs it to the last: white space between encoded words is lost.
    const bool foldable = text.find(std::string(kMaxBlanks + 1, ' ')) == text.npos;
    std::size_t first = foldable ? text.npos : 0;
    std::size_t last = foldable ? 0 : text.size();
    for (std::size_t start = last; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (!IsPlain(std::string_view(text).substr(start, end - start))) {
            first = std::min(first, start);
            last = end;
        }
        start = end + 1;
    }
    if (first == text.npos)
        return text;
    const std::string_view encoded = std::string_view(text).substr(first, last - first);
    std::string out = text.substr(0, first);
    AppendEncodedWords(encoded, ChooseWordCode(encoded, preferred), column, out);
    return out + text.substr(last);
}

std::string EncodeMailboxes(const std::vector<Mailbox>& mailboxes, CodeType preferred,
                            std::size_t column)
{
    std::string out;
    for (const Mailbox& mailbox : mailboxes) {
        if (!out.empty())
            out += ", ";
        const std::string name = OneLine(mailbox.name);
        const std::string address = OneLine(mailbox.address);
        if (IsPlain(name)) {
            out += FormatMailbox({name, address});
            continue;
        }
        AppendEncodedWords(name, ChooseWordCode(name, preferred), column, out);
        out += address.empty() ? "" : " <" + address + '>';
    }
    return out;
}

std::string FormatField(std::string_view name, std::string_view value)
{
    if (value.empty())
        return {};
    std::string line(name);
    line += ": ";
    const std::size_t valueStart = line.size();
    line += value;

    std::string field;
    std::size_t lineStart = 0;
    std::size_t fold = 0; // the last place where the line may end, 0 for none
    for (std::size_t i = valueStart + 1; i < line.size(); ++i) {
        // Each line has something behind its blanks, and one blank before that.
        const bool blank = line[i] == ' ' && i + 1 < line.size() && line[i + 1] != ' ';
        if (blank && (fold <= lineStart || i - lineStart <= kMaxLine))
            fold = i;
        if (i - lineStart >= kMaxLine && fold > lineStart) {
            field += line.substr(lineStart, fold - lineStart) + "\r\n";
            lineStart = fold;
        }
    }
    return field + line.substr(lineStart) + "\r\n";
}

} // namespace tlvn
