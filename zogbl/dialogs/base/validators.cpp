#include <zogbl/validators.h>

#include <common/double_byte.h>
#include <zogbl/resource_ids.h>

#include <cstdio>

namespace {

constexpr UINT kNoHelpContext = 0;
constexpr BYTE kShellVersion = 4;

/// Tells the user and ends the exchange.
[[noreturn]] void Refuse(CDataExchange* exchange, const CString& text, UINT helpContext)
{
    AfxMessageBox(text, MB_ICONEXCLAMATION, helpContext);
    exchange->Fail();
}

template <class NUMBER>
void CheckRange(CDataExchange* exchange, NUMBER value, NUMBER minimum, NUMBER maximum, const char* format, UINT message)
{
    if ((minimum <= value && value <= maximum) || !exchange->m_bSaveAndValidate)
        return;
    char first[32];
    char second[32];
    std::snprintf(first, sizeof first, format, minimum);
    std::snprintf(second, sizeof second, format, maximum);
    const UINT number = message != 0 ? message : AFX_IDP_PARSE_INT_RANGE;
    CString text;
    AfxFormatString2(text, number, first, second);
    Refuse(exchange, text, number);
}

void RefuseLength(CDataExchange* exchange, int maxChars, UINT message)
{
    char most[32];
    std::snprintf(most, sizeof most, "%d", maxChars);
    const UINT number = message != 0 ? message : AFX_IDP_PARSE_STRING_SIZE;
    CString text;
    AfxFormatString1(text, number, most);
    Refuse(exchange, text, number);
}

bool HasLeadByte(LPCSTR text)
{
    while (*text != '\0' && !IsLeadByte(*text))
        ++text;
    return *text != '\0';
}

} // namespace

// Ranges --------------------------------------------------------------------------------------------------------------

void AFXAPI ZoDDV_CfgMinMaxByteStr(CDataExchange* exchange, unsigned char value, unsigned char minimum,
                                   unsigned char maximum, unsigned int message)
{
    CheckRange<unsigned>(exchange, value, minimum, maximum, "%u", message);
}

void AFXAPI ZoDDV_CfgMinMaxIntStr(CDataExchange* exchange, int value, int minimum, int maximum, unsigned int message)
{
    CheckRange<long>(exchange, value, minimum, maximum, "%ld", message);
}

void AFXAPI ZoDDV_CfgMinMaxLongStr(CDataExchange* exchange, long value, long minimum, long maximum,
                                   unsigned int message)
{
    CheckRange(exchange, value, minimum, maximum, "%ld", message);
}

void AFXAPI ZoDDV_CfgMinMaxUIntStr(CDataExchange* exchange, unsigned int value, unsigned int minimum,
                                   unsigned int maximum, unsigned int message)
{
    CheckRange<unsigned long>(exchange, value, minimum, maximum, "%lu", message);
}

void AFXAPI ZoDDV_CfgMinMaxDWordStr(CDataExchange* exchange, unsigned long value, unsigned long minimum,
                                    unsigned long maximum, unsigned int message)
{
    CheckRange(exchange, value, minimum, maximum, "%lu", message);
}

// Texts ---------------------------------------------------------------------------------------------------------------

void AFXAPI ZoDDV_CfgMaxMinCharsStr(CDataExchange* exchange, const CString& text, int maxChars,
                                    unsigned int tooLongMessage, int minChars, unsigned int tooShortMessage)
{
    if (!exchange->m_bSaveAndValidate)
        return;
    if (text.GetLength() > maxChars)
        RefuseLength(exchange, maxChars, tooLongMessage);
    if (text.GetLength() < minChars) {
        AfxMessageBox(tooShortMessage, MB_ICONEXCLAMATION, tooShortMessage);
        exchange->Fail();
    }
}

void AFXAPI ZoDDV_CfgNotEmptyOrTooLongStr(CDataExchange* exchange, const CString& text, int maxChars,
                                          unsigned int message)
{
    if (exchange->m_bSaveAndValidate && (text.IsEmpty() || text.GetLength() > maxChars))
        RefuseLength(exchange, maxChars, message);
}

void AFXAPI ZoDDV_NoKanjiNumbers(CDataExchange* exchange, const CString& text, int maxChars, unsigned int message)
{
    if (!exchange->m_bSaveAndValidate)
        return;
    if (text.GetLength() > maxChars)
        RefuseLength(exchange, maxChars, message);
    if (GetSystemMetrics(SM_DBCSENABLED) != 0 && HasLeadByte(text)) {
        AfxMessageBox(ZO_IDS_CHECK_DOUBLE_BYTE, MB_ICONSTOP, kNoHelpContext);
        exchange->Fail();
    }
}

void AFX_CDECL ZoDDV_TrimNotEmpty(CDataExchange* exchange, CString& text, unsigned int, int allowEmpty)
{
    if (!exchange->m_bSaveAndValidate)
        return;
    text.TrimLeft();
    text.TrimRight();
    if (!text.IsEmpty())
        return;
    const int answer = AfxMessageBox(ZO_IDS_CHECK_EMPTY, MB_ICONSTOP | (allowEmpty != 0 ? MB_OKCANCEL : MB_OK));
    if (allowEmpty == 0 || answer == IDOK)
        exchange->Fail();
}

// Others --------------------------------------------------------------------------------------------------------------

void AFXAPI ZoDDV_CfgMessageBox(CDataExchange* exchange, unsigned int message, int control, unsigned int boxType,
                                unsigned int helpContext)
{
    if (!exchange->m_bSaveAndValidate)
        return;
    const int answer = AfxMessageBox(message, boxType, helpContext);
    if (answer != IDCANCEL && answer != IDABORT && answer != IDNO)
        return;
    if (control != -1)
        exchange->PrepareCtrl(control);
    exchange->Fail();
}

void AFXAPI ZoDDV_CfgDirExists(CDataExchange*, const char*, unsigned int, int) {}

void AFXAPI ZoDDV_CfgFileExists(CDataExchange*, const char*, unsigned int) {}

void AFXAPI ZoDDX_CfgTweakStyle(CDataExchange* exchange, unsigned int control, unsigned long removeStyle,
                                unsigned long addStyle)
{
    const HWND dialog = exchange->m_pDlgWnd->m_hWnd;
    if (exchange->m_bSaveAndValidate || LOBYTE(LOWORD(GetVersion())) < kShellVersion ||
        (GetWindowLongA(dialog, GWL_STYLE) & DS_3DLOOK) == 0)
        return;
    const HWND window = GetDlgItem(dialog, static_cast<int>(control));
    if (window == nullptr)
        return;
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    SetWindowLongA(window, GWL_STYLE, static_cast<LONG>((style & ~removeStyle) | addStyle));
    InvalidateRect(window, nullptr, FALSE);
}
