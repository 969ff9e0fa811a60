/// \file
/// Application framework: what a print job is about. Included by afxext.h.
#pragma once

#include <afxwin.h>

class CPrintDialog;

/// One print job, from CView::OnPreparePrinting to OnEndPrinting. Pages are counted from 1; there are at most 65535,
/// which also stands for a document whose length is not known.
struct AFX_API CPrintInfo {
    CPrintInfo(); ///< throws CMemoryException*
    ~CPrintInfo();
    CPrintInfo(const CPrintInfo&) = delete;
    CPrintInfo& operator=(const CPrintInfo&) = delete;

    void SetMinPage(UINT nMinPage);
    void SetMaxPage(UINT nMaxPage);
    UINT GetMinPage() const;
    UINT GetMaxPage() const;
    /// What the user wants printed; all of the document unless he chose pages.
    UINT GetFromPage() const;
    UINT GetToPage() const;

    /// The dialog and what was chosen in it: printer, settings, pages. It is this object's, and so are the settings and
    /// the printer's context that come into it. A view may put another one, made by new, in its place.
    CPrintDialog* m_pPD;
    BOOL m_bPreview = FALSE;         ///< a preview on the screen: no dialog
    BOOL m_bDirect = FALSE;          ///< to the default printer: no dialog
    BOOL m_bContinuePrinting = TRUE; ///< cleared when there is no such page, before or after one has been printed
    UINT m_nCurPage = 1;
    CRect m_rectDraw;              ///< the page's printable area, in logical units; for each page anew
    LPVOID m_lpUserData = nullptr; ///< the view's
};
