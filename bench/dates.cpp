// Drawings of the calendar and of a date in fields, beside the system's.
#include "families.h"
#include "harness.h"

#include <zogbl/date_time.h>
#include <zogbl/gdi_data.h>

#include <commctrl.h>

namespace {

constexpr Limits kLimits = {0, 1.5};

/// \param systemClass the window class of the same of the system's
void CompareDrawing(Harness& harness, const char* name, const char* ourName, CZoControl& ours, LPCSTR systemClass,
                    CSize size)
{
    CZoGlobalGDIData::InitializeFontsFromResources();
    const HMODULE library = LoadLibraryA("comctl32.dll");
    const auto initialize = reinterpret_cast<decltype(&::InitCommonControlsEx)>(
        reinterpret_cast<void*>(GetProcAddress(library, "InitCommonControlsEx")));
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_DATE_CLASSES};
    CWnd parent, systems;
    const CRect area(CPoint(0, 0), size);
    Require(parent.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr),
            "there is no window to draw on");
    Require(initialize != nullptr && initialize(&classes) &&
                systems.Create(systemClass, "", WS_CHILD | WS_VISIBLE, area, &parent, 1) &&
                ours.Create(WS_VISIBLE, area, &parent, 2),
            "there is no control to draw");
    systems.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(CZoGlobalGDIData::GetThinFont()));
    const auto draw = [](CWnd& window) {
        return [&window] { window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); };
    };
    harness.Compare(name, {{ourName, draw(ours)}, {"the system's", draw(systems)}}, kLimits);
}

} // namespace

void MeasureCalendar(Harness& harness)
{
    CZoCalendar calendar;
    CompareDrawing(harness, "calendar: a whole drawing", "CZoCalendar", calendar, MONTHCAL_CLASSA, CSize(230, 180));
}

void MeasureDateTime(Harness& harness)
{
    CZoDateTimeWnd date;
    CompareDrawing(harness, "date: a whole drawing", "CZoDateTimeWnd", date, DATETIMEPICK_CLASSA, CSize(150, 23));
}
