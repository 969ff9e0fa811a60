// Printing by views.
#include <afxdlgs.h>
#include <afxext.h>

#include <common/double_byte.h>

#include "modal_owner.h"
#include "thread_state.h"

#include <algorithm>

// The print job -------------------------------------------------------------------------------------------------------

namespace {

constexpr UINT kUnknownLength = 0xFFFF;

WORD PageNumber(UINT page) { return static_cast<WORD>((std::min)(page, kUnknownLength)); }

void FreeMemory(HGLOBAL memory)
{
    if (memory != nullptr)
        ::GlobalFree(memory);
}

} // namespace

CPrintInfo::CPrintInfo() : m_pPD(new CPrintDialog(FALSE, PD_ALLPAGES | PD_USEDEVMODECOPIES | PD_NOSELECTION))
{
    SetMinPage(1);
    SetMaxPage(kUnknownLength);
}

CPrintInfo::~CPrintInfo()
{
    if (m_pPD == nullptr)
        return;
    const PRINTDLG& chosen = m_pPD->m_pd;
    if (chosen.hDC != nullptr)
        ::DeleteDC(chosen.hDC);
    FreeMemory(chosen.hDevMode);
    FreeMemory(chosen.hDevNames);
    delete m_pPD;
}

void CPrintInfo::SetMinPage(UINT nMinPage) { m_pPD->m_pd.nMinPage = PageNumber(nMinPage); }
void CPrintInfo::SetMaxPage(UINT nMaxPage) { m_pPD->m_pd.nMaxPage = PageNumber(nMaxPage); }
UINT CPrintInfo::GetMinPage() const { return m_pPD->m_pd.nMinPage; }
UINT CPrintInfo::GetMaxPage() const { return m_pPD->m_pd.nMaxPage; }
UINT CPrintInfo::GetFromPage() const { return m_pPD->PrintRange() ? m_pPD->m_pd.nFromPage : GetMinPage(); }
UINT CPrintInfo::GetToPage() const { return m_pPD->PrintRange() ? m_pPD->m_pd.nToPage : GetMaxPage(); }

// Before the pages ----------------------------------------------------------------------------------------------------

BOOL CView::OnPreparePrinting(CPrintInfo*) { return FALSE; }
void CView::OnBeginPrinting(CDC*, CPrintInfo*) {}
void CView::OnEndPrinting(CDC*, CPrintInfo*) {}
void CView::OnPrint(CDC* pDC, CPrintInfo*) { OnDraw(pDC); }

void CView::OnPrepareDC(CDC*, CPrintInfo* pInfo)
{
    if (pInfo != nullptr && pInfo->GetMaxPage() == kUnknownLength && pInfo->m_nCurPage > pInfo->GetMinPage())
        pInfo->m_bContinuePrinting = FALSE;
}

BOOL CView::DoPreparePrinting(CPrintInfo* pInfo)
{
    CPrintDialog& dialog = *pInfo->m_pPD;
    PRINTDLG& chosen = dialog.m_pd;
    if (!pInfo->m_bPreview && !pInfo->m_bDirect) {
        chosen.nFromPage = chosen.nMinPage;
        chosen.nToPage = chosen.nMaxPage;
        if (dialog.DoModal() != IDOK)
            return FALSE; // the dialog tells what it lacks
    } else if (chosen.hDC == nullptr && chosen.hDevNames == nullptr) {
        dialog.GetDefaults();
    }
    if (chosen.hDC == nullptr)
        dialog.CreatePrinterDC();
    if (chosen.hDC == nullptr)
        AfxMessageBox(AFX_IDP_FAILED_TO_START_PRINT, MB_OK | MB_ICONEXCLAMATION);
    return chosen.hDC != nullptr;
}

// The pages -----------------------------------------------------------------------------------------------------------

namespace {

/// The system asks during the job whether it is to go on. \return FALSE once the thread is told to quit
BOOL CALLBACK PumpWhilePrinting(HDC, int)
{
    MSG message;
    while (::PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE)) {
        try {
            if (!PumpOneMessage(&message)) {
                ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop that printing began in
                return FALSE;
            }
        } catch (CException* e) { // which must not pass through the system
            e->Delete();
            return FALSE;
        }
    }
    return TRUE;
}

/// The document's title, as long as all spoolers take it.
CString NameOfJob(const CView& view)
{
    constexpr int kMostCharacters = 31;
    const CDocument* document = view.GetDocument();
    CString title;
    if (document != nullptr)
        title = document->GetTitle();
    else if (const CFrameWnd* frame = view.GetParentFrame())
        frame->GetWindowText(title);
    LPCSTR end = title;
    for (LPCSTR next = end; next - static_cast<LPCSTR>(title) <= kMostCharacters; next = NextCharacter(next)) {
        end = next;
        if (*next == '\0')
            break;
    }
    return title.Left(static_cast<int>(end - static_cast<LPCSTR>(title)));
}

/// Why a step of a job failed. \param result of the system's function, 0 or below
DWORD Failure(int result)
{
    if (result == SP_APPABORT || result == SP_USERABORT)
        return ERROR_CANCELLED;
    const DWORD error = ::GetLastError();
    return error != ERROR_SUCCESS ? error : ERROR_GEN_FAILURE;
}

/// A document being printed, which is abandoned unless it is ended.
class PrintedDocument {
public:
    explicit PrintedDocument(CDC& dc) : m_dc(dc) {}
    ~PrintedDocument()
    {
        if (m_open)
            m_dc.AbortDoc();
    }
    PrintedDocument(const PrintedDocument&) = delete;
    PrintedDocument& operator=(const PrintedDocument&) = delete;
    DWORD Start(LPCSTR name, LPCSTR output)
    {
        DOCINFO document = {};
        document.cbSize = sizeof document;
        document.lpszDocName = name;
        document.lpszOutput = output;
        const int job = m_dc.StartDoc(&document);
        m_open = job > 0;
        return m_open ? ERROR_SUCCESS : Failure(job);
    }
    DWORD End()
    {
        const int ended = m_dc.EndDoc();
        m_open = ended <= 0;
        return m_open ? Failure(ended) : ERROR_SUCCESS;
    }

private:
    CDC& m_dc;
    bool m_open = false;
};

} // namespace

DWORD CView::PrintDocument(CDC& dc, CPrintInfo& info)
{
    const CString name = NameOfJob(*this);
    const bool toFile = (info.m_pPD->m_pd.Flags & PD_PRINTTOFILE) != 0; // for whose name the system asks
    PrintedDocument document(dc);
    if (const DWORD error = document.Start(name, toFile ? "FILE:" : nullptr))
        return error;
    const UINT last = (std::min)(info.GetToPage(), info.GetMaxPage());
    info.m_nCurPage = (std::max)(info.GetFromPage(), info.GetMinPage());
    for (; info.m_bContinuePrinting && info.m_nCurPage <= last; ++info.m_nCurPage) {
        OnPrepareDC(&dc, &info);
        if (!info.m_bContinuePrinting)
            break;
        if (const DWORD error = PrintPage(dc, info))
            return error;
    }
    return document.End();
}

DWORD CView::PrintPage(CDC& dc, CPrintInfo& info)
{
    if (const int started = dc.StartPage(); started <= 0)
        return Failure(started);
    if ((::GetVersion() & 0x80000000) != 0) // these systems begin a page with a context as it was at first
        OnPrepareDC(&dc, &info);
    info.m_rectDraw = CRect(0, 0, dc.GetDeviceCaps(HORZRES), dc.GetDeviceCaps(VERTRES));
    dc.DPtoLP(&info.m_rectDraw);
    OnPrint(&dc, &info);
    if (const int ended = dc.EndPage(); ended <= 0)
        return Failure(ended);
    return PumpWhilePrinting(dc, 0) ? ERROR_SUCCESS : ERROR_CANCELLED;
}

DWORD CView::PrintJob(CDC& dc, CPrintInfo& info)
{
    const ModalOwner owner(this);
    dc.SetAbortProc(&PumpWhilePrinting);
    OnBeginPrinting(&dc, &info);
    DWORD error;
    try {
        error = PrintDocument(dc, info);
    } catch (CException*) {
        OnEndPrinting(&dc, &info);
        throw;
    }
    OnEndPrinting(&dc, &info);
    return error;
}

void CView::OnFilePrint()
{
    const MSG& message = GetThreadState()->lastMessage;
    CPrintInfo info;
    info.m_bDirect = message.message == WM_COMMAND && LOWORD(message.wParam) == ID_FILE_PRINT_DIRECT;
    if (!OnPreparePrinting(&info))
        return;
    CDC dc;
    DWORD error = ERROR_INVALID_HANDLE;
    if (dc.Attach(info.m_pPD->m_pd.hDC)) {
        info.m_pPD->m_pd.hDC = nullptr;
        dc.m_bPrinting = TRUE;
        error = PrintJob(dc, info);
    }
    if (error != ERROR_SUCCESS && error != ERROR_CANCELLED && error != ERROR_PRINT_CANCELLED)
        AfxMessageBox(AFX_IDP_FAILED_TO_START_PRINT, MB_OK | MB_ICONEXCLAMATION);
}
