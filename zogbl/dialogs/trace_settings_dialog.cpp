#include "trace_settings_dialog.h"

#include <common/without_throwing.h>
#include <zogbl/global_config.h>
#include <zogbl/resource_ids.h>
#include <zogbl/trace.h>
#include <zogbl/validators.h>

#include "controls/drawing/list_rows.h"
#include "files/folder_walk.h"
#include "ground/program_folder.h"

#include <algorithm>

namespace {

constexpr char kDevicesKey[] = "Software\\Zo,Inc.\\Devices";
constexpr char kNoAutoDetect[] = "DisableTAPIAutoDetect";
constexpr char kCannotView[] = "Unable to view trace file"; // alike in every language
constexpr UINT kLastWinExecError = 31;
constexpr UINT kMostLevel = 0xFFFF;
constexpr int kMostLevelDigits = 5;

/// A file as the list shows it: path, and date and time of the last writing. Throws CMemoryException*.
CString Describe(const WIN32_FIND_DATAA& entry)
{
    CString path = BesideExecutable(entry.cFileName);
    path.MakeLower();
    FILETIME local = {};
    SYSTEMTIME time = {};
    FileTimeToLocalFileTime(&entry.ftLastWriteTime, &local);
    FileTimeToSystemTime(&local, &time);
    CString text;
    text.Format("%s (%02d/%02d/%02d %02d:%02d)", (LPCSTR)path, time.wMonth, time.wDay, time.wYear % 100, time.wHour,
                time.wMinute);
    return text;
}

} // namespace

BEGIN_MESSAGE_MAP(TraceSettingsDialog, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_TRACE_ON, EnableControls)
    ON_LBN_SELCHANGE(ZO_IDC_TRACE_FILES, EnableControls)
    ON_LBN_DBLCLK(ZO_IDC_TRACE_FILES, OnView)
    ON_BN_CLICKED(ZO_IDC_TRACE_VIEW, OnView)
END_MESSAGE_MAP()

TraceSettingsDialog::TraceSettingsDialog(CWnd* parent) : CZoDialog(ZO_IDD_TRACE_SETTINGS, parent) {}

BOOL TraceSettingsDialog::OnInitDialog()
{
    const WORD level = CZoTrace::GetRegTraceLevel();
    m_bTracing = level != 0;
    m_nLevel = (std::max)(level, WORD{1});
    DWORD noAutoDetect = 0;
    CZoGlobalConfig().GetValue(ZO_MODE_LOCAL_MACHINE, kDevicesKey, kNoAutoDetect, noAutoDetect, 0);
    m_bNoAutoDetect = noAutoDetect != 0;
    SendDlgItemMessage(ZO_IDC_TRACE_LEVEL, EM_LIMITTEXT, kMostLevelDigits);
    CZoDialog::OnInitDialog();
    FillList();
    EnableControls();
    CenterWindow();
    return TRUE;
}

void TraceSettingsDialog::DoDataExchange(CDataExchange* exchange)
{
    CZoDialog::DoDataExchange(exchange);
    DDX_Check(exchange, ZO_IDC_TRACE_ON, m_bTracing);
    if (::GetDlgItem(m_hWnd, ZO_IDC_TRACE_NO_DETECTION) != nullptr) // a host's template may do without
        DDX_Check(exchange, ZO_IDC_TRACE_NO_DETECTION, m_bNoAutoDetect);
    if (exchange->m_bSaveAndValidate && !m_bTracing)
        return; // whatever stands in the field that cannot be reached
    DDX_Text(exchange, ZO_IDC_TRACE_LEVEL, m_nLevel);
    ZoDDV_CfgMinMaxUIntStr(exchange, m_nLevel, 0, kMostLevel, 0);
}

void TraceSettingsDialog::OnOK()
{
    if (!UpdateData(TRUE))
        return;
    CZoTrace::SetRegTraceLevel(static_cast<WORD>(m_bTracing ? (std::max)(m_nLevel, 1u) : 0));
    CZoGlobalConfig().SetValue(ZO_MODE_LOCAL_MACHINE, kDevicesKey, kNoAutoDetect, static_cast<DWORD>(m_bNoAutoDetect));
    EndDialog(IDOK);
}

void TraceSettingsDialog::EnableControls()
{
    ::EnableWindow(::GetDlgItem(m_hWnd, ZO_IDC_TRACE_LEVEL), IsDlgButtonChecked(ZO_IDC_TRACE_ON));
    ::EnableWindow(::GetDlgItem(m_hWnd, ZO_IDC_TRACE_VIEW), ::SendMessageA(List(), LB_GETCURSEL, 0, 0) != LB_ERR);
}

// Trace files ---------------------------------------------------------------------------------------------------------

HWND TraceSettingsDialog::List() const { return ::GetDlgItem(m_hWnd, ZO_IDC_TRACE_FILES); }

void TraceSettingsDialog::FillList()
{
    WithoutThrowing([this] {
        ListFilling filling(List());
        const CString pattern = BesideExecutable("*.TRC");
        WIN32_FIND_DATAA entry;
        const FolderSearch search(pattern, entry);
        for (bool found = search.IsOpen(); found; found = search.FindNext(entry)) {
            if (!IsFolder(entry))
                filling.Add(Describe(entry));
        }
        return TRUE;
    });
    ::SendMessageA(List(), LB_SETCURSEL, 0, 0); // of an empty list nothing is selected
}

void TraceSettingsDialog::OnView()
{
    WithoutThrowing([this]() -> BOOL {
        CString path = RowText(List(), ::SendMessageA(List(), LB_GETCURSEL, 0, 0));
        if (path.IsEmpty())
            return FALSE;
        path = path.Left(path.Find('(')); // where the date begins; a folder with one in its name is cut there too
        path.TrimLeft();
        path.TrimRight();
        if (::WinExec("NOTEPAD.EXE " + path, SW_SHOWNORMAL) <= kLastWinExecError)
            AfxMessageBox(kCannotView, MB_ICONEXCLAMATION);
        return TRUE;
    });
}
