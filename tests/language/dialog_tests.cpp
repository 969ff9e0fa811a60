// Every dialog of every language library, opened and measured: all texts fit.
#include <gtest/gtest.h>

#include <afxwin.h>

#include <string>
#include <vector>

namespace {

/// The language libraries beside the program.
std::vector<std::string> Libraries()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    const std::string folder = std::string(path).substr(0, std::string(path).rfind('\\') + 1);
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((folder + "ZOGBL???.DLL").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        if (_stricmp(found.cFileName, "ZOGBLBRX.DLL") != 0)
            names.push_back(folder + found.cFileName);
    } while (FindNextFileA(search, &found));
    FindClose(search);
    return names;
}

BOOL CALLBACK CollectName(HMODULE, LPCSTR, LPSTR name, LONG_PTR names)
{
    reinterpret_cast<std::vector<WORD>*>(names)->push_back(static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name)));
    return TRUE;
}

INT_PTR CALLBACK NoDialogProcedure(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

/// A text in its window's font.
SIZE Measure(HWND window, const std::wstring& text, int width, UINT format)
{
    const HDC dc = GetDC(window);
    const HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT area = {0, 0, width, 0};
    DrawTextW(dc, text.c_str(), -1, &area, DT_CALCRECT | format);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    return {area.right, area.bottom};
}

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void ExpectFits(HWND control)
{
    wchar_t name[16] = {};
    GetClassNameW(control, name, 16);
    const std::wstring text = TextOf(control);
    RECT area;
    GetClientRect(control, &area);
    SCOPED_TRACE(::testing::Message() << "control " << GetDlgCtrlID(control) << ": " << text);
    constexpr int kButtonFrame = 8; // pixels on both sides together
    if (_wcsicmp(name, L"Static") == 0) {
        const DWORD kind = static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE)) & SS_TYPEMASK;
        if (kind == SS_ICON || kind == SS_BITMAP)
            return;
        const SIZE size = Measure(control, text, area.right, DT_WORDBREAK | DT_EXPANDTABS);
        EXPECT_LE(size.cx, area.right);
        EXPECT_LE(size.cy, area.bottom);
    } else if (_wcsicmp(name, L"Button") == 0) {
        const SIZE size = Measure(control, text, area.right, DT_SINGLELINE);
        EXPECT_LE(size.cx + kButtonFrame, area.right);
        EXPECT_LE(size.cy, area.bottom);
    }
}

} // namespace

TEST(Dialogs, OpenInEveryLanguageAndHoldTheirTexts)
{
    const std::vector<std::string> libraries = Libraries();
    ASSERT_GE(libraries.size(), 2u);
    for (const std::string& path : libraries) {
        SCOPED_TRACE(path);
        const HMODULE library = LoadLibraryA(path.c_str());
        ASSERT_NE(nullptr, library);
        std::vector<WORD> dialogs;
        EnumResourceNamesA(library, RT_DIALOG, &CollectName, reinterpret_cast<LONG_PTR>(&dialogs));
        EXPECT_GE(dialogs.size(), 2u);
        for (const WORD id : dialogs) {
            SCOPED_TRACE(::testing::Message() << "dialog " << id);
            const HWND dialog = CreateDialogParamW(library, MAKEINTRESOURCEW(id), nullptr, &NoDialogProcedure, 0);
            ASSERT_NE(nullptr, dialog);
            RECT client;
            GetClientRect(dialog, &client);
            EXPECT_LE(Measure(dialog, TextOf(dialog), client.right, DT_SINGLELINE).cx, client.right) << "title";
            for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
                 control = GetWindow(control, GW_HWNDNEXT)) {
                RECT place;
                GetWindowRect(control, &place);
                MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
                EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.right &&
                            place.bottom <= client.bottom)
                    << "control " << GetDlgCtrlID(control) << " is outside";
                ExpectFits(control);
            }
            DestroyWindow(dialog);
        }
        FreeLibrary(library);
    }
}
