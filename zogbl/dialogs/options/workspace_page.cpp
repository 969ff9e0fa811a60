#include <zogbl/workspace_page.h>

#include <common/without_throwing.h>
#include <zogbl/dialog.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>
#include <zogbl/select_directory.h>

#include "dialogs/base/tell_user.h"
#include "dialogs/files/folder_picker.h"
#include "dialogs/files/places.h"
#include "ground/bounded_text.h"

BEGIN_MESSAGE_MAP(CZoWorkspacePage, CZoPropertyPage)
    ON_BN_CLICKED(ZO_IDC_WORKSPACE_BROWSE, OnBrowse)
END_MESSAGE_MAP()

CZoWorkspacePage::CZoWorkspacePage() : CZoPropertyPage(ZO_IDD_WORKSPACE) {}

CZoWorkspacePage::~CZoWorkspacePage() = default;

BOOL CZoWorkspacePage::OnInitDialog()
{
    ZoLoadWorkspace(m_workspace);
    m_bNovice = ZoGblGetRegNoviceMode() != 0;
    m_csFolder = m_workspace.folder;
    CZoPropertyPage::OnInitDialog();
    static constexpr ZoFollowing kFollowing[] = {{ZO_IDC_WORKSPACE_FOLDER, ZoFollowing::kWiden},
                                                 {ZO_IDC_WORKSPACE_BROWSE, ZoFollowing::kMoveRight}};
    MakeSizable(kFollowing, static_cast<int>(std::size(kFollowing)));
    SendDlgItemMessage(ZO_IDC_WORKSPACE_RECENT_SPIN, UDM_SETRANGE, 0, MAKELPARAM(ZoWorkspace::MOST_RECENT, 0));
    SendDlgItemMessage(ZO_IDC_WORKSPACE_FOLDER, EM_LIMITTEXT, MAX_PATH - 1);
    return TRUE;
}

void CZoWorkspacePage::DoDataExchange(CDataExchange* exchange)
{
    struct Exchanging {
        explicit Exchanging(bool& flag) : flag(flag) { flag = true; }
        ~Exchanging() { flag = false; }
        bool& flag;
    } const exchanging(m_bExchanging);
    DDX_Check(exchange, ZO_IDC_WORKSPACE_WINDOWS, m_workspace.restoreWindows);
    DDX_Check(exchange, ZO_IDC_WORKSPACE_CONFIRM, m_workspace.confirmLeaving);
    DDX_Check(exchange, ZO_IDC_WORKSPACE_TOOL_BAR, m_workspace.toolBar);
    DDX_Check(exchange, ZO_IDC_WORKSPACE_STATUS_BAR, m_workspace.statusBar);
    DDX_Check(exchange, ZO_IDC_WORKSPACE_NOVICE, m_bNovice);
    int recent = m_workspace.recentFiles;
    DDX_Text(exchange, ZO_IDC_WORKSPACE_RECENT, recent);
    DDV_MinMaxInt(exchange, recent, 0, ZoWorkspace::MOST_RECENT);
    m_workspace.recentFiles = recent;
    DDX_Text(exchange, ZO_IDC_WORKSPACE_FOLDER, m_csFolder);
}

/// Whatever the user changes, Apply can be pressed.
BOOL CZoWorkspacePage::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT number = LOWORD(wParam), code = HIWORD(wParam);
    if (!m_bExchanging && lParam != 0 &&
        (code == EN_CHANGE || (code == BN_CLICKED && number != ZO_IDC_WORKSPACE_BROWSE)))
        SetModified();
    return CZoPropertyPage::OnCommand(wParam, lParam);
}

void CZoWorkspacePage::OnBrowse()
{
    char path[MAX_PATH] = "", start[MAX_PATH] = "";
    const BOOL done = WithoutThrowing([&]() -> BOOL {
        GetDlgItemText(ZO_IDC_WORKSPACE_FOLDER, start, sizeof start);
        return ZoSelectDirectory(path, sizeof path, ::GetParent(m_hWnd), start, ZO_SELECT_KEEP_CASE, 0, nullptr,
                                 LoadText(ZO_IDS_WORKSPACE_CHOOSE_FOLDER)) == IDOK;
    });
    if (done)
        ::SetDlgItemTextA(m_hWnd, ZO_IDC_WORKSPACE_FOLDER, path);
}

/// Takes the folder from its field. \return FALSE if it cannot be one, or is not there and is not to be made; the user
/// has been told. Throws CMemoryException*.
BOOL CZoWorkspacePage::TakeFolder()
{
    CString folder = m_csFolder;
    folder.TrimLeft();
    folder.TrimRight();
    if (folder == m_workspace.folder)
        return TRUE; // its drive may sleep
    if (!folder.IsEmpty()) {
        const CString full = ResolvePath(CurrentFolder(), folder);
        if (full.IsEmpty() || !IsValidPath(full)) {
            AskUser(*GetParent(), full.IsEmpty() ? ZO_IDS_FILE_TOO_LONG : ZO_IDS_FILE_INVALID, folder,
                    MB_OK | MB_ICONEXCLAMATION);
            return FALSE;
        }
        if (!FolderExists(full) && !OfferToCreateFolder(full, 0))
            return FALSE;
        folder = TrimBackslash(full);
    }
    CopyBounded(m_workspace.folder, sizeof m_workspace.folder, folder);
    ::SetDlgItemTextA(m_hWnd, ZO_IDC_WORKSPACE_FOLDER, folder);
    return TRUE;
}

BOOL CZoWorkspacePage::OnKillActive()
{
    if (!CZoPropertyPage::OnKillActive())
        return FALSE;
    if (WithoutThrowing([this] { return TakeFolder(); }))
        return TRUE;
    SendDlgItemMessage(ZO_IDC_WORKSPACE_FOLDER, EM_SETSEL, 0, -1);
    ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_WORKSPACE_FOLDER));
    return FALSE;
}

BOOL CZoWorkspacePage::OnApply()
{
    bool isKept = ZoSaveWorkspace(m_workspace) == ERROR_SUCCESS;
    const auto isNoviceKept = [this] { return (m_bNovice != FALSE) == (ZoGblGetRegNoviceMode() != 0); };
    if (isKept && !isNoviceKept()) {
        ZoGblSetRegNoviceMode(m_bNovice);
        isKept = isNoviceKept(); // it reports no error
    }
    if (!isKept) {
        WithoutThrowing([this] { AskUser(*GetParent(), ZO_IDS_WORKSPACE_NOT_SAVED, "", MB_OK | MB_ICONEXCLAMATION); });
        return FALSE;
    }
    return CZoPropertyPage::OnApply();
}
