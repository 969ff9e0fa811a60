// ZoProvision: registers products of the suite.
#include "../library_search.h"
#include "arguments.h"
#include "product.h"
#include "registration.h"

#include <cstdio>

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2 };

constexpr DWORD kSuiteLanguages[] = {0x0409, 0x0407, 0x040C, 0x040A, 0x0411};

CString OwnFolder()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    const CString own(path);
    return own.Left(own.ReverseFind('\\') + 1);
}

bool IsFile(const CString& path)
{
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Where the library of a language lies, or would lie.
CString LanguageLibrary(const CString& folder, DWORD id)
{
    char abbreviation[4] = {};
    GetLocaleInfoA(id, LOCALE_SABBREVLANGNAME, abbreviation, sizeof abbreviation);
    return folder + "ZOGBL" + abbreviation + ".DLL";
}

CString LoggedOnUser()
{
    char name[260] = {};
    DWORD size = sizeof name;
    return GetUserNameA(name, &size) && name[0] != '\0' ? name : "SYSTEM";
}

int Fail(const char* what, const CString& subject, DWORD status)
{
    char reason[256] = "";
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
                   status, 0, reason, sizeof reason, nullptr);
    std::fprintf(stderr, "ZoProvision: %s: %s (status 0x%lX%s%s)\n", what, (LPCSTR)subject, status,
                 reason[0] != '\0' ? ": " : "", reason);
    return kFailed;
}

bool ReadProduct(Product& product, const CString& path)
{
    if (product.Read(path) && !product.internalName.IsEmpty())
        return true;
    Fail("names no product and module by its version resource", path, ERROR_RESOURCE_DATA_NOT_FOUND);
    return false;
}

int RemoveAll(const Arguments& arguments, Registration& registration)
{
    for (INT_PTR i = 0; i < arguments.executables.GetSize(); ++i) {
        Product product;
        if (!ReadProduct(product, arguments.executables[i]))
            return kFailed;
        bool isInUse = false;
        const DWORD status = arguments.allUsers ? registration.RemoveProduct(product, isInUse)
                                                : registration.RemoveUser(product, arguments.user);
        if (status == ERROR_FILE_NOT_FOUND)
            std::printf("not registered: %s\n", (LPCSTR)product.name);
        else if (status != ERROR_SUCCESS)
            return Fail("cannot be removed", product.name, status);
        else
            std::printf("removed: %s%s%s%s\n", (LPCSTR)product.name, arguments.allUsers ? "" : ", user ",
                        arguments.allUsers ? "" : (LPCSTR)arguments.user,
                        isInUse ? ", this installation; another one keeps the settings" : "");
    }
    return kDone;
}

int RegisterAll(const Arguments& arguments, Registration& registration)
{
    for (INT_PTR i = 0; i < arguments.executables.GetSize(); ++i) {
        Product product;
        if (!ReadProduct(product, arguments.executables[i]))
            return kFailed;
        const DWORD status =
            registration.Register(product, arguments.user, arguments.languages, arguments.currentLanguage);
        if (status != ERROR_SUCCESS)
            return Fail("cannot be registered", product.name, status);
    }
    return kDone;
}

/// Settles which languages to register. \return the exit code.
int ChooseLanguages(Arguments& arguments, const CString& folder)
{
    if (arguments.languages.IsEmpty()) {
        for (const DWORD id : kSuiteLanguages) {
            if (IsFile(LanguageLibrary(folder, id)))
                arguments.languages.Add(id);
        }
        if (arguments.languages.IsEmpty())
            return Fail("holds no language library", folder, ERROR_FILE_NOT_FOUND);
    }
    bool listed = arguments.currentLanguage == 0;
    for (INT_PTR i = 0; i < arguments.languages.GetSize(); ++i) {
        const CString library = LanguageLibrary(folder, arguments.languages[i]);
        if (!IsFile(library))
            return Fail("the language has no library", library, ERROR_FILE_NOT_FOUND);
        listed = listed || arguments.languages[i] == arguments.currentLanguage;
    }
    if (!listed) {
        std::fputs("ZoProvision: --current names a language that is not to be registered\n", stderr);
        return kWrongUsage;
    }
    return kDone;
}

} // namespace

int main(int count, char** words)
{
    LeaveOutCurrentFolder();
    Arguments arguments;
    if (!arguments.Parse(count, words))
        return kWrongUsage;
    if (arguments.help) {
        std::fputs(kHelp, stdout);
        return kDone;
    }
    const CString folder = OwnFolder();
    if (arguments.executables.IsEmpty())
        arguments.executables.Add(folder + "ZoWorkbench.exe");
    if (arguments.user.IsEmpty())
        arguments.user = LoggedOnUser();
    for (INT_PTR i = 0; i < arguments.executables.GetSize(); ++i) {
        if (!IsFile(arguments.executables[i]))
            return Fail("there is no such file", arguments.executables[i], ERROR_FILE_NOT_FOUND);
    }
    Product library;
    if (!ReadProduct(library, folder + "ZOGBLBRX.DLL"))
        return kFailed;
    Registration registration(library, folder);
    if (arguments.remove)
        return RemoveAll(arguments, registration);
    const int chosen = ChooseLanguages(arguments, folder);
    return chosen != kDone ? chosen : RegisterAll(arguments, registration);
}
