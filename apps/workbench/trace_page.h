/// \file
/// The trace: its file as it grows, and the switches of a trace.
#pragma once

#include "page.h"

#include "../text_box.h"

#include <zogbl/trace.h>

class TracePage : public Page {
public:
    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;
    void Refresh() override;

    /// The user has another level, chosen here or in another process: opens or closes the trace, or goes on with it.
    void ChangeLevel(WORD previous, WORD level);
    CZoTrace& GetTrace() { return m_trace; }

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;

    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg void OnLevel();
    afx_msg void OnPause();
    afx_msg void OnStamps();
    afx_msg void OnWriteLine();
    afx_msg void OnWriteBlock();
    afx_msg void OnFlush();
    DECLARE_MESSAGE_MAP()

private:
    void OpenTrace(WORD level);
    void ShowFile();

    CZoTrace m_trace;
    int m_linesWritten = 0;
    ULONGLONG m_shownLength = 0;

    CStatic m_levelLabel;
    CComboBox m_level;
    CButton m_pause;
    CButton m_stamps;
    CButton m_writeLine;
    CButton m_writeBlock;
    CButton m_flush;
    TextBox m_view;
    CStatic m_state;
};
