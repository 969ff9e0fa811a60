#include <zogbl/date_time.h>

#include <zogbl/resource_ids.h>

#include "calendar_texts.h"

#include <oleacc.h>

using Kind = CZoDateTimeFields::Kind;

namespace {

UINT NameOf(Kind kind)
{
    switch (kind) {
    case Kind::kYear:
        return ZO_IDS_FIELD_YEAR;
    case Kind::kMonth:
        return ZO_IDS_FIELD_MONTH;
    case Kind::kDay:
        return ZO_IDS_FIELD_DAY;
    case Kind::kMinute:
        return ZO_IDS_FIELD_MINUTE;
    case Kind::kSecond:
        return ZO_IDS_FIELD_SECOND;
    case Kind::kHalf:
        return ZO_IDS_FIELD_HALF;
    default:
        return ZO_IDS_FIELD_HOUR;
    }
}

} // namespace

// Parts: the fields, the check box, the spin button -------------------------------------------------------------------

int CZoDateTimeWnd::FieldCount() const
{
    int count = 0;
    for (int i = 0; i < m_fields.GetCount(); ++i)
        count += m_fields.IsField(i) ? 1 : 0;
    return count;
}

int CZoDateTimeWnd::PartOfPiece(int piece) const
{
    int part = 0;
    for (int i = 0; i <= piece; ++i)
        part += m_fields.IsField(i) ? 1 : 0;
    return part;
}

/// \return -1 if the part is no field
int CZoDateTimeWnd::PieceOfPart(int part) const
{
    for (int i = 0; i < m_fields.GetCount(); ++i) {
        if (m_fields.IsField(i) && --part == 0)
            return i;
    }
    return -1;
}

/// \return 0: it has none, as in the next one
int CZoDateTimeWnd::CheckPart() const { return HasMark() ? FieldCount() + 1 : 0; }
int CZoDateTimeWnd::SpinPart() const { return HasStyle(kSpin) ? FieldCount() + (HasMark() ? 2 : 1) : 0; }

int CZoDateTimeWnd::GetPartCount() const { return FieldCount() + (HasMark() ? 1 : 0) + (HasStyle(kSpin) ? 2 : 0); }

CRect CZoDateTimeWnd::AreaOf(int part) const
{
    if (part == CheckPart())
        return CheckArea();
    if (SpinPart() != 0 && part >= SpinPart()) {
        CRect area = ButtonArea();
        const int middle = (area.top + area.bottom) / 2;
        (part == SpinPart() ? area.bottom : area.top) = middle;
        return area;
    }
    CRect area = AreaOfPiece(PieceOfPart(part));
    const CRect all = TextArea();
    return area.IntersectRect(&area, &all) && !IsNoneShown() ? area : CRect(0, 0, 0, 0);
}

int CZoDateTimeWnd::FindPart(CPoint point) const
{
    int part = GetPartCount();
    while (part > 0 && !AreaOf(part).PtInRect(point))
        --part;
    return part;
}

int CZoDateTimeWnd::GetFocusedPart() const { return IsNoneShown() ? 0 : PartOfPiece(m_fields.GetCurrent()); }

BOOL CZoDateTimeWnd::DescribePart(int part, ZoPart& description) const
{
    if (part == 0) {
        CZoControl::DescribePart(part, description);
        description.role = HasStyle(kSpin) ? ROLE_SYSTEM_SPINBUTTON : ROLE_SYSTEM_DROPLIST;
        description.value = GetShownText();
        if (IsNoneShown() || IsWaiting())
            return TRUE;
        // In words, if it is a date alone: numbers may be in any order.
        char text[CZoDateTimeFields::kTextSize] = "";
        if (m_fields.HasDate() && !m_fields.HasTime() &&
            ::GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE | LOCALE_USE_CP_ACP, &m_fields.GetTime(), nullptr, text,
                             sizeof text) != 0)
            description.value = text;
        return TRUE;
    }
    if (part < 0 || part > GetPartCount())
        return FALSE;
    const LONG enabled = IsWindowEnabled() ? 0 : STATE_SYSTEM_UNAVAILABLE;
    const int piece = PieceOfPart(part);
    description.area = AreaOf(part);
    description.state = enabled;
    if (part == CheckPart()) {
        description.role = ROLE_SYSTEM_CHECKBUTTON;
        description.name = CalendarText(m_fields.HasDate() ? ZO_IDS_HAS_DATE : ZO_IDS_HAS_TIME);
        description.state |= IsNoneShown() ? 0 : STATE_SYSTEM_CHECKED;
        description.action = CalendarText(IsNoneShown() ? ZO_IDS_ACTION_CHECK : ZO_IDS_ACTION_UNCHECK);
    } else if (piece < 0) {
        description.role = ROLE_SYSTEM_PUSHBUTTON;
        description.name = CalendarText(part == SpinPart() ? ZO_IDS_SPIN_UP : ZO_IDS_SPIN_DOWN);
        description.action = CalendarText(ZO_IDS_ACTION_PRESS);
        description.state |= m_nPressed == part ? STATE_SYSTEM_PRESSED : 0;
    } else {
        char text[CZoDateTimeFields::kTextSize];
        m_fields.GetText(piece, text);
        description.role = ROLE_SYSTEM_SPINBUTTON;
        description.name = CalendarText(NameOf(m_fields.GetKind(piece)));
        description.value = text;
        description.action = CalendarText(ZO_IDS_ACTION_GO);
        description.state |= IsNoneShown()              ? STATE_SYSTEM_INVISIBLE
                             : enabled != 0             ? 0
                             : !HasFocus()              ? STATE_SYSTEM_FOCUSABLE
                             : part == GetFocusedPart() ? STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED
                                                        : STATE_SYSTEM_FOCUSABLE;
    }
    return TRUE;
}
