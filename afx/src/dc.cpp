// Device contexts: their handles, what is selected into them, and those of windows.
#include "thread_state.h"

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

// Handles and objects -------------------------------------------------------------------------------------------------

CDC* AFXAPI CDC::FromHandle(HDC hDC)
{
    switch (::GetObjectType(hDC)) {
    case OBJ_DC:
    case OBJ_MEMDC:
    case OBJ_METADC:
    case OBJ_ENHMETADC:
        return GetThreadState()->deviceContexts.FromHandle(hDC, [](HDC handle) {
            auto* dc = new CDC;
            dc->m_hDC = dc->m_hAttribDC = handle;
            return dc;
        });
    default:
        return nullptr;
    }
}

void AFXAPI CDC::DeleteTempMap() { GetThreadState()->deviceContexts.DeleteTemporary(); }

BOOL CDC::Attach(HDC hDC)
{
    if (!GetThreadState()->deviceContexts.Attach(hDC, this))
        return FALSE;
    m_bAttached = true;
    SetAttribDC(hDC); // a derived class may want to know
    return TRUE;
}

BOOL CDC::AttachMade(HDC hDC) { return AttachOrDestroy(*this, hDC, &::DeleteDC); }

HDC CDC::Detach()
{
    m_bAttached = false;
    ReleaseAttribDC();
    return DetachHandle(&ThreadState::deviceContexts, this);
}

CDC::~CDC()
{
    if (m_bAttached)
        ::DeleteDC(CDC::Detach());
}

void CDC::SetAttribDC(HDC hDC) { m_hAttribDC = hDC; }
void CDC::ReleaseAttribDC() { m_hAttribDC = nullptr; }

void CDC::SetOutputDC(HDC hDC)
{
    if (!m_bAttached)
        m_hDC = hDC;
}

void CDC::ReleaseOutputDC()
{
    if (!m_bAttached)
        m_hDC = nullptr;
}

BOOL CDC::CreateDC(LPCSTR lpszDriverName, LPCSTR lpszDeviceName, LPCSTR lpszOutput, const void* lpInitData)
{
    return AttachMade(::CreateDC(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODE*>(lpInitData)));
}

BOOL CDC::CreateIC(LPCSTR lpszDriverName, LPCSTR lpszDeviceName, LPCSTR lpszOutput, const void* lpInitData)
{
    return AttachMade(::CreateIC(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODE*>(lpInitData)));
}

BOOL CDC::CreateCompatibleDC(CDC* pDC) { return AttachMade(::CreateCompatibleDC(HandleOf<HDC>(pDC))); }

BOOL CDC::DeleteDC() { return m_hDC != nullptr && ::DeleteDC(Detach()); }

BOOL CDC::ResetDC(const DEVMODE* lpDevMode) { return SetInBoth(&::ResetDC, lpDevMode) != nullptr; }

int CDC::SaveDC()
{
    const int saved = ::SaveDC(m_hDC);
    const int attribSaved = HasOtherAttribDC() ? ::SaveDC(m_hAttribDC) : saved;
    return saved == attribSaved || saved == 0 || attribSaved == 0 ? attribSaved : -1;
}

BOOL CDC::RestoreDC(int nSavedDC) { return SetInBoth(&::RestoreDC, nSavedDC); }

CWnd* CDC::GetWindow() const { return CWnd::FromHandle(::WindowFromDC(m_hDC)); }

// Selection -----------------------------------------------------------------------------------------------------------

CGdiObject* CDC::SelectInBoth(HGDIOBJ hObject)
{
    if (hObject == nullptr)
        return nullptr;
    const HGDIOBJ before = ::SelectObject(m_hDC, hObject);
    const HGDIOBJ attribBefore = HasOtherAttribDC() ? ::SelectObject(m_hAttribDC, hObject) : nullptr;
    try {
        return CGdiObject::FromHandle(attribBefore != nullptr ? attribBefore : before);
    } catch (CMemoryException*) { // the caller could never select it again
        if (attribBefore != nullptr)
            ::SelectObject(m_hAttribDC, attribBefore);
        if (before != nullptr)
            ::SelectObject(m_hDC, before);
        throw;
    }
}

template <class OBJECT> OBJECT* CDC::SelectTyped(OBJECT* object)
{
    return object != nullptr ? DYNAMIC_DOWNCAST(OBJECT, SelectInBoth(object->m_hObject)) : nullptr;
}

CGdiObject* CDC::SelectStockObject(int nIndex) { return SelectInBoth(::GetStockObject(nIndex)); }
CPen* CDC::SelectObject(CPen* pPen) { return SelectTyped(pPen); }
CBrush* CDC::SelectObject(CBrush* pBrush) { return SelectTyped(pBrush); }
CFont* CDC::SelectObject(CFont* pFont) { return SelectTyped(pFont); }

CBitmap* CDC::SelectObject(CBitmap* pBitmap)
{
    // Only one context can have a bitmap.
    const HGDIOBJ before = pBitmap != nullptr ? ::SelectObject(m_hDC, *pBitmap) : nullptr;
    try {
        return DYNAMIC_DOWNCAST(CBitmap, CGdiObject::FromHandle(before));
    } catch (CMemoryException*) {
        ::SelectObject(m_hDC, before);
        throw;
    }
}

int CDC::SelectObject(CRgn* pRgn) { return pRgn != nullptr ? SelectClipRgn(pRgn) : ERROR; }

CGdiObject* CDC::SelectObject(CGdiObject* pObject)
{
    switch (pObject != nullptr ? pObject->GetObjectType() : 0) {
    case OBJ_FONT: {
        // A context that intervenes looks at fonts alone.
        if (auto* font = DYNAMIC_DOWNCAST(CFont, pObject))
            return SelectObject(font);
        return SelectObject(CFont::FromHandle(static_cast<HFONT>(pObject->m_hObject)));
    }
    case OBJ_BITMAP:
        return SelectObject(CBitmap::FromHandle(static_cast<HBITMAP>(pObject->m_hObject)));
    case OBJ_REGION:
        SelectObject(CRgn::FromHandle(static_cast<HRGN>(pObject->m_hObject)));
        return nullptr;
    default:
        return SelectTyped(pObject);
    }
}

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground)
{
    const HPALETTE before = pPalette != nullptr ? ::SelectPalette(m_hDC, *pPalette, bForceBackground) : nullptr;
    try {
        return CPalette::FromHandle(before);
    } catch (CMemoryException*) {
        ::SelectPalette(m_hDC, before, bForceBackground);
        throw;
    }
}

CPen* CDC::GetCurrentPen() const
{
    return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hAttribDC, OBJ_PEN)));
}

CBrush* CDC::GetCurrentBrush() const
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hAttribDC, OBJ_BRUSH)));
}

CFont* CDC::GetCurrentFont() const
{
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hAttribDC, OBJ_FONT)));
}

CBitmap* CDC::GetCurrentBitmap() const
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hAttribDC, OBJ_BITMAP)));
}

CPalette* CDC::GetCurrentPalette() const
{
    return CPalette::FromHandle(static_cast<HPALETTE>(::GetCurrentObject(m_hAttribDC, OBJ_PAL)));
}

// Windows -------------------------------------------------------------------------------------------------------------

namespace {

HWND HandleOf(const CWnd* window) { return window != nullptr ? window->m_hWnd : nullptr; }

/// Attaches what the constructor of \p object has got from the system, or lets it go by \p release and throws.
template <class RELEASE> void AttachOrThrow(CDC& object, HDC dc, RELEASE release)
{
    if (!AttachOrDestroy(object, dc, release))
        AfxThrowResourceException();
}

} // namespace

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(::HandleOf(pWnd))
{
    AttachOrThrow(*this, ::GetDC(m_hWnd), [this](HDC dc) { ::ReleaseDC(m_hWnd, dc); });
}

CClientDC::~CClientDC() { ::ReleaseDC(m_hWnd, Detach()); }

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(::HandleOf(pWnd))
{
    AttachOrThrow(*this, ::GetWindowDC(m_hWnd), [this](HDC dc) { ::ReleaseDC(m_hWnd, dc); });
}

CWindowDC::~CWindowDC() { ::ReleaseDC(m_hWnd, Detach()); }

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(::HandleOf(pWnd))
{
    AttachOrThrow(*this, ::BeginPaint(m_hWnd, &m_ps), [this](HDC) { ::EndPaint(m_hWnd, &m_ps); });
}

CPaintDC::~CPaintDC()
{
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}
