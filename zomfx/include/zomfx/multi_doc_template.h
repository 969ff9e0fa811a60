/// \file
/// Types of documents as the suite has them.
#pragma once

#include <zomfx/export.h>

#include <afxext.h>

/// A type of documents that tells its resource number, and whose names follow the user's language: the string of that
/// number is looked for in the framework's resource chain first, then in the language library, anew each time.
class ZOMFX_API CZoMultiDocTemplate : public CMultiDocTemplate {
    DECLARE_DYNAMIC(CZoMultiDocTemplate)
public:
    CZoMultiDocTemplate(UINT resourceId, CRuntimeClass* documentClass, CRuntimeClass* frameClass,
                        CRuntimeClass* viewClass);

    UINT GetResourceID() const { return m_nIDResource; }

    /// \return FALSE, with \p text empty, when the string has no such part or memory has run out.
    BOOL GetDocString(CString& text, DocStringIndex index) const override;
};
