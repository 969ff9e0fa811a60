// What every control gets from its base, on real windows.
#include "controls/control_kit.h"

#include "controls/base/popup.h"

#include <zogbl/language_support.h>

#include <thread>

namespace {

constexpr UINT kNotification = ZON_FIRST - 1;
constexpr WORD kCommand = 7;
constexpr COLORREF kInk = RGB(200, 30, 40), kPaper = RGB(30, 200, 40);
constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP;

/// Two halves side by side, of which a click or a key chooses one, and a drag moves the border.
class Halves : public CZoControl {
public:
    static constexpr ZoKey kKeys[] = {{VK_LEFT, ZoKey::kNone, 1}, {VK_RIGHT, ZoKey::kNone, 2}, {'A', ZoKey::kShift, 3}};

    int m_border = 50, m_chosen = 1; // 3: both
    int m_layouts = 0, m_texts = 0, m_drawn = 0, m_undone = 0, m_mode = 0;
    LRESULT m_answer = 0;
    CRect m_dirty;
    bool m_fails = false, m_tells = false; // each override

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
        description.state = (part & m_chosen) != 0 ? STATE_SYSTEM_SELECTED : 0;
        description.area = part == 1 ? CRect(0, 0, m_border, 20) : CRect(m_border, 0, 100, 20);
        return TRUE;
    }
    BOOL Choose(int part)
    {
        m_chosen = part;
        RaiseEvent(EVENT_OBJECT_SELECTION, part);
        LRESULT answer = 0;
        if (!Notify(kNotification, nullptr, &answer))
            return FALSE; // the object is gone
        m_answer = answer;
        return TRUE;
    }
    using CZoControl::BeginDrag;
    using CZoControl::GetFontHandle;
    using CZoControl::IsDragging;
    using CZoControl::IsFocusShown;
    using CZoControl::NotifyCommand;
    using CZoControl::TakeFocus;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override
    {
        ++m_drawn;
        m_dirty = dirty;
        m_mode = dc->GetBkMode();
        dc->FillSolidRect(CRect(0, 0, m_border, 20), kInk);
        if (m_fails)
            AfxThrowMemoryException();
        dc->FillSolidRect(CRect(m_border, 0, 100, 20), kPaper);
    }
    void OnLayout() override { Count(m_layouts); }
    void OnReloadTexts() override { Count(m_texts); }
    void OnDragMove(CPoint point) override
    {
        m_border = point.x;
        Tell();
    }
    void OnDragEnd(CPoint) override { Tell(); }
    void OnDragUndo() override
    {
        m_border = 50;
        Count(m_undone);
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_KEYDOWN) {
            const int command = CommandOf(kKeys, static_cast<UINT>(wParam));
            if (command != 0)
                Choose(command);
            return 0;
        }
        return CZoControl::WindowProc(message, wParam, lParam);
    }

private:
    void Count(int& calls)
    {
        ++calls;
        Tell();
    }
    void Tell()
    {
        if (m_fails)
            AfxThrowMemoryException();
        if (m_tells)
            Choose(2);
    }
};

class Control : public testing::Test {
protected:
    Control() { Make(); }
    void Make(CWnd* parent = nullptr)
    {
        m_control = std::make_unique<Halves>();
        ASSERT_TRUE(m_control->Create(kStyle, CRect(0, 40, 100, 60), parent != nullptr ? parent : &m_parent, 5));
    }

    ControlParent m_parent;
    std::unique_ptr<Halves> m_control;
};

} // namespace

TEST_F(Control, DrawsWhatIsDirty)
{
    const auto whole = ScreenOf(*m_control);
    EXPECT_EQ(TRANSPARENT, m_control->m_mode);
    m_control->InvalidateRect(CRect(60, 5, 70, 9));
    m_control->UpdateWindow();
    EXPECT_EQ(CRect(60, 5, 70, 9), m_control->m_dirty);
    EXPECT_TRUE(AreEqual(*whole, *ScreenOf(*m_control)));
    EXPECT_EQ(TRUE, m_control->SendMessage(WM_ERASEBKGND));

    m_control->SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(ANSI_FIXED_FONT)));
    m_control->m_fails = true;
    const Canvas printed(100, 20);
    m_control->SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(static_cast<HDC>(printed)), PRF_CLIENT);
    EXPECT_EQ(OPAQUE, ::GetBkMode(printed));
    EXPECT_EQ(::GetStockObject(SYSTEM_FONT), ::GetCurrentObject(printed, OBJ_FONT));
    m_control->Invalidate();
    m_control->UpdateWindow();
    m_control->m_fails = false;
    RunFaultLoop<DrawingFaults>([&](const FaultRun& run) {
        m_control->Invalidate();
        const auto shown = ScreenOf(*m_control);
        run.Stop();
        EXPECT_TRUE(AreEqual(*whole, *shown)) << "painted directly";
    });
}

TEST_F(Control, FollowsTheSystemTheLanguageAndItsStates)
{
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, "Arial"));
    using Heard = std::vector<std::pair<DWORD, LONG>>;
    const struct {
        const char* name;
        std::function<void(Halves&)> change;
        int layouts, drawings;
        Heard heard = {};
    } kChanges[] = {
        {"colours", [](Halves& control) { control.SendMessage(WM_SYSCOLORCHANGE); }, 1, 1},
        {"settings", [](Halves& control) { control.SendMessage(WM_SETTINGCHANGE); }, 1, 1},
        {"fonts", [](Halves& control) { control.SendMessage(WM_FONTCHANGE); }, 1, 1},
        {"style", [](Halves& control) { control.ModifyStyle(0, 1); }, 1, 1},
        {"language", [](Halves& control) { control.SendMessage(CZoLanguageSupport::GetUpdateMessage()); }, 1, 1},
        {"size", [](Halves& control) { control.MoveWindow(0, 40, 70, 20); }, 1, 1},
        {"font", [&](Halves& control) { control.SetFont(&font); }, 1, 1},
        {"font, not shown", [&](Halves& control) { control.SetFont(&font, FALSE); }, 1, 0},
        {"text", [](Halves& control) { control.SetWindowText("a"); }, 0, 1, {{EVENT_OBJECT_NAMECHANGE, 0}}},
        {"disabled", [](Halves& control) { control.EnableWindow(FALSE); }, 0, 1, {{EVENT_OBJECT_STATECHANGE, 0}}},
        {"enabled", [](Halves& control) { control.EnableWindow(TRUE); }, 0, 1, {{EVENT_OBJECT_STATECHANGE, 0}}},
        {"focus",
         [](Halves& control) { control.TakeFocus(); },
         0,
         1,
         {{EVENT_OBJECT_FOCUS, 0}, {EVENT_OBJECT_FOCUS, 1}}},
        {"focus shown", [](Halves& control) { control.SendMessage(WM_UPDATEUISTATE, UIS_CLEAR); }, 0, 1},
        {"focus gone", [&](Halves&) { m_parent.SetFocus(); }, 0, 1},
        {"keyboard", [&](Halves& control) { control.SetKeyboardOwner(m_parent); }, 0, 1},
        {"focus of the owner", [](Halves& control) { control.TakeFocus(); }, 0, 0},
    };
    for (const auto& row : kChanges) {
        SCOPED_TRACE(row.name);
        m_control->UpdateWindow();
        const int layouts = m_control->m_layouts, drawn = m_control->m_drawn;
        const Events events(*m_control);
        row.change(*m_control);
        m_control->UpdateWindow();
        EXPECT_EQ(layouts + row.layouts, m_control->m_layouts);
        EXPECT_EQ(drawn + row.drawings, m_control->m_drawn);
        auto heard = Events::Heard();
        std::erase_if(heard, [](const auto& event) { return event.first == EVENT_OBJECT_LOCATIONCHANGE; });
        EXPECT_EQ(row.heard, heard);
    }
    EXPECT_TRUE(m_control->IsFocusShown());
    EXPECT_EQ(1, m_control->m_texts);
    EXPECT_EQ(static_cast<HFONT>(font), m_control->GetFontHandle());
    EXPECT_EQ(&font, m_control->GetFont());
    m_control->DestroyWindow();
    EXPECT_NE(static_cast<HFONT>(font), m_control->GetFontHandle());
    EXPECT_NE(nullptr, m_control->GetFontHandle());
}

TEST_F(Control, HasTheNameOfItsLabel)
{
    const struct {
        const char* label;
        DWORD style;
        const char* name;
    } kLabels[] = {{"&Tom && Jerry:", WS_VISIBLE, "Tom & Jerry:"},
                   {"a && b", WS_VISIBLE | SS_NOPREFIX, "a && b"},
                   {"hidden", 0, "own & text"},
                   {"", WS_VISIBLE, "own & text"}};
    for (const auto& row : kLabels) {
        CWnd label;
        ASSERT_TRUE(label.Create("STATIC", row.label, WS_CHILD | row.style, CRect(0, 0, 9, 9), &m_parent, 4));
        Make();
        m_control->SetWindowText("own & text");
        EXPECT_EQ(row.name, Reader(*m_control).Name());
    }
    m_control->DestroyWindow();
    ZoPart nothing;
    EXPECT_TRUE(m_control->DescribePart(0, nothing) && nothing.name.IsEmpty());
}

TEST_F(Control, TellsScreenReaders)
{
    m_parent.SetFocus();
    const Reader reader(*m_control);
    EXPECT_EQ("||||10|" + std::to_string(STATE_SYSTEM_FOCUSABLE), reader.Says());
    EXPECT_EQ("left|||Choose|34|2", reader.Says(1));
    EXPECT_EQ("right|||Choose|34|0", reader.Says(2));
    EXPECT_EQ("||||-1|-1", reader.Says(3));
    EXPECT_EQ("||||-1|-1", reader.Says(-1));
    EXPECT_EQ(2, reader.Count());
    CRect area(50, 0, 100, 20);
    m_control->ClientToScreen(&area);
    EXPECT_EQ(area, reader.Area(2));
    EXPECT_EQ(2, reader.At(area.CenterPoint()));
    EXPECT_EQ(-1, reader.At(area.BottomRight()));
    EXPECT_EQ(-1, reader.Focus());
    BSTR text = nullptr;
    VARIANT part = {};
    EXPECT_EQ(S_FALSE, reader->get_accValue(Reader::Part(1), &text)) << "has none";
    IDispatch* child = nullptr;
    EXPECT_EQ(S_FALSE, reader->get_accChild(Reader::Part(2), &child)) << "no object of its own";
    EXPECT_EQ(E_INVALIDARG, reader->get_accChild(Reader::Part(3), &child));
    EXPECT_EQ(E_INVALIDARG, reader->get_accName(VARIANT{}, &text));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->get_accHelp(Reader::Part(1), &text));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->accSelect(SELFLAG_NONE, Reader::Part(0)));
    EXPECT_EQ(S_OK, reader->accSelect(SELFLAG_TAKEFOCUS, Reader::Part(0)));
    EXPECT_EQ(1, reader.Focus());
    EXPECT_EQ(STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED, reader.State());

    const struct {
        LONG direction, start, end; // 0: none
    } kMoves[] = {{NAVDIR_FIRSTCHILD, 0, 1}, {NAVDIR_LASTCHILD, 0, 2}, {NAVDIR_FIRSTCHILD, 1, 0},
                  {NAVDIR_NEXT, 0, 0},       {NAVDIR_NEXT, 1, 2},      {NAVDIR_NEXT, 2, 0},
                  {NAVDIR_PREVIOUS, 2, 1},   {NAVDIR_PREVIOUS, 1, 0}};
    for (const auto& move : kMoves) {
        EXPECT_EQ(move.end != 0 ? S_OK : S_FALSE, reader->accNavigate(move.direction, Reader::Part(move.start), &part));
        EXPECT_EQ(move.end, part.vt == VT_I4 ? part.lVal : 0) << move.direction << " from " << move.start;
    }

    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(2)));
    EXPECT_EQ(S_OK, reader->get_accSelection(&part));
    EXPECT_EQ(2, part.lVal);
    m_control->m_chosen = 3;
    EXPECT_EQ(S_OK, reader->get_accSelection(&part));
    ASSERT_EQ(VT_UNKNOWN, part.vt);
    auto* both = static_cast<IEnumVARIANT*>(part.punkVal);
    VARIANT selected[3] = {};
    ULONG count = 0;
    EXPECT_EQ(S_FALSE, both->Skip(3));
    EXPECT_EQ(S_OK, both->Reset());
    EXPECT_EQ(S_FALSE, both->Next(3, selected, &count));
    EXPECT_EQ(2u, count);
    EXPECT_EQ(2, selected[1].lVal);
    EXPECT_EQ(0u, both->Release());

    m_control->EnableWindow(FALSE);
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->accDoDefaultAction(Reader::Part(1)));
    EXPECT_EQ("||||10|" + std::to_string(STATE_SYSTEM_UNAVAILABLE), reader.Says());
    m_control->EnableWindow(TRUE);
    m_control->ShowWindow(SW_HIDE);
    m_control->ModifyStyle(WS_TABSTOP, 0);
    EXPECT_EQ("||||10|" + std::to_string(STATE_SYSTEM_INVISIBLE), reader.Says());
}

TEST_F(Control, IsReadInItsThreadAndAsLongAsItLives)
{
    m_control->SetFocus();
    auto reader = std::make_optional<Reader>(*m_control);
    IAccessible* kept = nullptr;
    ASSERT_EQ(S_OK, (*reader)->QueryInterface(IID_IAccessible, reinterpret_cast<void**>(&kept)));
    reader.reset();
    const auto ask = [kept] {
        LONG count = 0;
        VARIANT part = {};
        BSTR name = nullptr;
        IDispatch* parent = nullptr;
        return std::set<HRESULT>{kept->get_accChildCount(&count), kept->get_accFocus(&part),
                                 kept->get_accSelection(&part),   kept->accHitTest(1, 1, &part),
                                 kept->get_accParent(&parent),    kept->get_accName(Reader::Part(1), &name)};
    };
    std::set<HRESULT> elsewhere;
    std::thread([&] { elsewhere = ask(); }).join();
    EXPECT_EQ(std::set<HRESULT>{RPC_E_WRONG_THREAD}, elsewhere);
    const HWND window = m_control->UnsubclassWindow();
    EXPECT_EQ(std::set<HRESULT>{CO_E_OBJNOTCONNECTED}, ask()) << "without a window";
    m_control.reset();
    EXPECT_EQ(std::set<HRESULT>{CO_E_OBJNOTCONNECTED}, ask());
    EXPECT_EQ(0u, kept->Release());
    ::DestroyWindow(window);
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

TEST(ControlOfOldSystems, WorksWhereNobodyCanReadIt)
{
    ChildProcess system("ChoosesUnread");
    system.Finish();
}

TEST_F(Control, NotifiesTheParentOfTheMoment)
{
    ControlParent second;
    const auto describe = [](NMHDR& header, LRESULT& answer) {
        answer = 3;
        return header.code == kNotification ? "chosen by " + std::to_string(header.idFrom) : "";
    };
    m_parent.m_describe = second.m_describe = describe;
    EXPECT_TRUE(m_control->Choose(2));
    EXPECT_EQ(3, m_control->m_answer);
    m_control->SetParent(&second);
    EXPECT_TRUE(m_control->Choose(1) && m_control->NotifyCommand(kCommand));
    EXPECT_EQ("chosen by 5", m_parent.Told());
    EXPECT_EQ("chosen by 5 command:7", second.Told());
}

TEST_F(Control, MayEndInWhatItTells)
{
    const struct {
        const char* name;
        std::function<void(Halves&)> act;
        bool isDragged = false;
    } kActs[] = {
        {"notification", [](Halves& control) { EXPECT_FALSE(control.Choose(2)); }},
        {"command", [](Halves& control) { EXPECT_FALSE(control.NotifyCommand(kCommand)); }},
        {"language", [](Halves& control) { control.SendMessage(CZoLanguageSupport::GetUpdateMessage()); }},
        {"settings", [](Halves& control) { control.SendMessage(WM_SETTINGCHANGE); }},
        {"font", [](Halves& control) { control.SendMessage(WM_SETFONT, 0, TRUE); }},
        {"drag",
         [](Halves& control) {
             SendMouse(control, WM_MOUSEMOVE, {70, 5}, MK_LBUTTON);
         },
         true},
        {"dropped",
         [](Halves& control) {
             SendMouse(control, WM_LBUTTONUP, {70, 5});
         },
         true},
        {"Esc", [](Halves& control) { PressKey(control, VK_ESCAPE); }, true},
        {"disabled", [](Halves& control) { control.EnableWindow(FALSE); }, true},
        {"second drag", [](Halves& control) { EXPECT_FALSE(control.BeginDrag()); }, true},
    };
    const auto end = [this] { m_control.reset(); };
    m_parent.m_describe = [&](NMHDR&, LRESULT&) { return end(), ""; };
    m_parent.m_onTold = [&](const std::string&) { end(); };
    for (const auto& row : kActs) {
        SCOPED_TRACE(row.name);
        Make();
        EXPECT_TRUE(!row.isDragged || m_control->BeginDrag());
        m_control->m_tells = true;
        row.act(*m_control);
        EXPECT_EQ(nullptr, m_control);
        EXPECT_EQ(nullptr, ::GetCapture());
    }
}

TEST_F(Control, UndoesADragInEachWayItCanEnd)
{
    std::optional<ProcessCounts> before; // behind the first one
    const struct {
        const char* name;
        std::function<void(Halves&)> end;
        bool isUndone = true;
    } kEnds[] = {
        {"button",
         [](Halves& control) {
             SendMouse(control, WM_LBUTTONUP, {70, 5});
         },
         false},
        {"Esc", [](Halves& control) { PressKey(control, VK_ESCAPE); }},
        {"Esc, out of memory", [](Halves& control) { control.m_fails = true, PressKey(control, VK_ESCAPE); }},
        {"capture", [](Halves&) { ::ReleaseCapture(); }},
        {"another's capture", [&](Halves&) { m_parent.SetCapture(); }},
        {"mode", [](Halves& control) { control.SendMessage(WM_CANCELMODE); }},
        {"disabled", [](Halves& control) { control.EnableWindow(FALSE); }},
        {"hidden", [](Halves& control) { control.ShowWindow(SW_HIDE); }},
        {"destroyed", [](Halves& control) { control.DestroyWindow(); }},
    };
    for (const auto& row : kEnds) {
        SCOPED_TRACE(row.name);
        Make();
        ASSERT_TRUE(m_control->BeginDrag());
        SendMouse(*m_control, WM_MOUSEMOVE, {70, 5}, MK_LBUTTON);
        EXPECT_EQ(70, m_control->m_border);
        m_control->SendMessage(WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(m_control->m_hWnd)); // it has it still
        EXPECT_TRUE(m_control->IsDragging());
        row.end(*m_control);
        EXPECT_FALSE(m_control->IsDragging());
        EXPECT_EQ(row.isUndone ? 1 : 0, m_control->m_undone);
        EXPECT_EQ(row.isUndone ? 50 : 70, m_control->m_border);
        EXPECT_TRUE(::GetCapture() == nullptr || ::GetCapture() == m_parent.m_hWnd);
        ::ReleaseCapture();
        m_control.reset();
        before = before.value_or(ProcessCounts::Take());
    }
    EXPECT_EQ(*before, ProcessCounts::Take());
    Halves nowhere;
    EXPECT_FALSE(nowhere.BeginDrag());
}

TEST_F(Control, ObeysKeysInTheDirectionOfTheEye)
{
    const struct {
        UINT key;
        int modifiers, chosen, chosenMirrored;
    } kKeys[] = {{VK_RIGHT, 0, 2, 1}, {VK_LEFT, 0, 1, 2},         {VK_RIGHT, ZoKey::kControl, 1, 2},
                 {'A', 0, 1, 2},      {'A', ZoKey::kShift, 3, 3}, {VK_LEFT, ZoKey::kShift, 3, 3}};
    for (const DWORD direction : {0L, WS_EX_LAYOUTRTL}) {
        ControlParent parent(direction);
        Make(&parent);
        for (const auto& row : kKeys) {
            PressKey(*m_control, row.key, row.modifiers);
            EXPECT_EQ(direction == 0 ? row.chosen : row.chosenMirrored, m_control->m_chosen) << row.key;
        }
        m_control->UpdateWindow();
        const CClientDC dc(m_control.get());
        ::SetLayout(dc, 0);
        EXPECT_EQ(direction == 0 ? kInk : kPaper, ::GetPixel(dc, 0, 10));
        EXPECT_EQ(direction == 0 ? kPaper : kInk, ::GetPixel(dc, 99, 10));
        m_control.reset();
    }
}

TEST_F(Control, IsPutOverAWindowOfATemplate)
{
    class Dialog : public ControlParent {
    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            return message == WM_GETFONT ? reinterpret_cast<LRESULT>(::GetStockObject(ANSI_FIXED_FONT))
                                         : ControlParent::WindowProc(message, wParam, lParam);
        }
    } parent;
    EXPECT_FALSE(m_control->Create(kStyle, CRect(), &parent, 6)) << "it has a window";
    EXPECT_EQ(1, m_control->m_layouts);
    m_control->DestroyWindow();
    EXPECT_FALSE(m_control->Create(kStyle, CRect(), nullptr, 5));
    ASSERT_TRUE(CZoControl::RegisterControlClass());
    CWnd window;
    ASSERT_TRUE(window.Create("EDIT", "name", WS_CHILD | kStyle, CRect(0, 0, 100, 20), &parent, 5));
    window.Detach();
    ASSERT_TRUE(m_control->SubclassDlgItem(5, &parent));
    EXPECT_EQ(::GetStockObject(ANSI_FIXED_FONT), m_control->GetFontHandle());
    EXPECT_EQ(2, m_control->m_layouts);
    EXPECT_EQ(0, m_control->SendMessage(EM_GETLIMITTEXT)) << "the class below it does nothing";
}

namespace {

/// Leaves it to its popup when that closes.
class PopupOwner : public Halves, private ControlPopup::Client {
public:
    ControlPopup m_popup{*this};
    Halves m_content;
    int m_closed = 0;

    explicit PopupOwner(CWnd& parent)
    {
        EXPECT_TRUE(Create(kStyle, CRect(10, 10, 110, 30), &parent, 5));
        SetFocus();
    }
    BOOL Open() { return m_popup.Open(*this, m_content, 0, CSize(100, 60)); }

private:
    void OnPopupClosed() override { ++m_closed; }
};

} // namespace

TEST(ControlPopup, ClosesOnceWhateverBecomesOfItsOwner)
{
    ControlParent parent;
    const std::function<void(PopupOwner&)> kWays[] = {
        [](PopupOwner& owner) { owner.m_popup.Close(); },     [](PopupOwner& owner) { owner.EnableWindow(FALSE); },
        [](PopupOwner& owner) { owner.ShowWindow(SW_HIDE); }, [&](PopupOwner&) { parent.MoveWindow(60, 60, 400, 300); },
        [](PopupOwner& owner) { Click(owner, {5, 5}); },
    };
    for (const auto& way : kWays) {
        SCOPED_TRACE(&way - kWays);
        PopupOwner owner(parent);
        for (int times = 1; times <= 2; ++times) { // it can be opened again
            owner.EnableWindow();
            owner.ShowWindow(SW_SHOW);
            owner.SetFocus();
            parent.MoveWindow(50, 50, 400, 300);
            ASSERT_TRUE(owner.Open());
            EXPECT_FALSE(owner.Open()) << "it is";
            EXPECT_EQ(owner.m_hWnd, ::GetFocus());
            way(owner);
            EXPECT_TRUE(WaitUntil([&] { return owner.m_closed == times; }));
            EXPECT_EQ(nullptr, owner.m_content.m_hWnd);
        }
    }
}

TEST(ControlPopup, SurvivesFaults)
{
    ControlParent parent;
    PopupOwner owner(parent);
    FaultSource windows("windows");
    ZO_FAULTY_CALL(SetTimer) timer(windows, nullptr, 0);
    ZO_FAULTY_CALL(SetWindowsHookExA) hook(windows, nullptr, nullptr);
    RunFaultLoop(windows, [&](const FaultRun& run) {
        const BOOL opened = owner.Open();
        run.Stop();
        EXPECT_EQ(!run.Fired(), opened != FALSE);
        EXPECT_EQ(opened, owner.m_popup.IsOpen());
        owner.m_popup.Close();
        EXPECT_EQ(nullptr, owner.m_content.m_hWnd);
    });
}
