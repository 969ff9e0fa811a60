#include "support/test.h"

TEST(Exceptions, CrossLibrariesAndDescribeThemselves)
{
    const auto system = [](DWORD code) {
        char text[300];
        std::string line(text, FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                              0, text, sizeof text, nullptr));
        return line.substr(0, line.find('\r'));
    };
    const std::string generic = system(ERROR_CAN_NOT_COMPLETE);
    const auto file = [](int cause, LONG code) { return [=] { AfxThrowFileException(cause, code, "f"); }; };
    const std::tuple<std::function<void()>, const CRuntimeClass*, std::string> cases[] = {
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), system(ERROR_NOT_ENOUGH_MEMORY)},
        {[] { AfxThrowResourceException(); }, RUNTIME_CLASS(CResourceException), system(ERROR_RESOURCE_NAME_NOT_FOUND)},
        {[] { AfxThrowUserException(); }, RUNTIME_CLASS(CUserException), system(ERROR_CANCELLED)},
        {[] { throw new CException; }, RUNTIME_CLASS(CException), ""},
        {file(CFileException::diskFull, ERROR_WRITE_PROTECT), RUNTIME_CLASS(CFileException),
         system(ERROR_WRITE_PROTECT)},
        {file(CFileException::diskFull, 123456), RUNTIME_CLASS(CFileException), system(ERROR_DISK_FULL)},
        {file(-1, 0), RUNTIME_CLASS(CFileException), generic},
        {file(99, -1), RUNTIME_CLASS(CFileException), generic},
    };
    for (int cause = CFileException::fileNotFound; cause <= CFileException::endOfFile; ++cause) {
        char text[300] = "";
        EXPECT_TRUE(CFileException(cause).GetErrorMessage(text, sizeof text));
        EXPECT_TRUE(text[0] != '\0' && text != generic) << cause;
    }
    static std::string shown;
    AfxSetMessageBox([](HWND, LPCSTR told, LPCSTR, UINT) { return shown = told, 7; });
    for (const auto& [raise, runtimeClass, text] : cases) {
        SCOPED_TRACE(testing::Message() << runtimeClass->m_lpszClassName << ": " << text);
        ZO_EXPECT_NO_LEAK({
            try {
                raise();
                ADD_FAILURE() << "not thrown";
            } catch (CException* e) {
                EXPECT_TRUE(e->IsKindOf(runtimeClass));
                for (const size_t room : {300, 6, 1}) {
                    SentinelBuffer buffer(room);
                    UINT help = 5;
                    EXPECT_EQ(!text.empty(),
                              e->GetErrorMessage(buffer.Data(), static_cast<UINT>(room), &help) != FALSE);
                    EXPECT_EQ(0u, help);
                    const std::string cut = buffer.Text(); // whole characters
                    EXPECT_EQ(text.substr(0, cut.size()), cut);
                    EXPECT_GE(cut.size() + IsDoubleByte(), (std::min)(room - 1, text.size()));
                    buffer.ExpectGuardsIntact();
                }
                EXPECT_EQ(!text.empty(), e->GetErrorMessage(nullptr, 9) != FALSE);
                EXPECT_EQ(7, e->ReportError());
                EXPECT_EQ(text.empty() ? generic : text, shown);
                e->ReportError(MB_OK, 1600); // of host.rc
                EXPECT_EQ(text.empty() ? "host" : text, shown);
                e->Delete();
            }
            shown = std::string();
        });
    }
    AfxSetMessageBox(nullptr);
}

namespace {

const char* g_systemText;

DWORD WINAPI SystemSays(DWORD, LPCVOID, DWORD, DWORD, LPSTR text, DWORD, va_list*)
{
    strcpy(text, g_systemText);
    return static_cast<DWORD>(strlen(text));
}

} // namespace

TEST(Exceptions, HaveATextInAnyCaseAndCutNoCharacter)
{
    const ImportPatch patch("ZOAFX.DLL", "FormatMessageA", &SystemSays);
    char text[40];
    g_systemText = "";
    EXPECT_TRUE(CMemoryException().GetErrorMessage(text, sizeof text));
    EXPECT_STREQ("Error 8", text);
    g_systemText = "\x83\x5C\x83\x5C";
    EXPECT_TRUE(CMemoryException().GetErrorMessage(text, 4));
    EXPECT_STREQ(IsDoubleByte() ? "\x83\x5C" : "\x83\x5C\x83", text);
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
