#include <zogbl/file_open.h>

#include <common/without_throwing.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/drawing/list_rows.h"
#include "dialogs/base/tell_user.h"
#include "ground/bounded_text.h"
#include "place_list.h"
#include "places.h"

#include <algorithm>

namespace {

constexpr char kEveryFile[] = "*.*";

/// Where the name begins in what a person typed.
int NameOffset(const CString& typed)
{
    return (std::max)({typed.ReverseFind('\\'), typed.ReverseFind('/'), typed.ReverseFind(':')}) + 1;
}

/// Puts back what a buffer held, unless told that it may stay.
class Restored {
public:
    explicit Restored(LPSTR buffer) : m_buffer(buffer), m_before(buffer) {}
    ~Restored()
    {
        if (!m_stays)
            std::memcpy(m_buffer, (LPCSTR)m_before, static_cast<size_t>(m_before.GetLength()) + 1);
    }
    Restored(const Restored&) = delete;
    Restored& operator=(const Restored&) = delete;
    void Stay() { m_stays = true; }

private:
    LPSTR m_buffer;
    CString m_before;
    bool m_stays = false;
};

} // namespace

BEGIN_MESSAGE_MAP(CZoFileOpen, CZoDialog)
    ON_LBN_SELCHANGE(ZO_IDC_FILE_LIST, OnFileSelected)
    ON_LBN_DBLCLK(ZO_IDC_FILE_LIST, OnFileChosen)
    ON_LBN_DBLCLK(ZO_IDC_FILE_FOLDERS, OnFolderChosen)
    ON_CBN_SELCHANGE(ZO_IDC_FILE_DRIVES, OnDriveSelected)
    ON_CBN_CLOSEUP(ZO_IDC_FILE_DRIVES, OnDriveClosed)
    ON_CBN_SELCHANGE(ZO_IDC_FILE_TYPES, OnTypeSelected)
    ON_WM_MEASUREITEM()
    ON_WM_DRAWITEM()
END_MESSAGE_MAP()

CZoFileOpen::CZoFileOpen(BOOL open, UINT templateId, LPCSTR defaultExtension, LPCSTR fileName, DWORD flags,
                         LPCSTR filter, CWnd* parent)
    : CZoDialog(templateId != 0 ? templateId : ZO_IDD_FILE_OPEN, parent), m_ofn{}, m_bOpen(open)
{
    if (fileName != nullptr && std::strlen(fileName) < sizeof m_szFile)
        CopyBounded(m_szFile, sizeof m_szFile, fileName);
    m_ofn.lStructSize = sizeof m_ofn;
    m_ofn.lpstrFilter = filter;
    m_ofn.nFilterIndex = 1;
    m_ofn.lpstrFile = m_szFile;
    m_ofn.nMaxFile = sizeof m_szFile;
    m_ofn.lpstrDefExt = defaultExtension;
    m_ofn.Flags = flags;
}

CZoFileOpen::~CZoFileOpen() = default;

INT_PTR CZoFileOpen::DoModal()
{
    if (m_ofn.lpstrFile == nullptr || m_ofn.nMaxFile == 0)
        return -1;
    return ResultOr<CMemoryException>(-1, [this] { return CZoDialog::DoModal(); });
}

CString CZoFileOpen::GetPathName() const
{
    CString path;
    WithoutThrowing([&] { path = m_ofn.lpstrFile; });
    return path;
}

CString CZoFileOpen::GetFileName() const
{
    CString name;
    WithoutThrowing([&] { name = NameOf(GetPathName()); });
    return name;
}

CString CZoFileOpen::GetFileExt() const
{
    CString extension;
    WithoutThrowing([&] {
        const CString name = GetFileName();
        const int dot = name.ReverseFind('.');
        extension = dot >= 0 ? name.Mid(dot + 1) : CString();
        return TRUE;
    });
    return extension;
}

BOOL CZoFileOpen::OnFileNameOK() { return FALSE; }

// Beginning -----------------------------------------------------------------------------------------------------------

BOOL CZoFileOpen::OnInitDialog()
{
    if (!WithoutThrowing([this] { Prepare(); }))
        EndDialog(-1);
    return FALSE;
}

/// Throws CMemoryException*.
void CZoFileOpen::Prepare()
{
    CZoDialog::OnInitDialog();
    const CWaitCursor wait;
    ReloadTexts();
    ::SendMessageA(Item(ZO_IDC_FILE_NAME), EM_LIMITTEXT, kTypedLimit, 0);
    PrepareReadOnlyBox();
    AlignRows();
    FillTypes();
    FillDrives();

    const CString current = CurrentFolder();
    const CString start(m_ofn.lpstrFile);
    const CString full = start.IsEmpty() ? start : ResolvePath(current, start);
    const int offset = NameOffset(start);
    CString name;
    if (!full.IsEmpty() && FolderExists(full)) {
        StartIn(full, current);
    } else {
        name = start.Mid(offset);
        if (name.FindOneOf("*?") >= 0) {
            m_csPattern = name;
            name.Empty();
        }
        StartIn(offset > 0 && !full.IsEmpty() ? ParentOf(full) : CString(m_ofn.lpstrInitialDir), current);
    }
    CenterWindow();
    ::SetFocus(Item(ZO_IDC_FILE_NAME));
    ShowName(name);
}

void CZoFileOpen::PrepareReadOnlyBox()
{
    const HWND box = Item(ZO_IDC_FILE_READ_ONLY);
    CheckDlgButton(ZO_IDC_FILE_READ_ONLY, (m_ofn.Flags & OFN_READONLY) != 0);
    if (box == nullptr || (m_ofn.Flags & OFN_HIDEREADONLY) == 0)
        return;
    ::ShowWindow(box, SW_HIDE);
    FoldAway(m_hWnd, box);
}

/// Lists without pictures have rows as high as those with them.
void CZoFileOpen::AlignRows()
{
    const LRESULT row = ::SendMessageA(Item(ZO_IDC_FILE_FOLDERS), LB_GETITEMHEIGHT, 0, 0);
    if (row > 0)
        ::SendMessageA(Item(ZO_IDC_FILE_LIST), LB_SETITEMHEIGHT, 0, row);
    constexpr auto kField = static_cast<WPARAM>(-1);
    const HWND boxes[] = {Item(ZO_IDC_FILE_DRIVES), Item(ZO_IDC_FILE_TYPES)};
    LRESULT highest = 0;
    for (const HWND box : boxes)
        highest = (std::max)(highest, ::SendMessageA(box, CB_GETITEMHEIGHT, kField, 0));
    for (const HWND box : boxes) {
        if (::SendMessageA(box, CB_GETITEMHEIGHT, kField, 0) < highest)
            ::SendMessageA(box, CB_SETITEMHEIGHT, kField, highest);
    }
}

void CZoFileOpen::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    CString title;
    if (m_ofn.lpstrTitle != nullptr)
        SetWindowText(m_ofn.lpstrTitle);
    else if (!m_bOpen && ZoGblLoadString(ZO_IDS_SAVE_AS_TITLE, title))
        SetWindowText(title);
}

/// Shows the first folder that can be read: \p folder or one that it lies in, the current one or one that that lies in,
/// or a drive.
void CZoFileOpen::StartIn(const CString& folder, const CString& current)
{
    std::vector<CString> starts = {folder.IsEmpty() ? current : ResolvePath(current, folder), current};
    for (INT_PTR i = 0; i < m_csRoots.GetSize(); ++i)
        starts.push_back(m_csRoots[i]);
    for (const CString& start : starts) {
        for (CString next = start; !RootOf(next).IsEmpty(); next = ParentOf(next)) {
            if (ShowFolder(next))
                return;
            if (next == RootOf(next))
                break;
        }
    }
    m_csFolder = current.IsEmpty() ? CString("C:\\") : current; // nothing to be shown; a full path can still be typed
}

// Types ---------------------------------------------------------------------------------------------------------------

void CZoFileOpen::FillTypes()
{
    const HWND box = Item(ZO_IDC_FILE_TYPES);
    for (LPCSTR name = m_ofn.lpstrFilter; name != nullptr && *name != '\0';) {
        ::SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
        const LPCSTR patterns = name + std::strlen(name) + 1;
        name = patterns + std::strlen(patterns) + 1;
    }
    const DWORD index = m_ofn.nFilterIndex > 0 ? m_ofn.nFilterIndex - 1 : 0;
    if (::SendMessageA(box, CB_SETCURSEL, index, 0) == CB_ERR)
        ::SendMessageA(box, CB_SETCURSEL, 0, 0);
}

CString CZoFileOpen::PatternsInForce() const
{
    if (!m_csPattern.IsEmpty())
        return m_csPattern;
    const HWND box = Item(ZO_IDC_FILE_TYPES);
    LRESULT left = box != nullptr ? ::SendMessageA(box, CB_GETCURSEL, 0, 0) : 0;
    for (LPCSTR name = m_ofn.lpstrFilter; name != nullptr && *name != '\0' && left >= 0; --left) {
        const LPCSTR patterns = name + std::strlen(name) + 1;
        if (left == 0 && *patterns != '\0')
            return patterns;
        name = patterns + std::strlen(patterns) + 1;
    }
    return kEveryFile;
}

void CZoFileOpen::OnTypeSelected()
{
    WithoutThrowing([this] {
        m_csPattern.Empty();
        ShowFolder(m_csFolder);
        return TRUE;
    });
}

// Drives --------------------------------------------------------------------------------------------------------------

void CZoFileOpen::FillDrives()
{
    CStringArray roots;
    ListDrives(roots);
    for (INT_PTR i = 0; i < roots.GetSize(); ++i)
        AddDrive(roots[i]);
}

void CZoFileOpen::AddDrive(const CString& root)
{
    const CString name = DriveName(root);
    const HWND box = Item(ZO_IDC_FILE_DRIVES);
    m_csRoots.Add(root);
    const LRESULT row = ::SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>((LPCSTR)name));
    ::SendMessageA(box, CB_SETITEMDATA, static_cast<WPARAM>(row), static_cast<LPARAM>(PictureOfDrive(root)));
}

/// Shows the drive of the folder that is shown.
void CZoFileOpen::SelectDrive()
{
    const CString root = RootOf(m_csFolder);
    INT_PTR row = 0;
    while (row < m_csRoots.GetSize() && m_csRoots[row].CompareNoCase(root) != 0)
        ++row;
    if (row == m_csRoots.GetSize()) // a place in the network without a letter
        AddDrive(root);
    ::SendMessageA(Item(ZO_IDC_FILE_DRIVES), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

/// Nothing is read while a person still looks through the open list.
void CZoFileOpen::OnDriveSelected()
{
    if (::SendMessageA(Item(ZO_IDC_FILE_DRIVES), CB_GETDROPPEDSTATE, 0, 0) == FALSE)
        OnDriveClosed();
}

void CZoFileOpen::OnDriveClosed()
{
    WithoutThrowing([this] {
        const LRESULT row = ::SendMessageA(Item(ZO_IDC_FILE_DRIVES), CB_GETCURSEL, 0, 0);
        if (row >= 0 && row < m_csRoots.GetSize() && m_csRoots[row].CompareNoCase(RootOf(m_csFolder)) != 0)
            GoTo(m_csRoots[row]);
        return TRUE;
    });
}

// Folders and files ---------------------------------------------------------------------------------------------------

/// \return FALSE if the folder cannot be read. Throws CMemoryException*. Everything is as it was after either.
BOOL CZoFileOpen::ShowFolder(const CString& folder)
{
    FolderContents contents;
    if (ReadFolder(folder, PatternsInForce(), contents) != ERROR_SUCCESS)
        return FALSE;
    std::vector<CString> above; // and the folder itself
    for (CString next = folder;; next = ParentOf(next)) {
        above.insert(above.begin(), NameOf(next));
        if (next == RootOf(next))
            break;
    }
    m_csFolder = folder;
    m_nLevel = static_cast<int>(above.size()) - 1;
    FillFolders(above, contents);
    FillFiles(contents);
    ShowFolderName();
    SelectDrive();
    return TRUE;
}

void CZoFileOpen::FillFolders(const std::vector<CString>& above, const FolderContents& contents)
{
    const HWND list = Item(ZO_IDC_FILE_FOLDERS);
    {
        ListFilling filling(list);
        for (const CString& name : above)
            filling.Add(name, PlaceIndent(filling.GetCount()) + kPlaceTextOffset);
        for (const CString& name : contents.folders)
            filling.Add(name, PlaceIndent(m_nLevel + 1) + kPlaceTextOffset);
    }
    ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(m_nLevel), 0);
}

void CZoFileOpen::FillFiles(const FolderContents& contents)
{
    ListFilling filling(Item(ZO_IDC_FILE_LIST));
    for (const CString& name : contents.files)
        filling.Add(name);
}

void CZoFileOpen::ShowFolderName()
{
    const HWND place = Item(ZO_IDC_FILE_FOLDER);
    if (place == nullptr)
        return;
    WithoutThrowing([&] {
        WindowFontDC dc(m_hWnd);
        RECT area = {};
        ::GetClientRect(place, &area);
        char text[MAX_PATH];
        CZoGlobalFileNameFunctions::AbbreviateFilePath(m_csFolder, text, &dc, area.right);
        return ::SetWindowTextA(place, FittingText(dc.m_hDC, text, area.right));
    });
}

CString CZoFileOpen::FolderOfRow(int row) const
{
    if (row > m_nLevel)
        return JoinPath(m_csFolder, RowText(Item(ZO_IDC_FILE_FOLDERS), row));
    CString folder = m_csFolder;
    for (; row < m_nLevel; ++row)
        folder = ParentOf(folder);
    return folder;
}

void CZoFileOpen::GoTo(const CString& folder)
{
    const CWaitCursor wait;
    if (ShowFolder(folder))
        return;
    Refuse(ZO_IDS_FOLDER_UNREADABLE, folder);
    SelectDrive();
}

void CZoFileOpen::OnFolderChosen()
{
    WithoutThrowing([this] {
        const LRESULT row = ::SendMessageA(Item(ZO_IDC_FILE_FOLDERS), LB_GETCURSEL, 0, 0);
        if (row >= 0)
            GoTo(FolderOfRow(static_cast<int>(row)));
        return TRUE;
    });
}

void CZoFileOpen::OnFileSelected()
{
    WithoutThrowing([this] {
        const HWND list = Item(ZO_IDC_FILE_LIST);
        ShowName(RowText(list, ::SendMessageA(list, LB_GETCURSEL, 0, 0)));
        return TRUE;
    });
}

void CZoFileOpen::OnFileChosen()
{
    OnFileSelected();
    OnOK();
}

void CZoFileOpen::OnMeasureItem(int, MEASUREITEMSTRUCT* measure) { MeasurePlace(m_hWnd, *measure); }

void CZoFileOpen::OnDrawItem(int control, DRAWITEMSTRUCT* item)
{
    if (control == ZO_IDC_FILE_DRIVES) {
        DrawPlace(*item, static_cast<PlacePicture>(item->itemData), 0);
    } else {
        const int row = static_cast<int>(item->itemID);
        DrawPlace(*item, row <= m_nLevel ? PlacePicture::kOpenFolder : PlacePicture::kFolder,
                  PlaceIndent((std::min)(row, m_nLevel + 1)));
    }
}

// The name ------------------------------------------------------------------------------------------------------------

void CZoFileOpen::ShowName(LPCSTR name)
{
    const HWND field = Item(ZO_IDC_FILE_NAME);
    ::SetWindowTextA(field, name);
    ::SendMessageA(field, EM_SETSEL, 0, -1);
}

/// Enter in the list of folders goes to the one selected, everywhere else it takes the name.
void CZoFileOpen::OnOK()
{
    if (Item(ZO_IDC_FILE_FOLDERS) != nullptr && ::GetFocus() == Item(ZO_IDC_FILE_FOLDERS)) {
        OnFolderChosen();
        return;
    }
    WithoutThrowing([this] {
        const CString typed = TypedText(Item(ZO_IDC_FILE_NAME));
        if (typed.IsEmpty())
            ::SetFocus(Item(ZO_IDC_FILE_NAME));
        else
            TakeName(typed);
        return TRUE;
    });
}

void CZoFileOpen::TakeName(const CString& typed)
{
    const int length = typed.GetLength();
    const bool quoted = length >= 2 && typed[0] == '"' && typed[length - 1] == '"';
    const CString name = quoted ? typed.Mid(1, length - 2) : typed;
    if (!quoted && name.FindOneOf("*?") >= 0) {
        TakePattern(name);
        return;
    }
    CString path = ResolvePath(m_csFolder, name);
    if (path.IsEmpty()) {
        Refuse(ZO_IDS_FILE_TOO_LONG, name);
    } else if (!IsValidPath(path)) {
        Refuse(ZO_IDS_FILE_INVALID, name);
    } else if (FolderExists(path)) {
        GoTo(path);
        ShowName("");
    } else if (NameOffset(name) == name.GetLength()) { // ends in a backslash
        Refuse(ZO_IDS_FILE_FOLDER_MISSING, path);
    } else {
        if (!quoted)
            path = WithExtension(path, name);
        if (path.GetLength() >= (std::min)(static_cast<int>(m_ofn.nMaxFile), MAX_PATH))
            Refuse(ZO_IDS_FILE_TOO_LONG, name);
        else if (IsAcceptable(path))
            Finish(path);
    }
}

/// A pattern for the list, perhaps with a folder before it.
void CZoFileOpen::TakePattern(const CString& typed)
{
    const int offset = NameOffset(typed);
    const CString folder = offset > 0 ? ResolvePath(m_csFolder, typed.Left(offset)) : m_csFolder;
    if (!IsValidPath(folder)) {
        Refuse(ZO_IDS_FILE_INVALID, typed);
        return;
    }
    m_csPattern = typed.Mid(offset);
    GoTo(folder);
    ShowName(m_csPattern);
}

CString CZoFileOpen::WithExtension(const CString& path, const CString& typed) const
{
    if (m_ofn.lpstrDefExt == nullptr || *m_ofn.lpstrDefExt == '\0' ||
        HasExtension(typed.Mid(NameOffset(typed)), m_ofn.lpstrDefExt, m_ofn.lpstrFilter))
        return path;
    if (m_bOpen && ::GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES)
        return path;
    return path + '.' + m_ofn.lpstrDefExt;
}

BOOL CZoFileOpen::IsAcceptable(const CString& path)
{
    const DWORD flags = m_ofn.Flags;
    if ((flags & OFN_NOVALIDATE) != 0)
        return TRUE;
    const NoSystemBoxes guard;
    if ((flags & (OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST)) != 0 && !FolderExists(ParentOf(path)))
        return Refuse(ZO_IDS_FILE_FOLDER_MISSING, path);
    const DWORD attributes = ::GetFileAttributesA(path);
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (!exists && (flags & OFN_FILEMUSTEXIST) != 0)
        return Refuse(ZO_IDS_FILE_MISSING, path);
    if (!exists && (flags & OFN_CREATEPROMPT) != 0)
        return AskUser(*this, ZO_IDS_FILE_CREATE, path, MB_YESNO | MB_ICONQUESTION) == IDYES;
    if (exists && (flags & OFN_NOREADONLYRETURN) != 0 && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return Refuse(ZO_IDS_FILE_WRITE_PROTECTED, path);
    if (exists && !m_bOpen && (flags & OFN_OVERWRITEPROMPT) != 0)
        return AskUser(*this, ZO_IDS_FILE_EXISTS, path, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
    return TRUE;
}

/// Hands the path over, if a derived class agrees.
void CZoFileOpen::Finish(const CString& path)
{
    Restored buffer(m_ofn.lpstrFile);
    CopyBounded(m_ofn.lpstrFile, m_ofn.nMaxFile, path);
    if (OnFileNameOK())
        return;
    buffer.Stay();
    const int offset = path.ReverseFind('\\') + 1;
    const int dot = path.ReverseFind('.');
    m_ofn.nFileOffset = static_cast<WORD>(offset);
    m_ofn.nFileExtension = static_cast<WORD>(dot >= offset ? dot + 1 : 0);
    m_ofn.Flags &= ~static_cast<DWORD>(OFN_EXTENSIONDIFFERENT | OFN_READONLY);
    if (m_ofn.lpstrDefExt != nullptr && m_ofn.nFileExtension != 0 &&
        ::lstrcmpiA((LPCSTR)path + m_ofn.nFileExtension, m_ofn.lpstrDefExt) != 0)
        m_ofn.Flags |= OFN_EXTENSIONDIFFERENT;
    if ((m_ofn.Flags & OFN_HIDEREADONLY) == 0 && IsDlgButtonChecked(ZO_IDC_FILE_READ_ONLY) == BST_CHECKED)
        m_ofn.Flags |= OFN_READONLY;
    const LRESULT type = ::SendMessageA(Item(ZO_IDC_FILE_TYPES), CB_GETCURSEL, 0, 0);
    if (type >= 0 && Item(ZO_IDC_FILE_TYPES) != nullptr)
        m_ofn.nFilterIndex = static_cast<DWORD>(type) + 1;
    EndDialog(IDOK);
}

/// Says why a name cannot be taken, and lets it be corrected. \return FALSE
BOOL CZoFileOpen::Refuse(UINT message, LPCSTR path)
{
    AskUser(*this, message, path, MB_OK | MB_ICONEXCLAMATION);
    ::SetFocus(Item(ZO_IDC_FILE_NAME));
    ::SendMessageA(Item(ZO_IDC_FILE_NAME), EM_SETSEL, 0, -1);
    return FALSE;
}
