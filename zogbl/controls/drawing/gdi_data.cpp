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
