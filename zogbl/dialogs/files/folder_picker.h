/// \file
/// The dialog in which a folder is chosen: a tree, and a field for its path.
#pragma once

#include <zogbl/dialog.h>

#include <afxcmn.h>

/// Asks whether to create a folder, and creates it with all above it; asks again as long as it fails.
/// \param helpContext of the question. \return whether it is there. Throws CMemoryException*.
bool OfferToCreateFolder(LPCSTR folder, UINT helpContext);

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
    DECLARE_MESSAGE_MAP()

private:
    void Prepare();
    void MakePictures();
    HTREEITEM AddItem(HTREEITEM parent, LPCSTR text, int picture, int root);
    void AddRoot(const CString& root);
    /// Lists the folders in that of an item anew. \return FALSE, with all as it was, when it cannot be read
    bool Fill(HTREEITEM item);
    bool FillOnce(HTREEITEM item);
    HTREEITEM FindChild(HTREEITEM parent, LPCSTR name) const;
    HTREEITEM FindRoot(const CString& root) const;
    CString PathOf(HTREEITEM item) const;
    void Select(const CString& folder);
    void ShowPath(const CString& path);
    LRESULT OnTreeNotify(NMHDR* header);
    LRESULT TakeNewName(const TVITEMA& item);
    void TakePath(const CString& typed);
    void Refuse(UINT message, LPCSTR path);

    CImageList m_pictures; // of drives and folders, in their order
    CTreeCtrl m_tree;
    LPCSTR m_pszStart;
    LPCSTR m_pszTitle;
    LPCSTR m_pszInstruction;
    UINT m_nHelpContext;
    CString m_csPath;
    CStringArray m_csRoots;       // of the tree's first level
    bool m_bSelecting = false;    // the tree is being opened down to a folder
    HTREEITEM m_hNamed = nullptr; // the new folder while it gets its name; no other is renamed
};
