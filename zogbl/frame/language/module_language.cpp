#include <zogbl/module_language.h>

#include <common/without_throwing.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>

#include "ground/language_followers.h"
#include "ground/module_data.h"

#include <memory>
#include <utility>

/// A library in its place in the framework's resource chain. Its link stands in the chain for itself, not for the
/// module: what the framework takes out with a module would be deleted.
class CZoModuleLanguage::Library {
public:
    explicit Library(HINSTANCE module) : m_module(module) {}
    ~Library() { Take(nullptr); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    HINSTANCE GetHandle() const { return m_link.m_hResource; }

    /// Takes the library of the process's language in place of the one before. \return FALSE, and that one stays, if
    /// there is none
    BOOL Follow()
    {
        const DWORD languageId = ZoGblGetLanguageLCID();
        char path[kZoLibraryPathSize];
        const DWORD length = GetModuleFileNameA(m_module, path, sizeof path);
        if (languageId == 0 || length == 0 || length == sizeof path)
            return FALSE;
        CZoLanguageSupport rule;
        CString fileName;
        CString name;
        rule.ExtractFilenameFromPath(path, fileName);
        rule.BuildLanguageModuleFilename(fileName, languageId, name);
        const HINSTANCE library = name.IsEmpty() ? nullptr : LoadLibraryA(name);
        if (reinterpret_cast<UINT_PTR>(library) <= 32)
            return FALSE;
        Take(library);
        return TRUE;
    }

private:
    void Take(HINSTANCE library)
    {
        m_link.m_hModule = library;
        if (const HINSTANCE previous = std::exchange(m_link.m_hResource, library))
            FreeLibrary(previous);
    }

    HINSTANCE m_module;
    CDynLinkLibrary m_link{nullptr, nullptr};
    LanguageFollower m_follower{LanguageFollower::Occasion::kLibrary,
                                [](void* library) { static_cast<Library*>(library)->Follow(); }, this};
};

BOOL CZoModuleLanguage::Load(HINSTANCE module)
{
    Unload();
    return WithoutThrowing([&]() -> BOOL {
        auto library = std::make_unique<Library>(module);
        if (!library->Follow())
            return FALSE;
        m_library = library.release();
        return TRUE;
    });
}

void CZoModuleLanguage::Unload() { delete std::exchange(m_library, nullptr); }

HINSTANCE CZoModuleLanguage::GetLibraryHandle() const
{
    return m_library != nullptr ? m_library->GetHandle() : nullptr;
}
