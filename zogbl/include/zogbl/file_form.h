/// \file
/// What a dialog and a page for files share.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

#include <commdlg.h>

#include <memory>

class FileFormParts;

/// The form in which the name of a file is chosen, over the controls of a window: CZoFileOpen is the dialog,
/// CZoFileOpenPage the page of a sheet, CZoFileOpenWizardPage that of a wizard. It takes the system's record
/// (OPENFILENAME), but is the same on every system, shows only texts in the user's language, and leaves the current
/// folder as it is.
///
/// The user can type:
///
///     a name              looked for in the folder shown, not in the current folder
///     a folder, a drive   the form shows it; so too for a name with ".." that leads to a folder
///     with '*' or '?'     the pattern of the list, or several separated by ';'; a folder may stand before them
///     a quoted name       taken as it is: no extension is added, and '*' and '?' are invalid
///
/// A name without an extension gets the default one, unless it ends in a dot or, for opening, a file of just that name
/// exists. Only the default extension and those of the filter count as one: "Fax 22.11.1998" has none.
///
/// A name is checked before it is taken: its characters, its length, and what the flags ask for. If a check fails, a
/// message tells which, and the form stays with all that was typed.
///
/// No drive is touched before the user, or the name to begin with, names it. Drives and folders are asked in threads:
/// what does not answer at once is shown as being opened. Meanwhile Cancel ends the window, and another choice takes
/// the place of the first.
///
/// The template has these controls. Only the name is needed (and the dialog's buttons), the others may be left out.
/// The form has objects of its own for them: a window that uses it must not put others over them.
///
///     ZO_IDC_FILE_NAME (edt1)       edit field: the name
///     ZO_IDC_FILE_LIST (lst1)       list box: files; LBS_NOTIFY, not owner-drawn
///     ZO_IDC_FILE_TYPES (cmb1)      combo box: types; CBS_DROPDOWNLIST, not sorted
///     ZO_IDC_FILE_FOLDER (stc1)     static text: the folder shown; SS_NOPREFIX
///     ZO_IDC_FILE_FOLDERS (lst2)    list box: folders; LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, not sorted
///     ZO_IDC_FILE_DRIVES (cmb2)     combo box: drives; CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS,
///                                   not sorted
///     ZO_IDC_FILE_READ_ONLY (chx1)  check box: read-only
///     ZO_IDC_FILE_RECENT            combo box: folders in which files were last chosen; CBS_DROPDOWNLIST, not sorted
///     ZO_IDC_FILE_UP                button: one folder up
///     ZO_IDC_FILE_NEW_FOLDER        button: a new folder, for saving only
///
/// A window of another kind derives from it, too:
///
///     BOOL OnInitDialog()             calls BeginForm, behind its base class
///     where a name is to be taken     calls TakeName
///     LRESULT WindowProc(...)         calls HandleFormMessage first
///     void ReloadTexts()              calls ReloadFormTexts, behind its base class
///
/// Nothing is thrown, unless it is said.
class ZOGBL_API CZoFileForm {
public:
    CZoFileForm(const CZoFileForm&) = delete;
    CZoFileForm& operator=(const CZoFileForm&) = delete;

    /// The file's full path while OnFileNameOK runs and after the name was taken, else the name to begin with. Empty if
    /// memory has run out.
    CString GetPathName() const;
    CString GetFileName() const; ///< of GetPathName, the part behind the last backslash
    CString GetFileExt() const;  ///< of GetFileName, the part behind the last dot
    BOOL IsOpenDialog() const { return m_bOpen; }

    /// May be changed before the window is made. These fields have an effect:
    ///
    ///     lpstrFile, nMaxFile          the name to begin with, then the path; at first 260 bytes in the object. A path
    ///                                  takes at most 259 bytes, however large the buffer is
    ///     lpstrFilter, lpstrDefExt     as given to the constructor
    ///     nFilterIndex                 the selected type, counted from 1; in the end the user's
    ///     lpstrInitialDir              the folder to begin in, if lpstrFile names none
    ///     lpstrTitle                   of a dialog. Null: the title of the template or, for saving, "Save As"
    ///     Flags                        in the end also OFN_EXTENSIONDIFFERENT and OFN_READONLY
    ///     nFileOffset, nFileExtension  set with the path
    OPENFILENAMEA m_ofn;

protected:
    /// \param window that has the form, the derived object itself
    /// \param open FALSE: the name is for saving
    /// \param defaultExtension without its dot, or null; must live as long as the window
    /// \param fileName the path, name, folder or pattern to begin with, or null. It may be missing on the disk or
    /// invalid. It is copied; a text of 260 bytes or more counts as none.
    /// \param flags OFN_ flags: FILEMUSTEXIST, PATHMUSTEXIST, CREATEPROMPT, OVERWRITEPROMPT, NOREADONLYRETURN,
    /// HIDEREADONLY, READONLY, NOVALIDATE. Others have no effect.
    /// \param filter pairs of texts, each ended by a NUL: a type's name, and its patterns separated by ';'. One more
    /// NUL ends the list. Null: no types. Must live as long as the window.
    CZoFileForm(CWnd& window, BOOL open, LPCSTR defaultExtension, LPCSTR fileName, DWORD flags, LPCSTR filter);
    virtual ~CZoFileForm();

    /// Fills the controls. \return FALSE: memory has run out
    BOOL BeginForm();
    /// Takes the name that is typed, if it can be. From the list of folders, it opens the one that is selected instead.
    /// \return TRUE: it is taken. FALSE: it is not, and the user was told, or it was a folder or a pattern; or the
    /// drive has not answered yet. Then OnNameTaken is called if the name is taken later
    BOOL TakeName();
    /// Whether nothing was chosen since the form began, or since the name was taken.
    BOOL IsNameUnchanged() const;
    /// \return TRUE: \p result is the answer, and nothing else is to be done with the message
    BOOL HandleFormMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void ReloadFormTexts();

    /// Called for a name that has passed all checks (GetPathName). \return TRUE not to take it; an override that does
    /// so tells the user why. The base returns FALSE. It may throw.
    virtual BOOL OnFileNameOK();
    /// A name that TakeName left waiting is taken. TakeName, called in here or afterwards, returns TRUE at once.
    virtual void OnNameTaken() = 0;
    virtual void OnFileChosen() {} ///< The user has clicked a file twice; it is the name now.

private:
    friend class FileFormParts;

    CWnd& m_window;
    BOOL m_bOpen;
    char m_szFile[MAX_PATH] = "";
    std::unique_ptr<FileFormParts> m_parts; // since BeginForm
};
