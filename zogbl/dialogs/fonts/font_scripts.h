/// \file
/// The scripts that the font dialog knows by name.
#pragma once

#include <zogbl/resource_ids.h>

#include <windows.h>

/// In the order of the box, with words of them.
inline constexpr struct {
    BYTE script;
    UINT name;
    LPCWSTR sample;
} kFontScripts[] = {
    {DEFAULT_CHARSET, ZO_IDS_SCRIPT_ANY, L"AaBbYyZz"},
    {ANSI_CHARSET, ZO_IDS_SCRIPT_WESTERN, L"AaBbYyZz"},
    {EASTEUROPE_CHARSET, ZO_IDS_SCRIPT_CENTRAL, L"AaBb\x00C1\x00E1\x00D4\x00F4"},
    {RUSSIAN_CHARSET, ZO_IDS_SCRIPT_CYRILLIC, L"AaBb\x0411\x0431\x0424\x0444"},
    {GREEK_CHARSET, ZO_IDS_SCRIPT_GREEK, L"AaBb\x0391\x03B1\x0392\x03B2"},
    {TURKISH_CHARSET, ZO_IDS_SCRIPT_TURKISH, L"AaBb\x011E\x011F\x015E\x015F"},
    {BALTIC_CHARSET, ZO_IDS_SCRIPT_BALTIC, L"AaBbYyZz"},
    {HEBREW_CHARSET, ZO_IDS_SCRIPT_HEBREW, L"AaBb\x05E0\x05E1\x05E9\x05EA"},
    {ARABIC_CHARSET, ZO_IDS_SCRIPT_ARABIC, L"AaBb\x0627\x0628\x062C\x062F"},
    {VIETNAMESE_CHARSET, ZO_IDS_SCRIPT_VIETNAMESE, L"AaBb\x01A0\x01A1\x01AF\x01B0"},
    {THAI_CHARSET, ZO_IDS_SCRIPT_THAI, L"AaBb\x0E2D\x0E31\x0E01\x0E29"},
    {SHIFTJIS_CHARSET, ZO_IDS_SCRIPT_JAPANESE, L"Aa\x3042\x3041\x30A2\x30A1\x4E9C\x5B87"},
    {GB2312_CHARSET, ZO_IDS_SCRIPT_SIMPLIFIED, L"AaBb\x5B57\x4F53\x6837\x672C"},
    {CHINESEBIG5_CHARSET, ZO_IDS_SCRIPT_TRADITIONAL, L"AaBb\x5B57\x9AD4\x6A23\x672C"},
    {HANGEUL_CHARSET, ZO_IDS_SCRIPT_KOREAN, L"AaBb\xAC00\xB098\xB2E4\xD558"},
    {JOHAB_CHARSET, ZO_IDS_SCRIPT_JOHAB, L"AaBb\xAC00\xB098\xB2E4\xD558"},
    {SYMBOL_CHARSET, ZO_IDS_SCRIPT_SYMBOL, L"AaBbYyZz"},
    {MAC_CHARSET, ZO_IDS_SCRIPT_MAC, L"AaBbYyZz"},
    {OEM_CHARSET, ZO_IDS_SCRIPT_OEM, L"AaBbYyZz"},
};

/// Words of a script; of one that is not known, of Western.
inline LPCWSTR SampleOf(BYTE script)
{
    for (const auto& row : kFontScripts) {
        if (row.script == script)
            return row.sample;
    }
    return kFontScripts[0].sample;
}
