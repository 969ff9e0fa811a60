#include <zogbl/language_dialog.h>

#include <common/without_throwing.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"

#include <cstdlib>
#include <utility>

namespace {

constexpr DWORD kUnitedStatesEnglish = 0x0409;

struct Naming {
    LCTYPE languageItem;
    LCTYPE countryItem;
    DWORD languagesMode; // of the box of languages
    DWORD systemMode;    // of the box of locales
    UINT button;
};
constexpr Naming kNamings[] = {
    {LOCALE_SNATIVELANGNAME, LOCALE_SNATIVECTRYNAME, ZoLcidNativeLanguage, ZoLcidNativeLanguageCountry,
     ZO_IDC_LANGUAGE_NATIVE},
    {LOCALE_SLANGUAGE, LOCALE_SCOUNTRY, ZoLcidLanguage, ZoLcidLanguageCountry, ZO_IDC_LANGUAGE_LOCALIZED},
    {LOCALE_SENGLANGUAGE, LOCALE_SENGCOUNTRY, ZoLcidEnglishLanguage, ZoLcidEnglishLanguageCountry,
     ZO_IDC_LANGUAGE_ENGLISH},
};

bool IsDoubleByteSystem() { return GetSystemMetrics(SM_DBCSENABLED) != 0; }

/// Takes the locales that the system enumerates, which hands no context on.
CZoFlagLcidList* g_enumerated = nullptr;
DWORD g_enumeratedMode = 0;

BOOL CALLBACK AddLocale(LPSTR identifier)
{
    g_enumerated->AddLcidCode(std::strtoul(identifier, nullptr, 16), g_enumeratedMode);
    return TRUE;
}

} // namespace

BEGIN_MESSAGE_MAP(CZoLanguageSelectionDlg, CZoDialog)
    ON_BN_CLICKED(ZO_IDC_LANGUAGE_NATIVE, OnNativeNames)
    ON_BN_CLICKED(ZO_IDC_LANGUAGE_LOCALIZED, OnLocalizedNames)
    ON_BN_CLICKED(ZO_IDC_LANGUAGE_ENGLISH, OnEnglishNames)
    ON_CBN_SELCHANGE(ZO_IDC_LANGUAGE_INSTALLED, OnLanguageChosen)
    ON_BN_CLICKED(ZO_IDC_LANGUAGE_TOGGLE, OnToggle)
END_MESSAGE_MAP()

CZoLanguageSelectionDlg::CZoLanguageSelectionDlg(const CObArray& languages, CWnd* parent)
    : CZoDialog(ZO_IDD_LANGUAGE_SELECTION, parent), m_nNamingMode(ZO_NAMING_LOCALIZED), m_languages(languages),
      m_installed(TRUE), m_system(TRUE)
{
    if (IsDoubleByteSystem() && ZoGblGetLanguageLCID() == kUnitedStatesEnglish)
        m_nNamingMode = ZO_NAMING_ENGLISH;
    m_installedBox.SetList(&m_installed);
    m_systemBox.SetList(&m_system);
}

CZoLanguageSelectionDlg::~CZoLanguageSelectionDlg() = default;

void CZoLanguageSelectionDlg::DoDataExchange(CDataExchange* pDX)
{
    CZoDialog::DoDataExchange(pDX);
    DDX_Control(pDX, ZO_IDC_LANGUAGE_INSTALLED, m_installedBox);
    DDX_Control(pDX, ZO_IDC_LANGUAGE_SYSTEM, m_systemBox);
    DDX_Radio(pDX, ZO_IDC_LANGUAGE_NATIVE, m_nNamingMode);
    DDX_Check(pDX, ZO_IDC_LANGUAGE_CHECK, m_bChecked);
    DDX_Text(pDX, ZO_IDC_LANGUAGE_OF_THREAD, m_csThreadLanguage);
    DDX_Text(pDX, ZO_IDC_LANGUAGE_CONVERTED, m_csConvertedLanguage);
    DDX_Text(pDX, ZO_IDC_LANGUAGE_OF_USER, m_csUserLanguage);
    DDX_Text(pDX, ZO_IDC_LANGUAGE_OF_LOCALE, m_csUserLocaleLanguage);
}

BOOL CZoLanguageSelectionDlg::OnInitDialog()
{
    if (!WithoutThrowing([this] { Prepare(); }))
        EndDialog(-1);
    return TRUE;
}

/// Throws CMemoryException*.
void CZoLanguageSelectionDlg::Prepare()
{
    CZoDialog::OnInitDialog();
    const int height = WindowFontDC(m_hWnd).GetLineHeight();
    m_installedBox.SetDesiredHeight(height);
    m_systemBox.SetDesiredHeight(height);
    SetNamingMode(m_nNamingMode);
    FillSystemList();
    FillLanguages();
    RefreshNames();
    SelectCurrentLanguage();
    MeasureHeights();
    CenterWindow();
    ShowHeight(m_nCollapsedHeight);
}

// Lists ---------------------------------------------------------------------------------------------------------------

void CZoLanguageSelectionDlg::FillSystemList()
{
    g_enumerated = &m_system;
    g_enumeratedMode = kNamings[m_nNamingMode].systemMode;
    EnumSystemLocalesA(&AddLocale, LCID_INSTALLED);
    g_enumerated = nullptr;
    m_systemBox.ResetInformation();
    m_systemBox.SelectLcid(GetUserDefaultLCID());
}

bool CZoLanguageSelectionDlg::IsInstalled(DWORD languageId) const
{
    for (INT_PTR i = 0; i < m_languages.GetSize(); ++i) {
        if (static_cast<const CZoLanguageEntry*>(m_languages.GetAt(i))->m_dwLanguageId == languageId)
            return true;
    }
    return false;
}

/// Offers the languages that the system knows as well, in the order of its list.
void CZoLanguageSelectionDlg::FillLanguages()
{
    for (int i = 0; i < m_systemBox.GetCount(); ++i) {
        const UINT id = static_cast<const CZoFlagLcid*>(m_systemBox.GetItemDataPtr(i))->GetLcidValue();
        if (IsInstalled(id))
            m_installed.AddLcidCode(id, ZoLcidEnglishLanguageCountry);
    }
    m_installedBox.ResetInformation();
    m_installedBox.SelectLcid(m_dwLanguageId);
}

void CZoLanguageSelectionDlg::SelectCurrentLanguage()
{
    for (INT_PTR i = 0; i < m_languages.GetSize(); ++i) {
        const auto* entry = static_cast<const CZoLanguageEntry*>(m_languages.GetAt(i));
        if (entry->m_nCurrent != 0)
            m_installedBox.SelectLcid(entry->m_dwLanguageId);
    }
    m_dwLanguageId = m_installedBox.GetLcidCode();
}

void CZoLanguageSelectionDlg::OnLanguageChosen()
{
    m_dwLanguageId = m_installedBox.GetLcidCode();
    // Its names would have to be shown in double-byte characters otherwise, which English may lack a font for.
    if (m_dwLanguageId == kUnitedStatesEnglish && IsDoubleByteSystem() && m_nNamingMode != ZO_NAMING_ENGLISH)
        ChooseNaming(ZO_NAMING_ENGLISH); // which moves the check from the other button
}

// Names ---------------------------------------------------------------------------------------------------------------

void CZoLanguageSelectionDlg::SetNamingMode(int mode)
{
    m_nNamingMode = mode;
    m_languageItem = kNamings[mode].languageItem;
    m_countryItem = kNamings[mode].countryItem;
}

void CZoLanguageSelectionDlg::ChooseNaming(int mode)
{
    UpdateData(TRUE); // what else was entered is kept
    SetNamingMode(mode);
    RefreshNames();
}

void CZoLanguageSelectionDlg::OnNativeNames() { ChooseNaming(ZO_NAMING_NATIVE); }
void CZoLanguageSelectionDlg::OnLocalizedNames() { ChooseNaming(ZO_NAMING_LOCALIZED); }
void CZoLanguageSelectionDlg::OnEnglishNames() { ChooseNaming(ZO_NAMING_ENGLISH); }

void CZoLanguageSelectionDlg::RefreshNames()
{
    RefreshInformation();
    m_installedBox.SetTextMode(kNamings[m_nNamingMode].languagesMode);
    m_systemBox.SetTextMode(kNamings[m_nNamingMode].systemMode);
}

void CZoLanguageSelectionDlg::RefreshInformation()
{
    const std::pair<CString*, LCID> texts[] = {
        {&m_csThreadLanguage, GetThreadLocale()},
        {&m_csConvertedLanguage, ConvertDefaultLocale(LOCALE_USER_DEFAULT)},
        {&m_csUserLanguage, MAKELCID(GetUserDefaultLangID(), SORT_DEFAULT)},
        {&m_csUserLocaleLanguage, GetUserDefaultLCID()},
    };
    WithoutThrowing([&] { // for information only
        for (const auto& [text, locale] : texts) {
            char name[128] = "";
            GetLocaleInfoA(locale, m_languageItem, name, sizeof name);
            *text = name;
        }
    });
    UpdateData(FALSE);
}

/// Texts of the template have been renewed: what stands in other texts is in no language of the suite's.
void CZoLanguageSelectionDlg::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    SetToggleCaption();
}

// The part that is folded away ----------------------------------------------------------------------------------------

void CZoLanguageSelectionDlg::MeasureHeights()
{
    CRect window, client, frame;
    GetWindowRect(&window);
    GetClientRect(&client);
    GetDlgItem(ZO_IDC_LANGUAGE_FRAME)->GetWindowRect(&frame);
    CPoint bottom = frame.BottomRight();
    ::ScreenToClient(m_hWnd, &bottom);
    m_nFullHeight = window.Height();
    m_nCollapsedHeight = bottom.y + window.Height() - client.Height();
}

void CZoLanguageSelectionDlg::ShowHeight(int height)
{
    CRect window;
    GetWindowRect(&window);
    SetWindowPos(nullptr, 0, 0, window.Width(), height, SWP_NOMOVE | SWP_NOZORDER);
    m_systemBox.EnableWindow(height == m_nFullHeight); // what nobody sees is not to get the focus
}

void CZoLanguageSelectionDlg::OnToggle()
{
    m_bExpanded = !m_bExpanded;
    ShowHeight(m_bExpanded ? m_nFullHeight : m_nCollapsedHeight);
    SetToggleCaption();
}

/// The last two characters of the caption tell what the button does.
void CZoLanguageSelectionDlg::SetToggleCaption()
{
    CWnd* button = GetDlgItem(ZO_IDC_LANGUAGE_TOGGLE);
    WithoutThrowing([&] {
        CString caption;
        button->GetWindowText(caption);
        const int length = caption.GetLength();
        button->SetWindowText(caption.Left(length > 2 ? length - 2 : 0) + (m_bExpanded ? "<<" : ">>"));
    });
}
