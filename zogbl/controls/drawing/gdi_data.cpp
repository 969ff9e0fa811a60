#include <zogbl/gdi_data.h>

#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "dialog_font.h"

#include <cstring>
#include <utility>

namespace {

constexpr LPCSTR kSingleByteFace = "MS Sans Serif";
constexpr int kSingleBytePoints = 8;
constexpr LPCSTR kDoubleByteFace = "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E"; // "MS Gothic", code page 932
constexpr int kDoubleBytePoints = 10;

bool g_fontsInitialized = false; // for the life of the process
HFONT g_boldFont = nullptr;
HFONT g_thinFont = nullptr;

DialogFont SharedFont()
{
    if (!GetSystemMetrics(SM_DBCSENABLED))
        return DialogFont(kSingleByteFace, kSingleBytePoints);
    DWORD size = 0;
    const void* dialog = ZoGblLockResource(MAKEINTRESOURCEA(ZO_IDD_SHARED_FONT), RT_DIALOG, &size);
    DialogFont font(kDoubleByteFace, kDoubleBytePoints);
    if (dialog != nullptr)
        font.ReadFromTemplate(dialog, size);
    return font;
}

void ReplaceFont(HFONT& font, const DialogFont& wanted, LONG weight)
{
    const HDC screen = GetDC(nullptr);
    LOGFONTA description = {};
    description.lfHeight = -MulDiv(wanted.points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    description.lfWeight = weight;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    lstrcpynA(description.lfFaceName, wanted.face, sizeof description.lfFaceName);

    HFONT created = CreateFontIndirectA(&description);
    if (created == nullptr && GetObjectA(GetStockObject(SYSTEM_FONT), sizeof description, &description) != 0) {
        description.lfWeight = weight;
        created = CreateFontIndirectA(&description);
    }
    if (HFONT previous = std::exchange(font, created))
        DeleteObject(previous);
}

} // namespace

void CZoGlobalGDIData::InitializeFontsFromResources()
{
    if (std::exchange(g_fontsInitialized, true))
        return;
    const DialogFont font = SharedFont();
    ReplaceFont(g_boldFont, font, FW_BOLD);
    ReplaceFont(g_thinFont, font, FW_NORMAL);
}

HFONT CZoGlobalGDIData::GetBoldFont() { return g_boldFont; }
HFONT CZoGlobalGDIData::GetThinFont() { return g_thinFont; }

// Brushes, pens, colours ----------------------------------------------------------------------------------------------

namespace {

/// Threads may draw at once, and share these.
class SharedObjects {
public:
    SharedObjects() { InitializeCriticalSection(&m_section); }
    SharedObjects(const SharedObjects&) = delete;
    SharedObjects& operator=(const SharedObjects&) = delete;

    HPEN GetPen(int systemColor)
    {
        if (systemColor < 0 || systemColor >= kColors)
            return nullptr;
        const COLORREF color = GetSysColor(systemColor);
        EnterCriticalSection(&m_section);
        Pen& pen = m_pens[systemColor];
        if (pen.handle == nullptr || pen.color != color) {
            if (const HPEN created = CreatePen(PS_SOLID, 1, color)) {
                if (pen.handle != nullptr)
                    DeleteObject(pen.handle);
                pen = {created, color};
            }
        }
        LeaveCriticalSection(&m_section);
        return pen.color == color ? pen.handle : nullptr;
    }

    HBRUSH GetHatchBrush()
    {
        EnterCriticalSection(&m_section);
        if (m_hatch == nullptr) {
            constexpr WORD kRows[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA}; // a bit of 0: the text colour
            if (const HBITMAP pattern = CreateBitmap(8, 8, 1, 1, kRows)) {
                m_hatch = CreatePatternBrush(pattern);
                DeleteObject(pattern);
            }
        }
        LeaveCriticalSection(&m_section);
        return m_hatch;
    }

private:
    static constexpr int kColors = COLOR_MENUBAR + 1;
    struct Pen {
        HPEN handle;
        COLORREF color;
    };

    CRITICAL_SECTION m_section; // for the life of the process, as what it guards
    Pen m_pens[kColors] = {};
    HBRUSH m_hatch = nullptr;
};

SharedObjects& Shared()
{
    static SharedObjects s_objects;
    return s_objects;
}

} // namespace

HBRUSH CZoGlobalGDIData::GetBrush(int systemColor) { return GetSysColorBrush(systemColor); }
HPEN CZoGlobalGDIData::GetPen(int systemColor) { return Shared().GetPen(systemColor); }
HBRUSH CZoGlobalGDIData::GetHatchBrush() { return Shared().GetHatchBrush(); }

COLORREF CZoGlobalGDIData::GetDisabledColor(COLORREF text, COLORREF background)
{
    constexpr COLORREF kBlack = RGB(0, 0, 0); // what displays without a grey of their own say
    const COLORREF gray = GetSysColor(COLOR_GRAYTEXT);
    return gray != kBlack && gray != background ? gray : text;
}

BOOL CZoGlobalGDIData::IsHighContrast()
{
    HIGHCONTRASTA contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

int CZoGlobalGDIData::Scale(int pixels)
{
    constexpr int kPlainDots = 96; // an inch
    static LONG s_dots = 0;        // the screen's, which stay as long as the user is there; 0: not known
    LONG dots = InterlockedCompareExchange(&s_dots, 0, 0);
    if (dots == 0) { // asking takes longer than an arrow's drawing
        const HDC screen = GetDC(nullptr);
        dots = GetDeviceCaps(screen, LOGPIXELSY);
        ReleaseDC(nullptr, screen);
        InterlockedExchange(&s_dots, dots);
    }
    return dots > 0 ? MulDiv(pixels, dots, kPlainDots) : pixels;
}
