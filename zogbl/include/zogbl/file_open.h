/// \file
/// The suite's dialog for files.
#pragma once

#include <zogbl/dialog.h>

#include <commdlg.h>

#include <vector>

struct FolderContents;

/// Asks for the name of a file, to open it or to save to it, in the user's language. It takes what the system's own
/// dialog takes (OPENFILENAME), but neither shows a text of the system's nor changes the current folder.
///
/// A name is looked for in the folder shown, not in the current one. A name of a folder, a drive or with ".." goes there;
/// a name with '*' or '?', or several separated by ';', becomes the pattern of the list. A name without an extension gets
/// the default one, unless it is typed in quotation marks or, when opening, there is a file without. An extension is the
/// default one or one of the filter's: "Fax 22.11.1998" has none. Before a name is taken
/// it is checked: characters, length, and what the flags ask for. Each check has its message; the dialog stays open
/// then, with all that was typed.
///
/// A template of a derived class has the controls of the default one, with these numbers:
///
///     ZO_IDC_FILE_NAME (edt1)     edit field: the name
///     ZO_IDC_FILE_LIST (lst1)     list box: files; LBS_NOTIFY, not owner-drawn
///     ZO_IDC_FILE_TYPES (cmb1)    combo box: types; CBS_DROPDOWNLIST, not sorted
///     ZO_IDC_FILE_FOLDER (stc1)   static text: the folder shown; SS_NOPREFIX
///     ZO_IDC_FILE_FOLDERS (lst2)  list box: folders; LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, not sorted
///     ZO_IDC_FILE_DRIVES (cmb2)   combo box: drives; CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, not sorted
///     ZO_IDC_FILE_READ_ONLY (chx1) check box "read-only"; may be missing
///     IDOK, IDCANCEL
///
/// Any but the name and the buttons may be left out.
class ZOGBL_API CZoFileOpen : public CZoDialog {
public:
    /// \param open FALSE: the name is for saving
    /// \param templateId 0: the default template (ZO_IDD_FILE_OPEN)
    /// \param defaultExtension without its dot, or null; must live until DoModal has returned
    /// \param fileName what to begin with, or null: a path, a name, a folder or a pattern. What is no longer there, or
    /// no name of a file, does no harm. It is copied, unless it has 260 bytes or more: then it counts as none.
    /// \param flags OFN_ flags: FILEMUSTEXIST, PATHMUSTEXIST, CREATEPROMPT, OVERWRITEPROMPT, NOREADONLYRETURN,
    /// HIDEREADONLY, READONLY, NOVALIDATE. Others have no effect.
    /// \param filter pairs of texts, a type's name and its patterns separated by ';', each with a NUL behind it and one
    /// more at the end; null for none. It must live until DoModal has returned.
    /// \param parent null: the main window of the thread
    explicit CZoFileOpen(BOOL open, UINT templateId = 0, LPCSTR defaultExtension = nullptr, LPCSTR fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCSTR filter = nullptr,
                         CWnd* parent = nullptr);
    ~CZoFileOpen() override;

    /// \return IDOK: lpstrFile holds the path; IDCANCEL: it is as it was; -1 when the dialog cannot be made or memory has
    /// run out.
    INT_PTR DoModal() override;

    /// The file's full path, while OnFileNameOK runs and after IDOK; else the name that was given. Empty when memory has
    /// run out.
    CString GetPathName() const;
    CString GetFileName() const; ///< the part of it behind the last backslash
    CString GetFileExt() const;  ///< the part of that behind the last dot
    BOOL IsOpenDialog() const { return m_bOpen; }

    /// May be changed before DoModal. In force are: lpstrFile and nMaxFile, which at first name a buffer of the object's
    /// own of 260 bytes (a path takes at most 259 of however many there are); lpstrFilter; nFilterIndex, counted from 1,
    /// which then tells the type that was selected; lpstrInitialDir, if lpstrFile names no folder; lpstrTitle (null: the
    /// template's or, for saving, "Save As"); lpstrDefExt; Flags. With the path come nFileOffset, nFileExtension, and in Flags OFN_EXTENSIONDIFFERENT
    /// and OFN_READONLY.
    OPENFILENAMEA m_ofn;

protected:
    /// A look at a name that has passed all checks (GetPathName). \return TRUE keeps the dialog open: say why before.
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
    afx_msg LRESULT OnMeasureItem(WPARAM control, LPARAM measure);
    afx_msg LRESULT OnDrawItem(WPARAM control, LPARAM draw);
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
    void StartIn(const CString& folder, LPCSTR current);
    BOOL ShowFolder(const CString& folder);
    void ShowFolderName();
    void FillFolders(const std::vector<CString>& above, const FolderContents& contents);
    void FillFiles(const FolderContents& contents);
    CString PatternsInForce() const;
    CString FolderOfRow(int row) const;
    void GoTo(const CString& folder);
    CString TypedName() const;
    void ShowName(LPCSTR name);
    void TakeName(const CString& typed);
    void TakePattern(const CString& typed);
    BOOL IsAcceptable(const CString& path);
    CString WithExtension(const CString& path, const CString& typed) const;
    void Finish(const CString& path);
    int Ask(UINT message, LPCSTR path, UINT type);
    BOOL Refuse(UINT message, LPCSTR path);

    BOOL m_bOpen;
    char m_szFile[MAX_PATH] = "";
    CString m_csFolder;     // shown; a root has a backslash at its end, no other folder has
    CString m_csPattern;    // typed; empty: that of the type
    CStringArray m_csRoots; // of the drives listed
    int m_nLevel = 0;       // row of the folder shown, behind those that it lies in
};
