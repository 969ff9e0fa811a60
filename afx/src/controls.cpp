#include "owner_draw.h"

#include <cstring>

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

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("COMBOBOX", nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CScrollBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("SCROLLBAR", nullptr, dwStyle, rect, pParentWnd, nID);
}

// Texts ---------------------------------------------------------------------------------------------------------------

int CEdit::GetLine(int nIndex, LPSTR lpszBuffer, int nMaxLength) const
{
    WORD size = static_cast<WORD>(nMaxLength);
    if (nMaxLength < static_cast<int>(sizeof size)) { // no room for the size
        char line[sizeof size];
        std::memcpy(line, &size, sizeof size);
        const int length = nMaxLength > 0 ? GetLine(nIndex, line) : 0;
        std::memcpy(lpszBuffer, line, static_cast<size_t>(length));
        return length;
    }
    std::memcpy(lpszBuffer, &size, sizeof size);
    return GetLine(nIndex, lpszBuffer);
}

namespace {

/// Lets a box copy the text of one of its items.
void CopyText(const CWnd* box, UINT lengthMessage, UINT textMessage, int index, CString& text)
{
    const int length = AfxSend<int>(box, lengthMessage, index);
    const int copied = AfxSend<int>(box, textMessage, index, text.GetBuffer(length > 0 ? length : 0));
    text.ReleaseBuffer(copied > 0 ? copied : 0);
}

} // namespace

void CListBox::GetText(int nIndex, CString& rString) const
{
    CopyText(this, LB_GETTEXTLEN, LB_GETTEXT, nIndex, rString);
}

void CComboBox::GetLBText(int nIndex, CString& rString) const
{
    CopyText(this, CB_GETLBTEXTLEN, CB_GETLBTEXT, nIndex, rString);
}

UINT CListBox::ItemFromPoint(CPoint pt, BOOL& bOutside) const
{
    const DWORD answer = AfxSend<DWORD>(this, LB_ITEMFROMPOINT, 0, MAKELPARAM(pt.x, pt.y));
    bOutside = HIWORD(answer) != 0;
    return LOWORD(answer);
}

// What owner-drawn controls are asked ---------------------------------------------------------------------------------

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskToDraw(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskToDraw(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

namespace {

/// Asks a list box or combo box about an item. \return whether \p message is about one
template <class BOX> BOOL AskAboutItem(BOX& box, UINT message, LPARAM lParam, LRESULT* result)
{
    LRESULT answer = TRUE;
    switch (message) {
    case WM_MEASUREITEM:
        box.MeasureItem(reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
        break;
    case WM_COMPAREITEM:
        answer = box.CompareItem(reinterpret_cast<COMPAREITEMSTRUCT*>(lParam));
        break;
    case WM_DELETEITEM:
        box.DeleteItem(reinterpret_cast<DELETEITEMSTRUCT*>(lParam));
        break;
    default:
        return AskToDraw(box, message, lParam, result);
    }
    *result = answer;
    return TRUE;
}

} // namespace

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_VKEYTOITEM || message == WM_CHARTOITEM) {
        const UINT key = LOWORD(wParam);
        const UINT item = HIWORD(wParam);
        *pResult = message == WM_VKEYTOITEM ? VKeyToItem(key, item) : CharToItem(key, item);
        return TRUE;
    }
    return AskAboutItem(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return AskAboutItem(*this, message, lParam, pResult) || CWnd::OnChildNotify(message, wParam, lParam, pResult);
}
