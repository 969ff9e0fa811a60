// The page for the outside line: codes, and what would be dialed with them.
#include <common/without_throwing.h>
#include <zogbl/column_list.h>
#include <zogbl/resource_ids.h>

#include "dialing_preview.h"
#include "dialogs/base/dialog_resource.h"
#include "location_form.h"
#include "location_record.h"
#include "location_set.h"

#include <iterator>

namespace {

using Item = CZoLocationItem;

constexpr UINT_PTR kPreviewTimer = 1;
constexpr UINT kPause = 100; // milliseconds without a key
constexpr int kTryFields[] = {ZO_IDC_LOC_TRY_COUNTRY, ZO_IDC_LOC_TRY_AREA, ZO_IDC_LOC_TRY_NUMBER};
constexpr int kAccessFields[] = {ZO_IDC_LOC_LOCAL_ACCESS, ZO_IDC_LOC_LONG_ACCESS};
constexpr int kCodeFields[] = {ZO_IDC_LOC_LOCAL_ACCESS, ZO_IDC_LOC_LONG_ACCESS, ZO_IDC_LOC_SUFFIX, ZO_IDC_LOC_BLOCK,
                               ZO_IDC_LOC_WAITING};
constexpr UINT kModes[] = {ZO_IDS_LOC_MODE_AUTOMATIC, ZO_IDS_LOC_MODE_LOCAL,
                           ZO_IDS_LOC_MODE_LONG}; // in the order of the ZO_DIAL_ values
constexpr struct {
    UINT text;
    int width; // of the list, in hundredths
} kColumns[] = {{ZO_IDS_LOC_COLUMN_CALL, 46}, {ZO_IDS_LOC_COLUMN_DIALED, 34}, {ZO_IDS_LOC_COLUMN_HOW, 19}};

class PreviewList : public CZoColumnList {
protected:
    CString GetCellText(const void* row, int column) const override
    {
        const auto& preview = *static_cast<const CallPreview*>(row);
        return column == 0 ? preview.call : column == 1 ? preview.dialed : preview.how;
    }
};

class OutsideForm : public LocationForm {
public:
    OutsideForm() : LocationForm(ZO_IDD_LOC_OUTSIDE, kFields, static_cast<int>(std::size(kFields))) {}

    void Begin(CWnd& window) override;
    void Refresh() override;
    void OnCommand(int control, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void ReloadTexts() override;

protected:
    void Fill() override;
    void Enable(bool isEnabled) override;
    void Read(Item& item) const override
    {
        LocationForm::Read(item);
        item.m_bTAPIDialing = IsChecked(ZO_IDC_LOC_SERVICE);
    }

private:
    static constexpr Field kFields[] = {
        {ZO_IDC_LOC_LOCAL_ACCESS, Rule::kDialed, &Item::m_csLocalPrefix, nullptr, 0},
        {ZO_IDC_LOC_LONG_ACCESS, Rule::kDialed, &Item::m_csLongDistanceAccess, nullptr, 0},
        {ZO_IDC_LOC_SUFFIX, Rule::kDialed, &Item::m_csDialSuffix, nullptr, 0},
        {ZO_IDC_LOC_BLOCK, Rule::kDialed, &Item::m_csBlockCallerID, nullptr, 0},
        {ZO_IDC_LOC_WAITING, Rule::kDialed, &Item::m_csDisableCallWaiting, nullptr, 0},
    };

    bool IsChecked(int button) const { return m_window->IsDlgButtonChecked(button) == BST_CHECKED; }
    void FillModes(int chosen);
    void ShowOwnNumber();
    void EnableCodes(bool isEnabled);
    void HideCodes();
    void ShowPreview(bool askService);
    void ShowHow();

    PreviewList m_list;
    CallPreview m_previews[kPreviewCalls];
    bool m_isOwnTyped = false; // the number to try is not one of the location's
};

void OutsideForm::Begin(CWnd& window)
{
    LocationForm::Begin(window);
    for (const int field : kTryFields)
        ::SendMessageA(Control(field), EM_LIMITTEXT, kLocationTextSize - 1, 0);
    FillModes(ZO_DIAL_AUTOMATIC);
    m_isOwnTyped = false;
    CRect area;
    ::GetClientRect(Control(ZO_IDC_LOC_PREVIEW), &area);
    CZoHeaderWnd& header = m_list.GetHeader();
    while (header.GetColumnCount() > 0) // of the window before
        header.RemoveColumn(0);
    for (const auto& column : kColumns)
        header.InsertColumn(header.GetColumnCount(), {column.text, area.Width() * column.width / 100,
                                                      CZoHeaderButton::Align::kLeft, CZoHeaderButton::kNoPush});
    m_list.SubclassDlgItem(ZO_IDC_LOC_PREVIEW, &window);
    CPtrArray rows;
    for (CallPreview& preview : m_previews)
        rows.Add(&preview);
    m_list.SetRows(rows);
    m_list.SetCurSel(0);
}

void OutsideForm::FillModes(int chosen)
{
    const HWND modes = Control(ZO_IDC_LOC_TRY_MODE);
    ::SendMessageA(modes, CB_RESETCONTENT, 0, 0);
    for (const UINT mode : kModes)
        ::SendMessageA(modes, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(static_cast<LPCSTR>(LoadText(mode))));
    ::SendMessageA(modes, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
}

void OutsideForm::Fill()
{
    LocationForm::Fill();
    m_window->CheckDlgButton(ZO_IDC_LOC_SERVICE, m_item != nullptr && m_item->m_bTAPIDialing);
    HideCodes();
}

void OutsideForm::Enable(bool isEnabled)
{
    LocationForm::Enable(isEnabled);
    EnableCodes(isEnabled);
}

void OutsideForm::Refresh()
{
    ShowOwnNumber();
    ShowPreview(false);
}

/// The first of the location's numbers, until another one is typed.
void OutsideForm::ShowOwnNumber()
{
    if (m_isOwnTyped)
        return;
    const CallToTry own = m_item != nullptr ? MakeSample(PreviewCall::kOwn, *m_item) : CallToTry();
    const Filling filling(*this);
    SetText(ZO_IDC_LOC_TRY_COUNTRY, own.country);
    SetText(ZO_IDC_LOC_TRY_AREA, own.area);
    SetText(ZO_IDC_LOC_TRY_NUMBER, own.number);
}

/// The service does not use the location's codes, and only it can be asked.
void OutsideForm::EnableCodes(bool isEnabled)
{
    const bool isService = IsChecked(ZO_IDC_LOC_SERVICE);
    const HWND ask = Control(ZO_IDC_LOC_ASK);
    if (!isService && ::GetFocus() == ask)
        ::SetFocus(Control(ZO_IDC_LOC_SERVICE));
    ::EnableWindow(ask, isEnabled && isService);
    for (const int field : kCodeFields)
        ::EnableWindow(Control(field), isEnabled && !isService);
}

/// Codes that nobody else is to see are shown when the user asks for them. What is typed into an access field is seen
/// until it is shown anew.
void OutsideForm::HideCodes()
{
    const bool isShown = IsChecked(ZO_IDC_LOC_SHOW_CODES);
    const auto hide = [&](int field, bool isSecret) {
        ::SendMessageA(Control(field), EM_SETPASSWORDCHAR, isSecret && !isShown ? '*' : 0, 0);
        ::InvalidateRect(Control(field), nullptr, TRUE);
    };
    hide(ZO_IDC_LOC_SUFFIX, true);
    for (const int field : kAccessFields)
        hide(field, IsCardCode(TextOf(field)));
}

void OutsideForm::ShowPreview(bool askService)
{
    ::KillTimer(m_window->m_hWnd, kPreviewTimer);
    if (m_item != nullptr) {
        Item location(0);
        CopyLocation(location, *m_item);
        Read(location);
        for (int i = 0; i < kPreviewCalls; ++i) {
            const auto which = static_cast<PreviewCall>(i);
            CallToTry call = MakeSample(which, location);
            if (which == PreviewCall::kOwn) {
                const auto mode = ::SendMessageA(Control(ZO_IDC_LOC_TRY_MODE), CB_GETCURSEL, 0, 0);
                call = {TextOf(ZO_IDC_LOC_TRY_COUNTRY), TextOf(ZO_IDC_LOC_TRY_AREA), TextOf(ZO_IDC_LOC_TRY_NUMBER),
                        static_cast<int>(mode)};
            }
            CallPreview preview = PreviewDialing(which, call, location, askService, IsChecked(ZO_IDC_LOC_SHOW_CODES));
            if (m_window->m_hWnd == nullptr)
                return; // while the service was asked
            m_previews[i] = preview;
        }
    } else {
        for (CallPreview& preview : m_previews)
            preview = {};
    }
    for (int row = 0; row < kPreviewCalls; ++row)
        m_list.UpdateRow(row);
    ShowHow();
}

/// The whole of it stands below the list, where it may take several lines.
void OutsideForm::ShowHow()
{
    const int row = m_list.GetCurSel();
    SetText(ZO_IDC_LOC_HOW, row >= 0 ? m_previews[row].how : CString());
}

void OutsideForm::OnCommand(int control, int notification)
{
    if (m_isFilling)
        return;
    if (notification == EN_CHANGE) {
        for (const int field : kTryFields)
            m_isOwnTyped = m_isOwnTyped || control == field;
        ::SetTimer(m_window->m_hWnd, kPreviewTimer, kPause, nullptr); // anew with each key
    } else if (control == ZO_IDC_LOC_SERVICE) {
        EnableCodes(true);
        ShowPreview(false);
    } else if (control == ZO_IDC_LOC_SHOW_CODES) {
        HideCodes();
        ShowPreview(false);
    } else if (control == ZO_IDC_LOC_ASK) {
        const CWaitCursor wait;
        ShowPreview(true);
    } else if (control == ZO_IDC_LOC_TRY_MODE && notification == CBN_SELCHANGE) {
        ShowPreview(false);
    } else if (control == ZO_IDC_LOC_PREVIEW && notification == LBN_SELCHANGE) {
        ShowHow();
    }
}

void OutsideForm::OnTimer(UINT_PTR id)
{
    if (id == kPreviewTimer)
        ShowPreview(false);
}

void OutsideForm::ReloadTexts()
{
    FillModes(static_cast<int>(::SendMessageA(Control(ZO_IDC_LOC_TRY_MODE), CB_GETCURSEL, 0, 0)));
    ShowPreview(false);
}

} // namespace

std::unique_ptr<LocationForm> MakeOutsideForm() { return std::make_unique<OutsideForm>(); }
