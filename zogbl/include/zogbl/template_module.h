/// \file
/// One template library: a plug-in module that brings document types.
#pragma once

#include <zogbl/export.h>

#include <afxext.h>

/// What a template library tells of its buttons for novices; its contents are a matter of application and library.
struct ZoNoviceBarInfo;
using CZoNoviceBarInfoArray = CTypedPtrArray<CPtrArray, ZoNoviceBarInfo*>;

/// Loads a template library and calls its entry points. The library is an extension library of the framework
/// (AfxInitExtensionModule at its attach, and a CDynLinkLibrary if it brings resources), built with the host's compiler:
/// framework objects, run-time classes and exceptions pass between the two, and a library of another kind may end the
/// host. The entry points are exported functions with C names and the C calling convention:
///
/// | name                    | operation                     |
/// | ----------------------- | ----------------------------- |
/// | "InitializeTemplateDLL" | InitializeTemplateDLL         |
/// | "ShutdownTemplateDLL"   | ShutdownTemplateDLL           |
/// | "DRT", "FRT", "VRT"     | Get...RunTimeClass            |
/// | "DRID", "DROE", "DROI"  | GetDOCResource...             |
/// | "CCB", "DCBO"           | Load/FreeCustomControlBars    |
/// | "LCBS", "SCBS"          | Load/SaveControlBarState      |
/// | "IHS", "GHS"            | InvokeHelpSystem, GetHelpStringID |
/// | "GNBI"                  | GetNoviceBarInfo              |
/// | "PNC", "PNUC"           | ProcessNovice...Command       |
/// | "GTID", "GMD"           | GetTemplateID, GetMaxDocuments |
///
/// An operation hands its arguments on unchanged and answers what the entry point answers; 0, or nothing, when the
/// library lacks the entry point, is not loaded, or the entry point let a C++ exception go, which ends here; a fault of
/// the processor ends the host. What the array and number arguments mean is a matter of application and library; the
/// results of those are numbers of elements.
///
/// Objects, classes and windows that come from the library must be gone before it is freed.
class ZOGBL_API CZoTemplateDLLModule : public CObject {
public:
    CZoTemplateDLLModule() = default;
    ~CZoTemplateDLLModule() override; ///< frees the library if it is loaded

    /// Loads a library, in place of one that this object has loaded before.
    /// \return its handle; ZO_TEMPLATE_INCOMPLETE if some entry points are missing: the library stays loaded then, and
    /// what it lacks answers 0; the system's answer, below 32, if it cannot be loaded; the answer of CheckLibrary if
    /// that is not 0
    virtual HINSTANCE LoadLibraryA(LPCSTR fileName);
    /// Not for the library's own entry points: the code that runs would go.
    /// \return FALSE when no library is loaded, or the system refuses.
    virtual BOOL FreeLibrary();

protected:
    /// Asked before anything is stored. \return 0 for no objection. Anything else becomes the result of LoadLibraryA;
    /// the library is then deliberately left loaded, without belonging to this object: whoever objects decides what
    /// becomes of it.
    virtual INT_PTR CheckLibrary(HINSTANCE library);

public:
    virtual BOOL InitializeTemplateDLL();
    virtual BOOL ShutdownTemplateDLL();
    virtual UINT GetDOCRunTimeClass(CPtrArray* classes, int first, int second);
    virtual UINT GetFRAMERunTimeClass(CPtrArray* classes, int first, int second);
    virtual UINT GetVIEWRunTimeClass(CPtrArray* classes, int first, int second);
    virtual UINT GetDOCResourceID(CWordArray* ids, int first, int second);
    virtual UINT GetDOCResourceOLEEmbedding(CWordArray* ids);
    virtual UINT GetDOCResourceOLEInPlace(CWordArray* ids);
    virtual BOOL LoadCustomControlBars(CFrameWnd* first, CFrameWnd* second, int number);
    virtual void FreeCustomControlBars(int number);
    virtual void LoadControlBarState(CWordArray* state);
    virtual void SaveControlBarState(CWordArray* state);
    virtual void InvokeHelpSystem();
    virtual UINT GetHelpStringID();
    virtual UINT GetNoviceBarInfo(CZoNoviceBarInfoArray* records, int first, int second);
    virtual void ProcessNoviceCommand(UINT commandId, CDocument* document);
    virtual void ProcessNoviceUpdateCommand(UINT commandId, CDocument* document, CCmdUI* item);
    virtual int GetTemplateID();
    virtual UINT GetMaxDocuments(CWordArray* maxima, int first, int second);

    HINSTANCE GetLibraryHandle() const { return m_hLibrary; } ///< null when no library is loaded

private:
    BOOL FindEntryPoints();
    void ForgetEntryPoints();

    HINSTANCE m_hLibrary = nullptr;
    // One for each entry point, in their order; null where the library has none.
    BOOL (*m_pfnInitializeTemplateDLL)() = nullptr;
    BOOL (*m_pfnShutdownTemplateDLL)() = nullptr;
    UINT (*m_pfnDRT)(CPtrArray*, int, int) = nullptr;
    UINT (*m_pfnFRT)(CPtrArray*, int, int) = nullptr;
    UINT (*m_pfnVRT)(CPtrArray*, int, int) = nullptr;
    UINT (*m_pfnDRID)(CWordArray*, int, int) = nullptr;
    UINT (*m_pfnDROE)(CWordArray*) = nullptr;
    UINT (*m_pfnDROI)(CWordArray*) = nullptr;
    BOOL (*m_pfnCCB)(CFrameWnd*, CFrameWnd*, int) = nullptr;
    void (*m_pfnDCBO)(int) = nullptr;
    void (*m_pfnLCBS)(CWordArray*) = nullptr;
    void (*m_pfnSCBS)(CWordArray*) = nullptr;
    void (*m_pfnIHS)() = nullptr;
    UINT (*m_pfnGHS)() = nullptr;
    UINT (*m_pfnGNBI)(CZoNoviceBarInfoArray*, int, int) = nullptr;
    void (*m_pfnPNC)(UINT, CDocument*) = nullptr;
    void (*m_pfnPNUC)(UINT, CDocument*, CCmdUI*) = nullptr;
    int (*m_pfnGTID)() = nullptr;
    UINT (*m_pfnGMD)(CWordArray*, int, int) = nullptr;
};

/// The result of CZoTemplateDLLModule::LoadLibraryA for a library that lacks entry points: -3.
inline const HINSTANCE ZO_TEMPLATE_INCOMPLETE = reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(-3));
/// Results below this one are codes: the library is not loaded.
inline constexpr UINT_PTR ZO_FIRST_LIBRARY_HANDLE = 32;
