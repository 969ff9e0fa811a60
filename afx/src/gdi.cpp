#include "common_controls.h"
#include "thread_state.h"

#include <cstdlib>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

// Handles and objects -------------------------------------------------------------------------------------------------

namespace {

/// A class, and how to make an object of it.
struct Kind {
    const CRuntimeClass* runtimeClass;
    CGdiObject* (*make)();
};

template <class OBJECT> Kind KindFor()
{
    return {RUNTIME_CLASS(OBJECT), []() -> CGdiObject* { return new OBJECT; }};
}

Kind KindOf(HGDIOBJ handle)
{
    switch (::GetObjectType(handle)) {
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return KindFor<CPen>();
    case OBJ_BRUSH:
        return KindFor<CBrush>();
    case OBJ_FONT:
        return KindFor<CFont>();
    case OBJ_BITMAP:
        return KindFor<CBitmap>();
    case OBJ_PAL:
        return KindFor<CPalette>();
    case OBJ_REGION:
        return KindFor<CRgn>();
    default:
        return {nullptr, nullptr};
    }
}

} // namespace

CGdiObject* AFXAPI CGdiObject::FromHandle(HGDIOBJ hObject)
{
    const Kind kind = KindOf(hObject);
    if (kind.runtimeClass == nullptr)
        return nullptr;
    return GetThreadState()->gdiObjects.FromHandle(
        hObject,
        [kind](HGDIOBJ handle) {
            CGdiObject* object = kind.make();
            object->m_hObject = handle;
            return object;
        },
        [kind](const CGdiObject* object) { return object->IsKindOf(kind.runtimeClass); });
}

CPen* AFXAPI CPen::FromHandle(HPEN hPen) { return DYNAMIC_DOWNCAST(CPen, CGdiObject::FromHandle(hPen)); }
CBrush* AFXAPI CBrush::FromHandle(HBRUSH hBrush) { return DYNAMIC_DOWNCAST(CBrush, CGdiObject::FromHandle(hBrush)); }
CFont* AFXAPI CFont::FromHandle(HFONT hFont) { return DYNAMIC_DOWNCAST(CFont, CGdiObject::FromHandle(hFont)); }
CRgn* AFXAPI CRgn::FromHandle(HRGN hRgn) { return DYNAMIC_DOWNCAST(CRgn, CGdiObject::FromHandle(hRgn)); }
CBitmap* AFXAPI CBitmap::FromHandle(HBITMAP hBitmap)
{
    return DYNAMIC_DOWNCAST(CBitmap, CGdiObject::FromHandle(hBitmap));
}
CPalette* AFXAPI CPalette::FromHandle(HPALETTE hPalette)
{
    return DYNAMIC_DOWNCAST(CPalette, CGdiObject::FromHandle(hPalette));
}

void AFXAPI CGdiObject::DeleteTempMap() { GetThreadState()->gdiObjects.DeleteTemporary(); }
BOOL CGdiObject::Attach(HGDIOBJ hObject) { return GetThreadState()->gdiObjects.Attach(hObject, this); }
BOOL CGdiObject::AttachMade(HGDIOBJ hObject) { return AttachOrDestroy(*this, hObject, &::DeleteObject); }
HGDIOBJ CGdiObject::Detach() { return DetachHandle(&ThreadState::gdiObjects, this); }

CGdiObject::~CGdiObject() { DeleteObject(); }

BOOL CGdiObject::DeleteObject() { return m_hObject != nullptr && ::DeleteObject(Detach()); }

// Pens, brushes, palettes, regions ------------------------------------------------------------------------------------

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    if (!CreatePen(nPenStyle, nWidth, crColor))
        AfxThrowResourceException();
}

CPen::CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle)
{
    if (!CreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle))
        AfxThrowResourceException();
}

CBrush::CBrush(COLORREF crColor)
{
    if (!CreateSolidBrush(crColor))
        AfxThrowResourceException();
}

CBrush::CBrush(int nIndex, COLORREF crColor)
{
    if (!CreateHatchBrush(nIndex, crColor))
        AfxThrowResourceException();
}

CBrush::CBrush(CBitmap* pBitmap)
{
    if (!CreatePatternBrush(pBitmap))
        AfxThrowResourceException();
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap)
{
    return pBitmap != nullptr && AttachMade(::CreatePatternBrush(*pBitmap));
}

BOOL CBrush::CreateDIBPatternBrush(HGLOBAL hPackedDIB, UINT nUsage)
{
    const void* bits = ::GlobalLock(hPackedDIB);
    if (bits == nullptr)
        return FALSE;
    const HBRUSH brush = ::CreateDIBPatternBrushPt(bits, nUsage);
    ::GlobalUnlock(hPackedDIB);
    return AttachMade(brush);
}

BOOL CPalette::CreateHalftonePalette(CDC* pDC)
{
    return AttachMade(::CreateHalftonePalette(pDC != nullptr ? pDC->m_hAttribDC : nullptr));
}

int CPalette::GetEntryCount()
{
    WORD count = 0;
    GetObject(sizeof count, &count);
    return count;
}

BOOL CRgn::CreateFromPath(CDC* pDC) { return AttachMade(::PathToRegion(pDC != nullptr ? pDC->m_hDC : nullptr)); }

// Fonts ---------------------------------------------------------------------------------------------------------------

BOOL CFont::CreatePointFont(int nPointSize, LPCSTR lpszFaceName, CDC* pDC)
{
    LOGFONT font = {};
    font.lfHeight = nPointSize;
    font.lfCharSet = DEFAULT_CHARSET;
    ::lstrcpyn(font.lfFaceName, lpszFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&font, pDC);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC)
{
    constexpr int kTenthsPerInch = 720;
    const HDC screen = pDC == nullptr ? ::GetDC(nullptr) : nullptr;
    const HDC dc = pDC != nullptr ? pDC->m_hAttribDC : screen;
    POINT ends[] = {{0, 0}, {0, ::MulDiv(::GetDeviceCaps(dc, LOGPIXELSY), lpLogFont->lfHeight, kTenthsPerInch)}};
    const BOOL converted = ::DPtoLP(dc, ends, 2);
    if (screen != nullptr)
        ::ReleaseDC(nullptr, screen);
    LOGFONT font = *lpLogFont;
    font.lfHeight = -std::abs(ends[1].y - ends[0].y); // of the characters, without the leading
    return converted && CreateFontIndirect(&font);
}

// Bitmaps -------------------------------------------------------------------------------------------------------------

BOOL CBitmap::LoadBitmap(LPCSTR lpszResourceName)
{
    return AttachMade(::LoadBitmap(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName));
}

BOOL CBitmap::LoadMappedBitmap(UINT nIDBitmap, UINT nFlags, LPCOLORMAP lpColorMap, int nMapSize)
{
    const HINSTANCE module = AfxFindResourceHandle(MAKEINTRESOURCE(nIDBitmap), RT_BITMAP);
    return AttachMade(COMMON_CONTROLS(CreateMappedBitmap)(module, nIDBitmap, nFlags, lpColorMap, nMapSize));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return pDC != nullptr && AttachMade(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}
