/// \file
/// The controls in which a file is chosen. Each works by itself, over a control of a template that has its styles; one
/// that a template does not have is an object without a window, and does nothing. All throw CMemoryException*.
#pragma once

#include "drive.h"

/// The drives, with their places in the network. None is read, and the list is there at once: what a drive is and what
/// it stands for is added when the system answers.
class DriveBox : public CComboBox {
public:
    void Fill();
    /// Adds a place in the network that has no letter.
    void SelectDrive(const CString& root);
    CString GetDrive() const; ///< the root; empty if none is selected

protected:
    void PreSubclassWindow() override;
    void DrawItem(LPDRAWITEMSTRUCT item) override;
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg LRESULT OnReloadTexts(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    int AddDrive(const CString& root, DWORD patience);
    void Renew(int row);

    std::vector<Drive> m_drives; // in the order of the rows
};

/// A folder, below those that it lies in, above those in it.
class FolderBox : public CListBox {
public:
    void ShowFolder(const CString& folder, const std::vector<CString>& inside);
    CString GetSelectedFolder() const; ///< empty if none is

protected:
    void PreSubclassWindow() override;
    void DrawItem(LPDRAWITEMSTRUCT item) override;

private:
    CString m_csFolder;
    int m_nLevel = 0; // row of the folder shown
};

class FileBox : public CListBox {
public:
    void ShowFiles(const std::vector<CString>& files);
    CString GetSelectedFile() const;

protected:
    void PreSubclassWindow() override;
};

/// The types of a filter, as OPENFILENAME has it.
class TypeBox : public CComboBox {
public:
    /// \param filter lives as long as this \param index of the selected type, from 1
    void Fill(LPCSTR filter, DWORD index);
    CString GetPatterns() const;
    /// \return from 1; 0 if no type is selected
    DWORD GetIndex() const { return m_hWnd != nullptr ? static_cast<DWORD>(GetCurSel() + 1) : 0; }

private:
    LPCSTR m_pszFilter = nullptr;
};

class NameBox : public CEdit {
public:
    CString GetTyped() const; ///< without spaces around it
    void ShowName(LPCSTR name);
    void TakeFocus(); ///< for a correction: all is selected

protected:
    void PreSubclassWindow() override;
};

/// The folders of last time.
class RecentBox : public CComboBox {
public:
    void Fill();
    void SelectFolder(const CString& folder); ///< none, if it is not listed
    CString GetFolder() const;

private:
    CString RowText(int row) const;
};

/// A path, or a text, as far as there is room for it.
class FolderLabel : public CStatic {
public:
    void ShowPath(const CString& path);
    void ShowText(const CString& text);

private:
    void Fit(const CString& text, bool isPath);
};
