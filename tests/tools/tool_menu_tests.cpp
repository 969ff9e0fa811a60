// The tools in the main window's menu.
#include "support/test.h"
#include "tool_fixture.h"

#include <zogbl/tool_menu.h>

namespace {

constexpr UINT kMarker = 500;
constexpr UINT kOther = 501;

class ToolMenu : public testing::Test {
protected:
    void SetUp() override
    {
        m_folder.Write("test.tlm", HeaderBytes() + RecordBytes("&Calculator", 4, "Reckons.") +
                                       RecordBytes("hidden", 0) +
                                       RecordBytes("R&&D", 4, "", "C:\\no such program.exe"));
        AfxGetThread()->m_pMainWnd = &m_window;
    }
    void TearDown() override { AfxGetThread()->m_pMainWnd = nullptr; }

    /// A menu bar of three: the marker stands in the first and in the last but one.
    void CreateMainWindow()
    {
        const HMENU bar = CreateMenu();
        const HMENU first = CreatePopupMenu();
        AppendMenuA(first, MF_STRING, kMarker, "decoy");
        m_tools = CreatePopupMenu();
        AppendMenuA(m_tools, MF_STRING, kOther, "other");
        AppendMenuA(m_tools, MF_STRING, kMarker, "marker");
        AppendMenuA(m_tools, MF_STRING, kMarker, "marker again");
        AppendMenuA(m_tools, MF_POPUP, reinterpret_cast<UINT_PTR>(CreatePopupMenu()), "submenu");
        for (const HMENU menu : {first, m_tools, CreatePopupMenu()})
            AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), "menu");
        AppendMenuA(bar, MF_STRING, 502, "no submenu");
        ASSERT_TRUE(
            m_window.CreateEx(0, AfxRegisterWndClass(0), "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, bar));
    }
    DWORD Load() { return m_menu.LoadFile(m_folder.Path("test.tlm").c_str()); }
    static std::string Summary(HMENU menu)
    {
        std::string summary;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            char text[64] = "";
            GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            const UINT id = GetMenuItemID(menu, i);
            summary += (id == 0 ? "-" : text + std::string("=") + std::to_string(static_cast<int>(id))) + " ";
        }
        return summary;
    }

    TestFolder m_folder;
    CWnd m_window;
    HMENU m_tools = nullptr;
    CTlmMenu m_menu;
};

} // namespace

TEST_F(ToolMenu, ShowsTheItemsBelowTheMarker)
{
    EXPECT_EQ(0u, Load());
    EXPECT_EQ(9u, m_menu.RefreshMenu(kMarker)) << "no window";
    CreateMainWindow();
    const std::string before = Summary(m_tools);
    EXPECT_EQ(10u, m_menu.RefreshMenu(499));
    EXPECT_EQ(before, Summary(m_tools));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(0u, m_menu.RefreshMenu(kMarker));
        EXPECT_EQ("other=501 marker=500 - &Calculator=24553 R&&D=24552 ", Summary(m_tools));
    }
    EXPECT_EQ("decoy=500 ", Summary(GetSubMenu(GetMenu(m_window.m_hWnd), 0))) << "the last one counts";

    EXPECT_EQ(4u, m_menu.LoadFile(nullptr));
    EXPECT_EQ(0u, m_menu.RefreshMenu(kMarker));
    EXPECT_EQ("other=501 marker=500 - &Calculator=24553 R&&D=24552 ", Summary(m_tools)) << "the items are kept";
    EXPECT_EQ(4u, m_menu.LoadFile(""));
    EXPECT_EQ(0u, m_menu.RefreshMenu(kMarker));
    EXPECT_EQ("other=501 marker=500 ", Summary(m_tools)) << "no separator either";
    EXPECT_EQ(5u, m_menu.LoadFile(m_folder.Path("missing").c_str()));
    AfxGetThread()->m_pMainWnd = nullptr;
    EXPECT_EQ(9u, m_menu.RefreshMenu(kMarker));
}

TEST_F(ToolMenu, AnswersCommands)
{
    class Update : public CCmdUI {
    public:
        void Enable(BOOL on) override { enabled = on; }
        BOOL enabled = FALSE;
    } update;
    EXPECT_EQ(0, m_menu.DoCommandMessage(24553, CN_COMMAND, nullptr, nullptr)) << "nothing is loaded";
    EXPECT_EQ(0u, Load());
    constexpr int kUpdate = -1;
    const struct {
        UINT id;
        int code;
        CCmdUI* update;
        int answer;
        DWORD status;
        BOOL enabled;
    } rows[] = {
        {24553, 1, &update, 0, 0, FALSE},           {24551, kUpdate, &update, 0, 0, FALSE},
        {24552, kUpdate, nullptr, 0, 0, FALSE},     {24552, kUpdate, &update, 1, 0, TRUE},
        {24551, CN_COMMAND, nullptr, 0, 0, FALSE},  {24552, CN_COMMAND, nullptr, 1, 14, FALSE},
        {24553, CN_COMMAND, &update, 1, 15, FALSE},
    };
    for (const auto& row : rows) {
        update.enabled = FALSE;
        EXPECT_EQ(row.answer, m_menu.DoCommandMessage(row.id, row.code, row.update, nullptr)) << row.id << row.code;
        EXPECT_EQ(row.enabled, update.enabled);
        EXPECT_EQ(row.status, m_menu.GetLastStatus());
    }
    CString text = "before";
    EXPECT_EQ(1, m_menu.GetMessageString(24553, text));
    EXPECT_STREQ("Reckons.", text);
    EXPECT_EQ(0, m_menu.GetMessageString(24551, text));
    EXPECT_STREQ("", text);
}
