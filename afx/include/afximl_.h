/// \file
/// Application framework: image lists. Included by afxcmn.h.
#pragma once

#include <afxwin.h>

#include <commctrl.h>

/// A list of pictures of one size, which share a bitmap: owns its handle, if it has one, and destroys it. The system's
/// library of common controls is loaded when the first one is made; without it all operations fail. Null objects fail
/// too, but where it is said otherwise. Pictures are counted from 0.
class AFX_API CImageList : public CObject {
    DECLARE_DYNAMIC(CImageList)
public:
    CImageList() = default;
    ~CImageList() override;
    operator HIMAGELIST() const { return m_hImageList; }
    HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    /// The object that a handle is attached to, else a temporary one until the thread is idle; null for null.
    static CImageList* AFXAPI FromHandle(HIMAGELIST hImageList);
    static CImageList* AFXAPI FromHandlePermanent(HIMAGELIST hImageList);
    static void AFXAPI DeleteTempMap();
    /// \return FALSE for null, and for an object that holds a handle already
    BOOL Attach(HIMAGELIST hImageList);
    HIMAGELIST Detach();
    BOOL DeleteImageList();

    // These want an object that holds no handle yet. \return FALSE on failure
    /// \param nFlags ILC_ flags. \param nInitial, nGrow pictures that there is room for, and how many more at a time
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    /// The pictures of a bitmap resource, found through the resource chain, each \p cx wide.
    /// \param crMask colour of what is transparent; CLR_NONE: nothing is, CLR_DEFAULT: the top left pixel's
    BOOL Create(LPCSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
    {
        return Create(MAKEINTRESOURCE(nBitmapID), cx, nGrow, crMask);
    }
    /// One picture: that of the second list over that of the first, \p dx and \p dy from it.
    BOOL Create(CImageList& imagelist1, int nImage1, CImageList& imagelist2, int nImage2, int dx, int dy);
    BOOL Create(CImageList* pImageList); ///< a copy; not on the oldest systems

    int GetImageCount() const;
    /// \return the number of the first new picture, -1 on failure
    int Add(CBitmap* pbmImage, CBitmap* pbmMask); ///< the mask may be null
    int Add(CBitmap* pbmImage, COLORREF crMask);
    int Add(HICON hIcon) { return Replace(-1, hIcon); }
    BOOL Remove(int nImage); ///< -1: all
    BOOL Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask);
    int Replace(int nImage, HICON hIcon);
    /// A copy of a picture, or with ILCF_SWAP an exchange, not on the oldest systems.
    BOOL Copy(int iDst, int iSrc, UINT uFlags = ILCF_MOVE);
    /// From another list; the system may refuse what is not of the same list.
    BOOL Copy(int iDst, CImageList* pSrc, int iSrc, UINT uFlags = ILCF_MOVE);
    /// An icon of the caller's, who destroys it; null on failure.
    HICON ExtractIcon(int nImage);
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const; ///< the bitmaps in it stay the list's
    COLORREF GetBkColor() const;
    COLORREF SetBkColor(COLORREF cr); ///< CLR_NONE: none. \return what it was before
    BOOL SetOverlayImage(int nImage, int nOverlay);
    /// \param nStyle ILD_ flags
    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle);

    // A picture dragged over a window, or with null over the screen. Points are the window's, its frame included.
    BOOL BeginDrag(int nImage, CPoint ptHotSpot);
    static void AFXAPI EndDrag();
    static BOOL AFXAPI DragEnter(CWnd* pWndLock, CPoint point);
    static BOOL AFXAPI DragLeave(CWnd* pWndLock);
    static BOOL AFXAPI DragMove(CPoint pt);
    static BOOL AFXAPI DragShowNolock(BOOL bShow);
    BOOL SetDragCursorImage(int nDrag, CPoint ptHotSpot);
    /// The picture dragged, a temporary object, and where it is and its hot spot; null without one.
    static CImageList* AFXAPI GetDragImage(LPPOINT lpPoint, LPPOINT lpPointHotSpot);

    HIMAGELIST m_hImageList = nullptr;

private:
    BOOL AttachMade(HIMAGELIST hImageList);
};
