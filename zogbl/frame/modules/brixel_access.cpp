#include <zogbl/brixel_access.h>

#include <common/without_throwing.h>
#include <zogbl/installed_modules.h>

#include <memory>

namespace {

/// Whether an object's class is one of the library's. Such an object has its code there too.
bool ComesFrom(const CObject* object, HINSTANCE library)
{
    MEMORY_BASIC_INFORMATION place = {};
    return object != nullptr && VirtualQuery(object->GetRuntimeClass(), &place, sizeof place) != 0 &&
           place.AllocationBase == library;
}

bool Needs(CDocument* document, HINSTANCE library)
{
    if (ComesFrom(document, library))
        return true;
    for (POSITION position = document->GetFirstViewPosition(); position != nullptr;) {
        const CView* view = document->GetNextView(position);
        if (ComesFrom(view, library) || ComesFrom(view->GetParentFrame(), library))
            return true;
    }
    return false;
}

/// The document of a type that needs the library, behind \p skipped others; null when there is none.
CDocument* FindDocument(const CDocTemplate* documentType, HINSTANCE library, int skipped)
{
    for (POSITION position = documentType->GetFirstDocPosition(); position != nullptr;) {
        CDocument* document = documentType->GetNextDoc(position);
        if (Needs(document, library) && skipped-- == 0)
            return document;
    }
    return nullptr;
}

/// Closes the application's documents that need the library. One that does not let itself be closed is passed over.
void CloseDocuments(HINSTANCE library)
{
    const CWinApp* application = AfxGetApp();
    if (application == nullptr || library == nullptr)
        return;
    for (POSITION type = application->GetFirstDocTemplatePosition(); type != nullptr;) {
        const CDocTemplate* documentType = application->GetNextDocTemplate(type);
        int refused = 0;
        while (CDocument* document = FindDocument(documentType, library, refused)) {
            document->m_bAutoDelete = TRUE; // it cannot stay
            document->OnCloseDocument();
            if (FindDocument(documentType, library, refused) == document)
                ++refused;
        }
    }
}

} // namespace

CZoBrixelAccess::~CZoBrixelAccess()
{
    m_bBusy = TRUE;
    while (!m_templateModules.IsEmpty()) { // a plug-in that calls back finds those that are left
        CZoTemplateDLLModule* module = GetModule(0);
        try {
            CloseDocuments(module->GetLibraryHandle());
        } catch (CException* e) {
            e->Delete();
        } catch (...) { // NOLINT(bugprone-empty-catch): a plug-in must not take its host down
        }
        module->ShutdownTemplateDLL();
        m_templateModules.RemoveAt(0);
        delete module;
    }
}

BOOL CZoBrixelAccess::ExtractTemplateFilenames()
{
    if (!m_version.ExtractVersionInfo())
        return FALSE;
    CZoInstalledModules modules;
    const BOOL loaded = modules.Load();
    modules.GetTemplateFileNames(m_templateFileNames, ZO_ACCESS_TEMPLATE);
    return loaded;
}

BOOL CZoBrixelAccess::LoadAllBrixelTemplates()
{
    if (m_bBusy) // a plug-in calls back
        return FALSE;
    m_bBusy = TRUE;
    const BOOL loaded = LoadTemplates();
    m_bBusy = FALSE;
    return loaded;
}

BOOL CZoBrixelAccess::LoadTemplates()
{
    if (!ExtractTemplateFilenames())
        return FALSE;
    for (INT_PTR i = 0; i < m_templateFileNames.GetSize(); ++i) {
        if (!LoadTemplate(m_templateFileNames[i]))
            return FALSE;
    }
    m_bLoaded = TRUE;
    return TRUE;
}

/// \return FALSE when memory has run out. A library that cannot be loaded is left out.
BOOL CZoBrixelAccess::LoadTemplate(LPCSTR fileName)
{
    return WithoutThrowing([&] {
        auto module = std::make_unique<CZoTemplateDLLModule>();
        // A library that lacks entry points counts as loaded: its code, -3, is a large number.
        if (reinterpret_cast<UINT_PTR>(module->LoadLibraryA(fileName)) < ZO_FIRST_LIBRARY_HANDLE)
            return;
        // A plug-in that calls back finds the modules loaded before it.
        module->InitializeTemplateDLL();
        const int id = module->GetTemplateID();
        INT_PTR place = 0;
        while (place < m_templateModules.GetSize() && GetModule(place)->GetTemplateID() <= id)
            ++place;
        try {
            m_templateModules.InsertAt(place, module.get());
        } catch (CMemoryException*) {
            module->ShutdownTemplateDLL();
            throw;
        }
        module.release(); // NOLINT(bugprone-unused-return-value): the array owns it now
    });
}
