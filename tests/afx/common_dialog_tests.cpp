// Dialogs of the system.
#include "support/test.h"

#include <afxdlgs.h>

TEST(CPrintDialog, SaysThatThereIsNoPrinter)
{
    CPrintDialog dialog(FALSE);
    EXPECT_FALSE(dialog.GetDefaults());
    EXPECT_EQ(0x1008u, CommDlgExtendedError());
}

TEST(CColorDialog, Chooses)
{
    CColorDialog dialog(RGB(10, 20, 30));
    {
        const DialogDriver driver{[&](HWND window) {
            EXPECT_EQ(window, dialog.m_hWnd);
            Press(window, IDOK);
        }};
        EXPECT_EQ(IDOK, dialog.DoModal());
    }
    EXPECT_EQ(RGB(10, 20, 30), dialog.GetColor());
    EXPECT_EQ(nullptr, dialog.m_hWnd);
    CFontDialog font;
    {
        const DialogDriver driver{[&](HWND window) {
            EXPECT_EQ(window, font.m_hWnd);
            Press(window, IDOK);
        }};
        EXPECT_EQ(IDOK, font.DoModal());
    }
    printf("%s %d\n", (LPCSTR)font.GetFaceName(), font.GetSize());
    CPageSetupDialog page;
    const DialogDriver driver{[&](HWND window) {
        printf("%s\n", TextOf(window).c_str());
        printf("%s\n", BoxText(window).c_str());
        EXPECT_EQ(window, page.m_hWnd);
        Press(window, IDOK);
    }};
    printf("%d\n", (int)page.DoModal());
    printf("%lx\n", CommDlgExtendedError());
}
