/// \file
/// Which product a file belongs to, by its version resource.
#pragma once

#include <afx.h>

struct Product {
    CString root;         ///< registry key of the product, below HKEY_LOCAL_MACHINE
    CString name;         ///< for messages
    CString internalName; ///< of the file
    CString folder;       ///< in which the file lies: the product's installation
    CString version;      ///< "%d.%d" of the product version

    /// Reads a file's version resource. \return FALSE when it has none that names a product.
    bool Read(LPCSTR path);
};
