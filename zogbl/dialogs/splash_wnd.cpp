#include <zogbl/splash_wnd.h>

#include <common/without_throwing.h>
#include <zogbl/gdi_data.h>

#include "controls/drawing/item_painting.h"

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr int kMargin = 4;                // around the line, at 96 dots an inch
constexpr DWORD kNoActivate = 0x08000000; // WS_EX_NOACTIVATE, which old systems ignore

HFONT LineFont() { return static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT)); }

} // namespace

CZoSplashWnd::CZoSplashWnd() = default;

CZoSplashWnd::~CZoSplashWnd() { Close(); }

BOOL CZoSplashWnd::Show(UINT bitmapId, LPCSTR text, UINT milliseconds)
{
    if (m_hWnd != nullptr)
        return FALSE;
    if (!WithoutThrowing([&] { return Make(bitmapId, text); })) {
        Close();
        return FALSE;
    }
    SetWindowPos(&wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    if (milliseconds > 0)
        SetTimer(kTimer, milliseconds, nullptr);
    return TRUE;
}

BOOL CZoSplashWnd::Make(UINT bitmapId, LPCSTR text)
{
    m_csText = text;
    if (!CreateEx(WS_EX_TOOLWINDOW | kNoActivate, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), m_csText,
                  WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, 0, 0, 0, 0, nullptr, nullptr))
        return FALSE;
    const CRect none(0, 0, 1, 1);
    if (!m_picture.Create(WS_VISIBLE | WS_DISABLED, none, this, 0) || m_picture.LoadResource(bitmapId) != 0)
        return FALSE; // disabled, it leaves clicks to its parent
    m_picture.SetPlacing(CZoBitmapWnd::Placing::kStretched);
    const CSize pixels = m_picture.GetPictureSize();
    const CSize picture(CZoGlobalGDIData::Scale(pixels.cx), CZoGlobalGDIData::Scale(pixels.cy));
    const int margin = CZoGlobalGDIData::Scale(kMargin);
    const int line = text != nullptr ? WindowFontDC(m_hWnd, LineFont()).GetLineHeight() + 2 * margin : 0;
    CRect area(0, 0, picture.cx, picture.cy + line), screen;
    ::AdjustWindowRectEx(&area, GetStyle(), FALSE, GetExStyle());
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    SetWindowPos(nullptr, (screen.left + screen.right - area.Width()) / 2,
                 (screen.top + screen.bottom - area.Height()) / 2, area.Width(), area.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    m_picture.SetWindowPos(nullptr, 0, 0, picture.cx, picture.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    m_line = CRect(margin, picture.cy, picture.cx - margin, picture.cy + line);
    return TRUE;
}

void CZoSplashWnd::SetText(LPCSTR text)
{
    if (m_hWnd == nullptr)
        return;
    WithoutThrowing([&] {
        m_csText = text;
        SetWindowText(m_csText); // for screen readers
    });
    RedrawWindow(m_line, nullptr, RDW_INVALIDATE | RDW_ERASE);
    RedrawWindow(nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); // and what was covered meanwhile
}

void CZoSplashWnd::Close()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

void CZoSplashWnd::Paint()
{
    PAINTSTRUCT paint;
    const HDC dc = ::BeginPaint(m_hWnd, &paint);
    if (dc == nullptr)
        return;
    ::FillRect(dc, &paint.rcPaint, CZoGlobalGDIData::GetBrush(COLOR_BTNFACE));
    const HGDIOBJ before = ::SelectObject(dc, LineFont());
    const SelectedColors colors(dc, {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_BTNFACE)});
    CRect line = m_line;
    ::DrawTextA(dc, m_csText, m_csText.GetLength(), &line, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    ::SelectObject(dc, before);
    ::EndPaint(m_hWnd, &paint);
}

LRESULT CZoSplashWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_LBUTTONDOWN:
    case WM_TIMER:
        Close();
        return 0;
    default:
        return CWnd::WindowProc(message, wParam, lParam);
    }
}
