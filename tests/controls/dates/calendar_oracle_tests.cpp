// The calendar beside the system's: the same random steps, and each difference with its reason.
#include "calendar_test.h"

#include "controls/base/day.h"

#include <commctrl.h>

#include <random>

namespace {

struct Ours : CZoCalendar {
    CPoint PlaceOf(int part) const
    {
        ZoPart description;
        EXPECT_TRUE(DescribePart(part, description));
        return description.area.CenterPoint();
    }
    std::string State() const { return Span(GetFirst(), GetLast()) + " in " + Text(GetShownMonth()); }
};

/// The system's, by the same names.
struct Systems : CWnd {
    Systems(CWnd& parent, DWORD style)
    {
        const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_DATE_CLASSES};
        const FARPROC make = ::GetProcAddress(::LoadLibraryA("comctl32.dll"), "InitCommonControlsEx");
        reinterpret_cast<decltype(&::InitCommonControlsEx)>(reinterpret_cast<void*>(make))(&classes);
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
        return (hit.uHit & ~UINT{MCHT_NEXT | MCHT_PREV}) == MCHT_CALENDARDATE ? Text(hit.st) : "";
    }
    std::string State()
    {
        SYSTEMTIME span[2] = {}, months[2] = {};
        Ask(OfSpans() ? MCM_GETSELRANGE : MCM_GETCURSEL, 0, span);
        Ask(MCM_GETMONTHRANGE, GMR_VISIBLE, months);
        return Span(span[0], OfSpans() ? span[1] : span[0]) + " in " + Text(months[0]);
    }

    std::vector<int> m_columns, m_rows;
};

struct Step {
    enum Kind { kSet, kRange, kArrow, kClick } kind;
    std::string first, last; ///< what was set
    std::string before, ours, systems;
    bool isOutside; ///< a day of it, of the range or of the calendar
};
const struct {
    const char* reason;
    bool (*isIt)(const Step& step);
} kDifferences[] = {
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
};

} // namespace

TEST(CalendarOracle, DoesAsTheSystemsOrForAReasonNot)
{
    ZO_ONLY_IN(IsThorough(), "the system's calendar is the same everywhere");
    std::map<std::string, int> seen;
    for (const DWORD style : {0UL, CZoCalendar::kSpan + 0UL}) {
        ControlParent parent;
        Systems systems(parent, style);
        Ours ours;
        ASSERT_TRUE(ours.Create(WS_VISIBLE | style, CRect({0, 0}, Ours::GetIdealSize(nullptr, style)), &parent, 5));
        ours.SetLongestSpan(20);
        std::mt19937 random(14);
        const auto number = [&](int least, int most) {
            return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
        };
        for (int i = 0; i < 5000; ++i) {
            ReportProgress();
            const auto anyDay = [&] {
                return Date(2024 + (number(0, 9) == 0 ? number(-300, 300) : 0), number(1, 12), number(1, 31));
            };
            const auto isOutside = [&](const SYSTEMTIME& day) {
                return !IsDay(day) || Text(day) < Text(ours.GetLeast()) || Text(day) > Text(ours.GetMost());
            };
            const auto kind = static_cast<Step::Kind>((std::min)(number(0, 6), int{Step::kClick}));
            SYSTEMTIME first = anyDay(), last = kind != Step::kSet || (style != 0 && i % 2) ? anyDay() : first;
            int from = number(1, CZoCalendar::kDays), to = number(1, CZoCalendar::kDays);
            if (kind == Step::kArrow)
                from = to = number(CZoCalendar::kPrevious, CZoCalendar::kNext);
            if (kind == Step::kClick) {
                const int month = ours.GetShownMonth().wMonth;
                ASSERT_TRUE(ours.GetPartDay(to, last) && ours.GetPartDay(from, first));
                ASSERT_EQ(systems.DayAt(systems.PlaceOf(from)), Text(first)) << i << " " << ours.State();
                if (style == 0 || first.wMonth != month || last.wMonth != month)
                    to = from; // the system's turns to a neighbour month under the mouse
                last = to == from ? first : last;
            }
            Step step = {kind, Text(first), Text(last), ours.State(), "", "", isOutside(first) || isOutside(last)};
            const SYSTEMTIME* least = i % 5 == 0 ? nullptr : &first;
            const SYSTEMTIME* most = i % 3 == 0 ? nullptr : &last;
            if (kind == Step::kRange)
                step.first = least != nullptr ? step.first : "1752-09-14",
                step.last = most != nullptr ? step.last : "9";
            const auto act = [&](auto& calendar) {
                bool done = true;
                if (kind == Step::kSet)
                    done = calendar.SetSpan(first, last);
                else if (kind == Step::kRange)
                    done = calendar.SetRange(least, most);
                const CPoint start = calendar.PlaceOf(from), end = calendar.PlaceOf(to);
                if (kind >= Step::kArrow)
                    SendMouse(calendar, WM_LBUTTONDOWN, start, MK_LBUTTON);
                if (kind >= Step::kArrow && from != to)
                    SendMouse(calendar, WM_MOUSEMOVE, end, MK_LBUTTON);
                if (kind >= Step::kArrow)
                    SendMouse(calendar, WM_LBUTTONUP, end);
                return std::to_string(done) + " " + calendar.State();
            };
            step.ours = act(ours);
            step.systems = act(systems);
            ASSERT_FALSE(isOutside(ours.GetFirst()) || isOutside(ours.GetLast())) << step.ours;
            if (step.ours == step.systems)
                continue;
            const auto known = std::find_if(std::begin(kDifferences), std::end(kDifferences),
                                            [&](auto& difference) { return difference.isIt(step); });
            ASSERT_NE(std::end(kDifferences), known)
                << i << ": " << step.before << ", step " << kind << " " << step.first << " " << step.last << ": ours "
                << step.ours << ", the system's " << step.systems;
            ++seen[known->reason];
            const auto makeAlike = [](auto& calendar) { // another day first: else its month is not shown
                calendar.SetRange(nullptr, nullptr);
                calendar.SetSpan(Date(2024, 1, 1), Date(2024, 1, 1));
                calendar.SetSpan(Date(2024, 6, 6), Date(2024, 6, 6));
            };
            makeAlike(ours), makeAlike(systems);
        }
    }
    EXPECT_EQ(std::size(kDifferences), seen.size()) << "a row that is not needed";
}
