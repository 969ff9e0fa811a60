// A drawing of a date in fields beside one of the system's.
#include "families.h"
#include "harness.h"

#include <zogbl/date_time.h>
#include <zogbl/gdi_data.h>

#include <commctrl.h>

namespace {

constexpr Limits kLimits = {0, 1.5};

} // namespace

void MeasureDateTime(Harness& harness)
{
    CZoGlobalGDIData::InitializeFontsFromResources();
    CWnd parent;
    Require(parent.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr),
            "there is no window to draw on");
    const HMODULE library = LoadLibraryA("comctl32.dll");
    const auto initialize = reinterpret_cast<decltype(&::InitCommonControlsEx)>(
        reinterpret_cast<void*>(GetProcAddress(library, "InitCommonControlsEx")));
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_DATE_CLASSES};
    CWnd systems;
    CZoDateTimeWnd date;
    const CRect area(0, 0, 150, 23);
    Require(initialize != nullptr && initialize(&classes) &&
                systems.Create(DATETIMEPICK_CLASSA, "", WS_CHILD | WS_VISIBLE, area, &parent, 1) &&
                date.Create(WS_VISIBLE, area, &parent, 2),
            "there is no date picker");
    systems.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(CZoGlobalGDIData::GetThinFont()));
    const auto draw = [](CWnd& window) {
        return [&window] { window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); };
    };
    harness.Compare("date: a whole drawing", {{"CZoDateTimeWnd", draw(date)}, {"the system's", draw(systems)}},
                    kLimits);
}
