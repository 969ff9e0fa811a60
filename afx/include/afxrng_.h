/// \file
/// Application framework: controls that show or change a number within a range. Included by afxcmn.h.
#pragma once

#include <afxsnd_.h>

#include <commctrl.h>

/// Two arrows that change a number, shown in a window beside them (its buddy). An upper limit below the lower one turns
/// the direction round.
class AFX_API CSpinButtonCtrl : public CWnd {
    DECLARE_DYNAMIC(CSpinButtonCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    void SetRange(short nLower, short nUpper) { AfxSend(this, UDM_SETRANGE, 0, MAKELPARAM(nUpper, nLower)); }
    DWORD GetRange() const { return AfxSend<DWORD>(this, UDM_GETRANGE); } ///< upper limit in the low word
    void GetRange(int& lower, int& upper) const;
    void SetRange32(int nLower, int nUpper) { AfxSend(this, UDM_SETRANGE32, nLower, nUpper); } ///< 4.70
    void GetRange32(int& lower, int& upper) const { AfxSend(this, UDM_GETRANGE32, &lower, &upper); }
    /// \return the position before
    int SetPos(int nPos) { return static_cast<short>(AfxSend<int>(this, UDM_SETPOS, 0, MAKELPARAM(nPos, 0))); }
    int GetPos() const { return AfxSend<int>(this, UDM_GETPOS); } ///< in the low word; an error if the high is not 0
    CWnd* SetBuddy(CWnd* pWndBuddy)                               ///< null: none. \return the one before
    {
        return CWnd::FromHandle(AfxSend<HWND>(this, UDM_SETBUDDY, AfxGetSafeHwnd(pWndBuddy)));
    }
    CWnd* GetBuddy() const { return CWnd::FromHandle(AfxSend<HWND>(this, UDM_GETBUDDY)); }
    int SetBase(int nBase) { return AfxSend<int>(this, UDM_SETBASE, nBase); } ///< 10 or 16. \return the one before
    UINT GetBase() const { return AfxSend<UINT>(this, UDM_GETBASE); }
    BOOL SetAccel(int nAccel, UDACCEL* pAccel) { return AfxSend<BOOL>(this, UDM_SETACCEL, nAccel, pAccel); }
    UINT GetAccel(int nAccel, UDACCEL* pAccel) const { return AfxSend<UINT>(this, UDM_GETACCEL, nAccel, pAccel); }
};

class AFX_API CProgressCtrl : public CWnd {
    DECLARE_DYNAMIC(CProgressCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    void SetRange(short nLower, short nUpper) { AfxSend(this, PBM_SETRANGE, 0, MAKELPARAM(nLower, nUpper)); }
    void SetRange32(int nLower, int nUpper) { AfxSend(this, PBM_SETRANGE32, nLower, nUpper); } ///< 4.70
    void GetRange(int& nLower, int& nUpper) const;                                             ///< 4.70
    /// \return the position before
    int SetPos(int nPos) { return AfxSend<int>(this, PBM_SETPOS, nPos); }
    int OffsetPos(int nPos) { return AfxSend<int>(this, PBM_DELTAPOS, nPos); }
    int GetPos() const { return AfxSend<int>(this, PBM_GETPOS); } ///< 4.70
    int SetStep(int nStep) { return AfxSend<int>(this, PBM_SETSTEP, nStep); }
    int StepIt() { return AfxSend<int>(this, PBM_STEPIT); }
};

class AFX_API CSliderCtrl : public CWnd {
    DECLARE_DYNAMIC(CSliderCtrl)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    void SetRange(int nMin, int nMax, BOOL bRedraw = FALSE)
    {
        SetRangeMin(nMin);
        SetRangeMax(nMax, bRedraw);
    }
    void GetRange(int& nMin, int& nMax) const
    {
        nMin = GetRangeMin();
        nMax = GetRangeMax();
    }
    void SetRangeMin(int nMin, BOOL bRedraw = FALSE) { AfxSend(this, TBM_SETRANGEMIN, bRedraw, nMin); }
    int GetRangeMin() const { return AfxSend<int>(this, TBM_GETRANGEMIN); }
    void SetRangeMax(int nMax, BOOL bRedraw = FALSE) { AfxSend(this, TBM_SETRANGEMAX, bRedraw, nMax); }
    int GetRangeMax() const { return AfxSend<int>(this, TBM_GETRANGEMAX); }
    void SetPos(int nPos) { AfxSend(this, TBM_SETPOS, TRUE, nPos); }
    int GetPos() const { return AfxSend<int>(this, TBM_GETPOS); }
    int SetLineSize(int nSize) { return AfxSend<int>(this, TBM_SETLINESIZE, 0, nSize); } ///< \return the one before
    int GetLineSize() const { return AfxSend<int>(this, TBM_GETLINESIZE); }
    int SetPageSize(int nSize) { return AfxSend<int>(this, TBM_SETPAGESIZE, 0, nSize); }
    int GetPageSize() const { return AfxSend<int>(this, TBM_GETPAGESIZE); }
    void SetTicFreq(int nFreq) { AfxSend(this, TBM_SETTICFREQ, nFreq); }
};
