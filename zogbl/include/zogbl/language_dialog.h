/// \file
/// The dialog in which the user chooses the language of the suite.
#pragma once

#include <zogbl/dialog.h>
#include <zogbl/flag_lcid_box.h>

/// How the dialog names languages and countries.
constexpr int ZO_NAMING_NATIVE = 0;    ///< "Deutsch"
constexpr int ZO_NAMING_LOCALIZED = 1; ///< in the system's own language
constexpr int ZO_NAMING_ENGLISH = 2;

/// Lets the user choose one of the suite's installed languages. A part that is folded at first lists the system's
/// locales.
///
/// Only languages that the system knows, too, are offered. Names are localized at first. They are English on a
/// double-byte system if the suite speaks U.S. English there, or after the user has chosen it: then no double-byte
/// names need to be shown.
class ZOGBL_API CZoLanguageSelectionDlg : public CZoDialog {
public:
    /// \param languages CZoLanguageEntry objects; they belong to the caller and must outlive the dialog
    CZoLanguageSelectionDlg(const CObArray& languages, CWnd* parent);
    ~CZoLanguageSelectionDlg() override;

    /// The language id that the user chose, after IDOK; 0 if the list is empty.
    DWORD GetLanguageId() const { return m_dwLanguageId; }
    BOOL GetCheckBoxState() const { return m_bChecked; } ///< the dialog keeps it; it has no effect
    int GetNamingMode() const { return m_nNamingMode; }

    BOOL OnInitDialog() override; ///< ends the dialog with -1 if memory has run out

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
