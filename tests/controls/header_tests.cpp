// The header: beside the system's own, by mouse and keys, and as a screen reader has it.
#include "control_kit.h"

#include "common/without_throwing.h"
#include "support/product_test.h"
#include <zogbl/gdi_data.h>
#include <zogbl/header.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include <afxcmn.h>

#include <random>

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
    switch (header.code) {
    case ZON_HEADER_PUSHED:
        return "pushed " + column;
    case ZON_HEADER_SIZED:
        return "sized " + width;
    case ZON_HEADER_SIZING:
        return "sizing " + width;
    case ZON_HEADER_MOVED:
        return "moved " + column + "@" + std::to_string(notice.position);
    case ZON_HEADER_FIT:
        answer = 150;
        return "fit " + column;
    default:
        return "";
    }
}

class Header : public ProductTest {
protected:
    /// Three columns: 0 to 100, 100 to 180, and a fixed one without a push to 240.
    void Make(DWORD style = WS_TABSTOP | CZoHeaderWnd::kMovable, int width = 300)
    {
        ASSERT_TRUE(m_header->Create(style | WS_VISIBLE, CRect(0, 0, width, 20), &m_parent, 5));
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
    void Drag(CPoint from, CPoint to)
    {
        SendMouse(*m_header, WM_LBUTTONDOWN, from, MK_LBUTTON);
        SendMouse(*m_header, WM_MOUSEMOVE, to, MK_LBUTTON);
    }

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
    const auto width = [&] { return any(10) == 0 ? 0 : 16 + any(any(2) == 0 ? 30 : 120); };
    std::map<std::string, int> differences;
    for (int step = 0; step < 10000; ++step) {
        const int count = m_header->GetColumnCount();
        const int column = count > 0 ? any(count) : 0, other = count > 0 ? any(count) : 0;
        const int act = count == 0 ? 0 : count > 8 ? 1 : any(6);
        HDITEMA item = {};
        item.mask = HDI_WIDTH;
        item.cxy = width();
        if (act == 0) {
            const int at = any(count + 2);
            ASSERT_EQ(system.InsertItem(at, &item), m_header->InsertColumn(at, {"", item.cxy}));
        } else if (act == 1) {
            ASSERT_TRUE(system.DeleteItem(column) && m_header->RemoveColumn(column));
        } else if (act == 2) {
            ASSERT_TRUE(system.SetItem(column, &item) && m_header->SetWidth(column, item.cxy));
        } else if (act == 3) {
            item.mask = HDI_ORDER;
            item.iOrder = other;
            ASSERT_TRUE(system.SetItem(column, &item) && m_header->SetPosition(column, other));
        } else if (act == 4) {
            std::vector<int> order(static_cast<size_t>(count));
            for (int i = 0; i < count; ++i)
                order[static_cast<size_t>(i)] = i;
            std::shuffle(order.begin(), order.end(), random);
            ASSERT_TRUE(system.SetOrderArray(count, order.data()) && m_header->SetOrder(order.data(), count));
        } else {
            const CSize size(any(400), 5 + any(30));
            system.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
            m_header->SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        }
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
        const char* name;
        std::function<void()> act;
        const char* told;
        const char* columns;
    } kActs[] = {
        {"push",
         [&] {
             Click(*m_header, {30, 10});
         },
         "pushed 0", "0=100 1=80 2=60"},
        {"a title",
         [&] {
             Click(*m_header, {210, 10});
         },
         "", "0=100 1=80 2=60"},
        {"let go beside it",
         [&] {
             Drag({30, 10}, {30, 40});
             SendMouse(*m_header, WM_LBUTTONUP, {30, 40});
         },
         "", "0=100 1=80 2=60"},
        {"wider",
         [&] {
             Drag({97, 10}, {107, 10});
             SendMouse(*m_header, WM_MOUSEMOVE, {107, 12}, MK_LBUTTON);
             SendMouse(*m_header, WM_LBUTTONUP, {117, 10});
         },
         "sizing 0=110 sized 0=120", "0=120 1=80 2=60"},
        {"to the least width",
         [&] {
             Drag({123, 10}, {-500, 10});
             SendMouse(*m_header, WM_LBUTTONUP, {-500, 10});
         },
         "sizing 0=16 sized 0=16", "0=16 1=80 2=60"},
        {"the same width",
         [&] {
             Drag({95, 10}, {99, 10});
             SendMouse(*m_header, WM_LBUTTONUP, {95, 10});
         },
         "sizing 1=84", "0=16 1=80 2=60"},
        {"fixed",
         [&] {
             Drag({155, 10}, {170, 10}), SendMouse(*m_header, WM_LBUTTONUP, {156, 10});
         },
         "", "0=16 1=80 2=60"},
        {"fit",
         [&] {
             SendMouse(*m_header, WM_LBUTTONDBLCLK, {15, 10});
         },
         "fit 0 sized 0=150", "0=150 1=80 2=60"},
        {"fit again",
         [&] {
             SendMouse(*m_header, WM_LBUTTONDBLCLK, {148, 10});
         },
         "fit 0", "0=150 1=80 2=60"},
        {"move",
         [&] {
             Drag({50, 10}, {195, 10});
             SendMouse(*m_header, WM_LBUTTONUP, {195, 10});
         },
         "moved 0@1", "1=80 0=150 2=60"},
        {"move to its place",
         [&] {
             Drag({100, 10}, {120, 10});
             SendMouse(*m_header, WM_LBUTTONUP, {120, 10});
         },
         "", "1=80 0=150 2=60"},
        {"double push",
         [&] {
             SendMouse(*m_header, WM_LBUTTONDBLCLK, {40, 10}), Click(*m_header, {40, 10});
         },
         "pushed 1", "1=80 0=150 2=60"},
        {"programmer",
         [&] {
             m_header->SetWidth(0, 100);
             m_header->SetPosition(0, 0);
             m_header->SetSort(1, Sort::kDescending);
         },
         "", "0=100 1=80 2=60"},
        {"reader", [&] { Reader(*m_header)->accDoDefaultAction(Reader::Part(2)); }, "pushed 1", "0=100 1=80 2=60"},
    };
    for (const auto& row : kActs) {
        row.act();
        EXPECT_EQ(row.told, m_parent.Told()) << row.name;
        EXPECT_EQ(row.columns, Columns()) << row.name;
        EXPECT_EQ(nullptr, ::GetCapture()) << row.name;
    }
    EXPECT_EQ(m_header->m_hWnd, ::GetFocus()) << "it is a tab stop";
}

TEST_F(Header, ObeysKeys)
{
    for (const bool isMirrored : {false, true}) {
        SCOPED_TRACE(isMirrored);
        m_header = std::make_unique<CZoHeaderWnd>();
        ControlParent parent(isMirrored ? WS_EX_LAYOUTRTL : 0);
        m_parent.SetFocus();
        Make();
        if (isMirrored) // as it would be made there
            m_header->ModifyStyleEx(0, WS_EX_LAYOUTRTL);
        m_header->SetFocus();
        const UINT back = isMirrored ? VK_RIGHT : VK_LEFT, on = isMirrored ? VK_LEFT : VK_RIGHT;
        constexpr int kBoth = ZoKey::kControl | ZoKey::kShift;
        const struct {
            UINT key;
            int modifiers;
            const char* told;
            LONG focus;
        } kKeys[] = {
            {back, 0, "", 1},
            {on, 0, "", 2},
            {VK_SPACE, 0, "pushed 1", 2},
            {VK_RETURN, 0, "pushed 1", 2},
            {on, ZoKey::kControl, "sized 1=88", 2},
            {back, ZoKey::kControl, "sized 1=80", 2},
            {VK_ADD, ZoKey::kControl, "fit 1 sized 1=150", 2},
            {back, kBoth, "moved 1@0", 2},
            {back, kBoth, "", 2},
            {on, 0, "", 1},
            {on, kBoth, "moved 0@2", 1},
            {back, 0, "", 3},
            {VK_SPACE, 0, "", 3},
            {on, ZoKey::kControl, "", 3},
            {VK_ADD, ZoKey::kControl, "", 3},
            {VK_HOME, 0, "", 2},
            {VK_END, 0, "", 1},
            {VK_UP, 0, "", 1},
        };
        const Reader reader(*m_header);
        const Events events(*m_header);
        LONG before = 1;
        for (const auto& row : kKeys) {
            PressKey(*m_header, row.key, row.modifiers);
            EXPECT_EQ(row.told, m_parent.Told()) << row.key << "+" << row.modifiers;
            EXPECT_EQ(row.focus, reader.Focus()) << row.key;
            EXPECT_EQ(row.focus != before, Events::Count(EVENT_OBJECT_FOCUS) == 1) << row.key;
            before = row.focus;
        }
        MSG enter = {m_header->m_hWnd, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
        EXPECT_EQ(DLGC_WANTARROWS, m_header->SendMessage(WM_GETDLGCODE));
        EXPECT_NE(0,
                  DLGC_WANTALLKEYS & m_header->SendMessage(WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)));
        m_header->SetWidth(0, 0); // the hidden one is passed over
        EXPECT_EQ(2, reader.Focus());
    }
}

TEST_F(Header, UndoesEachDragInEachWayItCanEnd)
{
    const struct {
        const char* name;
        CPoint from, to;
    } kDrags[] = {{"width", {97, 10}, {140, 10}}, {"move", {30, 10}, {170, 10}}, {"push", {30, 10}, {31, 10}}};
    const struct {
        const char* name;
        std::function<void()> end;
        const char* columns;
    } kEnds[] = {
        {"Esc", [&] { PressKey(*m_header, VK_ESCAPE); }, "0=100 1=80 2=60"},
        {"capture", [&] { ::ReleaseCapture(); }, "0=100 1=80 2=60"},
        {"another's capture", [&] { m_parent.SetCapture(); }, "0=100 1=80 2=60"},
        {"disabled", [&] { m_header->EnableWindow(FALSE); }, "0=100 1=80 2=60"},
        {"removed", [&] { m_header->RemoveColumn(0); }, "0=80 1=60"},
        {"another removed", [&] { m_header->RemoveColumn(2); }, "0=100 1=80"},
        {"inserted",
         [&] {
             m_header->InsertColumn(0, {"", 20});
         },
         "0=20 1=100 2=80 3=60"},
        {"order", [&] { m_header->SetPosition(2, 0); }, "2=60 0=100 1=80"},
        {"text",
         [&] {
             m_header->SetColumn(0, {"New", 70});
         },
         "0=70 1=80 2=60"},
        {"destroyed", [&] { m_header->DestroyWindow(); }, "0=100 1=80 2=60"},
    };
    for (const auto& drag : kDrags) {
        for (const auto& row : kEnds) {
            SCOPED_TRACE(std::string(drag.name) + ", " + row.name);
            m_header = std::make_unique<CZoHeaderWnd>();
            Make();
            m_header->SetFocus();
            const auto before = ScreenOf(*m_header);
            Drag(drag.from, drag.to);
            EXPECT_FALSE(AreEqual(*before, *ScreenOf(*m_header)));
            const bool isWidth = drag.from.x == 97;
            EXPECT_EQ(isWidth ? "sizing 0=143" : "", m_parent.Told());
            row.end();
            EXPECT_EQ(isWidth ? "sizing 0=100" : "", m_parent.Told());
            EXPECT_EQ(row.columns, Columns());
            EXPECT_NE(m_header->m_hWnd, ::GetCapture() != nullptr ? ::GetCapture() : INVALID_HANDLE_VALUE);
            ::ReleaseCapture();
            if (m_header->m_hWnd == nullptr)
                continue;
            if (std::string(row.name) == "Esc") {
                EXPECT_TRUE(AreEqual(*before, *ScreenOf(*m_header))) << "nothing is left";
            }
            SendMouse(*m_header, WM_LBUTTONUP, drag.to);
            EXPECT_EQ("", m_parent.Told());
        }
    }
}

TEST_F(Header, MayBeDestroyedInEachOfItsNotifications)
{
    const struct {
        const char* at;
        std::function<void()> act;
    } kActs[] = {
        {"pushed 0",
         [&] {
             Click(*m_header, {30, 10});
         }},
        {"sizing 0=110",
         [&] {
             Drag({97, 10}, {107, 10});
         }},
        {"sized 0=110",
         [&] {
             Drag({97, 10}, {107, 10}), SendMouse(*m_header, WM_LBUTTONUP, {107, 10});
         }},
        {"fit 0",
         [&] {
             SendMouse(*m_header, WM_LBUTTONDBLCLK, {97, 10});
         }},
        {"fit 0", [&] { EXPECT_FALSE(m_header->FitColumn(0)); }},
        {"moved 0@1", [&] { PressKey(*m_header, VK_RIGHT, ZoKey::kControl | ZoKey::kShift); }},
    };
    for (const bool removesAll : {false, true}) {
        for (const auto& row : kActs) {
            m_header = std::make_unique<CZoHeaderWnd>();
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
            row.act();
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
    const CRect arrowLeft(100, 2, 120, 18), arrowRight(80, 2, 98, 18), text(4, 2, 60, 18);
    const auto rowsOf = [&](const CRect& area) { // ink in each row, from the top
        const auto picture = PictureOf(*m_header);
        std::vector<int> rows;
        for (int y = area.top; y < area.bottom; ++y) {
            const int ink = picture->Count(kText, CRect(area.left, y, area.right, y + 1));
            if (ink > 0)
                rows.push_back(ink);
        }
        return rows;
    };
    EXPECT_TRUE(rowsOf(arrowRight).empty());
    EXPECT_FALSE(rowsOf(text).empty());
    m_header->SetSort(0, Sort::kAscending);
    EXPECT_EQ((std::vector<int>{1, 3, 5, 7}), rowsOf(arrowRight));
    m_header->SetSort(1, Sort::kDescending);
    EXPECT_TRUE(rowsOf(arrowRight).empty()) << "one alone";
    EXPECT_EQ((std::vector<int>{7, 5, 3, 1}), rowsOf(arrowLeft)) << "text on the right, arrow on the left";
    EXPECT_EQ(1, m_header->GetSortColumn());

    auto plain = PictureOf(*m_header);
    EXPECT_EQ(kFace, plain->At(290, 10)) << "behind the columns";
    EXPECT_GT(plain->Count(kLight, CRect(0, 0, 100, 2)), 50);
    EXPECT_TRUE(AreEqual(*plain, *ScreenOf(*m_header)));
    Drag({30, 10}, {31, 10});
    EXPECT_LT(PictureOf(*m_header)->Count(kLight, CRect(0, 0, 100, 2)), 10) << "pressed";
    SendMouse(*m_header, WM_MOUSEMOVE, {170, 10}, MK_LBUTTON);
    EXPECT_EQ(2 * 20, PictureOf(*m_header)->Count(kMark, CRect(179, 0, 181, 20))) << "where it would go";
    PressKey(*m_header, VK_ESCAPE);
    m_header->EnableWindow(FALSE);
    EXPECT_EQ(0, PictureOf(*m_header)->Count(kText, CRect(0, 0, 300, 20)));
    EXPECT_GT(PictureOf(*m_header)->Count(kShadow, text), 0);
    m_header->EnableWindow();

    // A picture takes room and stays as it is from right to left.
    CZoHeaderButton button = *m_header->GetColumn(0);
    const HICON icon = ::LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_WARNING));
    button.m_hIcon = icon;
    const CClientDC dc(&m_parent);
    EXPECT_GT(button.GetFitWidth(dc), m_header->GetColumn(0)->GetFitWidth(dc) + 15);
    EXPECT_TRUE(m_header->SetColumn(0, button));
    EXPECT_FALSE(AreEqual(*plain, *PictureOf(*m_header)));
    m_header->SetWidth(0, 16);
    m_header->SetScrollPosition(16);
    EXPECT_EQ(CRect(0, 0, 80, 20), m_header->GetColumnArea(1));
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
        EXPECT_EQ(nullptr, m_header->GetColumn(column));
        EXPECT_EQ(-1, m_header->GetPosition(column));
        EXPECT_EQ(CRect(), m_header->GetColumnArea(column));
    }
    EXPECT_FALSE(m_header->SetSort(3, Sort::kAscending));
    EXPECT_FALSE(m_header->SetWidth(0, -1) || m_header->SetWidth(0, CZoHeaderButton::kMostWidth + 1));
    EXPECT_FALSE(m_header->SetOrder(twice, 3) || m_header->SetOrder(beyond, 3) || m_header->SetOrder(two, 2) ||
                 m_header->SetOrder(nullptr, 3));
    EXPECT_EQ("0=100 1=80 2=60", Columns());
    const std::string large(65536, 'w');
    EXPECT_TRUE(m_header->SetColumn(0, {large.c_str(), 100}));
    EXPECT_TRUE(m_header->FitColumn(0));
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
    const CString before = other.GetRecord();
    for (int i = 0; i < record.GetLength(); ++i) { // cut, and with each character another
        CString damaged = record;
        EXPECT_FALSE(other.SetRecord(record.Left(i)));
        damaged.SetAt(i, record[i] == '1' ? '2' : '1');
        EXPECT_FALSE(other.SetRecord(damaged)) << damaged;
    }
    EXPECT_FALSE(other.SetRecord(nullptr) || other.SetRecord(record + " ") ||
                 other.SetRecord("ZoHeader1 3 0 0 99999999999 0 1 1 1 2 99999999999"));
    EXPECT_EQ(before, other.GetRecord());
    EXPECT_TRUE(other.SetRecord(record));
    EXPECT_EQ(record, other.GetRecord());
    EXPECT_EQ(2, other.GetColumnAt(0));
    EXPECT_EQ(0, other.GetSortColumn());
    EXPECT_EQ(60, other.GetColumn(2)->m_nWidth);
    other.RemoveColumn(1);
    EXPECT_FALSE(other.SetRecord(record)) << "of other columns";
}

TEST_F(Header, TellsScreenReaders)
{
    Make();
    m_header->InsertColumn(3, {static_cast<UINT>(ZO_IDS_HEADER_PUSH), 200}); // has a text of the library
    const Reader reader(*m_header);
    EXPECT_EQ("Column headings", reader.Name());
    EXPECT_EQ(ROLE_SYSTEM_LIST, reader.Role());
    EXPECT_EQ(4, reader.Count());
    EXPECT_EQ("Name", reader.Name(1));
    EXPECT_EQ(ROLE_SYSTEM_COLUMNHEADER, reader.Role(1));
    EXPECT_EQ("Click", reader.Action(1));
    EXPECT_EQ("", reader.Action(3)) << "a title";
    EXPECT_EQ("Click", reader.Name(4));
    CRect second(100, 0, 180, 20);
    m_header->ClientToScreen(&second);
    EXPECT_EQ(second, reader.Area(2));
    EXPECT_EQ(2, reader.At(second.TopLeft())) << "the divider's column is not that of the place";
    m_header->SetFocus();
    const Events events(*m_header);
    m_header->SetSort(1, Sort::kAscending);
    EXPECT_EQ("sorted ascending", reader.Description(2));
    m_header->SetSort(1, Sort::kDescending);
    EXPECT_EQ("sorted descending", reader.Description(2));
    m_header->SetSort(1, Sort::kDescending);
    m_header->SetColumn(0, {"New", 90});
    m_header->SetColumn(0, {"New", 100});
    m_header->SetPosition(0, 1);
    m_header->SetPosition(0, 1);
    EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_DESCRIPTIONCHANGE, 2},
                                                   {EVENT_OBJECT_DESCRIPTIONCHANGE, 2},
                                                   {EVENT_OBJECT_NAMECHANGE, 1}}),
              Events::Heard());
    EXPECT_EQ("New", reader.Name(1)) << "its number stays";
    const LONG focused = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED;
    EXPECT_EQ(focused, reader.State(1));
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE, reader.State(2));
    m_header->SetScrollPosition(100);
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN, reader.State(2) & ~0x200000L);
    m_header->SetWidth(2, 0);
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_INVISIBLE, reader.State(3));
    ChangeLanguage(kGerman);
    m_header->SendMessage(CZoLanguageSupport::GetUpdateMessage());
    EXPECT_EQ("Klicken", reader.Name(4));
    EXPECT_EQ("New", reader.Name(1));
}

TEST_F(Header, SurvivesSizesAndFaults)
{
    ASSERT_TRUE(m_header->Create(WS_VISIBLE, CRect(), &m_parent, 5));
    m_header->InsertColumn(0, {"A long name", 100});
    std::mt19937 random(5);
    for (int i = 0; i < 1000; ++i) {
        m_header->MoveWindow(0, 0, static_cast<int>(random() % 300), static_cast<int>(random() % 40));
        m_header->SetWidth(0, static_cast<int>(random() % 120));
        m_header->UpdateWindow();
    }
    m_header->MoveWindow(0, 0, 300, 20);
    m_header->SetWidth(0, 40);
    const auto whole = ScreenOf(*m_header);
    const ProcessCounts before = ProcessCounts::Take();
    for (int i = 0; i < 2000; ++i) {
        m_header->Invalidate(FALSE);
        m_header->UpdateWindow();
    }
    EXPECT_EQ(before, ProcessCounts::Take());
    const auto draw = [&](const FaultRun& run) {
        m_header->Invalidate(FALSE);
        m_header->UpdateWindow();
        run.Stop();
        m_header->Invalidate(FALSE);
        EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*m_header)));
    };
    RunFaultLoop<DrawingFaults>(draw);
    RunFaultLoop<AllocationFaults>(draw);
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        const int count = m_header->GetColumnCount();
        const int made = ResultOr(-2, [&] { return m_header->InsertColumn(0, {"Another", 20}); });
        run.Stop();
        EXPECT_EQ(made == 0, m_header->GetColumnCount() == count + 1);
        EXPECT_EQ(run.Fired(), made < 0);
        while (m_header->GetColumnCount() > 1)
            m_header->RemoveColumn(0);
    });
}
