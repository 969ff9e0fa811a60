/// \file
/// The editor of tools files.
#pragma once

#include <zogbl/tool_file.h>
#include <zogbl/tool_pages.h>

#include <afxcoll.h>

#include <memory>

constexpr INT_PTR ZO_TLM_MAXIMUM_ITEMS = 31; ///< that the editor lets a file grow to

/// Edits the items of a tools file: a list of them at the left with buttons to add, remove and move, and pages that show
/// the selected one. The items are the sheet's own until SaveFileData; nothing is written by the sheet itself.
///
/// The file is loaded when the sheet opens. The user is told if not all of it could be read, or if its length is not that of
/// whole items, for the rest is lost with OK.
class ZOGBL_API CTlmSheet : public CZoPropertySheet {
public:
    /// \param parent null: the main window of the thread \param firstPage the page shown first, from 0
    /// Throws CMemoryException*.
    CTlmSheet(UINT titleId, CWnd* parent, UINT firstPage = 0);
    CTlmSheet(LPCSTR title, CWnd* parent, UINT firstPage = 0);
    ~CTlmSheet() override;

    /// Enables or disables all pages.
    virtual void EnableAllPages(int enable);
    /// Deletes the pages, the list and the group box. Only for the end of the sheet's life.
    virtual void DeletePages();

    /// The file to edit. Loaded at once when the sheet is open. Without memory for the path there is none.
    void SetFilePath(const char* path);
    /// Writes the items to the file. \return 0 or a code of CTlmFile::SaveFileData, ZO_TLM_NO_NAME, ZO_TLM_NO_MEMORY
    DWORD SaveFileData();

    /// Kept for applications, and handed on to all pages; of no effect here.
    void SetRunMode(int mode);
    /// The width of the list in dialog units; takes effect when the sheet is opened.
    UINT GetScrollListWidth() const { return m_nListWidth; }
    void SetScrollListWidth(UINT width) { m_nListWidth = width; }
    CListBox* GetListBox() const { return m_list.get(); }
    INT_PTR GetItemCount() const { return m_items.GetSize(); }

    /// Shows the sheet. After IDOK the items are kept, so that it can be shown again with what was entered.
    /// \return as CZoPropertySheet
    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;

protected:
    DWORD
    LoadFileData(); ///< \return 0 or a code of CTlmFile::LoadFileData; the items before are gone in any case but an empty path's
    void FillItemList(); ///< shows the items, the first one selected
    void FreeItemList(); ///< deletes all items
    /// Takes over what the pages show. \return FALSE when a page refuses; it is in front then
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
    CObArray m_items;        // of CTlmItem, owned
    HFONT m_hFont = nullptr; // the sheet's own
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

/// Lets the user edit a tools file. A file that does not exist yet is made with OK. Meanwhile help is the suite's.
///
/// While the file is saved, what it held is kept in a copy beside it ("<path>.zo~", on Win32s '~' as the last character of
/// the extension). If the file cannot be saved, that is put back, the user is told what has become of the file, and may go
/// back to the editor with everything as it was entered; that goes on until it is saved or given up. If the program is
/// killed while it saves, the copy stays, and the user is asked at the next opening whether to put it back. If there is no
/// room for the copy, or another program is saving the file, nothing is written. Nothing is thrown.
ZOGBL_API void EditToolItemFile(const char* path, CWnd* parent);
