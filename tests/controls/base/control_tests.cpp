// What every control gets from its base, on real windows.
#include "controls/control_kit.h"

#include "controls/base/popup.h"
#include <zogbl/language_support.h>

namespace {

constexpr UINT kNotification = ZON_FIRST - 1;
constexpr COLORREF kInk = RGB(200, 30, 40), kPaper = RGB(30, 200, 40);

/// Two halves side by side, of which a click or a key chooses one, and a drag moves the border.
class Halves : public CZoControl {
public:
    static constexpr ZoKey kKeys[] = {{VK_LEFT, ZoKey::kNone, 1}, {VK_RIGHT, ZoKey::kNone, 2}};

    int m_border = 50, m_chosen = 1;
    int m_layouts = 0, m_texts = 0, m_drawn = 0, m_undone = 0;
    CRect m_dirty;
    bool m_fails = false;

    int GetPartCount() const override { return 2; }
    int GetFocusedPart() const override { return m_chosen; }
    int FindPart(CPoint point) const override { return point.x < m_border ? 1 : 2; }
    BOOL DoPartAction(int part) override { return Choose(part); }
    BOOL DescribePart(int part, ZoPart& description) const override
    {
        if (part == 0)
            return CZoControl::DescribePart(part, description);
        if (part < 0 || part > 2)
            return FALSE;
        description.name = part == 1 ? "left" : "right";
        description.role = ROLE_SYSTEM_LISTITEM;
        description.action = "Choose";
        description.state = part == m_chosen ? STATE_SYSTEM_SELECTED : 0;
        description.area = part == 1 ? CRect(0, 0, m_border, 20) : CRect(m_border, 0, 100, 20);
        return TRUE;
    }
    BOOL Choose(int part)
    {
        m_chosen = part;
        RaiseEvent(EVENT_OBJECT_SELECTION, part);
        return Notify(kNotification);
    }
    using CZoControl::BeginDrag;
    using CZoControl::GetFontHandle;
    using CZoControl::IsDragging;
    using CZoControl::IsFocusShown;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override
    {
        ++m_drawn;
        m_dirty = dirty;
        dc->FillSolidRect(CRect(0, 0, m_border, 20), kInk);
        if (m_fails)
            AfxThrowMemoryException();
        dc->FillSolidRect(CRect(m_border, 0, 100, 20), kPaper);
    }
    void OnLayout() override { ++m_layouts; }
    void OnReloadTexts() override { ++m_texts; }
    void OnDragMove(CPoint point) override { m_border = point.x; }
    void OnDragUndo() override
    {
        ++m_undone;
        m_border = 50;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_LBUTTONDOWN)
            TakeFocus();
        if (message == WM_KEYDOWN) {
            const int command = CommandOf(kKeys, static_cast<UINT>(wParam));
            if (command != 0)
                Choose(command);
            return 0;
        }
        return CZoControl::WindowProc(message, wParam, lParam);
    }
};

constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP;

} // namespace

TEST(Control, IsPaintedWithoutFlickerAndOnlyWhatIsDirty)
{
    ControlParent parent;
    Halves control;
    ASSERT_TRUE(control.Create(kStyle, CRect(10, 10, 110, 30), &parent, 5));
    auto screen = ScreenOf(control);
    EXPECT_EQ(kInk, screen->At(10, 10));
    EXPECT_EQ(kPaper, screen->At(90, 10));
    EXPECT_TRUE(AreEqual(*screen, *PictureOf(control)));
    control.InvalidateRect(CRect(60, 5, 70, 9));
    control.UpdateWindow();
    EXPECT_EQ(CRect(60, 5, 70, 9), control.m_dirty);
    EXPECT_EQ(TRUE, control.SendMessage(WM_ERASEBKGND));

    // A drawing that ends half way is made good by the next.
    control.m_fails = true;
    control.Invalidate();
    ScreenOf(control);
    control.m_fails = false;
    control.Invalidate();
    EXPECT_TRUE(AreEqual(*screen, *ScreenOf(control)));

    DrawingFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        control.Invalidate();
        const auto shown = ScreenOf(control);
        run.Stop();
        EXPECT_TRUE(AreEqual(*screen, *shown)) << "painted directly";
    });
    AllocationFaults memory;
    const ProcessCounts before = ProcessCounts::Take();
    for (int i = 0; i < 10000; ++i) {
        control.Invalidate();
        control.UpdateWindow();
    }
    EXPECT_EQ(before, ProcessCounts::Take());
}

TEST(Control, FollowsTheSystemAndTheLanguage)
{
    ControlParent parent;
    Halves control;
    ASSERT_TRUE(control.Create(kStyle, CRect(0, 0, 100, 20), &parent, 5));
    const struct {
        UINT message;
        WPARAM wParam;
    } kChanges[] = {{WM_SYSCOLORCHANGE, 0},
                    {WM_SETTINGCHANGE, 0},
                    {WM_FONTCHANGE, 0},
                    {CZoLanguageSupport::GetUpdateMessage(), 0},
                    {WM_ENABLE, TRUE}};
    for (const auto& change : kChanges) {
        control.UpdateWindow();
        const int layouts = control.m_layouts, drawn = control.m_drawn;
        control.SendMessage(change.message, change.wParam);
        control.UpdateWindow();
        EXPECT_EQ(layouts + (change.message != WM_ENABLE), control.m_layouts) << change.message;
        EXPECT_EQ(drawn + 1, control.m_drawn) << change.message;
    }
    EXPECT_EQ(1, control.m_texts);

    CFont font;
    font.CreatePointFont(120, "Arial");
    const int layouts = control.m_layouts;
    control.SetFont(&font);
    EXPECT_EQ(static_cast<HFONT>(font), control.GetFontHandle());
    EXPECT_EQ(&font, control.GetFont());
    EXPECT_EQ(layouts + 1, control.m_layouts);
    control.MoveWindow(0, 0, 70, 20);
    EXPECT_EQ(layouts + 2, control.m_layouts);
    control.SetFont(nullptr);
    EXPECT_NE(nullptr, control.GetFontHandle());
}

TEST(Control, TellsScreenReaders)
{
    ControlParent parent;
    CWnd label;
    ASSERT_TRUE(label.Create("STATIC", "&Halves:", WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), &parent, 4));
    Halves control;
    ASSERT_TRUE(control.Create(kStyle, CRect(0, 40, 100, 60), &parent, 5));
    IAccessible* kept = nullptr;
    {
        Reader reader(control);
        EXPECT_EQ("Halves:", reader.Name());
        EXPECT_EQ("left", reader.Name(1));
        EXPECT_EQ("right", reader.Name(2));
        EXPECT_EQ("", reader.Value(1));
        EXPECT_EQ("Choose", reader.Action(2));
        EXPECT_EQ(2, reader.Count());
        EXPECT_EQ(ROLE_SYSTEM_LISTITEM, reader.Role(1));
        EXPECT_EQ(STATE_SYSTEM_SELECTED, reader.State(1));
        EXPECT_EQ(STATE_SYSTEM_FOCUSABLE, reader.State());
        CRect area(50, 0, 100, 20);
        control.ClientToScreen(&area);
        EXPECT_EQ(area, reader.Area(2));
        EXPECT_EQ(2, reader.At(area.CenterPoint()));
        EXPECT_EQ(-1, reader.At(area.BottomRight()));
        VARIANT none = {};
        EXPECT_EQ(E_INVALIDARG, reader->get_accRole(Reader::Part(3), &none));
        EXPECT_EQ(E_INVALIDARG, reader->get_accRole(Reader::Part(-1), &none));

        control.SetFocus();
        EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED, reader.State());
        EXPECT_EQ(1, reader.Focus());
        const Events events(control);
        EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(2)));
        EXPECT_EQ((std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_SELECTION, 2}}), Events::Heard());
        VARIANT selected = {};
        EXPECT_EQ(S_OK, reader->get_accSelection(&selected));
        EXPECT_EQ(2, selected.lVal);
        control.EnableWindow(FALSE);
        EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->accDoDefaultAction(Reader::Part(1)));
        EXPECT_EQ(2, control.m_chosen);
        EXPECT_EQ(STATE_SYSTEM_UNAVAILABLE, reader.State());
        EXPECT_EQ(1, Events::Count(EVENT_OBJECT_STATECHANGE));
        ASSERT_EQ(S_OK, reader->QueryInterface(IID_IAccessible, reinterpret_cast<void**>(&kept)));
    }
    control.DestroyWindow();
    LONG count = 0;
    EXPECT_EQ(CO_E_OBJNOTCONNECTED, kept->get_accChildCount(&count));
    BSTR name = nullptr;
    EXPECT_EQ(CO_E_OBJNOTCONNECTED, kept->get_accName(Reader::Part(1), &name));
    EXPECT_EQ(0u, kept->Release());
}

/// A screen reader. Its argument is the control.
ZO_CHILD(ReadsTheHalves)
{
    ::CoInitialize(nullptr);
    {
        Reader reader(reinterpret_cast<HWND>(static_cast<ULONG_PTR>(std::stoul(child.Argument(0)))));
        child.Report(reader.Name() + "|" + reader.Name(1) + "|" + reader.Name(2) + "|" +
                     std::to_string(reader.Count()) + "|" + std::to_string(reader.Role(2)));
        EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(2)));
    }
    ::CoUninitialize();
}

TEST(Control, IsReadByAnotherProcess)
{
    ControlParent parent;
    Halves control;
    ASSERT_TRUE(control.Create(kStyle, CRect(0, 40, 100, 60), &parent, 5));
    control.SetWindowText("two halves");
    ChildProcess reader("ReadsTheHalves", {std::to_string(HandleToULong(control.m_hWnd))});
    reader.Finish();
    EXPECT_EQ(std::vector<std::string>{"two halves|left|right|2|34"}, reader.Reports());
    EXPECT_EQ(2, control.m_chosen) << "in the thread of the control";
}

static HMODULE WINAPI LoadNoLibrary(LPCSTR) { return nullptr; }

/// As a system that has none of the libraries which screen readers need.
ZO_CHILD(ChoosesUnread)
{
    const ImportPatch none(kZogbl, "LoadLibraryA", &LoadNoLibrary);
    ControlParent parent;
    Halves control;
    ASSERT_TRUE(control.Create(kStyle, CRect(0, 0, 100, 20), &parent, 5));
    const Events events(control);
    EXPECT_EQ(0, control.SendMessage(WM_GETOBJECT, 0, OBJID_CLIENT));
    EXPECT_TRUE(control.Choose(2));
    EXPECT_TRUE(Events::Heard().empty());
    EXPECT_EQ(kInk, ScreenOf(control)->At(10, 10));
}

TEST(Control, WorksWhereNobodyCanReadIt)
{
    ChildProcess system("ChoosesUnread");
    system.Finish();
}

TEST(Control, NotifiesTheParentOfTheMomentAndMayDieOfIt)
{
    ControlParent first, second;
    auto control = std::make_unique<Halves>();
    ASSERT_TRUE(control->Create(kStyle, CRect(0, 0, 100, 20), &first, 5));
    const auto describe = [](NMHDR& header, LRESULT&) {
        return header.code == kNotification ? "chosen by " + std::to_string(header.idFrom) : "";
    };
    first.m_describe = second.m_describe = describe;
    EXPECT_TRUE(control->Choose(2));
    EXPECT_EQ("chosen by 5", first.Told());
    control->SetParent(&second);
    EXPECT_TRUE(control->Choose(1));
    EXPECT_EQ("", first.Told());
    EXPECT_EQ("chosen by 5", second.Told());

    second.m_describe = [&](NMHDR&, LRESULT&) {
        control.reset();
        return "destroyed";
    };
    EXPECT_FALSE(control->Choose(2));
    EXPECT_EQ("destroyed", second.Told());
}

TEST(Control, UndoesADragInEachWayItCanEnd)
{
    ControlParent parent;
    std::optional<ProcessCounts> before; // behind the first one
    const struct {
        const char* name;
        std::function<void(Halves&)> end;
        bool isUndone;
    } kEnds[] = {
        {"button",
         [](Halves& control) {
             SendMouse(control, WM_LBUTTONUP, {70, 5});
         },
         false},
        {"Esc", [](Halves& control) { PressKey(control, VK_ESCAPE); }, true},
        {"capture", [](Halves&) { ::ReleaseCapture(); }, true},
        {"another's capture", [&](Halves&) { parent.SetCapture(); }, true},
        {"mode", [](Halves& control) { control.SendMessage(WM_CANCELMODE); }, true},
        {"disabled", [](Halves& control) { control.EnableWindow(FALSE); }, true},
        {"destroyed", [](Halves& control) { control.DestroyWindow(); }, true},
    };
    for (const auto& row : kEnds) {
        SCOPED_TRACE(row.name);
        Halves control;
        ASSERT_TRUE(control.Create(kStyle, CRect(0, 0, 100, 20), &parent, 5));
        ASSERT_TRUE(control.BeginDrag());
        SendMouse(control, WM_MOUSEMOVE, {70, 5}, MK_LBUTTON);
        EXPECT_EQ(70, control.m_border);
        row.end(control);
        EXPECT_FALSE(control.IsDragging());
        EXPECT_EQ(row.isUndone ? 1 : 0, control.m_undone);
        EXPECT_EQ(row.isUndone ? 50 : 70, control.m_border);
        EXPECT_NE(control.m_hWnd, ::GetCapture() != nullptr ? ::GetCapture() : INVALID_HANDLE_VALUE);
        ::ReleaseCapture();
        before = before.value_or(ProcessCounts::Take());
    }
    EXPECT_EQ(*before, ProcessCounts::Take());
}

TEST(Control, ObeysKeysInTheDirectionOfTheEye)
{
    for (const DWORD direction : {0L, WS_EX_LAYOUTRTL}) {
        ControlParent parent(direction);
        Halves control;
        ASSERT_TRUE(control.Create(kStyle, CRect(0, 0, 100, 20), &parent, 5));
        control.SetFocus();
        PressKey(control, VK_RIGHT);
        EXPECT_EQ(direction == 0 ? 2 : 1, control.m_chosen);
        PressKey(control, VK_LEFT);
        EXPECT_EQ(direction == 0 ? 1 : 2, control.m_chosen);
        PressKey(control, VK_RIGHT, ZoKey::kControl);
        EXPECT_EQ(direction == 0 ? 1 : 2, control.m_chosen) << "not in the table";
        // The left half is where the reader's eye begins, and both reach the edges.
        const CClientDC dc(&control);
        const HDC screen = dc;
        if (direction != 0)
            ::SetLayout(screen, 0);
        control.UpdateWindow();
        EXPECT_EQ(direction == 0 ? kInk : kPaper, ::GetPixel(screen, 0, 10));
        EXPECT_EQ(direction == 0 ? kPaper : kInk, ::GetPixel(screen, 99, 10));
    }
}

TEST(Control, IsPutOverAWindowOfATemplate)
{
    class Dialog : public ControlParent {
    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            return message == WM_GETFONT ? reinterpret_cast<LRESULT>(::GetStockObject(ANSI_FIXED_FONT))
                                         : ControlParent::WindowProc(message, wParam, lParam);
        }
    } parent;
    ASSERT_TRUE(CZoControl::RegisterControlClass());
    for (const char* windowClass : {ZO_CONTROL_CLASS, "STATIC"}) {
        SCOPED_TRACE(windowClass);
        CWnd window;
        ASSERT_TRUE(window.Create(windowClass, "name", WS_CHILD | kStyle, CRect(0, 0, 100, 20), &parent, 5));
        const HWND handle = window.Detach();
        Halves control;
        ASSERT_TRUE(control.SubclassDlgItem(5, &parent));
        EXPECT_EQ(::GetStockObject(ANSI_FIXED_FONT), control.GetFontHandle());
        EXPECT_EQ(1, control.m_layouts);
        EXPECT_EQ(kPaper, ScreenOf(control)->At(90, 10));
        control.SendMessage(WM_CHAR, 'x');
        CString text;
        control.GetWindowText(text);
        EXPECT_STREQ("name", text);
        control.DestroyWindow();
        EXPECT_FALSE(::IsWindow(handle));
    }
}

// Popups --------------------------------------------------------------------------------------------------------------

namespace {

class PopupOwner : public Halves, private ControlPopup::Client {
public:
    ControlPopup m_popup{*this};
    Halves m_content;
    std::vector<ControlPopup::Reason> m_closed;

    BOOL Open() { return m_popup.Open(*this, m_content, 0, CSize(100, 60)); }

private:
    void OnPopupClosed(ControlPopup::Reason reason) override { m_closed.push_back(reason); }
};

} // namespace

TEST(ControlPopup, ClosesOnceForItsReason)
{
    using Reason = ControlPopup::Reason;
    ControlParent parent, other;
    const struct {
        const char* name;
        std::function<void(PopupOwner&)> act;
        Reason reason;
    } kWays[] = {
        {"owner", [](PopupOwner& owner) { owner.m_popup.Close(); }, Reason::kOwner},
        {"click on the owner",
         [](PopupOwner& owner) {
             Click(owner, {5, 5});
         },
         Reason::kClickOwner},
        {"click on the parent",
         [&](PopupOwner&) {
             Click(parent, {300, 200});
         },
         Reason::kClickAside},
        {"click elsewhere",
         [&](PopupOwner&) {
             Click(other, {300, 200});
         },
         Reason::kClickAside},
        {"focus", [&](PopupOwner&) { other.SetFocus(); }, Reason::kDeactivated},
        {"program", [](PopupOwner& owner) { owner.m_popup.SendMessage(WM_ACTIVATEAPP, FALSE); }, Reason::kDeactivated},
        {"disabled", [](PopupOwner& owner) { owner.EnableWindow(FALSE); }, Reason::kOwnerGone},
        {"hidden", [](PopupOwner& owner) { owner.ShowWindow(SW_HIDE); }, Reason::kOwnerGone},
        {"moved", [&](PopupOwner&) { parent.MoveWindow(60, 60, 400, 300); }, Reason::kOwnerGone},
    };
    for (const auto& row : kWays) {
        SCOPED_TRACE(row.name);
        parent.MoveWindow(50, 50, 400, 300);
        PopupOwner owner;
        ASSERT_TRUE(owner.Create(kStyle, CRect(10, 10, 110, 30), &parent, 5));
        owner.SetFocus();
        ASSERT_TRUE(owner.Open());
        EXPECT_FALSE(owner.Open()) << "it is";
        EXPECT_EQ(owner.m_hWnd, ::GetFocus());
        EXPECT_TRUE(::IsWindowVisible(owner.m_content));
        EXPECT_TRUE(owner.m_content.IsFocusShown() || !owner.IsFocusShown());
        Click(owner.m_content, {5, 5});
        EXPECT_EQ(owner.m_hWnd, ::GetFocus());
        row.act(owner);
        EXPECT_TRUE(WaitUntil([&] { return !owner.m_closed.empty(); }));
        EXPECT_EQ(std::vector<Reason>{row.reason}, owner.m_closed);
        EXPECT_EQ(nullptr, owner.m_content.m_hWnd);
        EXPECT_EQ(nullptr, ::GetCapture());
        if (row.reason == Reason::kOwner) { // it can be opened again
            EXPECT_TRUE(owner.Open());
            owner.DestroyWindow();
            owner.m_popup.Close();
        }
    }
}

TEST(ControlPopup, StaysOnTheScreen)
{
    CRect work;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    ControlParent parent;
    for (const CPoint corner : {work.TopLeft(), CPoint(work.right - 150, work.top), CPoint(work.left, work.bottom - 60),
                                work.BottomRight() - CSize(60, 40)}) {
        parent.MoveWindow(corner.x, corner.y, 400, 300);
        PopupOwner owner;
        ASSERT_TRUE(owner.Create(kStyle, CRect(0, 0, 100, 20), &parent, 5));
        owner.SetFocus();
        ASSERT_TRUE(owner.Open());
        CRect place, ownerPlace, common;
        owner.m_popup.GetWindowRect(&place);
        owner.GetWindowRect(&ownerPlace);
        EXPECT_TRUE(common.UnionRect(&work, &place) && common == work) << corner.x << "," << corner.y;
        EXPECT_FALSE(common.IntersectRect(&place, &ownerPlace)) << corner.x << "," << corner.y;
        owner.m_popup.Close();
    }
}

TEST(ControlPopup, SurvivesFaults)
{
    ControlParent parent;
    PopupOwner owner;
    ASSERT_TRUE(owner.Create(kStyle, CRect(0, 0, 100, 20), &parent, 5));
    owner.SetFocus();
    const auto body = [&](const FaultRun& run) {
        const BOOL opened = owner.Open();
        run.Stop();
        EXPECT_EQ(!run.Fired(), opened != FALSE);
        EXPECT_EQ(opened, owner.m_popup.IsOpen());
        owner.m_popup.Close();
        EXPECT_EQ(nullptr, owner.m_content.m_hWnd);
    };
    FaultSource windows("windows");
    ZO_FAULTY_CALL(SetTimer) timer(windows, nullptr, 0);
    ZO_FAULTY_CALL(SetWindowsHookExA) hook(windows, nullptr, nullptr);
    RunFaultLoop(windows, body);
}
