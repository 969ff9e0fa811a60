#include "tour_controls.h"

#include "workbench_ids.h"

#include <common/picture.h>
#include <common/wait.h>

#include <algorithm>
#include <utility>

namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255), kMiddle = RGB(128, 128, 128);

/// The system's colours of high contrast, until it ends.
class HighContrast {
public:
    HighContrast(COLORREF ground, COLORREF text, COLORREF highlight, COLORREF disabled)
    {
        const std::pair<int, COLORREF> colors[kColors] = {{COLOR_WINDOW, ground},
                                                          {COLOR_WINDOWTEXT, text},
                                                          {COLOR_WINDOWFRAME, text},
                                                          {COLOR_3DFACE, ground},
                                                          {COLOR_BTNTEXT, text},
                                                          {COLOR_3DSHADOW, kMiddle},
                                                          {COLOR_3DHILIGHT, kMiddle},
                                                          {COLOR_3DDKSHADOW, text},
                                                          {COLOR_HIGHLIGHT, highlight},
                                                          {COLOR_HIGHLIGHTTEXT, kWhite},
                                                          {COLOR_ACTIVECAPTION, highlight},
                                                          {COLOR_GRADIENTACTIVECAPTION, highlight},
                                                          {COLOR_CAPTIONTEXT, kWhite},
                                                          {COLOR_GRAYTEXT, disabled},
                                                          {COLOR_MENU, ground},
                                                          {COLOR_MENUBAR, ground},
                                                          {COLOR_MENUTEXT, text},
                                                          {COLOR_INFOBK, ground},
                                                          {COLOR_INFOTEXT, text}};
        for (int i = 0; i < kColors; ++i) {
            m_numbers[i] = colors[i].first;
            m_before[i] = ::GetSysColor(m_numbers[i]);
            ::SetSysColors(1, &m_numbers[i], &colors[i].second);
        }
        Set(HCF_HIGHCONTRASTON);
    }
    ~HighContrast()
    {
        ::SetSysColors(kColors, m_numbers, m_before);
        Set(0);
    }
    HighContrast(const HighContrast&) = delete;
    HighContrast& operator=(const HighContrast&) = delete;

private:
    static void Set(DWORD flags)
    {
        HIGHCONTRASTA contrast = {};
        contrast.cbSize = sizeof contrast;
        contrast.dwFlags = flags;
        ::SystemParametersInfoA(SPI_SETHIGHCONTRAST, sizeof contrast, &contrast, 0);
        Settle();
    }

    static constexpr int kColors = 19;
    int m_numbers[kColors];
    COLORREF m_before[kColors];
};

bool Save(CWnd& window, CString path, LPCSTR what)
{
    path.Replace(".png", CString("-") + what + ".png");
    window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
    Settle();
    return SavePicture(window, path) != FALSE;
}

/// A page of its own in a window that runs from right to left.
bool SaveMirrored(const CString& path)
{
    CWnd window;
    ControlPage page;
    if (!window.CreateEx(WS_EX_LAYOUTRTL, AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_3DFACE)), "",
                         WS_POPUP | WS_BORDER, 40, 40, 10, 10, nullptr, nullptr) ||
        !page.CreatePage(&window, AFX_IDW_PANE_FIRST))
        return false;
    page.Reload();
    const CSize size = page.GetNeededSize();
    window.SetWindowPos(nullptr, 0, 0, size.cx + 2, size.cy + 2, SWP_NOMOVE | SWP_NOZORDER);
    page.MoveWindow(0, 0, size.cx, size.cy);
    page.ShowWindow(SW_SHOW);
    window.ShowWindow(SW_SHOWNOACTIVATE);
    window.BringWindowToTop();
    const bool saved = Save(window, path, "mirrored");
    window.DestroyWindow();
    return saved;
}

BOOL CALLBACK FindPopup(HWND window, LPARAM found)
{
    const LONG_PTR style = ::GetWindowLongPtr(window, GWL_STYLE);
    if ((style & WS_VISIBLE) == 0 || (style & WS_POPUP) == 0 || (style & WS_CAPTION) == WS_CAPTION)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

/// What a control opens below itself.
bool SavePopup(HWND control, const CString& path)
{
    ::SetFocus(control);
    ::SendMessage(control, WM_KEYDOWN, VK_F4, 0);
    Settle();
    HWND popup = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &FindPopup, reinterpret_cast<LPARAM>(&popup));
    if (popup == nullptr)
        return false;
    ::RedrawWindow(popup, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    Settle();
    const bool saved = SavePicture(popup, path);
    ::SendMessage(control, WM_KEYDOWN, VK_ESCAPE, 0);
    Settle();
    return saved && !::IsWindowVisible(popup);
}

/// Each control by itself, in the usual colours.
bool SaveEach(CWnd& page, const CString& path)
{
    static constexpr struct {
        UINT control;
        LPCSTR name;
        LPCSTR popup; // of what it opens; null: nothing
    } rows[] = {
        {ControlPage::kDateId, "date", nullptr},
        {ControlPage::kCalendarButtonId, "calendar-button", "calendar-popup"},
        {ControlPage::kCalendarId, "calendar", nullptr},
        {ControlPage::kLightsId, "lights", nullptr},
        {ControlPage::kRunningId, "progress", nullptr},
        {ControlPage::kInkId, "color-button", "color-chooser"},
        {ControlPage::kSampleId, "screen-sample", nullptr},
        {ControlPage::kListId, "column-list", nullptr},
        {ControlPage::kPanelId, "text-panel", nullptr},
        {ControlPage::kPictureId, "bitmap", nullptr},
    };
    const auto pathOf = [&path](LPCSTR name) {
        CString own = path;
        own.Replace(".png", CString("-") + name + ".png");
        return own;
    };
    for (const auto& row : rows) {
        const HWND control = ::GetDlgItem(page, static_cast<int>(row.control));
        page.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); // where a popup was
        Settle();
        if (!SavePicture(control, pathOf(row.name)) || (row.popup != nullptr && !SavePopup(control, pathOf(row.popup))))
            return false;
    }
    return true;
}

/// The boxes of the page of countries.
bool SavePickers(CountryPage& page, const CString& path)
{
    CString box = path, locales = path;
    box.Replace(".png", "-country-box.png");
    locales.Replace(".png", "-locales.png");
    return SavePicture(page.GetPicker(), box) && SavePicture(page.GetLocalePicker(), locales);
}

} // namespace

CString PictureControls(MainFrame& frame, const CString& path)
{
    ControlPage& page = frame.GetControlPage();
    frame.ShowPage(MainFrame::GetPageCount() - 1);
    CRect before;
    frame.GetWindowRect(&before);
    const auto fit = [&] { // as large as the page wants to be, and the screen lets it
        CRect shown;
        page.GetClientRect(&shown);
        const CSize needed = page.GetNeededSize(), added(needed.cx - shown.Width(), needed.cy - shown.Height());
        CRect window;
        frame.GetWindowRect(&window);
        const int screenWidth = ::GetSystemMetrics(SM_CXSCREEN), screenHeight = ::GetSystemMetrics(SM_CYSCREEN);
        const int width = static_cast<int>(window.Width() + added.cx);
        const int height = static_cast<int>(window.Height() + added.cy);
        frame.SetWindowPos(nullptr, 0, 0, (std::min)(width, screenWidth), (std::min)(height, screenHeight),
                           SWP_NOZORDER);
    };
    CString failed;
    const auto save = [&](LPCSTR what) {
        fit();
        if (failed.IsEmpty() && !Save(frame, path, what))
            failed = what;
    };
    save("standard");
    if (failed.IsEmpty() && !SaveEach(page, path))
        failed = "each";
    page.Disable(true);
    save("disabled");
    page.Disable(false);
    {
        const HighContrast scheme(kBlack, kWhite, RGB(128, 0, 128), RGB(0, 255, 0));
        save("black");
        page.Disable(true);
        save("black-disabled");
        page.Disable(false);
    }
    {
        const HighContrast scheme(kWhite, kBlack, kBlack, RGB(0, 96, 0));
        save("white");
    }
    page.Enlarge(true);
    save("large");
    page.Enlarge(false);
    if (failed.IsEmpty() && !SaveMirrored(path))
        failed = "mirrored";
    frame.MoveWindow(&before);
    frame.ShowPage(0);
    frame.UpdateWindow();
    Settle();
    if (failed.IsEmpty() && !SavePickers(frame.GetCountryPage(), path))
        failed = "pickers";
    return failed;
}
