/// \file
/// The dialog that stands beside a long job.
#pragma once

#include <zogbl/dialog.h>
#include <zogbl/progress_bar.h>

/// Shows how far a long job of this thread has come and how long it will still take, and lets the user end it. The job
/// asks often whether to go on; in between the windows of the thread live, and a click is answered however much they
/// have to do. While the user is asked whether to end it, the job stands still. Enter alone never ends it: the button
/// has the focus, but the question proposes No.
///
///     CZoAbortDialog dialog(this);
///     dialog.Start("Send", "The table is being sent...", bytes);
///     for (LONGLONG sent = 0; sent < bytes && dialog.SetPosition(sent); sent += SendNextPart())
///         ;
///     const BOOL isWhole = !dialog.IsCancelled();
///     dialog.Finish();
///
/// Nothing is thrown. All functions work without a window, too: there is nothing to see then, and nobody cancels.
class ZOGBL_API CZoAbortDialog : public CZoDialog {
public:
    explicit CZoAbortDialog(CWnd* owner = nullptr); ///< null: the main window of the thread
    ~CZoAbortDialog() override;                     ///< finishes

    /// Shows the dialog and disables its owner. \param title, text shown as they are
    /// \param length of the job, in any unit; 0: unknown
    /// \return FALSE if it cannot be made; the job may go on without it
    BOOL Start(LPCSTR title, LPCSTR text, LONGLONG length);
    /// Enables the owner, then closes the dialog.
    void Finish();

    void SetText(LPCSTR text); ///< what the job is at
    /// From now on something is out that stays if the job ends: the button says "Stop" instead of "Cancel".
    void SetCommitted();

    /// Lets the user act. Call it, or SetPosition, at least ten times a second. A call from within another one returns
    /// at once.
    /// \return FALSE if the job is to end: the user has cancelled it, its owner was destroyed, or the thread is to quit
    BOOL Continue();
    BOOL SetPosition(LONGLONG done); ///< and Continue
    BOOL IsCancelled() const { return m_bCancelled; }

    /// A print job asks this dialog, through SetAbortProc. Many drivers ask seldom, so call SetPosition behind each
    /// page, too, and AbortDoc once the job is to end. Then StartDoc, EndPage and the like may fail, which is no error
    /// to tell: IsCancelled knows. After Finish a cancelled job stays cancelled.
    /// \param printer the job's context; another one takes its place
    /// \return FALSE if the driver refuses it, or the dialog was not started
    BOOL AttachPrinter(HDC printer);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override; ///< does nothing
    void OnCancel() override;
    void ReloadTexts() override;
    void PostNcDestroy() override;

private:
    static BOOL CALLBACK AbortProc(HDC, int);
    void ShowButton();
    void ShowRemaining();

    CZoProgressBar m_bar;
    CString m_csTitle;
    CString m_csText;
    LONGLONG m_nLength = 0;
    HWND m_hDisabled = nullptr; // the owner, if it was enabled
    HDC m_hPrinter = nullptr;
    CZoAbortDialog* m_pOuter = nullptr;
    BOOL m_bCommitted = FALSE;
    BOOL m_bCancelled = FALSE;
    BOOL m_bInside = FALSE; // Continue
    BOOL m_bStarted = FALSE;
    CString m_csRemaining;
};
