// Device contexts.

#include "support/test.h"

namespace {

/// A memory context with a white bitmap of 32 bits, 40 by 20 pixels.
class Picture : public CDC {
public:
    Picture()
    {
        CreateCompatibleDC(nullptr);
        m_bitmap.CreateBitmap(40, 20, 1, 32, nullptr);
        m_before = SelectObject(&m_bitmap);
        PatBlt(0, 0, 40, 20, WHITENESS);
    }
    ~Picture() override { SelectObject(m_before); }

    /// The pixels that are no longer white: how many, and their box.
    std::string Drawn() const
    {
        CRect box(99, 99, 0, 0);
        int count = 0;
        for (int x = 0; x < 40; ++x) {
            for (int y = 0; y < 20; ++y) {
                if (GetPixel(x, y) == RGB(255, 255, 255))
                    continue;
                ++count;
                box = CRect((std::min<int>)(box.left, x), (std::min<int>)(box.top, y), (std::max<int>)(box.right, x),
                            (std::max<int>)(box.bottom, y));
            }
        }
        return count == 0 ? "nothing"
                          : std::to_string(count) + " in " + std::to_string(box.left) + "," + std::to_string(box.top) +
                                " to " + std::to_string(box.right) + "," + std::to_string(box.bottom);
    }

    CBitmap m_bitmap;

private:
    CBitmap* m_before;
};

BOOL CALLBACK DrawBlock(HDC dc, LPARAM, int) { return PatBlt(dc, 0, 0, 4, 4, WHITENESS); }
BOOL CALLBACK DrawComplex(HDC dc, LPARAM, WPARAM, int cx, int cy) { return PatBlt(dc, 0, 0, cx, cy, BLACKNESS); }

} // namespace

TEST(DeviceContext, IsFoundByItsHandle)
{
    HDC handle;
    ZO_EXPECT_NO_LEAK({
        CDC dc;
        EXPECT_FALSE(dc.Attach(nullptr));
        EXPECT_FALSE(dc.DeleteDC());
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        handle = dc;
        EXPECT_EQ(&dc, CDC::FromHandle(handle));
        EXPECT_EQ(handle, dc.m_hAttribDC);
        EXPECT_FALSE(dc.CreateIC("DISPLAY", nullptr, nullptr, nullptr)) << "it holds one";
        EXPECT_EQ(handle, dc.Detach());
        EXPECT_TRUE(dc.m_hDC == nullptr && dc.m_hAttribDC == nullptr);
        const CDC* temporary = CDC::FromHandle(handle);
        ASSERT_NE(&dc, temporary);
        EXPECT_EQ(handle, temporary->m_hAttribDC);
        EXPECT_EQ(temporary, CDC::FromHandle(handle));
        CDC::DeleteTempMap();
        EXPECT_NE(0u, GetObjectType(handle)) << "a temporary object deleted it";
        EXPECT_TRUE(dc.Attach(handle));
    });
    EXPECT_EQ(0u, GetObjectType(handle));
    EXPECT_EQ(nullptr, CDC::FromHandle(handle));
    EXPECT_EQ(nullptr, CDC::FromHandle(static_cast<HDC>(GetStockObject(BLACK_PEN))));
}

TEST(DeviceContext, OfAWindowEndsWithItsObject)
{
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr));
    CWnd gone;
    gone.m_hWnd = reinterpret_cast<HWND>(0x7ffe);
    AllocationFaults faults;
    const auto check = [&](auto make) {
        RunFaultActs(faults, [&](const FaultRun& run) {
            HDC handle = nullptr;
            bool thrown = false;
            try {
                run.Act([&] {
                    auto dc = make(&window);
                    handle = *dc;
                    run.Stop();
                    EXPECT_EQ(&window, dc->GetWindow());
                    EXPECT_EQ(dc.get(), CDC::FromHandle(handle));
                });
            } catch (CMemoryException* e) {
                e->Delete();
                thrown = true;
            }
            EXPECT_EQ(run.Fired(), thrown);
            EXPECT_EQ(nullptr, WindowFromDC(handle));
        });
        try {
            make(&gone);
            ADD_FAILURE() << "a window that is gone has no context";
        } catch (CResourceException* e) {
            e->Delete();
        }
    };
    check([](CWnd* w) { return std::make_unique<CClientDC>(w); });
    check([](CWnd* w) { return std::make_unique<CWindowDC>(w); });
    check([](CWnd* w) { return std::make_unique<CPaintDC>(w); });
    window.ShowWindow(SW_SHOW);
    window.Invalidate();
    {
        const CPaintDC dc(&window);
        EXPECT_EQ(dc.m_hDC, dc.m_ps.hdc);
        EXPECT_FALSE(GetUpdateRect(window.m_hWnd, nullptr, FALSE));
    }
    const CClientDC screen(nullptr);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), screen.GetDeviceCaps(HORZRES));
}

TEST(DeviceContext, GivesBackWhatWasSelected)
{
    Picture dc;
    const auto check = [&dc](const char* name, auto& object, auto current) {
        SCOPED_TRACE(name);
        auto* before = dc.SelectObject(&object);
        ASSERT_NE(nullptr, before);
        EXPECT_EQ(&object, (dc.*current)());
        EXPECT_EQ(&object, dc.SelectObject(static_cast<CGdiObject*>(before)));
        EXPECT_EQ(before, (dc.*current)());
        decltype(before) none = nullptr;
        EXPECT_EQ(nullptr, dc.SelectObject(none));
        EXPECT_EQ(before, (dc.*current)());
    };
    CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
    CBrush brush(RGB(0, 255, 0));
    CFont font;
    font.CreatePointFont(100, "Arial");
    CBitmap bitmap;
    bitmap.CreateBitmap(4, 4, 1, 1, nullptr);
    check("pen", pen, &CDC::GetCurrentPen);
    check("brush", brush, &CDC::GetCurrentBrush);
    check("font", font, &CDC::GetCurrentFont);
    check("bitmap", bitmap, &CDC::GetCurrentBitmap);

    CPen* old = dc.SelectObject(&pen);
    EXPECT_EQ(&pen, dc.SelectStockObject(BLACK_PEN));
    EXPECT_EQ(nullptr, dc.SelectStockObject(999));
    dc.SelectObject(old);
    CRgn region;
    region.CreateRectRgn(2, 3, 10, 11);
    EXPECT_EQ(nullptr, dc.SelectObject(static_cast<CGdiObject*>(&region)));
    CRect box;
    EXPECT_EQ(SIMPLEREGION, dc.GetClipBox(&box));
    EXPECT_EQ(CRect(2, 3, 10, 11), box);
    EXPECT_EQ(ERROR, dc.SelectObject(static_cast<CRgn*>(nullptr)));
    CPalette palette;
    palette.CreateHalftonePalette(&dc);
    CPalette* oldPalette = dc.SelectPalette(&palette, FALSE);
    ASSERT_NE(nullptr, oldPalette);
    EXPECT_EQ(&palette, dc.GetCurrentPalette());
    EXPECT_EQ(&palette, dc.SelectPalette(oldPalette, FALSE));
    EXPECT_EQ(nullptr, dc.SelectPalette(nullptr, FALSE));

    // What was selected before is selected again if there is no object for it.
    AllocationFaults faults;
    RunFaultActs(faults, [&](const FaultRun& run) {
        bool thrown = false;
        try {
            run.Act([&] { dc.SelectObject(&pen); });
        } catch (CMemoryException* e) {
            e->Delete();
            thrown = true;
        }
        EXPECT_EQ(thrown, GetCurrentObject(dc, OBJ_PEN) != pen.m_hObject);
        SelectObject(dc, GetStockObject(BLACK_PEN));
    });
}

TEST(DeviceContext, SetsInBothAndAsksOne)
{
    Picture out;
    CDC attrib;
    ASSERT_TRUE(attrib.CreateCompatibleDC(nullptr));
    CFont font;
    font.CreatePointFont(300, "Arial");
    CFont* old = attrib.SelectObject(&font);
    const CSize large = attrib.GetTextExtent("text");
    ::SetTextColor(attrib, RGB(1, 1, 1));

    CDC both;
    both.SetOutputDC(out);
    both.SetAttribDC(attrib);
    EXPECT_EQ(large, both.GetTextExtent("text"));
    EXPECT_EQ(RGB(1, 1, 1), both.SetTextColor(RGB(2, 2, 2)));
    EXPECT_EQ(&font, both.SelectObject(old));
    EXPECT_NE(large, both.GetTextExtent("text"));
    both.SetBkColor(RGB(3, 3, 3));
    both.SetBkMode(TRANSPARENT);
    both.SetROP2(R2_XORPEN);
    both.SetPolyFillMode(WINDING);
    both.SetStretchBltMode(HALFTONE);
    both.SetTextAlign(TA_CENTER);
    both.SetTextCharacterExtra(2);
    const int saved = both.SaveDC();
    EXPECT_NE(0, saved);
    both.SetMapMode(MM_ANISOTROPIC);
    EXPECT_EQ(CSize(1, 1), both.SetWindowExt(10, 20));
    EXPECT_EQ(CSize(10, 20), both.ScaleWindowExt(2, 1, 1, 2));
    both.SetViewportExt(CSize(5, 5));
    both.ScaleViewportExt(2, 1, 1, 1);
    EXPECT_EQ(CPoint(0, 0), both.SetWindowOrg(1, 2));
    both.OffsetWindowOrg(10, 10);
    both.SetViewportOrg(3, 4);
    EXPECT_EQ(CPoint(3, 4), both.OffsetViewportOrg(1, 1));
    both.IntersectClipRect(CRect(0, 0, 50, 50));
    both.ExcludeClipRect(CRect(0, 0, 10, 50));
    both.MoveTo(7, 8);
    both.LineTo(9, 10);
    for (const HDC dc : {out.m_hDC, attrib.m_hDC}) {
        const CDC* one = CDC::FromHandle(dc);
        EXPECT_EQ(RGB(2, 2, 2), one->GetTextColor());
        EXPECT_EQ(RGB(3, 3, 3), one->GetBkColor());
        EXPECT_EQ(TRANSPARENT, one->GetBkMode());
        EXPECT_EQ(R2_XORPEN, one->GetROP2());
        EXPECT_EQ(WINDING, one->GetPolyFillMode());
        EXPECT_EQ(HALFTONE, one->GetStretchBltMode());
        EXPECT_EQ(static_cast<UINT>(TA_CENTER), one->GetTextAlign());
        EXPECT_EQ(2, one->GetTextCharacterExtra());
        EXPECT_EQ(MM_ANISOTROPIC, one->GetMapMode());
        EXPECT_EQ(CSize(20, 10), one->GetWindowExt());
        EXPECT_EQ(CSize(10, 5), one->GetViewportExt());
        EXPECT_EQ(CPoint(11, 12), one->GetWindowOrg());
        EXPECT_EQ(CPoint(4, 5), one->GetViewportOrg());
        EXPECT_EQ(CPoint(9, 10), one->GetCurrentPosition());
        CRgn clip;
        clip.CreateRectRgn(0, 0, 0, 0);
        EXPECT_EQ(1, GetClipRgn(dc, clip));
    }
    CRect rect(11, 12, 31, 22);
    both.LPtoDP(rect);
    EXPECT_EQ(CRect(4, 5, 14, 10), rect);
    both.DPtoLP(rect);
    EXPECT_EQ(CRect(11, 12, 31, 22), rect);
    CSize size(20, -10);
    both.LPtoDP(&size);
    EXPECT_EQ(CSize(10, -5), size);
    both.DPtoLP(&size);
    EXPECT_EQ(CSize(20, -10), size);

    EXPECT_TRUE(both.RestoreDC(saved));
    EXPECT_EQ(MM_TEXT, out.GetMapMode());
    EXPECT_EQ(MM_TEXT, attrib.GetMapMode());
    both.ReleaseAttribDC();
    EXPECT_EQ(0, both.GetDeviceCaps(HORZRES));
    both.ReleaseOutputDC();
    EXPECT_EQ(nullptr, both.m_hDC);
    HDC const handle = out;
    out.SetOutputDC(attrib);
    out.ReleaseOutputDC();
    EXPECT_EQ(handle, out.m_hDC) << "what is attached stays";
    DWORD layout = out.SetLayout(LAYOUT_RTL);
    EXPECT_TRUE(layout == GDI_ERROR || out.GetLayout() == LAYOUT_RTL);
}

TEST(DeviceContext, Draws)
{
    CBrush black(RGB(0, 0, 0));
    CBitmap mask;
    mask.CreateBitmap(4, 4, 1, 1, std::vector<WORD>{0xFFFF, 0xFFFF, 0, 0}.data());
    CRgn region;
    region.CreateRectRgn(2, 2, 6, 6);
    POINT points[] = {{1, 1}, {9, 1}, {9, 9}};
    const HICON icon = LoadIcon(nullptr, IDI_APPLICATION);
    Picture source;
    source.FillSolidRect(0, 0, 40, 20, RGB(0, 0, 0));
    const struct {
        const char* name;
        std::function<void(CDC&)> draw;
        std::string drawn; ///< empty: anything
    } cases[] = {
        {"fill", [&](CDC& dc) { dc.FillRect(CRect(1, 2, 5, 6), &black); }, "16 in 1,2 to 4,5"},
        {"fill with none", [&](CDC& dc) { dc.FillRect(CRect(1, 2, 5, 6), nullptr); }, "nothing"},
        {"frame", [&](CDC& dc) { dc.FrameRect(CRect(1, 2, 5, 6), &black); }, "12 in 1,2 to 4,5"},
        {"invert", [&](CDC& dc) { dc.InvertRect(CRect(1, 2, 5, 6)); }, "16 in 1,2 to 4,5"},
        {"solid", [&](CDC& dc) { dc.FillSolidRect(1, 2, 3, 4, RGB(9, 9, 9)); }, "12 in 1,2 to 3,5"},
        {"3d", [&](CDC& dc) { dc.Draw3dRect(CRect(1, 2, 5, 6), RGB(9, 9, 9), RGB(8, 8, 8)); }, "12 in 1,2 to 4,5"},
        {"edge", [&](CDC& dc) { dc.DrawEdge(CRect(1, 2, 9, 9), EDGE_SUNKEN, BF_RECT); }, ""},
        {"control", [&](CDC& dc) { dc.DrawFrameControl(CRect(1, 2, 9, 9), DFC_BUTTON, DFCS_BUTTONPUSH); }, ""},
        {"focus", [&](CDC& dc) { dc.DrawFocusRect(CRect(1, 2, 9, 9)); }, ""},
        {"region", [&](CDC& dc) { dc.FillRgn(&region, &black); }, "16 in 2,2 to 5,5"},
        {"region's frame", [&](CDC& dc) { dc.FrameRgn(&region, &black, 1, 1); }, "12 in 2,2 to 5,5"},
        {"region inverted", [&](CDC& dc) { dc.InvertRgn(&region); }, "16 in 2,2 to 5,5"},
        {"icon", [&](CDC& dc) { dc.DrawIcon(CPoint(0, 0), icon); }, ""},
        {"icon's state", [&](CDC& dc) { dc.DrawState(CPoint(0, 0), CSize(0, 0), icon, DSS_DISABLED); }, ""},
        {"bitmap's state", [&](CDC& dc) { dc.DrawState(CPoint(2, 2), CSize(4, 4), &mask, DSS_MONO, &black); }, ""},
        {"text's state", [](CDC& dc) { dc.DrawState(CPoint(1, 1), CSize(30, 16), "&Text", DSS_DISABLED, TRUE, 0); },
         ""},
        {"own state", [](CDC& dc) { dc.DrawState(CPoint(3, 4), CSize(5, 6), &DrawComplex, 0, DSS_NORMAL); },
         "30 in 3,4 to 7,9"},
        {"line",
         [](CDC& dc) {
             EXPECT_EQ(CPoint(0, 0), dc.MoveTo(CPoint(2, 2)));
             dc.LineTo(CPoint(6, 2));
         },
         "4 in 2,2 to 5,2"},
        {"lines", [&](CDC& dc) { dc.Polyline(points, 3); }, "16 in 1,1 to 9,8"},
        {"polygon", [&](CDC& dc) { dc.Polygon(points, 3); }, "24 in 1,1 to 9,9"},
        {"rectangle", [](CDC& dc) { dc.Rectangle(CRect(1, 2, 5, 6)); }, "12 in 1,2 to 4,5"},
        {"ellipse", [](CDC& dc) { dc.Ellipse(CRect(1, 2, 9, 9)); }, ""},
        {"round", [](CDC& dc) { dc.RoundRect(CRect(1, 2, 9, 9), CPoint(3, 3)); }, ""},
        {"arc", [](CDC& dc) { dc.Arc(CRect(0, 0, 20, 20), CPoint(20, 10), CPoint(0, 10)); }, ""},
        {"pie", [](CDC& dc) { dc.Pie(CRect(0, 0, 20, 20), CPoint(20, 10), CPoint(0, 10)); }, ""},
        {"chord", [](CDC& dc) { dc.Chord(CRect(0, 0, 20, 20), CPoint(20, 10), CPoint(0, 10)); }, ""},
        {"pixel", [](CDC& dc) { dc.SetPixel(CPoint(3, 4), RGB(0, 0, 0)); }, "1 in 3,4 to 3,4"},
        {"flood", [](CDC& dc) { dc.ExtFloodFill(3, 4, RGB(255, 255, 255), FLOODFILLSURFACE); }, "nothing"},
        {"copy", [&](CDC& dc) { dc.BitBlt(1, 2, 3, 4, &source, 0, 0, SRCCOPY); }, "12 in 1,2 to 3,5"},
        {"no source", [](CDC& dc) { dc.BitBlt(1, 2, 3, 4, nullptr, 0, 0, DSTINVERT); }, "12 in 1,2 to 3,5"},
        {"stretch", [&](CDC& dc) { dc.StretchBlt(1, 2, 6, 8, &source, 0, 0, 3, 4, SRCCOPY); }, "48 in 1,2 to 6,9"},
        {"mask", [&](CDC& dc) { dc.MaskBlt(0, 0, 4, 4, &source, 0, 0, mask, 0, 0, MAKEROP4(SRCCOPY, 0x00AA0029)); },
         "8 in 0,0 to 3,1"},
        {"text", [](CDC& dc) { dc.TextOut(1, 1, CString("Text")); }, ""},
        {"opaque text",
         [](CDC& dc) {
             dc.SetBkColor(0);
             dc.ExtTextOut(0, 0, ETO_OPAQUE, CRect(1, 2, 5, 6), CString(), nullptr);
         },
         "16 in 1,2 to 4,5"},
        {"tabs",
         [](CDC& dc) {
             int stop = 15;
             const CSize size = dc.TabbedTextOut(0, 0, CString("a\tb"), 1, &stop, 0);
             EXPECT_EQ(size, dc.GetTabbedTextExtent(CString("a\tb"), 1, &stop));
             EXPECT_EQ(15 + dc.GetTextExtent("b").cx, size.cx);
         },
         ""},
        {"text in a box",
         [](CDC& dc) {
             CRect box(0, 0, 40, 20);
             const CString text("a longer text than there is room for");
             EXPECT_LT(0, dc.DrawText(text, box, DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING));
             EXPECT_STREQ("a longer text than there is room for", text);
         },
         ""},
        {"grey text", [&](CDC& dc) { dc.GrayString(&black, &DrawBlock, 1, 1, 2, 2, 8, 8); }, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Picture first, dc;
        c.draw(first); // the system may make something once
        ZO_EXPECT_NO_LEAK(c.draw(dc));
        if (c.drawn.empty())
            EXPECT_NE("nothing", dc.Drawn());
        else
            EXPECT_EQ(c.drawn, dc.Drawn());
    }
    Picture dc;
    dc.SetBkColor(RGB(7, 7, 7));
    dc.Draw3dRect(0, 0, 4, 4, RGB(1, 1, 1), RGB(2, 2, 2));
    EXPECT_EQ(RGB(7, 7, 7), dc.GetBkColor());
    const std::pair<CPoint, COLORREF> corners[] = {
        {{0, 0}, RGB(1, 1, 1)}, {{3, 0}, RGB(2, 2, 2)}, {{0, 3}, RGB(2, 2, 2)}, {{0, 2}, RGB(1, 1, 1)}};
    for (const auto& [corner, color] : corners)
        EXPECT_EQ(color, dc.GetPixel(corner)) << corner.x << "," << corner.y;
}

TEST(DeviceContext, TellsOfItsFont)
{
    Picture dc;
    CFont font;
    font.CreateFont(-16, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, "Tahoma");
    CFont* before = dc.SelectObject(&font);
    CString face("before");
    EXPECT_LT(0, dc.GetTextFace(face));
    EXPECT_STREQ("Tahoma", face);
    TEXTMETRIC metrics = {};
    EXPECT_TRUE(dc.GetTextMetrics(&metrics));
    EXPECT_EQ(metrics.tmHeight, dc.GetTextExtent("x", 1).cy);
    int widths[2] = {};
    EXPECT_TRUE(dc.GetCharWidth('i', 'j', widths));
    EXPECT_EQ(dc.GetTextExtent("i", 1).cx, widths[0]);
    dc.SelectObject(before);
    CDC none;
    EXPECT_EQ(0, none.GetTextFace(face));
    EXPECT_STREQ("", face);
    EXPECT_EQ(CSize(0, 0), none.GetTextExtent("x", 1));
}
