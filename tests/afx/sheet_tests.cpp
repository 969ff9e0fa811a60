// Property sheets and wizards, driven by clicks and keys.
#include "test_window.h"

#include <afxdlgs.h>

namespace {

constexpr UINT kFirst = 4011; // of host.rc
enum Control { kEdit = 1001, kNote };

/// Notes what happens to it, and answers as it is told to.
class Page : public CPropertyPage {
public:
    explicit Page(UINT number, UINT caption = 0) : CPropertyPage(kFirst + number, caption), m_number(number) {}

    CString text;
    LRESULT next = 0, sibling = 0;
    bool accepts = true;
    int field = 0; // gets the focus when something is applied

protected:
    void DoDataExchange(CDataExchange* context) override { DDX_Text(context, kEdit, text); }
    BOOL OnInitDialog() override { return Note("made"), CPropertyPage::OnInitDialog(); }
    BOOL OnSetActive() override
    {
        const DWORD buttons[] = {PSWIZB_NEXT, PSWIZB_BACK | PSWIZB_NEXT, PSWIZB_BACK | PSWIZB_FINISH};
        static_cast<CPropertySheet*>(FromHandlePermanent(::GetParent(m_hWnd)))->SetWizardButtons(buttons[m_number]);
        return Note("shown"), CPropertyPage::OnSetActive();
    }
    BOOL OnApply() override { return ::SetFocus(::GetDlgItem(m_hWnd, field)), accepts && CPropertyPage::OnApply(); }
    void OnReset() override { Note("reset"), CPropertyPage::OnReset(); }
    BOOL OnQueryCancel() override { return accepts && CPropertyPage::OnQueryCancel(); }
    LRESULT OnWizardNext() override { return next; }
    BOOL OnWizardFinish() override { return accepts && CPropertyPage::OnWizardFinish(); }
    void PostNcDestroy() override { Note("gone"); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        return message == PSM_QUERYSIBLINGS     ? Note("asked"),
               sibling * (wParam + lParam == 5) : CPropertyPage::WindowProc(message, wParam, lParam);
    }

private:
    void Note(LPCSTR event) { g_log += ' ' + (event + std::to_string(m_number)); }

    UINT m_number;
};

struct Sheet : CPropertySheet {
    explicit Sheet(int pages) : CPropertySheet("Sheet")
    {
        TakeLog();
        for (int i = 0; i < pages; ++i)
            AddPage(&page[i]);
    }
    bool Shows(int control) const { return ::IsWindowVisible(::GetDlgItem(m_hWnd, control)); }
    HWND Tabs() const { return reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL)); }
    /// The page shown, the tabs or the buttons that can be used, and what has happened since the last time.
    std::string State()
    {
        char text[32] = "";
        TCITEMA item = {TCIF_TEXT, 0, 0, text, sizeof text, 0, 0};
        std::string state = std::to_string(GetActiveIndex());
        EXPECT_EQ(GetPageIndex(GetActivePage()), GetActiveIndex());
        if (Shows(ID_WIZNEXT) || Shows(ID_WIZFINISH))
            state += std::string(IsEnabled(m_hWnd, ID_WIZBACK) ? "<" : "") + (Shows(ID_WIZNEXT) ? ">" : "!");
        else
            for (WPARAM i = 0; ::SendMessageA(Tabs(), TCM_GETITEMA, i, reinterpret_cast<LPARAM>(&item)) != 0; ++i)
                state += '|' + std::string(text);
        return state + TakeLog();
    }

    Page page[3] = {Page(0), Page(1, 1722), Page(2)};
};

void DeliverAll()
{
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);)
        AfxGetThread()->PumpMessage();
}

FARPROC WINAPI NoFunction(HMODULE, LPCSTR) { return nullptr; }

} // namespace

TEST(CPropertySheet, IsAWizard)
{
    Sheet sheet(3);
    sheet.SetWizardMode();
    const std::tuple<int, LRESULT, LPCSTR> steps[] = {{ID_WIZNEXT, -1, "0>"},
                                                      {ID_WIZNEXT, 9999, "0>"},
                                                      {ID_WIZNEXT, 0, "1<> made1 shown1"},
                                                      {ID_WIZNEXT, kFirst, "0> shown0"},
                                                      {ID_WIZNEXT, kFirst + 2, "2<! made2 shown2"},
                                                      {ID_WIZBACK, 0, "1<> shown1"},
                                                      {ID_WIZNEXT, 0, "2<! shown2"}};
    const std::string gone = " gone0 gone1 gone2", reset = " reset0 reset1 reset2";
    const std::tuple<DialogDriver::Act, INT_PTR, std::string, LPCSTR> ends[] = {
        {Pressing(ID_WIZFINISH), ID_WIZFINISH, gone, "b"},
        {Pressing(IDCANCEL), IDCANCEL, reset + gone, ""},
        {[&](HWND) { sheet.PressButton(PSBTN_FINISH); }, ID_WIZFINISH, gone, "b"},
        {[](HWND window) { SendMessageA(window, WM_CLOSE, 0, 0); }, IDCANCEL, reset + gone, ""},
        {[&](HWND) { sheet.page[2].SendMessage(WM_CLOSE); }, IDCANCEL, reset + gone, ""}};
    for (const auto& [act, result, events, last] : ends) {
        for (Page& page : sheet.page)
            page.text.Empty(), page.next = 0;
        const DialogDriver driver{[&, &act = act](HWND window) {
            EXPECT_EQ("0> made0 shown0", sheet.State());
            Type(sheet.page[0].m_hWnd, kEdit, "a");
            for (const auto& [button, next, state] : steps) {
                for (Page& page : sheet.page)
                    page.next = next;
                Press(window, button);
                EXPECT_EQ(state, sheet.State());
            }
            EXPECT_STREQ("a", sheet.page[0].text);
            Type(sheet.page[2].m_hWnd, kEdit, "b");
            sheet.page[2].accepts = false;
            Press(window, ID_WIZFINISH);
            EXPECT_EQ("2<!", sheet.State()) << "refused";
            sheet.page[2].accepts = true;
            sheet.SetFinishText("Do it");
            EXPECT_EQ("Do it", TextOf(window, ID_WIZFINISH));
            act(window);
        }};
        EXPECT_EQ(result, sheet.DoModal());
        EXPECT_EQ("-1" + events, sheet.State());
        EXPECT_STREQ(last, sheet.page[2].text);
    }
}

TEST(CPropertySheet, TakesAndLosesPagesWhileItIsOpen)
{
    Sheet sheet(2);
    sheet.EnableStackedTabs(FALSE);
    const Steps steps = {
        {[] {}, "0|First|Captioned made0 shown0"},
        {[&] { sheet.AddPage(&sheet.page[2]); }, "0|First|Captioned|Third"},
        {[&] { sheet.SetActivePage(&sheet.page[2]); }, "2|First|Captioned|Third made2 shown2"},
        {[&] { sheet.RemovePage(2); }, "1|First|Captioned made1 shown1 gone2"},
        {[&] { sheet.SetActivePage(&sheet.page[2]), sheet.RemovePage(&sheet.page[2]); }, "1|First|Captioned"},
        {[&] { sheet.RemovePage(sheet.GetPageCount()); }, "1|First|Captioned"},
        {[&] { sheet.RemovePage(&sheet.page[0]); }, "0|Captioned gone0"}};
    const DialogDriver driver{[&](HWND) {
        EXPECT_EQ(0, GetWindowLongA(sheet.Tabs(), GWL_STYLE) & TCS_MULTILINE);
        Walk(steps, [&] { return sheet.State(); });
        sheet.RemovePage(0);
    }};
    EXPECT_EQ(IDCANCEL, sheet.DoModal()) << "without pages";
    EXPECT_EQ(0, sheet.GetPageCount());
}

TEST(CPropertySheet, ShowsThePageThatRefuses)
{
    Sheet sheet(2);
    const DialogDriver driver{[&](HWND window) {
                                  for (const int field : {0, int{kEdit}, int{kNote}}) {
                                      sheet.SetActivePage(field == 0);
                                      sheet.page[1].field = field;
                                      sheet.page[1].accepts = false;
                                      ::SetFocus(::GetDlgItem(sheet.page[0].m_hWnd, kNote));
                                      Press(window, IDOK);
                                      DeliverAll();
                                      EXPECT_EQ(sheet.page[1].m_hWnd, PageOf(window));
                                      EXPECT_EQ(field == kNote ? kNote : kEdit, FocusOf(sheet.page[1].m_hWnd));
                                  }
                                  sheet.page[1].accepts = true;
                                  sheet.PressButton(PSBTN_OK);
                              },
                              [&](HWND window) {
                                  sheet.SetActivePage(1);
                                  sheet.page[1].accepts = false;
                                  Press(window, IDOK);
                                  DeliverAll();
                                  sheet.DestroyWindow();
                              }};
    EXPECT_EQ(IDOK, sheet.DoModal());
    EXPECT_EQ(IDCANCEL, sheet.DoModal()) << "it was not OK";
}

TEST(CPropertySheet, LetsPagesAskEachOtherAndHasATitle)
{
    Sheet sheet(3);
    CPropertySheet other(1722u);
    const HMODULE module = LoadLibraryExA("afx_test_first.DLL", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    CPropertyPage page(4014u); // the module's
    other.AddPage(&page);
    sheet.SetTitle("Before", PSH_PROPTITLE);
    const DialogDriver driver{[&](HWND window) {
                                  EXPECT_NE(std::string::npos, TextOf(window).find("Before"));
                                  EXPECT_LT(std::strlen("Before"), TextOf(window).size()) << "with the system's words";
                                  sheet.SetTitle("After", PSH_PROPTITLE);
                                  EXPECT_LT(std::strlen("After"), TextOf(window).size()) << "with the system's words";
                                  EXPECT_NE(std::string::npos, TextOf(window).find("After"));
                                  sheet.SetActivePage(1);
                                  for (const LRESULT answer : {0, 7}) {
                                      sheet.page[0].sibling = answer;
                                      EXPECT_EQ(answer, sheet.page[1].QuerySiblings(2, 3));
                                  }
                                  EXPECT_EQ(0, sheet.page[2].QuerySiblings(2, 3)) << "without a window";
                                  sheet.EndDialog(5);
                              },
                              [&](HWND window) {
                                  EXPECT_EQ("Captioned", TextOf(window));
                                  Press(window, IDCANCEL);
                              }};
    EXPECT_EQ(5, sheet.DoModal());
    EXPECT_EQ("-1 made0 shown0 made1 shown1 asked0 asked1 asked0 gone0 gone1", sheet.State());
    AfxSetResourceHandle(module);
    EXPECT_EQ(IDCANCEL, other.DoModal());
    AfxSetResourceHandle(AfxGetInstanceHandle());
    FreeLibrary(module);
}

TEST(CPropertySheet, IsModeless)
{
    TopWindow owner;
    Sheet sheet(2);
    ASSERT_TRUE(sheet.Create(&owner));
    const HWND window = sheet.m_hWnd;
    EXPECT_EQ(owner.m_hWnd, GetWindow(window, GW_OWNER));
    EXPECT_TRUE(IsWindowVisible(window) && IsWindowEnabled(owner.m_hWnd));
    CRect client;
    sheet.GetClientRect(&client);
    ClientToScreen(window, reinterpret_cast<LPPOINT>(&client.right));
    const CRect tab = AreaOf(sheet.Tabs());
    EXPECT_EQ(client.right - tab.right, client.bottom - tab.bottom) << "no room is left for buttons";
    const std::tuple<UINT, int, bool, LPCSTR> keys[] = {{VK_RETURN, 0, true, "0|First|Captioned made0 shown0"},
                                                        {VK_TAB, kControl, true, "1|First|Captioned made1 shown1"},
                                                        {VK_ESCAPE, 0, false, "1|First|Captioned"},
                                                        {VK_ESCAPE, 0, true, "-1 reset0 reset1 gone0 gone1"}};
    ::SetFocus(::GetDlgItem(sheet.page[0].m_hWnd, kEdit));
    for (const auto& [key, modifiers, accepts, state] : keys) {
        sheet.page[1].accepts = accepts;
        Key(window, key, modifiers);
        DeliverAll();
        EXPECT_EQ(state, sheet.State()) << key;
    }
    const std::function<void()> ends[] = {[&] { sheet.EndDialog(1); },
                                          [&] { sheet.RemovePage(1), sheet.RemovePage(0); }};
    for (const auto& end : ends) {
        ASSERT_TRUE(sheet.Create(&owner, WS_CHILD | WS_VISIBLE, WS_EX_CONTROLPARENT));
        EXPECT_EQ(owner.m_hWnd, GetAncestor(sheet.m_hWnd, GA_PARENT));
        end();
        DeliverAll();
        EXPECT_EQ("-1 made0 shown0 gone0", sheet.State());
        EXPECT_EQ(nullptr, sheet.m_hWnd);
    }
    struct Deleted : CPropertySheet {
        using CPropertySheet::CPropertySheet;
        void PostNcDestroy() override { delete this; }
    };
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE((new Deleted("without pages"))->Create()));
    const ImportPatch find("ZOAFX.DLL", "GetProcAddress", &NoFunction);
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE((new Deleted("without the system's"))->Create()));
}
