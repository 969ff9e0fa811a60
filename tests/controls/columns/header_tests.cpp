// The header: beside the system's own, by mouse and keys, and as a screen reader has it.
#include "controls/acts.h"
#include "support/product_test.h"

#include <zogbl/header.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include <afxcmn.h>

#include <numeric>

namespace {

using Align = CZoHeaderButton::Align;
using Sort = CZoHeaderButton::Sort;
using Place = CZoHeaderWnd::Place;

constexpr COLORREF kFace = RGB(180, 180, 180), kText = RGB(10, 60, 10), kLight = RGB(250, 250, 1),
                   kShadow = RGB(90, 1, 90), kMark = RGB(0, 0, 200);

/// "pushed 1", "sized 0=120", "moved 2@0".
std::string Describe(NMHDR& header, LRESULT& answer)
{
    const auto& notice = reinterpret_cast<const ZoHeaderNotice&>(header);
    const std::string column = std::to_string(notice.column), width = column + "=" + std::to_string(notice.width);
    answer = header.code == ZON_HEADER_FIT ? 150 : 0;
    const std::map<UINT, std::string> names = {
        {ZON_HEADER_PUSHED, "pushed " + column},
        {ZON_HEADER_SIZED, "sized " + width},
        {ZON_HEADER_SIZING, "sizing " + width},
        {ZON_HEADER_MOVED, "moved " + column + "@" + std::to_string(notice.position)},
        {ZON_HEADER_FIT, "fit " + column}};
    const auto name = names.find(header.code);
    return name != names.end() ? name->second : "";
}

class Header : public ProductTest {
protected:
    /// Three columns: 0 to 100, 100 to 180, and a fixed one without a push to 240.
    void Make(DWORD style = WS_TABSTOP | CZoHeaderWnd::kMovable)
    {
        m_header = std::make_unique<CZoHeaderWnd>();
        m_parent.SetFocus();
        ASSERT_TRUE(m_header->Create(style | WS_VISIBLE, CRect(0, 0, 300, 20), &m_parent, 5));
        ASSERT_EQ(0, m_header->InsertColumn(0, {"Name", 100}));
        ASSERT_EQ(1, m_header->InsertColumn(9, {"Size", 80, Align::kRight}));
        const UINT fixed = CZoHeaderButton::kFixedWidth | CZoHeaderButton::kNoPush;
        ASSERT_EQ(2, m_header->InsertColumn(2, {"Kind", 60, Align::kCenter, fixed}));
        m_parent.m_describe = &Describe;
    }
    /// "0=100 1=80 2=60", in the order on the screen.
    std::string Columns()
    {
        std::string all;
        for (int i = 0; i < m_header->GetColumnCount(); ++i) {
            const int column = m_header->GetColumnAt(i);
            all += (i > 0 ? " " : "") + std::to_string(column) + "=" +
                   std::to_string(m_header->GetColumn(column)->m_nWidth);
        }
        return all;
    }
    void Play(const std::string& script) { ::Play(*m_header, script); }

    ControlParent m_parent;
    std::unique_ptr<CZoHeaderWnd> m_header = std::make_unique<CZoHeaderWnd>();
};

} // namespace

/// What differs from the system's header, and why.
TEST_F(Header, IsLaidOutAndHitAsTheSystems)
{
    CHeaderCtrl system;
    ASSERT_TRUE(system.Create(HDS_BUTTONS | HDS_DRAGDROP | WS_VISIBLE, CRect(0, 40, 300, 60), &m_parent, 6));
    ASSERT_TRUE(m_header->Create(WS_VISIBLE, CRect(0, 0, 300, 20), &m_parent, 5));
    std::mt19937 random(14);
    const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    std::map<std::string, int> differences;
    for (int step = 0; step < 10000; ++step) {
        const int count = m_header->GetColumnCount();
        const int column = count > 0 ? any(count) : 0, other = count > 0 ? any(count) : 0;
        const int act = count == 0 ? 0 : count > 8 ? 1 : any(5);
        HDITEMA item = {};
        item.mask = act == 3 ? HDI_ORDER : HDI_WIDTH;
        item.cxy = any(10) == 0 ? 0 : 16 + any(any(2) == 0 ? 30 : 120);
        const int at = any(count + 2);
        item.iOrder = other;
        std::vector<int> order(static_cast<size_t>(count));
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), random);
        ASSERT_TRUE(act == 0   ? system.InsertItem(at, &item) == m_header->InsertColumn(at, {"", item.cxy})
                    : act == 1 ? system.DeleteItem(column) && m_header->RemoveColumn(column)
                    : act == 2 ? system.SetItem(column, &item) && m_header->SetWidth(column, item.cxy)
                    : act == 3 ? system.SetItem(column, &item) && m_header->SetPosition(column, other)
                               : system.SetOrderArray(count, order.data()) && m_header->SetOrder(order.data(), count));
        bool hasHidden = false;
        for (int i = 0; i < m_header->GetColumnCount(); ++i) {
            CRect place;
            system.GetItemRect(i, &place);
            ASSERT_EQ(place, m_header->GetColumnArea(i)) << "step " << step << ", column " << i;
            ASSERT_EQ(system.OrderToIndex(i), m_header->GetColumnAt(i)) << step;
            hasHidden = hasHidden || place.Width() == 0;
        }
        const CPoint point(any(420) - 10, any(30) - 5);
        HDHITTESTINFO hit = {};
        hit.pt = point;
        system.HitTest(&hit);
        const bool onDivider = (hit.flags & (HHT_ONDIVIDER | HHT_ONDIVOPEN)) != 0;
        const Place theirs = onDivider                         ? Place::kDivider
                             : (hit.flags & HHT_ONHEADER) != 0 ? Place::kButton
                                                               : Place::kNowhere;
        Place ours = Place::kNowhere;
        const int found = m_header->HitTest(point, ours);
        if (ours == theirs && (ours == Place::kNowhere || found == hit.iItem))
            continue;
        const int part = m_header->FindPart(point) - 1;
        const CRect area = m_header->GetColumnArea(part);
        differences[m_header->GetColumnCount() == 0 ? "none"
                    : hasHidden                     ? "hidden"
                    : part < 0                      ? "behind"
                    : area.Width() < 40             ? "narrow"
                                                    : "at " + std::to_string(point.x - area.left)]++;
    }
    const std::map<std::string, std::string> kReasons = {
        {"hidden", "a hidden column has no divider: no accident brings it back"},
        {"behind", "the divider behind all is that of the last one on the screen, not of the last number"},
        {"narrow", "a narrow column leaves room to push it, and can still be made wider"},
    };
    for (const auto& [name, times] : differences)
        EXPECT_EQ(1u, kReasons.count(name)) << name << ": " << times;
    EXPECT_EQ(kReasons.size(), differences.size());
}

TEST_F(Header, TellsEachActOnce)
{
    Make();
    const struct {
        const char *script, *told, *columns;
    } kActs[] = {
        {"c30,10", "pushed 0", "0=100 1=80 2=60"},
        {"c210,10", "", "0=100 1=80 2=60"},              // a title
        {"d30,10 m30,40 u30,40", "", "0=100 1=80 2=60"}, // let go beside it
        {"d97,10 m107,10 m107,12 u117,10", "sizing 0=110 sized 0=120", "0=120 1=80 2=60"},
        {"d123,10 m-500,10 u-500,10", "sizing 0=16 sized 0=16", "0=16 1=80 2=60"}, // the least width
        {"c8,10", "pushed 0", "0=16 1=80 2=60"},
        {"d95,10 m99,10 u95,10", "sizing 1=84", "0=16 1=80 2=60"}, // as before
        {"d155,10 m170,10 u156,10", "", "0=16 1=80 2=60"},         // fixed
        {"b15,10", "fit 0 sized 0=150", "0=150 1=80 2=60"},
        {"b148,10", "fit 0", "0=150 1=80 2=60"},
        {"d50,10 m195,10 u195,10", "moved 0@1", "1=80 0=150 2=60"},
        {"d100,10 m120,10 u120,10", "", "1=80 0=150 2=60"}, // to its place
        {"b40,10 u40,10 c40,10", "pushed 1 pushed 1", "1=80 0=150 2=60"},
    };
    for (const auto& row : kActs) {
        Play(row.script);
        EXPECT_EQ(row.told, m_parent.Told()) << row.script;
        EXPECT_EQ(row.columns, Columns()) << row.script;
        EXPECT_EQ(nullptr, ::GetCapture()) << row.script;
    }
    Reader(*m_header)->accDoDefaultAction(Reader::Part(2));
    EXPECT_EQ("pushed 1", m_parent.Told());
    m_header->SetWidth(0, 100);
    m_header->SetPosition(0, 0);
    m_header->SetSort(1, Sort::kDescending);
    EXPECT_EQ("", m_parent.Told()) << "the programmer's";
    m_header->SetPosition(2, 0);
    Play("c62,10");
    EXPECT_EQ("pushed 0", m_parent.Told()) << "behind a fixed one is no divider";
    EXPECT_EQ(m_header->m_hWnd, ::GetFocus()) << "it is a tab stop";
    Play("c200,10");
    EXPECT_EQ("pushed 1", m_parent.Told());
    EXPECT_EQ(2, m_header->GetFocusedPart());
    Play("b245,10");
    EXPECT_EQ("fit 1 sized 1=150", m_parent.Told()) << "the last one's divider goes on behind it";
    Make(0);
    Play("c30,10 d30,10 m170,10 u170,10 c210,10 d210,10 m30,10 u30,10 k37+3");
    EXPECT_EQ("pushed 0", m_parent.Told()) << "neither movable nor a tab stop";
    EXPECT_EQ("0=100 1=80 2=60", Columns());
    EXPECT_EQ(m_parent.m_hWnd, ::GetFocus());
    m_parent.m_onTold = [&](const std::string&) { m_header->RemoveColumn(0); };
    EXPECT_FALSE(m_header->FitColumn(1)) << "it is another one now";
    EXPECT_EQ("0=80 1=60", Columns());
}

TEST_F(Header, ObeysKeys)
{
    for (const bool isMirrored : {false, true}) {
        SCOPED_TRACE(isMirrored);
        Make();
        if (isMirrored) // as it would be made there
            m_header->ModifyStyleEx(0, WS_EX_LAYOUTRTL);
        m_header->SetFocus();
        // Each key, the column that has the focus then, what is told.
        std::istringstream rows("k37 1;k39 2;k32 2 pushed 1;k13 2 pushed 1;k39+2 2 sized 1=88;k37+2 2 sized 1=80;"
                                "k107+2 2 fit 1 sized 1=150;k37+3 2 moved 1@0;k37+3 2;k39 1;k39+3 1 moved 0@2;k37 3;"
                                "k32 3;k39+2 3;k107+2 3;k36 2;k35 1;k38 1");
        const Reader reader(*m_header);
        const Events events(*m_header);
        LONG before = 1;
        for (std::string row; std::getline(rows, row, ';');) {
            const size_t end = row.find(' ');
            std::string key = row.substr(0, end);
            if (isMirrored && (key[2] == '7' || key[2] == '9'))
                key[2] = key[2] == '7' ? '9' : '7';
            Play(key);
            const std::string told = m_parent.Told();
            const LONG focus = reader.Focus();
            EXPECT_EQ(row, row.substr(0, end + 1) + std::to_string(focus) + (told.empty() ? "" : " " + told));
            EXPECT_EQ(focus != before, Events::Count(EVENT_OBJECT_FOCUS) == 1) << row;
            before = focus;
        }
        MSG enter = {m_header->m_hWnd, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
        EXPECT_EQ(DLGC_WANTARROWS, m_header->SendMessage(WM_GETDLGCODE));
        EXPECT_EQ(DLGC_WANTARROWS | DLGC_WANTALLKEYS,
                  m_header->SendMessage(WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)));
        m_header->InsertColumn(0, {"", 20}); // the focus stays with its column
        EXPECT_EQ(2, reader.Focus());
        m_header->RemoveColumn(0);
        EXPECT_EQ(1, reader.Focus());
        m_header->SetWidth(2, 0); // hidden ones are passed over
        Play(isMirrored ? "k39" : "k37");
        EXPECT_EQ(2, reader.Focus());
        m_header->SetWidth(1, 0);
        EXPECT_EQ(1, reader.Focus());
    }
}

TEST_F(Header, UndoesEachDragInEachWayItCanEnd)
{
    constexpr char kBefore[] = "0=100 1=80 2=60";
    const struct {
        const char* name;
        std::function<void()> end;
        const char* columns;
    } kEnds[] = {
        {"Esc", [&] { PressKey(*m_header, VK_ESCAPE); }, kBefore},
        {"capture", [&] { ::ReleaseCapture(); }, kBefore},
        {"another's capture", [&] { m_parent.SetCapture(); }, kBefore},
        {"disabled", [&] { m_header->EnableWindow(FALSE); }, kBefore},
        {"destroyed", [&] { m_header->DestroyWindow(); }, kBefore},
        {"removed", [&] { m_header->RemoveColumn(0); }, "0=80 1=60"},
        {"another removed", [&] { m_header->RemoveColumn(2); }, "0=100 1=80"},
        {"inserted", [&] { m_header->InsertColumn(0, CZoHeaderButton("", 20)); }, "0=20 1=100 2=80 3=60"},
        {"order", [&] { m_header->SetPosition(2, 0); }, "2=60 0=100 1=80"},
        {"text", [&] { m_header->SetColumn(0, CZoHeaderButton("New", 70)); }, "0=70 1=80 2=60"},
    };
    for (const char* const drag : {"d97,10 m140,10", "d30,10 m170,10", "d30,10 m31,10"}) { // width, move, push
        for (const auto& row : kEnds) {
            SCOPED_TRACE(std::string(drag) + ", " + row.name);
            Make();
            m_header->SetFocus();
            const auto before = ScreenOf(*m_header);
            Play(drag);
            EXPECT_FALSE(AreEqual(*before, *ScreenOf(*m_header)));
            Play("k32 k39 k39+2"); // keys wait for its end
            const bool isWidth = drag[1] == '9';
            EXPECT_EQ(isWidth ? "sizing 0=143" : "", m_parent.Told());
            row.end();
            EXPECT_EQ(isWidth ? "sizing 0=100" : "", m_parent.Told());
            EXPECT_EQ(row.columns, Columns());
            EXPECT_FALSE(m_header->m_hWnd != nullptr && ::GetCapture() == m_header->m_hWnd);
            ::ReleaseCapture();
            if (m_header->m_hWnd == nullptr)
                continue;
            const bool isAsBefore = row.columns == kBefore && m_header->IsWindowEnabled();
            EXPECT_EQ(isAsBefore, AreEqual(*before, *ScreenOf(*m_header))) << "nothing is left";
            Play("u140,10");
            EXPECT_EQ("", m_parent.Told());
        }
    }
}

TEST_F(Header, MayBeDestroyedInEachOfItsNotifications)
{
    const struct {
        const char *at, *script;
    } kActs[] = {{"pushed 0", "c30,10"},
                 {"sizing 0=110", "d97,10 m107,10"},
                 {"sized 0=110", "d97,10 m107,10 u107,10"},
                 {"fit 0", "b97,10"},
                 {"fit 0", "k107+2"},
                 {"moved 0@1", "k39+3"}};
    for (const bool removesAll : {false, true}) {
        for (const auto& row : kActs) {
            Make();
            m_parent.m_describe = [&](NMHDR& header, LRESULT& answer) {
                const std::string what = Describe(header, answer);
                if (what == row.at && removesAll)
                    while (m_header->RemoveColumn(0)) {
                    }
                else if (what == row.at)
                    m_header.reset();
                return what;
            };
            Play(row.script);
            EXPECT_NE(std::string::npos, m_parent.Told().find(row.at)) << row.at;
            EXPECT_EQ(removesAll, m_header != nullptr);
            ::ReleaseCapture();
        }
    }
}

TEST_F(Header, ShowsItsStatesInEachScheme)
{
    const Scheme scheme{{COLOR_3DFACE, kFace},     {COLOR_BTNTEXT, kText},   {COLOR_3DHILIGHT, kLight},
                        {COLOR_3DSHADOW, kShadow}, {COLOR_HIGHLIGHT, kMark}, {COLOR_GRAYTEXT, RGB(7, 7, 7)}};
    Make();
    const auto count = [&](COLORREF color, const CRect& area) { return PictureOf(*m_header)->Count(color, area); };
    const auto rowsOf = [&](const CRect& area) { // "1 3 5 7": ink in each row, from the top
        std::string rows;
        for (int y = area.top; y < area.bottom; ++y) {
            const int ink = count(kText, CRect(area.left, y, area.right, y + 1));
            rows += ink > 0 ? std::to_string(ink) + " " : "";
        }
        return rows;
    };
    const CRect all(0, 0, 300, 20), top(0, 0, 100, 2), arrowLeft(100, 2, 120, 18), arrowRight(80, 2, 98, 18);
    EXPECT_EQ("", rowsOf(arrowRight));
    const auto firstInk = [&] {
        int x = 4;
        while (x < 60 && count(kText, CRect(x, 2, x + 1, 18)) == 0)
            ++x;
        return x;
    };
    const int begin = firstInk();
    EXPECT_LT(begin, 60);
    m_header->SetSort(0, Sort::kAscending);
    EXPECT_EQ("1 3 5 7 ", rowsOf(arrowRight));
    ScreenOf(*m_header);
    m_header->SetSort(1, Sort::kDescending);
    EXPECT_EQ("", rowsOf(arrowRight)) << "one alone";
    EXPECT_EQ("7 5 3 1 ", rowsOf(arrowLeft)) << "text on the right, arrow on the left";
    EXPECT_TRUE(AreEqual(*ScreenOf(*m_header), *PictureOf(*m_header))) << "only what changes is drawn again";
    m_header->SetFocus();
    ScreenOf(*m_header);
    Play("k39");
    EXPECT_TRUE(AreEqual(*ScreenOf(*m_header), *PictureOf(*m_header)));

    EXPECT_EQ(kFace, PictureOf(*m_header)->At(290, 10)) << "behind the columns";
    EXPECT_GT(count(kLight, top), 50);
    Play("d30,10 m31,10");
    m_parent.SetFocus();
    EXPECT_LT(count(kLight, top), 10) << "pressed";
    EXPECT_EQ(begin + 1, firstInk()) << "the text moves with the button";
    EXPECT_EQ(STATE_SYSTEM_PRESSED, Reader(*m_header).State(1) & STATE_SYSTEM_PRESSED);
    Play("m170,10");
    EXPECT_EQ(2 * 20, count(kMark, CRect(179, 0, 181, 20))) << "where it would go";
    PressKey(*m_header, VK_ESCAPE);
    m_header->EnableWindow(FALSE);
    EXPECT_EQ(0, count(kText, all));
    EXPECT_GT(count(kShadow, CRect(4, 2, 60, 18)), 0);
    m_header->EnableWindow();

    CZoHeaderButton button = *m_header->GetColumn(0);
    const CClientDC dc(&m_parent);
    const int fit = button.GetFitWidth(dc);
    button.m_flags = CZoHeaderButton::kNoPush;
    EXPECT_EQ(fit - 11, button.GetFitWidth(dc)) << "without an arrow";
    button.m_flags = 0;
    button.m_hIcon = ::LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_WARNING));
    EXPECT_GT(button.GetFitWidth(dc), fit + 15);
    m_header->SetColumn(0, button);
    const COLORREF orange = PictureOf(*m_header)->At(14, 14);
    EXPECT_NE(kFace, orange);
    m_header->EnableWindow(FALSE);
    EXPECT_EQ(0, count(orange, CRect(0, 0, 40, 20)));
    m_header->EnableWindow();
    m_header->SetWidth(0, 20);
    EXPECT_EQ(0, count(orange, CRect(0, 0, 20, 20))) << "a picture is whole or not there";
    button.m_hIcon = nullptr;
    button.m_sort = Sort::kAscending;
    for (const int missing : {0, 1}) {
        button.m_nWidth = fit - missing;
        EXPECT_EQ(missing, button.IsShortened(dc));
    }
    m_header->SetWidth(0, 16);
    m_header->SetScrollPosition(16);
    EXPECT_EQ(CRect(0, 0, 80, 20), m_header->GetColumnArea(1));
    m_header->SetScrollPosition(-1);
    EXPECT_EQ(0, m_header->GetScrollPosition());
}

TEST_F(Header, RefusesWhatCannotBe)
{
    Make();
    const int twice[] = {0, 0, 1}, beyond[] = {0, 1, 3}, two[] = {1, 0};
    CZoHeaderButton negative("x", 10), wide("x", CZoHeaderButton::kMostWidth + 1);
    negative.m_nLeastWidth = -1;
    EXPECT_EQ(-1, m_header->InsertColumn(-1, {"x", 10}));
    for (const CZoHeaderButton& bad : {negative, wide, CZoHeaderButton("x", -1)}) {
        EXPECT_EQ(-1, m_header->InsertColumn(0, bad));
        EXPECT_FALSE(m_header->SetColumn(0, bad));
    }
    for (const int column : {-1, 3}) {
        EXPECT_FALSE(m_header->RemoveColumn(column) || m_header->SetWidth(column, 50) || m_header->FitColumn(column) ||
                     m_header->SetPosition(column, 0) || m_header->SetPosition(0, column) ||
                     m_header->SetColumn(column, {}));
        EXPECT_TRUE(m_header->GetColumn(column) == nullptr && m_header->GetPosition(column) == -1);
        EXPECT_TRUE(m_header->GetColumnArea(column).IsRectNull());
    }
    EXPECT_FALSE(m_header->SetSort(3, Sort::kAscending) || m_header->SetWidth(0, -1) ||
                 m_header->SetWidth(0, CZoHeaderButton::kMostWidth + 1) || m_header->SetOrder(twice, 3) ||
                 m_header->SetOrder(beyond, 3) || m_header->SetOrder(two, 2) || m_header->SetOrder(nullptr, 3));
    EXPECT_EQ("0=100 1=80 2=60", Columns());
    const std::string large(65536, 'w');
    EXPECT_TRUE(m_header->SetColumn(0, {large.c_str(), 100}) && m_header->FitColumn(0));
    EXPECT_EQ(CZoHeaderButton::kMostWidth, m_header->GetColumn(0)->m_nWidth);
    ScreenOf(*m_header);
    for (int i = m_header->GetColumnCount(); i < CZoHeaderWnd::kMostColumns; ++i)
        ASSERT_EQ(i, m_header->InsertColumn(i, {"", 1}));
    EXPECT_EQ(-1, m_header->InsertColumn(0, {"", 1}));
}

TEST_F(Header, KeepsItsColumnsInARecord)
{
    Make();
    EXPECT_TRUE(m_header->SetPosition(2, 0) && m_header->SetWidth(1, 0) && m_header->SetSort(0, Sort::kDescending));
    const CString record = m_header->GetRecord();
    CZoHeaderWnd other; // which has no window yet
    for (int i = 0; i < 3; ++i)
        other.InsertColumn(i, {"", 50, Align::kLeft, i == 2 ? CZoHeaderButton::kFixedWidth : 0U});
    const CString before = other.GetRecord(), longer = record + " ";
    for (int i = 0; i < record.GetLength(); ++i) { // cut, and with each character another
        CString damaged = record;
        EXPECT_FALSE(other.SetRecord(record.Left(i)));
        damaged.SetAt(i, record[i] == '1' ? '2' : '1');
        EXPECT_FALSE(other.SetRecord(damaged)) << damaged;
    }
    for (const char* bad : {LPCSTR{}, static_cast<LPCSTR>(longer),
                            "ZoHeader1 3 0 0 50 0 50 0 50 0 1157995566", // a place of three columns
                            "ZoHeader1 3 0 0 99999999999 0 1 1 1 2 99999999999"})
        EXPECT_FALSE(other.SetRecord(bad)) << bad;
    EXPECT_EQ(before, other.GetRecord());
    EXPECT_TRUE(other.SetRecord(record));
    EXPECT_EQ(record, other.GetRecord());
    EXPECT_TRUE(other.GetColumnAt(0) == 2 && other.GetSortColumn() == 0 && other.GetColumn(2)->m_nWidth == 60);
    other.RemoveColumn(1);
    EXPECT_FALSE(other.SetRecord(record)) << "of other columns";
}

TEST_F(Header, TellsScreenReaders)
{
    Make();
    m_header->InsertColumn(3, {static_cast<UINT>(ZO_IDS_HEADER_PUSH), 200}); // has a text of the library
    const Reader reader(*m_header);
    EXPECT_EQ("Column headings: Name Click, Kind , Click", reader.Name() + ": " + reader.Name(1) + " " +
                                                               reader.Action(1) + ", " + reader.Name(3) + " " +
                                                               reader.Action(3) + ", " + reader.Name(4));
    EXPECT_EQ(ROLE_SYSTEM_COLUMNHEADER, reader.Role(1));
    CRect second(100, 0, 180, 20);
    m_header->ClientToScreen(&second);
    EXPECT_EQ(second, reader.Area(2));
    EXPECT_EQ(2, reader.At(second.TopLeft())) << "the divider's column is not that of the place";
    m_header->SetFocus();
    const Events events(*m_header);
    for (const auto& [sort, spoken] :
         {std::pair(Sort::kAscending, "sorted ascending"), std::pair(Sort::kDescending, "sorted descending"),
          std::pair(Sort::kDescending, "sorted descending")}) {
        m_header->SetSort(1, sort);
        EXPECT_EQ(spoken, reader.Description(2));
    }
    m_header->SetColumn(0, {"New", 90});
    m_header->SetColumn(0, {"New", 100});
    m_header->SetPosition(0, 1);
    m_header->SetPosition(0, 1);
    EXPECT_EQ("description 2, description 2, name 1", HeardText());
    EXPECT_EQ("New", reader.Name(1)) << "its number stays";
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED, reader.State(1));
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE, reader.State(2));
    m_header->SetScrollPosition(100);
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN, reader.State(2) & ~0x200000L);
    m_header->SetWidth(2, 0);
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_INVISIBLE, reader.State(3));
    ChangeLanguage(kGerman);
    m_header->SendMessage(CZoLanguageSupport::GetUpdateMessage());
    EXPECT_EQ("Klicken, New", reader.Name(4) + ", " + reader.Name(1));
}
