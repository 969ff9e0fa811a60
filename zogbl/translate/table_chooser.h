/// \file
/// The dialog in which the user chooses a set of translation tables.
#pragma once

#include <zogbl/dialog.h>

/// Lists the translation files of a folder by their descriptions; those of files with the same one are followed by the
/// file's name. If there is no translation file, a text says so and names the folder.
class TableChooser : public CZoDialog {
public:
    /// \param path of any file in the folder; see FolderPrefix
    TableChooser(LPCSTR path, CWnd* parent);

    /// The file chosen, once the dialog has ended with IDOK.
    const CString& GetChosenPath() const { return m_csChosen; }

    /// What stands before the names of the files to list: the folder that the file \p path is in, with a backslash
    /// behind it, but for the root of a drive, which gives "C:". A path without a dot is the folder itself.
    static CString FolderPrefix(const CString& path);

protected:
    BOOL OnInitDialog() override; ///< ends the dialog with -1 when memory has run out
    void OnOK() override;
    DECLARE_MESSAGE_MAP()

private:
    void Fill();
    void FindTables();
    void TellWhy();
    void TakeRoomOfReason();

    CString m_csPath;
    CString m_csChosen;
    CListBox m_list;
    CStringArray m_descriptions; // as listed, in the order in which the files were found
    CStringArray m_paths;
};
