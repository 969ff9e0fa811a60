// The choice of texts, by keys and clicks.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/resource_ids.h>
#include <zogbl/string_select_dialog.h>

namespace {

using Mode = CZoStringSelectDialog::Mode;

constexpr char kSoBurg[] = "\x83\x5C burg";

class StringSelect : public ProductTest {
protected:
    StringSelect()
    {
        for (const LPCSTR text : {"Bern", "Basel", "Athen", "berlin", kSoBurg, m_bad})
            m_strings.Add(text);
    }
    static std::string Count(HWND window) { return TextOf(window, ZO_IDC_STRING_COUNT); }
    static void Characters(HWND window, const char* text)
    {
        for (; *text != '\0'; ++text) {
            ::PostMessageA(::GetDlgItem(window, ZO_IDC_STRING_LIST), WM_CHAR, static_cast<BYTE>(*text), 1);
            Key(window, VK_SHIFT);
        }
    }

    // Letters that have a case and are not English; without any in Japanese, whose characters have two bytes.
    const bool m_isDouble = GetSystemMetrics(SM_DBCSENABLED) != 0;
    const LPCSTR m_bad = m_isDouble ? "BAD OLS" : "BAD \xD6ls";
    const LPCSTR m_small = m_isDouble ? "bad o" : "bad \xF6";
    CStringArray m_strings;
};

} // namespace

TEST_F(StringSelect, ChoosesOne)
{
    CZoStringSelectDialog dialog("Town", "&Towns:", Mode::kOne);
    ASSERT_TRUE(dialog.SetStrings(m_strings));
    EXPECT_FALSE(dialog.Select(-1) || dialog.Select(6) || dialog.IsSelected(6));
    EXPECT_TRUE(dialog.Select(0) && dialog.Select(2) && !dialog.IsSelected(0));
    const DialogDriver::Act first = [&](HWND window) {
        const auto filter = [&](const char* text) { Type(window, ZO_IDC_STRING_FILTER, text); };
        const auto chosen = [&] { return RowText(window, ZO_IDC_STRING_LIST, ChosenRow(window, ZO_IDC_STRING_LIST)); };
        EXPECT_EQ((std::vector<int>{ZO_IDC_STRING_LIST, IDOK, IDCANCEL, ZO_IDC_STRING_FILTER}),
                  ExpectTabRounds(window));
        EXPECT_EQ("Athen", chosen());
        EXPECT_LT(0, SendDlgItemMessageA(window, ZO_IDC_STRING_LIST, LB_GETHORIZONTALEXTENT, 0, 0));
        const struct {
            const char *typed, *chosen;
        } kTyped[] = {{"b", "berlin"}, {"e", "berlin"},  {"rn", "Bern"},         {"x", "Bern"},
                      {"\b", "Bern"},  {m_small, m_bad}, {"\b\x83\x5C", kSoBurg}};
        for (const auto& row : kTyped) {
            Characters(window, row.typed);
            EXPECT_EQ(row.chosen, chosen()) << row.typed;
        }
        Key(window, VK_UP);
        Characters(window, "b");
        EXPECT_EQ(m_bad, chosen()) << "what was typed before the arrow is forgotten";
        filter("BER");
        EXPECT_EQ("Bern|berlin|", RowsOf(window, ZO_IDC_STRING_LIST));
        EXPECT_EQ("2 of 6 shown", Count(window));
        Press(window, IDOK);
        EXPECT_EQ(ZO_IDC_STRING_LIST, FocusOf(window)) << "what cannot be seen is not taken";
        filter("");
        EXPECT_EQ(m_bad, chosen()) << "it was kept";
        filter("b");
        Key(window, VK_UP);
        EXPECT_EQ(kSoBurg, chosen()) << "from the filter";
        ChangeLanguage(kGerman);
        EXPECT_EQ("5 von 6 angezeigt", Count(window));
        ExpectTidy(window);
        filter("zz");
        Press(window, IDOK);
        EXPECT_EQ(ZO_IDC_STRING_FILTER, FocusOf(window));
        filter(m_small + 4);
        Key(window, VK_RETURN);
    };
    const DialogDriver driver({first, [&](HWND window) { DoubleClick(window, ZO_IDC_STRING_LIST, 1); }});
    for (const int selected : {5, 1}) { // the only row that is left, and the one clicked twice
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(selected, dialog.GetSelected());
    }
}

TEST_F(StringSelect, ChoosesSeveralOfTenThousand)
{
    CZoStringSelectDialog dialog("Towns", "&Towns:", Mode::kSeveral);
    for (int i = 6; i <= CZoStringSelectDialog::MOST; ++i) {
        CString text;
        text.Format("%05d of many", i);
        m_strings.Add(text);
    }
    EXPECT_FALSE(dialog.SetStrings(m_strings));
    EXPECT_EQ(-1, dialog.GetSelected());
    m_strings.SetSize(CZoStringSelectDialog::MOST);
    ASSERT_TRUE(dialog.SetStrings(m_strings) && dialog.Select(2));
    std::vector<DialogDriver::Act> acts{[&](HWND window) {
        const HWND list = ::GetDlgItem(window, ZO_IDC_STRING_LIST);
        EXPECT_EQ((std::vector<int>{ZO_IDC_STRING_LIST, IDOK, IDCANCEL, ZO_IDC_STRING_ALL, ZO_IDC_STRING_NONE,
                                    ZO_IDC_STRING_FILTER}),
                  ExpectTabRounds(window));
        EXPECT_EQ("1 of 10,000 selected", Count(window));
        const DWORD begun = ::GetTickCount();
        ::SendMessageA(list, LB_SETTOPINDEX, 9000, 0);
        Type(window, ZO_IDC_STRING_FILTER, "9");
        EXPECT_EQ(0, RowOf(window, ZO_IDC_STRING_LIST, "00009 of many"));
        EXPECT_EQ(RowOf(window, ZO_IDC_STRING_LIST, "09000 of many"), ::SendMessageA(list, LB_GETTOPINDEX, 0, 0));
        Press(window, ZO_IDC_STRING_ALL);
        EXPECT_EQ("3,440 of 10,000 selected", Count(window));
        Type(window, ZO_IDC_STRING_FILTER, "");
        EXPECT_GT(5000u, ::GetTickCount() - begun);
        for (const char* typed : {"bern", "athen"}) { // one more, one less: the rows are shown as they are
            ::SetFocus(list);
            Characters(window, typed);
            Key(window, VK_SPACE);
        }
        EXPECT_EQ("3,440 of 10,000 selected", Count(window));
        ExpectTidy(window);
        Press(window, IDOK);
    }};
    for (const auto& way : WaysToGiveUp())
        acts.push_back([=](HWND window) {
            Press(window, ZO_IDC_STRING_NONE);
            EXPECT_EQ("0 of 10,000 selected", Count(window));
            way(window);
        });
    const DialogDriver driver(acts);
    for (size_t i = 0; i < acts.size(); ++i) {
        EXPECT_EQ(i == 0 ? IDOK : IDCANCEL, dialog.DoModal());
        EXPECT_TRUE(dialog.GetSelectedCount() == 3440 && dialog.IsSelected(0) && !dialog.IsSelected(2));
    }
}

TEST_F(StringSelect, SurvivesFaults)
{
    const auto person = [](HWND window) {
        SetDlgItemTextA(window, ZO_IDC_STRING_FILTER, "ber");
        Command(window, ZO_IDC_STRING_ALL);
        Command(window, IDOK);
    };
    const auto show = [&](const FaultRun& run) {
        CZoStringSelectDialog dialog("Towns", "&Towns:", Mode::kSeveral);
        const BOOL isFilled = dialog.SetStrings(m_strings) && dialog.Select(2);
        const INT_PTR result = dialog.DoModal();
        run.Stop();
        EXPECT_TRUE(result == IDOK || (run.Fired() && (result == -1 || result == IDCANCEL))) << result;
        EXPECT_TRUE(!isFilled || dialog.IsSelected(2)) << "chosen, though the filter hides it";
    };
    RunDialogFaults(person, show, {.memory = 2, .system = 2, .controls = 2});
}
