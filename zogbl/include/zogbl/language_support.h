/// \file
/// The language library of a process: which library, where it comes from, and the hidden window that hears of changes.
#pragma once

#include <zogbl/export.h>
#include <zogbl/version_resource.h>

#include <afxwin.h>

/// One installed language, as the registry lists it.
class ZOGBL_API CZoLanguageEntry : public CObject {
public:
    CZoLanguageEntry(DWORD languageId, LPCSTR abbreviation, int current)
        : m_dwLanguageId(languageId), m_csAbbreviation(abbreviation), m_nCurrent(current)
    {
    }

    DWORD m_dwLanguageId;     ///< 16 bits
    CString m_csAbbreviation; ///< the system's three-letter name of the language, for example "ENU"
    int m_nCurrent;           ///< exactly 1 marks the language chosen last
};

/// Finds, loads and frees the language library of the process.
///
/// The registry lists the installed languages, under HKEY_LOCAL_MACHINE, in "\Languages" below the module root key of
/// the asking module. Each language is one value:
///   name        id of the language as "%04x"
///   DWORD data  1 for the current language, 0 for the others
///   text data   understood, too: "0" is not current, any other text is current
///
/// The language library is named after the asking module: the first five characters of the module's file name, the
/// three letters of the language, ".DLL". ZOGBLBRX.DLL and 0x0409 give ZOGBLENU.DLL. The system's search order finds
/// it.
///
/// The object has a hidden window, which stands in a table that all processes of the suite share. In each process, the
/// window made last tells the application of a change. If its object has no language loaded, nobody tells it.
///
/// ZoGblLoadLanguageDLL makes the object of the process. A module with texts of its own uses CZoModuleLanguage. An
/// application makes an object of this class only to let the user choose:
///
///     void CMainWindow::OnChooseLanguage()
///     {
///         CZoLanguageSupport support;       // needs no Create and no load: SelectLanguage does both
///         support.SelectLanguage(this);     // the update message is posted before this returns
///     }
class ZOGBL_API CZoLanguageSupport : public CWnd {
public:
    CZoLanguageSupport();
    explicit CZoLanguageSupport(CWnd* parent);
    ~CZoLanguageSupport() override; ///< destroys the window and frees the language library

    /// Creates the hidden window and enters it in the shared table; if the table is full, the window is left out
    /// without an error. LoadCurrentLanguage and SelectLanguage call this if there is no window.
    ///
    /// So do not keep an object that has a window but no language: the texts of the process would change, and the
    /// application would not be told. \return FALSE if the window cannot be made
    BOOL Create();

    /// The number of the registered message "ZoBrixelLanguageUpdate". It is posted to the application's main window,
    /// without parameters, after another language has been loaded. The window then loads its texts again:
    ///
    ///     const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();
    ///
    ///     BEGIN_MESSAGE_MAP(CMainWindow, CZoFrameWnd)
    ///         ON_REGISTERED_MESSAGE(s_languageMessage, OnLanguageUpdate)
    ///     END_MESSAGE_MAP()
    ///
    ///     LRESULT CMainWindow::OnLanguageUpdate(WPARAM, LPARAM)
    ///     {
    ///         ReloadTexts();                               // the window's own: title, menu, ...
    ///         m_countryBox.SendMessage(s_languageMessage); // each country picker that is in no CZoDialog or sheet
    ///         CZoDialog::ReloadOpenDialogs();
    ///         return 0;
    ///     }
    ///
    /// Dialogs and pages that derive from CZoDialog and CZoPropertyPage take their texts from the templates again, and
    /// pass the message on to their controls. Texts set at run time are renewed by an override of ReloadTexts.
    static UINT GetUpdateMessage();

    /// Writes the chosen language for every installed module, below "\Languages" of the module's key for the version of
    /// the language library: 1 for the language, 0 for all others of the list. Writes nothing if the language is not in
    /// the list or this object has no library loaded. \return always 0; values that cannot be written are left out
    DWORD UpdateAllBrixelLanguages(DWORD languageId);

    /// Whether the calling thread owns the window. Only that thread can destroy it. TRUE if there is no window.
    BOOL IsOnOwnThread() const;

    HINSTANCE GetLibraryHandle() const { return m_hLanguageLibrary; } ///< null if none is loaded
    DWORD GetLCID() const { return m_dwLoadedId; } ///< id of the loaded language; 0 if none is loaded
    /// The system's three-letter name of the loaded language. If none is loaded: of the user's default language,
    /// because the system answers so for id 0.
    CString GetLocaleName() const;

    /// Loads the current language of the registry's list: the first entry marked with exactly 1, else the first entry.
    /// \param path file of the asking module
    /// \return FALSE if the window cannot be made, there is no list, an empty list or no library, or memory has run
    /// out. A library that was loaded before stays.
    virtual BOOL LoadCurrentLanguage(LPCSTR path);
    /// LoadSpecificLanguage with the default locale of the user or of the system.
    virtual BOOL LoadUserDefaultLanguage(LPCSTR path, BOOL persist);
    virtual BOOL LoadSystemDefaultLanguage(LPCSTR path, BOOL persist);
    /// Loads a language of the list and marks it as current in the list; if \p persist, also in the registry.
    /// \param languageId compared as a whole: a locale id with sort bits matches no language
    /// \return TRUE at once, with nothing written, if \p languageId equals GetLCID(), so also for 0 if nothing is
    /// loaded. FALSE as LoadCurrentLanguage, but a window is not needed.
    virtual BOOL LoadSpecificLanguage(DWORD languageId, LPCSTR path, BOOL persist);

    /// Lets the user choose a language in a dialog with the owner \p parent. If the object has no library, it first
    /// gets a window and the language of the process, or the current language if the process has none.
    ///
    /// If the dialog ends with OK, the choice is written for every installed module, and all running programs of the
    /// suite change their language before this returns. A program that hangs is waited for two seconds; it changes when
    /// it goes on. Win32s cannot change: a message says that the choice waits for the next start. \return always TRUE
    virtual BOOL SelectLanguage(CWnd* parent);

    /// \return always TRUE; \p result is empty if memory has run out
    virtual BOOL BuildLanguageModuleFilename(LPCSTR fileName, DWORD languageId, CString& result);
    /// Loads the library of the pending language. The library before it is freed only after that has succeeded. If it
    /// fails and no library was loaded, the list is emptied and not read again.
    virtual BOOL CreateNameAndLoadModule(LPCSTR fileName);
    /// Reads the list below \p rootKey again. A missing key is an empty list and success.
    virtual BOOL EnumerateAvailableLanguages(LPCSTR rootKey);
    /// The part behind the last backslash or, without one, behind the last colon. Without both: the whole path. Empty
    /// if memory has run out.
    virtual void ExtractFilenameFromPath(LPCSTR path, CString& result);

protected:
    static DWORD EnumValueCallback(void* context, LPCSTR valueName, const void* data, DWORD type);

    /// Appends the name of a key to a CStringArray. \return 0
    static DWORD EnumKeysCallback(void* array, LPCSTR keyName);

    /// Loads the language that the message "ZoBrixelLanguageChange" names.
    /// \param last 1 for the last window of the process, which also tells the application
    /// \return 0 if that language is loaded already, else 1
    afx_msg LRESULT OnLanguageChanged(WPARAM languageId, LPARAM last);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    const CZoLanguageEntry* Entry(INT_PTR index) const
    {
        return static_cast<const CZoLanguageEntry*>(m_languages.GetAt(index));
    }
    BOOL ReadLanguageList(LPCSTR path);
    BOOL LoadListed(INT_PTR index, LPCSTR path);
    INT_PTR FindLanguage(DWORD languageId) const; ///< the last such entry, or -1
    void FollowProcess();
    void WriteChoice(const CString& moduleKey, INT_PTR chosen);
    void FreeLanguageObjectArray();

    static UINT s_changeMessage;
    static UINT s_updateMessage;

    CObArray m_languages; // of CZoLanguageEntry, owned
    HINSTANCE m_hLanguageLibrary;
    [[maybe_unused]] CWnd* m_pParent; // the constructor's argument, null without
    CZoVersionResource m_version;
    int m_nCurrentIndex;
    CString m_csCurrentAbbreviation;
    DWORD m_dwLoadedId;
    DWORD m_dwPendingId;
    BOOL m_bListRead;
    CString m_csLanguageModuleName;
};
