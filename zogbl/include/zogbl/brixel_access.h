/// \file
/// The template libraries of an application.
#pragma once

#include <zogbl/export.h>
#include <zogbl/template_module.h>
#include <zogbl/version_resource.h>

#include <afxcoll.h>

/// Loads all template libraries that are installed for the running application, and keeps them in the order of their
/// template ids. A host makes one object, loads, and builds its document types from the modules; the object must live
/// for as long as anything of a library is in use.
///
/// Before the object goes, the host closes the documents of its template libraries, makes no further ones, and lets go
/// of what it has from them: menus, control bars, classes. As a last resort the destructor closes every open document
/// of the application whose class, or whose views' or frames' class, lies in a library that is about to go, so that no
/// window is left without its code; the user is not asked. Document templates stay in the application's list; those of
/// freed libraries must not be opened any more.
class ZOGBL_API CZoBrixelAccess {
public:
    CZoBrixelAccess() = default;
    /// For each module in the order of the list: closes documents that are still open, calls ShutdownTemplateDLL, takes
    /// the module from the list, and frees the library.
    virtual ~CZoBrixelAccess();
    CZoBrixelAccess(const CZoBrixelAccess&) = delete;
    CZoBrixelAccess& operator=(const CZoBrixelAccess&) = delete;

    /// Loads and initialises the template libraries of all installed modules; to be called once. A plug-in that calls
    /// it while this object loads or goes gets FALSE, and nothing happens. Libraries that cannot be loaded are left
    /// out. One that lacks entry points is kept (what it lacks answers 0), and so is one whose initialisation fails.
    /// Modules with equal ids keep the order of their loading.
    /// \return FALSE when the application has no usable version resource, or memory has run out: then the modules
    /// loaded so far stay, and IsLoaded as it was.
    virtual BOOL LoadAllBrixelTemplates();

    /// Reads the file names of the template libraries. \return FALSE when the application has no usable version
    /// resource, or memory has run out.
    BOOL ExtractTemplateFilenames();
    CStringArray& GetTemplateFilenamesArray() { return m_templateFileNames; }

    /// The modules loaded, in the order of their template ids; they belong to this object. A plug-in that calls back
    /// while it initialises finds those before it; while it shuts down, itself and those that go after it.
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
