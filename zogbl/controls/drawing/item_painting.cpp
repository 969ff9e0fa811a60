#include "item_painting.h"

#include <zogbl/gdi_data.h>

ItemColors ColorsOf(const DRAWITEMSTRUCT& item, int text, int background)
{
    const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
    const ItemColors plain = {::GetSysColor(text), ::GetSysColor(background)};
    if ((item.itemState & ODS_DISABLED) != 0 || !::IsWindowEnabled(item.hwndItem)) {
        const COLORREF visible = CZoGlobalGDIData::GetDisabledColor(plain.text, plain.background);
        return isSelected ? ItemColors{plain.background, visible} : ItemColors{visible, plain.background};
    }
    return isSelected ? ItemColors{::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)} : plain;
}
