/// \file
/// Application framework: drawing objects. Included by afxwin.h.
///
/// Each class stands for one kind of handle. What makes one (the Create functions, Load functions and constructors)
/// wants an object that holds none yet, answers FALSE if it fails, and then leaves nothing behind; constructors that
/// make one throw CResourceException*. CMemoryException* is thrown if there is no memory to enter it in the thread's
/// map.
#pragma once

#include <afxgeo_.h>

#include <commctrl.h> // COLORMAP

/// A drawing object: owns its handle, if it has one, and deletes it. It belongs to the thread that attached it.
class AFX_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;
    operator HGDIOBJ() const { return m_hObject; }
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    /// The object that a handle is attached to, else a temporary one of the class for its kind, until the thread is
    /// idle. An object of another class is passed over. \return null for a handle of no drawing object; those of the
    /// classes below: null for a handle of another kind
    static CGdiObject* AFXAPI FromHandle(HGDIOBJ hObject);
    static void AFXAPI DeleteTempMap();
    /// \return FALSE for null, and for an object that holds a handle already
    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();

    /// Describes the object in at most \p nCount bytes. \return the bytes written, 0 on failure
    int GetObject(int nCount, LPVOID lpObject) const { return ::GetObject(m_hObject, nCount, lpObject); }
    UINT GetObjectType() const { return ::GetObjectType(m_hObject); } ///< OBJ_PEN ..., 0 without an object
    BOOL CreateStockObject(int nIndex) { return Attach(::GetStockObject(nIndex)); }
    BOOL UnrealizeObject() { return ::UnrealizeObject(m_hObject); }
    BOOL operator==(const CGdiObject& obj) const { return m_hObject == obj.m_hObject; }
    BOOL operator!=(const CGdiObject& obj) const { return m_hObject != obj.m_hObject; }

    HGDIOBJ m_hObject = nullptr;

protected:
    /// Attaches what was just made, or deletes it.
    BOOL AttachMade(HGDIOBJ hObject);
};

class AFX_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0, const DWORD* lpStyle = nullptr);
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    static CPen* AFXAPI FromHandle(HPEN hPen);

    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor)
    {
        return AttachMade(::CreatePen(nPenStyle, nWidth, crColor));
    }
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = nullptr)
    {
        return AttachMade(::ExtCreatePen(static_cast<DWORD>(nPenStyle), static_cast<DWORD>(nWidth), pLogBrush,
                                         static_cast<DWORD>(nStyleCount), lpStyle));
    }
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen) { return AttachMade(::CreatePenIndirect(lpLogPen)); }
    int GetLogPen(LOGPEN* pLogPen) { return GetObject(sizeof *pLogPen, pLogPen); }
    int GetExtLogPen(EXTLOGPEN* pLogPen) { return GetObject(sizeof *pLogPen, pLogPen); }
};

class AFX_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    explicit CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor); ///< hatched
    explicit CBrush(CBitmap* pBitmap);
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    static CBrush* AFXAPI FromHandle(HBRUSH hBrush);

    BOOL CreateSolidBrush(COLORREF crColor) { return AttachMade(::CreateSolidBrush(crColor)); }
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor) { return AttachMade(::CreateHatchBrush(nIndex, crColor)); }
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush) { return AttachMade(::CreateBrushIndirect(lpLogBrush)); }
    BOOL CreatePatternBrush(CBitmap* pBitmap); ///< the bitmap is copied
    /// \param hPackedDIB a memory block with a DIB in one piece, which stays the caller's
    BOOL CreateDIBPatternBrush(HGLOBAL hPackedDIB, UINT nUsage);
    BOOL CreateDIBPatternBrush(const void* lpPackedDIB, UINT nUsage)
    {
        return AttachMade(::CreateDIBPatternBrushPt(lpPackedDIB, nUsage));
    }
    /// The system's own brush of that colour, which the deletion of this object leaves alone.
    BOOL CreateSysColorBrush(int nIndex) { return Attach(::GetSysColorBrush(nIndex)); }
    int GetLogBrush(LOGBRUSH* pLogBrush) { return GetObject(sizeof *pLogBrush, pLogBrush); }
};

class AFX_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    CFont() = default;
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* AFXAPI FromHandle(HFONT hFont);

    BOOL CreateFontIndirect(const LOGFONT* lpLogFont) { return AttachMade(::CreateFontIndirect(lpLogFont)); }
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCSTR lpszFacename)
    {
        return AttachMade(::CreateFont(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline,
                                       cStrikeOut, nCharSet, nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily,
                                       lpszFacename));
    }
    /// Sizes are tenths of a point, \p lpLogFont's lfHeight too. \param pDC where the font is for; null: the screen
    BOOL CreatePointFont(int nPointSize, LPCSTR lpszFaceName, CDC* pDC = nullptr);
    BOOL CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC = nullptr);
    int GetLogFont(LOGFONT* pLogFont) { return GetObject(sizeof *pLogFont, pLogFont); }
};

class AFX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() = default;
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    static CBitmap* AFXAPI FromHandle(HBITMAP hBitmap);

    /// Loads a resource found through the resource chain.
    BOOL LoadBitmap(LPCSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCE(nIDResource)); }
    BOOL LoadOEMBitmap(UINT nIDBitmap) { return AttachMade(::LoadBitmap(nullptr, MAKEINTRESOURCE(nIDBitmap))); }
    /// Loads a resource with colours replaced. \param nFlags 0 or CMB_MASKED. \param lpColorMap \p nMapSize colours;
    /// null: the greys of buttons become the system's present colours
    BOOL LoadMappedBitmap(UINT nIDBitmap, UINT nFlags = 0, LPCOLORMAP lpColorMap = nullptr, int nMapSize = 0);
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
    {
        return AttachMade(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
    }
    BOOL CreateBitmapIndirect(LPBITMAP lpBitmap) { return AttachMade(::CreateBitmapIndirect(lpBitmap)); }
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);

    int GetBitmap(BITMAP* pBitMap) { return GetObject(sizeof *pBitMap, pBitMap); }
    DWORD SetBitmapBits(DWORD dwCount, const void* lpBits)
    {
        return static_cast<DWORD>(::SetBitmapBits(*this, dwCount, lpBits));
    }
    DWORD GetBitmapBits(DWORD dwCount, LPVOID lpBits) const
    {
        return static_cast<DWORD>(::GetBitmapBits(*this, static_cast<LONG>(dwCount), lpBits));
    }
    /// In tenths of a millimetre; the system keeps it and does nothing with it. \return what it was before
    CSize SetBitmapDimension(int nWidth, int nHeight)
    {
        CSize before;
        ::SetBitmapDimensionEx(*this, nWidth, nHeight, &before);
        return before;
    }
    CSize GetBitmapDimension() const
    {
        CSize size;
        ::GetBitmapDimensionEx(*this, &size);
        return size;
    }
};

class AFX_API CPalette : public CGdiObject {
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() = default;
    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }
    static CPalette* AFXAPI FromHandle(HPALETTE hPalette);

    BOOL CreatePalette(LPLOGPALETTE lpLogPalette) { return AttachMade(::CreatePalette(lpLogPalette)); }
    BOOL CreateHalftonePalette(CDC* pDC);

    int GetEntryCount();
    UINT GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const
    {
        return ::GetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
    }
    UINT SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors)
    {
        return ::SetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
    }
    void AnimatePalette(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors)
    {
        ::AnimatePalette(*this, nStartIndex, nNumEntries, lpPaletteColors);
    }
    UINT GetNearestPaletteIndex(COLORREF crColor) const { return ::GetNearestPaletteIndex(*this, crColor); }
    BOOL ResizePalette(UINT nNumEntries) { return ::ResizePalette(*this, nNumEntries); }
};

/// A region. Operations with a null region answer ERROR or FALSE.
class AFX_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn() = default;
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    static CRgn* AFXAPI FromHandle(HRGN hRgn);

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2) { return AttachMade(::CreateRectRgn(x1, y1, x2, y2)); }
    BOOL CreateRectRgnIndirect(LPCRECT lpRect) { return AttachMade(::CreateRectRgnIndirect(lpRect)); }
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2) { return AttachMade(::CreateEllipticRgn(x1, y1, x2, y2)); }
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect) { return AttachMade(::CreateEllipticRgnIndirect(lpRect)); }
    BOOL CreatePolygonRgn(LPPOINT lpPoints, int nCount, int nMode)
    {
        return AttachMade(::CreatePolygonRgn(lpPoints, nCount, nMode));
    }
    BOOL CreatePolyPolygonRgn(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount, int nPolyFillMode)
    {
        return AttachMade(::CreatePolyPolygonRgn(lpPoints, lpPolyCounts, nCount, nPolyFillMode));
    }
    BOOL CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3)
    {
        return AttachMade(::CreateRoundRectRgn(x1, y1, x2, y2, x3, y3));
    }
    BOOL CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData)
    {
        return AttachMade(::ExtCreateRegion(lpXForm, static_cast<DWORD>(nCount), pRgnData));
    }
    /// The path of a device context, which it has no longer then.
    BOOL CreateFromPath(CDC* pDC);

    void SetRectRgn(int x1, int y1, int x2, int y2) { ::SetRectRgn(*this, x1, y1, x2, y2); }
    void SetRectRgn(LPCRECT lpRect) { SetRectRgn(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    /// These return the kind of region that it is then, ERROR on failure; this region must have been made before.
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode)
    {
        return ::CombineRgn(*this, HandleOf(pRgn1), HandleOf(pRgn2), nCombineMode);
    }
    int CopyRgn(const CRgn* pRgnSrc) { return CombineRgn(pRgnSrc, nullptr, RGN_COPY); }
    int OffsetRgn(int x, int y) { return ::OffsetRgn(*this, x, y); }
    int OffsetRgn(POINT point) { return OffsetRgn(point.x, point.y); }
    int GetRgnBox(LPRECT lpRect) const { return ::GetRgnBox(*this, lpRect); }
    BOOL EqualRgn(const CRgn* pRgn) const { return ::EqualRgn(*this, HandleOf(pRgn)) == TRUE; }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(*this, x, y); }
    BOOL PtInRegion(POINT point) const { return PtInRegion(point.x, point.y); }
    BOOL RectInRegion(LPCRECT lpRect) const { return ::RectInRegion(*this, lpRect); }
    /// \return the bytes written, or wanted if \p lpRgnData is null; 0 on failure
    int GetRegionData(LPRGNDATA lpRgnData, int nDataSize) const
    {
        return static_cast<int>(::GetRegionData(*this, static_cast<DWORD>(nDataSize), lpRgnData));
    }

private:
    static HRGN HandleOf(const CRgn* pRgn) { return pRgn != nullptr ? static_cast<HRGN>(*pRgn) : nullptr; }
};
