#include <zogbl/print_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "print_dialog_busy.h"
#include "printers.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

int RadioOf(CZoPrintDialog::Range range)
{
    switch (range) {
    case CZoPrintDialog::Range::kSelection:
        return ZO_IDC_PRINT_SELECTION;
    case CZoPrintDialog::Range::kPages:
        return ZO_IDC_PRINT_PAGES;
    default:
        return ZO_IDC_PRINT_ALL;
    }
}

bool PrintsToFile(const Printer& printer) { return printer.names.port.CompareNoCase("FILE:") == 0; }

} // namespace

BEGIN_MESSAGE_MAP(CZoPrintDialog, CZoDialog)
    ON_CBN_SELCHANGE(ZO_IDC_PRINT_PRINTERS, OnPrinterSelected)
    ON_BN_CLICKED(ZO_IDC_PRINT_SET_UP, OnSetUp)
    ON_BN_CLICKED(ZO_IDC_PRINT_TO_FILE, OnToFile)
    ON_BN_CLICKED(ZO_IDC_PRINT_ALL, ClearReason)
    ON_BN_CLICKED(ZO_IDC_PRINT_SELECTION, ClearReason)
    ON_BN_CLICKED(ZO_IDC_PRINT_PAGES, ClearReason)
    ON_EN_CHANGE(ZO_IDC_PRINT_FROM, OnPagesTyped)
    ON_EN_CHANGE(ZO_IDC_PRINT_TO, OnPagesTyped)
    ON_EN_CHANGE(ZO_IDC_PRINT_COPIES, OnCopiesTyped)
    ON_BN_CLICKED(ZO_IDC_PRINT_COLLATED, OnCollated)
END_MESSAGE_MAP()

CZoPrintDialog::CZoPrintDialog(CWnd* owner) : CZoDialog(ZO_IDD_PRINT, owner) {}

CZoPrintDialog::~CZoPrintDialog() = default;

INT_PTR CZoPrintDialog::DoModal()
{
    const INT_PTR result = ResultOr(-1, [this] {
        m_printers = std::make_unique<Printers>();
        m_nChosen = -1;
        m_bCopiesTyped = m_bCopiesSet;
        m_bToFile = m_bBusy = m_bStale = FALSE;
        m_bFilling = TRUE;
        m_reason = Reason();
        m_printers->Find();
        FindFirstPrinter();
        return CZoDialog::DoModal();
    });
    m_printers.reset();
    return result;
}

// What it shows -------------------------------------------------------------------------------------------------------

BOOL CZoPrintDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    ListPrinters();
    const int from = (std::clamp)(m_nFromPage, m_nFirstPage, m_nLastPage);
    const int to = (std::clamp)(m_nToPage, m_nFirstPage, m_nLastPage);
    const bool isThere =
        m_range == Range::kSelection ? m_bSelection != FALSE : m_range == Range::kAll || m_nFirstPage < m_nLastPage;
    CheckRadioButton(ZO_IDC_PRINT_ALL, ZO_IDC_PRINT_PAGES, RadioOf(isThere ? m_range : Range::kAll));
    SetNumber(ZO_IDC_PRINT_FROM, from);
    SetNumber(ZO_IDC_PRINT_TO, to < MOST_PAGES ? to : 0);
    SendDlgItemMessage(ZO_IDC_PRINT_COPIES_SPIN, UDM_SETRANGE, 0, MAKELPARAM(MOST_COPIES, 1));
    for (const int field : {ZO_IDC_PRINT_FROM, ZO_IDC_PRINT_TO, ZO_IDC_PRINT_COPIES})
        SendDlgItemMessage(field, EM_LIMITTEXT, 5);
    SetNumber(ZO_IDC_PRINT_COPIES, m_nCopies);
    CheckDlgButton(ZO_IDC_PRINT_COLLATED, m_bCollated ? BST_CHECKED : BST_UNCHECKED);
    ::ShowWindow(Item(ZO_IDC_PRINT_TO_FILE), m_bFileAllowed ? SW_SHOWNA : SW_HIDE);
    m_bFilling = FALSE;
    ShowPrinter();
    EnableItems();
    ShowReason(m_reason.id, m_reason.first);
    CenterWindow();
    PostMessage(kAskPrinter);
    const HWND first = Item(Chosen() != nullptr ? ZO_IDC_PRINT_PRINTERS : IDCANCEL);
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
    return FALSE;
}

/// The number of copies follows the printer, until somebody types one.
void CZoPrintDialog::ShowCopies()
{
    const Printer* const printer = Chosen();
    if (printer == nullptr || !printer->isAsked || m_bCopiesTyped)
        return;
    SetNumber(ZO_IDC_PRINT_COPIES, (std::min)(printer->settings.GetCopies(), MOST_COPIES));
    CheckDlgButton(ZO_IDC_PRINT_COLLATED,
                   printer->collates && printer->settings.IsCollated() ? BST_CHECKED : BST_UNCHECKED);
}

void CZoPrintDialog::EnableItems()
{
    const Printer* const printer = Chosen();
    const BOOL isThere = printer != nullptr;
    const BOOL hasPages = isThere && m_nFirstPage < m_nLastPage;
    const BOOL toFile = isThere && m_bFileAllowed && (m_bToFile || PrintsToFile(*printer));
    CheckDlgButton(ZO_IDC_PRINT_TO_FILE, toFile ? BST_CHECKED : BST_UNCHECKED);
    const std::pair<int, BOOL> kItems[] = {
        {ZO_IDC_PRINT_PRINTERS, isThere},
        {ZO_IDC_PRINT_SET_UP, isThere && printer->answers},
        {ZO_IDC_PRINT_TO_FILE, isThere && m_bFileAllowed && !PrintsToFile(*printer)},
        {ZO_IDC_PRINT_ALL, isThere},
        {ZO_IDC_PRINT_SELECTION, isThere && m_bSelection},
        {ZO_IDC_PRINT_PAGES, hasPages},
        {ZO_IDC_PRINT_FROM, hasPages},
        {ZO_IDC_PRINT_TO, hasPages},
        {ZO_IDC_PRINT_COPIES, isThere},
        {ZO_IDC_PRINT_COPIES_SPIN, isThere},
        {ZO_IDC_PRINT_COLLATED, isThere && GetNumber(ZO_IDC_PRINT_COPIES, 0) > 1},
        {IDOK, isThere},
    };
    const HWND focus = ::GetFocus();
    for (const auto& [item, isEnabled] : kItems)
        ::EnableWindow(Item(item), isEnabled);
    if (focus != nullptr && ::IsChild(m_hWnd, focus) && !::IsWindowEnabled(focus)) {
        const HWND next = Item(isThere ? ZO_IDC_PRINT_PRINTERS : IDCANCEL);
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    }
}

/// \param number 0: none
void CZoPrintDialog::SetNumber(int control, int number)
{
    CString text;
    if (number != 0)
        text.Format("%d", number);
    const BOOL wasFilling = std::exchange(m_bFilling, TRUE);
    SetDlgItemText(control, text);
    m_bFilling = wasFilling;
}

/// \return -1 if something else than a number is typed
int CZoPrintDialog::GetNumber(int control, int ifEmpty) const
{
    CString text;
    GetDlgItemText(control, text);
    text.TrimLeft();
    text.TrimRight();
    if (text.IsEmpty())
        return ifEmpty;
    constexpr int kMostDigits = 5;
    return text.GetLength() <= kMostDigits && text.SpanIncluding("0123456789") == text ? std::atoi(text) : -1;
}

void CZoPrintDialog::ShowReason(UINT id, LPCSTR first, LPCSTR second)
{
    m_reason = {id, first, second};
    SetDlgItemText(ZO_IDC_PRINT_REASON, id != 0 ? LoadText(id, m_reason.first, m_reason.second) : CString());
}

void CZoPrintDialog::ClearReason()
{
    if (m_reason.id != 0)
        WithoutThrowing([this] { ShowReason(0); });
}

void CZoPrintDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    ShowPrinter();
    const Reason reason = m_reason;
    ShowReason(reason.id, reason.first, reason.second);
}

// What the user does --------------------------------------------------------------------------------------------------

void CZoPrintDialog::OnPagesTyped()
{
    if (m_bFilling)
        return;
    CheckRadioButton(ZO_IDC_PRINT_ALL, ZO_IDC_PRINT_PAGES, ZO_IDC_PRINT_PAGES);
    ClearReason();
}

void CZoPrintDialog::OnCopiesTyped()
{
    if (m_bFilling)
        return;
    m_bCopiesTyped = TRUE;
    ClearReason();
    WithoutThrowing([this] { EnableItems(); });
}

void CZoPrintDialog::OnCollated() { m_bCopiesTyped = TRUE; }

void CZoPrintDialog::OnToFile() { m_bToFile = IsDlgButtonChecked(ZO_IDC_PRINT_TO_FILE) == BST_CHECKED; }

void CZoPrintDialog::OnOK()
{
    const Busy busy(*this);
    if (!WithoutThrowing([this] { TakeAll(); }))
        ::MessageBeep(MB_ICONEXCLAMATION);
}
