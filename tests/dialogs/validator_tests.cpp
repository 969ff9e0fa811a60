// Checks of dialog data, in a dialog that is shown.
#include "support/product_test.h"
#include "support/test.h"

#include <zogbl/validators.h>

namespace {

constexpr int kField = 11;
constexpr int kOther = 12;

using Check = std::function<void(CDataExchange*, CString&)>;

/// A field and its check.
class CheckedDialog : public CDialog {
public:
    explicit CheckedDialog(Check check) : CDialog(4001), m_check(std::move(check)) {}
    CString m_text;
    bool IsOpen() const { return m_bModalRunning != FALSE; }

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_Text(exchange, kOther, m_other);
        DDX_Text(exchange, kField, m_text);
        m_check(exchange, m_text);
    }

private:
    CString m_other;
    Check m_check;
};

class Validators : public ProductTest {
protected:
    TellingApp m_app;
};

} // namespace

TEST_F(Validators, RefuseAndTellWhy)
{
    const bool wide = IsDoubleByte();
    const auto length = [](auto function, int most, UINT message) -> Check {
        return [=](CDataExchange* exchange, CString& text) { function(exchange, text, most, message); };
    };
    const auto between = [](int most, int least) -> Check {
        return [=](CDataExchange* exchange, CString& text) {
            ZoDDV_CfgMaxMinCharsStr(exchange, text, most, 0, least, 4002);
        };
    };
    const auto range = [](auto function, auto value, auto least, auto most, UINT message = 0) -> Check {
        return [=](CDataExchange* exchange, CString&) { function(exchange, value, least, most, message); };
    };
    const auto trim = [](int allowEmpty) -> Check {
        return [=](CDataExchange* exchange, CString& text) { ZoDDV_TrimNotEmpty(exchange, text, 9999, allowEmpty); };
    };
    const auto box = [](UINT type) -> Check {
        return [=](CDataExchange* exchange, CString&) { ZoDDV_CfgMessageBox(exchange, 4002, kOther, type, 77); };
    };
    const std::string between1And255 = "The number must lie between 1 and 255. | 48 | 61714";
    const std::string atMost3 = "The text can have at most 3 characters. | 48 | 61716";
    const std::string empty = "This field is empty. Please enter a text. | ";
    const std::string wideText = "Double-byte characters cannot be used in this field. | 16 | 0";
    const struct {
        const char* name;
        Check check;
        std::string text, told;
        bool refused;
        std::string after = {}; // what is taken over instead of the text
        int answer = IDOK, focus = kField;
    } rows[] = {
        {"byte", range(ZoDDV_CfgMinMaxByteStr, 0, 1, 255), "0", between1And255, true},
        {"least byte", range(ZoDDV_CfgMinMaxByteStr, 1, 1, 255), "1", "", false},
        {"last byte", range(ZoDDV_CfgMinMaxByteStr, 255, 1, 255), "255", "", false},
        {"above", range(ZoDDV_CfgMinMaxByteStr, 3, 1, 2, 4001), "3", "From 1 to 2! | 48 | 4001", true},
        {"int", range(ZoDDV_CfgMinMaxIntStr, -6, -5, INT_MAX), "-6",
         "The number must lie between -5 and 2147483647. | 48 | 61714", true},
        {"least int", range(ZoDDV_CfgMinMaxIntStr, INT_MIN, INT_MIN, -1), "", "", false},
        {"long", range(ZoDDV_CfgMinMaxLongStr, 1l, LONG_MIN, 0l), "1",
         "The number must lie between -2147483648 and 0. | 48 | 61714", true},
        {"long within", range(ZoDDV_CfgMinMaxLongStr, 0l, LONG_MIN, 0l), "0", "", false},
        {"unsigned", range(ZoDDV_CfgMinMaxUIntStr, 2u, 3u, UINT_MAX), "2",
         "The number must lie between 3 and 4294967295. | 48 | 61714", true},
        {"unsigned within", range(ZoDDV_CfgMinMaxUIntStr, UINT_MAX, 3u, UINT_MAX), "", "", false},
        {"double word", range(ZoDDV_CfgMinMaxDWordStr, ULONG_MAX, 0ul, 0x80000000ul), "",
         "The number must lie between 0 and 2147483648. | 48 | 61714", true},
        {"double word within", range(ZoDDV_CfgMinMaxDWordStr, 0x80000000ul, 0ul, 0x80000000ul), "", "", false},
        {"too long", between(3, 2), "abcd", atMost3, true},
        {"too short", between(3, 2), "a", "Short %1 | 48 | 4002", true},
        {"long enough", between(3, 2), "ab", "", false},
        {"short enough", between(3, 2), "abc", "", false},
        {"bytes count", between(3, 2), "\x83\x5C\x83\x5C", atMost3, true},
        {"empty", length(ZoDDV_CfgNotEmptyOrTooLongStr, 3, 0), "", atMost3, true},
        {"not empty", length(ZoDDV_CfgNotEmptyOrTooLongStr, 3, 4001), "abcd", "From 3 to %2! | 48 | 4001", true},
        {"one character", length(ZoDDV_CfgNotEmptyOrTooLongStr, 3, 0), "a", "", false},
        {"double byte", length(ZoDDV_NoKanjiNumbers, 3, 0), "1\x83\x5C", wide ? wideText : "", wide},
        {"half width", length(ZoDDV_NoKanjiNumbers, 3, 0), "\xB1\xB2\xB3", "", false},
        {"double byte, too long", length(ZoDDV_NoKanjiNumbers, 3, 0), "1\x83\x5C\x83\x5C", atMost3, true},
        {"blanks around", trim(0), "  a b ", "", false, "a b"},
        {"blanks", trim(0), "   ", empty + "16 | 20555", true},
        {"blanks refused", trim(1), "   ", empty + "17 | 20555", true},
        {"blanks let pass", trim(1), "   ", empty + "17 | 20555", false, "", IDCANCEL},
        {"question, OK", box(MB_OKCANCEL), "", "Short %1 | 1 | 77", false},
        {"question, Cancel", box(MB_OKCANCEL), "", "Short %1 | 1 | 77", true, "", IDCANCEL, kOther},
        {"question, No", box(MB_YESNO), "", "Short %1 | 4 | 77", true, "", IDNO, kOther},
        {"question, Yes", box(MB_YESNO), "", "Short %1 | 4 | 77", false, "", IDYES},
        {"question, Abort", box(MB_ABORTRETRYIGNORE), "", "Short %1 | 2 | 77", true, "", IDABORT, kOther},
        {"question, Retry", box(MB_ABORTRETRYIGNORE), "", "Short %1 | 2 | 77", false, "", IDRETRY},
        {"question, Ignore", box(MB_ABORTRETRYIGNORE), "", "Short %1 | 2 | 77", false, "", IDIGNORE},
        {"question not shown", box(MB_YESNO), "", "Short %1 | 4 | 77", false, "", 0},
        {"question about the last field",
         [](CDataExchange* exchange, CString&) { ZoDDV_CfgMessageBox(exchange, 4002, -1, MB_YESNO, 77); }, "",
         "Short %1 | 4 | 77", true, "", IDNO},
        {"missing folder", [](CDataExchange* exchange, CString& text) { ZoDDV_CfgDirExists(exchange, text, 4001, 0); },
         "no:such", "", false},
        {"missing file", [](CDataExchange* exchange, CString& text) { ZoDDV_CfgFileExists(exchange, text, 4001); },
         "no:such", "", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        m_app.told.clear();
        m_app.answer = row.answer;
        CheckedDialog dialog(row.check);
        const DialogDriver driver({[&](HWND window) {
            EXPECT_EQ("", m_app.told) << "loading says nothing";
            Type(window, kOther, "other");
            Type(window, kField, "");
            SetDlgItemTextA(window, kField, row.text.c_str()); // which a keyboard has no two-byte characters for
            Press(window, IDOK);
            EXPECT_EQ(row.refused, dialog.IsOpen());
            if (!row.refused)
                return;
            EXPECT_EQ(row.focus, FocusOf(window));
            const HWND field = GetDlgItem(window, kField);
            const LRESULT all = MAKELONG(0, GetWindowTextLengthW(field));
            EXPECT_TRUE(row.focus != kField || SendMessageA(field, EM_GETSEL, 0, 0) == all) << "not selected";
            Press(window, IDCANCEL);
        }});
        EXPECT_EQ(row.refused ? IDCANCEL : IDOK, dialog.DoModal());
        EXPECT_EQ(row.told, m_app.told);
        if (!row.refused) {
            const bool isKept = row.after.empty() && row.answer != IDCANCEL;
            EXPECT_STREQ((isKept ? row.text : row.after).c_str(), dialog.m_text);
        }
    }
    for (const auto& row : rows) { // also without memory
        if (!row.refused || row.answer != IDOK)
            continue;
        m_app.answer = IDOK;
        AllocationFaults faults;
        RunFaultLoop(faults, [&](const FaultRun& run) {
            CheckedDialog dialog(row.check);
            const AnyDialogDriver driver([&](HWND window) {
                SetDlgItemTextA(window, kField, row.text.c_str());
                EXPECT_FALSE(dialog.UpdateData(TRUE)) << row.name;
                Command(window, IDCANCEL);
            });
            const INT_PTR result = dialog.DoModal();
            EXPECT_TRUE(result == IDCANCEL || (run.Fired() && result == -1)) << result;
            run.Stop();
            m_app.told = std::string();
        });
    }
}

TEST_F(Validators, ChangeStylesWhereTheShellHasThreeDimensions)
{
    CheckedDialog dialog([](CDataExchange* exchange, CString&) {
        ZoDDX_CfgTweakStyle(exchange, kField, WS_TABSTOP, ES_READONLY);
        ZoDDX_CfgTweakStyle(exchange, 9999, WS_TABSTOP, ES_READONLY); // is not there
    });
    const auto style = [](HWND window) {
        return static_cast<DWORD>(GetWindowLongA(GetDlgItem(window, kField), GWL_STYLE)) & (WS_TABSTOP | ES_READONLY);
    };
    const DialogDriver driver({[&](HWND window) {
        const DWORD changed = Family() != WindowsFamily::kWin32s ? ES_READONLY : WS_TABSTOP;
        EXPECT_EQ(changed, style(window));
        SetWindowLongA(GetDlgItem(window, kField), GWL_STYLE,
                       GetWindowLongA(GetDlgItem(window, kField), GWL_STYLE) | WS_TABSTOP);
        const DWORD before = style(window);
        EXPECT_TRUE(dialog.UpdateData(TRUE));
        EXPECT_EQ(before, style(window)) << "saving";
        SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) & ~DS_3DLOOK);
        EXPECT_TRUE(dialog.UpdateData(FALSE));
        EXPECT_EQ(before, style(window)) << "without the look";
        Press(window, IDCANCEL);
    }});
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}
