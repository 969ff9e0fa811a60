#include <afxwin.h>

#include "array_position.h"

#include <utility>

IMPLEMENT_DYNAMIC(CDocTemplate, CCmdTarget)
IMPLEMENT_DYNAMIC(CMultiDocTemplate, CDocTemplate)

namespace {

/// Keeps a document open whose first view comes and goes again because something failed.
class StaysOpen {
public:
    explicit StaysOpen(CDocument* document)
        : m_document(document), m_autoDelete(std::exchange(document->m_bAutoDelete, FALSE))
    {
    }
    ~StaysOpen() { m_document->m_bAutoDelete = m_autoDelete; }
    StaysOpen(const StaysOpen&) = delete;
    StaysOpen& operator=(const StaysOpen&) = delete;

private:
    CDocument* m_document;
    BOOL m_autoDelete;
};

/// Takes back a document that could not be opened.
void Discard(CDocument* document, CFrameWnd* frame)
{
    const bool closesWithView = document->GetFirstViewPosition() != nullptr;
    if (frame != nullptr)
        frame->DestroyWindow();
    if (!closesWithView)
        delete document;
}

} // namespace

CDocTemplate::CDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass,
                           CRuntimeClass* pViewClass)
    : m_nIDResource(nIDResource), m_pDocClass(pDocClass), m_pFrameClass(pFrameClass), m_pViewClass(pViewClass)
{
}

BOOL CDocTemplate::GetDocString(CString& rString, DocStringIndex index) const
{
    CString all;
    all.LoadString(m_nIDResource);
    return AfxExtractSubString(rString, all, index);
}

void CDocTemplate::AddDocument(CDocument* pDoc) { pDoc->m_pDocTemplate = this; }
void CDocTemplate::RemoveDocument(CDocument* pDoc) { pDoc->m_pDocTemplate = nullptr; }

CDocument* CDocTemplate::CreateNewDocument()
{
    auto* document = static_cast<CDocument*>(m_pDocClass != nullptr ? m_pDocClass->CreateObject() : nullptr);
    if (document == nullptr)
        return nullptr;
    try {
        AddDocument(document);
    } catch (CMemoryException*) {
        delete document;
        throw;
    }
    return document;
}

CFrameWnd* CDocTemplate::CreateNewFrame(CDocument* pDoc, CFrameWnd*)
{
    auto* frame = static_cast<CFrameWnd*>(m_pFrameClass != nullptr ? m_pFrameClass->CreateObject() : nullptr);
    if (frame == nullptr)
        return nullptr;
    CCreateContext context;
    context.m_pNewViewClass = m_pViewClass;
    context.m_pCurrentDoc = pDoc;
    const StaysOpen guard(pDoc);
    // A frame that fails has deleted itself with its window.
    return frame->LoadFrame(m_nIDResource, WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, nullptr, &context) ? frame : nullptr;
}

void CDocTemplate::InitialUpdateFrame(CFrameWnd* pFrame, CDocument* pDoc, BOOL bMakeVisible)
{
    pFrame->InitialUpdateFrame(pDoc, bMakeVisible);
}

void CDocTemplate::CloseAllDocuments(BOOL)
{
    while (POSITION position = GetFirstDocPosition()) {
        CDocument* document = GetNextDoc(position);
        const BOOL closes = document->m_bAutoDelete;
        document->OnCloseDocument();
        if (!closes) // it stays in the list, closed
            return;
    }
}

BOOL CDocTemplate::SaveAllModified()
{
    for (POSITION position = GetFirstDocPosition(); position != nullptr;) {
        if (!GetNextDoc(position)->SaveModified())
            return FALSE;
    }
    return TRUE;
}

// Several documents ---------------------------------------------------------------------------------------------------

CMultiDocTemplate::CMultiDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass,
                                     CRuntimeClass* pViewClass)
    : CDocTemplate(nIDResource, pDocClass, pFrameClass, pViewClass)
{
}

CMultiDocTemplate::~CMultiDocTemplate()
{
    while (!m_documents.IsEmpty())
        RemoveDocument(static_cast<CDocument*>(m_documents[0]));
}

void CMultiDocTemplate::AddDocument(CDocument* pDoc)
{
    m_documents.Add(pDoc);
    CDocTemplate::AddDocument(pDoc);
}

void CMultiDocTemplate::RemoveDocument(CDocument* pDoc)
{
    RemoveElement(m_documents, pDoc);
    CDocTemplate::RemoveDocument(pDoc);
}

POSITION CMultiDocTemplate::GetFirstDocPosition() const { return FirstPosition(m_documents); }

CDocument* CMultiDocTemplate::GetNextDoc(POSITION& rPos) const
{
    return static_cast<CDocument*>(NextElement(m_documents, rPos));
}

CDocument* CMultiDocTemplate::OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible)
{
    CDocument* document = CreateNewDocument();
    if (document == nullptr)
        return nullptr;
    CFrameWnd* frame = nullptr;
    try {
        frame = CreateNewFrame(document, nullptr);
        BOOL filled = FALSE;
        if (frame != nullptr && lpszPathName == nullptr) {
            SetDefaultTitle(document);
            filled = document->OnNewDocument();
            ++m_nUntitledCount;
        } else if (frame != nullptr) {
            filled = document->OnOpenDocument(lpszPathName);
            if (filled)
                document->SetPathName(lpszPathName);
        }
        if (!filled) {
            Discard(document, frame);
            return nullptr;
        }
        InitialUpdateFrame(frame, document, bMakeVisible);
    } catch (CException*) {
        Discard(document, frame);
        throw;
    }
    return document;
}

void CMultiDocTemplate::SetDefaultTitle(CDocument* pDocument)
{
    CString title;
    GetDocString(title, docName);
    CString number;
    number.Format("%d", m_nUntitledCount + 1);
    pDocument->SetTitle(title + number);
}
