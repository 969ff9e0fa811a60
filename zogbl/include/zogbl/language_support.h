/// \file
/// The language library of a process: which one, where it comes from, and the hidden window that hears of changes.
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
    int m_nCurrent;           ///< 1 marks the language chosen last
};

/// Finds, loads and frees the language library of the process.
///
/// The installed languages stand in the registry, under HKEY_LOCAL_MACHINE, in "\Languages" below the module root key
/// of the asking module: one value per language, named with the language id as "%04x", a DWORD 1 for the current one
/// and 0 for the others. A text value is understood too: its language is current unless it is "0".
///
/// The library of a language is named after the asking module: the first five characters of its file name, the
/// language's three letters and ".DLL" (ZOGBLBRX.DLL and 0x0409 give ZOGBLENU.DLL). It is found by the system's search
/// order.
///
/// The object has a hidden window, listed in a table that all processes of the suite share. Of the windows of a
/// process, the one made last tells the application of a change, which it can only if its object has a language loaded.
///
/// ZoGblLoadLanguageDLL makes the object of the process. An application makes one only to let the user choose:
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

    /// Creates the hidden window and enters it in the shared table (silently not when that is full). The first load
    /// calls it. Do not keep an object that has a window and no language: if its window is the last of the process, the
    /// process's texts change and the application is not told.
    BOOL Create();

    /// The message "ZoBrixelLanguageUpdate", posted to the application's main window, without parameters, when another
    /// language has been loaded: then the application reloads its texts, those of open dialogs by
    /// CZoDialog::ReloadOpenDialogs.
    static UINT GetUpdateMessage();

    /// Writes the choice of a language for every installed module, below "\Languages" of its key for the version of the
    /// language library: 1 for the language, 0 for all others of the list. Nothing for a language that is not listed.
    /// \return 0 always; what cannot be written is left out
    DWORD UpdateAllBrixelLanguages(DWORD languageId);

    /// Whether the calling thread is the one that the window belongs to, which alone can destroy it.
    BOOL IsOnOwnThread() const;

    HINSTANCE GetLibraryHandle() const { return m_hLanguageLibrary; } ///< null when nothing is loaded
    DWORD GetLCID() const { return m_dwLoadedId; }                    ///< language id loaded, 0 for none
    /// The system's three-letter name of the language loaded; of the user's default language while none is, for that is
    /// what the system answers for id 0.
    CString GetLocaleName() const;

    /// Loads the language that the registry marks as current, or the first one listed if none is marked with exactly 1.
    /// \param path the asking module's file. FALSE when there is no window, list or library to be had; a library loaded
    /// before stays.
    virtual BOOL LoadCurrentLanguage(LPCSTR path);
    /// LoadSpecificLanguage of the user's or the system's default locale.
    virtual BOOL LoadUserDefaultLanguage(LPCSTR path, BOOL persist);
    virtual BOOL LoadSystemDefaultLanguage(LPCSTR path, BOOL persist);
    /// Loads one of the listed languages and marks it as current in the list; with \p persist also in the registry.
    /// \param languageId compared whole: a locale id with sort bits matches no language. TRUE at once when it is loaded
    /// already.
    virtual BOOL LoadSpecificLanguage(DWORD languageId, LPCSTR path, BOOL persist);

    /// Lets the user choose a language by the dialog, \p parent its owner. An object without window or language gets
    /// them first: the language of the process, or the current one if the process has none. With OK the choice is
    /// written for every installed module, and all running programs of the suite change their language before this
    /// returns. A program that hangs is waited for two seconds, and changes when it goes on. On Win32s, which cannot
    /// change, a message says that the choice waits for the next start. \return TRUE always
    virtual BOOL SelectLanguage(CWnd* parent);

    /// Answers TRUE always; empty when memory has run out.
    virtual BOOL BuildLanguageModuleFilename(LPCSTR fileName, DWORD languageId, CString& result);
    /// Loads the pending language's library; only when that has succeeded the one before is freed.
    virtual BOOL CreateNameAndLoadModule(LPCSTR fileName);
    /// Reads the list below \p rootKey anew. A missing key is an empty list and success.
    virtual BOOL EnumerateAvailableLanguages(LPCSTR rootKey);
    /// What follows the last backslash, else the last colon, else the whole path; empty when memory has run out.
    virtual void ExtractFilenameFromPath(LPCSTR path, CString& result);

protected:
    static DWORD EnumValueCallback(void* context, LPCSTR valueName, const void* data, DWORD type);

    /// Appends the name of a key to a CStringArray. \return 0
    static DWORD EnumKeysCallback(void* array, LPCSTR keyName);

    /// Loads the language that the message "ZoBrixelLanguageChange" names. \param last 1 for the last window of the
    /// process, which also tells the application. \return 0 when the language is loaded already, else 1
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
