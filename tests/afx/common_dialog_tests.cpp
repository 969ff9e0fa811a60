// Dialogs of the system. The machine has no printer.
#include "support/test.h"

#include <afxdlgs.h>

namespace {

/// Why a dialog was not shown.
DWORD Failure()
{
    const auto ask = reinterpret_cast<decltype(&CommDlgExtendedError)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("comdlg32.dll"), "CommDlgExtendedError")));
    return ask != nullptr ? ask() : 0;
}

/// Acts when its window is there.
template <class DIALOG> class Acting : public DIALOG {
public:
    using DIALOG::DIALOG;
    std::function<void()> act = [] {};

    BOOL OnInitDialog() override { return act(), DIALOG::OnInitDialog(); }
};

HMODULE WINAPI NoLibrary(LPCSTR) { return nullptr; }

} // namespace

TEST(CommonDialogs, ChooseColours)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr));
    COLORREF* const kept = CColorDialog::GetSavedCustomColors();
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(RGB(255, 255, 255), kept[i]);
    for (const INT_PTR result : {IDOK, IDCANCEL}) {
        Acting<CColorDialog> dialog(RGB(10, 20, 30), 0, &owner);
        EXPECT_EQ(kept, dialog.m_cc.lpCustColors);
        dialog.act = [&] { EXPECT_NE(nullptr, dialog.m_hWnd); };
        const DialogDriver driver{[&](HWND window) {
            EXPECT_EQ(window, dialog.m_hWnd);
            EXPECT_EQ(owner.m_hWnd, GetWindow(window, GW_OWNER));
            EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
            Press(window, static_cast<int>(result));
        }};
        EXPECT_EQ(result, dialog.DoModal());
        EXPECT_EQ(RGB(10, 20, 30), dialog.GetColor());
        EXPECT_EQ(nullptr, dialog.m_hWnd);
        EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
    }
    Acting<CColorDialog> failing;
    failing.act = [] { AfxThrowUserException(); };
    EXPECT_EQ(IDCANCEL, failing.DoModal()) << "an exception must not pass the system";
    const ImportPatch load("ZOAFX.DLL", "LoadLibraryA", &NoLibrary), find("ZOAFX.DLL", "GetModuleHandleA", &NoLibrary);
    EXPECT_EQ(IDCANCEL, CColorDialog().DoModal());
}

TEST(CommonDialogs, ChooseFonts)
{
    LOGFONTA font = {};
    font.lfHeight = -20;
    font.lfWeight = FW_BOLD;
    font.lfUnderline = TRUE;
    lstrcpyA(font.lfFaceName, "Tahoma");
    CFontDialog dialog(&font);
    const DialogDriver driver{[&](HWND window) {
        LOGFONTA shown = {};
        dialog.GetCurrentFont(&shown);
        EXPECT_STREQ("Tahoma", shown.lfFaceName);
        EXPECT_EQ(FW_BOLD, shown.lfWeight);
        Press(window, IDOK);
    }};
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_STREQ("Tahoma", dialog.GetFaceName());
    EXPECT_EQ(150, dialog.GetSize()) << "20 of 96 pixels";
    EXPECT_EQ(FW_BOLD, dialog.GetWeight());
    EXPECT_TRUE(dialog.IsBold() && dialog.IsUnderline());
    EXPECT_FALSE(dialog.IsItalic() || dialog.IsStrikeOut());
}

TEST(CommonDialogs, SayThatThereIsNoPrinter)
{
    CPrintDialog defaults(FALSE);
    EXPECT_FALSE(defaults.GetDefaults());
    EXPECT_EQ(DWORD{PDERR_NODEFAULTPRN}, Failure());
    EXPECT_EQ(0u, defaults.m_pd.Flags & PD_RETURNDEFAULT) << "the next one is shown";
    EXPECT_EQ(nullptr, defaults.GetPrinterDC());
    EXPECT_EQ(nullptr, defaults.CreatePrinterDC());
    EXPECT_EQ(nullptr, defaults.GetDevMode());
    EXPECT_STREQ("", defaults.GetDeviceName());
    CPrintDialog print(FALSE), settings(TRUE);
    CPageSetupDialog page;
    for (CCommonDialog* dialog : std::initializer_list<CCommonDialog*>{&print, &settings, &page}) {
        const DialogDriver driver{Pressing(IDOK)}; // of the system's box
        EXPECT_EQ(IDCANCEL, dialog->DoModal());
        EXPECT_EQ(DWORD{PDERR_NODEFAULTPRN}, Failure());
    }
}

TEST(CommonDialogs, NameThePrinterAndTheWork)
{
    struct Names {
        DEVNAMES offsets;
        char driver[8], device[48], port[4];
    };
    CPrintDialog dialog(FALSE);
    dialog.m_pd.hDevNames = GlobalAlloc(GHND, sizeof(Names));
    auto* names = static_cast<Names*>(GlobalLock(dialog.m_pd.hDevNames));
    *names = {{offsetof(Names, driver), offsetof(Names, device), offsetof(Names, port), 0},
              "DISPLAY",
              "A printer with a name of more than 31 signs",
              {'L', 'P', 'T', '1'}}; // to the end of the memory
    const size_t beyond = GlobalSize(dialog.m_pd.hDevNames);
    EXPECT_STREQ("DISPLAY", dialog.GetDriverName());
    EXPECT_STREQ("A printer with a name of more than 31 signs", dialog.GetDeviceName());
    EXPECT_EQ(0, lstrcmpA("LPT1", dialog.GetPortName().Left(4)));
    names->offsets.wOutputOffset = static_cast<WORD>(beyond);
    EXPECT_STREQ("", dialog.GetPortName()) << "damaged";
    names->device[0] = '\0';
    const HDC context = dialog.CreatePrinterDC();
    EXPECT_NE(nullptr, context);
    EXPECT_EQ(context, dialog.GetPrinterDC());
    DeleteDC(context);
    EXPECT_EQ(0u, (GlobalUnlock(dialog.m_pd.hDevNames), GlobalFlags(dialog.m_pd.hDevNames) & GMEM_LOCKCOUNT));
    GlobalFree(dialog.m_pd.hDevNames);

    dialog.m_pd.hDevMode = GlobalAlloc(GHND, sizeof(DEVMODEA));
    dialog.GetDevMode()->dmCopies = 3;
    GlobalUnlock(dialog.m_pd.hDevMode);
    dialog.m_pd.nCopies = 1;
    dialog.m_pd.nFromPage = 2;
    dialog.m_pd.nToPage = 4;
    const auto work = [&](DWORD flags) {
        dialog.m_pd.Flags = flags;
        CString text;
        text.Format("%d %d%d%d %d-%d%s", dialog.GetCopies(), dialog.PrintAll(), dialog.PrintRange(),
                    dialog.PrintSelection(), dialog.GetFromPage(), dialog.GetToPage(),
                    dialog.PrintCollate() ? " collated" : "");
        return std::string(text);
    };
    EXPECT_EQ("1 100 -1--1", work(PD_ALLPAGES));
    EXPECT_EQ("3 010 2-4", work(PD_PAGENUMS | PD_USEDEVMODECOPIES));
    EXPECT_EQ("1 001 -1--1 collated", work(PD_SELECTION | PD_COLLATE));
    GlobalFree(dialog.m_pd.hDevMode);
}
