// The text panel: its layout and looks, what keys and clicks tell the parent, what screen readers hear.
#include "controls/tip_kit.h"

#include <zogbl/text_panel.h>

namespace {

constexpr COLORREF kInk = RGB(10, 60, 10), kFace = RGB(180, 180, 180), kDark = RGB(90, 90, 90),
                   kLight = RGB(250, 250, 250);
using Width = ZoPane::Width;
using Heard = std::vector<std::pair<DWORD, LONG>>;

ZoPane Button(int width) { return {Width::kFixed, width, DT_LEFT, ZoShorten::kEnd, ZoEdge::kThinRaised, TRUE}; }

/// Its left half is black, its right half nothing; 16 by 16 pixels of so many bits.
HICON MakeIcon(BYTE bits)
{
    BYTE shape[32];
    for (size_t i = 0; i < sizeof shape; ++i)
        shape[i] = i % 2 == 0 ? 0 : 0xFF;
    const BYTE black[16 * 16 * 4] = {};
    return CreateIcon(nullptr, 16, 16, 1, bits, shape, black);
}

class TextPanel : public testing::Test {
protected:
    TextPanel()
    {
        m_parent.m_describe = [](NMHDR& header, LRESULT&) -> std::string {
            const auto& pressed = reinterpret_cast<ZoNotifyPane&>(header);
            return header.code == ZON_PANE_PRESSED ? "pressed " + std::to_string(pressed.pane) : "";
        };
    }
    void Make(const std::vector<ZoPane>& panes, DWORD style = 0)
    {
        ASSERT_TRUE(m_panel.Create(style | WS_VISIBLE, CRect(0, 0, 300, 20), &m_parent, 5));
        ASSERT_TRUE(m_panel.SetPanes(panes.data(), static_cast<int>(panes.size())));
        m_panel.SetFont(&m_font);
        m_panel.UpdateWindow();
    }
    /// What is to be drawn, which then is.
    CRect Drawn()
    {
        CRect area;
        ::GetUpdateRect(m_panel, &area, FALSE);
        m_panel.UpdateWindow();
        return area;
    }
    /// Where the panes lie, as "from-to from-to ..."; "-" is one that is not shown.
    std::string Places()
    {
        std::string places;
        for (int pane = 1; pane <= m_panel.GetPaneCount(); ++pane) {
            const CRect area = m_panel.GetPaneArea(pane);
            const auto place = std::to_string(area.left) + "-" + std::to_string(area.right);
            places += (pane > 1 ? " " : "") + (area.IsRectEmpty() ? "-" : place);
        }
        return places;
    }
    CPoint Middle(int pane) { return m_panel.GetPaneArea(pane).CenterPoint(); }
    CSize TextSize(LPCSTR text)
    {
        CClientDC dc(&m_panel);
        dc.SelectObject(&m_font);
        return dc.GetTextExtent(text, lstrlen(text));
    }

    const Scheme m_scheme{
        {COLOR_BTNTEXT, kInk}, {COLOR_3DFACE, kFace}, {COLOR_3DSHADOW, kDark}, {COLOR_3DHILIGHT, kLight}};
    ControlParent m_parent;
    CZoTextPanel m_panel;
    PlainFont m_font;
};

} // namespace

TEST_F(TextPanel, SharesTheWidth)
{
    Make({{}});
    const HICON icon = MakeIcon(32);
    const int wide = TextSize("MMMM").cx + 2 * (1 + 3);
    const auto pair = [](int fitted) {
        return "0-" + std::to_string(298 - fitted) + " " + std::to_string(300 - fitted) + "-300";
    };
    const ZoPane fitted{Width::kFitted, 0}, bump{Width::kFitted, 0, DT_LEFT, ZoShorten::kEnd, ZoEdge::kBump};
    const struct {
        std::vector<ZoPane> panes;
        std::string places;
        const char* second = "MMMM"; // the text of the second pane
        HICON icon = nullptr;        // its picture
        int width = 300;
    } kRows[] = {
        {{{}}, "0-300"},
        {{{}, {}, {Width::kShared, 2}}, "0-74 76-150 152-300"},
        {{{Width::kFixed, 50}, {}, {Width::kFixed, 30}}, "0-50 52-268 270-300"},
        {{{}, fitted}, pair(wide)},
        {{{}, bump}, pair(wide + 2)},
        {{{}, {Width::kFitted, 100}}, pair(100)},
        {{{}, fitted}, pair(wide + 16 + 4), "MMMM", icon},
        {{{}, fitted}, pair(16 + 8), "", icon},
        {{{}, fitted}, "0-300 -", ""},
        {{{Width::kFixed, 0}, {}}, "- 0-300"},
        {{{Width::kFixed, 300}, {}, {Width::kFixed, 100}}, "0-150 - 152-202", "", nullptr, 204},
        {{{}, {}}, "- -", "", nullptr, 2},
    };
    for (const auto& row : kRows) {
        m_panel.MoveWindow(0, 0, row.width, 20);
        ASSERT_TRUE(m_panel.SetPanes(row.panes.data(), static_cast<int>(row.panes.size())));
        m_panel.SetPaneText(2, row.second);
        m_panel.SetPaneIcon(2, row.icon);
        EXPECT_EQ(row.places, Places());
        EXPECT_TRUE(AreEqual(*ScreenOf(m_panel), *PictureOf(m_panel))) << row.places;
    }
    DestroyIcon(icon);
}

TEST_F(TextPanel, DrawsOnlyWhatChanges)
{
    Make({{}, {Width::kFitted, 0}, {Width::kFixed, 40}});
    m_panel.SetPaneText(2, "abc");
    Drawn();
    const CRect second = m_panel.GetPaneArea(2), third = m_panel.GetPaneArea(3);
    const Events events(m_panel);
    EXPECT_TRUE(m_panel.SetPaneText(3, "x"));
    EXPECT_EQ(CRect(third.left + 1, 1, third.right - 1, 19), Drawn());
    m_panel.SetWindowText("first");
    EXPECT_EQ(CRect(1, 1, second.left - 3, 19), Drawn());
    EXPECT_EQ((Heard{{EVENT_OBJECT_NAMECHANGE, 3}, {EVENT_OBJECT_NAMECHANGE, 1}}), Events::Heard());
    EXPECT_TRUE(m_panel.SetPaneText(1, "first") && m_panel.SetPaneText(2, "abc") && m_panel.SetPaneText(3, "x"));
    m_panel.SetWindowText("first");
    EXPECT_EQ(CRect(), Drawn()) << "the same";
    EXPECT_EQ(Heard(), Events::Heard());
    m_panel.SetPaneText(2, "abcdef");
    EXPECT_EQ(CRect(0, 0, second.right, 20), Drawn()) << "its neighbour has less";
    EXPECT_FALSE(m_panel.IsPaneShortened(2)) << "fitted";
    EXPECT_STREQ("first", m_panel.GetPaneText(1));
    EXPECT_STREQ("abcdef", m_panel.GetPaneText(2));
}

TEST_F(TextPanel, ShowsTextsEdgesAndPictures)
{
    std::vector<ZoPane> panes = {{Width::kFixed, 100},
                                 {Width::kFixed, 100, DT_CENTER, ZoShorten::kEnd, ZoEdge::kRaised},
                                 {Width::kShared, 1, DT_RIGHT, ZoShorten::kEnd, ZoEdge::kNone}};
    Make(panes);
    for (int pane = 1; pane <= 3; ++pane)
        m_panel.SetPaneText(pane, "M\r\n&M");
    const int text = TextSize("M  &M").cx;
    auto picture = PictureOf(m_panel);
    EXPECT_EQ(kDark, picture->At(50, 0));
    EXPECT_EQ(kLight, picture->At(50, 19));
    EXPECT_EQ(kDark, picture->At(150, 18)) << "an edge of two pixels";
    EXPECT_EQ(kFace, picture->At(250, 0));
    for (const int left : {4, 102 + 50 - text / 2, 300 - 3 - text}) { // within a pixel
        EXPECT_GT(picture->Count(kInk, {left - 1, 2, left + text + 1, 18}), 20) << left;
        EXPECT_EQ(0, picture->Count(kInk, {left - 4, 2, left - 1, 18})) << left;
    }
    m_panel.EnableWindow(FALSE);
    EXPECT_EQ(0, PictureOf(m_panel)->Count(kInk, {0, 0, 300, 20}));
    EXPECT_GT(PictureOf(m_panel)->Count(kDark, {4, 2, 4 + text, 18}), 20);
    m_panel.EnableWindow(TRUE);

    const HICON icon = MakeIcon(1);
    EXPECT_TRUE(m_panel.SetPaneIcon(1, icon));
    picture = PictureOf(m_panel);
    EXPECT_EQ(8 * 16, picture->Count(0, {4, 2, 12, 18}));
    EXPECT_EQ(8 * 16, picture->Count(0, {0, 0, 300, 20}));
    EXPECT_GT(picture->Count(kInk, {4 + 16 + 4, 2, 100, 18}), 20) << "beside it";
    panes[0].size = 34;
    panes[0].alignment = DT_RIGHT;
    m_panel.SetPanes(panes.data(), 3);
    EXPECT_EQ(8 * 16, PictureOf(m_panel)->Count(0, {14, 2, 22, 18})) << "alone";
    EXPECT_EQ(0, PictureOf(m_panel)->Count(kInk, {0, 0, 34, 20}));
    m_panel.DestroyWindow();
    ControlParent mirrored(WS_EX_LAYOUTRTL);
    ASSERT_TRUE(m_panel.Create(WS_VISIBLE, CRect(0, 0, 300, 20), &mirrored, 5));
    EXPECT_EQ(8 * 16, ScreenOf(m_panel)->Count(0, {22, 2, 30, 18})) << "not mirrored: it begins at the far end";
    DestroyIcon(icon);
}

TEST_F(TextPanel, ObeysKeysAndClicks)
{
    Make({{}, Button(60), {Width::kFixed, 0}, Button(60)});
    CButton before;
    ASSERT_TRUE(before.Create("", WS_CHILD | WS_VISIBLE, CRect(0, 50, 50, 70), &m_parent, 6));
    before.SetFocus();
    m_panel.TakeKeyboard();
    EXPECT_GT(PictureOf(m_panel)->Count(kInk, m_panel.GetPaneArea(1)), 20) << "the focus is shown";
    EXPECT_EQ(0, PictureOf(m_panel)->Count(kInk, m_panel.GetPaneArea(2)));
    const Events events(m_panel);
    std::string went; // where the focus was after each key, and what the parent was told
    for (const UINT key :
         {VK_LEFT, VK_RIGHT, VK_SPACE, VK_RETURN, VK_DOWN, VK_RIGHT, VK_UP, VK_HOME, VK_SPACE, VK_END, VK_END}) {
        PressKey(m_panel, key);
        went += std::to_string(m_panel.GetFocusedPart()) + m_parent.Told() + " ";
        EXPECT_TRUE(AreEqual(*ScreenOf(m_panel), *PictureOf(m_panel))) << went;
    }
    EXPECT_EQ("1 2 2pressed 2 2pressed 2 4 4 2 1 1 4 4 ", went);
    EXPECT_EQ(5, Events::Count(EVENT_OBJECT_FOCUS));
    m_panel.SendMessage(WM_KEYDOWN, VK_SPACE, 0x40000001);
    EXPECT_EQ("", m_parent.Told()) << "the key is held down";
    for (const bool isEnabled : {true, false}) {
        m_panel.TakeKeyboard();
        ::SetFocus(nullptr); // to another program and back
        m_panel.SetFocus();
        before.EnableWindow(isEnabled);
        PressKey(m_panel, isEnabled ? VK_F6 : VK_ESCAPE);
        EXPECT_EQ(isEnabled ? before.m_hWnd : m_parent.m_hWnd, ::GetFocus());
    }
    MSG enter = {m_panel, WM_KEYDOWN, VK_RETURN, 1, 0, {}};
    EXPECT_EQ(DLGC_WANTARROWS | DLGC_WANTMESSAGE,
              m_panel.SendMessage(WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)));

    for (const int pane : {1, 2, 4})
        Click(m_panel, Middle(pane));
    SendMouse(m_panel, WM_LBUTTONDBLCLK, Middle(4), MK_LBUTTON);
    SendMouse(m_panel, WM_LBUTTONUP, Middle(4));
    EXPECT_EQ("pressed 2 pressed 4 pressed 4", m_parent.Told());
    Events::Heard();
    SendMouse(m_panel, WM_LBUTTONDOWN, Middle(2), MK_LBUTTON);
    EXPECT_EQ(kDark, ScreenOf(m_panel)->At(Middle(2).x, 0)) << "pressed";
    SendMouse(m_panel, WM_MOUSEMOVE, Middle(4), MK_LBUTTON);
    EXPECT_EQ(kLight, ScreenOf(m_panel)->At(Middle(2).x, 0));
    EXPECT_EQ(2, Events::Count(EVENT_OBJECT_STATECHANGE));
    SendMouse(m_panel, WM_LBUTTONUP, Middle(4));
    SendMouse(m_panel, WM_LBUTTONDOWN, Middle(2), MK_LBUTTON);
    PressKey(m_panel, VK_ESCAPE);
    EXPECT_EQ(kLight, PictureOf(m_panel)->At(Middle(2).x, 0)) << "let go";
    SendMouse(m_panel, WM_LBUTTONUP, Middle(2));
    m_panel.EnableWindow(FALSE);
    EXPECT_FALSE(m_panel.DoPartAction(2));
    m_panel.EnableWindow(TRUE);
    EXPECT_EQ("", m_parent.Told());
    m_panel.TakeKeyboard();
    PressKey(m_panel, VK_END);
    const ZoPane hidden[] = {{Width::kFixed, 0}, Button(60)}, gone = Button(0);
    m_panel.SetPanes(&gone, 1);
    EXPECT_FALSE(m_panel.DoPartAction(0));
    EXPECT_EQ("", m_parent.Told()) << "it is not shown";
    m_panel.SetPanes(hidden, 2);
    m_parent.SetFocus();
    m_panel.SetPanes(hidden, 1);
    m_panel.SetPanes(hidden, 2);
    m_panel.SetFocus();
    EXPECT_EQ(2, m_panel.GetFocusedPart()) << "the first that is shown";
    const ZoPane moved[] = {{Width::kFixed, 30}, {Width::kFixed, 0}};
    Events::Heard();
    m_panel.SetPanes(moved, 2);
    EXPECT_EQ(1, m_panel.GetFocusedPart()) << "what is hidden loses the focus";
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_FOCUS));
    m_panel.SetPanes(hidden, 2);
    m_parent.m_describe = [this](NMHDR&, LRESULT&) {
        m_panel.DestroyWindow();
        return "gone";
    };
    Click(m_panel, Middle(2));
    EXPECT_EQ("gone", m_parent.Told());
}

TEST_F(TextPanel, IsToldToScreenReaders)
{
    Make({{}});
    m_panel.SetWindowText("Ready");
    const Events events(m_panel);
    Reader reader(m_panel);
    const auto part = [&](LONG number) {
        return reader.Name(number) + "," + std::to_string(reader.Role(number)) + "," +
               std::to_string(reader.State(number));
    };
    EXPECT_EQ("Ready,41,64", part(0)) << "a text, read-only";
    EXPECT_EQ(0, reader.Count());
    m_panel.SetWindowText("Busy");
    EXPECT_EQ((Heard{{EVENT_OBJECT_NAMECHANGE, 0}}), Events::Heard());
    const ZoPane panes[] = {{}, Button(50), {Width::kFitted, 0}};
    ASSERT_TRUE(m_panel.SetPanes(panes, 3));
    m_panel.SetPaneText(2, "5 KB");
    m_panel.TakeKeyboard();
    EXPECT_EQ(3, reader.Count());
    EXPECT_EQ(",23,0", part(0)) << "a status bar";
    EXPECT_EQ("Busy,41,1048644", part(1)) << "focusable, focused, read-only";
    EXPECT_EQ("5 KB,43,1048576", part(2)) << "a button, focusable";
    SendMouse(m_panel, WM_LBUTTONDOWN, Middle(2), MK_LBUTTON);
    EXPECT_EQ("5 KB,43,1048584", part(2)) << "pressed";
    PressKey(m_panel, VK_ESCAPE);
    EXPECT_EQ(",41,32832", part(3)) << "invisible, read-only";
    EXPECT_EQ(1, reader.Focus());
    EXPECT_EQ(2, reader.At(reader.Area(2).CenterPoint()));
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(2)));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, reader->accDoDefaultAction(Reader::Part(1)));
    EXPECT_EQ("pressed 2", m_parent.Told());
}

TEST_F(TextPanel, ShowsTheWholeOfAShortenedTextAsATip)
{
    const std::string whole(3000, 'M');
    Make({{Width::kFixed, 60}, {}});
    m_panel.SetPaneText(1, whole.c_str());
    m_panel.SetPaneText(2, "short");
    EXPECT_TRUE(m_panel.IsPaneShortened(1));
    EXPECT_FALSE(m_panel.IsPaneShortened(2) || m_panel.IsPaneShortened(3));
    for (const std::string& text : {whole, std::string(10, 'W')}) {
        m_panel.SetPaneText(1, text.c_str());
        EXPECT_EQ("", ShownTip());
        EXPECT_EQ(text.substr(0, 1000), TipOver(m_panel, Middle(1)));
    }
    m_panel.DestroyWindow();
    EXPECT_EQ("", ShownTip());
    ::SetCursorPos(0, 0);
}

TEST_F(TextPanel, BelongsToTheCornerOfItsFrame)
{
    m_parent.ModifyStyle(0, WS_THICKFRAME);
    Make({{}, {}}, CZoTextPanel::kSizeGrip);
    EXPECT_EQ(300 - ::GetSystemMetrics(SM_CXVSCROLL), m_panel.GetPaneArea(2).right);
    CPoint corner(297, 17);
    m_panel.ClientToScreen(&corner);
    EXPECT_EQ(HTBOTTOMRIGHT, m_panel.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(corner.x, corner.y)));
    EXPECT_EQ(HTCLIENT, m_panel.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(corner.x - 100, corner.y)));
    EXPECT_GT(ScreenOf(m_panel)->Count(kDark, {286, 4, 300, 20}), 5) << "the grip";
    m_parent.ModifyStyle(WS_THICKFRAME, 0);
    m_panel.MoveWindow(0, 0, 301, 20);
    EXPECT_EQ(301, m_panel.GetPaneArea(2).right);
}

TEST_F(TextPanel, RefusesBadValues)
{
    Make({{}, {Width::kFixed, 40}});
    for (const ZoPane& bad : {ZoPane{static_cast<Width>(3)}, ZoPane{Width::kShared, 0}, ZoPane{Width::kFixed, -1},
                              ZoPane{Width::kFitted, 10001}, ZoPane{Width::kShared, 1, 3}})
        EXPECT_FALSE(m_panel.SetPanes(&bad, 1));
    const std::vector<ZoPane> many(CZoTextPanel::kMostPanes + 1);
    EXPECT_FALSE(m_panel.SetPanes(nullptr, 1) || m_panel.SetPanes(many.data(), 0) || m_panel.SetPanes(many.data(), 65));
    EXPECT_FALSE(m_panel.SetPaneText(0, "") || m_panel.SetPaneText(3, "") || m_panel.SetPaneText(1, nullptr));
    EXPECT_FALSE(m_panel.SetPaneIcon(3, nullptr) || m_panel.SetPaneIcon(1, reinterpret_cast<HICON>(m_panel.m_hWnd)));
    EXPECT_EQ("0-258 260-300", Places());
    const std::string huge(65536, '\x82');
    EXPECT_TRUE(m_panel.SetPaneText(2, huge.c_str()));
    m_panel.UpdateWindow();
}
