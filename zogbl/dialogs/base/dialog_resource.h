/// \file
/// Texts and templates of the user's language, and windows made from them.
#pragma once

#include <zogbl/resource_lookup.h>

#include <afxwin.h>

#include <memory>
#include <utility>

/// A copy of a dialog template, for the language library may go while the dialog is open. Empty when nobody has the
/// template or memory has run out.
class DialogTemplate {
public:
    DialogTemplate() = default;
    explicit DialogTemplate(UINT templateId);

    LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_copy.get()); }

private:
    std::unique_ptr<BYTE[]> m_copy;
};

/// Sets title and texts of the controls of \p dialog anew, as the template of the present language has them; controls
/// that the template leaves empty keep what they show. Without memory the rest stays as it is.
void ReloadDialogTexts(CWnd& dialog, UINT templateId);

/// A string of the present language; empty when nobody has it or memory has run out.
CString LoadText(UINT id);

/// The title of a dialog template in the present language. Throws CMemoryException*.
CString DialogTitle(UINT templateId);

/// A dialog or sheet is in the list of those that are open while this lives; they close in the opposite order.
class OpenDialog {
public:
    /// \param reload loads the texts of \p dialog anew
    OpenDialog(CWnd* dialog, void (*reload)(CWnd* dialog))
        : m_dialog(dialog), m_reload(reload), m_outer(std::exchange(s_innermost, this))
    {
    }
    ~OpenDialog() { s_innermost = m_outer; }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;

    static void ReloadAll();

private:
    static OpenDialog* s_innermost;

    CWnd* m_dialog;
    void (*m_reload)(CWnd*);
    OpenDialog* m_outer;
};
