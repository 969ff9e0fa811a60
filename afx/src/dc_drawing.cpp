// Device contexts: coordinates, clipping, drawing, text.
#include "system_function.h"

#include <cstdlib>

// Colours and modes ---------------------------------------------------------------------------------------------------

COLORREF CDC::SetTextColor(COLORREF crColor) { return SetInBoth(&::SetTextColor, crColor); }
COLORREF CDC::SetBkColor(COLORREF crColor) { return SetInBoth(&::SetBkColor, crColor); }

DWORD CDC::SetLayout(DWORD dwLayout)
{
    static const auto s_set = FindSystemFunction<decltype(::SetLayout)>("gdi32.dll", "SetLayout");
    return s_set != nullptr ? SetInBoth(s_set, dwLayout) : GDI_ERROR;
}

DWORD CDC::GetLayout() const
{
    static const auto s_get = FindSystemFunction<decltype(::GetLayout)>("gdi32.dll", "GetLayout");
    return s_get != nullptr ? s_get(m_hAttribDC) : GDI_ERROR;
}

// Coordinates ---------------------------------------------------------------------------------------------------------

int CDC::SetMapMode(int nMapMode) { return SetInBoth(&::SetMapMode, nMapMode); }
CPoint CDC::SetViewportOrg(int x, int y) { return AskedInBoth<CPoint>(&::SetViewportOrgEx, x, y); }
CPoint CDC::OffsetViewportOrg(int nWidth, int nHeight)
{
    return AskedInBoth<CPoint>(&::OffsetViewportOrgEx, nWidth, nHeight);
}
CSize CDC::SetViewportExt(int cx, int cy) { return AskedInBoth<CSize>(&::SetViewportExtEx, cx, cy); }
CSize CDC::ScaleViewportExt(int xNum, int xDenom, int yNum, int yDenom)
{
    return AskedInBoth<CSize>(&::ScaleViewportExtEx, xNum, xDenom, yNum, yDenom);
}
CPoint CDC::SetWindowOrg(int x, int y) { return AskedInBoth<CPoint>(&::SetWindowOrgEx, x, y); }
CPoint CDC::OffsetWindowOrg(int nWidth, int nHeight)
{
    return AskedInBoth<CPoint>(&::OffsetWindowOrgEx, nWidth, nHeight);
}
CSize CDC::SetWindowExt(int cx, int cy) { return AskedInBoth<CSize>(&::SetWindowExtEx, cx, cy); }
CSize CDC::ScaleWindowExt(int xNum, int xDenom, int yNum, int yDenom)
{
    return AskedInBoth<CSize>(&::ScaleWindowExtEx, xNum, xDenom, yNum, yDenom);
}

CSize CDC::ConvertSize(SIZE size, SIZE from, SIZE to) const
{
    return {::MulDiv(size.cx, std::abs(to.cx), std::abs(from.cx)),
            ::MulDiv(size.cy, std::abs(to.cy), std::abs(from.cy))};
}

void CDC::DPtoLP(LPSIZE lpSize) const { *lpSize = ConvertSize(*lpSize, GetViewportExt(), GetWindowExt()); }
void CDC::LPtoDP(LPSIZE lpSize) const { *lpSize = ConvertSize(*lpSize, GetWindowExt(), GetViewportExt()); }

// Clipping ------------------------------------------------------------------------------------------------------------

int CDC::GetClipBox(LPRECT lpRect) const { return ::GetClipBox(m_hDC, lpRect); }
BOOL CDC::PtVisible(int x, int y) const { return ::PtVisible(m_hDC, x, y); }
BOOL CDC::RectVisible(LPCRECT lpRect) const { return ::RectVisible(m_hDC, lpRect); }
int CDC::SelectClipRgn(CRgn* pRgn) { return SetInBoth(&::SelectClipRgn, HandleOf<HRGN>(pRgn)); }
int CDC::SelectClipRgn(CRgn* pRgn, int nMode) { return SetInBoth(&::ExtSelectClipRgn, HandleOf<HRGN>(pRgn), nMode); }
int CDC::ExcludeUpdateRgn(CWnd* pWnd) { return ::ExcludeUpdateRgn(m_hDC, pWnd != nullptr ? pWnd->m_hWnd : nullptr); }

// Areas ---------------------------------------------------------------------------------------------------------------

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    const DWORD layout = GetLayout();
    if (layout != GDI_ERROR && (layout & LAYOUT_RTL) != 0) {
        // Wine fills the rectangle of ExtTextOut one pixel too far to the left in a context that runs from right to
        // left.
        const HBRUSH brush = ::CreateSolidBrush(clr);
        ::FillRect(m_hDC, lpRect, brush);
        ::DeleteObject(brush);
        return;
    }
    const COLORREF before = ::SetBkColor(m_hDC, clr);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
    ::SetBkColor(m_hDC, before);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

namespace {

/// Draws in a state what \p data is of the kind \p type, over \p type in \p flags.
BOOL DrawInState(HDC dc, HBRUSH brush, DRAWSTATEPROC proc, LPARAM data, WPARAM length, POINT at, SIZE size, UINT flags,
                 UINT type)
{
    constexpr UINT kTypeMask = 0x000F;
    return ::DrawState(dc, brush, proc, data, length, at.x, at.y, size.cx, size.cy, (flags & ~kTypeMask) | type);
}

} // namespace

BOOL CDC::DrawState(CPoint pt, CSize size, HBITMAP hBitmap, UINT nFlags, HBRUSH hBrush)
{
    return DrawInState(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(hBitmap), 0, pt, size, nFlags, DST_BITMAP);
}

BOOL CDC::DrawState(CPoint pt, CSize size, CBitmap* pBitmap, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, HandleOf<HBITMAP>(pBitmap), nFlags, HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, HBRUSH hBrush)
{
    return DrawInState(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(hIcon), 0, pt, size, nFlags, DST_ICON);
}

BOOL CDC::DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, hIcon, nFlags, HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::DrawState(CPoint pt, CSize size, LPCSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen, HBRUSH hBrush)
{
    return DrawInState(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(lpszText), static_cast<WPARAM>(nTextLen), pt,
                       size, nFlags, bPrefixText ? DST_PREFIXTEXT : DST_TEXT);
}

BOOL CDC::DrawState(CPoint pt, CSize size, LPCSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen, CBrush* pBrush)
{
    return DrawState(pt, size, lpszText, nFlags, bPrefixText, nTextLen, HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags, HBRUSH hBrush)
{
    return DrawInState(m_hDC, hBrush, lpDrawProc, lData, 0, pt, size, nFlags, DST_COMPLEX);
}

BOOL CDC::DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, lpDrawProc, lData, nFlags, HandleOf<HBRUSH>(pBrush));
}

// Lines ---------------------------------------------------------------------------------------------------------------

CPoint CDC::MoveTo(int x, int y) { return AskedInBoth<CPoint>(&::MoveToEx, x, y); }

BOOL CDC::LineTo(int x, int y)
{
    if (HasOtherAttribDC())
        ::MoveToEx(m_hAttribDC, x, y, nullptr);
    return ::LineTo(m_hDC, x, y);
}

// Text ----------------------------------------------------------------------------------------------------------------

BOOL CDC::TextOut(int x, int y, LPCSTR lpszString, int nCount) { return ::TextOut(m_hDC, x, y, lpszString, nCount); }

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCSTR lpszString, UINT nCount, LPINT lpDxWidths)
{
    return ::ExtTextOut(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
}

CSize CDC::TabbedTextOut(int x, int y, LPCSTR lpszString, int nCount, int nTabPositions, LPINT lpnTabStopPositions,
                         int nTabOrigin)
{
    return CSize(static_cast<DWORD>(
        ::TabbedTextOut(m_hDC, x, y, lpszString, nCount, nTabPositions, lpnTabStopPositions, nTabOrigin)));
}

int CDC::DrawText(LPCSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
{
    return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
}

BOOL CDC::GrayString(CBrush* pBrush, BOOL(CALLBACK* lpfnOutput)(HDC, LPARAM, int), LPARAM lpData, int nCount, int x,
                     int y, int nWidth, int nHeight)
{
    return ::GrayString(m_hDC, HandleOf<HBRUSH>(pBrush), lpfnOutput, lpData, nCount, x, y, nWidth, nHeight);
}

int CDC::GetTextFace(CString& rString) const
{
    const int room = m_hAttribDC != nullptr ? ::GetTextFace(m_hAttribDC, 0, nullptr) : 0;
    const LPSTR face = rString.GetBuffer(room);
    const int copied = room > 0 ? ::GetTextFace(m_hAttribDC, room, face) : 0;
    rString.ReleaseBuffer(copied > 0 ? -1 : 0);
    return copied;
}

// Printing ------------------------------------------------------------------------------------------------------------

int CDC::Escape(int nEscape, int nCount, LPCSTR lpszInData, LPVOID lpOutData)
{
    return ::Escape(m_hDC, nEscape, nCount, lpszInData, lpOutData);
}
