/// \file
/// Checks of what was entered in a dialog, for the framework's exchange of dialog data.
///
///     void TimeoutPage::DoDataExchange(CDataExchange* exchange)
///     {
///         DDX_Text(exchange, IDC_SECONDS, m_nSeconds);
///         ZoDDV_CfgMinMaxUIntStr(exchange, m_nSeconds, 1, 300, 0);
///     }
///
/// A check stands behind the exchange of its control. It looks at the value when the data is saved, and does nothing when it
/// is loaded. A value that does not pass is told to the user and ends the exchange: CDataExchange::Fail gives the focus
/// back to the control, and UpdateData answers FALSE.
///
/// \p message is a string of the framework's resource chain or of the language library; the message box has it for its
/// help context.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

// Ranges: the value must not be below \p minimum nor above \p maximum. These two stand for "%1" and "%2" of the message; 0
// is the framework's own one for ranges.

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

// Lengths are in bytes: a double-byte character counts two. The greatest length stands for "%1" of the message for a text
// that is too long; 0 is the framework's own one.

/// \param tooShortMessage shown as it is
ZOGBL_API void AFXAPI ZoDDV_CfgMaxMinCharsStr(CDataExchange* exchange, const CString& text, int maxChars,
                                              unsigned int tooLongMessage, int minChars, unsigned int tooShortMessage);
/// The text must not be empty either; the message is one and the same.
ZOGBL_API void AFXAPI ZoDDV_CfgNotEmptyOrTooLongStr(CDataExchange* exchange, const CString& text, int maxChars,
                                                    unsigned int message);
/// The text must also do without double-byte characters, which only such a system can tell. There is no choice of the
/// message for these.
ZOGBL_API void AFXAPI ZoDDV_NoKanjiNumbers(CDataExchange* exchange, const CString& text, int maxChars,
                                           unsigned int message);

/// Asks the user. The answers Cancel, Abort and No end the exchange.
/// \param control the one that gets the focus then; -1 for the one exchanged last
/// \param boxType icon and buttons, as MessageBox has them
ZOGBL_API void AFXAPI ZoDDV_CfgMessageBox(CDataExchange* exchange, unsigned int message, int control,
                                          unsigned int boxType, unsigned int helpContext);

/// Takes the blanks off both ends of \p text, which must not be empty then.
/// \param control not used
/// \param allowEmpty nonzero: the box has Cancel too, by which the user lets the text be empty
/// Unlike the others it has the C calling convention.
ZOGBL_API void AFX_CDECL ZoDDV_TrimNotEmpty(CDataExchange* exchange, CString& text, unsigned int control,
                                            int allowEmpty);

/// These two check nothing: every path passes, and the arguments are ignored.
ZOGBL_API void AFXAPI ZoDDV_CfgDirExists(CDataExchange* exchange, const char* path, unsigned int message, int flags);
ZOGBL_API void AFXAPI ZoDDV_CfgFileExists(CDataExchange* exchange, const char* path, unsigned int message);

/// When the data is loaded, takes styles off a control and gives it others, and has it drawn anew. This is for dialogs
/// with the style DS_3DLOOK on systems with the shell of version 4 or later; elsewhere nothing happens, nor without the
/// control.
ZOGBL_API void AFXAPI ZoDDX_CfgTweakStyle(CDataExchange* exchange, unsigned int control, unsigned long removeStyle,
                                          unsigned long addStyle);
