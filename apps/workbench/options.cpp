#include "options.h"

#include "page.h"
#include "workbench_ids.h"

#include "../text_box.h"

#include <zogbl/dialog.h>
#include <zogbl/font_dialog.h>
#include <zogbl/kept_answers_page.h>
#include <zogbl/options_sheet.h>
#include <zogbl/workspace_page.h>

#include <iterator>
#include <string>

namespace {

/// The font of documents, and what a printed page has.
class DocumentPage : public CZoPropertyPage {
public:
    DocumentPage() : CZoPropertyPage(ZO_IDD_DOCUMENT_PAGE) {}

protected:
    BOOL OnInitDialog() override;
    BOOL OnApply() override;
    void ReloadTexts() override;
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    afx_msg void OnFont();
    afx_msg void OnHeading() { SetModified(); }
    DECLARE_MESSAGE_MAP()

private:
    void ShowSample();

    DocumentSettings m_settings;
    CFont m_font; // of the sample
};

BEGIN_MESSAGE_MAP(DocumentPage, CZoPropertyPage)
    ON_WM_CTLCOLOR()
    ON_BN_CLICKED(ZO_IDC_DOCUMENT_FONT, OnFont)
    ON_BN_CLICKED(ZO_IDC_DOCUMENT_HEADING, OnHeading)
END_MESSAGE_MAP()

BOOL DocumentPage::OnInitDialog()
{
    CZoPropertyPage::OnInitDialog();
    constexpr ZoFollowing following[] = {{ZO_IDC_DOCUMENT_SAMPLE, ZoFollowing::kWiden},
                                         {ZO_IDC_DOCUMENT_FONT, ZoFollowing::kMoveRight},
                                         {ZO_IDC_DOCUMENT_HEADING, ZoFollowing::kWiden}};
    MakeSizable(following, static_cast<int>(std::size(following))); // without memory they stay where they are
    m_settings = LoadDocumentSettings();
    CheckDlgButton(ZO_IDC_DOCUMENT_HEADING, m_settings.heading ? BST_CHECKED : BST_UNCHECKED);
    ShowSample();
    return TRUE;
}

void DocumentPage::ReloadTexts()
{
    CZoPropertyPage::ReloadTexts();
    ShowSample();
}

void DocumentPage::ShowSample()
{
    CWnd* sample = GetDlgItem(ZO_IDC_DOCUMENT_SAMPLE);
    CFont font;
    const bool isMade = !m_settings.IsFontUsual() && font.CreateFontIndirect(&m_settings.font);
    sample->SetFont(isMade ? &font : ControlFont());
    m_font.DeleteObject();
    if (isMade)
        m_font.Attach(font.Detach());
    CString text = Text(ZO_IDS_DOCUMENT_PAGE_USUAL);
    if (!m_settings.IsFontUsual()) {
        const CClientDC screen(nullptr);
        const LONG height = m_settings.font.lfHeight < 0 ? -m_settings.font.lfHeight : m_settings.font.lfHeight;
        const int points = ::MulDiv(height, 72, screen.GetDeviceCaps(LOGPIXELSY));
        text.Format(Text(ZO_IDS_DOCUMENT_PAGE_SAMPLE), m_settings.font.lfFaceName, std::to_string(points).c_str());
    }
    sample->SetWindowText(text);
    sample->Invalidate();
}

HBRUSH DocumentPage::OnCtlColor(CDC* dc, CWnd* control, UINT kind)
{
    const HBRUSH ground = CZoPropertyPage::OnCtlColor(dc, control, kind);
    if (control->GetDlgCtrlID() == ZO_IDC_DOCUMENT_SAMPLE && m_settings.color != CLR_DEFAULT)
        dc->SetTextColor(m_settings.color);
    return ground;
}

void DocumentPage::OnFont()
{
    if (!ChooseDocumentFont(this, m_settings))
        return;
    ShowSample();
    SetModified();
}

BOOL DocumentPage::OnApply()
{
    m_settings.heading = IsDlgButtonChecked(ZO_IDC_DOCUMENT_HEADING) == BST_CHECKED;
    const DWORD status = SaveDocumentSettings(m_settings);
    TellStatus(ZO_IDS_DOCUMENT_PAGE_NOT_KEPT, status);
    return status == ERROR_SUCCESS && CZoPropertyPage::OnApply();
}

/// The questions of the Workbench, in the language of now.
class AnswersPage : public CZoKeptAnswersPage {
protected:
    void Describe(LPCSTR name, CString& words) const override
    {
        if (lstrcmp(name, kLeaveQuestion) == 0)
            words = Text(ZO_IDS_LEAVE_ASK);
    }
};

} // namespace

INT_PTR EditOptions(CWnd* owner)
{
    CZoOptionsSheet sheet(ZO_IDS_OPTIONS_TITLE, owner, "WorkbenchOptions");
    CZoWorkspacePage workspace;
    AnswersPage answers;
    DocumentPage documents;
    sheet.AddPage(&workspace);
    sheet.AddPage(&answers, &workspace);
    sheet.AddPage(&documents);
    const INT_PTR result = sheet.DoModal();
    if (result == -1)
        AfxMessageBox(Text(ZO_IDS_DIALOG_NOT_OPENED), MB_ICONEXCLAMATION);
    return result;
}

BOOL ChooseDocumentFont(CWnd* owner, DocumentSettings& settings)
{
    CZoFontDialog dialog(CZoFontDialog::kEffects, owner);
    LOGFONT font = settings.font;
    const bool isKnown = !settings.IsFontUsual() || ControlFont()->GetLogFont(&font) != 0;
    if (settings.IsFontUsual()) // by the name of the face that stands for it
        WithFont(nullptr, ControlFont(), [&font](CDC& dc) { return ::GetTextFace(dc, LF_FACESIZE, font.lfFaceName); });
    if (isKnown)
        dialog.SetFont(font);
    dialog.SetColor(settings.color);
    const INT_PTR result = dialog.DoModal();
    if (result == -1)
        AfxMessageBox(Text(ZO_IDS_DIALOG_NOT_OPENED), MB_ICONEXCLAMATION);
    if (result != IDOK)
        return FALSE;
    settings.font = dialog.GetFont();
    settings.color = dialog.GetColor();
    return TRUE;
}

void TellStatus(UINT text, DWORD status)
{
    if (status == ERROR_SUCCESS)
        return;
    CString message;
    message.Format(Text(text), status);
    AfxMessageBox(message, MB_ICONEXCLAMATION);
}
