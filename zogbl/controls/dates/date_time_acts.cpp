#include "date_time_act.h"

#include "common/clipboard.h"
#include "common/double_byte.h"

#include <cstring>
#include <utility>

// Changes -------------------------------------------------------------------------------------------------------------

/// Brings to the screen what an act has changed, and tells screen readers. \return whether it is another date now
bool CZoDateTimeWnd::Show(const Moment& before)
{
    const Moment now(*this);
    const bool isChanged =
        now.isNone != before.isNone || (!now.isNone && std::memcmp(&now.time, &before.time, sizeof now.time) != 0);
    const bool isOtherText =
        now.isNoneShown != before.isNoneShown || (!now.isNoneShown && std::strcmp(now.text, before.text) != 0);
    const bool isElsewhere = now.piece != before.piece;
    if (m_hWnd == nullptr)
        return isChanged;
    if (isOtherText)
        Measure();
    if (isOtherText || isElsewhere || now.areAllSelected != before.areAllSelected)
        InvalidateRect(TextArea(), FALSE);
    if (now.isNoneShown != before.isNoneShown) {
        InvalidateRect(CheckArea(), FALSE);
        RaiseEvent(EVENT_OBJECT_STATECHANGE, CheckPart());
    }
    if ((isElsewhere || now.isNoneShown != before.isNoneShown) && HasFocus())
        RaiseEvent(EVENT_OBJECT_FOCUS, GetFocusedPart());
    if (isChanged || (isOtherText && !IsWaiting())) // not with each digit
        RaiseEvent(EVENT_OBJECT_VALUECHANGE);
    return isChanged;
}

/// The same behind an act of the user. \return FALSE: the control is gone
BOOL CZoDateTimeWnd::Tell(const Moment& before)
{
    const CZoDateTimeFields::Outcome outcome = m_fields.TakeOutcome();
    if (outcome.isTaken)
        m_isNone = FALSE;
    if (!Show(before) || m_hWnd == nullptr)
        return TRUE;
    ZoDateTimeChange change = {};
    change.time = m_fields.GetTime();
    change.isNone = m_isNone;
    change.isClamped = outcome.isClamped;
    return Notify(ZON_DATE_TIME_CHANGED, &change.header);
}

BOOL CZoDateTimeWnd::SetTime(const SYSTEMTIME& time)
{
    const Moment before(*this);
    if (!m_fields.SetTime(time))
        return FALSE;
    m_isNone = FALSE;
    Show(before);
    return TRUE;
}

BOOL CZoDateTimeWnd::SetNone()
{
    if (!HasMark())
        return FALSE;
    const Moment before(*this);
    m_fields.TakeBack();
    m_isNone = TRUE;
    Show(before);
    return TRUE;
}

BOOL CZoDateTimeWnd::SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most)
{
    const Moment before(*this);
    if (!m_fields.SetRange(least, most))
        return FALSE;
    Show(before);
    return TRUE;
}

BOOL CZoDateTimeWnd::Settle()
{
    return Act([this] { m_fields.Settle(); });
}

BOOL CZoDateTimeWnd::SetMark(BOOL isSet)
{
    return !HasMark() || Act([=, this] {
        m_fields.TakeBack();
        m_isNone = !isSet;
    });
}

BOOL CZoDateTimeWnd::CopyText() const
{
    char text[CZoDateTimeFields::kWholeSize];
    m_fields.GetWholeText(text);
    return !IsNoneShown() && PutOnClipboard(m_hWnd, text);
}

BOOL CZoDateTimeWnd::PasteText()
{
    char text[CZoDateTimeFields::kTextSize];
    BOOL isPasted = TakeFromClipboard(m_hWnd, text, sizeof text);
    return isPasted && Act([&] { isPasted = m_fields.Paste(text); }) && isPasted;
}

// Keys ----------------------------------------------------------------------------------------------------------------

BOOL CZoDateTimeWnd::Obey(int command)
{
    if (IsMirrored() && (command == kPrevious || command == kNext))
        command = command == kPrevious ? kNext : kPrevious; // the fields run from left to right all the same
    if (IsNoneShown() && (command == kUp || command == kDown || command == kLeast || command == kMost))
        return SetMark(TRUE);
    switch (command) {
    case kPrevious:
        return Act([this] { m_fields.MoveBy(-1); });
    case kNext:
        return Act([this] { m_fields.MoveBy(1); });
    case kUp:
        return Act([this] { m_fields.Step(1); });
    case kDown:
        return Act([this] { m_fields.Step(-1); });
    case kLeast:
        return Act([this] { m_fields.GoToEnd(FALSE); });
    case kMost:
        return Act([this] { m_fields.GoToEnd(TRUE); });
    case kTakeBack:
        return Act([this] { m_fields.TakeBack(); });
    case kDeleteLast:
        return Act([this] { m_fields.DeleteLast(); });
    case kNone:
        return SetMark(FALSE);
    case kCopy:
        CopyText();
        return TRUE;
    case kPaste: {
        const Life life(this);
        if (!PasteText() && !life.IsOver())
            ::MessageBeep(MB_OK);
        return !life.IsOver();
    }
    case kAll: {
        const Moment before(*this);
        m_areAllSelected = TRUE;
        return Tell(before);
    }
    default:
        return TRUE;
    }
}

void CZoDateTimeWnd::OnCharacter(char character)
{
    if (static_cast<BYTE>(character) < ' ' || std::exchange(m_isKeyDone, FALSE) || m_button.IsOpen())
        return;
    char typed[3] = {character, '\0', '\0'};
    if (m_lead != '\0') {
        typed[0] = std::exchange(m_lead, '\0');
        typed[1] = character;
    } else if (IsLeadByte(character)) {
        m_lead = character;
        return;
    }
    const BOOL areAllSelected = m_areAllSelected;
    BOOL isOfUse = FALSE;
    if (!Act([&] {
            if (areAllSelected)
                m_fields.MoveTo(m_fields.GetFirst());
            isOfUse = m_fields.Type(typed);
        }) ||
        isOfUse)
        return;
    if (*typed == '+' || *typed == '-')
        Obey(*typed == '+' ? kUp : kDown);
    else if (*typed == ' ')
        SetMark(m_isNone);
}

void CZoDateTimeWnd::OnKey(UINT message, WPARAM key)
{
    const Life life(this);
    const bool isOpen = m_button.IsOpen();
    const bool isDone = m_button.m_hWnd != nullptr && (isOpen || key != VK_SPACE) && m_button.HandleKey(message, key);
    if (life.IsOver())
        return;
    m_isKeyDone = isDone;
    if (!isOpen && message == WM_KEYDOWN && !isDone)
        Obey(CommandOf(kKeys, static_cast<UINT>(key)));
}
