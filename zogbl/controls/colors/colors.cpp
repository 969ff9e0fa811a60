#include "colors.h"

#include <common/without_throwing.h>
#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "resources/user_settings.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include <afxdlgs.h>

const ZoNamedColor kStandardColors[kStandardColorCount] = {
    {RGB(0, 0, 0), ZO_IDS_COLOR_BLACK},
    {RGB(128, 0, 0), ZO_IDS_COLOR_DARK_RED},
    {RGB(128, 64, 0), ZO_IDS_COLOR_BROWN},
    {RGB(128, 128, 0), ZO_IDS_COLOR_DARK_YELLOW},
    {RGB(0, 128, 0), ZO_IDS_COLOR_DARK_GREEN},
    {RGB(0, 128, 128), ZO_IDS_COLOR_DARK_CYAN},
    {RGB(0, 0, 128), ZO_IDS_COLOR_DARK_BLUE},
    {RGB(128, 0, 128), ZO_IDS_COLOR_DARK_MAGENTA},
    {RGB(128, 128, 128), ZO_IDS_COLOR_GRAY},
    {RGB(255, 0, 0), ZO_IDS_COLOR_RED},
    {RGB(255, 128, 0), ZO_IDS_COLOR_ORANGE},
    {RGB(255, 255, 0), ZO_IDS_COLOR_YELLOW},
    {RGB(0, 255, 0), ZO_IDS_COLOR_GREEN},
    {RGB(0, 255, 255), ZO_IDS_COLOR_CYAN},
    {RGB(0, 0, 255), ZO_IDS_COLOR_BLUE},
    {RGB(255, 0, 255), ZO_IDS_COLOR_MAGENTA},
    {RGB(192, 192, 192), ZO_IDS_COLOR_LIGHT_GRAY},
    {RGB(255, 128, 128), ZO_IDS_COLOR_LIGHT_RED},
    {RGB(255, 192, 128), ZO_IDS_COLOR_LIGHT_ORANGE},
    {RGB(255, 255, 128), ZO_IDS_COLOR_LIGHT_YELLOW},
    {RGB(128, 255, 128), ZO_IDS_COLOR_LIGHT_GREEN},
    {RGB(128, 255, 255), ZO_IDS_COLOR_LIGHT_CYAN},
    {RGB(128, 128, 255), ZO_IDS_COLOR_LIGHT_BLUE},
    {RGB(255, 128, 255), ZO_IDS_COLOR_LIGHT_MAGENTA},
    {RGB(255, 255, 255), ZO_IDS_COLOR_WHITE},
    {RGB(255, 213, 213), ZO_IDS_COLOR_PALE_RED},
    {RGB(255, 234, 213), ZO_IDS_COLOR_PALE_ORANGE},
    {RGB(255, 255, 213), ZO_IDS_COLOR_PALE_YELLOW},
    {RGB(213, 255, 213), ZO_IDS_COLOR_PALE_GREEN},
    {RGB(213, 255, 255), ZO_IDS_COLOR_PALE_CYAN},
    {RGB(213, 213, 255), ZO_IDS_COLOR_PALE_BLUE},
    {RGB(255, 213, 255), ZO_IDS_COLOR_PALE_MAGENTA},
};

// Names ---------------------------------------------------------------------------------------------------------------

BOOL LoadColorText(UINT id, CString& text) { return ZoGblLoadString(id, text) && !text.IsEmpty(); }

CString LoadColorText(UINT id)
{
    CString text;
    LoadColorText(id, text);
    return text;
}

CString NumbersOf(COLORREF color)
{
    CString text;
    text.Format("%d, %d, %d", GetRValue(color), GetGValue(color), GetBValue(color));
    return text;
}

CString TextOf(COLORREF color, const CString& name)
{
    const CString numbers = NumbersOf(color);
    return !IsPlainColor(color) || name == numbers ? name : name + " (" + numbers + ")";
}

BOOL NameColor(const ZoNamedColor* colors, int count, COLORREF color, CString& name)
{
    if (color == CLR_DEFAULT)
        return LoadColorText(ZO_IDS_COLOR_AUTOMATIC, name);
    const ZoNamedColor* end = colors + count;
    const ZoNamedColor* found = std::find_if(colors, end, [=](const ZoNamedColor& one) { return one.color == color; });
    if (found == end && colors != kStandardColors)
        return NameColor(kStandardColors, kStandardColorCount, color, name);
    const BOOL isNamed = found != end && found->nameId != 0;
    if (isNamed && LoadColorText(found->nameId, name))
        return TRUE;
    name = NumbersOf(color);
    return !isNamed;
}

CString ZoGetColorName(COLORREF color)
{
    CString name;
    NameColor(kStandardColors, kStandardColorCount, color, name);
    return name;
}

CString ZoGetColorText(COLORREF color) { return TextOf(color, ZoGetColorName(color)); }

// Custom colours ------------------------------------------------------------------------------------------------------

namespace {

constexpr LPCSTR kSection = "Colors";
constexpr LPCSTR kValue = "CustomColors"; // "rrggbb rrggbb ...", hexadecimal
constexpr int kDigits = 6;
constexpr int kTextSize = kCustomColorCount * (kDigits + 1); // a space or the terminator behind each

/// \return FALSE: damaged; \p colors are as before
BOOL ReadColors(LPCSTR text, COLORREF* colors)
{
    COLORREF read[kCustomColorCount];
    for (COLORREF& color : read) {
        const char behind = &color == std::end(read) - 1 ? '\0' : ' ';
        if (std::strspn(text, "0123456789abcdefABCDEF") != kDigits || text[kDigits] != behind)
            return FALSE;
        const auto number = static_cast<DWORD>(std::strtoul(text, nullptr, 16));
        color = RGB(number >> 16, number >> 8, number);
        text += kDigits + 1;
    }
    std::copy(std::begin(read), std::end(read), colors);
    return TRUE;
}

void KeepCustomColors(const COLORREF* colors)
{
    char text[kTextSize + 1]; // the last space becomes the terminator
    for (int i = 0; i < kCustomColorCount; ++i)
        wsprintfA(text + i * (kDigits + 1), "%02x%02x%02x ", GetRValue(colors[i]), GetGValue(colors[i]),
                  GetBValue(colors[i]));
    text[kTextSize - 1] = '\0';
    KeepSetting(kSection, kValue, text); // if it fails, they last as long as the program
}

} // namespace

COLORREF* ReadCustomColors()
{
    COLORREF* colors = CColorDialog::GetSavedCustomColors();
    WithoutThrowing([=] {
        CString text;
        return ReadSetting(kSection, kValue, text) && ReadColors(text, colors);
    });
    return colors;
}

BOOL AskForColor(CWnd* owner, COLORREF& color)
{
    return WithoutThrowing([&]() -> BOOL {
        COLORREF* custom = ReadCustomColors(); // the dialog changes them, cancelled or not
        COLORREF before[kCustomColorCount];
        std::copy_n(custom, kCustomColorCount, before);
        CColorDialog dialog(color, CC_ANYCOLOR, owner);
        const bool isChosen = dialog.DoModal() == IDOK;
        if (!std::equal(std::begin(before), std::end(before), custom))
            KeepCustomColors(custom);
        if (isChosen)
            color = dialog.GetColor() & 0xFFFFFF;
        return isChosen;
    });
}

// Drawing -------------------------------------------------------------------------------------------------------------

int SwatchBorder() { return CZoGlobalGDIData::IsHighContrast() ? COLOR_BTNTEXT : COLOR_3DSHADOW; }

void DrawSwatch(CDC* dc, const CRect& area, COLORREF color, int border, BOOL isDisabled)
{
    if (area.Width() <= 0 || area.Height() <= 0)
        return;
    CRect inside = area;
    inside.DeflateRect(1, 1);
    dc->FillSolidRect(area, ::GetSysColor(border));
    if (inside.Width() <= 0 || inside.Height() <= 0)
        return;
    if (isDisabled)
        ZoDrawHatch(*dc, inside, color, ::GetSysColor(COLOR_3DFACE));
    else
        dc->FillSolidRect(inside, color);
}
