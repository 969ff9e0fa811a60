/// \file
/// The base class of the suite's dialogs.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

#include <memory>

class LanguageFollower;
class WindowLayout;

/// How a control follows when its dialog is made larger: see CZoDialog::MakeSizable. The numbers are added.
struct ZoFollowing {
    enum : BYTE { kMoveRight = 1, kMoveDown = 2, kWiden = 4, kHeighten = 8 };

    int control; ///< its number
    BYTE how;
};

/// A dialog in the user's language. Unlike CDialog, it also finds its template in the language library, and its
/// texts follow a change of language while it is open.
class ZOGBL_API CZoDialog : public CDialog {
public:
    /// \param templateId looked for as ZoGblFindResourceModule says
    /// \param parent null: the main window of the thread
    explicit CZoDialog(UINT templateId, CWnd* parent = nullptr);
    ~CZoDialog() override;
    CZoDialog(const CZoDialog&) = delete;
    CZoDialog& operator=(const CZoDialog&) = delete;

    /// \return as CDialog; -1 also if no module has the template or memory has run out
    INT_PTR DoModal() override;
    /// Makes a dialog that the program does not wait for; DestroyWindow ends it. \return FALSE if no module has the
    /// template or memory has run out
    BOOL CreateModeless();

    /// Shows all open dialogs and sheets of the process in the language that is loaded now. An application calls it
    /// from the thread of its windows, when it reloads its own texts.
    static void ReloadOpenDialogs();

protected:
    /// Sets the title and the texts of the controls anew, from the template of the present language. A control that is
    /// empty in the template keeps its text. Every control then gets CZoLanguageSupport::GetUpdateMessage(). An
    /// override calls this first and then renews the texts that were set at run time. If it throws an exception of the
    /// framework, the rest of its texts stay as they are; the other dialogs follow.
    virtual void ReloadTexts();

    /// Lets the user make the dialog larger than its template, which has WS_THICKFRAME, and opens it in the size of
    /// last time. Call it in OnInitDialog, behind the base class's and in front of CenterWindow.
    /// \param controls those that follow; the others stay where they are. Copied
    /// \param name the size is kept under it for this user: in the value of this name of the key "Windows" below the
    /// user's key of the program's product. Null: it is not kept. A string that lives as long as the dialog
    /// \return FALSE: no memory; the dialog keeps its size
    BOOL MakeSizable(const ZoFollowing* controls, int count, LPCSTR name);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    static void FollowLanguage(void* what);

    UINT m_nTemplateId;
    CWnd* m_pParent;
    LanguageFollower* m_pFollower = nullptr; // of a dialog that nobody waits for
    std::unique_ptr<WindowLayout> m_layout;  // of a dialog that can be made larger
};
