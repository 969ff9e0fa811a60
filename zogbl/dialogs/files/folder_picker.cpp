#include "folder_picker.h"

#include <common/without_throwing.h>
#include <zogbl/directory_functions.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/drawing/bitmap_dc.h"
#include "dialogs/base/tell_user.h"
#include "ground/box_filling.h"
#include "place_list.h"

#include <utility>

namespace {

constexpr COLORREF kMask = RGB(255, 0, 255);

} // namespace

// Pictures ------------------------------------------------------------------------------------------------------------

CommonControls::CommonControls() : m_library(::LoadLibraryA("comctl32.dll"))
{
    if (m_library == nullptr)
        return;
    const auto find = [this](LPCSTR name) { return reinterpret_cast<void*>(::GetProcAddress(m_library, name)); };
    if (const auto registerClasses = reinterpret_cast<decltype(&InitCommonControls)>(find("InitCommonControls")))
        registerClasses();
    m_createList = reinterpret_cast<decltype(&ImageList_Create)>(find("ImageList_Create"));
    m_addMasked = reinterpret_cast<decltype(&ImageList_AddMasked)>(find("ImageList_AddMasked"));
    m_destroyList = reinterpret_cast<decltype(&ImageList_Destroy)>(find("ImageList_Destroy"));
}

CommonControls::~CommonControls()
{
    if (m_library != nullptr)
        ::FreeLibrary(m_library);
}

HIMAGELIST CommonControls::CreatePlacePictures() const
{
    const RECT all = {0, 0, kPlacePictures * kPictureSize, kPictureSize};
    const HDC screen = ::GetDC(nullptr);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, all.right, all.bottom);
    ::ReleaseDC(nullptr, screen);
    {
        const BitmapDC memory(nullptr, bitmap);
        if (!memory.IsReady()) {
            ::DeleteObject(bitmap);
            return nullptr;
        }
        if (const HBRUSH brush = ::CreateSolidBrush(kMask)) {
            ::FillRect(memory, &all, brush);
            ::DeleteObject(brush);
        }
        for (int i = 0; i < kPlacePictures; ++i)
            DrawPlacePicture(memory, i * kPictureSize, 0, static_cast<PlacePicture>(i));
    }
    const HIMAGELIST list = m_createList(kPictureSize, kPictureSize, ILC_COLOR24 | ILC_MASK, kPlacePictures, 0);
    if (list != nullptr)
        m_addMasked(list, bitmap, kMask);
    ::DeleteObject(bitmap);
    return list;
}

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
    if (!m_controls.AreThere())
        return -1;
    m_pictures = m_controls.CreatePlacePictures();
    const INT_PTR result = ResultOr(-1, [this] { return CZoDialog::DoModal(); });
    if (m_pictures != nullptr)
        m_controls.Destroy(m_pictures);
    m_pictures = nullptr;
    return result;
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
    ::SendDlgItemMessageA(m_hWnd, ZO_IDC_FOLDER_PATH, EM_LIMITTEXT, kTypedLimit, 0);
    ::SendMessageA(Tree(), TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(m_pictures));
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

void FolderPicker::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    if (m_pszTitle != nullptr)
        SetWindowText(m_pszTitle);
    if (m_pszInstruction != nullptr)
        SetDlgItemText(ZO_IDC_FOLDER_INSTRUCTION, m_pszInstruction);
}

// The tree ------------------------------------------------------------------------------------------------------------

HWND FolderPicker::Tree() const { return ::GetDlgItem(m_hWnd, ZO_IDC_FOLDER_TREE); }

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
    return reinterpret_cast<HTREEITEM>(
        ::SendMessageA(Tree(), TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insertion)));
}

void FolderPicker::AddRoot(const CString& root)
{
    const CString name = DriveName(root);
    m_csRoots.Add(root);
    AddItem(TVI_ROOT, name, static_cast<int>(PictureOfDrive(root)), static_cast<int>(m_csRoots.GetSize()));
}

bool FolderPicker::Fill(HTREEITEM item)
{
    const CWaitCursor wait;
    FolderContents contents;
    if (ReadFolder(PathOf(item), nullptr, contents) != ERROR_SUCCESS)
        return false;
    const DrawingPause pause(Tree());
    while (const LRESULT child = ::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(item))) {
        if (!::SendMessageA(Tree(), TVM_DELETEITEM, 0, child))
            break;
    }
    for (const CString& name : contents.folders)
        AddItem(item, name, static_cast<int>(PlacePicture::kFolder), 0);
    TVITEMA change = {};
    change.mask = TVIF_HANDLE | TVIF_CHILDREN;
    change.hItem = item;
    change.cChildren = contents.folders.empty() ? 0 : 1;
    ::SendMessageA(Tree(), TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&change));
    return true;
}

bool FolderPicker::FillOnce(HTREEITEM item)
{
    return ::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(item)) != 0 || Fill(item);
}

TVITEMA FolderPicker::ItemOf(HTREEITEM item, UINT mask, char* text, int size) const
{
    TVITEMA found = {};
    found.mask = TVIF_HANDLE | mask;
    found.hItem = item;
    found.pszText = text;
    found.cchTextMax = size;
    ::SendMessageA(Tree(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&found));
    return found;
}

CString FolderPicker::PathOf(HTREEITEM item) const
{
    char text[MAX_PATH] = "";
    const TVITEMA found = ItemOf(item, TVIF_TEXT | TVIF_PARAM, text, sizeof text);
    if (found.lParam > 0 && found.lParam <= m_csRoots.GetSize())
        return m_csRoots[found.lParam - 1];
    const auto parent = reinterpret_cast<HTREEITEM>(
        ::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_PARENT, reinterpret_cast<LPARAM>(item)));
    return parent != nullptr ? JoinPath(PathOf(parent), text) : CString();
}

HTREEITEM FolderPicker::FindChild(HTREEITEM parent, LPCSTR name) const
{
    auto child = reinterpret_cast<HTREEITEM>(
        ::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(parent)));
    while (child != nullptr) {
        char text[MAX_PATH] = "";
        ItemOf(child, TVIF_TEXT, text, sizeof text);
        if (::lstrcmpiA(text, name) == 0)
            break;
        child = reinterpret_cast<HTREEITEM>(
            ::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(child)));
    }
    return child;
}

HTREEITEM FolderPicker::FindRoot(const CString& root) const
{
    auto item = reinterpret_cast<HTREEITEM>(::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_ROOT, 0));
    while (item != nullptr && PathOf(item).CompareNoCase(root) != 0)
        item = reinterpret_cast<HTREEITEM>(
            ::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(item)));
    return item;
}

HTREEITEM FolderPicker::Selected() const
{
    return reinterpret_cast<HTREEITEM>(::SendMessageA(Tree(), TVM_GETNEXTITEM, TVGN_CARET, 0));
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
        ::SendMessageA(Tree(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
        item = child;
        begin = end + 1;
    }
    ::SendMessageA(Tree(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    ::SendMessageA(Tree(), TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    m_bSelecting = false;
    ShowPath(folder);
}

void FolderPicker::ShowPath(const CString& path)
{
    SetDlgItemText(ZO_IDC_FOLDER_PATH, path);
    ::SendDlgItemMessageA(m_hWnd, ZO_IDC_FOLDER_PATH, EM_SETSEL, 0, -1);
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
        const HTREEITEM parent = Selected();
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
        ::SetFocus(Tree());
        m_hNamed = Selected();
        ::SendMessageA(Tree(), TVM_EDITLABELA, 0, reinterpret_cast<LPARAM>(m_hNamed));
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
        const auto label = reinterpret_cast<HWND>(::SendMessageA(Tree(), TVM_GETEDITCONTROL, 0, 0));
        if (label != nullptr && label == message->hwnd) {
            ::SendMessageA(Tree(), TVM_ENDEDITLABELNOW, message->wParam == VK_ESCAPE, 0);
            return TRUE;
        }
    }
    return CZoDialog::PreTranslateMessage(message);
}

// The end -------------------------------------------------------------------------------------------------------------

void FolderPicker::OnOK()
{
    ::SendMessageA(Tree(), TVM_ENDEDITLABELNOW, FALSE, 0);
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
    ::SendMessageA(Tree(), TVM_ENDEDITLABELNOW, TRUE, 0);
    CZoDialog::OnCancel();
}

void FolderPicker::TakePath(const CString& typed)
{
    const HTREEITEM selected = Selected();
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
