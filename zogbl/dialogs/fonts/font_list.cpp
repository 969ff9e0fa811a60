#include "font_list.h"

#include "controls/drawing/item_painting.h"
#include "ground/bounded_text.h"

#include <common/without_throwing.h>

#include <algorithm>

namespace {

constexpr BYTE kPitchBits = 3;
constexpr LONG kLeastBold = FW_SEMIBOLD; // a family with this gets no other one

/// What the system makes of a description.
struct SystemFont {
    explicit SystemFont(const LOGFONT& description) : font(::CreateFontIndirectA(&description)) {}
    ~SystemFont() { ::DeleteObject(font); }
    SystemFont(const SystemFont&) = delete;
    SystemFont& operator=(const SystemFont&) = delete;

    HFONT font;
};

/// Calls \p see with each font that the system knows of a family (empty: of all families). An exception of \p see ends
/// behind the system's function.
template <class SEE> void ForEachFont(HDC dc, LPCSTR family, BYTE script, SEE see)
{
    struct Call {
        SEE& see;
        BOOL isSeen;
        static int CALLBACK Meet(const LOGFONTA* font, const TEXTMETRICA* metrics, DWORD type, LPARAM call)
        {
            auto* self = reinterpret_cast<Call*>(call);
            self->isSeen =
                WithoutThrowing([&] { self->see(*reinterpret_cast<const ENUMLOGFONTEXA*>(font), *metrics, type); });
            return self->isSeen;
        }
    } call = {see, TRUE};
    LOGFONTA wanted = {};
    wanted.lfCharSet = script;
    CopyBounded(wanted.lfFaceName, sizeof wanted.lfFaceName, family);
    ::EnumFontFamiliesExA(dc, &wanted, &Call::Meet, reinterpret_cast<LPARAM>(&call), 0);
    if (!call.isSeen)
        AfxThrowMemoryException();
}

FontKind KindOf(HDC dc, DWORD type)
{
    if ((type & TRUETYPE_FONTTYPE) != 0)
        return FontKind::kTrueType;
    if ((type & DEVICE_FONTTYPE) != 0 && ::GetDeviceCaps(dc, TECHNOLOGY) != DT_RASDISPLAY)
        return FontKind::kDevice; // on a screen, it is a font of another format
    return (type & RASTER_FONTTYPE) != 0 ? FontKind::kBitmap : FontKind::kVector;
}

bool IsWanted(const LOGFONTA& font, DWORD type, const FontFilter& filter)
{
    return (filter.withVertical || font.lfFaceName[0] != '@') &&
           (!filter.fixedPitchOnly || (font.lfPitchAndFamily & kPitchBits) == FIXED_PITCH) &&
           (!filter.scalableOnly || (type & RASTER_FONTTYPE) == 0);
}

} // namespace

std::vector<BYTE> ReadFontScripts(HDC dc, const FontFilter& filter)
{
    bool isThere[0x100] = {};
    ForEachFont(dc, "", DEFAULT_CHARSET, [&](const ENUMLOGFONTEXA& font, const TEXTMETRICA&, DWORD type) {
        isThere[font.elfLogFont.lfCharSet] |= IsWanted(font.elfLogFont, type, filter);
    });
    std::vector<BYTE> scripts;
    for (int script = 0; script < 0x100; ++script) {
        if (isThere[script] && script != DEFAULT_CHARSET)
            scripts.push_back(static_cast<BYTE>(script));
    }
    return scripts;
}

std::vector<FontFamily> ReadFontFamilies(HDC dc, const FontFilter& filter)
{
    std::vector<FontFamily> families;
    ForEachFont(dc, "", filter.script, [&](const ENUMLOGFONTEXA& font, const TEXTMETRICA&, DWORD type) {
        const LOGFONTA& found = font.elfLogFont;
        if (!IsWanted(found, type, filter))
            return;
        const auto isSame = [&](const FontFamily& family) { return family.name == found.lfFaceName; };
        if (std::none_of(families.rbegin(), families.rend(), isSame)) // the last one, mostly
            families.push_back({found.lfFaceName, KindOf(dc, type), found.lfPitchAndFamily});
    });
    return families;
}

std::vector<FontStyle> ReadFontStyles(HDC dc, LPCSTR family, BYTE script)
{
    std::vector<FontStyle> styles;
    const auto find = [&](LONG weight, BOOL isItalic) {
        return std::any_of(styles.begin(), styles.end(), [=](const FontStyle& style) {
            return style.weight == weight && style.isItalic == isItalic;
        });
    };
    ForEachFont(dc, family, script, [&](const ENUMLOGFONTEXA& font, const TEXTMETRICA&, DWORD type) {
        const LOGFONTA& found = font.elfLogFont;
        const BOOL isItalic = found.lfItalic != 0;
        if (!find(found.lfWeight, isItalic)) // only these have a style's name
            styles.push_back({(type & TRUETYPE_FONTTYPE) != 0 ? reinterpret_cast<LPCSTR>(font.elfStyle) : "",
                              found.lfWeight, isItalic});
    });
    if (styles.empty())
        styles.push_back({"", FW_NORMAL, FALSE});
    const auto isBold = [](const FontStyle& style) { return style.weight >= kLeastBold; };
    if (std::none_of(styles.begin(), styles.end(), isBold))
        styles.push_back({"", FW_BOLD, FALSE});
    for (size_t i = styles.size(); i-- > 0;) {
        if (!find(styles[i].weight, TRUE))
            styles.push_back({"", styles[i].weight, TRUE});
    }
    std::sort(styles.begin(), styles.end(), [](const FontStyle& one, const FontStyle& two) {
        return one.weight != two.weight ? one.weight < two.weight : one.isItalic < two.isItalic;
    });
    return styles;
}

std::vector<int> ReadFontHeights(HDC dc, LPCSTR family, BYTE script)
{
    std::vector<int> heights;
    bool isScalable = false;
    ForEachFont(dc, family, script, [&](const ENUMLOGFONTEXA&, const TEXTMETRICA& metrics, DWORD type) {
        isScalable |= (type & RASTER_FONTTYPE) == 0;
        heights.push_back(static_cast<int>(metrics.tmHeight - metrics.tmInternalLeading));
    });
    if (isScalable)
        return {};
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    return heights;
}

CString RealFace(const LOGFONT& description)
{
    const SystemFont real(description);
    const WindowFontDC dc(nullptr, real.font);
    const UINT size = ::GetOutlineTextMetricsA(dc.m_hDC, 0, nullptr);
    std::vector<BYTE> outlines(size);
    auto* metrics = reinterpret_cast<OUTLINETEXTMETRICA*>(outlines.data());
    if (size > 0 && ::GetOutlineTextMetricsA(dc.m_hDC, size, metrics) != 0) // knows what "MS Shell Dlg" stands for
        return reinterpret_cast<LPCSTR>(metrics) + reinterpret_cast<UINT_PTR>(metrics->otmpFamilyName);
    char face[LF_FACESIZE] = "";
    ::GetTextFaceA(dc.m_hDC, sizeof face, face);
    return face;
}

int CharacterHeight(const LOGFONT& font)
{
    const SystemFont real(font);
    const TEXTMETRICA metrics = WindowFontDC(nullptr, real.font).GetMetrics();
    return real.font != nullptr ? static_cast<int>(metrics.tmHeight - metrics.tmInternalLeading) : 0;
}
