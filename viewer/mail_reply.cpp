#include "viewer/mail_reply.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "charcode/detect.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "viewer/header_text.h"
#include "viewer/mailbox.h"
#include "viewer/show_text.h"

#include <algorithm>
#include <set>

namespace tlvn {

namespace {

constexpr std::size_t kMaxReferences = 40;
constexpr std::size_t kMaxIdentifier = 500;

std::string LowerAscii(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerAscii);
    return lower;
}

std::vector<Mailbox> ReadMailboxes(const Mail& mail, std::string_view name)
{
    const MailField* const field = FindField(mail.GetFields(), name);
    return field == nullptr ? std::vector<Mailbox>()
                            : ReadMailboxField(field->value.substr(0, kMaxValueBytes));
}

// Collects recipients, each address once.
class Recipients {
public:
    // Addresses in `others` are not taken.
    void Add(const std::vector<Mailbox>& mailboxes, std::set<std::string>& others)
    {
        for (const Mailbox& mailbox : mailboxes) {
            if (mailbox.address.empty() || !others.insert(LowerAscii(mailbox.address)).second)
                continue;
            m_text += (m_text.empty() ? "" : ", ") +
                      FormatMailbox({MakeHarmless(mailbox.name, false),
                                     MakeHarmless(mailbox.address, false)});
        }
    }
    const std::string& GetText() const { return m_text; }

private:
    std::string m_text;
};

void SetRecipients(const Mail& mail, const ReplyOptions& options, Draft& draft)
{
    const std::vector<Mailbox> from = ReadMailboxes(mail, "From");
    const std::vector<Mailbox> to = ReadMailboxes(mail, "To");
    std::vector<Mailbox> answerTo = ReadMailboxes(mail, "Reply-To");
    if (answerTo.empty())
        answerTo = from;

    const std::string own = LowerAscii(ReadFirstMailbox(options.from).address);
    std::set<std::string> taken;
    if (!own.empty())
        taken.insert(own);
    Recipients first;
    first.Add(answerTo, taken);
    if (first.GetText().empty())
        first.Add(to, taken);
    if (first.GetText().empty()) {
        taken.clear();
        first.Add(answerTo, taken);
    }
    draft.to = first.GetText();
    if (!options.all)
        return;
    Recipients second;
    second.Add(to, taken);
    second.Add(ReadMailboxes(mail, "Cc"), taken);
    draft.cc = second.GetText();
}

// Length of a "Re:" or "Re[2]:" at the start of the text with the blanks behind it, or 0.
std::size_t ReplyPrefixLength(std::string_view text)
{
    if (text.size() < 3 || LowerAscii(text.substr(0, 2)) != "re")
        return 0;
    std::size_t pos = 2;
    if (text[pos] == '[' || text[pos] == '^') {
        ++pos;
        while (pos < text.size() && IsDigit(text[pos]))
            ++pos;
        if (text[2] == '[' && (pos == text.size() || text[pos++] != ']'))
            return 0;
    }
    if (pos == text.size() || text[pos] != ':')
        return 0;
    return std::min(text.find_first_not_of(' ', pos + 1), text.size());
}

std::string MakeReplySubject(std::string_view subject)
{
    while (const std::size_t length = ReplyPrefixLength(subject))
        subject.remove_prefix(length);
    return "Re: " + MakeHarmless(subject, false);
}

// The message identifiers of a field, in order.
std::vector<std::string> ReadIdentifiers(const Mail& mail, std::string_view name)
{
    std::vector<std::string> identifiers;
    const MailField* const field = FindField(mail.GetFields(), name);
    if (field == nullptr)
        return identifiers;
    const std::string_view value = field->value.substr(0, kMaxValueBytes);
    for (std::size_t pos = value.find('<'); pos != value.npos; pos = value.find('<', pos)) {
        const std::size_t end = value.find_first_of("<>", pos + 1);
        if (end == value.npos)
            break;
        const std::string_view identifier = value.substr(pos, end + 1 - pos);
        // One that looks like an encoded word could not be written as it is.
        const bool plain = identifier.find("=?") == identifier.npos &&
                           std::all_of(identifier.begin(), identifier.end(),
                                       [](char c) { return c > ' ' && c <= '~'; });
        if (value[end] == '>' && plain && identifier.size() <= kMaxIdentifier)
            identifiers.emplace_back(identifier);
        pos = end;
    }
    return identifiers;
}

void SetReferences(const Mail& mail, Draft& draft)
{
    const std::vector<std::string> own = ReadIdentifiers(mail, "Message-ID");
    std::vector<std::string> references = ReadIdentifiers(mail, "References");
    if (references.empty()) {
        references = ReadIdentifiers(mail, "In-Reply-To");
        if (references.size() > 1)
            references.clear();
    }
    if (!own.empty()) {
        draft.fields.emplace_back("In-Reply-To", own.front());
        references.push_back(own.front());
    }
    // The first tells the thread, the last ones the place in it.
    if (references.size() > kMaxReferences)
        references.erase(references.begin() + 1, references.end() - (kMaxReferences - 1));
    std::string joined;
    for (const std::string& identifier : references)
        joined += (joined.empty() ? "" : " ") + identifier;
    if (!joined.empty())
        draft.fields.emplace_back("References", joined);
}

// Who wrote, and when; empty when the mail tells neither.
std::string MakeAttribution(const Mail& mail)
{
    const std::vector<Mailbox> from = ReadMailboxes(mail, "From");
    std::string name = from.empty()                ? std::string()
                       : from.front().name.empty() ? from.front().address
                                                   : from.front().name;
    name = MakeHarmless(name, false);
    const std::string date = MakeHarmless(mail.GetHeaderText("Date"), false);
    if (name.empty())
        return date.empty() ? std::string() : "On " + date + ":\n";
    return date.empty() ? name + " wrote:\n" : "On " + date + ", " + name + " wrote:\n";
}

std::string Quote(std::string_view text, const std::string& mark)
{
    std::string quoted;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        quoted += mark;
        quoted += text.substr(0, length);
        text.remove_prefix(length);
    }
    if (!quoted.empty() && quoted.back() != '\n')
        quoted += '\n';
    return quoted;
}

// The code type that a text in UTF-8 needs at least.
CodeType DetectNeeded(std::string_view utf8)
{
    const WString wide = Utf8ToUtf16(utf8);
    return DetectUnicodeCodeType2(wide.data(), static_cast<int>(wide.size()), nullptr);
}

bool SetText(CodeType type, const std::string& utf8, Draft& draft)
{
    draft.codeType = type;
    return ConvertToOtherCodeType2(CT_UTF8, utf8.data(), static_cast<int>(utf8.size()),
                                   CodeTypeSave2Edit(type), draft.text, 0) == 0;
}

} // namespace

Draft MakeReply(const Mail& mail, const ReplyOptions& options)
{
    Draft draft;
    draft.from = options.from;
    SetRecipients(mail, options, draft);
    draft.subject = MakeReplySubject(mail.GetHeaderText("Subject"));
    SetReferences(mail, draft);

    const MailText text = mail.ReadText();
    const std::string attribution = MakeAttribution(mail);
    const std::string all = attribution + Quote(ToUtf8(text), options.quoteMark);
    CodeType type = GetPriorCodeType(text.code.type, DetectNeeded(attribution + options.quoteMark));
    if (type == CT_ASCII)
        type = CT_JIS;
    if (!SetText(type, all, draft))
        SetText(CT_UTF8, all, draft);
    return draft;
}

} // namespace tlvn
