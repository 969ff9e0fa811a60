// Property sheets and wizards, driven by clicks and keys.
#include "support/test.h"

#include <afxdlgs.h>

namespace {

constexpr UINT kFirst = 4011; // of host.rc
enum Control { kEdit = 1001, kNote };

/// Notes what happens to it, and answers as it is told to.
class Page : public CPropertyPage {
public:
    Page(int number, std::string& events, UINT caption = 0)
        : CPropertyPage(kFirst + static_cast<UINT>(number), caption), m_number(number), m_events(events)
    {
    }

    CString text;
    LRESULT next = 0;
    LRESULT sibling = 0;
    bool accepts = true, quits = true;

protected:
    void DoDataExchange(CDataExchange* context) override { DDX_Text(context, kEdit, text); }
    BOOL OnInitDialog() override { return Note("made"), CPropertyPage::OnInitDialog(); }
    BOOL OnSetActive() override
    {
        Note("shown");
        const DWORD buttons[] = {PSWIZB_NEXT, PSWIZB_BACK | PSWIZB_NEXT, PSWIZB_BACK | PSWIZB_FINISH};
        static_cast<CPropertySheet*>(FromHandlePermanent(::GetParent(m_hWnd)))->SetWizardButtons(buttons[m_number]);
        return CPropertyPage::OnSetActive();
    }
    BOOL OnApply() override { return Note("applied"), accepts && CPropertyPage::OnApply(); }
    void OnReset() override { Note("reset"), CPropertyPage::OnReset(); }
    BOOL OnQueryCancel() override { return quits && CPropertyPage::OnQueryCancel(); }
    LRESULT OnWizardNext() override { return next; }
    BOOL OnWizardFinish() override { return accepts && CPropertyPage::OnWizardFinish(); }
    afx_msg LRESULT OnQuery(WPARAM wParam, LPARAM lParam)
    {
        Note(wParam + lParam == 5 ? "asked" : "asked amiss");
        return sibling;
    }
    void PostNcDestroy() override { Note("gone"); }
    DECLARE_MESSAGE_MAP()

private:
    void Note(LPCSTR event) { m_events += event + std::to_string(m_number) + " "; }

    int m_number;
    std::string& m_events;
};

BEGIN_MESSAGE_MAP(Page, CPropertyPage)
    ON_MESSAGE(PSM_QUERYSIBLINGS, OnQuery)
END_MESSAGE_MAP()

struct Sheet : CPropertySheet {
    explicit Sheet(int pages = 3, CWnd* parent = nullptr) : CPropertySheet("Sheet", parent)
    {
        for (int i = 0; i < pages; ++i)
            AddPage(&page[i]);
    }
    /// What has happened since the last time.
    std::string Events() { return std::exchange(events, ""); }

    std::string events;
    Page page[3] = {{0, events}, {1, events, 1722}, {2, events}};
};

std::string TabsOf(HWND window)
{
    const auto tab = reinterpret_cast<HWND>(SendMessageA(window, PSM_GETTABCONTROL, 0, 0));
    std::string tabs;
    char text[32] = "";
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    for (WPARAM i = 0; SendMessageA(tab, TCM_GETITEMA, i, reinterpret_cast<LPARAM>(&item)) != 0; ++i)
        tabs += std::string(text) + "|";
    return tabs;
}

void DeliverAll()
{
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);)
        AfxGetThread()->PumpMessage();
}

} // namespace

TEST(CPropertySheet, IsAWizard)
{
    Sheet sheet;
    sheet.SetWizardMode();
    const auto shown = [&](HWND window) {
        EXPECT_EQ(sheet.GetActivePage()->m_hWnd, PageOf(window));
        return std::to_string(sheet.GetActiveIndex()) + (IsEnabled(window, ID_WIZBACK) ? " back" : "") +
               (IsWindowVisible(GetDlgItem(window, ID_WIZNEXT)) ? " next" : "") +
               (IsWindowVisible(GetDlgItem(window, ID_WIZFINISH)) ? " finish" : "");
    };
    {
        const DialogDriver driver{[&](HWND window) {
            EXPECT_EQ("0 next", shown(window));
            Type(sheet.page[0].m_hWnd, kEdit, "a");
            Key(window, VK_RETURN);
            EXPECT_EQ("1 back next", shown(window));
            EXPECT_STREQ("a", sheet.page[0].text);
            sheet.page[1].next = -1;
            Press(window, ID_WIZNEXT);
            EXPECT_EQ("1 back next", shown(window)) << "refused";
            sheet.page[1].next = kFirst;
            Press(window, ID_WIZNEXT);
            EXPECT_EQ("0 next", shown(window)) << "another page";
            sheet.page[0].next = kFirst + 2;
            Press(window, ID_WIZNEXT);
            EXPECT_EQ("2 back finish", shown(window));
            Press(window, ID_WIZBACK);
            EXPECT_EQ("1 back next", shown(window));
            sheet.page[1].next = 0;
            Press(window, ID_WIZNEXT);
            Type(sheet.page[2].m_hWnd, kEdit, "c");
            sheet.page[2].accepts = false;
            Press(window, ID_WIZFINISH);
            EXPECT_EQ("2 back finish", shown(window)) << "refused";
            sheet.page[2].accepts = true;
            sheet.SetFinishText("Do it");
            EXPECT_EQ("Do it", TextOf(window, ID_WIZFINISH));
            sheet.Events();
            Press(window, ID_WIZFINISH);
        }};
        EXPECT_EQ(ID_WIZFINISH, sheet.DoModal());
    }
    EXPECT_STREQ("c", sheet.page[2].text);
    printf("%s\n", sheet.Events().c_str());
    const DialogDriver driver{Pressing(IDCANCEL)};
    EXPECT_EQ(IDCANCEL, sheet.DoModal());
    printf("%s\n", sheet.Events().c_str());
}

TEST(CPropertySheet, TakesAndLosesPagesWhileItIsOpen)
{
    Sheet sheet(2);
    const DialogDriver driver{[&](HWND window) {
        EXPECT_EQ("First|Captioned|", TabsOf(window));
        sheet.AddPage(&sheet.page[2]);
        EXPECT_EQ("First|Captioned|Third|", TabsOf(window));
        printf("%s\n", sheet.Events().c_str());
        EXPECT_TRUE(sheet.SetActivePage(&sheet.page[2]));
        EXPECT_EQ(&sheet.page[2], sheet.GetActivePage());
        printf("%s\n", sheet.Events().c_str());
        sheet.RemovePage(2);
        printf("%s\n", sheet.Events().c_str());
        EXPECT_EQ(1, sheet.GetActiveIndex());
        EXPECT_EQ("First|Captioned|", TabsOf(window));
        sheet.RemovePage(&sheet.page[0]);
        EXPECT_EQ("Captioned|", TabsOf(window));
        EXPECT_EQ(0, sheet.GetActiveIndex());
        EXPECT_EQ(&sheet.page[1], sheet.GetActivePage());
        printf("%s\n", sheet.Events().c_str());
        sheet.RemovePage(&sheet.page[1]);
        printf("%s\n", sheet.Events().c_str());
    }};
    EXPECT_EQ(IDCANCEL, sheet.DoModal());
    printf("%s\n", sheet.Events().c_str());
}

TEST(CPropertySheet, IsModeless)
{
    Sheet sheet;
    EXPECT_TRUE(sheet.Create());
    EXPECT_TRUE(IsWindowVisible(sheet.m_hWnd));
    printf("%s\n", sheet.Events().c_str());
    CRect r;
    sheet.GetWindowRect(&r);
    printf("%d x %d\n", r.Width(), r.Height());
    DeliverAll();
    Key(sheet.m_hWnd, VK_TAB, kControl);
    EXPECT_EQ(1, sheet.GetActiveIndex());
    Key(sheet.m_hWnd, VK_ESCAPE);
    DeliverAll();
    EXPECT_EQ(nullptr, sheet.m_hWnd);
    printf("%s\n", sheet.Events().c_str());
}
