// Sheets of pages, driven by keys and clicks.
#include "dialog_faults.h"

#include "support/product_test.h"
#include "support/test.h"

#include <zogbl/property_sheet.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

namespace {

constexpr int kFirst = 3001;
constexpr int kSecond = 3002;
constexpr int kName = 11;
constexpr int kNote = 12;

class Page : public CZoPropertyPage {
public:
    Page(UINT id, std::string& events) : CZoPropertyPage(id), m_id(id), m_events(events) {}

    CString m_text;
    bool m_refuse = false;
    bool m_keep = false;

protected:
    void DoDataExchange(CDataExchange* exchange) override { DDX_Text(exchange, kName, m_text); }
    BOOL OnSetActive() override { return Note("shown "), CZoPropertyPage::OnSetActive(); }
    BOOL OnKillActive() override { return Note("left "), CZoPropertyPage::OnKillActive() && !m_refuse; }
    BOOL OnApply() override { return Note("applied "), CZoPropertyPage::OnApply(); }
    void OnReset() override { Note("reset "), CZoPropertyPage::OnReset(); }
    BOOL OnQueryCancel() override { return !m_keep; }
    afx_msg void OnNote() { CancelToClose(); }
    afx_msg void OnTyped() { SetModified(); }
    DECLARE_MESSAGE_MAP()

private:
    void Note(LPCSTR event) { m_events += event + std::to_string(m_id - kFirst + 1) + ","; }

    UINT m_id;
    std::string& m_events;
};

BEGIN_MESSAGE_MAP(Page, CZoPropertyPage)
    ON_BN_CLICKED(kNote, OnNote)
    ON_EN_CHANGE(kName, OnTyped)
END_MESSAGE_MAP()

struct Sheet : CZoPropertySheet {
    explicit Sheet(CWnd* parent = nullptr) : CZoPropertySheet("A sheet", parent)
    {
        AddPage(&first);
        AddPage(&second);
    }
    HWND PageWindow() const { return PageOf(m_hWnd); }

    std::string events;
    Page first{kFirst, events};
    Page second{kSecond, events};
};

class PropertySheetTest : public ProductTest {};

} // namespace

TEST_F(PropertySheetTest, ExchangesItsPagesByKeysAndClicks)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, "Static", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr));
    Sheet sheet(&owner);
    sheet.first.m_text = "one";
    sheet.second.m_text = "two";
    const DialogDriver driver{[&](HWND window) {
        EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
        EXPECT_EQ("A sheet", TextOf(window));
        EXPECT_EQ("OK Cancel &Apply",
                  TextOf(window, IDOK) + ' ' + TextOf(window, IDCANCEL) + ' ' + TextOf(window, ID_APPLY_NOW));
        EXPECT_FALSE(IsEnabled(window, ID_APPLY_NOW)) << "nothing changed yet";
        EXPECT_EQ(2, sheet.GetPageCount());
        SetFocus(GetDlgItem(sheet.PageWindow(), kNote));
        AccessKey(window, 'n');
        EXPECT_EQ(GetDlgItem(sheet.PageWindow(), kName), GetFocus());
        Type(sheet.PageWindow(), kName, "1");
        EXPECT_TRUE(IsEnabled(window, ID_APPLY_NOW));
        EXPECT_FALSE(sheet.second.IsCreated());
        Key(window, VK_TAB, kControl);
        EXPECT_EQ(1, sheet.GetActiveIndex());
        EXPECT_EQ("1", sheet.first.m_text);
        EXPECT_EQ("two", TextOf(sheet.PageWindow(), kName));
        Type(sheet.PageWindow(), kName, "2");
        Key(window, VK_TAB, kControl | kShift);
        sheet.first.m_refuse = true;
        Press(window, ID_APPLY_NOW);
        EXPECT_FALSE(sheet.SetActivePage(1));
        EXPECT_EQ(0, sheet.GetActiveIndex()) << "a page that refuses stays";
        sheet.first.m_refuse = false;
        Key(window, VK_RETURN);
    }};
    EXPECT_EQ(IDOK, sheet.DoModal());
    EXPECT_EQ("2", sheet.second.m_text);
    EXPECT_EQ("shown 1,left 1,shown 2,left 2,shown 1,left 1,left 1,left 1,applied 1,applied 2,", sheet.events);
    EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
    EXPECT_FALSE(sheet.first.IsCreated());
}

TEST_F(PropertySheetTest, IsGivenUpByEveryWay)
{
    const auto end = [](HWND window) { static_cast<Sheet*>(CWnd::FromHandlePermanent(window))->EndDialog(77); };
    const struct {
        DialogDriver::Act act;
        INT_PTR result;
        LPCSTR events;
    } rows[] = {
        {WaysToGiveUp()[0], IDCANCEL, "reset 1,"},
        {WaysToGiveUp()[1], IDCANCEL, "reset 1,"},
        {WaysToGiveUp()[2], IDCANCEL, "reset 1,"},
        {Pressing(IDOK), IDOK, "left 1,applied 1,"},
        {end, 77, ""},
    };
    for (const auto& row : rows) {
        Sheet sheet;
        for (const bool refusesFirst : {false, true}) { // when it is shown a second time
            const DialogDriver driver{[&](HWND window) {
                sheet.first.m_keep = sheet.first.m_refuse = refusesFirst;
                for (const int button : {IDCANCEL, IDOK}) {
                    if (refusesFirst)
                        Press(window, button);
                    EXPECT_NE(nullptr, sheet.PageWindow());
                }
                sheet.first.m_keep = sheet.first.m_refuse = false;
                sheet.events.clear();
                row.act(window);
            }};
            EXPECT_EQ(row.result, sheet.DoModal());
            EXPECT_EQ(row.events, sheet.events);
        }
    }
}

TEST_F(PropertySheetTest, TakesTheFocusAlong)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, "Static", "owner", WS_POPUP | WS_VISIBLE, 120, 90, 600, 500, nullptr, nullptr));
    Sheet sheet(&owner);
    const DialogDriver driver{[&](HWND window) {
        const CRect area = AreaOf(window);
        EXPECT_NEAR(2 * 120 + 600, area.left + area.right, 2) << "in the middle of its owner";
        EXPECT_NEAR(2 * 90 + 500, area.top + area.bottom, 2);
        const struct {
            std::function<void()> change;
            int page;
        } rows[] = {
            {[&] { Key(window, VK_TAB, kControl); }, 1},       {[&] { Key(window, VK_TAB, kControl | kShift); }, 0},
            {[&] { Key(window, VK_NEXT, kControl); }, 1},      {[&] { Key(window, VK_PRIOR, kControl); }, 0},
            {[&] { EXPECT_TRUE(sheet.SetActivePage(1)); }, 1}, {[&] { EXPECT_TRUE(sheet.SetActivePage(0)); }, 0},
        };
        for (const auto& row : rows) {
            const HWND before = sheet.PageWindow();
            SetFocus(GetDlgItem(before, row.page == 1 ? kNote : kName));
            row.change();
            EXPECT_EQ(row.page, sheet.GetActiveIndex());
            EXPECT_EQ(GetDlgItem(sheet.PageWindow(), kName), GetFocus()) << TextOf(GetFocus()) << " " << (&row - rows);
            SendMessageA(GetFocus(), WM_CHAR, 'x', 1); // lets Apply
        }
        const HWND tab = reinterpret_cast<HWND>(SendMessageA(window, PSM_GETTABCONTROL, 0, 0));
        SetFocus(tab);
        Key(window, VK_TAB, kControl);
        EXPECT_EQ(tab, GetFocus()) << "what can be seen keeps it";
        SetFocus(GetDlgItem(sheet.PageWindow(), kName));
        for (const int control : {kName, kNote})
            ::EnableWindow(GetDlgItem(sheet.first.m_hWnd, control), FALSE);
        Key(window, VK_TAB, kControl);
        EXPECT_EQ(tab, GetFocus()) << "of a page with nothing for it";
        for (const int control : {kName, kNote})
            ::EnableWindow(GetDlgItem(sheet.first.m_hWnd, control), TRUE);
        SetFocus(GetDlgItem(window, ID_APPLY_NOW));
        Press(window, ID_APPLY_NOW);
        EXPECT_FALSE(IsEnabled(window, ID_APPLY_NOW));
        EXPECT_EQ(GetDlgItem(window, IDOK), GetFocus());
        SetFocus(GetDlgItem(window, IDCANCEL));
        sheet.first.CancelToClose();
        EXPECT_EQ(GetDlgItem(window, IDOK), GetFocus());
        Key(window, VK_RETURN);
    }};
    EXPECT_EQ(IDOK, sheet.DoModal());
}

TEST_F(PropertySheetTest, FollowsTheLanguage)
{
    Sheet sheet;
    const auto buttons = [](HWND window) { return TextOf(window, IDOK) + ", " + TextOf(window, IDCANCEL); };
    const auto follow = [&](HWND window) {
        Press(sheet.PageWindow(), kNote);
        EXPECT_EQ("Close, Cancel", buttons(window));
        EXPECT_FALSE(IsEnabled(window, IDCANCEL));
        sheet.first.SetDlgItemText(kNote, "changed");
        Type(sheet.PageWindow(), kName, "typed");
        ChangeLanguage(kGerman);
        CString close, apply; // as this code page has them
        ZoGblLoadString(ZO_IDS_SHEET_CLOSE, close);
        ZoGblLoadString(ZO_IDS_SHEET_APPLY, apply);
        EXPECT_EQ("Schlie", std::string(close, 6));
        EXPECT_EQ(std::string(close) + ", Abbrechen", buttons(window));
        EXPECT_STREQ(apply, TextOf(window, ID_APPLY_NOW).c_str());
        EXPECT_EQ("No&te", TextOf(sheet.PageWindow(), kNote));
        EXPECT_EQ("typed", TextOf(sheet.PageWindow(), kName));
        char title[20] = "";
        const TCITEMA tab = {TCIF_TEXT, 0, 0, title, sizeof title, 0, 0};
        SendMessageA(reinterpret_cast<HWND>(SendMessageA(window, PSM_GETTABCONTROL, 0, 0)), TCM_GETITEMA, 0,
                     reinterpret_cast<LPARAM>(&tab));
        EXPECT_STREQ("First", title);
        Press(window, IDOK);
    };
    const auto again = [&](HWND window) {
        EXPECT_EQ("OK, Abbrechen", buttons(window));
        Press(window, IDOK);
    };
    const DialogDriver driver{follow, again};
    EXPECT_EQ(IDOK, sheet.DoModal());
    EXPECT_EQ(IDOK, sheet.DoModal());
}

TEST_F(PropertySheetTest, OpensOrSaysNoWithoutMemory)
{
    const auto show = [](const FaultRun& run) {
        INT_PTR result = -1;
        try {
            result = Sheet().DoModal();
        } catch (CMemoryException* e) {
            e->Delete(); // out of the constructor
        }
        EXPECT_TRUE(result == IDCANCEL || (run.Fired() && result == -1)) << result;
    };
    RunDialogFaults([](HWND window) { Command(window, IDCANCEL); }, show, {.system = 0});
}
