#include "registration.h"

#include <common/without_throwing.h>

#include <cstdio>

namespace {

constexpr DWORD kMachine = ZO_MODE_LOCAL_MACHINE;
constexpr LPCSTR kAccess = "Access";
constexpr DWORD kNoTemplates = 0; // a module that provides no template library

/// The suite's template libraries: found beside the programs, by their file names.
struct TemplateLibrary {
    LPCSTR module;
    LPCSTR fileName;
    DWORD access;
};
constexpr TemplateLibrary kTemplateLibraries[] = {
    {"VIEWBrixel", "ZOVIEWER.DLL", 1},
    {"DATABrixel", "ZODATA.DLL", 7},
    {"TELEBrixel", "ZOPHONE.DLL", 15},
};

CString LanguageName(DWORD id)
{
    CString name;
    name.Format("%04x", static_cast<unsigned>(id));
    return name;
}

/// A path as the name of a key or value.
CString EntryName(CString path)
{
    path.Replace("\\", "/");
    return path;
}

/// An enumeration that ends with this has met something.
constexpr DWORD kMet = 0xFFFF;
DWORD MeetSubkey(void*, LPCSTR) { return kMet; }
DWORD MeetValue(void*, LPCSTR, const void*, DWORD) { return kMet; }

bool IsEmptyKey(CZoGlobalConfig& config, const CString& key)
{
    return config.EnumEntries(kMachine, key, &MeetSubkey, nullptr) == ERROR_SUCCESS &&
           config.EnumValues(kMachine, key, &MeetValue, nullptr) == ERROR_SUCCESS;
}

DWORD CollectSubkey(void* context, LPCSTR name)
{
    const BOOL added = WithoutThrowing([=] { static_cast<CStringArray*>(context)->Add(name); });
    return added ? ERROR_SUCCESS : ERROR_NOT_ENOUGH_MEMORY;
}

DWORD CountValue(void* context, LPCSTR, const void*, DWORD)
{
    ++*static_cast<DWORD*>(context);
    return ERROR_SUCCESS;
}

DWORD IfThere(DWORD status) { return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status; }

} // namespace

// Registering ---------------------------------------------------------------------------------------------------------

DWORD Registration::Register(const Product& product, const CString& user, const CDWordArray& languages, DWORD current)
{
    DWORD status = RegisterModule(product, user, languages, current);
    if (status == ERROR_SUCCESS)
        status = RegisterTemplates(product, user);
    if (status == ERROR_SUCCESS)
        status = RegisterModule(m_library, user, languages, current);
    if (status == ERROR_SUCCESS)
        status = m_config.SetValue(kMachine, InstallationsKey(product), EntryName(product.folder), 1);
    return status;
}

DWORD Registration::RegisterModule(const Product& product, const CString& user, const CDWordArray& languages,
                                   DWORD current)
{
    const CString module =
        product.root + "\\Users\\" + user + "\\Modules\\" + product.internalName + "\\" + product.version;
    DWORD status = SetAccess(module, kNoTemplates);
    if (status == ERROR_SUCCESS)
        status = WriteLanguages(module + "\\Languages", languages, current);
    if (status == ERROR_SUCCESS)
        std::printf("registered: %s, module %s, user %s\n", (LPCSTR)product.name, (LPCSTR)product.internalName,
                    (LPCSTR)user);
    return status;
}

/// Enters the template libraries that are there for a product's applications.
DWORD Registration::RegisterTemplates(const Product& product, const CString& user)
{
    DWORD status = ERROR_SUCCESS;
    for (const TemplateLibrary& library : kTemplateLibraries) {
        if (GetFileAttributesA(m_folder + library.fileName) == INVALID_FILE_ATTRIBUTES)
            continue;
        const CString module =
            product.root + "\\Users\\" + user + "\\Modules\\" + library.module + "\\" + product.version;
        status = SetAccess(module, library.access);
        if (status == ERROR_SUCCESS)
            status = m_config.SetValue(kMachine, module, "Template", library.fileName);
        if (status != ERROR_SUCCESS)
            break;
    }
    return status;
}

/// Makes a module's key with its access flags; flags that are there already stand.
DWORD Registration::SetAccess(const CString& module, DWORD access)
{
    DWORD status = m_config.CreateKey(kMachine, module);
    BOOL hasAccess = FALSE;
    if (status == ERROR_SUCCESS)
        status = m_config.DoesEntryExist(kMachine, module, kAccess, hasAccess);
    if (status == ERROR_SUCCESS && !hasAccess)
        status = m_config.SetValue(kMachine, module, kAccess, access);
    return status;
}

DWORD Registration::WriteLanguages(const CString& key, const CDWordArray& languages, DWORD current)
{
    for (INT_PTR i = 0; current == 0 && i < languages.GetSize(); ++i) { // the user's choice stands
        DWORD flag = 0;
        m_config.GetValue(kMachine, key, LanguageName(languages[i]), flag, 0);
        if (flag == 1)
            current = languages[i];
    }
    if (current == 0)
        current = languages[0];

    // Anew, for a language whose library is no longer there must not stay in the list.
    DWORD status = IfThere(m_config.DeleteSection(kMachine, key, nullptr));
    for (INT_PTR i = 0; status == ERROR_SUCCESS && i < languages.GetSize(); ++i)
        status =
            m_config.SetValue(kMachine, key, LanguageName(languages[i]), static_cast<DWORD>(languages[i] == current));
    return status;
}

// Removing ------------------------------------------------------------------------------------------------------------

DWORD Registration::RemoveUser(const Product& product, const CString& user)
{
    const CString key = product.root + "\\Users\\" + user;
    return IsThere(key) ? RemoveKey(key) : static_cast<DWORD>(ERROR_FILE_NOT_FOUND);
}

/// The entry of the installation goes last, so that it can be removed again if something before fails.
DWORD Registration::RemoveProduct(const Product& product, bool& isInUse)
{
    isInUse = false;
    const CString installations = InstallationsKey(product);
    BOOL isRegistered = FALSE;
    DWORD status = m_config.DoesEntryExist(kMachine, installations, EntryName(product.folder), isRegistered);
    if (status != ERROR_SUCCESS || !isRegistered)
        return status != ERROR_SUCCESS ? status : static_cast<DWORD>(ERROR_FILE_NOT_FOUND);
    DWORD count = 0;
    status = m_config.EnumValues(kMachine, installations, &CountValue, &count);
    if (status != ERROR_SUCCESS)
        return status;
    isInUse = count > 1;
    if (isInUse)
        return m_config.DeleteEntry(kMachine, installations, EntryName(product.folder));

    CStringArray products;
    status = m_config.EnumEntries(kMachine, ProductsKey(), &CollectSubkey, &products);
    if (status != ERROR_SUCCESS)
        return status;
    const bool isLast = products.GetSize() == 1;
    if (!SharesProduct(product))
        status = RemoveTree(product.root);
    else if (!isLast) // others need the library, which lives in the same product
        status = RemoveModule(product);
    if (status == ERROR_SUCCESS && isLast)
        status = RemoveKey(m_library.root + "\\Users");
    if (status == ERROR_SUCCESS)
        status = isLast ? RemoveTree(m_library.root) : RemoveKey(installations);
    return status;
}

CString Registration::InstallationsKey(const Product& product) const
{
    return ProductsKey() + "\\" + EntryName(product.root);
}

/// Removes a module's key from every user of its product.
DWORD Registration::RemoveModule(const Product& product)
{
    const CString users = product.root + "\\Users";
    CStringArray names;
    DWORD status = IfThere(m_config.EnumEntries(kMachine, users, &CollectSubkey, &names));
    for (INT_PTR i = 0; status == ERROR_SUCCESS && i < names.GetSize(); ++i)
        status = RemoveKey(users + "\\" + names[i] + "\\Modules\\" + product.internalName);
    return status;
}

bool Registration::IsThere(const CString& key)
{
    return m_config.EnumEntries(kMachine, key, &MeetSubkey, nullptr) != ERROR_FILE_NOT_FOUND;
}

/// Deletes a key, if it is there, with everything below it.
DWORD Registration::RemoveKey(const CString& key)
{
    const DWORD status = IfThere(m_config.DeleteSection(kMachine, key, nullptr));
    // Something below it could not be found by its name, which has characters that this code page lacks.
    return status == ERROR_SUCCESS && IsThere(key) ? static_cast<DWORD>(ERROR_DIR_NOT_EMPTY) : status;
}

/// Removes a product's key and the keys above it that this leaves empty.
DWORD Registration::RemoveTree(const CString& root)
{
    DWORD status = RemoveKey(root);
    CString parent = root;
    for (int levels = 0; status == ERROR_SUCCESS && levels < 2;
         ++levels) { // product and company; never "Software" itself
        parent = parent.Left(parent.ReverseFind('\\'));
        if (!IsEmptyKey(m_config, parent))
            break;
        status = m_config.DeleteSection(kMachine, parent, nullptr);
    }
    return status;
}
