#include "common_controls_library.h"
#include "growing_text.h"
#include "guarded_compare.h"

IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)

BOOL CTreeCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, WC_TREEVIEWA, dwStyle, rect, pParentWnd, nID);
}

// Items ---------------------------------------------------------------------------------------------------------------

namespace {

TVITEMA Item(HTREEITEM handle, UINT mask, LPCSTR text, int image, int selectedImage, UINT state, UINT stateMask,
             LPARAM data)
{
    TVITEMA made = {};
    made.hItem = handle;
    made.mask = mask;
    made.state = state;
    made.stateMask = stateMask;
    made.pszText = const_cast<LPSTR>(text);
    made.iImage = image;
    made.iSelectedImage = selectedImage;
    made.lParam = data;
    return made;
}

/// What a tree knows of an item; nothing but zeros if there is no such item.
TVITEMA Ask(const CTreeCtrl& tree, HTREEITEM handle, UINT mask, UINT stateMask = 0)
{
    TVITEMA item = Item(handle, mask, nullptr, 0, 0, 0, stateMask, 0);
    return tree.GetItem(&item) ? item : TVITEMA();
}

} // namespace

HTREEITEM CTreeCtrl::InsertItem(UINT nMask, LPCSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                                UINT nStateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    TVINSERTSTRUCTA insert = {};
    insert.hParent = hParent;
    insert.hInsertAfter = hInsertAfter;
    insert.item = Item(nullptr, nMask, lpszItem, nImage, nSelectedImage, nState, nStateMask, lParam);
    return InsertItem(&insert);
}

BOOL CTreeCtrl::SetItem(HTREEITEM hItem, UINT nMask, LPCSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                        UINT nStateMask, LPARAM lParam)
{
    TVITEMA item = Item(hItem, nMask, lpszItem, nImage, nSelectedImage, nState, nStateMask, lParam);
    return SetItem(&item);
}

CString CTreeCtrl::GetItemText(HTREEITEM hItem) const
{
    return GrowingText([&](LPSTR buffer, int room) {
        TVITEMA item = Item(hItem, TVIF_TEXT, buffer, 0, 0, 0, 0, 0);
        item.cchTextMax = room;
        GetItem(&item);
    });
}

BOOL CTreeCtrl::GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const
{
    TVITEMA item = Item(hItem, TVIF_IMAGE | TVIF_SELECTEDIMAGE, nullptr, 0, 0, 0, 0, 0);
    if (!GetItem(&item))
        return FALSE;
    nImage = item.iImage;
    nSelectedImage = item.iSelectedImage;
    return TRUE;
}

UINT CTreeCtrl::GetItemState(HTREEITEM hItem, UINT nStateMask) const
{
    return Ask(*this, hItem, TVIF_STATE, nStateMask).state & nStateMask;
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM hItem) const
{
    return static_cast<DWORD_PTR>(Ask(*this, hItem, TVIF_PARAM).lParam);
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM hItem) const { return Ask(*this, hItem, TVIF_CHILDREN).cChildren != 0; }

// A box is the state image before an item: the first one empty, the second one checked.

BOOL CTreeCtrl::GetCheck(HTREEITEM hItem) const
{
    return GetItemState(hItem, TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

BOOL CTreeCtrl::SetCheck(HTREEITEM hItem, BOOL fCheck)
{
    return SetItemState(hItem, INDEXTOSTATEIMAGEMASK(fCheck ? 2 : 1), TVIS_STATEIMAGEMASK);
}

// Places, order -------------------------------------------------------------------------------------------------------

BOOL CTreeCtrl::GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const
{
    *reinterpret_cast<HTREEITEM*>(lpRect) = hItem;
    return AfxSend<BOOL>(this, TVM_GETITEMRECT, bTextOnly, lpRect);
}

HTREEITEM CTreeCtrl::HitTest(CPoint pt, UINT* pFlags) const
{
    TVHITTESTINFO info = {};
    info.pt = pt;
    const HTREEITEM item = HitTest(&info);
    if (pFlags != nullptr)
        *pFlags = info.flags;
    return item;
}

BOOL CTreeCtrl::SortChildrenCB(LPTVSORTCB pSort)
{
    GuardedCompare compare(pSort->lpfnCompare, pSort->lParam);
    TVSORTCB guarded = {pSort->hParent, &GuardedCompare::Procedure, reinterpret_cast<LPARAM>(&compare)};
    return compare.ThrowOn(AfxSend<BOOL>(this, TVM_SORTCHILDRENCB, 0, &guarded));
}

// Labels, looks -------------------------------------------------------------------------------------------------------

CEdit* CTreeCtrl::EditLabel(HTREEITEM hItem)
{
    return static_cast<CEdit*>(CWnd::FromHandle(AfxSend<HWND>(this, TVM_EDITLABEL, 0, hItem)));
}

CEdit* CTreeCtrl::GetEditControl() const
{
    return static_cast<CEdit*>(CWnd::FromHandle(AfxSend<HWND>(this, TVM_GETEDITCONTROL)));
}

CImageList* CTreeCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TVM_SETIMAGELIST, nImageListType, SafeHandle(pImageList)));
}

CImageList* CTreeCtrl::GetImageList(UINT nImageListType) const
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, TVM_GETIMAGELIST, nImageListType));
}
