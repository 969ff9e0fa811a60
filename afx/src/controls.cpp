#include <afxwin.h>

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

BOOL CStatic::Create(LPCSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("STATIC", lpszText, dwStyle, rect, pParentWnd, nID);
}

BOOL CButton::Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("BUTTON", lpszCaption, dwStyle, rect, pParentWnd, nID);
}

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("EDIT", nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CListBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("LISTBOX", nullptr, dwStyle, rect, pParentWnd, nID);
}

void* CListBox::GetItemDataPtr(int nIndex) const
{
    return reinterpret_cast<void*>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(nIndex)));
}

void CListBox::DrawItem(DRAWITEMSTRUCT*) {}
void CListBox::MeasureItem(MEASUREITEMSTRUCT*) {}
int CListBox::CompareItem(COMPAREITEMSTRUCT*) { return 0; }

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_DRAWITEM:
        DrawItem(reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
        break;
    case WM_MEASUREITEM:
        MeasureItem(reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
        break;
    case WM_COMPAREITEM:
        *pResult = CompareItem(reinterpret_cast<COMPAREITEMSTRUCT*>(lParam));
        return TRUE;
    default:
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    }
    *pResult = TRUE;
    return TRUE;
}

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("COMBOBOX", nullptr, dwStyle, rect, pParentWnd, nID);
}

void* CComboBox::GetItemDataPtr(int nIndex) const
{
    return reinterpret_cast<void*>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(nIndex)));
}

BOOL CScrollBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("SCROLLBAR", nullptr, dwStyle, rect, pParentWnd, nID);
}
