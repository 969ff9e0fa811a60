/// \file
/// The editor of translation tables: a sheet of three pages, and its file dialog. CGblTranslate::Edit shows the editor.
#pragma once

#include <zogbl/file_open.h>
#include <zogbl/property_sheet.h>
#include <zogbl/translate.h>

class CGblIotTable;

/// The rows of a table. A row's text is the character and its translation, for programs that read the screen to the
/// user.
class ZOGBL_API CGblIotList : public CListBox {
public:
    explicit CGblIotList(const CGblIotTable& page) : m_page(page) {}

    void DrawItem(DRAWITEMSTRUCT* item) override;

private:
    const CGblIotTable& m_page;
};

/// The common part of the pages of the two tables. The user's changes go to the given set at once; those of the check
/// boxes when the page is left.
///
/// A row shows a character and at its right its translation, as numbers, with a mark between them if they differ. If
/// the set's last character is beyond the table's 256 rows, the first row is selected.
class ZOGBL_API CGblIotTable : public CZoPropertyPage {
public:
    /// \param translation the set to edit; must outlive the page
    void SetTranslation(CGblTranslate* translation) { m_pTranslation = translation; }

    void DrawRow(const DRAWITEMSTRUCT& item) const;

protected:
    struct Direction; // what differs between the pages
    explicit CGblIotTable(const Direction& direction);

    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    afx_msg void OnRowSelected();
    afx_msg void OnValueChosen();
    afx_msg void OnModeChosen();
    afx_msg void OnSwitched();
    afx_msg void OnResetTable();
    DECLARE_MESSAGE_MAP()

private:
    HWND Values() const;
    BYTE Entry(int row) const;
    void ShowRows();
    void ShowValues();
    void ShowRow(int row);
    void SelectRow(int row);
    void ShowAgain();
    void DrawMarker(HDC dc, int left, int top) const;
    int RowHeight();
    bool IsDecimal() const;

    const Direction& m_direction;
    CGblTranslate* m_pTranslation = nullptr;
    CBitmap m_marker; // the mark, and its mask beside it
    CSize m_markerSize;
    CGblIotList m_list{*this};
};

/// The page of the get table.
class ZOGBL_API CGblIotTableI : public CGblIotTable {
public:
    CGblIotTableI();
};

/// The page of the put table.
class ZOGBL_API CGblIotTableO : public CGblIotTable {
public:
    CGblIotTableO();
};

/// The page with file and description. "Load" and "Save as" change the set only if they succeed. If they fail, the user
/// is told and the set stays as it was.
class ZOGBL_API CGblIotOptions : public CZoPropertyPage {
public:
    CGblIotOptions();

    /// \param translation the set to edit; must outlive the page
    void SetTranslation(CGblTranslate* translation) { m_pTranslation = translation; }

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    afx_msg void OnDescriptionChanged();
    afx_msg void OnLoad();
    afx_msg void OnSaveAs();
    DECLARE_MESSAGE_MAP()

private:
    void ExchangeFile(BOOL open);

    CGblTranslate* m_pTranslation = nullptr;
};

/// The editor. It works on a copy of the set.
///
/// Apply copies it to the set and saves that. If it cannot be saved, the user is told and can try again: the pages stay
/// modified. The set has changed by then; closing the sheet does not undo it.
class ZOGBL_API CGblIotSheet : public CZoPropertySheet {
public:
    /// \param translation the set to edit; must outlive the sheet. Throws CMemoryException*.
    CGblIotSheet(CGblTranslate* translation, CWnd* parent);
    ~CGblIotSheet() override;

    /// The set as edited.
    CGblTranslate* GetWorkingCopy() { return &m_working; }

protected:
    afx_msg void OnApplyNow();
    DECLARE_MESSAGE_MAP()

private:
    CGblTranslate* m_pTranslation;
    CGblTranslate m_working;
    CGblIotTableI m_input;
    CGblIotTableO m_output;
    CGblIotOptions m_options;
};

/// Asks for a translation file. To load: IsValidFile tests the file before the dialog closes. If it is none, but a copy
/// of a save that was killed is beside it (see CGblTranslate::Edit), the user is asked whether to put that back.
class ZOGBL_API CIOTFileDialog : public CZoFileOpen {
public:
    /// \param open FALSE: to save
    /// \param path shown first
    /// Throws CMemoryException*.
    CIOTFileDialog(BOOL open, LPCSTR path, CWnd* parent);
    ~CIOTFileDialog() override;

protected:
    BOOL OnFileNameOK() override;

private:
    CString m_csExtension;
    CString m_csFilter; // each '|' a NUL
    CString m_csTitle;
};
