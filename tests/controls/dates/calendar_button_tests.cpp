// The button of the calendar: what opens it, and all that closes it.
#include "dates_test.h"

#include <zogbl/calendar_button.h>

namespace {

class CalendarButton : public ProductTest {
protected:
    CalendarButton()
    {
        m_parent.m_describe = [this](NMHDR& header, LRESULT& answer) -> std::string {
            answer = m_isRefused;
            const auto& notify = reinterpret_cast<const ZoCalendarNotify&>(header);
            return header.code == ZON_CALENDAR_OPENING  ? "opening"
                   : header.code == ZON_CALENDAR_PICKED ? "picked " + Span(notify.first, notify.last)
                   : header.code == ZON_CALENDAR_CLOSED ? notify.isChanged ? "changed" : "closed"
                                                        : DescribeSelection(header);
        };
        Make();
    }
    void Make()
    {
        m_button = std::make_unique<CZoCalendarButton>();
        const DWORD style = WS_VISIBLE | WS_TABSTOP | CZoCalendarButton::kShowDate | CZoCalendar::kSpan;
        EXPECT_TRUE(m_button->Create(style, CRect(20, 10, 120, 34), &m_parent, 5));
        EXPECT_TRUE(m_button->SetDate(At("2024-03-20")));
        m_button->SetFocus();
    }
    CPoint Place(int part)
    {
        ZoPart day;
        m_button->GetCalendar().DescribePart(part, day);
        return day.area.CenterPoint();
    }
    void ClickDay(int part) { Click(m_button->GetCalendar(), Place(part)); }
    void Drag(int from, int to)
    {
        SendMouse(m_button->GetCalendar(), WM_LBUTTONDOWN, Place(from), MK_LBUTTON);
        SendMouse(m_button->GetCalendar(), WM_MOUSEMOVE, Place(to), MK_LBUTTON);
    }
    void SystemKey(UINT key) { m_button->SendMessage(WM_SYSKEYDOWN, key, 1 << 29); }

    ControlParent m_parent, m_other;
    std::unique_ptr<CZoCalendarButton> m_button;
    bool m_isRefused = false;
};

} // namespace

TEST_F(CalendarButton, ClosesOnceInEachWay)
{
    const struct {
        const char* name;
        std::function<void()> act;
        const char* told = "closed";
        bool keepsFocus = true;
    } kWays[] = {
        {"choice", [&] { ClickDay(30); }, "picked 2024-03-25"},
        {"Enter", [&] { PressKey(*m_button, VK_RIGHT), PressKey(*m_button, VK_RETURN); }, "picked 2024-03-21"},
        {"Space", [&] { PressKey(*m_button, VK_SPACE); }},
        {"Esc", [&] { PressKey(*m_button, VK_LEFT), PressKey(*m_button, VK_ESCAPE); }},
        {"Alt+Up", [&] { SystemKey(VK_UP); }},
        {"F4", [&] { PressKey(*m_button, VK_F4); }},
        {"button", [&] { Click(*m_button, CPoint(5, 5)); }},
        {"own window", [&] { Click(m_parent, CPoint(5, 100)); }},
        {"other window", [&] { Click(m_other, CPoint(5, 100)); }},
        {"other program", [&] { m_button->GetCalendar().GetParent()->SendMessage(WM_ACTIVATEAPP, FALSE); }},
        {"Alt+Tab", [&] { m_other.SetForegroundWindow(); }, "closed", false},
        {"disabled", [&] { m_button->EnableWindow(FALSE); }, "closed", false},
        {"hidden", [&] { m_parent.ShowWindow(SW_HIDE); }, "closed", false},
        {"moved", [&] { m_parent.MoveWindow(60, 60, 400, 300); }},
        {"destroyed", [&] { m_button->DestroyWindow(); }, "closed", false},
    };
    for (const auto& way : kWays) {
        SCOPED_TRACE(way.name);
        m_button->EnableWindow(TRUE);
        m_parent.SetWindowPos(nullptr, 50, 50, 400, 300, SWP_NOZORDER | SWP_SHOWWINDOW);
        m_parent.SetForegroundWindow();
        ASSERT_TRUE(m_button->SetDate(At("2024-03-20")));
        m_button->SetFocus();
        PressKey(*m_button, VK_F4);
        EXPECT_EQ("opening", m_parent.Told());
        EXPECT_TRUE(m_button->IsOpen());
        way.act();
        EXPECT_TRUE(WaitUntil([&] { return m_button->m_hWnd == nullptr || !m_button->IsOpen(); }));
        EXPECT_EQ(way.told, m_parent.Told());
        EXPECT_TRUE(m_button->GetCalendar().m_hWnd == nullptr && ::GetCapture() == nullptr);
        EXPECT_TRUE(!way.keepsFocus || ::GetFocus() == m_button->m_hWnd);
        EXPECT_TRUE(way.told[0] == 'p' || Written(m_button->GetDate()) == "2024-03-20");
    }
}

TEST_F(CalendarButton, OpensByKeysAndClicksUnlessRefused)
{
    const std::function<void()> kWays[] = {[&] { SystemKey(VK_DOWN); }, [&] { SystemKey(VK_UP); },
                                           [&] { PressKey(*m_button, VK_SPACE); }, [&] { m_button->Open(); },
                                           [&] { Click(*m_button, CPoint(5, 5)); }};
    for (const auto& open : kWays) {
        m_isRefused = true;
        open();
        EXPECT_FALSE(m_button->IsOpen());
        m_isRefused = false;
        EXPECT_EQ(0, m_button->SendMessage(WM_GETDLGCODE)) << "Enter is the dialog's";
        open();
        EXPECT_TRUE(m_button->IsOpen());
        MSG tab = {m_button->m_hWnd, WM_KEYDOWN, VK_TAB, 0, 0, {}};
        EXPECT_EQ(DLGC_WANTALLKEYS | DLGC_WANTCHARS, m_button->SendMessage(WM_GETDLGCODE));
        EXPECT_FALSE(m_button->SendMessage(WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&tab)) &
                     (DLGC_WANTALLKEYS | DLGC_WANTTAB));
        m_button->Close();
        EXPECT_EQ("opening opening closed", m_parent.Told());
    }
    m_button->Open();
    m_other.SetFocus();
    EXPECT_FALSE(m_button->IsOpen()) << "at once";
    m_button->Open();
    m_button->ShowWindow(SW_HIDE);
    EXPECT_EQ("opening closed opening closed", m_parent.Told()) << "at once";
    m_button->ShowWindow(SW_SHOW);
    // Of a span, the drag is the choice.
    m_button->GetCalendar().ShowMonth(2030, 1);
    m_button->Open();
    m_button->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
    Drag(3, 9);
    PressKey(*m_button, VK_ESCAPE);
    EXPECT_TRUE(m_button->IsOpen()) << "the drag alone ends";
    Drag(3, 9);
    SendMouse(m_button->GetCalendar(), WM_LBUTTONUP, Place(9));
    EXPECT_EQ("opening picked 2024-04-02..2024-04-08", m_parent.Told());
    m_button->Open();
    const SYSTEMTIME least = At("2025-01-01");
    m_button->GetCalendar().SetRange(&least, nullptr);
    m_button->Close();
    EXPECT_EQ("opening closed 2025-01-01", m_parent.Told() + " " + Written(m_button->GetDate())) << "not chosen";
    m_button->ModifyStyle(CZoCalendar::kSpan, 0);
    EXPECT_FALSE(m_button->SetSpan(least, At("2025-01-02")));

    m_parent.m_describe = [this](NMHDR& header, LRESULT&) {
        if (header.code == ZON_CALENDAR_PICKED)
            m_button.reset();
        return "";
    };
    m_button->Open();
    ClickDay(20);
    EXPECT_EQ(nullptr, m_button);
}

TEST_F(CalendarButton, IsRead)
{
    m_button->SetWindowText("Until");
    const Reader reader(*m_button);
    const auto state = [&] { return reader.State() & (STATE_SYSTEM_EXPANDED | STATE_SYSTEM_COLLAPSED); };
    const Events events(*m_button);
    using Heard = std::vector<std::pair<DWORD, LONG>>;
    m_button->Open();
    EXPECT_EQ((Heard{{EVENT_OBJECT_STATECHANGE, 0}}), Events::Heard());
    EXPECT_EQ(STATE_SYSTEM_EXPANDED, state());
    EXPECT_EQ("Until", Reader(m_button->GetCalendar()).Name());
    PressKey(*m_button, VK_RIGHT), PressKey(*m_button, VK_RETURN);
    EXPECT_EQ((Heard{{EVENT_OBJECT_STATECHANGE, 0}, {EVENT_OBJECT_NAMECHANGE, 0}, {EVENT_OBJECT_FOCUS, 0}}),
              Events::Heard());
    EXPECT_EQ(STATE_SYSTEM_COLLAPSED, state());
    const auto before = ScreenOf(*m_button);
    m_button->SetDate(At("2024-12-28"));
    EXPECT_EQ((Heard{{EVENT_OBJECT_NAMECHANGE, 0}}), Events::Heard());
    EXPECT_EQ("Until " + LocaleText(At("2024-12-28"), DATE_LONGDATE), reader.Name());
    EXPECT_FALSE(AreEqual(*before, *ScreenOf(*m_button)));
}

TEST_F(CalendarButton, IsAPartOfAnotherControl)
{
    CWnd field;
    ASSERT_TRUE(field.Create("STATIC", "", WS_CHILD | WS_VISIBLE, CRect(200, 100, 390, 140), &m_parent, 7));
    m_button->SetKeyboardOwner(field);
    EXPECT_FALSE(m_button->Open()) << "the field has no focus";
    field.SetFocus();
    const Events events(*m_button);
    Click(*m_button, CPoint(5, 5));
    CRect place, owner;
    m_button->GetCalendar().GetWindowRect(&place);
    field.GetWindowRect(&owner);
    EXPECT_GE(place.top, owner.bottom);
    m_button->GetCalendar().GetParent()->SendMessage(WM_TIMER, 1); // it looks whether the focus is where it was
    EXPECT_TRUE(m_button->IsOpen() && ::GetFocus() == field.m_hWnd);
    EXPECT_FALSE(m_button->HandleKey(WM_KEYDOWN, 'A'));
    EXPECT_TRUE(m_button->HandleKey(WM_KEYDOWN, VK_DOWN) && m_button->HandleKey(WM_KEYDOWN, VK_RETURN));
    EXPECT_EQ("opening picked 2024-03-27", m_parent.Told());
    EXPECT_EQ(0, Events::Count(EVENT_OBJECT_FOCUS)) << "that is told by the field";
    EXPECT_FALSE(m_button->HandleKey(WM_KEYDOWN, VK_DOWN) || m_button->HandleKey(WM_SYSKEYDOWN, 'A'));
    EXPECT_TRUE(m_button->HandleKey(WM_SYSKEYDOWN, VK_DOWN));
    m_parent.SetFocus();
    EXPECT_TRUE(WaitUntil([&] { return !m_button->IsOpen(); }));
    EXPECT_EQ("opening closed", m_parent.Told());
}

TEST_F(CalendarButton, OpensOrNotWithoutMemory)
{
    RunFaultLoop<AllocationFaults>(
        [&](const FaultRun& run) {
            const BOOL opened = m_button->Open();
            EXPECT_EQ(opened, m_button->IsOpen());
            m_button->Close();
            run.Stop();
            EXPECT_EQ(nullptr, m_button->GetCalendar().m_hWnd);
            EXPECT_EQ(opened ? "opening closed" : "opening", m_parent.Told());
        },
        {2000, 3});
}
