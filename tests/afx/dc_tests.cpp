// Device contexts.

#include "kit.h"

namespace {

/// A memory context with a white bitmap of 32 bits, 40 by 20 pixels.
class Picture : public CDC {
public:
    Picture() { Attach(m_canvas); }
    ~Picture() override { Detach(); }

    /// The pixels that are no longer white: how many, and the area around them.
    Answers Drawn() const
    {
        CRect area;
        int count = 0;
        for (CPoint point; point.x < 40; point.y == 19 ? ++point.x, point.y = 0 : ++point.y) {
            if (GetPixel(point) == RGB(255, 255, 255))
                continue;
            area |= CRect(point, CSize(1, 1));
            ++count;
        }
        return Answers{count, area};
    }

private:
    const Canvas m_canvas{40, 20, RGB(255, 255, 255)};
};

BOOL CALLBACK DrawBlock(HDC dc, LPARAM, WPARAM, int cx, int cy) { return PatBlt(dc, 0, 0, cx, cy, BLACKNESS); }

} // namespace

TEST(DeviceContext, IsFoundByItsHandle)
{
    HDC handle;
    ZO_EXPECT_NO_LEAK({
        CDC dc;
        EXPECT_FALSE(dc.Attach(nullptr) || dc.DeleteDC());
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        handle = dc;
        EXPECT_EQ(&dc, CDC::FromHandle(handle));
        EXPECT_FALSE(dc.CreateIC("DISPLAY", nullptr, nullptr, nullptr)) << "it holds one";
        EXPECT_EQ(handle, dc.Detach());
        EXPECT_TRUE(dc.m_hDC == nullptr && dc.m_hAttribDC == nullptr);
        const CDC* temporary = CDC::FromHandle(handle);
        EXPECT_TRUE(temporary != &dc && temporary->m_hAttribDC == handle && temporary == CDC::FromHandle(handle));
        CDC::DeleteTempMap();
        EXPECT_NE(0u, GetObjectType(handle)) << "a temporary object deleted it";
        EXPECT_TRUE(dc.Attach(handle));
    });
    EXPECT_EQ(0u, GetObjectType(handle));
    EXPECT_EQ(nullptr, CDC::FromHandle(handle));
    EXPECT_EQ(nullptr, CDC::FromHandle(static_cast<HDC>(GetStockObject(BLACK_PEN))));
    ExpectThrowsWithoutMemory([] { CDC().CreateCompatibleDC(nullptr); });
}

namespace {

template <class CONTEXT> void ExpectEndsWithItsObject(CWnd& window)
{
    HDC handle = nullptr;
    const auto make = [&] {
        CONTEXT dc(&window);
        handle = dc;
        EXPECT_TRUE(dc.GetWindow() == &window && CDC::FromHandle(handle) == &dc);
    };
    ExpectThrowsWithoutMemory(make, [&](bool) { EXPECT_EQ(nullptr, WindowFromDC(handle)); });
    CWnd gone;
    gone.m_hWnd = reinterpret_cast<HWND>(0x7ffe);
    EXPECT_EQ("CResourceException", Thrown([&] { const CONTEXT dc(&gone); }));
}

} // namespace

TEST(DeviceContext, OfAWindowEndsWithItsObject)
{
    TopWindow window;
    ExpectEndsWithItsObject<CClientDC>(window);
    ExpectEndsWithItsObject<CWindowDC>(window);
    ExpectEndsWithItsObject<CPaintDC>(window);
    window.Invalidate();
    EXPECT_NE(nullptr, CPaintDC(&window).m_ps.hdc);
    EXPECT_FALSE(GetUpdateRect(window.m_hWnd, nullptr, FALSE));
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), CClientDC(nullptr).GetDeviceCaps(HORZRES));
}

TEST(DeviceContext, GivesBackWhatWasSelected)
{
    Picture dc;
    const auto check = [&dc](auto& object, auto current) {
        SCOPED_TRACE(object.GetRuntimeClass()->m_lpszClassName);
        auto* before = dc.SelectObject(&object);
        ASSERT_NE(nullptr, before);
        EXPECT_EQ(&object, (dc.*current)());
        EXPECT_EQ(&object, dc.SelectObject(static_cast<CGdiObject*>(before)));
        EXPECT_EQ(nullptr, dc.SelectObject(static_cast<decltype(before)>(nullptr)));
        EXPECT_EQ(before, (dc.*current)());
    };
    CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
    CBrush brush(RGB(0, 255, 0));
    CFont font;
    font.CreatePointFont(100, "Arial");
    CBitmap bitmap;
    bitmap.CreateBitmap(4, 4, 1, 1, nullptr);
    check(pen, &CDC::GetCurrentPen);
    check(brush, &CDC::GetCurrentBrush);
    check(font, &CDC::GetCurrentFont);
    check(bitmap, &CDC::GetCurrentBitmap);

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
    EXPECT_TRUE(oldPalette != nullptr && dc.GetCurrentPalette() == &palette);
    EXPECT_TRUE(dc.SelectPalette(oldPalette, FALSE) == &palette && dc.SelectPalette(nullptr, FALSE) == nullptr);

    const auto look = [&](bool lacks) {
        EXPECT_EQ(lacks, SelectObject(dc, GetStockObject(BLACK_PEN)) != pen.m_hObject) << "it is selected again";
    };
    ExpectThrowsWithoutMemory([&] { dc.SelectObject(&pen); }, look);
    CDC memory;
    memory.CreateCompatibleDC(nullptr);
    const HGDIOBJ first = GetCurrentObject(memory, OBJ_BITMAP);
    CGdiObject::DeleteTempMap();
    const auto lookAtBitmap = [&](bool lacks) {
        EXPECT_EQ(lacks, SelectObject(memory, first) != bitmap.m_hObject);
        CGdiObject::DeleteTempMap();
    };
    ExpectThrowsWithoutMemory([&] { memory.SelectObject(&bitmap); }, lookAtBitmap);
}

TEST(DeviceContext, SetsInBothAndAsksOne)
{
    Picture out;
    CDC attrib, both;
    ASSERT_TRUE(attrib.CreateCompatibleDC(nullptr));
    CFont font;
    font.CreatePointFont(300, "Tahoma");
    CFont* old = attrib.SelectObject(&font);
    const CSize large = attrib.GetTextExtent("text");
    ::SetTextColor(attrib, RGB(1, 1, 1));
    both.SetOutputDC(out);
    both.SetAttribDC(attrib);
    EXPECT_EQ(large, both.GetTextExtent("text"));
    EXPECT_EQ(RGB(1, 1, 1), both.SetTextColor(RGB(2, 2, 2)));
    EXPECT_EQ(&font, both.SelectObject(old));
    const int saved = both.SaveDC();
    both.SetBkColor(RGB(3, 3, 3));
    both.SetROP2(R2_XORPEN);
    both.SetMapMode(MM_ANISOTROPIC);
    EXPECT_EQ(CSize(1, 1), both.SetWindowExt(10, 20));
    EXPECT_EQ(CSize(10, 20), both.ScaleWindowExt(2, 1, 1, 2));
    both.SetViewportExt(CSize(5, 5));
    both.ScaleViewportExt(2, 1, 1, 1);
    both.SetWindowOrg(1, 2);
    EXPECT_EQ(CPoint(1, 2), both.OffsetWindowOrg(10, 10));
    both.SetViewportOrg(3, 4);
    EXPECT_EQ(CPoint(3, 4), both.OffsetViewportOrg(1, 1));
    both.IntersectClipRect(CRect(0, 0, 50, 50));
    both.MoveTo(7, 8);
    both.LineTo(9, 10);
    for (const HDC handle : {out.m_hDC, attrib.m_hDC}) {
        const CDC& dc = *CDC::FromHandle(handle);
        CRgn clip;
        clip.CreateRectRgn(0, 0, 0, 0);
        const CRect window(dc.GetWindowOrg(), dc.GetWindowExt()), viewport(dc.GetViewportOrg(), dc.GetViewportExt());
        EXPECT_EQ("131586 197379 7 8 11,12,31,22 4,5,14,10 1",
                  (Answers{dc.GetTextColor(), dc.GetBkColor(), dc.GetROP2(), dc.GetMapMode(), window, viewport,
                           GetClipRgn(handle, clip)}));
        EXPECT_EQ(CPoint(9, 10), dc.GetCurrentPosition());
    }
    CRect there(11, 12, 31, 22), back(4, 5, 14, 10);
    both.LPtoDP(there);
    both.DPtoLP(back);
    EXPECT_EQ("4,5,14,10 11,12,31,22", (Answers{there, back}));
    CSize size(20, -10);
    both.LPtoDP(&size);
    EXPECT_EQ(CSize(10, -5), size);
    both.DPtoLP(&size);
    EXPECT_EQ(CSize(20, -10), size);

    EXPECT_TRUE(both.RestoreDC(saved));
    EXPECT_TRUE(out.GetMapMode() == MM_TEXT && attrib.GetMapMode() == MM_TEXT);
    const int outAlone = ::SaveDC(out);
    const int uneven = both.SaveDC();
    both.SetTextColor(RGB(4, 4, 4));
    EXPECT_TRUE(both.RestoreDC(uneven) && ::GetTextColor(out) == RGB(2, 2, 2) && ::RestoreDC(out, outAlone));
    both.ReleaseAttribDC();
    both.ReleaseOutputDC();
    EXPECT_TRUE(both.m_hDC == nullptr && both.GetTextExtent("x", 1) == CSize(0, 0));
    const HDC handle = out;
    CDC().SetOutputDC(handle);
    EXPECT_NE(0u, GetObjectType(handle)) << "it was not attached";
    out.SetOutputDC(attrib);
    out.ReleaseOutputDC();
    EXPECT_EQ(handle, out.m_hDC) << "what is attached stays";
    const DWORD layout = out.SetLayout(LAYOUT_RTL);
    EXPECT_TRUE(layout == GDI_ERROR || out.GetLayout() == LAYOUT_RTL);
    CString face("before");
    EXPECT_TRUE(both.GetTextFace(face) == 0 && face.IsEmpty());
    EXPECT_TRUE(attrib.SelectObject(&font) != nullptr && attrib.GetTextFace(face) > 0 && face == "Tahoma");
    attrib.SelectObject(old);
}

TEST(DeviceContext, Draws)
{
    CBrush black(RGB(0, 0, 0));
    CBitmap mask;
    mask.CreateBitmap(4, 4, 1, 1, std::vector<WORD>{0xFFFF, 0xFFFF, 0, 0}.data());
    const HICON icon = LoadIcon(nullptr, IDI_APPLICATION);
    Picture source;
    source.FillSolidRect(0, 0, 40, 20, RGB(0, 0, 0));
    const CPoint at(3, 4);
    const CSize size(5, 6);
    const UINT disabled = DSS_DISABLED;
    const struct {
        const char* name;
        std::function<void(CDC&)> draw;
        std::string drawn; ///< empty: anything
    } cases[] = {
        {"fill", [&](CDC& dc) { dc.FillRect(CRect(1, 2, 5, 6), &black); }, "16 1,2,5,6"},
        {"fill with none", [&](CDC& dc) { dc.FillRect(CRect(1, 2, 5, 6), nullptr); }, "0 0,0,0,0"},
        {"3d", [&](CDC& dc) { dc.Draw3dRect(CRect(1, 2, 5, 6), RGB(9, 9, 9), 0); }, "12 1,2,5,6"},
        {"icon's state", [&](CDC& dc) { dc.DrawState(at, CSize(0, 0), icon, disabled); }, ""},
        {"bitmap's state", [&](CDC& dc) { dc.DrawState(at, size, &mask, DSS_MONO, &black); }, ""},
        {"text's state", [&](CDC& dc) { dc.DrawState(at, CSize(30, 16), "&Text", disabled, TRUE, 0); }, ""},
        {"own state", [&](CDC& dc) { dc.DrawState(at, size, &DrawBlock, 0, DSS_NORMAL); }, "30 3,4,8,10"},
        {"line", [&](CDC& dc) { dc.MoveTo(at), dc.LineTo(CPoint(6, 4)); }, "3 3,4,6,5"},
        {"rectangle", [](CDC& dc) { dc.Rectangle(CRect(1, 2, 5, 6)); }, "12 1,2,5,6"},
        {"pie", [](CDC& dc) { dc.Pie(CRect(0, 0, 9, 9), CPoint(8, 4), CPoint(0, 4)); }, ""},
        {"copy", [&](CDC& dc) { dc.BitBlt(1, 2, 3, 4, &source, 0, 0, SRCCOPY); }, "12 1,2,4,6"},
        {"no source", [](CDC& dc) { dc.BitBlt(1, 2, 3, 4, nullptr, 0, 0, DSTINVERT); }, "12 1,2,4,6"},
        {"stretch", [&](CDC& dc) { dc.StretchBlt(1, 2, 6, 8, &source, 0, 0, 3, 4, SRCCOPY); }, "48 1,2,7,10"},
        {"text", [](CDC& dc) { dc.TextOut(1, 1, CString("Text")); }, ""},
        {"opaque",
         [](CDC& dc) { dc.SetBkColor(0), dc.ExtTextOut(0, 0, ETO_OPAQUE, CRect(1, 2, 5, 6), "", 0, nullptr); },
         "16 1,2,5,6"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Picture first, dc;
        c.draw(first); // the system may make something once
        ZO_EXPECT_NO_LEAK(c.draw(dc));
        if (c.drawn.empty())
            EXPECT_NE("0 0,0,0,0", dc.Drawn());
        else
            EXPECT_EQ(c.drawn, dc.Drawn());
    }
    Picture dc;
    dc.SetBkColor(RGB(7, 7, 7));
    dc.Draw3dRect(0, 0, 4, 4, RGB(1, 1, 1), RGB(2, 2, 2));
    EXPECT_EQ(RGB(7, 7, 7), dc.GetBkColor());
    EXPECT_TRUE(dc.GetPixel(0, 0) == RGB(1, 1, 1) && dc.GetPixel(0, 2) == RGB(1, 1, 1));
    EXPECT_TRUE(dc.GetPixel(3, 0) == RGB(2, 2, 2) && dc.GetPixel(0, 3) == RGB(2, 2, 2));
    const CString text("a longer text than there is room for"), before(static_cast<LPCSTR>(text));
    CRect box(0, 0, 40, 20);
    EXPECT_LT(0, dc.DrawText(text, box, DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING));
    EXPECT_EQ(before, text);
    int stop = 15;
    EXPECT_EQ(15 + dc.GetTextExtent("b").cx, dc.TabbedTextOut(0, 0, CString("a\tb"), 1, &stop, 0).cx);
}
