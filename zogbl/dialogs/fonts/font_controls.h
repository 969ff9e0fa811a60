/// \file
/// The controls of the font dialog that are drawn by the library.
#pragma once

#include <zogbl/font_dialog.h>

#include "font_list.h"

/// Shows a sign of each font's kind beside its name: "TT", or a sheet of paper for a font of the printer.
class CZoFontDialog::FaceList : public CListBox {
public:
    explicit FaceList(const std::vector<FontFamily>& families) : m_families(families) {}

    void DrawItem(LPDRAWITEMSTRUCT item) override;

private:
    const std::vector<FontFamily>& m_families;
};

/// Shows words of the script in the font that is chosen.
class CZoFontDialog::Sample : public CStatic {
public:
    explicit Sample(const CZoFontDialog& dialog) : m_dialog(dialog) {}

    void DrawItem(LPDRAWITEMSTRUCT item) override;

private:
    const CZoFontDialog& m_dialog;
};
