#include "file_controls.h"

#include <common/without_throwing.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/list_rows.h"
#include "place_list.h"
#include "recent_folders.h"

#include <algorithm>

namespace {

constexpr UINT_PTR kLookTimer = 1;

constexpr char kEveryFile[] = "*.*";

const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();

} // namespace

// Drives --------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(DriveBox, CComboBox)
    ON_WM_TIMER()
    ON_REGISTERED_MESSAGE(s_languageMessage, OnReloadTexts)
END_MESSAGE_MAP()

void DriveBox::PreSubclassWindow()
{
    const auto height = static_cast<UINT>(PlaceRowHeight(m_hWnd));
    SetItemHeight(0, height);
    SetItemHeight(-1, height); // the field
}

void DriveBox::Fill()
{
    if (m_hWnd == nullptr)
        return;
    CStringArray roots;
    ListDrives(roots);
    const DrivesPatience patience;
    for (INT_PTR i = 0; i < roots.GetSize(); ++i)
        AddDrive(roots[i], patience.ForNext());
}

/// \return its row
int DriveBox::AddDrive(const CString& root, DWORD patience)
{
    Drive drive(root);
    if (!drive.Look(patience))
        SetTimer(kLookTimer, kLookAtDrivesEvery, nullptr);
    const CString text = drive.GetName();
    m_drives.push_back(std::move(drive));
    const int row = AddString(text);
    SetItemData(row, static_cast<DWORD_PTR>(m_drives.back().GetPicture()));
    return row;
}

void DriveBox::Renew(int row)
{
    const Drive& drive = m_drives[static_cast<size_t>(row)];
    const CString text = drive.GetName();
    const int selected = GetCurSel();
    CString before;
    GetLBText(row, before);
    if (text != before) {
        DeleteString(static_cast<UINT>(row));
        InsertString(row, text);
    }
    SetItemData(row, static_cast<DWORD_PTR>(drive.GetPicture()));
    if (GetCurSel() != selected)
        SetCurSel(selected);
    Invalidate();
}

void DriveBox::OnTimer(UINT_PTR id)
{
    if (id != kLookTimer) {
        Default();
        return;
    }
    bool areAllKnown = true;
    for (size_t row = 0; row < m_drives.size(); ++row) {
        if (m_drives[row].IsKnown())
            continue;
        if (m_drives[row].Look())
            WithoutThrowing([&] { Renew(static_cast<int>(row)); });
        else
            areAllKnown = false;
    }
    if (areAllKnown)
        KillTimer(kLookTimer);
}

LRESULT DriveBox::OnReloadTexts(WPARAM, LPARAM)
{
    for (size_t row = 0; row < m_drives.size(); ++row)
        WithoutThrowing([&] { Renew(static_cast<int>(row)); });
    return 0;
}

void DriveBox::SelectDrive(const CString& root)
{
    if (m_hWnd == nullptr || root.IsEmpty())
        return;
    const auto found = std::find_if(m_drives.begin(), m_drives.end(),
                                    [&](const Drive& drive) { return drive.GetRoot().CompareNoCase(root) == 0; });
    SetCurSel(found != m_drives.end() ? static_cast<int>(found - m_drives.begin()) : AddDrive(root, kDrivePatience));
}

CString DriveBox::GetDrive() const
{
    const int row = m_hWnd != nullptr ? GetCurSel() : CB_ERR;
    return row >= 0 && row < static_cast<int>(m_drives.size()) ? m_drives[static_cast<size_t>(row)].GetRoot()
                                                               : CString();
}

void DriveBox::DrawItem(LPDRAWITEMSTRUCT item) { DrawPlace(*item, static_cast<PlacePicture>(item->itemData), 0); }

// Folders -------------------------------------------------------------------------------------------------------------

void FolderBox::PreSubclassWindow() { SetItemHeight(0, static_cast<UINT>(PlaceRowHeight(m_hWnd))); }

void FolderBox::ShowFolder(const CString& folder, const std::vector<CString>& inside)
{
    std::vector<CString> above; // and the folder itself
    for (CString next = folder;; next = ParentOf(next)) {
        above.insert(above.begin(), NameOf(next));
        if (next == RootOf(next))
            break;
    }
    m_csFolder = folder;
    m_nLevel = static_cast<int>(above.size()) - 1;
    {
        ListFilling filling(m_hWnd);
        for (const CString& name : above)
            filling.Add(name, PlaceIndent(filling.GetCount()) + kPlaceTextOffset);
        for (const CString& name : inside)
            filling.Add(name, PlaceIndent(m_nLevel + 1) + kPlaceTextOffset);
    }
    if (m_hWnd == nullptr)
        return;
    SetCurSel(m_nLevel);
    CRect area;
    GetClientRect(&area);
    const int rows = area.Height() / (std::max)(GetItemHeight(0), 1);
    if (m_nLevel + 1 >= rows) // what is in the folder is seen, too
        SetTopIndex(m_nLevel - rows / 2);
}

CString FolderBox::GetSelectedFolder() const
{
    int row = m_hWnd != nullptr ? GetCurSel() : LB_ERR;
    if (row < 0)
        return {};
    if (row > m_nLevel)
        return JoinPath(m_csFolder, RowText(m_hWnd, row));
    CString folder = m_csFolder;
    for (; row < m_nLevel; ++row)
        folder = ParentOf(folder);
    return folder;
}

void FolderBox::DrawItem(LPDRAWITEMSTRUCT item)
{
    const int row = static_cast<int>(item->itemID);
    DrawPlace(*item, row <= m_nLevel ? PlacePicture::kOpenFolder : PlacePicture::kFolder,
              PlaceIndent((std::min)(row, m_nLevel + 1)));
}

// Files and types -----------------------------------------------------------------------------------------------------

/// Its rows are as high as those with pictures beside it.
void FileBox::PreSubclassWindow() { SetItemHeight(0, static_cast<UINT>(PlaceRowHeight(m_hWnd))); }

void FileBox::ShowFiles(const std::vector<CString>& files)
{
    ListFilling filling(m_hWnd);
    for (const CString& name : files)
        filling.Add(name);
}

CString FileBox::GetSelectedFile() const { return RowText(m_hWnd, GetCurSel()); }

void TypeBox::Fill(LPCSTR filter, DWORD index)
{
    m_pszFilter = filter;
    if (m_hWnd == nullptr)
        return;
    for (LPCSTR name = filter; name != nullptr && *name != '\0';) {
        AddString(name);
        const LPCSTR patterns = name + std::strlen(name) + 1;
        name = patterns + std::strlen(patterns) + 1;
    }
    if (SetCurSel(index > 0 ? static_cast<int>(index) - 1 : 0) == CB_ERR)
        SetCurSel(0);
}

CString TypeBox::GetPatterns() const
{
    int left = m_hWnd != nullptr ? GetCurSel() : 0;
    for (LPCSTR name = m_pszFilter; name != nullptr && *name != '\0' && left >= 0; --left) {
        const LPCSTR patterns = name + std::strlen(name) + 1;
        if (left == 0 && *patterns != '\0')
            return patterns;
        name = patterns + std::strlen(patterns) + 1;
    }
    return kEveryFile;
}

// The name ------------------------------------------------------------------------------------------------------------

void NameBox::PreSubclassWindow() { LimitText(kTypedLimit); }

CString NameBox::GetTyped() const { return TypedText(m_hWnd); }

void NameBox::ShowName(LPCSTR name)
{
    ::SetWindowTextA(m_hWnd, name);
    SetSel(0, -1);
}

void NameBox::TakeFocus()
{
    ::SetFocus(m_hWnd);
    SetSel(0, -1);
}

// Recent folders ------------------------------------------------------------------------------------------------------

void RecentBox::Fill()
{
    if (m_hWnd == nullptr)
        return;
    CStringArray folders;
    LoadRecentFolders(folders);
    for (INT_PTR i = 0; i < folders.GetSize(); ++i)
        AddString(folders[i]);
    EnableWindow(folders.GetSize() > 0);
}

CString RecentBox::RowText(int row) const
{
    CString text;
    if (m_hWnd != nullptr && row >= 0)
        GetLBText(row, text);
    return text;
}

void RecentBox::SelectFolder(const CString& folder)
{
    if (m_hWnd == nullptr)
        return;
    int row = GetCount() - 1;
    while (row >= 0 && RowText(row).CompareNoCase(folder) != 0)
        --row;
    SetCurSel(row);
}

CString RecentBox::GetFolder() const { return RowText(m_hWnd != nullptr ? GetCurSel() : CB_ERR); }

// The folder's name ---------------------------------------------------------------------------------------------------

void FolderLabel::ShowPath(const CString& path) { Fit(path, true); }

void FolderLabel::ShowText(const CString& text) { Fit(text, false); }

void FolderLabel::Fit(const CString& text, bool isPath)
{
    if (m_hWnd == nullptr)
        return;
    WithoutThrowing([&] {
        WindowFontDC dc(m_hWnd);
        CRect area;
        GetClientRect(&area);
        char shown[2 * MAX_PATH];
        ::lstrcpynA(shown, text, sizeof shown);
        if (isPath)
            CZoGlobalFileNameFunctions::AbbreviateFilePath(text, shown, &dc, area.right);
        SetWindowText(FittingText(dc.m_hDC, shown, area.right));
    });
}
