#include "viewer/mbox.h"

#include "tests/viewer/viewer_support.h"

#include <gtest/gtest.h>

#include <random>

namespace tlvn {
namespace {

struct Slice {
    std::size_t start, size;
    bool operator==(const Slice&) const = default;
};

// The rules told line by line over the whole file.
std::vector<Slice> SplitModel(const std::string& file)
{
    struct Line {
        std::size_t start, end;
        bool empty, from;
    };
    std::vector<Line> lines;
    for (std::size_t start = 0; start < file.size();) {
        const std::size_t end = std::min(file.find('\n', start), file.size() - 1) + 1;
        const std::string line = file.substr(start, end - start);
        lines.push_back({start, end, line == "\n" || line == "\r\n" || line == "\r",
                         line.compare(0, 5, "From ") == 0});
        start = end;
    }
    std::vector<std::size_t> separators;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].from && (i == 0 || lines[i - 1].empty))
            separators.push_back(i);
    }
    std::vector<Slice> mails;
    for (std::size_t i = 0; i < separators.size(); ++i) {
        const std::size_t start = lines[separators[i]].end;
        const std::size_t next = i + 1 < separators.size() ? separators[i + 1] : lines.size();
        const std::size_t end = lines[next - 1].empty ? lines[next - 1].start : lines[next - 1].end;
        mails.push_back({start, end - start});
    }
    return mails;
}

std::vector<Slice> Split(const std::string& file, const std::vector<std::size_t>& cuts)
{
    MboxScanner scanner;
    std::vector<MboxMail> found;
    std::size_t pos = 0;
    for (const std::size_t cut : cuts) {
        scanner.Feed(std::string_view(file).substr(pos, cut), found);
        pos = std::min(pos + cut, file.size());
    }
    scanner.Feed(std::string_view(file).substr(pos), found);
    scanner.Finish(found);
    std::vector<Slice> mails;
    for (const MboxMail& mail : found) {
        const Slice slice = {static_cast<std::size_t>(mail.start),
                             static_cast<std::size_t>(mail.size)};
        mails.push_back(slice);
        EXPECT_EQ(mail.head,
                  file.substr(slice.start, std::min(slice.size, MboxScanner::kHeadBytes)));
    }
    return mails;
}

// Pieces that make and nearly make separators, cut anywhere.
TEST(Mbox, SplitsLikeTheModel)
{
    const char* const pieces[] = {
        "From ",     "From a@b Mon\n", "From a\r\n", "\n",     "\r\n", "\r",
        ">From x\n", "Subject: a\n",   "text",       " From ", "Fro",  "m "};
    std::mt19937 random(3);
    for (int round = 0; round < 20'000; ++round) {
        std::string file = round % 4 != 0 ? "From \n" : "";
        for (auto i = random() % 12; i > 0; --i)
            file += pieces[random() % std::size(pieces)];
        std::vector<std::size_t> cuts;
        for (auto i = random() % 5; i > 0; --i)
            cuts.push_back(random() % 7);
        ASSERT_EQ(Split(file, cuts), SplitModel(file)) << file;
    }
}

TEST(Mbox, TakesEscapesBack)
{
    const struct {
        const char *escaped, *plain;
    } cases[] = {
        {"", ""},
        {">From a\n>>From b\n", "From a\n>From b\n"},
        {"x >From a\n> From\n>Fromm\n>>", "x >From a\n> From\n>Fromm\n>>"},
        {"a\r\n>>>From ", "a\r\n>>From "}, // at the end
    };
    for (const auto& c : cases) {
        std::string mail = c.escaped;
        UnescapeMboxMail(mail);
        EXPECT_EQ(mail, c.plain);
    }
    for (const char* head : {"From x\n", "\r\n\nFrom x"})
        EXPECT_TRUE(IsMboxBeginning(head));
    for (const char* head : {"", "\n", "from x\n", "Subject: a\n\nFrom x\n"})
        EXPECT_FALSE(IsMboxBeginning(head));
}

// Fails, by time or memory, when a line or a mail is kept whole or searched again.
TEST(Mbox, HostileFilesAreOnePass)
{
    for (const std::string piece : {"From \n", "From \n\n", "\n", ">", "F", "\r"}) {
        MboxScanner scanner;
        std::vector<MboxMail> found;
        const std::string block = Repeated(piece, 1'000'000);
        scanner.Feed("From \n", found);
        for (int i = 0; i < 20; ++i) {
            scanner.Feed(block, found);
            EXPECT_LE(found.size(), block.size() / 7 + 1);
            found.clear();
        }
        scanner.Finish(found);
        EXPECT_EQ(found.size(), 1u);
        EXPECT_LE(found[0].head.size(), MboxScanner::kHeadBytes);
    }
}

} // namespace
} // namespace tlvn
