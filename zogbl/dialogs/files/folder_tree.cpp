#include "folder_tree.h"

#include <common/without_throwing.h>
#include <zogbl/language_support.h>

#include "ground/box_filling.h"

#include <algorithm>
#include <utility>

namespace {

constexpr COLORREF kMask = RGB(255, 0, 255);
constexpr UINT_PTR kLookTimer = 0x5A46; // among those of the system's control

const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();

} // namespace

BEGIN_MESSAGE_MAP(FolderTree, CTreeCtrl)
    ON_WM_TIMER()
    ON_REGISTERED_MESSAGE(s_languageMessage, OnReloadTexts)
END_MESSAGE_MAP()

class FolderTree::Showing {
public:
    explicit Showing(FolderTree& tree) : m_tree(tree), m_before(std::exchange(tree.m_isShowing, true)) {}
    ~Showing() { m_tree.m_isShowing = m_before; }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;

private:
    FolderTree& m_tree;
    const bool m_before;
};

void FolderTree::Begin()
{
    MakePictures();
    SetImageList(&m_pictures, TVSIL_NORMAL);
    CStringArray roots;
    ListDrives(roots);
    const DrivesPatience patience;
    for (INT_PTR i = 0; i < roots.GetSize(); ++i)
        AddRoot(roots[i], patience.ForNext());
}

void FolderTree::MakePictures()
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

// Drives --------------------------------------------------------------------------------------------------------------

HTREEITEM FolderTree::AddRoot(const CString& root, DWORD patience)
{
    Drive drive(root);
    if (!drive.Look(patience))
        SetTimer(kLookTimer, kLookAtDrivesEvery, nullptr);
    const PlacePicture picture = drive.GetPicture();
    const CString name = drive.GetName();
    m_roots.push_back({std::move(drive), nullptr});
    const HTREEITEM item = Insert(TVI_ROOT, name, picture, picture, 1, static_cast<int>(m_roots.size()));
    m_roots.back().item = item;
    return item;
}

void FolderTree::Renew(const Root& root)
{
    const CString name = root.drive.GetName();
    TVITEMA change = {};
    change.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    change.hItem = root.item;
    change.pszText = const_cast<LPSTR>(static_cast<LPCSTR>(name));
    change.iImage = change.iSelectedImage = static_cast<int>(root.drive.GetPicture());
    SetItem(&change);
}

void FolderTree::OnTimer(UINT_PTR id)
{
    if (id != kLookTimer) {
        Default();
        return;
    }
    bool areAllKnown = true;
    for (Root& root : m_roots) {
        if (root.drive.IsKnown())
            continue;
        if (root.drive.Look())
            WithoutThrowing([&] { Renew(root); });
        else
            areAllKnown = false;
    }
    if (areAllKnown)
        KillTimer(kLookTimer);
}

LRESULT FolderTree::OnReloadTexts(WPARAM, LPARAM)
{
    for (const Root& root : m_roots)
        WithoutThrowing([&] { Renew(root); });
    return 0;
}

HTREEITEM FolderTree::FindRoot(const CString& root) const
{
    for (const Root& known : m_roots) {
        if (known.drive.GetRoot().CompareNoCase(root) == 0)
            return known.item;
    }
    return nullptr;
}

/// Whether a path's drive is known to need neither a network nor a medium.
bool FolderTree::IsLocal(const CString& path) const
{
    const CString root = RootOf(path);
    return std::any_of(m_roots.begin(), m_roots.end(), [&](const Root& known) {
        return known.drive.GetRoot().CompareNoCase(root) == 0 && known.drive.IsKnown() &&
               known.drive.GetPicture() == PlacePicture::kDrive;
    });
}

// Items ---------------------------------------------------------------------------------------------------------------

/// \param root its place among the roots, counted from 1; 0: it is none
HTREEITEM FolderTree::Insert(HTREEITEM parent, LPCSTR text, PlacePicture picture, PlacePicture selected, int opens,
                             int root)
{
    TVINSERTSTRUCTA insertion = {};
    insertion.hParent = parent;
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
    insertion.item.pszText = const_cast<LPSTR>(text);
    insertion.item.iImage = static_cast<int>(picture);
    insertion.item.iSelectedImage = static_cast<int>(selected);
    insertion.item.cChildren = opens;
    insertion.item.lParam = root;
    return InsertItem(&insertion);
}

HTREEITEM FolderTree::AddFolder(HTREEITEM parent, LPCSTR name)
{
    return Insert(parent, name, PlacePicture::kFolder, PlacePicture::kOpenFolder, I_CHILDRENCALLBACK, 0);
}

/// A folder elsewhere than on a local drive may have others in it: nobody waits to know.
void FolderTree::TellWhetherOpens(TVITEMA& item) const
{
    if ((item.mask & TVIF_CHILDREN) == 0)
        return;
    const CString path = PathOf(item.hItem);
    item.cChildren = !IsLocal(path) || HasFolders(path) ? 1 : 0;
    item.mask |= TVIF_DI_SETITEM;
}

void FolderTree::Fill(HTREEITEM item, const FolderContents& contents)
{
    const DrawingPause pause(m_hWnd);
    for (HTREEITEM child; (child = GetChildItem(item)) != nullptr && DeleteItem(child);) {
    }
    for (const CString& name : contents.folders)
        AddFolder(item, name);
    TVITEMA change = {};
    change.mask = TVIF_HANDLE | TVIF_CHILDREN;
    change.hItem = item;
    change.cChildren = contents.folders.empty() ? 0 : 1;
    SetItem(&change);
}

void FolderTree::Open(HTREEITEM item)
{
    const Showing showing(*this);
    Expand(item, TVE_EXPAND);
}

void FolderTree::Show(const CString& folder, const std::vector<FolderContents>& above)
{
    const Showing showing(*this);
    const CString root = RootOf(folder);
    HTREEITEM item = FindRoot(root);
    if (item == nullptr)
        item = AddRoot(root, kDrivePatience); // a place in the network without a letter
    auto contents = above.begin();
    for (int begin = root.GetLength(); item != nullptr && begin < folder.GetLength();) {
        int end = folder.Find('\\', begin);
        if (end < 0)
            end = folder.GetLength();
        const CString name = folder.Mid(begin, end - begin);
        if (contents != above.end() && GetChildItem(item) == nullptr)
            Fill(item, *contents);
        if (contents != above.end())
            ++contents;
        HTREEITEM child = FindChild(item, name);
        if (child == nullptr)
            child = AddFolder(item, name);
        Expand(item, TVE_EXPAND);
        item = child;
        begin = end + 1;
    }
    SelectItem(item);
    EnsureVisible(item);
}

CString FolderTree::PathOf(HTREEITEM item) const
{
    if (item == nullptr)
        return {};
    const auto root = static_cast<size_t>(GetItemData(item));
    if (root > 0 && root <= m_roots.size())
        return m_roots[root - 1].drive.GetRoot();
    const HTREEITEM parent = GetParentItem(item);
    return parent != nullptr ? JoinPath(PathOf(parent), GetItemText(item)) : CString();
}

HTREEITEM FolderTree::FindChild(HTREEITEM parent, LPCSTR name) const
{
    HTREEITEM child = GetChildItem(parent);
    while (child != nullptr && ::lstrcmpiA(GetItemText(child), name) != 0)
        child = GetNextSiblingItem(child);
    return child;
}
