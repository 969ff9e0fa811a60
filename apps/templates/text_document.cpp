#include "text_document.h"

#include "template_ids.h"
#include "text_print.h"

#include <zogbl/document_save.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

IMPLEMENT_DYNAMIC(TextDocument, CDocument)
IMPLEMENT_DYNAMIC(TextView, CView)

namespace {

constexpr UINT kTextId = 1;

/// Shows a message of the user's language about a document.
int Ask(UINT message, LPCSTR name, UINT type)
{
    CString format;
    ZoGblLoadString(message, format);
    CString text;
    text.Format(format, name);
    return AfxMessageBox(text, type);
}

} // namespace

BEGIN_MESSAGE_MAP(TextView, CView)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_CTLCOLOR()
    ON_COMMAND(ID_FILE_PRINT, OnPrintText)
    ON_EN_CHANGE(kTextId, OnTextChanged)
END_MESSAGE_MAP()

BOOL TextDocument::ReadFile(LPCSTR path, CString& bytes, int maximum, BOOL& isWhole)
{
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return FALSE;
    const UINT read = file.Read(bytes.GetBuffer(maximum), static_cast<UINT>(maximum));
    bytes.ReleaseBuffer(static_cast<int>(read));
    isWhole = file.GetLength() == read;
    return TRUE;
}

// Saving --------------------------------------------------------------------------------------------------------------

BOOL TextDocument::ReportNotSaved(LPCSTR path)
{
    Ask(ZO_IDS_DOCUMENT_NOT_SAVED, path, MB_OK | MB_ICONEXCLAMATION);
    return FALSE;
}

BOOL TextDocument::OnSaveDocument(LPCSTR path)
{
    const CString bytes = GetBytes();
    try {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes, static_cast<UINT>(bytes.GetLength()));
        file.Close();
    } catch (CFileException* e) {
        e->Delete();
        return ReportNotSaved(path);
    }
    return CDocument::OnSaveDocument(path);
}

BOOL TextDocument::CopyTo(LPCSTR path)
{
    if (!ZoIsSameFile(GetPathName(), path) && !::CopyFile(GetPathName(), path, FALSE))
        return ReportNotSaved(path);
    return CDocument::OnSaveDocument(path);
}

BOOL TextDocument::DoSave(LPCSTR path, BOOL replace)
{
    return ZoDoSave(this, path, GetPathName(), GetTitle(), replace);
}

BOOL TextDocument::SaveModified()
{
    if (!IsModified())
        return TRUE;
    switch (Ask(ZO_IDS_DOCUMENT_ASK_TO_SAVE, GetPathName().IsEmpty() ? GetTitle() : GetPathName(),
                MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
    case IDYES:
        return DoFileSave();
    case IDNO:
        return TRUE;
    default:
        return FALSE;
    }
}

// The view ------------------------------------------------------------------------------------------------------------

int TextView::OnCreate(CREATESTRUCT* create)
{
    if (CView::OnCreate(create) == -1 || !m_text.Create(this, kTextId, 0))
        return -1;
    UseSettings();
    m_text.LimitText(); // as much as there is room for
    return 0;
}

void TextView::UseSettings()
{
    m_settings = LoadDocumentSettings();
    CFont font;
    LOGFONT description = m_settings.font;
    if (m_settings.IsFontUsual() && (!CreateDialogFont(font) || font.GetLogFont(&description) == 0))
        ::GetObject(::GetStockObject(DEFAULT_GUI_FONT), sizeof description, &description);
    if (HasColumns() && (description.lfPitchAndFamily & FIXED_PITCH) == 0) {
        description.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
        description.lfFaceName[0] = '\0'; // any of equal widths
    }
    m_settings.font = description; // what is printed is what is shown
    font.DeleteObject();
    font.CreateFontIndirect(&description);
    m_text.SetFont(&font);
    m_font.DeleteObject();
    m_font.Attach(font.Detach());
    m_text.Invalidate();
}

HBRUSH TextView::OnCtlColor(CDC* dc, CWnd* control, UINT kind)
{
    const HBRUSH ground = CView::OnCtlColor(dc, control, kind);
    if (m_settings.color != CLR_DEFAULT)
        dc->SetTextColor(m_settings.color);
    return ground;
}

/// By a job of this view's own, since the user's choice is more than the framework's job knows of.
void TextView::OnPrintText()
{
    const auto* document = DYNAMIC_DOWNCAST(TextDocument, GetDocument());
    if (document == nullptr)
        return;
    CString text, selected;
    m_text.GetWindowText(text);
    int start = 0, end = 0;
    m_text.GetSel(start, end);
    PrintText(*GetParentFrame(), document->GetTitle(), text, text.Mid(start, end - start), m_settings);
}

void TextView::OnSize(UINT type, int width, int height)
{
    CView::OnSize(type, width, height);
    m_text.MoveWindow(0, 0, width, height);
}

void TextView::OnSetFocus(CWnd*) { m_text.SetFocus(); }

void TextView::OnUpdate(CView*, LPARAM hint, CObject*)
{
    if (hint == kDocumentSettingsChanged)
        UseSettings();
    const auto* document = DYNAMIC_DOWNCAST(TextDocument, GetDocument());
    CString shown;
    m_text.GetWindowText(shown);
    if (document == nullptr)
        return;
    m_text.SetReadOnly(!document->IsEditable());
    const CString text = document->GetText();
    if (shown == text) // the place at which a person writes stays where it is
        return;
    m_filling = true;
    m_text.SetWindowText(text);
    m_filling = false;
}

void TextView::OnTextChanged()
{
    auto* document = DYNAMIC_DOWNCAST(TextDocument, GetDocument());
    if (m_filling || document == nullptr)
        return;
    m_text.FitScrollBars();
    CString text;
    m_text.GetWindowText(text);
    document->SetText(text);
    document->SetModifiedFlag();
}
