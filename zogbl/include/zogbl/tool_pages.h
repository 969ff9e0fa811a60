/// \file
/// The pages of the tools editor. They show one item at a time.
#pragma once

#include <zogbl/property_sheet.h>
#include <zogbl/tool_item.h>

/// Message to the sheet from its general page: the user changes the menu text of the item in lParam.
constexpr UINT ZO_TLM_MENU_TEXT_CHANGED = WM_APP + 2;

/// A page of the tools editor. The input goes to the item when another page or item is shown, and with OK. If a field
/// has wrong input, the user is told and the page stays. Nothing is thrown.
class ZOGBL_API CTlmBasePage : public CZoPropertyPage {
public:
    explicit CTlmBasePage(UINT templateId);
    ~CTlmBasePage() override;

    /// The item shown; it belongs to the sheet. Null: the controls are empty. \p item is not read before the page is
    /// shown next.
    void SetItem(CTlmItem* item) { m_pItem = item; }
    /// Shows the item, if the page has a window.
    void Load();
    /// Copies the controls to the item, if the page has a window. \return FALSE, with the item as before, if a field
    /// has wrong input, which the user has been told, or memory has run out
    BOOL Save();
    /// Enables or disables all controls of the page.
    void EnablePage(int enable);
    void SetRunMode(int mode) { m_nRunMode = mode; } ///< kept for applications; it has no effect here

    BOOL OnInitDialog() override;
    BOOL OnSetActive() override;
    BOOL OnKillActive() override;

protected:
    /// Enables controls according to the state of others. Called when the page is enabled.
    virtual void UpdateControls() {}

    CTlmItem* GetItem() const { return m_pItem; }
    HWND Control(int id) const { return ::GetDlgItem(m_hWnd, id); }
    /// Enables an edit field, its spin buttons and its label, if the page is enabled.
    void EnableField(int edit, BOOL enable) const;
    BOOL IsChecked(int check) const;
    /// Shows bits of a number in a check box, or takes them from it.
    static void ExchangeFlag(CDataExchange* exchange, int check, DWORD& flags, DWORD bits);
    /// Shows a number or takes it, from 1 to \p maximum. If the field is disabled, a wrong number is ignored.
    void ExchangeNumber(CDataExchange* exchange, int edit, DWORD& number, int maximum) const;
    /// Shows or takes a text; its field has \p size bytes.
    static void ExchangeText(CDataExchange* exchange, int edit, char* field, size_t size);

    /// The record for DoDataExchange: a copy of the item's, which is copied back after the whole page has been taken.
    ZoToolItemRecord m_record;
    int m_nRunMode = 0;

private:
    BOOL Exchange(BOOL save);

    CTlmItem* m_pItem = nullptr;
    int m_bEnabled = TRUE;
};

/// The item's texts in the menu, and the program that it starts.
class ZOGBL_API CTlmGeneralPage : public CTlmBasePage {
public:
    CTlmGeneralPage();

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void ReloadTexts() override;
    void UpdateControls() override; ///< if the user is asked for them, the arguments are called default ones
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

/// The program's console. The user is asked when he switches full screen on.
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
