/// \file
/// Application framework: the exchange of a dialog's data between members and controls. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

/// One exchange of a dialog's data, handed to the DDX_ and DDV_ functions.
class AFX_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

    /// Each DDX_ function begins with one of these: the control is the one that a failure from here on concerns.
    /// \return the control; a dialog without it throws CResourceException*
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange, after the user was told why: throws CUserException*. If it was on the way to the members, the
    /// control prepared last gets the focus, all of its text selected if it is an edit field.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls to the members
    CWnd* m_pDlgWnd;

private:
    friend AFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);

    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;
};

// ---------------------------------------------------------------------------------------------------------------------
// Texts and numbers

AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
/// Whole numbers in decimal digits, with blanks around them and, for the signed types, a sign. Anything else, and what
/// the type cannot hold, fails the exchange.
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
/// Numbers with 6 (float) and 15 (double) digits, also with an exponent. They are shown with the user's decimal sign
/// and read with it or a point.
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value);
AFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value);

/// Fails the exchange for a text of more than \p nChars bytes. Loading, it keeps the edit field or combo box prepared
/// last from taking more.
AFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);
/// These fail the exchange for a value outside the bounds; loading, they do nothing.
AFX_API void AFXAPI DDV_MinMaxByte(CDataExchange* pDX, BYTE value, BYTE minVal, BYTE maxVal);
AFX_API void AFXAPI DDV_MinMaxShort(CDataExchange* pDX, short value, short minVal, short maxVal);
AFX_API void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
AFX_API void AFXAPI DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal);
AFX_API void AFXAPI DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal);
AFX_API void AFXAPI DDV_MinMaxDWord(CDataExchange* pDX, const DWORD& value, DWORD minVal, DWORD maxVal);
AFX_API void AFXAPI DDV_MinMaxFloat(CDataExchange* pDX, const float& value, float minVal, float maxVal);
AFX_API void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, const double& value, double minVal, double maxVal);

// ---------------------------------------------------------------------------------------------------------------------
// Choices and positions

/// The selected item of a list box or combo box; -1 for none.
AFX_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
AFX_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
/// The text of the selected item, "" for none. Loading, it selects the first item that begins with the value (Exact:
/// that is the value), letter case ignored; none for "" and where there is no such item.
AFX_API void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
AFX_API void AFXAPI DDX_LBStringExact(CDataExchange* pDX, int nIDC, CString& value);
/// The same for a combo box; one that has a field exchanges the field's text, which need not be an item's.
AFX_API void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
AFX_API void AFXAPI DDX_CBStringExact(CDataExchange* pDX, int nIDC, CString& value);
AFX_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// The buttons of a group, whose first one is \p nIDC, are numbered from 0; -1 when none is checked.
AFX_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
/// The position of a scroll bar and of a slider.
AFX_API void AFXAPI DDX_Scroll(CDataExchange* pDX, int nIDC, int& value);
AFX_API void AFXAPI DDX_Slider(CDataExchange* pDX, int nIDC, int& value);
/// Makes \p rControl the window of the control, if it is not yet.
AFX_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
