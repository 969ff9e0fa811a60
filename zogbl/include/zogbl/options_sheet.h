/// \file
/// The sheet of a program's options.
#pragma once

#include <zogbl/property_sheet.h>
#include <zogbl/status_wnd.h>

#include <afxcmn.h>

class WindowLayout;

/// A sheet with a tree of its pages at the left instead of tabs, a field that searches the pages, and below a window
/// that explains the control under the pointer or with the focus (CZoStatusWnd: by the string that has the control's
/// number). It can be made larger, and opens as it was left: with the same page, in the same size.
///
///     CZoOptionsSheet sheet(IDS_OPTIONS, this, "Options");
///     sheet.AddPage(&workspace);
///     sheet.AddPage(&modem);
///     sheet.AddPage(&dialing, &modem);       // below it in the tree
///     if (sheet.DoModal() == IDOK)
///         ...
///
/// The search finds the pages whose titles and texts have all words, also of pages that were never shown, in the
/// present language. The tree then shows these pages alone, and the first of them is shown, unless the page before
/// is one of them or does not let itself be left. That one is then listed, too.
///
/// While pages are chosen there, the focus stays in the tree or the field. Keys, beside those of every sheet:
///   Tab                   from the field to the tree, into the page, to the buttons
///   Ctrl+Tab, Ctrl+Page   the next or previous page of the tree
///   Up, Down              in the field: the same
///   Enter                 in the field, after words: to the tree
///   Esc                   in the field: empties it; if it is empty, Cancel
class ZOGBL_API CZoOptionsSheet : public CZoPropertySheet {
public:
    static constexpr UINT LAST_PAGE = static_cast<UINT>(-1);

    /// \param name the size is kept under it, as CZoDialog::MakeSizable says, and the page in the key "Pages" beside
    /// it. Null: neither is kept. A string that lives as long as the sheet
    /// \param firstPage the page shown first, from 0; LAST_PAGE: that of last time
    /// Throws CMemoryException*.
    explicit CZoOptionsSheet(UINT titleId, CWnd* parent = nullptr, LPCSTR name = nullptr, UINT firstPage = LAST_PAGE);
    explicit CZoOptionsSheet(LPCSTR title, CWnd* parent = nullptr, LPCSTR name = nullptr, UINT firstPage = LAST_PAGE);
    ~CZoOptionsSheet() override;

    /// Before the sheet is open. \param parent a page that was added before; null, or another one: none. Throws
    /// CMemoryException*.
    void AddPage(CZoPropertyPage* page, CZoPropertyPage* parent = nullptr);

    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void ReloadTexts() override;
    void OnPageShown(CZoPropertyPage* page) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnSearch();
    afx_msg LRESULT OnFollow(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    static constexpr UINT kFollow = WM_APP + 1;

    void Prepare(LPCSTR name);
    BOOL CreateControls();
    void LayOut();
    void SetTexts();

    void Fill();
    HTREEITEM InsertPage(int page);
    int ParentOf(int page) const;
    HTREEITEM ItemOf(int page) const { return static_cast<HTREEITEM>(m_items[page]); }
    int PageOf(HTREEITEM item) const { return static_cast<int>(m_tree.GetItemData(item)); }
    bool ShowPage(int page);
    void SelectShown();
    void Step(bool forward);
    HTREEITEM NextItem(HTREEITEM item, bool forward) const;
    CString FieldText() const;
    bool OnFieldKey(UINT key);

    UINT FindLastPage() const;
    void KeepLastPage() const;

    LPCSTR m_pszName = nullptr;
    CPtrArray m_parents;      // of the pages, by their numbers: pages
    CPtrArray m_items;        // their items in the tree; null: not shown there
    int m_nShown = -1;        // the page that is shown
    bool m_bFilling = false;  // the tree is being changed by the program
    bool m_bChoosing = false; // a page is being shown because it was chosen
    CStatic m_searchLabel;
    CEdit m_search;
    CStatic m_pagesLabel;
    CTreeCtrl m_tree;
    CStatic m_heading;
    CStatic m_line;
    CZoStatusWnd m_status;
    std::unique_ptr<WindowLayout> m_layout;
};
