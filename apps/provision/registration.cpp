#include "registration.h"

#include <cstdio>

namespace {

constexpr LPCSTR kAccess = "Access";
constexpr DWORD kNoTemplates = 0; // a module that provides no template library

CString LanguageName(DWORD id)
{
    CString name;
    name.Format("%04x", static_cast<unsigned>(id));
    return name;
}

DWORD NoteThatNotEmpty(void* context, LPCSTR)
{
    *static_cast<bool*>(context) = false;
    return ERROR_SUCCESS;
}
DWORD NoteThatHasValues(void* context, LPCSTR, const void*, DWORD) { return NoteThatNotEmpty(context, nullptr); }

bool IsEmptyKey(CZoGlobalConfig& config, const CString& key)
{
    bool empty = true;
    return config.EnumEntries(ZO_MODE_LOCAL_MACHINE, key, &NoteThatNotEmpty, &empty) == ERROR_SUCCESS &&
           config.EnumValues(ZO_MODE_LOCAL_MACHINE, key, &NoteThatHasValues, &empty) == ERROR_SUCCESS && empty;
}

} // namespace

Registration::Registration(const CString& user, const CDWordArray& languages, DWORD current)
    : m_user(user), m_languages(languages), m_current(current)
{
}

DWORD Registration::Register(const Product& product)
{
    const CString module = product.root + "\\Users\\" + m_user + "\\Modules\\" + product.internalName + "\\" +
                           product.version;
    DWORD status = m_config.CreateKey(ZO_MODE_LOCAL_MACHINE, module);
    if (status == ERROR_SUCCESS)
        status = WriteIfMissing(module, kAccess, kNoTemplates);
    if (status == ERROR_SUCCESS)
        status = WriteLanguages(module + "\\Languages");
    if (status == ERROR_SUCCESS)
        std::printf("registered: %s, module %s, user %s\n", (LPCSTR)product.name, (LPCSTR)product.internalName,
                    (LPCSTR)m_user);
    return status;
}

DWORD Registration::WriteIfMissing(const CString& key, LPCSTR name, DWORD value)
{
    BOOL exists = FALSE;
    const DWORD status = m_config.DoesEntryExist(ZO_MODE_LOCAL_MACHINE, key, name, exists);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
        return status;
    return exists ? ERROR_SUCCESS : m_config.SetValue(ZO_MODE_LOCAL_MACHINE, key, name, value);
}

DWORD Registration::WriteLanguages(const CString& key)
{
    DWORD current = m_current;
    for (INT_PTR i = 0; current == 0 && i < m_languages.GetSize(); ++i) { // the user's choice stands
        DWORD flag = 0;
        m_config.GetValue(ZO_MODE_LOCAL_MACHINE, key, LanguageName(m_languages[i]), flag, 0);
        if (flag == 1)
            current = m_languages[i];
    }
    if (current == 0)
        current = m_languages[0];

    // Anew, for a language whose library is no longer there must not stay in the list.
    DWORD status = m_config.DeleteSection(ZO_MODE_LOCAL_MACHINE, key, nullptr);
    if (status == ERROR_FILE_NOT_FOUND)
        status = ERROR_SUCCESS;
    for (INT_PTR i = 0; status == ERROR_SUCCESS && i < m_languages.GetSize(); ++i)
        status = m_config.SetValue(ZO_MODE_LOCAL_MACHINE, key, LanguageName(m_languages[i]),
                                   static_cast<DWORD>(m_languages[i] == current));
    return status;
}

DWORD Registration::RemoveUser(const Product& product, const CString& user)
{
    return CZoGlobalConfig().DeleteSection(ZO_MODE_LOCAL_MACHINE, product.root + "\\Users", user);
}

DWORD Registration::RemoveProduct(const Product& product)
{
    CZoGlobalConfig config;
    const DWORD status = config.DeleteSection(ZO_MODE_LOCAL_MACHINE, product.root, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    CString parent = product.root;
    for (int levels = 0; levels < 2; ++levels) { // the product name's key and the company's; never "Software" itself
        parent = parent.Left(parent.ReverseFind('\\'));
        if (!IsEmptyKey(config, parent))
            break;
        config.DeleteSection(ZO_MODE_LOCAL_MACHINE, parent, nullptr);
    }
    return ERROR_SUCCESS;
}
