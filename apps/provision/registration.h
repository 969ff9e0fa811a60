/// \file
/// Enters products, users, modules and languages in the registry, and takes them out again.
#pragma once

#include "product.h"

#include <zogbl/global_config.h>

#include <afxcoll.h>

class Registration {
public:
    /// \param languages ids, at least one; \param current the one to make current, 0 to keep or take the first
    Registration(const CString& user, const CDWordArray& languages, DWORD current);

    /// Registers a module of a product for the user. Says what was done on the output; \return 0 or the status.
    DWORD Register(const Product& product);

    static DWORD RemoveUser(const Product& product, const CString& user);
    /// Removes the product with all its users, and the keys above it that this leaves empty.
    static DWORD RemoveProduct(const Product& product);

private:
    DWORD WriteLanguages(const CString& key);
    DWORD WriteIfMissing(const CString& key, LPCSTR name, DWORD value);

    CZoGlobalConfig m_config;
    CString m_user;
    const CDWordArray& m_languages;
    DWORD m_current;
};
