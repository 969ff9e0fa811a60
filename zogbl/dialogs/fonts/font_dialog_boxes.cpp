// The font dialog: what its boxes show.
#include "font_controls.h"

#include "dialogs/base/dialog_resource.h"
#include "font_scripts.h"
#include "ground/box_filling.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kPointsAnInch = 72;
constexpr int kTenths = 10;
constexpr int kSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};

FontFilter FilterOf(DWORD flags, BYTE script)
{
    return {script, (flags & CZoFontDialog::kFixedPitch) != 0, (flags & CZoFontDialog::kScalable) != 0,
            (flags & CZoFontDialog::kVertical) != 0};
}

/// What a style is called: the usual ones as in every font, the others as the font says. Throws CMemoryException*.
CString NameOf(const FontStyle& style)
{
    if (!style.name.IsEmpty() && style.weight != FW_NORMAL && style.weight != FW_BOLD)
        return style.name;
    const bool isBold = style.weight >= FW_SEMIBOLD;
    return LoadText(style.isItalic ? (isBold ? ZO_IDS_FONT_BOLD_ITALIC : ZO_IDS_FONT_ITALIC)
                                   : (isBold ? ZO_IDS_FONT_BOLD : ZO_IDS_FONT_REGULAR));
}

} // namespace

// The boxes -----------------------------------------------------------------------------------------------------------

void CZoFontDialog::FillScripts()
{
    const HWND box = ::GetDlgItem(m_hWnd, ZO_IDC_FONT_SCRIPT);
    const BYTE chosen = ChosenScript();
    std::vector<BYTE> scripts = ReadFontScripts(FontsOf(), FilterOf(m_flags, DEFAULT_CHARSET));
    scripts.push_back(DEFAULT_CHARSET);
    if (std::find(scripts.begin(), scripts.end(), chosen) == scripts.end())
        scripts.push_back(chosen); // what came in goes out
    m_scripts.clear();
    ::SendMessageA(box, CB_RESETCONTENT, 0, 0);
    const auto add = [&](BYTE script, const CString& name) {
        m_scripts.push_back(script);
        ::SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.GetString()));
        if (script == chosen)
            ::SendMessageA(box, CB_SETCURSEL, m_scripts.size() - 1, 0);
    };
    for (const auto& row : kFontScripts) {
        const auto found = std::find(scripts.begin(), scripts.end(), row.script);
        if (found == scripts.end())
            continue;
        scripts.erase(found);
        add(row.script, LoadText(row.name));
    }
    for (const BYTE script : scripts) { // without a name here
        CString number;
        number.Format("%d", script);
        add(script, number);
    }
}

BYTE CZoFontDialog::ChosenScript() const
{
    const auto chosen = static_cast<size_t>(::SendDlgItemMessageA(m_hWnd, ZO_IDC_FONT_SCRIPT, CB_GETCURSEL, 0, 0));
    return chosen < m_scripts.size() ? m_scripts[chosen] : m_font.lfCharSet;
}

void CZoFontDialog::FillFaces(LPCSTR chosen)
{
    std::vector<FontFamily> families = ReadFontFamilies(FontsOf(), FilterOf(m_flags, ChosenScript()));
    const DrawingPause pause(m_faces->m_hWnd);
    m_faces->ResetContent();
    m_families = std::move(families);
    for (size_t i = 0; i < m_families.size(); ++i) {
        const int row = m_faces->AddString(m_families[i].name);
        if (row < 0)
            break;
        m_faces->SetItemData(row, i);
    }
    ChooseFace(chosen);
}

/// Leaves the list without a selection if the face is not in it.
void CZoFontDialog::ChooseFace(LPCSTR face)
{
    for (int row = 0; row < m_faces->GetCount(); ++row) {
        if (m_families[m_faces->GetItemData(row)].name.CompareNoCase(face) == 0)
            m_faces->SetCurSel(row);
    }
}

const FontFamily* CZoFontDialog::ChosenFamily() const
{
    const int row = m_faces->GetCurSel();
    return row >= 0 ? &m_families[m_faces->GetItemData(row)] : nullptr;
}

/// With the nearest style chosen.
void CZoFontDialog::FillStyles(LONG weight, BOOL isItalic)
{
    const HWND box = ::GetDlgItem(m_hWnd, ZO_IDC_FONT_STYLE);
    const FontFamily* family = ChosenFamily();
    std::vector<FontStyle> styles =
        ReadFontStyles(FontsOf(), family != nullptr ? family->name.GetString() : m_font.lfFaceName, ChosenScript());
    const DrawingPause pause(box);
    ::SendMessageA(box, LB_RESETCONTENT, 0, 0);
    m_styles = std::move(styles);
    const LONG wanted = weight != FW_DONTCARE ? weight : LONG{FW_NORMAL};
    const auto distance = [=](const FontStyle& style) {
        return std::abs(style.weight - wanted) + (style.isItalic == isItalic ? 0 : LONG{FW_HEAVY});
    };
    size_t nearest = 0;
    for (size_t i = 0; i < m_styles.size(); ++i) {
        ::SendMessageA(box, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(NameOf(m_styles[i]).GetString()));
        if (distance(m_styles[i]) < distance(m_styles[nearest]))
            nearest = i;
    }
    ::SendMessageA(box, LB_SETCURSEL, nearest, 0);
}

const FontStyle* CZoFontDialog::ChosenStyle() const
{
    const auto chosen = static_cast<size_t>(::SendDlgItemMessageA(m_hWnd, ZO_IDC_FONT_STYLE, LB_GETCURSEL, 0, 0));
    return chosen < m_styles.size() ? &m_styles[chosen] : nullptr;
}

void CZoFontDialog::FillSizes()
{
    const HWND box = ::GetDlgItem(m_hWnd, ZO_IDC_FONT_SIZE);
    const FontFamily* family = ChosenFamily();
    m_heights = family != nullptr ? ReadFontHeights(FontsOf(), family->name, ChosenScript()) : std::vector<int>();
    const int dots = ::GetDeviceCaps(m_screen, LOGPIXELSY), dotsOfFonts = ::GetDeviceCaps(FontsOf(), LOGPIXELSY);
    for (int& pixels : m_heights)
        pixels = ::MulDiv(pixels, dots, dotsOfFonts);
    const int least = ::MulDiv(m_least, dots, kPointsAnInch), most = ::MulDiv(m_most, dots, kPointsAnInch);
    std::erase_if(m_heights, [=](int pixels) { return pixels < least || pixels > most; });
    ::SendMessageA(box, CB_RESETCONTENT, 0, 0);
    const auto add = [&](const CString& text) {
        ::SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.GetString()));
    };
    for (const int pixels : m_heights)
        add(SizeText(pixels));
    for (const int points : kSizes) {
        CString text;
        text.Format("%d", points);
        if (m_heights.empty() && points >= m_least && points <= m_most)
            add(text);
    }
}

/// \param height as in LOGFONT: of characters if negative, of lines if positive, 0 for any
void CZoFontDialog::ShowHeight(int height)
{
    if (height >= 0)
        height = -CharacterHeight(m_font);
    SetDlgItemText(ZO_IDC_FONT_SIZE, SizeText(-height));
}

// Sizes ---------------------------------------------------------------------------------------------------------------

/// In points: whole ones if that is the same height, else with a tenth.
CString CZoFontDialog::SizeText(int height) const
{
    const int dots = ::GetDeviceCaps(m_screen, LOGPIXELSY);
    const int points = ::MulDiv(height, kPointsAnInch, dots);
    CString text;
    text.Format("%d", points);
    const int tenths = ::MulDiv(height, kPointsAnInch * kTenths, dots);
    if (::MulDiv(points, dots, kPointsAnInch) != height && tenths % kTenths != 0)
        text.Format("%d.%d", tenths / kTenths, tenths % kTenths);
    return text;
}

/// \param height gets the height of characters in pixels \return FALSE: no size, or one outside of the limits
BOOL CZoFontDialog::ReadSize(const CString& text, int& height) const
{
    const auto isSize = [&](int pixels) { return SizeText(pixels) == text; };
    const auto exact = std::find_if(m_heights.begin(), m_heights.end(), isSize);
    if (exact != m_heights.end()) {
        height = *exact;
        return TRUE;
    }
    char* end = nullptr;
    CString digits = text;
    digits.TrimLeft();
    digits.TrimRight();
    digits.Replace(',', '.');
    if (digits.SpanIncluding("0123456789.") != digits || digits.IsEmpty())
        return FALSE;
    const double points = std::strtod(digits, &end);
    if (*end != '\0' || points < m_least || points > m_most)
        return FALSE;
    height = ::MulDiv(static_cast<int>(points * kTenths + 0.5), ::GetDeviceCaps(m_screen, LOGPIXELSY),
                      kPointsAnInch * kTenths);
    return TRUE;
}

int CZoFontDialog::GetPointSize() const
{
    const HDC screen = ::GetDC(nullptr);
    const int height = m_font.lfHeight > 0 ? CharacterHeight(m_font) : -m_font.lfHeight;
    const int points = ::MulDiv(height, kPointsAnInch * kTenths, ::GetDeviceCaps(screen, LOGPIXELSY));
    ::ReleaseDC(nullptr, screen);
    return points;
}
