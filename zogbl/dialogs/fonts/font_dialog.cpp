#include <zogbl/font_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/gdi_data.h>
#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"
#include "dialogs/base/dialog_resource.h"
#include "font_list.h"
#include "ground/bounded_text.h"
#include "ground/box_filling.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kPointsAnInch = 72;
constexpr int kTenths = 10;
constexpr int kSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};
constexpr int kLongestSize = 6; // characters

/// The scripts in the order of the box, with words of them.
constexpr struct {
    BYTE script;
    UINT name;
    LPCWSTR sample;
} kScripts[] = {
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

constexpr UINT kKindTexts[] = {ZO_IDS_FONT_BITMAP, ZO_IDS_FONT_VECTOR, ZO_IDS_FONT_TRUETYPE, ZO_IDS_FONT_DEVICE};

/// What the system makes of a description.
struct SystemFont {
    explicit SystemFont(const LOGFONT& description) : font(::CreateFontIndirectA(&description)) {}
    ~SystemFont() { ::DeleteObject(font); }
    SystemFont(const SystemFont&) = delete;
    SystemFont& operator=(const SystemFont&) = delete;

    HFONT font;
};

LPCWSTR SampleOf(BYTE script)
{
    for (const auto& row : kScripts) {
        if (row.script == script)
            return row.sample;
    }
    return kScripts[0].sample;
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

/// The face that the system takes. Throws CMemoryException*.
CString RealFace(const LOGFONT& description)
{
    const SystemFont real(description);
    const WindowFontDC dc(nullptr, real.font);
    char face[LF_FACESIZE] = "";
    ::GetTextFaceA(dc.m_hDC, sizeof face, face);
    return face;
}

/// Of the font that the system makes of it, in pixels; 0 if it makes none.
int CharacterHeight(const LOGFONT& font)
{
    const SystemFont real(font);
    const TEXTMETRICA metrics = WindowFontDC(nullptr, real.font).GetMetrics();
    return real.font != nullptr ? static_cast<int>(metrics.tmHeight - metrics.tmInternalLeading) : 0;
}

} // namespace

// The list of faces ---------------------------------------------------------------------------------------------------

/// Shows a sign of each font's kind beside its name: "TT", or a sheet of paper for a font of the printer.
class CZoFontDialog::FaceList : public CListBox {
public:
    explicit FaceList(const std::vector<FontFamily>& families) : m_families(families) {}

    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        if (item->itemID >= static_cast<UINT>(GetCount()))
            return;
        const FontFamily& family = m_families[item->itemData];
        const CRect area = item->rcItem;
        const SelectedColors colors(item->hDC, ColorsOf(*item));
        CDC* dc = CDC::FromHandle(item->hDC);
        dc->SetTextAlign(TA_LEFT | TA_TOP);
        const int gap = CZoGlobalGDIData::Scale(3), width = CZoGlobalGDIData::Scale(16);
        dc->ExtTextOut(area.left + gap + width + gap, area.top, ETO_OPAQUE | ETO_CLIPPED, &area, family.name,
                       static_cast<UINT>(family.name.GetLength()), nullptr);
        if (family.kind == FontKind::kTrueType)
            dc->ExtTextOut(area.left + gap, area.top, ETO_CLIPPED, &area, "TT", 2, nullptr);
        else if (family.kind == FontKind::kDevice)
            DrawSheet(*dc, CRect(CPoint(area.left + gap, area.top), CSize(width, area.Height())));
        if ((item->itemState & ODS_FOCUS) != 0)
            dc->DrawFocusRect(&area);
    }

private:
    /// Paper in a printer.
    static void DrawSheet(CDC& dc, const CRect& area)
    {
        CPen pen(PS_SOLID, 1, dc.GetTextColor());
        const int old = dc.SaveDC();
        dc.SelectObject(&pen);
        dc.SelectStockObject(NULL_BRUSH);
        const int left = area.left + area.Width() / 6, right = area.right - area.Width() / 3;
        const int top = area.top + area.Height() / 6, middle = area.CenterPoint().y;
        dc.Rectangle(left + (right - left) / 4, top, right - (right - left) / 4 + 1, middle + 1);
        dc.Rectangle(left, middle, right + 1, area.bottom - area.Height() / 6);
        dc.RestoreDC(old);
    }

    const std::vector<FontFamily>& m_families;
};

// The sample ----------------------------------------------------------------------------------------------------------

class CZoFontDialog::Sample : public CStatic {
public:
    explicit Sample(const CZoFontDialog& dialog) : m_dialog(dialog) {}

    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        const CRect area = item->rcItem;
        CDC* dc = CDC::FromHandle(item->hDC);
        dc->FillSolidRect(&area, ::GetSysColor(COLOR_3DFACE));
        BOOL isSizeGood = FALSE;
        LOGFONT font = m_dialog.ReadFont(isSizeGood);
        font.lfEscapement = font.lfOrientation = 0;
        CFont shown;
        if (!shown.CreateFontIndirect(&font))
            return;
        const COLORREF color = m_dialog.m_colorButton.GetShownColor();
        const int old = dc->SaveDC();
        dc->IntersectClipRect(&area);
        dc->SelectObject(&shown);
        dc->SetBkMode(TRANSPARENT);
        dc->SetTextColor((m_dialog.m_flags & kEffects) != 0 ? color : ::GetSysColor(COLOR_BTNTEXT));
        CRect line = area;
        ::DrawTextW(item->hDC, SampleOf(font.lfCharSet), -1, &line,
                    DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        dc->RestoreDC(old);
    }

private:
    const CZoFontDialog& m_dialog;
};

// Life ----------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CZoFontDialog, CZoDialog)
    ON_CBN_SELCHANGE(ZO_IDC_FONT_SCRIPT, OnScript)
    ON_LBN_SELCHANGE(ZO_IDC_FONT_FACE, OnFace)
    ON_LBN_SELCHANGE(ZO_IDC_FONT_STYLE, OnStyle)
    ON_CBN_SELCHANGE(ZO_IDC_FONT_SIZE, OnSizeChosen)
    ON_CBN_EDITCHANGE(ZO_IDC_FONT_SIZE, ShowSample)
    ON_BN_CLICKED(ZO_IDC_FONT_STRIKEOUT, ShowSample)
    ON_BN_CLICKED(ZO_IDC_FONT_UNDERLINE, ShowSample)
    ON_NOTIFY(ZON_COLOR_CHANGED, ZO_IDC_FONT_COLOR, OnColor)
    ON_WM_FONTCHANGE()
END_MESSAGE_MAP()

CZoFontDialog::CZoFontDialog(DWORD flags, CWnd* owner) : CZoDialog(ZO_IDD_FONT, owner), m_flags(flags), m_font()
{
    ::GetObjectA(::GetStockObject(DEFAULT_GUI_FONT), sizeof m_font, &m_font);
}

CZoFontDialog::~CZoFontDialog() = default;

BOOL CZoFontDialog::SetSizes(int least, int most)
{
    if (least < LEAST_SIZE || most > MOST_SIZE || least > most)
        return FALSE;
    m_least = least;
    m_most = most;
    return TRUE;
}

INT_PTR CZoFontDialog::DoModal()
{
    m_screen = ::GetDC(nullptr);
    const INT_PTR result = ResultOr(INT_PTR{-1}, [this] {
        m_faces = std::make_unique<FaceList>(m_families);
        m_sample = std::make_unique<Sample>(*this);
        return CZoDialog::DoModal();
    });
    m_faces.reset();
    m_sample.reset();
    m_scripts.clear(); // the next time begins with the font given
    ::ReleaseDC(nullptr, std::exchange(m_screen, nullptr));
    return result;
}

BOOL CZoFontDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    m_faces->SubclassDlgItem(ZO_IDC_FONT_FACE, this);
    m_sample->SubclassDlgItem(ZO_IDC_FONT_SAMPLE, this);
    m_colorButton.SubclassDlgItem(ZO_IDC_FONT_COLOR, this);
    m_colorButton.SetColor(m_color);
    m_faces->SetItemHeight(0, static_cast<UINT>(WindowFontDC(m_faces->m_hWnd).GetLineHeight()));
    SendDlgItemMessage(ZO_IDC_FONT_SIZE, CB_LIMITTEXT, kLongestSize);
    CheckDlgButton(ZO_IDC_FONT_STRIKEOUT, m_font.lfStrikeOut != 0);
    CheckDlgButton(ZO_IDC_FONT_UNDERLINE, m_font.lfUnderline != 0);
    for (int control = ZO_IDC_FONT_STRIKEOUT; control <= ZO_IDC_FONT_EFFECTS; ++control)
        GetDlgItem(control)->ShowWindow((m_flags & kEffects) != 0 ? SW_SHOW : SW_HIDE);
    m_firstScript = m_font.lfCharSet;
    FillScripts();
    FillFaces(m_font.lfFaceName);
    if (ChosenFamily() == nullptr)
        ChooseFace(RealFace(m_font));
    m_firstFace = ChosenFamily() != nullptr ? ChosenFamily()->name : CString();
    FillStyles(m_font.lfWeight, m_font.lfItalic != 0);
    if (const FontStyle* style = ChosenStyle()) {
        m_firstWeight = style->weight;
        m_firstItalic = style->isItalic;
    }
    FillSizes();
    ShowHeight(m_font.lfHeight);
    GetDlgItemText(ZO_IDC_FONT_SIZE, m_firstSize);
    ShowKind();
    CenterWindow();
    m_faces->SetFocus();
    return FALSE;
}

/// Names of the library's texts are new, the font is the same.
void CZoFontDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    FillScripts();
    if (const FontStyle* style = ChosenStyle())
        FillStyles(style->weight, style->isItalic);
    ShowKind();
}

/// Exceptions of the handlers end here: without memory a box stays empty.
LRESULT CZoFontDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return message == WM_COMMAND || message == WM_FONTCHANGE || message == WM_DRAWITEM
               ? ResultOr(LRESULT{0}, [&] { return CZoDialog::WindowProc(message, wParam, lParam); })
               : CZoDialog::WindowProc(message, wParam, lParam);
}

// The boxes -----------------------------------------------------------------------------------------------------------

void CZoFontDialog::FillScripts()
{
    const HWND box = ::GetDlgItem(m_hWnd, ZO_IDC_FONT_SCRIPT);
    const BYTE chosen = m_scripts.empty() ? m_font.lfCharSet : ChosenScript();
    FontFilter filter;
    filter.fixedPitchOnly = (m_flags & kFixedPitch) != 0;
    filter.scalableOnly = (m_flags & kScalable) != 0;
    filter.withVertical = (m_flags & kVertical) != 0;
    std::vector<BYTE> scripts = ReadFontScripts(FontsOf(), filter);
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
    for (const auto& row : kScripts) {
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
    FontFilter filter;
    filter.script = ChosenScript();
    filter.fixedPitchOnly = (m_flags & kFixedPitch) != 0;
    filter.scalableOnly = (m_flags & kScalable) != 0;
    filter.withVertical = (m_flags & kVertical) != 0;
    std::vector<FontFamily> families = ReadFontFamilies(FontsOf(), filter);
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

// What is chosen ------------------------------------------------------------------------------------------------------

/// What came in, with what the user has changed since.
LOGFONT CZoFontDialog::ReadFont(BOOL& isSizeGood) const
{
    LOGFONT font = m_font;
    font.lfCharSet = ChosenScript();
    const FontFamily* family = ChosenFamily();
    if (family != nullptr && family->name != m_firstFace) {
        CopyBounded(font.lfFaceName, sizeof font.lfFaceName, family->name);
        font.lfPitchAndFamily = family->pitch;
    }
    const FontStyle* style = ChosenStyle();
    if (style != nullptr && (style->weight != m_firstWeight || style->isItalic != m_firstItalic)) {
        font.lfWeight = style->weight;
        font.lfItalic = static_cast<BYTE>(style->isItalic);
    }
    CString size;
    GetDlgItemText(ZO_IDC_FONT_SIZE, size);
    isSizeGood = TRUE;
    if (size != m_firstSize) {
        int height = 0;
        isSizeGood = ReadSize(size, height);
        if (isSizeGood)
            font.lfHeight = -height;
    }
    if ((m_flags & kEffects) != 0) {
        const auto isChecked = [this](int button) { return static_cast<BYTE>(IsDlgButtonChecked(button) != 0); };
        if (isChecked(ZO_IDC_FONT_STRIKEOUT) != (m_font.lfStrikeOut != 0))
            font.lfStrikeOut = isChecked(ZO_IDC_FONT_STRIKEOUT);
        if (isChecked(ZO_IDC_FONT_UNDERLINE) != (m_font.lfUnderline != 0))
            font.lfUnderline = isChecked(ZO_IDC_FONT_UNDERLINE);
    }
    return font;
}

void CZoFontDialog::OnScript()
{
    const FontFamily* family = ChosenFamily();
    FillFaces(family != nullptr ? CString(family->name) : CString(m_font.lfFaceName));
    OnFace();
}

void CZoFontDialog::OnFace()
{
    const FontStyle* style = ChosenStyle();
    FillStyles(style != nullptr ? style->weight : m_font.lfWeight, style != nullptr && style->isItalic);
    CString size;
    GetDlgItemText(ZO_IDC_FONT_SIZE, size);
    FillSizes();
    SetDlgItemText(ZO_IDC_FONT_SIZE, size);
    ShowKind();
}

void CZoFontDialog::OnStyle() { ShowSample(); }

/// The system puts the row into the field behind this notification.
void CZoFontDialog::OnSizeChosen()
{
    const LRESULT row = SendDlgItemMessage(ZO_IDC_FONT_SIZE, CB_GETCURSEL);
    char text[kLongestSize + 1] = "";
    if (SendDlgItemMessage(ZO_IDC_FONT_SIZE, CB_GETLBTEXTLEN, row) <= kLongestSize)
        SendDlgItemMessage(ZO_IDC_FONT_SIZE, CB_GETLBTEXT, row, reinterpret_cast<LPARAM>(text));
    SetDlgItemText(ZO_IDC_FONT_SIZE, text);
    ShowSample();
}

void CZoFontDialog::ShowSample() { m_sample->Invalidate(FALSE); }

void CZoFontDialog::OnColor(NMHDR*, LRESULT*) { ShowSample(); }

/// A font has come or gone.
void CZoFontDialog::OnFontChange() { OnScript(); }

void CZoFontDialog::ShowKind()
{
    const FontFamily* family = ChosenFamily();
    SetDlgItemText(ZO_IDC_FONT_KIND,
                   LoadText(family != nullptr ? kKindTexts[static_cast<int>(family->kind)] : ZO_IDS_FONT_NOT_THERE));
    ShowSample();
}

void CZoFontDialog::Refuse(int control, const CString& reason)
{
    CString title;
    GetWindowText(title);
    ZoMessageBox(m_hWnd, reason, title, MB_OK | MB_ICONEXCLAMATION);
    GotoDlgCtrl(GetDlgItem(control));
}

void CZoFontDialog::OnOK()
{
    BOOL isSizeGood = FALSE;
    const LOGFONT font = ReadFont(isSizeGood);
    if (ChosenFamily() == nullptr && font.lfCharSet != m_firstScript) {
        Refuse(ZO_IDC_FONT_FACE, LoadText(ZO_IDS_FONT_NO_FACE));
        return;
    }
    if (!isSizeGood) {
        CString least, most;
        least.Format("%d", m_least);
        most.Format("%d", m_most);
        Refuse(ZO_IDC_FONT_SIZE, LoadText(ZO_IDS_FONT_BAD_SIZE, least, most));
        return;
    }
    m_font = font;
    if ((m_flags & kEffects) != 0)
        m_color = m_colorButton.GetColor();
    EndDialog(IDOK);
}
