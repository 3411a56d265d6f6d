#include "TlvnMisc.h"
#include "platform/file.h"
#include "platform/memory.h"
#include "tests/support/test.h"

#include <fstream>
#include <iterator>
#include <regex>

TEST(Allocation, LengthsStopAtTheirLimit)
{
    for (const auto& [limit, narrow, wide] :
         {std::tuple(0, 0, 0), {-5, -5, -6}, {1, 1, 0}, {2, 2, 2}, {3, 2, 2}, {INT_MAX, 2, 4}}) {
        EXPECT_EQ(tv_strnlen("ab", limit), narrow) << limit;
        EXPECT_EQ(tv_wcsnlen(TW("ab"), limit), wide) << limit;
    }
}

TEST(Allocation, NeverGivesNull)
{
    void* kept = tv_realloc(tv_malloc(0), 0);
    EXPECT_NE(kept, nullptr);
    tlvn::SetAllocationLimit(0);
    EXPECT_THROW(tv_malloc(1), CMemoryException*);
    EXPECT_THROW(tv_realloc(kept, 100), CMemoryException*);
    tlvn::SetAllocationLimit(-1);
    tv_free(kept);
    tv_free(nullptr);
}

// Every path from one size to another, over the border of the two allocators and inside them.
TEST(Allocation, BlocksKeepTheirContentWhenResized)
{
    const int before = tlvn::GetPageBlockCount();
    const std::size_t sizes[] = {1, 1023, 1024, 300000};
    for (const std::size_t from : sizes) {
        for (const std::size_t to : sizes) {
            std::string content(from, '\0');
            for (std::size_t i = 0; i < from; ++i)
                content[i] = static_cast<char>(i * 7);
            void* block = tlvn::AllocBlock(from);
            content.copy(static_cast<char*>(block), from);
            block = tlvn::ReallocBlock(block, from, to);
            EXPECT_EQ(std::memcmp(block, content.data(), std::min(from, to)), 0) << from << to;
            EXPECT_EQ(tlvn::GetPageBlockCount() - before, to >= 1024 ? 1 : 0);
            static_cast<char*>(block)[to - 1] = 'x';
            tlvn::FreeBlock(block, to);
        }
    }
    EXPECT_EQ(tlvn::GetPageBlockCount(), before);
}

TEST(Exception, MessagesAreTrimmedAndNamed)
{
    const auto message = [](CException* e) {
        const CStringA text = GetExceptionMessage(e);
        e->Delete();
        return std::string(text.GetString());
    };
    EXPECT_EQ(message(new CStrException("  two words\r\n")), "two words");
    EXPECT_EQ(message(new CLeaveOnlyException), "CLeaveOnlyException occured.");

    try {
        CFile missing("/no such folder/no such file", CFile::modeRead);
        FAIL() << "opened";
    } catch (CException* e) {
        const int cause = DYNAMIC_DOWNCAST(CFileException, e)->m_cause;
        const std::string text = message(e);
        const std::string end = "(" + std::to_string(cause) + ")";
        EXPECT_EQ(text.substr(text.size() - end.size()), end) << text;
    }
}

TEST(Exception, TextsAreCutToTheRoomThereIs)
{
    char buf[8] = "-------";
    EXPECT_EQ(CStrException("abcdef").GetErrorMessage(buf, 4, nullptr), 1);
    EXPECT_EQ(std::string(buf, 5), std::string("abc\0-", 5));
    EXPECT_EQ(CLeaveOnlyException().GetErrorMessage(buf, 1, nullptr), 0);
    EXPECT_STREQ(buf, "");
}

namespace {

std::string ReadTrace()
{
    std::ifstream in(tlvn::GetTempFolder() + "TolvanTraceOutput.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void Traced(int mode)
{
    CTraceFunction trace("f");
    trace("%d", 1);
    trace.SetMode(mode);
    trace("two");
    trace("");
    trace("three");
}

} // namespace

TEST(Trace, WritesAnIndentedLogWhileOn)
{
    {
        // Off: nothing is written, but the depth counts.
        CTraceFunction outer("outer");
        ASSERT_EQ(SetTraceOutput(1), 1);
        {
            CTraceFunction quiet("quiet");
        }
    }
    for (int mode = 0; mode <= 3; ++mode)
        Traced(mode);
    EXPECT_EQ(SetTraceOutput(1), 1); // no new file
    const std::string written = ReadTrace();
    EXPECT_EQ(SetTraceOutput(0), 1);
    EXPECT_EQ(SetTraceOutput(0), 1);

    const std::string stamp = "\\d+-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\r\n";
    const std::string pad(11, ' ');
    const std::string expected =
        "    --- quiet ---\r\n"
        "---  ---\r\n" // tracing was off when it began: no name
        "+++ f +++  1\r\n--- f ---\r\n"
        "+++ f +++  1\r\n" +
        pad + "two\r\n" + pad +
        "three\r\n--- f ---\r\n"
        "+++ f +++  1\r\n... f ...  two\r\n... f ...\r\n... f ...  three\r\n"
        "--- f ---\r\n"
        "+++ f +++  1\r\n--- f ---  two\r\n" +
        pad + "three\r\n";
    std::smatch match;
    ASSERT_TRUE(std::regex_search(written, match, std::regex("^" + stamp))) << written;
    EXPECT_EQ(written.substr(static_cast<std::size_t>(match.length())), expected);
    tlvn::RemoveFile((tlvn::GetTempFolder() + "TolvanTraceOutput.txt").c_str());
}

// A file that cannot be made leaves tracing off, and a message longer than any text can be is
// dropped; neither throws.
TEST(Trace, ThrowsNothing)
{
    const std::string path = tlvn::GetTempFolder() + "TolvanTraceOutput.txt";
    CFile busy(path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    EXPECT_EQ(SetTraceOutput(1), 0);
    EXPECT_EQ(IsTraceOutput(), 0);
    busy.Close();

    ASSERT_EQ(SetTraceOutput(1), 1);
    EXPECT_NO_THROW(CTraceFunction("f")("x%*s", INT_MAX, ""));
    EXPECT_EQ(SetTraceOutput(0), 1);
    tlvn::RemoveFile(path.c_str());
}

TEST(Multibyte, LeadBytesAreToldWithinTheLength)
{
    const char text[] = "a\x82\xA0\x82";
    EXPECT_EQ(IsTLead(text, 1, 4), 1);
    EXPECT_EQ(IsTLead(text, 1, -1), 1);
    // A trail byte, no follower, one that lies outside.
    for (const auto& [pos, length] : {std::pair(2, 4), {3, 4}, {1, 2}, {-1, 4}})
        EXPECT_EQ(IsTLead(text, pos, length), 0) << pos;
    EXPECT_EQ(IsTLead(TW("\x82A0"), 0, 1), 0);
}

// B0 A1 is a double-byte character everywhere but in 932.
TEST(Multibyte, LocaleHoldsForItsScope)
{
    {
        CApplyLocale korean(CT_EUCKR);
        {
            CApplyLocale russian(CT_KOI8R);
            EXPECT_EQ(IsTLead("\xB0\xA1", 0, 2), 0);
            CApplyLocale chinese(CT_BIG5), unicode(CT_UNICODE);
            EXPECT_EQ(GetMultibyteCodePage(), 950u);
        }
        EXPECT_EQ(GetMultibyteCodePage(), 949u);
    }
    EXPECT_EQ(GetMultibyteCodePage(), 932u);
}
