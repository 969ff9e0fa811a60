/// \file
/// A page of the Workbench: what fills the window beside the list of pages.
#pragma once

#include <afxwin.h>

class Page : public CWnd {
public:
    /// Makes the page's window, hidden, as a child of \p frame.
    BOOL CreatePage(CWnd* frame, UINT id);

    virtual UINT GetTitleId() const = 0;   ///< string with the page's name
    virtual UINT GetCommandId() const = 0; ///< command that shows the page
    /// Loads every text anew, after the page was made and after a change of language.
    virtual void Reload() = 0;
    /// Shows what may have changed while the page was hidden.
    virtual void Refresh() {}

protected:
    virtual void CreateControls() = 0; ///< they get the font by themselves
    virtual void Layout(int width, int height) = 0;
    void LayOutAgain(); ///< after a change of texts

    afx_msg int OnCreate(CREATESTRUCT* create);
    afx_msg void OnSize(UINT type, int width, int height);
    DECLARE_MESSAGE_MAP()
};

/// A string of the user's language.
CString Text(UINT id);

/// Gives a window its menu in the user's language.
void LoadMenuOf(HWND window, UINT id);

/// The font of the Workbench's controls: that of the dialogs.
CFont* ControlFont();

/// Width in pixels of a text in that font.
int TextWidth(const CString& text);

/// Height in pixels of a line of text in that font, leading included.
int LineHeight();
