// The exchange of a dialog's data between members and controls, and its checks.
#include <afxwin.h>

#include <cctype>
#include <cstdlib>
#include <limits>
#include <type_traits>

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

// Texts and numbers ---------------------------------------------------------------------------------------------------

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        CWnd::FromHandle(control)->GetWindowText(value);
    else
        ::SetWindowText(control, value);
}

namespace {

/// Reads a number in the range of its type. \return false for any other text
template <class NUMBER> bool ParseNumber(CString text, NUMBER& value)
{
    text.TrimLeft();
    text.TrimRight();
    LPCSTR digits = text;
    if (std::is_signed_v<NUMBER> && (*digits == '-' || *digits == '+'))
        ++digits;
    if (std::isdigit(static_cast<unsigned char>(*digits)) == 0)
        return false;
    char* end;
    const long long number = std::strtoll(text, &end, 10); // ends at its own limits, which are no number's here
    if (*end != '\0' || number < std::numeric_limits<NUMBER>::min() || number > std::numeric_limits<NUMBER>::max())
        return false;
    value = static_cast<NUMBER>(number);
    return true;
}

template <class NUMBER> void ExchangeNumber(CDataExchange* exchange, int id, NUMBER& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    CString text;
    if (!exchange->m_bSaveAndValidate) {
        if constexpr (std::is_signed_v<NUMBER>)
            text.Format("%ld", static_cast<long>(value));
        else
            text.Format("%lu", static_cast<unsigned long>(value));
        ::SetWindowText(control, text);
        return;
    }
    CWnd::FromHandle(control)->GetWindowText(text);
    if (ParseNumber(text, value))
        return;
    if constexpr (std::is_same_v<NUMBER, BYTE>) {
        AfxFormatString2(text, AFX_IDP_PARSE_INT_RANGE, "0", "255");
        AfxMessageBox(text, MB_ICONEXCLAMATION, AFX_IDP_PARSE_INT_RANGE);
    } else {
        AfxMessageBox(std::is_signed_v<NUMBER> ? AFX_IDP_PARSE_INT : AFX_IDP_PARSE_UINT, MB_ICONEXCLAMATION);
    }
    exchange->Fail();
}

} // namespace

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value) { ExchangeNumber(pDX, nIDC, value); }

void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars)
{
    if (!pDX->m_bSaveAndValidate) {
        if (pDX->m_bEditLastControl)
            ::SendMessage(pDX->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
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
