#include "item_painting.h"

ItemColors ColorsOf(const DRAWITEMSTRUCT& item, int text, int background)
{
    const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
    const ItemColors plain = {::GetSysColor(text), ::GetSysColor(background)};
    if ((item.itemState & ODS_DISABLED) != 0 || !::IsWindowEnabled(item.hwndItem)) {
        // Displays and schemes without a grey of their own say black, or have one that cannot be seen.
        constexpr COLORREF kBlack = RGB(0, 0, 0);
        const COLORREF gray = ::GetSysColor(COLOR_GRAYTEXT);
        const COLORREF visible = gray != kBlack && gray != plain.background ? gray : plain.text;
        return isSelected ? ItemColors{plain.background, visible} : ItemColors{visible, plain.background};
    }
    return isSelected ? ItemColors{::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)} : plain;
}
