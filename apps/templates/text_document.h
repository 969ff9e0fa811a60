/// \file
/// What the sample libraries' documents and views have in common: a document that can be written as text, and a view of
/// it in an edit control, so that a person can scroll, select and copy, and change what can be changed.
#pragma once

#include "../document_settings.h"
#include "../text_box.h"

#include <afxwin.h>

class TextDocument : public CDocument {
    DECLARE_DYNAMIC(TextDocument)
public:
    virtual CString GetText() const = 0; ///< as the view shows it
    virtual BOOL IsEditable() const { return FALSE; }
    virtual void SetText(const CString&) {} ///< what a person made of it

    BOOL OnSaveDocument(LPCSTR path) override; ///< writes GetBytes; says so when it fails
    BOOL SaveModified() override;
    BOOL DoSave(LPCSTR path, BOOL replace) override;

protected:
    virtual CString GetBytes() const { return GetText(); } ///< as the file holds it
    /// Saves a document that is shown in part only.
    BOOL CopyTo(LPCSTR path);
    /// The bytes of a file, as many as an edit control of every Windows can show.
    /// \param isWhole set to whether those are all
    /// \return FALSE when it cannot be read.
    static BOOL ReadFile(LPCSTR path, CString& bytes, int maximum, BOOL& isWhole);

private:
    static BOOL ReportNotSaved(LPCSTR path);
};

class TextView : public CView {
    DECLARE_DYNAMIC(TextView)
protected:
    void OnUpdate(CView* sender, LPARAM hint, CObject* object) override;
    afx_msg void OnPrintText();
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    /// Whether the text stands in columns, which takes letters of equal widths.
    virtual bool HasColumns() const { return false; }
    void OnDraw(CDC*) override {} // the control fills the view
    afx_msg void OnTextChanged();
    afx_msg int OnCreate(CREATESTRUCT* create);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* previous);
    DECLARE_MESSAGE_MAP()

private:
    void UseSettings();

    TextBox m_text;
    DocumentSettings m_settings;
    CFont m_font;
    bool m_filling = false; // the text changes, but no person changes it
};
