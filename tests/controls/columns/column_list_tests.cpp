// The list with columns: by mouse and keys, and as a screen reader has it.
#include "controls/acts.h"
#include "controls/tip_kit.h"
#include "support/product_test.h"

#include <zogbl/column_list.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

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
    int m_skipped = 0; // letters of a name that are not shown

protected:
    CString GetCellText(const void* row, int column) const override
    {
        const auto* file = static_cast<const File*>(row);
        CString text(file->name + m_skipped);
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
        m_list = std::make_unique<FileList>();
        m_parent.SetFocus();
        ASSERT_TRUE(m_list->Create(WS_VISIBLE | WS_TABSTOP | style, CRect(CPoint(), size), &m_parent, 5));
        m_header = &m_list->GetHeader();
        m_header->InsertColumn(0, {"Name", 90});
        m_header->InsertColumn(1, {"Size", 60, Align::kRight, CZoHeaderButton::kDescendingFirst});
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
    /// Acts of Play; "r2" and "R2" click and double click a row, "p0" pushes a column.
    void Play(const std::string& script)
    {
        std::istringstream words(script);
        for (std::string word; words >> word && m_list != nullptr;) {
            const int number = std::atoi(word.c_str() + 1);
            const CPoint row = m_list->GetRowArea(number).CenterPoint();
            if (word[0] == 'p')
                Click(*m_header, m_header->GetColumnArea(number).CenterPoint());
            else if (word[0] == 'r')
                Click(*m_list, row);
            else if (word[0] == 'R')
                SendMouse(*m_list, WM_LBUTTONDBLCLK, row);
            else
                ::Play(*m_list, word);
        }
    }
    bool HasBar(int bar) { return m_list->GetScrollLimit(bar) > 0; }

    ControlParent m_parent;
    std::unique_ptr<FileList> m_list;
    CZoHeaderWnd* m_header = nullptr;
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
        {"r2", "command:1", "dA[c]bc"},
        {"r2", "", "dA[c]bc"},
        {"R2", "command:2", "dA[c]bc"},
        {"c150,125", "", "dA[c]bc"}, // below the rows
        {"p0", "pushed", "Abc[c]d"},
        {"p0", "pushed", "d[c]cbA"},
        {"p1", "pushed", "bd[c]cA"}, // the largest first; those alike as they stood
        {"p1", "pushed", "Acd[c]b"},
        {"t1", "command:1", "Acdc[b]"},                // a size
        {"k36 tca", "command:1 command:1", "A[c]dcb"}, // a name
        {"tc tc", "command:1 command:1", "A[c]dcb"},   // the next ones with that letter
        {"k35 txd", "command:1 command:1", "Ac[d]cb"}, // a letter that no name has, and one that begins anew
    };
    for (const auto& row : kActs) {
        Play(row.script);
        EXPECT_EQ(row.told, m_parent.Told()) << row.script;
        EXPECT_EQ(row.rows, Rows()) << row.script;
    }
    Reader(*m_list)->accDoDefaultAction(Reader::Part(1));
    EXPECT_EQ("command:1", m_parent.Told());
    ::Play(*m_header, "k39+2");
    EXPECT_EQ("sized", m_parent.Told());
    m_list->SetCurSel(3);
    m_list->SortBy(0, Sort::kAscending);
    m_header->InsertColumn(2, {"Kind", 44, Align::kLeft, CZoHeaderButton::kFixedWidth});
    Play("k107+2");
    EXPECT_EQ("", m_parent.Told()) << "the programmer's";
    EXPECT_LT(m_header->GetColumn(0)->m_nWidth, 90);
    EXPECT_EQ(44, m_header->GetColumn(2)->m_nWidth);
    m_parent.m_describe = [](NMHDR&, LRESULT& answer) { return answer = 1, "mine"; };
    Play("p0");
    EXPECT_EQ("Abc[c]d", Rows()) << "the parent sorts by itself";
    EXPECT_EQ("mine", m_parent.Told());

    for (const UINT back : {VK_ESCAPE, VK_F6}) {
        Play("tc k117"); // what was typed is forgotten
        EXPECT_EQ(m_header->m_hWnd, ::GetFocus());
        PressKey(*m_header, back);
        Play("ta");
        EXPECT_EQ("[A]bccd", Rows());
        EXPECT_EQ("command:1 command:5 command:4 command:1", m_parent.Told());
    }
    Play("tc");
    m_parent.SetFocus(); // this forgets it, too
    m_list->SetFocus();
    Play("ta");
    EXPECT_EQ("[A]bccd", Rows());
    static const File kKana[] = {{"\x83"
                                  "A",
                                  1},
                                 {"\x83"
                                  "e",
                                  2}};
    if (IsDoubleByte() && m_list->AddRow(&kKana[0]) >= 0 && m_list->AddRow(&kKana[1]) >= 0) {
        m_parent.Told();
        Play("t\x83"
             "e");
        EXPECT_EQ("command:1", m_parent.Told()) << "half a character finds nothing";
        EXPECT_EQ(&kKana[1], m_list->GetRow(m_list->GetCurSel()));
    }
    EXPECT_EQ(DLGC_WANTARROWS | DLGC_WANTCHARS, m_list->SendMessage(WM_GETDLGCODE));
    EXPECT_EQ(DLGC_WANTALLKEYS, m_header->SendMessage(WM_GETDLGCODE, VK_ESCAPE));
    while (m_header->RemoveColumn(0)) {
    }
    Play("k117");
    EXPECT_EQ(m_list->m_hWnd, ::GetFocus()) << "there is nothing to go to";
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
    m_list->m_skipped = 1; // as in another language
    m_list->SendMessage(CZoLanguageSupport::GetUpdateMessage());
    EXPECT_EQ("bcdc", Rows()) << "ravo, harlie, elta, arbon";
    EXPECT_TRUE(m_list->SetRows(CPtrArray()) && m_list->GetRow(0) == nullptr);
    Play("k40 k35 k34 k33 ta");
    EXPECT_EQ(-1, m_list->GetCurSel());
}

TEST_F(ColumnList, ScrollsWithItsHeader)
{
    Make(0, CSize(120, 90));
    CZoHeaderWnd& header = *m_header;
    const auto step = [&](UINT message, WPARAM wParam) {
        m_list->SendMessage(message, wParam);
        EXPECT_EQ(m_list->GetTopRow(), m_list->GetScrollPos(SB_VERT));
        EXPECT_EQ(header.GetScrollPosition(), m_list->GetScrollPos(SB_HORZ));
    };
    EXPECT_TRUE(HasBar(SB_VERT) && HasBar(SB_HORZ)) << "150 pixels of columns";
    step(WM_HSCROLL, SB_RIGHT);
    CRect client;
    m_list->GetClientRect(&client);
    const int most = 150 - client.Width();
    EXPECT_EQ(most, header.GetScrollPosition());
    EXPECT_EQ(client.right, header.GetColumnArea(1).right);
    ScreenOf(*m_list);
    EXPECT_TRUE(AreEqual(*ScreenOf(header), *PictureOf(header)));
    PressKey(*m_list, VK_F6);
    for (const auto& [key, left] : {std::pair(VK_HOME, 0), std::pair(VK_END, most), std::pair(VK_HOME, 0)}) {
        PressKey(header, static_cast<UINT>(key)); // the list follows the column
        EXPECT_EQ(left, header.GetScrollPosition());
    }
    Play("k39");
    EXPECT_EQ(16, header.GetScrollPosition());
    header.SetWidth(0, 20);
    EXPECT_TRUE(!HasBar(SB_HORZ) && header.GetScrollPosition() == 0);

    Play("k35");
    const int last = m_list->GetTopRow(), page = 5 - last;
    EXPECT_GT(last, 0);
    EXPECT_GT(page, 1);
    EXPECT_LE(m_list->GetRowArea(4).bottom, client.bottom + ::GetSystemMetrics(SM_CYHSCROLL));
    const auto scrolledPicture = ScreenOf(*m_list);
    m_list->Invalidate();
    EXPECT_TRUE(AreEqual(*ScreenOf(*m_list), *scrolledPicture)) << "what was moved is as what is drawn";
    Play("k38 k33");
    EXPECT_TRUE(m_list->GetCurSel() == last && m_list->GetTopRow() == last) << "to the page's first row";
    Play("k36 k40 k34");
    EXPECT_TRUE(m_list->GetCurSel() == page - 1 && m_list->GetTopRow() == 0) << "to its last row";
    m_list->SortBy(1, Sort::kDescending);
    m_list->SetCurSel(0);
    m_list->SortBy(1, Sort::kAscending);
    EXPECT_TRUE(m_list->GetCurSel() == 4 && m_list->GetTopRow() == last) << "what is selected stays to be seen";
    step(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA));
    EXPECT_EQ((std::max)(last - page, 0), m_list->GetTopRow()) << "three lines, but no more than a page";
    step(WM_VSCROLL, SB_TOP);
    m_list->MoveWindow(0, 0, 120, m_list->GetRowArea(1).bottom);
    for (const auto& [delta, top] : {std::pair(WHEEL_DELTA / 4, 0), std::pair(WHEEL_DELTA / 4, 1),
                                     std::pair(-WHEEL_DELTA, 0), std::pair(WHEEL_DELTA, 2)}) {
        step(WM_MOUSEWHEEL, MAKEWPARAM(0, -delta)); // a page of two rows each
        EXPECT_EQ(top, m_list->GetTopRow());
    }
    step(WM_VSCROLL, SB_BOTTOM);
    m_list->MoveWindow(0, 0, 200, 290);
    EXPECT_TRUE(!HasBar(SB_VERT) && m_list->GetTopRow() == 0);

    // Neither bar is there for the other's sake.
    m_list->MoveWindow(0, 0, 100, m_list->GetRowArea(4).bottom);
    header.SetWidth(0, 200);
    EXPECT_TRUE(HasBar(SB_VERT) && HasBar(SB_HORZ));
    header.SetWidth(0, 40);
    EXPECT_FALSE(HasBar(SB_VERT) || HasBar(SB_HORZ));
    m_list->MoveWindow(0, 0, 100, m_list->GetRowArea(3).bottom); // and one may need the other
    EXPECT_TRUE(HasBar(SB_VERT) && HasBar(SB_HORZ));
    step(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(m_list->GetTopRow(), m_list->GetScrollLimit(SB_VERT));

    CFont large;
    large.CreatePointFont(240, "Arial");
    const int height = m_list->GetRowHeight();
    m_list->SetFont(&large);
    EXPECT_GT(m_list->GetRowHeight(), height + 10);
    EXPECT_EQ(&large, header.GetFont());
    m_list->EnableWindow(FALSE);
    EXPECT_FALSE(header.IsWindowEnabled());
    Make(WS_DISABLED);
    EXPECT_FALSE(m_header->IsWindowEnabled());
}

TEST_F(ColumnList, ShowsTheWholeOfAShortenedTextInATip)
{
    Make();
    m_list->MoveWindow(0, 0, 200, 90);
    m_header->SetWidth(0, 30);
    m_header->SetColumn(1, {"A long title", 60});
    CPoint before;
    ::GetCursorPos(&before);
    const CPoint inName(15, m_list->GetRowArea(2).CenterPoint().y), inSize(60, inName.y);
    const struct {
        CWnd* control;
        CPoint point;
        const char* text;
        std::function<void()> end; ///< hides it
    } kRows[] = {
        {m_list.get(), inName, "charlie", [&] { m_list->SendMessage(WM_VSCROLL, SB_BOTTOM); }},
        {m_list.get(), inSize, "", [&] { m_list->SendMessage(WM_VSCROLL, SB_TOP); }},
        {m_header, CPoint(60, 5), "A long title", [&] { m_header->SetWidth(1, 50); }},
        {m_header, CPoint(15, 5), "Name",
         [&] {
             m_header->SetColumn(0, {"N", 30});
         }},
        {m_list.get(), inName, "charlie", [&] { m_list->RemoveRow(0); }},
        {m_list.get(), inName, "bravo", [&] { m_list->DestroyWindow(); }},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(row.text, TipOver(*row.control, row.point, row.text[0] != '\0' ? 8 : 1));
        row.end();
        EXPECT_EQ("", ShownTip()) << row.text;
    }
    ::SetCursorPos(before.x, before.y);
}

TEST_F(ColumnList, SpeaksAllColumnsWithTheirNames)
{
    Make(CZoColumnList::kMovable);
    const Reader reader(*m_list);
    EXPECT_EQ(ROLE_SYSTEM_LISTITEM, reader.Role(1));
    EXPECT_EQ("Name: delta; Size: 20", reader.Name(1));
    EXPECT_EQ("Select", reader.Action(1));
    m_header->SetPosition(1, 0);
    EXPECT_EQ("Size: 20; Name: delta", reader.Name(1)) << "as they stand";
    m_list->m_skipped = 5;
    EXPECT_EQ("Size: 20", reader.Name(1)) << "what is empty is not spoken";
    m_list->m_skipped = 0;
    m_header->SetWidth(1, 0);
    EXPECT_EQ("Name: delta", reader.Name(1)) << "nor what is hidden";
    m_header->SetColumn(0, {"", 60});
    EXPECT_EQ("delta", reader.Name(1));
    const Events events(*m_list);
    m_list->SetCurSel(1);
    EXPECT_EQ("selection 2", HeardText());
    m_list->SetFocus();
    Play("k38 k38");
    EXPECT_EQ("focus 0, focus 2, focus 1, selection 1", HeardText());
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
    m_header->SetColumn(0, {static_cast<UINT>(ZO_IDS_HEADER_PUSH), 60});
    ChangeLanguage(kGerman);
    m_list->SendMessage(CZoLanguageSupport::GetUpdateMessage());
    EXPECT_EQ("Klicken: delta", reader.Name(1));
}

TEST_F(ColumnList, DrawsRowsPicturesAndStates)
{
    constexpr COLORREF kInk = RGB(200, 30, 40), kPaper = RGB(240, 240, 220), kMarked = RGB(0, 0, 99),
                       kOnMarked = RGB(255, 255, 3), kGray = RGB(120, 121, 122);
    const Scheme scheme{{COLOR_WINDOW, kPaper},
                        {COLOR_WINDOWTEXT, kInk},
                        {COLOR_GRAYTEXT, kGray},
                        {COLOR_HIGHLIGHT, kMarked},
                        {COLOR_HIGHLIGHTTEXT, kOnMarked}};
    Make();
    m_list->m_hasPictures = true;
    m_list->SendMessage(WM_SETTINGCHANGE);
    EXPECT_EQ(34, m_list->GetRowHeight());
    m_list->SetCurSel(0);
    m_list->UpdateWindow();
    m_list->SetCurSel(1);
    const CRect first = m_list->GetRowArea(0), second = m_list->GetRowArea(1);
    auto picture = ScreenOf(*m_list);
    EXPECT_EQ(10 * 30, picture->Count(kPicture, first));
    EXPECT_GT(picture->Count(kInk, first), 0);
    const int margin = CZoHeaderButton::GetMargin(), text = margin + 20 + margin;
    EXPECT_EQ(0, picture->Count(kInk, CRect(text - margin, first.top, text, first.bottom)));
    EXPECT_EQ(0, picture->Count(kInk, second) + picture->Count(kMarked, first));
    EXPECT_GT(picture->Count(kOnMarked, second), 0);
    EXPECT_EQ(kMarked, picture->At(second.right - 3, second.top + 2)) << "also behind the columns";
    EXPECT_EQ(kPaper, picture->At(first.right - 3, first.top + 2));
    m_header->SetWidth(0, 25);
    EXPECT_EQ(10 * 30, ScreenOf(*m_list)->Count(kPicture, first));
    EXPECT_EQ(3 * 30, ScreenOf(*m_list)->Count(kOther, first)) << "not beyond the column";
    m_list->EnableWindow(FALSE);
    picture = ScreenOf(*m_list);
    EXPECT_EQ(0, picture->Count(kInk, first) + picture->Count(kMarked, second));
    EXPECT_GT(picture->Count(kGray, first), 0);

    m_parent.ModifyStyleEx(0, WS_EX_LAYOUTRTL); // from right to left, where the picture stays as it is
    Make();
    m_list->m_hasPictures = true;
    m_list->SendMessage(WM_SETTINGCHANGE);
    EXPECT_NE(0u, m_header->GetExStyle() & WS_EX_LAYOUTRTL);
    picture = ScreenOf(*m_list);
    CRect client;
    m_list->GetClientRect(&client);
    // Unmirrored, at the edge where reading begins: the screen's right one, or the context's left one.
    const int y = first.CenterPoint().y, right = int{client.right} - 1 - margin;
    EXPECT_TRUE((picture->At(margin + 2, y) == kOther && picture->At(margin + 17, y) == kPicture) ||
                (picture->At(right - 2, y) == kOther && picture->At(right - 17, y) == kPicture));
}

TEST_F(ColumnList, SurvivesItsEndInNotificationsAndFaults)
{
    for (const auto& [told, script] :
         {std::pair("command:1", "r0"), std::pair("command:1", "R0"), std::pair("command:4", "c150,125"),
          std::pair("command:5", "r0 k117"), std::pair("pushed", "p0")}) {
        Make();
        m_parent.m_onTold = [&, name = told](const std::string& what) {
            if (what == name)
                m_list.reset();
        };
        Play(script);
        EXPECT_EQ(nullptr, m_list) << told;
        m_parent.m_onTold = nullptr;
    }
    Make();
    m_list->SetCurSel(3);
    m_list->SortBy(1, Sort::kAscending);
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        const std::string before = Rows();
        const BOOL sorted = m_list->SortBy(0, Sort::kAscending);
        run.Stop();
        EXPECT_EQ(sorted ? "A[b]ccd" : before, Rows());
        m_list->SortBy(1, Sort::kAscending);
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
