// What holds for every control: drawing, faults, sizes, templates, screen readers, the end in a notification.
#include "control_kit.h"

#include "support/product_test.h"

#include <common/without_throwing.h>
#include <zogbl/bitmap_window.h>
#include <zogbl/calendar_button.h>
#include <zogbl/color_button.h>
#include <zogbl/column_list.h>
#include <zogbl/date_time.h>
#include <zogbl/language_support.h>
#include <zogbl/modem_lights.h>
#include <zogbl/progress_bar.h>
#include <zogbl/screen_sample.h>
#include <zogbl/status_wnd.h>
#include <zogbl/text_panel.h>

namespace {

constexpr SYSTEMTIME kDay = {2024, 3, 0, 14, 12, 0, 0, 0};

class NumberList : public CZoColumnList {
    CString GetCellText(const void* row, int column) const override
    {
        CString text;
        text.Format("%s %d", static_cast<LPCSTR>(row), column);
        return text;
    }
};

template <class CONTROL> std::unique_ptr<CZoControl> New() { return std::make_unique<CONTROL>(); }
/// Calls a control by its own class.
template <class CONTROL, class ACT> auto With(ACT act)
{
    return [act](CZoControl& control) -> BOOL { return act(static_cast<CONTROL&>(control)); };
}
/// Shows a picture of 40 by 40 pixels and of two colours.
BOOL SetPicture(CZoBitmapWnd& window)
{
    WORD rows[40][3];
    std::fill_n(rows[0], 40 * 3, WORD{0x3C3C});
    CBitmap picture;
    return picture.CreateBitmap(40, 40, 1, 1, rows) && window.SetBitmap(picture) == 0;
}

struct Kind {
    const char* name;
    std::unique_ptr<CZoControl> (*make)();
    DWORD style;
    CSize size;
    std::function<BOOL(CZoControl&)> fill; ///< FALSE: something is missing
    UINT notification;                     ///< 0: it has none
    std::function<BOOL(CZoControl&)> act;  ///< of a user; sends it
    const char* read;                      ///< role, number of parts, value; "*": any
    bool hasPopup = false;                 ///< which F4 opens
};

const Kind kKinds[] = {
    {"Calendar", &New<CZoCalendar>, CZoCalendar::kWeekNumbers, CSize(220, 170),
     With<CZoCalendar>([](auto& calendar) { return calendar.SetDate(kDay); }), ZON_CALENDAR_CHANGED,
     [](CZoControl& control) { return PressKey(control, VK_RIGHT), TRUE; }, "24|47|*"},
    {"CalendarButton", &New<CZoCalendarButton>, CZoCalendarButton::kShowDate, CSize(120, 24),
     With<CZoCalendarButton>([](auto& button) { return button.SetDate(kDay); }), ZON_CALENDAR_OPENING,
     [](CZoControl& control) { return PressKey(control, VK_F4), TRUE; }, "56|0|", true},
    {"DateTime", &New<CZoDateTimeWnd>, CZoDateTimeWnd::kSpin | CZoDateTimeWnd::kShowNone, CSize(160, 24),
     With<CZoDateTimeWnd>([](auto& field) { return field.SetFormat("dd.MM.yyyy") && field.SetTime(kDay); }),
     ZON_DATE_TIME_CHANGED, [](CZoControl& control) { return PressKey(control, VK_UP), TRUE; }, "52|6|*"},
    {"Header", &New<CZoHeaderWnd>, CZoHeaderWnd::kMovable, CSize(240, 20), With<CZoHeaderWnd>([](auto& header) {
         return header.InsertColumn(0, {"Name", 100}) == 0 && header.InsertColumn(1, {"Size", 80}) == 1;
     }),
     ZON_HEADER_PUSHED, [](CZoControl& control) { return PressKey(control, VK_SPACE), TRUE; }, "33|2|"},
    {"ColumnList", &New<NumberList>, 0, CSize(240, 100), With<NumberList>([](auto& list) {
         return list.GetHeader().InsertColumn(0, {"Name", 100}) == 0 && list.AddRow("one") == 0 &&
                list.AddRow("two") == 1 && list.SetCurSel(0);
     }),
     0, [](CZoControl& control) { return PressKey(control, VK_DOWN), TRUE; }, "33|2|"},
    {"ColorButton", &New<CZoColorButton>, CZoColorButton::kMore, CSize(140, 24),
     With<CZoColorButton>([](auto& button) { return button.SetColor(RGB(255, 255, 0)); }), ZON_COLOR_CHANGED,
     With<CZoColorButton>([](auto& button) {
         button.Open();
         PressKey(button, VK_RIGHT);
         return PressKey(button, VK_SPACE), TRUE;
     }),
     "58|0|Yellow (255, 255, 0)", true},
    {"ColorChooser", &New<CZoColorChooser>, CZoColorChooser::kAutomatic | CZoColorChooser::kMore, CSize(180, 160),
     With<CZoColorChooser>([](auto& chooser) { return chooser.SetColor(RGB(255, 255, 0)); }), ZON_COLOR_CHANGED,
     [](CZoControl& control) { return control.DoPartAction(2); }, "24|34|Yellow (255, 255, 0)"},
    {"ScreenSample", &New<CZoScreenSample>, 0, CSize(200, 100), With<CZoScreenSample>([](auto& sample) {
         return sample.AddArea("Received", "one", RGB(255, 255, 0), RGB(0, 0, 128)) == 0 &&
                sample.AddArea("Sent", "two", RGB(0, 0, 0), RGB(255, 255, 255)) == 1;
     }),
     ZON_SAMPLE_CHOSEN, [](CZoControl& control) { return PressKey(control, VK_DOWN), TRUE; }, "33|2|"},
    {"ProgressBar", &New<CZoProgressBar>, CZoProgressBar::kSmooth, CSize(120, 20), With<CZoProgressBar>([](auto& bar) {
         bar.SetTextMode(CZoProgressBar::TextMode::kPercent);
         return bar.SetPosition(40), TRUE;
     }),
     0, nullptr, "48|0|40%"},
    {"TextPanel", &New<CZoTextPanel>, 0, CSize(240, 22), With<CZoTextPanel>([](auto& panel) {
         ZoPane panes[2];
         panes[1].isButton = TRUE;
         return panel.SetPanes(panes, 2) && panel.SetPaneText(1, "Ready") && panel.SetPaneText(2, "English");
     }),
     ZON_PANE_PRESSED, [](CZoControl& control) { return control.DoPartAction(2); }, "23|2|"},
    {"BitmapWindow", &New<CZoBitmapWnd>, CZoBitmapWnd::kScroll, CSize(30, 30),
     With<CZoBitmapWnd>([](auto& window) { return SetPicture(window); }), ZON_BITMAP_ZOOMED,
     [](CZoControl& control) { return PressKey(control, VK_ADD), TRUE; }, "40|0|*"},
    {"ModemLights", &New<CZoModemLights>, 0, CSize(260, 40),
     With<CZoModemLights>([](auto& lights) { return lights.SetLight(CZoModemLights::kOH, TRUE); }), 0, nullptr,
     "20|8|"},
    {"StatusWnd", &New<CZoStatusWnd>, 0, CSize(200, 40), [](CZoControl&) { return TRUE; }, 0, nullptr, "41|0|"},
};

class EachControl : public ProductTest, public testing::WithParamInterface<Kind> {
protected:
    EachControl() { Make(); }
    void Make(DWORD styleEx = 0)
    {
        m_parent = std::make_unique<ControlParent>(styleEx);
        m_control = GetParam().make();
        EXPECT_TRUE(Create(*m_control) && GetParam().fill(*m_control));
        m_control->SetFocus();
    }
    BOOL Create(CZoControl& control)
    {
        return control.Create(WS_VISIBLE | WS_TABSTOP | GetParam().style, CRect(CPoint(5, 5), GetParam().size),
                              m_parent.get(), 5);
    }

    std::unique_ptr<ControlParent> m_parent;
    std::unique_ptr<CZoControl> m_control;
};

INSTANTIATE_TEST_SUITE_P(All, EachControl, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

/// The popup that is shown by this thread; null: none.
HWND OpenPopup()
{
    HWND popup = nullptr;
    do {
        popup = ::FindWindowExA(nullptr, popup, ZO_CONTROL_CLASS, nullptr);
    } while (popup != nullptr && ::GetWindowThreadProcessId(popup, nullptr) != ::GetCurrentThreadId());
    return popup;
}

/// What a screen reader knows of a control, as in a Kind.
std::string ReadAll(HWND window)
{
    const Reader reader(window);
    return std::to_string(reader.Role()) + "|" + std::to_string(reader.Count()) + "|" + reader.Value();
}

} // namespace

TEST_P(EachControl, DrawsAlikeAfterEverySize)
{
    const auto whole = ScreenOf(*m_control);
    if (m_control->GetWindow(GW_CHILD) == nullptr) {
        EXPECT_TRUE(AreEqual(*whole, *PictureOf(*m_control)));
    }
    ResizeAtRandom(*m_control, CSize(300, 200));
    m_control->MoveWindow(0, 0, 0, 0);
    m_control->UpdateWindow();
    m_control->MoveWindow(CRect(CPoint(5, 5), GetParam().size));
    EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*m_control)));
    const ProcessCounts before = ProcessCounts::Take();
    for (int i = 0; i < (IsThorough() ? 10000 : 1000); ++i) {
        m_control->Invalidate(FALSE);
        m_control->UpdateWindow();
        ReportProgress();
    }
    EXPECT_EQ(before, ProcessCounts::Take());
}

TEST_P(EachControl, SurvivesFaults)
{
    m_control->SendMessage(WM_SETTINGCHANGE);
    m_parent->SetFocus();
    const auto whole = ScreenOf(*m_control);
    m_control.reset();
    const auto body = [&](const FaultRun& run) {
        std::unique_ptr<CZoControl> control;
        const BOOL isMade = WithoutThrowing([&] {
            control = GetParam().make();
            return Create(*control);
        });
        const BOOL isFull = isMade && WithoutThrowing([&] { return GetParam().fill(*control); });
        if (isMade)
            control->UpdateWindow();
        run.Stop();
        EXPECT_TRUE(isFull || run.Fired());
        if (!isFull)
            return;
        control->SendMessage(WM_SETTINGCHANGE); // lays it out again
        control->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*control)));
    };
    RunFaultLoop<DrawingFaults>(body);
    RunFaultLoop<AllocationFaults>(body, {.stride = 2});
}

TEST_P(EachControl, LooksTheSameOverAWindowOfATemplate)
{
    const auto whole = ScreenOf(*m_control);
    const DWORD styleEx = m_control->GetExStyle();
    m_control.reset();
    for (const LPCSTR windowClass : {ZO_CONTROL_CLASS, "STATIC"}) {
        CWnd window;
        ASSERT_TRUE(window.CreateEx(styleEx, windowClass, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | GetParam().style,
                                    CRect(CPoint(5, 5), GetParam().size), m_parent.get(), 5));
        window.Detach();
        const auto control = GetParam().make();
        ASSERT_TRUE(control->SubclassDlgItem(5, m_parent.get()) && GetParam().fill(*control));
        control->SetFocus();
        EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*control))) << windowClass;
    }
}

TEST_P(EachControl, FollowsSchemeFontAndLanguage)
{
    const Scheme scheme{{COLOR_WINDOW, RGB(20, 0, 40)},   {COLOR_WINDOWTEXT, RGB(255, 250, 200)},
                        {COLOR_3DFACE, RGB(60, 30, 30)},  {COLOR_BTNTEXT, RGB(200, 255, 200)},
                        {COLOR_HIGHLIGHT, RGB(0, 90, 0)}, {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 0)}};
    PlainFont font;
    m_control->SetFont(&font);
    m_control->SendMessage(WM_SYSCOLORCHANGE);
    ChangeLanguage(kGerman);
    m_control->SendMessage(CZoLanguageSupport::GetUpdateMessage());
    m_control->SendMessage(WM_SETTINGCHANGE);
    const auto followed = ScreenOf(*m_control);
    Make();
    m_control->SetFont(&font);
    EXPECT_TRUE(AreEqual(*ScreenOf(*m_control), *followed));
}

TEST_P(EachControl, PaintsAllOfItFromRightToLeft)
{
    constexpr COLORREF kStale = RGB(250, 1, 254);
    Make(WS_EX_LAYOUTRTL);
    m_control->UpdateWindow();
    CRect area;
    m_control->GetClientRect(&area);
    {
        CClientDC dc(m_control.get());
        dc.SetLayout(0);
        dc.FillSolidRect(&area, kStale);
    }
    m_control->Invalidate(FALSE);
    EXPECT_EQ(0, ScreenOf(*m_control)->Count(kStale, area));
}

TEST_P(EachControl, MayEndInItsNotification)
{
    if (GetParam().notification == 0)
        return;
    m_parent->m_describe = [&](NMHDR& header, LRESULT&) {
        if (header.code == GetParam().notification)
            m_control.reset();
        return "";
    };
    GetParam().act(*m_control);
    EXPECT_EQ(nullptr, m_control);
    EXPECT_EQ(nullptr, ::GetCapture());
}

TEST_P(EachControl, ClosesItsPopupOnceInEachWayInEachCorner)
{
    if (!GetParam().hasPopup)
        return;
    ControlParent other;
    const struct {
        const char* name;
        std::function<void(CWnd& popup)> act;
        bool keepsFocus = true;
    } kWays[] = {
        {"F4", [&](CWnd&) { PressKey(*m_control, VK_F4); }},
        {"Esc", [&](CWnd&) { PressKey(*m_control, VK_ESCAPE); }},
        {"Alt+Up", [&](CWnd&) { m_control->SendMessage(WM_SYSKEYDOWN, VK_UP, 1 << 29); }},
        {"click", [&](CWnd&) { Click(*m_control, CPoint(5, 5)); }},
        {"double click", [&](CWnd&) { SendMouse(*m_control, WM_LBUTTONDBLCLK, CPoint(5, 5)); }},
        {"click on the parent", [&](CWnd&) { Click(*m_parent, CPoint(300, 280)); }},
        {"click on another window", [&](CWnd&) { SendMouse(other, WM_RBUTTONDOWN, CPoint(300, 280)); }},
        {"another program", [](CWnd& popup) { popup.SendMessage(WM_ACTIVATEAPP, FALSE); }},
        {"ended", [](CWnd& popup) { popup.SendMessage(WM_CLOSE); }},
        {"moved", [&](CWnd&) { m_parent->MoveWindow(90, 90, 400, 300); }},
        {"focus", [&](CWnd&) { other.SetFocus(); }, false},
        {"disabled", [&](CWnd&) { m_control->EnableWindow(FALSE); }, false},
        {"hidden", [&](CWnd&) { m_parent->ShowWindow(SW_HIDE); }, false},
        {"destroyed", [&](CWnd&) { m_control->DestroyWindow(); }, false},
        {"parent destroyed", [&](CWnd&) { m_parent->DestroyWindow(); }, false},
    };
    CRect work, place, owner, common;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    const CPoint corners[] = {{100, 100},
                              work.TopLeft(),
                              {work.right - 150, work.top},
                              {work.left, work.bottom - 60},
                              work.BottomRight() - CSize(60, 40)};
    for (int i = 0; i < 2 * static_cast<int>(std::size(corners)); ++i) {
        const DWORD direction = i % 2 == 0 ? 0 : WS_EX_LAYOUTRTL;
        for (const auto& way : kWays) {
            SCOPED_TRACE(way.name);
            Make(direction);
            m_parent->MoveWindow(corners[i / 2].x, corners[i / 2].y, 400, 300);
            PressKey(*m_control, VK_F4);
            ASSERT_NE(nullptr, OpenPopup());
            CWnd& popup = *CWnd::FromHandle(OpenPopup());
            popup.GetWindowRect(&place);
            m_control->GetWindowRect(&owner);
            EXPECT_TRUE(common.UnionRect(&work, &place) && common == work) << "on the screen";
            EXPECT_FALSE(common.IntersectRect(&place, &owner));
            EXPECT_TRUE(i > 1 || place.TopLeft() ==
                                     CPoint(direction == 0 ? owner.left : owner.right - place.Width(), owner.bottom));
            SendMouse(*popup.GetWindow(GW_CHILD), WM_RBUTTONDOWN, CPoint(0, 0));
            EXPECT_EQ(m_control->m_hWnd, ::GetFocus());
            const Events events(*m_control);
            way.act(popup);
            EXPECT_TRUE(WaitUntil([&] { return OpenPopup() == nullptr; }));
            PumpWaiting();
            const int changes = Events::Count(EVENT_OBJECT_STATECHANGE);
            EXPECT_EQ(m_control->m_hWnd == nullptr || ::IsWindowEnabled(*m_control) ? 1 : 2, changes);
            EXPECT_EQ(way.keepsFocus, ::GetFocus() == m_control->m_hWnd && m_control->m_hWnd != nullptr);
            EXPECT_EQ(nullptr, ::GetCapture());
        }
    }
}

/// A screen reader. Its argument is a window.
ZO_CHILD(ReadsControls)
{
    ::CoInitialize(nullptr);
    child.Report(ReadAll(reinterpret_cast<HWND>(static_cast<ULONG_PTR>(std::stoul(child.Argument(0))))));
    ::CoUninitialize();
}

TEST_P(EachControl, IsReadHereAndFromAnotherProcess)
{
    const std::string here = ReadAll(*m_control), expected = GetParam().read;
    const size_t known = expected.find('*');
    EXPECT_EQ(expected.substr(0, known), here.substr(0, known));
    EXPECT_LE(expected.size(), here.size()) << here;
    ChildProcess reader("ReadsControls", {std::to_string(HandleToULong(m_control->m_hWnd))});
    reader.Finish();
    EXPECT_EQ(std::vector<std::string>{here}, reader.Reports());
}
