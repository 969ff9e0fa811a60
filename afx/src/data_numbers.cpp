// The exchange of texts and numbers between a dialog's fields and members, and the checks of numbers.
#include <afxwin.h>

#include <cctype>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <type_traits>

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        CWnd::FromHandle(control)->GetWindowText(value);
    else
        ::SetWindowText(control, value);
}

namespace {

/// The user's sign before the digits of a fraction.
CString DecimalSign()
{
    char sign[8] = "";
    ::GetLocaleInfo(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sign, sizeof sign);
    return sign[0] != '\0' ? sign : ".";
}

bool IsDigit(char character) { return std::isdigit(static_cast<unsigned char>(character)) != 0; }

template <class NUMBER> bool ParseWhole(const CString& text, NUMBER& value)
{
    LPCSTR digits = text;
    if (std::is_signed_v<NUMBER> && (*digits == '-' || *digits == '+'))
        ++digits;
    if (!IsDigit(*digits))
        return false;
    char* end;
    const long long number = std::strtoll(text, &end, 10); // ends at its own limits, which are no number's here
    if (*end != '\0' || number < std::numeric_limits<NUMBER>::min() || number > std::numeric_limits<NUMBER>::max())
        return false;
    value = static_cast<NUMBER>(number);
    return true;
}

template <class NUMBER> bool ParseReal(CString text, NUMBER& value)
{
    const CString sign = DecimalSign();
    if (sign != "." && text.Find('.') >= 0) // which would be one between thousands
        return false;
    const int place = text.Find(sign);
    if (place >= 0)
        text = text.Left(place) + "." + text.Mid(place + sign.GetLength());
    LPCSTR start = text;
    const LPCSTR end = start + text.GetLength();
    const bool isNegative = *start == '-';
    if (isNegative || *start == '+')
        ++start;
    if (!IsDigit(*start) && *start != '.') // words for what is no number
        return false;
    NUMBER number;
    const auto [last, failure] = std::from_chars(start, end, number);
    if (last != end || failure != std::errc())
        return false;
    value = isNegative ? -number : number;
    return true;
}

/// Reads a number in the range of its type. \return false for any other text
template <class NUMBER> bool ParseNumber(CString text, NUMBER& value)
{
    text.TrimLeft();
    text.TrimRight();
    if constexpr (std::is_floating_point_v<NUMBER>)
        return ParseReal(text, value);
    else
        return ParseWhole(text, value);
}

template <class NUMBER> CString FormatNumber(NUMBER value)
{
    char text[32] = "";
    if constexpr (std::is_floating_point_v<NUMBER>) {
        const auto end = std::to_chars(text, text + sizeof text - 1, value, std::chars_format::general,
                                       std::numeric_limits<NUMBER>::digits10);
        *end.ptr = '\0';
    } else {
        *std::to_chars(text, text + sizeof text - 1, static_cast<long long>(value)).ptr = '\0';
    }
    CString shown = text;
    const int point = shown.Find('.');
    return point < 0 ? shown : shown.Left(point) + DecimalSign() + shown.Mid(point + 1);
}

[[noreturn]] void RefuseOutside(CDataExchange* exchange, UINT message, const CString& least, const CString& most)
{
    CString text;
    AfxFormatString2(text, message, least, most);
    AfxMessageBox(text, MB_ICONEXCLAMATION, message);
    exchange->Fail();
}

template <class NUMBER> void ExchangeNumber(CDataExchange* exchange, int id, NUMBER& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (!exchange->m_bSaveAndValidate) {
        ::SetWindowText(control, FormatNumber(value));
        return;
    }
    CString text;
    CWnd::FromHandle(control)->GetWindowText(text);
    if (ParseNumber(text, value))
        return;
    using Limits = std::numeric_limits<NUMBER>;
    if constexpr (sizeof(NUMBER) < sizeof(int)) // the user may well meet the bounds
        RefuseOutside(exchange, AFX_IDP_PARSE_INT_RANGE, FormatNumber((Limits::min)()), FormatNumber((Limits::max)()));
    if constexpr (std::is_floating_point_v<NUMBER>)
        AfxMessageBox(AFX_IDP_PARSE_REAL, MB_ICONEXCLAMATION);
    else
        AfxMessageBox(std::is_signed_v<NUMBER> ? AFX_IDP_PARSE_INT : AFX_IDP_PARSE_UINT, MB_ICONEXCLAMATION);
    exchange->Fail();
}

template <class NUMBER> void CheckRange(CDataExchange* exchange, NUMBER value, NUMBER least, NUMBER most)
{
    if (!exchange->m_bSaveAndValidate || (least <= value && value <= most))
        return;
    RefuseOutside(exchange, std::is_floating_point_v<NUMBER> ? AFX_IDP_PARSE_REAL_RANGE : AFX_IDP_PARSE_INT_RANGE,
                  FormatNumber(least), FormatNumber(most));
}

} // namespace

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value) { ExchangeNumber(pDX, nIDC, value); }
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value) { ExchangeNumber(pDX, nIDC, value); }

void AFXAPI DDV_MinMaxByte(CDataExchange* pDX, BYTE value, BYTE minVal, BYTE maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxShort(CDataExchange* pDX, short value, short minVal, short maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxDWord(CDataExchange* pDX, const DWORD& value, DWORD minVal, DWORD maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxFloat(CDataExchange* pDX, const float& value, float minVal, float maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, const double& value, double minVal, double maxVal)
{
    CheckRange(pDX, value, minVal, maxVal);
}
