/// \file
/// The dialog in which a folder is chosen: a tree, and a field for its path.
#pragma once

#include <zogbl/dialog.h>

#include <commctrl.h>

/// The system's common controls, loaded on first use: most programs of the suite never need them.
class CommonControls {
public:
    CommonControls();
    ~CommonControls();
    CommonControls(const CommonControls&) = delete;
    CommonControls& operator=(const CommonControls&) = delete;

    bool AreThere() const { return m_createList != nullptr && m_addMasked != nullptr && m_destroyList != nullptr; }
    /// The pictures of drives and folders, in their order. \return null on failure
    HIMAGELIST CreatePlacePictures() const;
    void Destroy(HIMAGELIST list) const { m_destroyList(list); }

private:
    HMODULE m_library;
    decltype(&ImageList_Create) m_createList = nullptr;
    decltype(&ImageList_AddMasked) m_addMasked = nullptr;
    decltype(&ImageList_Destroy) m_destroyList = nullptr;
};

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
    HWND Tree() const;
    void Prepare();
    HTREEITEM AddItem(HTREEITEM parent, LPCSTR text, int picture, int root);
    void AddRoot(const CString& root);
    /// Lists the folders in that of an item anew. \return FALSE, with all as it was, when it cannot be read
    bool Fill(HTREEITEM item);
    bool FillOnce(HTREEITEM item);
    HTREEITEM FindChild(HTREEITEM parent, LPCSTR name) const;
    HTREEITEM FindRoot(const CString& root) const;
    TVITEMA ItemOf(HTREEITEM item, UINT mask, char* text = nullptr, int size = 0) const;
    CString PathOf(HTREEITEM item) const;
    HTREEITEM Selected() const;
    void Select(const CString& folder);
    void ShowPath(const CString& path);
    LRESULT OnTreeNotify(NMHDR* header);
    LRESULT TakeNewName(const TVITEMA& item);
    void TakePath(const CString& typed);
    void Refuse(UINT message, LPCSTR path);

    CommonControls m_controls; // the tree's library
    HIMAGELIST m_pictures = nullptr;
    LPCSTR m_pszStart;
    LPCSTR m_pszTitle;
    LPCSTR m_pszInstruction;
    UINT m_nHelpContext;
    CString m_csPath;
    CStringArray m_csRoots;       // of the tree's first level
    bool m_bSelecting = false;    // the tree is being opened down to a folder
    HTREEITEM m_hNamed = nullptr; // the new folder while it gets its name; no other is renamed
};
