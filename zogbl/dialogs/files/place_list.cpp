#include "place_list.h"

#include <algorithm>

namespace {

constexpr int kGapBelow = 3; // dialog units: what the lower margin of a dialog has beyond a gap
constexpr int kMargin = 2;   // pixels around an item's picture and text

HFONT FontOf(HWND window) { return reinterpret_cast<HFONT>(::SendMessageA(window, WM_GETFONT, 0, 0)); }

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

void MeasurePlace(HWND dialog, MEASUREITEMSTRUCT& measure)
{
    TEXTMETRICA metrics = {};
    if (const HDC dc = ::GetDC(dialog)) {
        const HGDIOBJ old = ::SelectObject(dc, FontOf(dialog));
        ::GetTextMetricsA(dc, &metrics);
        ::SelectObject(dc, old);
        ::ReleaseDC(dialog, dc);
    }
    measure.itemHeight = static_cast<UINT>((std::max<int>)(kPictureSize, metrics.tmHeight) + kMargin);
}

void DrawPlace(const DRAWITEMSTRUCT& item, PlacePicture picture, int indent)
{
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    char text[2 * MAX_PATH] = "";
    const bool isItem = item.itemID != static_cast<UINT>(-1) && GetText(item, text, sizeof text);
    const COLORREF oldText = ::SetTextColor(item.hDC, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    const COLORREF oldBackground = ::SetBkColor(item.hDC, ::GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(item.hDC, &metrics);
    const int height = item.rcItem.bottom - item.rcItem.top;
    ::ExtTextOutA(item.hDC, item.rcItem.left + indent + kPlaceTextOffset,
                  item.rcItem.top + (height - metrics.tmHeight) / 2, ETO_OPAQUE | ETO_CLIPPED, &item.rcItem, text,
                  static_cast<UINT>(::lstrlenA(text)), nullptr);
    ::SetBkColor(item.hDC, oldBackground);
    ::SetTextColor(item.hDC, oldText);
    if (isItem)
        DrawPlacePicture(item.hDC, item.rcItem.left + indent + kMargin, item.rcItem.top + (height - kPictureSize) / 2,
                         picture);
    if ((item.itemState & ODS_FOCUS) != 0)
        ::DrawFocusRect(item.hDC, &item.rcItem);
}

CString FittingText(HDC dc, const CString& text, int width)
{
    CString shown = text;
    SIZE size = {};
    for (int length = text.GetLength();
         ::GetTextExtentPoint32A(dc, shown, shown.GetLength(), &size) && size.cx > width && length > 0;) {
        const LPCSTR begin = text;
        length = static_cast<int>(::CharPrevA(begin, begin + length) - begin);
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
    POINT place = {lowest.left, lowest.top};
    ::ScreenToClient(dialog, &place);
    ::GetWindowRect(dialog, &own);
    ::GetClientRect(dialog, &inside);
    RECT gap = {0, 0, 0, kGapBelow};
    ::MapDialogRect(dialog, &gap);
    ::SetWindowPos(dialog, nullptr, 0, 0, own.Width(), own.Height() - (inside.bottom - place.y) + gap.bottom,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

ListFilling::ListFilling(HWND list) : m_list(list), m_dc(list != nullptr ? ::GetDC(list) : nullptr)
{
    if (m_dc != nullptr)
        m_oldFont = ::SelectObject(m_dc, FontOf(list));
    ::SendMessageA(m_list, WM_SETREDRAW, FALSE, 0);
    ::SendMessageA(m_list, LB_RESETCONTENT, 0, 0);
}

ListFilling::~ListFilling()
{
    if (m_dc != nullptr) {
        ::SelectObject(m_dc, m_oldFont);
        ::ReleaseDC(m_list, m_dc);
    }
    ::SendMessageA(m_list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(m_width), 0);
    ::SendMessageA(m_list, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(m_list, nullptr, TRUE);
}

void ListFilling::Add(const CString& text, int beside)
{
    if (m_list == nullptr || ::SendMessageA(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>((LPCSTR)text)) < 0)
        return;
    ++m_count;
    SIZE size = {};
    if (m_dc != nullptr)
        ::GetTextExtentPoint32A(m_dc, text, text.GetLength(), &size);
    m_width = (std::max<int>)(m_width, size.cx + beside + 2 * kMargin);
}
