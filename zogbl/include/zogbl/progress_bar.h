/// \file
/// How far something has come.
#pragma once

#include <zogbl/control.h>

struct ItemColors;

/// A bar for work of any length: positions of 64 bits, a text in both colours over it, work of unknown length, an
/// estimate of the time that is left. A position that changes nothing to be seen costs next to nothing, so a loop may
/// set one for each byte.
///
///     m_progress.SetRange(0, bytes);
///     m_progress.SetTextMode(CZoProgressBar::TextMode::kPercent);
///     ... m_progress.SetPosition(written);     // draws only if a pixel or the percentage changes
///
/// It has no keys and sends no notifications. Screen readers are told of a new percentage at most ten times a second,
/// but of the last one always; and in words that the work is paused or has failed, or else of a remaining time that is
/// shown.
class ZOGBL_API CZoProgressBar : public CZoControl {
    DECLARE_DYNAMIC(CZoProgressBar)
public:
    /// Styles, beside those of windows. The numbers are those of the system's progress bar.
    enum Style : DWORD {
        kSmooth = 0x01,  ///< one piece, as always under a text; else in blocks
        kVertical = 0x04 ///< from the bottom to the top; its text stays horizontal
    };
    enum class TextMode {
        kNone,
        kPercent,  ///< "40 %", in the user's language
        kWindow,   ///< the window's text
        kRemaining ///< "About 3 minutes left"; nothing until there is an estimate
    };
    enum class State { kRunning, kPaused, kFailed };

    /// 0 to 100 at the beginning. The position becomes \p lower, and a new estimate begins.
    /// \return FALSE, changing nothing, if \p upper is not above \p lower
    BOOL SetRange(LONGLONG lower, LONGLONG upper);
    LONGLONG GetLower() const { return m_nLower; }
    LONGLONG GetUpper() const { return m_nUpper; }

    /// \param position beyond an end counts as that end \return the one before
    LONGLONG SetPosition(LONGLONG position)
    {
        const LONGLONG before = m_nPosition;
        m_nPosition = position;
        if (position < m_nSameFrom || position > m_nSameTo)
            OnVisibleChange();
        return before;
    }
    LONGLONG OffsetPosition(LONGLONG by); ///< the same, relative to the present one
    LONGLONG GetPosition() const { return m_nPosition; }
    LONGLONG SetStep(LONGLONG step); ///< of StepIt, 10 at the beginning; also negative \return the one before
    /// Goes on by a step. What lies beyond an end is gone from the other. \return the position before
    LONGLONG StepIt();

    /// A block moves to and fro as long as the length of the work is unknown; there is no percentage then and no
    /// estimate. The range and the position stay as they are.
    void SetUnknown(BOOL isUnknown);
    BOOL IsUnknown() const { return m_bUnknown; }
    void SetState(State state);
    State GetState() const { return m_state; }
    void SetTextMode(TextMode mode);
    TextMode GetTextMode() const { return m_textMode; }

    /// 100 only at the upper end. \return -1 if the length is unknown
    int GetPercent() const;
    /// The time that is left if it goes on at the pace so far. It is estimated anew every five seconds, for the first
    /// time after five seconds and five percent.
    /// \return FALSE, changing nothing, if there is no estimate: also if the work is paused, has failed or is at its
    /// end
    BOOL GetRemainingTime(DWORD& seconds);
    /// The same as a text in the user's language, empty if there is no estimate. Throws CMemoryException*
    CString GetRemainingText();

    BOOL DescribePart(int part, ZoPart& description) const override;

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override; ///< gives it a sunken edge
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnVisibleChange();
    bool IsUntold() const;
    void TellReaders();
    void FindSame();
    bool IsBeyond(LONGLONG by) const;
    int GetPixels(LONGLONG position) const;
    int GetPercent(LONGLONG position) const;
    void UpdateShown();
    CRect GetFilled() const;
    CRect GetTextPlace(const CString& text) const;
    int BlockLength() const;
    CString GetShownText();
    CString PercentText() const;
    void DrawShownText(CDC* dc, const ItemColors& ground, const ItemColors& bar) const;
    void DrawBar(CDC* dc, const CRect& filled, COLORREF color) const;
    void RunTimer();
    void Estimate();

    LONGLONG m_nLower = 0;
    LONGLONG m_nUpper = 100;
    LONGLONG m_nPosition = 0;
    LONGLONG m_nStep = 10;
    LONGLONG m_nSameFrom = 0; // positions that look as the one shown, both ends included
    LONGLONG m_nSameTo = 0;
    int m_nLength = 0;      // of the whole bar, in pixels
    CRect m_rcFilled;       // as it is shown
    CString m_strText;      // as it is shown
    int m_nPercentTold = 0; // to screen readers
    DWORD m_dwTold = 0;     // when; all times are milliseconds of the system's counter
    TextMode m_textMode = TextMode::kNone;
    State m_state = State::kRunning;
    BOOL m_bUnknown = FALSE;
    UINT m_nTimerEach = 0;      // 0: there is no timer
    int m_nBlock = 0;           // how often the block has moved
    DWORD m_dwBegun = 0;        // when the work began, later by all pauses
    DWORD m_dwPaused = 0;       // when it was paused
    DWORD m_dwEstimated = 0;    // when the estimate was made
    LONGLONG m_nRemaining = -1; // milliseconds from then; -1: there is no estimate
};
