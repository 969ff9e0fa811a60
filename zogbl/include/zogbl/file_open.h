/// \file
/// The suite's dialog for files.
#pragma once

#include <zogbl/dialog.h>

#include <commdlg.h>

#include <vector>

struct FolderContents;

/// Asks for the name of a file, to open it or to save to it. The dialog takes the system's record (OPENFILENAME), but
/// is the same on every system, shows only texts in the user's language, and leaves the current folder as it is.
///
/// The user can type:
///
///     a name              looked for in the folder shown, not in the current folder
///     a folder, a drive   the dialog shows it; so too for a name with ".." that leads to a folder
///     with '*' or '?'     the pattern of the list, or several separated by ';'; a folder may stand before them
///     a quoted name       taken as it is: no extension is added, and '*' and '?' are invalid
///
/// A name without an extension gets the default one, unless it ends in a dot or, for opening, a file of just that name
/// exists. Only the default extension and those of the filter count as one: "Fax 22.11.1998" has none.
///
/// A name is checked before it is taken: its characters, its length, and what the flags ask for. If a check fails, a
/// message tells which, and the dialog stays open with all that was typed.
///
/// The template of a derived class has the controls of the default template, with these numbers:
///
///     ZO_IDC_FILE_NAME (edt1)       edit field: the name
///     ZO_IDC_FILE_LIST (lst1)       list box: files; LBS_NOTIFY, not owner-drawn
///     ZO_IDC_FILE_TYPES (cmb1)      combo box: types; CBS_DROPDOWNLIST, not sorted
///     ZO_IDC_FILE_FOLDER (stc1)     static text: the folder shown; SS_NOPREFIX
///     ZO_IDC_FILE_FOLDERS (lst2)    list box: folders; LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, not sorted
///     ZO_IDC_FILE_DRIVES (cmb2)     combo box: drives; CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS,
///                                   not sorted
///     ZO_IDC_FILE_READ_ONLY (chx1)  check box: read-only
///     IDOK, IDCANCEL
///
/// Only the name and the buttons are needed; the others may be left out.
class ZOGBL_API CZoFileOpen : public CZoDialog {
public:
    /// \param open FALSE: the name is for saving
    /// \param templateId 0: the default template (ZO_IDD_FILE_OPEN)
    /// \param defaultExtension without its dot, or null; must live until DoModal has returned
    /// \param fileName the path, name, folder or pattern to begin with, or null. It may be missing on the disk or
    /// invalid. It is copied; a text of 260 bytes or more counts as none.
    /// \param flags OFN_ flags: FILEMUSTEXIST, PATHMUSTEXIST, CREATEPROMPT, OVERWRITEPROMPT, NOREADONLYRETURN,
    /// HIDEREADONLY, READONLY, NOVALIDATE. Others have no effect.
    /// \param filter pairs of texts, each ended by a NUL: a type's name, and its patterns separated by ';'. One more
    /// NUL ends the list. Null: no types. Must live until DoModal has returned.
    /// \param parent null: the main window of the thread
    explicit CZoFileOpen(BOOL open, UINT templateId = 0, LPCSTR defaultExtension = nullptr, LPCSTR fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCSTR filter = nullptr,
                         CWnd* parent = nullptr);
    ~CZoFileOpen() override;

    /// \return
    ///   IDOK      lpstrFile holds the path
    ///   IDCANCEL  lpstrFile is unchanged
    ///   -1        the dialog cannot be made, memory has run out, or lpstrFile is null or nMaxFile 0
    INT_PTR DoModal() override;

    /// The file's full path while OnFileNameOK runs and after IDOK, else the name to begin with. Empty if memory has
    /// run out.
    CString GetPathName() const;
    CString GetFileName() const; ///< of GetPathName, the part behind the last backslash
    CString GetFileExt() const;  ///< of GetFileName, the part behind the last dot
    BOOL IsOpenDialog() const { return m_bOpen; }

    /// May be changed before DoModal. These fields have an effect:
    ///
    ///     lpstrFile, nMaxFile          the name to begin with, then the path; at first 260 bytes in the object. A path
    ///                                  takes at most 259 bytes, however large the buffer is
    ///     lpstrFilter, lpstrDefExt     as given to the constructor
    ///     nFilterIndex                 the selected type, counted from 1; after IDOK the user's
    ///     lpstrInitialDir              the folder to begin in, if lpstrFile names none
    ///     lpstrTitle                   null: the title of the template or, for saving, "Save As"
    ///     Flags                        after IDOK also OFN_EXTENSIONDIFFERENT and OFN_READONLY
    ///     nFileOffset, nFileExtension  set with the path
    OPENFILENAMEA m_ofn;

protected:
    /// Called for a name that has passed all checks (GetPathName). \return TRUE to keep the dialog open; an override
    /// that does so tells the user why. The base returns FALSE.
    virtual BOOL OnFileNameOK();

    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    afx_msg void OnFileSelected();
    afx_msg void OnFileChosen();
    afx_msg void OnFolderChosen();
    afx_msg void OnDriveSelected();
    afx_msg void OnDriveClosed();
    afx_msg void OnTypeSelected();
    afx_msg void OnMeasureItem(int control, MEASUREITEMSTRUCT* measure);
    afx_msg void OnDrawItem(int control, DRAWITEMSTRUCT* item);
    DECLARE_MESSAGE_MAP()

private:
    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); }
    void Prepare();
    void PrepareReadOnlyBox();
    void AlignRows();
    void FillTypes();
    void FillDrives();
    void AddDrive(const CString& root);
    void SelectDrive();
    void StartIn(const CString& folder, const CString& current);
    BOOL ShowFolder(const CString& folder);
    void ShowFolderName();
    void FillFolders(const std::vector<CString>& above, const FolderContents& contents);
    void FillFiles(const FolderContents& contents);
    CString PatternsInForce() const;
    CString FolderOfRow(int row) const;
    void GoTo(const CString& folder);
    void ShowName(LPCSTR name);
    void TakeName(const CString& typed);
    void TakePattern(const CString& typed);
    BOOL IsAcceptable(const CString& path);
    CString WithExtension(const CString& path, const CString& typed) const;
    void Finish(const CString& path);
    BOOL Refuse(UINT message, LPCSTR path);

    BOOL m_bOpen;
    char m_szFile[MAX_PATH] = "";
    CString m_csFolder;     // shown; a root has a backslash at its end, no other folder has
    CString m_csPattern;    // typed; empty: that of the type
    CStringArray m_csRoots; // of the drives listed
    int m_nLevel = 0;       // row of the folder shown, behind those that it lies in
};
