#include "help_file.h"

#include <common/double_byte.h>
#include <common/without_throwing.h>

#include <cstdlib>

namespace {

constexpr int kModulePrefixLength = 5; // "ZOGBL": what the files of one module have in common

/// What follows the last backslash, else the last colon, else the whole path.
CString FileName(const CString& path)
{
    int separator = path.ReverseFind('\\');
    if (separator < 0)
        separator = path.ReverseFind(':');
    return path.Mid(separator + 1);
}

/// The first characters of a name, none of them cut in half.
CString Prefix(const CString& name)
{
    int length = 0;
    for (int count = 0; count < kModulePrefixLength && length < name.GetLength(); ++count)
        length += static_cast<int>(CharacterWidth((LPCSTR)name + length));
    return name.Left(length);
}

/// Puts a help file in force. \return FALSE, with the one before still in force, without memory.
BOOL Replace(CWinApp* application, LPCSTR path)
{
    LPSTR copy = nullptr;
    if (*path != '\0') {
        copy = _strdup(path);
        if (copy == nullptr)
            return FALSE;
    }
    std::free(const_cast<LPSTR>(application->m_pszHelpFilePath));
    application->m_pszHelpFilePath = copy;
    return TRUE;
}

} // namespace

CString ZoGetHelpFile()
{
    CString name;
    if (const CWinApp* application = AfxGetApp())
        WithoutThrowing([&] { name = application->m_pszHelpFilePath; });
    return name;
}

BOOL ZoSetHelpFile(LPCSTR module, DWORD languageId)
{
    CWinApp* application = AfxGetApp();
    if (application == nullptr || module == nullptr || *module == '\0')
        return FALSE;
    char program[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, program, sizeof program);
    char abbreviation[4] = {};
    if (length == 0 || length >= sizeof program ||
        GetLocaleInfoA(languageId, LOCALE_SABBREVLANGNAME, abbreviation, sizeof abbreviation) <= 1)
        return FALSE;
    return WithoutThrowing([&] {
        CString path = program;
        path = path.Left(path.ReverseFind('\\') + 1) + Prefix(FileName(module)) + abbreviation + ".HLP";
        return path.GetLength() < MAX_PATH && Replace(application, path);
    });
}

void ZoRestoreHelpFile(LPCSTR name)
{
    if (CWinApp* application = AfxGetApp())
        Replace(application, name);
}
