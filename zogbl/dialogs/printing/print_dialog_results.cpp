// What goes into the dialog for printing, and what comes out of it.
#include <zogbl/print_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/filter.h"
#include "printers.h"

// Before it is open ---------------------------------------------------------------------------------------------------

DWORD CZoPrintDialog::SetSettings(HGLOBAL devMode, HGLOBAL devNames)
{
    return ResultOr(ERROR_NOT_ENOUGH_MEMORY, [&]() -> DWORD {
        auto settings = devMode != nullptr ? std::make_unique<PrinterSettings>() : nullptr;
        auto names = devNames != nullptr ? std::make_unique<PrinterNames>() : nullptr;
        if ((settings != nullptr && !settings->TakeMemory(devMode)) ||
            (names != nullptr && !TakeNames(devNames, *names)))
            return ERROR_INVALID_DATA;
        m_settings = std::move(settings);
        m_names = std::move(names);
        m_bDefault = FALSE;
        m_bCopiesSet = FALSE;
        return ERROR_SUCCESS;
    });
}

BOOL CZoPrintDialog::SetPageLimits(int first, int last)
{
    if (first < 1 || last < first || last > MOST_PAGES)
        return FALSE;
    m_nFirstPage = first;
    m_nLastPage = last;
    return TRUE;
}

BOOL CZoPrintDialog::SetPages(int from, int to)
{
    if (from < 1 || to < from || to > MOST_PAGES)
        return FALSE;
    m_nFromPage = from;
    m_nToPage = to;
    m_range = Range::kPages;
    return TRUE;
}

BOOL CZoPrintDialog::SetCopies(int copies, BOOL isCollated)
{
    if (copies < 1 || copies > MOST_COPIES)
        return FALSE;
    m_nCopies = copies;
    m_bCollated = isCollated != FALSE;
    m_bCopiesSet = TRUE;
    return TRUE;
}

// OK ------------------------------------------------------------------------------------------------------------------

/// Takes over what stands in the dialog, if all of it is right, and closes it. Throws CMemoryException*.
void CZoPrintDialog::TakeAll()
{
    Printer* const printer = Chosen();
    if (printer == nullptr)
        return;
    m_printers->Ask(*printer);
    Range range = Range::kAll;
    int from = m_nFirstPage, to = m_nLastPage;
    if (!TakeRange(range, from, to))
        return;
    const int copies = GetNumber(ZO_IDC_PRINT_COPIES, 0);
    if (copies < 1 || copies > MOST_COPIES) {
        Refuse(ZO_IDC_PRINT_COPIES, ZO_IDS_PRINT_BAD_COPIES, 1, MOST_COPIES);
        return;
    }
    CString output;
    if (!TakeFile(output))
        return;
    const BOOL isCollated = IsDlgButtonChecked(ZO_IDC_PRINT_COLLATED) == BST_CHECKED;
    const bool isDefault = m_printers->IndexOfDefault() == m_nChosen;
    auto settings = std::make_unique<PrinterSettings>(printer->settings);
    auto names = std::make_unique<PrinterNames>(printer->names);
    ShareCopies(*printer, copies, isCollated, *settings, m_nDocumentCopies, m_nPageCopies);
    // From here on nothing fails.
    m_settings = settings->Size() != 0 ? std::move(settings) : nullptr;
    m_names = std::move(names);
    m_csOutput = output;
    m_bDefault = isDefault;
    m_range = range;
    m_nFromPage = from;
    m_nToPage = to;
    m_nCopies = copies;
    m_bCollated = isCollated;
    m_bCopiesSet = m_bCopiesTyped;
    EndDialog(IDOK);
}

/// Says why OK does not work, and leads to the field.
void CZoPrintDialog::Refuse(int control, UINT id, int least, int most)
{
    CString leastText, mostText;
    leastText.Format("%d", least);
    mostText.Format("%d", most);
    ShowReason(id, leastText, mostText);
    ::MessageBeep(MB_ICONEXCLAMATION);
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(control)), TRUE);
    SendDlgItemMessage(control, EM_SETSEL, 0, -1);
}

BOOL CZoPrintDialog::TakeRange(Range& range, int& from, int& to)
{
    if (IsDlgButtonChecked(ZO_IDC_PRINT_SELECTION))
        range = Range::kSelection;
    if (!IsDlgButtonChecked(ZO_IDC_PRINT_PAGES))
        return TRUE;
    range = Range::kPages;
    for (const auto& [field, page] : {std::pair<int, int&>(ZO_IDC_PRINT_FROM, from), {ZO_IDC_PRINT_TO, to}}) {
        page = GetNumber(field, page);
        if (page >= m_nFirstPage && page <= m_nLastPage)
            continue;
        Refuse(field, ZO_IDS_PRINT_BAD_PAGES, m_nFirstPage, m_nLastPage);
        return FALSE;
    }
    if (from > to)
        Refuse(ZO_IDC_PRINT_FROM, ZO_IDS_PRINT_BAD_ORDER, from, to);
    return from <= to;
}

/// Asks for the file, if the job goes to one. \return FALSE: the user has given that up
BOOL CZoPrintDialog::TakeFile(CString& output)
{
    if (!m_bFileAllowed || IsDlgButtonChecked(ZO_IDC_PRINT_TO_FILE) != BST_CHECKED)
        return TRUE;
    const CString title = LoadText(ZO_IDS_PRINT_FILE_TITLE), filter = LoadFilter(ZO_IDS_PRINT_FILE_FILTER);
    CZoFileOpen file(FALSE, 0, "prn", m_csOutput, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOREADONLYRETURN, filter,
                     this);
    file.m_ofn.lpstrTitle = title;
    if (file.DoModal() != IDOK)
        return FALSE;
    output = file.GetPathName();
    return !output.IsEmpty();
}

/// Decides who makes the copies. The settings stay byte for byte as they are if they tell the right number already.
void CZoPrintDialog::ShareCopies(const Printer& printer, int copies, BOOL isCollated, PrinterSettings& settings,
                                 int& ofDocument, int& ofPages) const
{
    ofDocument = ofPages = 1;
    const bool isTold = copies == settings.GetCopies() &&
                        (copies == 1 || (isCollated != FALSE) == (printer.collates && settings.IsCollated()));
    const bool canMake = copies <= printer.mostCopies || !printer.answers; // who says nothing may well make them
    if (isTold && canMake)
        return;
    if (!isTold) {
        const bool isRight = copies == 1 || !isCollated || printer.collates;
        if (printer.answers && canMake && isRight && settings.SetCopies(copies, isCollated != FALSE))
            return;
        settings.SetCopies(1, false);
    }
    (isCollated ? ofDocument : ofPages) = copies;
}

// After it was open ---------------------------------------------------------------------------------------------------

int CZoPrintDialog::GetFromPage() const { return m_range == Range::kPages ? m_nFromPage : m_nFirstPage; }
int CZoPrintDialog::GetToPage() const { return m_range == Range::kPages ? m_nToPage : m_nLastPage; }

CString CZoPrintDialog::GetPrinterName() const { return m_names != nullptr ? m_names->device : CString(); }

HDC CZoPrintDialog::CreatePrinterDC() const
{
    return m_names == nullptr ? nullptr
                              : ::CreateDC(m_names->driver, m_names->device, nullptr,
                                           m_settings != nullptr ? m_settings->Get() : nullptr);
}

HGLOBAL CZoPrintDialog::CopyDevMode() const { return m_settings != nullptr ? CopyToMemory(*m_settings) : nullptr; }

HGLOBAL CZoPrintDialog::CopyDevNames() const
{
    return m_names != nullptr ? CopyToMemory(*m_names, m_bDefault != FALSE) : nullptr;
}
