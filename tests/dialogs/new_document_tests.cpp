// The choice of a new document's type, as a real window.
#include "dialog_faults.h"
#include "document_test.h"
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

class NewDocument : public DocumentTest {
protected:
    using DocumentTest::Add;
    CDocTemplate* Add(UINT id) { return Add(new CZoMultiDocTemplate(id, nullptr, nullptr, nullptr)); }
    /// Shows the dialog, which is seen if there is an act for it.
    void Show(INT_PTR result, const DialogDriver::Act& act = nullptr)
    {
        const DialogDriver driver({act});
        EXPECT_EQ(result, m_dialog.DoModal());
    }

    CZoNewBrixelDocType m_dialog{m_application.get(), nullptr};
};

} // namespace

TEST_F(NewDocument, AsksOnlyWhenThereIsAChoice)
{
    EXPECT_EQ(IDABORT, CZoNewBrixelDocType(nullptr, nullptr).DoModal());
    Show(IDABORT);
    Add(kUnnamed);
    Add(kWithoutParts);
    Show(IDABORT); // none has a name for new documents
    CDocTemplate* sheet = Add(kSheet);
    Show(IDOK); // there is nothing to be seen
    EXPECT_EQ(sheet, m_dialog.GetDocTemplate());
    Add(kLetter);
    Show(IDCANCEL, Pressing(IDCANCEL));
    EXPECT_EQ(nullptr, m_dialog.GetDocTemplate()) << "not the choice of the time before";
}

TEST_F(NewDocument, ShowsTypesAndDescriptionsInTheirOrder)
{
    CDocTemplate* sheet = Add(kSheet);
    CDocTemplate* plain = Add(new NamedType("Plain"));
    CDocTemplate* letter = Add(kLetter);
    const struct {
        int row;
        const char* description;
        bool isClickedTwice;
        CDocTemplate* chosen;
    } rows[] = {
        {0, "Cells in rows.", false, sheet},
        {2, "Words in lines.", false, letter},
        {1, "Cells in rows.", true, plain}, // has no description: the text stays
        {-1, "Cells in rows.", false, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.row);
        Show(IDOK, [&](HWND window) {
            EXPECT_EQ("Sheets|Plain|Letters|", RowsOf(window, kList));
            EXPECT_EQ(0, ChosenRow(window, kList));
            EXPECT_EQ("Cells in rows.", TextOf(window, kDescription));
            if (row.row >= 0)
                Choose(window, kList, row.row);
            else
                SendDlgItemMessageA(window, kList, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
            EXPECT_EQ(row.description, TextOf(window, kDescription));
            if (row.isClickedTwice)
                Command(window, kList, LBN_DBLCLK);
            else
                Press(window, IDOK);
        });
        EXPECT_EQ(row.chosen, m_dialog.GetDocTemplate());
    }
}

TEST_F(NewDocument, NamesTypesInTheLanguageLoaded)
{
    Add(kSheet);
    const CDocTemplate* type = Add(ZO_IDS_FOLDER_NOT_CREATED); // the third part is a name
    Show(IDOK, [&](HWND window) {
        EXPECT_EQ("Sheets|The folder could not be created.|", RowsOf(window, kList));
        Choose(window, kList, 1);
        ChangeLanguage(kGerman);
        EXPECT_EQ("Sheets|Der Ordner konnte nicht erstellt werden.|", RowsOf(window, kList));
        Press(window, IDOK);
    });
    EXPECT_EQ(type, m_dialog.GetDocTemplate());
    ZoGblDumpLanguageDLL();
    CString name = "before";
    EXPECT_FALSE(type->GetDocString(name, CDocTemplate::fileNewName));
    EXPECT_STREQ("", name);
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}

TEST_F(NewDocument, DrawsIconsAndNames)
{
    Add(kSheet);
    Add(new NamedType("Plain"));
    Show(IDCANCEL, [](HWND window) {
        constexpr COLORREF untouched = RGB(10, 200, 30);
        const int icon = GetSystemMetrics(SM_CXICON);
        EXPECT_GE(SendDlgItemMessageA(window, kList, LB_GETITEMHEIGHT, 0, 0), GetSystemMetrics(SM_CYICON));
        struct Row {
            int item;
            UINT action, state;
            COLORREF background; // behind the name
            bool hasIcon, hasFocus;
        };
        const COLORREF plain = GetSysColor(COLOR_WINDOW);
        const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
        const Row rows[] = {
            {0, ODA_DRAWENTIRE, 0, plain, true, false},
            {0, ODA_DRAWENTIRE, ODS_SELECTED | ODS_FOCUS, highlight, true, true},
            {1, ODA_SELECT, ODS_SELECTED, highlight, false, false},
            {0, ODA_FOCUS, 0, untouched, false, true}, // neither icon nor name
            {-1, ODA_DRAWENTIRE, ODS_FOCUS, untouched, false, true},
        };
        for (const Row& row : rows) {
            SCOPED_TRACE(testing::Message() << row.item << ", action " << row.action << ", state " << row.state);
            const Canvas canvas(200, 40, untouched);
            SetTextColor(canvas, RGB(1, 2, 3));
            SetBkColor(canvas, RGB(4, 5, 6));
            canvas.DrawRow(GetDlgItem(window, kList), row.item, row.action, row.state);
            EXPECT_EQ(RGB(1, 2, 3), GetTextColor(canvas));
            EXPECT_EQ(RGB(4, 5, 6), GetBkColor(canvas));
            const auto others = [&](int from, int to, COLORREF color) { // pixels within the frame of the focus
                return (to - from) * 38 - canvas.Count(color, {from, 1, to, 39});
            };
            EXPECT_EQ(0, others(1, 5, untouched));
            EXPECT_EQ(row.hasIcon, others(5, 5 + icon, untouched) > 100);
            EXPECT_EQ(0, others(5 + icon, 10 + icon, untouched));
            EXPECT_EQ(0, others(10 + icon, 15 + icon, row.background));
            EXPECT_EQ(row.background != untouched, others(15 + icon, 60 + icon, row.background) > 20) << "name";
            EXPECT_EQ(0, others(120 + icon, 199, row.background));
            EXPECT_EQ(row.hasFocus, canvas.At(0, 0) != untouched || canvas.At(1, 0) != untouched);
        }
        Press(window, IDCANCEL);
    });
}

TEST_F(NewDocument, SurvivesFailures)
{
    Add(kSheet);
    CDocTemplate* letter = Add(kLetter);
    const auto person = [](HWND window) {
        SendDlgItemMessageA(window, kList, LB_SETCURSEL, 1, 0);
        Command(window, kList, LBN_SELCHANGE);
        Command(window, IDOK);
    };
    const auto show = [&](const FaultRun& run) {
        CZoNewBrixelDocType dialog(m_application.get(), nullptr);
        const INT_PTR result = dialog.DoModal();
        run.Stop();
        EXPECT_TRUE(run.Fired() || (result == IDOK && dialog.GetDocTemplate() == letter)) << result;
        EXPECT_TRUE(result == IDOK || result == IDABORT || result == IDCANCEL || result == -1) << result;
    };
    RunDialogFaults(person, show, {.controls = 1});
    ZoGblDumpLanguageDLL();
    Show(-1); // without a language library
    EXPECT_TRUE(ZoGblLoadLanguageDLL());
}
