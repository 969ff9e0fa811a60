// Wizards led through by keys and clicks.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/resource_ids.h>
#include <zogbl/wizard.h>

namespace {

constexpr int kName = 11, kGuest = 12;

struct Page : CZoWizardPage {
    using CZoWizardPage::CZoWizardPage;
    BOOL IsSkipped() override { return skips && skips(); }
    CZoWizardPage* ChooseNext() override { return branch; }
    int FindFault(CString& reason) override
    {
        if (!wantsName || !TextOf(m_hWnd, kName).empty())
            return 0;
        reason = why;
        return culprit;
    }
    BOOL OnNext() override { return CZoWizardPage::OnNext() && (!work || work()); }
    void ReloadTexts() override { ++reloads, CZoWizardPage::ReloadTexts(); }

    std::function<bool()> skips, work;
    Page* branch = nullptr;
    bool wantsName = false;
    int culprit = kName, reloads = 0;
    CString why;
};

struct Wizard : CZoWizardSheet {
    Wizard() : CZoWizardSheet(ZO_IDS_TOOL_SHEET_TITLE)
    {
        for (Page* page : {&who, &where, &look})
            AddPage(page); // fails in a loop of faults
        where.skips = [this] { return who.m_hWnd != nullptr && IsChecked(who, kGuest); };
    }
    BOOL OnFinish() override { return !act || act(); }
    void OnCancel() override { ++cancels, CZoWizardSheet::OnCancel(); }
    /// Heading, step, Back if it can be pressed, Next and Cancel as far as they can be seen, focus, reason.
    std::string State() const
    {
        std::string state = TextOf(m_hWnd, ZO_IDC_WIZARD_HEADING) + "|" + TextOf(m_hWnd, ZO_IDC_WIZARD_STEP);
        if (IsEnabled(m_hWnd, ZO_IDC_WIZARD_BACK))
            state += "|back";
        if (GetDlgItem(IDOK)->IsWindowVisible())
            state += "|" + TextOf(m_hWnd, IDOK);
        return state + "|" + TextOf(m_hWnd, IDCANCEL) + "|" + std::to_string(::GetDlgCtrlID(::GetFocus())) + "|" +
               TextOf(m_hWnd, ZO_IDC_WIZARD_REASON);
    }

    Page who{3011}, where{3012}, look{3013}, done{3014};
    std::function<bool()> act;
    int cancels = 0;
};

class WizardTest : public ProductTest {};

} // namespace

TEST_F(WizardTest, IsLedThroughByEnterAlone)
{
    Wizard wizard;
    wizard.SetResultPage(&wizard.done);
    wizard.SetAct(ZO_IDS_SHEET_APPLY);
    wizard.where.wantsName = true;
    int acts = 0;
    wizard.act = [&] {
        ::PostMessageA(*wizard.GetDlgItem(IDCANCEL), WM_KEYDOWN, VK_RETURN, 1); // in haste
        return ++acts > 0;
    };
    const DialogDriver driver({[&](HWND window) {
        EXPECT_EQ("Edit Tools", TextOf(window));
        EXPECT_EQ((std::vector<int>{kName, kGuest, IDOK, IDCANCEL}), ExpectTabRounds(window));
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel|11|", wizard.State());
        Key(window, VK_RETURN);
        EXPECT_EQ("Where|Step 2 of 3|back|&Next >|Cancel|11|", wizard.State()) << "not where Enter is something else";
        Key(window, VK_RETURN);
        EXPECT_EQ("Where|Step 2 of 3|back|&Next >|Cancel|11|Something is missing here.", wizard.State());
        ExpectTabRounds(window);
        Type(wizard.where, kName, "x");
        EXPECT_EQ("", TextOf(window, ZO_IDC_WIZARD_REASON));
        ::PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 0x40000001);
        Key(window, VK_RETURN);
        EXPECT_EQ("Look|Step 3 of 3|back|&Apply|Cancel|1|", wizard.State()) << "one page, though the key was held";
        ExpectTidy(window);
        ExpectTidy(wizard.look);
        EXPECT_EQ(0, acts);
        Key(window, VK_RETURN);
        EXPECT_EQ("Done||Close|2|", wizard.State());
        EXPECT_TRUE(acts == 1 && wizard.cancels == 0) << "the Enter in haste";
        EXPECT_EQ((std::vector<int>{IDCANCEL}), ExpectTabRounds(window, 3));
        EXPECT_EQ(IDCANCEL, LOWORD(SendMessageA(window, DM_GETDEFID, 0, 0)));
        ChangeLanguage(kGerman);
        EXPECT_EQ(1, wizard.done.reloads);
        Key(window, VK_RETURN);
    }});
    EXPECT_EQ(IDOK, wizard.DoModal());
}

TEST_F(WizardTest, SkipsAndBranches)
{
    Wizard wizard;
    bool isLate = false;
    const auto never = [] { return true; };
    const auto guest = [&] {
        ::SetFocus(::GetDlgItem(wizard.who, kGuest));
        Press(wizard.who, kGuest);
        return TextOf(wizard, IDOK);
    };
    const DialogDriver driver({[&](HWND window) {
        guest();
        Press(window, IDOK);
        EXPECT_EQ("Look|Step 3 of 3|back|&Finish|Cancel|1|", wizard.State()) << "its number, though one is skipped";
        Press(window, ZO_IDC_WIZARD_BACK);
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel|11|", wizard.State()) << "back skips too";
        wizard.look.skips = never;
        EXPECT_EQ("&Next >", guest());
        EXPECT_EQ("&Finish", guest()) << "the last one now";
        EXPECT_TRUE(wizard.AddPage(&wizard.done, 0));
        wizard.look.skips = nullptr;
        wizard.who.branch = &wizard.done;
        wizard.SetModified(); // looks at the way anew
        AccessKey(window, 'n');
        EXPECT_EQ("Done||back|&Finish|Cancel|1|", wizard.State());
        AccessKey(window, 'b');
        wizard.who.branch = nullptr;
        wizard.look.skips = wizard.done.skips = never;
        wizard.where.skips = [&] { return isLate; };
        guest();
        wizard.who.work = [&] { return isLate = true; }; // which the button does not say
        Press(window, IDOK);
        EXPECT_EQ("Who|Step 1 of 3|&Finish|Cancel|1|", wizard.State()) << "nobody has agreed to finish";
        Press(window, IDOK);
    }});
    EXPECT_EQ(IDOK, wizard.DoModal());
}

TEST_F(WizardTest, FinishLeadsToWhatIsWrong)
{
    Wizard wizard;
    const DialogDriver driver({[&](HWND window) {
        Type(wizard.who, kName, "name");
        Press(window, IDOK);
        Press(window, IDOK);
        wizard.who.wantsName = true;
        wizard.who.why = "A name, please.";
        wizard.who.culprit = kGuest;
        ::SetDlgItemTextA(wizard.who, kName, "");
        Press(window, IDOK);
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel|12|A name, please.", wizard.State());
        wizard.who.why = "Bitte einen Namen.";
        ChangeLanguage(kGerman);
        EXPECT_EQ("Who|Schritt 1 von 3|&Weiter >|Abbrechen|12|Bitte einen Namen.", wizard.State());
        EXPECT_TRUE(wizard.who.reloads == 1 && wizard.look.reloads == 1) << "also pages that are not shown";
        ::SetFocus(::GetDlgItem(window, IDOK));
        ::EnableWindow(::GetDlgItem(wizard.who, kGuest), FALSE);
        Press(window, IDOK);
        EXPECT_EQ(kName, ::GetDlgCtrlID(::GetFocus())) << "what is wrong can take no keys";
        EXPECT_EQ("Extras bearbeiten", TextOf(window));
        ExpectTidy(window);
        Type(wizard.who, kName, "name");
        for (int i = 0; i < 3; ++i)
            Press(window, IDOK);
    }});
    EXPECT_EQ(IDOK, wizard.DoModal());
}

TEST_F(WizardTest, AsksBeforeWorkIsLost)
{
    using Act = void (*)(Wizard & wizard);
    const Act next = [](Wizard& wizard) { Press(wizard, IDOK); };
    const Act type = [](Wizard& wizard) { Type(wizard.who, kName, "x"); };
    const Act tell = [](Wizard& wizard) { wizard.SetModified(); };
    const Act set = [](Wizard& wizard) {
        ::SetFocus(::GetDlgItem(wizard.who, kGuest));
        wizard.who.SetDlgItemText(kName, "by the program");
    };
    const Act commit = [](Wizard& wizard) {
        Type(wizard.who, kName, "x");
        wizard.SetCommitted();
        Press(wizard, IDOK);
        EXPECT_EQ("Where|Step 2 of 3|&Next >|Close|11|", wizard.State()) << "no way back";
    };
    const Act browse = [](Wizard& wizard) { // a button changes nothing
        Press(wizard, IDOK);
        ::SetFocus(::GetDlgItem(wizard.where, kGuest));
        Press(wizard.where, kGuest);
    };
    const char* const lost = "What you have entered will be lost. Do you want to close the window?";
    const struct {
        Act act;
        const char* question;
        INT_PTR result;
    } kRows[] = {{type, lost, IDCANCEL}, {tell, lost, IDCANCEL}, {commit, "", IDCLOSE},
                 {next, "", IDCANCEL},   {set, "", IDCANCEL},    {browse, "", IDCANCEL}};
    Wizard wizard; // begins anew each time
    for (const auto& row : kRows) {
        for (const auto& way : WaysToGiveUp()) {
            SCOPED_TRACE(&row - kRows);
            const auto giveUp = [&](HWND window) {
                EXPECT_FALSE(IsEnabled(window, ZO_IDC_WIZARD_BACK));
                row.act(wizard);
                for (int times = *row.question != '\0' ? 2 : 1; times > 0; --times)
                    way(window);
            };
            const DialogDriver driver(
                {giveUp, AnswerBoxIfAny(row.question, IDNO), AnswerBoxIfAny(row.question, IDYES)});
            EXPECT_EQ(row.result, wizard.DoModal());
        }
    }
}

TEST_F(WizardTest, WorksInBetween)
{
    Wizard wizard;
    int parts = 0;
    std::function<void()> during;
    wizard.who.work = [&] {
        wizard.StartWork("Looking...", 20);
        for (parts = 0; parts < 20; ++parts) {
            if (parts == 10)
                during();
            if (!wizard.SetPosition(parts + 1))
                return false;
        }
        return true;
    };
    const DialogDriver driver({[&](HWND window) {
                                   Type(wizard.who, kName, "typed");
                                   ::SetFocus(::GetDlgItem(wizard.who, kGuest));
                                   during = [] { ::PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1); };
                                   Key(window, VK_RETURN);
                                   EXPECT_EQ(10, parts) << "the job stands still at once";
                                   EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel|12|", wizard.State());
                                   EXPECT_FALSE(wizard.GetDlgItem(ZO_IDC_WIZARD_BAR)->IsWindowVisible());
                                   EXPECT_TRUE(IsEnabled(window, IDOK) && ::IsWindowEnabled(wizard.who));
                                   during = [&] {
                                       EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel|2|Looking...", wizard.State());
                                       EXPECT_FALSE(IsEnabled(wizard, IDOK) || ::IsWindowEnabled(wizard.who));
                                       EXPECT_TRUE(wizard.GetDlgItem(ZO_IDC_WIZARD_BAR)->IsWindowVisible());
                                       ExpectTidy(wizard);
                                       ::PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); // in haste
                                       Command(wizard, IDOK);
                                   };
                                   Key(window, VK_RETURN);
                                   EXPECT_EQ("Where|Step 2 of 3|back|&Next >|Cancel|11|", wizard.State());
                                   wizard.EndDialog(IDCANCEL);
                               },
                               AnswerBox("Do you want to cancel?", IDYES)});
    EXPECT_EQ(IDCANCEL, wizard.DoModal());
    EXPECT_EQ(20, parts);
}

TEST_F(WizardTest, WorkEndsWithItsWindowOrProgram)
{
    for (const bool isQuit : {false, true}) {
        Wizard wizard;
        BOOL goesOn = TRUE;
        wizard.who.work = [&] {
            wizard.StartWork("Looking...", 0);
            isQuit ? PostQuitMessage(3) : static_cast<void>(wizard.DestroyWindow());
            return (goesOn = wizard.SetPosition(1)) != FALSE;
        };
        const DialogDriver driver({[](HWND window) { Press(window, IDOK); }});
        wizard.DoModal();
        EXPECT_FALSE(goesOn);
        MSG message;
        EXPECT_EQ(isQuit, ::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE) << "for who waits";
    }
}

TEST_F(WizardTest, ShowsAPictureAtTheLeft)
{
    for (const bool hasPicture : {false, true}) {
        Wizard wizard;
        wizard.SetPicture(hasPicture ? ZO_IDB_TRANSLATE_MARKER : 1);
        const DialogDriver driver({[&](HWND window) {
            const HWND picture = ::GetDlgItem(window, ZO_IDC_WIZARD_PICTURE);
            EXPECT_EQ(hasPicture, picture != nullptr);
            EXPECT_TRUE(!hasPicture || AreaOf(picture).right <= AreaOf(wizard.who).left);
            EXPECT_EQ(kName, GetDlgCtrlID(GetFocus()));
            ExpectTidy(window);
            Key(window, VK_ESCAPE);
        }});
        EXPECT_EQ(IDCANCEL, wizard.DoModal());
    }
    CZoWizardSheet none(ZO_IDS_TOOL_SHEET_TITLE);
    EXPECT_EQ(-1, none.DoModal()) << "no pages";
}

TEST_F(WizardTest, SurvivesFaults)
{
    RunDialogFaults(
        [](HWND window) {
            SetDlgItemTextA(window, kName, "typed");
            for (const int button : {IDOK, IDOK, ZO_IDC_WIZARD_BACK, IDOK, IDOK, IDCANCEL})
                Command(window, button);
        },
        [](const FaultRun& run) {
            Wizard wizard;
            wizard.SetPicture(ZO_IDB_TRANSLATE_MARKER);
            wizard.SetResultPage(&wizard.done);
            wizard.who.work = [&] {
                wizard.StartWork("Looking...", 2);
                return wizard.SetPosition(1);
            };
            const INT_PTR result = wizard.DoModal();
            EXPECT_TRUE(result == IDOK || (run.Fired() && (result == -1 || result == IDCANCEL))) << result;
        },
        {.memory = 3, .system = 3});
}
