#include "picture.h"

#include <algorithm>
// The header of the graphics library uses these two without a namespace.
using std::max;
using std::min;
#include <gdiplus.h>
#include <objidl.h>

namespace {

/// The PNG encoder that comes with the graphics library.
constexpr CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

HBITMAP CaptureWindow(HWND window)
{
    RECT area;
    ::GetWindowRect(window, &area);
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = ::GetDC(nullptr);
    const HDC memory = ::CreateCompatibleDC(screen);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ old = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    ::SelectObject(memory, old);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    return bitmap;
}

} // namespace

bool SavePicture(HWND window, LPCSTR path)
{
    wchar_t widePath[MAX_PATH];
    if (::MultiByteToWideChar(CP_ACP, 0, path, -1, widePath, MAX_PATH) == 0)
        return false;
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok)
        return false;
    const HBITMAP bitmap = CaptureWindow(window);
    bool saved = false;
    if (bitmap != nullptr) {
        Gdiplus::Bitmap image(bitmap, nullptr);
        saved = image.Save(widePath, &kPngEncoder, nullptr) == Gdiplus::Ok;
        ::DeleteObject(bitmap);
    }
    Gdiplus::GdiplusShutdown(token);
    return saved;
}
