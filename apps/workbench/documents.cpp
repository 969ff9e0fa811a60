#include "documents.h"

#include "page.h"

#include <zogbl/new_document_dialog.h>
#include <zogbl/resource_ids.h>
#include <zomfx/frame_window.h>
#include <zomfx/multi_doc_template.h>

#include <climits>
#include <commdlg.h>
#include <utility>

namespace {

class ShellWindow : public CZoMDIFrameWnd {};

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
        POSITION position = last->GetFirstViewPosition();
        CFrameWnd* frame = position != nullptr ? last->GetNextView(position)->GetParentFrame() : nullptr;
        if (auto* child = DYNAMIC_DOWNCAST(CMDIChildWnd, frame))
            child->MDIActivate();
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

/// Asks for a file of a type. \return empty when the user gives none
CString AskForFile(const CDocTemplate* type, HWND owner)
{
    CString name;
    CString extension;
    type->GetDocString(name, CDocTemplate::filterName);
    if (!type->GetDocString(extension, CDocTemplate::filterExt) || extension.IsEmpty())
        return {};
    const CString filter = name + '\0' + "*.*" + '\0';
    char path[MAX_PATH] = "";
    OPENFILENAME choice = {};
    choice.lStructSize = OPENFILENAME_SIZE_VERSION_400;
    choice.hwndOwner = owner;
    choice.lpstrFilter = filter;
    choice.lpstrFile = path;
    choice.nMaxFile = sizeof path;
    choice.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return ::GetOpenFileName(&choice) ? path : "";
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
    const CString path = AskForFile(choice.GetDocTemplate(), m_owner->m_hWnd);
    Open(choice.GetDocTemplate(), path.IsEmpty() ? nullptr : (LPCSTR)path);
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
        auto* shell = new ShellWindow; // deletes itself with its window
        const LPCSTR windowClass =
            AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1),
                                AfxGetApp()->LoadIcon(ZO_IDI_LIBRARY));
        if (!shell->Create(windowClass, Text(ZO_IDS_SHELL_TITLE), WS_OVERLAPPEDWINDOW, CRect(90, 70, 870, 620), m_owner,
                           nullptr))
            return FALSE;
        m_shell = shell->m_hWnd;
    }
    ::ShowWindow(m_shell, SW_SHOW);
    return TRUE;
}

void Documents::ReloadTexts()
{
    if (GetShell() == nullptr)
        return;
    ::SetWindowText(m_shell, Text(ZO_IDS_SHELL_TITLE));
    for (POSITION type = AfxGetApp()->GetFirstDocTemplatePosition(); type != nullptr;) {
        const CDocTemplate* documentType = AfxGetApp()->GetNextDocTemplate(type);
        for (POSITION position = documentType->GetFirstDocPosition(); position != nullptr;) {
            CDocument* document = documentType->GetNextDoc(position);
            if (document->GetPathName().IsEmpty())
                RenameUntitled(document);
            document->UpdateAllViews(nullptr);
        }
    }
}
