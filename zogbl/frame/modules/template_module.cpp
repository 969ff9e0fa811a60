#include <zogbl/template_module.h>

#include <utility>

namespace {

/// Calls an entry point, if there is one; no exception passes.
template <class RESULT, class... PARAMETERS, class... ARGUMENTS>
RESULT Call(RESULT (*entryPoint)(PARAMETERS...), ARGUMENTS... arguments)
{
    try {
        if (entryPoint != nullptr)
            return entryPoint(arguments...);
    } catch (CException* e) {
        e->Delete();
    } catch (...) { // NOLINT(bugprone-empty-catch): whatever it is, the host goes on without the answer
    }
    return RESULT();
}

} // namespace

CZoTemplateDLLModule::~CZoTemplateDLLModule()
{
    if (m_hLibrary != nullptr)
        ::FreeLibrary(m_hLibrary);
}

HINSTANCE CZoTemplateDLLModule::LoadLibraryA(LPCSTR fileName)
{
    if (m_hLibrary != nullptr)
        FreeLibrary();
    const HINSTANCE library = ::LoadLibraryA(fileName);
    if (reinterpret_cast<UINT_PTR>(library) < ZO_FIRST_LIBRARY_HANDLE)
        return library;
    if (const INT_PTR objection = CheckLibrary(library))
        return reinterpret_cast<HINSTANCE>(objection);
    m_hLibrary = library;
    return FindEntryPoints() ? library : ZO_TEMPLATE_INCOMPLETE;
}

BOOL CZoTemplateDLLModule::FreeLibrary()
{
    if (m_hLibrary == nullptr)
        return FALSE;
    ForgetEntryPoints();
    return ::FreeLibrary(std::exchange(m_hLibrary, nullptr));
}

INT_PTR CZoTemplateDLLModule::CheckLibrary(HINSTANCE) { return 0; }

BOOL CZoTemplateDLLModule::FindEntryPoints()
{
    BOOL complete = TRUE;
    const auto find = [&](LPCSTR name, auto& entryPoint) {
        entryPoint = reinterpret_cast<std::remove_reference_t<decltype(entryPoint)>>(
            reinterpret_cast<void*>(::GetProcAddress(m_hLibrary, name)));
        complete = complete && entryPoint != nullptr;
    };
    find("InitializeTemplateDLL", m_pfnInitializeTemplateDLL);
    find("ShutdownTemplateDLL", m_pfnShutdownTemplateDLL);
    find("DRT", m_pfnDRT);
    find("FRT", m_pfnFRT);
    find("VRT", m_pfnVRT);
    find("DRID", m_pfnDRID);
    find("DROE", m_pfnDROE);
    find("DROI", m_pfnDROI);
    find("CCB", m_pfnCCB);
    find("DCBO", m_pfnDCBO);
    find("LCBS", m_pfnLCBS);
    find("SCBS", m_pfnSCBS);
    find("IHS", m_pfnIHS);
    find("GHS", m_pfnGHS);
    find("GNBI", m_pfnGNBI);
    find("PNC", m_pfnPNC);
    find("PNUC", m_pfnPNUC);
    find("GTID", m_pfnGTID);
    find("GMD", m_pfnGMD);
    return complete;
}

void CZoTemplateDLLModule::ForgetEntryPoints()
{
    m_pfnInitializeTemplateDLL = nullptr;
    m_pfnShutdownTemplateDLL = nullptr;
    m_pfnDRT = nullptr;
    m_pfnFRT = nullptr;
    m_pfnVRT = nullptr;
    m_pfnDRID = nullptr;
    m_pfnDROE = nullptr;
    m_pfnDROI = nullptr;
    m_pfnCCB = nullptr;
    m_pfnDCBO = nullptr;
    m_pfnLCBS = nullptr;
    m_pfnSCBS = nullptr;
    m_pfnIHS = nullptr;
    m_pfnGHS = nullptr;
    m_pfnGNBI = nullptr;
    m_pfnPNC = nullptr;
    m_pfnPNUC = nullptr;
    m_pfnGTID = nullptr;
    m_pfnGMD = nullptr;
}

// Entry points --------------------------------------------------------------------------------------------------------

BOOL CZoTemplateDLLModule::InitializeTemplateDLL() { return Call(m_pfnInitializeTemplateDLL); }

BOOL CZoTemplateDLLModule::ShutdownTemplateDLL() { return Call(m_pfnShutdownTemplateDLL); }

UINT CZoTemplateDLLModule::GetDOCRunTimeClass(CPtrArray* classes, int first, int second)
{
    return Call(m_pfnDRT, classes, first, second);
}

UINT CZoTemplateDLLModule::GetFRAMERunTimeClass(CPtrArray* classes, int first, int second)
{
    return Call(m_pfnFRT, classes, first, second);
}

UINT CZoTemplateDLLModule::GetVIEWRunTimeClass(CPtrArray* classes, int first, int second)
{
    return Call(m_pfnVRT, classes, first, second);
}

UINT CZoTemplateDLLModule::GetDOCResourceID(CWordArray* ids, int first, int second)
{
    return Call(m_pfnDRID, ids, first, second);
}

UINT CZoTemplateDLLModule::GetDOCResourceOLEEmbedding(CWordArray* ids) { return Call(m_pfnDROE, ids); }

UINT CZoTemplateDLLModule::GetDOCResourceOLEInPlace(CWordArray* ids) { return Call(m_pfnDROI, ids); }

BOOL CZoTemplateDLLModule::LoadCustomControlBars(CFrameWnd* first, CFrameWnd* second, int number)
{
    return Call(m_pfnCCB, first, second, number);
}

void CZoTemplateDLLModule::FreeCustomControlBars(int number) { Call(m_pfnDCBO, number); }

void CZoTemplateDLLModule::LoadControlBarState(CWordArray* state) { Call(m_pfnLCBS, state); }

void CZoTemplateDLLModule::SaveControlBarState(CWordArray* state) { Call(m_pfnSCBS, state); }

void CZoTemplateDLLModule::InvokeHelpSystem() { Call(m_pfnIHS); }

UINT CZoTemplateDLLModule::GetHelpStringID() { return Call(m_pfnGHS); }

UINT CZoTemplateDLLModule::GetNoviceBarInfo(CZoNoviceBarInfoArray* records, int first, int second)
{
    return Call(m_pfnGNBI, records, first, second);
}

void CZoTemplateDLLModule::ProcessNoviceCommand(UINT commandId, CDocument* document)
{
    Call(m_pfnPNC, commandId, document);
}

void CZoTemplateDLLModule::ProcessNoviceUpdateCommand(UINT commandId, CDocument* document, CCmdUI* item)
{
    Call(m_pfnPNUC, commandId, document, item);
}

int CZoTemplateDLLModule::GetTemplateID() { return Call(m_pfnGTID); }

UINT CZoTemplateDLLModule::GetMaxDocuments(CWordArray* maxima, int first, int second)
{
    return Call(m_pfnGMD, maxima, first, second);
}
