#include "place_list.h"

#include <common/double_byte.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"
#include "dialogs/base/dialog_resource.h"

#include <algorithm>

namespace {

constexpr int kGapBelow = 3; // dialog units: what the lower margin of a dialog has beyond a gap
constexpr int kMargin = 2;   // pixels around an item's picture and text

/// \return FALSE when it does not fit.
bool GetText(const DRAWITEMSTRUCT& item, char* text, int size)
{
    const bool isCombo = item.CtlType == ODT_COMBOBOX;
    const auto index = static_cast<WPARAM>(item.itemID);
    const LRESULT length = ::SendMessageA(item.hwndItem, isCombo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, index, 0);
    return length >= 0 && length < size &&
           ::SendMessageA(item.hwndItem, isCombo ? CB_GETLBTEXT : LB_GETTEXT, index, reinterpret_cast<LPARAM>(text)) >=
               0;
}

} // namespace

int PlaceRowHeight(HWND window)
{
    const int text = WindowFontDC(window).GetMetrics().tmHeight;
    return (std::max)(kPictureSize, text) + kMargin;
}

void DrawPlace(const DRAWITEMSTRUCT& item, PlacePicture picture, int indent)
{
    char text[2 * MAX_PATH] = "";
    const bool isItem = item.itemID != static_cast<UINT>(-1) && GetText(item, text, sizeof text);
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(item.hDC, &metrics);
    const int height = item.rcItem.bottom - item.rcItem.top;
    {
        const SelectedColors colors(item.hDC, ColorsOf(item));
        ::ExtTextOutA(item.hDC, item.rcItem.left + indent + kPlaceTextOffset,
                      item.rcItem.top + (height - metrics.tmHeight) / 2, ETO_OPAQUE | ETO_CLIPPED, &item.rcItem, text,
                      static_cast<UINT>(::lstrlenA(text)), nullptr);
    }
    if (isItem)
        DrawPlacePicture(item.hDC, item.rcItem.left + indent + kMargin, item.rcItem.top + (height - kPictureSize) / 2,
                         picture);
    if ((item.itemState & ODS_FOCUS) != 0)
        ::DrawFocusRect(item.hDC, &item.rcItem);
}

CString DriveName(const CString& root, const NetworkPlace& place)
{
    if (root[0] == '\\')
        return root.Left(root.GetLength() - 1);
    const CString drive = root.Left(2);
    if (place.name.IsEmpty())
        return drive;
    return drive + "  " + (place.isConnected ? place.name : LoadText(ZO_IDS_FILE_DISCONNECTED, place.name));
}

CString TypedText(HWND field)
{
    CString text;
    ::GetWindowTextA(field, text.GetBuffer(kTypedLimit), kTypedLimit + 1);
    text.ReleaseBuffer();
    text.TrimLeft();
    text.TrimRight();
    return text;
}

int NameOffset(const CString& typed)
{
    return (std::max)({typed.ReverseFind('\\'), typed.ReverseFind('/'), typed.ReverseFind(':')}) + 1;
}

CString FittingText(HDC dc, const CString& text, int width)
{
    CString shown = text;
    SIZE size = {};
    for (int length = text.GetLength();
         ::GetTextExtentPoint32A(dc, shown, shown.GetLength(), &size) && size.cx > width && length > 0;) {
        const LPCSTR begin = text;
        length = static_cast<int>(PreviousCharacter(begin, begin + length) - begin);
        shown = text.Left(length) + "...";
    }
    return shown;
}

void FoldAway(HWND dialog, HWND control)
{
    CRect lowest, area, own, inside;
    ::GetWindowRect(control, &lowest);
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        ::GetWindowRect(child, &area);
        if (child != control && area.bottom > lowest.top)
            return;
    }
    CPoint place = lowest.TopLeft();
    ::ScreenToClient(dialog, &place);
    ::GetWindowRect(dialog, &own);
    ::GetClientRect(dialog, &inside);
    RECT gap = {0, 0, 0, kGapBelow};
    ::MapDialogRect(dialog, &gap);
    ::SetWindowPos(dialog, nullptr, 0, 0, own.Width(), own.Height() - (inside.bottom - place.y) + gap.bottom,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
