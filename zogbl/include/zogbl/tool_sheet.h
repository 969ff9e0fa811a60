/// \file
/// The editor of tools files.
#pragma once

#include <zogbl/tool_file.h>
#include <zogbl/tool_pages.h>

#include <afxcoll.h>

#include <memory>

constexpr INT_PTR ZO_TLM_MAXIMUM_ITEMS = 31; ///< the editor adds no item beyond this number

/// Edits the items of a tools file. At the left is a list with buttons to add, remove and move items; pages show the
/// selected one. The items belong to the sheet; only SaveFileData writes them.
///
/// The file is loaded when the sheet opens. The user is told if a part of it could not be read, or if its length is not
/// that of whole items: the rest would be lost with OK.
class ZOGBL_API CTlmSheet : public CZoPropertySheet {
public:
    /// \param parent null: the main window of the thread
    /// \param firstPage the page shown first, from 0
    /// Throws CMemoryException*.
    CTlmSheet(UINT titleId, CWnd* parent, UINT firstPage = 0);
    CTlmSheet(LPCSTR title, CWnd* parent, UINT firstPage = 0);
    ~CTlmSheet() override;

    /// Enables or disables all pages.
    virtual void EnableAllPages(int enable);
    /// Deletes the pages, the list and the group box. Only for the end of the sheet's life.
    virtual void DeletePages();

    /// The file to edit. If the sheet is open, the file is loaded at once. Without memory for the path, there is no
    /// file.
    void SetFilePath(const char* path);
    /// Writes the items to the file. \return 0, ZO_TLM_NO_NAME, ZO_TLM_NO_MEMORY or a code of CTlmFile::SaveFileData
    DWORD SaveFileData();

    /// Kept for applications and passed on to all pages; it has no effect here.
    void SetRunMode(int mode);
    /// Width of the list in dialog units; takes effect when the sheet opens.
    UINT GetScrollListWidth() const { return m_nListWidth; }
    void SetScrollListWidth(UINT width) { m_nListWidth = width; }
    CListBox* GetListBox() const { return m_list.get(); }
    INT_PTR GetItemCount() const { return m_items.GetSize(); }

    /// Shows the sheet. After IDOK the items are kept, so the sheet can be shown again with the same input.
    /// \return as CZoPropertySheet
    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;

protected:
    /// Loads the file. The items before are deleted, unless the path is empty.
    /// \return 0, ZO_TLM_NO_NAME, ZO_TLM_NO_MEMORY or a code of CTlmFile::LoadFileData
    DWORD
    LoadFileData();
    void FillItemList(); ///< shows the items, the first one selected
    void FreeItemList(); ///< deletes all items
    /// Takes the input of all pages. \return FALSE if a page refuses; that page is then in front
    BOOL PageToItem();
    void ItemToPage(CTlmItem* item); ///< shows an item, or none, on all pages
    void UpdateControlStates();
    void ReloadTexts() override;

    afx_msg void OnPshAdd();
    afx_msg void OnPshRemove();
    afx_msg void OnPshMoveUp();
    afx_msg void OnPshMoveDown();
    afx_msg void OnSelchangeItem();
    afx_msg LRESULT OnTellLoadFailure(WPARAM, LPARAM);
    afx_msg LRESULT OnMenuTextChanged(WPARAM, LPARAM item);
    DECLARE_MESSAGE_MAP()

private:
    void InitializeData();
    BOOL CreateControls();
    void LoadAndShow();
    CTlmItem* Item(INT_PTR index) const { return static_cast<CTlmItem*>(m_items.GetAt(index)); }
    void ShowRow(INT_PTR index);
    void ShowRow(INT_PTR index, const CString& menuText);
    void RefillList();
    void Select(INT_PTR index);
    void Move(int distance);
    BOOL ChooseProgram(CTlmItem& item);
    void EnableButton(CButton& button, BOOL enable, CButton& neighbour);

    int m_nPagesEnabled = 1;
    UINT m_nListWidth;
    int m_nRunMode = 0;
    int m_nSelected = -1;
    CString m_csFilePath;
    CObArray m_items; // of CTlmItem, owned
    CButton m_add;
    CButton m_remove;
    CButton m_moveUp;
    CButton m_moveDown;
    std::unique_ptr<CButton> m_group;
    std::unique_ptr<CListBox> m_list;
    std::unique_ptr<CTlmGeneralPage> m_generalPage;
    std::unique_ptr<CTlmWindowPage> m_windowPage;
    std::unique_ptr<CTlmConsolePage> m_consolePage;
    std::unique_ptr<CTlmOptionsPage> m_optionsPage;
    CTlmBasePage* m_pages[4] = {};
    CString m_csDescription; // of the file
    BOOL m_bLoaded = FALSE;  // the items are the file's, or what became of them
};

/// Lets the user edit a tools file. A file that does not exist is made with OK. Meanwhile the help is the suite's.
///
/// While the file is saved, its old contents are kept in a copy beside it: "<path>.zo~", on Win32s with '~' as the last
/// character of the extension. Nothing is written if there is no room for the copy or another program is saving the
/// file.
///
/// If the file cannot be saved, the old contents are put back. The user is told the state of the file and may go back
/// to the editor with the same input, until the file is saved or he gives up. If the program is killed while it saves,
/// the copy stays; at the next opening the user is asked whether to put it back. Nothing is thrown.
ZOGBL_API void EditToolItemFile(const char* path, CWnd* parent);
