#include "support/dialog_layout.h"

#include "support/dialog_driver.h"
#include "support/watchdog.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <commctrl.h>

namespace zo_test {

namespace {

/// A text in its window's font.
SIZE Measure(HWND window, const std::wstring& text, int width, UINT format)
{
    const HDC dc = GetDC(window);
    const HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT area = {0, 0, width, 0};
    DrawTextW(dc, text.c_str(), -1, &area, DT_CALCRECT | format);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    return {area.right, area.bottom};
}

std::wstring WideTextOf(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void ExpectApart(const DialogControl& first, const DialogControl& second)
{
    RECT common;
    // The arrows beside a number overlap its frame by what the system chooses.
    const bool areOneField = first.isSpin || second.isSpin;
    EXPECT_TRUE(first.IsFrame() || second.IsFrame() || areOneField ||
                !IntersectRect(&common, &first.place, &second.place))
        << "controls " << first.id << " and " << second.id << " lie over each other";
}

/// Counts the visible buttons of a dialog, with those of its pages, and the default ones among them.
struct Buttons {
    int all = 0, defaults = 0;

    explicit Buttons(HWND dialog) { EnumChildWindows(dialog, &Count, reinterpret_cast<LPARAM>(this)); }

private:
    static BOOL CALLBACK Count(HWND window, LPARAM buttons)
    {
        const LRESULT kind = SendMessageA(window, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON);
        auto* counted = reinterpret_cast<Buttons*>(buttons);
        if (kind != 0 && IsWindowVisible(window)) {
            ++counted->all;
            counted->defaults += kind == DLGC_DEFPUSHBUTTON;
        }
        return TRUE;
    }
};

} // namespace

std::vector<DialogControl> ControlsOf(HWND dialog)
{
    std::vector<DialogControl> controls;
    for (HWND window = GetWindow(dialog, GW_CHILD); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        wchar_t name[20] = {};
        GetClassNameW(window, name, 20);
        const bool isStatic = _wcsicmp(name, L"Static") == 0;
        const bool isButton = _wcsicmp(name, L"Button") == 0;
        const bool isSpin = _wcsicmp(name, L"msctls_updown32") == 0;
        const DWORD style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
        const DWORD kind = style & static_cast<DWORD>(isStatic ? SS_TYPEMASK : BS_TYPEMASK);
        RECT place;
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        controls.push_back(
            {window, GetDlgCtrlID(window), place, isStatic, isButton, isSpin, kind, style, WideTextOf(window)});
    }
    return controls;
}

void ExpectFits(const DialogControl& control)
{
    if (control.text.empty() || control.IsPicture())
        return;
    SCOPED_TRACE(testing::Message() << "control " << control.id << ": " << control.text);
    const LONG width = control.place.right - control.place.left;
    const LONG height = control.place.bottom - control.place.top;
    if (control.isStatic) {
        UINT format = DT_EXPANDTABS;
        if (control.kind != SS_LEFTNOWORDWRAP && control.kind != SS_SIMPLE)
            format |= DT_WORDBREAK;
        if ((control.style & SS_NOPREFIX) != 0)
            format |= DT_NOPREFIX;
        const SIZE size = Measure(control.window, control.text, width, format);
        EXPECT_LE(size.cx, width);
        EXPECT_LE(size.cy, height);
    } else if (control.isButton) {
        constexpr LONG kButtonFrame = 8; // pixels on both sides together
        constexpr LONG kGroupFrame = 20;
        const bool isPush = control.kind == BS_PUSHBUTTON || control.kind == BS_DEFPUSHBUTTON;
        const LONG beside = isPush                 ? kButtonFrame
                            : control.IsGroupBox() ? kGroupFrame
                                                   : GetSystemMetrics(SM_CXMENUCHECK) + kButtonFrame;
        const SIZE size = Measure(control.window, control.text, width, DT_SINGLELINE);
        EXPECT_LE(size.cx + beside, width);
        EXPECT_LE(size.cy, height);
    }
}

void ExpectTidy(HWND dialog)
{
    CRect client;
    GetClientRect(dialog, &client);
    EXPECT_LE(Measure(dialog, WideTextOf(dialog), client.right, DT_SINGLELINE).cx, client.right) << "title";
    std::vector<DialogControl> controls = ControlsOf(dialog);
    if (IsWindowVisible(dialog))
        std::erase_if(controls, [](const DialogControl& control) { return (control.style & WS_VISIBLE) == 0; });
    for (size_t i = 0; i < controls.size(); ++i) {
        const RECT& place = controls[i].place;
        EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.right && place.bottom <= client.bottom)
            << "control " << controls[i].id << " is outside";
        ExpectFits(controls[i]);
        for (size_t k = 0; k < i; ++k)
            ExpectApart(controls[k], controls[i]);
    }
}

std::vector<int> ExpectTabRounds(HWND dialog, int steps)
{
    std::vector<HWND> way;
    const auto walk = [&](int modifiers) {
        for (int i = 0; i < steps; ++i) {
            way.push_back(GetFocus());
            const Buttons buttons(dialog);
            EXPECT_EQ(buttons.all > 0 ? 1 : 0, buttons.defaults) << "default buttons at " << GetDlgCtrlID(way.back());
            Key(dialog, VK_TAB, modifiers);
            ReportProgress();
        }
    };
    walk(kNoModifier);
    const auto again = std::find(way.begin() + 1, way.end(), way.front());
    const auto round = static_cast<size_t>(again - way.begin());
    std::vector<int> stops;
    for (size_t i = 0; i < way.size(); ++i) {
        EXPECT_EQ(way[i % round], way[i]) << "step " << i;
        if (i < round)
            stops.push_back(GetDlgCtrlID(way[i]));
        for (size_t k = 0; i < round && k < i; ++k)
            EXPECT_NE(way[k], way[i]) << "twice in a round: " << stops[i];
    }
    const std::vector<HWND> forward = std::exchange(way, {});
    walk(kShift);
    way.push_back(GetFocus());
    for (int i = 1; i <= steps; ++i)
        EXPECT_EQ(forward[static_cast<size_t>(steps - i)], way[static_cast<size_t>(i)]) << "step " << i << " back";
    return stops;
}

} // namespace zo_test
