/// \file
/// What the tests of colours share.
#pragma once

#include "controls/acts.h"
#include "support/product_test.h"

#include <common/without_throwing.h>
#include <zogbl/color_button.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include <afxdlgs.h>

constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255), kRed = RGB(255, 0, 0),
                   kFace = RGB(180, 180, 180), kText = RGB(10, 60, 10);
constexpr DWORD kAll = WS_VISIBLE | WS_TABSTOP | CZoColorChooser::kAutomatic | CZoColorChooser::kMore;
constexpr int kMorePart = 34; // without custom colours

/// No custom colours; the names of the colours chosen are told.
class ColorTest : public ProductTest {
protected:
    ColorTest()
    {
        std::fill_n(CColorDialog::GetSavedCustomColors(), 16, kWhite);
        m_parent.m_describe = [](NMHDR& header, LRESULT&) -> std::string {
            return header.code == ZON_COLOR_CHANGED && header.idFrom == 5
                       ? (LPCSTR)ZoGetColorName(reinterpret_cast<ZoColorNotification&>(header).color)
                       : "";
        };
    }

    ControlParent m_parent;
};

/// Deletes a control while the system's dialog that it opened is shown.
template <class CONTROL> void EndInDialog(std::unique_ptr<CONTROL>& control, CZoColorChooser& chooser)
{
    const DialogDriver driver{[&](HWND window) {
        control.reset();
        Press(window, IDOK);
    }};
    chooser.DoPartAction(kMorePart);
    EXPECT_EQ(nullptr, control);
}
