#include <zogbl/control.h>

#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>

#include "common/without_throwing.h"
#include "control_access.h"
#include "message_watch.h"
#include "paint_buffer.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

IMPLEMENT_DYNAMIC(CZoControl, CWnd)

namespace {

const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();

/// A font in a context, until it ends.
class SelectedFont {
public:
    SelectedFont(HDC dc, HFONT font) : m_dc(dc), m_before(::SelectObject(dc, font)) {}
    ~SelectedFont() { ::SelectObject(m_dc, m_before); }
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_before;
};

bool IsDown(int key) { return ::GetKeyState(key) < 0; }

/// The text of the label before a window, without the sign of its key; empty if there is none.
CString LabelOf(HWND window)
{
    CString text;
    const HWND label = ::GetWindow(window, GW_HWNDPREV);
    char windowClass[16] = "";
    if (label == nullptr || ::GetClassNameA(label, windowClass, sizeof windowClass) == 0 ||
        lstrcmpiA(windowClass, "Static") != 0 || !::IsWindowVisible(label))
        return text;
    CWnd::FromHandle(label)->GetWindowText(text);
    if ((::GetWindowLongA(label, GWL_STYLE) & SS_NOPREFIX) != 0)
        return text;
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] == '&')
            text.Delete(i); // of two, the second stays
    }
    return text;
}

} // namespace

/// A drag of a control, while it lasts.
class ControlDrag final : public MessageWatch {
public:
    explicit ControlDrag(CZoControl& control) : m_control(control) {}
    ~ControlDrag() override = default;

protected:
    BOOL OnMessage(const MSG& message) override
    {
        if (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE)
            return FALSE;
        m_control.UndoDrag(); // ends this object
        return TRUE;
    }

private:
    CZoControl& m_control;
};

// Life ----------------------------------------------------------------------------------------------------------------

CZoControl::Life::Life(CZoControl* control) : m_pControl(control), m_pOuter(std::exchange(control->m_pLife, this)) {}

CZoControl::Life::~Life()
{
    if (m_pControl != nullptr)
        m_pControl->m_pLife = m_pOuter;
}

CZoControl::CZoControl() = default;

CZoControl::~CZoControl()
{
    DestroyWindow(); // while the overrides of this class still answer
    End();
}

void CZoControl::End()
{
    for (Life* life = std::exchange(m_pLife, nullptr); life != nullptr; life = life->m_pOuter)
        life->m_pControl = nullptr;
    if (m_pAccess != nullptr)
        std::exchange(m_pAccess, nullptr)->Cut();
    delete std::exchange(m_pDrag, nullptr);
    m_hFont = nullptr; // that of the window which is gone
    m_bBeingCreated = FALSE;
}

BOOL CZoControl::RegisterControlClass()
{
    WNDCLASSA description = {};
    const HINSTANCE library = ZoGblGetInstanceHandle();
    if (::GetClassInfoA(library, ZO_CONTROL_CLASS, &description))
        return TRUE;
    description.style = CS_DBLCLKS | CS_GLOBALCLASS;
    description.lpfnWndProc = &::DefWindowProcA;
    description.hInstance = library;
    description.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    description.lpszClassName = ZO_CONTROL_CLASS;
    return ::RegisterClassA(&description) != 0;
}

BOOL CZoControl::Create(DWORD style, const RECT& area, CWnd* parent, UINT id)
{
    return RegisterControlClass() && CWnd::Create(ZO_CONTROL_CLASS, nullptr, style | WS_CHILD, area, parent, id);
}

BOOL CZoControl::PreCreateWindow(CREATESTRUCT& cs)
{
    m_bBeingCreated = TRUE;
    return CWnd::PreCreateWindow(cs);
}

void CZoControl::PreSubclassWindow()
{
    CWnd::PreSubclassWindow();
    if (m_bBeingCreated)
        return;
    m_hFont = reinterpret_cast<HFONT>(::SendMessageA(::GetParent(m_hWnd), WM_GETFONT, 0, 0)); // told before this began
    Call(&CZoControl::OnLayout);
}

void CZoControl::PostNcDestroy()
{
    End();
    CWnd::PostNcDestroy();
}

// Parts ---------------------------------------------------------------------------------------------------------------

int CZoControl::GetPartCount() const { return 0; }
int CZoControl::FindPart(CPoint) const { return 0; }
int CZoControl::GetFocusedPart() const { return 0; }
BOOL CZoControl::DoPartAction(int) { return FALSE; }

BOOL CZoControl::DescribePart(int part, ZoPart& description) const
{
    if (part != 0)
        return FALSE;
    const LONG style = ::GetWindowLongA(m_hWnd, GWL_STYLE);
    if ((style & WS_CHILD) != 0)
        description.name = LabelOf(m_hWnd);
    if (description.name.IsEmpty() && m_hWnd != nullptr)
        GetWindowText(description.name);
    description.role = ROLE_SYSTEM_CLIENT;
    description.area = GetClientArea();
    description.state = ((style & WS_VISIBLE) == 0 ? STATE_SYSTEM_INVISIBLE : 0) |
                        (!::IsWindowEnabled(m_hWnd)  ? STATE_SYSTEM_UNAVAILABLE
                         : (style & WS_TABSTOP) == 0 ? 0
                         : HasFocus()                ? STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED
                                                     : STATE_SYSTEM_FOCUSABLE);
    return TRUE;
}

LRESULT CZoControl::OnGetObject(WPARAM wParam, LPARAM lParam)
{
    // The number comes with or without its sign in the upper half.
    const LRESULT answer =
        static_cast<LONG>(lParam) == OBJID_CLIENT ? ControlAccess::Answer(m_pAccess, *this, wParam) : 0;
    return answer != 0 ? answer : ::DefWindowProcA(m_hWnd, WM_GETOBJECT, wParam, lParam);
}

void CZoControl::RaiseEvent(DWORD event, int part) const
{
    if (m_hWnd != nullptr)
        ControlAccess::RaiseEvent(event, m_hWnd, part);
}

// Notifications -------------------------------------------------------------------------------------------------------

BOOL CZoControl::Notify(UINT code, NMHDR* header, LRESULT* answer)
{
    NMHDR plain = {};
    if (header == nullptr)
        header = &plain;
    header->hwndFrom = m_hWnd;
    header->idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    header->code = code;
    const Life life(this);
    const LRESULT answered =
        ::SendMessageA(::GetParent(m_hWnd), WM_NOTIFY, header->idFrom, reinterpret_cast<LPARAM>(header));
    if (answer != nullptr)
        *answer = answered;
    return !life.IsOver();
}

BOOL CZoControl::NotifyCommand(WORD code)
{
    const Life life(this);
    ::SendMessageA(::GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), code), reinterpret_cast<LPARAM>(m_hWnd));
    return !life.IsOver();
}

// Looks ---------------------------------------------------------------------------------------------------------------

CRect CZoControl::GetClientArea() const
{
    CRect area;
    GetClientRect(&area);
    return area;
}

HFONT CZoControl::GetFontHandle() const
{
    HFONT font = m_hFont != nullptr ? m_hFont : CZoGlobalGDIData::GetThinFont();
    if (font == nullptr)
        font = static_cast<HFONT>(::GetStockObject(SYSTEM_FONT));
    return font;
}

BOOL CZoControl::IsMirrored() const { return (GetExStyle() & WS_EX_LAYOUTRTL) != 0; }

void CZoControl::OnLayout() {}
void CZoControl::OnReloadTexts() {}

BOOL CZoControl::Call(void (CZoControl::*overridden)())
{
    const Life life(this);
    WithoutThrowing([=, this] { (this->*overridden)(); });
    return !life.IsOver();
}

void CZoControl::Relayout()
{
    if (Call(&CZoControl::OnLayout) && m_hWnd != nullptr)
        Invalidate(FALSE);
}

void CZoControl::Draw(CDC* dc, const CRect& dirty)
{
    const SelectedFont font(*dc, GetFontHandle());
    const int mode = ::SetBkMode(*dc, TRANSPARENT);
    WithoutThrowing([&] { OnDraw(dc, dirty); });
    ::SetBkMode(*dc, mode);
}

void CZoControl::OnPaint()
{
    PAINTSTRUCT paint = {};
    const HDC target = ::BeginPaint(m_hWnd, &paint);
    if (target != nullptr && !::IsRectEmpty(&paint.rcPaint)) {
        PaintBuffer buffer(target, paint.rcPaint);
        Draw(buffer.GetDC(), paint.rcPaint);
    }
    ::EndPaint(m_hWnd, &paint);
}

// Focus and keys ------------------------------------------------------------------------------------------------------

void CZoControl::SetKeyboardOwner(HWND owner)
{
    m_hKeyboardOwner = owner;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

BOOL CZoControl::HasFocus() const
{
    const HWND focus = ::GetFocus();
    return focus != nullptr && focus == (m_hKeyboardOwner != nullptr ? m_hKeyboardOwner : m_hWnd);
}

BOOL CZoControl::IsFocusShown() const
{
    // Systems before Windows 2000 answer 0: there it is always shown.
    return HasFocus() && (SendMessage(WM_QUERYUISTATE) & UISF_HIDEFOCUS) == 0;
}

void CZoControl::TakeFocus()
{
    if (m_hKeyboardOwner == nullptr && ::GetFocus() != m_hWnd)
        ::SetFocus(m_hWnd);
}

void CZoControl::OnFocusChanged()
{
    Invalidate(FALSE);
    if (HasFocus() && GetFocusedPart() != 0)
        RaiseEvent(EVENT_OBJECT_FOCUS, GetFocusedPart()); // that the window has it, the system says
}

int CZoControl::CommandOf(const ZoKey* keys, size_t count, UINT key) const
{
    if (IsMirrored() && (key == VK_LEFT || key == VK_RIGHT))
        key = key == VK_LEFT ? VK_RIGHT : VK_LEFT;
    const int modifiers = (IsDown(VK_SHIFT) ? ZoKey::kShift : 0) | (IsDown(VK_CONTROL) ? ZoKey::kControl : 0);
    const ZoKey* found = std::find_if(
        keys, keys + count, [=](const ZoKey& entry) { return entry.key == key && entry.modifiers == modifiers; });
    return found != keys + count ? found->command : 0;
}

// Drags ---------------------------------------------------------------------------------------------------------------

void CZoControl::OnDragMove(CPoint) {}
void CZoControl::OnDragEnd(CPoint) {}
void CZoControl::OnDragUndo() {}

BOOL CZoControl::BeginDrag()
{
    const Life life(this);
    UndoDrag();
    if (life.IsOver() || m_hWnd == nullptr)
        return FALSE;
    std::unique_ptr<ControlDrag> drag(new (std::nothrow) ControlDrag(*this));
    if (drag == nullptr || !drag->Begin())
        return FALSE;
    ::SetCapture(m_hWnd); // before there is a drag: who loses the mouse by it may not end this one
    if (life.IsOver())
        return FALSE;
    m_pDrag = drag.release();
    return TRUE;
}

void CZoControl::UndoDrag()
{
    if (m_pDrag == nullptr)
        return;
    delete std::exchange(m_pDrag, nullptr);
    const Life life(this);
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    if (!life.IsOver())
        Call(&CZoControl::OnDragUndo);
}

BOOL CZoControl::OnMouse(UINT message, CPoint point)
{
    if (m_pDrag == nullptr)
        return FALSE;
    if (message == WM_MOUSEMOVE) {
        OnDragMove(point);
    } else if (message == WM_LBUTTONUP) {
        delete std::exchange(m_pDrag, nullptr);
        const Life life(this);
        ::ReleaseCapture();
        if (!life.IsOver())
            OnDragEnd(point);
    }
    return TRUE;
}

// Messages ------------------------------------------------------------------------------------------------------------

LRESULT CZoControl::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    // A window of another class, over which the control was put, hears of its beginning and end alone: it must not draw
    // or obey keys.
    const bool isOfLife =
        message == WM_NCCREATE || message == WM_CREATE || message == WM_DESTROY || message == WM_NCDESTROY;
    return isOfLife || m_hWnd == nullptr ? CWnd::DefWindowProc(message, wParam, lParam)
                                         : ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

LRESULT CZoControl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NCCREATE:
        m_bBeingCreated = FALSE;
        break;
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_PRINTCLIENT: {
        CDC dc;
        dc.SetOutputDC(reinterpret_cast<HDC>(wParam));
        dc.SetAttribDC(dc.m_hDC);
        Draw(&dc, GetClientArea());
        return 0;
    }
    case WM_ERASEBKGND:
        return TRUE;
    case WM_GETOBJECT:
        return OnGetObject(wParam, lParam);
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(m_hFont);
    case WM_SETFONT:
        m_hFont = reinterpret_cast<HFONT>(wParam);
        if (Call(&CZoControl::OnLayout) && LOWORD(lParam) != 0)
            Invalidate(FALSE);
        return 0;
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
        if (OnMouse(message, CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)))))
            return 0;
        break;
    case WM_CAPTURECHANGED: // also by WM_CANCELMODE, which a control gets that is disabled
        if (reinterpret_cast<HWND>(lParam) != m_hWnd)
            UndoDrag();
        break;
    case WM_SHOWWINDOW:
        if (!wParam)
            UndoDrag();
        break;
    case WM_DESTROY:
        UndoDrag();
        break;
    default:
        break;
    }
    const Life life(this);
    const LRESULT result = CWnd::WindowProc(message, wParam, lParam);
    if (life.IsOver() || m_hWnd == nullptr)
        return result;
    switch (message) {
    case WM_SETTEXT:
        RaiseEvent(EVENT_OBJECT_NAMECHANGE);
        Invalidate(FALSE);
        break;
    case WM_ENABLE:
        RaiseEvent(EVENT_OBJECT_STATECHANGE);
        Invalidate(FALSE);
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        OnFocusChanged();
        break;
    case WM_SIZE:
    case WM_STYLECHANGED:
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
    case WM_FONTCHANGE:
        Relayout();
        break;
    case WM_UPDATEUISTATE:
        Invalidate(FALSE);
        break;
    default:
        if (message == s_languageMessage && Call(&CZoControl::OnReloadTexts))
            Relayout();
        break;
    }
    return result;
}
