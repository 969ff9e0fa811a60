// What is asked of drives and folders, and what becomes of the answer.
#include "file_form_parts.h"

#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "place_list.h"

#include <utility>

namespace {

/// The drive of the system, which answers as long as there is a system.
CString SystemDrive()
{
    char folder[MAX_PATH] = "";
    const UINT length = ::GetWindowsDirectoryA(folder, sizeof folder);
    const CString root = length < sizeof folder ? RootOf(folder) : CString();
    return root.IsEmpty() ? CString("C:\\") : root;
}

} // namespace

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
    if (m_work->IsOver(kPlacePatience)) {
        TakeAnswer();
        return;
    }
    m_window.SetTimer(kLookTimer, kLookAtPlaceEvery, nullptr);
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

/// An answer waits while another page is shown, or a box over the window.
void FileFormParts::Look()
{
    if (m_work == nullptr || !m_window.IsWindowVisible() || !Owner().IsWindowEnabled() || !m_work->IsOver())
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
