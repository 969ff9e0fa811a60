/// \file
/// One template library: a plug-in module that brings document types.
#pragma once

#include <zogbl/export.h>

#include <afxext.h>

/// A template library's data about its buttons for novices. Application and library agree on the contents.
struct ZoNoviceBarInfo;
using CZoNoviceBarInfoArray = CTypedPtrArray<CPtrArray, ZoNoviceBarInfo*>;

/// Loads a template library and calls its entry points.
///
/// The library is an extension library of the framework: it calls AfxInitExtensionModule when it is attached, and makes
/// a CDynLinkLibrary if it brings resources. Its DllMain does no more. If it has texts in the user's language, its
/// InitializeTemplateDLL loads their library with CZoModuleLanguage. It must be built with the host's compiler, because
/// framework objects, run-time classes and exceptions pass between the two; any other library may end the host. The
/// entry points are exported functions with C names and the C calling convention:
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
/// An operation passes its arguments on unchanged and returns the entry point's result. It returns 0, or nothing, if
/// the library is not loaded or lacks the entry point, or if the entry point throws a C++ exception, which ends here. A
/// fault of the processor ends the host. Application and library agree on the meaning of array and number arguments;
/// the UINT result of an operation with an array is a number of elements.
///
/// Objects, classes and windows of the library must be gone before it is freed.
class ZOGBL_API CZoTemplateDLLModule : public CObject {
public:
    CZoTemplateDLLModule() = default;
    ~CZoTemplateDLLModule() override; ///< frees the library if it is loaded

    /// Loads a library. A library that this object has loaded before is freed first.
    /// \return
    ///   the handle              success
    ///   ZO_TEMPLATE_INCOMPLETE  some entry points are missing. The library stays loaded; the missing ones answer 0.
    ///   below 32                the system's result: the library cannot be loaded
    ///   other                   the result of CheckLibrary, if it is not 0
    virtual HINSTANCE LoadLibraryA(LPCSTR fileName);
    /// Do not call it from the library's own entry points: the code that runs would be freed.
    /// \return FALSE if no library is loaded or the system refuses
    virtual BOOL FreeLibrary();

protected:
    /// Asked before anything is stored. \return 0: no objection. Any other value becomes the result of LoadLibraryA;
    /// the library then stays loaded but does not belong to this object. This is deliberate: the objecting class
    /// decides about it.
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

    HINSTANCE GetLibraryHandle() const { return m_hLibrary; } ///< null if no library is loaded

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

/// Result of CZoTemplateDLLModule::LoadLibraryA if the library lacks entry points: -3.
inline const HINSTANCE ZO_TEMPLATE_INCOMPLETE = reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(-3));
/// Results below this are codes: the library is not loaded.
inline constexpr UINT_PTR ZO_FIRST_LIBRARY_HANDLE = 32;
