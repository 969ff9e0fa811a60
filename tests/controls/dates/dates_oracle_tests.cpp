// The controls for dates beside the system's: the same random steps, and each difference with its reason.
#include "dates_test.h"

#include "controls/base/day.h"

#include <zogbl/date_time.h>

#include <commctrl.h>

namespace {

using Kind = CZoDateTimeFields::Kind;

/// Why ours and the system's may differ. At its end each reason must have been met.
template <class STEP> class Differences {
public:
    using Reasons = std::vector<std::pair<const char*, bool (*)(const STEP& step)>>;
    explicit Differences(Reasons reasons) : m_reasons(std::move(reasons)) {}
    ~Differences()
    {
        for (const auto& reason : m_reasons)
            EXPECT_GT(m_met[reason.first], 0) << reason.first;
    }
    /// \return whether the two are alike
    bool Compare(const STEP& step, const std::string& what)
    {
        if (step.ours == step.systems)
            return true;
        const auto reason =
            std::find_if(m_reasons.begin(), m_reasons.end(), [&](const auto& known) { return known.second(step); });
        if (reason == m_reasons.end())
            ADD_FAILURE() << what << ": " << step.before << ", ours " << step.ours << ", the system's " << step.systems;
        else
            ++m_met[reason->first];
        return false;
    }

private:
    const Reasons m_reasons;
    std::map<std::string, int> m_met;
};

// Calendars -----------------------------------------------------------------------------------------------------------

struct OurCalendar : CZoCalendar {
    CPoint PlaceOf(int part) const
    {
        ZoPart description;
        EXPECT_TRUE(DescribePart(part, description));
        return description.area.CenterPoint();
    }
    std::string State() const { return Span(GetFirst(), GetLast()) + " in " + Written(GetShownMonth()); }
};

/// The system's, by the same names.
struct SystemCalendar : CWnd {
    SystemCalendar(CWnd& parent, DWORD style)
    {
        EXPECT_TRUE(Create(MONTHCAL_CLASSA, "", WS_CHILD | WS_VISIBLE | style, CRect(0, 0, 1, 1), &parent, 6));
        Ask(MCM_SETMAXSELCOUNT, 20, nullptr);
        CRect area;
        Ask(MCM_GETMINREQRECT, 0, &area);
        MoveWindow(area);
        std::string last; // the cells of days are where a hit test finds other days, one behind the other
        for (CPoint at(0, area.Height() * 6 / 10); at.x < area.right; ++at.x) {
            if (DayAt(at) != "" && std::exchange(last, DayAt(at)) != DayAt(at))
                m_columns.push_back(at.x + 5);
        }
        for (CPoint at(area.Width() / 2, 0); at.y < area.bottom; ++at.y) {
            if (DayAt(at) != "" && std::exchange(last, DayAt(at)) != DayAt(at))
                m_rows.push_back(at.y + 5);
        }
    }
    LRESULT Ask(UINT message, WPARAM wParam, void* data)
    {
        return SendMessage(message, wParam, reinterpret_cast<LPARAM>(data));
    }
    bool OfSpans() const { return (GetStyle() & MCS_MULTISELECT) != 0; }
    bool SetSpan(const SYSTEMTIME& first, const SYSTEMTIME& last)
    {
        SYSTEMTIME span[2] = {first, last};
        return Ask(OfSpans() ? MCM_SETSELRANGE : MCM_SETCURSEL, 0, span) != 0;
    }
    bool SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most)
    {
        SYSTEMTIME range[2] = {least != nullptr ? *least : SYSTEMTIME(), most != nullptr ? *most : SYSTEMTIME()};
        return Ask(MCM_SETRANGE, (least != nullptr ? GDTR_MIN : 0U) | (most != nullptr ? GDTR_MAX : 0U), range) != 0;
    }
    CPoint PlaceOf(int part) const
    {
        if (part > CZoCalendar::kDays)
            return {part == CZoCalendar::kNext ? m_columns.back() + 10 : 15, m_rows[0] / 3};
        return {m_columns.at(static_cast<size_t>(part - 1) % 7), m_rows.at(static_cast<size_t>(part - 1) / 7)};
    }
    std::string DayAt(CPoint point)
    {
        MCHITTESTINFO hit = {};
        hit.cbSize = MCHITTESTINFO_V1_SIZE;
        hit.pt = point;
        Ask(MCM_HITTEST, 0, &hit);
        return (hit.uHit & ~UINT{MCHT_NEXT | MCHT_PREV}) == MCHT_CALENDARDATE ? Written(Date(hit.st)) : "";
    }
    std::string State()
    {
        SYSTEMTIME span[2] = {}, months[2] = {};
        Ask(OfSpans() ? MCM_GETSELRANGE : MCM_GETCURSEL, 0, span);
        Ask(MCM_GETMONTHRANGE, GMR_VISIBLE, months);
        return Span(Date(span[0]), Date(span[OfSpans()])) + " in " + Written(Date(months[0]));
    }

    std::vector<int> m_columns, m_rows;
};

struct CalendarStep {
    enum Kind { kSet, kRange, kArrow, kClick } kind;
    std::string first, last; ///< what was set
    bool isOutside;          ///< a day of it, of the range or of the calendar
    std::string before, ours, systems;
};

// Fields --------------------------------------------------------------------------------------------------------------

struct FieldStep {
    Kind kind; // of the field
    std::string format;
    std::string digits; // typed; empty: a step up or down
    SYSTEMTIME from, our, system;
    std::string before, ours, systems;
};

int MostOf(Kind kind)
{
    return kind == Kind::kMonth ? 12 : kind == Kind::kDay ? 31 : kind == Kind::kHour || kind == Kind::kHour12 ? 23 : 59;
}

/// The system's date picker.
class Picker : public CWnd {
public:
    Picker(CWnd& parent, const std::string& format)
    {
        EXPECT_TRUE(Create(DATETIMEPICK_CLASSA, "", WS_CHILD, CRect(0, 50, 200, 75), &parent, 8));
        EXPECT_TRUE(SendMessage(DTM_SETFORMATA, 0, reinterpret_cast<LPARAM>(format.c_str())));
    }
    ~Picker() override { DestroyWindow(); }
    /// The focus comes to no field; Right leads to the first one.
    void Begin(int field)
    {
        SetFocus();
        for (int i = 0; i <= field; ++i)
            SendMessage(WM_KEYDOWN, VK_RIGHT, 1);
    }
};

} // namespace

TEST(DatesOracle, CalendarsDoTheSameOrForAReasonNot)
{
    ZO_ONLY_IN(IsThorough(), "the system's calendar is the same everywhere");
    using Step = CalendarStep;
    Differences<Step> differences({
        {"the system's begins with 14 September 1752",
         [](const Step& step) { return step.kind <= Step::kRange && step.first < "1752-09-14"; }},
        {"ends the wrong way round: the system's changes their places",
         [](const Step& step) { return step.kind <= Step::kRange && step.last < step.first; }},
        {"a selection outside of a new range: the system's keeps it",
         [](const Step& step) { return step.kind == Step::kRange && step.systems == "1 " + step.before; }},
        {"days outside of the range, or that do not exist: the system's puts spans there, and drags begin there",
         [](const Step& step) { return step.isOutside; }},
        {"arrows: the system's takes the selection along, and goes to no month of which the range has a part only",
         [](const Step& step) {
             return step.kind == Step::kArrow && step.ours.substr(2, 10) == step.before.substr(0, 10);
         }},
    });
    for (const DWORD style : {0UL, CZoCalendar::kSpan + 0UL}) {
        ControlParent parent;
        OurCalendar ours;
        ASSERT_TRUE(
            ours.Create(WS_VISIBLE | style, CRect({0, 0}, CZoCalendar::GetIdealSize(nullptr, style)), &parent, 5));
        SystemCalendar systems(parent, style);
        ours.SetLongestSpan(20);
        std::mt19937 random(14);
        const auto number = [&](int least, int most) { return AnyNumber(random, least, most); };
        const auto anyDay = [&] {
            return Date(2024 + (number(0, 9) == 0 ? number(-300, 300) : 0), number(1, 12), number(1, 31));
        };
        const auto isOutside = [&](const SYSTEMTIME& day) {
            return !IsDay(day) || Written(day) < Written(ours.GetLeast()) || Written(day) > Written(ours.GetMost());
        };
        for (int i = 0; i < 5000; ++i) {
            ReportProgress();
            const auto kind = static_cast<Step::Kind>((std::min)(number(0, 6), int{Step::kClick}));
            SYSTEMTIME first = anyDay(), last = kind != Step::kSet || (style != 0 && i % 2) ? anyDay() : first;
            int from = number(1, CZoCalendar::kDays), to = number(1, CZoCalendar::kDays);
            if (kind == Step::kArrow)
                from = to = number(CZoCalendar::kPrevious, CZoCalendar::kNext);
            if (kind == Step::kClick) {
                const int month = ours.GetShownMonth().wMonth;
                ASSERT_TRUE(ours.GetPartDay(to, last) && ours.GetPartDay(from, first));
                ASSERT_EQ(systems.DayAt(systems.PlaceOf(from)), Written(first)) << i << " " << ours.State();
                if (style == 0 || first.wMonth != month || last.wMonth != month)
                    to = from; // the system's turns to a neighbour month under the mouse
                last = to == from ? first : last;
            }
            const SYSTEMTIME* least = i % 5 == 0 ? nullptr : &first;
            const SYSTEMTIME* most = i % 3 == 0 ? nullptr : &last;
            const auto act = [&](auto& calendar) {
                const bool done = kind == Step::kSet     ? calendar.SetSpan(first, last)
                                  : kind == Step::kRange ? calendar.SetRange(least, most)
                                                         : true;
                if (kind >= Step::kArrow) {
                    const CPoint end = calendar.PlaceOf(to);
                    SendMouse(calendar, WM_LBUTTONDOWN, calendar.PlaceOf(from), MK_LBUTTON);
                    if (from != to)
                        SendMouse(calendar, WM_MOUSEMOVE, end, MK_LBUTTON);
                    SendMouse(calendar, WM_LBUTTONUP, end);
                }
                return std::to_string(done) + " " + calendar.State();
            };
            Step step = {kind,         Written(first), Written(last), isOutside(first) || isOutside(last),
                         ours.State(), act(ours),      act(systems)};
            if (kind == Step::kRange) {
                step.first = least != nullptr ? step.first : "1752-09-14";
                step.last = most != nullptr ? step.last : "9";
            }
            ASSERT_FALSE(isOutside(ours.GetFirst()) || isOutside(ours.GetLast())) << step.ours;
            if (differences.Compare(step, "step " + std::to_string(kind) + " " + step.first + " " + step.last))
                continue;
            const auto makeAlike = [](auto& calendar) { // another day first: else its month is not shown
                calendar.SetRange(nullptr, nullptr);
                calendar.SetSpan(At("2024-01-01"), At("2024-01-01"));
                calendar.SetSpan(At("2024-06-06"), At("2024-06-06"));
            };
            makeAlike(ours), makeAlike(systems);
        }
    }
}

TEST(DatesOracle, FieldsDoTheSameOrForAReasonNot)
{
    ZO_ONLY_IN(IsThorough(), "the system's control is the same everywhere");
    using Step = FieldStep;
    Differences<Step> differences({
        {"a digit that leaves no place for another moves on, and the next one goes there; the system refuses both",
         [](const Step& s) { return s.kind != Kind::kYear && s.digits != "" && std::stoi(s.digits) > MostOf(s.kind); }},
        {"the number of a month can be typed over its name",
         [](const Step& s) { return s.digits != "" && s.kind == Kind::kMonth && s.format.find("MMM") < 99; }},
        {"years of two digits lie in the user's window, not in the century that was shown",
         [](const Step& s) { return s.digits.size() == 2 && s.kind == Kind::kYear; }},
        {"a day that another month or year lacks becomes its last, not the first",
         [](const Step& s) {
             return s.digits == "" && (s.kind == Kind::kMonth || s.kind == Kind::kYear) && s.our.wDay < s.from.wDay &&
                    s.system.wDay == 1;
         }},
        {"a month without that day waits for the day to be typed; the system takes its last day",
         [](const Step& s) {
             return s.digits != "" && s.kind == Kind::kMonth && s.ours == s.before && s.system.wDay < s.from.wDay;
         }},
        {"AM and PM keep the hour, which in the system becomes the first or last of the day",
         [](const Step& s) { return s.kind == Kind::kHalf && s.our.wHour % 12 == s.from.wHour % 12; }},
        {"0 may be typed for midnight, also where hours go from 1 to 12",
         [](const Step& s) { return s.kind == Kind::kHour12 && s.digits == "00" && s.our.wHour == 0; }},
    });
    std::mt19937 random(32);
    const auto number = [&](int least, int most) { return AnyNumber(random, least, most); };
    for (const std::string& format : Split("dd.MM.yyyy|d/M/yy|yyyy-MM-dd|MM/dd/yyyy|dddd, d. MMMM yyyy|ddd dd MMM yy|"
                                           "MMMM yyyy|HH:mm:ss|h:mm:ss tt|hh:mm t|dd.MM.yyyy HH:mm|M/d/yy h:mm:ss tt",
                                           '|')) {
        ControlParent parent;
        CZoDateTimeWnd ours;
        CZoDateTimeFields fields; // which piece of ours is which field of the system's, weekdays included
        ASSERT_TRUE(ours.Create(WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 200, 25), &parent, 7));
        ASSERT_TRUE(ours.SetFormat(format.c_str()) && fields.SetFormat(format.c_str(), LOCALE_USER_DEFAULT));
        auto systems = std::make_unique<Picker>(parent, format);
        for (int i = 0; i < 860; ++i) {
            ReportProgress();
            Step step = {};
            step.format = format;
            step.from = AnyTime(random);
            if (!ours.SetTime(step.from))
                continue; // there is no such day
            systems->SendMessage(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&step.from));
            ours.SetFocus();
            for (int moves = number(0, 3); moves > 0; --moves)
                PressKey(ours, number(0, 1) != 0 ? VK_LEFT : VK_RIGHT);
            int field = 0, piece = 0;
            for (int part = ours.GetFocusedPart(); !fields.IsField(piece) || --part > 0; ++piece)
                field += fields.GetKind(piece) != Kind::kText;
            step.kind = fields.GetKind(piece);
            std::vector<std::pair<UINT, WPARAM>> messages;
            if (step.kind != Kind::kHalf && number(0, 1) != 0) {
                const bool isLong = step.kind == Kind::kYear && format.find("yyyy") != std::string::npos;
                const int most = number(0, 1) != 0 ? MostOf(step.kind) : 99; // each second one is in the field's bounds
                step.digits =
                    isLong ? std::to_string(number(1753, 9999)) : std::to_string(100 + number(0, most)).substr(1);
                for (const char digit : step.digits)
                    messages.emplace_back(WM_CHAR, digit);
            } else {
                messages.emplace_back(WM_KEYDOWN, number(0, 1) != 0 ? VK_UP : VK_DOWN);
            }
            const auto send = [&](CWnd& control) {
                for (const auto& [message, key] : messages)
                    control.SendMessage(message, key);
            };
            send(ours);
            ours.GetTime(step.our);
            systems->Begin(field);
            send(*systems);
            systems->SendMessage(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&step.system));
            if (step.digits != "") // the system keeps a digit that it had no use for, and takes it later
                systems = std::make_unique<Picker>(parent, format);
            step.before = Written(step.from);
            step.ours = Written(step.our);
            step.systems = Written(step.system);
            differences.Compare(step, format + " field " + std::to_string(piece) + " " + step.digits);
        }
    }
}
