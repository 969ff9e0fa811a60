// ZoProvision: registers products of the suite.
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

/// The languages whose library lies in \p folder.
void FindLanguages(const CString& folder, CDWordArray& languages)
{
    for (const DWORD id : kSuiteLanguages) {
        char abbreviation[4] = {};
        GetLocaleInfoA(id, LOCALE_SABBREVLANGNAME, abbreviation, sizeof abbreviation);
        if (IsFile(folder + "ZOGBL" + abbreviation + ".DLL"))
            languages.Add(id);
    }
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

int RemoveAll(const Arguments& arguments)
{
    for (INT_PTR i = 0; i < arguments.executables.GetSize(); ++i) {
        Product product;
        if (!product.Read(arguments.executables[i]))
            return Fail("names no product by its version resource", arguments.executables[i], ERROR_RESOURCE_DATA_NOT_FOUND);
        const DWORD status = arguments.allUsers ? Registration::RemoveProduct(product)
                                                : Registration::RemoveUser(product, arguments.user);
        if (status == ERROR_FILE_NOT_FOUND)
            std::printf("not registered: %s\n", (LPCSTR)product.name);
        else if (status != ERROR_SUCCESS)
            return Fail("cannot be removed", product.name, status);
        else
            std::printf("removed: %s%s%s\n", (LPCSTR)product.name, arguments.allUsers ? "" : ", user ",
                        arguments.allUsers ? "" : (LPCSTR)arguments.user);
    }
    return kDone;
}

int RegisterAll(const Arguments& arguments, const CString& folder)
{
    Registration registration(arguments.user, arguments.languages, arguments.currentLanguage);
    CStringArray modules;
    modules.Append(arguments.executables);
    modules.Add(folder + "ZOGBLBRX.DLL");
    for (INT_PTR i = 0; i < modules.GetSize(); ++i) {
        Product product;
        if (!product.Read(modules[i]))
            return Fail("names no product by its version resource", modules[i], ERROR_RESOURCE_DATA_NOT_FOUND);
        const DWORD status = registration.Register(product);
        if (status != ERROR_SUCCESS)
            return Fail("cannot be registered", product.name, status);
    }
    return kDone;
}

} // namespace

int main(int count, char** words)
{
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
    if (arguments.remove)
        return RemoveAll(arguments);

    if (arguments.languages.IsEmpty())
        FindLanguages(folder, arguments.languages);
    if (arguments.languages.IsEmpty())
        return Fail("holds no language library", folder, ERROR_FILE_NOT_FOUND);
    bool listed = arguments.currentLanguage == 0;
    for (INT_PTR i = 0; i < arguments.languages.GetSize(); ++i)
        listed = listed || arguments.languages[i] == arguments.currentLanguage;
    if (!listed) {
        std::fputs("ZoProvision: --current names a language that is not installed\n", stderr);
        return kWrongUsage;
    }
    return RegisterAll(arguments, folder);
}
