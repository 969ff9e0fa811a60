// The tool bar in its frame and its set-up, by keys and clicks; what is kept of them, through versions and damage.
#include "dialog_faults.h"

#include "controls/acts.h"
#include "controls/tip_kit.h"
#include "support/mutation.h"
#include "support/product_test.h"

#include <dialogs/bars/tool_bar_content.h>
#include <ground/number_record.h>

#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/tool_bar_setup.h>

#include <oleacc.h>

namespace {

constexpr UINT kOpen = 5101, kSave = 5102, kPrint = 5103, kFind = 5104, kPictures = 5001;
constexpr int kAvailable = ZO_IDC_TOOL_BAR_AVAILABLE, kShown = ZO_IDC_TOOL_BAR_SHOWN;
constexpr COLORREF kBlue = RGB(0, 0, 255), kGrey = RGB(1, 120, 3), kInk = RGB(60, 1, 2);
constexpr ZoToolButton kButtons[] = {{kOpen, 0}, {kSave, 1}, {0}, {kPrint, 2}, {kFind, 3, FALSE}};

/// "1 | 2 (3)": a separator stands behind 1, and 3 is not shown.
std::vector<ZoToolButton> Table(const std::string& text)
{
    std::vector<ZoToolButton> buttons;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool isHidden = word[0] == '(';
        buttons.push_back({word == "|" ? 0U : static_cast<UINT>(std::stoi(word.substr(isHidden))), 0, !isHidden});
    }
    return buttons;
}
std::string Words(const std::vector<int>& commands)
{
    std::string text;
    for (const int command : commands)
        text += (text.empty() ? "" : " ") + (command != 0 ? std::to_string(command) : "|");
    return text;
}
ToolBarContent Content(const std::vector<ZoToolButton>& table)
{
    return {table.data(), static_cast<int>(table.size()), false};
}
std::vector<int> Commands(const std::string& text)
{
    std::vector<int> commands;
    for (const ZoToolButton& button : Table(text))
        commands.push_back(static_cast<int>(button.command));
    return commands;
}
std::string Visible(const ToolBarContent& content)
{
    std::vector<int> commands;
    for (const int button : content.GetVisible())
        commands.push_back(button >= 0 ? static_cast<int>(content.GetButton(button).command) : 0);
    return Words(commands);
}

class Frame : public CFrameWnd {
public:
    Frame()
    {
        EXPECT_TRUE(Create(AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(50, 50, 450, 350)));
        EXPECT_TRUE(status.Create("", WS_CHILD, CRect(), this, AFX_IDW_STATUS_BAR));
        EXPECT_TRUE(pane.CreateEx(0, "Edit", "", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, m_hWnd,
                                  reinterpret_cast<HMENU>(AFX_IDW_PANE_FIRST)));
        SetForegroundWindow();
        pane.SetFocus();
    }
    ~Frame() override { DestroyWindow(); }
    BOOL OnCmdMsg(UINT id, int code, void* extra, void* info) override
    {
        if (id < kOpen || id > kFind)
            return CFrameWnd::OnCmdMsg(id, code, extra, info);
        if (code == static_cast<int>(CN_UPDATE_COMMAND_UI)) {
            if (onUpdate)
                onUpdate();
            static_cast<CCmdUI*>(extra)->Enable(id != disabled);
            static_cast<CCmdUI*>(extra)->SetCheck(id == kSave ? check : 0);
        } else if (info == nullptr) {
            told += std::to_string(id) + (::GetFocus() == pane ? " " : "? ");
        }
        return TRUE;
    }
    std::string Told() { return std::exchange(told, ""); }

    CStatic status;
    CWnd pane;
    std::function<void()> onUpdate;
    UINT disabled = 0;
    int check = 0;
    std::string told;

protected:
    void PostNcDestroy() override {}
};

/// Menus that are not shown: what they would show is noted, and one of their commands is chosen.
struct MenuStub {
    explicit MenuStub(int command) { s_answer = command; }
    static BOOL WINAPI Track(HMENU menu, UINT, int, int, int, HWND, const RECT*)
    {
        s_shown.clear();
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            char text[100] = "";
            GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
            s_shown += (s_shown.empty() ? "" : "|") + std::string((state & MF_CHECKED) != 0 ? "+" : "") +
                       ((state & MF_GRAYED) != 0 ? "-" : "") + text;
        }
        return s_answer;
    }
    static inline std::string s_shown;
    static inline int s_answer = 0;
    const ImportPatch m_patch{kZogbl, "TrackPopupMenu", &Track};
};

template <class... ARGUMENTS> LONG WINAPI Refuse(ARGUMENTS...) { return ERROR_ACCESS_DENIED; }

BOOL WINAPI AnswerHighContrast(UINT, UINT, PVOID answer, UINT)
{
    static_cast<HIGHCONTRASTA*>(answer)->dwFlags = HCF_HIGHCONTRASTON;
    return TRUE;
}

class ToolBar : public ProductTest {
protected:
    ToolBar() { Make(); }
    void Make()
    {
        m_bar = std::make_unique<CZoToolBar>();
        ASSERT_TRUE(m_bar->Create(&m_frame));
        ASSERT_TRUE(m_bar->SetButtons(kButtons, 5, kPictures, 8, "Test"));
    }
    CZoControl& Strip() { return *m_bar->GetControl(); }
    void Idle() { m_frame.SendMessageToDescendants(WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE); }
    /// "Open|-Save": - disabled, + checked, ~ neither
    std::string Parts()
    {
        std::string text;
        for (int i = 1; i <= Strip().GetPartCount(); ++i) {
            ZoPart part;
            EXPECT_TRUE(Strip().DescribePart(i, part));
            text += (i > 1 ? "|" : "") + std::string((part.state & STATE_SYSTEM_UNAVAILABLE) != 0 ? "-" : "") +
                    ((part.state & STATE_SYSTEM_CHECKED) != 0 ? "+" : "") +
                    ((part.state & STATE_SYSTEM_MIXED) != 0 ? "~" : "") + part.name.GetString();
        }
        return text;
    }
    CPoint Middle(int part)
    {
        ZoPart description;
        EXPECT_TRUE(Strip().DescribePart(part, description));
        return description.area.CenterPoint();
    }
    std::string Text(CWnd& window)
    {
        CString text;
        window.GetWindowText(text);
        return text.GetString();
    }
    /// Opens the set-up.
    INT_PTR SetUp(const DialogDriver::Act& act, const DialogDriver::Act& box = nullptr)
    {
        const DialogDriver driver(box ? std::vector{act, box} : std::vector{act});
        return m_bar->SetUp();
    }

    Frame m_frame;
    std::unique_ptr<CZoToolBar> m_bar;
};

} // namespace

TEST(ToolBarContents, SurviveOtherVersions)
{
    const struct {
        const char *old, *user, *now, *shown;
    } kRows[] = {
        {"1 2 | 3", "1 2 | 3", "1 2 | 3 4", "1 2 | 3 4"},
        {"1 2 | 3", "3 | 2", "1 2 4 | 3 5", "3 5 | 2 4"},
        {"1 | 2", "1 | 2", "1 | 4 2", "1 | 4 2"},
        {"1 | 2", "1 2", "1 | 4 5 | 2", "1 | 4 5 | 2"},
        {"1 | 2", "1 | 2", "1 | 2 | 4", "1 | 2 | 4"},
        {"1 2", "2 1", "4 | 1 2", "4 2 1"},
        {"1 2 3", "1 3", "1 2 3", "1 3"},
        {"1 2", "", "1 2 | 4", "4"},
        {"1 2", "1 2", "1 2 (4)", "1 2"},
        {"1 (2)", "1", "1 2", "1"},
        {"1 2 3", "3 2 | 1", "1 3", "3 2 | 1"},
    };
    for (const auto& row : kRows) {
        const auto oldTable = Table(row.old), newTable = Table(row.now);
        ToolBarContent before = Content(oldTable), now = Content(newTable), again = Content(oldTable);
        before.shown = Commands(row.user);
        before.isAtBottom = true;
        before.isLocked = false;
        ASSERT_TRUE(now.Read(before.Write())) << row.user;
        EXPECT_EQ(row.shown, Words(now.shown)) << row.user;
        EXPECT_TRUE(now.isAtBottom && !now.isLocked);
        ASSERT_TRUE(again.Read(now.Write()));
        EXPECT_EQ(row.shown, Words(again.shown)) << "what it does not know is kept";
        now.shown = again.shown = {};
        ASSERT_TRUE(again.Read(now.Write()) && now.Read(again.Write()));
        EXPECT_EQ("", Words(now.shown)) << "a later version's buttons do not come again";
        now.Ship();
        EXPECT_EQ(Words(Content(newTable).shown), Words(now.shown));
        EXPECT_EQ(Content(newTable).Write(), now.Write()) << "it remembers nothing";
        EXPECT_TRUE(now.isLocked && !now.isAtBottom);
    }
    const auto table = Table("1 2 3");
    ToolBarContent content = Content(table);
    content.shown = Commands("| 9 1 | | 8 | 2 | 7");
    EXPECT_EQ("1 | 2", Visible(content));
    std::vector<int> all(ToolBarContent::kMostShown);
    std::iota(all.begin(), all.end(), 65535 - ToolBarContent::kMostShown);
    content.shown = all;
    const CString longest = content.Write();
    EXPECT_LE(longest.GetLength(), 4095);
    EXPECT_TRUE(Content(table).Read(longest));
}

TEST(ToolBarContents, AreAsShippedIfDamaged)
{
    const struct {
        std::vector<int> numbers;
        bool isWhole;
    } kRows[] = {{{0, 0, 1, 7, 1, 7}, true},
                 {{1, 1, 0, 0}, true},
                 {{1, 1, 0, 1, 0, 99}, true}, // of a newer one
                 {{}, false},
                 {{0}, false},
                 {{1, 1}, false},
                 {{1, 1, 1}, false},
                 {{1, 1, 0, 2, 5}, false},
                 {{1, 1, 0, 2, 5, 5}, false},
                 {{0, 0, 1, 0, 0}, false},
                 {{0, 0, 2, 5, 5, 0}, false},
                 {{0, 0, 0, 1, 65536}, false},
                 {{0, 0, 0, 257}, false},
                 {{0, 0, 0, 1, 65535}, true},
                 {{0, 0, 1, 65536, 0}, false}};
    const auto table = Table("1 | 2 3");
    for (const auto& row : kRows) {
        NumberRecordWriter record("ZoToolBar1");
        record.Add(static_cast<int>(row.numbers.size()));
        for (const int number : row.numbers)
            record.Add(number);
        ToolBarContent content = Content(table);
        EXPECT_EQ(row.isWhole, content.Read(record.Finish())) << Words(row.numbers);
        EXPECT_TRUE(row.isWhole || (Words(content.shown) == "1 | 2 3" && content.isLocked)) << Words(row.numbers);
    }
    ToolBarContent user = Content(table);
    user.shown = Commands("3 | 9 1");
    const std::string whole = user.Write().GetString();
    ForEachMutation(
        [&](unsigned, Random& random) {
            std::string damaged = whole;
            const auto at = [&] { return random() % damaged.size(); };
            Damage(random, 0, 3,
                   {[&] { damaged[at()] = static_cast<char>(1 + random() % 255); }, [&] { damaged.resize(1 + at()); },
                    [&] { damaged += whole.substr(random() % whole.size()); }});
            ToolBarContent content = Content(table);
            const bool isRead = content.Read(damaged.c_str());
            EXPECT_EQ(isRead ? "3 | 1" : "1 | 2 3", Visible(content)) << damaged;
            return isRead;
        },
        {.usual = 5000});
    const ZoToolButton kBad[][2] = {{{1}, {1}}, {{0x10000}}, {{1, -1}}};
    for (const auto& bad : kBad)
        EXPECT_FALSE(ToolBarContent::IsValid(bad, 2));
    EXPECT_FALSE(ToolBarContent::IsValid(kBad[0], 0) || ToolBarContent::IsValid(nullptr, 1));
}

TEST_F(ToolBar, ShowsStatesAndSendsCommands)
{
    CZoToolBar early;
    EXPECT_EQ(-1, early.SetUp());
    EXPECT_TRUE(early.Keep() == 0 && early.IsLocked() && !early.TakeKeyboard() && !m_bar->Create(&m_frame));
    for (const UINT picture : {4U, 5U}) {
        const ZoToolButton button[] = {{kOpen, static_cast<int>(picture)}};
        EXPECT_FALSE(m_bar->SetButtons(button, 1, kPictures + picture % 2, 8, nullptr));
    }
    EXPECT_FALSE(m_bar->SetButtons(kButtons, 5, kPictures, 7, nullptr));
    EXPECT_EQ("Open|Save|Print", Parts());
    m_frame.disabled = kOpen;
    m_frame.check = 1;
    const Events events(Strip());
    Idle();
    EXPECT_EQ("state 1, state 2", HeardText());
    Idle();
    EXPECT_EQ("", HeardText()) << "nothing new";
    EXPECT_EQ("-Open|+Save|Print", Parts());
    m_frame.check = 2;
    Idle();
    EXPECT_EQ("-Open|~Save|Print", Parts());
    Click(Strip(), Middle(1));
    EXPECT_EQ("", m_frame.Told());
    Click(Strip(), Middle(2));
    EXPECT_EQ("5102 ", m_frame.Told()) << "without the focus";
    m_frame.disabled = kSave;
    Click(Strip(), Middle(2));
    EXPECT_EQ("", m_frame.Told()) << "disabled since the last idle moment";
    m_frame.disabled = 0;
    Idle();
    SendMouse(Strip(), WM_LBUTTONDOWN, Middle(1), MK_LBUTTON);
    SendMouse(Strip(), WM_LBUTTONUP, Middle(2));
    SendMouse(Strip(), WM_LBUTTONDOWN, Middle(1), MK_LBUTTON);
    PressKey(Strip(), VK_ESCAPE);
    SendMouse(Strip(), WM_LBUTTONUP, Middle(1));
    EXPECT_EQ("", m_frame.Told());
    EXPECT_TRUE(Strip().DoPartAction(3));
    EXPECT_EQ("5103 ", m_frame.Told());
    EXPECT_EQ("Print", TipOver(Strip(), Middle(3)));
    EXPECT_EQ("Prints it.", Text(m_frame.status));
    Strip().SendMessage(WM_MOUSELEAVE);
    EXPECT_EQ("", Text(m_frame.status));
    m_frame.onUpdate = [&] { EXPECT_TRUE(m_bar->SetButtons(kButtons, 1, kPictures, 8, nullptr)); };
    Idle();
    EXPECT_EQ("Open", Parts());
    m_frame.onUpdate = nullptr;
    Make();
    m_bar->SetWindowPos(nullptr, 0, 0, CZoGlobalGDIData::Scale(45), CZoGlobalGDIData::Scale(40),
                        SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ("Open|More buttons", Parts());
    m_frame.disabled = kSave;
    const MenuStub menu(kPrint);
    Idle();
    Click(Strip(), Middle(2));
    EXPECT_EQ("-Save|-|Print", MenuStub::s_shown);
    EXPECT_EQ("5103 ", m_frame.Told());
    EXPECT_EQ("Open", TipOver(Strip(), Middle(1)));
    ChangeLanguage(kGerman);
    EXPECT_EQ("", ShownTip()) << "in the language of before";
    EXPECT_EQ(0u, Parts().find("Open|Weitere Schaltfl"));
}

TEST_F(ToolBar, IsReachedByKeysWhichGoBack)
{
    for (const UINT key : {VK_ESCAPE, VK_F6, VK_TAB}) {
        EXPECT_TRUE(m_bar->TakeKeyboard());
        EXPECT_TRUE(m_bar->HasKeyboard());
        PressKey(Strip(), key);
        EXPECT_EQ(&m_frame.pane, CWnd::GetFocus()) << key;
    }
    EXPECT_FALSE(m_bar->HasKeyboard());
    EXPECT_TRUE(m_bar->TakeKeyboard());
    for (const UINT key : {VK_F6, VK_RETURN}) { // the frame may have accelerators
        MSG message = {Strip(), WM_KEYDOWN, key, 1, 0, {}};
        EXPECT_EQ(key == VK_RETURN, Strip().PreTranslateMessage(&message));
    }
    EXPECT_EQ("5101 ", m_frame.Told());
    const struct {
        const char *keys, *told, *message;
    } kRows[] = {{"k13", "5101 ", ""},         {"k39 k39 k39 k32", "5103 ", ""}, {"k37 k13", "5102 ", ""},
                 {"k36 k39", "", "Saves it."}, {"k35", "", "Prints it."},        {"k40 k36 k13", "5101 ", ""}};
    for (const auto& row : kRows) {
        EXPECT_TRUE(m_bar->TakeKeyboard());
        const Events events(Strip());
        Play(Strip(), row.keys);
        EXPECT_EQ(row.told, m_frame.Told()) << row.keys;
        EXPECT_EQ(row.message, Text(m_frame.status)) << row.keys;
        EXPECT_EQ(*row.told == '\0', m_bar->HasKeyboard()) << row.keys;
    }
    m_bar->LeaveKeyboard();
    m_frame.disabled = kOpen;
    EXPECT_TRUE(m_bar->TakeKeyboard());
    Play(Strip(), "k36 k13");
    EXPECT_EQ("", m_frame.Told());
    EXPECT_TRUE(m_bar->HasKeyboard()) << "on a disabled button";
    m_frame.ShowControlBar(m_bar.get(), FALSE, FALSE);
    EXPECT_FALSE(m_bar->TakeKeyboard());
}

TEST_F(ToolBar, GoesToTheOtherEdgeWhenUnlocked)
{
    const auto place = [&] { return AreaOf(*m_bar).top == AreaOf(m_frame).top ? "top" : "bottom"; };
    const std::string drag = "d250,8 m250,20 m250,290 u250,290";
    Play(Strip(), drag);
    EXPECT_STREQ("top", place()) << "locked";
    {
        const MenuStub menu(1);
        Strip().SendMessage(WM_CONTEXTMENU, 0, -1);
        EXPECT_EQ("+&Lock the tool bar|+-At the &top|-At the &bottom|&Set up...", MenuStub::s_shown);
    }
    EXPECT_FALSE(m_bar->IsLocked());
    Play(Strip(), "d250,8 m250,290");
    EXPECT_STREQ("bottom", place());
    EXPECT_EQ(AreaOf(m_frame.pane).bottom, AreaOf(*m_bar).top) << "the pane fills the rest";
    PressKey(Strip(), VK_ESCAPE);
    EXPECT_STREQ("top", place());
    Play(Strip(), drag);
    EXPECT_STREQ("bottom", place());
    EXPECT_EQ(nullptr, m_bar->GetWindow(GW_HWNDNEXT)) << "above other bars at that edge";
    Make();
    EXPECT_STREQ("bottom", place()) << "kept";
    EXPECT_FALSE(m_bar->IsLocked());
    {
        const BoxStub box(IDOK);
        const ImportPatch noSet(kZogbl, "RegSetValueExA", &Refuse<HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD>);
        const ImportPatch noText(kZogbl, "RegSetValueA", &Refuse<HKEY, LPCSTR, DWORD, LPCSTR, DWORD>);
        const MenuStub menu(2);
        Strip().SendMessage(WM_CONTEXTMENU, 0, -1);
        EXPECT_EQ("The tool bar could not be saved. It stays like this until the program ends.", box.Last().text);
    }
    EXPECT_STREQ("top", place());
}

TEST_F(ToolBar, DrawsPicturesThatCanBeSeen)
{
    const auto colors = [&] {
        const auto picture = PictureOf(Strip());
        ZoPart part;
        Strip().DescribePart(1, part);
        part.area.DeflateRect(2, 2); // the pointer may be there
        return std::tuple(picture->Count(kBlue, part.area), picture->Count(kGrey, part.area),
                          picture->Count(kInk, part.area));
    };
    const int square = CZoGlobalGDIData::Scale(4) * CZoGlobalGDIData::Scale(4);
    const Scheme scheme{{COLOR_GRAYTEXT, kGrey}, {COLOR_BTNTEXT, kInk}, {COLOR_3DSHADOW, kGrey}};
    EXPECT_EQ(std::tuple(square, 0, 0), colors());
    m_frame.disabled = kOpen;
    Idle();
    EXPECT_EQ(std::tuple(0, square, 0), colors());
    const ImportPatch contrast(kZogbl, "SystemParametersInfoA", &AnswerHighContrast);
    EXPECT_EQ(std::tuple(0, square, 0), colors());
    m_frame.disabled = 0;
    Idle();
    EXPECT_EQ(std::tuple(0, 0, square), colors()) << "in the colour of texts";
}

TEST_F(ToolBar, SetUpMovesButtonsByKeysAndClicks)
{
    for (const auto& way : WaysToGiveUp()) {
        EXPECT_EQ(IDCANCEL, SetUp([&](HWND window) {
                      Press(window, ZO_IDC_TOOL_BAR_REMOVE);
                      Press(window, ZO_IDC_TOOL_BAR_LOCKED);
                      way(window);
                  }));
    }
    EXPECT_EQ("Open|Save|Print", Parts());
    EXPECT_TRUE(m_bar->IsLocked());
    EXPECT_EQ(IDOK, SetUp([&](HWND window) {
                  EXPECT_EQ((std::vector<int>{kAvailable, ZO_IDC_TOOL_BAR_ADD, ZO_IDC_TOOL_BAR_REMOVE, kShown,
                                              ZO_IDC_TOOL_BAR_DOWN, ZO_IDC_TOOL_BAR_RESET, ZO_IDC_TOOL_BAR_TOP,
                                              ZO_IDC_TOOL_BAR_LOCKED, IDOK, IDCANCEL}),
                            ExpectTabRounds(window));
                  EXPECT_EQ("Separator|Find & Mark|", RowsOf(window, kAvailable));
                  EXPECT_EQ("Open|Save|Separator|Print|", RowsOf(window, kShown));
                  Choose(window, kAvailable, 1);
                  AccessKey(window, 'a');
                  EXPECT_EQ("Open|Find & Mark|Save|Separator|Print|", RowsOf(window, kShown)) << "behind the selected";
                  EXPECT_EQ(1, ChosenRow(window, kShown));
                  AccessKey(window, 'u');
                  EXPECT_EQ("Find & Mark|Open|Save|Separator|Print|", RowsOf(window, kShown));
                  EXPECT_EQ(kShown, FocusOf(window)) << "it cannot go up any more";
                  DoubleClick(window, kShown, 2);
                  EXPECT_EQ("Separator|Save|", RowsOf(window, kAvailable));
                  EXPECT_EQ(1, ChosenRow(window, kAvailable));
                  DoubleClick(window, kAvailable, 0);
                  EXPECT_EQ("Separator|Save|", RowsOf(window, kAvailable)) << "there are always more";
                  AccessKey(window, 'd');
                  EXPECT_EQ("Find & Mark|Open|Separator|Print|Separator|", RowsOf(window, kShown));
                  ChangeLanguage(kGerman);
                  EXPECT_EQ("Find & Mark|Open|Trennlinie|Print|Trennlinie|", RowsOf(window, kShown));
                  EXPECT_EQ(4, ChosenRow(window, kShown));
                  ExpectTidy(window);
                  ChangeLanguage(kEnglish);
                  ExpectTidy(window);
                  Press(window, ZO_IDC_TOOL_BAR_BOTTOM);
                  Press(window, ZO_IDC_TOOL_BAR_LOCKED);
                  Key(window, VK_RETURN);
              }));
    EXPECT_EQ("Find & Mark|Open|Print", Parts());
    Make();
    EXPECT_EQ("Find & Mark|Open|Print", Parts());
    EXPECT_TRUE(m_bar->IsAtBottom() && !m_bar->IsLocked());
    EXPECT_EQ(IDOK, SetUp([&](HWND window) {
                  for (int rows = 5; rows > 0; --rows)
                      Press(window, ZO_IDC_TOOL_BAR_REMOVE);
                  EXPECT_EQ("", RowsOf(window, kShown));
                  EXPECT_FALSE(IsEnabled(window, ZO_IDC_TOOL_BAR_REMOVE) || IsEnabled(window, ZO_IDC_TOOL_BAR_DOWN));
                  for (int rows = 0; rows < ToolBarContent::kMostShown; ++rows)
                      Press(window, ZO_IDC_TOOL_BAR_ADD);
                  EXPECT_FALSE(IsEnabled(window, ZO_IDC_TOOL_BAR_ADD)) << "full";
                  Press(window, ZO_IDC_TOOL_BAR_RESET);
                  EXPECT_EQ("Open|Save|Separator|Print|", RowsOf(window, kShown));
                  EXPECT_TRUE(IsChecked(window, ZO_IDC_TOOL_BAR_TOP) && IsChecked(window, ZO_IDC_TOOL_BAR_LOCKED));
                  Press(window, IDOK);
              }));
    Make();
    EXPECT_EQ("Open|Save|Print", Parts());
    EXPECT_TRUE(m_bar->IsLocked() && !m_bar->IsAtBottom());
}

TEST_F(ToolBar, SetUpMovesButtonsByDragging)
{
    const struct {
        int from, row, to, place; // -1: outside
        const char *shown, *available;
    } kRows[] = {
        {kShown, 0, kShown, 2, "Save|Open|Separator|Print|", "Separator|Find & Mark|"},
        {kShown, 3, kShown, 0, "Print|Save|Open|Separator|", "Separator|Find & Mark|"},
        {kShown, 0, kShown, 1, "Print|Save|Open|Separator|", "Separator|Find & Mark|"},
        {kShown, 0, kShown, 4, "Save|Open|Separator|Print|", "Separator|Find & Mark|"},
        {kShown, 0, kAvailable, 0, "Open|Separator|Print|", "Separator|Save|Find & Mark|"},
        {kAvailable, 2, kShown, 1, "Open|Find & Mark|Separator|Print|", "Separator|Save|"},
        {kAvailable, 0, kAvailable, 1, "Open|Find & Mark|Separator|Print|", "Separator|Save|"},
        {kShown, 0, IDOK, 0, "Open|Find & Mark|Separator|Print|", "Separator|Save|"},
    };
    EXPECT_EQ(IDCANCEL, SetUp([&](HWND window) {
                  for (const auto& row : kRows) {
                      const HWND list = GetDlgItem(window, row.from);
                      const auto height = static_cast<int>(SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
                      CPoint end(20, row.place * height + (row.place > 0 ? -2 : 2));
                      MapWindowPoints(GetDlgItem(window, row.to), list, &end, 1);
                      const auto drag = [&](UINT last) {
                          SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, row.row * height + 5));
                          SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(20, row.row * height + 6));
                          SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(end.x, end.y));
                          EXPECT_EQ(list, GetCapture());
                          if (last == WM_LBUTTONUP)
                              SendMessageA(list, last, 0, MAKELPARAM(end.x, end.y));
                          else
                              Key(window, VK_ESCAPE);
                          EXPECT_EQ(nullptr, GetCapture());
                      };
                      const std::string before = RowsOf(window, kShown);
                      drag(WM_KEYDOWN);
                      EXPECT_EQ(before, RowsOf(window, kShown)) << "given up";
                      drag(WM_LBUTTONUP);
                      EXPECT_EQ(row.shown, RowsOf(window, kShown));
                      EXPECT_EQ(row.available, RowsOf(window, kAvailable));
                  }
                  Press(window, IDCANCEL);
              }));
}

TEST_F(ToolBar, SurvivesFaults)
{
    m_bar.reset();
    RunDialogFaults(
        [](HWND window) {
            for (const int button : {ZO_IDC_TOOL_BAR_REMOVE, ZO_IDC_TOOL_BAR_ADD, ZO_IDC_TOOL_BAR_RESET, IDOK})
                Command(window, button);
        },
        [&](const FaultRun& run) {
            CZoToolBar bar;
            const bool isMade = bar.Create(&m_frame) && bar.SetButtons(kButtons, 5, kPictures, 8, "Test");
            EXPECT_TRUE(isMade || run.Fired());
            if (!isMade)
                return;
            Idle();
            PictureOf(*bar.GetControl());
            bar.SetUp();
            run.Stop();
            Idle();
            EXPECT_EQ(3, bar.GetControl()->GetPartCount());
        },
        {.memory = 3, .system = 2});
}
