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
    int field = 0; // gets the focus when the page does not accept

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
    BOOL OnApply() override
    {
        Note("applied");
        if (!accepts && field != 0)
            ::SetFocus(::GetDlgItem(m_hWnd, field));
        return accepts && CPropertyPage::OnApply();
    }
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
    const auto pass = [&](HWND window) {
        EXPECT_EQ("0 next", shown(window));
        Type(sheet.page[0].m_hWnd, kEdit, "a");
        Key(window, VK_RETURN);
        EXPECT_EQ("1 back next", shown(window));
        EXPECT_STREQ("a", sheet.page[0].text);
        const struct {
            int button;
            LRESULT next;
            LPCSTR shown;
        } steps[] = {{ID_WIZNEXT, -1, "1 back next"}, {ID_WIZNEXT, kFirst, "0 next"},
                     {ID_WIZNEXT, 9999, "0 next"},    {ID_WIZNEXT, kFirst + 2, "2 back finish"},
                     {ID_WIZBACK, 0, "1 back next"},  {ID_WIZNEXT, 0, "2 back finish"}};
        for (const auto& step : steps) {
            for (Page& page : sheet.page)
                page.next = step.next;
            Press(window, step.button);
            EXPECT_EQ(step.shown, shown(window)) << &step - steps;
        }
        Type(sheet.page[2].m_hWnd, kEdit, "c");
        sheet.page[2].accepts = false;
        Press(window, ID_WIZFINISH);
        EXPECT_EQ("2 back finish", shown(window)) << "refused";
        sheet.page[2].accepts = true;
        sheet.SetFinishText("Do it");
        EXPECT_EQ("Do it", TextOf(window, ID_WIZFINISH));
        sheet.Events();
    };
    const struct {
        DialogDriver::Act act;
        INT_PTR result;
        LPCSTR events;
        LPCSTR last;
    } rows[] = {
        {Pressing(ID_WIZFINISH), ID_WIZFINISH, "gone0 gone1 gone2 ", "c"},
        {Pressing(IDCANCEL), IDCANCEL, "reset0 reset1 reset2 gone0 gone1 gone2 ", ""},
        {[&](HWND) { sheet.PressButton(PSBTN_FINISH); }, ID_WIZFINISH, "gone0 gone1 gone2 ", "c"},
    };
    for (const auto& row : rows) {
        for (Page& page : sheet.page)
            page.text.Empty();
        const DialogDriver driver{[&](HWND window) { pass(window), row.act(window); }};
        EXPECT_EQ(row.result, sheet.DoModal());
        EXPECT_EQ(row.events, sheet.Events());
        EXPECT_STREQ(row.last, sheet.page[2].text);
    }
}

TEST(CPropertySheet, TakesAndLosesPagesWhileItIsOpen)
{
    Sheet sheet(2);
    sheet.EnableStackedTabs(FALSE);
    const auto expect = [&](LPCSTR tabs, int active, LPCSTR events) {
        EXPECT_EQ(tabs, TabsOf(sheet.m_hWnd));
        EXPECT_EQ(active, sheet.GetActiveIndex());
        EXPECT_EQ(sheet.GetPageIndex(sheet.GetActivePage()), active);
        EXPECT_EQ(events, sheet.Events());
    };
    const DialogDriver driver{[&](HWND) {
        const auto tab = reinterpret_cast<HWND>(sheet.SendMessage(PSM_GETTABCONTROL));
        EXPECT_EQ(0, GetWindowLongA(tab, GWL_STYLE) & TCS_MULTILINE);
        expect("First|Captioned|", 0, "made0 shown0 ");
        sheet.AddPage(&sheet.page[2]);
        expect("First|Captioned|Third|", 0, "");
        EXPECT_TRUE(sheet.SetActivePage(&sheet.page[2]));
        expect("First|Captioned|Third|", 2, "made2 shown2 ");
        sheet.page[2].text = "kept";
        sheet.RemovePage(2);
        expect("First|Captioned|", 1, "made1 shown1 gone2 ");
        EXPECT_STREQ("kept", sheet.page[2].text) << "nobody asked for its data";
        EXPECT_FALSE(sheet.SetActivePage(&sheet.page[2]));
        sheet.RemovePage(&sheet.page[2]);
        sheet.RemovePage(&sheet.page[0]);
        expect("Captioned|", 0, "gone0 ");
        sheet.RemovePage(0);
    }};
    EXPECT_EQ(IDCANCEL, sheet.DoModal()) << "without pages";
    EXPECT_EQ("gone1 ", sheet.Events());
    EXPECT_EQ(0, sheet.GetPageCount());
}

TEST(CPropertySheet, ShowsThePageThatRefuses)
{
    Sheet sheet(2);
    const DialogDriver driver{[&](HWND window) {
        sheet.SetActivePage(1);
        for (const int field : {0, int{kNote}}) {
            sheet.SetActivePage(0);
            sheet.page[1].field = field;
            sheet.page[1].accepts = false;
            ::SetFocus(::GetDlgItem(sheet.page[0].m_hWnd, kEdit));
            Press(window, IDOK);
            DeliverAll();
            EXPECT_EQ(&sheet.page[1], sheet.GetActivePage());
            EXPECT_EQ(sheet.page[1].m_hWnd, PageOf(window));
            EXPECT_EQ(field == 0 ? kEdit : field, FocusOf(sheet.page[1].m_hWnd));
        }
        sheet.page[1].accepts = true;
        sheet.PressButton(PSBTN_OK);
    }};
    EXPECT_EQ(IDOK, sheet.DoModal());
}

TEST(CPropertySheet, LetsPagesAskEachOtherAndChangesItsTitle)
{
    Sheet sheet;
    CPropertySheet captioned(1722u);
    captioned.AddPage(&sheet.page[0]);
    sheet.SetTitle("Before");
    const DialogDriver driver{[&](HWND window) {
                                  EXPECT_EQ("Before", TextOf(window));
                                  sheet.SetTitle("After");
                                  EXPECT_EQ("After", TextOf(window));
                                  sheet.SetTitle("After", PSH_PROPTITLE);
                                  EXPECT_LT(std::strlen("After"), TextOf(window).size());
                                  sheet.SetActivePage(1);
                                  sheet.Events();
                                  EXPECT_EQ(0, sheet.page[0].QuerySiblings(2, 3));
                                  EXPECT_EQ("asked0 asked1 ", sheet.Events());
                                  sheet.page[0].sibling = 7;
                                  EXPECT_EQ(7, sheet.page[1].QuerySiblings(2, 3));
                                  EXPECT_EQ("asked0 ", sheet.Events());
                                  EXPECT_EQ(0, sheet.page[2].QuerySiblings(2, 3)) << "without a window";
                                  Press(window, IDCANCEL);
                              },
                              [&](HWND window) {
                                  EXPECT_EQ("Captioned", TextOf(window));
                                  captioned.EndDialog(5);
                              }};
    EXPECT_EQ(IDCANCEL, sheet.DoModal());
    EXPECT_EQ(5, captioned.DoModal());
}

TEST(CPropertySheet, IsModeless)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr));
    Sheet sheet(2);
    const auto expectEnd = [&](LPCSTR events) {
        DeliverAll();
        EXPECT_EQ(nullptr, sheet.m_hWnd);
        EXPECT_EQ(events, sheet.Events());
        EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
    };
    ASSERT_TRUE(sheet.Create(&owner));
    const HWND window = sheet.m_hWnd;
    EXPECT_EQ(owner.m_hWnd, GetWindow(window, GW_OWNER));
    EXPECT_TRUE(IsWindowVisible(window));
    CRect client;
    sheet.GetClientRect(&client);
    ClientToScreen(window, reinterpret_cast<LPPOINT>(&client.right));
    const CRect tab = AreaOf(reinterpret_cast<HWND>(sheet.SendMessage(PSM_GETTABCONTROL)));
    EXPECT_EQ(client.right - tab.right, client.bottom - tab.bottom) << "no room is left for buttons";
    ::SetFocus(::GetDlgItem(sheet.page[0].m_hWnd, kEdit));
    Key(window, VK_RETURN);
    DeliverAll();
    EXPECT_TRUE(IsWindow(window)) << "OK is not there";
    Key(window, VK_TAB, kControl);
    EXPECT_EQ(1, sheet.GetActiveIndex());
    sheet.page[1].quits = false;
    Key(window, VK_ESCAPE);
    DeliverAll();
    EXPECT_TRUE(IsWindow(window)) << "refused";
    sheet.page[1].quits = true;
    sheet.Events();
    Key(window, VK_ESCAPE);
    expectEnd("reset0 reset1 gone0 gone1 ");

    ASSERT_TRUE(sheet.Create(&owner, WS_CHILD | WS_VISIBLE, WS_EX_CONTROLPARENT));
    EXPECT_EQ(owner.m_hWnd, GetAncestor(sheet.m_hWnd, GA_PARENT));
    sheet.EndDialog(1);
    expectEnd("made0 shown0 gone0 ");
}

TEST(CPropertySheet, IsThereOrIsGoneWithoutMemory)
{
    struct Deleted : CPropertySheet {
        explicit Deleted(int& count) : CPropertySheet("Sheet"), gone(count) {}
        void PostNcDestroy() override
        {
            ++gone;
            delete this;
        }
        int& gone;
    };
    std::string events;
    Page page(0, events);
    AllocationFaults memory;
    RunFaultLoop(memory, [&](const FaultRun& run) {
        int gone = 0, made = 0;
        try {
            auto sheet = std::make_unique<Deleted>(gone);
            sheet->AddPage(&page);
            ++made;
            Deleted* const itsOwn = sheet.release();
            if (itsOwn->Create())
                itsOwn->DestroyWindow();
        } catch (CMemoryException* e) {
            e->Delete();
        }
        EXPECT_EQ(made, gone) << run.number;
    });
}
