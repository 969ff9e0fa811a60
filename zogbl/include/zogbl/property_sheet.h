/// \file
/// The base classes of the suite's property sheets.
#pragma once

#include <zogbl/export.h>

#include <afxdlgs.h>

#include <memory>

class DialogTemplate;

/// A page whose template comes from the user's language, as CZoDialog's does; the template's title stands on the tab.
/// Its texts follow a change of language while the sheet is open.
class ZOGBL_API CZoPropertyPage : public CPropertyPage {
public:
    explicit CZoPropertyPage(UINT templateId);
    ~CZoPropertyPage() override;
    CZoPropertyPage(const CZoPropertyPage&) = delete;
    CZoPropertyPage& operator=(const CZoPropertyPage&) = delete;

    BOOL IsCreated() const { return m_hWnd != nullptr; } ///< whether the page has been shown in this sheet

protected:
    friend class CZoPropertySheet;

    /// Sets the texts of the controls anew; override as CZoDialog::ReloadTexts.
    virtual void ReloadTexts();

private:
    BOOL LoadTemplate();

    UINT m_nTemplateId;
    std::unique_ptr<DialogTemplate> m_template; // for the life of the sheet's window
};

/// A modal property sheet with OK, Cancel and Apply in the user's language, which follow a change of it while the sheet
/// is open. It opens in the middle of its owner. The focus goes with the page, and from Apply to OK once all is applied.
/// Derived classes own their pages, as members, and add them in their constructor.
class ZOGBL_API CZoPropertySheet : public CPropertySheet {
public:
    /// \param titleId the string that is the title; a title given as text does not follow the language
    /// \param parent null: the main window of the thread \param firstPage the page shown first, from 0
    /// Throws CMemoryException*.
    explicit CZoPropertySheet(UINT titleId, CWnd* parent = nullptr, UINT firstPage = 0);
    explicit CZoPropertySheet(LPCSTR title, CWnd* parent = nullptr, UINT firstPage = 0);
    ~CZoPropertySheet() override;
    CZoPropertySheet(const CZoPropertySheet&) = delete;
    CZoPropertySheet& operator=(const CZoPropertySheet&) = delete;

    /// Pages of this sheet are CZoPropertyPages. Throws CMemoryException*.
    void AddPage(CZoPropertyPage* page) { CPropertySheet::AddPage(page); }
    CZoPropertyPage* GetPage(int index) const { return static_cast<CZoPropertyPage*>(CPropertySheet::GetPage(index)); }

    /// \return IDOK, IDCANCEL, what EndDialog was given; -1 also when nobody has a page's template, or memory has run out.
    INT_PTR DoModal() override;

    BOOL OnInitDialog() override;

protected:
    /// Sets title, tabs, buttons and the texts of all pages anew. Override to renew texts that were set at run time, after
    /// calling this.
    virtual void ReloadTexts();
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void ReloadButtons();
    void PassFocusOn(HWND before);

    UINT m_nTitleId = 0;
    bool m_bCloseOnly = false; // OK says Close
    int m_nMessages = 0;       // being handled, one within the other
};
