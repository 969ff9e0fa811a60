// The question for a program, as a real window.
#include "dialog_faults.h"

#include "support/product_test.h"
#include "support/test.h"

#include <zogbl/program_prompt.h>
#include <zogbl/resource_ids.h>

namespace {

constexpr int kPath = ZO_IDC_PROGRAM_PROMPT_PATH;

class ProgramPrompt : public ProductTest {
protected:
    ProgramPrompt() { m_folder.Write("program.exe", "MZ"); }

    const std::string m_program = Path("program.exe");
};

} // namespace

TEST_F(ProgramPrompt, StaysOpenUntilThereIsAProgram)
{
    static constexpr char kEmpty[] = "Please enter the path of a program.";
    static constexpr char kMissing[] = "There is no program at this path.";
    const std::string padded = "  " + m_program + " ";
    const struct {
        std::string entered, message;
        bool accepted;
    } rows[] = {
        {"", kEmpty, false},
        {"   ", kEmpty, false},
        {m_folder.Path("missing.exe"), kMissing, false},
        {m_folder.Path(), kMissing, false}, // a folder
        {m_program, "", true},
        {padded, "", true},
    };
    for (const auto& row : rows) {
        const BoxStub box;
        CZoProgramPromptDlg dialog("Title", "Where is it?", "before", nullptr);
        const DialogDriver driver({[&](HWND window) {
            EXPECT_EQ("Where is it?", TextOf(window, ZO_IDC_PROGRAM_PROMPT_TEXT));
            EXPECT_EQ("before", TextOf(window, kPath));
            EXPECT_EQ(kPath, FocusOf(window));
            Type(window, kPath, row.entered);
            ChangeLanguage(kGerman);
            EXPECT_EQ("Title|Where is it?|" + row.entered + "|Abbrechen",
                      TextOf(window) + "|" + TextOf(window, ZO_IDC_PROGRAM_PROMPT_TEXT) + "|" + TextOf(window, kPath) +
                          "|" + TextOf(window, IDCANCEL));
            ExpectTidy(window);
            ChangeLanguage(kEnglish);
            Press(window, IDOK);
            if (row.accepted)
                return;
            EXPECT_EQ(kPath, FocusOf(window));
            Press(window, IDCANCEL);
        }});
        EXPECT_EQ(row.accepted ? IDOK : IDCANCEL, dialog.DoModal());
        EXPECT_STREQ(row.accepted ? m_program.c_str() : "before", dialog.GetPath());
        EXPECT_EQ(row.message, box.Last().text) << row.entered;
        EXPECT_EQ(row.accepted ? "" : "Title", box.Last().title);
    }
}

TEST_F(ProgramPrompt, LetsTheUserBrowse)
{
    const struct {
        std::string before, offered, typed, after; // nothing typed: given up
    } rows[] = {
        {"", "", m_program, m_program},
        {m_program, "program.exe", "", m_program},
        {"no:such|file", "such|file", m_program, m_program},
    };
    for (const auto& row : rows) {
        CZoProgramPromptDlg dialog("Title", "Where?", row.before.c_str(), nullptr);
        const DialogDriver driver({
            [&](HWND prompt) {
                Press(prompt, ZO_IDC_PROGRAM_PROMPT_BROWSE);
                EXPECT_EQ(row.after, TextOf(prompt, kPath));
                Press(prompt, IDCANCEL);
            },
            [&](HWND browser) {
                EXPECT_EQ(row.offered, TextOf(browser, ZO_IDC_FILE_NAME));
                Type(browser, ZO_IDC_FILE_NAME, row.typed);
                Press(browser, row.typed.empty() ? IDCANCEL : IDOK);
            },
        });
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
    }
}

TEST_F(ProgramPrompt, SurvivesMissingMemory)
{
    const auto show = [&](const FaultRun& run) {
        CZoProgramPromptDlg dialog("Title", "Where?", m_program.c_str(), nullptr);
        const INT_PTR result = dialog.DoModal();
        run.Stop();
        EXPECT_TRUE(result == IDOK || (run.Fired() && (result == IDCANCEL || result == -1))) << result;
        EXPECT_TRUE(dialog.GetPath() == m_program.c_str() || (run.Fired() && dialog.GetPath().IsEmpty()));
    };
    RunDialogFaults([](HWND window) { Command(window, IDOK); }, show, {.system = 0});
}
