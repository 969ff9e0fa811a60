// The button of the calendar: what opens it, and all that closes it.
#include "calendar_test.h"

#include "support/product_test.h"
#include <zogbl/calendar_button.h>

namespace {

class CalendarButton : public ProductTest {
protected:
    CalendarButton()
    {
        m_button = std::make_unique<CZoCalendarButton>();
        const DWORD style = WS_VISIBLE | WS_TABSTOP | CZoCalendarButton::kShowDate | CZoCalendar::kSpan;
        EXPECT_TRUE(m_button->Create(style, CRect(20, 10, 120, 34), &m_parent, 5));
        EXPECT_TRUE(m_button->SetDate(Date(2024, 3, 20)));
        m_button->SetFocus();
        m_parent.m_describe = [this](NMHDR& header, LRESULT& answer) -> std::string {
            answer = m_isRefused;
            if (header.code == ZON_CALENDAR_OPENING)
                return "opening";
            return header.code == ZON_CALENDAR_PICKED   ? "picked " + Span(m_button->GetFirst(), m_button->GetLast())
                   : header.code == ZON_CALENDAR_CLOSED ? "closed"
                                                        : DescribeSelection(header);
        };
    }
    void ClickDay(int part)
    {
        ZoPart day;
        m_button->GetCalendar().DescribePart(part, day);
        Click(m_button->GetCalendar(), day.area.CenterPoint());
    }
    void SystemKey(UINT key) { m_button->SendMessage(WM_SYSKEYDOWN, key, 1 << 29); }

    ControlParent m_parent, m_other;
    std::unique_ptr<CZoCalendarButton> m_button;
    bool m_isRefused = false;
};

} // namespace

TEST_F(CalendarButton, ClosesOnceInEachWayInEachCorner)
{
    const struct {
        const char* name;
        std::function<void()> act;
        const char* told;
        bool keepsFocus = true;
    } kWays[] = {
        {"choice", [&] { ClickDay(30); }, "picked 2024-03-25"},
        {"Enter", [&] { PressKey(*m_button, VK_RIGHT), PressKey(*m_button, VK_RETURN); }, "picked 2024-03-21"},
        {"Space", [&] { PressKey(*m_button, VK_SPACE); }, "closed"},
        {"Esc", [&] { PressKey(*m_button, VK_LEFT), PressKey(*m_button, VK_ESCAPE); }, "closed"},
        {"Alt+Up", [&] { SystemKey(VK_UP); }, "closed"},
        {"F4", [&] { PressKey(*m_button, VK_F4); }, "closed"},
        {"button",
         [&] {
             Click(*m_button, {5, 5});
         },
         "closed"},
        {"own window",
         [&] {
             Click(m_parent, {5, 100});
         },
         "closed"},
        {"other window",
         [&] {
             Click(m_other, {5, 100});
         },
         "closed"},
        {"other program", [&] { m_button->GetCalendar().GetParent()->SendMessage(WM_ACTIVATEAPP, FALSE); }, "closed"},
        {"Alt+Tab", [&] { m_other.SetForegroundWindow(); }, "closed", false},
        {"disabled", [&] { m_button->EnableWindow(FALSE); }, "closed", false},
        {"hidden", [&] { m_parent.ShowWindow(SW_HIDE); }, "closed", false},
        {"moved", [&] { m_parent.MoveWindow(60, 60, 400, 300); }, "closed"},
        {"destroyed", [&] { m_button->DestroyWindow(); }, "closed", false},
    };
    CRect work;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    for (const CPoint corner : {work.TopLeft(), CPoint(work.right - 150, work.top), CPoint(work.left, work.bottom - 60),
                                work.BottomRight() - CSize(60, 40)}) {
        for (const auto& way : kWays) {
            SCOPED_TRACE(way.name);
            m_button->EnableWindow(TRUE);
            m_parent.SetWindowPos(nullptr, corner.x, corner.y, 400, 300, SWP_NOZORDER | SWP_SHOWWINDOW);
            m_parent.SetForegroundWindow();
            ASSERT_TRUE(m_button->SetDate(Date(2024, 3, 20)));
            m_button->SetFocus();
            PressKey(*m_button, VK_F4);
            EXPECT_EQ("opening", m_parent.Told());
            ASSERT_TRUE(m_button->IsOpen());
            CRect place, common;
            m_button->GetCalendar().GetWindowRect(&place);
            EXPECT_TRUE(common.UnionRect(&work, &place) && common == work);
            way.act();
            EXPECT_TRUE(WaitUntil([&] { return m_button->m_hWnd == nullptr || !m_button->IsOpen(); }));
            EXPECT_EQ(way.told, m_parent.Told());
            EXPECT_EQ(nullptr, m_button->GetCalendar().m_hWnd);
            EXPECT_EQ(nullptr, ::GetCapture());
            EXPECT_TRUE(!way.keepsFocus || ::GetFocus() == m_button->m_hWnd);
            EXPECT_TRUE(way.told[0] == 'p' || Text(m_button->GetDate()) == "2024-03-20");
        }
        ASSERT_TRUE(m_button->Create(WS_VISIBLE | WS_TABSTOP, CRect(20, 10, 120, 34), &m_parent, 5));
    }
}

TEST_F(CalendarButton, OpensByKeysAndClicksUnlessRefused)
{
    for (const std::function<void()>& open : {std::function<void()>([&] { SystemKey(VK_DOWN); }),
                                              {[&] { SystemKey(VK_UP); }},
                                              {[&] { PressKey(*m_button, VK_SPACE); }},
                                              {[&] { m_button->Open(); }},
                                              {[&] {
                                                  Click(*m_button, {5, 5});
                                              }}}) {
        m_isRefused = true;
        open();
        EXPECT_FALSE(m_button->IsOpen());
        m_isRefused = false;
        EXPECT_EQ(0, m_button->SendMessage(WM_GETDLGCODE)) << "Enter is the dialog's";
        open();
        EXPECT_TRUE(m_button->IsOpen());
        MSG tab = {m_button->m_hWnd, WM_KEYDOWN, VK_TAB, 0, 0, {}};
        EXPECT_EQ(DLGC_WANTALLKEYS | DLGC_WANTCHARS, m_button->SendMessage(WM_GETDLGCODE));
        EXPECT_FALSE(m_button->SendMessage(WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&tab)) & DLGC_WANTTAB);
        m_button->Close();
        EXPECT_EQ("opening opening closed", m_parent.Told());
    }
    m_button->Open();
    m_other.SetFocus();
    EXPECT_FALSE(m_button->IsOpen()) << "at once";
    m_parent.Told();
    // Of a span, the drag is the choice.
    m_button->Open();
    m_button->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
    ZoPart first, last;
    m_button->GetCalendar().DescribePart(3, first);
    m_button->GetCalendar().DescribePart(9, last);
    SendMouse(m_button->GetCalendar(), WM_LBUTTONDOWN, first.area.CenterPoint(), MK_LBUTTON);
    SendMouse(m_button->GetCalendar(), WM_MOUSEMOVE, last.area.CenterPoint(), MK_LBUTTON);
    PressKey(*m_button, VK_ESCAPE);
    EXPECT_TRUE(m_button->IsOpen()) << "the drag alone ends";
    SendMouse(m_button->GetCalendar(), WM_LBUTTONDOWN, first.area.CenterPoint(), MK_LBUTTON);
    SendMouse(m_button->GetCalendar(), WM_MOUSEMOVE, last.area.CenterPoint(), MK_LBUTTON);
    SendMouse(m_button->GetCalendar(), WM_LBUTTONUP, last.area.CenterPoint());
    EXPECT_EQ("opening picked 2024-04-02..2024-04-08", m_parent.Told());

    m_parent.m_describe = [this](NMHDR& header, LRESULT&) {
        if (header.code == ZON_CALENDAR_PICKED)
            m_button.reset();
        return "";
    };
    m_button->Open();
    ClickDay(20);
    EXPECT_EQ(nullptr, m_button);
}

TEST_F(CalendarButton, IsAPartOfAnotherControl)
{
    CWnd field;
    ASSERT_TRUE(field.Create("STATIC", "", WS_CHILD | WS_VISIBLE, CRect(200, 100, 390, 140), &m_parent, 7));
    m_button->SetKeyboardOwner(field);
    EXPECT_FALSE(m_button->Open()) << "the field has no focus";
    field.SetFocus();
    Click(*m_button, {5, 5});
    CRect place, owner;
    m_button->GetCalendar().GetWindowRect(&place);
    field.GetWindowRect(&owner);
    EXPECT_GE(place.top, owner.bottom);
    m_button->GetCalendar().GetParent()->SendMessage(WM_TIMER, 1); // it looks whether the focus is where it was
    EXPECT_TRUE(m_button->IsOpen() && ::GetFocus() == field.m_hWnd);
    EXPECT_FALSE(m_button->HandleKey(WM_KEYDOWN, 'A'));
    EXPECT_TRUE(m_button->HandleKey(WM_KEYDOWN, VK_DOWN) && m_button->HandleKey(WM_KEYDOWN, VK_RETURN));
    EXPECT_EQ("opening picked 2024-03-27", m_parent.Told());
    EXPECT_FALSE(m_button->HandleKey(WM_KEYDOWN, VK_DOWN) || m_button->HandleKey(WM_SYSKEYDOWN, 'A'));
    EXPECT_TRUE(m_button->HandleKey(WM_SYSKEYDOWN, VK_DOWN));
    m_parent.SetFocus();
    EXPECT_TRUE(WaitUntil([&] { return !m_button->IsOpen(); }));
    EXPECT_EQ("opening closed", m_parent.Told());
}

TEST_F(CalendarButton, SurvivesFaults)
{
    const auto whole = ScreenOf(*m_button);
    const auto body = [&](const FaultRun& run) {
        const BOOL opened = m_button->Open();
        EXPECT_EQ(opened, m_button->IsOpen());
        m_button->Close();
        m_button->Invalidate();
        ScreenOf(*m_button);
        run.Stop();
        m_button->Invalidate();
        EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*m_button)));
        EXPECT_EQ(nullptr, m_button->GetCalendar().m_hWnd);
        EXPECT_EQ(opened ? "opening closed" : "opening", m_parent.Told());
    };
    RunFaultLoop<DrawingFaults>(body);
    RunFaultLoop<AllocationFaults>(body, {2000, 3});
}
