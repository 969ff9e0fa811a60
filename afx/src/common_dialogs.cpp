#include <afxdlgs.h>

#include "modal_owner.h"
#include "system_function.h"

#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CColorDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CFontDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CPrintDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CPageSetupDialog, CCommonDialog)

// All -----------------------------------------------------------------------------------------------------------------

namespace {

CCommonDialog* s_beginning = nullptr; // whose window is being made

} // namespace

UINT_PTR CALLBACK CCommonDialog::HookProcedure(HWND hWnd, UINT message, WPARAM, LPARAM)
{
    // Everything later is offered to the object before it comes here.
    if (message != WM_INITDIALOG || s_beginning == nullptr)
        return 0;
    CCommonDialog* dialog = std::exchange(s_beginning, nullptr);
    try {
        return dialog->SubclassWindow(hWnd) && dialog->OnInitDialog();
    } catch (CException* e) { // which must not pass through the system
        e->Delete();
    }
    ::PostMessage(hWnd, WM_COMMAND, IDCANCEL, 0);
    return 0;
}

BOOL CCommonDialog::Show(LPCSTR lpszFunction, LPVOID lpParameters, HWND& rOwner)
{
    const auto show = FindSystemFunction<BOOL WINAPI(LPVOID)>("comdlg32.dll", lpszFunction);
    if (show == nullptr)
        return FALSE;
    rOwner = FindModalOwner(m_pParentWnd);
    const DisabledWindow top(FindTopOwner(rOwner)); // the system disables the owner alone
    CCommonDialog* const outer = std::exchange(s_beginning, this);
    const BOOL chosen = show(lpParameters);
    s_beginning = outer;
    return chosen;
}

void CCommonDialog::OnOK()
{
    if (UpdateData(TRUE))
        Default();
}

void CCommonDialog::OnCancel() { Default(); }

// Colours -------------------------------------------------------------------------------------------------------------

CColorDialog::CColorDialog(COLORREF clrInit, DWORD dwFlags, CWnd* pParentWnd) : CCommonDialog(pParentWnd)
{
    m_cc.lStructSize = sizeof m_cc;
    m_cc.rgbResult = clrInit;
    m_cc.Flags = dwFlags | CC_RGBINIT | CC_ENABLEHOOK;
    m_cc.lpfnHook = &CCommonDialog::HookProcedure;
    m_cc.lpCustColors = GetSavedCustomColors();
}

INT_PTR CColorDialog::DoModal() { return Show("ChooseColorA", &m_cc, m_cc.hwndOwner) ? IDOK : IDCANCEL; }

COLORREF* AFXAPI CColorDialog::GetSavedCustomColors()
{
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    static COLORREF colors[16] = {kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite,
                                  kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite};
    return colors;
}

// Fonts ---------------------------------------------------------------------------------------------------------------

CFontDialog::CFontDialog(LOGFONTA* lplfInitial, DWORD dwFlags, CDC* pdcPrinter, CWnd* pParentWnd)
    : CCommonDialog(pParentWnd)
{
    m_cf.lStructSize = sizeof m_cf;
    m_cf.lpLogFont = &m_lf;
    m_cf.Flags = dwFlags | CF_ENABLEHOOK;
    m_cf.lpfnHook = &CCommonDialog::HookProcedure;
    if (lplfInitial != nullptr) {
        m_lf = *lplfInitial;
        m_cf.Flags |= CF_INITTOLOGFONTSTRUCT;
    }
    if (pdcPrinter != nullptr) {
        m_cf.hDC = pdcPrinter->m_hDC;
        m_cf.Flags |= CF_PRINTERFONTS;
    }
}

INT_PTR CFontDialog::DoModal() { return Show("ChooseFontA", &m_cf, m_cf.hwndOwner) ? IDOK : IDCANCEL; }

void CFontDialog::GetCurrentFont(LOGFONTA* lplf) const
{
    *lplf = m_lf;
    if (m_hWnd != nullptr)
        SendMessage(WM_CHOOSEFONT_GETLOGFONT, 0, reinterpret_cast<LPARAM>(lplf));
}

// Printers ------------------------------------------------------------------------------------------------------------

namespace {

/// Memory of a handle, kept in its place; null for a null handle.
template <class RECORD> class LockedMemory {
public:
    explicit LockedMemory(HGLOBAL memory)
        : m_memory(memory), m_record(memory != nullptr ? static_cast<RECORD*>(::GlobalLock(memory)) : nullptr)
    {
    }
    ~LockedMemory()
    {
        if (m_record != nullptr)
            ::GlobalUnlock(m_memory);
    }
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;
    RECORD* Get() const { return m_record; }
    size_t Size() const { return ::GlobalSize(m_memory); }

private:
    HGLOBAL m_memory;
    RECORD* m_record;
};

/// One of the names of a printer, which a driver wrote.
CString PrinterName(HGLOBAL names, WORD DEVNAMES::*offset)
{
    const LockedMemory<DEVNAMES> locked(names);
    if (locked.Get() == nullptr || locked.Size() < sizeof(DEVNAMES) || locked.Get()->*offset >= locked.Size())
        return {};
    const char* name = reinterpret_cast<const char*>(locked.Get()) + locked.Get()->*offset;
    return {name, static_cast<int>(strnlen(name, locked.Size() - locked.Get()->*offset))};
}

HDC PrinterContext(HGLOBAL names, HGLOBAL mode)
{
    const LockedMemory<DEVMODEA> settings(mode);
    return names == nullptr ? nullptr
                            : ::CreateDC(PrinterName(names, &DEVNAMES::wDriverOffset),
                                         PrinterName(names, &DEVNAMES::wDeviceOffset), nullptr, settings.Get());
}

LPDEVMODEA PrinterSettings(HGLOBAL mode)
{
    return mode != nullptr ? static_cast<LPDEVMODEA>(::GlobalLock(mode)) : nullptr;
}

} // namespace

CPrintDialog::CPrintDialog(BOOL bPrintSetupOnly, DWORD dwFlags, CWnd* pParentWnd) : CCommonDialog(pParentWnd)
{
    m_pd.lStructSize = sizeof m_pd;
    m_pd.Flags = dwFlags | PD_ENABLEPRINTHOOK | PD_ENABLESETUPHOOK | (bPrintSetupOnly ? PD_PRINTSETUP : PD_RETURNDC);
    m_pd.lpfnPrintHook = &CCommonDialog::HookProcedure;
    m_pd.lpfnSetupHook = &CCommonDialog::HookProcedure;
}

INT_PTR CPrintDialog::DoModal() { return Show("PrintDlgA", &m_pd, m_pd.hwndOwner) ? IDOK : IDCANCEL; }

BOOL CPrintDialog::GetDefaults()
{
    const DWORD flags = std::exchange(m_pd.Flags, m_pd.Flags | PD_RETURNDEFAULT);
    const BOOL found = Show("PrintDlgA", &m_pd, m_pd.hwndOwner);
    m_pd.Flags = flags;
    return found;
}

HDC CPrintDialog::CreatePrinterDC() { return m_pd.hDC = PrinterContext(m_pd.hDevNames, m_pd.hDevMode); }
CString CPrintDialog::GetDriverName() const { return PrinterName(m_pd.hDevNames, &DEVNAMES::wDriverOffset); }
CString CPrintDialog::GetDeviceName() const { return PrinterName(m_pd.hDevNames, &DEVNAMES::wDeviceOffset); }
CString CPrintDialog::GetPortName() const { return PrinterName(m_pd.hDevNames, &DEVNAMES::wOutputOffset); }
LPDEVMODEA CPrintDialog::GetDevMode() const { return PrinterSettings(m_pd.hDevMode); }

int CPrintDialog::GetCopies() const
{
    const LockedMemory<DEVMODEA> settings(m_pd.hDevMode);
    if ((m_pd.Flags & PD_USEDEVMODECOPIES) != 0 && settings.Get() != nullptr)
        return settings.Get()->dmCopies;
    return m_pd.nCopies;
}

CPageSetupDialog::CPageSetupDialog(DWORD dwFlags, CWnd* pParentWnd) : CCommonDialog(pParentWnd)
{
    m_psd.lStructSize = sizeof m_psd;
    m_psd.Flags = dwFlags | PSD_ENABLEPAGESETUPHOOK;
    m_psd.lpfnPageSetupHook = &CCommonDialog::HookProcedure;
}

INT_PTR CPageSetupDialog::DoModal() { return Show("PageSetupDlgA", &m_psd, m_psd.hwndOwner) ? IDOK : IDCANCEL; }
HDC CPageSetupDialog::CreatePrinterDC() { return PrinterContext(m_psd.hDevNames, m_psd.hDevMode); }
CString CPageSetupDialog::GetDriverName() const { return PrinterName(m_psd.hDevNames, &DEVNAMES::wDriverOffset); }
CString CPageSetupDialog::GetDeviceName() const { return PrinterName(m_psd.hDevNames, &DEVNAMES::wDeviceOffset); }
CString CPageSetupDialog::GetPortName() const { return PrinterName(m_psd.hDevNames, &DEVNAMES::wOutputOffset); }
LPDEVMODEA CPageSetupDialog::GetDevMode() const { return PrinterSettings(m_psd.hDevMode); }

void CPageSetupDialog::GetMargins(LPRECT lpRectMargins, LPRECT lpRectMinMargins) const
{
    if (lpRectMargins != nullptr)
        *lpRectMargins = m_psd.rtMargin;
    if (lpRectMinMargins != nullptr)
        *lpRectMinMargins = m_psd.rtMinMargin;
}
