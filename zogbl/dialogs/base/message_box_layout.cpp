#include "message_box_layout.h"

#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kButtons = 3;
constexpr int kButtonSets[][kButtons] = {
    {IDOK},        {IDOK, IDCANCEL},    {IDABORT, IDRETRY, IDIGNORE},       {IDYES, IDNO, IDCANCEL},
    {IDYES, IDNO}, {IDRETRY, IDCANCEL}, {IDCANCEL, IDTRYAGAIN, IDCONTINUE},
};
constexpr int kAllButtons[] = {IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDYES, IDNO, IDTRYAGAIN, IDCONTINUE, IDHELP};

// Dialog units.
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
constexpr int kButtonPadding = 6; // on both sides of the text
constexpr int kTextWidth = 260;   // at most
constexpr int kKeepHeight = 10;   // of the check box

constexpr UINT kTextFormat = DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX | DT_EDITCONTROL;

int DialogUnits(HWND box, int units, bool vertical)
{
    RECT area = {0, 0, units, units};
    ::MapDialogRect(box, &area);
    return vertical ? area.bottom : area.right;
}

/// The buttons of a box in a row, all of one width; the others of the template go.
class ButtonRow {
public:
    ButtonRow(HWND box, UINT type) : m_box(box), m_type(type)
    {
        for (const int id : kButtonSets[type & MB_TYPEMASK])
            Add(id);
        if ((type & MB_HELP) != 0)
            Add(IDHELP);
        for (const int id : kAllButtons) {
            if (std::find(m_ids, m_ids + m_count, id) == m_ids + m_count)
                ::DestroyWindow(::GetDlgItem(box, id));
        }
    }
    /// \param dc has the box's font
    void Measure(HDC dc)
    {
        m_gap = DialogUnits(m_box, kGap, false);
        m_width = DialogUnits(m_box, kButtonWidth, false);
        for (int i = 0; i < m_count; ++i) {
            char text[64] = "";
            RECT area = {};
            ::GetDlgItemTextA(m_box, m_ids[i], text, sizeof text);
            ::DrawTextA(dc, text, -1, &area, DT_CALCRECT | DT_SINGLELINE);
            m_width = (std::max)(m_width, static_cast<int>(area.right) + 2 * DialogUnits(m_box, kButtonPadding, false));
        }
    }
    int GetWidth() const { return m_count * m_width + (m_count - 1) * m_gap; }
    /// \param left, top pixels
    void Place(int left, int top) const
    {
        HWND previous = ::GetDlgItem(m_box, ZO_IDC_BOX_TEXT);
        for (int i = 0; i < m_count; ++i) {
            const HWND button = ::GetDlgItem(m_box, m_ids[i]);
            ::SetWindowPos(button, previous, left + i * (m_width + m_gap), top, m_width,
                           DialogUnits(m_box, kButtonHeight, true), SWP_NOACTIVATE);
            previous = button;
        }
        if (const HWND keep = ::GetDlgItem(m_box, ZO_IDC_BOX_KEEP)) // the last that Tab reaches
            ::SetWindowPos(keep, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    HWND GetDefault() const
    {
        const auto index = static_cast<int>((m_type & MB_DEFMASK) / MB_DEFBUTTON2);
        return ::GetDlgItem(m_box, m_ids[index < m_count ? index : 0]);
    }

private:
    void Add(int id)
    {
        if (id != 0)
            m_ids[m_count++] = id;
    }

    HWND m_box;
    UINT m_type;
    int m_ids[kButtons + 1] = {};
    int m_count = 0;
    int m_gap = 0;
    int m_width = 0;
};

/// The size of the check box; nothing if there is none. \param dc has the box's font
CSize MeasureKeep(HWND box, HDC dc)
{
    char text[128] = "";
    CRect area;
    if (::GetDlgItemTextA(box, ZO_IDC_BOX_KEEP, text, sizeof text) == 0)
        return CSize(0, 0);
    ::DrawTextA(dc, text, -1, &area, DT_CALCRECT | DT_SINGLELINE);
    const int mark = ::GetSystemMetrics(SM_CXMENUCHECK) + DialogUnits(box, kButtonPadding, false);
    return CSize(area.Width() + mark, DialogUnits(box, kKeepHeight, true));
}

} // namespace

static_assert(std::size(kButtonSets) == kBoxTypes);

bool HasBoxButton(UINT type, int button)
{
    const UINT kind = type & MB_TYPEMASK;
    return kind < kBoxTypes &&
           std::find(std::begin(kButtonSets[kind]), std::end(kButtonSets[kind]), button) != std::end(kButtonSets[kind]);
}

LPCSTR BoxIcon(UINT type)
{
    switch (type & MB_ICONMASK) {
    case MB_ICONSTOP:
        return IDI_HAND;
    case MB_ICONQUESTION:
        return IDI_QUESTION;
    case MB_ICONEXCLAMATION:
        return IDI_EXCLAMATION;
    case MB_ICONINFORMATION:
        return IDI_ASTERISK;
    default:
        return nullptr;
    }
}

HWND LayOutBox(HWND box, LPCSTR contents, const CString& caption, UINT type)
{
    ButtonRow buttons(box, type);
    const HWND text = ::GetDlgItem(box, ZO_IDC_BOX_TEXT);
    const int margin = DialogUnits(box, kMargin, false);
    const int marginAbove = DialogUnits(box, kMargin, true);
    const int buttonHeight = DialogUnits(box, kButtonHeight, true);
    const bool hasIcon = BoxIcon(type) != nullptr;
    const int iconWidth = hasIcon ? ::GetSystemMetrics(SM_CXICON) : 0;
    const int iconHeight = hasIcon ? ::GetSystemMetrics(SM_CYICON) : 0;
    CRect work;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    CRect frame;
    const auto style = static_cast<DWORD>(::GetWindowLongA(box, GWL_STYLE));
    ::AdjustWindowRectEx(&frame, style, FALSE, static_cast<DWORD>(::GetWindowLongA(box, GWL_EXSTYLE)));

    RECT area = {0, 0, DialogUnits(box, kTextWidth, false), 0};
    CSize title, keep;
    {
        const WindowFontDC dc(box);
        ::DrawTextA(dc.m_hDC, contents, -1, &area, kTextFormat | DT_CALCRECT);
        title = dc.GetTextExtent(caption, caption.GetLength());
        buttons.Measure(dc.m_hDC);
        keep = MeasureKeep(box, dc.m_hDC);
    }
    const int textLeft = margin + (hasIcon ? iconWidth + margin : 0);
    const int mostWidth = work.Width() - frame.Width() - margin;
    const int titleWidth =
        (std::min<int>)(title.cx + 2 * ::GetSystemMetrics(SM_CXSIZE), mostWidth); // with the closing box
    const int width = (std::max<int>)({textLeft + static_cast<int>(area.right), margin + buttons.GetWidth(), titleWidth,
                                       textLeft + static_cast<int>(keep.cx)}) +
                      margin;
    const int below = 3 * marginAbove + buttonHeight + (keep.cy > 0 ? marginAbove + keep.cy : 0);
    const int mostText = work.Height() - frame.Height() - below;
    const int textHeight = (std::min<int>)(area.bottom, mostText); // the buttons can be reached in any case
    const int above = (std::max)(textHeight, iconHeight);

    ::SetDlgItemTextA(box, ZO_IDC_BOX_TEXT, contents);
    ::MoveWindow(text, textLeft, marginAbove + (above - textHeight) / 2, width - margin - textLeft, textHeight, FALSE);
    ::MoveWindow(::GetDlgItem(box, ZO_IDC_BOX_ICON), margin, marginAbove, iconWidth, iconHeight, FALSE);
    if (keep.cy > 0)
        ::MoveWindow(::GetDlgItem(box, ZO_IDC_BOX_KEEP), textLeft, 2 * marginAbove + above, keep.cx, keep.cy, FALSE);
    buttons.Place((width - buttons.GetWidth()) / 2, above + below - marginAbove - buttonHeight);
    ::SetWindowPos(box, nullptr, 0, 0, width + frame.Width(), above + below + frame.Height(),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return buttons.GetDefault();
}
