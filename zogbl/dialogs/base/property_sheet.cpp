#include <zogbl/property_sheet.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialog_resource.h"
#include "ground/language_followers.h"
#include "window_layout.h"

#include <new>

namespace {

/// Counts what goes on within one another, also where an exception ends it.
class Nesting {
public:
    explicit Nesting(int& depth) : m_depth(++depth) {}
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& m_depth;
};

} // namespace

// The page ------------------------------------------------------------------------------------------------------------

CZoPropertyPage::CZoPropertyPage(UINT templateId) : CPropertyPage(templateId), m_nTemplateId(templateId) {}

CZoPropertyPage::~CZoPropertyPage() = default;

BOOL CZoPropertyPage::LoadTemplate()
{
    m_template.reset(new (std::nothrow) DialogTemplate(m_nTemplateId));
    if (!m_template || m_template->Get() == nullptr)
        return FALSE;
    m_psp.dwFlags |= PSP_DLGINDIRECT;
    m_psp.pResource = m_template->Get();
    return TRUE;
}

void CZoPropertyPage::ReloadTexts() { ReloadDialogTexts(*this, m_nTemplateId); }

BOOL CZoPropertyPage::MakeSizable(const ZoFollowing* controls, int count)
{
    return WithoutThrowing([&] { m_layout = std::make_unique<WindowLayout>(*this, controls, count, nullptr); });
}

LRESULT CZoPropertyPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* sheet = dynamic_cast<CZoPropertySheet*>(FromHandlePermanent(::GetParent(m_hWnd)));
    if (message == WM_SHOWWINDOW && wParam != FALSE && lParam == 0 && sheet != nullptr)
        sheet->OnPageShown(this);
    if (message == WM_DESTROY)
        m_layout.reset();
    const LRESULT result = CPropertyPage::WindowProc(message, wParam, lParam);
    if (message == WM_SIZE && m_layout != nullptr)
        m_layout->OnSize();
    if (message == WM_WINDOWPOSCHANGING && sheet != nullptr && !sheet->m_pageArea.IsRectEmpty()) {
        WINDOWPOS& place = *reinterpret_cast<WINDOWPOS*>(lParam); // the system's, at each change of pages
        const CRect& area = sheet->m_pageArea;
        place.x = area.left;
        place.y = area.top;
        place.cx = area.Width();
        place.cy = area.Height();
        place.hwndInsertAfter = sheet->m_hBeforePages;
        place.flags &= ~static_cast<UINT>(SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
    }
    return result;
}

// The sheet -----------------------------------------------------------------------------------------------------------

CZoPropertySheet::CZoPropertySheet(UINT titleId, CWnd* parent, UINT firstPage)
    : CPropertySheet(LoadText(titleId), parent, firstPage), m_nTitleId(titleId)
{
}

CZoPropertySheet::CZoPropertySheet(LPCSTR title, CWnd* parent, UINT firstPage)
    : CPropertySheet(title, parent, firstPage)
{
}

CZoPropertySheet::~CZoPropertySheet() = default;

INT_PTR CZoPropertySheet::DoModal()
{
    for (int i = 0; i < GetPageCount(); ++i) {
        if (!GetPage(i)->LoadTemplate())
            return -1;
    }
    m_bCloseOnly = false;
    const LanguageFollower follower(
        LanguageFollower::Occasion::kWindows,
        [](void* what) {
            auto* sheet = static_cast<CZoPropertySheet*>(what);
            if (sheet->m_hWnd != nullptr)
                sheet->ReloadTexts();
        },
        this);
    return ResultOr<CMemoryException>(-1, [this] { return CPropertySheet::DoModal(); });
}

BOOL CZoPropertySheet::OnInitDialog()
{
    ReloadButtons();
    CenterWindow();
    return CPropertySheet::OnInitDialog();
}

void CZoPropertySheet::ReloadTexts()
{
    WithoutThrowing<CMemoryException>([this] { // without memory the rest stays as it is
        if (m_nTitleId != 0)
            SetWindowText(LoadText(m_nTitleId));
        for (int i = 0; i < GetPageCount(); ++i) {
            CZoPropertyPage* page = GetPage(i);
            if (page->IsCreated())
                page->ReloadTexts();
            CString title = DialogTitle(page->m_nTemplateId);
            TCITEMA item = {};
            item.mask = TCIF_TEXT;
            item.pszText = title.GetBuffer(0);
            ::SendMessageA(TabControl(), TCM_SETITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
    });
    ReloadButtons();
}

void CZoPropertySheet::ReloadButtons()
{
    const struct {
        int button, text;
    } buttons[] = {{IDOK, m_bCloseOnly ? ZO_IDS_SHEET_CLOSE : ZO_IDS_SHEET_OK},
                   {IDCANCEL, ZO_IDS_SHEET_CANCEL},
                   {ID_APPLY_NOW, ZO_IDS_SHEET_APPLY}};
    WithoutThrowing([&] {
        for (const auto& row : buttons)
            SetDlgItemText(row.button, LoadText(static_cast<UINT>(row.text)));
    });
}

LRESULT CZoPropertySheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND focus = ::GetFocus();
    const Nesting nesting(m_nMessages);
    const LRESULT result = CPropertySheet::WindowProc(message, wParam, lParam);
    if (message == PSM_CANCELTOCLOSE) { // has put the system's word on the button
        m_bCloseOnly = true;
        ReloadButtons();
    }
    // Between two pages, in the midst of the change, there is none that could have the focus.
    if (m_nMessages == 1 && m_hWnd != nullptr && focus != nullptr && ::IsChild(m_hWnd, focus))
        PassFocusOn(focus);
    return result;
}

CRect CZoPropertySheet::PlaceOf(HWND child) const
{
    CRect place;
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void CZoPropertySheet::MakeRoomAtLeft(int distance)
{
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const CRect place = PlaceOf(child);
        ::SetWindowPos(child, nullptr, place.left + distance, place.top, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    CRect window;
    GetWindowRect(&window);
    SetWindowPos(nullptr, 0, 0, window.Width() + distance, window.Height(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CZoPropertySheet::SetPagePlace(const CRect& area, HWND before)
{
    m_pageArea = area;
    m_hBeforePages = before;
    for (int i = 0; i < GetPageCount(); ++i) {
        const CZoPropertyPage* page = GetPage(i);
        if (page->IsCreated())
            ::SetWindowPos(page->m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOACTIVATE);
    }
}

/// Keys must not go to a control that is hidden with its page, nor to one that is disabled, as Apply is after its work.
/// \param before what had the focus
void CZoPropertySheet::PassFocusOn(HWND before)
{
    const HWND focus = ::GetFocus(); // the system may have moved it, to another control of the hidden page
    const bool isOurs = focus == nullptr || focus == m_hWnd || ::IsChild(m_hWnd, focus);
    const bool takesKeys = focus != nullptr && focus != m_hWnd && ::IsWindowVisible(focus) && ::IsWindowEnabled(focus);
    if (!IsWindowVisible() || !isOurs || takesKeys)
        return;
    const HWND page = reinterpret_cast<HWND>(SendMessage(PSM_GETCURRENTPAGEHWND));
    HWND next = nullptr;
    if (::GetParent(before) == m_hWnd)
        next = ::GetDlgItem(m_hWnd, IDOK);
    else if (page != nullptr)
        next = ::GetNextDlgTabItem(page, nullptr, FALSE);
    if (next == nullptr)
        next = TabControl();
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
}
