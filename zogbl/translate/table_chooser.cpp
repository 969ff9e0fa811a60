#include "table_chooser.h"

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/list_rows.h"
#include "dialogs/base/dialog_resource.h"
#include "dialogs/base/kept_file_box.h"
#include "files/folder_walk.h"
#include "translate_status.h"

#include <vector>

BEGIN_MESSAGE_MAP(TableChooser, CZoDialog)
    ON_LBN_DBLCLK(ZO_IDC_TRANSLATE_CHOICES, OnOK)
END_MESSAGE_MAP()

TableChooser::TableChooser(LPCSTR path, CWnd* parent) : CZoDialog(ZO_IDD_TRANSLATE_CHOOSER, parent), m_csPath(path) {}

CString TableChooser::FolderPrefix(const CString& path)
{
    CString prefix = path;
    const int dot = prefix.ReverseFind('.');
    if (dot >= 0) {
        // The last character of the name goes with its extension. No name is left behind in the end, so it does no
        // harm.
        const LPCSTR text = path;
        prefix = prefix.Left(static_cast<int>(PreviousCharacter(text, text + dot) - text));
        const int backslash = prefix.ReverseFind('\\');
        if (backslash >= 0)
            prefix = prefix.Left(backslash);
    }
    return prefix.Find('\\') >= 0 ? prefix + '\\' : prefix;
}

BOOL TableChooser::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    m_list.SubclassDlgItem(ZO_IDC_TRANSLATE_CHOICES, this);
    if (!WithoutThrowing([this] { Fill(); })) {
        EndDialog(-1);
        return TRUE;
    }
    CenterWindow();
    const bool isEmpty = m_list.GetCount() == 0;
    if (!isEmpty)
        m_list.SetCurSel(0);
    m_list.EnableWindow(!isEmpty);
    GetDlgItem(IDOK)->EnableWindow(!isEmpty);
    if (isEmpty)
        WithoutThrowing([this] { TellWhy(); });
    else
        TakeRoomOfReason();
    // Not SetFocus, which would leave OK the button that Enter presses.
    SendMessage(WM_NEXTDLGCTL,
                reinterpret_cast<WPARAM>(::GetDlgItem(m_hWnd, isEmpty ? IDCANCEL : ZO_IDC_TRANSLATE_CHOICES)), TRUE);
    return FALSE;
}

/// The list takes the room of the text that says why it is empty.
void TableChooser::TakeRoomOfReason()
{
    CRect list, why;
    m_list.GetWindowRect(&list);
    const HWND reason = ::GetDlgItem(m_hWnd, ZO_IDC_TRANSLATE_WHY);
    ::GetWindowRect(reason, &why);
    ::ShowWindow(reason, SW_HIDE);
    m_list.SetWindowPos(nullptr, 0, 0, list.Width(), why.bottom - list.top, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Names the folder in which there is no table.
void TableChooser::TellWhy()
{
    CString folder = FolderPrefix(m_csPath);
    char full[MAX_PATH] = "";
    const DWORD length = ::GetFullPathNameA(folder.IsEmpty() ? "." : (LPCSTR)folder, sizeof full, full, nullptr);
    if (length > 0 && length < sizeof full)
        folder = full;
    SetDlgItemText(ZO_IDC_TRANSLATE_WHY, LoadText(ZO_IDS_TRANSLATE_NO_TABLES, folder));
}

/// Throws CMemoryException*.
void TableChooser::Fill()
{
    m_list.ResetContent();
    m_descriptions.RemoveAll();
    m_paths.RemoveAll();
    FindTables();
    const INT_PTR count = m_paths.GetSize();
    std::vector<bool> isTwice(static_cast<size_t>(count));
    for (INT_PTR i = 0; i < count; ++i) {
        for (INT_PTR k = 0; k < count; ++k) {
            if (k != i && m_descriptions[i].CompareNoCase(m_descriptions[k]) == 0)
                isTwice[static_cast<size_t>(i)] = true;
        }
    }
    const int name = FolderPrefix(m_csPath).GetLength();
    for (INT_PTR i = 0; i < count; ++i) {
        if (isTwice[static_cast<size_t>(i)])
            m_descriptions[i] += " (" + m_paths[i].Mid(name) + ")";
        if (m_list.AddString(m_descriptions[i]) < 0)
            AfxThrowMemoryException();
    }
}

/// The translation files of the folder. Throws CMemoryException*.
void TableChooser::FindTables()
{
    const CString prefix = FolderPrefix(m_csPath);
    WIN32_FIND_DATAA entry;
    const FolderSearch search(prefix + "*.*", entry);
    for (BOOL found = search.IsOpen(); found; found = search.FindNext(entry)) {
        if (IsFolder(entry))
            continue;
        CGblTranslate table;
        const CString path = prefix + entry.cFileName;
        const DWORD status = table.Load(path);
        if (status == ZO_TRANSLATE_NO_MEMORY)
            AfxThrowMemoryException();
        if (status != ZO_TRANSLATE_SUCCESS)
            continue;
        CString description;
        table.GetDescription(description);
        m_descriptions.Add(description);
        m_paths.Add(path);
    }
}

void TableChooser::OnOK()
{
    const int row = m_list.GetCurSel();
    if (row < 0)
        return;
    const BOOL taken = WithoutThrowing([&] {
        const CString chosen = RowText(m_list.m_hWnd, row);
        INT_PTR file = 0;
        while (file < m_descriptions.GetSize() && m_descriptions[file].CompareNoCase(chosen) != 0)
            ++file;
        if (file < m_paths.GetSize())
            m_csChosen = m_paths[file];
        return TRUE;
    });
    EndDialog(taken ? IDOK : -1);
}

namespace {

/// Tables whose saving was killed are not listed, as they are cut: asks whether to put them back. Throws
/// CMemoryException*.
void OfferKeptTables(const CWnd* parent, const CString& prefix)
{
    CStringArray names;
    {
        WIN32_FIND_DATAA entry;
        const FolderSearch search(prefix + "*.*", entry);
        for (BOOL found = search.IsOpen(); found; found = search.FindNext(entry)) {
            const size_t length = std::strlen(entry.cFileName);
            DWORD kept = 0;
            if (length == 0 || entry.cFileName[length - 1] != '~' || IsFolder(entry))
                continue;
            const CString name = KeptFile::OwnerOf(prefix + entry.cFileName, kept);
            if (kept == kTableFileSize)
                names.Add(name);
        }
    }
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        OfferKeptFile(parent, prefix + names[i], AfxGetAppName());
}

} // namespace

unsigned long CGblTranslate::Load(CWnd* parent, const char* path)
{
    return OrNoMemory([&]() -> DWORD {
        OfferKeptTables(parent, TableChooser::FolderPrefix(path));
        TableChooser chooser(path, parent);
        switch (chooser.DoModal()) {
        case IDOK:
            return Load(chooser.GetChosenPath());
        case -1:
            return ZO_TRANSLATE_NO_MEMORY;
        default:
            return ZO_TRANSLATE_SUCCESS;
        }
    });
}
