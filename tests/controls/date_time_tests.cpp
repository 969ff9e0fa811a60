// The field for dates and times: by keys and clicks, against the system's own, and as a screen reader hears it.
#include "control_kit.h"

#include <zogbl/date_time.h>
#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>

#include <commctrl.h>

#include <random>

namespace {

SYSTEMTIME At(int year, int month, int day, int hour = 0, int minute = 0)
{
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    return time;
}
std::string Written(const SYSTEMTIME& time)
{
    char text[20];
    snprintf(text, sizeof text, "%d-%02d-%02d", time.wYear, time.wMonth, time.wDay);
    return text;
}

/// < > ^ v the arrows; [ ] Home and End; ~ Esc; \b Backspace; ! Del; @ Ctrl+A, & Ctrl+C, % Ctrl+V; $ the focus goes; *
/// Alt+Down; # Enter. Others are typed.
void Press(CWnd& control, const char* keys)
{
    const struct {
        char sign;
        UINT key;
        int modifiers;
    } kKeys[] = {{'<', VK_LEFT, 0}, {'>', VK_RIGHT, 0},  {'^', VK_UP, 0},    {'v', VK_DOWN, 0},   {'[', VK_HOME, 0},
                 {']', VK_END, 0},  {'~', VK_ESCAPE, 0}, {'\b', VK_BACK, 0}, {'!', VK_DELETE, 0}, {'#', VK_RETURN, 0},
                 {'@', 'A', 2},     {'&', 'C', 2},       {'%', 'V', 2}};
    for (; *keys != '\0' && ::IsWindow(control.m_hWnd); ++keys) {
        const auto* key = std::find_if(std::begin(kKeys), std::end(kKeys), [=](auto& k) { return k.sign == *keys; });
        if (*keys == '$') {
            control.GetParent()->SetFocus();
        } else if (*keys == '*') {
            control.SendMessage(WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
        } else if (key != std::end(kKeys)) {
            PressKey(control, key->key, key->modifiers);
        } else {
            PressKey(control, static_cast<BYTE>(VkKeyScanA(*keys)));
            control.SendMessage(WM_CHAR, static_cast<BYTE>(*keys));
        }
    }
}

constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP;

class DateTime : public testing::Test {
protected:
    DateTime()
    {
        AfxSetResourceHandle(m_texts);
        m_parent.m_describe = [this](NMHDR& header, LRESULT&) -> std::string {
            if (header.hwndFrom != m_date.m_hWnd)
                return "stranger";
            if (header.code == ZON_DATE_TIME_DROPDOWN)
                return "open";
            if (header.code == ZON_DATE_TIME_CLOSEUP)
                return "closed";
            const auto& change = reinterpret_cast<const ZoDateTimeChange&>(header);
            return header.code != ZON_DATE_TIME_CHANGED ? ""
                   : change.isNone                      ? "none"
                                                        : Written(change.time) + (change.isClamped ? "!" : "");
        };
    }
    ~DateTime() override { AfxSetResourceHandle(m_before); }
    void Make(DWORD style, int width = 150, int height = 24)
    {
        m_date.DestroyWindow();
        m_parent.Told();
        ASSERT_TRUE(m_date.Create(style | kStyle, CRect(0, 0, width, height), &m_parent, 7));
        ASSERT_TRUE(m_date.SetFormat("dd.MM.yyyy"));
        ASSERT_TRUE(m_date.SetTime(At(2023, 4, 7, 12)));
        m_date.SetFocus();
        EXPECT_EQ("", m_parent.Told());
    }
    std::string Value()
    {
        SYSTEMTIME time = {};
        return m_date.GetTime(time) ? Written(time) : "none";
    }
    CPoint CenterOf(int part)
    {
        ZoPart description;
        EXPECT_TRUE(m_date.DescribePart(part, description)) << part;
        return description.area.CenterPoint();
    }

    const HINSTANCE m_before = AfxGetResourceHandle();
    const HINSTANCE m_texts = LoadLibraryA("ZOGBLENU.DLL"); // stays loaded
    ControlParent m_parent;
    CZoDateTimeWnd m_date;
};

} // namespace

TEST_F(DateTime, NotifiesEachActOnce)
{
    const struct {
        DWORD style;
        const char *keys, *shown, *told;
    } kRows[] = {
        {0, "31", "31.04.2023", ""},
        {0, "3103", "31.03.2023", "2023-03-31"},
        {0, "31$", "30.04.2023", "2023-04-30!"},
        {0, "31~$", "07.04.2023", ""},
        {0, "07042023$", "07.04.2023", ""}, // the same value
        {0, "29022024", "29.02.2024", "2023-04-29 2024-02-29"},
        {0, "8", "08.04.2023", "2023-04-08"},
        {0, "1$", "01.04.2023", "2023-04-01"},
        {0, "12\b\b3>", "12.03.2023", "2023-04-12 2023-03-12"},
        {0, "^^v", "08.04.2023", "2023-04-08 2023-04-09 2023-04-08"},
        {0, "+-", "07.04.2023", "2023-04-08 2023-04-07"},
        {0, "[]]", "30.04.2023", "2023-04-01 2023-04-30"},
        {0, "<]", "07.04.9999", "9999-04-07"},
        {0, ">>>>^", "07.05.2023", "2023-05-07"},
        {0, "! q", "07.04.2023", ""}, // it has no check box
        {0, "@31", "31.04.2023", ""},
        {0, ">@1>>", "01.04.2023", "2023-04-01"},
        {CZoDateTimeWnd::kShowNone, "!", "No date", "none"},
        {CZoDateTimeWnd::kShowNone, "!!", "No date", "none"},
        {CZoDateTimeWnd::kShowNone, "  ", "07.04.2023", "none 2023-04-07"},
        {CZoDateTimeWnd::kShowNone, "31 ", "31.04.2023", ""}, // moves on
        {CZoDateTimeWnd::kShowNone, "31  ", "No date", "none"},
        {CZoDateTimeWnd::kShowNone, "!1", "1.04.2023", "none"},
        {CZoDateTimeWnd::kShowNone, "!1~", "No date", "none"},
        {CZoDateTimeWnd::kShowNone, "!1$", "01.04.2023", "none 2023-04-01"},
        {CZoDateTimeWnd::kShowNone, "!7>", "07.04.2023", "none 2023-04-07"}, // the same, but it is given now
        {CZoDateTimeWnd::kShowNone, "!^^", "08.04.2023", "none 2023-04-07 2023-04-08"},
        {CZoDateTimeWnd::kSpin, "^", "08.04.2023", "2023-04-08"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.keys);
        Make(row.style);
        Press(m_date, row.keys);
        EXPECT_EQ(row.shown, std::string(m_date.GetShownText()));
        EXPECT_EQ(row.told, m_parent.Told());
    }
}

TEST_F(DateTime, ObeysTheMouse)
{
    Make(CZoDateTimeWnd::kSpin | CZoDateTimeWnd::kShowNone);
    enum { kDay = 1, kMonth, kYear, kCheck, kUp, kDown };
    ASSERT_EQ(kDown, m_date.GetPartCount());
    for (int part = 1; part <= kDown; ++part)
        EXPECT_EQ(part, m_date.FindPart(CenterOf(part)));
    m_parent.SetFocus();
    {
        const Events events(m_date);
        Click(m_date, CenterOf(kMonth));
        EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_FOCUS, 0}, {EVENT_OBJECT_FOCUS, kMonth}}),
                  Events::Heard())
            << "the first is the system's";
    }
    EXPECT_EQ(kMonth, m_date.GetFocusedPart());
    Click(m_date, CenterOf(kUp));
    EXPECT_EQ("2023-05-07", m_parent.Told());
    SendMouse(m_date, WM_LBUTTONDBLCLK, CenterOf(kDown), MK_LBUTTON); // held down
    EXPECT_EQ("2023-04-07", m_parent.Told());
    EXPECT_EQ(m_date.m_hWnd, ::GetCapture());
    std::string told;
    EXPECT_TRUE(WaitUntil([&] { return (told += m_parent.Told()).size() >= 20; }));
    EXPECT_EQ("2023-03-072023-02-07", told.substr(0, 20));
    SendMouse(m_date, WM_MOUSEMOVE, CPoint(1, 1), MK_LBUTTON); // no longer over it
    const std::string before = Value();
    m_date.SendMessage(WM_TIMER, 1);
    EXPECT_EQ(before, Value());
    PressKey(m_date, VK_ESCAPE);
    EXPECT_EQ(nullptr, ::GetCapture());
    EXPECT_FALSE(m_date.KillTimer(1));
    EXPECT_EQ(before, Value()) << "what was told stays";

    m_date.SetTime(At(2023, 4, 7));
    m_parent.Told();
    m_date.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 60));
    EXPECT_EQ("", m_parent.Told()) << "half a step";
    m_date.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 180));
    EXPECT_EQ("2023-06-07", m_parent.Told());
    Click(m_date, CenterOf(kCheck));
    Click(m_date, CenterOf(kCheck));
    EXPECT_EQ("none 2023-06-07", m_parent.Told());
    Press(m_date, "29"); // waits in February
    m_date.SetTime(At(2023, 2, 7));
    Click(m_date, CenterOf(kDay));
    Press(m_date, "30");
    EXPECT_EQ("30.02.2023", std::string(m_date.GetShownText()));
    Click(m_date, CenterOf(kYear));
    EXPECT_EQ("30.02.2023", std::string(m_date.GetShownText())) << "the last field is not left";
    m_parent.Told();
    Click(m_date, CenterOf(kDay));
    EXPECT_EQ("2023-02-28!", m_parent.Told());
}

TEST_F(DateTime, OpensTheCalendar)
{
    Make(CZoDateTimeWnd::kShowNone);
    const SYSTEMTIME least = At(2023, 4, 3), most = At(2023, 5, 20);
    ASSERT_TRUE(m_date.SetRange(&least, &most));
    CZoCalendarButton& button = m_date.GetButton();
    const struct {
        const char *name, *keys, *told, *value;
    } kRows[] = {
        {"chosen by Enter", "*>#", "open 2023-04-08 closed", "2023-04-08"},
        {"chosen by Space, which does not switch the check box", "*> ", "open 2023-04-08 closed", "2023-04-08"},
        {"the same again", "*#", "open closed", "2023-04-07"},
        {"not chosen", "*>>~", "open closed", "2023-04-07"},
        {"closed by its key", "*>>*", "open closed", "2023-04-07"},
        {"typed characters are for the calendar", "*5~", "open closed", "2023-04-07"},
        {"nothing before the range", "*<<<<<#", "open 2023-04-03 closed", "2023-04-03"},
        {"what waits is settled first", "31*~", "2023-04-30! open closed", "2023-04-30"},
        {"from none, another", "!*>#", "none open 2023-04-08 closed", "2023-04-08"},
        {"from none, the same", "!*#", "none open 2023-04-07 closed", "2023-04-07"},
        {"from none, nothing", "!*~", "none open closed", "none"},
        {"the focus goes", "*$", "open closed", "2023-04-07"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        m_date.SetTime(At(2023, 4, 7, 12, 34));
        m_date.SetFocus();
        Press(m_date, row.keys);
        EXPECT_TRUE(WaitUntil([&] { return !button.IsOpen(); }));
        EXPECT_EQ(row.told, m_parent.Told());
        EXPECT_EQ(row.value, Value());
        SYSTEMTIME time = {};
        m_date.GetTime(time);
        EXPECT_EQ(12, time.wHour);
        EXPECT_EQ(nullptr, ::GetCapture());
    }
    m_date.SetFocus();
    Click(button, CPoint(3, 3));
    EXPECT_TRUE(button.IsOpen());
    EXPECT_EQ(m_date.m_hWnd, ::GetFocus());
    m_date.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120));
    EXPECT_EQ("2023-04-07", Value()) << "the calendar's";
    m_date.EnableWindow(FALSE);
    EXPECT_TRUE(WaitUntil([&] { return !button.IsOpen(); }));
    EXPECT_FALSE(::IsWindowEnabled(button));
    m_parent.Told();

    Make(0);
    for (const auto& [code, keys] : {std::pair{ZON_DATE_TIME_DROPDOWN, "*"},
                                     {ZON_DATE_TIME_CHANGED, "*>#"},
                                     {ZON_DATE_TIME_CLOSEUP, "*~"},
                                     {ZON_DATE_TIME_CHANGED, "5"},
                                     {ZON_DATE_TIME_CHANGED, "31$"},
                                     {ZON_DATE_TIME_CHANGED, "^"}}) {
        auto dying = std::make_unique<CZoDateTimeWnd>();
        ASSERT_TRUE(dying->Create(kStyle, CRect(0, 40, 150, 64), &m_parent, 9));
        ASSERT_TRUE(dying->SetFormat("dd.MM.yyyy") && dying->SetTime(At(2023, 4, 7)));
        dying->SetFocus();
        m_parent.m_describe = [&, wanted = code](NMHDR& header, LRESULT&) -> std::string {
            if (header.idFrom == 9 && header.code == wanted)
                dying.reset();
            return "";
        };
        CWnd& window = *dying;
        const HWND handle = window.m_hWnd;
        for (const char* key = keys; *key != '\0' && ::IsWindow(handle); ++key)
            Press(*dying, std::string(1, *key).c_str());
        EXPECT_EQ(nullptr, dying) << keys;
        EXPECT_FALSE(::IsWindow(handle)) << keys;
    }
}

TEST_F(DateTime, CopiesAndPastes)
{
    Make(CZoDateTimeWnd::kShowNone);
    const auto clipboard = [&](const char* text) {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, strlen(text) + 1);
        memcpy(GlobalLock(memory), text, strlen(text) + 1);
        GlobalUnlock(memory);
        return OpenClipboard(m_parent) && EmptyClipboard() && SetClipboardData(CF_TEXT, memory) && CloseClipboard();
    };
    Press(m_date, "31&");
    ASSERT_TRUE(m_date.SetTime(At(2023, 1, 1)));
    Press(m_date, "%");
    EXPECT_EQ("2023-01-01", Value()) << "31.04. is copied as it is shown";
    for (const auto& [text, told] :
         {std::pair{"31.03.2024", "2024-03-31"}, {"2024-03-31", ""}, {"yesterday", ""}, {"1/2/3", "2003-02-01"}}) {
        ASSERT_TRUE(clipboard(text));
        Press(m_date, "%");
        EXPECT_EQ(told, m_parent.Told()) << text;
    }
    Press(m_date, "!&"); // nothing to copy
    m_parent.Told();
    Press(m_date, "%");
    EXPECT_EQ("2003-02-01", m_parent.Told());
    ASSERT_TRUE(clipboard(std::string(65536, '1').c_str()));
    EXPECT_FALSE(m_date.PasteText());
    EXPECT_TRUE(OpenClipboard(m_parent) && EmptyClipboard() && CloseClipboard());
    EXPECT_FALSE(m_date.PasteText());
    m_date.SendMessage(WM_COPY);
    m_date.SetTime(At(2023, 1, 1));
    m_date.SendMessage(WM_PASTE);
    EXPECT_EQ("2003-02-01", Value());
}

TEST_F(DateTime, IsRead)
{
    CWnd label;
    ASSERT_TRUE(label.Create("STATIC", "&Due:", WS_CHILD | WS_VISIBLE, CRect(0, 100, 50, 120), &m_parent, 4));
    Make(CZoDateTimeWnd::kShowNone | CZoDateTimeWnd::kSpin);
    m_date.SetWindowPos(&label, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Reader reader(m_date);
    char words[80] = "";
    const SYSTEMTIME time = At(2023, 4, 7);
    GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &time, nullptr, words, sizeof words);
    EXPECT_EQ("Due:", reader.Name());
    EXPECT_EQ(words, reader.Value());
    EXPECT_EQ(ROLE_SYSTEM_SPINBUTTON, reader.Role());
    const struct {
        const char *name, *value, *action;
        LONG role, state;
    } kParts[] = {
        {"Day", "07", "Go to", ROLE_SYSTEM_SPINBUTTON, STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED},
        {"Month", "04", "Go to", ROLE_SYSTEM_SPINBUTTON, STATE_SYSTEM_FOCUSABLE},
        {"Year", "2023", "Go to", ROLE_SYSTEM_SPINBUTTON, STATE_SYSTEM_FOCUSABLE},
        {"Give a date", "", "Uncheck", ROLE_SYSTEM_CHECKBUTTON, STATE_SYSTEM_CHECKED},
        {"Up", "", "Press", ROLE_SYSTEM_PUSHBUTTON, 0},
        {"Down", "", "Press", ROLE_SYSTEM_PUSHBUTTON, 0},
    };
    ASSERT_EQ(static_cast<LONG>(std::size(kParts)), reader.Count());
    for (LONG part = 1; part <= reader.Count(); ++part) {
        const auto& expected = kParts[part - 1];
        EXPECT_EQ(expected.name, reader.Name(part));
        EXPECT_EQ(expected.value, reader.Value(part)) << part;
        EXPECT_EQ(expected.action, reader.Action(part)) << part;
        EXPECT_EQ(expected.role, reader.Role(part)) << part;
        EXPECT_EQ(expected.state, reader.State(part)) << part;
        EXPECT_EQ(part, reader.At(reader.Area(part).CenterPoint()));
    }
    EXPECT_EQ(-1, reader.Role(7));
    using Heard = std::vector<std::pair<DWORD, LONG>>;
    const Events events(m_date);
    const struct {
        const char* keys;
        Heard heard;
    } kActs[] = {{"3", {}},
                 {"1", {{EVENT_OBJECT_FOCUS, 2}}},
                 {"~", {{EVENT_OBJECT_VALUECHANGE, 0}}},
                 {">", {{EVENT_OBJECT_FOCUS, 3}}},
                 {"^", {{EVENT_OBJECT_VALUECHANGE, 0}}},
                 {"!", {{EVENT_OBJECT_STATECHANGE, 4}, {EVENT_OBJECT_FOCUS, 0}, {EVENT_OBJECT_VALUECHANGE, 0}}},
                 {"!", {}}};
    for (const auto& act : kActs) {
        Press(m_date, act.keys);
        EXPECT_EQ(act.heard, Events::Heard()) << act.keys;
    }
    EXPECT_EQ("No date", reader.Value());
    EXPECT_EQ("Check", reader.Action(4));
    EXPECT_EQ(0, reader.Focus());
    EXPECT_EQ(STATE_SYSTEM_INVISIBLE, reader.State(1));
    for (const LONG part : {4, 5, 2})
        EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(part)));
    EXPECT_EQ(2, reader.Focus());
    EXPECT_EQ("none 2024-04-07 2025-04-07", m_parent.Told().substr(11));
}

TEST_F(DateTime, WorksInADialog)
{
    Make(0);
    const auto ask = [&](UINT key) {
        MSG message = {m_date.m_hWnd, WM_KEYDOWN, key, 0, 0, {}};
        return m_date.SendMessage(WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message));
    };
    EXPECT_EQ(0, ask(VK_ESCAPE) & DLGC_WANTMESSAGE) << "it closes the dialog";
    Press(m_date, "31");
    EXPECT_NE(0, ask(VK_ESCAPE) & DLGC_WANTMESSAGE);
    EXPECT_EQ("2023-04-07", Value());
    EXPECT_EQ(0, ask(VK_RETURN) & DLGC_WANTMESSAGE);
    EXPECT_EQ("2023-04-30!", m_parent.Told());
    Press(m_date, "*");
    EXPECT_NE(0, ask(VK_RETURN) & (DLGC_WANTMESSAGE | DLGC_WANTALLKEYS));
    EXPECT_EQ(0, ask(VK_TAB) & (DLGC_WANTMESSAGE | DLGC_WANTALLKEYS | DLGC_WANTTAB));
    m_date.DestroyWindow();

    ASSERT_TRUE(CZoControl::RegisterControlClass());
    CWnd window; // of a template
    ASSERT_TRUE(window.Create(ZO_CONTROL_CLASS, "", WS_CHILD | kStyle, CRect(0, 0, 150, 24), &m_parent, 7));
    window.Detach();
    ASSERT_TRUE(m_date.SubclassDlgItem(7, &m_parent));
    EXPECT_TRUE(::IsWindow(m_date.GetButton()));
    m_date.SetFocus();
    EXPECT_EQ(1, m_date.GetFocusedPart());
    m_date.DestroyWindow();
    for (const DWORD style : {CZoDateTimeWnd::kTime, CZoDateTimeWnd::kLongDate, CZoDateTimeWnd::kShortDate}) {
        CZoDateTimeWnd date;
        ASSERT_TRUE(date.Create(style | kStyle, CRect(0, 0, 150, 24), &m_parent, 7));
        char format[80] = "", text[80] = "";
        const bool isTime = style == CZoDateTimeWnd::kTime;
        GetLocaleInfoA(LOCALE_USER_DEFAULT,
                       isTime       ? LOCALE_STIMEFORMAT
                       : style == 0 ? LOCALE_SSHORTDATE
                                    : LOCALE_SLONGDATE,
                       format, sizeof format);
        EXPECT_STREQ(format, date.GetFormat());
        SYSTEMTIME time = {};
        EXPECT_TRUE(date.GetTime(time));
        (isTime ? GetTimeFormatA : GetDateFormatA)(LOCALE_USER_DEFAULT,
                                                   style == CZoDateTimeWnd::kLongDate ? DATE_LONGDATE : 0, &time,
                                                   nullptr, text, sizeof text);
        EXPECT_STREQ(text, date.GetShownText());
        EXPECT_EQ(isTime, date.GetButton().m_hWnd == nullptr);
        EXPECT_TRUE(date.SetFormat("yyyy") && date.SetFormat(nullptr));
        EXPECT_STREQ(format, date.GetFormat());
        EXPECT_FALSE(date.SetFormat("") || date.SetFormat(std::string(65536, 'd').c_str()) || date.SetNone());
        EXPECT_FALSE(date.SetTime(At(2023, 2, 29)));
        EXPECT_STREQ(text, date.GetShownText());
        date.SetNoneText(std::string(65536, 'd').c_str());
    }
}

TEST_F(DateTime, IsDrawn)
{
    constexpr COLORREF kPaper = RGB(0, 0, 120), kInk = RGB(250, 250, 0), kFace = RGB(90, 90, 90),
                       kGray = RGB(0, 200, 0), kChosen = RGB(200, 0, 0), kOnChosen = RGB(255, 255, 255);
    const Scheme scheme{{COLOR_WINDOW, kPaper},           {COLOR_WINDOWTEXT, kInk},   {COLOR_3DFACE, kFace},
                        {COLOR_HIGHLIGHTTEXT, kOnChosen}, {COLOR_HIGHLIGHT, kChosen}, {COLOR_GRAYTEXT, kGray}};
    for (const DWORD direction : {0L, WS_EX_LAYOUTRTL}) {
        ControlParent parent(direction);
        CZoDateTimeWnd date;
        ASSERT_TRUE(date.Create(kStyle | CZoDateTimeWnd::kShowNone, CRect(0, 0, 150, 24), &parent, 7));
        ASSERT_TRUE(date.SetFormat("dd.MM.yyyy") && date.SetTime(At(2023, 4, 7)));
        date.SetFocus();
        const auto picture = [&](int part, COLORREF color) {
            ZoPart description;
            date.DescribePart(part, description);
            return PictureOf(date)->Count(color, description.area);
        };
        EXPECT_GT(picture(1, kChosen), 20);
        EXPECT_GT(picture(1, kOnChosen), 5);
        EXPECT_EQ(0, picture(2, kChosen));
        EXPECT_GT(picture(2, kInk), 5);
        ZoPart day, year;
        date.DescribePart(1, day);
        date.DescribePart(3, year);
        EXPECT_EQ(direction == 0, day.area.left < year.area.left) << "mirrored coordinates: the same to the eye";
        PressKey(date, VK_RIGHT);
        EXPECT_EQ(2, date.GetFocusedPart());
        EXPECT_GT(picture(2, kChosen), 20);
        PressKey(date, 'A', ZoKey::kControl);
        EXPECT_GT(picture(1, kChosen), 20);
        EXPECT_GT(picture(3, kChosen), 20);
        parent.SetFocus();
        EXPECT_EQ(0, picture(1, kChosen));
        date.UpdateWindow();
        EXPECT_TRUE(AreEqual(*PictureOf(date), *ScreenOf(date)) || date.GetButton().m_hWnd != nullptr);
        date.EnableWindow(FALSE);
        EXPECT_GT(picture(1, kGray), 5);
        EXPECT_EQ(0, picture(1, kInk));
        date.EnableWindow(TRUE);
        date.MoveWindow(0, 0, 56, 24); // room for a field alone: it is the one with the focus
        date.SetFocus();
        PressKey(date, VK_LEFT);
        PressKey(date, VK_RIGHT);
        PressKey(date, VK_RIGHT);
        EXPECT_GT(picture(2, kOnChosen), 5);
    }
}

TEST_F(DateTime, SurvivesSizesAndFaults)
{
    std::mt19937 random(5);
    for (const DWORD style : {0UL, static_cast<DWORD>(CZoDateTimeWnd::kSpin | CZoDateTimeWnd::kShowNone)}) {
        Make(style, 0, 0);
        for (int i = 0; i < 1000; ++i) {
            m_date.MoveWindow(0, 0, static_cast<int>(random() % 200), static_cast<int>(random() % 60));
            if (i % 10 == 0)
                ScreenOf(m_date);
        }
        m_date.ShowWindow(SW_HIDE);
        Press(m_date, "5");
        m_date.ShowWindow(SW_SHOW);
        Make(style);
        const auto good = ScreenOf(m_date);
        const auto ideal = m_date.GetIdealSize();
        EXPECT_TRUE(ideal.cx > 60 && ideal.cx < 150 && ideal.cy > 14 && ideal.cy < 40) << ideal.cx << "x" << ideal.cy;
        DrawingFaults faults;
        RunFaultLoop(faults, [&](const FaultRun& run) {
            m_date.Invalidate();
            ScreenOf(m_date);
            run.Stop();
            m_date.Invalidate();
            m_date.GetButton().RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            EXPECT_TRUE(AreEqual(*good, *ScreenOf(m_date)));
        });
        if (style == 0)
            continue;
        RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
            CZoDateTimeWnd date;
            const BOOL isMade = date.Create(style | kStyle, CRect(0, 40, 150, 64), &m_parent, 9);
            if (isMade) {
                date.SetFormat("dd.MM.yyyy");
                date.SetTime(At(2023, 4, 7));
                date.SetFocus();
                Press(date, "3103!");
                ScreenOf(date); // "No date"
                Press(date, "^*~");
            }
            run.Stop();
            EXPECT_TRUE(isMade || run.Fired());
            if (isMade) { // the next layout makes what was missing
                date.SendMessage(WM_SETTINGCHANGE);
                EXPECT_EQ(style == 0, date.GetButton().m_hWnd != nullptr);
                SYSTEMTIME time = {};
                EXPECT_TRUE(date.GetTime(time) && time.wYear >= 2023);
            }
        });
        const ProcessCounts before = ProcessCounts::Take();
        for (int i = 0; i < 10000; ++i) {
            m_date.Invalidate();
            m_date.UpdateWindow();
        }
        EXPECT_EQ(before, ProcessCounts::Take());
    }
}
