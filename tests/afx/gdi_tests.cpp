// Drawing objects and image lists.

#include "support/test.h"

#include <afxcmn.h>

#include <thread>

namespace {

constexpr LOGBRUSH kRed = {BS_SOLID, RGB(255, 0, 0), 0};
constexpr UINT kPictures = 60; // of host.rc

/// What \p act throws.
template <class ACT> std::string Thrown(ACT act)
{
    try {
        act();
    } catch (CException* e) {
        const std::string name = e->GetRuntimeClass()->m_lpszClassName;
        e->Delete();
        return name;
    }
    return "nothing";
}

struct Maker {
    UINT type;
    std::function<std::unique_ptr<CGdiObject>()> make; ///< null on failure
};

template <class OBJECT, class MAKE> Maker Make(UINT type, MAKE make)
{
    return {type, [make]() -> std::unique_ptr<CGdiObject> {
                auto object = std::make_unique<OBJECT>();
                return make(*object) ? std::move(object) : nullptr;
            }};
}

const Maker kMakers[] = {
    Make<CPen>(OBJ_PEN, [](CPen& o) { return o.CreatePen(PS_SOLID, 1, RGB(1, 2, 3)); }),
    Make<CPen>(OBJ_EXTPEN, [](CPen& o) { return o.CreatePen(PS_GEOMETRIC | PS_SOLID, 5, &kRed); }),
    Make<CBrush>(OBJ_BRUSH, [](CBrush& o) { return o.CreateHatchBrush(HS_CROSS, 0); }),
    Make<CFont>(OBJ_FONT, [](CFont& o) { return o.CreatePointFont(95, "Tahoma"); }),
    Make<CBitmap>(OBJ_BITMAP, [](CBitmap& o) { return o.LoadBitmap(kPictures); }),
    Make<CBitmap>(OBJ_BITMAP, [](CBitmap& o) { return o.LoadMappedBitmap(kPictures); }),
    Make<CPalette>(OBJ_PAL, [](CPalette& o) { return o.CreateHalftonePalette(nullptr) && o.GetEntryCount() > 0; }),
    Make<CRgn>(OBJ_REGION, [](CRgn& o) { return o.CreateRectRgn(1, 2, 3, 4) && !o.EqualRgn(nullptr); }),
};

template <class OBJECT, class HANDLE> std::string Name(HGDIOBJ handle)
{
    const OBJECT* object = OBJECT::FromHandle(static_cast<HANDLE>(handle));
    return object != nullptr ? object->GetRuntimeClass()->m_lpszClassName : "";
}

/// The classes whose FromHandle answers for a handle.
std::string ClassesFor(HGDIOBJ handle)
{
    return Name<CPen, HPEN>(handle) + Name<CBrush, HBRUSH>(handle) + Name<CFont, HFONT>(handle) +
           Name<CBitmap, HBITMAP>(handle) + Name<CPalette, HPALETTE>(handle) + Name<CRgn, HRGN>(handle);
}

} // namespace

TEST(GdiObjects, OwnTheirHandlesAndAreFoundByThem)
{
    for (const Maker& maker : kMakers) {
        std::unique_ptr<CGdiObject> object = maker.make();
        ASSERT_NE(nullptr, object) << maker.type;
        const HGDIOBJ handle = *object;
        EXPECT_EQ(maker.type, object->GetObjectType());
        EXPECT_EQ(object.get(), CGdiObject::FromHandle(handle));
        EXPECT_EQ(object->GetRuntimeClass()->m_lpszClassName, ClassesFor(handle));
        EXPECT_FALSE(object->Attach(GetStockObject(NULL_PEN))) << "it holds one";

        EXPECT_EQ(handle, object->Detach());
        const CGdiObject* temporary = CGdiObject::FromHandle(handle);
        EXPECT_NE(object.get(), temporary);
        EXPECT_EQ(temporary, CGdiObject::FromHandle(handle));
        EXPECT_EQ(object->GetRuntimeClass()->m_lpszClassName, ClassesFor(handle));
        EXPECT_FALSE(object->DeleteObject() || *object == *temporary || object->Attach(nullptr));
        object->Attach(handle);
        EXPECT_EQ(object.get(), CGdiObject::FromHandle(handle));
        EXPECT_FALSE(*object != *temporary);
        CGdiObject::DeleteTempMap();
        EXPECT_EQ(maker.type, GetObjectType(handle)) << "a temporary object deleted it";
        object.reset();
        EXPECT_EQ("", ClassesFor(handle));
        EXPECT_EQ(0u, GetObjectType(handle));

        AllocationFaults faults;
        RunFaultActs(faults, [&](const FaultRun& run) {
            const std::string thrown = Thrown([&] { run.Act([&] { object = maker.make(); }); });
            EXPECT_EQ(run.Fired() ? "CMemoryException" : "nothing", thrown);
            object.reset();
        });
    }
}

TEST(GdiObjects, FailWithTheSystem)
{
    FaultSource faults("drawing objects");
    ZO_FAULTY_CALL(CreatePen) pen(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(ExtCreatePen) extPen(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(CreateSolidBrush) brush(faults, "ZOAFX.DLL", nullptr);
    ZO_FAULTY_CALL(CreateHatchBrush) hatch(faults, "ZOAFX.DLL", nullptr);
    const std::function<void()> makers[] = {
        [] { const CPen o(PS_SOLID, 1, RGB(0, 0, 0)); }, [] { const CPen o(PS_GEOMETRIC, 1, &kRed); },
        [] { const CBrush o(RGB(0, 0, 0)); }, [] { const CBrush o(HS_CROSS, RGB(0, 0, 0)); }};
    for (const auto& make : makers) {
        EXPECT_EQ("nothing", Thrown(make));
        faults.Arm(1, true);
        ZO_EXPECT_NO_LEAK(EXPECT_EQ("CResourceException", Thrown(make)));
        faults.Disarm();
    }
    EXPECT_EQ("CResourceException", Thrown([] { const CBrush o(static_cast<CBitmap*>(nullptr)); }));
    CBitmap none;
    EXPECT_FALSE(none.LoadBitmap(9999) || none.LoadMappedBitmap(9999) || none.CreateCompatibleBitmap(nullptr, 8, 8));
    CBrush fromNothing;
    EXPECT_FALSE(fromNothing.CreateDIBPatternBrush(static_cast<HGLOBAL>(nullptr), DIB_RGB_COLORS));
}

TEST(GdiObjects, AreNotFoundByAHandleThatStandsForSomethingElse)
{
    const HGDIOBJ pen = CreatePen(PS_SOLID, 1, RGB(0, 0, 0)), font = GetStockObject(ANSI_FIXED_FONT);
    CFont stale;
    ASSERT_TRUE(stale.Attach(pen)); // the handle was a font's before
    EXPECT_EQ("CPen", ClassesFor(pen));
    stale.Detach();
    CGdiObject::FromHandle(font)->m_hObject = pen;
    EXPECT_EQ(font, CGdiObject::FromHandle(font)->m_hObject) << "its temporary object has another handle meanwhile";
    EXPECT_TRUE(CGdiObject::FromHandle(pen)->DeleteObject());
    EXPECT_EQ("", ClassesFor(pen));
    CGdiObject plain; // of no kind
    ASSERT_TRUE(plain.Attach(CreateSolidBrush(RGB(0, 0, 0))));
    EXPECT_EQ("CBrush", ClassesFor(plain.m_hObject));
    CPen stock;
    ASSERT_TRUE(stock.CreateStockObject(BLACK_PEN));
    stock.DeleteObject();
    EXPECT_EQ("CPen", ClassesFor(GetStockObject(BLACK_PEN)));
}

TEST(GdiObjects, DieOnAThreadWithoutAState)
{
    struct Objects {
        CPen pen{PS_SOLID, 1, RGB(0, 0, 0)};
        CDC dc;
        CImageList list;
    };
    auto* objects = new Objects;
    objects->dc.CreateCompatibleDC(nullptr);
    objects->list.Create(8, 8, ILC_COLOR, 1, 1);
    const HGDIOBJ pen = objects->pen.Detach(); // of no thread's map
    const HDC dc = objects->dc.Detach();
    objects->list.m_hImageList = objects->list.Detach();
    objects->pen.m_hObject = pen;
    objects->dc.SetOutputDC(dc);
    std::thread([objects] {
        objects->dc.DeleteDC();
        delete objects;
    }).join();
    EXPECT_EQ(0u, GetObjectType(pen));
    EXPECT_EQ(0u, GetObjectType(dc));
}

TEST(GdiObjects, HaveFontsInTenthsOfPoints)
{
    CDC dc, none;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    const int pixels = MulDiv(95, dc.GetDeviceCaps(LOGPIXELSY), 720);
    dc.SetWindowOrg(0, 500);
    const auto expect = [](int height, const char* face, CFont&& font) {
        LOGFONT description = {};
        EXPECT_NE(0, font.GetLogFont(&description));
        EXPECT_EQ(height, description.lfHeight);
        EXPECT_EQ(std::string(face).substr(0, LF_FACESIZE - 1), description.lfFaceName);
    };
    for (const int scale : {1, 3}) {
        dc.SetMapMode(scale == 1 ? MM_TEXT : MM_ANISOTROPIC);
        dc.SetWindowExt(3, -3);
        CFont font, same;
        ASSERT_TRUE(font.CreatePointFont(95, "Arial", &dc));
        expect(-scale * pixels, "Arial", std::move(font));
        LOGFONT description = {};
        description.lfHeight = -95;
        ASSERT_TRUE(same.CreatePointFontIndirect(&description, &dc));
        expect(-scale * pixels, "", std::move(same));
    }
    constexpr char kLongName[] = "a name of more than thirty-one characters";
    CFont screen, failed;
    ASSERT_TRUE(screen.CreatePointFont(95, kLongName));
    expect(-pixels, kLongName, std::move(screen));
    EXPECT_FALSE(failed.CreatePointFont(95, "Arial", &none));
}

// Image lists ---------------------------------------------------------------------------------------------------------

namespace {

constexpr COLORREF kBack = RGB(0, 255, 0), kWhite = RGB(255, 255, 255);

/// The colours of a picture's left and right half on a ground of green.
std::pair<COLORREF, COLORREF> Look(CImageList& list, int image, UINT style = ILD_NORMAL)
{
    const Canvas canvas(8, 8, kBack);
    EXPECT_TRUE(list.Draw(CDC::FromHandle(canvas), image, CPoint(0, 0), style));
    return {canvas.At(1, 4), canvas.At(6, 4)};
}

const std::pair<COLORREF, COLORREF> kHalf = {kBack, kWhite}, kWhole = {kWhite, kWhite};

} // namespace

TEST(ImageList, HoldsPictures)
{
    CImageList list, copy, merged, none;
    ASSERT_TRUE(list.Create(kPictures, 8, 1, RGB(0, 0, 0)));
    EXPECT_EQ(2, list.GetImageCount());
    EXPECT_EQ(&list, CImageList::FromHandle(list));
    EXPECT_EQ(&list, CImageList::FromHandlePermanent(list));
    EXPECT_TRUE(Look(list, 0) == kHalf && Look(list, 1) == kWhole);
    list.SetBkColor(RGB(9, 9, 9));
    EXPECT_EQ(RGB(9, 9, 9), list.GetBkColor());
    EXPECT_EQ(RGB(9, 9, 9), list.SetBkColor(CLR_NONE));
    IMAGEINFO info = {};
    EXPECT_TRUE(list.GetImageInfo(1, &info) && CRect(info.rcImage).Size() == CSize(8, 8));
    const HICON icon = list.ExtractIcon(0);
    EXPECT_EQ(2, list.Add(icon));
    EXPECT_EQ(1, list.Replace(1, icon));
    DestroyIcon(icon);
    EXPECT_TRUE(Look(list, 1) == kHalf);
    CBitmap pictures;
    ASSERT_TRUE(pictures.LoadBitmap(kPictures));
    EXPECT_EQ(3, list.Add(&pictures, kWhite));
    EXPECT_EQ(kBack, Look(list, 4).first);
    EXPECT_TRUE(list.Copy(4, 0) && Look(list, 4) == kHalf);
    EXPECT_TRUE(list.SetOverlayImage(0, 1));

    EXPECT_TRUE(copy.Create(&list) && copy.GetImageCount() == 5);
    EXPECT_TRUE(merged.Create(list, 0, copy, 1, 4, 0) && merged.GetImageCount() == 1);
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(merged.Create(8, 8, ILC_COLOR, 1, 1)) << "it has one already");
    EXPECT_TRUE(list.Remove(2) && list.GetImageCount() == 4);
    EXPECT_FALSE(none.Create(9999, 8, 1, 0) || none.Create(nullptr) || none.Draw(nullptr, 0, CPoint(), ILD_NORMAL));
    EXPECT_EQ(-1, none.Add(&pictures, nullptr));

    ASSERT_TRUE(list.BeginDrag(1, CPoint(2, 3)) && CImageList::DragEnter(nullptr, CPoint(50, 60)));
    EXPECT_TRUE(CImageList::DragMove(CPoint(70, 80)));
    CPoint at, hot;
    EXPECT_NE(nullptr, CImageList::GetDragImage(&at, &hot));
    EXPECT_TRUE(at == CPoint(70, 80) && hot == CPoint(2, 3));
    EXPECT_TRUE(CImageList::DragShowNolock(FALSE) && CImageList::DragLeave(nullptr));
    CImageList::EndDrag();
    EXPECT_EQ(nullptr, CImageList::GetDragImage(nullptr, nullptr));
}

TEST(ImageList, LeavesNothingBehindWithoutMemory)
{
    CImageList source;
    ASSERT_TRUE(source.Create(8, 8, ILC_COLOR, 1, 1));
    source.m_hImageList = source.Detach(); // the map is empty
    const std::function<void(CImageList&)> makers[] = {
        [](CImageList& list) { list.Create(8, 8, ILC_COLOR, 1, 1); },
        [](CImageList& list) { list.Create(kPictures, 8, 1, RGB(0, 0, 0)); },
        [&](CImageList& list) { list.Create(&source); },
    };
    for (const auto& make : makers) {
        AllocationFaults faults;
        RunFaultActs(faults, [&](const FaultRun& run) {
            CImageList list;
            const std::string thrown = Thrown([&] { run.Act([&] { make(list); }); });
            EXPECT_EQ(run.Fired() ? "CMemoryException" : "nothing", thrown);
        });
    }
}
