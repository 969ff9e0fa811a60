/// \file
/// The pages of the tools editor, which show one item at a time.
#pragma once

#include <zogbl/property_sheet.h>
#include <zogbl/tool_item.h>

/// To the sheet, from its general page: the user changes the menu text of the item in lParam.
constexpr UINT ZO_TLM_MENU_TEXT_CHANGED = WM_APP + 2;

/// A page of the tools editor. What is entered goes to the item when the page gives way, when another item is shown and
/// with OK; what a field cannot take is told then, and the page stays. Nothing is thrown.
class ZOGBL_API CTlmBasePage : public CZoPropertyPage {
public:
    explicit CTlmBasePage(UINT templateId);
    ~CTlmBasePage() override;

    /// The item shown; the sheet's. Null shows empty controls. \p item is not read before the page is shown next.
    void SetItem(CTlmItem* item) { m_pItem = item; }
    /// Shows the item, if the page has a window.
    void Load();
    /// Takes the controls over into the item, if the page has a window. \return FALSE when a field does not hold what it
    /// should, which the user has been told of, or memory has run out; the item is as before then
    BOOL Save();
    /// Enables or disables the page with all controls.
    void EnablePage(int enable);
    void SetRunMode(int mode) { m_nRunMode = mode; } ///< kept for applications, of no effect here

    BOOL OnInitDialog() override;
    BOOL OnSetActive() override;
    BOOL OnKillActive() override;

protected:
    /// Enables what the state of other controls calls for; called when the page is enabled.
    virtual void UpdateControls() {}

    CTlmItem* GetItem() const { return m_pItem; }
    HWND Control(int id) const { return ::GetDlgItem(m_hWnd, id); }
    /// Enables an edit field, its spin buttons and its label, if the page is enabled.
    void EnableField(int edit, BOOL enable) const;
    BOOL IsChecked(int check) const;
    /// Shows or takes bits of a number by a check box.
    static void ExchangeFlag(CDataExchange* exchange, int check, DWORD& flags, DWORD bits);
    /// Shows or takes a number from 1 to \p maximum. One whose field is disabled is not insisted on.
    void ExchangeNumber(CDataExchange* exchange, int edit, DWORD& number, int maximum) const;
    /// Shows or takes the text of a field of \p size bytes.
    static void ExchangeText(CDataExchange* exchange, int edit, char* field, size_t size);

    /// The record that DoDataExchange works on: a copy of the item's, which becomes the item's own once the whole page
    /// has been taken over.
    ZoToolItemRecord m_record;
    int m_nRunMode = 0;

private:
    BOOL Exchange(BOOL save);

    CTlmItem* m_pItem = nullptr;
    int m_bEnabled = TRUE;
};

/// What the menu shows, and which program it starts.
class ZOGBL_API CTlmGeneralPage : public CTlmBasePage {
public:
    CTlmGeneralPage();

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void ReloadTexts() override;
    void UpdateControls() override; ///< the arguments are called default ones if the user is asked for them
    afx_msg void OnAsk();
    afx_msg void OnMenuText();
    afx_msg void OnBrowseProgram();
    afx_msg void OnBrowseFolder();
    DECLARE_MESSAGE_MAP()
};

/// Place, size and state of the program's window.
class ZOGBL_API CTlmWindowPage : public CTlmBasePage {
public:
    CTlmWindowPage();

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void UpdateControls() override;
    afx_msg void OnUse();
    DECLARE_MESSAGE_MAP()
};

/// The program's console. Full screen is asked about when it is switched on.
class ZOGBL_API CTlmConsolePage : public CTlmBasePage {
public:
    CTlmConsolePage();

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void UpdateControls() override;
    afx_msg void OnUse();
    DECLARE_MESSAGE_MAP()
};

/// Priority and kind of the process.
class ZOGBL_API CTlmOptionsPage : public CTlmBasePage {
public:
    CTlmOptionsPage();

protected:
    void DoDataExchange(CDataExchange* pDX) override;
};
