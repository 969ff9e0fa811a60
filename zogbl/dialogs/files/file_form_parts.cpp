#include "file_form_parts.h"

#include <zogbl/ask_name_dialog.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "place_list.h"

#include <utility>

// Controls ------------------------------------------------------------------------------------------------------------

void FileFormParts::Begin()
{
    Attach(m_name, ZO_IDC_FILE_NAME);
    Attach(m_files, ZO_IDC_FILE_LIST);
    Attach(m_types, ZO_IDC_FILE_TYPES);
    Attach(m_folders, ZO_IDC_FILE_FOLDERS);
    Attach(m_drives, ZO_IDC_FILE_DRIVES);
    Attach(m_recents, ZO_IDC_FILE_RECENT);
    Attach(m_label, ZO_IDC_FILE_FOLDER);
    PrepareButtons();
    AlignRows();
    m_types.Fill(m_form.m_ofn.lpstrFilter, m_form.m_ofn.nFilterIndex);
    const CWaitCursor wait;
    m_drives.Fill();
    m_recents.Fill();
    StartInFirst();
    m_csSettled = m_name.GetTyped();
    m_csSettledFolder = m_csFolder;
}

void FileFormParts::Attach(CWnd& control, int id)
{
    if (Item(id) != nullptr && !control.SubclassDlgItem(static_cast<UINT>(id), &m_window))
        AfxThrowMemoryException();
}

void FileFormParts::PrepareButtons()
{
    const DWORD flags = m_form.m_ofn.Flags;
    m_window.CheckDlgButton(ZO_IDC_FILE_READ_ONLY, (flags & OFN_READONLY) != 0);
    if ((flags & OFN_HIDEREADONLY) != 0)
        ::ShowWindow(Item(ZO_IDC_FILE_READ_ONLY), SW_HIDE);
    if (m_form.IsOpenDialog())
        ::ShowWindow(Item(ZO_IDC_FILE_NEW_FOLDER), SW_HIDE);
}

/// The fields of boxes without pictures are as high as those with them.
void FileFormParts::AlignRows()
{
    CComboBox* const boxes[] = {&m_drives, &m_types, &m_recents};
    for (CComboBox* box : boxes) {
        if (box->m_hWnd != nullptr)
            box->SetItemHeight(-1, static_cast<UINT>(PlaceRowHeight(box->m_hWnd)));
    }
}

/// Keys must not go to a button that is disabled.
void FileFormParts::EnableUp()
{
    const HWND up = Item(ZO_IDC_FILE_UP);
    const bool leadsOn = m_csFolder != RootOf(m_csFolder);
    if (!leadsOn && up != nullptr && ::GetFocus() == up)
        m_window.SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_name.m_hWnd), TRUE);
    ::EnableWindow(up, leadsOn);
}

void FileFormParts::ReloadTexts()
{
    if (m_work != nullptr)
        m_label.ShowText(LoadText(ZO_IDS_FILE_OPENING, m_csTarget));
}

BOOL FileFormParts::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    switch (message) {
    case WM_COMMAND:
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return FALSE; // for the window's own handlers
    case WM_TIMER:
        if (wParam != kLookTimer)
            return FALSE;
        Look();
        return TRUE;
    case WM_SETCURSOR:
        if (m_work == nullptr || LOWORD(lParam) != HTCLIENT)
            return FALSE;
        ::SetCursor(::LoadCursorA(nullptr, IDC_APPSTARTING));
        result = TRUE;
        return TRUE;
    case WM_DESTROY:
        m_work.reset(); // if it is still waiting, it ends by itself
        m_window.KillTimer(kLookTimer);
        return FALSE;
    default:
        return FALSE;
    }
}

void FileFormParts::OnCommand(int control, int code)
{
    switch (control) {
    case ZO_IDC_FILE_NAME:
        if (code == EN_CHANGE)
            OnNameTyped();
        break;
    case ZO_IDC_FILE_LIST:
        if (code == LBN_SELCHANGE || code == LBN_DBLCLK)
            OnFileSelected();
        if (code == LBN_DBLCLK)
            m_form.OnFileChosen();
        break;
    case ZO_IDC_FILE_FOLDERS:
        if (code == LBN_DBLCLK && !m_folders.GetSelectedFolder().IsEmpty())
            GoTo(m_folders.GetSelectedFolder());
        break;
    case ZO_IDC_FILE_TYPES:
        if (code == CBN_SELCHANGE)
            OnTypeSelected();
        break;
    case ZO_IDC_FILE_DRIVES: // nothing is read while a person still looks through the open list
        if (code == CBN_CLOSEUP || (code == CBN_SELCHANGE && !m_drives.GetDroppedState()))
            OnDriveClosed();
        break;
    case ZO_IDC_FILE_RECENT:
        if (code == CBN_CLOSEUP || (code == CBN_SELCHANGE && !m_recents.GetDroppedState()))
            OnRecentClosed();
        break;
    case ZO_IDC_FILE_UP:
        GoTo(ParentOf(m_csFolder));
        break;
    case ZO_IDC_FILE_NEW_FOLDER:
        AskNewFolder(LoadText(ZO_IDS_FOLDER_NEW_NAME));
        break;
    default:
        break;
    }
}

void FileFormParts::OnFileSelected() { m_name.ShowName(m_files.GetSelectedFile()); }

/// Another name: the one before is no longer wanted.
void FileFormParts::OnNameTyped()
{
    if (m_work != nullptr && m_purpose == Purpose::kName && m_name.GetTyped() != m_csTyped)
        GiveUp();
}

void FileFormParts::OnTypeSelected()
{
    m_csPattern.Empty();
    if (m_work != nullptr && m_purpose == Purpose::kCreate)
        return; // it is made but once, and there are no files in it
    if (m_work == nullptr || m_purpose == Purpose::kName) {
        GoTo(m_csFolder, Purpose::kRenew);
        return;
    }
    PlaceQuestion question = m_question;
    question.patterns = PatternsInForce();
    Ask(m_purpose, m_csTarget, std::move(question));
}

void FileFormParts::OnDriveClosed()
{
    const CString drive = m_drives.GetDrive();
    if (drive.IsEmpty() || drive.CompareNoCase(RootOf(m_work != nullptr ? m_csTarget : m_csFolder)) == 0)
        return;
    if (drive.CompareNoCase(RootOf(m_csFolder)) == 0)
        GiveUp();
    else
        GoTo(drive);
}

void FileFormParts::OnRecentClosed()
{
    const CString folder = m_recents.GetFolder();
    if (!folder.IsEmpty() && folder.CompareNoCase(m_work != nullptr ? m_csTarget : m_csFolder) != 0)
        GoTo(folder);
}

void FileFormParts::AskNewFolder(const CString& proposal)
{
    const CString folder = m_csFolder;
    CZoAskNameDialog dialog(LoadText(ZO_IDS_NEW_FOLDER_TITLE), LoadText(ZO_IDS_NEW_FOLDER_PROMPT), &m_window);
    CStringArray taken;
    for (const CString& name : m_inside)
        taken.Add(name);
    if (!dialog.SetFileName() || !dialog.SetTakenNames(taken) || !dialog.SetName(proposal))
        AfxThrowMemoryException();
    if (dialog.DoModal() != IDOK)
        return;
    PlaceQuestion question;
    question.create = JoinPath(folder, dialog.GetName());
    question.folders.push_back(question.create);
    question.patterns = PatternsInForce();
    const CString target = question.create;
    Ask(Purpose::kCreate, target, std::move(question));
}
