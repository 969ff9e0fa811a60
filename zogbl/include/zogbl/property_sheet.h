/// \file
/// The base classes of the suite's property sheets.
#pragma once

#include <zogbl/export.h>

#include <afxdlgs.h>

#include <memory>

class DialogTemplate;
class WindowLayout;
struct ZoFollowing;

/// A page whose template comes from the user's language, as CZoDialog's does. The tab shows the template's title. If
/// the language changes while the sheet is open, the page's texts follow.
class ZOGBL_API CZoPropertyPage : public CPropertyPage {
public:
    explicit CZoPropertyPage(UINT templateId);
    ~CZoPropertyPage() override;
    CZoPropertyPage(const CZoPropertyPage&) = delete;
    CZoPropertyPage& operator=(const CZoPropertyPage&) = delete;

    BOOL IsCreated() const { return m_hWnd != nullptr; } ///< whether the page has been shown in this sheet

protected:
    friend class CZoPropertySheet;

    /// Sets the texts of the controls again. Override it like CZoDialog::ReloadTexts.
    virtual void ReloadTexts();
    /// In a sheet that can be made larger: lets controls follow, as CZoDialog::MakeSizable says. Call it in
    /// OnInitDialog, behind the base class's. \return FALSE: no memory; the controls stay where they are
    BOOL MakeSizable(const ZoFollowing* controls, int count);
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    BOOL LoadTemplate();

    UINT m_nTemplateId;
    std::unique_ptr<DialogTemplate> m_template; // for the life of the sheet's window
    std::unique_ptr<WindowLayout> m_layout;     // null: no control follows
};

/// A modal property sheet whose OK, Cancel and Apply are in the user's language instead of the system's, and follow a
/// change of language while the sheet is open.
///
/// It opens in the middle of its owner. The focus goes to each new page, and from Apply to OK after everything is
/// applied. A derived class has its pages as members and adds them in its constructor.
class ZOGBL_API CZoPropertySheet : public CPropertySheet {
public:
    /// \param titleId string with the title. A title given as text does not follow the language.
    /// \param parent null: the main window of the thread
    /// \param firstPage the page shown first, from 0
    /// Throws CMemoryException*.
    explicit CZoPropertySheet(UINT titleId, CWnd* parent = nullptr, UINT firstPage = 0);
    explicit CZoPropertySheet(LPCSTR title, CWnd* parent = nullptr, UINT firstPage = 0);
    ~CZoPropertySheet() override;
    CZoPropertySheet(const CZoPropertySheet&) = delete;
    CZoPropertySheet& operator=(const CZoPropertySheet&) = delete;

    /// Takes only CZoPropertyPages. Throws CMemoryException*.
    void AddPage(CZoPropertyPage* page) { CPropertySheet::AddPage(page); }
    CZoPropertyPage* GetPage(int index) const { return static_cast<CZoPropertyPage*>(CPropertySheet::GetPage(index)); }

    /// \return IDOK, IDCANCEL or the argument of EndDialog; -1, also if a page's template is missing or memory has run
    /// out
    INT_PTR DoModal() override;

    BOOL OnInitDialog() override;

protected:
    /// Sets title, tabs, buttons and the texts of all pages again. An override that renews texts set at run time calls
    /// this first.
    virtual void ReloadTexts();
    /// A page is about to be seen. During the change nothing else is true of it yet.
    virtual void OnPageShown(CZoPropertyPage* /*page*/) {}
    HWND TabControl() const { return reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL)); }
    /// In client coordinates.
    CRect PlaceOf(HWND child) const;
    /// Makes the sheet wider, and moves all that it has to the right. Call it in OnInitDialog. \param distance pixels
    void MakeRoomAtLeft(int distance);
    /// Where the pages stand from now on, instead of where the system puts them.
    /// \param area in client coordinates \param before the control that they follow in the order of Tab
    void SetPagePlace(const CRect& area, HWND before);
    /// The number of a page's template.
    static UINT TemplateOf(const CZoPropertyPage& page) { return page.m_nTemplateId; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    friend class CZoPropertyPage;

    void ReloadButtons();
    void PassFocusOn(HWND before);

    UINT m_nTitleId = 0;
    bool m_bCloseOnly = false; // OK says Close
    int m_nMessages = 0;       // being handled, one within the other
    CRect m_pageArea = {};     // empty: the system's
    HWND m_hBeforePages = nullptr;
};
