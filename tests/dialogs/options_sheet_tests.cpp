// The sheet of options: its tree, its search, its focus; what explains its controls.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/options_sheet.h>
#include <zogbl/resource_ids.h>
#include <zogbl/workspace_page.h>

namespace {

constexpr int kName = 11;
constexpr int kWait = 3011;
constexpr int kOff = 3012;
constexpr int kGroup = 3013;
constexpr int kCombo = 3014;
constexpr int kComboField = 1001;
constexpr int kTree = ZO_IDC_OPTIONS_PAGES;
constexpr int kField = ZO_IDC_OPTIONS_SEARCH;

void HandlePosted()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

struct Page : CZoPropertyPage {
    explicit Page(UINT id) : CZoPropertyPage(id) {}
    BOOL OnKillActive() override { return CZoPropertyPage::OnKillActive() && !refuses; }
    BOOL OnApply() override { return !failsToApply && CZoPropertyPage::OnApply(); }
    BOOL OnSetActive() override { return CZoPropertyPage::OnSetActive() && !skips; }

    bool refuses = false, skips = false, failsToApply = false;
};

/// With a dialog in it.
struct NestingPage : Page {
    NestingPage() : Page(3003), inner(3004, this) {}
    BOOL OnInitDialog() override { return Page::OnInitDialog(), inner.CreateModeless(), TRUE; }

    CZoDialog inner;
};

struct Sheet : CZoOptionsSheet {
    explicit Sheet(UINT firstPage = LAST_PAGE) : CZoOptionsSheet("Options", nullptr, "TestOptions", firstPage)
    {
        AddPage(&first);
        AddPage(&second);
        AddPage(&third, &first);         // in the tree before the second
        AddPage(&workspace, &workspace); // below none
    }
    const CTreeCtrl& Control() const
    {
        return static_cast<CTreeCtrl&>(*FromHandlePermanent(::GetDlgItem(m_hWnd, kTree)));
    }
    std::string Tree() const { return Below(Control().GetRootItem()); }
    std::string Below(HTREEITEM item) const
    {
        std::string texts;
        for (; item != nullptr; item = Control().GetNextSiblingItem(item)) {
            const std::string below = Below(Control().GetChildItem(item));
            texts += std::string(Control().GetItemText(item)) + (below.empty() ? "" : "(" + below + ")") + ",";
        }
        return texts;
    }
    /// The page that is shown, as tree, heading and window have it: the same.
    int Shown() const
    {
        EXPECT_EQ(GetActivePage()->m_hWnd, zo_test::PageOf(m_hWnd));
        EXPECT_TRUE(::IsWindowVisible(zo_test::PageOf(m_hWnd)));
        CString title;
        GetActivePage()->GetWindowText(title);
        EXPECT_STREQ(title, TextOf(m_hWnd, ZO_IDC_OPTIONS_HEADING).c_str());
        EXPECT_TRUE(Tree().empty() || Control().GetItemText(Control().GetSelectedItem()) == title) << title;
        return GetActiveIndex();
    }
    std::string Explained() const { return TextOf(m_hWnd, ZO_IDC_OPTIONS_STATUS); }

    Page first{3001}, second{3002};
    NestingPage third;
    CZoWorkspacePage workspace;
};

class Options : public ProductTest {
protected:
    static void Run(Sheet& sheet, const DialogDriver::Act& act)
    {
        const DialogDriver driver({[&](HWND window) {
            HandlePosted();
            act(window);
            if (IsWindow(window))
                Command(window, IDCANCEL);
        }});
        EXPECT_EQ(IDCANCEL, sheet.DoModal());
    }
};

} // namespace

TEST_F(Options, TreeAndPageNeverDiffer)
{
    Sheet sheet;
    Run(sheet, [&](HWND window) {
        EXPECT_EQ("First(Third,),Second,Workspace,", sheet.Tree());
        EXPECT_EQ(0, sheet.Shown());
        EXPECT_EQ(kTree, FocusOf(window));
        const UINT keys[] = {VK_DOWN, VK_DOWN, VK_END, VK_UP, VK_TAB, VK_TAB, VK_NEXT, VK_PRIOR, VK_TAB, VK_TAB};
        const int pages[] = {2, 1, 3, 1, 3, 0, 2, 0, 3, 1};
        for (size_t i = 0; i < std::size(keys); ++i) {
            Key(window, keys[i], i < 4 ? kNoModifier : i < 8 ? kControl : kControl | kShift);
            EXPECT_EQ(pages[i], sheet.Shown());
            EXPECT_EQ(kTree, FocusOf(window)) << "it stays while pages are chosen";
        }
        sheet.second.refuses = true;
        for (const UINT key : {VK_UP, VK_DOWN, VK_HOME}) {
            Key(window, key);
            EXPECT_EQ(1, sheet.Shown()) << "a page that refuses to be left";
        }
        EXPECT_FALSE(sheet.SetActivePage(0));
        EXPECT_EQ(1, sheet.Shown());
        sheet.second.refuses = false;
        EXPECT_TRUE(sheet.SetActivePage(2));
        EXPECT_EQ(2, sheet.Shown()) << "chosen by the program";
        sheet.second.skips = true;
        sheet.SetActivePage(3);
        Key(window, VK_UP);
        HandlePosted();
        EXPECT_EQ(2, sheet.Shown()) << "instead of a page that is not to be shown";
        sheet.second.skips = false;
        sheet.first.failsToApply = true;
        Press(window, IDOK);
        EXPECT_EQ(0, sheet.Shown()) << "the one that cannot be applied";
        sheet.SetActivePage(1);
        ::SetFocus(::GetDlgItem(sheet.second.m_hWnd, kName));
        Key(window, VK_TAB, kControl | kShift);
        EXPECT_EQ(2, sheet.Shown());
        EXPECT_EQ(GetDlgItem(sheet.third.m_hWnd, kWait), GetFocus()) << "from page to page";
    });
}

TEST_F(Options, TabGoesThroughPagesAndDialogsInThem)
{
    Sheet sheet;
    Run(sheet, [&](HWND window) {
        const std::vector<int> rounds[] = {{kTree, kName, 12, IDOK, IDCANCEL, kField},
                                           {kTree, kName, IDOK, IDCANCEL, kField},
                                           {kTree, kWait, kComboField, kName, 12, IDOK, IDCANCEL, kField}};
        for (int page = 0; page < 3; ++page) {
            sheet.SetActivePage(page);
            EXPECT_EQ(page, sheet.Shown());
            ::SetFocus(GetDlgItem(window, kTree));
            EXPECT_EQ(rounds[page], ExpectTabRounds(window)) << page;
        }
        sheet.SetActivePage(3);
        ExpectTabRounds(window);
        for (const auto language : {kEnglish, kGerman}) {
            ChangeLanguage(language);
            ExpectTidy(window);
            ExpectTidy(sheet.workspace.m_hWnd);
        }
        EXPECT_EQ("S&eiten:", TextOf(window, ZO_IDC_OPTIONS_PAGES_LABEL));
        EXPECT_EQ("First(Third,),Second,Arbeitsbereich,", sheet.Tree());
        EXPECT_EQ(3, sheet.Shown());
    });
}

TEST_F(Options, SearchFindsTextsOfAllPages)
{
    Sheet sheet;
    Run(sheet, [&](HWND window) {
        const struct {
            const char *words, *tree, *label;
            int page;
        } kRows[] = {
            {"name", "First,", "Pa&ges (1 of 4):", 0},
            {"SECOND", "Second,", "Pa&ges (1 of 4):", 1},
            {"note", "First,", "Pa&ges (1 of 4):", 0}, // "No&te"
            {"& WAIT", "Third,", "Pa&ges (1 of 4):", 2},
            {"novice  bar", "Workspace,", "Pa&ges (1 of 4):", 3},
            {"no such", "", "Nothing found", 3},
            {"o", "First(Third,),Second,Workspace,", "Pa&ges (4 of 4):", 3},
            {"  ", "First(Third,),Second,Workspace,", "Pa&ges:", 3},
            {"name", "First,", "Pa&ges (1 of 4):", 0},
            {"ir", "First(Third,),Workspace,", "Pa&ges (3 of 4):", 0}, // "Confirm"
        };
        for (const auto& row : kRows) {
            Type(window, kField, row.words);
            EXPECT_EQ(row.tree, sheet.Tree()) << row.words;
            EXPECT_EQ(row.label, TextOf(window, ZO_IDC_OPTIONS_PAGES_LABEL));
            EXPECT_EQ(row.page, sheet.Shown()) << row.words;
            EXPECT_EQ(kField, FocusOf(window));
        }
        Key(window, VK_DOWN);
        EXPECT_EQ(2, sheet.Shown());
        EXPECT_EQ(kField, FocusOf(window));
        sheet.third.refuses = true;
        Type(window, kField, "name");
        EXPECT_EQ("First(Third,),", sheet.Tree()) << "found, and the one that stays";
        EXPECT_EQ(2, sheet.Shown());
        sheet.third.refuses = false;
        EXPECT_TRUE(sheet.SetActivePage(1));
        EXPECT_EQ("", TextOf(window, kField)) << "by the program, of those that are not found";
        EXPECT_EQ(1, sheet.Shown());
        Type(window, kField, "tones");
        Key(window, VK_RETURN);
        EXPECT_EQ(kTree, FocusOf(window));
        ::SetFocus(GetDlgItem(window, kField));
        ChangeLanguage(kGerman);
        EXPECT_EQ("Third,", sheet.Tree());
        Type(window, kField, "einsteiger");
        EXPECT_EQ("Arbeitsbereich,", sheet.Tree());
        sheet.first.SetDlgItemText(12, "set at run time");
        Type(window, kField, "RUN time");
        EXPECT_EQ("First,", sheet.Tree());
        if (GetSystemMetrics(SM_DBCSENABLED)) {
            sheet.first.SetDlgItemText(12, "\x83\x5C\x81\x40\x83\x41");
            Type(window, kField, "\\");
            EXPECT_EQ("", sheet.Tree()) << "a second half is no character";
            SetDlgItemTextA(window, kField, "\x83\x41\x81\x40\x83\x5C");
            EXPECT_EQ("First,", sheet.Tree()) << "two words, between them a wide blank";
        }
        Key(window, VK_ESCAPE);
        EXPECT_TRUE(IsWindowVisible(window)) << "it empties the field first";
        EXPECT_EQ("First(Third,),Second,Arbeitsbereich,", sheet.Tree());
        Key(window, VK_ESCAPE);
        EXPECT_EQ(nullptr, zo_test::PageOf(window)) << "it closes";
    });
}

TEST_F(Options, OpensAsItWasLeft)
{
    CSize size;
    Sheet sheet;
    Run(sheet, [&](HWND window) {
        const CRect area = AreaOf(window), page = AreaOf(sheet.first.m_hWnd), tree = AreaOf(window, kTree);
        const CRect status = AreaOf(window, ZO_IDC_OPTIONS_STATUS), cancel = AreaOf(window, IDCANCEL);
        EXPECT_NE(0, GetWindowLongA(window, GWL_STYLE) & WS_THICKFRAME);
        MoveWindow(window, area.left, area.top, area.Width() + 60, area.Height() + 40, TRUE);
        EXPECT_EQ(page.Size() + CSize(60, 40), AreaOf(sheet.first.m_hWnd).Size());
        EXPECT_EQ(tree.Height() + 40, AreaOf(window, kTree).Height());
        EXPECT_EQ(status.top + 40, AreaOf(window, ZO_IDC_OPTIONS_STATUS).top);
        EXPECT_EQ(status.Width() + 60, AreaOf(window, ZO_IDC_OPTIONS_STATUS).Width());
        EXPECT_EQ(cancel + CPoint(60, 40), AreaOf(window, IDCANCEL));
        sheet.SetActivePage(2);
        EXPECT_EQ(AreaOf(sheet.first.m_hWnd), AreaOf(sheet.third.m_hWnd)) << "also one that is made now";
        ExpectTidy(window);
        MoveWindow(window, area.left, area.top, 10, 10, TRUE);
        EXPECT_EQ(area.Size(), AreaOf(window).Size()) << "not smaller than it was made";
        MoveWindow(window, area.left, area.top, area.Width() + 60, area.Height() + 40, TRUE);
        size = AreaOf(window).Size();
    });
    Sheet another;
    for (const int page : {2, 1}) { // the one that the time before ended with
        Run(another, [&](HWND window) {
            EXPECT_EQ(page, another.Shown());
            EXPECT_NEAR(size.cx, AreaOf(window).Width(), 1);
            EXPECT_NEAR(size.cy, AreaOf(window).Height(), 1);
            another.SetActivePage(1);
        });
    }
    const ProcessCounts before = ProcessCounts::Take();
    {
        Sheet other(0);
        Run(other, [&](HWND) { EXPECT_EQ(0, other.Shown()) << "as the program wants it"; });
    }
    EXPECT_EQ(before, ProcessCounts::Take());
    for (const LPCSTR damaged : {"", "ZoPage1 3003 1", "ZoPage1 77 78", "ZoPage1 99999999 3"}) {
        EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Pages", "TestOptions",
                                                  damaged));
        Sheet fourth;
        Run(fourth, [&](HWND) { EXPECT_EQ(0, fourth.Shown()) << damaged; });
    }
}

TEST_F(Options, ExplainsWhatIsPointedAtOrHasTheFocus)
{
    static CPoint s_pointer;
    const ImportPatch pointer(
        kZogbl, "GetCursorPos", +[](POINT* point) WINAPI -> BOOL { return *point = s_pointer, TRUE; });
    Sheet sheet;
    Run(sheet, [&](HWND window) {
        const auto explained = [&](const std::string& text) {
            WaitUntil([&] { return sheet.Explained() == text; });
            return sheet.Explained();
        };
        const auto pointAt = [&](int control) { s_pointer = AreaOf(sheet.third.m_hWnd, control).CenterPoint(); };
        s_pointer = CPoint(-10, -10);
        const std::string ofTree = "The pages of settings. Press Tab to go into the page that is shown.";
        EXPECT_EQ(ofTree, explained(ofTree));
        sheet.SetActivePage(2);
        pointAt(kWait);
        EXPECT_EQ("Waits for the tone.", explained("Waits for the tone.")) << "up to the line end";
        pointAt(kOff);
        EXPECT_EQ("Cannot be pressed.", explained("Cannot be pressed.")) << "disabled";
        ::SetFocus(GetDlgItem(sheet.third.m_hWnd, kWait));
        EXPECT_EQ("Waits for the tone.", explained("Waits for the tone.")) << "the focus has moved, the pointer rests";
        pointAt(kCombo);
        EXPECT_EQ("One tone.", explained("One tone.")) << "smaller than what lies around it";
        s_pointer = AreaOf(sheet.third.m_hWnd, kGroup).BottomRight() - CPoint(2, 2);
        EXPECT_EQ("All tones.", explained("All tones."));
        const HWND status = GetDlgItem(window, ZO_IDC_OPTIONS_STATUS);
        ShowWindow(status, SW_HIDE);
        SendMessageA(status, WM_TIMER, 1, 0); // it looks no more
        ShowWindow(status, SW_SHOW);
        s_pointer = AreaOf(sheet.third.m_hWnd).BottomRight() - CPoint(2, 2);
        EXPECT_EQ("Waits for the tone.", explained("Waits for the tone.")) << "nothing there: the focus";
        ::SetFocus(GetDlgItem(GetDlgItem(sheet.third.m_hWnd, kCombo), kComboField));
        EXPECT_EQ("One tone.", explained("One tone.")) << "what the field lies in";
        ::SetFocus(GetDlgItem(window, kTree));
        ChangeLanguage(kGerman);
        EXPECT_EQ(0u, sheet.Explained().find("Die Seiten mit Einstellungen."));
    });
}
