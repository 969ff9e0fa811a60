#include <zogbl/file_open.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "place_list.h"

#include <vector>

namespace {

using Following = ZoFollowing;

constexpr BYTE kAside = Following::kMoveRight;
constexpr BYTE kBelow = Following::kMoveDown;
constexpr Following kFollowing[] = {
    {ZO_IDC_FILE_NAME, Following::kWiden},
    {ZO_IDC_FILE_LIST, Following::kWiden | Following::kHeighten},
    {ZO_IDC_FILE_TYPES_LABEL, kBelow},
    {ZO_IDC_FILE_TYPES, kBelow | Following::kWiden},
    {ZO_IDC_FILE_FOLDERS_LABEL, kAside},
    {ZO_IDC_FILE_FOLDER, kAside},
    {ZO_IDC_FILE_FOLDERS, kAside | Following::kHeighten},
    {ZO_IDC_FILE_DRIVES_LABEL, kAside | kBelow},
    {ZO_IDC_FILE_DRIVES, kAside | kBelow},
    {ZO_IDC_FILE_RECENT_LABEL, kBelow},
    {ZO_IDC_FILE_RECENT, kBelow | Following::kWiden},
    {ZO_IDC_FILE_READ_ONLY, kBelow},
    {IDOK, kAside},
    {IDCANCEL, kAside},
    {ZO_IDC_FILE_UP, kAside},
    {ZO_IDC_FILE_NEW_FOLDER, kAside},
};

} // namespace

CZoFileOpen::CZoFileOpen(BOOL open, UINT templateId, LPCSTR defaultExtension, LPCSTR fileName, DWORD flags,
                         LPCSTR filter, CWnd* parent)
    : CZoDialog(templateId != 0 ? templateId : ZO_IDD_FILE_OPEN, parent),
      CZoFileForm(static_cast<CWnd&>(*this), open, defaultExtension, fileName, flags, filter)
{
}

CZoFileOpen::~CZoFileOpen() = default;

INT_PTR CZoFileOpen::DoModal()
{
    if (m_ofn.lpstrFile == nullptr || m_ofn.nMaxFile == 0)
        return -1;
    return ResultOr<CMemoryException>(-1, [this] { return CZoDialog::DoModal(); });
}

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
    ReloadTexts();
    const HWND readOnly = ::GetDlgItem(m_hWnd, ZO_IDC_FILE_READ_ONLY);
    const bool folds = readOnly != nullptr && (m_ofn.Flags & OFN_HIDEREADONLY) != 0;
    if (folds)
        FoldAway(m_hWnd, readOnly);
    if (!BeginForm())
        AfxThrowMemoryException();
    if ((GetStyle() & WS_THICKFRAME) != 0) {
        std::vector<Following> controls; // that the template has
        for (const Following& control : kFollowing) {
            if (::GetDlgItem(m_hWnd, control.control) != nullptr)
                controls.push_back(control);
        }
        MakeSizable(controls.data(), static_cast<int>(controls.size()), folds ? "FileOpen" : "FileOpenReadOnly");
    }
    CenterWindow();
    ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_FILE_NAME));
}

void CZoFileOpen::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    CString title;
    if (m_ofn.lpstrTitle != nullptr)
        SetWindowText(m_ofn.lpstrTitle);
    else if (!IsOpenDialog() && ZoGblLoadString(ZO_IDS_SAVE_AS_TITLE, title))
        SetWindowText(title);
    ReloadFormTexts();
}

/// Enter in the list of folders goes to the one selected, everywhere else it takes the name.
void CZoFileOpen::OnOK()
{
    if (TakeName())
        EndDialog(IDOK);
}

void CZoFileOpen::OnNameTaken() { EndDialog(IDOK); }

void CZoFileOpen::OnFileChosen() { OnOK(); }

LRESULT CZoFileOpen::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return HandleFormMessage(message, wParam, lParam, result) ? result : CZoDialog::WindowProc(message, wParam, lParam);
}
