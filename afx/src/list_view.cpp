#include "common_controls_library.h"
#include "growing_text.h"
#include "guarded_compare.h"
#include "owner_draw.h"

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

BOOL CListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommonControl(*this, WC_LISTVIEWA, dwStyle, rect, pParentWnd, nID);
}

// Columns -------------------------------------------------------------------------------------------------------------

int CListCtrl::InsertColumn(int nCol, LPCSTR lpszColumnHeading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMNA column = {};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = const_cast<LPSTR>(lpszColumnHeading);
    column.fmt = nFormat;
    if (nWidth != -1) {
        column.mask |= LVCF_WIDTH;
        column.cx = nWidth;
    }
    if (nSubItem != -1) {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &column);
}

BOOL CListCtrl::GetColumnOrderArray(LPINT piArray, int iCount) const
{
    if (iCount == -1) {
        const CHeaderCtrl* header = GetHeaderCtrl();
        iCount = header != nullptr ? header->GetItemCount() : 0;
    }
    return AfxSend<BOOL>(this, LVM_GETCOLUMNORDERARRAY, iCount, piArray);
}

CHeaderCtrl* CListCtrl::GetHeaderCtrl() const
{
    return static_cast<CHeaderCtrl*>(CWnd::FromHandle(AfxSend<HWND>(this, LVM_GETHEADER)));
}

// Items ---------------------------------------------------------------------------------------------------------------

namespace {

LVITEMA Item(UINT mask, int item, int subItem, LPCSTR text, UINT state, UINT stateMask, int image, LPARAM data)
{
    LVITEMA made = {};
    made.mask = mask;
    made.iItem = item;
    made.iSubItem = subItem;
    made.state = state;
    made.stateMask = stateMask;
    made.pszText = const_cast<LPSTR>(text);
    made.iImage = image;
    made.lParam = data;
    return made;
}

} // namespace

int CListCtrl::InsertItem(UINT nMask, int nItem, LPCSTR lpszItem, UINT nState, UINT nStateMask, int nImage,
                          LPARAM lParam)
{
    const LVITEMA item = Item(nMask, nItem, 0, lpszItem, nState, nStateMask, nImage, lParam);
    return InsertItem(&item);
}

BOOL CListCtrl::SetItem(int nItem, int nSubItem, UINT nMask, LPCSTR lpszItem, int nImage, UINT nState, UINT nStateMask,
                        LPARAM lParam)
{
    const LVITEMA item = Item(nMask, nItem, nSubItem, lpszItem, nState, nStateMask, nImage, lParam);
    return SetItem(&item);
}

CString CListCtrl::GetItemText(int nItem, int nSubItem) const
{
    return GrowingText([&](LPSTR buffer, int room) {
        LVITEMA item = Item(0, nItem, nSubItem, buffer, 0, 0, 0, 0);
        item.cchTextMax = room;
        AfxSend(this, LVM_GETITEMTEXT, nItem, &item);
    });
}

int CListCtrl::GetItemText(int nItem, int nSubItem, LPSTR lpszText, int nLen) const
{
    if (nLen <= 0)
        return 0;
    ::lstrcpyn(lpszText, GetItemText(nItem, nSubItem), nLen);
    return ::lstrlen(lpszText);
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCSTR lpszText)
{
    const LVITEMA item = Item(0, nItem, nSubItem, lpszText, 0, 0, 0, 0);
    return AfxSend<BOOL>(this, LVM_SETITEMTEXT, nItem, &item);
}

DWORD_PTR CListCtrl::GetItemData(int nItem) const
{
    LVITEMA item = Item(LVIF_PARAM, nItem, 0, nullptr, 0, 0, 0, 0);
    return GetItem(&item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask)
{
    const LVITEMA item = Item(0, nItem, 0, nullptr, nState, nMask, 0, 0);
    return AfxSend<BOOL>(this, LVM_SETITEMSTATE, nItem, &item);
}

// A box is the state image before an item: the first one empty, the second one checked.

BOOL CListCtrl::GetCheck(int nItem) const
{
    return GetItemState(nItem, LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

BOOL CListCtrl::SetCheck(int nItem, BOOL fCheck)
{
    return SetItemState(nItem, INDEXTOSTATEIMAGEMASK(fCheck ? 2 : 1), LVIS_STATEIMAGEMASK);
}

// Selection, search, places -------------------------------------------------------------------------------------------

POSITION CListCtrl::GetFirstSelectedItemPosition() const // one more than the item's number
{
    return AfxMessageValue<POSITION>(static_cast<INT_PTR>(GetNextItem(-1, LVNI_SELECTED) + 1));
}

int CListCtrl::GetNextSelectedItem(POSITION& pos) const
{
    const int item = static_cast<int>(AfxMessageValue<INT_PTR>(pos)) - 1;
    pos = AfxMessageValue<POSITION>(static_cast<INT_PTR>(GetNextItem(item, LVNI_SELECTED) + 1));
    return item;
}

int CListCtrl::HitTest(CPoint pt, UINT* pFlags) const
{
    LVHITTESTINFO info = {};
    info.pt = pt;
    const int item = HitTest(&info);
    if (pFlags != nullptr)
        *pFlags = info.flags;
    return item;
}

BOOL CListCtrl::GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const
{
    lpRect->left = static_cast<LONG>(nCode);
    return AfxSend<BOOL>(this, LVM_GETITEMRECT, nItem, lpRect);
}

BOOL CListCtrl::GetSubItemRect(int iItem, int iSubItem, int nArea, CRect& ref) const
{
    ref.top = iSubItem;
    ref.left = nArea;
    return AfxSend<BOOL>(this, LVM_GETSUBITEMRECT, iItem, static_cast<LPRECT>(ref));
}

BOOL CListCtrl::SortItems(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData)
{
    GuardedCompare compare(pfnCompare, static_cast<LPARAM>(dwData));
    return compare.ThrowOn(AfxSend<BOOL>(this, LVM_SORTITEMS, &compare, &GuardedCompare::Procedure));
}

// Labels, looks -------------------------------------------------------------------------------------------------------

CEdit* CListCtrl::EditLabel(int nItem)
{
    return static_cast<CEdit*>(CWnd::FromHandle(AfxSend<HWND>(this, LVM_EDITLABEL, nItem)));
}

CEdit* CListCtrl::GetEditControl() const
{
    return static_cast<CEdit*>(CWnd::FromHandle(AfxSend<HWND>(this, LVM_GETEDITCONTROL)));
}

CImageList* CListCtrl::SetImageList(CImageList* pImageList, int nImageList)
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, LVM_SETIMAGELIST, nImageList, SafeHandle(pImageList)));
}

CImageList* CListCtrl::GetImageList(int nImageList) const
{
    return CImageList::FromHandle(AfxSend<HIMAGELIST>(this, LVM_GETIMAGELIST, nImageList));
}

BOOL CListCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskToDraw(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}
