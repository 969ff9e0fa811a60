/// \file
/// The template libraries of an application.
#pragma once

#include <zogbl/export.h>
#include <zogbl/template_module.h>
#include <zogbl/version_resource.h>

#include <afxcoll.h>

/// Loads all template libraries that are installed for the running application, in the order of their template ids. A
/// host makes one object, loads, and builds its document types from the modules.
///
/// The object must live as long as anything of a library is in use. Before it goes, the host closes the documents of
/// its template libraries, makes no new ones, and gives up all it has from them: menus, control bars, classes. Document
/// templates stay in the application's list, but those of freed libraries must not be opened any more.
///
/// As a last resort, so that no window is left without its code, the destructor closes every open document of the
/// application whose class, view class or frame class lies in a library that goes. The user is not asked. A document
/// that does not let itself be closed is passed over.
class ZOGBL_API CZoBrixelAccess {
public:
    CZoBrixelAccess() = default;
    /// For each module in the order of the list: closes the documents that are still open, calls ShutdownTemplateDLL,
    /// takes the module from the list, and frees the library.
    virtual ~CZoBrixelAccess();
    CZoBrixelAccess(const CZoBrixelAccess&) = delete;
    CZoBrixelAccess& operator=(const CZoBrixelAccess&) = delete;

    /// Loads and initialises the template libraries of all installed modules; to be called once. A library that cannot
    /// be loaded is left out. A library that lacks entry points is kept, and those give 0. A library whose
    /// initialisation fails is kept too. Modules with equal ids keep the order in which they were loaded.
    /// \return FALSE: the application has no usable version resource, or memory has run out: the modules loaded so far
    /// and IsLoaded then stay as they are. Also if a plug-in calls it while this object loads or goes: nothing happens
    virtual BOOL LoadAllBrixelTemplates();

    /// Reads the file names of the template libraries. \return FALSE: the application has no usable version resource,
    /// or there is no memory for the list of modules. If there is none for the names alone, the names are empty
    BOOL ExtractTemplateFilenames();
    CStringArray& GetTemplateFilenamesArray() { return m_templateFileNames; }

    /// The modules loaded, in the order of their template ids; they belong to this object. A plug-in that calls back
    /// during its initialisation finds the modules loaded before it. During its shutdown it finds itself and those that
    /// go after it.
    INT_PTR GetModuleCount() const { return m_templateModules.GetSize(); }
    CZoTemplateDLLModule* GetModule(INT_PTR index) const
    {
        return static_cast<CZoTemplateDLLModule*>(m_templateModules[index]);
    }
    BOOL IsLoaded() const { return m_bLoaded; } ///< whether LoadAllBrixelTemplates has succeeded

private:
    BOOL LoadTemplates();
    BOOL LoadTemplate(LPCSTR fileName);

    CZoVersionResource m_version;
    CObArray m_templateModules; // of CZoTemplateDLLModule, owned, sorted by template id
    CStringArray m_templateFileNames;
    BOOL m_bLoaded = FALSE;
    BOOL m_bBusy = FALSE; // loading or going
};
