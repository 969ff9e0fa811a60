/// \file
/// The tree of drives and folders in which a folder is chosen.
#pragma once

#include <afxcmn.h>

#include "drive.h"

/// Reads nothing of a drive but whether a folder on a local one has others in it. All functions throw
/// CMemoryException*.
class FolderTree : public CTreeCtrl {
public:
    /// Lists the drives. What each is and stands for is added when the system answers.
    void Begin();

    CString PathOf(HTREEITEM item) const; ///< empty for null
    CString GetSelectedFolder() const { return PathOf(GetSelectedItem()); }

    /// Lists the folders in that of an item anew.
    void Fill(HTREEITEM item, const FolderContents& contents);
    void Open(HTREEITEM item); ///< as it was filled
    /// Opens the tree down to a folder, and selects it. One that the tree does not list, being hidden, is added.
    /// \param above what the folders that it lies in hold, from the root on, for those that were not filled before
    void Show(const CString& folder, const std::vector<FolderContents>& above);
    bool IsShowing() const { return m_isShowing; } ///< notifications come from Open or Show, not from the user

    void TellWhetherOpens(TVITEMA& item) const; ///< the answer to TVN_GETDISPINFO

protected:
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg LRESULT OnReloadTexts(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    struct Root {
        Drive drive;
        HTREEITEM item;
    };
    class Showing;

    void MakePictures();
    HTREEITEM AddRoot(const CString& root, DWORD patience);
    void Renew(const Root& root);
    HTREEITEM AddFolder(HTREEITEM parent, LPCSTR name);
    HTREEITEM Insert(HTREEITEM parent, LPCSTR text, PlacePicture picture, PlacePicture selected, int opens, int root);
    HTREEITEM FindChild(HTREEITEM parent, LPCSTR name) const;
    HTREEITEM FindRoot(const CString& root) const;
    bool IsLocal(const CString& path) const;

    CImageList m_pictures; // of drives and folders, in their order
    std::vector<Root> m_roots;
    bool m_isShowing = false;
};
