// Drawing of controls that show pictures: the bitmap window, the lights of a modem.
#include "families.h"
#include "harness.h"

#include <zogbl/bitmap_window.h>
#include <zogbl/gdi_data.h>
#include <zogbl/modem_lights.h>
#include <zogbl/trans_bmp.h>

#include <functional>
#include <string>
#include <utility>

namespace {

constexpr Limits kLimits = {0, 1.5};
constexpr int kWidth = 320, kHeight = 240; // of the picture

HBITMAP MakePicture()
{
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, kWidth, kHeight);
    const HDC dc = CreateCompatibleDC(screen);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    for (int i = 0; i < kWidth * kHeight; ++i)
        SetPixelV(dc, i % kWidth, i / kWidth, RGB(i % 256, i / 256, i % 99));
    SelectObject(dc, before);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

void Repaint(HWND window)
{
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

/// A window that is painted by hand on a memory bitmap, as a control that does not flicker.
class PaintedWindow : public CWnd {
public:
    PaintedWindow(CWnd& parent, const CRect& area, std::function<void(HDC)> draw) : m_draw(std::move(draw))
    {
        Require(Create(AfxRegisterWndClass(0), "", WS_CHILD | WS_VISIBLE, area, &parent, 9), "there is no window");
    }
    ~PaintedWindow() override { DestroyWindow(); }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_PAINT)
            return CWnd::WindowProc(message, wParam, lParam);
        PAINTSTRUCT paint;
        const HDC target = ::BeginPaint(m_hWnd, &paint);
        const CRect area = paint.rcPaint;
        const HDC dc = CreateCompatibleDC(target);
        const HBITMAP bitmap = CreateCompatibleBitmap(target, area.Width(), area.Height());
        const HGDIOBJ before = SelectObject(dc, bitmap);
        m_draw(dc);
        BitBlt(target, 0, 0, area.Width(), area.Height(), dc, 0, 0, SRCCOPY);
        SelectObject(dc, before);
        DeleteObject(bitmap);
        DeleteDC(dc);
        ::EndPaint(m_hWnd, &paint);
        return 0;
    }

private:
    std::function<void(HDC)> m_draw;
};

void MeasureBitmapWindow(Harness& harness, CWnd& parent)
{
    const CRect area(0, 0, kWidth, kHeight);
    const HBITMAP bitmap = MakePicture();
    CZoBitmapWnd window;
    CWnd plain;
    Require(window.Create(WS_VISIBLE, area, &parent, 1) && window.SetBitmap(bitmap) == 0 &&
                plain.Create("STATIC", "", WS_CHILD | WS_VISIBLE | SS_BITMAP, area, &parent, 2),
            "the windows could not be made");
    plain.SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
    CSize shown(kWidth, kHeight);
    PaintedWindow byHand(parent, area, [&](HDC dc) {
        const HDC source = CreateCompatibleDC(dc);
        const HGDIOBJ before = SelectObject(source, bitmap);
        SetStretchBltMode(dc, HALFTONE);
        SetBrushOrgEx(dc, 0, 0, nullptr);
        StretchBlt(dc, 0, 0, shown.cx, shown.cy, source, 0, 0, kWidth, kHeight, SRCCOPY);
        SelectObject(source, before);
        DeleteDC(source);
    });
    harness.Compare("pictures: a bitmap window drawn",
                    {{"CZoBitmapWnd", [&] { Repaint(window); }},
                     {"the same on a memory bitmap by hand", [&] { Repaint(byHand); }},
                     {"the system's, which flickers", [&] { Repaint(plain); }}},
                    kLimits);
    window.SetPlacing(CZoBitmapWnd::Placing::kStretched);
    shown = CSize(kWidth / 2, kHeight / 2);
    for (CWnd* each : {static_cast<CWnd*>(&window), static_cast<CWnd*>(&byHand)})
        each->MoveWindow(0, 0, shown.cx, shown.cy);
    harness.Compare(
        "pictures: a bitmap window drawn, half as large",
        {{"CZoBitmapWnd", [&] { Repaint(window); }}, {"the same on a memory bitmap by hand", [&] { Repaint(byHand); }}},
        kLimits);
    byHand.DestroyWindow();
    DeleteObject(bitmap);
}

void MeasureModemLights(Harness& harness, CWnd& parent)
{
    CZoModemLights lights;
    Require(lights.Create(WS_VISIBLE, CRect(0, 0, 240, 40), &parent, 3), "the lights could not be made");
    CZoTransBmp pictures(2, 1);
    pictures.Attach(CopyImage(MakePicture(), IMAGE_BITMAP, 22, 11, LR_COPYDELETEORG));
    Repaint(lights);
    const HFONT font = CZoGlobalGDIData::GetThinFont();
    PaintedWindow byHand(parent, CRect(0, 0, 240, 40), [&](HDC dc) {
        const RECT all = {0, 0, 240, 40};
        const HGDIOBJ before = SelectObject(dc, font != nullptr ? font : GetStockObject(SYSTEM_FONT));
        FillRect(dc, &all, GetSysColorBrush(COLOR_3DFACE));
        SetBkMode(dc, TRANSPARENT);
        for (int i = 0; i < 8; ++i) {
            RECT place = {i * 28, 20, i * 28 + 28, 33};
            DrawTextA(dc, "CTS", 3, &place, DT_CENTER | DT_SINGLELINE | DT_NOPREFIX);
            pictures.DrawCellTrans(dc, i * 28 + 8, 4, i % 2, 0);
        }
        SelectObject(dc, before);
    });
    harness.Compare("pictures: modem lights drawn",
                    {{"CZoModemLights", [&] { Repaint(lights); }},
                     {"the same on a memory bitmap by hand", [&] { Repaint(byHand); }}},
                    kLimits);
}

} // namespace

void MeasurePictures(Harness& harness)
{
    CWnd parent;
    Require(parent.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300, nullptr, nullptr),
            "there is no window to draw on");
    MeasureBitmapWindow(harness, parent);
    MeasureModemLights(harness, parent);
    parent.DestroyWindow();
}
