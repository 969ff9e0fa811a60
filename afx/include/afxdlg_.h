/// \file
/// Application framework: dialogs. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

/// A dialog from a template resource, found through the resource chain, or from a template in memory, which may ask for
/// common controls: their library is loaded for them. Keys are the dialog's while it is open, modal or not; those of a
/// dialog within another one are the outer one's.
class AFX_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    /// A modal dialog. The name must live until DoModal has returned.
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    /// A modal dialog of the object made without a template. The template must live until DoModal has returned; memory
    /// given as a handle remains the caller's. \return FALSE without one
    virtual BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr);
    /// Shows the dialog, its owner disabled, until EndDialog. \return the result given there, -1 when the dialog could
    /// not be made or the thread is told to quit meanwhile, IDABORT when the window is destroyed otherwise, as with its
    /// owner.
    virtual INT_PTR DoModal();
    /// Also in OnInitDialog: then the dialog is not shown. A modeless dialog is only hidden.
    void EndDialog(int nResult);

    /// Makes a modeless dialog of the object made without a template; DestroyWindow ends it. It is shown by its
    /// template or ShowWindow. When no window comes of it, PostNcDestroy has been called, as by CreateEx.
    /// \param pParentWnd null: the main window of the thread
    virtual BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = nullptr);

    /// From dialog units to pixels, by the dialog's font.
    void MapDialogRect(LPRECT lpRect) const { ::MapDialogRect(m_hWnd, lpRect); }
    void NextDlgCtrl() const { SendMessage(WM_NEXTDLGCTL, 0, FALSE); }
    void PrevDlgCtrl() const { SendMessage(WM_NEXTDLGCTL, 1, FALSE); }
    void GotoDlgCtrl(CWnd* pWndCtrl);
    /// The button that Enter presses. \return its identifier with DC_HASDEFID above it, 0 when there is none
    DWORD GetDefID() const { return static_cast<DWORD>(SendMessage(DM_GETDEFID)); }
    void SetDefID(UINT nID) { SendMessage(DM_SETDEFID, nID); }

    /// Fills the controls by UpdateData. \return TRUE unless the override gave the focus to a control.
    virtual BOOL OnInitDialog();
    /// Told of the font that the controls will have, before they are made.
    virtual void OnSetFont(CFont*) { Default(); }

    /// Commands, of numbers from 0x8000 to 0xEFFF, that the dialog does not answer go to the window that owns it (of a
    /// child its parent), then to the application.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    CDialog() = default;

    virtual void OnOK(); ///< takes over the controls' data by UpdateData; if that fails the dialog stays
    virtual void OnCancel();
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT HandleSetFont(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    LPCSTR m_lpszTemplateName = nullptr;
    CWnd* m_pParentWnd = nullptr;

private:
    INT_PTR RunModal(HINSTANCE module, LPCDLGTEMPLATE dialogTemplate);
    BOOL CreateModeless(HINSTANCE module, LPCDLGTEMPLATE dialogTemplate, const CWnd* parent);

    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;
    HGLOBAL m_hDialogTemplate = nullptr;
    BOOL m_bModal = FALSE; // in DoModal
};
