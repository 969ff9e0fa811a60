// The question for a name: its rules as a table, and the dialog by keys.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/ask_name_dialog.h>
#include <zogbl/resource_ids.h>

namespace {

using Fault = CZoAskNameDialog::Fault;

class AskName : public ProductTest {
protected:
    AskName()
    {
        CStringArray taken;
        taken.Add("Main");
        taken.Add("B\xFC"
                  "ro");
        EXPECT_TRUE(m_dialog.SetTakenNames(taken));
    }
    /// Waits, as a person who pauses, until something stands below the field.
    static std::string ReasonAfterPause(HWND dialog)
    {
        WaitUntil([=] { return !TextOf(dialog, ZO_IDC_NAME_REASON).empty(); });
        return TextOf(dialog, ZO_IDC_NAME_REASON);
    }

    CZoAskNameDialog m_dialog{"Rename", "&New name:"};
};

} // namespace

TEST_F(AskName, RefusesWhatANameMustNotBe)
{
    const struct {
        const char* name;
        Fault fault, faultOfFile;
        const char* culprit;
    } kRows[] = {
        {"", Fault::kEmpty, Fault::kEmpty, ""},
        {" \t ", Fault::kEmpty, Fault::kEmpty, ""},
        {"office", Fault::kNone, Fault::kNone, "office"},
        {"MAIN", Fault::kTaken, Fault::kTaken, "MAIN"},
        {" main ", Fault::kTaken, Fault::kTaken, "main"},
        {"B\xFC"
         "ro",
         Fault::kTaken, Fault::kTaken,
         "B\xFC"
         "ro"},
        {"a\tb", Fault::kCharacter, Fault::kCharacter, "\t"},
        {"a%b", Fault::kCharacter, Fault::kCharacter, "%"},
        {"a:b", Fault::kNone, Fault::kCharacter, ":"},
        {"a|b", Fault::kNone, Fault::kCharacter, "|"},
        {"nul", Fault::kNone, Fault::kReserved, "nul"},
        {"Com1.txt", Fault::kNone, Fault::kReserved, "Com1.txt"},
        {"LPT9 .a.b", Fault::kNone, Fault::kReserved, "LPT9 .a.b"},
        {"com\xB9", Fault::kNone, GetACP() == 1252 ? Fault::kReserved : Fault::kNone, "com\xB9"}, // a raised 1
        {"com0", Fault::kNone, Fault::kNone, "com0"},
        {"com11", Fault::kNone, Fault::kNone, "com11"},
        {"console", Fault::kNone, Fault::kNone, "console"},
        {".nul", Fault::kNone, Fault::kNone, ".nul"},
        {"a.b.", Fault::kNone, Fault::kEnd, "a.b."},
        {"12345678901", Fault::kTooLong, Fault::kTooLong, "10"},
        {"  1234567890  ", Fault::kNone, Fault::kNone, "1234567890"},
    };
    EXPECT_TRUE(m_dialog.SetLongest(10));
    EXPECT_FALSE(m_dialog.SetLongest(0) || m_dialog.SetLongest(CZoAskNameDialog::LONGEST + 1));
    for (const bool isFile : {false, true}) {
        EXPECT_TRUE((!isFile || m_dialog.SetFileName()) && m_dialog.SetForbidden("%"));
        for (const auto& row : kRows) {
            CString culprit;
            const Fault expected = isFile ? row.faultOfFile : row.fault;
            EXPECT_EQ(expected, m_dialog.FindFault(row.name, culprit)) << row.name << isFile;
            if (expected != Fault::kNone) {
                EXPECT_STREQ(row.culprit, culprit);
            }
        }
    }
    EXPECT_TRUE(m_dialog.SetName("main"));
    CString culprit;
    EXPECT_EQ(Fault::kNone, m_dialog.FindFault("MAIN", culprit)) << "its own, in another case";
    if (GetSystemMetrics(SM_DBCSENABLED)) {
        EXPECT_EQ(Fault::kNone, m_dialog.FindFault("\x83\x5C", culprit)) << "a second half that looks like a backslash";
        EXPECT_EQ(Fault::kNone, m_dialog.FindFault("\x81\x2E", culprit));
    }
}

TEST_F(AskName, SaysWhyInPlaceAndOnlyWhatStaysWrong)
{
    m_dialog.SetFileName();
    m_dialog.SetName("first");
    const DialogDriver driver({[&](HWND window) {
        EXPECT_EQ("Rename", TextOf(window));
        EXPECT_EQ((std::vector<int>{ZO_IDC_NAME_FIELD, IDOK, IDCANCEL}), ExpectTabRounds(window));
        EXPECT_EQ("first", TextOf(window, ZO_IDC_NAME_FIELD));
        Type(window, ZO_IDC_NAME_FIELD, "a/b");
        EXPECT_EQ("", TextOf(window, ZO_IDC_NAME_REASON)) << "no sooner than at a pause";
        EXPECT_EQ("A name cannot contain the character \"/\".", ReasonAfterPause(window));
        Type(window, ZO_IDC_NAME_FIELD, "main");
        ::SendMessageA(window, WM_TIMER, 1, 0); // the pause
        EXPECT_EQ("", TextOf(window, ZO_IDC_NAME_REASON)) << "it can still become \"mainland\"";
        Press(window, IDOK);
        EXPECT_EQ("\"main\" is there already. Please choose another name.", TextOf(window, ZO_IDC_NAME_REASON));
        EXPECT_EQ(ZO_IDC_NAME_FIELD, FocusOf(window));
        DWORD from = 0, to = 0;
        SendDlgItemMessageA(window, ZO_IDC_NAME_FIELD, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                            reinterpret_cast<LPARAM>(&to));
        EXPECT_EQ(4u, to - from) << "selected";
        ChangeLanguage(kGerman);
        EXPECT_EQ(0u, TextOf(window, ZO_IDC_NAME_REASON).find("\"main\" gibt es schon."));
        ExpectTidy(window);
        EXPECT_EQ("&New name:", TextOf(window, ZO_IDC_NAME_PROMPT));
        Type(window, ZO_IDC_NAME_FIELD, " mainland ");
        EXPECT_EQ("", TextOf(window, ZO_IDC_NAME_REASON));
        Key(window, VK_RETURN);
    }});
    EXPECT_EQ(IDOK, m_dialog.DoModal());
    EXPECT_STREQ("mainland", m_dialog.GetName());
}

TEST_F(AskName, IsGivenUpAndSurvivesFaults)
{
    m_dialog.SetName("first");
    for (const auto& way : WaysToGiveUp()) {
        const DialogDriver driver({[&](HWND window) {
            Type(window, ZO_IDC_NAME_FIELD, "typed");
            way(window);
        }});
        EXPECT_EQ(IDCANCEL, m_dialog.DoModal());
        EXPECT_STREQ("first", m_dialog.GetName());
    }
    RunDialogFaults(
        [](HWND window) {
            SetDlgItemTextA(window, ZO_IDC_NAME_FIELD, "typed");
            Command(window, IDOK);
        },
        [&](const FaultRun& run) {
            CZoAskNameDialog dialog("Rename", "&New name:");
            dialog.SetName("first");
            const INT_PTR result = dialog.DoModal();
            run.Stop();
            EXPECT_TRUE(result == IDOK || (run.Fired() && (result == -1 || result == IDCANCEL))) << result;
            const CString& name = dialog.GetName();
            EXPECT_TRUE(result == IDOK ? name == "typed" : name == "first" || name.IsEmpty()) << name;
        },
        {.system = 0});
}
