// Drawing objects and image lists.

#include "support/test.h"

#include <afxcmn.h>

#include <thread>

namespace {

/// What stands on the stack or elsewhere and is the same each time.
struct Given {
    Given()
    {
        m_pattern.CreateBitmap(8, 8, 1, 1, nullptr);
        m_pattern.m_hObject = m_pattern.Detach(); // the map is empty
        m_dc.CreateCompatibleDC(nullptr);
        m_palette.palVersion = 0x300;
        m_palette.palNumEntries = 1;
    }
    CBitmap m_pattern;
    CDC m_dc;
    LOGPALETTE m_palette = {};
};

constexpr LOGBRUSH kRed = {BS_SOLID, RGB(255, 0, 0), 0};
constexpr UINT kBitmap = 60;           // of host.rc, 32 by 16: four cells, of which the first is red, the third clear
constexpr UINT kSystemsBitmap = 32754; // OBM_CLOSE
constexpr POINT kTriangle[] = {{0, 0}, {8, 0}, {0, 8}};

struct DibPattern {
    BITMAPINFOHEADER header = {sizeof(BITMAPINFOHEADER), 8, 8, 1, 1, BI_RGB, 0, 0, 0, 0, 0};
    RGBQUAD colors[2] = {};
    DWORD rows[8] = {};
} g_dib;

struct Maker {
    const char* name;
    UINT type;
    std::function<std::unique_ptr<CGdiObject>(Given&)> make; ///< null on failure
};

template <class OBJECT, class MAKE> Maker Make(const char* name, UINT type, MAKE make)
{
    return {name, type, [make](Given& given) -> std::unique_ptr<CGdiObject> {
                auto object = std::make_unique<OBJECT>();
                return make(*object, given) ? std::move(object) : nullptr;
            }};
}

const std::vector<Maker>& Makers()
{
    static const std::vector<Maker> s_makers = {
        Make<CPen>("pen", OBJ_PEN, [](CPen& o, Given&) { return o.CreatePen(PS_SOLID, 1, RGB(1, 2, 3)); }),
        Make<CPen>("pen of a brush", OBJ_EXTPEN,
                   [](CPen& o, Given&) { return o.CreatePen(PS_GEOMETRIC | PS_SOLID, 5, &kRed); }),
        Make<CPen>("pen described", OBJ_PEN,
                   [](CPen& o, Given&) {
                       LOGPEN pen = {PS_DOT, {1, 0}, RGB(1, 2, 3)};
                       return o.CreatePenIndirect(&pen);
                   }),
        Make<CBrush>("brush", OBJ_BRUSH, [](CBrush& o, Given&) { return o.CreateSolidBrush(RGB(1, 2, 3)); }),
        Make<CBrush>("hatched", OBJ_BRUSH, [](CBrush& o, Given&) { return o.CreateHatchBrush(HS_CROSS, 0); }),
        Make<CBrush>("described", OBJ_BRUSH, [](CBrush& o, Given&) { return o.CreateBrushIndirect(&kRed); }),
        Make<CBrush>("pattern", OBJ_BRUSH,
                     [](CBrush& o, Given& given) { return o.CreatePatternBrush(&given.m_pattern); }),
        Make<CBrush>("packed", OBJ_BRUSH,
                     [](CBrush& o, Given&) { return o.CreateDIBPatternBrush(&g_dib, DIB_RGB_COLORS); }),
        Make<CBrush>("in memory", OBJ_BRUSH,
                     [](CBrush& o, Given&) {
                         const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof g_dib);
                         std::memcpy(GlobalLock(memory), &g_dib, sizeof g_dib);
                         GlobalUnlock(memory);
                         struct Freed {
                             HGLOBAL memory;
                             ~Freed() { GlobalFree(memory); }
                         } const freed{memory};
                         return o.CreateDIBPatternBrush(memory, DIB_RGB_COLORS);
                     }),
        Make<CFont>("font", OBJ_FONT,
                    [](CFont& o, Given&) {
                        return o.CreateFont(-20, 0, 0, 0, FW_BOLD, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, "Tahoma");
                    }),
        Make<CFont>("font in points", OBJ_FONT, [](CFont& o, Given&) { return o.CreatePointFont(95, "Tahoma"); }),
        Make<CBitmap>("bitmap", OBJ_BITMAP, [](CBitmap& o, Given&) { return o.CreateBitmap(8, 8, 1, 1, nullptr); }),
        Make<CBitmap>("compatible", OBJ_BITMAP,
                      [](CBitmap& o, Given& given) { return o.CreateCompatibleBitmap(&given.m_dc, 8, 8); }),
        Make<CBitmap>("loaded", OBJ_BITMAP, [](CBitmap& o, Given&) { return o.LoadBitmap(kBitmap); }),
        Make<CBitmap>("mapped", OBJ_BITMAP, [](CBitmap& o, Given&) { return o.LoadMappedBitmap(kBitmap); }),
        Make<CBitmap>("system's", OBJ_BITMAP, [](CBitmap& o, Given&) { return o.LoadOEMBitmap(kSystemsBitmap); }),
        Make<CPalette>("palette", OBJ_PAL, [](CPalette& o, Given& given) { return o.CreatePalette(&given.m_palette); }),
        Make<CPalette>("halftone", OBJ_PAL,
                       [](CPalette& o, Given& given) { return o.CreateHalftonePalette(&given.m_dc); }),
        Make<CRgn>("region", OBJ_REGION, [](CRgn& o, Given&) { return o.CreateRectRgn(1, 2, 3, 4); }),
        Make<CRgn>("round", OBJ_REGION, [](CRgn& o, Given&) { return o.CreateRoundRectRgn(0, 0, 9, 9, 3, 3); }),
        Make<CRgn>("ellipse", OBJ_REGION,
                   [](CRgn& o, Given&) { return o.CreateEllipticRgnIndirect(CRect(0, 0, 9, 9)); }),
        Make<CRgn>("polygon", OBJ_REGION,
                   [](CRgn& o, Given&) { return o.CreatePolygonRgn(const_cast<LPPOINT>(kTriangle), 3, WINDING); }),
    };
    return s_makers;
}

template <class OBJECT, class HANDLE> bool Is(HGDIOBJ handle)
{
    return OBJECT::FromHandle(static_cast<HANDLE>(handle)) != nullptr;
}

/// The class of FromHandle that answers for a handle; "none", or more than one.
std::string ClassesFor(HGDIOBJ handle)
{
    std::string classes;
    classes += Is<CPen, HPEN>(handle) ? "CPen" : "";
    classes += Is<CBrush, HBRUSH>(handle) ? "CBrush" : "";
    classes += Is<CFont, HFONT>(handle) ? "CFont" : "";
    classes += Is<CBitmap, HBITMAP>(handle) ? "CBitmap" : "";
    classes += Is<CPalette, HPALETTE>(handle) ? "CPalette" : "";
    classes += Is<CRgn, HRGN>(handle) ? "CRgn" : "";
    return classes.empty() ? "none" : classes;
}

} // namespace

TEST(GdiObjects, OwnTheirHandlesAndAreFoundByThem)
{
    Given given;
    for (const Maker& maker : Makers()) {
        SCOPED_TRACE(maker.name);
        std::unique_ptr<CGdiObject> object = maker.make(given);
        ASSERT_NE(nullptr, object);
        const HGDIOBJ handle = object->GetSafeHandle();
        EXPECT_EQ(maker.type, object->GetObjectType());
        EXPECT_EQ(object.get(), CGdiObject::FromHandle(handle));
        EXPECT_EQ(object->GetRuntimeClass()->m_lpszClassName, ClassesFor(handle));
        EXPECT_EQ(maker.type, GetObjectType(*object));
        EXPECT_FALSE(object->Attach(GetStockObject(NULL_PEN))) << "it holds one";

        EXPECT_EQ(handle, object->Detach());
        EXPECT_EQ(nullptr, object->GetSafeHandle());
        const CGdiObject* temporary = CGdiObject::FromHandle(handle);
        ASSERT_NE(nullptr, temporary);
        EXPECT_NE(object.get(), temporary);
        EXPECT_TRUE(temporary->GetRuntimeClass() == object->GetRuntimeClass());
        EXPECT_EQ(temporary, CGdiObject::FromHandle(handle));
        EXPECT_FALSE(object->DeleteObject());
        object->Attach(handle);
        EXPECT_EQ(object.get(), CGdiObject::FromHandle(handle));
        EXPECT_TRUE(*object == *temporary);
        EXPECT_FALSE(*object != *temporary);
        CGdiObject::DeleteTempMap();
        EXPECT_EQ(maker.type, GetObjectType(handle)) << "a temporary object deleted it";
        object.reset();
        EXPECT_EQ(nullptr, CGdiObject::FromHandle(handle));
        EXPECT_EQ(0u, GetObjectType(handle));
    }
    for (const HGDIOBJ handle : {static_cast<HGDIOBJ>(nullptr), static_cast<HGDIOBJ>(given.m_dc.m_hDC)})
        EXPECT_EQ("none", ClassesFor(handle));
}

TEST(GdiObjects, LeaveNothingBehindWithoutMemory)
{
    for (const Maker& maker : Makers()) {
        SCOPED_TRACE(maker.name);
        Given given;
        AllocationFaults faults;
        RunFaultActs(faults, [&](const FaultRun& run) {
            std::unique_ptr<CGdiObject> object;
            try {
                run.Act([&] { object = maker.make(given); });
                EXPECT_NE(nullptr, object);
                EXPECT_FALSE(run.Fired());
            } catch (CMemoryException* e) {
                EXPECT_TRUE(run.Fired());
                e->Delete();
            }
        });
    }
}

namespace {

/// Makes an object whose system function fails.
template <class ACT> bool Throws(ACT act)
{
    try {
        act();
        return false;
    } catch (CResourceException* e) {
        e->Delete();
        return true;
    }
}

} // namespace

TEST(GdiObjects, FailWithTheSystem)
{
    FaultSource faults("drawing objects");
    ZO_FAULTY_CALL(CreatePen) pen(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(ExtCreatePen) extPen(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(CreateSolidBrush) brush(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(CreateHatchBrush) hatch(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(CreatePatternBrush) pattern(faults, "ZOAFX.DLL", nullptr);
    CBitmap bitmap;
    bitmap.CreateBitmap(8, 8, 1, 1, nullptr);
    ZO_EXPECT_NO_LEAK({
        EXPECT_FALSE(Throws([&] { const CPen o(PS_SOLID, 1, RGB(0, 0, 0)); }));
        EXPECT_FALSE(Throws([&] { const CBrush o(&bitmap); }));
        EXPECT_TRUE(Throws([&] { const CBrush o(static_cast<CBitmap*>(nullptr)); }));
        CBrush fromNothing;
        EXPECT_FALSE(fromNothing.CreateDIBPatternBrush(static_cast<HGLOBAL>(nullptr), DIB_RGB_COLORS));
        CBitmap none;
        EXPECT_FALSE(none.LoadBitmap(9999));
        EXPECT_FALSE(none.LoadMappedBitmap(9999));
        EXPECT_FALSE(none.CreateCompatibleBitmap(nullptr, 8, 8));
        faults.Arm(1, true);
        EXPECT_TRUE(Throws([&] { const CPen o(PS_SOLID, 1, RGB(0, 0, 0)); }));
        EXPECT_TRUE(Throws([&] { const CPen o(PS_GEOMETRIC, 1, &kRed); }));
        EXPECT_TRUE(Throws([&] { const CBrush o(RGB(0, 0, 0)); }));
        EXPECT_TRUE(Throws([&] { const CBrush o(HS_CROSS, RGB(0, 0, 0)); }));
        EXPECT_TRUE(Throws([&] { const CBrush o(&bitmap); }));
        faults.Disarm();
    });
}

TEST(GdiObjects, AreNotFoundByAHandleThatStandsForSomethingElse)
{
    // Handles are used again: a font's for a pen here.
    const HGDIOBJ pen = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
    const HGDIOBJ font = GetStockObject(ANSI_FIXED_FONT);
    CFont stale;
    stale.m_hObject = nullptr;
    ASSERT_TRUE(stale.Attach(pen));
    EXPECT_EQ("CPen", ClassesFor(pen)) << "a permanent font of before";
    stale.Detach();

    CGdiObject* temporary = CGdiObject::FromHandle(font);
    temporary->m_hObject = pen;
    EXPECT_EQ(font, CGdiObject::FromHandle(font)->m_hObject) << "a temporary object has another handle meanwhile";
    temporary = CGdiObject::FromHandle(pen);
    EXPECT_TRUE(temporary->DeleteObject());
    EXPECT_EQ("none", ClassesFor(pen));
    CGdiObject::DeleteTempMap();

    CGdiObject plain; // of no kind
    ASSERT_TRUE(plain.Attach(CreateSolidBrush(RGB(0, 0, 0))));
    EXPECT_EQ("CBrush", ClassesFor(plain.m_hObject));
    EXPECT_FALSE(plain.Attach(nullptr));
    CPen stock;
    ASSERT_TRUE(stock.CreateStockObject(BLACK_PEN));
    EXPECT_EQ(&stock, CPen::FromHandle(static_cast<HPEN>(GetStockObject(BLACK_PEN))));
    stock.DeleteObject();
    EXPECT_EQ(static_cast<UINT>(OBJ_PEN), GetObjectType(GetStockObject(BLACK_PEN)));
    CBrush system;
    ASSERT_TRUE(system.CreateSysColorBrush(COLOR_BTNFACE));
    EXPECT_EQ(GetSysColorBrush(COLOR_BTNFACE), static_cast<HBRUSH>(system));
}

TEST(GdiObjects, DieWithoutAThreadsState)
{
    struct Objects {
        CPen pen{PS_SOLID, 1, RGB(0, 0, 0)};
        CDC dc;
        CImageList list;
    };
    ZO_EXPECT_NO_LEAK({
        auto* objects = new Objects;
        objects->dc.CreateCompatibleDC(nullptr);
        objects->list.Create(8, 8, ILC_COLOR, 1, 1);
        const HGDIOBJ pen = objects->pen.Detach(); // of no thread's map
        const HDC dc = objects->dc.Detach();
        const HIMAGELIST list = objects->list.Detach();
        objects->pen.m_hObject = pen;
        objects->dc.SetOutputDC(dc);
        objects->list.m_hImageList = list;
        std::thread([objects] {
            objects->dc.DeleteDC();
            delete objects;
        }).join();
        EXPECT_EQ(0u, GetObjectType(pen));
        EXPECT_EQ(0u, GetObjectType(dc));
    });
}

TEST(GdiObjects, TellWhatTheyAreMadeOf)
{
    CPen pen(PS_DASH, 1, RGB(1, 2, 3));
    LOGPEN logPen = {};
    EXPECT_NE(0, pen.GetLogPen(&logPen));
    EXPECT_EQ(RGB(1, 2, 3), logPen.lopnColor);
    CBrush brush(HS_CROSS, RGB(4, 5, 6));
    LOGBRUSH logBrush = {};
    EXPECT_NE(0, brush.GetLogBrush(&logBrush));
    EXPECT_EQ(RGB(4, 5, 6), logBrush.lbColor);

    CBitmap bitmap;
    const WORD rows[] = {0x0000, 0xFFFF};
    ASSERT_TRUE(bitmap.CreateBitmap(16, 2, 1, 1, rows));
    BITMAP description = {};
    EXPECT_NE(0, bitmap.GetBitmap(&description));
    EXPECT_EQ(16, description.bmWidth);
    WORD read[2] = {};
    EXPECT_EQ(4u, bitmap.GetBitmapBits(sizeof read, read));
    EXPECT_EQ(0xFFFF, read[1]);
    const WORD other[] = {0x00FF, 0};
    EXPECT_EQ(4u, bitmap.SetBitmapBits(sizeof other, other));
    bitmap.GetBitmapBits(sizeof read, read);
    EXPECT_EQ(0x00FF, read[0]);
    EXPECT_EQ(CSize(0, 0), bitmap.SetBitmapDimension(30, 40));
    EXPECT_EQ(CSize(30, 40), bitmap.GetBitmapDimension());

    CPalette palette;
    Given given;
    ASSERT_TRUE(palette.CreatePalette(&given.m_palette));
    EXPECT_EQ(1, palette.GetEntryCount());
    EXPECT_TRUE(palette.ResizePalette(3));
    PALETTEENTRY entries[] = {{0, 0, 0, 0}, {255, 0, 0, 0}, {0, 0, 255, 0}};
    EXPECT_EQ(3u, palette.SetPaletteEntries(0, 3, entries));
    EXPECT_EQ(1u, palette.GetNearestPaletteIndex(RGB(250, 9, 9)));
    EXPECT_EQ(1u, palette.GetPaletteEntries(2, 1, entries));
    EXPECT_EQ(255, entries[0].peBlue);
}

TEST(GdiObjects, HaveFontsInTenthsOfPoints)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    const int pixels = MulDiv(95, dc.GetDeviceCaps(LOGPIXELSY), 720);
    const struct {
        const char* name;
        int mode;
        int height;
    } cases[] = {{"pixels", MM_TEXT, -pixels}, {"a scale", MM_ANISOTROPIC, -3 * pixels}};
    for (const auto& c : cases) {
        dc.SetMapMode(c.mode);
        dc.SetWindowExt(3, -3);
        dc.SetViewportExt(1, 1);
        dc.SetWindowOrg(0, 500);
        CFont font;
        ASSERT_TRUE(font.CreatePointFont(95, "Arial", &dc)) << c.name;
        LOGFONT description = {};
        EXPECT_NE(0, font.GetLogFont(&description));
        EXPECT_EQ(c.height, description.lfHeight) << c.name;
        EXPECT_STREQ("Arial", description.lfFaceName);
        CFont same;
        description.lfHeight = -95;
        ASSERT_TRUE(same.CreatePointFontIndirect(&description, &dc));
        EXPECT_NE(0, same.GetLogFont(&description));
        EXPECT_EQ(c.height, description.lfHeight) << c.name;
    }
    CFont screen;
    ASSERT_TRUE(screen.CreatePointFont(95, std::string(40, 'x').c_str()));
    LOGFONT description = {};
    screen.GetLogFont(&description);
    EXPECT_EQ(-pixels, description.lfHeight);
    CDC none;
    CFont font;
    EXPECT_FALSE(font.CreatePointFont(95, "Arial", &none));
}

TEST(GdiObjects, CombineRegions)
{
    CRgn left, right, target;
    ASSERT_TRUE(left.CreateRectRgn(0, 0, 10, 10) && right.CreateRectRgn(5, 0, 20, 10) &&
                target.CreateRectRgn(0, 0, 0, 0));
    CRect box;
    EXPECT_EQ(SIMPLEREGION, target.CombineRgn(&left, &right, RGN_AND));
    target.GetRgnBox(&box);
    EXPECT_EQ(CRect(5, 0, 10, 10), box);
    EXPECT_EQ(SIMPLEREGION, target.CopyRgn(&right));
    EXPECT_TRUE(target.EqualRgn(&right));
    EXPECT_FALSE(target.EqualRgn(nullptr));
    EXPECT_EQ(ERROR, target.CombineRgn(nullptr, nullptr, RGN_COPY));
    target.OffsetRgn(CPoint(1, 2));
    EXPECT_TRUE(target.PtInRegion(6, 2) && !target.PtInRegion(CPoint(5, 2)));
    EXPECT_TRUE(target.RectInRegion(CRect(0, 0, 7, 3)));
    target.SetRectRgn(CRect(1, 1, 2, 2));
    const int size = target.GetRegionData(nullptr, 0);
    std::vector<char> data(static_cast<size_t>(size));
    auto* description = reinterpret_cast<RGNDATA*>(data.data());
    EXPECT_EQ(size, target.GetRegionData(description, size));
    CRgn again;
    ASSERT_TRUE(again.CreateFromData(nullptr, size, description));
    EXPECT_TRUE(again.EqualRgn(&target));
}

// Image lists ---------------------------------------------------------------------------------------------------------

namespace {

constexpr COLORREF kClear = RGB(255, 0, 255), kBack = RGB(0, 255, 0);

/// A list of 8 by 8 pictures: red with a clear left half, and blue.
void Fill(CImageList& list)
{
    CBitmap pictures;
    CDC screen, dc;
    ASSERT_TRUE(screen.CreateIC("DISPLAY", nullptr, nullptr, nullptr) && dc.CreateCompatibleDC(&screen));
    ASSERT_TRUE(pictures.CreateCompatibleBitmap(&screen, 16, 8));
    CBitmap* before = dc.SelectObject(&pictures);
    dc.FillSolidRect(0, 0, 4, 8, kClear);
    dc.FillSolidRect(4, 0, 4, 8, RGB(255, 0, 0));
    dc.FillSolidRect(8, 0, 8, 8, RGB(0, 0, 255));
    dc.SelectObject(before);
    ASSERT_TRUE(list.Create(8, 8, ILC_COLOR24 | ILC_MASK, 2, 2));
    EXPECT_EQ(0, list.Add(&pictures, kClear));
    EXPECT_EQ(2, list.GetImageCount());
}

/// The colours of a picture's left and right half on a ground of green.
std::vector<COLORREF> Look(CImageList& list, int image, UINT style = ILD_NORMAL)
{
    const Canvas canvas(8, 8, kBack);
    EXPECT_TRUE(list.Draw(CDC::FromHandle(canvas), image, CPoint(0, 0), style));
    return {canvas.At(1, 4), canvas.At(6, 4)};
}

const std::vector<COLORREF> kRedHalf = {kBack, RGB(255, 0, 0)}, kBlue = {RGB(0, 0, 255), RGB(0, 0, 255)};

} // namespace

TEST(ImageList, HoldsPictures)
{
    CImageList list;
    Fill(list);
    EXPECT_EQ(&list, CImageList::FromHandle(list));
    EXPECT_EQ(&list, CImageList::FromHandlePermanent(list.GetSafeHandle()));
    EXPECT_EQ(kRedHalf, Look(list, 0));
    EXPECT_EQ(kBlue, Look(list, 1));
    EXPECT_EQ(CLR_NONE, list.SetBkColor(RGB(9, 9, 9)));
    EXPECT_EQ(RGB(9, 9, 9), list.GetBkColor());
    EXPECT_EQ(RGB(9, 9, 9), Look(list, 0)[0]);
    list.SetBkColor(CLR_NONE);
    EXPECT_TRUE(list.SetOverlayImage(0, 1));
    EXPECT_EQ((std::vector<COLORREF>{RGB(0, 0, 255), RGB(255, 0, 0)}), Look(list, 1, INDEXTOOVERLAYMASK(1)));
    IMAGEINFO info = {};
    EXPECT_TRUE(list.GetImageInfo(1, &info));
    EXPECT_EQ(CRect(8, 0, 16, 8).Size(), CRect(info.rcImage).Size());

    const HICON icon = list.ExtractIcon(1);
    ASSERT_NE(nullptr, icon);
    EXPECT_EQ(2, list.Add(icon));
    EXPECT_EQ(0, list.Replace(0, icon));
    DestroyIcon(icon);
    EXPECT_EQ(kBlue, Look(list, 0));
    CImageList copy, merged;
    EXPECT_TRUE(copy.Create(&list));
    EXPECT_EQ(3, copy.GetImageCount());
    EXPECT_TRUE(merged.Create(list, 0, copy, 1, 4, 0));
    EXPECT_EQ(1, merged.GetImageCount());
    EXPECT_TRUE(list.Remove(2));
    EXPECT_TRUE(list.Remove(-1));
    EXPECT_EQ(0, list.GetImageCount());
    EXPECT_FALSE(merged.Create(8, 8, ILC_COLOR, 1, 1)) << "it has one already";
    EXPECT_EQ(1, merged.GetImageCount());
}

TEST(ImageList, ComesFromAResource)
{
    CImageList list;
    ASSERT_TRUE(list.Create(kBitmap, 8, 1, RGB(0, 0, 0)));
    EXPECT_EQ(2, list.GetImageCount());
    EXPECT_EQ((std::vector<COLORREF>{kBack, RGB(255, 255, 255)}), Look(list, 0));
    EXPECT_TRUE(list.Copy(1, 0));
    EXPECT_EQ((std::vector<COLORREF>{kBack, RGB(255, 255, 255)}), Look(list, 1));
    CImageList none;
    EXPECT_FALSE(none.Create(9999, 8, 1, RGB(0, 0, 0)));
    EXPECT_FALSE(none.Create(nullptr));
    EXPECT_EQ(-1, none.Add(static_cast<CBitmap*>(nullptr), kClear));
    EXPECT_FALSE(none.Draw(nullptr, 0, CPoint(0, 0), ILD_NORMAL));
    EXPECT_FALSE(none.Attach(nullptr));
}

TEST(ImageList, DragsAPicture)
{
    CImageList list;
    Fill(list);
    EXPECT_EQ(nullptr, CImageList::GetDragImage(nullptr, nullptr));
    ASSERT_TRUE(list.BeginDrag(1, CPoint(2, 3)));
    EXPECT_TRUE(CImageList::DragEnter(nullptr, CPoint(50, 60)));
    EXPECT_TRUE(CImageList::DragMove(CPoint(70, 80)));
    CPoint at, hot;
    const CImageList* dragged = CImageList::GetDragImage(&at, &hot);
    ASSERT_NE(nullptr, dragged);
    EXPECT_NE(&list, dragged);
    EXPECT_EQ(CPoint(70, 80), at);
    EXPECT_EQ(CPoint(2, 3), hot);
    EXPECT_TRUE(CImageList::DragShowNolock(FALSE));
    EXPECT_TRUE(CImageList::DragLeave(nullptr));
    CImageList::EndDrag();
    EXPECT_FALSE(CImageList::DragMove(CPoint(0, 0)) && CImageList::GetDragImage(nullptr, nullptr) != nullptr);
}

TEST(ImageList, LeavesNothingBehindWithoutMemory)
{
    CImageList source;
    Fill(source);
    source.m_hImageList = source.Detach(); // the map is empty
    const std::vector<std::function<void(CImageList&)>> makers = {
        [](CImageList& list) { list.Create(8, 8, ILC_COLOR, 1, 1); },
        [](CImageList& list) { list.Create(kBitmap, 8, 1, RGB(0, 0, 0)); },
        [&](CImageList& list) { list.Create(&source); },
        [&](CImageList& list) { list.Create(source, 0, source, 1, 0, 0); },
    };
    AllocationFaults faults;
    RunFaultActs(faults, [&](const FaultRun& run) {
        for (const auto& make : makers) {
            CImageList list;
            try {
                run.Act([&] { make(list); });
                EXPECT_NE(nullptr, list.m_hImageList);
            } catch (CMemoryException* e) {
                EXPECT_TRUE(run.Fired());
                e->Delete();
            }
        }
    });
}
