#include "text_print.h"

#include "template_ids.h"
#include "text_pages.h"

#include <common/double_byte.h>

#include <zogbl/abort_dialog.h>
#include <zogbl/print_dialog.h>
#include <zogbl/resource_lookup.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int kMostTitle = 31; // bytes of a job's name, which all spoolers take

CString String(UINT id)
{
    CString text;
    ZoGblLoadString(id, text);
    return text;
}

/// Printer and settings, as they were chosen last in this library.
class LastSettings {
public:
    ~LastSettings() { Free(); }
    void Offer(CZoPrintDialog& dialog) const
    {
        dialog.SetSettings(m_devMode, m_devNames); // blocks that came from such a dialog
    }
    void Take(const CZoPrintDialog& dialog)
    {
        Free();
        m_devMode = dialog.CopyDevMode();
        m_devNames = dialog.CopyDevNames();
    }

private:
    void Free()
    {
        for (HGLOBAL* block : {&m_devMode, &m_devNames}) {
            if (*block != nullptr)
                ::GlobalFree(*block);
            *block = nullptr;
        }
    }

    HGLOBAL m_devMode = nullptr;
    HGLOBAL m_devNames = nullptr;
};

/// The pages on one printer.
class Job {
public:
    Job(const CString& title, const DocumentSettings& settings) : m_title(title), m_settings(settings) {}

    /// \param printer its context, which is the job's from now on \return FALSE: it cannot be used
    BOOL Begin(HDC printer, const CString& text);
    int GetPageCount() const { return m_pages->GetCount(); }
    /// Lets the printer's driver ask the dialog whether to go on. If it refuses, it is asked between the pages alone.
    void AttachTo(CZoAbortDialog& progress) { progress.AttachPrinter(m_dc); }
    /// \param from, to from 1 \return FALSE: it failed or was ended; what had not gone out is dropped
    BOOL Print(const CZoPrintDialog& choice, int from, int to, CZoAbortDialog& progress);

private:
    void PrintPage(int page);

    const CString m_title;
    const DocumentSettings& m_settings;
    CFont m_font; // outlives the context
    CDC m_dc;
    CRect m_area;      // of a page, within its margins
    int m_heading = 0; // its height
    std::unique_ptr<TextPages> m_pages;
};

BOOL Job::Begin(HDC printer, const CString& text)
{
    if (printer == nullptr || !m_dc.Attach(printer))
        return FALSE;
    const CClientDC screen(nullptr);
    LOGFONT font = m_settings.font;
    font.lfHeight = ::MulDiv(font.lfHeight, m_dc.GetDeviceCaps(LOGPIXELSY), screen.GetDeviceCaps(LOGPIXELSY));
    font.lfWidth = 0;
    if (!m_font.CreateFontIndirect(&font))
        return FALSE;
    const CSize margin(m_dc.GetDeviceCaps(LOGPIXELSX) * 4 / 5, m_dc.GetDeviceCaps(LOGPIXELSY) * 4 / 5); // 2 cm of paper
    m_area = CRect(0, 0, m_dc.GetDeviceCaps(HORZRES), m_dc.GetDeviceCaps(VERTRES));
    m_area.DeflateRect((std::max)(0L, margin.cx - m_dc.GetDeviceCaps(PHYSICALOFFSETX)),
                       (std::max)(0L, margin.cy - m_dc.GetDeviceCaps(PHYSICALOFFSETY)));
    CFont* before = m_dc.SelectObject(&m_font);
    if (m_settings.heading)
        m_heading = 2 * m_dc.GetTextExtent("X").cy;
    m_pages = std::make_unique<TextPages>(m_dc, text, m_area.Width(), m_area.Height() - m_heading);
    m_dc.SelectObject(before);
    return TRUE;
}

void Job::PrintPage(int page)
{
    CFont* before = m_dc.SelectObject(&m_font); // old systems begin each page with a context as it was at first
    m_dc.SetBkMode(TRANSPARENT);
    if (m_heading > 0) {
        CString number;
        number.Format(String(ZO_IDS_JOB_PAGE), page, m_pages->GetCount());
        CRect line = m_area;
        line.bottom = line.top + m_heading;
        const int numberWidth = m_dc.GetTextExtent(number).cx;
        m_dc.DrawText(number, -1, &line, DT_RIGHT | DT_SINGLELINE | DT_NOPREFIX);
        line.right -= 2 * numberWidth;
        m_dc.DrawText(m_title, -1, &line, DT_LEFT | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        m_dc.MoveTo(m_area.left, m_area.top + m_heading * 5 / 8);
        m_dc.LineTo(m_area.right, m_area.top + m_heading * 5 / 8);
    }
    if (m_settings.color != CLR_DEFAULT)
        m_dc.SetTextColor(m_settings.color);
    m_pages->Draw(m_dc, page - 1, m_area.left, m_area.top + m_heading);
    m_dc.SetTextColor(RGB(0, 0, 0));
    m_dc.SelectObject(before);
}

BOOL Job::Print(const CZoPrintDialog& choice, int from, int to, CZoAbortDialog& progress)
{
    CString name = m_title;
    if (name.GetLength() > kMostTitle)
        name = name.Left(kMostTitle - (IsSecondHalf(name, static_cast<LPCSTR>(name) + kMostTitle) ? 1 : 0));
    const DOCINFO document = {sizeof document, name, choice.GetOutput(), nullptr, 0};
    if (m_dc.StartDoc(const_cast<DOCINFO*>(&document)) <= 0)
        return FALSE;
    LONGLONG done = 0;
    for (int copy = 0; copy < choice.GetDocumentCopies(); ++copy) {
        for (int page = from; page <= to; ++page) {
            CString text;
            text.Format(String(ZO_IDS_JOB_PROGRESS), page, GetPageCount());
            progress.SetText(text);
            for (int again = 0; again < choice.GetPageCopies(); ++again) {
                bool goesOn = m_dc.StartPage() > 0;
                if (goesOn) {
                    PrintPage(page);
                    goesOn = m_dc.EndPage() > 0 && progress.SetPosition(++done);
                    progress.SetCommitted();
                }
                if (!goesOn) {
                    m_dc.AbortDoc();
                    return FALSE;
                }
            }
        }
    }
    return m_dc.EndDoc() > 0;
}

void Tell(UINT text, const CString& name)
{
    CString message;
    message.Format(String(text), static_cast<LPCSTR>(name));
    AfxMessageBox(message, MB_ICONEXCLAMATION);
}

} // namespace

void PrintText(CWnd& owner, const CString& title, const CString& text, const CString& selected,
               const DocumentSettings& settings)
{
    static LastSettings s_last;
    CZoPrintDialog dialog(&owner);
    s_last.Offer(dialog);
    dialog.SetSelection(!selected.IsEmpty());
    const INT_PTR result = dialog.DoModal();
    if (result == -1)
        AfxMessageBox(String(ZO_IDS_JOB_NO_DIALOG), MB_ICONEXCLAMATION);
    if (result != IDOK)
        return;
    s_last.Take(dialog);
    const bool isSelection = dialog.GetRange() == CZoPrintDialog::Range::kSelection;
    Job job(title, settings);
    if (!job.Begin(dialog.CreatePrinterDC(), isSelection ? selected : text))
        return Tell(ZO_IDS_JOB_FAILED, title);
    const bool isAll = dialog.GetRange() != CZoPrintDialog::Range::kPages;
    const int from = isAll ? 1 : dialog.GetFromPage();
    const int to = isAll ? job.GetPageCount() : (std::min)(dialog.GetToPage(), job.GetPageCount());
    if (from > to) {
        CString message;
        message.Format(String(ZO_IDS_JOB_FEW_PAGES), job.GetPageCount());
        AfxMessageBox(message, MB_ICONEXCLAMATION);
        return;
    }
    CZoAbortDialog progress(&owner);
    const LONGLONG length =
        LONGLONG{dialog.GetDocumentCopies()} * dialog.GetPageCopies() * static_cast<LONGLONG>(to - from + 1);
    const BOOL isShown = progress.Start(String(ZO_IDS_JOB_TITLE), title, length); // else the job goes on without it
    if (isShown)
        job.AttachTo(progress);
    const BOOL isPrinted = job.Print(dialog, from, to, progress);
    const BOOL isCancelled = progress.IsCancelled();
    progress.Finish();
    if (!isPrinted && !isCancelled)
        Tell(ZO_IDS_JOB_FAILED, title);
}
