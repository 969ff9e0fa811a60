#include <zogbl/date_time.h>

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "common/double_byte.h"
#include "common/without_throwing.h"
#include "controls/drawing/arrow.h"
#include "controls/drawing/item_painting.h"
#include "controls/drawing/plain_layout.h"

#include <algorithm>
#include <cstring>

IMPLEMENT_DYNAMIC(CZoDateTimeWnd, CZoControl)

using Kind = CZoDateTimeFields::Kind;

namespace {

int WidthOf(const CDC& dc, LPCSTR text)
{
    return static_cast<int>(dc.GetTextExtent(text, static_cast<int>(std::strlen(text))).cx);
}

int Gap() { return CZoGlobalGDIData::Scale(2); } // between the edge, the check box, the text and the button
/// Of the check box, which grows with the font. \param line the height of a line of text
int CheckSize(int line) { return (std::max)(CZoGlobalGDIData::Scale(13), line * 3 / 4); }

/// A check box, whose mark is the same in both directions.
void DrawCheck(CDC* dc, CRect area, BOOL isChecked, BOOL isEnabled)
{
    const PlainLayout layout(*dc, {&area});
    constexpr int kColumns[] = {2, 3, 4, 3, 2, 1, 0}; // where each begins, of three in height
    constexpr int kSize = 7;
    const int unit = (std::max)(area.Width() / 13, 1);
    const CPoint corner(area.left + (area.Width() - kSize * unit) / 2, area.top + (area.Height() - kSize * unit) / 2);
    dc->DrawFrameControl(&area, DFC_BUTTON, static_cast<UINT>(DFCS_BUTTONCHECK | (isEnabled ? 0 : DFCS_INACTIVE)));
    const COLORREF text = ::GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF color = isEnabled ? text : CZoGlobalGDIData::GetDisabledColor(text, ::GetSysColor(COLOR_3DFACE));
    for (int i = 0; i < kSize && isChecked; ++i) {
        dc->FillSolidRect(corner.x + i * unit, corner.y + kColumns[i] * unit, unit, 3 * unit, color);
    }
}

} // namespace

// Values --------------------------------------------------------------------------------------------------------------

bool CZoDateTimeWnd::HasStyle(DWORD style) const { return m_hWnd != nullptr && (GetStyle() & style) == style; }

/// Takes the format of the style, if it has none of its own.
void CZoDateTimeWnd::FollowStyle()
{
    const LCTYPE type = HasStyle(kTime)       ? LOCALE_STIMEFORMAT
                        : HasStyle(kLongDate) ? LOCALE_SLONGDATE
                                              : LOCALE_SSHORTDATE;
    char format[CZoDateTimeFields::kFormatSize] = "";
    if (m_szFormat[0] == '\0' &&
        ::GetLocaleInfoA(LOCALE_USER_DEFAULT, type | LOCALE_USE_CP_ACP, format, sizeof format) != 0 &&
        std::strcmp(format, m_fields.GetFormat()) != 0)
        m_fields.SetFormat(format, LOCALE_USER_DEFAULT);
}

BOOL CZoDateTimeWnd::SetFormat(LPCSTR format)
{
    if (format != nullptr) {
        if (!m_fields.SetFormat(format, LOCALE_USER_DEFAULT))
            return FALSE;
        std::strcpy(m_szFormat, m_fields.GetFormat());
    } else {
        m_szFormat[0] = '\0';
        FollowStyle();
    }
    if (m_hWnd != nullptr) {
        Relayout();
        RaiseEvent(EVENT_OBJECT_VALUECHANGE);
    }
    return TRUE;
}

BOOL CZoDateTimeWnd::GetTime(SYSTEMTIME& time) const
{
    time = m_fields.GetTime();
    return !m_isNone;
}

void CZoDateTimeWnd::SetNoneText(LPCSTR text)
{
    lstrcpynA(m_szNone, text != nullptr ? text : "", sizeof m_szNone);
    const size_t length = std::strlen(m_szNone);
    if (length > 0 && IsLeadByte(m_szNone[length - 1]) && !IsSecondHalf(m_szNone, m_szNone + length - 1))
        m_szNone[length - 1] = '\0';
    if (m_hWnd != nullptr)
        Relayout();
}

CString CZoDateTimeWnd::NoneText() const
{
    CString text(m_szNone);
    if (text.IsEmpty())
        ZoGblLoadString(m_fields.HasDate() ? ZO_IDS_NO_DATE : ZO_IDS_NO_TIME, text);
    return text;
}

CString CZoDateTimeWnd::GetShownText() const
{
    char text[CZoDateTimeFields::kWholeSize];
    m_fields.GetWholeText(text);
    return IsNoneShown() ? NoneText() : CString(text);
}

// Layout --------------------------------------------------------------------------------------------------------------

BOOL CZoDateTimeWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.dwExStyle |= WS_EX_CLIENTEDGE;
    return CZoControl::PreCreateWindow(cs);
}

void CZoDateTimeWnd::PreSubclassWindow()
{
    CZoControl::PreSubclassWindow();
    ModifyStyle(0, WS_CLIPCHILDREN); // the button draws itself
}

void CZoDateTimeWnd::OnLayout()
{
    UndoDrag(); // the spin button may be elsewhere now
    if (!HasMark())
        m_isNone = FALSE;
    FollowStyle();
    if (HasStyle(kSpin) || !m_fields.HasDate()) {
        m_button.DestroyWindow();
    } else if (m_button.m_hWnd == nullptr) {
        m_button.SetKeyboardOwner(m_hWnd);
        if (WithoutThrowing([this] { return m_button.Create(WS_VISIBLE, CRect(0, 0, 0, 0), this, 1); }))
            m_button.EnableWindow(IsWindowEnabled());
    }
    if (m_button.m_hWnd != nullptr) {
        m_button.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(GetFontHandle()));
        m_button.MoveWindow(ButtonArea());
    }
    Measure();
}

void CZoDateTimeWnd::OnReloadTexts() { m_button.SendMessage(CZoLanguageSupport::GetUpdateMessage()); }

CRect CZoDateTimeWnd::ButtonArea() const
{
    CRect area = GetClientArea();
    const bool hasOne = m_button.m_hWnd != nullptr || HasStyle(kSpin);
    area.left = area.right - (hasOne ? (std::min)(::GetSystemMetrics(SM_CXVSCROLL), area.Width() / 2) : 0);
    return area;
}

CRect CZoDateTimeWnd::CheckArea() const
{
    const CRect area = GetClientArea();
    if (!HasMark())
        return CRect(0, 0, 0, 0);
    const int size = (std::min)({CheckSize(m_line), area.Height(), (std::max)(area.Width() / 2 - Gap(), 0)});
    return CRect(CPoint(area.left + Gap(), area.top + (area.Height() - size) / 2), CSize(size, size));
}

CRect CZoDateTimeWnd::TextArea() const
{
    CRect area = GetClientArea();
    area.left = CheckArea().right + Gap();
    area.right = (std::max)(ButtonArea().left - Gap(), area.left);
    return area;
}

void CZoDateTimeWnd::Measure()
{
    const WindowFontDC dc(m_hWnd, GetFontHandle());
    m_line = dc.GetMetrics().tmHeight;
    for (int i = 0; i < m_fields.GetCount(); ++i) {
        char text[CZoDateTimeFields::kTextSize];
        m_fields.GetText(i, text);
        m_edges[i + 1] = m_edges[i] + WidthOf(dc, text);
    }
}

CSize CZoDateTimeWnd::GetIdealSize() const
{
    const WindowFontDC dc(m_hWnd, GetFontHandle());
    const int line = dc.GetMetrics().tmHeight;
    int width = 0;
    WithoutThrowing([&] { width = HasMark() ? WidthOf(dc, NoneText()) : 0; });
    for (int month = 1; month <= 12; ++month) { // each month, and each weekday
        int sum = 0;
        for (int i = 0; i < m_fields.GetCount(); ++i) {
            const SYSTEMTIME time = {
                2023, static_cast<WORD>(month), 0, 28, static_cast<WORD>(month > 6 ? 22 : 10), 0, 0, 0};
            char text[CZoDateTimeFields::kTextSize];
            m_fields.GetText(i, time, text);
            sum += WidthOf(dc, text);
        }
        width = (std::max)(width, sum);
    }
    const int button = HasStyle(kSpin) || m_fields.HasDate() ? ::GetSystemMetrics(SM_CXVSCROLL) + Gap() : 0;
    CRect area(0, 0, width + 2 * Gap() + (HasMark() ? CheckSize(line) + Gap() : 0) + button,
               (std::max)(line, HasMark() ? CheckSize(line) : 0) + 2 * Gap());
    ::AdjustWindowRectEx(&area, GetStyle(), FALSE, GetExStyle());
    return area.Size();
}

/// A piece that has no room lies outside of the text's area. The field that has the focus always has room.
CRect CZoDateTimeWnd::AreaOfPiece(int piece) const
{
    const CRect area = TextArea();
    const int whole = m_edges[m_fields.GetCount()];
    // Right to left the coordinates are mirrored; the pieces run from left to right all the same.
    const bool isMirrored = IsMirrored();
    const auto begin = [&](int i) { return isMirrored ? whole - m_edges[i + 1] : m_edges[i]; };
    const auto end = [&](int i) { return isMirrored ? whole - m_edges[i] : m_edges[i + 1]; };
    const int current = m_fields.GetCurrent();
    const int shift =
        HasFocus() && !IsNoneShown() ? (std::min)((std::max)(end(current) - area.Width(), 0), begin(current)) : 0;
    const int top = area.top + (area.Height() - m_line) / 2;
    return CRect(area.left + begin(piece) - shift, top, area.left + end(piece) - shift, top + m_line);
}

// Drawing -------------------------------------------------------------------------------------------------------------

void CZoDateTimeWnd::DrawFields(CDC* dc) const
{
    const CRect area = TextArea();
    const bool isEnabled = IsWindowEnabled();
    const COLORREF background = ::GetSysColor(isEnabled ? COLOR_WINDOW : COLOR_3DFACE);
    const COLORREF text = ::GetSysColor(COLOR_WINDOWTEXT);
    const ItemColors plain = {isEnabled ? text : CZoGlobalGDIData::GetDisabledColor(text, background), background};
    const ItemColors chosen = {::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)};
    if (IsNoneShown()) {
        const SelectedColors colors(*dc, HasFocus() ? chosen : plain);
        CRect line(area.left, area.top + (area.Height() - m_line) / 2, area.right, area.bottom);
        line.bottom = line.top + m_line;
        if (HasFocus())
            dc->FillSolidRect(line, chosen.background);
        ZoDrawShortenedText(*dc, line, NoneText(), DT_LEFT | DT_TOP, ZoShorten::kEnd);
        return;
    }
    for (int i = 0; i < m_fields.GetCount(); ++i) {
        const CRect place = AreaOfPiece(i);
        CRect visible;
        if (!visible.IntersectRect(&place, &area))
            continue;
        const bool isChosen = HasFocus() && (m_areAllSelected || i == m_fields.GetCurrent());
        const SelectedColors colors(*dc, isChosen ? chosen : plain);
        char piece[CZoDateTimeFields::kTextSize];
        m_fields.GetText(i, piece);
        dc->ExtTextOut(place.left, place.top, ETO_CLIPPED | (isChosen ? ETO_OPAQUE : 0), visible, piece,
                       static_cast<UINT>(std::strlen(piece)), nullptr);
    }
}

void CZoDateTimeWnd::OnDraw(CDC* dc, const CRect& dirty)
{
    const bool isEnabled = IsWindowEnabled();
    const UINT inactive = isEnabled ? 0 : DFCS_INACTIVE;
    dc->FillSolidRect(dirty, ::GetSysColor(isEnabled ? COLOR_WINDOW : COLOR_3DFACE));
    CRect common;
    CRect check = CheckArea();
    if (common.IntersectRect(&check, &dirty))
        DrawCheck(dc, check, !IsNoneShown(), isEnabled);
    const int spin = SpinPart();
    for (int part = spin; spin != 0 && part < spin + 2; ++part) {
        CRect half = AreaOf(part);
        if (!common.IntersectRect(&half, &dirty))
            continue;
        const bool isPushed = m_nPressed == part && m_isOver;
        dc->DrawFrameControl(&half, DFC_BUTTON, DFCS_BUTTONPUSH | inactive | (isPushed ? DFCS_PUSHED : 0));
        const COLORREF face = ::GetSysColor(COLOR_3DFACE);
        const COLORREF color = ::GetSysColor(COLOR_BTNTEXT);
        if (isPushed)
            half.OffsetRect(1, 1);
        DrawArrow(dc, half, part == spin ? ArrowTo::kUp : ArrowTo::kDown,
                  isEnabled ? color : CZoGlobalGDIData::GetDisabledColor(color, face));
    }
    const CRect text = TextArea();
    if (common.IntersectRect(&text, &dirty))
        DrawFields(dc);
}
