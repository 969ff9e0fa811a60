#include <zogbl/file_name_functions.h>

#include <common/without_throwing.h>

#include "ground/bounded_text.h"

#include <afxwin.h>

#include <cstdio>
#include <cstring>

namespace {

/// Gives the caller the text that \p make puts together.
template <class MAKE> void Assign(CString& out, MAKE make)
{
    WithoutThrowing([&] { out = make(); });
}

/// The file name as the framework sees it: behind the last separator of any kind.
const char* FindFileName(const char* path)
{
    const char* name = path;
    for (const char* p = path; *p != '\0'; p = NextCharacter(p)) {
        if (*p == '\\' || *p == '/' || *p == ':')
            name = p + 1;
    }
    return name;
}

/// The end of what an abbreviated path always shows: of two backslashes and a server, else of the first two characters.
const char* FindEndOfRoot(const char* path)
{
    if (path[0] == '\\' && path[1] == '\\' && path[2] != '\\') {
        const char* end = path + 2;
        while (*end != '\0' && *end != '\\')
            end = NextCharacter(end);
        return end;
    }
    return NextCharacter(NextCharacter(path)); // which stay at the end of the text
}

} // namespace

void CZoGlobalFileNameFunctions::ExtractNameFromPath(const char* path, CString& name)
{
    Assign(name, [=] {
        const CString whole(path);
        int separator = whole.ReverseFind('\\');
        if (separator < 0)
            separator = whole.ReverseFind(':');
        return whole.Mid(separator + 1);
    });
}

void CZoGlobalFileNameFunctions::ExtractPathFromPath(const char* path, CString& dir)
{
    Assign(dir, [=] {
        const CString whole(path);
        const int backslash = whole.ReverseFind('\\');
        if (backslash >= 0) {
            const CString folder = whole.Left(backslash);
            return folder.GetLength() == 2 && folder[1] == ':' ? folder + '\\' : folder;
        }
        const int colon = whole.ReverseFind(':');
        return colon >= 0 ? whole.Left(colon) : whole;
    });
}

void CZoGlobalFileNameFunctions::MakePath(const char* dir, const char* name, CString& path)
{
    Assign(path, [=] {
        CString whole(dir);
        const char last = whole.IsEmpty() ? '\\' : whole[whole.GetLength() - 1];
        if (last != '\\' && last != ':')
            whole += '\\';
        return whole + CString(name);
    });
}

void CZoGlobalFileNameFunctions::AbbreviateFilePath(const char* path, char* out, CDC* dc, int maxWidth)
{
    if (out == nullptr)
        return;
    if (path == nullptr)
        path = "";
    const auto fits = [=](const char* text) {
        const size_t length = std::strlen(text);
        return length < MAX_PATH && (dc == nullptr || dc->GetTextExtent(text, static_cast<int>(length)).cx <= maxWidth);
    };
    if (fits(path))
        return CopyBounded(out, MAX_PATH, path);

    const char* const name = FindFileName(path);
    const char* const endOfRoot = FindEndOfRoot(path);
    char text[MAX_PATH];
    const auto shortForm = [&](const char* separator, const char* rest) {
        const int length = std::snprintf(text, sizeof text, "%.*s\\...%s%s", static_cast<int>(endOfRoot - path), path,
                                         separator, rest);
        return length > 0 && static_cast<size_t>(length) < sizeof text && fits(text);
    };
    if (fits(name) && shortForm("\\", name)) {
        for (const char* rest = endOfRoot; *rest != '\0'; rest = NextCharacter(rest)) {
            if (*rest == '\\' && shortForm("", rest))
                return CopyBounded(out, MAX_PATH, text);
        }
    }
    CopyBounded(out, MAX_PATH, name);
}

void CZoGlobalFileNameFunctions::ReplaceExtension(const char* path, CString& out, const char* ext)
{
    Assign(out, [=] {
        CString whole(path);
        const int dot = whole.ReverseFind('.');
        if (dot >= 0)
            whole = whole.Left(dot);
        if (ext != nullptr) {
            whole += '.';
            whole += ext;
        }
        return whole;
    });
}

void CZoGlobalFileNameFunctions::ReplaceExtension(CString& path, const char* ext) { ReplaceExtension(path, path, ext); }
