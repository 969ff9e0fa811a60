#include <zogbl/font_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"
#include "dialogs/base/dialog_resource.h"
#include "font_controls.h"
#include "ground/bounded_text.h"

#include <utility>

namespace {

constexpr int kLongestSize = 6; // characters

constexpr UINT kKindTexts[] = {ZO_IDS_FONT_BITMAP, ZO_IDS_FONT_VECTOR, ZO_IDS_FONT_TRUETYPE, ZO_IDS_FONT_DEVICE};

} // namespace

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
void CZoFontDialog::OnFontChange()
{
    FillScripts();
    OnScript();
}

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
