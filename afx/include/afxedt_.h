/// \file
/// Application framework: edit controls. Included by afxctl_.h.
#pragma once

#include <afxsnd_.h>

/// A field for text, of one line or of many (ES_MULTILINE). Places in the text and lines are counted from 0.
class AFX_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    DWORD GetSel() const { return AfxSend<DWORD>(this, EM_GETSEL); } ///< the start in the low word, the end in the high
    void GetSel(int& nStartChar, int& nEndChar) const { AfxSend(this, EM_GETSEL, &nStartChar, &nEndChar); }
    /// Selects characters, and scrolls to the end of the selection. 0, -1: all; -1: none
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE)
    {
        AfxSend(this, EM_SETSEL, nStartChar, nEndChar);
        if (!bNoScroll)
            AfxSend(this, EM_SCROLLCARET);
    }
    void SetSel(DWORD dwSelection, BOOL bNoScroll = FALSE) ///< as GetSel answers
    {
        const auto place = [](WORD half) { return half != 0xFFFF ? half : -1; };
        SetSel(place(LOWORD(dwSelection)), place(HIWORD(dwSelection)), bNoScroll);
    }
    void ReplaceSel(LPCSTR lpszNewText, BOOL bCanUndo = FALSE) { AfxSend(this, EM_REPLACESEL, bCanUndo, lpszNewText); }

    BOOL GetModify() const { return AfxSend<BOOL>(this, EM_GETMODIFY); }
    void SetModify(BOOL bModified = TRUE) { AfxSend(this, EM_SETMODIFY, bModified); }
    BOOL SetReadOnly(BOOL bReadOnly = TRUE) { return AfxSend<BOOL>(this, EM_SETREADONLY, bReadOnly); }
    void LimitText(int nChars = 0) { AfxSend(this, EM_LIMITTEXT, nChars); } ///< for the user; 0: the system's limit
    void SetLimitText(UINT nMax) { AfxSend(this, EM_SETLIMITTEXT, nMax); }
    UINT GetLimitText() const { return AfxSend<UINT>(this, EM_GETLIMITTEXT); }
    void SetPasswordChar(char ch) { AfxSend(this, EM_SETPASSWORDCHAR, static_cast<BYTE>(ch)); } ///< 0: none
    char GetPasswordChar() const { return AfxSend<char>(this, EM_GETPASSWORDCHAR); }
    void SetMargins(UINT nLeft, UINT nRight)
    {
        AfxSend(this, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(nLeft, nRight));
    }
    DWORD GetMargins() const
    {
        return AfxSend<DWORD>(this, EM_GETMARGINS);
    } ///< left in the low word, right in the high
    void GetRect(LPRECT lpRect) const { AfxSend(this, EM_GETRECT, 0, lpRect); }
    void SetRect(LPCRECT lpRect) { AfxSend(this, EM_SETRECT, 0, lpRect); } ///< of many lines alone

    int GetLineCount() const { return AfxSend<int>(this, EM_GETLINECOUNT); }
    int GetFirstVisibleLine() const { return AfxSend<int>(this, EM_GETFIRSTVISIBLELINE); }
    /// Copies a line, without a zero behind it. \return its characters
    int GetLine(int nIndex, LPSTR lpszBuffer, int nMaxLength) const;
    /// The same; the size of the buffer is in its first word.
    int GetLine(int nIndex, LPSTR lpszBuffer) const { return AfxSend<int>(this, EM_GETLINE, nIndex, lpszBuffer); }
    int LineFromChar(int nIndex = -1) const { return AfxSend<int>(this, EM_LINEFROMCHAR, nIndex); } ///< -1: the caret's
    int LineIndex(int nLine = -1) const { return AfxSend<int>(this, EM_LINEINDEX, nLine); }
    int LineLength(int nIndex = -1) const { return AfxSend<int>(this, EM_LINELENGTH, nIndex); } ///< at that character
    void LineScroll(int nLines, int nChars = 0) { AfxSend(this, EM_LINESCROLL, nChars, nLines); }
    CPoint PosFromChar(UINT nChar) const { return AfxSend<LPARAM>(this, EM_POSFROMCHAR, nChar); }
    int CharFromPos(CPoint pt) const ///< the character in the low word, its line in the high
    {
        return AfxSend<int>(this, EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y));
    }

    BOOL CanUndo() const { return AfxSend<BOOL>(this, EM_CANUNDO); }
    BOOL Undo() { return AfxSend<BOOL>(this, EM_UNDO); }
    void EmptyUndoBuffer() { AfxSend(this, EM_EMPTYUNDOBUFFER); }
    void Clear() { AfxSend(this, WM_CLEAR); }
    void Copy() { AfxSend(this, WM_COPY); }
    void Cut() { AfxSend(this, WM_CUT); }
    void Paste() { AfxSend(this, WM_PASTE); }
};
