/// \file
/// Texts and templates of the user's language, and windows made from them.
#pragma once

#include <zogbl/resource_lookup.h>

#include <afxwin.h>

#include <memory>

/// A copy of a dialog template, for the language library may go while the dialog is open. Empty when nobody has the
/// template or memory has run out.
class DialogTemplate {
public:
    DialogTemplate() = default;
    explicit DialogTemplate(UINT templateId);

    /// Makes it that of a child of another dialog, without frame and title, to be shown when it is complete.
    void MakeChild();
    CSize GetSize() const; ///< in dialog units; 0 by 0 when empty
    LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_copy.get()); }

private:
    std::unique_ptr<BYTE[]> m_copy;
};

/// Sets title and texts of the controls of \p dialog anew, as the template of the present language has them; controls
/// that the template leaves empty keep what they show. Without memory the rest stays as it is.
void ReloadDialogTexts(CWnd& dialog, UINT templateId);

/// A string of the present language; empty if nobody has it. Throws CMemoryException*.
CString LoadText(UINT id);
/// A string of the present language with texts in place of its %s. Throws CMemoryException*.
CString LoadText(UINT id, LPCSTR first, LPCSTR second = "");

/// The title of a dialog template in the present language. Throws CMemoryException*.
CString DialogTitle(UINT templateId);

/// All texts of a dialog template in the present language: its title and those of its controls, each with a line end
/// behind it. Throws CMemoryException*.
CString TemplateTexts(UINT templateId);

/// The text of any window of the process. Throws CMemoryException*.
CString WindowText(HWND window);
