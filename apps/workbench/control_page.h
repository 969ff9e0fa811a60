/// \file
/// The page of the library's own controls, each in its states.
#pragma once

#include "page.h"

#include <zogbl/bitmap_window.h>
#include <zogbl/calendar_button.h>
#include <zogbl/color_button.h>
#include <zogbl/column_list.h>
#include <zogbl/date_time.h>
#include <zogbl/modem_lights.h>
#include <zogbl/progress_bar.h>
#include <zogbl/screen_sample.h>
#include <zogbl/text_panel.h>

class ControlPage : public Page {
public:
    /// The numbers of its controls.
    enum Id : UINT {
        kDateId = 100,
        kTimeId,
        kCalendarButtonId,
        kCalendarId,
        kLightsId,
        kRunningId,
        kBlocksId,
        kPausedId,
        kFailedId,
        kUnknownId,
        kVerticalId,
        kInkId,
        kPaperId,
        kSampleId,
        kListId,
        kPanelId,
        kPictureId,
        kDisabledId,
        kLargeId
    };

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;

    void Disable(bool isDisabled); ///< all controls
    void Enlarge(bool isLarge);    ///< in a font half as large again, or in the usual one
    CSize GetNeededSize() const;   ///< in pixels: all controls have room, in the present font and language

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnShowWindow(BOOL isShown, UINT status);
    afx_msg void OnDisabled();
    afx_msg void OnLarge();
    DECLARE_MESSAGE_MAP()

private:
    /// Files that are not there.
    class FileList : public CZoColumnList {
    protected:
        CString GetCellText(const void* row, int column) const override;
        int CompareRows(const void* first, const void* second, int column) const override;
    };
    enum Label { kDate, kTime, kCalendar, kModem, kProgress, kColors, kSample, kList, kTexts, kPicture, kLabels };

    void ShowTexts();
    void FitColumns();
    void ShowColors();

    CStatic m_labels[kLabels];
    CZoDateTimeWnd m_date, m_time;
    CZoCalendarButton m_calendarButton;
    CZoCalendar m_calendar;
    CZoModemLights m_lights;
    CZoProgressBar m_running, m_blocks, m_paused, m_failed, m_unknown, m_vertical;
    CZoColorButton m_ink, m_paper;
    CZoScreenSample m_sample;
    FileList m_list;
    CZoTextPanel m_panel;
    CZoBitmapWnd m_picture;
    CButton m_disabled, m_large;
    CFont m_largeFont;
    CSize m_needed;
};
