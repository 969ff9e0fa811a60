// Dialogs from templates in memory, driven by messages as a person would cause them.

#include "support/test.h"

namespace {

constexpr WORD kEdit = 1001;

/// A dialog template with a text field, OK and Cancel.
class Template {
public:
    Template()
    {
        Append({0, 0, 0, 0}); // style and extended style: set below
        Append({3, 10, 10, 120, 60, 0, 0});
        AppendText(L"Dialog");
        AppendControl(kEdit, 0x81, 10, WS_TABSTOP | WS_BORDER);
        AppendControl(IDOK, 0x80, 25, WS_TABSTOP | BS_DEFPUSHBUTTON);
        AppendControl(IDCANCEL, 0x80, 40, WS_TABSTOP);
        reinterpret_cast<DLGTEMPLATE*>(m_words)->style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    }
    LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_words); }

private:
    void Append(std::initializer_list<WORD> words)
    {
        for (const WORD word : words)
            m_words[m_count++] = word;
    }
    void AppendText(const wchar_t* text)
    {
        do
            m_words[m_count++] = static_cast<WORD>(*text);
        while (*text++ != L'\0');
    }
    void AppendControl(WORD id, WORD type, WORD y, DWORD style)
    {
        m_count += m_count % 2; // each begins at a double word
        style |= WS_CHILD | WS_VISIBLE;
        Append({LOWORD(style), HIWORD(style), 0, 0, 10, y, 50, 12, id, 0xFFFF, type});
        AppendText(L"");
        Append({0});
    }

    alignas(DWORD) WORD m_words[256] = {};
    size_t m_count = 0;
};

class TestDialog : public CDialog {
public:
    explicit TestDialog(CWnd* parent = nullptr) { InitModalIndirect(m_template.Get(), parent); }

    std::function<void(TestDialog&)> atInit;
    std::function<bool(TestDialog&)> atOk = [](TestDialog&) { return true; };
    CString text;

    BOOL OnInitDialog() override
    {
        EXPECT_EQ(this, FromHandlePermanent(m_hWnd));
        atInit(*this);
        return CDialog::OnInitDialog();
    }

protected:
    void OnOK() override
    {
        GetDlgItem(kEdit)->GetWindowText(text);
        if (atOk(*this))
            CDialog::OnOK();
    }

private:
    Template m_template;
};

class Owner : public CWnd {
public:
    Owner()
    {
        EXPECT_TRUE(CreateEx(0, nullptr, "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr));
    }
};

void PressKey(TestDialog& dialog, WPARAM key)
{
    ::PostMessageA(::GetDlgItem(dialog.m_hWnd, kEdit), WM_KEYDOWN, key, 0);
}

/// Takes WM_QUIT out of the queue. \return its code, -1 when there is none.
int TakeQuit()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            return static_cast<int>(message.wParam);
        DispatchMessageA(&message);
    }
    return -1;
}

} // namespace

TEST(CDialog, EndsAsItIsTold)
{
    const struct {
        const char* name;
        std::function<void(TestDialog&)> atInit;
        INT_PTR result;
    } cases[] = {
        {"OK", [](TestDialog& d) { d.PostMessage(WM_COMMAND, IDOK); }, IDOK},
        {"Cancel", [](TestDialog& d) { d.PostMessage(WM_COMMAND, IDCANCEL); }, IDCANCEL},
        {"Enter", [](TestDialog& d) { PressKey(d, VK_RETURN); }, IDOK},
        {"Escape", [](TestDialog& d) { PressKey(d, VK_ESCAPE); }, IDCANCEL},
        {"closed", [](TestDialog& d) { d.PostMessage(WM_CLOSE); }, IDCANCEL},
        {"other result",
         [](TestDialog& d) {
             d.atOk = [](TestDialog& e) {
                 e.EndDialog(42);
                 return false;
             };
             d.PostMessage(WM_COMMAND, IDOK);
         },
         42},
        {"ended before it was shown", [](TestDialog& d) { d.EndDialog(43); }, 43},
    };
    Owner owner;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto run = [&] {
            TestDialog dialog(&owner);
            bool ownerEnabled = true;
            dialog.atInit = [&](TestDialog& d) {
                ownerEnabled = IsWindowEnabled(owner.m_hWnd) != FALSE;
                d.SetDlgItemText(kEdit, "typed");
                c.atInit(d);
            };
            EXPECT_EQ(c.result, dialog.DoModal());
            EXPECT_FALSE(ownerEnabled) << "the owner can be used behind the dialog";
            EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
            EXPECT_EQ(nullptr, dialog.m_hWnd);
            if (c.result == IDOK) {
                EXPECT_STREQ("typed", dialog.text);
            }
        };
        run(); // once for what the window system keeps
        ZO_EXPECT_NO_LEAK(run());
    }
    EXPECT_EQ(owner.m_hWnd, GetActiveWindow()) << "the owner gets the activation back";
}

TEST(CDialog, StaysOpenWhenItRefusesToClose)
{
    TestDialog dialog;
    int refused = 0;
    dialog.atInit = [](TestDialog& d) {
        d.PostMessage(WM_COMMAND, IDOK);
        d.PostMessage(WM_COMMAND, IDOK);
    };
    dialog.atOk = [&](TestDialog&) { return ++refused == 2; };
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(2, refused);
}

TEST(CDialog, PassesQuitOnToTheLoopOutside)
{
    Owner owner;
    TestDialog dialog(&owner);
    dialog.atInit = [](TestDialog&) { PostQuitMessage(5); };
    EXPECT_EQ(-1, dialog.DoModal());
    EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
    EXPECT_EQ(5, TakeQuit());
}

TEST(CDialog, LeavesADisabledOwnerDisabled)
{
    Owner owner;
    owner.EnableWindow(FALSE);
    TestDialog dialog(&owner);
    dialog.atInit = [](TestDialog& d) { d.PostMessage(WM_COMMAND, IDOK); };
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_FALSE(IsWindowEnabled(owner.m_hWnd));
}

TEST(CDialog, WithoutParentBelongsToThePopupThatWasActiveLast)
{
    Owner main, apart;
    CWnd owned;
    ASSERT_TRUE(
        owned.CreateEx(0, nullptr, "owned", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, main.m_hWnd, nullptr));
    AfxGetThread()->m_pMainWnd = &main;
    for (CWnd* active : {static_cast<CWnd*>(&owned), static_cast<CWnd*>(&main)}) {
        SetActiveWindow(active->m_hWnd);
        TestDialog dialog;
        dialog.atInit = [&](TestDialog& d) {
            EXPECT_EQ(active->m_hWnd, GetWindow(d.m_hWnd, GW_OWNER));
            EXPECT_FALSE(IsWindowEnabled(active->m_hWnd));
            EXPECT_FALSE(IsWindowEnabled(main.m_hWnd)) << "nor can the windows above be used";
            EXPECT_TRUE(IsWindowEnabled(apart.m_hWnd)) << "a window of its own";
            d.PostMessage(WM_COMMAND, IDOK);
        };
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(active->m_hWnd, GetActiveWindow());
        EXPECT_TRUE(IsWindowEnabled(owned.m_hWnd) && IsWindowEnabled(main.m_hWnd));
    }
    AfxGetThread()->m_pMainWnd = nullptr;
}

namespace {

bool g_mainEnabled = true; // while the box is shown
int WINAPI BoxOverMain(HWND, LPCSTR, LPCSTR, UINT)
{
    g_mainEnabled = IsWindowEnabled(AfxGetMainWnd()->m_hWnd) != FALSE;
    return IDOK;
}

} // namespace

TEST(MessageBoxes, KeepTheMainWindowFromBeingUsed)
{
    const ImportPatch box("ZOAFX.DLL", "MessageBoxA", &BoxOverMain);
    Owner main;
    CWnd owned; // the box belongs to it, and the system disables that one alone
    ASSERT_TRUE(
        owned.CreateEx(0, nullptr, "owned", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, main.m_hWnd, nullptr));
    AfxGetThread()->m_pMainWnd = &main;
    SetActiveWindow(owned.m_hWnd);
    EXPECT_EQ(IDOK, AfxMessageBox("text"));
    EXPECT_FALSE(g_mainEnabled);
    EXPECT_TRUE(IsWindowEnabled(main.m_hWnd));
    AfxGetThread()->m_pMainWnd = nullptr;
}

TEST(CDialog, NestsAndIsOwnedByTheTopWindow)
{
    Owner owner;
    CStatic child;
    ASSERT_TRUE(child.Create("", WS_VISIBLE, CRect(0, 0, 10, 10), &owner));
    TestDialog outer(&child);
    outer.atInit = [&](TestDialog& d) {
        EXPECT_EQ(owner.m_hWnd, GetWindow(d.m_hWnd, GW_OWNER)) << "a child window cannot own a dialog";
        d.PostMessage(WM_COMMAND, IDOK);
    };
    outer.atOk = [](TestDialog& d) {
        TestDialog inner(&d);
        inner.atInit = [](TestDialog& i) { i.PostMessage(WM_COMMAND, IDCANCEL); };
        EXPECT_EQ(IDCANCEL, inner.DoModal());
        EXPECT_TRUE(IsWindowEnabled(d.m_hWnd));
        return true;
    };
    EXPECT_EQ(IDOK, outer.DoModal());
}

TEST(CDialog, WithoutTemplateOrControlsFails)
{
    EXPECT_EQ(-1, CDialog(9999).DoModal());
    Owner owner;
    CDialog missing(9999, &owner);
    EXPECT_EQ(-1, missing.DoModal());
    EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
}

// Exchange of data -----------------------------------------------------------------------------------------------------

namespace {

/// Notes what the user would be told.
class TellingApp : public CWinApp {
public:
    int DoMessageBox(LPCSTR text, UINT, UINT help) override
    {
        told += std::string(text) + "/" + std::to_string(help);
        return IDOK;
    }
    std::string told;
};

/// A dialog that exchanges as it is told, over and over, while it is open.
class ExchangingDialog : public CDialog {
public:
    ExchangingDialog() { InitModalIndirect(m_template.Get()); }

    std::function<void(CDataExchange*)> exchange = [](CDataExchange*) {};
    std::function<void(ExchangingDialog&)> act;
    int changes = 0; // notified by the field

    BOOL OnInitDialog() override
    {
        ::SetFocus(::GetDlgItem(m_hWnd, IDOK));
        act(*this);
        EndDialog(IDOK);
        return FALSE;
    }
    void SetText(const std::string& text) { SetDlgItemText(kEdit, text.c_str()); }
    std::string GetText() const
    {
        char text[40] = "";
        ::GetDlgItemTextA(m_hWnd, kEdit, text, sizeof text);
        return text;
    }
    /// Whether the field has the focus, with all of its text selected.
    bool IsFieldAskedFor() const
    {
        const HWND field = ::GetDlgItem(m_hWnd, kEdit);
        DWORD first = 1;
        DWORD end = 0;
        ::SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&end));
        return ::GetFocus() == field && first == 0 && end == GetText().size();
    }

protected:
    void DoDataExchange(CDataExchange* context) override { exchange(context); }
    afx_msg void OnChange() { ++changes; }
    DECLARE_MESSAGE_MAP()

private:
    Template m_template;
};

BEGIN_MESSAGE_MAP(ExchangingDialog, CDialog)
    ON_CONTROL(EN_CHANGE, kEdit, OnChange)
END_MESSAGE_MAP()

template <class NUMBER> void ExpectExchange(TellingApp& app, const std::string& text, NUMBER before, NUMBER after,
                                            const std::string& shown, const std::string& told = {})
{
    SCOPED_TRACE(text);
    ExchangingDialog dialog;
    NUMBER value = before;
    dialog.exchange = [&](CDataExchange* context) { DDX_Text(context, kEdit, value); };
    dialog.act = [&](ExchangingDialog& open) {
        open.SetText(text);
        app.told.clear();
        EXPECT_EQ(told.empty(), open.UpdateData() != FALSE);
        EXPECT_EQ(after, value);
        EXPECT_EQ(told, app.told);
        EXPECT_EQ(!told.empty(), open.IsFieldAskedFor());
        EXPECT_TRUE(open.UpdateData(FALSE));
        EXPECT_EQ(shown, open.GetText());
    };
    EXPECT_EQ(IDOK, dialog.DoModal());
}

} // namespace

TEST(DataExchange, ReadsAndShowsNumbers)
{
    TellingApp app;
    for (const char* text : {"", " ", "x", "12x", "1 2", "--1", "0x10", "1.5"})
        ExpectExchange(app, text, 7, 7, "7", "whole/61712");
    ExpectExchange(app, " -12 ", 7, -12, "-12");
    ExpectExchange(app, "+12", 7l, 12l, "12");
    ExpectExchange(app, "2147483647", 7, INT_MAX, "2147483647");
    ExpectExchange(app, "-2147483648", 7l, LONG_MIN, "-2147483648");
    ExpectExchange(app, "2147483648", 7, 7, "7", "whole/61712");
    ExpectExchange(app, "99999999999999999999", 7l, 7l, "7", "whole/61712");
    ExpectExchange(app, "4294967295", 7u, UINT_MAX, "4294967295");
    ExpectExchange(app, "4294967296", 7ul, 7ul, "7", "no sign/61719");
    ExpectExchange(app, "-1", 7u, 7u, "7", "no sign/61719");
    ExpectExchange(app, "255", BYTE{7}, BYTE{255}, "255");
    ExpectExchange(app, "256", BYTE{7}, BYTE{7}, "7", "0 to 255/61714");
}

TEST(DataExchange, BoundsTexts)
{
    TellingApp app;
    ExchangingDialog dialog;
    CString value = "abcd";
    dialog.exchange = [&](CDataExchange* context) {
        DDX_Text(context, kEdit, value);
        DDV_MaxChars(context, value, 3);
    };
    dialog.act = [&](ExchangingDialog& open) {
        EXPECT_TRUE(open.UpdateData(FALSE));
        EXPECT_EQ(3, ::SendMessageA(::GetDlgItem(open.m_hWnd, kEdit), EM_GETLIMITTEXT, 0, 0));
        EXPECT_EQ("", app.told);
        EXPECT_FALSE(open.UpdateData());
        EXPECT_EQ("at most 3/61716", app.told);
        EXPECT_TRUE(open.IsFieldAskedFor());
        open.SetText("abc");
        EXPECT_TRUE(open.UpdateData());
        EXPECT_STREQ("abc", value);
    };
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST(DataExchange, MovesChoices)
{
    enum { kCheck = 1101, kList, kCombo, kRadio, kNextGroup = kRadio + 3 };
    ExchangingDialog dialog;
    int check = BST_CHECKED, list = 2, combo = 1, radio = 1;
    CEdit edit;
    dialog.exchange = [&](CDataExchange* context) {
        DDX_Check(context, kCheck, check);
        DDX_LBIndex(context, kList, list);
        DDX_CBIndex(context, kCombo, combo);
        DDX_Radio(context, kRadio, radio);
        DDX_Control(context, kEdit, edit);
    };
    dialog.act = [&](ExchangingDialog& open) {
        const auto add = [&](LPCSTR name, int id, DWORD style) {
            CreateWindowA(name, "", WS_CHILD | style, 0, 0, 50, 50, open.m_hWnd,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        };
        const auto ask = [&](int id, UINT message, int wParam = 0, LPCSTR text = nullptr) {
            return static_cast<int>(SendDlgItemMessageA(open.m_hWnd, id, message, static_cast<WPARAM>(wParam),
                                                        reinterpret_cast<LPARAM>(text)));
        };
        add("BUTTON", kCheck, BS_CHECKBOX);
        add("LISTBOX", kList, 0);
        add("COMBOBOX", kCombo, CBS_DROPDOWNLIST);
        for (const int id : {0, 1, 2, 3})
            add("BUTTON", kRadio + id, BS_RADIOBUTTON | (id % 3 == 0 ? WS_GROUP : 0));
        for (const char* row : {"a", "b", "c"})
            ask(kList, LB_ADDSTRING, 0, row), ask(kCombo, CB_ADDSTRING, 0, row);
        EXPECT_TRUE(open.UpdateData(FALSE));
        EXPECT_EQ(BST_CHECKED, ask(kCheck, BM_GETCHECK));
        EXPECT_EQ(2, ask(kList, LB_GETCURSEL));
        EXPECT_EQ(1, ask(kCombo, CB_GETCURSEL));
        EXPECT_EQ(BST_CHECKED, ask(kRadio + 1, BM_GETCHECK));
        EXPECT_EQ(::GetDlgItem(open.m_hWnd, kEdit), edit.m_hWnd);
        ask(kCheck, BM_SETCHECK, BST_UNCHECKED), ask(kList, LB_SETCURSEL, 0), ask(kCombo, CB_SETCURSEL, 2);
        ask(kRadio + 1, BM_SETCHECK, BST_UNCHECKED), ask(kNextGroup, BM_SETCHECK, BST_CHECKED);
        EXPECT_TRUE(open.UpdateData());
        EXPECT_EQ(BST_UNCHECKED, check);
        EXPECT_EQ(0, list);
        EXPECT_EQ(2, combo);
        EXPECT_EQ(-1, radio) << "the next group's button";
        ask(kRadio, BM_SETCHECK, BST_CHECKED);
        EXPECT_TRUE(open.UpdateData());
        EXPECT_EQ(0, radio);
    };
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST(DataExchange, IsOneAtATimeAndAmongItself)
{
    TellingApp app;
    ExchangingDialog dialog;
    CString value = "text";
    BOOL inner = TRUE;
    dialog.exchange = [&](CDataExchange* context) {
        inner = dialog.UpdateData();
        DDX_Text(context, kEdit, value);
    };
    dialog.act = [&](ExchangingDialog& open) {
        EXPECT_TRUE(open.UpdateData(FALSE));
        EXPECT_FALSE(inner);
        EXPECT_EQ(0, open.changes) << "notified in the middle of the exchange";
        open.SetText("typed");
        EXPECT_EQ(1, open.changes);
        dialog.exchange = [&](CDataExchange* context) { DDX_Text(context, kEdit + 1, value); };
        EXPECT_FALSE(open.UpdateData()) << "without the control";
        EXPECT_NE("", app.told);
        EXPECT_STREQ("text", value);
    };
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST(DataExchange, SurvivesMissingMemory)
{
    TellingApp app;
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        ExchangingDialog dialog;
        int value = 7;
        dialog.exchange = [&](CDataExchange* context) { DDX_Text(context, kEdit, value); };
        dialog.act = [&](ExchangingDialog& open) {
            ::SetDlgItemTextA(open.m_hWnd, kEdit, "12");
            const BOOL done = open.UpdateData();
            EXPECT_EQ(done ? 12 : 7, value);
            EXPECT_TRUE(done || run.Fired());
        };
        dialog.DoModal();
        run.Stop();
        app.told = std::string();
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
