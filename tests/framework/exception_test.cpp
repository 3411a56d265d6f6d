#include "framework/exception.h"

#include "framework/file_exception.h"
#include "tests/support/test.h"

namespace {

struct CountedException : CException {
    CountedException(int& count, BOOL autoDelete) : CException(autoDelete), deleted(count) {}
    ~CountedException() override { deleted++; }
    int& deleted;
};

class Makeable : public CObject {
    DECLARE_DYNCREATE(Makeable)
};
IMPLEMENT_DYNCREATE(Makeable, CObject)

TEST(Object, RunTimeClasses)
{
    CFileException file;
    const CObject* const object = &file;
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(object->IsKindOf(RUNTIME_CLASS(CArchiveException)));
    EXPECT_STREQ(object->GetRuntimeClass()->m_lpszClassName, "CFileException");
    EXPECT_EQ(DYNAMIC_DOWNCAST(CFileException, object), &file);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CMemoryException, object), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CMemoryException, static_cast<CObject*>(nullptr)), nullptr);

    CObject* const made = RUNTIME_CLASS(Makeable)->CreateObject();
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(Makeable)));
    delete made;
    EXPECT_EQ(RUNTIME_CLASS(CException)->CreateObject(), nullptr);
}

// Delete releases an object made by new and leaves a static one alone.
TEST(Exception, DeleteHonoursTheFlag)
{
    int deleted = 0;
    (new CountedException(deleted, TRUE))->Delete();
    EXPECT_EQ(deleted, 1);
    CountedException automatic(deleted, FALSE);
    automatic.Delete();
    EXPECT_EQ(deleted, 1);
}

std::string MessageOf(CException& exception, UINT size = 512)
{
    std::string buffer(size, '#');
    return exception.GetErrorMessage(buffer.data(), size) ? buffer.c_str() : "(none)";
}

TEST(Exception, Messages)
{
    CFileException notFound(CFileException::fileNotFound, 2, "C:\\x");
    const std::string text =
        "C:\\x \x82\xAA\x8C\xA9\x82\xC2\x82\xA9\x82\xE8\x82\xDC\x82\xB9\x82\xF1\x81\x42";
    EXPECT_EQ(MessageOf(notFound), text);
    // Cut between characters: 5 + 2 bytes fit into 8 and into 9 with the terminator.
    EXPECT_EQ(MessageOf(notFound, 8), text.substr(0, 7));
    EXPECT_EQ(MessageOf(notFound, 9), text.substr(0, 7));
    EXPECT_FALSE(notFound.GetErrorMessage(nullptr, 10));

    // Every cause has a message of its own kind; an unknown one counts as the general cause.
    CFileException e(CFileException::none, -1, "%s%d");
    for (; e.m_cause <= CFileException::endOfFile; e.m_cause++)
        EXPECT_NE(MessageOf(e).find("%s%d"), std::string::npos) << e.m_cause;
    e.m_cause = 99;
    CFileException general(CFileException::generic, -1, "%s%d");
    EXPECT_EQ(MessageOf(e), MessageOf(general));
    CArchiveException archive(CArchiveException::none, "f");
    for (; archive.m_cause <= CArchiveException::badSchema; archive.m_cause++)
        EXPECT_NE(MessageOf(archive).find("f"), std::string::npos) << archive.m_cause;
    CFileException unnamed(CFileException::badPath);
    EXPECT_GT(MessageOf(unnamed).size(), 30u);

    CException plain;
    UINT helpId = 5;
    char buffer[4] = "abc";
    EXPECT_FALSE(plain.GetErrorMessage(buffer, 4, &helpId));
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(helpId, 0u);
}

TEST(Exception, ThrownByPointer)
{
    try {
        AfxThrowMemoryException();
    } catch (CException* e) {
        EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(CMemoryException)));
        EXPECT_NE(MessageOf(*e), "(none)");
        e->Delete();
    }
    EXPECT_THROW(AfxThrowNotSupportedException(), CNotSupportedException*);
    // 2 is ENOENT and ERROR_FILE_NOT_FOUND.
    try {
        CFileException::ThrowOsError(2, "name");
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::fileNotFound);
        EXPECT_EQ(e->m_lOsError, 2);
        EXPECT_STREQ(e->m_strFileName, "name");
        e->Delete();
    }
    EXPECT_EQ(CFileException::OsErrorToException(0), CFileException::none);
    EXPECT_EQ(CFileException::OsErrorToException(123456), CFileException::generic);
}

} // namespace
