// The list with columns: by mouse and keys, and as a screen reader has it.
#include "controls/control_kit.h"

#include "support/product_test.h"
#include <zogbl/column_list.h>
#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include <random>
#include <sstream>

namespace {

using Align = CZoHeaderButton::Align;
using Sort = CZoHeaderButton::Sort;

constexpr COLORREF kPicture = RGB(1, 200, 2), kOther = RGB(200, 1, 2);

struct File {
    const char* name;
    int size;
};
// As they are given: neither names nor sizes are in order, and two of these are the same.
const File kFiles[] = {{"delta", 20}, {"Alpha", 3}, {"charlie", 20}, {"bravo", 100}, {"carbon", 7}};

class FileList : public CZoColumnList {
public:
    bool m_hasPictures = false;

protected:
    CString GetCellText(const void* row, int column) const override
    {
        const auto* file = static_cast<const File*>(row);
        CString text(file->name);
        if (column == 1)
            text.Format("%d", file->size);
        return text;
    }
    int CompareRows(const void* first, const void* second, int column) const override
    {
        if (column != 1)
            return CZoColumnList::CompareRows(first, second, column);
        return static_cast<const File*>(first)->size - static_cast<const File*>(second)->size;
    }
    CSize GetPictureSize(int column) const override { return m_hasPictures && column == 0 ? CSize(20, 30) : CSize(); }
    void DrawPicture(CDC* dc, CPoint at, const void*, int) const override
    {
        const Canvas picture(20, 30, kOther), left(10, 30, kPicture);
        ::BitBlt(picture, 0, 0, 10, 30, left, 0, 0, SRCCOPY);
        ::BitBlt(*dc, at.x, at.y, 20, 30, picture, 0, 0, SRCCOPY);
    }
};

class ColumnList : public ProductTest {
protected:
    void Make(DWORD style = 0, CSize size = CSize(200, 130))
    {
        ASSERT_TRUE(m_list->Create(WS_VISIBLE | WS_TABSTOP | style, CRect(CPoint(), size), &m_parent, 5));
        m_list->GetHeader().InsertColumn(0, {"Name", 90});
        m_list->GetHeader().InsertColumn(1, {"Size", 60, Align::kRight, CZoHeaderButton::kDescendingFirst});
        CPtrArray rows;
        for (const File& file : kFiles)
            rows.Add(const_cast<File*>(&file));
        ASSERT_TRUE(m_list->SetRows(rows));
        m_parent.m_describe = [](NMHDR& header, LRESULT&) {
            return header.code == ZON_HEADER_PUSHED ? "pushed" : header.code == ZON_HEADER_SIZED ? "sized" : "";
        };
    }
    /// The first letters of the rows; the selected one's in brackets.
    std::string Rows()
    {
        std::string all;
        for (int i = 0; i < m_list->GetRowCount(); ++i) {
            const std::string name(1, static_cast<const File*>(m_list->GetRow(i))->name[0]);
            all += i == m_list->GetCurSel() ? "[" + name + "]" : name;
        }
        return all;
    }
    /// Words for a key ("k40"), a row clicked or double clicked ("c2 b2"), a column pushed ("p0"), characters ("tab").
    void Play(const std::string& script)
    {
        std::istringstream words(script);
        for (std::string word; words >> word && m_list != nullptr;) {
            const int number = std::atoi(word.c_str() + 1);
            CZoHeaderWnd& header = m_list->GetHeader();
            if (word[0] == 'k')
                PressKey(*m_list, static_cast<UINT>(number));
            else if (word[0] == 'p')
                Click(header, header.GetColumnArea(number).CenterPoint());
            else if (word[0] == 'c')
                Click(*m_list, m_list->GetRowArea(number).CenterPoint());
            else if (word[0] == 'b')
                SendMouse(*m_list, WM_LBUTTONDBLCLK, m_list->GetRowArea(number).CenterPoint());
            else
                std::for_each(word.begin() + 1, word.end(), [&](char c) { m_list->SendMessage(WM_CHAR, BYTE(c)); });
        }
    }

    ControlParent m_parent;
    std::unique_ptr<FileList> m_list = std::make_unique<FileList>();
};

} // namespace

TEST_F(ColumnList, ObeysAndTellsOnce)
{
    Make();
    m_list->SetFocus();
    m_parent.Told();
    const struct {
        const char *script, *told, *rows;
    } kActs[] = {
        {"k40", "command:1", "[d]Acbc"}, // down, up, end, home
        {"k38", "", "[d]Acbc"},
        {"k35", "command:1", "dAcb[c]"},
        {"k40", "", "dAcb[c]"},
        {"k36", "command:1", "[d]Acbc"},
        {"c2", "command:1", "dA[c]bc"},
        {"c2", "", "dA[c]bc"},
        {"b2", "command:2", "dA[c]bc"},
        {"c9", "", "dA[c]bc"}, // beside the rows
        {"p0", "pushed", "Abc[c]d"},
        {"p0", "pushed", "d[c]cbA"},
        {"p1", "pushed", "bd[c]cA"}, // the largest first; those alike as they stood
        {"p1", "pushed", "Acd[c]b"},
        {"t100", "command:1", "Acdc[b]"},                        // a size
        {"k36 tch", "command:1 command:1 command:1", "Acd[c]b"}, // a name
        {"k35 tx", "command:1", "Acdc[b]"},
    };
    for (const auto& row : kActs) {
        Play(row.script);
        EXPECT_EQ(row.told, m_parent.Told()) << row.script;
        EXPECT_EQ(row.rows, Rows()) << row.script;
    }
    Reader(*m_list)->accDoDefaultAction(Reader::Part(1));
    EXPECT_EQ("command:1", m_parent.Told());
    PressKey(m_list->GetHeader(), VK_RIGHT, ZoKey::kControl);
    EXPECT_EQ("sized", m_parent.Told());
    m_list->SetCurSel(3);
    m_list->SortBy(0, Sort::kAscending);
    PressKey(*m_list, VK_ADD, ZoKey::kControl);
    EXPECT_EQ("", m_parent.Told()) << "the programmer's";
    EXPECT_LT(m_list->GetHeader().GetColumn(0)->m_nWidth, 90);
    m_parent.m_describe = [](NMHDR&, LRESULT& answer) { return answer = 1, "mine"; };
    Play("p0");
    EXPECT_EQ("Abc[c]d", Rows()) << "the parent sorts by itself";
    EXPECT_EQ("mine", m_parent.Told());

    for (const UINT back : {VK_ESCAPE, VK_F6}) {
        PressKey(*m_list, VK_F6);
        EXPECT_EQ(m_list->GetHeader().m_hWnd, ::GetFocus());
        PressKey(m_list->GetHeader(), back);
        EXPECT_EQ(m_list->m_hWnd, ::GetFocus());
        EXPECT_EQ("command:5 command:4", m_parent.Told());
    }
    EXPECT_EQ(DLGC_WANTARROWS | DLGC_WANTCHARS, m_list->SendMessage(WM_GETDLGCODE));
    EXPECT_EQ(DLGC_WANTALLKEYS, m_list->GetHeader().SendMessage(WM_GETDLGCODE, VK_ESCAPE));
}

TEST_F(ColumnList, KeepsItsRows)
{
    static const File kOthers[] = {{"bison", 50}, {"bravo", 1}};
    Make();
    const void* const bison = &kOthers[0];
    EXPECT_EQ(5, m_list->AddRow(bison)) << "at the end, as long as nothing is sorted";
    EXPECT_TRUE(m_list->RemoveRow(5));
    EXPECT_FALSE(m_list->RemoveRow(5) || m_list->RemoveRow(-1) || m_list->SetCurSel(5) || m_list->SetCurSel(-2) ||
                 m_list->SortBy(2, Sort::kAscending));
    m_list->SortBy(0, Sort::kAscending);
    m_list->SetCurSel(1);
    EXPECT_EQ("A[b]ccd", Rows());
    EXPECT_EQ(1, m_list->AddRow(bison));
    EXPECT_EQ("Ab[b]ccd", Rows());
    EXPECT_EQ(3, m_list->AddRow(&kOthers[1])) << "behind its like";
    EXPECT_TRUE(m_list->RemoveRow(0));
    EXPECT_EQ("b[b]bccd", Rows());
    m_list->SortBy(0, Sort::kDescending);
    EXPECT_EQ("dcc[b]bb", Rows()) << "those alike keep their order";
    EXPECT_TRUE(m_list->RemoveRow(m_list->FindRow(bison)) && m_list->RemoveRow(3));
    EXPECT_EQ("dccb", Rows()) << "without the selected one";
    EXPECT_EQ(-1, m_list->FindRow(bison));
    m_list->SetCurSel(0);
    EXPECT_TRUE(m_list->SetRows(CPtrArray()) && m_list->GetRow(0) == nullptr);
    Play("k40 k35 k34 k33 ta");
    EXPECT_EQ(-1, m_list->GetCurSel());
}

TEST_F(ColumnList, ScrollsWithItsHeader)
{
    Make(0, CSize(120, 100));
    CZoHeaderWnd& header = m_list->GetHeader();
    const auto hasBar = [&](int bar) { return m_list->GetScrollLimit(bar) > 0; };
    EXPECT_TRUE(hasBar(SB_VERT) && hasBar(SB_HORZ)) << "150 pixels of columns";
    m_list->SendMessage(WM_HSCROLL, SB_RIGHT);
    CRect client;
    m_list->GetClientRect(&client);
    EXPECT_EQ(150 - client.Width(), header.GetScrollPosition());
    EXPECT_EQ(client.right, header.GetColumnArea(1).right);
    ScreenOf(*m_list);
    EXPECT_TRUE(AreEqual(*ScreenOf(header), *PictureOf(header)));
    PressKey(*m_list, VK_F6); // to the first column, and the list follows
    PressKey(header, VK_END);
    PressKey(header, VK_HOME);
    EXPECT_EQ(0, header.GetScrollPosition());
    Play("k39");
    EXPECT_EQ(16, header.GetScrollPosition());
    header.SetWidth(0, 20);
    EXPECT_TRUE(!hasBar(SB_HORZ) && header.GetScrollPosition() == 0);

    Play("k35");
    const int last = m_list->GetTopRow();
    EXPECT_GT(last, 0);
    EXPECT_LE(m_list->GetRowArea(4).bottom, client.bottom + ::GetSystemMetrics(SM_CYHSCROLL));
    const auto scrolledPicture = ScreenOf(*m_list);
    m_list->Invalidate();
    EXPECT_TRUE(AreEqual(*ScreenOf(*m_list), *scrolledPicture)) << "what was moved is as what is drawn";
    m_list->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA));
    EXPECT_EQ(0, m_list->GetTopRow());
    m_list->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 0x10000 - WHEEL_DELTA / 2));
    m_list->SendMessage(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(last, m_list->GetTopRow());
    Play("k33 k33");
    EXPECT_TRUE(m_list->GetCurSel() == 0 && m_list->GetTopRow() == 0);
    Play("k34");
    EXPECT_GT(m_list->GetCurSel(), 0);
    m_list->MoveWindow(0, 0, 200, 290);
    EXPECT_TRUE(!hasBar(SB_VERT) && m_list->GetTopRow() == 0);

    CFont large;
    large.CreatePointFont(240, "Arial");
    const int height = m_list->GetRowHeight();
    m_list->SetFont(&large);
    EXPECT_GT(m_list->GetRowHeight(), height + 10);
    EXPECT_EQ(&large, header.GetFont());
    m_list->EnableWindow(FALSE);
    EXPECT_FALSE(header.IsWindowEnabled());
}

TEST_F(ColumnList, SpeaksAllColumnsWithTheirNames)
{
    Make(CZoColumnList::kMovable);
    CZoHeaderWnd& header = m_list->GetHeader();
    const Reader reader(*m_list);
    EXPECT_TRUE(reader.Role() == ROLE_SYSTEM_LIST && reader.Role(1) == ROLE_SYSTEM_LISTITEM && reader.Count() == 5);
    EXPECT_EQ("Name: delta; Size: 20", reader.Name(1));
    EXPECT_EQ("Select", reader.Action(1));
    header.SetPosition(1, 0);
    EXPECT_EQ("Size: 20; Name: delta", reader.Name(1)) << "as they stand";
    header.SetWidth(1, 0);
    EXPECT_EQ("Name: delta", reader.Name(1)) << "what is hidden is not spoken";
    header.SetColumn(0, {"", 60});
    EXPECT_EQ("delta", reader.Name(1));
    m_list->SetFocus();
    const Events events(*m_list);
    Play("k40 k38");
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_FOCUS, 1}, {EVENT_OBJECT_SELECTION, 1}}),
              Events::Heard());
    EXPECT_EQ(1, reader.Focus());
    const LONG focusable = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
    EXPECT_EQ(focusable | STATE_SYSTEM_FOCUSED | STATE_SYSTEM_SELECTED, reader.State(1));
    EXPECT_EQ(focusable, reader.State(2));
    CRect second = m_list->GetRowArea(1);
    m_list->ClientToScreen(&second);
    EXPECT_EQ(second, reader.Area(2));
    EXPECT_EQ(2, reader.At(second.CenterPoint()));
    m_list->MoveWindow(0, 0, 200, 50);
    EXPECT_EQ(focusable | STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN, reader.State(5));
    EXPECT_EQ(0u, reader.Name(6).size());
    header.SetColumn(0, {static_cast<UINT>(ZO_IDS_HEADER_PUSH), 60});
    ChangeLanguage(kGerman);
    m_list->SendMessage(CZoLanguageSupport::GetUpdateMessage());
    EXPECT_EQ("Klicken: delta", reader.Name(1));
}

TEST_F(ColumnList, DrawsRowsPicturesAndStates)
{
    constexpr COLORREF kInk = RGB(200, 30, 40), kPaper = RGB(240, 240, 220), kMarked = RGB(0, 0, 99),
                       kOnMarked = RGB(255, 255, 3), kGray = RGB(120, 121, 122);
    const Scheme plain{{COLOR_WINDOW, kPaper}, {COLOR_WINDOWTEXT, kInk}, {COLOR_GRAYTEXT, kGray}};
    const Scheme marked{{COLOR_HIGHLIGHT, kMarked}, {COLOR_HIGHLIGHTTEXT, kOnMarked}};
    Make();
    m_list->m_hasPictures = true;
    m_list->SendMessage(WM_SETTINGCHANGE);
    EXPECT_EQ(34, m_list->GetRowHeight());
    m_list->SetCurSel(1);
    const CRect first = m_list->GetRowArea(0), second = m_list->GetRowArea(1);
    auto picture = ScreenOf(*m_list);
    EXPECT_EQ(10 * 30, picture->Count(kPicture, first));
    EXPECT_GT(picture->Count(kInk, first), 0);
    EXPECT_EQ(0, picture->Count(kInk, second));
    EXPECT_GT(picture->Count(kOnMarked, second), 0);
    EXPECT_EQ(kMarked, picture->At(second.right - 3, second.top + 2)) << "also behind the columns";
    EXPECT_EQ(kPaper, picture->At(first.right - 3, first.top + 2));
    m_list->GetHeader().SetWidth(0, 25);
    EXPECT_EQ(10 * 30, ScreenOf(*m_list)->Count(kPicture, first));
    EXPECT_EQ(3 * 30, ScreenOf(*m_list)->Count(kOther, first)) << "not beyond the column";
    m_list->EnableWindow(FALSE);
    picture = ScreenOf(*m_list);
    EXPECT_EQ(0, picture->Count(kInk, first) + picture->Count(kMarked, second));
    EXPECT_GT(picture->Count(kGray, first), 0);

    m_list = std::make_unique<FileList>(); // from right to left, where the picture stays as it is
    m_list->m_hasPictures = true;
    m_parent.ModifyStyleEx(0, WS_EX_LAYOUTRTL);
    Make();
    EXPECT_NE(0u, m_list->GetHeader().GetExStyle() & WS_EX_LAYOUTRTL);
    picture = ScreenOf(*m_list);
    const int margin = CZoHeaderButton::GetMargin(), y = m_list->GetRowArea(0).CenterPoint().y;
    CRect client;
    m_list->GetClientRect(&client);
    std::string seen;
    for (const int x : {margin + 2, margin + 17})
        for (const int at : {x, int{client.right} - 1 - x})
            seen += picture->At(at, y) == kPicture ? "g" : picture->At(at, y) == kOther ? "r" : ".";
    EXPECT_TRUE(seen == "r.g." || seen == ".r.g") << seen << ": unmirrored, at the edge where reading begins";
}

TEST_F(ColumnList, SurvivesItsEndInNotificationsAndFaults)
{
    const struct {
        const char *told, *script;
    } kActs[] = {
        {"command:1", "c0"}, {"command:1", "b0"}, {"command:4", "c9"}, {"command:5", "c0 k117"}, {"pushed", "p0"}};
    for (const auto& row : kActs) {
        m_list = std::make_unique<FileList>();
        m_parent.SetFocus();
        Make();
        m_parent.m_onTold = [&](const std::string& what) {
            if (what == row.told)
                m_list.reset();
        };
        Play(row.script);
        EXPECT_EQ(nullptr, m_list) << row.told;
        m_parent.m_onTold = nullptr;
    }
    m_list = std::make_unique<FileList>();
    Make();
    m_list->SortBy(1, Sort::kAscending);
    m_list->SetCurSel(4);
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        const std::string before = Rows();
        const BOOL sorted = m_list->SortBy(0, Sort::kAscending);
        run.Stop();
        EXPECT_EQ(sorted ? "A[b]ccd" : before, Rows());
        m_list->SortBy(1, Sort::kAscending);
        m_list->SetCurSel(4);
    });
    FaultSource windows("windows");
    ZO_FAULTY_CALL(CreateWindowExA) window(windows, "ZOAFX.DLL", nullptr);
    RunFaultLoop(windows, [&](const FaultRun& run) {
        FileList list;
        const BOOL made = list.Create(WS_VISIBLE, CRect(0, 0, 200, 100), &m_parent, 7);
        run.Stop();
        if (!made)
            return;
        list.GetHeader().InsertColumn(0, {"Name", 90});
        EXPECT_TRUE(::IsWindow(list.GetHeader().m_hWnd)) << "the next layout makes it";
        EXPECT_EQ(0, list.AddRow(&kFiles[0]));
    });
}
