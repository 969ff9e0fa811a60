/// \file
/// The dialog in which the user picks the type of a new document.
#pragma once

#include <zogbl/dialog.h>

/// Shows the application's document templates, each with its icon and the name that it has for new documents; those
/// without such a name are left out. Below the list stands the description of the one selected.
///
/// The icon and the description belong to templates of the class CZoMultiDocTemplate: the icon has the template's
/// resource number, the description is what stands behind the last line feed of the string of that number.
class ZOGBL_API CZoNewBrixelDocType : public CZoDialog {
public:
    /// \param parent null for the main window
    CZoNewBrixelDocType(CWinApp* application, CWnd* parent);

    /// \return IDOK: the document template is chosen, at once and without a window when there is only one; IDCANCEL;
    /// IDABORT: there is none to choose, or memory has run out; -1 when the dialog cannot be made
    INT_PTR DoModal() override;

    /// The document template chosen, once the dialog has ended with IDOK; null when none was selected. It belongs to the
    /// application.
    CDocTemplate* GetDocTemplate() const { return m_pDocTemplate; }

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void ReloadTexts() override;
    afx_msg void OnSelectionChanged();
    afx_msg LRESULT OnMeasureItem(WPARAM control, LPARAM measure);
    afx_msg LRESULT OnDrawItem(WPARAM control, LPARAM draw);
    DECLARE_MESSAGE_MAP()

private:
    BOOL FillList();
    HWND List() const;
    CDocTemplate* ItemTemplate(int index) const;
    void MeasureOnce();
    void DrawText(const DRAWITEMSTRUCT& place) const;
    void DrawIcon(const DRAWITEMSTRUCT& place) const;

    CWinApp* m_pApplication;
    CDocTemplate* m_pDocTemplate = nullptr;
    int m_nItemHeight = 0; // pixels; 0 until measured
    int m_nTextHeight = 0;
};
