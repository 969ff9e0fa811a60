#include <zogbl/status_wnd.h>

#include <zogbl/gdi_data.h>
#include <zogbl/resource_lookup.h>

#include "common/without_throwing.h"
#include "controls/drawing/item_painting.h"

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoStatusWnd, CZoControl)

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr int kPadding = 3; // pixels at 96 dots an inch, around the text
constexpr WORD kNoNumber = 0xFFFF;

/// Whether the children of a window are controls that somebody numbered, not parts that a control made for itself.
bool HoldsControls(HWND window, HWND outermost)
{
    char name[8] = "";
    return window == outermost || (::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0 ||
           (::GetClassNameA(window, name, sizeof name) != 0 && lstrcmpA(name, "#32770") == 0);
}

} // namespace

CZoStatusWnd::~CZoStatusWnd() { DestroyWindow(); }

BOOL CZoStatusWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.dwExStyle |= WS_EX_STATICEDGE;
    return CZoControl::PreCreateWindow(cs);
}

int CZoStatusWnd::GetBestHeight(int lines) const
{
    CRect edges;
    ::AdjustWindowRectEx(&edges, 0, FALSE, WS_EX_STATICEDGE);
    return lines * WindowFontDC(m_hWnd, GetFontHandle()).GetLineHeight() + 2 * CZoGlobalGDIData::Scale(kPadding) +
           edges.Height();
}

// What is explained ---------------------------------------------------------------------------------------------------

/// Empty if the control has no explanation. Throws CMemoryException*.
CString CZoStatusWnd::TextOf(HWND control) const
{
    CString text;
    const auto number = static_cast<WORD>(::GetDlgCtrlID(control));
    if (number == 0 || number == kNoNumber || control == m_hWnd || !HoldsControls(::GetParent(control), GetExplained()))
        return text;
    ZoGblLoadString(number, text);
    return text.SpanExcluding("\r\n");
}

/// The smallest explained one below \p parent that has a point. Boxes around groups lie over their controls or under
/// them, and a disabled control is passed over by the system's own search.
void CZoStatusWnd::FindSmallest(HWND parent, POINT point, HWND& found, LONGLONG& size) const
{
    for (HWND child = ::GetWindow(parent, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CRect area;
        ::GetWindowRect(child, &area);
        if (!::IsWindowVisible(child) || !area.PtInRect(point))
            continue;
        const LONGLONG childSize = static_cast<LONGLONG>(area.Width()) * area.Height();
        if ((found == nullptr || childSize < size) && !TextOf(child).IsEmpty()) {
            found = child;
            size = childSize;
        }
        FindSmallest(child, point, found, size);
    }
}

HWND CZoStatusWnd::FindPointed() const
{
    POINT point = {};
    HWND found = nullptr;
    LONGLONG size = 0;
    const HWND outermost = GetExplained();
    if (!::GetCursorPos(&point))
        return nullptr;
    const HWND window = ::WindowFromPoint(point); // another program's may lie over it
    if (window != nullptr && (window == outermost || ::IsChild(outermost, window)))
        FindSmallest(outermost, point, found, size);
    return found;
}

HWND CZoStatusWnd::FindFocused() const
{
    const HWND outermost = GetExplained();
    HWND window = ::GetFocus();
    if (window == nullptr || !::IsChild(outermost, window))
        return nullptr;
    while (window != nullptr && window != outermost && TextOf(window).IsEmpty())
        window = ::GetParent(window);
    return window != outermost ? window : nullptr;
}

void CZoStatusWnd::Look()
{
    WithoutThrowing([this] { // without memory the text stays until the next look
        const HWND pointed = FindPointed(), focused = FindFocused();
        if (pointed != m_hPointed)
            m_bByPointer = true;
        else if (focused != m_hFocused)
            m_bByPointer = false;
        m_hPointed = pointed;
        m_hFocused = focused;
        const HWND control = (m_bByPointer && pointed != nullptr) || focused == nullptr ? pointed : focused;
        CString shown;
        GetWindowText(shown);
        const CString text = control != nullptr ? TextOf(control) : CString();
        if (text != shown)
            SetWindowText(text);
    });
}

// The control ---------------------------------------------------------------------------------------------------------

BOOL CZoStatusWnd::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(part, description))
        return FALSE;
    GetWindowText(description.name); // not what stands before it
    description.role = ROLE_SYSTEM_STATICTEXT;
    description.state |= STATE_SYSTEM_READONLY;
    return TRUE;
}

void CZoStatusWnd::OnReloadTexts() { Look(); }

void CZoStatusWnd::OnDraw(CDC* dc, const CRect& dirty)
{
    RunTimer();
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    CRect area = GetClientArea();
    area.DeflateRect(2 * CZoGlobalGDIData::Scale(kPadding), CZoGlobalGDIData::Scale(kPadding));
    CString text;
    GetWindowText(text);
    dc->SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    dc->DrawText(text, area, DT_LEFT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX); // whole lines alone
}

/// The timer runs while the window can be seen: drawing it starts the timer again.
void CZoStatusWnd::RunTimer()
{
    if (m_bTimer)
        return;
    m_bTimer = SetTimer(kTimer, kLookEach, nullptr) != 0;
}

LRESULT CZoStatusWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER && wParam == kTimer) {
        if (::IsWindowVisible(m_hWnd)) {
            Look();
        } else {
            KillTimer(kTimer);
            m_bTimer = false;
        }
        return 0;
    }
    if (message == WM_DESTROY) {
        KillTimer(kTimer);
        m_bTimer = false;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
