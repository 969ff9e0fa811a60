/// \file
/// An act of the user on a date, from what was before it to its notification.
#pragma once

#include <zogbl/date_time.h>

/// What was shown and given before an act.
struct CZoDateTimeWnd::Moment {
    explicit Moment(const CZoDateTimeWnd& control)
        : time(control.m_fields.GetTime()), isNone(control.m_isNone), isNoneShown(control.IsNoneShown()),
          areAllSelected(control.m_areAllSelected), piece(control.m_fields.GetCurrent())
    {
        control.m_fields.GetWholeText(text);
    }

    SYSTEMTIME time;
    BOOL isNone;
    bool isNoneShown;
    BOOL areAllSelected;
    int piece;
    char text[CZoDateTimeFields::kWholeSize];
};

template <class ACT> BOOL CZoDateTimeWnd::Act(ACT act)
{
    const Moment before(*this);
    m_areAllSelected = FALSE;
    act();
    return Tell(before);
}
