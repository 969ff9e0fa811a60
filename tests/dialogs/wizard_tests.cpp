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

    std::function<bool()> skips, work;
    Page* branch = nullptr;
    bool wantsName = false;
    int culprit = kName;
    CString why;
};

struct Wizard : CZoWizardSheet {
    explicit Wizard(CWnd* parent = nullptr) : CZoWizardSheet(ZO_IDS_TOOL_SHEET_TITLE, parent)
    {
        for (Page* page : {&who, &where, &look})
            AddPage(page); // fails in a loop of faults
        who.skips = [] { return false; };
        where.skips = [this] { return who.m_hWnd != nullptr && IsChecked(who, kGuest); };
    }
    BOOL OnFinish() override { return !act || act(); }
    void OnCancel() override { ++cancels, CZoWizardSheet::OnCancel(); }
    /// Heading, step, Back if it can be pressed, Next and Cancel as far as they can be seen.
    std::string State() const
    {
        std::string state = TextOf(m_hWnd, ZO_IDC_WIZARD_HEADING) + "|" + TextOf(m_hWnd, ZO_IDC_WIZARD_STEP);
        if (IsEnabled(m_hWnd, ZO_IDC_WIZARD_BACK))
            state += "|back";
        if (GetDlgItem(IDOK)->IsWindowVisible())
            state += "|" + TextOf(m_hWnd, IDOK);
        return state + "|" + TextOf(m_hWnd, IDCANCEL);
    }
    std::string Reason() const { return TextOf(m_hWnd, ZO_IDC_WIZARD_REASON); }

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
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel", wizard.State());
        EXPECT_EQ((std::vector<int>{kName, kGuest, IDOK, IDCANCEL}), ExpectTabRounds(window));
        EXPECT_EQ(wizard.GetActivePage(), &wizard.who);
        Key(window, VK_RETURN);
        EXPECT_EQ("Where|Step 2 of 3|back|&Next >|Cancel", wizard.State());
        EXPECT_EQ(::GetDlgItem(wizard.where, kName), GetFocus()) << "not where Enter is something else";
        Key(window, VK_RETURN);
        EXPECT_EQ("Something is missing here.", wizard.Reason());
        EXPECT_EQ(::GetDlgItem(wizard.where, kName), GetFocus());
        ExpectTabRounds(window);
        Type(wizard.where, kName, "x");
        EXPECT_EQ("", wizard.Reason());
        ::PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 0x40000001);
        Key(window, VK_RETURN);
        EXPECT_EQ("Look|Step 3 of 3|back|&Apply|Cancel", wizard.State()) << "one page, though the key was held";
        EXPECT_EQ(IDOK, GetDlgCtrlID(GetFocus())) << "the page has no fields";
        ExpectTidy(window);
        ExpectTidy(wizard.look);
        EXPECT_EQ(0, acts);
        Key(window, VK_RETURN);
        EXPECT_EQ("Done||Close", wizard.State());
        EXPECT_EQ(1, acts);
        EXPECT_EQ(0, wizard.cancels) << "the Enter in haste";
        EXPECT_EQ((std::vector<int>{IDCANCEL}), ExpectTabRounds(window, 3));
        EXPECT_EQ(IDCANCEL, LOWORD(SendMessageA(window, DM_GETDEFID, 0, 0)));
        Key(window, VK_RETURN);
    }});
    EXPECT_EQ(IDOK, wizard.DoModal());
    EXPECT_EQ(nullptr, wizard.who.m_hWnd);
}

TEST_F(WizardTest, SkipsAndBranches)
{
    Wizard wizard;
    const auto check = [&](bool isOn) {
        ::SetFocus(::GetDlgItem(wizard.who, kGuest));
        if (IsChecked(wizard.who, kGuest) != isOn)
            Press(wizard.who, kGuest);
    };
    const DialogDriver driver({[&](HWND window) {
        check(true);
        Press(window, IDOK);
        EXPECT_EQ("Look|Step 3 of 3|back|&Finish|Cancel", wizard.State()) << "its number, though one is skipped";
        Press(window, ZO_IDC_WIZARD_BACK);
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel", wizard.State()) << "back skips too";
        EXPECT_EQ(::GetDlgItem(wizard.who, kName), GetFocus());
        wizard.look.skips = [] { return true; };
        check(false);
        EXPECT_EQ("&Next >", TextOf(window, IDOK));
        check(true);
        EXPECT_EQ("&Finish", TextOf(window, IDOK)) << "the last one now";
        EXPECT_TRUE(wizard.AddPage(&wizard.done, 0));
        wizard.look.skips = nullptr;
        wizard.who.branch = &wizard.done;
        wizard.SetModified(); // looks at the way anew
        AccessKey(window, 'n');
        EXPECT_EQ("Done||back|&Finish|Cancel", wizard.State());
        AccessKey(window, 'b');
        wizard.who.branch = nullptr;
        wizard.look.skips = wizard.done.skips = [] { return true; };
        wizard.where.skips = [&] { return wizard.who.work && wizard.who.work(); };
        check(false);
        wizard.who.work = [&] { return true; }; // from here on, which the button does not say
        Press(window, IDOK);
        EXPECT_EQ("Who|Step 1 of 3|&Finish|Cancel", wizard.State()) << "nobody has agreed to finish";
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
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel", wizard.State());
        EXPECT_EQ("A name, please.", wizard.Reason());
        EXPECT_EQ(::GetDlgItem(wizard.who, kGuest), GetFocus());
        wizard.who.why = "Bitte einen Namen.";
        ChangeLanguage(kGerman);
        EXPECT_EQ("Bitte einen Namen.", wizard.Reason());
        EXPECT_EQ("Who|Schritt 1 von 3|&Weiter >|Abbrechen", wizard.State());
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
    const auto type = [](Wizard& wizard) { Type(wizard.who, kName, "x"); };
    const auto next = [](Wizard& wizard) { Press(wizard, IDOK); };
    const auto commit = [=](Wizard& wizard) { type(wizard), wizard.SetCommitted(), next(wizard); };
    const auto tell = [](Wizard& wizard) { wizard.SetModified(); };
    const auto set = [](Wizard& wizard) {
        ::SetFocus(::GetDlgItem(wizard.who, kGuest)), wizard.who.SetDlgItemText(kName, "by the program");
    };
    const struct {
        std::function<void(Wizard&)> act;
        bool asks;
        INT_PTR result;
    } kRows[] = {{next, false, IDCANCEL},
                 {set, false, IDCANCEL},
                 {type, true, IDCANCEL},
                 {tell, true, IDCANCEL},
                 {commit, false, IDCLOSE}};
    for (const auto& row : kRows) {
        for (const auto& way : WaysToGiveUp()) {
            SCOPED_TRACE(&row - kRows);
            Wizard wizard;
            const auto box = [&](int answer) -> DialogDriver::Act {
                if (!row.asks)
                    return nullptr;
                return AnswerBox("What you have entered will be lost. Do you want to close the window?", answer);
            };
            const DialogDriver driver({[&](HWND window) {
                                           row.act(wizard);
                                           EXPECT_EQ(row.result == IDCLOSE ? "Close" : "Cancel",
                                                     TextOf(window, IDCANCEL));
                                           EXPECT_FALSE(row.result == IDCLOSE && IsEnabled(window, ZO_IDC_WIZARD_BACK));
                                           way(window);
                                           if (row.asks) {
                                               EXPECT_TRUE(IsWindow(window)) << "the first answer is No";
                                               way(window);
                                           }
                                       },
                                       box(IDNO), box(IDYES)});
            EXPECT_EQ(row.result, wizard.DoModal());
        }
    }
}

TEST_F(WizardTest, WorksInBetween)
{
    Wizard wizard;
    int parts = 0;
    std::function<void(int)> during = [](int) {};
    wizard.who.work = [&] {
        wizard.StartWork("Looking...", 20);
        for (parts = 0; parts < 20; ++parts) {
            during(parts);
            ::Sleep(2);
            if (!wizard.SetPosition(parts + 1))
                return false;
        }
        return true;
    };
    const auto look = [&](int part) {
        if (part != 5)
            return;
        EXPECT_EQ("Looking...", wizard.Reason());
        EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel", wizard.State());
        EXPECT_FALSE(IsEnabled(wizard, IDOK) || ::IsWindowEnabled(wizard.who));
        EXPECT_TRUE(wizard.GetDlgItem(ZO_IDC_WIZARD_BAR)->IsWindowVisible());
        EXPECT_EQ(IDCANCEL, GetDlgCtrlID(GetFocus()));
        ExpectTidy(wizard);
        ::PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); // in haste: neither Next nor Cancel
    };
    const auto cancel = [&](int part) {
        if (part == 10)
            ::PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
    };
    const DialogDriver driver({[&](HWND window) {
                                   Type(wizard.who, kName, "typed");
                                   during = cancel;
                                   ::SetFocus(::GetDlgItem(wizard.who, kGuest));
                                   Key(window, VK_RETURN);
                                   EXPECT_EQ(10, parts) << "the job stands still at once";
                                   EXPECT_EQ("typed", TextOf(wizard.who, kName));
                                   EXPECT_EQ(::GetDlgItem(wizard.who, kGuest), GetFocus());
                                   EXPECT_EQ("Who|Step 1 of 3|&Next >|Cancel", wizard.State());
                                   EXPECT_FALSE(wizard.GetDlgItem(ZO_IDC_WIZARD_BAR)->IsWindowVisible());
                                   EXPECT_TRUE(IsEnabled(window, IDOK));
                                   during = look;
                                   Key(window, VK_RETURN);
                                   EXPECT_EQ(20, parts);
                                   EXPECT_EQ("Where|Step 2 of 3|back|&Next >|Cancel", wizard.State());
                                   EXPECT_EQ("", wizard.Reason());
                                   wizard.EndDialog(IDCANCEL);
                               },
                               [&](HWND box) {
                                   EXPECT_EQ("Do you want to cancel?", BoxText(box));
                                   EXPECT_TRUE(wizard.SetPosition(1)) << "returns at once";
                                   Press(box, IDYES);
                               }});
    EXPECT_EQ(IDCANCEL, wizard.DoModal());
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
