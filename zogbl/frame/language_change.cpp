// Choosing another language, and hearing of it.
#include <zogbl/language_support.h>

#include <common/without_throwing.h>
#include <zogbl/gdi_data.h>
#include <zogbl/global_config.h>
#include <zogbl/language_dialog.h>
#include <zogbl/module.h>
#include <zogbl/operating_system.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "frame/language/language_help.h"
#include "frame/language/language_window_table.h"
#include "ground/module_data.h"

#include <afxcoll.h>

UINT CZoLanguageSupport::GetUpdateMessage() { return RegisterWindowMessageA("ZoBrixelLanguageUpdate"); }

// Choosing ------------------------------------------------------------------------------------------------------------

/// Gives the object window, list and the language of the process: without them the process's last window, which is
/// often this one's, would not tell the application of a change.
void CZoLanguageSupport::FollowProcess()
{
    char path[kZoLibraryPathSize];
    if (!ZoGetLibraryPath(path) || (m_hWnd == nullptr && !Create()))
        return;
    const DWORD languageId = ZoGblGetLanguageLCID();
    if ((languageId == 0 || !LoadSpecificLanguage(languageId, path, FALSE)) && m_hLanguageLibrary == nullptr)
        LoadCurrentLanguage(path);
}

BOOL CZoLanguageSupport::SelectLanguage(CWnd* parent)
{
    const LanguageHelp help;
    if (m_hLanguageLibrary == nullptr)
        FollowProcess();
    CZoLanguageSelectionDlg dialog(m_languages, parent);
    if (dialog.DoModal() != IDOK)
        return TRUE;
    const DWORD languageId = dialog.GetLanguageId();
    UpdateAllBrixelLanguages(languageId);
    if (CZoGlobalOperatingSystem::GetType() != ZO_OS_WIN32S) {
        FollowProcess(); // to a window that has the language already a change is none
        ZoBroadcastLanguageChange(s_changeMessage, languageId);
    } else {
        CString text;
        ZoGblLoadString(ZO_IDS_LANGUAGE_LATER, text);
        AfxMessageBox(text, MB_ICONINFORMATION);
    }
    return TRUE;
}

DWORD CZoLanguageSupport::EnumKeysCallback(void* array, LPCSTR keyName)
{
    WithoutThrowing([=] { return static_cast<CStringArray*>(array)->Add(keyName) >= 0; });
    return ERROR_SUCCESS;
}

DWORD CZoLanguageSupport::UpdateAllBrixelLanguages(DWORD languageId)
{
    if (!ReadLanguageList(m_csLanguageModuleName))
        return ERROR_SUCCESS;
    WithoutThrowing([&]() -> BOOL {
        DWORD major = 0;
        DWORD build = 0;
        m_version.GetProductVersionMajorMinor(major, build);
        CString version;
        version.Format("%d.%d", HIWORD(major), LOWORD(major));
        const CString modulesKey = m_version.GetInstalledModulesKey();
        CStringArray modules;
        CZoGlobalConfig().EnumEntries(ZO_MODE_LOCAL_MACHINE, modulesKey, &EnumKeysCallback, &modules);
        const INT_PTR chosen = FindLanguage(languageId);
        for (INT_PTR i = 0; chosen >= 0 && i < modules.GetSize(); ++i) {
            m_dwPendingId = languageId;
            WriteChoice(modulesKey + "\\" + modules[i] + "\\" + version, chosen);
        }
        return TRUE;
    });
    return ERROR_SUCCESS;
}

// Hearing of it -------------------------------------------------------------------------------------------------------

LRESULT CZoLanguageSupport::OnLanguageChanged(WPARAM languageId, LPARAM last)
{
    if (languageId == m_dwLoadedId)
        return 0;
    if (!LoadSpecificLanguage(static_cast<DWORD>(languageId), CString(m_csLanguageModuleName), FALSE) || last < 1)
        return 1;
    CZoGlobalGDIData::InitializeFontsFromResources();
    const CWinApp* application = AfxGetApp();
    if (application != nullptr && application->m_pMainWnd != nullptr)
        application->m_pMainWnd->PostMessage(s_updateMessage);
    return 1;
}
