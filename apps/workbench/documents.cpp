#include "documents.h"

#include "options.h"
#include "page.h"
#include "workbench_ids.h"

#include <zogbl/document_save.h>
#include <zogbl/new_document_dialog.h>
#include <zomfx/frame_window.h>
#include <zomfx/multi_doc_template.h>

#include <algorithm>
#include <climits>
#include <commdlg.h>
#include <iterator>
#include <utility>

namespace {

/// The window that holds the documents' windows.
class ShellWindow : public CZoMDIFrameWnd {
public:
    explicit ShellWindow(Documents& documents) : m_documents(documents) {}
    ~ShellWindow() override { ::DestroyAcceleratorTable(m_keys); }

    BOOL PreTranslateMessage(MSG* message) override
    {
        return ::TranslateAccelerator(m_hWnd, m_keys, message) || CZoMDIFrameWnd::PreTranslateMessage(message);
    }

protected:
    afx_msg void OnNew() { m_documents.New(); }
    afx_msg void OnOpen() { m_documents.AskAndOpen(); }
    afx_msg void OnFont()
    {
        DocumentSettings settings = LoadDocumentSettings();
        if (!ChooseDocumentFont(this, settings))
            return;
        TellStatus(ZO_IDS_DOCUMENT_PAGE_NOT_KEPT, SaveDocumentSettings(settings));
        Documents::UpdateViews(kDocumentSettingsChanged);
    }
    afx_msg void OnClose()
    {
        if (AfxGetApp()->SaveAllModified())
            CZoMDIFrameWnd::OnClose();
    }
    DECLARE_MESSAGE_MAP()

private:
    static inline ACCEL s_keys[] = {
        {FVIRTKEY | FCONTROL, 'N', ZO_ID_DOCUMENT_NEW},
        {FVIRTKEY | FCONTROL, 'O', ZO_ID_DOCUMENT_OPEN},
        {FVIRTKEY | FCONTROL, 'S', ZO_ID_DOCUMENT_SAVE},
        {FVIRTKEY | FCONTROL, 'P', ZO_ID_DOCUMENT_PRINT},
    };
    Documents& m_documents;
    HACCEL m_keys = ::CreateAcceleratorTable(s_keys, static_cast<int>(std::size(s_keys)));
};

BEGIN_MESSAGE_MAP(ShellWindow, CZoMDIFrameWnd)
    ON_COMMAND(ZO_ID_DOCUMENT_NEW, OnNew)
    ON_COMMAND(ZO_ID_DOCUMENT_OPEN, OnOpen)
    ON_COMMAND(ZO_ID_DOCUMENT_FONT, OnFont)
    ON_WM_CLOSE()
END_MESSAGE_MAP()

void Activate(const CDocument* document)
{
    POSITION position = document->GetFirstViewPosition();
    const CView* view = position != nullptr ? document->GetNextView(position) : nullptr;
    if (auto* child = DYNAMIC_DOWNCAST(CMDIChildWnd, view != nullptr ? view->GetParentFrame() : nullptr))
        child->MDIActivate();
}

/// The framework makes the window of a document in the thread's main window; that is the shell while this lives.
class ShellIsMainWindow {
public:
    explicit ShellIsMainWindow(HWND shell)
        : m_main(std::exchange(AfxGetThread()->m_pMainWnd, CWnd::FromHandlePermanent(shell)))
    {
    }
    ~ShellIsMainWindow() { AfxGetThread()->m_pMainWnd = m_main; }
    ShellIsMainWindow(const ShellIsMainWindow&) = delete;
    ShellIsMainWindow& operator=(const ShellIsMainWindow&) = delete;

private:
    CWnd* m_main;
};

/// A type of documents of which so many can be open, and no more.
class LimitedType : public CZoMultiDocTemplate {
public:
    LimitedType(UINT resourceId, CRuntimeClass* document, CRuntimeClass* frame, CRuntimeClass* view, int maximum)
        : CZoMultiDocTemplate(resourceId, document, frame, view), m_maximum(maximum)
    {
    }

    /// With all that can be open, shows the last one instead.
    CDocument* OpenDocumentFile(LPCSTR path, BOOL makeVisible) override
    {
        int count = 0;
        CDocument* last = nullptr;
        for (POSITION position = GetFirstDocPosition(); position != nullptr; ++count)
            last = GetNextDoc(position);
        if (last == nullptr || count < m_maximum)
            return CZoMultiDocTemplate::OpenDocumentFile(path, makeVisible);
        Activate(last);
        return last;
    }

private:
    int m_maximum;
};

/// The types of one template library.
void AddTypes(CZoTemplateDLLModule& module)
{
    CPtrArray documents;
    CPtrArray frames;
    CPtrArray views;
    CWordArray ids;
    CWordArray maxima;
    module.GetDOCRunTimeClass(&documents, 0, 0);
    module.GetFRAMERunTimeClass(&frames, 0, 0);
    module.GetVIEWRunTimeClass(&views, 0, 0);
    module.GetDOCResourceID(&ids, 0, 0);
    module.GetMaxDocuments(&maxima, 0, 0);
    const auto runtimeClass = [](const CPtrArray& classes, INT_PTR i) {
        return static_cast<CRuntimeClass*>(classes[i]);
    };
    for (INT_PTR i = 0; i < ids.GetSize(); ++i) {
        if (i < documents.GetSize() && i < frames.GetSize() && i < views.GetSize())
            AfxGetApp()->AddDocTemplate(new LimitedType(ids[i], runtimeClass(documents, i), runtimeClass(frames, i),
                                                        runtimeClass(views, i),
                                                        i < maxima.GetSize() ? maxima[i] : INT_MAX));
    }
}

/// Gives a document without a file the name of its type in the present language; its number stays.
void RenameUntitled(CDocument* document)
{
    const CString title = document->GetTitle();
    int number = title.GetLength();
    while (number > 0 && title[number - 1] >= '0' && title[number - 1] <= '9')
        --number;
    CString name;
    if (document->GetDocTemplate()->GetDocString(name, CDocTemplate::docName))
        document->SetTitle(name + title.Mid(number));
}

/// The type whose files have the extension of \p path; null when there is none.
CDocTemplate* TypeOf(const CString& path)
{
    const CString extension = path.Mid((std::max)(path.ReverseFind('.'), path.ReverseFind('\\') + 1));
    for (POSITION position = AfxGetApp()->GetFirstDocTemplatePosition(); position != nullptr;) {
        CDocTemplate* type = AfxGetApp()->GetNextDocTemplate(position);
        CString known;
        if (type->GetDocString(known, CDocTemplate::filterExt) && known.CompareNoCase(extension) == 0)
            return type;
    }
    return nullptr;
}

/// What a type is called in the registry, in every language.
CString NameOf(const CDocTemplate& type)
{
    CString name;
    type.GetDocString(name, CDocTemplate::regFileTypeId);
    return name;
}

/// The type of that name; null when there is none.
CDocTemplate* FindType(const CString& name)
{
    for (POSITION position = AfxGetApp()->GetFirstDocTemplatePosition(); position != nullptr;) {
        CDocTemplate* type = AfxGetApp()->GetNextDocTemplate(position);
        if (NameOf(*type) == name)
            return type;
    }
    return nullptr;
}

/// Calls \p act(document) for each that is open.
template <class ACT> void ForEachOpen(ACT act)
{
    for (POSITION type = AfxGetApp()->GetFirstDocTemplatePosition(); type != nullptr;) {
        const CDocTemplate* documentType = AfxGetApp()->GetNextDocTemplate(type);
        for (POSITION position = documentType->GetFirstDocPosition(); position != nullptr;)
            act(*documentType->GetNextDoc(position));
    }
}

CDocument* FindOpen(const CString& path)
{
    CDocument* found = nullptr;
    ForEachOpen([&](CDocument& document) {
        if (document.GetPathName().CompareNoCase(path) == 0)
            found = &document;
    });
    return found;
}

} // namespace

Documents::~Documents()
{
    if (GetShell() != nullptr)
        ::DestroyWindow(m_shell);
}

BOOL Documents::LoadTypes()
{
    if (!m_access.IsLoaded() && m_access.LoadAllBrixelTemplates()) {
        for (INT_PTR i = 0; i < m_access.GetModuleCount(); ++i)
            AddTypes(*m_access.GetModule(i));
    }
    return m_access.GetModuleCount() > 0;
}

void Documents::New()
{
    LoadTypes();
    CZoNewBrixelDocType choice(AfxGetApp(), m_owner);
    if (choice.DoModal() != IDOK || choice.GetDocTemplate() == nullptr)
        return;
    Open(choice.GetDocTemplate(), nullptr);
}

void Documents::AskAndOpen()
{
    LoadTypes();
    CString path = m_folder;
    if (ZoDoPromptFileName(path, ZO_IDS_DOCUMENT_OPEN_TITLE, OFN_FILEMUSTEXIST, TRUE, nullptr, AfxGetApp()) != 0)
        OpenPath(path);
}

BOOL Documents::OpenPath(const CString& path)
{
    LoadTypes();
    if (const CDocument* open = FindOpen(path)) {
        ::ShowWindow(m_shell, SW_SHOW);
        Activate(open);
        return TRUE;
    }
    CDocTemplate* type = TypeOf(path);
    if (type == nullptr) { // a file of any kind can be shown in the way that the user likes
        CZoNewBrixelDocType choice(AfxGetApp(), m_owner);
        if (choice.DoModal() != IDOK)
            return FALSE;
        type = choice.GetDocTemplate();
    }
    if (type == nullptr)
        return FALSE;
    if (Open(type, path) == nullptr) {
        CString message;
        message.Format(Text(ZO_IDS_DOCUMENT_NOT_OPENED), (LPCSTR)path);
        AfxMessageBox(message, MB_OK | MB_ICONEXCLAMATION);
        return FALSE;
    }
    TellStatus(ZO_IDS_SETTING_NOT_KEPT, m_recent.Add(path));
    return TRUE;
}

void Documents::OpenRecent(UINT command)
{
    const CString path = m_recent.GetPath(command);
    if (path.IsEmpty())
        return;
    if (FindOpen(path) != nullptr || ::GetFileAttributes(path) != INVALID_FILE_ATTRIBUTES) {
        OpenPath(path);
        return;
    }
    CString message;
    message.Format(Text(ZO_IDS_RECENT_GONE), (LPCSTR)path);
    if (AfxMessageBox(message, MB_YESNO | MB_ICONQUESTION) == IDYES)
        TellStatus(ZO_IDS_SETTING_NOT_KEPT, m_recent.Remove(path));
}

CString Documents::OpenListed(const CStringArray& entries)
{
    CString failed;
    if (entries.GetSize() > 0)
        LoadTypes();
    for (INT_PTR i = 0; i < entries.GetSize(); ++i) {
        const int bar = entries[i].Find('|');
        const CString path = entries[i].Mid(bar + 1);
        CDocTemplate* type = FindType(bar >= 0 ? entries[i].Left(bar) : CString());
        if (FindOpen(path) == nullptr && (type == nullptr || Open(type, path) == nullptr))
            failed += (failed.IsEmpty() ? "" : "\n") + path;
    }
    return failed;
}

void Documents::ListOpen(CStringArray& entries)
{
    ForEachOpen([&](CDocument& document) {
        if (!document.GetPathName().IsEmpty())
            entries.Add(NameOf(*document.GetDocTemplate()) + "|" + document.GetPathName());
    });
}

void Documents::UpdateViews(LPARAM hint)
{
    ForEachOpen([=](CDocument& document) { document.UpdateAllViews(nullptr, hint); });
}

CDocument* Documents::Open(CDocTemplate* type, LPCSTR path)
{
    if (!ShowShell())
        return nullptr;
    const ShellIsMainWindow guard(m_shell);
    return type->OpenDocumentFile(path);
}

BOOL Documents::ShowShell()
{
    if (GetShell() == nullptr) {
        auto* shell = new ShellWindow(*this); // deletes itself with its window
        const LPCSTR windowClass =
            AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1),
                                AfxGetApp()->LoadIcon(ZO_IDI_WORKBENCH));
        if (!shell->Create(windowClass, Text(ZO_IDS_SHELL_TITLE), WS_OVERLAPPEDWINDOW, CRect(90, 70, 870, 620), m_owner,
                           nullptr))
            return FALSE;
        m_shell = shell->m_hWnd;
        LoadMenuOf(m_shell, ZO_IDR_SHELL_MENU);
    }
    ::ShowWindow(m_shell, SW_SHOW);
    return TRUE;
}

void Documents::ReloadTexts()
{
    if (GetShell() == nullptr)
        return;
    ::SetWindowText(m_shell, Text(ZO_IDS_SHELL_TITLE));
    LoadMenuOf(m_shell, ZO_IDR_SHELL_MENU);
    ForEachOpen([](CDocument& document) {
        if (document.GetPathName().IsEmpty())
            RenameUntitled(&document);
        document.UpdateAllViews(nullptr);
    });
}
