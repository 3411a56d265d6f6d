#include "viewer/mail_head.h"

#include "platform/multibyte.h"
#include "viewer/mailbox.h"
#include "viewer/part_scanner.h"

#include <algorithm>

namespace tlvn {

namespace {

bool IsName(std::string_view written, std::string_view lower)
{
    return written.size() == lower.size() &&
           CompareAsciiNNoCase(written.data(), lower.data(), static_cast<int>(lower.size())) == 0;
}

// The value that a field of that name fills, or null.
std::string_view* FindTarget(MailHead& head, std::string_view name)
{
    if (IsName(name, "from"))
        return &head.from;
    if (IsName(name, "subject"))
        return &head.subject;
    return IsName(name, "date") ? &head.date : nullptr;
}

bool IsFull(const MailHead& head)
{
    return head.from.data() != nullptr && head.subject.data() != nullptr &&
           head.date.data() != nullptr;
}

} // namespace

MailHead ScanMailHead(std::string_view bytes)
{
    MailHead head;
    std::size_t pos = 0;
    if (bytes.starts_with("From "))
        pos = std::min(bytes.find('\n'), bytes.size() - 1) + 1;

    std::string_view* open = nullptr; // the value that a continuation belongs to
    bool inField = false;
    while (pos < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', pos), bytes.size());
        const std::string_view line = bytes.substr(pos, end - pos);
        if (inField && !line.empty() && (line[0] == ' ' || line[0] == '\t')) {
            if (open != nullptr)
                *open = {open->data(), bytes.data() + end};
            pos = end + 1;
            continue;
        }
        std::size_t valueStart = 0;
        const std::size_t nameLength = FieldNameLength(WithoutLineEnd(line), valueStart);
        if (nameLength == 0 || IsFull(head)) {
            head.complete = end < bytes.size() || IsFull(head);
            return head;
        }
        inField = true;
        open = FindTarget(head, line.substr(0, nameLength));
        if (open != nullptr && open->data() != nullptr)
            open = nullptr; // of several the first counts
        if (open != nullptr)
            *open = line.substr(valueStart);
        pos = end + 1;
    }
    return head;
}

std::string GetShownSender(std::string_view from)
{
    Mailbox mailbox = ReadFirstMailbox(from);
    return mailbox.name.empty() ? std::move(mailbox.address) : std::move(mailbox.name);
}

} // namespace tlvn
