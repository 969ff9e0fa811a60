#include "thread_state.h"

#include <utility>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

CGdiObject::~CGdiObject() { DeleteObject(); }

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    m_hObject = hObject;
    return hObject != nullptr;
}

HGDIOBJ CGdiObject::Detach() { return std::exchange(m_hObject, nullptr); }

BOOL CGdiObject::DeleteObject() { return m_hObject != nullptr && ::DeleteObject(Detach()); }

BOOL CBitmap::LoadBitmap(LPCSTR lpszResourceName)
{
    return Attach(::LoadBitmap(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}

CDC::~CDC() { DeleteDC(); }

CDC* AFXAPI CDC::FromHandle(HDC hDC)
{
    return GetThreadState()->contexts.FromHandle(hDC, [](HDC handle) {
        auto* context = new CDC;
        context->m_hDC = handle;
        return context;
    });
}

IMPLEMENT_DYNAMIC(CFont, CGdiObject)
CFont* AFXAPI CFont::FromHandle(HFONT) { return nullptr; }

BOOL CDC::Attach(HDC hDC)
{
    m_hDC = hDC;
    return hDC != nullptr;
}

HDC CDC::Detach() { return std::exchange(m_hDC, nullptr); }

BOOL CDC::DeleteDC() { return m_hDC != nullptr && ::DeleteDC(Detach()); }

CSize CDC::GetTextExtent(LPCSTR lpszString, int nCount) const
{
    CSize size;
    ::GetTextExtentPoint32(m_hDC, lpszString, nCount, &size);
    return size;
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
