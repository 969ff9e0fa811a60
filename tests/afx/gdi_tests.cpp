// Drawing objects and image lists.
#include "kit.h"

#include <afxcmn.h>

#include <thread>

namespace {

constexpr LOGBRUSH kRed = {BS_SOLID, RGB(255, 0, 0), 0};
constexpr UINT kPictures = 60; // of host.rc

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
        SCOPED_TRACE(maker.type);
        std::unique_ptr<CGdiObject> object = maker.make();
        ASSERT_NE(nullptr, object);
        const HGDIOBJ handle = *object;
        EXPECT_EQ(maker.type, object->GetObjectType());
        EXPECT_EQ(object.get(), CGdiObject::FromHandle(handle));
        EXPECT_FALSE(object->Attach(GetStockObject(NULL_PEN))) << "it holds one";

        EXPECT_EQ(handle, object->Detach());
        const CGdiObject* temporary = CGdiObject::FromHandle(handle);
        EXPECT_NE(object.get(), temporary);
        EXPECT_EQ(temporary, CGdiObject::FromHandle(handle));
        EXPECT_EQ(object->GetRuntimeClass()->m_lpszClassName, ClassesFor(handle));
        EXPECT_FALSE(object->DeleteObject() || *object == *temporary || object->Attach(nullptr));
        object->Attach(handle);
        EXPECT_FALSE(*object != *temporary);
        CGdiObject::DeleteTempMap();
        EXPECT_EQ(maker.type, GetObjectType(handle)) << "a temporary object deleted it";
        object.reset();
        EXPECT_EQ("", ClassesFor(handle));
        EXPECT_EQ(0u, GetObjectType(handle));
        ExpectThrowsWithoutMemory([&] { object = maker.make(); }, [&](bool) { object.reset(); });
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
        EXPECT_EQ("", Thrown(make));
        faults.Arm(1, true);
        ZO_EXPECT_NO_LEAK(EXPECT_EQ("CResourceException", Thrown(make)));
        faults.Disarm();
    }
    EXPECT_EQ("CResourceException", Thrown([] { const CBrush o(static_cast<CBitmap*>(nullptr)); }));
    CBitmap none;
    EXPECT_FALSE(none.LoadBitmap(9999) || none.LoadMappedBitmap(9999) || none.CreateCompatibleBitmap(nullptr, 8, 8));
    EXPECT_FALSE(CBrush().CreateDIBPatternBrush(static_cast<HGLOBAL>(nullptr), DIB_RGB_COLORS));
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
        CPen pen;
        CDC dc;
        CImageList list;
    };
    auto* objects = new Objects; // of no thread's map
    const HGDIOBJ pen = objects->pen.m_hObject = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
    const HDC dc = CreateCompatibleDC(nullptr);
    objects->dc.SetOutputDC(dc);
    objects->list.Create(8, 8, ILC_COLOR, 1, 1);
    objects->list.m_hImageList = objects->list.Detach();
    std::thread([objects] {
        objects->dc.DeleteDC();
        delete objects;
    }).join();
    EXPECT_EQ(0u, GetObjectType(pen) + GetObjectType(dc));
}

TEST(GdiObjects, HaveFontsInTenthsOfPoints)
{
    CDC dc, none;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    const int pixels = MulDiv(95, dc.GetDeviceCaps(LOGPIXELSY), 720);
    dc.SetWindowOrg(0, 500);
    const auto make = [](int points, const char* face, CDC* context) {
        CFont font;
        LOGFONT description = {};
        if (font.CreatePointFont(points, face, context))
            font.GetLogFont(&description);
        return Answers{description.lfHeight, static_cast<LPCSTR>(description.lfFaceName)};
    };
    constexpr char kLongName[] = "a name of more than thirty-one characters";
    EXPECT_EQ((Answers{-pixels, "Arial"}), make(-95, "Arial", &dc));
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(3, -3);
    EXPECT_EQ((Answers{-3 * pixels, "Arial"}), make(95, "Arial", &dc));
    EXPECT_EQ((Answers{-pixels, "a name of more than thirty-one "}), make(95, kLongName, nullptr));
    EXPECT_EQ("0 \"\"", make(95, "Arial", &none));
}

// Image lists ---------------------------------------------------------------------------------------------------------

namespace {

constexpr COLORREF kBack = RGB(0, 255, 0), kWhite = RGB(255, 255, 255);

/// The left and right half of a picture on a ground of green: that is a dot.
std::string Look(CImageList& list, int image)
{
    const Canvas canvas(8, 8, kBack);
    EXPECT_TRUE(list.Draw(CDC::FromHandle(canvas), image, CPoint(0, 0), ILD_NORMAL));
    std::string look;
    for (const int x : {1, 6})
        look += canvas.At(x, 4) == kBack ? '.' : canvas.At(x, 4) == kWhite ? 'W' : '?';
    return look;
}

} // namespace

TEST(ImageList, HoldsPictures)
{
    ExpectThrowsWithoutMemory([] { CImageList().Create(8, 8, ILC_COLOR, 1, 1); });
    CImageList list, copy, merged, none;
    CBitmap pictures;
    ASSERT_TRUE(list.Create(kPictures, 8, 1, RGB(0, 0, 0)) && pictures.LoadBitmap(kPictures));
    EXPECT_EQ(2, list.GetImageCount());
    EXPECT_TRUE(&list == CImageList::FromHandle(list) && &list == CImageList::FromHandlePermanent(list));
    EXPECT_EQ(".WWW", Look(list, 0) + Look(list, 1));
    list.SetBkColor(RGB(9, 9, 9));
    EXPECT_EQ(RGB(9, 9, 9), list.GetBkColor());
    EXPECT_EQ(RGB(9, 9, 9), list.SetBkColor(CLR_NONE));
    IMAGEINFO info = {};
    const HICON icon = list.ExtractIcon(0);
    EXPECT_EQ(
        "1 0,0,8,8 2 1 3 1",
        (Answers{list.GetImageInfo(1, &info), CRect(info.rcImage) - CPoint(info.rcImage.left, info.rcImage.top),
                 list.Add(icon), list.Replace(1, icon), list.Add(&pictures, kWhite), list.SetOverlayImage(0, 1)}));
    DestroyIcon(icon);
    EXPECT_EQ(".W", Look(list, 1));
    EXPECT_EQ('.', Look(list, 4)[0]);
    EXPECT_TRUE(list.Copy(4, 0));
    EXPECT_EQ(".W", Look(list, 4));

    EXPECT_EQ("1 5 1 1", (Answers{copy.Create(&list), copy.GetImageCount(), merged.Create(list, 0, copy, 1, 4, 0),
                                  merged.GetImageCount()}));
    ZO_EXPECT_NO_LEAK(EXPECT_FALSE(merged.Create(8, 8, ILC_COLOR, 1, 1)) << "it has one already");
    EXPECT_EQ("1 4 0 0 0 -1",
              (Answers{list.Remove(2), list.GetImageCount(), none.Create(9999, 8, 1, 0), none.Create(nullptr),
                       none.Draw(nullptr, 0, CPoint(), ILD_NORMAL), none.Add(&pictures, nullptr)}));

    CPoint at, hot;
    EXPECT_TRUE(list.BeginDrag(1, CPoint(2, 3)) && CImageList::DragEnter(nullptr, CPoint(50, 60)) &&
                CImageList::DragMove(CPoint(70, 80)) && CImageList::GetDragImage(&at, &hot) != nullptr);
    EXPECT_TRUE(at == CPoint(70, 80) && hot == CPoint(2, 3));
    EXPECT_TRUE(CImageList::DragShowNolock(FALSE) && CImageList::DragLeave(nullptr));
    CImageList::EndDrag();
    EXPECT_EQ(nullptr, CImageList::GetDragImage(nullptr, nullptr));
}
