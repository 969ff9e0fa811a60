#include "folder_picker.h"

#include <common/without_throwing.h>
#include <zogbl/directory_functions.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "dialogs/base/tell_user.h"
#include "ground/box_filling.h"
#include "place_list.h"

#include <utility>

namespace {

constexpr COLORREF kMask = RGB(255, 0, 255);

} // namespace

// Creating ------------------------------------------------------------------------------------------------------------

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

// Life ----------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(FolderPicker, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_FOLDER_NEW, OnNewFolder)
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
    ReloadTexts();
    SendDlgItemMessage(ZO_IDC_FOLDER_PATH, EM_LIMITTEXT, kTypedLimit);
    m_tree.SubclassDlgItem(ZO_IDC_FOLDER_TREE, this);
    MakePictures();
    m_tree.SetImageList(&m_pictures, TVSIL_NORMAL);
    CStringArray roots;
    ListDrives(roots);
    for (INT_PTR i = 0; i < roots.GetSize(); ++i)
        AddRoot(roots[i]);

    const CString current = CurrentFolder();
    CString start = ResolvePath(current, CString(m_pszStart));
    while (!IsValidPath(start) || !FolderExists(start)) { // the nearest folder there is
        const CString parent = ParentOf(start);
        if (parent.IsEmpty() || parent == start) {
            start = current;
            break;
        }
        start = parent;
    }
    if (!start.IsEmpty())
        Select(start);
    CenterWindow();
}

/// Throws CMemoryException*.
void FolderPicker::MakePictures()
{
    const CRect all(0, 0, kPlacePictures * kPictureSize, kPictureSize);
    CClientDC screen(nullptr);
    CBitmap bitmap;
    CDC memory;
    if (!bitmap.CreateCompatibleBitmap(&screen, all.Width(), all.Height()) || !memory.CreateCompatibleDC(&screen))
        return;
    CBitmap* before = memory.SelectObject(&bitmap);
    memory.FillSolidRect(all, kMask);
    for (int i = 0; i < kPlacePictures; ++i)
        DrawPlacePicture(memory, i * kPictureSize, 0, static_cast<PlacePicture>(i));
    memory.SelectObject(before);
    if (m_pictures.Create(kPictureSize, kPictureSize, ILC_COLOR24 | ILC_MASK, kPlacePictures, 0))
        m_pictures.Add(&bitmap, kMask);
}

void FolderPicker::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    if (m_pszTitle != nullptr)
        SetWindowText(m_pszTitle);
    if (m_pszInstruction != nullptr)
        SetDlgItemText(ZO_IDC_FOLDER_INSTRUCTION, m_pszInstruction);
}

// The tree ------------------------------------------------------------------------------------------------------------

/// \param root its place among the roots, counted from 1; 0: it is none
HTREEITEM FolderPicker::AddItem(HTREEITEM parent, LPCSTR text, int picture, int root)
{
    TVINSERTSTRUCTA insertion = {};
    insertion.hParent = parent;
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
    insertion.item.pszText = const_cast<LPSTR>(text);
    insertion.item.iImage = picture;
    insertion.item.iSelectedImage = root != 0 ? picture : static_cast<int>(PlacePicture::kOpenFolder);
    insertion.item.cChildren = root != 0 ? 1 : I_CHILDRENCALLBACK; // a drive is not read before it has to be
    insertion.item.lParam = root;
    return m_tree.InsertItem(&insertion);
}

void FolderPicker::AddRoot(const CString& root)
{
    const PlacePicture picture = PictureOfDrive(root);
    const CString name =
        DriveName(root, picture == PlacePicture::kNetworkDrive ? NetworkPlaceOf(root) : NetworkPlace());
    m_csRoots.Add(root);
    AddItem(TVI_ROOT, name, static_cast<int>(picture), static_cast<int>(m_csRoots.GetSize()));
}

bool FolderPicker::Fill(HTREEITEM item)
{
    const CWaitCursor wait;
    FolderContents contents;
    if (ReadFolder(PathOf(item), nullptr, contents) != ERROR_SUCCESS)
        return false;
    const DrawingPause pause(m_tree);
    for (HTREEITEM child; (child = m_tree.GetChildItem(item)) != nullptr && m_tree.DeleteItem(child);) {
    }
    for (const CString& name : contents.folders)
        AddItem(item, name, static_cast<int>(PlacePicture::kFolder), 0);
    TVITEMA change = {};
    change.mask = TVIF_HANDLE | TVIF_CHILDREN;
    change.hItem = item;
    change.cChildren = contents.folders.empty() ? 0 : 1;
    m_tree.SetItem(&change);
    return true;
}

bool FolderPicker::FillOnce(HTREEITEM item) { return m_tree.GetChildItem(item) != nullptr || Fill(item); }

CString FolderPicker::PathOf(HTREEITEM item) const
{
    const auto root = static_cast<INT_PTR>(m_tree.GetItemData(item));
    if (root > 0 && root <= m_csRoots.GetSize())
        return m_csRoots[root - 1];
    const HTREEITEM parent = m_tree.GetParentItem(item);
    return parent != nullptr ? JoinPath(PathOf(parent), m_tree.GetItemText(item)) : CString();
}

HTREEITEM FolderPicker::FindChild(HTREEITEM parent, LPCSTR name) const
{
    HTREEITEM child = m_tree.GetChildItem(parent);
    while (child != nullptr && ::lstrcmpiA(m_tree.GetItemText(child), name) != 0)
        child = m_tree.GetNextSiblingItem(child);
    return child;
}

HTREEITEM FolderPicker::FindRoot(const CString& root) const
{
    HTREEITEM item = m_tree.GetRootItem();
    while (item != nullptr && PathOf(item).CompareNoCase(root) != 0)
        item = m_tree.GetNextSiblingItem(item);
    return item;
}

/// Opens the tree down to a folder, and selects it. One that the tree does not list, being hidden, is added.
void FolderPicker::Select(const CString& folder)
{
    const CString root = RootOf(folder);
    m_bSelecting = true;
    HTREEITEM item = FindRoot(root);
    if (item == nullptr) {
        AddRoot(root); // a place in the network without a letter
        item = FindRoot(root);
    }
    for (int begin = root.GetLength(); item != nullptr && begin < folder.GetLength();) {
        int end = folder.Find('\\', begin);
        if (end < 0)
            end = folder.GetLength();
        const CString name = folder.Mid(begin, end - begin);
        FillOnce(item);
        HTREEITEM child = FindChild(item, name);
        if (child == nullptr)
            child = AddItem(item, name, static_cast<int>(PlacePicture::kFolder), 0);
        m_tree.Expand(item, TVE_EXPAND);
        item = child;
        begin = end + 1;
    }
    m_tree.SelectItem(item);
    m_tree.EnsureVisible(item);
    m_bSelecting = false;
    ShowPath(folder);
}

void FolderPicker::ShowPath(const CString& path)
{
    SetDlgItemText(ZO_IDC_FOLDER_PATH, path);
    SendDlgItemMessage(ZO_IDC_FOLDER_PATH, EM_SETSEL, 0, -1);
}

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
    case TVN_GETDISPINFOA: {
        TVITEMA& item = reinterpret_cast<NMTVDISPINFOA*>(header)->item;
        if ((item.mask & TVIF_CHILDREN) != 0) {
            item.cChildren = HasFolders(PathOf(item.hItem)) ? 1 : 0;
            item.mask |= TVIF_DI_SETITEM;
        }
        return 0;
    }
    case TVN_ITEMEXPANDINGA: {
        const auto& change = *reinterpret_cast<const NMTREEVIEWA*>(header);
        // A branch is read each time that the user opens it. The way down to a folder may hold one that is not listed.
        const HTREEITEM item = change.itemNew.hItem;
        if ((change.action & TVE_EXPAND) == 0 || (m_bSelecting ? FillOnce(item) : Fill(item)))
            return FALSE;
        Refuse(ZO_IDS_FOLDER_UNREADABLE, PathOf(change.itemNew.hItem));
        return TRUE; // it stays closed
    }
    case TVN_SELCHANGEDA:
        ShowPath(PathOf(reinterpret_cast<const NMTREEVIEWA*>(header)->itemNew.hItem));
        return 0;
    case TVN_BEGINLABELEDITA:
        return reinterpret_cast<const NMTVDISPINFOA*>(header)->item.hItem != m_hNamed;
    case TVN_ENDLABELEDITA:
        return TakeNewName(reinterpret_cast<const NMTVDISPINFOA*>(header)->item);
    default:
        return 0;
    }
}

// New folders ---------------------------------------------------------------------------------------------------------

void FolderPicker::OnNewFolder()
{
    WithoutThrowing([this] {
        const HTREEITEM parent = m_tree.GetSelectedItem();
        CString plain;
        if (parent == nullptr || !ZoGblLoadString(ZO_IDS_FOLDER_NEW_NAME, plain))
            return FALSE;
        const CString folder = PathOf(parent);
        CString name = plain;
        for (int number = 2; ::GetFileAttributesA(JoinPath(folder, name)) != INVALID_FILE_ATTRIBUTES; ++number)
            name.Format("%s (%d)", (LPCSTR)plain, number);
        const CString path = JoinPath(folder, name);
        FillOnce(parent); // before there is one more
        CZoGlobalDirectoryFunctions::Create(path);
        if (!FolderExists(path)) {
            Refuse(ZO_IDS_FOLDER_NOT_CREATED, path);
            return FALSE;
        }
        Select(path);
        ::SetFocus(m_tree);
        m_hNamed = m_tree.GetSelectedItem();
        m_tree.EditLabel(m_hNamed);
        return TRUE;
    });
}

/// \return whether the tree is to take the name.
LRESULT FolderPicker::TakeNewName(const TVITEMA& item)
{
    // Null when the user gave up. A box that takes the focus ends the naming once more.
    if (std::exchange(m_hNamed, nullptr) != item.hItem || item.pszText == nullptr)
        return FALSE;
    const CString before = PathOf(item.hItem);
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
            TakePath(typed);
        return TRUE;
    });
}

void FolderPicker::OnCancel()
{
    m_tree.SendMessage(TVM_ENDEDITLABELNOW, TRUE);
    CZoDialog::OnCancel();
}

void FolderPicker::TakePath(const CString& typed)
{
    const HTREEITEM selected = m_tree.GetSelectedItem();
    const CString path = ResolvePath(selected != nullptr ? PathOf(selected) : CString("C:\\"), typed);
    if (path.IsEmpty() || path.GetLength() >= MAX_PATH) {
        Refuse(ZO_IDS_FILE_TOO_LONG, typed);
    } else if (!IsValidPath(path)) {
        Refuse(ZO_IDS_FILE_INVALID, typed);
    } else if (FolderExists(path) || OfferToCreateFolder(path, m_nHelpContext)) {
        m_csPath = path;
        EndDialog(IDOK);
    }
}

/// Says why a path cannot be taken, and lets it be corrected.
void FolderPicker::Refuse(UINT message, LPCSTR path) { AskUser(*this, message, path, MB_OK | MB_ICONEXCLAMATION); }
