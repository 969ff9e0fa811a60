#include <afxwin.h>

#include "array_position.h"

IMPLEMENT_DYNAMIC(CDocument, CCmdTarget)

CDocument::~CDocument()
{
    for (INT_PTR i = 0; i < m_views.GetSize(); ++i)
        static_cast<CView*>(m_views[i])->m_pDocument = nullptr;
    if (m_pDocTemplate != nullptr)
        m_pDocTemplate->RemoveDocument(this);
}

void CDocument::SetTitle(LPCSTR lpszTitle)
{
    m_strTitle = lpszTitle;
    for (POSITION position = GetFirstViewPosition(); position != nullptr;) {
        if (CFrameWnd* frame = GetNextView(position)->GetParentFrame())
            frame->OnUpdateFrameTitle(TRUE);
    }
}

void CDocument::SetPathName(LPCSTR lpszPathName, BOOL)
{
    m_strPathName = lpszPathName;
    SetTitle(m_strPathName.Mid(m_strPathName.ReverseFind('\\') + 1));
}

// Views ----------------------------------------------------------------------------------------------------------------

void CDocument::AddView(CView* pView)
{
    m_views.Add(pView);
    pView->m_pDocument = this;
    OnChangedViewList();
}

void CDocument::RemoveView(CView* pView)
{
    RemoveElement(m_views, pView);
    pView->m_pDocument = nullptr;
    OnChangedViewList();
}

POSITION CDocument::GetFirstViewPosition() const { return FirstPosition(m_views); }

CView* CDocument::GetNextView(POSITION& rPosition) const
{
    return static_cast<CView*>(NextElement(m_views, rPosition));
}

void CDocument::UpdateAllViews(CView* pSender, LPARAM lHint, CObject* pHint)
{
    for (POSITION position = GetFirstViewPosition(); position != nullptr;) {
        CView* view = GetNextView(position);
        if (view != pSender)
            view->OnUpdate(pSender, lHint, pHint);
    }
}

void CDocument::OnChangedViewList()
{
    if (m_views.IsEmpty() && m_bAutoDelete)
        OnCloseDocument();
}

// Life -----------------------------------------------------------------------------------------------------------------

BOOL CDocument::OnNewDocument()
{
    DeleteContents();
    m_strPathName.Empty();
    return TRUE;
}

BOOL CDocument::OnOpenDocument(LPCSTR)
{
    DeleteContents();
    return TRUE;
}

void CDocument::OnCloseDocument()
{
    const BOOL autoDelete = m_bAutoDelete;
    m_bAutoDelete = FALSE; // the last view must not close the document again
    while (!m_views.IsEmpty()) {
        auto* view = static_cast<CView*>(m_views[0]);
        CWnd* frame = view->GetParentFrame();
        const INT_PTR count = m_views.GetSize();
        (frame != nullptr ? frame : view)->DestroyWindow(); // the view leaves the list
        if (m_views.GetSize() == count)
            RemoveView(view); // its window cannot be destroyed, or never was
    }
    m_bAutoDelete = autoDelete;
    DeleteContents();
    if (autoDelete)
        delete this;
}

BOOL CDocument::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    return CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) ||
           (m_pDocTemplate != nullptr && m_pDocTemplate->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo));
}
