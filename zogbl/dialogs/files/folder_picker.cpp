#include "folder_picker.h"

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/tell_user.h"
#include "place_list.h"

#include <utility>

// Life ----------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(FolderPicker, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_FOLDER_NEW, OnNewFolder)
    ON_EN_CHANGE(ZO_IDC_FOLDER_PATH, OnPathTyped)
    ON_WM_TIMER()
END_MESSAGE_MAP()

FolderPicker::FolderPicker(LPCSTR start, LPCSTR title, LPCSTR instruction, UINT helpContext, CWnd* parent)
    : CZoDialog(ZO_IDD_SELECT_FOLDER, parent), m_pszStart(start), m_pszTitle(title), m_pszInstruction(instruction),
      m_nHelpContext(helpContext)
{
}

INT_PTR FolderPicker::DoModal()
{
    return ResultOr(-1, [this] { return CZoDialog::DoModal(); });
}

BOOL FolderPicker::OnInitDialog()
{
    if (!WithoutThrowing([this] { Prepare(); }))
        EndDialog(-1);
    return TRUE;
}

/// Throws CMemoryException*.
void FolderPicker::Prepare()
{
    CZoDialog::OnInitDialog();
    const CWaitCursor wait;
    m_label.SubclassDlgItem(ZO_IDC_FOLDER_INSTRUCTION, this);
    ReloadTexts();
    SendDlgItemMessage(ZO_IDC_FOLDER_PATH, EM_LIMITTEXT, kTypedLimit);
    m_tree.SubclassDlgItem(ZO_IDC_FOLDER_TREE, this);
    m_tree.Begin();
    StartInFirst();
    CenterWindow();
}

void FolderPicker::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    if (m_pszTitle != nullptr)
        SetWindowText(m_pszTitle);
    if (m_pszInstruction != nullptr)
        m_csInstruction = m_pszInstruction;
    else
        m_label.GetWindowText(m_csInstruction);
    ShowInstruction();
}

void FolderPicker::ShowInstruction()
{
    if (m_work != nullptr)
        m_label.ShowText(LoadText(ZO_IDS_FILE_OPENING, m_csTarget));
    else
        m_label.SetWindowText(m_csInstruction);
}

void FolderPicker::ShowPath(const CString& path)
{
    SetDlgItemText(ZO_IDC_FOLDER_PATH, path);
    SendDlgItemMessage(ZO_IDC_FOLDER_PATH, EM_SETSEL, 0, -1);
}

// Questions -----------------------------------------------------------------------------------------------------------

/// The nearest folder there is to the one to begin with, or to the current one.
void FolderPicker::StartInFirst()
{
    const CString current = CurrentFolder();
    PlaceQuestion question;
    question.named = ResolvePath(current, CString(m_pszStart));
    if (!IsValidPath(question.named))
        question.named = ParentOf(question.named);
    AddWithAllAbove(question.folders, question.named);
    AddWithAllAbove(question.folders, current);
    question.withAbove = true;
    const CString start = question.named;
    ShowPath(start);
    Ask(Purpose::kStart, start, nullptr, std::move(question));
}

/// What was asked before is no longer wanted.
void FolderPicker::Ask(Purpose purpose, const CString& target, HTREEITEM item, PlaceQuestion question)
{
    BackgroundPtr<PlaceWork> work(new PlaceWork(std::move(question)));
    m_csTarget = target;
    m_hTarget = item;
    m_purpose = purpose;
    m_work = std::move(work);
    m_work->Begin();
    const CWaitCursor wait;
    if (m_work->IsOver(kPlacePatience)) {
        TakeAnswer();
        return;
    }
    SetTimer(kLookTimer, kLookAtPlaceEvery, nullptr);
    ShowInstruction();
}

void FolderPicker::AskItem(Purpose purpose, HTREEITEM item)
{
    PlaceQuestion question;
    const CString folder = m_tree.PathOf(item);
    question.folders.push_back(folder);
    Ask(purpose, folder, item, std::move(question));
}

void FolderPicker::GiveUp()
{
    m_work.reset();
    KillTimer(kLookTimer);
    ShowInstruction();
}

/// An answer waits while a box is shown over the dialog.
void FolderPicker::OnTimer(UINT_PTR)
{
    if (m_work != nullptr && IsWindowEnabled() && m_work->IsOver())
        WithoutThrowing([this] { TakeAnswer(); });
}

/// Another path: the one before is no longer wanted.
void FolderPicker::OnPathTyped()
{
    if (m_work != nullptr && m_purpose == Purpose::kTake)
        WithoutThrowing([this] { GiveUp(); });
}

void FolderPicker::TakeAnswer()
{
    const BackgroundPtr<PlaceWork> work = std::move(m_work);
    GiveUp();
    if (work->HasFailed())
        AfxThrowMemoryException();
    const PlaceAnswer& answer = work->GetAnswer();
    switch (m_purpose) {
    case Purpose::kStart:
        TakeStart(answer);
        break;
    case Purpose::kOpen:
        TakeContents(answer);
        break;
    case Purpose::kNewFolder:
        MakeFolder(answer);
        break;
    case Purpose::kTake:
        TakePath(answer);
        break;
    }
}

/// What was typed meanwhile stays.
void FolderPicker::TakeStart(const PlaceAnswer& answer)
{
    const bool isUntouched = TypedText(::GetDlgItem(m_hWnd, ZO_IDC_FOLDER_PATH)) == m_csTarget;
    const CString folder = answer.isFolder ? m_csTarget : answer.folder;
    if (!folder.IsEmpty())
        m_tree.Show(folder, answer.above);
    if (isUntouched)
        ShowPath(folder.IsEmpty() ? CurrentFolder() : folder);
}

void FolderPicker::TakeContents(const PlaceAnswer& answer)
{
    if (answer.folder.IsEmpty()) {
        Refuse(ZO_IDS_FOLDER_UNREADABLE, m_csTarget);
        return;
    }
    m_tree.Fill(m_hTarget, answer.contents);
    m_tree.Open(m_hTarget);
}

// The tree ------------------------------------------------------------------------------------------------------------

BOOL FolderPicker::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (wParam != ZO_IDC_FOLDER_TREE)
        return CZoDialog::OnNotify(wParam, lParam, result);
    WithoutThrowing([&] { *result = OnTreeNotify(reinterpret_cast<NMHDR*>(lParam)); });
    return TRUE;
}

LRESULT FolderPicker::OnTreeNotify(NMHDR* header)
{
    switch (header->code) {
    case TVN_GETDISPINFOA:
        m_tree.TellWhetherOpens(reinterpret_cast<NMTVDISPINFOA*>(header)->item);
        return 0;
    case TVN_ITEMEXPANDINGA: {
        const auto& change = *reinterpret_cast<const NMTREEVIEWA*>(header);
        if ((change.action & TVE_EXPAND) == 0 || m_tree.IsShowing())
            return FALSE;
        AskItem(Purpose::kOpen, change.itemNew.hItem); // a branch is read each time that the user opens it
        return TRUE;                                   // the answer opens it
    }
    case TVN_SELCHANGEDA:
        if (!m_tree.IsShowing())
            ShowPath(m_tree.PathOf(reinterpret_cast<const NMTREEVIEWA*>(header)->itemNew.hItem));
        return 0;
    case TVN_BEGINLABELEDITA:
        return reinterpret_cast<const NMTVDISPINFOA*>(header)->item.hItem != m_hNamed;
    case TVN_ENDLABELEDITA:
        return TakeNewName(reinterpret_cast<const NMTVDISPINFOA*>(header)->item);
    default:
        return 0;
    }
}

// The end -------------------------------------------------------------------------------------------------------------

void FolderPicker::OnOK()
{
    m_tree.SendMessage(TVM_ENDEDITLABELNOW, FALSE);
    WithoutThrowing([this] {
        const HWND field = ::GetDlgItem(m_hWnd, ZO_IDC_FOLDER_PATH);
        const CString typed = TypedText(field);
        if (typed.IsEmpty())
            ::SetFocus(field);
        else
            LookUp(typed);
        return TRUE;
    });
}

void FolderPicker::OnCancel()
{
    m_tree.SendMessage(TVM_ENDEDITLABELNOW, TRUE);
    CZoDialog::OnCancel();
}

void FolderPicker::LookUp(const CString& typed)
{
    const CString selected = m_tree.GetSelectedFolder();
    const CString path = ResolvePath(selected.IsEmpty() ? CString("C:\\") : selected, typed);
    if (path.IsEmpty() || path.GetLength() >= MAX_PATH) {
        Refuse(ZO_IDS_FILE_TOO_LONG, typed);
    } else if (!IsValidPath(path)) {
        Refuse(ZO_IDS_FILE_INVALID, typed);
    } else {
        PlaceQuestion question;
        question.named = path;
        question.folders.push_back(RootOf(path)); // whether the drive answers
        Ask(Purpose::kTake, path, nullptr, std::move(question));
    }
}

void FolderPicker::TakePath(const PlaceAnswer& answer)
{
    const CString path = m_csTarget;
    if (!answer.isFolder && answer.isSilent) {
        Refuse(ZO_IDS_FOLDER_UNREADABLE, path);
    } else if (answer.isFolder || OfferToCreateFolder(path, m_nHelpContext)) {
        m_csPath = path;
        EndDialog(IDOK);
    }
}

/// Says why a path cannot be taken, and lets it be corrected.
void FolderPicker::Refuse(UINT message, LPCSTR path) { AskUser(*this, message, path, MB_OK | MB_ICONEXCLAMATION); }
