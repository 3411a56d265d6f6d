#include "viewer/mail_list.h"

#include "mailtext/mail_date.h"
#include "platform/clock.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "viewer/header_text.h"
#include "viewer/mail_file.h"
#include "viewer/mail_head.h"
#include "viewer/reason.h"
#include "viewer/show_text.h"

#include <algorithm>
#include <utility>

namespace tlvn {

namespace {

constexpr std::size_t kHeadBytes = 4'096;
constexpr std::size_t kLongHeadBytes = 262'144; // when the header does not end in the first ones
constexpr std::size_t kPieceBytes = 262'144;
constexpr std::size_t kMaxShownBytes = 1'000; // of a sender or a subject
constexpr std::size_t kMaxValueBytesRead = 4'000;
constexpr int kMailsBetweenLooks = 16; // at the clock

bool IsMailName(std::string_view name)
{
    constexpr std::string_view kSuffix = ".eml";
    return name.size() > kSuffix.size() &&
           CompareAsciiNNoCase(name.data() + name.size() - kSuffix.size(), kSuffix.data(),
                               static_cast<int>(kSuffix.size())) == 0;
}

// At most `limit` bytes, no character cut.
std::string_view CutUtf8(std::string_view text, std::size_t limit)
{
    if (text.size() <= limit)
        return text;
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80)
        --limit;
    return text.substr(0, limit);
}

std::string MakeShown(std::string_view text)
{
    return MakeHarmless(CutUtf8(text, kMaxShownBytes), false);
}

INT64 ReadDate(std::string_view value)
{
    constexpr std::size_t kMaxDate = 200;
    return value.empty() ? -1 : GetRFC822Time(UnfoldValue(value.substr(0, kMaxDate)).c_str());
}

} // namespace

MailList::MailList() = default;

MailList::~MailList()
{
    CloseMbox();
}

bool MailList::Open(const std::string& path, std::string& error)
{
    CloseMbox();
    m_state = State::Done;
    m_path = path;
    m_done = 0;
    m_total = 0;
    m_cut = false;
    m_readError.clear();
    m_files.clear();
    m_texts.Clear();
    m_entries.clear();
    m_order.clear();

    const FileResult folder = m_folder.Open(path);
    m_mbox = !folder;
    if (folder) {
        m_state = State::Listing;
        return true;
    }
    if (const FileResult opened = OpenToRead(path, m_file); !opened) {
        error = DescribeFileError(opened.error);
        return false;
    }
    m_head.resize(kHeadBytes);
    std::size_t done = 0;
    INT64 position = 0;
    FileResult result = ReadFromFile(m_file, m_head.data(), m_head.size(), done);
    if (result)
        result = GetFileSize(m_file, m_fileSize);
    if (result)
        result = SeekFile(m_file, 0, SeekFrom::Begin, position);
    if (!result || !IsMboxBeginning(std::string_view(m_head).substr(0, done))) {
        error = !result ? DescribeFileError(result.error)
                        : GetText(m_fileSize == 0 ? Reason::IsEmpty : Reason::NoMbox);
        CloseMbox();
        return false;
    }
    m_total = m_fileSize;
    m_scanner = std::make_unique<MboxScanner>();
    m_state = State::ReadingMbox;
    return true;
}

void MailList::CloseMbox()
{
    if (m_file != kNoFile)
        CloseFile(m_file);
    m_file = kNoFile;
    m_scanner.reset();
    m_mails.clear();
}

bool MailList::Step(int milliseconds, std::size_t mails)
{
    const DWORD start = GetTickMilliseconds();
    const std::size_t before = m_entries.size();
    for (int steps = 1; IsReading() && m_entries.size() - before < mails; ++steps) {
        switch (m_state) {
        case State::Listing:
            ListFile();
            break;
        case State::ReadingFiles:
            ReadFile();
            break;
        case State::ReadingMbox:
            ReadPiece();
            break;
        case State::Done:
            break;
        }
        const bool look = m_mbox || steps % kMailsBetweenLooks == 0;
        if (look && GetTickMilliseconds() - start >= static_cast<DWORD>(std::max(milliseconds, 0)))
            break;
    }
    return IsReading();
}

void MailList::ListFile()
{
    if (m_folder.Next(m_found)) {
        if (m_found.kind != EntryKind::File || !IsMailName(m_found.name))
            return;
        if (m_files.size() < kMaxMails) {
            m_files.emplace_back(m_texts.Add(m_found.name), m_found.size);
            return;
        }
        m_cut = true;
    }
    m_total = static_cast<INT64>(m_files.size());
    m_entries.reserve(m_files.size());
    m_order.reserve(m_files.size());
    m_state = State::ReadingFiles;
}

void MailList::ReadFile()
{
    if (m_done == m_total) {
        m_files = {};
        m_head = {};
        m_folder.Close();
        m_state = State::Done;
        return;
    }
    const auto [file, listedSize] = m_files[static_cast<std::size_t>(m_done++)];
    const std::string name(m_texts.Get(file));
    // Most headers are short; a long one costs a second reading.
    for (const std::size_t capacity : {kHeadBytes, kLongHeadBytes}) {
        m_head.resize(std::max(m_head.size(), capacity));
        std::size_t done = 0;
        INT64 size = -1;
        if (!m_folder.ReadHead(name.c_str(), m_head.data(), capacity, done, size)) {
            AddUnreadable(file);
            return;
        }
        const std::string_view head = std::string_view(m_head).substr(0, done);
        const bool whole = done < capacity || capacity == kLongHeadBytes;
        if (whole || ScanMailHead(head).complete) {
            AddMail(head, size >= 0 ? size : listedSize, 0, file);
            return;
        }
    }
}

void MailList::ReadPiece()
{
    std::string piece(kPieceBytes, '\0');
    std::size_t done = 0;
    const FileResult result = ReadFromFile(m_file, piece.data(), piece.size(), done);
    // What is written behind the end meanwhile belongs to the next listing.
    const INT64 rest = m_fileSize - m_done;
    done = static_cast<std::size_t>(std::min<INT64>(static_cast<INT64>(done), rest));
    m_done += static_cast<INT64>(done);
    m_scanner->Feed(std::string_view(piece).substr(0, done), m_mails);
    const bool atEnd = !result || done < kPieceBytes || m_done == m_fileSize;
    if (atEnd)
        m_scanner->Finish(m_mails);
    if (!result)
        m_readError = DescribeFileError(result.error);

    for (const MboxMail& mail : m_mails) {
        if (m_entries.size() == kMaxMails) {
            m_cut = true;
            break;
        }
        AddMail(mail.head, mail.size, mail.start, 0);
    }
    m_mails.clear();
    if (atEnd || m_cut) {
        CloseMbox();
        m_state = State::Done;
    }
}

void MailList::AddMail(std::string_view bytes, INT64 size, INT64 start, ShortTextPool::Id file)
{
    const MailHead head = ScanMailHead(bytes);
    const std::string sender = MakeShown(GetShownSender(head.from.substr(0, kMaxValueBytesRead)));
    const std::string subject =
        MakeShown(DecodeHeaderValue(head.subject.substr(0, kMaxValueBytesRead)));
    Append({ReadDate(head.date), size, start, m_texts.Pool(sender), m_texts.Pool(subject), file});
}

void MailList::AddUnreadable(ShortTextPool::Id file)
{
    const std::string name = MakeShown(m_texts.Get(file));
    Append({-1, -1, 0, m_texts.Pool({}), m_texts.Pool(name), file});
}

void MailList::Append(const Entry& entry)
{
    m_order.push_back(static_cast<std::uint32_t>(m_entries.size()));
    m_entries.push_back(entry);
}

std::vector<std::uint32_t> MailList::RankTexts(ShortTextPool::Id Entry::*text) const
{
    // Each text is given its key once, however many mails have it.
    std::vector<std::uint32_t> ranks(m_texts.GetCount());
    std::vector<std::pair<std::string, ShortTextPool::Id>> keys;
    for (const Entry& entry : m_entries) {
        if (std::exchange(ranks[entry.*text], 1) != 0)
            continue;
        keys.emplace_back(std::string(), entry.*text);
        MakeCollationKey(Utf8ToUtf16(m_texts.Get(entry.*text)), keys.back().first);
    }
    std::sort(keys.begin(), keys.end());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i == 0 || keys[i].first != keys[i - 1].first)
            ++rank;
        ranks[keys[i].second] = rank;
    }
    return ranks;
}

void MailList::Sort(MailColumn column, bool ascending)
{
    const auto sortBy = [&](auto key) {
        std::stable_sort(m_order.begin(), m_order.end(), [&](std::uint32_t a, std::uint32_t b) {
            return ascending ? key(m_entries[a]) < key(m_entries[b])
                             : key(m_entries[b]) < key(m_entries[a]);
        });
    };
    const auto sortByText = [&](ShortTextPool::Id Entry::*text) {
        const std::vector<std::uint32_t> ranks = RankTexts(text);
        sortBy([&](const Entry& entry) { return ranks[entry.*text]; });
    };
    switch (column) {
    case MailColumn::Sender:
        sortByText(&Entry::sender);
        break;
    case MailColumn::Subject:
        sortByText(&Entry::subject);
        break;
    case MailColumn::Date:
        sortBy([](const Entry& entry) { return entry.date; });
        std::stable_partition(m_order.begin(), m_order.end(),
                              [&](std::uint32_t mail) { return m_entries[mail].date >= 0; });
        break;
    case MailColumn::Size:
        sortBy([](const Entry& entry) { return entry.size; });
        break;
    }
}

MailRow MailList::GetRow(int row) const
{
    const Entry& entry = m_entries[m_order[static_cast<std::size_t>(row)]];
    return {m_texts.Get(entry.sender), m_texts.Get(entry.subject), entry.date, entry.size};
}

int MailList::GetMailOfRow(int row) const
{
    return static_cast<int>(m_order[static_cast<std::size_t>(row)]);
}

int MailList::FindRow(int mail) const
{
    const auto found = std::find(m_order.begin(), m_order.end(), static_cast<std::uint32_t>(mail));
    return found == m_order.end() ? -1 : static_cast<int>(found - m_order.begin());
}

std::string MailList::GetPath(int row) const
{
    const Entry& entry = m_entries[m_order[static_cast<std::size_t>(row)]];
    return m_mbox ? m_path : JoinPath(m_path, m_texts.Get(entry.file));
}

bool MailList::LoadMail(int row, std::string& bytes, std::string& error) const
{
    if (!m_mbox)
        return LoadMailAt(GetPath(row), bytes, error);
    const Entry& entry = m_entries[m_order[static_cast<std::size_t>(row)]];
    if (!LoadMailSlice(m_path, m_fileSize, entry.start, entry.size, bytes, error))
        return false;
    UnescapeMboxMail(bytes);
    return true;
}

std::size_t MailList::GetMemoryBytes() const
{
    return m_entries.capacity() * sizeof(Entry) + m_order.capacity() * sizeof(m_order[0]) +
           m_files.capacity() * sizeof(m_files[0]) + m_texts.GetMemoryBytes();
}

} // namespace tlvn
