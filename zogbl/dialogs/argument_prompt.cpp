#include <zogbl/argument_prompt.h>

#include <common/without_throwing.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"
#include "ground/bounded_text.h"

CZoArgumentPromptDlg::CZoArgumentPromptDlg(CWnd* parent) : CZoDialog(ZO_IDD_ARGUMENT_PROMPT, parent) {}

CZoArgumentPromptDlg::~CZoArgumentPromptDlg() = default;

INT_PTR CZoArgumentPromptDlg::DoModal()
{
    return ResultOr(-1, [this] { return CZoDialog::DoModal(); });
}

BOOL CZoArgumentPromptDlg::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    const HICON icon = m_hIcon != nullptr ? m_hIcon : ::LoadIconA(nullptr, IDI_APPLICATION);
    SendDlgItemMessage(ZO_IDC_ARGUMENT_PROMPT_ICON, STM_SETICON, reinterpret_cast<WPARAM>(icon));
    ShowProgram();
    SetDlgItemText(ZO_IDC_ARGUMENT_PROMPT_TEXT, m_csPrompt);
    SendDlgItemMessage(ZO_IDC_ARGUMENT_PROMPT_ANSWER, EM_LIMITTEXT, static_cast<WPARAM>(m_nAnswerLength));
    SetDlgItemText(ZO_IDC_ARGUMENT_PROMPT_ANSWER, m_csAnswer);
    SendDlgItemMessage(ZO_IDC_ARGUMENT_PROMPT_ANSWER, EM_SETSEL, 0, -1);
    WithoutThrowing([this] { CenterWindow(); });
    ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_ARGUMENT_PROMPT_ANSWER));
    return FALSE;
}

/// A path that is too long for its line loses folders from its middle.
void CZoArgumentPromptDlg::ShowProgram()
{
    const HWND line = ::GetDlgItem(m_hWnd, ZO_IDC_ARGUMENT_PROMPT_PROGRAM);
    WithoutThrowing([&] {
        WindowFontDC dc(line);
        RECT place;
        ::GetClientRect(line, &place);
        char path[MAX_PATH];
        CZoGlobalFileNameFunctions::AbbreviateFilePath(m_csProgram, path, &dc, place.right);
        return ::SetWindowTextA(line, path);
    });
}

void CZoArgumentPromptDlg::OnOK()
{
    WithoutThrowing([this] {
        CString text;
        ::GetWindowTextA(::GetDlgItem(m_hWnd, ZO_IDC_ARGUMENT_PROMPT_ANSWER), text.GetBuffer(2 * m_nAnswerLength),
                         2 * m_nAnswerLength + 1);
        text.ReleaseBuffer();
        // The field's limit counts characters.
        CString answer;
        CopyBounded(answer.GetBuffer(m_nAnswerLength), static_cast<size_t>(m_nAnswerLength) + 1, text);
        answer.ReleaseBuffer();
        m_csAnswer = answer;
        EndDialog(IDOK);
        return TRUE;
    });
}
