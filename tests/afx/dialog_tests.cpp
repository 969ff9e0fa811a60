// Dialogs and message boxes, and the exchange of a dialog's data.
#include "support/test.h"

#include <commctrl.h>

namespace {

constexpr UINT kDialog = 4001, kSliderDialog = 4002; // of host.rc
enum Control { kEdit = 1001, kList, kCombo, kCheck, kRadio = 1010, kNextGroup = kRadio + 3 };

/// Exchanges what it is told to, and acts when it has been filled.
class TestDialog : public CDialog {
public:
    using Act = std::function<void(TestDialog&)>;
    using Exchange = std::function<void(CDataExchange*)>;

    explicit TestDialog(Act act, CWnd* parent = nullptr) : CDialog(kDialog, parent), m_act(std::move(act)) {}

    Exchange exchange = [](CDataExchange*) {};
    int changes = 0; // notified by the field

    BOOL OnInitDialog() override
    {
        EXPECT_EQ(this, FromHandlePermanent(m_hWnd));
        CDialog::OnInitDialog();
        m_act(*this);
        return TRUE;
    }

protected:
    void DoDataExchange(CDataExchange* context) override { exchange(context); }
    afx_msg void OnChange() { ++changes; }
    DECLARE_MESSAGE_MAP()

private:
    Act m_act;
};

BEGIN_MESSAGE_MAP(TestDialog, CDialog)
    ON_CONTROL(EN_CHANGE, kEdit, OnChange)
END_MESSAGE_MAP()

class Window : public CWnd {
public:
    explicit Window(HWND owner = nullptr)
    {
        EXPECT_TRUE(CreateEx(0, nullptr, "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, owner, nullptr));
    }
    bool IsEnabled() const { return IsWindowEnabled() != FALSE; }
    BOOL OnCmdMsg(UINT id, int, void*, void*) override { return asked = id, TRUE; }

    UINT asked = 0; // the last command
};

void PressKey(TestDialog& dialog, WPARAM key)
{
    ::PostMessageA(::GetDlgItem(dialog.m_hWnd, kEdit), WM_KEYDOWN, key, 0);
}

/// Takes WM_QUIT out of the queue. \return its code, -1 when there is none.
int TakeQuit()
{
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) ? static_cast<int>(message.wParam) : -1;
}

} // namespace

TEST(CDialog, EndsAsItIsTold)
{
    const struct {
        const char* name;
        TestDialog::Act act;
        INT_PTR result;
        int exchanges = 0; // to the member; one that is not the last is refused
    } cases[] = {
        {"OK", [](TestDialog& d) { d.PostMessage(WM_COMMAND, IDOK); }, IDOK, 1},
        {"Cancel", [](TestDialog& d) { d.PostMessage(WM_COMMAND, IDCANCEL); }, IDCANCEL},
        {"Enter, until it is accepted", [](TestDialog& d) { PressKey(d, VK_RETURN), PressKey(d, VK_RETURN); }, IDOK, 2},
        {"Escape", [](TestDialog& d) { PressKey(d, VK_ESCAPE); }, IDCANCEL},
        {"closed", [](TestDialog& d) { d.PostMessage(WM_CLOSE); }, IDCANCEL},
        {"ended before it was shown", [](TestDialog& d) { d.EndDialog(43); }, 43},
        {"quit, for the loop outside", [](TestDialog&) { PostQuitMessage(5); }, -1},
    };
    Window owner;
    CStatic child;
    ASSERT_TRUE(child.Create("", WS_VISIBLE, CRect(0, 0, 10, 10), &owner));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto run = [&](bool enabled) {
            owner.EnableWindow(enabled);
            CString text;
            TestDialog dialog(
                [&](TestDialog& d) {
                    EXPECT_EQ(owner.m_hWnd, GetWindow(d.m_hWnd, GW_OWNER)) << "a child window cannot own a dialog";
                    EXPECT_FALSE(owner.IsEnabled()) << "the owner can be used behind the dialog";
                    d.SetDlgItemText(kEdit, "typed");
                    c.act(d);
                },
                &child);
            int exchanges = 0;
            dialog.exchange = [&](CDataExchange* context) {
                DDX_Text(context, kEdit, text);
                if (context->m_bSaveAndValidate && ++exchanges < c.exchanges)
                    context->Fail();
            };
            EXPECT_EQ(c.result, dialog.DoModal());
            EXPECT_EQ(enabled, owner.IsEnabled());
            EXPECT_EQ(nullptr, dialog.m_hWnd);
            EXPECT_EQ(c.exchanges, exchanges);
            EXPECT_STREQ(c.result == IDOK ? "typed" : "", text);
            EXPECT_EQ(c.result == -1 ? 5 : -1, TakeQuit());
        };
        run(false); // also for what the window system keeps
        ZO_EXPECT_NO_LEAK(run(true));
    }
    EXPECT_EQ(owner.m_hWnd, GetActiveWindow()) << "the owner gets the activation back";
    EXPECT_EQ(-1, CDialog(9999, &owner).DoModal()) << "without a template";
    EXPECT_TRUE(owner.IsEnabled());
}

TEST(CDialog, EndsWithItsOwner)
{
    Window owner;
    const DialogDriver driver{[&](HWND) { owner.DestroyWindow(); }};
    EXPECT_EQ(IDABORT, CDialog(kDialog, &owner).DoModal());

    struct Failing : CDialog {
        explicit Failing(CWnd* parent) : CDialog(kDialog, parent) {}
        BOOL OnInitDialog() override { return PostMessage(WM_NULL); }
        BOOL PreTranslateMessage(MSG*) override { AfxThrowUserException(); }
    };
    Window other;
    Failing failing(&other);
    EXPECT_THROW(failing.DoModal(), CUserException*);
    EXPECT_TRUE(failing.m_hWnd == nullptr && other.IsEnabled());
}

namespace {

/// A modeless dialog that deletes itself.
class Modeless : public CDialog {
public:
    explicit Modeless(std::string& events) : m_events(events) {}

protected:
    void OnOK() override { m_events += "OK ", DestroyWindow(); }
    void OnCancel() override { m_events += "cancelled ", CDialog::OnCancel(); }
    void PostNcDestroy() override { m_events += "gone", delete this; }

private:
    std::string& m_events;
};

} // namespace

TEST(CDialog, IsModelessAndDeletesItself)
{
    Window owner;
    std::string events;
    auto* dialog = new Modeless(events);
    ASSERT_TRUE(dialog->Create(kDialog, &owner));
    const HWND window = dialog->m_hWnd;
    EXPECT_EQ(owner.m_hWnd, GetWindow(window, GW_OWNER));
    EXPECT_TRUE(owner.IsEnabled());
    for (const UINT command : {0x7FFF, 0x8000, 0xEFFF, 0xF000}) {
        dialog->SendMessage(WM_COMMAND, command);
        EXPECT_EQ(command < 0x8000 ? 0 : (std::min)(command, 0xEFFFu), owner.asked);
    }
    dialog->SendMessage(WM_COMMAND, MAKEWPARAM(0x8001, EN_CHANGE), reinterpret_cast<LPARAM>(window));
    EXPECT_EQ(0xEFFFu, owner.asked) << "what a control notifies stays";
    dialog->ShowWindow(SW_SHOW);
    CRect area(10, 10, 60, 22), field = AreaOf(window, kEdit); // of the template
    dialog->MapDialogRect(&area);
    MapWindowPoints(nullptr, window, reinterpret_cast<LPPOINT>(&field), 2);
    EXPECT_TRUE(EqualRect(&area, &field));
    dialog->GotoDlgCtrl(dialog->GetDlgItem(kEdit));
    Key(window, VK_TAB);
    EXPECT_EQ(IDOK, FocusOf(window));
    dialog->PrevDlgCtrl();
    EXPECT_EQ(kEdit, FocusOf(window));
    dialog->NextDlgCtrl();
    EXPECT_EQ(IDOK, FocusOf(window));
    EXPECT_EQ(DWORD{MAKELONG(IDOK, DC_HASDEFID)}, dialog->GetDefID());
    for (const UINT button : {IDCANCEL, IDOK}) {
        dialog->ShowWindow(SW_SHOW);
        dialog->GotoDlgCtrl(dialog->GetDlgItem(kEdit));
        dialog->SetDefID(button);
        Key(window, VK_RETURN);
        EXPECT_FALSE(IsWindowVisible(window));
        EXPECT_EQ(button == IDCANCEL, IsWindow(window) != FALSE);
    }
    EXPECT_EQ("cancelled OK gone", events);
}

std::string s_bound; // functions that the framework looked up

/// In a process of its own, for the library of the common controls stays. Wine loads it by itself.
ZO_CHILD(OpensCommonControls)
{
    const auto none = +[](HINSTANCE, LPCWSTR, WNDCLASSW*) WINAPI -> BOOL { return FALSE; };
    const auto bind = +[](HMODULE module, LPCSTR name) WINAPI { return s_bound += name, GetProcAddress(module, name); };
    const ImportPatch unknown("ZOAFX.DLL", "GetClassInfoW", none), asked("ZOAFX.DLL", "GetProcAddress", bind);
    struct Ended : CDialog {
        Ended() : CDialog(kSliderDialog) {}
        BOOL OnInitDialog() override { return EndDialog(5), TRUE; }
    };
    std::string events;
    if (child.Argument(0) == "modal")
        EXPECT_EQ(5, Ended().DoModal());
    else
        EXPECT_TRUE((new Modeless(events))->Create(kSliderDialog));
    EXPECT_EQ("InitCommonControlsEx", s_bound);
}

TEST(CDialog, IsMadeFromMemoryOrNotAtAll)
{
    for (const char* kind : {"modal", "modeless"})
        ChildProcess("OpensCommonControls", {kind}).Finish();
    const HRSRC resource = FindResourceA(nullptr, MAKEINTRESOURCE(kDialog), RT_DIALOG);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, SizeofResource(nullptr, resource));
    std::memcpy(GlobalLock(memory), LockResource(LoadResource(nullptr, resource)), GlobalSize(memory));
    GlobalUnlock(memory);
    struct Indirect : CDialog {
        BOOL OnInitDialog() override { return EndDialog(5), TRUE; }
    } dialog;
    EXPECT_FALSE(dialog.InitModalIndirect(HGLOBAL{}));
    EXPECT_EQ(-1, dialog.DoModal());
    EXPECT_TRUE(dialog.InitModalIndirect(memory));
    EXPECT_EQ(5, dialog.DoModal());
    Window main;
    AfxGetThread()->m_pMainWnd = &main;
    std::string events;
    auto* made = new Modeless(events);
    EXPECT_TRUE(made->CreateIndirect(memory));
    EXPECT_EQ(main.m_hWnd, GetWindow(made->m_hWnd, GW_OWNER));
    made->DestroyWindow();
    EXPECT_FALSE((new Modeless(events))->Create("none"));
    EXPECT_FALSE((new Modeless(events))->CreateIndirect(HGLOBAL{}));
    EXPECT_FALSE((new Modeless(events))->CreateIndirect(LPCDLGTEMPLATE{}));
    EXPECT_EQ("gonegonegonegone", events);
    AfxGetThread()->m_pMainWnd = nullptr;
    EXPECT_EQ(0u, GlobalFlags(memory) & GMEM_LOCKCOUNT);
    GlobalFree(memory);
}

TEST(ModalWindows, WithoutParentBelongToThePopupThatWasActiveLast)
{
    Window main, apart, owned(main.m_hWnd);
    AfxGetThread()->m_pMainWnd = &main;
    const std::function<INT_PTR()> modals[] = {[] { return TestDialog([](TestDialog&) {}).DoModal(); },
                                               [] { return AfxMessageBox("text"); }};
    for (const auto& modal : modals) {
        for (const Window* active : {&owned, &main}) {
            SetActiveWindow(active->m_hWnd);
            const DialogDriver driver({[&](HWND window) {
                EXPECT_EQ(active->m_hWnd, GetWindow(window, GW_OWNER));
                EXPECT_FALSE(active->IsEnabled());
                EXPECT_FALSE(main.IsEnabled()) << "nor can the windows above be used";
                EXPECT_TRUE(apart.IsEnabled()) << "a window of its own";
                Press(window, IDOK);
            }});
            EXPECT_EQ(IDOK, modal());
            EXPECT_EQ(active->m_hWnd, GetActiveWindow());
            EXPECT_TRUE(owned.IsEnabled() && main.IsEnabled());
        }
    }
    AfxGetThread()->m_pMainWnd = nullptr;
}

// Exchange of data ----------------------------------------------------------------------------------------------------

namespace {

std::string FieldOf(const TestDialog& dialog) { return TextOf(dialog.m_hWnd, kEdit); }

/// Whether the field has the focus, with all of its text selected.
bool IsFieldAskedFor(const TestDialog& dialog)
{
    const LRESULT selection = ::SendDlgItemMessageA(dialog.m_hWnd, kEdit, EM_GETSEL, 0, 0);
    return FocusOf(dialog.m_hWnd) == kEdit && selection == MAKELONG(0, FieldOf(dialog).size());
}

/// Acts in a dialog that exchanges so; its field has not the focus.
void InDialog(const TestDialog::Exchange& exchange, const TestDialog::Act& act)
{
    TestDialog dialog([&](TestDialog& open) {
        ::SetFocus(::GetDlgItem(open.m_hWnd, IDOK));
        act(open);
        open.EndDialog(IDOK);
    });
    dialog.exchange = exchange;
    EXPECT_EQ(IDOK, dialog.DoModal());
}

template <class NUMBER> void ExpectExchange(TellingApp& app, const std::string& text, NUMBER after,
                                            const std::string& shown, const std::string& told = {})
{
    SCOPED_TRACE(text);
    NUMBER value = 7;
    InDialog([&](CDataExchange* context) { DDX_Text(context, kEdit, value); },
             [&](TestDialog& open) {
                 open.SetDlgItemText(kEdit, text.c_str());
                 app.told.clear();
                 EXPECT_EQ(told.empty(), open.UpdateData() != FALSE);
                 EXPECT_EQ(after, value);
                 EXPECT_EQ(told, app.told);
                 EXPECT_EQ(!told.empty(), IsFieldAskedFor(open));
                 EXPECT_TRUE(open.UpdateData(FALSE));
                 EXPECT_EQ(shown, FieldOf(open));
             });
}

} // namespace

TEST(DataExchange, ReadsAndShowsNumbers)
{
    TellingApp app;
    for (const char* text : {"", " ", "x", "12x", "1 2", "--1", "0x10", "1.5", "2147483648", "99999999999999999999"})
        ExpectExchange(app, text, 7, "7", "whole | 48 | 61712");
    ExpectExchange(app, " -12 ", -12, "-12");
    ExpectExchange(app, "+12", 12l, "12");
    ExpectExchange(app, "2147483647", INT_MAX, "2147483647");
    ExpectExchange(app, "-2147483648", LONG_MIN, "-2147483648");
    ExpectExchange(app, "4294967295", UINT_MAX, "4294967295");
    ExpectExchange(app, "4294967296", 7ul, "7", "no sign | 48 | 61719");
    ExpectExchange(app, "-1", 7u, "7", "no sign | 48 | 61719");
    ExpectExchange(app, "255", BYTE{255}, "255");
    ExpectExchange(app, "256", BYTE{7}, "7", "0 to 255 | 48 | 61714");
    ExpectExchange(app, "-32768", short{-32768}, "-32768");
    ExpectExchange(app, "32768", short{7}, "7", "-32768 to 32767 | 48 | 61714");
}

TEST(DataExchange, ReadsAndShowsFractions)
{
    TellingApp app;
    ExpectExchange(app, "10.1", 10.1f, "10.1");
    ExpectExchange(app, " +.25", 0.25, "0.25");
    ExpectExchange(app, "-1e3", -1000.0, "-1000");
    ExpectExchange(app, "0.1234567890123456", 0.1234567890123456, "0.123456789012346");
    for (const char* text : {"", "-", ".", "1.5x", "1,5", "1.2.3", "nan", "-inf", "+-1", "0x10", "1e39"})
        ExpectExchange(app, text, 7.0f, "7", "number | 48 | 61713");
    SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, ",");
    ExpectExchange(app, "10,5", 10.5, "10,5");
    ExpectExchange(app, "1.000", 7.0, "7", "number | 48 | 61713");
    SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, ".");
}

TEST(DataExchange, ChecksRanges)
{
    TellingApp app;
    CWnd none;
    const auto told = [&](auto check, auto value, auto least, auto most, BOOL saving = TRUE) {
        CDataExchange context(&none, saving);
        app.told.clear();
        try {
            check(&context, value, least, most);
        } catch (CUserException* e) {
            e->Delete();
        }
        return app.told;
    };
    EXPECT_EQ("1 to 5 | 48 | 61714", told(&DDV_MinMaxByte, BYTE{6}, BYTE{1}, BYTE{5}));
    EXPECT_EQ("-2 to 5 | 48 | 61714", told(&DDV_MinMaxShort, short{6}, short{-2}, short{5}));
    EXPECT_EQ("-2 to 5 | 48 | 61714", told(&DDV_MinMaxInt, -3, -2, 5));
    EXPECT_EQ("",
              told(&DDV_MinMaxInt, -2, -2, 5) + told(&DDV_MinMaxInt, 5, -2, 5) + told(&DDV_MinMaxInt, 6, 0, 5, FALSE));
    EXPECT_EQ("-2 to 5 | 48 | 61714", told(&DDV_MinMaxLong, 6l, -2l, 5l));
    EXPECT_EQ("1 to 2147483648 | 48 | 61714", told(&DDV_MinMaxUInt, 0x80000001u, 1u, 0x80000000u));
    EXPECT_EQ("1 to 2147483648 | 48 | 61714", told(&DDV_MinMaxDWord, 0ul, 1ul, 0x80000000ul));
    EXPECT_EQ("from 0.5 to 1.5 | 48 | 61715", told(&DDV_MinMaxFloat, 1.6f, 0.5f, 1.5f));
    EXPECT_EQ("from -0.5 to 1.5 | 48 | 61715", told(&DDV_MinMaxDouble, -0.6, -0.5, 1.5));
}

TEST(DataExchange, BoundsTexts)
{
    TellingApp app;
    CString value = "abcd";
    InDialog(
        [&](CDataExchange* context) {
            DDX_Text(context, kEdit, value);
            DDV_MaxChars(context, value, 3);
        },
        [&](TestDialog& open) {
            EXPECT_EQ(3, ::SendDlgItemMessageA(open.m_hWnd, kEdit, EM_GETLIMITTEXT, 0, 0));
            EXPECT_EQ("", app.told);
            EXPECT_FALSE(open.UpdateData());
            EXPECT_EQ("at most 3 | 48 | 61716", app.told);
            EXPECT_TRUE(IsFieldAskedFor(open));
            open.SetDlgItemText(kEdit, "abc");
            EXPECT_TRUE(open.UpdateData());
            EXPECT_STREQ("abc", value);
        });
}

TEST(DataExchange, MovesChoices)
{
    int check = BST_CHECKED, list = 2, combo = 1, radio = 1;
    CEdit edit;
    InDialog(
        [&](CDataExchange* context) {
            DDX_Check(context, kCheck, check);
            DDX_LBIndex(context, kList, list);
            DDX_CBIndex(context, kCombo, combo);
            DDX_Radio(context, kRadio, radio);
            DDX_Control(context, kEdit, edit);
        },
        [&](TestDialog& open) {
            const HWND window = open.m_hWnd;
            for (const char* row : {"a", "b", "c"}) {
                ::SendDlgItemMessageA(window, kList, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
                ::SendDlgItemMessageA(window, kCombo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
            }
            EXPECT_TRUE(open.UpdateData(FALSE));
            EXPECT_TRUE(IsChecked(window, kCheck));
            EXPECT_EQ(2, ChosenRow(window, kList));
            EXPECT_EQ(1, ChosenRow(window, kCombo));
            EXPECT_TRUE(IsChecked(window, kRadio + 1));
            EXPECT_EQ(::GetDlgItem(window, kEdit), edit.m_hWnd);
            ::CheckDlgButton(window, kCheck, BST_UNCHECKED);
            Choose(window, kList, 0);
            Choose(window, kCombo, 2);
            ::CheckRadioButton(window, kRadio, kNextGroup, kNextGroup);
            EXPECT_TRUE(open.UpdateData());
            EXPECT_EQ(BST_UNCHECKED, check);
            EXPECT_EQ(0, list);
            EXPECT_EQ(2, combo);
            EXPECT_EQ(-1, radio) << "the next group's button";
            ::CheckDlgButton(window, kRadio, BST_CHECKED);
            EXPECT_TRUE(open.UpdateData());
            EXPECT_EQ(0, radio);
        });
}

TEST(DataExchange, MovesTextsOfListsAndPositions)
{
    using Exchange = void(AFXAPI*)(CDataExchange*, int, CString&);
    enum : UINT_PTR { kBox = 1005, kScroll, kSlider };
    const std::tuple<Exchange, int, LPCSTR, int, LPCSTR> cases[] = {
        {&DDX_LBString, kList, "ALPH", 0, "alphabet"},    {&DDX_LBString, kList, "", -1, ""},
        {&DDX_LBStringExact, kList, "Alpha", 2, "alpha"}, {&DDX_LBStringExact, kList, "alp", -1, ""},
        {&DDX_CBString, kCombo, "alph", 0, "alphabet"},   {&DDX_CBStringExact, kCombo, "alp", -1, ""},
        {&DDX_CBString, kBox, "typed", -1, "typed"},      {&DDX_CBStringExact, kBox, "alpha", 2, "alpha"},
    };
    LoadLibraryA("comctl32.dll"); // the slider's
    CString value;
    int scroll = 30, slider = 40;
    const auto act = [&](TestDialog& open) {
        const HWND window = open.m_hWnd;
        for (const auto& [name, id] :
             {std::pair("COMBOBOX", kBox), {"SCROLLBAR", kScroll}, {"msctls_trackbar32", kSlider}})
            CreateWindowA(name, "", WS_CHILD | CBS_DROPDOWN, 0, 0, 50, 50, window, HMENU(id), nullptr, nullptr);
        ::SetScrollRange(::GetDlgItem(window, kScroll), SB_CTL, 0, 100, FALSE);
        for (LPCSTR row : {"alphabet", "beta", "alpha"}) {
            ::SendDlgItemMessageA(window, kList, LB_ADDSTRING, 0, LPARAM(row));
            for (const int box : {int{kCombo}, int{kBox}})
                ::SendDlgItemMessageA(window, box, CB_ADDSTRING, 0, LPARAM(row));
        }
        for (const auto& [exchange, control, before, row, after] : cases) {
            open.exchange = [&, exchange = exchange, control = control](CDataExchange* context) {
                exchange(context, control, value);
                DDV_MaxChars(context, value, 9);
                DDX_Scroll(context, kScroll, scroll);
                DDX_Slider(context, kSlider, slider);
            };
            value = before;
            EXPECT_TRUE(open.UpdateData(FALSE));
            EXPECT_EQ(row, ChosenRow(window, control)) << before;
            EXPECT_TRUE(open.UpdateData());
            EXPECT_STREQ(after, value) << control;
        }
        EXPECT_EQ(9, ::SendMessageA(::GetWindow(::GetDlgItem(window, kBox), GW_CHILD), EM_GETLIMITTEXT, 0, 0));
        EXPECT_EQ(30, ::SendDlgItemMessageA(window, kScroll, SBM_SETPOS, 31, 0));
        ::SendDlgItemMessageA(window, kSlider, TBM_SETPOS, TRUE,
                              ::SendDlgItemMessageA(window, kSlider, TBM_GETPOS, 0, 0) + 1);
        EXPECT_TRUE(open.UpdateData());
        EXPECT_EQ("31 41", std::to_string(scroll) + ' ' + std::to_string(slider));
    };
    InDialog([](CDataExchange*) {}, act);
}

TEST(DataExchange, IsOneAtATimeAndAmongItself)
{
    TellingApp app;
    CString value = "text";
    InDialog(
        [&](CDataExchange* context) {
            EXPECT_FALSE(context->m_pDlgWnd->UpdateData());
            DDX_Text(context, kEdit, value);
        },
        [&](TestDialog& open) {
            EXPECT_EQ("text", FieldOf(open));
            EXPECT_EQ(0, open.changes) << "notified in the middle of the exchange";
            open.SetDlgItemText(kEdit, "typed");
            EXPECT_EQ(1, open.changes);
            open.exchange = [&](CDataExchange* context) { DDX_Text(context, kEdit - 1, value); };
            EXPECT_FALSE(open.UpdateData()) << "without the control";
            EXPECT_NE("", app.told);
            EXPECT_STREQ("text", value);
        });
}

TEST(DataExchange, PutsTextsInTheirPlaces)
{
    CString text = "before";
    AfxFormatString2(text, 1720, "%2", "a");
    EXPECT_STREQ("a before %2, 100%% and %3 of %", text);
    AfxFormatString1(text, 1720, "b");
    EXPECT_STREQ("%2 before b, 100%% and %3 of %", text);
    AfxFormatString1(text, 9999, "b");
    EXPECT_STREQ("", text);
}
