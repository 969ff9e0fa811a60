#include "common_controls.h"
#include "thread_state.h"

IMPLEMENT_DYNAMIC(CImageList, CObject)

namespace {

HWND HandleOf(const CWnd* window) { return window != nullptr ? window->m_hWnd : nullptr; }
HBITMAP HandleOf(const CBitmap* bitmap) { return bitmap != nullptr ? static_cast<HBITMAP>(*bitmap) : nullptr; }
HIMAGELIST HandleOf(const CImageList* list) { return list != nullptr ? list->m_hImageList : nullptr; }

} // namespace

// Handles and objects -------------------------------------------------------------------------------------------------

CImageList* AFXAPI CImageList::FromHandle(HIMAGELIST hImageList)
{
    return GetThreadState()->imageLists.FromHandle(hImageList);
}

CImageList* AFXAPI CImageList::FromHandlePermanent(HIMAGELIST hImageList)
{
    return GetThreadState()->imageLists.FindPermanent(hImageList);
}

void AFXAPI CImageList::DeleteTempMap() { GetThreadState()->imageLists.DeleteTemporary(); }
BOOL CImageList::Attach(HIMAGELIST hImageList) { return GetThreadState()->imageLists.Attach(hImageList, this); }
HIMAGELIST CImageList::Detach() { return DetachHandle(&ThreadState::imageLists, this); }

BOOL CImageList::AttachMade(HIMAGELIST hImageList)
{
    return AttachOrDestroy(*this, hImageList, COMMON_CONTROLS(ImageList_Destroy));
}

CImageList::~CImageList() { DeleteImageList(); }

BOOL CImageList::DeleteImageList() { return m_hImageList != nullptr && COMMON_CONTROLS(ImageList_Destroy)(Detach()); }

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    return AttachMade(COMMON_CONTROLS(ImageList_Create)(cx, cy, nFlags, nInitial, nGrow));
}

BOOL CImageList::Create(LPCSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask)
{
    return AttachMade(COMMON_CONTROLS(ImageList_LoadImageA)(AfxFindResourceHandle(lpszBitmapID, RT_BITMAP),
                                                            lpszBitmapID, cx, nGrow, crMask, IMAGE_BITMAP,
                                                            LR_CREATEDIBSECTION));
}

BOOL CImageList::Create(CImageList& imagelist1, int nImage1, CImageList& imagelist2, int nImage2, int dx, int dy)
{
    return AttachMade(COMMON_CONTROLS(ImageList_Merge)(imagelist1, nImage1, imagelist2, nImage2, dx, dy));
}

BOOL CImageList::Create(CImageList* pImageList)
{
    return AttachMade(COMMON_CONTROLS(ImageList_Duplicate)(HandleOf(pImageList)));
}

// Pictures ------------------------------------------------------------------------------------------------------------

int CImageList::GetImageCount() const { return COMMON_CONTROLS(ImageList_GetImageCount)(m_hImageList); }

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask)
{
    return COMMON_CONTROLS(ImageList_Add, -1)(m_hImageList, HandleOf(pbmImage), HandleOf(pbmMask));
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask)
{
    return COMMON_CONTROLS(ImageList_AddMasked, -1)(m_hImageList, HandleOf(pbmImage), crMask);
}

BOOL CImageList::Remove(int nImage) { return COMMON_CONTROLS(ImageList_Remove)(m_hImageList, nImage); }

BOOL CImageList::Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask)
{
    return COMMON_CONTROLS(ImageList_Replace)(m_hImageList, nImage, HandleOf(pbmImage), HandleOf(pbmMask));
}

int CImageList::Replace(int nImage, HICON hIcon)
{
    return COMMON_CONTROLS(ImageList_ReplaceIcon, -1)(m_hImageList, nImage, hIcon);
}

BOOL CImageList::Copy(int iDst, int iSrc, UINT uFlags) { return Copy(iDst, this, iSrc, uFlags); }

BOOL CImageList::Copy(int iDst, CImageList* pSrc, int iSrc, UINT uFlags)
{
    return COMMON_CONTROLS(ImageList_Copy)(m_hImageList, iDst, HandleOf(pSrc), iSrc, uFlags);
}

HICON CImageList::ExtractIcon(int nImage)
{
    return COMMON_CONTROLS(ImageList_GetIcon)(m_hImageList, nImage, ILD_NORMAL);
}

BOOL CImageList::GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
{
    return COMMON_CONTROLS(ImageList_GetImageInfo)(m_hImageList, nImage, pImageInfo);
}

COLORREF CImageList::GetBkColor() const { return COMMON_CONTROLS(ImageList_GetBkColor, CLR_NONE)(m_hImageList); }

COLORREF CImageList::SetBkColor(COLORREF cr)
{
    return COMMON_CONTROLS(ImageList_SetBkColor, CLR_NONE)(m_hImageList, cr);
}

BOOL CImageList::SetOverlayImage(int nImage, int nOverlay)
{
    return COMMON_CONTROLS(ImageList_SetOverlayImage)(m_hImageList, nImage, nOverlay);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle)
{
    return pDC != nullptr && COMMON_CONTROLS(ImageList_Draw)(m_hImageList, nImage, pDC->m_hDC, pt.x, pt.y, nStyle);
}

// Dragging ------------------------------------------------------------------------------------------------------------

BOOL CImageList::BeginDrag(int nImage, CPoint ptHotSpot)
{
    return COMMON_CONTROLS(ImageList_BeginDrag)(m_hImageList, nImage, ptHotSpot.x, ptHotSpot.y);
}

void AFXAPI CImageList::EndDrag() { COMMON_CONTROLS(ImageList_EndDrag)(); }

BOOL AFXAPI CImageList::DragEnter(CWnd* pWndLock, CPoint point)
{
    return COMMON_CONTROLS(ImageList_DragEnter)(HandleOf(pWndLock), point.x, point.y);
}

BOOL AFXAPI CImageList::DragLeave(CWnd* pWndLock) { return COMMON_CONTROLS(ImageList_DragLeave)(HandleOf(pWndLock)); }

BOOL AFXAPI CImageList::DragMove(CPoint pt) { return COMMON_CONTROLS(ImageList_DragMove)(pt.x, pt.y); }

BOOL AFXAPI CImageList::DragShowNolock(BOOL bShow) { return COMMON_CONTROLS(ImageList_DragShowNolock)(bShow); }

BOOL CImageList::SetDragCursorImage(int nDrag, CPoint ptHotSpot)
{
    return COMMON_CONTROLS(ImageList_SetDragCursorImage)(m_hImageList, nDrag, ptHotSpot.x, ptHotSpot.y);
}

CImageList* AFXAPI CImageList::GetDragImage(LPPOINT lpPoint, LPPOINT lpPointHotSpot)
{
    return FromHandle(COMMON_CONTROLS(ImageList_GetDragImage)(lpPoint, lpPointHotSpot));
}
