/// \file
/// The suite's dialog for printing.
#pragma once

#include <zogbl/dialog.h>

#include <memory>

class Printers;
class PrinterSettings;
struct Printer;
struct PrinterNames;

/// Asks what is to be printed, on which printer, how often, or to which file. The printer's own dialog for its settings
/// opens from here. What neither program nor user has set stays as the user's own settings of that printer have it.
///
///     CZoPrintDialog dialog(this);
///     dialog.SetPageLimits(1, pages);
///     if (dialog.DoModal() != IDOK)
///         return;
///     const HDC printer = dialog.CreatePrinterDC();
///     const DOCINFO document = {sizeof document, title, dialog.GetOutput()};
///     for (int copy = ::StartDoc(printer, &document) > 0 ? dialog.GetDocumentCopies() : 0; copy > 0; --copy)
///         PrintPages(printer, dialog.GetFromPage(), dialog.GetToPage(), dialog.GetPageCopies());
///
/// A job that takes more than a moment is shown by CZoAbortDialog. Nothing is thrown.
class ZOGBL_API CZoPrintDialog : public CZoDialog {
public:
    enum class Range { kAll, kSelection, kPages };
    static constexpr int MOST_PAGES = 65535; ///< also stands for a document whose length is not known
    static constexpr int MOST_COPIES = 9999;

    explicit CZoPrintDialog(CWnd* owner = nullptr); ///< null: the main window of the thread
    ~CZoPrintDialog() override;

    // Before DoModal ---------------------------------------------------------

    /// The printer and its settings as they were last time: blocks of global memory with a DEVMODE and a DEVNAMES,
    /// which are copied. Each may be null: settings alone find their printer by name; a printer alone has the user's
    /// own settings; without both it is the user's default printer. It is so too if the printer is no longer installed,
    /// and the dialog says that. Settings of another printer are not used; those of another version of its driver are
    /// handed to the driver, which adapts them.
    /// \return 0; ERROR_INVALID_DATA: a block is damaged, so nothing is taken of both; ERROR_NOT_ENOUGH_MEMORY
    DWORD SetSettings(HGLOBAL devMode, HGLOBAL devNames);

    /// The document's pages, counted from 1, which are 1 and MOST_PAGES at first.
    /// \return FALSE, changing nothing, if there is a page 0, one above MOST_PAGES, or if \p last comes before \p first
    BOOL SetPageLimits(int first, int last);
    /// Proposes these pages. They are cut to the limits when the dialog opens. \return FALSE as SetPageLimits
    BOOL SetPages(int from, int to);
    /// Whether something is selected in the document, so that the selection alone can be printed. FALSE at first
    void SetSelection(BOOL isThere) { m_bSelection = isThere; }
    /// In place of the number in the printer's settings. \return FALSE if \p copies is not 1 to MOST_COPIES
    BOOL SetCopies(int copies, BOOL isCollated);
    /// Whether the user may print to a file. TRUE at first
    void AllowFile(BOOL isAllowed) { m_bFileAllowed = isAllowed; }

    /// \return IDOK; IDCANCEL: all is as before; -1: the dialog cannot be made or memory has run out. Without a printer
    /// the dialog says so, and can only be cancelled until one is installed.
    INT_PTR DoModal() override;

    // After IDOK -------------------------------------------------------------

    Range GetRange() const { return m_range; }
    int GetFromPage() const; ///< the first one to print; of the whole document unless pages were chosen
    int GetToPage() const;   ///< the last one
    int GetCopies() const { return m_nCopies; } ///< that the user gets, by whoever makes them
    BOOL IsCollated() const { return m_bCollated; }
    /// How often the program has to send the whole document, and each page in a row: both are 1 if the driver makes the
    /// copies; at least one of them is 1.
    int GetDocumentCopies() const { return m_nDocumentCopies; }
    int GetPageCopies() const { return m_nPageCopies; }
    /// The file to print to, for StartDoc; the dialog's own. \return null: to the printer
    LPCSTR GetOutput() const { return m_csOutput.IsEmpty() ? nullptr : static_cast<LPCSTR>(m_csOutput); }

    /// The printer's whole name. Empty if there is none
    CString GetPrinterName() const;
    /// A context of the printer with its settings, the caller's to delete. \return null: there is none
    HDC CreatePrinterDC() const;
    /// Blocks of global memory with a DEVMODE and a DEVNAMES, the caller's to free. The DEVMODE has the driver's own
    /// part; it is byte for byte the one of SetSettings if the user changed nothing that stands in it. Also without
    /// DoModal: what SetSettings was given. \return null: there is none, or no memory
    HGLOBAL CopyDevMode() const;
    HGLOBAL CopyDevNames() const;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnPrinterSelected();
    afx_msg void OnSetUp();
    afx_msg void OnPagesTyped();
    afx_msg void OnCopiesTyped();
    afx_msg void OnCollated();
    afx_msg void OnToFile();
    afx_msg void ClearReason();
    DECLARE_MESSAGE_MAP()

private:
    class Busy;
    struct Reason { ///< why OK does not work, or what was changed
        UINT id = 0;
        CString first, second;
    };

    HWND Item(int control) const { return ::GetDlgItem(m_hWnd, control); }
    Printer* Chosen();
    void ListPrinters();
    void FindPrinters();
    void FindFirstPrinter();
    void AskChosen();
    void ShowPrinter();
    void ShowCopies();
    void EnableItems();
    void SetNumber(int control, int number);
    int GetNumber(int control, int ifEmpty) const;
    void ShowReason(UINT id, LPCSTR first = "", LPCSTR second = "");
    void TakeAll();
    void Refuse(int control, UINT id, int least, int most);
    BOOL TakeRange(Range& range, int& from, int& to);
    BOOL TakeFile(CString& output);
    void ShareCopies(const Printer& printer, int copies, BOOL isCollated, PrinterSettings& settings, int& ofDocument,
                     int& ofPages) const;

    std::unique_ptr<PrinterSettings> m_settings; // null: none
    std::unique_ptr<PrinterNames> m_names;       // null: no printer
    std::unique_ptr<Printers> m_printers;        // while it is open
    int m_nFirstPage = 1;
    int m_nLastPage = MOST_PAGES;
    int m_nFromPage = 1;
    int m_nToPage = MOST_PAGES;
    Range m_range = Range::kAll;
    int m_nCopies = 1;
    BOOL m_bCollated = FALSE;
    int m_nDocumentCopies = 1;
    int m_nPageCopies = 1;
    BOOL m_bCopiesSet = FALSE; // by the program
    BOOL m_bSelection = FALSE;
    BOOL m_bFileAllowed = TRUE;
    BOOL m_bDefault = FALSE; // the printer is the user's default one
    CString m_csOutput;

    // While it is open.
    int m_nChosen = -1;
    BOOL m_bCopiesTyped = FALSE; // else they follow the printer
    BOOL m_bToFile = FALSE;      // what the user wants of printers that do not print to a file anyway
    BOOL m_bFilling = FALSE;     // fields: by the dialog, not by keys
    BOOL m_bBusy = FALSE;        // a driver is asked, or another dialog is open above
    BOOL m_bStale = FALSE;       // the list of printers has changed meanwhile
    Reason m_reason;
};
