

#include "support/test.h"

TEST(Exceptions, CrossLibrariesAndDescribeThemselves)
{
    const struct {
        const char* name;
        std::function<void()> raise;
        const CRuntimeClass* runtimeClass;
        bool hasMessage;
    } cases[] = {
        {"memory", [] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), true},
        {"resource", [] { AfxThrowResourceException(); }, RUNTIME_CLASS(CResourceException), true},
        {"user", [] { AfxThrowUserException(); }, RUNTIME_CLASS(CUserException), false},
        {"file", [] { AfxThrowFileException(CFileException::badPath, ERROR_PATH_NOT_FOUND, "f"); },
         RUNTIME_CLASS(CFileException), true},
        {"file without code", [] { AfxThrowFileException(CFileException::badPath); }, RUNTIME_CLASS(CFileException),
         false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ZO_EXPECT_NO_LEAK({
            CException* caught = nullptr;
            try {
                c.raise();
            } catch (CException* e) {
                caught = e;
            }
            ASSERT_NE(nullptr, caught);
            EXPECT_TRUE(caught->IsKindOf(c.runtimeClass));
            char text[256];
            memset(text, 'x', sizeof text);
            EXPECT_EQ(c.hasMessage, caught->GetErrorMessage(text, sizeof text) != FALSE);
            if (c.hasMessage) {
                EXPECT_GT(strlen(text), 5u);
            } else {
                EXPECT_STREQ("", text) << "the buffer holds a text that nobody wrote";
            }
            char small[8];
            memset(small, 'x', sizeof small);
            caught->GetErrorMessage(small, 6);
            EXPECT_EQ('x', small[6]) << "written behind the buffer's end";
            EXPECT_NE(nullptr, memchr(small, '\0', 6)) << "not terminated";
            caught->Delete();
        });
    }
}

TEST(Exceptions, TranslateSystemErrors)
{
    static constexpr std::pair<LONG, int> cases[] = {
        {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
        {ERROR_PATH_NOT_FOUND, CFileException::badPath},
        {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
        {ERROR_ACCESS_DENIED, CFileException::accessDenied},
        {ERROR_INVALID_HANDLE, CFileException::invalidFile},
        {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
        {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
        {ERROR_DISK_FULL, CFileException::diskFull},
        {ERROR_HANDLE_EOF, CFileException::endOfFile},
        {ERROR_SEEK, CFileException::badSeek},
        {12345678, CFileException::genericException},
    };
    for (const auto& [code, cause] : cases) {
        try {
            CFileException::ThrowOsError(code, "name");
            ADD_FAILURE() << code << " was not thrown";
        } catch (CFileException* e) {
            EXPECT_EQ(cause, e->m_cause) << code;
            EXPECT_EQ(code, e->m_lOsError);
            EXPECT_STREQ("name", e->m_strFileName);
            e->Delete();
        }
    }
    CFileException::ThrowOsError(ERROR_SUCCESS); // throws nothing
}
