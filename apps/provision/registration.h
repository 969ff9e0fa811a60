/// \file
/// Enters products, users, modules and languages in the registry, and takes them out again.
#pragma once

#include "product.h"

#include <zogbl/global_config.h>

#include <afxcoll.h>

/// Works for one class library, whose settings the products share: it is registered with the first product and taken
/// out with the last one. "Products" below the library's own product has a key for each product, and in it a value for
/// each folder in which the product is installed: installations of one product (the x86 and the x64 one, say) share its
/// settings, which stay for as long as there is one.
///
/// Operations say what they did on the output and return 0 or the status of the registry.
class Registration {
public:
    /// \param folder where the suite's libraries lie, with a backslash at its end
    Registration(const Product& library, const CString& folder) : m_library(library), m_folder(folder) {}

    /// Registers a module of a product, the template libraries that are there, and the library, for a user.
    /// \param languages ids, at least one; \param current the one to make current, 0 to keep or take the first
    DWORD Register(const Product& product, const CString& user, const CDWordArray& languages, DWORD current);

    /// Removes one user's settings of a product.
    DWORD RemoveUser(const Product& product, const CString& user);
    /// Removes an installation of a product; with the last one the product with all its users, the keys above it that
    /// this leaves empty, and the library if no other product needs it. \param isInUse set to whether others of its
    /// installations are left. 2: this one was not registered. After another failure it is
    /// still registered, and can be removed again.
    DWORD RemoveProduct(const Product& product, bool& isInUse);

private:
    DWORD RegisterModule(const Product& product, const CString& user, const CDWordArray& languages, DWORD current);
    DWORD RegisterTemplates(const Product& product, const CString& user);
    DWORD SetAccess(const CString& module, DWORD access);
    DWORD WriteLanguages(const CString& key, const CDWordArray& languages, DWORD current);
    DWORD RemoveModule(const Product& product);
    bool IsThere(const CString& key);
    DWORD RemoveKey(const CString& key);
    DWORD RemoveTree(const CString& root);
    CString InstallationsKey(const Product& product) const;
    CString ProductsKey() const { return m_library.root + "\\Products"; }
    bool SharesProduct(const Product& product) const { return product.root.CompareNoCase(m_library.root) == 0; }

    CZoGlobalConfig m_config;
    const Product& m_library;
    const CString m_folder;
};
