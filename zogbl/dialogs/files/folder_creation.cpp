// New folders: one that is missing, and one that the user makes in the tree and names.
#include <common/without_throwing.h>
#include <zogbl/directory_functions.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "folder_picker.h"

#include <utility>

bool OfferToCreateFolder(LPCSTR folder, UINT helpContext)
{
    const CString path = TrimBackslash(folder); // behind one there would be a folder without a name to be made
    if (AfxMessageBox(LoadText(ZO_IDS_CREATE_FOLDER, folder), MB_YESNO | MB_ICONQUESTION, helpContext) != IDYES)
        return false;
    const CString failed = LoadText(ZO_IDS_FOLDER_NOT_CREATED, folder);
    for (;;) {
        unsigned long exists = 0;
        if (CZoGlobalDirectoryFunctions::CreateDirChain(path, exists) == 0 && FolderExists(path))
            return true;
        if (AfxMessageBox(failed, MB_RETRYCANCEL | MB_ICONEXCLAMATION) != IDRETRY)
            return false;
    }
}

void FolderPicker::OnNewFolder()
{
    WithoutThrowing([this] {
        if (const HTREEITEM parent = m_tree.GetSelectedItem())
            AskItem(Purpose::kNewFolder, parent);
    });
}

void FolderPicker::MakeFolder(const PlaceAnswer& answer)
{
    const CString folder = m_csTarget;
    const CString plain = LoadText(ZO_IDS_FOLDER_NEW_NAME);
    if (answer.isSilent || plain.IsEmpty()) {
        Refuse(ZO_IDS_FOLDER_UNREADABLE, folder);
        return;
    }
    CString name = plain;
    for (int number = 2; ::GetFileAttributesA(JoinPath(folder, name)) != INVALID_FILE_ATTRIBUTES; ++number)
        name.Format("%s (%d)", (LPCSTR)plain, number);
    const CString path = JoinPath(folder, name);
    if (m_tree.GetChildItem(m_hTarget) == nullptr)
        m_tree.Fill(m_hTarget, answer.contents); // before there is one more
    CZoGlobalDirectoryFunctions::Create(path);
    if (!FolderExists(path)) {
        Refuse(ZO_IDS_FOLDER_NOT_CREATED, path);
        return;
    }
    m_tree.Show(path, {});
    ShowPath(path);
    ::SetFocus(m_tree);
    m_hNamed = m_tree.GetSelectedItem();
    m_tree.EditLabel(m_hNamed);
}

/// \return whether the tree is to take the name.
LRESULT FolderPicker::TakeNewName(const TVITEMA& item)
{
    // Null when the user gave up. A box that takes the focus ends the naming once more.
    if (std::exchange(m_hNamed, nullptr) != item.hItem || item.pszText == nullptr)
        return FALSE;
    const CString before = m_tree.PathOf(item.hItem);
    const CString name(item.pszText);
    const CString after = JoinPath(ParentOf(before), name);
    const bool isSame = ::lstrcmpiA(before, after) == 0; // but for the case of letters
    UINT refusal = 0;
    if (name.IsEmpty() || name.FindOneOf("\\/") >= 0 || !IsValidPath(after))
        refusal = ZO_IDS_FILE_INVALID;
    else if (!isSame && ::GetFileAttributesA(after) != INVALID_FILE_ATTRIBUTES)
        refusal = ZO_IDS_FOLDER_TAKEN;
    else if (after != before && CZoGlobalDirectoryFunctions::Rename(before, after) != 0)
        refusal = ZO_IDS_FOLDER_NOT_RENAMED;
    if (refusal == 0)
        ShowPath(after);
    else
        Refuse(refusal, name);
    return refusal == 0;
}

BOOL FolderPicker::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_KEYDOWN && (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE)) {
        const CEdit* label = m_tree.GetEditControl();
        if (label != nullptr && label->m_hWnd == message->hwnd) {
            m_tree.SendMessage(TVM_ENDEDITLABELNOW, message->wParam == VK_ESCAPE);
            return TRUE;
        }
    }
    return CZoDialog::PreTranslateMessage(message);
}
