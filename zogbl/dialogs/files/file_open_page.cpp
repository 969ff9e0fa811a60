#include <zogbl/file_open_page.h>

#include <zogbl/resource_ids.h>

CZoFileOpenPage::CZoFileOpenPage(BOOL open, UINT templateId, LPCSTR defaultExtension, LPCSTR fileName, DWORD flags,
                                 LPCSTR filter)
    : CZoPropertyPage(templateId != 0 ? templateId : ZO_IDD_FILE_PAGE),
      CZoFileForm(static_cast<CWnd&>(*this), open, defaultExtension, fileName, flags, filter)
{
}

CZoFileOpenPage::~CZoFileOpenPage() = default;

BOOL CZoFileOpenPage::OnInitDialog()
{
    CZoPropertyPage::OnInitDialog();
    if (!BeginForm())
        AfxThrowMemoryException(); // the sheet's DoModal ends
    SetModified(FALSE);
    return TRUE;
}

BOOL CZoFileOpenPage::OnApply() { return (IsNameUnchanged() || TakeName()) && CZoPropertyPage::OnApply(); }

void CZoFileOpenPage::OnNameTaken() { GetParent()->PostMessage(PSM_PRESSBUTTON, static_cast<WPARAM>(m_nButton)); }

void CZoFileOpenPage::ReloadTexts()
{
    CZoPropertyPage::ReloadTexts();
    ReloadFormTexts();
}

BOOL CZoFileOpenPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto& notification = *reinterpret_cast<const PSHNOTIFY*>(lParam);
    if (notification.hdr.code == static_cast<UINT>(PSN_APPLY))
        m_nButton = notification.lParam != 0 ? PSBTN_OK : PSBTN_APPLYNOW;
    return CZoPropertyPage::OnNotify(wParam, lParam, result);
}

LRESULT CZoFileOpenPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    const BOOL isDone = HandleFormMessage(message, wParam, lParam, result);
    if ((message == WM_COMMAND || message == WM_TIMER) && !IsNameUnchanged())
        SetModified(); // another name, or the same in another folder
    return isDone ? result : CZoPropertyPage::WindowProc(message, wParam, lParam);
}
