/// \file
/// Application framework: drawing. Included by afxwin.h.
#pragma once

#include <afxgeo_.h>

// ---------------------------------------------------------------------------------------------------------------------
// Drawing

/// A drawing object: owns its handle, if it has one, and deletes it.
class AFX_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    /// Describes the object in at most \p nCount bytes. \return the bytes written, 0 on failure
    int GetObject(int nCount, LPVOID lpObject) const { return ::GetObject(m_hObject, nCount, lpObject); }

    HGDIOBJ m_hObject = nullptr;
};

/// A bitmap. An object that holds one already lets go of it only by Detach or DeleteObject.
class AFX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    /// Loads a resource found through the resource chain.
    BOOL LoadBitmap(LPCSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCE(nIDResource)); }
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
    {
        return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
    }
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
};

class AFX_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    static CFont* AFXAPI FromHandle(HFONT hFont);
};

/// A device context.
class AFX_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() = default;
    ~CDC() override;
    static CDC* AFXAPI FromHandle(HDC hDC);
    BOOL Attach(HDC hDC);
    HDC Detach();
    HDC GetSafeHdc() const { return m_hDC; }
    BOOL DeleteDC();

    HGDIOBJ SelectObject(HGDIOBJ hObject) { return ::SelectObject(m_hDC, hObject); }
    COLORREF SetTextColor(COLORREF crColor) { return ::SetTextColor(m_hDC, crColor); }
    int SetBkMode(int nBkMode) { return ::SetBkMode(m_hDC, nBkMode); }
    int DrawText(LPCSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
    {
        return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
    }
    CSize GetTextExtent(LPCSTR lpszString, int nCount) const;

    HDC m_hDC = nullptr;
};

/// The client area of a window, between construction and destruction. Throws CResourceException* on failure.
class AFX_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

private:
    HWND m_hWnd;
};

/// Painting in answer to WM_PAINT.
class AFX_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps;

private:
    HWND m_hWnd;
};
