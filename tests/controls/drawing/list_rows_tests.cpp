// What boxes share: rows, colours, the window's font.
#include "list_rows.h"
#include "support/test.h"

TEST(ListRows, ScrollAsWideAsTheWidest)
{
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr));
    CListBox list;
    ASSERT_TRUE(list.Create(WS_HSCROLL, CRect(0, 0, 50, 50), &window, 1));
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(240, "Tahoma")); // not the system's own
    list.SetFont(&font);
    list.AddString("before");
    constexpr char kWidest[] = "the widest of the rows";
    constexpr int kBeside = 30;
    ZO_EXPECT_NO_LEAK({
        ListFilling filling(list.m_hWnd);
        for (const char* text : {"first", kWidest, "last"})
            filling.Add(text, kBeside);
        EXPECT_EQ(3, filling.GetCount());
    });
    EXPECT_EQ(3, list.GetCount());
    EXPECT_STREQ(kWidest, RowText(list.m_hWnd, 1));
    EXPECT_STREQ("", RowText(list.m_hWnd, 3));
    CClientDC dc(&list);
    dc.SelectObject(&font);
    constexpr int kMargins = 4;
    EXPECT_EQ(dc.GetTextExtent(kWidest, sizeof kWidest - 1).cx + kBeside + kMargins, list.GetHorizontalExtent());
    ListFilling nothing(nullptr);
    nothing.Add("text");
    EXPECT_EQ(0, nothing.GetCount());
}

TEST(ListRows, ColoursAreGivenBack)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    dc.SetTextColor(RGB(1, 2, 3));
    dc.SetBkColor(RGB(4, 5, 6));
    {
        const SelectedColors selected(dc.m_hDC, {RGB(7, 8, 9), RGB(10, 11, 12)});
        EXPECT_EQ(RGB(7, 8, 9), dc.GetTextColor());
        EXPECT_EQ(RGB(10, 11, 12), dc.GetBkColor());
    }
    EXPECT_EQ(RGB(1, 2, 3), dc.GetTextColor());
    EXPECT_EQ(RGB(4, 5, 6), dc.GetBkColor());
}
