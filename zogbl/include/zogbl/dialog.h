/// \file
/// The base class of the suite's dialogs.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// A modal dialog whose template comes from the user's language: from the framework's resource chain or, if no module
/// there has it, from the language library. Its texts follow a change of language while it is open.
class ZOGBL_API CZoDialog : public CDialog {
public:
    /// \param parent null: the main window of the thread
    explicit CZoDialog(UINT templateId, CWnd* parent = nullptr);
    ~CZoDialog() override;
    CZoDialog(const CZoDialog&) = delete;
    CZoDialog& operator=(const CZoDialog&) = delete;

    /// \return as CDialog; -1 also when nobody has the template, or memory has run out.
    INT_PTR DoModal() override;

    /// Shows every dialog and sheet of the suite that is open in the process in the language that is loaded now. An application calls it, from
    /// the thread of its windows, when it reloads its own texts.
    static void ReloadOpenDialogs();

protected:
    /// Sets title and texts of the controls anew, as the template of the present language has them; controls that the
    /// template leaves empty keep what they show. Override to renew texts that were set at run time, after calling this.
    virtual void ReloadTexts();

private:
    UINT m_nTemplateId;
    CWnd* m_pParent;
};
