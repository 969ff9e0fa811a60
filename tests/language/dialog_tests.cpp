// Every dialog of every language library, opened and measured: all texts fit, no control covers another, and each has
// its key.
#include "support/language_libraries.h"
#include "support/test.h"

#include <common/picture.h>
#include <common/wait.h>

#include <zogbl/control.h>
#include <zogbl/resource_ids.h>

#include <commctrl.h>

namespace {

class Dialogs : public LanguageLibrary {};

INSTANTIATE_TEST_SUITE_P(Languages, Dialogs, testing::ValuesIn(kLanguages), &LanguageName);

BOOL CALLBACK CollectName(HMODULE, LPCSTR, LPSTR name, LONG_PTR names)
{
    reinterpret_cast<std::vector<WORD>*>(names)->push_back(static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name)));
    return TRUE;
}

INT_PTR CALLBACK NoDialogProcedure(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

/// Texts that a control gets at run time.
constexpr struct {
    WORD firstDialog, lastDialog;
    int control; // 0: a button beside the dialog, of the sheet that it is a page of; -1: what else has room there
    UINT text;
} kRunTimeTexts[] = {
    {ZO_IDD_TOOL_GENERAL, ZO_IDD_TOOL_GENERAL, ZO_IDC_TOOL_ARGUMENTS_LABEL, ZO_IDS_TOOL_ARGUMENTS},
    {ZO_IDD_TOOL_GENERAL, ZO_IDD_TOOL_GENERAL, ZO_IDC_TOOL_ARGUMENTS_LABEL, ZO_IDS_TOOL_DEFAULT_ARGUMENTS},
    {ZO_IDD_TOOL_OPTIONS, ZO_IDD_TOOL_CONSOLE, -1, ZO_IDS_TOOL_LIST},
    {ZO_IDD_TOOL_OPTIONS, ZO_IDD_TOOL_CONSOLE, 0, ZO_IDS_TOOL_ADD},
    {ZO_IDD_TOOL_OPTIONS, ZO_IDD_TOOL_CONSOLE, 0, ZO_IDS_TOOL_REMOVE},
    {ZO_IDD_TOOL_OPTIONS, ZO_IDD_TOOL_CONSOLE, 0, ZO_IDS_TOOL_MOVE_UP},
    {ZO_IDD_TOOL_OPTIONS, ZO_IDD_TOOL_CONSOLE, 0, ZO_IDS_TOOL_MOVE_DOWN},
    {ZO_IDD_WORKSPACE, ZO_IDD_KEPT_ANSWERS, -1, ZO_IDS_OPTIONS_SEARCH},
    {ZO_IDD_WORKSPACE, ZO_IDD_KEPT_ANSWERS, -1, ZO_IDS_OPTIONS_PAGES},
    {ZO_IDD_WORKSPACE, ZO_IDD_KEPT_ANSWERS, -1, ZO_IDS_SHEET_APPLY},
    {ZO_IDD_KEPT_ANSWERS, ZO_IDD_KEPT_ANSWERS, ZO_IDC_ANSWERS_WORDS, ZO_IDS_ANSWERS_NONE},
    {ZO_IDD_TRANSLATE_CHOOSER, ZO_IDD_TRANSLATE_CHOOSER, ZO_IDC_TRANSLATE_WHY, ZO_IDS_TRANSLATE_NO_TABLES},
    {ZO_IDD_WIZARD, ZO_IDD_WIZARD, ZO_IDC_WIZARD_STEP, ZO_IDS_WIZARD_STEP},
    {ZO_IDD_WIZARD, ZO_IDD_WIZARD, ZO_IDC_WIZARD_REASON, ZO_IDS_WIZARD_MISSING},
    {ZO_IDD_WIZARD, ZO_IDD_WIZARD, 0, ZO_IDS_WIZARD_FINISH},
    {ZO_IDD_STRING_SELECT, ZO_IDD_STRING_SELECT, ZO_IDC_STRING_COUNT, ZO_IDS_STRING_SHOWN},
    {ZO_IDD_STRINGS_SELECT, ZO_IDD_STRINGS_SELECT, ZO_IDC_STRING_COUNT, ZO_IDS_STRING_SELECTED},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_INFORMATION, ZO_IDS_PRINT_NO_PRINTER},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_INFORMATION, ZO_IDS_PRINT_NO_ANSWER},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_INFORMATION, ZO_IDS_PRINT_DEFAULT_AT},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_REASON, ZO_IDS_PRINT_GONE},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_REASON, ZO_IDS_PRINT_SET_UP_FAILED},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_REASON, ZO_IDS_PRINT_BAD_PAGES},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_REASON, ZO_IDS_PRINT_BAD_ORDER},
    {ZO_IDD_PRINT, ZO_IDD_PRINT, ZO_IDC_PRINT_REASON, ZO_IDS_PRINT_BAD_COPIES},
    {ZO_IDD_ABORT, ZO_IDD_ABORT, IDCANCEL, ZO_IDS_ABORT_STOP},
    {ZO_IDD_ABORT, ZO_IDD_ABORT, ZO_IDC_ABORT_REMAINING, ZO_IDS_ABORT_ENDING},
    {ZO_IDD_ASK_NAME, ZO_IDD_ASK_NAME, ZO_IDC_NAME_PROMPT, ZO_IDS_NEW_FOLDER_PROMPT},
    {ZO_IDD_ASK_NAME, ZO_IDD_ASK_NAME, ZO_IDC_NAME_PROMPT, ZO_IDS_LOC_RENAME_PROMPT},
    {ZO_IDD_LOC_ADDRESS, ZO_IDD_LOC_OUTSIDE, -1, ZO_IDS_LOC_LIST},
    {ZO_IDD_LOC_ADDRESS, ZO_IDD_LOC_OUTSIDE, 0, ZO_IDS_LOC_NEW},
    {ZO_IDD_LOC_ADDRESS, ZO_IDD_LOC_OUTSIDE, 0, ZO_IDS_LOC_COPY},
    {ZO_IDD_LOC_ADDRESS, ZO_IDD_LOC_OUTSIDE, -1, ZO_IDS_LOC_RENAME},
    {ZO_IDD_LOC_ADDRESS, ZO_IDD_LOC_OUTSIDE, 0, ZO_IDS_LOC_DELETE},
    {ZO_IDD_LOC_ADDRESS, ZO_IDD_LOC_OUTSIDE, -1, ZO_IDS_LOC_MAKE_CURRENT},
    {ZO_IDD_LOC_OUTSIDE, ZO_IDD_LOC_OUTSIDE, ZO_IDC_LOC_HOW, ZO_IDS_LOC_NO_NUMBER},
    {ZO_IDD_LOC_OUTSIDE, ZO_IDD_LOC_OUTSIDE, ZO_IDC_LOC_HOW, ZO_IDS_LOC_NO_CODE},
    {ZO_IDD_LOC_OUTSIDE, ZO_IDD_LOC_OUTSIDE, ZO_IDC_LOC_HOW, ZO_IDS_LOC_NOT_DIALABLE},
    {ZO_IDD_LOC_OUTSIDE, ZO_IDD_LOC_OUTSIDE, ZO_IDC_LOC_HOW, ZO_IDS_LOC_ASK_FIRST},
    {ZO_IDD_LOC_OUTSIDE, ZO_IDD_LOC_OUTSIDE, ZO_IDC_LOC_HOW, ZO_IDS_LOC_REFUSED},
};

/// Controls with those texts, as they then stand in the dialog or beside it.
std::vector<DialogControl> RunTimeControls(HMODULE library, WORD id, HWND dialog,
                                           const std::vector<DialogControl>& controls)
{
    constexpr LONG kButtonWidth = 50, kButtonHeight = 14; // dialog units
    std::vector<DialogControl> found;
    for (const auto& row : kRunTimeTexts) {
        wchar_t text[256] = {};
        if (id < row.firstDialog || id > row.lastDialog)
            continue;
        EXPECT_NE(0, LoadStringW(library, row.text, text, 256)) << row.text;
        DialogControl shown = {
            dialog, row.control, {0, 0, kButtonWidth, kButtonHeight}, false, row.control == 0, false, BS_PUSHBUTTON,
            0,      text};
        MapDialogRect(dialog, &shown.place);
        for (const DialogControl& control : controls)
            shown = row.control > 0 && control.id == row.control ? control : shown;
        EXPECT_TRUE(row.control <= 0 || shown.isStatic || row.control == IDCANCEL) << row.control;
        shown.text = text;
        found.push_back(shown);
    }
    return found;
}

/// A person needs no mouse: each control that Tab reaches has a letter, in its text or in the last one before it (dots
/// stand for none; OK and Cancel have keys anyway). No letter stands twice, and Tab goes to the right or downwards.
void ExpectKeys(WORD id, const std::vector<DialogControl>& controls, const std::vector<DialogControl>& later)
{
    std::set<wchar_t> letters;
    const auto hasLetter = [&](const std::wstring& text) {
        const size_t mark = text.find(L'&');
        if (mark == std::wstring::npos)
            return false;
        EXPECT_TRUE(letters.insert(static_cast<wchar_t>(towupper(text[mark + 1]))).second) << "twice in " << text;
        return true;
    };
    for (const DialogControl& control : later)
        EXPECT_TRUE(control.id > 0 || hasLetter(control.text)) << control.text;
    bool hasOne = id == ZO_IDD_PROGRAM_PROMPT || id == ZO_IDD_ASK_NAME; // whose labels programs give them
    const DialogControl* last = nullptr;
    for (const DialogControl& control : controls) {
        if (control.text.find_first_not_of(L'.') != std::wstring::npos)
            hasOne = hasLetter(control.text);
        if ((control.style & WS_TABSTOP) == 0)
            continue;
        EXPECT_TRUE(hasOne || control.id == IDOK || control.id == IDCANCEL) << "no letter for " << control.id;
        EXPECT_TRUE(last == nullptr || control.id == IDOK || control.place.left >= last->place.right ||
                    control.place.top >= last->place.bottom)
            << "from " << last->id << " back to " << control.id;
        last = &control;
    }
}

} // namespace

TEST_P(Dialogs, OpenAndHoldTheirTexts)
{
    const Language& language = GetParam();
    const bool isOwnSystem = language.codePage == GetACP();
    ZO_ONLY_IN(isOwnSystem || IsDoubleByte(), "a system without fonts for characters of two bytes");
    InitCommonControls();
    WNDCLASSA control = {};
    control.style = CS_GLOBALCLASS;
    control.lpfnWndProc = &DefWindowProcA;
    control.hInstance = GetModuleHandleA(nullptr);
    control.lpszClassName = ZO_CONTROL_CLASS; // the library's own controls
    RegisterClassA(&control);
    // Pages of sheets are child windows, and may begin above their parent.
    const HWND parent =
        CreateWindowExA(0, "#32770", "", WS_POPUP | WS_DLGFRAME, 50, 50, 500, 400, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(parent, SW_SHOW);
    Settle();
    std::vector<WORD> dialogs;
    EnumResourceNamesA(m_library, RT_DIALOG, &CollectName, reinterpret_cast<LONG_PTR>(&dialogs));
    EXPECT_GE(dialogs.size(), 2u);
    for (const WORD id : dialogs) {
        SCOPED_TRACE(testing::Message() << "dialog " << id);
        const HWND dialog = CreateDialogParamW(m_library, MAKEINTRESOURCEW(id), parent, &NoDialogProcedure, 0);
        ASSERT_NE(nullptr, dialog);
        const std::vector<DialogControl> controls = ControlsOf(dialog);
        ExpectTidy(dialog);
        const std::vector<DialogControl> later = RunTimeControls(m_library, id, dialog, controls);
        std::for_each(later.begin(), later.end(), &ExpectFits);
        ExpectKeys(id, controls, later);
        if (isOwnSystem && !controls.empty()) {
            ShowWindow(dialog, SW_SHOW);
            UpdateWindow(dialog);
            Settle();
            const std::string picture =
                ProgramFolder() + "..\\tests\\language\\" + language.name + "-" + std::to_string(id) + ".png";
            EXPECT_TRUE(SavePicture(dialog, picture.c_str())) << picture;
        }
        DestroyWindow(dialog);
    }
    DestroyWindow(parent);
}
