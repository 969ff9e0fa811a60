#include <afxwin.h>

#include "array_position.h"

IMPLEMENT_DYNAMIC(CDocument, CCmdTarget)

BEGIN_MESSAGE_MAP(CDocument, CCmdTarget)
    ON_COMMAND(ID_FILE_CLOSE, OnFileClose)
    ON_COMMAND(ID_FILE_SAVE, OnFileSave)
    ON_COMMAND(ID_FILE_SAVE_AS, OnFileSaveAs)
    ON_COMMAND(ID_FILE_SAVE_COPY_AS, OnFileSaveCopyAs)
END_MESSAGE_MAP()

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

// Views ---------------------------------------------------------------------------------------------------------------

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

// Life ----------------------------------------------------------------------------------------------------------------

BOOL CDocument::OnNewDocument()
{
    DeleteContents();
    m_strPathName.Empty();
    SetModifiedFlag(FALSE);
    return TRUE;
}

BOOL CDocument::OnOpenDocument(LPCSTR)
{
    DeleteContents();
    SetModifiedFlag(FALSE);
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

// Saving --------------------------------------------------------------------------------------------------------------

BOOL CDocument::OnSaveDocument(LPCSTR)
{
    SetModifiedFlag(FALSE);
    return TRUE;
}

BOOL CDocument::SaveModified()
{
    if (!IsModified())
        return TRUE;
    CString question;
    question.LoadString(AFX_IDP_ASK_TO_SAVE);
    question.Replace("%1", m_strPathName.IsEmpty() ? m_strTitle : m_strPathName);
    switch (AfxMessageBox(question, MB_YESNOCANCEL | MB_ICONEXCLAMATION, AFX_IDP_ASK_TO_SAVE)) {
    case IDYES:
        return DoFileSave();
    case IDNO:
        return TRUE;
    default:
        return FALSE;
    }
}

BOOL CDocument::CanCloseFrame(CFrameWnd* pFrame)
{
    for (POSITION position = GetFirstViewPosition(); position != nullptr;) {
        const CFrameWnd* frame = GetNextView(position)->GetParentFrame();
        if (frame != nullptr && frame != pFrame)
            return TRUE; // the document stays open there
    }
    return SaveModified();
}

BOOL CDocument::DoFileSave()
{
    const DWORD attributes = ::GetFileAttributes(m_strPathName);
    const bool readOnly = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    return DoSave(readOnly || m_strPathName.IsEmpty() ? nullptr : (LPCSTR)m_strPathName);
}

BOOL CDocument::DoSave(LPCSTR lpszPathName, BOOL bReplace)
{
    if (lpszPathName == nullptr || !OnSaveDocument(lpszPathName))
        return FALSE;
    if (bReplace)
        SetPathName(lpszPathName);
    return TRUE;
}

void CDocument::OnFileClose()
{
    if (SaveModified())
        OnCloseDocument();
}

void CDocument::OnFileSave() { DoFileSave(); }
void CDocument::OnFileSaveAs() { DoSave(nullptr); }
void CDocument::OnFileSaveCopyAs() { DoSave(nullptr, FALSE); }

BOOL CDocument::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    return CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) ||
           (m_pDocTemplate != nullptr && m_pDocTemplate->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo));
}
