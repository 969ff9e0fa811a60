/// \file
/// The dialog that lets the user choose a font.
#pragma once

#include <zogbl/color_button.h>
#include <zogbl/dialog.h>

#include <memory>
#include <vector>

struct FontFamily;
struct FontStyle;

/// Lets the user choose a font: script, face, style and size, effects and colour, with a sample.
///
///     CZoFontDialog dialog(CZoFontDialog::kEffects, this);
///     dialog.SetFont(m_font);
///     dialog.SetColor(m_ink);
///     if (dialog.DoModal() == IDOK) {
///         m_font = dialog.GetFont();
///         m_ink = dialog.GetColor();
///     }
///
/// What the user does not change comes out as it went in, also what the dialog cannot show: a weight of 450, a height
/// of a cell, a face that this system does not have.
///
/// The faces are those that the system enumerates for the script (EnumFontFamiliesEx), each once. "Any script" is
/// DEFAULT_CHARSET: all faces. For a face that is not among them, the one that the system takes for it is shown. Names
/// of styles and scripts are shown and never compared: styles are told apart by weight and slant, scripts by their
/// numbers.
class ZOGBL_API CZoFontDialog : public CZoDialog {
public:
    enum Flag : DWORD {
        kEffects = 1,    ///< strike out, underline, colour
        kFixedPitch = 2, ///< only faces whose characters are all as wide
        kVertical = 4,   ///< also faces that begin with "@", for vertical lines
        kScalable = 8    ///< only faces that exist in every size
    };
    static constexpr int LEAST_SIZE = 1, MOST_SIZE = 1638; ///< in points

    /// \param flags the sum of Flags \param owner null: the main window of the thread
    explicit CZoFontDialog(DWORD flags = kEffects, CWnd* owner = nullptr);
    ~CZoFontDialog() override;

    /// The font that is shown first; without a call, the system's for menus and the like (DEFAULT_GUI_FONT).
    void SetFont(const LOGFONT& font) { m_font = font; }
    const LOGFONT& GetFont() const { return m_font; } ///< after IDOK, what was chosen. Heights are pixels of the screen
    int GetPointSize() const;                         ///< of GetFont(), in tenths of a point; 0: the font's own

    /// \param color CLR_DEFAULT: automatic
    void SetColor(COLORREF color) { m_color = color; }
    COLORREF GetColor() const { return m_color; }
    /// Shows the fonts of a printer instead of the screen's. \param printer its device context, not the dialog's; null:
    /// the screen's again
    void SetPrinter(HDC printer) { m_printer = printer; }
    /// \param least, most in points \return FALSE if they are outside of LEAST_SIZE and MOST_SIZE or the wrong way
    /// round
    BOOL SetSizes(int least, int most);

    /// \return IDOK, IDCANCEL, or -1: no template or no memory
    INT_PTR DoModal() override;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnScript();
    afx_msg void OnFace();
    afx_msg void OnStyle();
    afx_msg void OnSizeChosen();
    afx_msg void ShowSample();
    afx_msg void OnColor(NMHDR* header, LRESULT* result);
    afx_msg void OnFontChange();
    DECLARE_MESSAGE_MAP()

private:
    class FaceList;
    class Sample;

    void FillScripts();
    void FillFaces(LPCSTR chosen);
    void ChooseFace(LPCSTR face);
    void FillStyles(LONG weight, BOOL isItalic);
    void FillSizes();
    void ShowHeight(int height);
    void ShowKind();
    HDC FontsOf() const { return m_printer != nullptr ? m_printer : m_screen; }
    BYTE ChosenScript() const;
    const FontFamily* ChosenFamily() const;
    const FontStyle* ChosenStyle() const;
    CString SizeText(int height) const;
    BOOL ReadSize(const CString& text, int& height) const;
    LOGFONT ReadFont(BOOL& isSizeGood) const;
    void Refuse(int control, const CString& reason);

    DWORD m_flags;
    HDC m_screen = nullptr; // while the dialog is open
    HDC m_printer = nullptr;
    LOGFONT m_font;
    COLORREF m_color = CLR_DEFAULT;
    int m_least = LEAST_SIZE, m_most = MOST_SIZE;
    std::unique_ptr<FaceList> m_faces;
    std::unique_ptr<Sample> m_sample;
    CZoColorButton m_colorButton;
    std::vector<BYTE> m_scripts;        // in the order of the box
    std::vector<FontFamily> m_families; // those of the rows, by the rows' data
    std::vector<FontStyle> m_styles;    // in the order of the box
    std::vector<int> m_heights;         // of a font that exists in these only; in the order of the box
    // What was shown first, and so stands for what came in
    BYTE m_firstScript = DEFAULT_CHARSET;
    CString m_firstFace;
    LONG m_firstWeight = 0;
    BOOL m_firstItalic = FALSE;
    CString m_firstSize;
};
