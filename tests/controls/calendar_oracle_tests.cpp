// The calendar beside the system's: the same random steps, and each difference with its reason.
#include "controls/calendar_test.h"

#include <commctrl.h>

#include <random>

namespace {

/// The system's month calendar, of one month, in days and cells.
class SystemCalendar {
public:
    SystemCalendar(CWnd& parent, DWORD style)
    {
        const HMODULE library = ::LoadLibraryA("comctl32.dll");
        const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_DATE_CLASSES};
        reinterpret_cast<decltype(&::InitCommonControlsEx)>(
            reinterpret_cast<void*>(::GetProcAddress(library, "InitCommonControlsEx")))(&classes);
        EXPECT_TRUE(m_window.Create(MONTHCAL_CLASSA, "", WS_CHILD | WS_VISIBLE | style, CRect(0, 0, 1, 1), &parent, 6));
        m_window.SendMessage(MCM_SETMAXSELCOUNT, 20);
        CRect area;
        Send(MCM_GETMINREQRECT, 0, &area);
        m_window.MoveWindow(area);
        // The cells of days are where a hit test finds other days, one behind the other.
        const auto edges = [this](int length, auto pointAt) {
            std::vector<int> found;
            for (int i = 0, last = 0; i < length; ++i) {
                const SYSTEMTIME day = HitAt(pointAt(i));
                if (day.wYear != 0 && std::exchange(last, day.wMonth * 32 + day.wDay) != day.wMonth * 32 + day.wDay)
                    found.push_back(i);
            }
            return found;
        };
        m_columns = edges(area.Width(), [&](int x) { return CPoint(x, area.Height() * 6 / 10); });
        m_rows = edges(area.Height(), [&](int y) { return CPoint(area.Width() / 2, y); });
        EXPECT_EQ(7u, m_columns.size());
        EXPECT_EQ(6u, m_rows.size());
    }

    bool SetSpan(const SYSTEMTIME& first, const SYSTEMTIME& last)
    {
        SYSTEMTIME span[2] = {first, last};
        return Send(IsOfSpans() ? MCM_SETSELRANGE : MCM_SETCURSEL, 0, span) != 0;
    }
    std::string GetSelection()
    {
        SYSTEMTIME span[2] = {};
        Send(IsOfSpans() ? MCM_GETSELRANGE : MCM_GETCURSEL, 0, span);
        return IsOfSpans() ? Span(span[0], span[1]) : Text(span[0]);
    }
    bool SetRange(const SYSTEMTIME* least, const SYSTEMTIME* most)
    {
        SYSTEMTIME range[2] = {least != nullptr ? *least : SYSTEMTIME(), most != nullptr ? *most : SYSTEMTIME()};
        return Send(MCM_SETRANGE, (least != nullptr ? GDTR_MIN : 0U) | (most != nullptr ? GDTR_MAX : 0U), range) != 0;
    }
    SYSTEMTIME GetMonth()
    {
        SYSTEMTIME months[2] = {};
        Send(MCM_GETMONTHRANGE, GMR_VISIBLE, months);
        return months[0];
    }
    /// \param part as the parts of CZoCalendar
    CPoint At(int part) const
    {
        if (part > CZoCalendar::kDays)
            return {part == CZoCalendar::kNext ? m_columns[6] + 15 : 15, m_rows[0] / 3};
        return {m_columns[static_cast<size_t>(part - 1) % 7] + 5, m_rows[static_cast<size_t>(part - 1) / 7] + 5};
    }
    SYSTEMTIME HitAt(CPoint point)
    {
        MCHITTESTINFO hit = {};
        hit.cbSize = MCHITTESTINFO_V1_SIZE;
        hit.pt = point;
        Send(MCM_HITTEST, 0, &hit);
        const UINT kind = hit.uHit & ~UINT{MCHT_NEXT | MCHT_PREV};
        return kind == MCHT_CALENDARDATE ? hit.st : SYSTEMTIME();
    }

    CWnd m_window;

private:
    bool IsOfSpans() const { return (m_window.GetStyle() & MCS_MULTISELECT) != 0; }
    LRESULT Send(UINT message, WPARAM wParam, void* data)
    {
        return m_window.SendMessage(message, wParam, reinterpret_cast<LPARAM>(data));
    }
    std::vector<int> m_columns, m_rows;
};

} // namespace

TEST(CalendarOracle, DoesAsTheSystemsOrForAReasonNot)
{
    enum Kind { kSet, kRange, kArrow, kClick };
    struct Step {
        Kind kind;
        SYSTEMTIME first, last; // set; for a range, its ends
        std::string before, ours, systems;
        bool isOutside = false; // a day of it, of the range
    };
    struct {
        const char* reason;
        std::function<bool(const Step&)> isIt;
        int seen = 0;
    } differences[] = {
        {"the system's begins with 14 September 1752",
         [](const Step& step) { return step.kind <= kRange && Text(step.first) < "1752-09-14"; }},
        {"ends the wrong way round: the system's changes their places",
         [](const Step& step) { return step.kind <= kRange && Text(step.last) < Text(step.first); }},
        {"a selection outside of the range: the system's keeps it",
         [](const Step& step) { return step.kind == kRange && step.systems == "1 " + step.before; }},
        {"days outside of the range: the system's puts spans there, and drags begin there",
         [](const Step& step) { return step.isOutside && step.ours.substr(2) == step.before; }},
        {"arrows: the system's takes the selection along; it does not go to a month that lies in the range in part",
         [](const Step& step) { return step.kind == kArrow; }},
    };
    for (const DWORD style : {0UL, CZoCalendar::kSpan + 0UL}) {
        const UserWeeks weeks;
        ControlParent parent;
        SystemCalendar system(parent, style);
        CZoCalendar ours;
        const CRect area(CPoint(0, 0), CZoCalendar::GetIdealSize(nullptr, style));
        ASSERT_TRUE(ours.Create(WS_VISIBLE | style, area, &parent, 5));
        ours.SetLongestSpan(20);
        std::mt19937 random(14);
        const auto number = [&](int least, int most) {
            return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
        };
        const auto anyDay = [&] {
            return Date(2024 + (number(0, 9) == 0 ? number(-300, 300) : 0), number(1, 12), number(1, 31));
        };
        const auto isOutside = [&](const SYSTEMTIME& day) {
            return Text(day) < Text(ours.GetLeast()) || Text(day) > Text(ours.GetMost());
        };
        const auto press = [&](int part, int to) {
            ZoPart from, until;
            ours.DescribePart(part, from);
            ours.DescribePart(to, until);
            const auto drag = [](CWnd& window, CPoint start, CPoint end) {
                SendMouse(window, WM_LBUTTONDOWN, start, MK_LBUTTON);
                if (end != start)
                    SendMouse(window, WM_MOUSEMOVE, end, MK_LBUTTON);
                SendMouse(window, WM_LBUTTONUP, end);
            };
            drag(ours, from.area.CenterPoint(), until.area.CenterPoint());
            drag(system.m_window, system.At(part), system.At(to));
        };
        const auto isOfMonth = [&](int part) {
            SYSTEMTIME day = {};
            return ours.GetPartDay(part, day) && day.wMonth == ours.GetShownMonth().wMonth;
        };
        const auto selected = [&] {
            return std::pair(Span(ours.GetFirst(), ours.GetLast()) + " in " + Text(ours.GetShownMonth()),
                             system.GetSelection() + " in " + Text(system.GetMonth()));
        };
        for (int i = 0; i < 5000; ++i) {
            Step step = {static_cast<Kind>((std::min)(number(0, 6), int{kClick})),
                         anyDay(),
                         anyDay(),
                         selected().first,
                         "1 ",
                         "1 ",
                         false};
            const int part = number(1, CZoCalendar::kDays), to = number(1, CZoCalendar::kDays);
            SYSTEMTIME day = {};
            switch (step.kind) {
            case kSet:
                if (style == 0 || number(0, 1) == 0)
                    step.last = step.first;
                step.isOutside = isOutside(step.first) || isOutside(step.last);
                step.ours = std::to_string(ours.SetSpan(step.first, step.last)) + " ";
                step.systems = std::to_string(system.SetSpan(step.first, step.last)) + " ";
                break;
            case kRange: {
                const int which = number(0, 9);
                const SYSTEMTIME* least = which < 2 ? nullptr : &step.first;
                const SYSTEMTIME* most = which % 3 == 0 ? nullptr : &step.last;
                step.ours = std::to_string(ours.SetRange(least, most)) + " ";
                step.systems = std::to_string(system.SetRange(least, most)) + " ";
                step.first = least != nullptr ? step.first : Date(1752, 9, 14);
                step.last = most != nullptr ? step.last : Date(9999, 12, 31);
                break;
            }
            case kArrow: {
                const int arrow = number(CZoCalendar::kPrevious, CZoCalendar::kNext);
                press(arrow, arrow);
                break;
            }
            case kClick:
                ASSERT_TRUE(ours.GetPartDay(part, day));
                ASSERT_EQ(Text(system.HitAt(system.At(part))), Text(day)) << i << " " << step.before;
                step.isOutside = isOutside(day);
                press(part, style != 0 && isOfMonth(part) && isOfMonth(to) ? to : part);
                break;
            }
            const auto now = selected();
            step.ours += now.first;
            step.systems += now.second;
            if (step.ours == step.systems)
                continue;
            const auto known = std::find_if(std::begin(differences), std::end(differences),
                                            [&](auto& difference) { return difference.isIt(step); });
            ASSERT_NE(std::end(differences), known)
                << i << ": " << step.before << ", kind " << step.kind << " " << Text(step.first) << " "
                << Text(step.last) << ": ours " << step.ours << ", the system's " << step.systems;
            ++known->seen;
            for (const SYSTEMTIME& again : {Date(2024, 1, 1), Date(2024, 6, 6)}) { // both alike again
                ours.SetRange(nullptr, nullptr);
                system.SetRange(nullptr, nullptr);
                ours.SetSpan(again, again);
                system.SetSpan(again, again);
            }
        }
    }
    for (const auto& difference : differences)
        EXPECT_LT(0, difference.seen) << difference.reason;
}
