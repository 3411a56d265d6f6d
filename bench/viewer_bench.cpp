// The viewer: listing a folder of 100,000 mails beside GMime reading the same files, sorting the
// list, splitting an mbox file, and tolvan-show on a small mail as a whole process beside the
// smallest process there is.
//
// In the rows that count mails a "MB/s" is a mail a second.

#include "bench/bench_table.h"

#include "mailtext/mail_date.h"
#include "platform/nls.h"
#include "tests/support/temp_folder.h"
#include "viewer/header_encode.h"
#include "viewer/header_text.h"
#include "viewer/mail_list.h"

#include <gmime/gmime.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <spawn.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

constexpr int kMails = 100'000;
constexpr double kCountMails = 1e6; // "bytes" for each mail

std::string JapaneseWords(std::mt19937& random, int count)
{
    tlvn::WString wide;
    for (int i = 0; i < count; ++i)
        wide += static_cast<WCHAR>(random() % 2 != 0 ? 0x3041 + random() % 83
                                                     : 0x4E00 + random() % 0x200);
    return tlvn::Utf16ToUtf8(wide);
}

// A mail of one to three kilobytes, as it comes over several servers. Every second subject is
// ISO-2022-JP, the others UTF-8; there are 500 senders.
std::string MakeMail(unsigned number)
{
    std::mt19937 random(number);
    const CodeType type = number % 2 != 0 ? CT_JIS : CT_UTF8;
    const std::string sender = std::to_string(random() % 500);
    std::mt19937 senderRandom(static_cast<unsigned>(std::stoi(sender)));
    std::string mail;
    for (int i = 0; i < 4; ++i)
        mail += "Received: from mx" + std::to_string(i) +
                ".example.jp (mx.example.jp [192.0.2.1])\r\n\tby mail.example.jp (Postfix) with "
                "ESMTP id 5F3A21C0D\r\n\tfor <user@example.jp>; Tue, 5 Feb 2013 10:20:30 +0900\r\n";
    mail += tlvn::FormatField(
        "From", tlvn::EncodeMailboxes(
                    {{JapaneseWords(senderRandom, 4), "user" + sender + "@example.jp"}}, type));
    mail += "To: user@example.jp\r\n";
    mail += tlvn::FormatField(
        "Subject", tlvn::EncodeHeaderText(
                       "[list:" + std::to_string(number) + "] " + JapaneseWords(random, 20), type));
    mail += "Date: " +
            std::string(GetRFC822TimeText(CTime(INT64{1'300'000'000} + number * INT64{977}))) +
            "\r\nMessage-ID: <" + std::to_string(number) +
            "@example.jp>\r\nMIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n"
            "Content-Transfer-Encoding: 8bit\r\n\r\n";
    for (auto i = random() % 20; i > 0; --i)
        mail += JapaneseWords(random, 30) + "\r\n";
    return mail;
}

void Write(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

void ReadAll(tlvn::MailList& list, const std::string& path)
{
    std::string error;
    if (!list.Open(path, error))
        std::exit(1);
    while (list.Step(20))
        continue;
}

// Sender, subject and date of every mail of the folder, as GMime gives them.
void ListWithGMime(const std::string& path)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
        GMimeStream* const stream = g_mime_stream_fs_open(entry.path().c_str(), 0, 0, nullptr);
        GMimeParser* const parser = g_mime_parser_new_with_stream(stream);
        GMimeMessage* const message = g_mime_parser_construct_message(parser, nullptr);
        char* const from =
            internet_address_list_to_string(g_mime_message_get_from(message), nullptr, FALSE);
        Use(from);
        Use(g_mime_message_get_subject(message));
        Use(g_mime_message_get_date(message));
        g_free(from);
        g_object_unref(message);
        g_object_unref(parser);
        g_object_unref(stream);
    }
}

void Listing(BenchTable& table)
{
    const TempFolder folder;
    std::string mbox;
    for (unsigned i = 0; i < kMails; ++i) {
        const std::string mail = MakeMail(i);
        Write(folder.Path(std::to_string(i) + ".eml"), mail);
        if (i % 10 == 0)
            mbox += "From user@example.jp Tue Feb  5 10:20:30 2013\n" + mail + "\n";
    }
    tlvn::MailList list;
    table.Compare(
        "listing 100,000 mails, mails/s", kMails * kCountMails, "GMime",
        [&] { ReadAll(list, folder.Path()); }, [&] { ListWithGMime(folder.Path()); }, 3);
    std::printf("memory of the list: %.1f MB for %d mails\n",
                static_cast<double>(list.GetMemoryBytes()) / 1e6, list.GetCount());

    // Beside the plainest sort there could be: the bytes of the texts.
    table.Compare(
        "sorting them by subject, mails/s", kMails * kCountMails, "by bytes",
        [&] { list.Sort(tlvn::MailColumn::Subject, true); },
        [&] {
            std::vector<int> rows(static_cast<std::size_t>(list.GetCount()));
            for (std::size_t i = 0; i < rows.size(); ++i)
                rows[i] = static_cast<int>(i);
            std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
                return list.GetRow(a).subject < list.GetRow(b).subject;
            });
            Use(rows.data());
        },
        3);

    const TempFolder other;
    Write(other.Path("mbox"), mbox);
    table.Compare(
        "listing an mbox file of 10,000 mails", static_cast<double>(mbox.size()),
        "read into memory", [&] { ReadAll(list, other.Path("mbox")); },
        [&] {
            std::ifstream in(other.Path("mbox"), std::ios::binary);
            std::string all(mbox.size(), '\0');
            in.read(all.data(), static_cast<std::streamsize>(all.size()));
            Use(all.data());
        },
        5);
}

// The decoding alone, without files.
void Decoding(BenchTable& table)
{
    constexpr int kCount = 1'000;
    std::vector<std::string> values;
    std::mt19937 random(1);
    for (int i = 0; i < kCount; ++i)
        values.push_back(tlvn::EncodeHeaderText("[list:1] " + JapaneseWords(random, 20),
                                                i % 2 != 0 ? CT_JIS : CT_UTF8));
    table.Compare(
        "decoding 1,000 subjects, subjects/s", kCount * kCountMails, "GMime",
        [&] {
            for (const std::string& value : values)
                Use(tlvn::DecodeHeaderValue(value).data());
        },
        [&] {
            for (const std::string& value : values) {
                char* const text = g_mime_utils_header_decode_text(nullptr, value.c_str());
                Use(text);
                g_free(text);
            }
        });
}

// The program with its output thrown away.
void RunProcess(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", 1 /* O_WRONLY */, 0);
    pid_t child = 0;
    int status = 1;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0)
        std::exit(1);
    posix_spawn_file_actions_destroy(&actions);
}

void Show(BenchTable& table)
{
    const TempFolder folder;
    const std::string path = folder.Path("1.eml");
    std::string mail = MakeMail(1);
    mail.resize(std::min(mail.size(), std::size_t{1'024}));
    Write(path, mail);
    table.Compare(
        "tolvan-show of 1 KB, a process", 1'024, "/bin/true",
        [&] {
            RunProcess({TOLVAN_SHOW, path});
        },
        [&] { RunProcess({"/bin/true"}); }, 50);
}

} // namespace

int main()
{
    g_mime_init();
    BenchTable table;
    Show(table);
    Decoding(table);
    Listing(table);
    table.Print();
    return 0;
}
