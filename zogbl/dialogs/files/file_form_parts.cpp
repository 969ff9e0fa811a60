#include "file_form_parts.h"

#include <zogbl/ask_name_dialog.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "place_list.h"

#include <utility>

namespace {

constexpr UINT_PTR kLookTimer = 0x5A46; // among those of any window
constexpr UINT kLookEvery = 50;         // milliseconds
constexpr DWORD kPatience = 400;        // milliseconds for an answer before it is shown that there is none yet

/// A folder and those that it lies in, the drive last.
void AddWithAllAbove(std::vector<CString>& folders, const CString& folder)
{
    for (CString next = folder; !RootOf(next).IsEmpty(); next = ParentOf(next)) {
        folders.push_back(next);
        if (next == RootOf(next))
            break;
    }
}

/// The drive of the system, which answers as long as there is a system.
CString SystemDrive()
{
    char folder[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(folder, sizeof folder);
    const CString root = length < sizeof folder ? RootOf(folder) : CString();
    return root.IsEmpty() ? CString("C:\\") : root;
}

} // namespace

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
    CZoAskNameDialog dialog(LoadText(ZO_IDS_NEW_FOLDER_TITLE), LoadText(ZO_IDS_NEW_FOLDER_PROMPT), &m_window);
    CStringArray taken;
    for (const CString& name : m_inside)
        taken.Add(name);
    if (!dialog.SetFileName() || !dialog.SetTakenNames(taken) || !dialog.SetName(proposal))
        AfxThrowMemoryException();
    if (dialog.DoModal() != IDOK)
        return;
    PlaceQuestion question;
    question.create = JoinPath(m_csFolder, dialog.GetName());
    question.folders.push_back(question.create);
    question.patterns = PatternsInForce();
    const CString target = question.create;
    Ask(Purpose::kCreate, target, std::move(question));
}

// Questions -----------------------------------------------------------------------------------------------------------

CString FileFormParts::PatternsInForce() const { return m_csPattern.IsEmpty() ? m_types.GetPatterns() : m_csPattern; }

/// Shows the first folder that can be read: the one to begin in or one that it lies in, the current one or one that
/// that lies in, or the system's drive.
void FileFormParts::StartInFirst()
{
    const CString current = CurrentFolder();
    const CString start(m_form.m_ofn.lpstrFile);
    const CString initial(m_form.m_ofn.lpstrInitialDir);
    const int offset = NameOffset(start);
    PlaceQuestion question;
    CString name = start.Mid(offset);
    question.named = start.IsEmpty() ? start : ResolvePath(current, start);
    CString folder = initial.IsEmpty() ? current : ResolvePath(current, initial);
    if (offset > 0 && !question.named.IsEmpty())
        folder = ParentOf(question.named);
    if (name.FindOneOf("*?") >= 0) {
        m_csPattern = name;
        name.Empty();
        question.named.Empty();
    }
    AddWithAllAbove(question.folders, folder);
    AddWithAllAbove(question.folders, current);
    question.folders.push_back(SystemDrive());
    question.patterns = PatternsInForce();
    m_csFolder = question.folders.front(); // if none can be read, a full path can still be typed
    m_csTyped = name;
    m_name.ShowName(name);
    m_drives.SelectDrive(RootOf(m_csFolder));
    const CString target = question.named.IsEmpty() ? m_csFolder : question.named;
    Ask(Purpose::kStart, target, std::move(question));
}

void FileFormParts::GoTo(const CString& folder, Purpose purpose)
{
    PlaceQuestion question;
    question.folders.push_back(folder);
    question.patterns = PatternsInForce();
    Ask(purpose, folder, std::move(question));
}

/// What was asked before is no longer wanted.
void FileFormParts::Ask(Purpose purpose, const CString& target, PlaceQuestion question)
{
    BackgroundPtr<PlaceWork> work(new PlaceWork(question));
    m_csTarget = target;
    m_purpose = purpose;
    m_question = std::move(question);
    m_work = std::move(work);
    m_work->Begin();
    const CWaitCursor wait;
    if (m_work->IsOver(kPatience)) {
        TakeAnswer();
        return;
    }
    m_window.SetTimer(kLookTimer, kLookEvery, nullptr);
    m_label.ShowText(LoadText(ZO_IDS_FILE_OPENING, target));
}

void FileFormParts::GiveUp()
{
    m_work.reset();
    m_window.KillTimer(kLookTimer);
    m_label.ShowPath(m_csFolder);
    m_drives.SelectDrive(RootOf(m_csFolder));
    m_recents.SelectFolder(m_csFolder);
}

void FileFormParts::Look()
{
    if (m_work == nullptr || !m_work->IsOver())
        return;
    const bool isName = m_purpose == Purpose::kName;
    TakeAnswer();
    if (!isName || !m_bTaken)
        return;
    m_bWaits = true;
    m_form.OnNameTaken();
}

void FileFormParts::TakeAnswer()
{
    const BackgroundPtr<PlaceWork> work = std::move(m_work);
    m_window.KillTimer(kLookTimer);
    if (work->HasFailed()) {
        GiveUp();
        AfxThrowMemoryException();
    }
    const PlaceAnswer& answer = work->GetAnswer();
    switch (m_purpose) {
    case Purpose::kStart:
        ShowStart(answer);
        break;
    case Purpose::kName:
        TakeLookedUp(answer);
        break;
    case Purpose::kCreate:
        ShowCreated(answer);
        break;
    default:
        if (!answer.folder.IsEmpty()) {
            Show(answer);
        } else {
            GiveUp();
            if (m_purpose == Purpose::kShow)
                Refuse(ZO_IDS_FOLDER_UNREADABLE, m_csTarget);
        }
    }
}

void FileFormParts::Show(const PlaceAnswer& answer)
{
    m_inside = answer.contents.folders;
    m_inside.insert(m_inside.end(), answer.contents.files.begin(), answer.contents.files.end());
    m_csFolder = answer.folder;
    m_bWaits = false; // a name in another folder is another
    m_folders.ShowFolder(answer.folder, answer.contents.folders);
    m_files.ShowFiles(answer.contents.files);
    GiveUp(); // nothing more is asked
    EnableUp();
}

/// A name to begin with that is a folder is no name.
void FileFormParts::ShowStart(const PlaceAnswer& answer)
{
    const bool isUntouched = m_name.GetTyped() == m_csTyped;
    if (answer.isFolder && isUntouched)
        m_name.ShowName("");
    if (answer.folder.IsEmpty())
        GiveUp();
    else
        Show(answer);
    if (isUntouched) {
        m_csSettled = m_name.GetTyped();
        m_csSettledFolder = m_csFolder;
    }
}

void FileFormParts::ShowCreated(const PlaceAnswer& answer)
{
    if (answer.createError != ERROR_SUCCESS) {
        const CString folder = m_csTarget;
        GiveUp();
        Refuse(answer.createError == ERROR_ALREADY_EXISTS ? ZO_IDS_FOLDER_TAKEN : ZO_IDS_FOLDER_NOT_CREATED, folder);
        AskNewFolder(NameOf(folder)); // with what was typed
    } else if (answer.folder.IsEmpty()) {
        GiveUp();
        Refuse(ZO_IDS_FOLDER_UNREADABLE, m_csTarget);
    } else {
        Show(answer);
        m_window.SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_name.m_hWnd), TRUE);
    }
}
