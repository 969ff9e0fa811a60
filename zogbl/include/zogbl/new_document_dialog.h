/// \file
/// The dialog in which the user picks the type of a new document.
#pragma once

#include <zogbl/dialog.h>

/// Lets the user choose one of the application's document templates for a new document, in the user's language.
///
/// The list shows each template's icon and its name for new documents; templates without such a name are left out. The
/// description of the selected one stands below the list. Icon and description are shown only for CZoMultiDocTemplate:
/// the icon with the template's resource number, and the text behind the last line feed of the string with that number.
class ZOGBL_API CZoNewBrixelDocType : public CZoDialog {
public:
    /// \param parent null: the main window
    CZoNewBrixelDocType(CWinApp* application, CWnd* parent);

    /// \return
    ///   IDOK      a template is chosen; at once and without a window if there is only one
    ///   IDCANCEL  the user gave up
    ///   IDABORT   there is no template to choose, or memory has run out
    ///   -1        the dialog cannot be made
    INT_PTR DoModal() override;

    /// The chosen template, after IDOK; null if none was selected. It belongs to the application.
    CDocTemplate* GetDocTemplate() const { return m_pDocTemplate; }

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    afx_msg void OnSelectionChanged();
    afx_msg void OnMeasureItem(int control, MEASUREITEMSTRUCT* measure);
    afx_msg void OnDrawItem(int control, DRAWITEMSTRUCT* place);
    DECLARE_MESSAGE_MAP()

private:
    BOOL FillList();
    CDocTemplate* ItemTemplate(int index) const;
    void MeasureOnce();
    void DrawText(const DRAWITEMSTRUCT& place) const;
    void DrawIcon(const DRAWITEMSTRUCT& place) const;

    CWinApp* m_pApplication;
    CDocTemplate* m_pDocTemplate = nullptr;
    CListBox m_list;
    int m_nItemHeight = 0; // pixels; 0 until measured
    int m_nTextHeight = 0;
};
