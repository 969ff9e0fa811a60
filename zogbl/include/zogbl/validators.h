/// \file
/// Checks of dialog data, for the framework's exchange of dialog data.
///
///     void TimeoutPage::DoDataExchange(CDataExchange* exchange)
///     {
///         DDX_Text(exchange, IDC_SECONDS, m_nSeconds);
///         ZoDDV_CfgMinMaxUIntStr(exchange, m_nSeconds, 1, 300, 0);
///     }
///
/// Put a check behind the exchange of its control. It tests the value when the data is saved, and does nothing when it
/// is loaded. If the value is wrong, the user is told and the exchange ends: CDataExchange::Fail gives the focus back
/// to the control, and UpdateData returns FALSE.
///
/// \p message is a string of the framework's resource chain or of the language library. Its number is also the help
/// context of the message box.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

// Ranges: a value below \p minimum or above \p maximum is wrong. In the message, "%1" is the minimum and "%2" the
// maximum. Message 0 is the framework's own one for ranges.

ZOGBL_API void AFXAPI ZoDDV_CfgMinMaxByteStr(CDataExchange* exchange, unsigned char value, unsigned char minimum,
                                             unsigned char maximum, unsigned int message);
ZOGBL_API void AFXAPI ZoDDV_CfgMinMaxIntStr(CDataExchange* exchange, int value, int minimum, int maximum,
                                            unsigned int message);
ZOGBL_API void AFXAPI ZoDDV_CfgMinMaxLongStr(CDataExchange* exchange, long value, long minimum, long maximum,
                                             unsigned int message);
ZOGBL_API void AFXAPI ZoDDV_CfgMinMaxUIntStr(CDataExchange* exchange, unsigned int value, unsigned int minimum,
                                             unsigned int maximum, unsigned int message);
ZOGBL_API void AFXAPI ZoDDV_CfgMinMaxDWordStr(CDataExchange* exchange, unsigned long value, unsigned long minimum,
                                              unsigned long maximum, unsigned int message);

// Lengths are in bytes: a double-byte character counts two. In the message for a text that is too long, "%1" is the
// greatest length. Message 0 is the framework's own one.

/// \param tooShortMessage shown as it is
ZOGBL_API void AFXAPI ZoDDV_CfgMaxMinCharsStr(CDataExchange* exchange, const CString& text, int maxChars,
                                              unsigned int tooLongMessage, int minChars, unsigned int tooShortMessage);
/// An empty text is also wrong; the message is the same.
ZOGBL_API void AFXAPI ZoDDV_CfgNotEmptyOrTooLongStr(CDataExchange* exchange, const CString& text, int maxChars,
                                                    unsigned int message);
/// On a double-byte system, a text with double-byte characters is also wrong; the message for them is fixed.
ZOGBL_API void AFXAPI ZoDDV_NoKanjiNumbers(CDataExchange* exchange, const CString& text, int maxChars,
                                           unsigned int message);

/// Asks the user. Cancel, Abort and No end the exchange.
/// \param control gets the focus then; -1: the control exchanged last
/// \param boxType icon and buttons, as for MessageBox
ZOGBL_API void AFXAPI ZoDDV_CfgMessageBox(CDataExchange* exchange, unsigned int message, int control,
                                          unsigned int boxType, unsigned int helpContext);

/// Removes the white space at both ends of \p text. An empty text is wrong then.
/// \param control not used
/// \param allowEmpty nonzero: the box also has Cancel, with which the user allows the empty text
/// Only this check has the C calling convention.
ZOGBL_API void AFX_CDECL ZoDDV_TrimNotEmpty(CDataExchange* exchange, CString& text, unsigned int control,
                                            int allowEmpty);

/// These two check nothing: every path passes and the arguments are ignored.
ZOGBL_API void AFXAPI ZoDDV_CfgDirExists(CDataExchange* exchange, const char* path, unsigned int message, int flags);
ZOGBL_API void AFXAPI ZoDDV_CfgFileExists(CDataExchange* exchange, const char* path, unsigned int message);

/// When the data is loaded, removes styles from a control, adds others and draws it again. Only in dialogs with the
/// style DS_3DLOOK, on systems with the shell of version 4 or later, and if there is such a control; otherwise nothing
/// happens.
ZOGBL_API void AFXAPI ZoDDX_CfgTweakStyle(CDataExchange* exchange, unsigned int control, unsigned long removeStyle,
                                          unsigned long addStyle);
