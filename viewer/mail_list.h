// The list of the mails in a folder of .eml files, or in an mbox file.
//
//   MailList list;
//   if (!list.Open(path, error))
//       return Fail(error);
//   while (list.Step(20))                       // for 20 ms each
//       ShowProgress(list.GetDone(), list.GetTotal());
//   list.Sort(MailColumn::Date, false);
//   Show(list.GetRow(0).subject);
//
// Only the beginnings of the mails are read. A mail costs 40 bytes, its texts, which are kept in
// one pool in which equal senders and subjects share a place, and four bytes in the order of the
// rows. Mails have numbers in the order in which they are found, which they keep; rows are the
// places in the order shown, which change.
//
// A file that cannot be read is listed under its name. Of more than kMaxMails mails the rest is
// left out, and IsCut says so. All texts are UTF-8 without control characters.

#pragma once

#include "platform/folder.h"
#include "viewer/mbox.h"
#include "viewer/short_text_pool.h"

#include <memory>

namespace tlvn {

enum class MailColumn { Sender, Subject, Date, Size };

struct MailRow {
    std::string_view sender;
    std::string_view subject;
    INT64 date = -1; // seconds since 1970 UTC, -1 for none
    INT64 size = -1; // bytes, -1 when not known
};

class MailList {
public:
    static constexpr std::size_t kMaxMails = 1'000'000;

    MailList();
    ~MailList();
    MailList(const MailList&) = delete;
    MailList& operator=(const MailList&) = delete;

    // Starts anew with a folder or an mbox file. False with the reason; the list is then empty.
    bool Open(const std::string& path, std::string& error);

    // Reads on, until `milliseconds` have gone by or `mails` more are listed. New mails get the
    // last rows, in the order of their finding. True while there is more to read.
    bool Step(int milliseconds, std::size_t mails = kMaxMails);
    bool IsReading() const { return m_state != State::Done; }
    // How far the reading is, of how much, in files or bytes; the total is 0 while not known.
    INT64 GetDone() const { return m_done; }
    INT64 GetTotal() const { return m_total; }
    bool IsCut() const { return m_cut; }
    // What stopped the reading of an mbox file before its end, else empty.
    const std::string& GetReadError() const { return m_readError; }

    // Sorts the rows. Rows that are equal keep their order, both ways; texts are in the order of
    // the user's locale; mails without a date come last, both ways.
    void Sort(MailColumn column, bool ascending);

    int GetCount() const { return static_cast<int>(m_order.size()); }
    // The texts are valid until the next step.
    MailRow GetRow(int row) const;
    // The number of the mail in the row, and the row in which a mail is, -1 for none.
    int GetMailOfRow(int row) const;
    int FindRow(int mail) const;

    // The path of a mail's file, also of an mbox file.
    std::string GetPath(int row) const;
    // The mail as it was sent. False with the reason.
    bool LoadMail(int row, std::string& bytes, std::string& error) const;

    // Bytes of memory that the mails take, without those of the allocator.
    std::size_t GetMemoryBytes() const;

private:
    enum class State { Listing, ReadingFiles, ReadingMbox, Done };

    struct Entry {
        INT64 date;
        INT64 size;
        INT64 start; // in an mbox file
        ShortTextPool::Id sender;
        ShortTextPool::Id subject;
        ShortTextPool::Id file;
    };

    void ListFile();
    void ReadFile();
    void ReadPiece();
    void AddMail(std::string_view head, INT64 size, INT64 start, ShortTextPool::Id file);
    void AddUnreadable(ShortTextPool::Id file);
    void Append(const Entry& entry);
    void CloseMbox();
    std::vector<std::uint32_t> RankTexts(ShortTextPool::Id Entry::*text) const;

    State m_state = State::Done;
    std::string m_path;
    bool m_mbox = false;
    INT64 m_done = 0;
    INT64 m_total = 0;
    bool m_cut = false;
    std::string m_readError;

    FolderReader m_folder;
    FolderEntry m_found;
    std::vector<std::pair<ShortTextPool::Id, INT64>> m_files; // not yet read: name and size
    std::string m_head;

    FileHandle m_file = kNoFile;
    INT64 m_fileSize = 0;
    std::unique_ptr<MboxScanner> m_scanner;
    std::vector<MboxMail> m_mails;

    ShortTextPool m_texts;
    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_order; // the mail in each row
};

} // namespace tlvn
