// The printers in the dialog: which one is chosen, what its driver tells.
#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "print_dialog_busy.h"
#include "printers.h"

#include <algorithm>

Printer* CZoPrintDialog::Chosen() { return m_nChosen >= 0 ? &(*m_printers)[m_nChosen] : nullptr; }

void CZoPrintDialog::FindFirstPrinter()
{
    Printers& printers = *m_printers;
    if (m_names != nullptr)
        m_nChosen = printers.IndexOf(m_names->device);
    else if (m_settings != nullptr)
        m_nChosen = printers.IndexOf(*m_settings);
    if (m_nChosen >= 0 && m_settings != nullptr) {
        printers[m_nChosen].settings = *m_settings;
    } else if (m_nChosen < 0 && printers.Count() > 0) {
        m_nChosen = (std::max)(0, printers.IndexOfDefault());
        if (m_names != nullptr || m_settings != nullptr)
            m_reason = {ZO_IDS_PRINT_GONE, m_names != nullptr ? m_names->device : m_settings->Device(), CString()};
    }
}

/// Fills the list, and selects the printer that is chosen.
void CZoPrintDialog::ListPrinters()
{
    const HWND list = Item(ZO_IDC_PRINT_PRINTERS);
    ::SendMessage(list, CB_RESETCONTENT, 0, 0);
    for (int i = 0; i < m_printers->Count(); ++i) {
        const LPCSTR name = (*m_printers)[i].names.device;
        const LRESULT row = ::SendMessage(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
        if (row < 0)
            AfxThrowMemoryException();
        ::SendMessage(list, CB_SETITEMDATA, static_cast<WPARAM>(row), i);
    }
    for (int row = 0; row < m_printers->Count(); ++row) { // it sorts
        if (::SendMessage(list, CB_GETITEMDATA, static_cast<WPARAM>(row), 0) == m_nChosen)
            ::SendMessage(list, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
}

/// Some printer was installed or removed, or another one has become the default.
void CZoPrintDialog::FindPrinters()
{
    m_bStale = m_bBusy;
    if (m_bBusy)
        return;
    const CString name = m_nChosen >= 0 ? Chosen()->names.device : CString();
    m_printers->Find();
    m_nChosen = m_printers->IndexOf(name);
    if (m_nChosen < 0 && m_printers->Count() > 0) {
        m_nChosen = (std::max)(0, m_printers->IndexOfDefault());
        if (!name.IsEmpty())
            ShowReason(ZO_IDS_PRINT_GONE, name);
    }
    ListPrinters();
    AskChosen();
}

/// Shows the chosen printer, once its driver has told what it knows.
void CZoPrintDialog::AskChosen()
{
    if (Printer* const printer = Chosen()) {
        const CWaitCursor wait;
        const Busy busy(*this);
        m_printers->Ask(*printer);
    }
    ShowPrinter();
    ShowCopies();
    EnableItems();
}

void CZoPrintDialog::OnPrinterSelected()
{
    if (!WithoutThrowing([this] {
            const HWND list = Item(ZO_IDC_PRINT_PRINTERS);
            const auto row = static_cast<WPARAM>(::SendMessage(list, CB_GETCURSEL, 0, 0));
            m_nChosen = static_cast<int>(::SendMessage(list, CB_GETITEMDATA, row, 0));
            ClearReason();
            AskChosen();
        }))
        ::MessageBeep(MB_ICONEXCLAMATION);
}

void CZoPrintDialog::ShowPrinter()
{
    CString text;
    if (const Printer* const printer = Chosen(); printer == nullptr) {
        text = LoadText(ZO_IDS_PRINT_NO_PRINTER);
    } else if (printer->isAsked && !printer->answers) {
        text = LoadText(ZO_IDS_PRINT_NO_ANSWER);
    } else {
        const bool isDefault = m_printers->IndexOfDefault() == m_nChosen;
        text = LoadText(isDefault ? ZO_IDS_PRINT_DEFAULT_AT : ZO_IDS_PRINT_AT, printer->names.port);
    }
    SetDlgItemText(ZO_IDC_PRINT_INFORMATION, text);
}

void CZoPrintDialog::OnSetUp()
{
    Printer* const printer = Chosen();
    if (printer == nullptr)
        return;
    const Busy busy(*this);
    const BOOL isShown = WithoutThrowing([&] {
        ClearReason();
        // The driver's dialog begins with the copies that were typed here.
        PrinterSettings settings = printer->settings;
        int copies = GetNumber(ZO_IDC_PRINT_COPIES, 0), ofDocument = 1, ofPages = 1;
        if (copies >= 1 && copies <= MOST_COPIES)
            ShareCopies(*printer, copies, IsDlgButtonChecked(ZO_IDC_PRINT_COLLATED), settings, ofDocument, ofPages);
        const INT_PTR answer = m_printers->ShowSetUp(*printer, settings, m_hWnd);
        if (answer == IDOK && ofDocument == 1 && ofPages == 1) {
            m_bCopiesTyped = FALSE; // what the user said there is the latest
            ShowCopies();
            EnableItems();
        }
        if (answer != IDOK && answer != IDCANCEL)
            ShowReason(ZO_IDS_PRINT_SET_UP_FAILED);
    });
    if (!isShown)
        ::MessageBeep(MB_ICONEXCLAMATION);
}

LRESULT CZoPrintDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_SETTINGCHANGE && lParam != 0) {
        const auto section = reinterpret_cast<LPCSTR>(lParam);
        if (::lstrcmpi(section, "devices") == 0 || ::lstrcmpi(section, "windows") == 0)
            PostMessage(kFindPrinters);
    }
    if (message != kAskPrinter && message != kFindPrinters)
        return CZoDialog::WindowProc(message, wParam, lParam);
    UpdateWindow();
    if (!WithoutThrowing([&] { message == kAskPrinter ? AskChosen() : FindPrinters(); }))
        ::MessageBeep(MB_ICONEXCLAMATION);
    return 0;
}
