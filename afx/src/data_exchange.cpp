// The exchange of a dialog's data between members and controls, and its checks.
#include <afxwin.h>

#include <commctrl.h>

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    if (m_bExchanging)
        return FALSE;
    CDataExchange exchange(this, bSaveAndValidate);
    BOOL done = TRUE;
    m_bExchanging = TRUE;
    try {
        DoDataExchange(&exchange);
    } catch (CException* e) {
        if (!e->IsKindOf(RUNTIME_CLASS(CUserException)))
            e->ReportError(MB_ICONEXCLAMATION);
        e->Delete();
        done = FALSE;
    }
    m_bExchanging = FALSE;
    return done;
}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (control == nullptr)
        AfxThrowResourceException();
    m_hWndLastControl = control;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_hWndLastControl != nullptr) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl)
            ::SendMessage(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars)
{
    if (!pDX->m_bSaveAndValidate) {
        if (pDX->m_hWndLastControl != nullptr) // one that is neither edit field nor combo box ignores it
            ::SendMessage(pDX->m_hWndLastControl, pDX->m_bEditLastControl ? EM_LIMITTEXT : CB_LIMITTEXT,
                          static_cast<WPARAM>(nChars), 0);
        return;
    }
    if (value.GetLength() <= nChars)
        return;
    char number[16];
    wsprintf(number, "%d", nChars);
    CString text;
    AfxFormatString1(text, AFX_IDP_PARSE_STRING_SIZE, number);
    AfxMessageBox(text, MB_ICONEXCLAMATION, AFX_IDP_PARSE_STRING_SIZE);
    pDX->Fail();
}

// Other controls ------------------------------------------------------------------------------------------------------

namespace {

/// Exchanges a number that one message asks for and another sets.
void ExchangeByMessages(CDataExchange* exchange, int id, int& value, UINT get, UINT set)
{
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessage(control, get, 0, 0));
    else
        ::SendMessage(control, set, static_cast<WPARAM>(value), 0);
}

} // namespace

void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    ExchangeByMessages(pDX, nIDC, value, BM_GETCHECK, BM_SETCHECK);
}

void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    ExchangeByMessages(pDX, nIDC, index, LB_GETCURSEL, LB_SETCURSEL);
}

void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    ExchangeByMessages(pDX, nIDC, index, CB_GETCURSEL, CB_SETCURSEL);
}

namespace {

/// Selects the item with a text by a message that looks for it. \return false if there is none
bool SelectText(HWND control, const CString& text, UINT find, UINT select)
{
    LRESULT index = -1;
    if (!text.IsEmpty()) // with which every text begins
        index = ::SendMessage(control, find, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(LPCSTR(text)));
    ::SendMessage(control, select, static_cast<WPARAM>(index), 0);
    return index >= 0;
}

/// The text of the selected item, by the messages of the control's kind; empty if there is none.
CString SelectedText(HWND control, UINT getSelection, UINT getLength, UINT getText)
{
    CString text;
    const LRESULT index = ::SendMessage(control, getSelection, 0, 0);
    const LRESULT length = ::SendMessage(control, getLength, static_cast<WPARAM>(index), 0);
    if (index < 0 || length <= 0)
        return text;
    ::SendMessage(control, getText, static_cast<WPARAM>(index),
                  reinterpret_cast<LPARAM>(text.GetBuffer(static_cast<int>(length))));
    text.ReleaseBuffer();
    return text;
}

void ExchangeListText(CDataExchange* exchange, int id, CString& value, UINT find)
{
    const HWND list = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = SelectedText(list, LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT);
    else
        SelectText(list, value, find, LB_SETCURSEL);
}

void ExchangeBoxText(CDataExchange* exchange, int id, CString& value, UINT find)
{
    const HWND box = exchange->PrepareCtrl(id);
    const bool hasField = (::GetWindowLong(box, GWL_STYLE) & CBS_DROPDOWNLIST) != CBS_DROPDOWNLIST;
    if (!exchange->m_bSaveAndValidate) {
        if (!SelectText(box, value, find, CB_SETCURSEL))
            ::SetWindowText(box, value);
    } else if (hasField) {
        CWnd::FromHandle(box)->GetWindowText(value);
    } else { // the oldest systems have no text for it
        value = SelectedText(box, CB_GETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT);
    }
}

} // namespace

void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value)
{
    ExchangeListText(pDX, nIDC, value, LB_FINDSTRING);
}

void AFXAPI DDX_LBStringExact(CDataExchange* pDX, int nIDC, CString& value)
{
    ExchangeListText(pDX, nIDC, value, LB_FINDSTRINGEXACT);
}

void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value)
{
    ExchangeBoxText(pDX, nIDC, value, CB_FINDSTRING);
}

void AFXAPI DDX_CBStringExact(CDataExchange* pDX, int nIDC, CString& value)
{
    ExchangeBoxText(pDX, nIDC, value, CB_FINDSTRINGEXACT);
}

void AFXAPI DDX_Scroll(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND bar = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = ::GetScrollPos(bar, SB_CTL);
    else
        ::SetScrollPos(bar, SB_CTL, value, TRUE);
}

void AFXAPI DDX_Slider(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND slider = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessage(slider, TBM_GETPOS, 0, 0));
    else
        ::SendMessage(slider, TBM_SETPOS, TRUE, value);
}

void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    HWND button = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = -1;
    for (int index = 0; button != nullptr;) {
        if ((::SendMessage(button, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0) {
            if (!pDX->m_bSaveAndValidate)
                ::SendMessage(button, BM_SETCHECK, index == value ? BST_CHECKED : BST_UNCHECKED, 0);
            else if (::SendMessage(button, BM_GETCHECK, 0, 0) == BST_CHECKED)
                value = index;
            ++index;
        }
        button = ::GetWindow(button, GW_HWNDNEXT);
        if (button != nullptr && (::GetWindowLong(button, GWL_STYLE) & WS_GROUP) != 0)
            break;
    }
}

void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (rControl.m_hWnd == nullptr)
        rControl.SubclassWindow(control);
}
