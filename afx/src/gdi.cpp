#include "thread_state.h"

#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CMenu, CObject)

CGdiObject::~CGdiObject() { DeleteObject(); }

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    m_hObject = hObject;
    return hObject != nullptr;
}

HGDIOBJ CGdiObject::Detach() { return std::exchange(m_hObject, nullptr); }

BOOL CGdiObject::DeleteObject() { return m_hObject != nullptr && ::DeleteObject(Detach()); }

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const { return ::GetObject(m_hObject, nCount, lpObject); }

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont) { return Attach(::CreateFontIndirect(lpLogFont)); }

CFont* AFXAPI CFont::FromHandle(HFONT hFont)
{
    return GetThreadState()->fonts.FromHandle(hFont, [](CFont* font, HANDLE handle) { font->m_hObject = handle; });
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor) { return Attach(::CreateSolidBrush(crColor)); }

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}

CDC::~CDC() { DeleteDC(); }

CDC* AFXAPI CDC::FromHandle(HDC hDC)
{
    return GetThreadState()->deviceContexts.FromHandle(
        hDC, [](CDC* dc, HANDLE handle) { dc->m_hDC = static_cast<HDC>(handle); });
}

BOOL CDC::Attach(HDC hDC)
{
    m_hDC = hDC;
    return hDC != nullptr;
}

HDC CDC::Detach() { return std::exchange(m_hDC, nullptr); }

BOOL CDC::CreateCompatibleDC(CDC* pDC) { return Attach(::CreateCompatibleDC(pDC != nullptr ? pDC->m_hDC : nullptr)); }

BOOL CDC::DeleteDC() { return m_hDC != nullptr && ::DeleteDC(Detach()); }

CSize CDC::GetTextExtent(LPCSTR lpszString, int nCount) const
{
    CSize size;
    ::GetTextExtentPoint32(m_hDC, lpszString, nCount, &size);
    return size;
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    ::SetBkColor(m_hDC, clr);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd != nullptr ? pWnd->m_hWnd : nullptr)
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC() { ::ReleaseDC(m_hWnd, Detach()); }

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(pWnd->m_hWnd)
{
    if (!Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    ::EndPaint(m_hWnd, &m_ps);
    Detach();
}

CMenu::~CMenu() { DestroyMenu(); }

BOOL CMenu::Attach(HMENU hMenu)
{
    m_hMenu = hMenu;
    return hMenu != nullptr;
}

HMENU CMenu::Detach() { return std::exchange(m_hMenu, nullptr); }

BOOL CMenu::LoadMenuIndirect(const void* lpMenuTemplate) { return Attach(::LoadMenuIndirect(lpMenuTemplate)); }

BOOL CMenu::DestroyMenu() { return m_hMenu != nullptr && ::DestroyMenu(Detach()); }
