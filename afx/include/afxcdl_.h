/// \file
/// Dialogs of the system: colours, fonts, printers, pages. Included by afxdlgs.h.
///
/// Their library is loaded when the first one is shown. DoModal answers IDOK or IDCANCEL; after IDCANCEL the system's
/// CommDlgExtendedError tells a failure, as the lack of a printer (PDERR_NODEFAULTPRN), from the user's choice (0).
/// The structure is the system's and may be changed before DoModal.
#pragma once

#include <afxwin.h>

#include <commdlg.h>

/// A dialog of the system. Its window is this object's from before OnInitDialog until it is closed.
class AFX_API CCommonDialog : public CDialog {
    DECLARE_DYNAMIC(CCommonDialog)
public:
    explicit CCommonDialog(CWnd* pParentWnd) { m_pParentWnd = pParentWnd; }

protected:
    void OnOK() override; ///< takes over data by UpdateData; if that fails the dialog stays
    void OnCancel() override;

    /// The hook procedure to put into the structure.
    static UINT_PTR CALLBACK HookProcedure(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    /// Calls a function of the system's library. \param rOwner field of the structure that gets the owner
    BOOL Show(LPCSTR lpszFunction, LPVOID lpParameters, HWND& rOwner);
};

class AFX_API CColorDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CColorDialog)
public:
    /// \param dwFlags CC_...
    explicit CColorDialog(COLORREF clrInit = 0, DWORD dwFlags = 0, CWnd* pParentWnd = nullptr);

    INT_PTR DoModal() override;
    COLORREF GetColor() const { return m_cc.rgbResult; }
    /// The user's 16 colours, white at first; for all dialogs until the program ends, also where one is cancelled.
    static COLORREF* AFXAPI GetSavedCustomColors();

    CHOOSECOLORA m_cc = {};
};

class AFX_API CFontDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFontDialog)
public:
    /// \param lplfInitial the font chosen at first, null for none \param dwFlags CF_... \param pdcPrinter the printer's
    /// fonts as well
    explicit CFontDialog(LOGFONTA* lplfInitial = nullptr, DWORD dwFlags = CF_EFFECTS | CF_SCREENFONTS,
                         CDC* pdcPrinter = nullptr, CWnd* pParentWnd = nullptr);

    INT_PTR DoModal() override;
    /// The font chosen; while the dialog is open, the one it shows.
    void GetCurrentFont(LOGFONTA* lplf) const;
    CString GetFaceName() const { return m_lf.lfFaceName; }
    int GetSize() const { return m_cf.iPointSize; } ///< in tenths of a point
    COLORREF GetColor() const { return m_cf.rgbColors; }
    int GetWeight() const { return m_lf.lfWeight; }
    BOOL IsBold() const { return m_lf.lfWeight > FW_MEDIUM; }
    BOOL IsItalic() const { return m_lf.lfItalic != 0; }
    BOOL IsUnderline() const { return m_lf.lfUnderline != 0; }
    BOOL IsStrikeOut() const { return m_lf.lfStrikeOut != 0; }

    CHOOSEFONTA m_cf = {};
    LOGFONTA m_lf = {};
};

class AFX_API CPrintDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CPrintDialog)
public:
    /// \param bPrintSetupOnly TRUE: the printer's settings, no printing \param dwFlags PD_...
    explicit CPrintDialog(BOOL bPrintSetupOnly,
                          DWORD dwFlags = PD_ALLPAGES | PD_USEDEVMODECOPIES | PD_NOPAGENUMS | PD_HIDEPRINTTOFILE |
                                          PD_NOSELECTION,
                          CWnd* pParentWnd = nullptr);

    /// Settings, names and device context that come into m_pd are the caller's to free, also those of GetDefaults and
    /// CreatePrinterDC.
    INT_PTR DoModal() override;
    /// The default printer without a dialog; hDevMode and hDevNames must be null. \return FALSE without a printer
    BOOL GetDefaults();
    /// The context that came of DoModal or GetDefaults, unless for settings only.
    HDC GetPrinterDC() const { return m_pd.hDC; }
    /// Makes a context for the printer chosen, also into m_pd. \return null without a printer
    HDC CreatePrinterDC();

    /// "" and null without a printer. The name is whole, where that in the DEVMODE is cut at 31 characters.
    CString GetDriverName() const;
    CString GetDeviceName() const;
    CString GetPortName() const;
    LPDEVMODEA GetDevMode() const; ///< locked: GlobalUnlock m_pd.hDevMode

    int GetCopies() const; ///< asked for; with PD_USEDEVMODECOPIES the driver makes them
    BOOL PrintCollate() const { return (m_pd.Flags & PD_COLLATE) != 0; }
    BOOL PrintSelection() const { return (m_pd.Flags & PD_SELECTION) != 0; }
    BOOL PrintRange() const { return (m_pd.Flags & PD_PAGENUMS) != 0; }
    BOOL PrintAll() const { return !PrintRange() && !PrintSelection(); }
    int GetFromPage() const { return PrintRange() ? m_pd.nFromPage : -1; } ///< -1: not a range
    int GetToPage() const { return PrintRange() ? m_pd.nToPage : -1; }

    PRINTDLGA m_pd = {};
};

class AFX_API CPageSetupDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CPageSetupDialog)
public:
    /// \param dwFlags PSD_...
    explicit CPageSetupDialog(DWORD dwFlags = PSD_MARGINS | PSD_INWININIINTLMEASURE, CWnd* pParentWnd = nullptr);

    /// Settings and names that come into m_psd are the caller's to free.
    INT_PTR DoModal() override;
    /// \return null without a printer; the context is the caller's
    HDC CreatePrinterDC();
    CString GetDriverName() const;
    CString GetDeviceName() const;
    CString GetPortName() const;
    LPDEVMODEA GetDevMode() const; ///< locked: GlobalUnlock m_psd.hDevMode

    /// In the units of m_psd.Flags: thousandths of an inch or hundredths of a millimetre. Null pointers are left out.
    void GetMargins(LPRECT lpRectMargins, LPRECT lpRectMinMargins) const;
    CSize GetPaperSize() const { return CSize(m_psd.ptPaperSize.x, m_psd.ptPaperSize.y); }

    PAGESETUPDLGA m_psd = {};
};
