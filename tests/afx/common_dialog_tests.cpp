// Dialogs of the system. The machine has no printer.
#include "kit.h"

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
struct Colors : CColorDialog {
    explicit Colors(CWnd* parent) : CColorDialog(RGB(10, 20, 30), 0, parent) {}
    BOOL OnInitDialog() override { return act(m_hWnd), CColorDialog::OnInitDialog(); }
    std::function<void(HWND)> act;
};

HMODULE WINAPI NoLibrary(LPCSTR) { return nullptr; }

} // namespace

TEST(CommonDialogs, ChooseColours)
{
    TopWindow owner;
    Colors dialog(&owner);
    for (const INT_PTR result : {IDOK, IDCANCEL}) {
        dialog.act = [&](HWND window) { EXPECT_EQ(owner.m_hWnd, GetWindow(window, GW_OWNER)); };
        const DialogDriver driver{[&](HWND) { Press(dialog.m_hWnd, static_cast<int>(result)); }};
        EXPECT_EQ(result, dialog.DoModal());
        EXPECT_EQ(RGB(10, 20, 30), dialog.GetColor());
        EXPECT_EQ(nullptr, dialog.m_hWnd);
    }
    EXPECT_EQ(RGB(255, 255, 255), dialog.m_cc.lpCustColors[15]);
    dialog.act = [](HWND) { AfxThrowUserException(); };
    EXPECT_EQ(IDCANCEL, dialog.DoModal()) << "it must not pass the system";
    const ImportPatch load("ZOAFX.DLL", "LoadLibraryA", &NoLibrary), find("ZOAFX.DLL", "GetModuleHandleA", &NoLibrary);
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST(CommonDialogs, ChooseFonts)
{
    LOGFONTA font = {-20, 0, 0, 0, FW_BOLD, FALSE, TRUE, FALSE, 0, 0, 0, 0, 0, "Tahoma"}, shown = {};
    CFontDialog dialog(&font);
    const DialogDriver driver{[&](HWND window) { dialog.GetCurrentFont(&shown), Press(window, IDOK); }};
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_STREQ("Tahoma", shown.lfFaceName);
    EXPECT_NE(0, shown.lfPitchAndFamily) << "as the dialog has it";
    EXPECT_STREQ("Tahoma", dialog.GetFaceName());
    EXPECT_EQ(150, dialog.GetSize()) << "20 of 96 pixels";
    EXPECT_TRUE(dialog.IsBold() && dialog.IsUnderline() && !dialog.IsItalic() && !dialog.IsStrikeOut());
}

TEST(CommonDialogs, SayThatThereIsNoPrinter)
{
    CPrintDialog print(FALSE), settings(TRUE);
    CPageSetupDialog page;
    EXPECT_FALSE(print.GetDefaults());
    EXPECT_EQ(DWORD{PDERR_NODEFAULTPRN}, Failure());
    EXPECT_TRUE(print.CreatePrinterDC() == nullptr && print.GetDevMode() == nullptr && print.GetDeviceName().IsEmpty());
    for (CCommonDialog* dialog : std::initializer_list<CCommonDialog*>{&print, &settings, &page}) {
        const DialogDriver driver{Pressing(IDOK)}; // of the system's box
        EXPECT_EQ(IDCANCEL, dialog->DoModal());
        EXPECT_EQ(DWORD{PDERR_NODEFAULTPRN}, Failure());
    }
}

TEST(CommonDialogs, NameThePrinterAndTheWork)
{
    struct Names {
        DEVNAMES offsets = {offsetof(Names, driver), offsetof(Names, device), offsetof(Names, device), 0};
        char driver[8] = "DISPLAY", device[48] = "A printer with a name of more than 31 signs";
    };
    CPrintDialog dialog(FALSE);
    dialog.m_pd.hDevNames = GlobalAlloc(GMEM_FIXED, sizeof(Names));
    auto* names = new (dialog.m_pd.hDevNames) Names;
    EXPECT_STREQ("DISPLAY", dialog.GetDriverName());
    EXPECT_STREQ(names->device, dialog.GetDeviceName());
    names->offsets.wOutputOffset = 0xFFF0;
    EXPECT_STREQ("", dialog.GetPortName()) << "damaged";
    names->device[0] = '\0'; // the screen stands in
    const HDC context = dialog.CreatePrinterDC();
    EXPECT_EQ(context, dialog.GetPrinterDC());
    EXPECT_TRUE(DeleteDC(context));
    GlobalFree(dialog.m_pd.hDevNames);

    dialog.m_pd.hDevMode = GlobalAlloc(GPTR, sizeof(DEVMODEA));
    dialog.GetDevMode()->dmCopies = 3;
    dialog.m_pd.nCopies = 1;
    dialog.m_pd.nFromPage = 2;
    dialog.m_pd.nToPage = 4;
    const auto work = [&](DWORD flags) {
        dialog.m_pd.Flags = flags;
        return Answers{dialog.GetCopies(),   dialog.PrintAll(),  dialog.PrintRange(),  dialog.PrintSelection(),
                       dialog.GetFromPage(), dialog.GetToPage(), dialog.PrintCollate()};
    };
    EXPECT_EQ("1 1 0 0 -1 -1 0", work(PD_ALLPAGES));
    EXPECT_EQ("3 0 1 0 2 4 0", work(PD_PAGENUMS | PD_USEDEVMODECOPIES));
    EXPECT_EQ("1 0 0 1 -1 -1 1", work(PD_SELECTION | PD_COLLATE));
    GlobalFree(dialog.m_pd.hDevMode);
}
