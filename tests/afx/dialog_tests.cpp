// Dialogs and message boxes, and the exchange of a dialog's data.
#include "test_window.h"

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
    void OnChange() { ++changes; }
    DECLARE_MESSAGE_MAP()

private:
    Act m_act;
};

BEGIN_MESSAGE_MAP(TestDialog, CDialog)
    ON_CONTROL(EN_CHANGE, kEdit, OnChange)
END_MESSAGE_MAP()

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
    TopWindow owner;
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
    TopWindow owner;
    const DialogDriver driver{[&](HWND) { owner.DestroyWindow(); }};
    EXPECT_EQ(IDABORT, CDialog(kDialog, &owner).DoModal());

    struct Failing : CDialog {
        explicit Failing(CWnd* parent) : CDialog(kDialog, parent) {}
        BOOL OnInitDialog() override { return PostMessage(WM_NULL); }
        BOOL PreTranslateMessage(MSG*) override { AfxThrowUserException(); }
    };
    TopWindow other;
    Failing failing(&other);
    EXPECT_THROW(failing.DoModal(), CUserException*);
    EXPECT_TRUE(failing.m_hWnd == nullptr && other.IsEnabled());
}

namespace {

/// A modeless dialog that deletes itself.
class Modeless : public CDialog {
protected:
    void OnOK() override { g_log += "OK ", DestroyWindow(); }
    void OnCancel() override { g_log += "cancelled ", CDialog::OnCancel(); }
    void PostNcDestroy() override { g_log += "gone", delete this; }
};

} // namespace

TEST(CDialog, IsModelessAndDeletesItself)
{
    struct Owner : TopWindow {
        BOOL OnCmdMsg(UINT id, int, void*, void*) override { return asked = id, TRUE; }
        UINT asked = 0; // the last command
    } owner;
    TakeLog();
    auto* dialog = new Modeless;
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
    EXPECT_EQ("cancelled OK gone", TakeLog());
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
    if (child.Argument(0) == "modal")
        EXPECT_EQ(5, Ended().DoModal());
    else
        EXPECT_TRUE((new Modeless)->Create(kSliderDialog));
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
    TopWindow main;
    AfxGetThread()->m_pMainWnd = &main;
    TakeLog();
    {
        const auto none = [](int, HOOKPROC, HINSTANCE, DWORD) WINAPI -> HHOOK { return nullptr; };
        const ImportPatch hook("ZOAFX.DLL", "SetWindowsHookExA", +none);
        EXPECT_EQ(-1, dialog.DoModal());
        EXPECT_FALSE((new Modeless)->CreateIndirect(memory));
        EXPECT_EQ(nullptr, GetWindow(main, GW_OWNER));
        EXPECT_EQ("gone", TakeLog());
    }
    auto* made = new Modeless;
    EXPECT_TRUE(made->CreateIndirect(memory));
    EXPECT_EQ(main.m_hWnd, GetWindow(made->m_hWnd, GW_OWNER));
    made->DestroyWindow();
    EXPECT_FALSE((new Modeless)->Create("none"));
    EXPECT_FALSE((new Modeless)->CreateIndirect(HGLOBAL{}));
    EXPECT_FALSE((new Modeless)->CreateIndirect(LPCDLGTEMPLATE{}));
    EXPECT_EQ("gonegonegonegone", TakeLog());
    AfxGetThread()->m_pMainWnd = nullptr;
    EXPECT_EQ(0u, GlobalFlags(memory) & GMEM_LOCKCOUNT);
    GlobalFree(memory);
}

TEST(ModalWindows, WithoutParentBelongToThePopupThatWasActiveLast)
{
    TopWindow main, apart, owned(WS_POPUP | WS_VISIBLE, main.m_hWnd);
    AfxGetThread()->m_pMainWnd = &main;
    const std::function<INT_PTR()> modals[] = {[] { return TestDialog([](TestDialog&) {}).DoModal(); },
                                               [] { return AfxMessageBox("text"); }};
    for (const auto& modal : modals) {
        for (const TopWindow* active : {&owned, &main}) {
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
    for (const char* text : {"-32769", "32768"})
        ExpectExchange(app, text, short{7}, "7", "-32768 to 32767 | 48 | 61714");
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
    const auto exchange = [&](CDataExchange* context) {
        DDX_Text(context, kEdit, value);
        DDV_MaxChars(context, value, 3);
    };
    InDialog(exchange, [&](TestDialog& open) {
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

TEST(DataExchange, MovesChoicesAndPositions)
{
    enum : UINT_PTR { kBox = 1005, kScroll, kSlider };
    CString text;
    int number = 0;
    CEdit edit;
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
        using TextExchange = void(AFXAPI*)(CDataExchange*, int, CString&);
        const std::tuple<TextExchange, int, LPCSTR, int, LPCSTR> texts[] = {
            {&DDX_LBString, kList, "ALPH", 0, "alphabet"},    {&DDX_LBString, kList, "", -1, ""},
            {&DDX_LBStringExact, kList, "Alpha", 2, "alpha"}, {&DDX_LBStringExact, kList, "alp", -1, ""},
            {&DDX_CBString, kCombo, "alph", 0, "alphabet"},   {&DDX_CBStringExact, kCombo, "alp", -1, ""},
            {&DDX_CBString, kBox, "typed", -1, "typed"},      {&DDX_CBStringExact, kBox, "alpha", 2, "alpha"},
        };
        for (const auto& [exchange, control, before, row, after] : texts) {
            open.exchange = [&, exchange = exchange, control = control](CDataExchange* context) {
                exchange(context, control, text);
                DDV_MaxChars(context, text, 9);
            };
            text = before;
            EXPECT_TRUE(open.UpdateData(FALSE));
            EXPECT_EQ(row, ChosenRow(window, control)) << before;
            EXPECT_TRUE(open.UpdateData());
            EXPECT_STREQ(after, text) << control;
        }
        EXPECT_EQ(9, ::SendMessageA(::GetWindow(::GetDlgItem(window, kBox), GW_CHILD), EM_GETLIMITTEXT, 0, 0));
        using NumberExchange = void(AFXAPI*)(CDataExchange*, int, int&);
        const std::tuple<NumberExchange, int, UINT, UINT, int, int> numbers[] = {
            {&DDX_Check, kCheck, BM_GETCHECK, BM_SETCHECK, BST_CHECKED, BST_UNCHECKED},
            {&DDX_LBIndex, kList, LB_GETCURSEL, LB_SETCURSEL, 2, 0},
            {&DDX_CBIndex, kCombo, CB_GETCURSEL, CB_SETCURSEL, 1, 2},
            {&DDX_Scroll, kScroll, SBM_GETPOS, SBM_SETPOS, 30, 31},
            {&DDX_Slider, kSlider, TBM_GETPOS, TBM_SETPOS, 40, 41},
        };
        for (const auto& [exchange, control, get, set, before, after] : numbers) {
            open.exchange = [&, exchange = exchange, control = control](CDataExchange* context) {
                exchange(context, control, number);
            };
            number = before;
            EXPECT_TRUE(open.UpdateData(FALSE));
            EXPECT_EQ(before, ::SendDlgItemMessageA(window, control, get, 0, 0)) << control;
            ::SendDlgItemMessageA(window, control, set, static_cast<WPARAM>(after), after);
            EXPECT_TRUE(open.UpdateData());
            EXPECT_EQ(after, number) << control;
        }
        open.exchange = [&](CDataExchange* context) {
            DDX_Radio(context, kRadio, number);
            DDX_Control(context, kEdit, edit);
        };
        number = 1;
        EXPECT_TRUE(open.UpdateData(FALSE));
        EXPECT_TRUE(IsChecked(window, kRadio + 1));
        EXPECT_EQ(::GetDlgItem(window, kEdit), edit.m_hWnd);
        for (const auto& [button, choice] : {std::pair(int{kNextGroup}, -1), {int{kRadio}, 0}}) {
            ::CheckRadioButton(window, kRadio, kNextGroup, button);
            EXPECT_TRUE(open.UpdateData());
            EXPECT_EQ(choice, number) << "the next group's button is none of this one's";
        }
    };
    LoadLibraryA("comctl32.dll"); // the slider's
    InDialog([](CDataExchange*) {}, act);
}

TEST(DataExchange, IsOneAtATimeAndAmongItself)
{
    TellingApp app;
    CString value = "text";
    const auto exchange = [&](CDataExchange* context) {
        EXPECT_FALSE(context->m_pDlgWnd->UpdateData());
        DDX_Text(context, kEdit, value);
    };
    InDialog(exchange, [&](TestDialog& open) {
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
