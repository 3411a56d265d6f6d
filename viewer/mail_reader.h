// The structure of one mail: header fields, parts, the text to show, the attachments.
//
//   Mail mail(std::move(bytes));                  // a whole .eml file, LF or CR LF
//   Show(mail.GetHeaderText("Subject"));          // decoded, UTF-8
//   const MailText text = mail.ReadText();
//   Show(ToUtf8(text));
//
// The mail keeps its bytes and everything else is a view into them: reading costs one pass and
// memory for the fields and parts, not for the content. Nothing is decoded before it is asked
// for. There is no such thing as an invalid mail: what does not fit the formats is shown as
// text rather than lost.
//
//   - A header ends at an empty line, at a part's boundary line, at the end of the bytes, or at
//     a line that is neither a field nor a continuation, which then starts the body.
//   - Multiparts are followed to kMaxDepth levels; a deeper one is a text part, as is one that
//     names no boundary or whose boundary never comes. kMaxParts and kMaxFields bound what is
//     kept of a mail; further parts and fields are passed over.
//   - A boundary of an outer multipart ends the inner ones. The nesting is kept in a list, so
//     that its depth costs no stack and a line is looked up once whatever the depth.
//   - A message inside a mail (message/rfc822) is an attachment.
//
// The text of a mail is its first text/plain part, else its first text/html part (its source),
// else another part of text, none of them attached or with a file name; else a text/plain part
// with a file name that is not marked as an attachment.

#pragma once

#include "viewer/text_code.h"

#include <string>
#include <string_view>
#include <vector>

namespace tlvn {

constexpr std::size_t kMaxDepth = 100;
constexpr std::size_t kMaxParts = 10'000;
constexpr std::size_t kMaxFields = 100'000;       // of all headers of a mail together
constexpr std::size_t kMaxValueBytes = 1'000'000; // of a value that are decoded
constexpr std::size_t kMaxTextBytes = 16'000'000; // of a text that are decoded

struct MailField {
    std::string_view name;
    std::string_view value; // folded and encoded, as it stands behind the colon
};

struct MailPart {
    std::vector<MailField> fields;
    std::string type;       // lower case; "text/plain" when there is none
    std::string charset;    // the label as written, empty when there is none
    std::string encoding;   // transfer encoding in lower case, empty when there is none
    std::string fileName;   // decoded, UTF-8; any characters, also those of paths
    bool attached = false;  // the disposition says so
    bool container = false; // a multipart that was taken apart; its body is then empty
    int parent = -1;        // index of the multipart it stands in
    std::string_view body;  // still in its transfer encoding
};

struct MailText {
    std::string bytes; // without transfer encoding, in the code of the mail
    std::string charset;
    TextCode code;
    bool cut = false; // there is more than kMaxTextBytes; the rest is left out
};

// The first field of that name (any case), or null.
const MailField* FindField(const std::vector<MailField>& fields, std::string_view name);

// The field's value, decoded, in UTF-8.
std::string DecodeField(const MailField& field);

// The body without its transfer encoding; of the encoded body at most `limit` bytes are read.
// What is no valid encoding is read as far as it goes. An unknown encoding counts as none.
std::string DecodeBody(const MailPart& part, std::size_t limit);

// The text in UTF-8, its line ends LF.
std::string ToUtf8(const MailText& text);

class Mail {
public:
    // Of at most 2^31 - 1 bytes.
    explicit Mail(std::string bytes);
    Mail(const Mail&) = delete;
    Mail& operator=(const Mail&) = delete;

    // Never empty: the first is the mail itself. A part stands behind the one it is in.
    const std::vector<MailPart>& GetParts() const { return m_parts; }
    const std::vector<MailField>& GetFields() const { return m_parts.front().fields; }

    // The mail's first field of that name, decoded, or empty.
    std::string GetHeaderText(std::string_view name) const;

    // The part whose text is shown, or -1.
    int GetTextPart() const { return m_textPart; }
    // Its text, empty ASCII when there is none.
    MailText ReadText() const;

    // The parts to list beside the text: those marked as attachments or with a file name, and
    // those that are not text.
    std::vector<int> GetAttachments() const;

private:
    std::string m_bytes;
    std::vector<MailPart> m_parts;
    int m_textPart = -1;
};

} // namespace tlvn
