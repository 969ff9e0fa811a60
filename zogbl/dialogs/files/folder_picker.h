/// \file
/// The dialog in which a folder is chosen: a tree, and a field for its path.
#pragma once

#include <zogbl/dialog.h>

#include "file_controls.h"
#include "folder_tree.h"

/// Asks whether to create a folder, and creates it with all above it; asks again as long as it fails.
/// \param helpContext of the question. \return whether it is there. Throws CMemoryException*.
bool OfferToCreateFolder(LPCSTR folder, UINT helpContext);

/// Drives are read in threads, as by the form for files: Cancel works while one is being opened. A folder is created
/// and named by this thread, on a drive that has just answered.
class FolderPicker : public CZoDialog {
public:
    /// \param start, title, instruction may be null; they must live until DoModal has returned
    FolderPicker(LPCSTR start, LPCSTR title, LPCSTR instruction, UINT helpContext, CWnd* parent);

    /// \return IDOK, IDCANCEL; -1 when the dialog cannot be made or memory has run out
    INT_PTR DoModal() override;
    /// After IDOK the folder chosen; it exists.
    const CString& GetPath() const { return m_csPath; }

    BOOL PreTranslateMessage(MSG* message) override; ///< Enter and Escape end the naming of a folder first

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void ReloadTexts() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    afx_msg void OnNewFolder();
    afx_msg void OnPathTyped();
    afx_msg void OnTimer(UINT_PTR id);
    DECLARE_MESSAGE_MAP()

private:
    static constexpr UINT_PTR kLookTimer = 1;

    /// What is done with an answer.
    enum class Purpose {
        kStart,     ///< the folder to begin with is selected
        kOpen,      ///< what is in a folder is listed
        kNewFolder, ///< a folder is made in it
        kTake       ///< it is the one chosen, if it is there
    };

    void Prepare();
    void StartInFirst();
    void Ask(Purpose purpose, const CString& target, HTREEITEM item, PlaceQuestion question);
    void AskItem(Purpose purpose, HTREEITEM item);
    void GiveUp();
    void TakeAnswer();
    void TakeStart(const PlaceAnswer& answer);
    void TakeContents(const PlaceAnswer& answer);
    void MakeFolder(const PlaceAnswer& answer);
    void TakePath(const PlaceAnswer& answer);
    void LookUp(const CString& typed);
    void ShowPath(const CString& path);
    void ShowInstruction();
    LRESULT OnTreeNotify(NMHDR* header);
    LRESULT TakeNewName(const TVITEMA& item);
    void Refuse(UINT message, LPCSTR path);

    FolderTree m_tree;
    FolderLabel m_label; // the instruction, or what is being opened
    LPCSTR m_pszStart;
    LPCSTR m_pszTitle;
    LPCSTR m_pszInstruction;
    UINT m_nHelpContext;
    CString m_csPath;
    CString m_csInstruction;             // in the present language
    BackgroundPtr<PlaceWork> m_work;     // null: nothing is being opened
    Purpose m_purpose = Purpose::kStart; // of it
    CString m_csTarget;                  // of it
    HTREEITEM m_hTarget = nullptr;       // of it, if it is in the tree
    HTREEITEM m_hNamed = nullptr;        // the new folder while it gets its name; no other is renamed
};
