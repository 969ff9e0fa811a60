#include "record_page.h"

#include "workbench_ids.h"

#include <algorithm>

namespace {

constexpr UINT kListId = 100;
constexpr UINT kViewId = 101;
constexpr UINT kFirstButtonId = 110;
constexpr UINT kLastButtonId = 119;
constexpr int kMargin = 8;
constexpr int kListWidth = 190;
constexpr int kButtonWidth = 70; // at least

/// The width of the widest label, in pixels.
int LabelWidth(const CString& description)
{
    int widest = 0;
    for (int start = 0; start < description.GetLength();) {
        const int end = description.Find('\t', start);
        if (end < 0)
            break;
        widest = (std::max)(widest, TextWidth(description.Mid(start, end - start)));
        const int lineEnd = description.Find("\r\n", end);
        start = lineEnd < 0 ? description.GetLength() : lineEnd + 2;
    }
    return widest;
}

} // namespace

void AddLine(CString& description, UINT label, const CString& value)
{
    description += Text(label) + "\t" + value + "\r\n";
}

BEGIN_MESSAGE_MAP(RecordPage, Page)
    ON_LBN_SELCHANGE(kListId, OnChosen)
    ON_COMMAND_RANGE(kFirstButtonId, kLastButtonId, OnButton)
END_MESSAGE_MAP()

void RecordPage::CreateControls()
{
    const CRect nowhere;
    m_list.Create(WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, nowhere, this,
                  kListId);
    m_view.Create(this, kViewId);
    for (int i = 0; i < m_buttonCount; ++i)
        m_buttons[i].Create("", WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, nowhere, this,
                            kFirstButtonId + static_cast<UINT>(i));
    m_state.Create("", WS_VISIBLE | SS_LEFT | SS_NOPREFIX, nowhere, this);
}

void RecordPage::Reload()
{
    for (int i = 0; i < m_buttonCount; ++i)
        m_buttons[i].SetWindowText(Text(m_buttonTexts[i]));
    Refresh();
    LayOutAgain();
}

void RecordPage::Refresh()
{
    m_list.ResetContent();
    const DWORD status = FillList(m_list);
    m_complete = status == ERROR_SUCCESS;
    m_chosen = (std::max)(0, (std::min)(m_chosen, m_list.GetCount() - 1));
    m_list.SetCurSel(m_chosen);
    Show();
    ShowState(status);
}

void RecordPage::Show()
{
    const int index = m_list.GetCurSel();
    const CString description = index >= 0 ? Describe(index) : CString();
    m_view.SetTabStop(LabelWidth(description) + 2 * kMargin);
    m_view.SetWindowText(description);
    for (int i = 0; i < m_buttonCount; ++i)
        m_buttons[i].EnableWindow(CanDo(i, index));
}

void RecordPage::ShowState(DWORD status)
{
    CString text = GetStateText();
    if (status != ERROR_SUCCESS)
        text.Format(Text(ZO_IDS_RECORDS_FAILED), status);
    m_state.SetWindowText(text);
}

void RecordPage::OnChosen()
{
    m_chosen = m_list.GetCurSel();
    Show();
}

void RecordPage::OnButton(UINT id)
{
    const DWORD status = Do(static_cast<int>(id - kFirstButtonId), m_list.GetCurSel());
    Refresh();
    if (status != ERROR_SUCCESS)
        ShowState(status);
}

void RecordPage::Layout(int width, int height)
{
    const int line = LineHeight();
    const int row = line + 10;
    const int state = height - line - kMargin;
    const int buttons = state - kMargin - row;
    m_list.MoveWindow(kMargin, kMargin, kListWidth, buttons - 2 * kMargin);
    const int view = kListWidth + 2 * kMargin;
    m_view.MoveWindow(view, kMargin, width - view - kMargin, buttons - 2 * kMargin);
    int left = kMargin;
    for (int i = 0; i < m_buttonCount; ++i) {
        CButton& button = m_buttons[i];
        CString text;
        button.GetWindowText(text);
        const int buttonWidth = (std::max)(TextWidth(text) + 24, kButtonWidth);
        button.MoveWindow(left, buttons, buttonWidth, row);
        left += buttonWidth + kMargin;
    }
    m_state.MoveWindow(kMargin, state, width - 2 * kMargin, line);
}
