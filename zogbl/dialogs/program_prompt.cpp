#include <zogbl/program_prompt.h>

#include <common/without_throwing.h>
#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/tell_user.h"
#include "dialogs/files/places.h"

namespace {

BOOL IsFile(LPCSTR path)
{
    const NoSystemBoxes guard;
    const DWORD attributes = ::GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace

BEGIN_MESSAGE_MAP(CZoProgramPromptDlg, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_PROGRAM_PROMPT_BROWSE, OnBrowse)
END_MESSAGE_MAP()

CZoProgramPromptDlg::CZoProgramPromptDlg(LPCSTR title, LPCSTR prompt, LPCSTR path, CWnd* parent)
    : CZoDialog(ZO_IDD_PROGRAM_PROMPT, parent)
{
    WithoutThrowing([&] {
        m_csTitle = title;
        m_csPrompt = prompt;
        m_csPath = path;
    });
}

CZoProgramPromptDlg::~CZoProgramPromptDlg() = default;

INT_PTR CZoProgramPromptDlg::DoModal()
{
    return ResultOr(-1, [this] { return CZoDialog::DoModal(); });
}

BOOL CZoProgramPromptDlg::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    SetWindowText(m_csTitle);
    SetDlgItemText(ZO_IDC_PROGRAM_PROMPT_TEXT, m_csPrompt);
    SetDlgItemText(ZO_IDC_PROGRAM_PROMPT_PATH, m_csPath);
    SendDlgItemMessage(ZO_IDC_PROGRAM_PROMPT_PATH, EM_LIMITTEXT, MAX_PATH - 1);
    CenterWindow();
    ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_PROGRAM_PROMPT_PATH));
    return FALSE;
}

CString CZoProgramPromptDlg::FieldText() const
{
    char text[MAX_PATH] = "";
    GetDlgItemText(ZO_IDC_PROGRAM_PROMPT_PATH, text, sizeof text);
    CString path = text;
    path.TrimLeft();
    path.TrimRight();
    return path;
}

void CZoProgramPromptDlg::OnOK()
{
    WithoutThrowing([&] {
        const CString path = FieldText();
        if (IsFile(path)) {
            m_csPath = path;
            EndDialog(IDOK);
            return;
        }
        AskUser(*this, path.IsEmpty() ? ZO_IDS_PROGRAM_PROMPT_EMPTY : ZO_IDS_PROGRAM_PROMPT_MISSING, "",
                MB_OK | MB_ICONEXCLAMATION);
        ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_PROGRAM_PROMPT_PATH));
    });
}

void CZoProgramPromptDlg::OnBrowse()
{
    WithoutThrowing([&] {
        constexpr char kPattern[] = "*.exe";
        const CString filter = LoadText(ZO_IDS_PROGRAM_PROMPT_PROGRAMS) + '\0' + kPattern + '\0'; // and the text's own
        CZoFileOpen dialog(TRUE, 0, nullptr, FieldText(), OFN_FILEMUSTEXIST | OFN_HIDEREADONLY, filter, this);
        if (dialog.DoModal() == IDOK)
            SetDlgItemText(ZO_IDC_PROGRAM_PROMPT_PATH, dialog.GetPathName());
    });
}
