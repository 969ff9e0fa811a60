#include "control_page.h"

#include "workbench_ids.h"

#include "../text_box.h"

#include <zogbl/gdi_data.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kStepEach = 500; // milliseconds between two steps of what lives

constexpr UINT kLabelTexts[] = {ZO_IDS_CONTROLS_DATE,   ZO_IDS_CONTROLS_TIME,     ZO_IDS_CONTROLS_CALENDAR,
                                ZO_IDS_CONTROLS_MODEM,  ZO_IDS_CONTROLS_PROGRESS, ZO_IDS_CONTROLS_COLORS,
                                ZO_IDS_CONTROLS_SAMPLE, ZO_IDS_CONTROLS_LIST,     ZO_IDS_CONTROLS_TEXTS,
                                ZO_IDS_CONTROLS_PICTURE};

enum Column { kName, kSize, kChanged };
constexpr struct File {
    LPCSTR name;
    int size; // bytes
    WORD month, day;
} kFiles[] = {
    {"Cover sheet.txt", 1204, 3, 14},  {"Invoice 4711.fax", 48213, 11, 2}, {"Logo.bmp", 9270, 1, 31},
    {"Price list.fax", 130988, 7, 19}, {"Reminder.fax", 22015, 9, 30},     {"Travel report.txt", 7340, 5, 8},
};

CString NumberText(int number)
{
    char plain[16] = "", text[32] = "";
    ::wsprintf(plain, "%d", number);
    NUMBERFMT format = {};
    char decimal[] = ".", thousands[8] = "";
    ::GetLocaleInfo(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, thousands, sizeof thousands);
    format.Grouping = 3;
    format.lpDecimalSep = decimal;
    format.lpThousandSep = thousands;
    format.NegativeOrder = 1;
    ::GetNumberFormat(LOCALE_USER_DEFAULT, 0, plain, &format, text, sizeof text);
    return text;
}

CString DateText(const File& file)
{
    const SYSTEMTIME date = {2026, file.month, 0, file.day, 0, 0, 0, 0};
    char text[64] = "";
    ::GetDateFormat(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, text, sizeof text);
    return text;
}

int Pixels(int pixels) { return CZoGlobalGDIData::Scale(pixels); }

} // namespace

CString ControlPage::FileList::GetCellText(const void* row, int column) const
{
    const auto& file = *static_cast<const File*>(row);
    return column == kName ? CString(file.name) : column == kSize ? NumberText(file.size) : DateText(file);
}

int ControlPage::FileList::CompareRows(const void* first, const void* second, int column) const
{
    const auto& one = *static_cast<const File*>(first);
    const auto& other = *static_cast<const File*>(second);
    if (column == kName)
        return CZoColumnList::CompareRows(first, second, column);
    return column == kSize ? one.size - other.size : (one.month - other.month) * 100 + one.day - other.day;
}

// The page ------------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(ControlPage, Page)
    ON_WM_TIMER()
    ON_WM_SHOWWINDOW()
    ON_BN_CLICKED(kDisabledId, OnDisabled)
    ON_BN_CLICKED(kLargeId, OnLarge)
END_MESSAGE_MAP()

UINT ControlPage::GetTitleId() const { return ZO_IDS_PAGE_CONTROLS; }
UINT ControlPage::GetCommandId() const { return ZO_ID_VIEW_CONTROLS; }

void ControlPage::CreateControls()
{
    const CRect nowhere;
    constexpr DWORD kShown = WS_VISIBLE;
    constexpr DWORD kStop = WS_VISIBLE | WS_TABSTOP;
    const auto label = [&](Label number) {
        m_labels[number].Create("", WS_VISIBLE | SS_LEFT | SS_NOPREFIX, nowhere, this);
    };
    // In the order of Tab. Each label stands before what it names.
    label(kDate);
    m_date.Create(kStop | CZoDateTimeWnd::kLongDate | CZoDateTimeWnd::kShowNone, nowhere, this, kDateId);
    label(kTime);
    m_time.Create(kStop | CZoDateTimeWnd::kTime, nowhere, this, kTimeId);
    m_calendarButton.Create(kStop | CZoCalendarButton::kShowDate | CZoCalendar::kWeekNumbers, nowhere, this,
                            kCalendarButtonId);
    label(kCalendar);
    m_calendar.Create(kStop | WS_BORDER | CZoCalendar::kSpan | CZoCalendar::kWeekNumbers, nowhere, this, kCalendarId);
    label(kModem);
    m_lights.Create(kShown, nowhere, this, kLightsId);
    label(kProgress);
    m_running.Create(kShown | CZoProgressBar::kSmooth, nowhere, this, kRunningId);
    m_blocks.Create(kShown, nowhere, this, kBlocksId);
    m_paused.Create(kShown | CZoProgressBar::kSmooth, nowhere, this, kPausedId);
    m_failed.Create(kShown | CZoProgressBar::kSmooth, nowhere, this, kFailedId);
    m_unknown.Create(kShown | CZoProgressBar::kSmooth, nowhere, this, kUnknownId);
    m_vertical.Create(kShown | CZoProgressBar::kSmooth | CZoProgressBar::kVertical, nowhere, this, kVerticalId);
    label(kColors);
    m_ink.Create(kStop | CZoColorButton::kAutomatic | CZoColorButton::kMore, nowhere, this, kInkId);
    m_paper.Create(kStop | CZoColorButton::kAutomatic | CZoColorButton::kMore, nowhere, this, kPaperId);
    label(kSample);
    m_sample.Create(kStop | WS_BORDER, nowhere, this, kSampleId);
    label(kList);
    m_list.Create(kStop | WS_BORDER | CZoColumnList::kMovable, nowhere, this, kListId);
    label(kTexts);
    m_panel.Create(kStop, nowhere, this, kPanelId);
    label(kPicture);
    m_picture.Create(kStop | WS_BORDER | CZoBitmapWnd::kScroll, nowhere, this, kPictureId);
    m_disabled.Create("", kStop | BS_AUTOCHECKBOX, nowhere, this, kDisabledId);
    m_large.Create("", kStop | BS_AUTOCHECKBOX, nowhere, this, kLargeId);

    m_running.SetTextMode(CZoProgressBar::TextMode::kPercent);
    m_running.SetPosition(40);
    m_blocks.SetTextMode(CZoProgressBar::TextMode::kWindow);
    m_blocks.SetPosition(60);
    m_paused.SetPosition(70);
    m_paused.SetState(CZoProgressBar::State::kPaused);
    m_failed.SetTextMode(CZoProgressBar::TextMode::kPercent);
    m_failed.SetPosition(50);
    m_failed.SetState(CZoProgressBar::State::kFailed);
    m_unknown.SetUnknown(TRUE);
    m_vertical.SetPosition(40);

    m_ink.SetColor(RGB(255, 255, 0));
    m_paper.SetColor(RGB(0, 0, 128));
    m_paper.SetAutomaticColor(COLOR_WINDOW);

    CZoHeaderWnd& header = m_list.GetHeader();
    header.InsertColumn(kName, {ZO_IDS_CONTROLS_COLUMN_NAME, Pixels(115)});
    header.InsertColumn(kSize, {ZO_IDS_CONTROLS_COLUMN_SIZE, Pixels(60), CZoHeaderButton::Align::kRight});
    header.InsertColumn(kChanged, {ZO_IDS_CONTROLS_COLUMN_CHANGED, Pixels(75)});
    CPtrArray rows;
    for (const File& file : kFiles)
        rows.Add(const_cast<File*>(&file));
    m_list.SetRows(rows);
    m_list.SortBy(kName, CZoHeaderButton::Sort::kAscending);
    m_list.SetCurSel(1);

    ZoPane panes[3];
    panes[0].size = 1;
    panes[1].size = 2;
    panes[2].width = ZoPane::Width::kFitted;
    panes[2].alignment = DT_RIGHT;
    m_panel.SetPanes(panes, static_cast<int>(std::size(panes)));
    const int side = ::GetSystemMetrics(SM_CXSMICON);
    m_panel.SetPaneIcon(1,
                        static_cast<HICON>(::LoadImage(nullptr, IDI_INFORMATION, IMAGE_ICON, side, side, LR_SHARED)));

    m_lights.SetLight(CZoModemLights::kOH, TRUE);
    m_lights.SetLight(CZoModemLights::kTR, TRUE);
    m_lights.SetLight(CZoModemLights::kRTS, TRUE);
}

void ControlPage::Reload()
{
    for (int i = 0; i < kLabels; ++i)
        m_labels[i].SetWindowText(Text(kLabelTexts[i]));
    m_disabled.SetWindowText(Text(ZO_IDS_CONTROLS_DISABLED));
    m_large.SetWindowText(Text(ZO_IDS_CONTROLS_LARGE));
    ShowTexts();
    SendMessageToDescendants(CZoLanguageSupport::GetUpdateMessage());
    FitColumns();
    LayOutAgain();
}

/// To the texts of the present language and font.
void ControlPage::FitColumns()
{
    for (int i = 0; i < m_list.GetHeader().GetColumnCount(); ++i)
        m_list.GetHeader().FitColumn(i);
}

void ControlPage::ShowTexts()
{
    m_blocks.SetWindowText(Text(ZO_IDS_CONTROLS_COPYING));
    m_ink.SetWindowText(Text(ZO_IDS_CONTROLS_TEXT_COLOR));
    m_paper.SetWindowText(Text(ZO_IDS_CONTROLS_BACKGROUND_COLOR));
    const int chosen = (std::max)(m_sample.GetChosenArea(), 0);
    m_sample.RemoveAreas();
    m_sample.AddArea(Text(ZO_IDS_CONTROLS_TEXT_COLOR), Text(ZO_IDS_CONTROLS_SAMPLE_TEXT), m_ink.GetShownColor(),
                     m_paper.GetShownColor());
    m_sample.AddArea(Text(ZO_IDS_CONTROLS_SAMPLE_MENU), Text(ZO_IDS_CONTROLS_SAMPLE_MENU), RGB(0, 0, 0),
                     RGB(0, 128, 128));
    m_sample.AddArea(Text(ZO_IDS_CONTROLS_SAMPLE_CHOICE), Text(ZO_IDS_CONTROLS_SAMPLE_CHOICE), RGB(255, 255, 255),
                     RGB(128, 0, 0));
    m_sample.ChooseArea(chosen);
    m_panel.SetPaneText(1, Text(ZO_IDS_CONTROLS_READY));
    m_panel.SetPaneText(2, Text(ZO_IDS_CONTROLS_CONNECTED));
    m_panel.SetPaneText(3, Text(ZO_IDS_CONTROLS_SPEED));
    m_picture.LoadResource(ZO_IDB_FLAGS);
    m_picture.SetTransparentColor(CLR_DEFAULT);
}

/// The colours of the sample's chosen area, in the buttons; or of the buttons, in that area.
void ControlPage::ShowColors()
{
    m_sample.SetColors(m_sample.GetChosenArea(), m_ink.GetShownColor(), m_paper.GetShownColor());
}

// Layout --------------------------------------------------------------------------------------------------------------

namespace {

/// A column of the page, which is filled from its top.
struct Stack {
    int left, width, top;

    CRect Take(int height, int gap)
    {
        const CRect place(left, top, left + width, top + height);
        top += height + gap;
        return place;
    }
};

int LineHeightOf(const CWnd& window)
{
    return WithFont(nullptr, window.GetFont(), [](CDC& dc) {
        TEXTMETRIC metrics = {};
        dc.GetTextMetrics(&metrics);
        return static_cast<int>(metrics.tmHeight);
    });
}

} // namespace

CSize ControlPage::GetNeededSize() const { return m_needed; }

void ControlPage::Layout(int width, int height)
{
    const int line = LineHeightOf(m_disabled);
    const int gap = Pixels(6), small = Pixels(2);
    const int row = line + Pixels(8);
    const CSize calendar = m_calendar.GetIdealSize() + CSize(2, 2); // with its border
    Stack left{gap, (std::max)(static_cast<int>(calendar.cx), static_cast<int>(m_lights.GetBestSize().cx)), gap};
    Stack right{left.width + 3 * gap, width - left.width - 4 * gap, gap};
    const auto place = [](CWnd& control, const CRect& area) { control.MoveWindow(&area); };
    const auto halves = [&](CWnd& first, CWnd& second, CRect area) {
        const int middle = area.left + area.Width() / 2;
        place(first, CRect(area.left, area.top, middle - gap / 2, area.bottom));
        place(second, CRect(middle + gap / 2, area.top, area.right, area.bottom));
    };

    place(m_labels[kDate], left.Take(line, small));
    place(m_date, left.Take(row, gap));
    place(m_labels[kTime], left.Take(line, small));
    halves(m_time, m_calendarButton, left.Take(row, gap));
    place(m_labels[kCalendar], left.Take(line, small));
    CRect month = left.Take(calendar.cy, gap);
    month.right = month.left + calendar.cx;
    place(m_calendar, month);
    place(m_labels[kModem], left.Take(line, small));
    place(m_lights, left.Take(m_lights.GetBestSize().cy, gap));

    place(m_labels[kProgress], right.Take(line, small));
    const int bar = line + Pixels(4);
    CRect bars = right.Take(3 * bar + 2 * small, gap);
    place(m_vertical, CRect(bars.right - bar, bars.top, bars.right, bars.bottom));
    Stack progress{bars.left, bars.Width() - bar - gap, bars.top};
    halves(m_running, m_blocks, progress.Take(bar, small));
    halves(m_paused, m_failed, progress.Take(bar, small));
    place(m_unknown, progress.Take(bar, small));
    place(m_labels[kColors], right.Take(line, small));
    halves(m_ink, m_paper, right.Take(row, gap));
    place(m_labels[kSample], right.Take(line, small));
    place(m_sample, right.Take(6 * line, gap));
    place(m_labels[kList], right.Take(line, small));
    place(m_list, right.Take(7 * line, gap));
    place(m_labels[kTexts], right.Take(line, small));
    place(m_panel, right.Take(m_panel.GetBestHeight(), gap));
    const int bottom = height - row - gap;
    place(m_labels[kPicture], right.Take(line, small));
    m_needed = CSize(right.left + 23 * line + gap, right.top + 6 * line + 2 * gap + row);
    place(m_picture, right.Take((std::max)(bottom - right.top - gap, line), gap));
    halves(m_disabled, m_large, CRect(gap, height - row, left.left + left.width, height - gap / 2));
}

// What it does --------------------------------------------------------------------------------------------------------

BOOL ControlPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    switch (header.code) {
    case ZON_COLOR_CHANGED:
        ShowColors();
        return TRUE;
    case ZON_SAMPLE_CHOSEN: {
        COLORREF ink = 0, paper = 0;
        if (m_sample.GetColors(m_sample.GetChosenArea(), ink, paper)) {
            m_ink.SetColor(ink);
            m_paper.SetColor(paper);
        }
        return TRUE;
    }
    default:
        return Page::OnNotify(wParam, lParam, result);
    }
}

void ControlPage::OnShowWindow(BOOL isShown, UINT status)
{
    Page::OnShowWindow(isShown, status);
    if (isShown)
        SetTimer(kTimer, kStepEach, nullptr);
    else
        KillTimer(kTimer);
}

void ControlPage::OnTimer(UINT_PTR)
{
    m_running.StepIt();
    m_vertical.StepIt();
    m_lights.ReportReceived();
}

void ControlPage::Disable(bool isDisabled)
{
    m_disabled.SetCheck(isDisabled ? BST_CHECKED : BST_UNCHECKED);
    for (CWnd* control = GetWindow(GW_CHILD); control != nullptr; control = control->GetWindow(GW_HWNDNEXT)) {
        if (control != &m_disabled && control != &m_large)
            control->EnableWindow(!isDisabled);
    }
}

void ControlPage::Enlarge(bool isLarge)
{
    m_large.SetCheck(isLarge ? BST_CHECKED : BST_UNCHECKED);
    LOGFONT description = {};
    if (isLarge && m_largeFont.m_hObject == nullptr && ControlFont()->GetLogFont(&description) != 0) {
        description.lfHeight = description.lfHeight * 3 / 2;
        m_largeFont.CreateFontIndirect(&description);
    }
    CFont* font = isLarge && m_largeFont.m_hObject != nullptr ? &m_largeFont : ControlFont();
    SendMessageToDescendants(WM_SETFONT, reinterpret_cast<WPARAM>(font->m_hObject), TRUE, FALSE);
    FitColumns();
    LayOutAgain();
    Invalidate();
}

void ControlPage::OnDisabled() { Disable(m_disabled.GetCheck() == BST_CHECKED); }
void ControlPage::OnLarge() { Enlarge(m_large.GetCheck() == BST_CHECKED); }
