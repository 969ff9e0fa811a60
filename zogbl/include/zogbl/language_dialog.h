/// \file
/// The dialog in which the user chooses the language of the suite.
#pragma once

#include <zogbl/dialog.h>
#include <zogbl/flag_lcid_box.h>

/// How the dialog names languages and countries.
constexpr int ZO_NAMING_NATIVE = 0;    ///< "Deutsch"
constexpr int ZO_NAMING_LOCALIZED = 1; ///< in the system's own language
constexpr int ZO_NAMING_ENGLISH = 2;

/// Shows the suite's installed languages to choose from and, in a part that is folded away at first, the locales of the
/// system.
///
/// Begins with localized names; with English ones on a double-byte system whose suite speaks U.S. English, so that no
/// double-byte names need to be shown.
class ZOGBL_API CZoLanguageSelectionDlg : public CZoDialog {
public:
    /// \param languages CZoLanguageEntry objects; the caller's, which outlive the dialog
    CZoLanguageSelectionDlg(const CObArray& languages, CWnd* parent);
    ~CZoLanguageSelectionDlg() override;

    /// The language id that was chosen when the dialog ended with OK; 0 when the list is empty.
    DWORD GetLanguageId() const { return m_dwLanguageId; }
    BOOL GetCheckBoxState() const { return m_bChecked; } ///< kept by the dialog, of no effect
    int GetNamingMode() const { return m_nNamingMode; }

    BOOL OnInitDialog() override; ///< ends the dialog with -1 when memory has run out

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void ReloadTexts() override;

    afx_msg void OnNativeNames();
    afx_msg void OnLocalizedNames();
    afx_msg void OnEnglishNames();
    afx_msg void OnLanguageChosen();
    afx_msg void OnToggle();
    DECLARE_MESSAGE_MAP()

private:
    void Prepare();
    void SetNamingMode(int mode);
    void ChooseNaming(int mode);
    void FillSystemList();
    void FillLanguages();
    void SelectCurrentLanguage();
    void RefreshInformation();
    void RefreshNames();
    void MeasureHeights();
    void ShowHeight(int height);
    void SetToggleCaption();
    bool IsInstalled(DWORD languageId) const;

    int m_nNamingMode;
    BOOL m_bChecked = FALSE;
    CString m_csThreadLanguage;
    CString m_csConvertedLanguage;
    CString m_csUserLanguage;
    CString m_csUserLocaleLanguage;
    DWORD m_dwLanguageId = 0;
    LCTYPE m_languageItem = LOCALE_SLANGUAGE;
    LCTYPE m_countryItem = LOCALE_SCOUNTRY;
    BOOL m_bExpanded = FALSE;
    int m_nFullHeight = 0;
    int m_nCollapsedHeight = 0;
    const CObArray& m_languages;
    CZoFlagLcidList m_installed; // what the boxes show
    CZoFlagLcidList m_system;
    CFlagLcidComboBox m_installedBox;
    CFlagLcidListBox m_systemBox;
};
