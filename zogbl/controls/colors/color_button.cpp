#include <zogbl/color_button.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>

#include "colors.h"
#include "controls/base/popup.h"
#include "controls/drawing/arrow.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <new>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoColorButton, CZoControl)

namespace {

constexpr int kMargin = 4;    // between the parts of the button, at 96 dots an inch
constexpr int kArrow = 4;     // rows of the arrow, at 96 dots an inch
constexpr int kLeastText = 4; // in heights of the swatch: a name that has less is not shown

} // namespace

class CZoColorButton::Drop final : private ControlPopup::Client {
public:
    explicit Drop(CZoColorButton& button) : m_button(button) {}

    ControlPopup m_popup{*this};

private:
    void OnPopupClosed() override { m_button.OnClosed(); }

    CZoColorButton& m_button;
};

CZoColorButton::CZoColorButton() = default;

CZoColorButton::~CZoColorButton()
{
    DestroyWindow(); // which closes the grid
    delete m_pDrop;
}

// Colours -------------------------------------------------------------------------------------------------------------

BOOL CZoColorButton::SetColor(COLORREF color)
{
    const COLORREF before = GetColor();
    if (!m_chooser.SetColor(color))
        return FALSE;
    m_bNamed = FALSE;
    if (before != color && m_hWnd != nullptr) {
        Invalidate(FALSE);
        RaiseEvent(EVENT_OBJECT_VALUECHANGE);
    }
    return TRUE;
}

BOOL CZoColorButton::SetAutomaticColor(int systemColor)
{
    if (!m_chooser.SetAutomaticColor(systemColor))
        return FALSE;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
    return TRUE;
}

BOOL CZoColorButton::SetColors(const ZoNamedColor* colors, int count, int columns)
{
    Close(); // its size would be another
    if (!m_chooser.SetColors(colors, count, columns))
        return FALSE;
    m_bNamed = FALSE;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
    return TRUE;
}

// The grid ------------------------------------------------------------------------------------------------------------

BOOL CZoColorButton::Open()
{
    if (IsOpen() || m_hWnd == nullptr || !::IsWindowEnabled(m_hWnd) || !::IsWindowVisible(m_hWnd))
        return IsOpen();
    if (m_pDrop == nullptr)
        m_pDrop = new (std::nothrow) Drop(*this);
    const DWORD style = (GetStyle() & (kAutomatic | kMore)) | CZoColorChooser::kDropDown;
    if (m_pDrop == nullptr || !m_pDrop->m_popup.Open(*this, m_chooser, style, m_chooser.GetIdealSize(this)))
        return FALSE;
    Invalidate(FALSE);
    RaiseEvent(EVENT_OBJECT_STATECHANGE);
    return TRUE;
}

void CZoColorButton::Close()
{
    if (m_pDrop != nullptr)
        m_pDrop->m_popup.Close();
}

void CZoColorButton::OnClosed()
{
    if (m_hWnd == nullptr)
        return;
    Invalidate(FALSE);
    RaiseEvent(EVENT_OBJECT_STATECHANGE);
}

void CZoColorButton::Chooser::OnChosen(int part)
{
    // Closed first: what the user chooses may end the button, and this object with it.
    const COLORREF color = GetPartColor(part);
    CZoColorButton& button = m_button;
    button.Close();
    button.OnChosen(color);
}

void CZoColorButton::OnChosen(COLORREF color)
{
    if (color == CLR_INVALID) {
        color = GetShownColor();
        const Life life(this);
        const BOOL isChosen = AskForColor(GetTopLevelParent(), color);
        if (life.IsOver() || m_hWnd == nullptr)
            return;
        TakeFocus();
        if (!isChosen || life.IsOver() || m_hWnd == nullptr)
            return;
    }
    if (color == GetColor())
        return;
    SetColor(color);
    ZoColorNotification notification = {};
    notification.color = color;
    Notify(ZON_COLOR_CHANGED, &notification.header);
}

// What the user does --------------------------------------------------------------------------------------------------

void CZoColorButton::OnKey(UINT key)
{
    switch (IsOpen() ? CommandOf(kOpenKeys, key) : CommandOf(kClosedKeys, key)) {
    case kOpen:
        Open();
        break;
    case kClose:
        Close();
        break;
    default:
        if (IsOpen())
            m_chooser.SendMessage(WM_KEYDOWN, key); // which may end this object
        break;
    }
}

/// While the grid is open it gets all keys, but Tab leads on.
LRESULT CZoColorButton::OnGetDialogCode(const MSG* message) const
{
    if (!IsOpen())
        return DLGC_BUTTON;
    return message != nullptr && message->wParam == VK_TAB ? DLGC_WANTARROWS | DLGC_WANTCHARS : DLGC_WANTALLKEYS;
}

LRESULT CZoColorButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const Life life(this);
    switch (message) {
    case WM_GETDLGCODE:
        return OnGetDialogCode(reinterpret_cast<const MSG*>(lParam));
    case WM_KEYDOWN:
        OnKey(static_cast<UINT>(wParam));
        return 0;
    case WM_CHAR:
        if (IsOpen())
            m_chooser.SendMessage(WM_CHAR, wParam, lParam);
        return 0;
    case WM_SYSKEYDOWN:
        if (wParam == VK_DOWN || wParam == VK_UP) {
            if (wParam == VK_DOWN)
                Open();
            else
                Close();
            return 0;
        }
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        TakeFocus();
        if (!life.IsOver() && m_hWnd != nullptr)
            Open();
        return 0;
    case WM_KILLFOCUS:
    case WM_CANCELMODE:
    case WM_MOVE:
    case WM_SIZE:
    case WM_SETFONT: // its size would be another
    case WM_DESTROY:
        Close();
        break;
    case WM_ENABLE:
    case WM_SHOWWINDOW:
        if (!wParam)
            Close();
        break;
    default:
        break;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}

// Looks ---------------------------------------------------------------------------------------------------------------

BOOL CZoColorButton::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(part, description))
        return FALSE;
    description.role = ROLE_SYSTEM_BUTTONDROPDOWNGRID;
    description.state |= STATE_SYSTEM_HASPOPUP | (IsOpen() ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED);
    description.value = m_chooser.GetColorText();
    description.action = LoadColorText(IsOpen() ? ZO_IDS_COLOR_CLOSE : ZO_IDS_COLOR_OPEN);
    return TRUE;
}

BOOL CZoColorButton::DoPartAction(int part)
{
    if (part != 0)
        return FALSE;
    if (IsOpen()) {
        Close();
        return TRUE;
    }
    const Life life(this);
    TakeFocus();
    return !life.IsOver() && m_hWnd != nullptr && Open();
}

void CZoColorButton::OnLayout()
{
    m_nMargin = CZoGlobalGDIData::Scale(kMargin);
    m_nArrow = CZoGlobalGDIData::Scale(kArrow);
    m_nBorder = SwatchBorder();
    m_bNamed = FALSE; // the language may have changed
}

void CZoColorButton::OnDraw(CDC* dc, const CRect&)
{
    const bool isEnabled = IsWindowEnabled() != FALSE;
    const ItemColors pair = {::GetSysColor(COLOR_BTNTEXT), ::GetSysColor(COLOR_3DFACE)};
    const SelectedColors colors(*dc, pair);
    CRect area = GetClientArea();
    dc->DrawFrameControl(&area, DFC_BUTTON, DFCS_BUTTONPUSH | (IsOpen() ? DFCS_PUSHED : 0));
    area.DeflateRect(m_nMargin, m_nMargin);
    if (IsFocusShown())
        ZoDrawFocus(*dc, area);
    area.DeflateRect(2, 2);
    if (IsOpen())
        area.OffsetRect(1, 1);

    CRect arrow = area;
    arrow.left = arrow.right - 2 * m_nArrow;
    if (arrow.left >= area.left)
        DrawArrow(dc, arrow, ArrowTo::kDown,
                  isEnabled ? pair.text : CZoGlobalGDIData::GetDisabledColor(pair.text, pair.background));
    area.right = arrow.left - m_nMargin;

    CRect swatch = area;
    CRect text = area;
    const int width = swatch.Height() * 3 / 2;
    const bool hasText = area.Width() >= width + kLeastText * area.Height();
    if (hasText) {
        swatch.right = swatch.left + width;
        text.left = swatch.right + m_nMargin;
    }
    DrawSwatch(dc, swatch, GetShownColor(), m_nBorder, !isEnabled);
    if (!hasText)
        return;
    if (!m_bNamed)
        m_bNamed = m_chooser.NameColor(GetColor(), m_csName);
    if (isEnabled)
        ZoDrawShortenedText(*dc, text, m_csName, DT_VCENTER, ZoShorten::kEnd);
    else
        ZoDrawDisabledText(*dc, text, m_csName, -1, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}
