/// \file
/// Application framework: device contexts. Included by afxwin.h.
#pragma once

#include <afxgdi_.h>

/// A device context: owns the handle attached to it, and deletes it.
///
/// It draws upon m_hDC and asks m_hAttribDC for what it wants to know. Both are one context unless SetAttribDC sets
/// another, a printer for instance whose page is shown on the screen. What is set (colours, fonts, modes, clipping,
/// coordinates) is set in both, and what it was before is m_hAttribDC's answer. Operations without a context fail as
/// the system's do.
class AFX_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() = default;
    ~CDC() override;
    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }
    /// The object that a handle is attached to, else a temporary one until the thread is idle. \return null for what is
    /// no device context
    static CDC* AFXAPI FromHandle(HDC hDC);
    static void AFXAPI DeleteTempMap();
    /// \return FALSE for null, and for an object that has an output context already
    BOOL Attach(HDC hDC);
    /// Also sets the attribute context to null.
    HDC Detach();
    /// These change m_hAttribDC and m_hDC and attach nothing. An output context that is attached stays: neither is
    /// another set in its place, nor is it released.
    virtual void SetAttribDC(HDC hDC);
    virtual void SetOutputDC(HDC hDC);
    virtual void ReleaseAttribDC();
    virtual void ReleaseOutputDC();

    virtual BOOL CreateDC(LPCSTR lpszDriverName, LPCSTR lpszDeviceName, LPCSTR lpszOutput, const void* lpInitData);
    virtual BOOL CreateIC(LPCSTR lpszDriverName, LPCSTR lpszDeviceName, LPCSTR lpszOutput, const void* lpInitData);
    /// \param pDC null: the screen
    virtual BOOL CreateCompatibleDC(CDC* pDC);
    virtual BOOL DeleteDC();
    BOOL ResetDC(const DEVMODE* lpDevMode);
    /// \return the number of what was saved, for RestoreDC; -1 if it is not the same in both contexts; 0 on failure
    virtual int SaveDC();
    virtual BOOL RestoreDC(int nSavedDC); ///< -1: what was saved last
    int GetDeviceCaps(int nIndex) const { return ::GetDeviceCaps(m_hAttribDC, nIndex); }
    BOOL IsPrinting() const { return m_bPrinting; } ///< whether a view prints or shows a preview with it
    CWnd* GetWindow() const;

    // Objects. Each returns the object selected before, which may be a temporary one; null on failure, and for null.
    virtual CGdiObject* SelectStockObject(int nIndex);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap); ///< in the output context alone
    /// Clips to the region, of which the context keeps a copy. \return its kind; ERROR on failure, and for null
    int SelectObject(CRgn* pRgn);
    CGdiObject* SelectObject(CGdiObject* pObject); ///< of any kind; null for a region
    CPalette* SelectPalette(CPalette* pPalette, BOOL bForceBackground);
    UINT RealizePalette() { return ::RealizePalette(m_hDC); }
    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;
    CPalette* GetCurrentPalette() const;

    // Colours and modes.
    virtual COLORREF SetTextColor(COLORREF crColor);
    virtual COLORREF SetBkColor(COLORREF crColor);
    COLORREF GetTextColor() const { return ::GetTextColor(m_hAttribDC); }
    COLORREF GetBkColor() const { return ::GetBkColor(m_hAttribDC); }
    COLORREF GetNearestColor(COLORREF crColor) const { return ::GetNearestColor(m_hAttribDC, crColor); }
    int SetBkMode(int nBkMode) { return SetInBoth(&::SetBkMode, nBkMode); }
    int GetBkMode() const { return ::GetBkMode(m_hAttribDC); }
    int SetROP2(int nDrawMode) { return SetInBoth(&::SetROP2, nDrawMode); }
    int GetROP2() const { return ::GetROP2(m_hAttribDC); }
    int SetPolyFillMode(int nPolyFillMode) { return SetInBoth(&::SetPolyFillMode, nPolyFillMode); }
    int GetPolyFillMode() const { return ::GetPolyFillMode(m_hAttribDC); }
    int SetStretchBltMode(int nStretchMode) { return SetInBoth(&::SetStretchBltMode, nStretchMode); }
    int GetStretchBltMode() const { return ::GetStretchBltMode(m_hAttribDC); }
    /// LAYOUT_ flags. \return what they were; GDI_ERROR on failure, and on systems without layouts
    virtual DWORD SetLayout(DWORD dwLayout);
    DWORD GetLayout() const;

    // Coordinates. Each returns what was in force before.
    virtual int SetMapMode(int nMapMode);
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
    virtual CPoint OffsetViewportOrg(int nWidth, int nHeight);
    virtual CSize SetViewportExt(int cx, int cy);
    CSize SetViewportExt(SIZE size) { return SetViewportExt(size.cx, size.cy); }
    virtual CSize ScaleViewportExt(int xNum, int xDenom, int yNum, int yDenom);
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point) { return SetWindowOrg(point.x, point.y); }
    CPoint OffsetWindowOrg(int nWidth, int nHeight);
    virtual CSize SetWindowExt(int cx, int cy);
    CSize SetWindowExt(SIZE size) { return SetWindowExt(size.cx, size.cy); }
    virtual CSize ScaleWindowExt(int xNum, int xDenom, int yNum, int yDenom);
    int GetMapMode() const { return ::GetMapMode(m_hAttribDC); }
    CPoint GetViewportOrg() const { return Asked<CPoint>(&::GetViewportOrgEx, m_hAttribDC); }
    CSize GetViewportExt() const { return Asked<CSize>(&::GetViewportExtEx, m_hAttribDC); }
    CPoint GetWindowOrg() const { return Asked<CPoint>(&::GetWindowOrgEx, m_hAttribDC); }
    CSize GetWindowExt() const { return Asked<CSize>(&::GetWindowExtEx, m_hAttribDC); }
    void DPtoLP(LPPOINT lpPoints, int nCount = 1) const { ::DPtoLP(m_hAttribDC, lpPoints, nCount); }
    void DPtoLP(LPRECT lpRect) const { DPtoLP(reinterpret_cast<LPPOINT>(lpRect), 2); }
    void DPtoLP(LPSIZE lpSize) const; ///< a size keeps its sign
    void LPtoDP(LPPOINT lpPoints, int nCount = 1) const { ::LPtoDP(m_hAttribDC, lpPoints, nCount); }
    void LPtoDP(LPRECT lpRect) const { LPtoDP(reinterpret_cast<LPPOINT>(lpRect), 2); }
    void LPtoDP(LPSIZE lpSize) const;
    CPoint SetBrushOrg(int x, int y) { return Asked<CPoint>(&::SetBrushOrgEx, m_hDC, x, y); }
    CPoint SetBrushOrg(POINT point) { return SetBrushOrg(point.x, point.y); }
    CPoint GetBrushOrg() const { return Asked<CPoint>(&::GetBrushOrgEx, m_hDC); }

    // Clipping. It is the output context's that is asked for.
    virtual int GetClipBox(LPRECT lpRect) const;
    virtual BOOL PtVisible(int x, int y) const;
    BOOL PtVisible(POINT point) const { return PtVisible(point.x, point.y); }
    virtual BOOL RectVisible(LPCRECT lpRect) const;
    int SelectClipRgn(CRgn* pRgn); ///< null: no clipping any more
    int SelectClipRgn(CRgn* pRgn, int nMode);
    int ExcludeClipRect(int x1, int y1, int x2, int y2) { return SetInBoth(&::ExcludeClipRect, x1, y1, x2, y2); }
    int ExcludeClipRect(LPCRECT lpRect)
    {
        return ExcludeClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    int ExcludeUpdateRgn(CWnd* pWnd);
    int IntersectClipRect(int x1, int y1, int x2, int y2) { return SetInBoth(&::IntersectClipRect, x1, y1, x2, y2); }
    int IntersectClipRect(LPCRECT lpRect)
    {
        return IntersectClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    int OffsetClipRgn(int x, int y) { return SetInBoth(&::OffsetClipRgn, x, y); }
    int OffsetClipRgn(SIZE size) { return OffsetClipRgn(size.cx, size.cy); }

    // Areas. A null brush draws nothing.
    void FillRect(LPCRECT lpRect, CBrush* pBrush) { ::FillRect(m_hDC, lpRect, HandleOf<HBRUSH>(pBrush)); }
    void FrameRect(LPCRECT lpRect, CBrush* pBrush) { ::FrameRect(m_hDC, lpRect, HandleOf<HBRUSH>(pBrush)); }
    void InvertRect(LPCRECT lpRect) { ::InvertRect(m_hDC, lpRect); }
    void FillSolidRect(LPCRECT lpRect, COLORREF clr); ///< the background colour stays as it was
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr) { FillSolidRect(CRect(x, y, x + cx, y + cy), clr); }
    void Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
    {
        Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, clrTopLeft,
                   clrBottomRight);
    }
    BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags) { return ::DrawEdge(m_hDC, lpRect, nEdge, nFlags); }
    BOOL DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState)
    {
        return ::DrawFrameControl(m_hDC, lpRect, nType, nState);
    }
    void DrawFocusRect(LPCRECT lpRect) { ::DrawFocusRect(m_hDC, lpRect); }
    BOOL FillRgn(CRgn* pRgn, CBrush* pBrush)
    {
        return ::FillRgn(m_hDC, HandleOf<HRGN>(pRgn), HandleOf<HBRUSH>(pBrush));
    }
    BOOL FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight)
    {
        return ::FrameRgn(m_hDC, HandleOf<HRGN>(pRgn), HandleOf<HBRUSH>(pBrush), nWidth, nHeight);
    }
    BOOL InvertRgn(CRgn* pRgn) { return ::InvertRgn(m_hDC, HandleOf<HRGN>(pRgn)); }
    BOOL PaintRgn(CRgn* pRgn) { return ::PaintRgn(m_hDC, HandleOf<HRGN>(pRgn)); }

    // Icons, and what is shown as disabled or selected. Handles and objects alike; null brushes are for flags that use
    // none.
    BOOL DrawIcon(int x, int y, HICON hIcon) { return ::DrawIcon(m_hDC, x, y, hIcon); }
    BOOL DrawIcon(POINT point, HICON hIcon) { return DrawIcon(point.x, point.y, hIcon); }
    BOOL DrawState(CPoint pt, CSize size, HBITMAP hBitmap, UINT nFlags, HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, CBitmap* pBitmap, UINT nFlags, CBrush* pBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, CBrush* pBrush);
    BOOL DrawState(CPoint pt, CSize size, LPCSTR lpszText, UINT nFlags, BOOL bPrefixText = TRUE, int nTextLen = 0,
                   HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, LPCSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen, CBrush* pBrush);
    BOOL DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags, HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags, CBrush* pBrush);

    // Lines and shapes.
    CPoint MoveTo(int x, int y); ///< \return where it was
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    CPoint GetCurrentPosition() const { return Asked<CPoint>(&::GetCurrentPositionEx, m_hAttribDC); }
    BOOL Polyline(LPPOINT lpPoints, int nCount) { return ::Polyline(m_hDC, lpPoints, nCount); }
    BOOL PolyPolyline(const POINT* lpPoints, const DWORD* lpPolyPoints, int nCount)
    {
        return ::PolyPolyline(m_hDC, lpPoints, lpPolyPoints, static_cast<DWORD>(nCount));
    }
    BOOL PolyBezier(const POINT* lpPoints, int nCount)
    {
        return ::PolyBezier(m_hDC, lpPoints, static_cast<DWORD>(nCount));
    }
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
    {
        return ::Arc(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
    }
    BOOL Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd) { return InBox(&::Arc, lpRect, ptStart, ptEnd); }
    BOOL Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
    {
        return ::Chord(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
    }
    BOOL Chord(LPCRECT lpRect, POINT ptStart, POINT ptEnd) { return InBox(&::Chord, lpRect, ptStart, ptEnd); }
    BOOL Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
    {
        return ::Pie(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
    }
    BOOL Pie(LPCRECT lpRect, POINT ptStart, POINT ptEnd) { return InBox(&::Pie, lpRect, ptStart, ptEnd); }
    BOOL Ellipse(int x1, int y1, int x2, int y2) { return ::Ellipse(m_hDC, x1, y1, x2, y2); }
    BOOL Ellipse(LPCRECT lpRect) { return Ellipse(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL Rectangle(int x1, int y1, int x2, int y2) { return ::Rectangle(m_hDC, x1, y1, x2, y2); }
    BOOL Rectangle(LPCRECT lpRect) { return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL RoundRect(int x1, int y1, int x2, int y2, int x3, int y3)
    {
        return ::RoundRect(m_hDC, x1, y1, x2, y2, x3, y3);
    }
    BOOL RoundRect(LPCRECT lpRect, POINT point)
    {
        return RoundRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, point.x, point.y);
    }
    BOOL Polygon(LPPOINT lpPoints, int nCount) { return ::Polygon(m_hDC, lpPoints, nCount); }
    BOOL PolyPolygon(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount)
    {
        return ::PolyPolygon(m_hDC, lpPoints, lpPolyCounts, nCount);
    }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF GetPixel(POINT point) const { return GetPixel(point.x, point.y); }
    COLORREF SetPixel(int x, int y, COLORREF crColor) { return ::SetPixel(m_hDC, x, y, crColor); }
    COLORREF SetPixel(POINT point, COLORREF crColor) { return SetPixel(point.x, point.y, crColor); }
    BOOL SetPixelV(int x, int y, COLORREF crColor) { return ::SetPixelV(m_hDC, x, y, crColor); }
    BOOL SetPixelV(POINT point, COLORREF crColor) { return SetPixelV(point.x, point.y, crColor); }
    BOOL FloodFill(int x, int y, COLORREF crColor) { return ExtFloodFill(x, y, crColor, FLOODFILLBORDER); }
    BOOL ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType)
    {
        return ::ExtFloodFill(m_hDC, x, y, crColor, nFillType);
    }

    // Bitmaps. A null source is for operations without one.
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop)
    {
        return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop);
    }
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
    {
        return ::BitBlt(m_hDC, x, y, nWidth, nHeight, HandleOf<HDC>(pSrcDC), xSrc, ySrc, dwRop);
    }
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                    int nSrcHeight, DWORD dwRop)
    {
        return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, HandleOf<HDC>(pSrcDC), xSrc, ySrc, nSrcWidth, nSrcHeight,
                            dwRop);
    }
    /// Fails on Windows 95, as the system's does there.
    BOOL MaskBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, CBitmap& maskBitmap, int xMask,
                 int yMask, DWORD dwRop)
    {
        return ::MaskBlt(m_hDC, x, y, nWidth, nHeight, HandleOf<HDC>(pSrcDC), xSrc, ySrc, maskBitmap, xMask, yMask,
                         dwRop);
    }

    // Text. Lengths are in bytes.
    virtual BOOL TextOut(int x, int y, LPCSTR lpszString, int nCount);
    BOOL TextOut(int x, int y, const CString& str) { return TextOut(x, y, str, str.GetLength()); }
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCSTR lpszString, UINT nCount,
                            LPINT lpDxWidths);
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, LPINT lpDxWidths)
    {
        return ExtTextOut(x, y, nOptions, lpRect, str, static_cast<UINT>(str.GetLength()), lpDxWidths);
    }
    virtual CSize TabbedTextOut(int x, int y, LPCSTR lpszString, int nCount, int nTabPositions,
                                LPINT lpnTabStopPositions, int nTabOrigin);
    CSize TabbedTextOut(int x, int y, const CString& str, int nTabPositions, LPINT lpnTabStopPositions, int nTabOrigin)
    {
        return TabbedTextOut(x, y, str, str.GetLength(), nTabPositions, lpnTabStopPositions, nTabOrigin);
    }
    virtual int DrawText(LPCSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    /// DT_MODIFYSTRING does nothing: the text stays as it is.
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
    {
        return DrawText(str, str.GetLength(), lpRect, nFormat & ~static_cast<UINT>(DT_MODIFYSTRING));
    }
    /// \param pBrush null: the grey of the system
    virtual BOOL GrayString(CBrush* pBrush, BOOL(CALLBACK* lpfnOutput)(HDC, LPARAM, int), LPARAM lpData, int nCount,
                            int x, int y, int nWidth, int nHeight);
    CSize GetTextExtent(LPCSTR lpszString, int nCount) const
    {
        CSize size;
        ::GetTextExtentPoint32(m_hAttribDC, lpszString, nCount, &size);
        return size;
    }
    CSize GetTextExtent(const CString& str) const { return GetTextExtent(str, str.GetLength()); }
    CSize GetTabbedTextExtent(LPCSTR lpszString, int nCount, int nTabPositions, LPINT lpnTabStopPositions) const
    {
        return CSize(::GetTabbedTextExtent(m_hAttribDC, lpszString, nCount, nTabPositions, lpnTabStopPositions));
    }
    CSize GetTabbedTextExtent(const CString& str, int nTabPositions, LPINT lpnTabStopPositions) const
    {
        return GetTabbedTextExtent(str, str.GetLength(), nTabPositions, lpnTabStopPositions);
    }
    BOOL GetTextMetrics(LPTEXTMETRIC lpMetrics) const { return ::GetTextMetrics(m_hAttribDC, lpMetrics); }
    BOOL GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const
    {
        return ::GetCharWidth(m_hAttribDC, nFirstChar, nLastChar, lpBuffer);
    }
    /// \param nCount bytes that \p lpszFacename has room for, its end included. \return the bytes copied
    int GetTextFace(int nCount, LPSTR lpszFacename) const { return ::GetTextFace(m_hAttribDC, nCount, lpszFacename); }
    int GetTextFace(CString& rString) const;
    UINT SetTextAlign(UINT nFlags) { return SetInBoth(&::SetTextAlign, nFlags); }
    UINT GetTextAlign() const { return ::GetTextAlign(m_hAttribDC); }
    int SetTextJustification(int nBreakExtra, int nBreakCount)
    {
        return SetInBoth(&::SetTextJustification, nBreakExtra, nBreakCount);
    }
    int SetTextCharacterExtra(int nCharExtra) { return SetInBoth(&::SetTextCharacterExtra, nCharExtra); }
    int GetTextCharacterExtra() const { return ::GetTextCharacterExtra(m_hAttribDC); }

    // Printing. Results of 0 and below are failures.
    int StartDoc(LPDOCINFO lpDocInfo) { return ::StartDoc(m_hDC, lpDocInfo); }
    int StartPage() { return ::StartPage(m_hDC); }
    int EndPage() { return ::EndPage(m_hDC); }
    int EndDoc() { return ::EndDoc(m_hDC); }
    int AbortDoc() { return ::AbortDoc(m_hDC); }
    int SetAbortProc(BOOL(CALLBACK* lpfn)(HDC, int)) { return ::SetAbortProc(m_hDC, lpfn); }
    virtual int Escape(int nEscape, int nCount, LPCSTR lpszInData, LPVOID lpOutData);
    int Escape(int nEscape, int nInputSize, LPCSTR lpszInputData, int nOutputSize, LPSTR lpszOutputData)
    {
        return ::ExtEscape(m_hDC, nEscape, nInputSize, lpszInputData, nOutputSize, lpszOutputData);
    }

    HDC m_hDC = nullptr;
    HDC m_hAttribDC = nullptr;
    BOOL m_bPrinting = FALSE;

protected:
    /// Whether there is an attribute context of its own.
    bool HasOtherAttribDC() const { return m_hAttribDC != nullptr && m_hAttribDC != m_hDC; }

private:
    template <class HANDLE, class OBJECT> static HANDLE HandleOf(const OBJECT* object)
    {
        return object != nullptr ? static_cast<HANDLE>(*object) : nullptr;
    }
    /// What a system function fills in; zeroes if it fails.
    template <class RESULT, class FUNCTION, class... ARGUMENTS>
    static RESULT Asked(FUNCTION function, HDC dc, ARGUMENTS... arguments)
    {
        RESULT result;
        return function(dc, arguments..., &result) ? result : RESULT();
    }
    /// Calls a system function for both contexts. \return what it answered for m_hAttribDC
    template <class RESULT, class... PARAMETERS, class... ARGUMENTS>
    RESULT SetInBoth(RESULT(WINAPI* function)(HDC, PARAMETERS...), ARGUMENTS... arguments)
    {
        const RESULT result = function(m_hDC, arguments...);
        return HasOtherAttribDC() ? function(m_hAttribDC, arguments...) : result;
    }
    template <class RESULT, class FUNCTION, class... ARGUMENTS>
    RESULT AskedInBoth(FUNCTION function, ARGUMENTS... arguments)
    {
        const RESULT result = Asked<RESULT>(function, m_hDC, arguments...);
        return HasOtherAttribDC() ? Asked<RESULT>(function, m_hAttribDC, arguments...) : result;
    }
    template <class FUNCTION> BOOL InBox(FUNCTION function, LPCRECT box, POINT start, POINT end)
    {
        return function(m_hDC, box->left, box->top, box->right, box->bottom, start.x, start.y, end.x, end.y);
    }
    BOOL AttachMade(HDC hDC);
    CGdiObject* SelectInBoth(HGDIOBJ hObject);
    template <class OBJECT> OBJECT* SelectTyped(OBJECT* object);
    CSize ConvertSize(SIZE size, SIZE from, SIZE to) const;

    bool m_bAttached = false; // m_hDC is this object's own
};

/// The client area of a window, or with null the screen, between construction and destruction. The constructors of this
/// class and the next ones throw CResourceException* if the system gives no context.
class AFX_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

/// All of a window, its frame included; with null the screen.
class AFX_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)
public:
    explicit CWindowDC(CWnd* pWnd);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};

/// Painting in answer to WM_PAINT.
class AFX_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps = {};

protected:
    HWND m_hWnd;
};
