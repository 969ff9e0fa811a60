#include "support/test.h"

TEST(Exceptions, CrossLibrariesAndDescribeThemselves)
{
    const struct {
        std::function<void()> raise;
        const CRuntimeClass* runtimeClass;
        bool hasMessage;
    } cases[] = {
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), true},
        {[] { AfxThrowResourceException(); }, RUNTIME_CLASS(CResourceException), true},
        {[] { AfxThrowUserException(); }, RUNTIME_CLASS(CUserException), false},
        {[] { AfxThrowFileException(1, ERROR_PATH_NOT_FOUND, "f"); }, RUNTIME_CLASS(CFileException), true},
        {[] { AfxThrowFileException(1); }, RUNTIME_CLASS(CFileException), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.runtimeClass->m_lpszClassName
                                        << (c.hasMessage ? "" : " without a message"));
        ZO_EXPECT_NO_LEAK({
            try {
                c.raise();
                ADD_FAILURE() << "not thrown";
            } catch (CException* e) {
                EXPECT_TRUE(e->IsKindOf(c.runtimeClass));
                char text[256];
                memset(text, 'x', sizeof text);
                EXPECT_EQ(c.hasMessage, e->GetErrorMessage(text, sizeof text) != FALSE);
                EXPECT_EQ(c.hasMessage, strnlen(text, sizeof text) > 5) << "the text of a message, or none";
                SentinelBuffer small(6);
                e->GetErrorMessage(small.Data(), static_cast<UINT>(small.Size()));
                EXPECT_EQ(c.hasMessage ? 5u : 0u, small.Text().size());
                small.ExpectGuardsIntact();
                e->Delete();
            }
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
            CFileException::ThrowOsError(ERROR_SUCCESS); // throws nothing
            CFileException::ThrowOsError(code, "name");
            ADD_FAILURE() << code << " was not thrown";
        } catch (CFileException* e) {
            EXPECT_EQ(cause, e->m_cause) << code;
            EXPECT_EQ(code, e->m_lOsError);
            EXPECT_STREQ("name", e->m_strFileName);
            e->Delete();
        }
    }
}
