#include "list_rows.h"

#include <algorithm>

namespace {

constexpr int kMargin = 2; // pixels at either side of a row

} // namespace

CString RowText(HWND list, LRESULT row)
{
    CString text;
    const LRESULT length = row >= 0 ? ::SendMessageA(list, LB_GETTEXTLEN, static_cast<WPARAM>(row), 0) : LB_ERR;
    if (length > 0)
        ::SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(row),
                       reinterpret_cast<LPARAM>(text.GetBuffer(static_cast<int>(length))));
    text.ReleaseBuffer();
    return text;
}

ListFilling::ListFilling(HWND list) : m_list(list), m_pause(list), m_dc(list)
{
    ::SendMessageA(m_list, LB_RESETCONTENT, 0, 0);
}

ListFilling::~ListFilling() { ::SendMessageA(m_list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(m_width), 0); }

void ListFilling::Add(const CString& text, int beside)
{
    if (m_list == nullptr || ::SendMessageA(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>((LPCSTR)text)) < 0)
        return;
    ++m_count;
    m_width = (std::max<int>)(m_width, m_dc.GetTextExtent(text, text.GetLength()).cx + beside + 2 * kMargin);
}
