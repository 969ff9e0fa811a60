// The choice of a new document's type, as a real window.
#include "driven_dialog.h"
#include "product/registered_product.h"
#include "support/test.h"

#include <zogbl/new_document_dialog.h>
#include <zogbl/resource_ids.h>

#include <zomfx/multi_doc_template.h>

namespace {

// Of dialogs.rc.
constexpr UINT kSheet = 2001;
constexpr UINT kLetter = 2002;
constexpr UINT kUnnamed = 2003;
constexpr UINT kWithoutParts = 2004;

constexpr int kList = ZO_IDC_NEW_DOCUMENT_TYPES;
constexpr int kDescription = ZO_IDC_NEW_DOCUMENT_DESCRIPTION;

using Dialog = DrivenDialog<CZoNewBrixelDocType>;

/// A plain document template with a name of its own: it tells no resource number.
class PlainTemplate : public CMultiDocTemplate {
public:
    PlainTemplate() : CMultiDocTemplate(0, nullptr, nullptr, nullptr) {}
    BOOL GetDocString(CString& text, DocStringIndex) const override
    {
        text = "Plain";
        return TRUE;
    }
};

class NewDocument : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        CWinApp* tests = AfxGetApp();
        m_application = std::make_unique<CWinApp>();
        AfxGetModuleState()->m_pCurrentWinApp = tests;
    }
    void TearDown() override
    {
        m_application.reset();
        ZoGblDumpLanguageDLL();
    }

    CDocTemplate* Add(CDocTemplate* type)
    {
        m_application->AddDocTemplate(type);
        return type;
    }
    CDocTemplate* Add(UINT id) { return Add(new CZoMultiDocTemplate(id, nullptr, nullptr, nullptr)); }

    static void Select(Dialog& dialog, int index)
    {
        ::SendMessageA(dialog.Item(kList), LB_SETCURSEL, static_cast<WPARAM>(index), 0);
        dialog.SendMessage(WM_COMMAND, MAKEWPARAM(kList, LBN_SELCHANGE), reinterpret_cast<LPARAM>(dialog.Item(kList)));
    }

    RegisteredProduct m_product;
    std::unique_ptr<CWinApp> m_application;
};

} // namespace

TEST_F(NewDocument, AsksOnlyWhenThereIsAChoice)
{
    Dialog withoutApplication(nullptr, nullptr);
    EXPECT_EQ(IDABORT, withoutApplication.DoModal());
    Dialog dialog(m_application.get(), nullptr);
    EXPECT_EQ(IDABORT, dialog.DoModal());
    Add(kUnnamed);
    Add(kWithoutParts);
    EXPECT_EQ(IDABORT, dialog.DoModal()) << "none has a name for new documents";
    CDocTemplate* sheet = Add(kSheet);
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(sheet, dialog.GetDocTemplate());
    EXPECT_FALSE(dialog.acted) << "there is nothing to be seen";
    Add(kLetter);
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_TRUE(dialog.acted);
    EXPECT_EQ(nullptr, dialog.GetDocTemplate()) << "not the choice of the time before";
}

TEST_F(NewDocument, ShowsTypesAndDescriptionsInTheirOrder)
{
    CDocTemplate* sheet = Add(kSheet);
    CDocTemplate* plain = Add(new PlainTemplate);
    CDocTemplate* letter = Add(kLetter);
    Dialog dialog(m_application.get(), nullptr);
    dialog.act = [](Dialog& open) {
        EXPECT_TRUE(::IsWindowVisible(open.m_hWnd));
        static constexpr std::pair<LPCSTR, LPCSTR> items[] = {
            {"Sheets", "Cells in rows."},
            {"Plain", "Cells in rows."}, // has no description: the text stays
            {"Letters", "Words in lines."},
        };
        EXPECT_EQ(0, ::SendMessageA(open.Item(kList), LB_GETCURSEL, 0, 0));
        EXPECT_STREQ("Cells in rows.", open.TextOf(kDescription));
        ASSERT_EQ(3, ::SendMessageA(open.Item(kList), LB_GETCOUNT, 0, 0));
        for (int i = 0; i < 3; ++i) {
            char name[40] = "";
            ::SendMessageA(open.Item(kList), LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(name));
            EXPECT_STREQ(items[i].first, name);
            Select(open, i);
            EXPECT_STREQ(items[i].second, open.TextOf(kDescription));
        }
    };
    EXPECT_EQ(IDCANCEL, dialog.DoModal());

    const struct {
        int selected;
        WPARAM command; // what a person then does
        CDocTemplate* chosen;
    } rows[] = {
        {0, IDOK, sheet},
        {2, IDOK, letter},
        {1, MAKEWPARAM(kList, LBN_DBLCLK), plain},
        {-1, IDOK, nullptr},
    };
    for (const auto& row : rows) {
        dialog.act = [&](Dialog& open) {
            Select(open, row.selected);
            open.SendMessage(WM_COMMAND, row.command,
                             row.command == IDOK ? 0 : reinterpret_cast<LPARAM>(open.Item(kList)));
            EXPECT_FALSE(open.IsOpen());
        };
        EXPECT_EQ(IDOK, dialog.DoModal()) << row.selected;
        EXPECT_EQ(row.chosen, dialog.GetDocTemplate()) << row.selected;
    }
}

TEST_F(NewDocument, NamesTypesInTheLanguageLoaded)
{
    const CZoMultiDocTemplate viewer(ZO_IDS_VIEWER_TYPE, nullptr, nullptr, nullptr);
    EXPECT_EQ(UINT{ZO_IDS_VIEWER_TYPE}, viewer.GetResourceID());
    CString name;
    EXPECT_TRUE(viewer.GetDocString(name, CDocTemplate::fileNewName));
    EXPECT_STREQ("Text viewer", name);
    ZoGblDumpLanguageDLL();
    EXPECT_FALSE(viewer.GetDocString(name, CDocTemplate::fileNewName));
    EXPECT_STREQ("", name);
    m_product.MakeCurrent(0x0407);
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
    EXPECT_TRUE(viewer.GetDocString(name, CDocTemplate::fileNewName));
    EXPECT_STREQ("Textansicht", name);
}

namespace {

/// An item drawn into memory.
class Drawing {
public:
    Drawing(HWND list, int index, UINT action, UINT state) : m_dc(CreateCompatibleDC(nullptr))
    {
        m_bitmap = CreateBitmap(kWidth, kHeight, 1, 32, nullptr);
        m_old = SelectObject(m_dc, m_bitmap);
        const HBRUSH brush = CreateSolidBrush(kUntouched);
        const RECT all = {0, 0, kWidth, kHeight};
        FillRect(m_dc, &all, brush);
        DeleteObject(brush);
        SetTextColor(m_dc, RGB(1, 2, 3));
        SetBkColor(m_dc, RGB(4, 5, 6));
        DRAWITEMSTRUCT item = {ODT_LISTBOX, kList, static_cast<UINT>(index), action, state, list, m_dc, all, 0};
        SendMessageA(GetParent(list), WM_DRAWITEM, kList, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(RGB(1, 2, 3), GetTextColor(m_dc));
        EXPECT_EQ(RGB(4, 5, 6), GetBkColor(m_dc));
    }
    ~Drawing()
    {
        SelectObject(m_dc, m_old);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    /// Pixels of columns \p from to \p to, without the frame of the focus, that are not of \p color.
    int Others(int from, int to, COLORREF color) const
    {
        int others = 0;
        for (int x = from; x < to; ++x) {
            for (int y = 1; y < kHeight - 1; ++y)
                others += GetPixel(m_dc, x, y) != color;
        }
        return others;
    }
    bool HasFocusFrame() const { return GetPixel(m_dc, 0, 0) != kUntouched || GetPixel(m_dc, 1, 0) != kUntouched; }

    static constexpr COLORREF kUntouched = RGB(10, 200, 30);
    static constexpr int kWidth = 200;
    static constexpr int kHeight = 40;

private:
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

} // namespace

TEST_F(NewDocument, DrawsIconsAndNames)
{
    Add(kSheet);
    Add(new PlainTemplate);
    Dialog dialog(m_application.get(), nullptr);
    dialog.act = [](Dialog& open) {
        const HWND list = open.Item(kList);
        const int icon = GetSystemMetrics(SM_CXICON);
        EXPECT_GE(::SendMessageA(list, LB_GETITEMHEIGHT, 0, 0), GetSystemMetrics(SM_CYICON));
        const COLORREF untouched = Drawing::kUntouched;
        struct Row {
            int item;
            UINT action, state;
            COLORREF background; // behind the name
            bool hasIcon, hasFocus;
        };
        const COLORREF window = GetSysColor(COLOR_WINDOW);
        const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
        const Row rows[] = {
            {0, ODA_DRAWENTIRE, 0, window, true, false},
            {0, ODA_DRAWENTIRE, ODS_SELECTED | ODS_FOCUS, highlight, true, true},
            {1, ODA_SELECT, ODS_SELECTED, highlight, false, false},
            {0, ODA_FOCUS, 0, untouched, false, true}, // neither icon nor name
            {-1, ODA_DRAWENTIRE, ODS_FOCUS, untouched, false, true},
        };
        for (const Row& row : rows) {
            SCOPED_TRACE(testing::Message() << row.item << ", action " << row.action << ", state " << row.state);
            const Drawing drawing(list, row.item, row.action, row.state);
            EXPECT_EQ(0, drawing.Others(1, 5, untouched));
            EXPECT_EQ(row.hasIcon, drawing.Others(5, 5 + icon, untouched) > 100);
            EXPECT_EQ(0, drawing.Others(5 + icon, 10 + icon, untouched));
            EXPECT_EQ(0, drawing.Others(10 + icon, 15 + icon, row.background));
            EXPECT_EQ(row.background != untouched, drawing.Others(15 + icon, 60 + icon, row.background) > 20) << "name";
            EXPECT_EQ(0, drawing.Others(120 + icon, Drawing::kWidth - 1, row.background));
            EXPECT_EQ(row.hasFocus, drawing.HasFocusFrame());
        }
    };
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_TRUE(dialog.acted);
}

TEST_F(NewDocument, SurvivesFailures)
{
    const BoxStub noBox;
    Add(kSheet);
    CDocTemplate* letter = Add(kLetter);
    const auto run = [&](const FaultRun& run) {
        Dialog dialog(m_application.get(), nullptr);
        dialog.act = [](Dialog& open) {
            Select(open, 1);
            open.SendMessage(WM_COMMAND, IDOK);
        };
        const INT_PTR result = dialog.DoModal();
        const bool failed = run.Fired();
        run.Stop();
        EXPECT_TRUE(failed || (result == IDOK && dialog.GetDocTemplate() == letter)) << result;
        EXPECT_TRUE(result == IDOK || result == IDABORT || result == IDCANCEL || result == -1) << result;
    };
    {
        AllocationFaults faults;
        RunFaultLoop(faults, run);
    }
    FaultSource messages("list box");
    ZO_FAULTY_CALL(SendMessageA) send(messages, "ZOGBLBRX.DLL", LB_ERR);
    RunFaultLoop(messages, run);
    FaultSource drawing("drawing");
    ZO_FAULTY_CALL(GetDC) dc(drawing, "ZOGBLBRX.DLL", nullptr);
    ZO_FAULTY_CALL(GetTextMetricsA) metrics(drawing, "ZOGBLBRX.DLL", FALSE);
    ZO_FAULTY_CALL(LoadIconA) icon(drawing, "ZOGBLBRX.DLL", nullptr);
    RunFaultLoop(drawing, run);
    ZoGblDumpLanguageDLL();
    EXPECT_EQ(-1, Dialog(m_application.get(), nullptr).DoModal()) << "without a language library";
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
