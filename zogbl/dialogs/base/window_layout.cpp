#include "window_layout.h"

#include "ground/number_record.h"
#include "resources/user_settings.h"

#include <common/without_throwing.h>

#include <algorithm>

namespace {

constexpr LPCSTR kSection = "Windows";
constexpr LPCSTR kMark = "ZoWindow1"; // width and height of the inside, in dialog units
constexpr int kMostUnits = 30000;
constexpr int kUnits = 1000; // measured at once, so that their size in pixels is exact

BOOL IsComboBox(HWND window)
{
    char name[10] = {};
    ::GetClassNameA(window, name, sizeof name);
    return ::lstrcmpiA(name, "ComboBox") == 0;
}

/// Of a combo box, whose size is that of its list: the field has the font's.
int ListHeight(HWND box)
{
    CRect list;
    ::SendMessageA(box, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&list));
    return list.Height();
}

} // namespace

WindowLayout::WindowLayout(CWnd& window, const ZoFollowing* controls, int count, LPCSTR name)
    : m_window(window), m_name(name)
{
    CRect area;
    window.GetWindowRect(&area);
    m_least = area.Size();
    window.GetClientRect(&area);
    m_leastClient = area.Size();
    m_controls.reserve(count);
    for (int i = 0; i < count; ++i) {
        const HWND control = ::GetDlgItem(window.m_hWnd, controls[i].control);
        ASSERT(control != nullptr);
        ::GetWindowRect(control, &area);
        const int list = IsComboBox(control) ? ListHeight(control) : 0;
        area.bottom += list;
        ::MapWindowPoints(nullptr, window.m_hWnd, reinterpret_cast<POINT*>(&area), 2);
        m_controls.push_back({control, controls[i].how, area, list});
    }
}

/// The size of kUnits dialog units, in pixels.
CSize WindowLayout::DialogUnits() const
{
    CRect units(0, 0, kUnits, kUnits);
    ::MapDialogRect(m_window.m_hWnd, &units);
    return units.Size();
}

void WindowLayout::Restore()
{
    CString text;
    if (m_name == nullptr || !ReadSetting(kSection, m_name, text))
        return;
    NumberRecordReader record(text, kMark);
    const int width = record.Next(kMostUnits), height = record.Next(kMostUnits);
    if (!record.IsWhole())
        return;
    const CSize units = DialogUnits(), frame = m_least - m_leastClient;
    CRect screen;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    const auto sizeOf = [](int length, int pixels, int edges, int least, int most) {
        return (std::max)((std::min)(::MulDiv(length, pixels, kUnits) + edges, most), least);
    };
    m_window.SetWindowPos(nullptr, 0, 0, sizeOf(width, units.cx, frame.cx, m_least.cx, screen.Width()),
                          sizeOf(height, units.cy, frame.cy, m_least.cy, screen.Height()),
                          SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL WindowLayout::Keep() const
{
    if (m_name == nullptr || m_window.IsIconic() || m_window.IsZoomed())
        return TRUE;
    return WithoutThrowing([this] {
        CRect inside;
        m_window.GetClientRect(&inside);
        const CSize units = DialogUnits();
        NumberRecordWriter record(kMark);
        record.Add(::MulDiv(inside.Width(), kUnits, units.cx));
        record.Add(::MulDiv(inside.Height(), kUnits, units.cy));
        return KeepSetting(kSection, m_name, record.Finish()) == ERROR_SUCCESS;
    });
}

void WindowLayout::OnSize()
{
    CRect inside;
    m_window.GetClientRect(&inside);
    const int wider = (std::max)(inside.Width() - static_cast<int>(m_leastClient.cx), 0);
    const int higher = (std::max)(inside.Height() - static_cast<int>(m_leastClient.cy), 0);
    for (const Control& control : m_controls) { // one by one: together they may fail, and then none would be moved
        CRect area = control.area;
        if ((control.how & ZoFollowing::kMoveRight) != 0)
            area.OffsetRect(wider, 0);
        if ((control.how & ZoFollowing::kMoveDown) != 0)
            area.OffsetRect(0, higher);
        if ((control.how & ZoFollowing::kWiden) != 0)
            area.right += wider;
        if ((control.how & ZoFollowing::kHeighten) != 0)
            area.bottom += higher;
        const auto place = [&] {
            ::SetWindowPos(control.window, nullptr, area.left, area.top, area.Width(), area.Height(),
                           SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS); // another may stand on its old place
        };
        place();
        if (control.list > 0 && ListHeight(control.window) != control.list) { // systems count the field or do not
            area.bottom += control.list - ListHeight(control.window);
            place();
        }
    }
    // A control that moved may have taken along what another one had left in its place.
    m_window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void WindowLayout::OnGetMinMaxInfo(MINMAXINFO& info) const { info.ptMinTrackSize = {m_least.cx, m_least.cy}; }
