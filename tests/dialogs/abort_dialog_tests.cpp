// The dialog beside a long job: jobs that yield now and then, and a person who wants them to end.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/abort_dialog.h>
#include <zogbl/resource_ids.h>

namespace {

/// Posts itself a message for each that it takes, until the user is asked.
class FloodWindow : public CWnd {
public:
    ~FloodWindow() override { DestroyWindow(); }
    int m_taken = 0;
    HWND m_asks = nullptr;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_NULL) {
            ++m_taken;
            if (::IsWindowEnabled(m_asks))
                PostMessage(WM_NULL);
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

ABORTPROC g_goesOn; // which the system asks

int WINAPI NoteAbortProc(HDC, ABORTPROC goesOn)
{
    g_goesOn = goesOn;
    return 1;
}

class AbortDialog : public ProductTest {
protected:
    AbortDialog()
    {
        EXPECT_TRUE(
            m_owner.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 50, 50, 300, 200, nullptr, nullptr));
    }
    /// Runs a job of a hundred parts, each of a hundredth of a second. \return how many parts were done
    int RunJob(
        CZoAbortDialog& dialog, const std::function<void(int part)>& before = [](int) {})
    {
        int part = 0;
        for (; part < 100; ++part) {
            before(part);
            ::Sleep(10);
            if (!dialog.SetPosition(part + 1))
                break;
        }
        return part;
    }

    CWnd m_owner;
};

} // namespace

TEST_F(AbortDialog, ShowsAJobThatRunsToItsEnd)
{
    CZoAbortDialog dialog(&m_owner);
    EXPECT_TRUE(dialog.Continue()) << "before it is shown nobody cancels";
    ASSERT_TRUE(dialog.Start("Send", "The table is being sent...", 100));
    EXPECT_FALSE(dialog.Start("Send", "twice", 100));
    EXPECT_FALSE(m_owner.IsWindowEnabled());
    EXPECT_EQ("Send", TextOf(dialog));
    EXPECT_EQ("The table is being sent...", TextOf(dialog, ZO_IDC_ABORT_TEXT));
    EXPECT_EQ("Cancel", TextOf(dialog, IDCANCEL));
    EXPECT_EQ(100, RunJob(dialog, [&](int part) {
                  if (part == 50) {
                      dialog.SetCommitted();
                      ChangeLanguage(kGerman);
                      dialog.SetText("second half");
                      dialog.PostMessage(WM_COMMAND, IDOK); // as Enter
                  }
                  if (part == 60) {
                      EXPECT_EQ("Anhalten", TextOf(dialog, IDCANCEL));
                      EXPECT_EQ("second half", TextOf(dialog, ZO_IDC_ABORT_TEXT));
                      EXPECT_FALSE(::GetUpdateRect(*dialog.GetDlgItem(ZO_IDC_ABORT_BAR), nullptr, FALSE)) << "painted";
                  }
              }));
    dialog.Finish();
    EXPECT_FALSE(dialog.IsCancelled());
    EXPECT_TRUE(m_owner.IsWindowEnabled());
    EXPECT_EQ(nullptr, dialog.m_hWnd);
    dialog.Finish();
    EXPECT_TRUE(dialog.Start("Send", "again", 0)) << "and of unknown length";
    EXPECT_EQ(100, RunJob(dialog));
}

TEST_F(AbortDialog, EndsTheJobWhenThePersonMeansIt)
{
    const struct {
        const char* name;
        WPARAM message, wParam;
        bool isCommitted;
        const char* question;
    } kWays[] = {
        {"button", WM_COMMAND, IDCANCEL, false, "Do you want to cancel?"},
        {"close box", WM_CLOSE, 0, false, "Do you want to cancel?"},
        {"Escape", WM_KEYDOWN, VK_ESCAPE, true, "What is done so far stays as it is. Do you want to stop?"},
    };
    ProcessCounts before;
    for (const auto& way : kWays) {
        SCOPED_TRACE(way.name);
        const ProcessCounts counts = std::exchange(before, ProcessCounts::Take());
        EXPECT_TRUE(&way < kWays + 2 || counts == before) << counts << ", then " << before;
        CZoAbortDialog dialog(&m_owner);
        ASSERT_TRUE(dialog.Start("Send", "text", 100));
        if (way.isCommitted)
            dialog.SetCommitted();
        const auto ask = [&] {
            ::PostMessageA(way.message == WM_KEYDOWN ? ::GetDlgItem(dialog, IDCANCEL) : dialog.m_hWnd,
                           static_cast<UINT>(way.message), way.wParam, 0);
        };
        int answered = 0;
        const DialogDriver driver({[&](HWND window) { EXPECT_EQ(dialog.m_hWnd, window); },
                                   [&](HWND box) {
                                       EXPECT_EQ(way.question, BoxText(box));
                                       EXPECT_TRUE(dialog.Continue()) << "the job's own question meanwhile";
                                       answered = IDNO;
                                       Key(box, VK_RETURN);
                                   },
                                   [&](HWND box) {
                                       answered = IDYES;
                                       Press(box, IDYES);
                                   }});
        EXPECT_EQ(40, RunJob(dialog, [&](int part) {
                      EXPECT_EQ(part <= 20 ? 0 : IDNO, answered) << "the job stood still until it was answered";
                      if (part == 20 || part == 40)
                          ask();
                  }));
        EXPECT_TRUE(dialog.IsCancelled());
        EXPECT_FALSE(dialog.Continue());
        EXPECT_FALSE(IsEnabled(dialog, IDCANCEL));
        EXPECT_EQ("The job is being ended...", TextOf(dialog, ZO_IDC_ABORT_REMAINING));
        dialog.Finish();
        EXPECT_TRUE(m_owner.IsWindowEnabled());
        EXPECT_TRUE(dialog.IsCancelled());
    }
}

TEST_F(AbortDialog, EndsTheJobWithItsOwnerAndItsThread)
{
    {
        CZoAbortDialog dialog(&m_owner);
        ASSERT_TRUE(dialog.Start("Send", "text", 100));
        EXPECT_EQ(7, RunJob(dialog, [&](int part) {
                      if (part == 7)
                          ::PostQuitMessage(3);
                  }));
        MSG message;
        EXPECT_TRUE(::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.wParam == 3);
    }
    EXPECT_TRUE(m_owner.IsWindowEnabled());
    m_owner.EnableWindow(FALSE);
    {
        CZoAbortDialog dialog(&m_owner);
        ASSERT_TRUE(dialog.Start("Send", "text", 100));
        dialog.Finish();
        EXPECT_FALSE(m_owner.IsWindowEnabled()) << "as it was before";
    }
    CZoAbortDialog outer(&m_owner), dialog(&m_owner);
    ASSERT_TRUE(outer.Start("Outer", "text", 0));
    ASSERT_TRUE(dialog.Start("Send", "text", 100));
    EXPECT_EQ(5, RunJob(dialog, [&](int part) {
                  if (part == 5)
                      m_owner.DestroyWindow();
              }));
    EXPECT_TRUE(dialog.IsCancelled() && outer.IsCancelled());
}

TEST_F(AbortDialog, AnswersAtOnceHoweverBusyTheThreadIs)
{
    CZoAbortDialog dialog(&m_owner);
    ASSERT_TRUE(dialog.Start("Send", "text", 100));
    FloodWindow flood;
    EXPECT_TRUE(flood.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr));
    flood.m_asks = dialog;
    ::SetForegroundWindow(dialog.m_hWnd);
    DWORD yielded = 0, answered = 0;
    bool isMet = false;
    const DialogDriver driver({[&](HWND window) { isMet = window == dialog.m_hWnd; },
                               [&](HWND box) {
                                   answered = ::GetTickCount();
                                   Press(box, IDYES);
                               }});
    EXPECT_TRUE(WaitUntil([&] { return isMet; }));
    flood.PostMessage(WM_NULL);
    std::string remaining;
    int part = 0;
    for (; part < 100; ++part) { // ten seconds
        ::Sleep(100);
        if (part == 80) {
            remaining = TextOf(dialog, ZO_IDC_ABORT_REMAINING);
            EXPECT_FALSE(::GetUpdateRect(*dialog.GetDlgItem(ZO_IDC_ABORT_BAR), nullptr, FALSE)) << "painted";
            ::keybd_event(VK_ESCAPE, 0, 0, 0); // as the system hands it out, behind what is posted
            ::keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
        }
        yielded = ::GetTickCount();
        if (!dialog.SetPosition(part + 1))
            break;
    }
    EXPECT_TRUE(part == 80 || part == 81) << part;
    EXPECT_NE(std::string::npos, remaining.find("seconds left")) << remaining;
    EXPECT_LE(answered - yielded, 150u) << "a quarter of a second, less what the job takes for a part";
    EXPECT_TRUE(dialog.IsCancelled());
    EXPECT_GT(flood.m_taken, 100);
}

TEST_F(AbortDialog, AnswersForItsOwnPrinter)
{
    const ImportPatch patch(kZogbl, "SetAbortProc", &NoteAbortProc);
    const HDC first = CreateCompatibleDC(nullptr), second = CreateCompatibleDC(nullptr);
    CZoAbortDialog outer(&m_owner), inner(&m_owner);
    EXPECT_FALSE(outer.AttachPrinter(first)) << "not started";
    EXPECT_TRUE(outer.Start("Outer", "text", 0) && outer.AttachPrinter(first));
    EXPECT_TRUE(inner.Start("Inner", "text", 0) && inner.AttachPrinter(second));
    inner.SetCommitted();
    ::PostQuitMessage(0);
    EXPECT_FALSE(g_goesOn(second, 0));
    MSG message;
    ::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    inner.Finish();
    EXPECT_FALSE(g_goesOn(second, 0)) << "the window has gone, and so has the job";
    EXPECT_TRUE(g_goesOn(first, 0));
    EXPECT_TRUE(outer.AttachPrinter(second));
    EXPECT_TRUE(g_goesOn(second, 0)) << "another job";
    outer.Finish();
    EXPECT_TRUE(g_goesOn(second, 0)) << "it was not cancelled";
    EXPECT_TRUE(inner.Start("Inner", "again", 0) && inner.Continue());
    inner.SetCommitted();
    EXPECT_EQ("Stop", TextOf(inner, IDCANCEL));
    DeleteDC(first);
    DeleteDC(second);
}

TEST_F(AbortDialog, SurvivesFaults)
{
    const BoxStub noBox(IDOK);
    AllocationFaults memory;
    RunFaultLoop(memory, [&](const FaultRun& run) {
        CZoAbortDialog dialog(&m_owner);
        const BOOL isShown = dialog.Start("Send", "text", 3);
        for (int part = 1; part <= 3; ++part)
            EXPECT_TRUE(dialog.SetPosition(part)) << "nobody cancels";
        dialog.SetText("other");
        dialog.SetCommitted();
        dialog.Finish();
        run.Stop();
        EXPECT_TRUE(isShown || run.Fired());
        EXPECT_TRUE(m_owner.IsWindowEnabled());
    });
}
