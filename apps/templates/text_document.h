/// \file
/// What the sample libraries' documents and views have in common: a document that can be written as text, and a view of
/// it in a read-only edit control, so that a person can scroll, select and copy.
#pragma once

#include <afxwin.h>

class TextDocument : public CDocument {
    DECLARE_DYNAMIC(TextDocument)
public:
    virtual CString GetText() const = 0;

protected:
    /// The bytes of a file, as many as an edit control of every Windows can show. \return FALSE when it cannot be read.
    static BOOL ReadFile(LPCSTR path, CString& bytes, int maximum);
};

class TextView : public CView {
    DECLARE_DYNAMIC(TextView)
public:
    ~TextView() override;

protected:
    void OnUpdate(CView* sender, LPARAM hint, CObject* object) override;
    void OnDraw(CDC*) override {} // the control fills the view
    afx_msg int OnCreate(CREATESTRUCT* create);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* previous);
    DECLARE_MESSAGE_MAP()

private:
    CEdit m_text;
    HFONT m_font = nullptr; // of equal widths
};
