// The controls for colours beside the same picture by bare calls of the system.
#include "families.h"
#include "harness.h"
#include "product.h"

#include <zogbl/color_button.h>
#include <zogbl/gdi_data.h>
#include <zogbl/screen_sample.h>

#include <string>
#include <vector>

namespace {

constexpr Limits kDrawLimits = {0, 1.5};

/// Pictures are drawn into memory, as the controls themselves do it.
class Target {
public:
    Target() : m_dc(::CreateCompatibleDC(nullptr))
    {
        const HDC screen = ::GetDC(nullptr);
        m_bitmap = ::CreateCompatibleBitmap(screen, 400, 300);
        ::ReleaseDC(nullptr, screen);
        m_before = ::SelectObject(m_dc, m_bitmap);
    }
    ~Target()
    {
        ::SelectObject(m_dc, m_before);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;
    operator HDC() const { return m_dc; }

private:
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_before;
};

void Fill(HDC dc, const RECT& area, COLORREF color)
{
    ::SetBkColor(dc, color);
    ::ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

void Swatch(HDC dc, CRect area, COLORREF color)
{
    Fill(dc, area, ::GetSysColor(COLOR_3DSHADOW));
    area.DeflateRect(1, 1);
    Fill(dc, area, color);
}

void Write(HDC dc, CRect area, const CString& text, UINT format = DT_SINGLELINE | DT_VCENTER)
{
    ::DrawTextA(dc, text, text.GetLength(), &area, format | DT_NOPREFIX);
}

/// A plain window that draws the same as a control, with all places, colours and texts known.
class Bare {
public:
    Bare(HWND parent, void (Bare::*draw)(HDC, CSize), CSize size) : m_draw(draw), m_size(size)
    {
        WNDCLASSA description = {};
        description.lpfnWndProc = &Obey;
        description.lpszClassName = "BareColors";
        ::RegisterClassA(&description);
        m_window = ::CreateWindowExA(0, "BareColors", "", WS_CHILD | WS_VISIBLE, 0, 0, size.cx, size.cy, parent,
                                     nullptr, nullptr, nullptr);
        Require(m_window != nullptr, "a plain window could not be made");
        ::SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    HWND GetWindow() const { return m_window; }
    void SetColors(const std::vector<COLORREF>& colors) { m_colors = colors; }

    void DrawGrid(HDC dc, CSize size)
    {
        const int cell = size.cx / 8, row = size.cy / 7;
        Fill(dc, CRect(CPoint(0, 0), size), ::GetSysColor(COLOR_3DFACE));
        Swatch(dc, CRect(3, 3, row - 3, row - 3), 0);
        for (size_t i = 0; i < m_colors.size(); ++i) {
            const CPoint corner(static_cast<int>(i % 8) * cell + 3, static_cast<int>(i / 8 + 1) * row + 3);
            Swatch(dc, CRect(corner, CSize(cell - 6, row - 6)), m_colors[i]);
        }
        ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
        Write(dc, CRect(row, 0, size.cx, row), m_automatic);
        Write(dc, CRect(6, 5 * row, size.cx, 6 * row), m_more);
        Fill(dc, CRect(3, 6 * row, size.cx - 3, 6 * row + 1), ::GetSysColor(COLOR_3DSHADOW));
        Write(dc, CRect(6, 6 * row, size.cx, 7 * row), m_name);
    }
    void DrawButton(HDC dc, CSize size)
    {
        CRect area(CPoint(0, 0), size);
        ::DrawFrameControl(dc, &area, DFC_BUTTON, DFCS_BUTTONPUSH);
        for (int i = 0; i < 4; ++i)
            Fill(dc, CRect(size.cx - 14 + i, 10 + i, size.cx - 7 - i, 11 + i), ::GetSysColor(COLOR_BTNTEXT));
        Swatch(dc, CRect(6, 6, 24, 18), 0);
        ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
        Write(dc, CRect(28, 6, size.cx - 18, 18), m_black);
    }
    void DrawSample(HDC dc, CSize size)
    {
        Fill(dc, CRect(CPoint(0, 0), size), ::GetSysColor(COLOR_3DFACE));
        CRect screen(19, 0, size.cx - 50, size.cy);
        ::DrawEdge(dc, &screen, EDGE_SUNKEN, BF_RECT);
        for (int i = 0; i < 4; ++i) {
            CRect row(21, 2 + 13 * i, size.cx - 52, i == 3 ? size.cy - 2 : 15 + 13 * i);
            Fill(dc, row, RGB(0, 0, 128));
            ::SetTextColor(dc, RGB(255, 255, 0));
            Write(dc, row, m_line, DT_EXPANDTABS);
            CRect button(3, row.top, 16, row.top + 13);
            ::DrawFrameControl(dc, &button, DFC_BUTTON, DFCS_BUTTONRADIO);
            ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
            Write(dc, CRect(size.cx - 50, row.top, size.cx - 3, row.top + 13), m_ratio,
                  DT_SINGLELINE | DT_RIGHT | DT_VCENTER);
        }
    }

private:
    static LRESULT CALLBACK Obey(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* bare = reinterpret_cast<Bare*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
        if (message != WM_PRINTCLIENT || bare == nullptr)
            return ::DefWindowProcA(window, message, wParam, lParam);
        const auto dc = reinterpret_cast<HDC>(wParam);
        const HGDIOBJ before = ::SelectObject(dc, CZoGlobalGDIData::GetThinFont());
        const int mode = ::SetBkMode(dc, TRANSPARENT);
        (bare->*bare->m_draw)(dc, bare->m_size);
        ::SetBkMode(dc, mode);
        ::SelectObject(dc, before);
        return 0;
    }

    void (Bare::*const m_draw)(HDC, CSize);
    const CSize m_size;
    HWND m_window = nullptr;
    std::vector<COLORREF> m_colors;
    const CString m_automatic = "Automatic", m_more = "More...", m_name = "Black (0, 0, 0)", m_black = "Black",
                  m_line = "CONNECT 33600", m_ratio = "14.9 : 1";
};

} // namespace

void MeasureColorControls(Harness& harness)
{
    const RegisteredProduct product;
    const LoadedLanguage language;
    CWnd parent;
    Require(parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300, nullptr, nullptr),
            "the window could not be made");
    constexpr DWORD kStyle = WS_VISIBLE | CZoColorChooser::kAutomatic | CZoColorChooser::kMore;
    CZoColorChooser chooser;
    CZoColorButton button;
    CZoScreenSample sample;
    const CSize grid(160, 133), face(130, 24), screen(230, 130);
    Require(chooser.Create(kStyle, CRect(CPoint(0, 0), grid), &parent, 1) &&
                button.Create(kStyle, CRect(CPoint(0, 140), face), &parent, 2) &&
                sample.Create(WS_VISIBLE, CRect(CPoint(0, 170), screen), &parent, 3),
            "a control could not be made");
    for (const char* name : {"1", "2", "3", "4"})
        Require(sample.AddArea(name, "CONNECT 33600", RGB(255, 255, 0), RGB(0, 0, 128)) >= 0, "an area is missing");
    std::vector<COLORREF> colors;
    for (int i = 0; i < 32; ++i)
        colors.push_back(RGB(i * 8, 255 - i * 8, i * 4));
    Require(ZoGetColorName(0) == "Black", "the language library is not loaded");
    const Target target;
    const auto print = [&target](HWND window) {
        ::SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(static_cast<HDC>(target)), PRF_CLIENT);
    };
    const auto compare = [&](const char* name, CWnd& control, const Bare& bare) {
        harness.Compare(
            name, {{"the control", [&] { print(control); }}, {"its calls alone", [&] { print(bare.GetWindow()); }}},
            kDrawLimits);
    };
    Bare bareGrid(parent, &Bare::DrawGrid, grid), bareButton(parent, &Bare::DrawButton, face),
        bareSample(parent, &Bare::DrawSample, screen);
    bareGrid.SetColors(colors);
    compare("colors: grid drawn", chooser, bareGrid);
    compare("colors: button drawn", button, bareButton);
    compare("colors: sample drawn", sample, bareSample);
    parent.DestroyWindow();
}
