#include <zomfx/program_prompt.h>

#include "resource_access.h"

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

namespace {

BOOL IsFile(LPCSTR path)
{
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace

BEGIN_MESSAGE_MAP(CZoProgramPromptDlg, CDialog)
    ON_BN_CLICKED(ZO_IDC_PROGRAM_PROMPT_BROWSE, OnBrowse)
END_MESSAGE_MAP()

CZoProgramPromptDlg::CZoProgramPromptDlg(LPCSTR title, LPCSTR prompt, LPCSTR path, CWnd* parent) : m_pOwner(parent)
{
    WithoutThrowing([&] {
        m_csTitle = title;
        m_csPrompt = prompt;
        m_csPath = path;
    });
}

INT_PTR CZoProgramPromptDlg::DoModal()
{
    const LPCDLGTEMPLATE dialog = ZoMfxLockDialog(ZO_IDD_PROGRAM_PROMPT);
    if (dialog == nullptr)
        return -1;
    INT_PTR result = -1;
    WithoutThrowing([&] {
        InitModalIndirect(dialog, m_pOwner);
        result = CDialog::DoModal();
    });
    return result;
}

BOOL CZoProgramPromptDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
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
        CString message;
        ZoMfxLoadString(path.IsEmpty() ? ZO_IDS_PROGRAM_PROMPT_EMPTY : ZO_IDS_PROGRAM_PROMPT_MISSING, message);
        ZoMfxMessageBox(m_hWnd, message, m_csTitle, MB_OK | MB_ICONEXCLAMATION);
        ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_PROGRAM_PROMPT_PATH));
    });
}

void CZoProgramPromptDlg::OnBrowse()
{
    WithoutThrowing([&] {
        constexpr char kPattern[] = "*.exe";
        CString name;
        ZoMfxLoadString(ZO_IDS_PROGRAM_PROMPT_PROGRAMS, name);
        const CString filter = name + '\0' + kPattern + '\0'; // and the terminator of the text
        CString path = FieldText();
        if (ZoMfxAskForFile(path, filter, this))
            SetDlgItemText(ZO_IDC_PROGRAM_PROMPT_PATH, path);
    });
}
